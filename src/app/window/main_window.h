#pragma once

#include "app/window/window_lines.h"

#include <QMainWindow>
#include <string>

namespace veltora::app {

class CommandLine;

/// The window: drawings in tabs, menus, panels, the command line below.
class MainWindow : public QMainWindow, private WindowLines::Listener {
public:
  MainWindow();
  ~MainWindow() override;

  [[nodiscard]] WindowLines& lines() { return m_lines; }
  [[nodiscard]] CommandLine& commandLine() { return *m_commandLine; }
  /// Appends to what was printed. @param text UTF-8
  void print(const std::string& text);
  /// To be called once the module is loaded, and before the host ends.
  void connectHost();
  void disconnectHost();
  /// Writes a picture of the window. @return false with the reason on standard error
  bool grabTo(const std::string& file);

protected:
  void closeEvent(QCloseEvent* event) override;

private:
  void asked(const base::Request& request) override;
  void answered(const base::Request& request, const std::string* line) override;
  void askedAgain(const base::Request& request) override;

  WindowLines m_lines{*this};
  CommandLine* m_commandLine;
};

}  // namespace veltora::app
