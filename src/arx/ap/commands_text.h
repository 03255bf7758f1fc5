#pragma once

// TEXT, INSERT.
namespace arx_commands {
void text();
void insert();
}  // namespace arx_commands
