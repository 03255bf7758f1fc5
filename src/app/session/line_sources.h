#pragma once

#include "base/console.h"

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace veltora::app {

/// The terminal: line editing and history when a person types, plain lines when the input is a pipe.
class TerminalSource : public base::LineSource {
public:
  TerminalSource();
  ~TerminalSource() override;
  std::optional<std::string> readLine(const base::Request& request) override;
  [[nodiscard]] std::string position() const override;
  [[nodiscard]] bool interactive() const override { return m_interactive; }
  /// Answers the line that the terminal waits for as the Escape key does. For a signal handler.
  /// @return false when it waits for none
  static bool cancel();

private:
  bool m_interactive;
  std::size_t m_line = 0;
  std::filesystem::path m_history;
};

/// Lines held in memory, from a script file or the command line.
class LinesSource : public base::LineSource {
public:
  LinesSource(std::string name, std::vector<std::string> lines);
  std::optional<std::string> readLine(const base::Request& request) override;
  [[nodiscard]] std::string position() const override;
  [[nodiscard]] bool finished() const { return m_next >= m_lines.size(); }

private:
  std::string m_name;
  std::vector<std::string> m_lines;
  std::size_t m_next = 0;
};

/// The lines of a script file in UTF-8. Nothing when it cannot be read.
std::optional<std::vector<std::string>> lireScript(const std::filesystem::path& path);

/// Several sources one after the other.
class ChainedSource : public base::LineSource {
public:
  void append(std::unique_ptr<base::LineSource> source) { m_sources.push_back(std::move(source)); }
  std::optional<std::string> readLine(const base::Request& request) override;
  [[nodiscard]] std::string position() const override;
  [[nodiscard]] bool interactive() const override {
    return !m_sources.empty() && m_sources.front()->interactive();
  }

private:
  std::deque<std::unique_ptr<base::LineSource>> m_sources;
};

/// The lines of a call: those given one by one, then those of a script, or the terminal without either.
/// @param script  empty for none  @return null, with the reason on standard error, when it cannot be read
std::unique_ptr<base::LineSource> sourceOf(const std::vector<std::string>& lines, const std::string& script);

/// Prints to standard output.
class StandardOutput : public base::OutputSink {
public:
  void print(const std::string& text) override;
};

}  // namespace veltora::app
