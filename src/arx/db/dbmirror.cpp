#include "arx/db/dbmirror.h"

#include "arx/db/dballents.h"
#include "arx/db/dbtable.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <vector>

namespace {

AcGePoint3d middleOf(const AcDbExtents& box) {
  return box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5;
}

/// Where the middle of a text's box is to lie; nothing for an empty text.
std::optional<AcGePoint3d> mirroredMiddle(const AcDbEntity& text, const AcGeMatrix3d& mirror) {
  AcDbExtents box;
  if (text.getGeomExtents(box) != Acad::eOk) return std::nullopt;
  return mirror * middleOf(box);
}

/// The box of a text and that of its reflection are the same parallelogram, so their middles decide.
void moveMiddle(AcDbEntity& text, const std::optional<AcGePoint3d>& wanted) {
  AcDbExtents box;
  if (wanted && text.getGeomExtents(box) == Acad::eOk)
    text.transformBy(AcGeMatrix3d::translation(*wanted - middleOf(box)));
}

/// What a text was before it was reflected.
struct Way {
  AcDbObjectId id;
  std::optional<AcGePoint3d> middle;
  bool backward = false;
  bool upsideDown = false;
};

Way wayOf(const AcDbText& text, const AcGeMatrix3d& mirror) {
  return {text.objectId(), mirroredMiddle(text, mirror), text.isMirroredInX(), text.isMirroredInY()};
}

void turnBack(AcDbText& text, const Way& way) {
  text.mirrorInX(way.backward);
  text.mirrorInY(way.upsideDown);
  moveMiddle(text, way.middle);
}

Acad::ErrorStatus mirrorMText(AcDbMText& text, const AcGeMatrix3d& mirror) {
  const std::optional<AcGePoint3d> middle = mirroredMiddle(text, mirror);
  const AcGeVector3d along = text.direction();
  const Acad::ErrorStatus status = text.transformBy(mirror);
  if (status != Acad::eOk) return status;
  if (text.direction().dotProduct(along) < 0) text.setRotation(text.rotation() + std::numbers::pi);
  moveMiddle(text, middle);
  return status;
}

/// A table stays readable: it is turned into the reflected rectangle of what it was.
Acad::ErrorStatus mirrorTable(AcDbTable& table, const AcGeMatrix3d& mirror) {
  const std::optional<AcGePoint3d> middle = mirroredMiddle(table, mirror);
  const AcGeVector3d along = table.direction();
  AcGeVector3d reflected = mirror * along;
  if (reflected.dotProduct(along) < 0) reflected = -reflected;
  const double turn = std::atan2(reflected.y, reflected.x) - std::atan2(along.y, along.x);
  const Acad::ErrorStatus status = table.transformBy(AcGeMatrix3d::rotation(turn, AcGeVector3d::kZAxis));
  if (status == Acad::eOk) moveMiddle(table, middle);
  return status;
}

Acad::ErrorStatus mirrorBlock(AcDbBlockReference& block, const AcGeMatrix3d& mirror) {
  std::vector<Way> ways;
  const std::unique_ptr<AcDbObjectIterator> attributes(block.attributeIterator());
  for (; !attributes->done(); attributes->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId());
    if (attribute) ways.push_back(wayOf(*attribute, mirror));
  }
  const Acad::ErrorStatus status = block.transformBy(mirror);
  if (status != Acad::eOk) return status;
  for (const Way& way : ways) {
    const AcDbObjectPointer<AcDbAttribute> attribute(way.id, AcDb::kForWrite);
    if (attribute) turnBack(*attribute, way);
  }
  return status;
}

}  // namespace

AcGeMatrix3d acdbMirrorMatrix(const AcGePoint3d& a, const AcGePoint3d& b) {
  const AcGeVector2d u = AcGeVector2d(b.x - a.x, b.y - a.y).normal();
  AcGeMatrix3d mirror;
  mirror.entry[0][0] = u.x * u.x - u.y * u.y;
  mirror.entry[0][1] = mirror.entry[1][0] = 2 * u.x * u.y;
  mirror.entry[1][1] = u.y * u.y - u.x * u.x;
  const AcGePoint3d moved = mirror * AcGePoint3d(a.x, a.y, 0);
  mirror.entry[0][3] = a.x - moved.x;
  mirror.entry[1][3] = a.y - moved.y;
  return mirror;
}

Acad::ErrorStatus acdbMirror(AcDbEntity& entity, const AcGeMatrix3d& mirror, bool readable) {
  if (AcDbMText* text = AcDbMText::cast(&entity)) return mirrorMText(*text, mirror);
  if (AcDbTable* table = AcDbTable::cast(&entity)) return mirrorTable(*table, mirror);
  if (!readable) return entity.transformBy(mirror);
  if (AcDbBlockReference* block = AcDbBlockReference::cast(&entity)) return mirrorBlock(*block, mirror);
  AcDbText* const text = AcDbText::cast(&entity);
  if (!text) return entity.transformBy(mirror);
  const Way way = wayOf(*text, mirror);
  const Acad::ErrorStatus status = text->transformBy(mirror);
  if (status == Acad::eOk) turnBack(*text, way);
  return status;
}
