#pragma once

// ZOOM, REGEN, HELP.
namespace arx_commands {
void zoom();
void regenerate();
void help();
}  // namespace arx_commands
