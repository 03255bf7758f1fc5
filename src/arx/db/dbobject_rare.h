#pragma once

#include "arx/db/dbobject.h"

/// What few objects have; internal to the bodies of AcDbObject.
struct AcDbObject::Rare {
  DxfTagText xData;   // as in the file, 1001 first
  DxfTagText groups;  // groups in braces of other programs, in front of the first subclass marker
  AcDbObjectId extensionDictionary;
  std::vector<AcDbObjectId> reactors;
  std::vector<DxfExtra> extras;
  // Handles in the texts of a copy name objects of this database; null: of the object's own.
  AcDbDatabase* textDatabase = nullptr;
  bool translated = false;                   // a visitor has replaced them
  mutable std::vector<char> extraIsWritten;  // while the object is being written
};
