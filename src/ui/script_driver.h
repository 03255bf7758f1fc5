#pragma once

#include "ui/driver.h"
#include "ui/hand.h"

namespace veltora::ui {

/// Shows dialogs on a terminal and has them worked by lines, from a terminal or a script; docs/script.md
/// tells the line language. A line that fits nothing throws `base::ScriptError`, or at a terminal prints the
/// message and asks again. At the end of the input an open dialog is cancelled. An exception of a callback is
/// told; at a terminal the dialog stays open, in a script it is cancelled with those below it.
class VELTORA_API ScriptDriver : public Driver {
public:
  /// Both live longer than the driver.
  ScriptDriver(base::LineSource& source, base::OutputSink& sink) : m_source(source), m_sink(sink) {}

  void runModal(Dialog& dialog) override;
  void setVisible(Dialog& dialog, bool visible) override;
  void showModeless(Dialog& dialog) override;
  void update(Dialog& dialog) override;
  void closeModeless(Dialog& dialog) override;
  int messageBox(const std::wstring& text, const std::wstring& title, Buttons buttons) override;
  std::optional<base::FileAnswer> chooseFile(const base::FileRequest& request) override;
  /// Prints the text and keeps it: a terminal has no clipboard.
  void copyText(const std::wstring& text) override;
  /// What was copied last; nothing when nothing was.
  [[nodiscard]] const std::optional<std::wstring>& clipboard() const { return m_clipboard; }

protected:
  /// What does what the lines say.
  virtual Hand& hand() { return m_hand; }
  /// The answer that a line gives to a choice of files; nothing when the user does not want to replace one.
  /// @throws base::ScriptError when it fits nothing
  virtual std::optional<base::FileAnswer> acceptFile(const base::FileRequest& request,
                                                     const std::wstring& line);

private:
  class OpenDialog;
  /// @param request what is asked for  @param prompt shown in front of the answer
  std::optional<std::wstring> readLine(base::Request request, const char* prompt);
  void print(const std::wstring& text);
  void refuse(const base::ScriptError& error);
  void answer(Dialog& dialog, const std::wstring& line);

  base::LineSource& m_source;
  base::OutputSink& m_sink;
  Hand m_hand;
  int m_open = 0;  ///< modal dialogs, one upon the other
  std::optional<std::wstring> m_clipboard;
  bool m_failed = false;  ///< a callback threw: all of them end
};

}  // namespace veltora::ui
