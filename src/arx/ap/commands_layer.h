#pragma once

// LAYER, at the command line.
namespace arx_commands {
void layer();
}  // namespace arx_commands
