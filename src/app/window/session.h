#pragma once

#include "app/window/main_window.h"
#include "base/uncopyable.h"

#include <memory>
#include <string>
#include <vector>

namespace veltora::app {

class Program;

/// What the window program is called with. Names of files are UTF-8, empty for none.
struct WindowCall {
  std::vector<std::string> drawings;
  std::string script;              ///< read in place of the window; the program ends with it
  std::vector<std::string> lines;  ///< likewise, in front of the script
  std::string output;              ///< the current drawing is saved there at the end
  std::string image;               ///< a picture of the window at the end
};

/// The host with its module behind a window. One at a time.
class WindowSession : private Uncopyable {
public:
  /// @param script  answers in place of the user; null for the user
  explicit WindowSession(base::LineSource* script = nullptr);
  ~WindowSession();
  /// Loads the module and opens the drawings, an empty one for none; other files start their dialogs later.
  /// @return false with the reasons told; those that could be opened are
  bool open(const std::vector<std::string>& drawings);
  [[nodiscard]] MainWindow& window() { return m_window; }
  [[nodiscard]] Program& program() { return *m_program; }

private:
  class Output;
  MainWindow m_window;
  std::unique_ptr<Output> m_output;
  std::unique_ptr<Program> m_program;
  bool m_loaded = false;
};

/// Opens the window and lets the user work until it is closed, or runs the script.
/// @return the exit status, with the reason on standard error
int runWindow(const WindowCall& call);

}  // namespace veltora::app
