#pragma once

// MOVE, COPY, ROTATE, SCALE, MIRROR.
namespace arx_commands {
void moveEntities();
void copyEntities();
void rotateEntities();
void scaleEntities();
void mirrorEntities();
}  // namespace arx_commands
