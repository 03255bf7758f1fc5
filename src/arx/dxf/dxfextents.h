#pragma once

#include "arx/ge/gepoint.h"

class AcDbDatabase;
class AcDbViewportTableRecord;

/// While it lives, the drawing tells where its things are, as a file must: `$EXTMIN`, `$EXTMAX`, those of the
/// layouts, and a view "*Active" that nobody has set shows all of model space. The extents stay, for they are
/// facts; the view goes back to what it was, so that a save changes nothing for the session. A space that is
/// empty keeps what it has, and one with things of unknown extent at least that.
class DxfStoredExtents {
public:
  explicit DxfStoredExtents(AcDbDatabase& database);
  ~DxfStoredExtents();
  DxfStoredExtents(const DxfStoredExtents&) = delete;
  DxfStoredExtents& operator=(const DxfStoredExtents&) = delete;

private:
  AcDbViewportTableRecord* m_view = nullptr;  // null when it stays
  AcGePoint2d m_center;
  double m_height = 0.0;
  AcDbDatabase& m_db;
};
