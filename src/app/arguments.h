#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// Reads the arguments. Help and version are printed on standard output, errors in French on standard error.
/// @return what the user asked for; nothing when the program ends with `status` without anything to do
Run readArguments(int argc, char** argv, int& status);

}  // namespace veltora::app
