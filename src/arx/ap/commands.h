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
void undoSteps();
void regenerate();
void zoom();
void listEntities();
void eraseEntities();
void moveEntities();
void line();
void polyline();
void point();
void circle();
void arc();
void text();
void insert();
void layer();
}  // namespace arx_commands
