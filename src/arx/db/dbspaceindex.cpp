#include "arx/db/dbspaceindex.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/gi/giextents.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace base = veltora::base;

namespace {

constexpr double kEndless = std::numeric_limits<double>::infinity();
constexpr base::PlaneBox kEverywhere = {-kEndless, -kEndless, kEndless, kEndless};
constexpr int kDeepestOwner = 8;  // parts of parts of a block's entity; beyond it nobody owns anything
// So many touched objects, or one in so many of the entities, are measured one by one.
constexpr std::size_t kManyTouched = 1000;
constexpr std::size_t kShareTouched = 8;

base::PlaneBox flat(const AcDbExtents& box) {
  return {box.minPoint().x, box.minPoint().y, box.maxPoint().x, box.maxPoint().y};
}

bool holds(const base::PlaneBox& box, const AcGePoint3d& p) {
  return p.x >= box.x0 && p.x <= box.x1 && p.y >= box.y0 && p.y <= box.y1;
}

base::PlaneBox around(const base::PlaneBox& box, const AcGePoint3d& p) {
  if (!std::isfinite(p.x) || !std::isfinite(p.y)) return kEverywhere;
  return {std::min(box.x0, p.x), std::min(box.y0, p.y), std::max(box.x1, p.x), std::max(box.y1, p.y)};
}

/// Whether an object that changes no box may change how others look. Entities of other spaces do not, nor
/// does the list of a space, the view, nor data that only routines read.
bool maySetLook(const AcDbStub& stub) {
  return stub.object && !AcDbEntity::cast(stub.object) && !AcDbBlockTableRecord::cast(stub.object) &&
         !AcDbXrecord::cast(stub.object) && !AcDbViewportTableRecord::cast(stub.object);
}

}  // namespace

/// The box of an entity, and what else its look tells.
class AcDbSpaceIndex::Measure final : public AcGiExtents {
public:
  explicit Measure(std::unordered_set<const AcGiDrawable*>& shown) : m_shown(shown) {}
  /// Nothing was handed over, and nothing can have been passed by.
  [[nodiscard]] bool showsNothing() const { return !m_any; }
  void curve(std::span<const AcGeCurvePiece> pieces) override {
    m_any = true;
    AcGiExtents::curve(pieces);
  }
  void area(std::span<const AcGePoint3d> corners) override {
    m_any = true;
    AcGiExtents::area(corners);
  }
  void block(const AcGiBlockPlace& place) override {
    m_any = m_any || !references().empty();
    m_shown.insert(&place.block);
    AcGiExtents::block(place);
  }

private:
  std::unordered_set<const AcGiDrawable*>& m_shown;
  bool m_any = false;
};

std::size_t AcDbSpaceIndex::living() {
  update();
  return m_living;
}

const std::vector<std::size_t>& AcDbSpaceIndex::touching(const base::PlaneBox& box) {
  update();
  return m_tree->touching(box);
}

AcDbObjectId AcDbSpaceIndex::entityAt(std::size_t place) const { return m_space->entities()[place]; }

const AcDbDrawOrder& AcDbSpaceIndex::drawOrder() {
  update();
  if (!m_order || m_orderTouches != m_touches) m_order.emplace(*m_space);
  m_orderTouches = m_touches;
  return *m_order;
}

AcDbExtents AcDbSpaceIndex::wholeBox() {
  update();
  AcDbExtents whole;
  for (const Slot& slot : m_slots)
    if (slot.lives) whole.addExt(slot.box);
  return whole;
}

std::optional<AcDbExtents> AcDbSpaceIndex::takeChange() {
  update();
  const bool known = std::exchange(m_changeKnown, true);
  const AcDbExtents change = std::exchange(m_change, AcDbExtents());
  return known ? std::optional(change) : std::nullopt;
}

/// What an entity shows, before it changes or afterwards.
void AcDbSpaceIndex::noteChange(const Slot& slot) {
  m_change.addExt(slot.box);
  // Shown where nobody knows, or farther than its box says.
  if (slot.indexed && slot.box.isEmpty()) m_changeKnown = false;
}

void AcDbSpaceIndex::update() {
  const AcDbBlockTableRecord* const space = acdbBlockRecord(m_database.modelSpaceId());
  std::vector<std::size_t> places;
  bool anew = space != m_space || !m_tree ||
              m_touched.stubs().size() > std::max(kManyTouched, m_slots.size() / kShareTouched);
  for (std::size_t i = 0; i < m_touched.stubs().size() && !anew; ++i) {
    std::size_t place = 0;
    const Effect effect = effectOf(*m_touched.stubs()[i], place);
    anew = effect == Effect::kAll;
    if (effect == Effect::kNone && maySetLook(*m_touched.stubs()[i])) m_changeKnown = false;
    if (effect == Effect::kOne) places.push_back(place);
  }
  m_touched.clear();
  m_revivals = m_database.undoLog().revivals();
  if (anew) return begin(space);
  // Of a reference and its attributes, which are touched together, one measure does.
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  for (const std::size_t place : places) measureAgain(place);
  if (!space) return;
  std::size_t place = m_places.grow(space->entities());
  for (m_slots.resize(m_places.size()); place < m_slots.size(); ++place) measureAgain(place);
}

void AcDbSpaceIndex::begin(const AcDbBlockTableRecord* space) {
  m_changeKnown = false;
  m_space = space;
  m_slots.clear();
  m_places = {};
  m_farther.clear();
  m_shown.clear();
  m_tree.reset();
  m_living = 0;
  if (space) m_places.grow(space->entities());
  m_slots.resize(m_places.size());
  std::vector<base::NumberedBox> boxes;
  boxes.reserve(m_slots.size());
  for (std::size_t place = 0; place < m_slots.size(); ++place) {
    if (const auto box = measure(m_slots[place], place)) boxes.push_back({place, *box});
  }
  m_tree.emplace().addAll(boxes);
}

AcDbSpaceIndex::Effect AcDbSpaceIndex::effectOfBlock(const AcDbBlockTableRecord& block) const {
  return m_shown.contains(&block) ? Effect::kAll : Effect::kNone;
}

/// What the change of an object does to the boxes. @param place set for one entity
AcDbSpaceIndex::Effect AcDbSpaceIndex::effectOf(AcDbStub& stub, std::size_t& place) const {
  if (!stub.object) return Effect::kNone;
  if (AcDbTextStyleTableRecord::cast(stub.object)) return Effect::kAll;
  if (const auto* block = AcDbBlockTableRecord::cast(stub.object)) {
    // What shows a block that came back from erasure is not known; spaces are touched by each new entity.
    const bool space =
        block == m_space || (block->isLayout() && m_revivals == m_database.undoLog().revivals());
    return space ? effectOfBlock(*block) : Effect::kAll;
  }
  if (!AcDbEntity::cast(stub.object)) return Effect::kNone;
  AcDbStub* part = &stub;
  for (int depth = 0; depth < kDeepestOwner; ++depth) {
    AcDbStub* const owner = part->object->ownerId().stub();
    if (!owner || !owner->object) return Effect::kAll;
    const auto* const block = AcDbBlockTableRecord::cast(owner->object);
    if (!block) {
      part = owner;
      continue;
    }
    const Effect shown = effectOfBlock(*block);
    const std::optional<std::size_t> found =
        block == m_space ? m_places.find(m_space->entities(), AcDbObjectId(part)) : std::nullopt;
    if (shown == Effect::kAll || !found) return shown;
    place = *found;
    return Effect::kOne;
  }
  return Effect::kAll;
}

/// Measures an entity. @return where it may be found; nothing for one that is erased or shows nothing
std::optional<base::PlaneBox> AcDbSpaceIndex::measure(Slot& slot, std::size_t place) {
  const AcDbObjectId id = entityAt(place);
  const auto* const entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
  slot = {};
  if (!entity) return std::nullopt;
  slot.lives = true;
  ++m_living;
  Measure look(m_shown);
  look.show(*entity);
  slot.box = look.box();
  const auto* const reference = AcDbBlockReference::cast(entity);
  std::optional<base::PlaneBox> where;
  if (!slot.box.isEmpty())
    where = flat(slot.box);
  else if (!look.showsNothing())
    where = kEverywhere;
  else if (reference)
    where = {reference->position().x, reference->position().y, reference->position().x,
             reference->position().y};
  if (where && reference && !holds(*where, reference->position()))
    where = around(*where, reference->position());
  slot.indexed = where.has_value();
  slot.farther =
      where && (slot.box.isEmpty() || (reference && !holds(flat(slot.box), reference->position())));
  if (slot.farther) m_farther[place] = *where;
  return where;
}

base::PlaneBox AcDbSpaceIndex::indexedBox(std::size_t place) const {
  return m_slots[place].farther ? m_farther.at(place) : flat(m_slots[place].box);
}

void AcDbSpaceIndex::measureAgain(std::size_t place) {
  Slot& slot = m_slots[place];
  if (slot.indexed) m_tree->remove(place, indexedBox(place));
  if (slot.farther) m_farther.erase(place);
  if (slot.lives) --m_living;
  noteChange(slot);
  if (const auto box = measure(slot, place)) m_tree->add(place, *box);
  noteChange(slot);
}
