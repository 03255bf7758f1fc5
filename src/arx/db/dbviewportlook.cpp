#include "arx/db/dbviewportlook.h"

#include "arx/db/dbkeptgroups.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbplanemap.h"

#include <cmath>

namespace {

constexpr int kPaperItself = 1;    // 69
constexpr int kClipped = 0x10000;  // 90, likewise the next
constexpr int kOff = 0x20000;

AcGePoint2d flat(const std::vector<AcGePoint3d>& points) {
  return points.empty() ? AcGePoint2d() : AcGePoint2d(points.front().x, points.front().y);
}

/// The curve that cuts it out (340).
AcDbObjectId outlineOf(const AcDbOtherEntity& entity) {
  AcDbDatabase* const database = entity.database();
  const auto handle = AcDbKeptGroups::textOf(entity.keptSections(), 340);
  return database && handle ? database->liveIdOf(*handle) : AcDbObjectId();
}

/// The layers that handles of soft (331) or hard (341) references name.
std::vector<AcString> frozenIn(const AcDbOtherEntity& entity) {
  std::vector<AcString> names;
  AcDbDatabase* const database = entity.database();
  if (!database) return names;
  for (const DxfExtra& section : entity.keptSections()) {
    DxfTagText::Cursor cursor = section.tags.tags();
    for (DxfTag tag; cursor.next(tag);) {
      if (tag.code != 331 && tag.code != 341) continue;
      const AcDbObjectId id = database->liveIdOf(tag.value);
      if (id.isNull()) continue;
      if (const auto* const layer = AcDbLayerTableRecord::cast(id.stub()->object))
        names.push_back(layer->name());
    }
  }
  return names;
}

}  // namespace

std::optional<AcDbViewportLook> acdbViewportLook(const AcDbOtherEntity& entity) {
  if (entity.dxfName() != "VIEWPORT" || acdbIsPaperViewport(entity)) return std::nullopt;
  AcDbKeptGroups groups(entity.keptSections());
  const int flags = static_cast<int>(groups.real(90));
  AcDbViewportLook look;
  look.center = flat(groups.points(10));
  look.width = groups.real(40);
  look.height = groups.real(41);
  look.viewCenter = flat(groups.points(12));
  look.target = flat(groups.points(17));
  look.twist = acdbRadians(groups.real(51));
  look.scale = look.height / groups.real(45);
  if (groups.real(68, 1.0) == 0.0 || (flags & kOff) != 0 || !(look.width > 0.0) || !(look.scale > 0.0) ||
      !std::isfinite(look.scale))
    return std::nullopt;
  look.clipped = (flags & kClipped) != 0;
  if (look.clipped) look.outline = outlineOf(entity);
  if (!groups.points(16).empty()) {
    const AcGePoint3d from = groups.points(16).front();
    look.fromAbove = from.z > 0.0 && std::hypot(from.x, from.y) <= 1e-9 * from.z;
  }
  look.frozenLayers = frozenIn(entity);
  return look;
}

bool acdbIsPaperViewport(const AcDbOtherEntity& entity) {
  return entity.dxfName() == "VIEWPORT" &&
         AcDbKeptGroups(entity.keptSections()).real(69) == static_cast<double>(kPaperItself);
}
