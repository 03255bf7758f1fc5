#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace veltora::app {

/// What the user asked for, with the options that were read; the result is the exit status of the program.
using Run = std::function<int()>;

/// A sub-command: one call that does a job.
struct Job {
  const char* name;
  const char* help;  ///< French, one line
  /// Declares the options and gives what runs the job once they are read.
  Run (*declare)(CLI::App& sub);
};

}  // namespace veltora::app
