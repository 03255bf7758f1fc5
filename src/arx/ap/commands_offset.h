#pragma once

// OFFSET.
namespace arx_commands {
void offsetEntity();
}  // namespace arx_commands
