#pragma once

#include "arx/db/dbmain.h"

// Makes what every drawing has and a file may lack. To be called with undo recording off; handles must be
// known.

/// Tables, layer 0, the line types, text and dimension style, model and paper space.
void dxfCompleteTables(AcDbDatabase& database);
/// The root dictionary with groups and layouts.
void dxfCompleteObjects(AcDbDatabase& database);
/// BLOCK and ENDBLK entities of every block definition.
void dxfCompleteBlocks(AcDbDatabase& database);
