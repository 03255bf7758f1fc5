#pragma once

// ZOOM, REGEN.
namespace arx_commands {
void zoom();
void regenerate();
}  // namespace arx_commands
