#pragma once

// U, REDO, UNDO.
namespace arx_commands {
void undo();
void redo();
void undoSteps();
}  // namespace arx_commands
