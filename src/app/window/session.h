#pragma once

#include <string>
#include <vector>

namespace veltora::app {

/// What the window program is called with. Names of files are UTF-8, empty for none.
struct WindowCall {
  std::vector<std::string> drawings;
  std::string script;              ///< read in place of the window; the program ends with it
  std::vector<std::string> lines;  ///< likewise, in front of the script
  std::string output;              ///< the current drawing is saved there at the end
  std::string image;               ///< a picture of the window at the end
};

/// Opens the window and lets the user work until it is closed, or runs the script.
/// @return the exit status, with the reason on standard error
int runWindow(const WindowCall& call);

}  // namespace veltora::app
