#pragma once

// NEW, OPEN, QSAVE, SAVEAS, CLOSE, QUIT.
namespace arx_commands {
void newDrawing();
void openDrawing();
void saveDrawing();
void saveDrawingAs();
void closeDrawing();
void quit();
}  // namespace arx_commands
