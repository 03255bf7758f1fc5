#pragma once

// LIST, ERASE.
namespace arx_commands {
void listEntities();
void eraseEntities();
}  // namespace arx_commands
