#include "arx/dxf/dxfextents.h"

#include "arx/db/dbcurve.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbtext.h"
#include "arx/gi/giextents.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>

namespace {

// The view of the empty drawing.
constexpr double kCenterX = 210.0;
constexpr double kCenterY = 148.5;
constexpr double kHeight = 297.0;
constexpr double kMargin = 1.04;    // so that nothing touches the border
constexpr double kFarthest = 1e19;  // what lies beyond means "no extents"
constexpr double kRounding = 1e-9;  // of the coordinates: more than the ways to a corner can differ

bool isUsable(const AcDbExtents& box) {
  const AcGePoint3d low = box.minPoint();
  const AcGePoint3d high = box.maxPoint();
  const double all[] = {low.x, low.y, low.z, high.x, high.y, high.z};
  return !box.isEmpty() && low.y <= high.y &&
         std::all_of(std::begin(all), std::end(all), [](double v) { return std::fabs(v) < kFarthest; });
}

AcDbExtents storedIn(const AcDbDatabase& database, const char* low, const char* high) {
  DxfTagText ignored;
  if (!database.header(low, ignored) || !database.header(high, ignored)) return {};
  return {database.headerPoint(low), database.headerPoint(high)};
}

/// The box around the things of a space, to the bit, with less work for points: the box of a simple block is
/// measured once, and a reference whose block cannot reach beyond what was seen already is not entered.
class SpaceExtents final : public AcGiExtents {
public:
  void block(const AcGiBlockPlace& place) override {
    if (!references().empty() || place.repeated || !liesWithin(place)) AcGiExtents::block(place);
  }

private:
  [[nodiscard]] bool liesWithin(const AcGiBlockPlace& place);
  [[nodiscard]] const AcDbExtents& boxOf(const AcGiDrawable& block);
  std::unordered_map<const AcGiDrawable*, AcDbExtents> m_blocks;  // empty for one that is not simple
};

/// One matrix alone carries all that the block shows: no block and no text in a plane of its own within it.
bool isSimple(const AcDbBlockTableRecord& block) {
  return std::ranges::all_of(block.entities(), [](AcDbObjectId id) {
    const auto* entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (!entity || !entity->isShownByReferences() || AcDbCurve::cast(entity)) return true;
    const auto* text = AcDbText::cast(entity);
    return text && text->normal() == AcGeVector3d::kZAxis;
  });
}

const AcDbExtents& SpaceExtents::boxOf(const AcGiDrawable& block) {
  const auto [found, fresh] = m_blocks.try_emplace(&block);
  const auto* record = fresh ? AcDbBlockTableRecord::cast(&block) : nullptr;
  if (record && isSimple(*record)) {
    AcGiExtents look;
    look.show(block);
    found->second = look.box();
  }
  return found->second;
}

/// How far rounding may put, in one direction, what a row of a matrix makes of the points of a box.
double slackOf(const double (&row)[4], const AcDbExtents& box) {
  const auto size = [](double a, double b) { return std::max(std::fabs(a), std::fabs(b)); };
  return kRounding * (std::fabs(row[0]) * size(box.minPoint().x, box.maxPoint().x) +
                      std::fabs(row[1]) * size(box.minPoint().y, box.maxPoint().y) +
                      std::fabs(row[2]) * size(box.minPoint().z, box.maxPoint().z) + std::fabs(row[3]));
}

bool SpaceExtents::liesWithin(const AcGiBlockPlace& place) {
  const AcDbExtents& own = boxOf(place.block);
  if (own.isEmpty()) return false;
  const AcGeMatrix3d matrix = toWorld() * place.toOuter;
  AcDbExtents placed = own;
  placed.transformBy(matrix);
  // What is flat and stays level has one height, whatever its way: most drawings lie in one plane.
  const bool level =
      own.minPoint().z == own.maxPoint().z && matrix.entry[2][0] == 0.0 && matrix.entry[2][1] == 0.0;
  const auto holds = [](double from, double to, double slack, double low, double high) {
    return low - slack >= from && high + slack <= to;
  };
  const AcGePoint3d from = box().minPoint();
  const AcGePoint3d to = box().maxPoint();
  const AcGePoint3d low = placed.minPoint();
  const AcGePoint3d high = placed.maxPoint();
  return holds(from.x, to.x, slackOf(matrix.entry[0], own), low.x, high.x) &&
         holds(from.y, to.y, slackOf(matrix.entry[1], own), low.y, high.y) &&
         holds(from.z, to.z, level ? 0.0 : slackOf(matrix.entry[2], own), low.z, high.z);
}

/// Around what a space shows. @param stored what its file says, for what cannot be measured
std::optional<AcDbExtents> measured(const AcDbBlockTableRecord& space, const AcDbExtents& stored) {
  SpaceExtents look;
  AcDbExtents kept;
  bool unknown = false;
  for (const AcDbObjectId id : space.entities()) {
    const auto* entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (!entity) continue;
    if (const auto* other = AcDbOtherEntity::cast(entity))
      unknown = !other->addKeptExtents(kept) || unknown;
    else
      look.draw(*entity);
  }
  AcDbExtents box = look.box();
  box.addExt(kept);
  if (unknown && isUsable(stored)) box.addExt(stored);
  return isUsable(box) ? std::optional(box) : std::nullopt;
}

/// The extents in a layout's groups: 14 to 34 and 15 to 35 of its own section.
void storeInLayout(AcDbObjectId id, const AcDbBlockTableRecord& space, std::optional<AcDbExtents> box) {
  auto* layout = id.isLive() ? AcDbOtherObject::cast(id.stub()->object) : nullptr;
  if (!layout || layout->dxfName() != "LAYOUT") return;
  double parts[6] = {};
  const auto placeOf = [](int code) { return code % 10 == 4 ? code / 10 - 1 : code / 10 + 2; };
  const auto isExtent = [](int code) {
    return code == 14 || code == 24 || code == 34 || code == 15 || code == 25 || code == 35;
  };
  const auto walk = [&](auto work) {
    bool own = false;
    DxfTagText::Cursor cursor = layout->tags().tags();
    for (DxfTag tag; cursor.next(tag);) {
      if (tag.code == 100) own = tag.value == "AcDbLayout";
      work(tag, own && isExtent(tag.code));
    }
  };
  if (!box) {
    walk([&](const DxfTag& tag, bool extent) {
      if (extent) dxfParseReal(tag.value, parts[placeOf(tag.code)]);
    });
    box = measured(space, {{parts[0], parts[1], parts[2]}, {parts[3], parts[4], parts[5]}});
  }
  if (!box) return;
  const double wanted[] = {box->minPoint().x, box->minPoint().y, box->minPoint().z,
                           box->maxPoint().x, box->maxPoint().y, box->maxPoint().z};
  DxfTagText tags;
  walk([&](const DxfTag& tag, bool extent) {
    if (extent)
      tags.appendReal(tag.code, wanted[placeOf(tag.code)]);
    else
      tags.append(tag.code, tag.value);
  });
  layout->setTags(std::move(tags));
}

/// The view "*Active" when it is still that of the empty drawing.
AcDbViewportTableRecord* untouchedView(const AcDbDatabase& database) {
  const AcDbObjectId table = database.viewportTableId();
  AcDbObjectId id;
  if (!table.isLive() || AcDbSymbolTable::cast(table.stub()->object)->getIdAt(L"*Active", id) != Acad::eOk)
    return nullptr;
  auto* const view = AcDbViewportTableRecord::cast(id.stub()->object);
  const bool untouched = view && view->centerPoint().x == kCenterX && view->centerPoint().y == kCenterY &&
                         view->height() == kHeight;
  return untouched ? view : nullptr;
}

}  // namespace

DxfStoredExtents::DxfStoredExtents(AcDbDatabase& database) : m_db(database) {
  const bool recording = database.undoLog().recording();
  const bool modified = database.isModified();
  database.undoLog().setRecording(false);
  std::optional<AcDbExtents> model;
  if (const AcDbBlockTableRecord* space = acdbBlockRecord(database.modelSpaceId()))
    model = measured(*space, storedIn(database, "EXTMIN", "EXTMAX"));
  if (model) {
    database.setHeaderPoint("EXTMIN", model->minPoint());
    database.setHeaderPoint("EXTMAX", model->maxPoint());
  }
  const AcDbObjectId table = database.blockTableId();
  if (table.isLive()) {
    for (const AcDbObjectId id : AcDbSymbolTable::cast(table.stub()->object)->records()) {
      const AcDbBlockTableRecord* const space = acdbBlockRecord(id);
      const bool own = id == database.modelSpaceId();
      if (space && space->isLayout() && (!own || model))
        storeInLayout(space->getLayoutId(), *space, own ? model : std::nullopt);
    }
  }
  m_view = model ? untouchedView(database) : nullptr;
  if (m_view) {
    m_center = m_view->centerPoint();
    m_height = m_view->height();
    const AcGePoint3d low = model->minPoint();
    const AcGePoint3d high = model->maxPoint();
    const double aspect = m_view->aspectRatio() > 0.0 ? m_view->aspectRatio() : 1.0;
    const double height = std::max(high.y - low.y, (high.x - low.x) / aspect) * kMargin;
    m_view->setCenterPoint({(low.x + high.x) / 2.0, (low.y + high.y) / 2.0});
    m_view->setHeight(height > 0.0 ? height : m_height);
  }
  database.undoLog().setRecording(recording);
  database.setModified(modified);
}

DxfStoredExtents::~DxfStoredExtents() {
  if (!m_view) return;
  const bool recording = m_db.undoLog().recording();
  const bool modified = m_db.isModified();
  m_db.undoLog().setRecording(false);
  m_view->setCenterPoint(m_center);
  m_view->setHeight(m_height);
  m_db.undoLog().setRecording(recording);
  m_db.setModified(modified);
}
