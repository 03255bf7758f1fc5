#include "arx/ed/edpick.h"

#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbspaceindex.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edfilter.h"
#include "arx/ed/edgraphics.h"
#include "arx/gi/giplan.h"

#include <algorithm>
#include <cmath>

/// A rectangle of the plan view.
struct AcEdBox {
  AcGePoint2d low;
  AcGePoint2d high;
  [[nodiscard]] bool contains(const AcGePoint2d& p) const {
    return p.x >= low.x && p.x <= high.x && p.y >= low.y && p.y <= high.y;
  }
  [[nodiscard]] bool contains(const AcDbExtents& e) const {
    return contains({e.minPoint().x, e.minPoint().y}) && contains({e.maxPoint().x, e.maxPoint().y});
  }
  [[nodiscard]] bool meets(const AcDbExtents& e) const {
    return e.maxPoint().x >= low.x && e.minPoint().x <= high.x && e.maxPoint().y >= low.y &&
           e.minPoint().y <= high.y;
  }
};

namespace {

double distanceToSegment(const AcGePoint2d& p, const AcGePoint2d& a, const AcGePoint2d& b) {
  const AcGeVector2d along = b - a;
  const double square = along.lengthSqrd();
  const double t = square > 0 ? std::clamp((p - a).dotProduct(along) / square, 0.0, 1.0) : 0.0;
  return p.distanceTo(a + along * t);
}

double distanceToBox(const AcGePoint2d& p, const AcDbExtents& box) {
  const double dx = std::max({box.minPoint().x - p.x, 0.0, p.x - box.maxPoint().x});
  const double dy = std::max({box.minPoint().y - p.y, 0.0, p.y - box.maxPoint().y});
  return std::hypot(dx, dy);
}

/// Cuts the segment's share in a slab; false when nothing is left.
bool cut(double from, double delta, double low, double high, double& t0, double& t1) {
  if (delta == 0.0) return from >= low && from <= high;
  const double a = (low - from) / delta;
  const double b = (high - from) / delta;
  t0 = std::max(t0, std::min(a, b));
  t1 = std::min(t1, std::max(a, b));
  return t0 <= t1;
}

bool segmentMeets(const AcEdBox& box, const AcGePoint2d& a, const AcGePoint2d& b) {
  double t0 = 0.0;
  double t1 = 1.0;
  return cut(a.x, b.x - a.x, box.low.x, box.high.x, t0, t1) &&
         cut(a.y, b.y - a.y, box.low.y, box.high.y, t0, t1);
}

AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }

/// Finds the nearest thing drawn: keeps what is nearer than the hit so far.
class Nearest final : public AcGiPlan {
public:
  /// @param limit distance from which on nothing is of interest
  Nearest(AcGiSearch& search, const AcGePoint2d& point, double limit, AcEdHit& hit)
      : AcGiPlan(search), m_point(point), m_limit(limit), m_hit(hit) {}

protected:
  void segment(const AcGePoint2d& from, const AcGePoint2d& to) override {
    consider(distanceToSegment(m_point, from, to));
  }
  void filled(const AcDbExtents& box) override { consider(distanceToBox(m_point, box)); }
  bool matters(const AcDbExtents& box) override {
    const double distance = distanceToBox(m_point, box);
    return distance <= m_limit && distance < m_hit.distance;
  }

private:
  void consider(double distance) {
    if (!(distance < m_hit.distance)) return;
    m_hit.distance = distance;
    m_hit.innermost = drawn().id();
    m_hit.toWorld = drawnToWorld();
    m_hit.references.clear();
    for (auto at = references().rbegin(); at != references().rend(); ++at)
      m_hit.references.push_back((*at)->id());
  }
  AcGePoint2d m_point;
  double m_limit;
  AcEdHit& m_hit;
};

/// Gathers what is drawn near a point, each thing once for each place where a block shows it.
class Around final : public AcGiPlan {
public:
  Around(AcGiSearch& search, const AcGePoint2d& point, double limit, AcDbObjectId entity,
         std::vector<AcEdHit>& hits)
      : AcGiPlan(search), m_point(point), m_limit(limit), m_entity(entity), m_hits(hits) {}

protected:
  void segment(const AcGePoint2d& from, const AcGePoint2d& to) override {
    consider(distanceToSegment(m_point, from, to));
  }
  void filled(const AcDbExtents& box) override { consider(distanceToBox(m_point, box)); }
  bool matters(const AcDbExtents& box) override { return distanceToBox(m_point, box) <= m_limit; }

private:
  void consider(double distance) {
    if (!(distance <= m_limit) || (m_latest == &drawn() && m_depth == references())) return;
    m_latest = &drawn();
    m_depth = references();
    AcEdHit& hit = m_hits.emplace_back();
    hit.entity = m_entity;
    hit.innermost = drawn().id();
    hit.toWorld = drawnToWorld();
    hit.distance = distance;
    for (auto at = references().rbegin(); at != references().rend(); ++at)
      hit.references.push_back((*at)->id());
  }
  AcGePoint2d m_point;
  double m_limit;
  AcDbObjectId m_entity;
  std::vector<AcEdHit>& m_hits;
  const AcGiDrawable* m_latest = nullptr;  // what the last hit is of
  std::vector<const AcGiDrawable*> m_depth;
};

/// Whether anything drawn lies in a rectangle, partly at least.
class Crossing final : public AcGiPlan {
public:
  Crossing(AcGiSearch& search, const AcEdBox& window) : AcGiPlan(search), m_window(window) {}
  [[nodiscard]] bool meets() const { return m_meets; }

protected:
  void segment(const AcGePoint2d& from, const AcGePoint2d& to) override {
    if (!m_meets) note(segmentMeets(m_window, from, to));
  }
  void filled(const AcDbExtents& box) override { note(m_window.meets(box)); }
  bool matters(const AcDbExtents& box) override { return m_window.meets(box); }

private:
  void note(bool meets) {
    m_meets = m_meets || meets;
    if (m_meets) finish();
  }
  const AcEdBox& m_window;
  bool m_meets = false;
};

/// How something drawn lies to a line of selection. A box counts with its sides, and fills what is between.
class Relation final : public AcGiPlan {
public:
  /// @param wholly  asks for what is within alone, else for what meets
  Relation(AcGiSearch& search, const AcEdOutline& line, const AcEdBox& reach, bool wholly)
      : AcGiPlan(search), m_line(line), m_reach(reach), m_wholly(wholly) {}
  /// Wholly in the polygon; false for what has no shape.
  [[nodiscard]] bool isWithin() const { return m_drawn && m_within; }
  /// Partly in the polygon, or on the line.
  [[nodiscard]] bool meets() const { return m_meets; }

protected:
  void segment(const AcGePoint2d& from, const AcGePoint2d& to) override {
    m_drawn = true;
    if (m_wholly)
      m_within = m_within && m_line.holds(from) && m_line.holds(to) && !m_line.cuts(from, to);
    else
      m_meets = m_meets || m_line.holds(from) || m_line.crosses(from, to);
    if (m_wholly ? !m_within : m_meets) finish();
  }
  void filled(const AcDbExtents& box) override {
    const AcGePoint2d low = flat(box.minPoint());
    const AcGePoint2d high = flat(box.maxPoint());
    const AcGePoint2d corners[] = {low, {high.x, low.y}, high, {low.x, high.y}, low};
    for (std::size_t i = 0; i < 4; ++i) segment(corners[i], corners[i + 1]);
    m_meets = m_meets || distanceToBox(m_line.points().front(), box) == 0.0;
  }
  bool matters(const AcDbExtents& box) override {
    if (!m_reach.meets(box)) {  // nothing of it meets; all of it lies without
      m_drawn = true;
      m_within = false;
      if (m_wholly) finish();
      return false;
    }
    // What fills a box that lies within lies within; its sides tell that.
    return !m_wholly || !liesWithin(box);
  }

private:
  bool liesWithin(const AcDbExtents& box) {
    const AcGePoint2d low = flat(box.minPoint());
    const AcGePoint2d high = flat(box.maxPoint());
    const AcGePoint2d corners[] = {low, {high.x, low.y}, high, {low.x, high.y}, low};
    for (std::size_t i = 0; i < 4; ++i)
      if (!m_line.holds(corners[i]) || m_line.crosses(corners[i], corners[i + 1])) return false;
    m_drawn = true;
    return true;
  }
  const AcEdOutline& m_line;
  const AcEdBox& m_reach;
  bool m_wholly;
  bool m_drawn = false;
  bool m_within = true;
  bool m_meets = false;
};

constexpr double kKeptBehind = 0.1;  // of the aperture, that what is only kept counts as farther

/// Of the curves and areas in blocks, for one search: each entity may show some, and a few much more.
constexpr std::size_t kBudget = 1000000;
constexpr std::size_t kBudgetOfEach = 20;

/// A search that tells when it was given up.
class Search : public AcGiSearch {
public:
  explicit Search(std::size_t entities) : AcGiSearch(kBudget + kBudgetOfEach * entities) {}
  ~Search() {
    if (isSpent())
      acutPrintf(
          L"\nRecherche abandonnée : des blocs imbriqués montrent trop d'objets, certains n'ont pas "
          L"été examinés.\n");
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;
};

/// Visits the entities that can be seen, in order of drawing: `work(id, entity)`.
template <class Work>
void forEachSeen(AcDbDatabase& database, Work work) {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(database.modelSpaceId());
  if (!record) return;
  for (const AcDbObjectId id : record->entities()) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity && entity->isSeen()) work(id, *entity);
  }
}

/// Visits model space and the spaces of the layouts: `work(record)`.
template <class Work>
void forEachLayout(AcDbDatabase& database, Work work) {
  const AcDbObjectPointer<AcDbBlockTable> blocks(database.blockTableId());
  if (!blocks) return;
  for (const AcDbObjectId space : blocks->records()) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(space);
    if (record && (record->isLayout() || space == database.modelSpaceId())) work(*record);
  }
}

/// What lies within a distance of a point; wider by what the sums may be rounded.
AcEdBox reachOf(const AcGePoint2d& at, double distance) {
  const double reach = distance + 1e-12 * (std::fabs(at.x) + std::fabs(at.y) + distance);
  return {{at.x - reach, at.y - reach}, {at.x + reach, at.y + reach}};
}

}  // namespace

std::size_t AcEdPicker::living() const {
  if (m_way == Way::kIndex) return m_database.spaceIndex().living();
  const AcDbObjectPointer<AcDbBlockTableRecord> record(m_database.modelSpaceId());
  const auto live = [](AcDbObjectId id) { return id.isLive(); };
  return record ? static_cast<std::size_t>(std::ranges::count_if(record->entities(), live)) : 0;
}

/// Visits the entities that can be seen and may lie in a rectangle, and others, in order of drawing:
/// `work(id, entity, box)`, box empty for none.
template <class Work>
void AcEdPicker::forEachNear(const AcEdBox& around, Work work) const {
  if (m_way == Way::kWalk)
    return forEachSeen(m_database, [&](AcDbObjectId id, const AcDbEntity& entity) {
      AcDbExtents box;
      entity.getGeomExtents(box);
      work(id, entity, box);
    });
  const AcDbObjectPointer<AcDbBlockTableRecord> record(m_database.modelSpaceId());
  if (!record) return;
  AcDbSpaceIndex& index = m_database.spaceIndex();
  for (const std::size_t place : index.touching({around.low.x, around.low.y, around.high.x, around.high.y})) {
    const AcDbObjectId id = record->entities()[place];
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity && entity->isSeen()) work(id, *entity, index.boxAt(place));
  }
}

std::vector<AcDbObjectId> AcEdPicker::visible(bool unlocked) const {
  std::vector<AcDbObjectId> seen;
  forEachSeen(m_database, [&](AcDbObjectId id, const AcDbEntity& entity) {
    if (!unlocked || !entity.layerState().locked) seen.push_back(id);
  });
  return seen;
}

AcDbObjectId AcEdPicker::lastVisible() const {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(m_database.modelSpaceId());
  if (!record) return {};
  const auto& all = record->entities();
  const auto seen = std::find_if(all.rbegin(), all.rend(), [](AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    return entity && entity->isSeen();
  });
  return seen != all.rend() ? *seen : AcDbObjectId();
}

std::vector<AcDbObjectId> AcEdPicker::fitting(const AcEdFilter& filter) const {
  std::vector<AcDbObjectId> found;
  const auto look = [&](AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity && filter.fits(*entity)) found.push_back(id);
  };
  forEachLayout(m_database, [&](const AcDbBlockTableRecord& record) {
    const auto places = m_way == Way::kIndex ? filter.candidates(record) : std::nullopt;
    if (!places) std::ranges::for_each(record.entities(), look);
    if (places)
      for (const std::size_t place : *places) look(record.entities()[place]);
  });
  return found;
}

std::optional<AcEdHit> AcEdPicker::pick(const AcGePoint3d& point, double aperture) const {
  const AcGePoint2d at = flat(point);
  std::optional<AcEdHit> best;
  double bestRank = 0.0;
  Search search(living());
  const AcEdBox near = reachOf(at, aperture);
  forEachNear(near, [&](AcDbObjectId id, const AcDbEntity& entity, const AcDbExtents& extents) {
    AcEdHit hit;
    hit.distance = HUGE_VAL;
    // The place of a block is found even where nothing is drawn.
    if (const AcDbBlockReference* reference = AcDbBlockReference::cast(&entity)) {
      hit.distance = flat(reference->position()).distanceTo(at);
      hit.innermost = id;
    }
    if (extents.isEmpty() || distanceToBox(at, extents) <= aperture)
      Nearest(search, at, aperture, hit).draw(entity);
    if (hit.distance > aperture) return;
    const double rank = hit.distance + (AcDbOtherEntity::cast(&entity) ? aperture * kKeptBehind : 0.0);
    if (best && rank > bestRank) return;
    hit.entity = id;
    best = std::move(hit);
    bestRank = rank;
  });
  return best;
}

std::vector<AcEdHit> AcEdPicker::around(const AcGePoint3d& point, double aperture) const {
  const AcGePoint2d at = flat(point);
  std::vector<AcEdHit> hits;
  Search search(living());
  forEachNear(reachOf(at, aperture), [&](AcDbObjectId id, const AcDbEntity& entity, const AcDbExtents& box) {
    const AcDbBlockReference* const reference = AcDbBlockReference::cast(&entity);
    if (reference && flat(reference->position()).distanceTo(at) <= aperture) {
      AcEdHit& hit = hits.emplace_back();
      hit.entity = hit.innermost = id;
    }
    if (box.isEmpty() || distanceToBox(at, box) <= aperture)
      Around(search, at, aperture, id, hits).draw(entity);
  });
  return hits;
}

std::vector<AcDbObjectId> AcEdPicker::window(const AcGePoint3d& a, const AcGePoint3d& b,
                                             bool crossing) const {
  const AcEdBox box = {{std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
  std::vector<AcDbObjectId> found;
  Search search(living());
  forEachNear(box, [&](AcDbObjectId id, const AcDbEntity& entity, const AcDbExtents& extents) {
    const bool endless = extents.isEmpty();  // or nothing at all, which meets nothing
    bool inside = !endless && box.contains(extents);
    if (!inside && crossing && (endless || box.meets(extents))) {
      Crossing look(search, box);
      look.draw(entity);
      inside = look.meets();
    }
    if (inside) found.push_back(id);
  });
  return found;
}

std::vector<AcDbObjectId> AcEdPicker::outline(const AcEdOutline& line, bool crossing) const {
  std::vector<AcDbObjectId> found;
  if (line.points().size() < (line.closed() ? 3U : 2U)) return found;
  AcDbExtents reach;
  for (const AcGePoint2d& point : line.points()) reach.addPoint({point.x, point.y, 0.0});
  const AcEdBox box = {flat(reach.minPoint()), flat(reach.maxPoint())};
  const bool wholly = !crossing && line.closed();
  Search search(living());
  forEachNear(box, [&](AcDbObjectId id, const AcDbEntity& entity, const AcDbExtents& extents) {
    if (extents.isEmpty() ? wholly : !box.meets(extents)) return;
    Relation look(search, line, box, wholly);
    look.draw(entity);
    if (wholly ? look.isWithin() && !search.isSpent() : look.meets()) found.push_back(id);
  });
  return found;
}

double acedPickAperture() { return acedView().height / 100.0; }
