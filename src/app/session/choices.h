#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// Checks of option values whose messages are French, begin with "« " and are shown behind the option's name.
namespace veltora::app {

/// A whole number from `least` to `largest`.
CLI::Validator between(int least, int largest);

/// One of these words.
CLI::Validator oneOf(std::vector<std::string> words);

}  // namespace veltora::app
