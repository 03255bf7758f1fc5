#pragma once

// EXPLODE.
namespace arx_commands {
void explodeEntities();
}  // namespace arx_commands
