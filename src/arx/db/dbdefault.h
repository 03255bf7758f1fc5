#pragma once

class AcDbDatabase;

/// Fills an empty database with the tables, records, dictionaries and header variables of a new drawing.
/// Called by the database's constructor, with undo recording off.
void dxfBuildDefaultDrawing(AcDbDatabase& database);
