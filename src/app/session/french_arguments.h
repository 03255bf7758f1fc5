#pragma once

namespace CLI {
class App;
}

namespace veltora::app {

/// Gives the help of a program or a sub-command its French words and the options -h, --help.
void toFrench(CLI::App& app);

/// Reads the arguments. Help and version are printed on standard output, errors in French on standard error.
/// @return false, with the exit status, when the program ends with that
bool parse(CLI::App& app, int argc, char** argv, int& status);

}  // namespace veltora::app
