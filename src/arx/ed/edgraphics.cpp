#include "arx/ed/edgraphics.h"

#include "arx/db/dbmain.h"

#include <algorithm>
#include <cmath>

namespace {

std::vector<AcEdTransientVector>& vectors() {
  static auto* const drawn = new std::vector<AcEdTransientVector>;
  return *drawn;
}

double& windowAspect() {
  static double aspect = 0.0;
  return aspect;
}

AcDbObjectId activeViewport() {
  AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
  if (!database) return {};
  const AcDbObjectPointer<AcDbViewportTable> table(database->viewportTableId());
  AcDbObjectId id;
  if (table) table->getIdAt(L"*Active", id);
  return id;
}

AcGePoint3d under(const ads_matrix matrix, const ads_real* p) {
  if (!matrix) return {p[0], p[1], p[2]};
  double r[3];
  for (int i = 0; i < 3; ++i)
    r[i] = matrix[i][0] * p[0] + matrix[i][1] * p[1] + matrix[i][2] * p[2] + matrix[i][3];
  return {r[0], r[1], r[2]};
}

}  // namespace

int acedGrDraw(const ads_point from, const ads_point to, int color, int highlight) {
  if (!from || !to) return RTERROR;
  vectors().push_back({{from[0], from[1], from[2]}, {to[0], to[1], to[2]}, color, highlight != 0});
  return RTNORM;
}

int acedGrVecs(const resbuf* chain, const ads_matrix matrix) {
  std::vector<AcEdTransientVector> drawn;
  int color = 7;
  const resbuf* open = nullptr;
  for (const resbuf* item = chain; item; item = item->rbnext) {
    const RbKind kind = acutRbKind(item->restype);
    if (kind == RbKind::kShort && !open) {
      color = item->resval.rint;
    } else if (kind != RbKind::kPoint) {
      return RTERROR;
    } else if (!open) {
      open = item;
    } else {
      // A negative colour highlights.
      drawn.push_back({under(matrix, open->resval.rpoint), under(matrix, item->resval.rpoint),
                       std::abs(color), color < 0});
      open = nullptr;
    }
  }
  if (open || drawn.empty()) return RTERROR;
  vectors().insert(vectors().end(), drawn.begin(), drawn.end());
  return RTNORM;
}

int acedRedraw(const ads_name entity, int) {
  if (!entity || ads_name_nil(entity)) vectors().clear();
  return RTNORM;
}

const std::vector<AcEdTransientVector>& acedTransientGraphics() { return vectors(); }

AcEdView acedView() {
  AcEdView view;
  const AcDbObjectPointer<AcDbViewportTableRecord> record(activeViewport());
  if (!record) return view;
  view.center = record->centerPoint();
  if (std::isfinite(record->height()) && record->height() > 0) view.height = record->height();
  if (std::isfinite(record->aspectRatio()) && record->aspectRatio() > 0) view.aspect = record->aspectRatio();
  if (windowAspect() > 0) view.aspect = windowAspect();
  return view;
}

Acad::ErrorStatus acedSetView(const AcGePoint2d& center, double height) {
  if (!std::isfinite(center.x) || !std::isfinite(center.y)) return Acad::eInvalidInput;
  if (!std::isfinite(height) || height <= 0) return Acad::eInvalidInput;
  AcDbObjectPointer<AcDbViewportTableRecord> record(activeViewport(), AcDb::kForWrite);
  if (!record) return record.openStatus();
  record->setCenterPoint(center);
  return record->setHeight(height);
}

void acedSetViewAspect(double aspect) { windowAspect() = std::isfinite(aspect) && aspect > 0 ? aspect : 0; }

Acad::ErrorStatus acedZoomWindow(const AcGePoint2d& a, const AcGePoint2d& b) {
  const AcEdView view = acedView();
  const double height = std::max(std::abs(b.y - a.y), std::abs(b.x - a.x) / view.aspect);
  return acedSetView({(a.x + b.x) / 2, (a.y + b.y) / 2}, height > 0 ? height : view.height);
}

Acad::ErrorStatus acedZoomExtents() {
  // The drawing fills this much more than its own size, so that nothing touches the border.
  constexpr double kMargin = 0.02;
  AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
  if (!database) return Acad::eNoDatabase;
  AcDbExtents box;
  const AcDbObjectPointer<AcDbBlockTableRecord> space(database->modelSpaceId());
  if (!space || space->getGeomExtents(box) != Acad::eOk || box.isEmpty()) return Acad::eInvalidExtents;
  const double dx = (box.maxPoint().x - box.minPoint().x) * kMargin;
  const double dy = (box.maxPoint().y - box.minPoint().y) * kMargin;
  return acedZoomWindow({box.minPoint().x - dx, box.minPoint().y - dy},
                        {box.maxPoint().x + dx, box.maxPoint().y + dy});
}

double acedPixelSize() { return acedView().height / 1000.0; }
