#pragma once

// LINE, PLINE, POINT, CIRCLE, ARC.
namespace arx_commands {
void line();
void polyline();
void point();
void circle();
void arc();
}  // namespace arx_commands
