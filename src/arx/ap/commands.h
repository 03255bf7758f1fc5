#pragma once

// The host's own commands, group "ARX". Each asks for what it needs at the prompts of ed/.
namespace arx_commands {
void newDrawing();
void openDrawing();
void saveDrawing();
void saveDrawingAs();
void closeDrawing();
void quit();
void undo();
void redo();
void zoom();
void listEntities();
void eraseEntities();
}  // namespace arx_commands
