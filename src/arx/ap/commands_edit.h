#pragma once

// LIST, ERASE, MOVE.
namespace arx_commands {
void listEntities();
void eraseEntities();
void moveEntities();
}  // namespace arx_commands
