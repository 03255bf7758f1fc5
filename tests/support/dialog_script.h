#pragma once

#include "ui/script_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

/// Dialogs worked by lines in a test: installs a script driver for its lifetime and keeps what was printed.
///
///     DialogScript script({"Nom = P1", "[OK]"});
///     EXPECT_EQ(dialog.doModal(), ui::kOk);
///     EXPECT_TRUE(script.finished());
class DialogScript : public veltora::base::LineSource, public veltora::base::OutputSink {
public:
  explicit DialogScript(std::vector<std::string> lines, bool interactive = false)
      : m_lines(std::move(lines)), m_interactive(interactive), m_former(veltora::ui::setDriver(&driver)) {}
  ~DialogScript() override { veltora::ui::setDriver(m_former); }
  DialogScript(const DialogScript&) = delete;
  DialogScript& operator=(const DialogScript&) = delete;

  std::optional<std::string> readLine(const veltora::base::Request& request) override {
    prompts.push_back(request.prompt);
    if (m_next == m_lines.size()) return std::nullopt;
    return m_lines[m_next++];
  }
  [[nodiscard]] bool interactive() const override { return m_interactive; }
  void print(const std::string& text) override { transcript += text; }
  /// True when every line was asked for.
  [[nodiscard]] bool finished() const { return m_next == m_lines.size(); }

  std::string transcript;
  std::vector<std::string> prompts;
  veltora::ui::ScriptDriver driver{*this, *this};

private:
  std::vector<std::string> m_lines;
  std::size_t m_next = 0;
  bool m_interactive;
  veltora::ui::Driver* m_former;
};

/// Works a dialog by lines, "//" between two, that it must take to the last. @return what was printed
template <class Dialog>
std::string playDialog(Dialog& dialog, const std::string& lines, int result = -1) {
  std::vector<std::string> list;
  for (std::size_t from = 0; from <= lines.size();) {
    const std::size_t to = std::min(lines.find(" // ", from), lines.size());
    list.push_back(lines.substr(from, to - from));
    from = to + 4;
  }
  DialogScript script(list);
  const int ended = dialog.doModal();
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_TRUE(result < 0 || ended == result) << ended;
  return script.transcript;
}

/// What an action refuses a script line with; empty when it takes every line.
template <class Action>
std::string scriptErrorOf(Action action) {
  try {
    action();
  } catch (const veltora::base::ScriptError& error) {
    return error.message;
  }
  return {};
}
