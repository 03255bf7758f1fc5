#pragma once

#include "arx/db/dballents.h"
#include "arx/db/dbentityfactory.h"
#include "arx/dxf_text.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

// Entities from literal groups ("8 0|100 AcDbLine|10 1.5") and back.
namespace ent_test {

inline std::vector<DxfTag> tagsOf(std::string_view brief) {
  std::vector<DxfTag> tags;
  for (std::size_t at = 0; at < brief.size();) {
    const std::size_t end = std::min(brief.find('|', at), brief.size());
    const std::string_view item = brief.substr(at, end - at);
    const std::size_t blank = std::min(item.find(' '), item.size());
    DxfTag tag;
    tag.code = std::stoi(std::string(item.substr(0, blank)));
    tag.line = static_cast<Adesk::UInt32>(tags.size() + 1) * 2;
    tag.value = blank < item.size() ? item.substr(blank + 1) : std::string_view();
    tags.push_back(tag);
    at = end + 1;
  }
  return tags;
}

inline std::unique_ptr<AcDbEntity> read(AcDbDatabase& db, std::string_view type, std::string_view brief) {
  const std::vector<DxfTag> tags = tagsOf(brief);
  std::unique_ptr<AcDbEntity> entity(acdbNewEntity(type, tags));
  entity->dxfIn(tags, db);
  return entity;
}

/// Groups behind the type, in the form of the literals.
inline std::string written(const AcDbObject& object) {
  const std::string text = dxfWritten(object);
  DxfTagText::Cursor cursor{text};
  std::string brief;
  DxfTag tag;
  cursor.next(tag);
  while (cursor.next(tag)) {
    if (!brief.empty()) brief += '|';
    brief += std::to_string(tag.code) + ' ' + std::string(tag.value);
  }
  return brief;
}

/// Appends to the model space and leaves the entity closed.
template <class T>
T* place(AcDbDatabase& db, std::unique_ptr<T> entity) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(db.modelSpaceId(), AcDb::kForWrite);
  T* const raw = entity.get();
  if (space.openStatus() != Acad::eOk || space->appendAcDbEntity(raw) != Acad::eOk) return nullptr;
  entity.release();
  raw->close();
  return raw;
}

/// A named, empty block.
inline AcDbObjectId block(AcDbDatabase& db, const ACHAR* name, const AcGePoint3d& origin = {}) {
  AcDbObjectPointer<AcDbBlockTable> table(db.blockTableId(), AcDb::kForWrite);
  auto* record = new AcDbBlockTableRecord;
  record->setName(name);
  record->setOrigin(origin);
  AcDbObjectId id;
  table->add(id, record);
  record->close();
  return id;
}

inline AcDbObjectId addTo(AcDbObjectId blockId, AcDbEntity* entity) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(blockId, AcDb::kForWrite);
  AcDbObjectId id;
  record->appendAcDbEntity(id, entity);
  entity->close();
  return id;
}

inline void erase(AcDbObjectId id) { AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite)->erase(); }

using Vertices = std::vector<std::array<double, 3>>;  // x, y, bulge

inline std::unique_ptr<AcDbPolyline> polyline(const Vertices& vertices, bool closed = false) {
  auto result = std::make_unique<AcDbPolyline>();
  for (const auto& v : vertices) result->addVertexAt(result->numVerts(), {v[0], v[1]}, v[2]);
  result->setClosed(closed);
  return result;
}

constexpr double kPi = 3.141592653589793;
inline const AcGePoint3d kFar{650000, 6860000, 0};  // national coordinates, where cancellation shows

}  // namespace ent_test

inline void PrintTo(const AcGePoint3d& p, std::ostream* out) {
  *out << '(' << p.x << ' ' << p.y << ' ' << p.z << ')';
}

#define EXPECT_POINT(expected, actual, tolerance) \
  EXPECT_LE((expected).distanceTo(actual), tolerance) << ::testing::PrintToString(actual)
