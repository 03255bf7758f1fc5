#include "arx/ed/edpick.h"

#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edgraphics.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_map>

namespace {

/// Blocks in blocks are looked into so deep; a block that shows itself ends here.
constexpr int kMostNested = 16;
/// Chord of an arc on the search for crossings and picks: a 256th of a turn, off the arc by 0.00008 of the
/// radius.
constexpr double kChord = 6.283185307179586 / 256.0;

struct Box {
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

bool segmentMeets(const Box& box, const AcGePoint2d& a, const AcGePoint2d& b) {
  double t0 = 0.0;
  double t1 = 1.0;
  return cut(a.x, b.x - a.x, box.low.x, box.high.x, t0, t1) &&
         cut(a.y, b.y - a.y, box.low.y, box.high.y, t0, t1);
}

AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }

using SegmentVisitor = std::function<void(const AcGePoint2d&, const AcGePoint2d&)>;

void visitPiece(const AcDbCurvePiece& piece, const AcGeMatrix3d& matrix, const SegmentVisitor& visit) {
  // A ray is followed as far as coordinates of drawings reach.
  constexpr double kFar = 1e9;
  const AcGePoint3d end = piece.endless ? piece.start + (piece.end - piece.start).normal() * kFar : piece.end;
  if (!piece.isArc) return visit(flat(matrix * piece.start), flat(matrix * end));
  const int chords = std::max(1, static_cast<int>(std::ceil(std::min(std::abs(piece.sweep), 7.0) / kChord)));
  AcGePoint2d from = flat(matrix * piece.start);
  for (int i = 1; i <= chords; ++i) {
    const AcGePoint2d to = flat(matrix * piece.pointAt(static_cast<double>(i) / chords));
    visit(from, to);
    from = to;
  }
}

/// Something drawn by itself: not a block reference.
struct Leaf {
  const AcDbEntity& entity;
  const AcGeMatrix3d& matrix;
  const std::vector<AcDbObjectId>& references;  // outermost first
};
using LeafVisitor = std::function<void(const Leaf&)>;

class Walk {
public:
  explicit Walk(const LeafVisitor& visit) : m_visit(visit) {}

  void entity(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    if (entity.visibility() == AcDb::kInvisible) return;
    const AcDbBlockReference* reference = AcDbBlockReference::cast(&entity);
    if (!reference) return m_visit({entity, matrix, m_references});
    if (m_references.size() >= kMostNested) return;
    attributes(*reference, matrix);
    m_references.push_back(reference->objectId());
    block(*reference, matrix * reference->blockTransform());
    m_references.pop_back();
  }

private:
  void attributes(const AcDbBlockReference& reference, const AcGeMatrix3d& matrix) {
    for (const AcDbObjectId id : reference.subEntityIds()) {
      if (!id.isLive()) continue;
      const AcDbObjectPointer<AcDbAttribute> attribute(id);
      if (attribute && !attribute->isInvisible() && attribute->visibility() == AcDb::kVisible)
        m_visit({*attribute, matrix, m_references});
    }
  }

  void block(const AcDbBlockReference& reference, const AcGeMatrix3d& matrix) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(reference.blockTableRecord());
    if (!record) return;
    for (const AcDbObjectId id : record->entities()) {
      if (!id.isLive()) continue;
      const AcDbObjectPointer<AcDbEntity> inner(id);
      if (!inner ||
          (AcDbAttributeDefinition::cast(inner) && !AcDbAttributeDefinition::cast(inner)->isConstant()))
        continue;
      entity(*inner, matrix);
    }
  }

  const LeafVisitor& m_visit;
  std::vector<AcDbObjectId> m_references;
};

/// Distance of a leaf from a point, without end for what has no shape.
double leafDistance(const Leaf& leaf, const AcGePoint2d& point) {
  double best = HUGE_VAL;
  if (const AcDbCurve* curve = AcDbCurve::cast(&leaf.entity)) {
    for (const AcDbCurvePiece& piece : curve->pieces()) {
      visitPiece(piece, leaf.matrix, [&](const AcGePoint2d& a, const AcGePoint2d& b) {
        best = std::min(best, distanceToSegment(point, a, b));
      });
    }
    return best;
  }
  AcDbExtents box;
  leaf.entity.addExtentsUnder(leaf.matrix, box);
  return box.isEmpty() ? best : distanceToBox(point, box);
}

/// What is drawn of a leaf: its segments, or the sides of the box around it.
void visitSegments(const Leaf& leaf, const SegmentVisitor& visit) {
  if (const AcDbCurve* curve = AcDbCurve::cast(&leaf.entity)) {
    for (const AcDbCurvePiece& piece : curve->pieces()) visitPiece(piece, leaf.matrix, visit);
    return;
  }
  AcDbExtents box;
  leaf.entity.addExtentsUnder(leaf.matrix, box);
  if (box.isEmpty()) return;
  const AcGePoint2d low = flat(box.minPoint());
  const AcGePoint2d high = flat(box.maxPoint());
  const AcGePoint2d corners[] = {low, {high.x, low.y}, high, {low.x, high.y}, low};
  for (std::size_t i = 0; i < 4; ++i) visit(corners[i], corners[i + 1]);
}

/// Whether a point lies within a leaf that fills its box, as texts do.
bool leafHolds(const Leaf& leaf, const AcGePoint2d& point) {
  AcDbExtents box;
  if (AcDbCurve::cast(&leaf.entity)) return false;
  leaf.entity.addExtentsUnder(leaf.matrix, box);
  return !box.isEmpty() && distanceToBox(point, box) == 0.0;
}

/// How an entity lies to a line of selection.
struct Relation {
  bool drawn = false;  ///< it has a shape at all
  bool within = true;  ///< wholly in the polygon
  bool meets = false;  ///< partly in the polygon, or on the line
  void add(const Leaf& leaf, const AcEdOutline& line) {
    visitSegments(leaf, [&](const AcGePoint2d& a, const AcGePoint2d& b) {
      drawn = true;
      within = within && line.holds(a) && line.holds(b) && !line.cuts(a, b);
      meets = meets || line.holds(a) || line.crosses(a, b);
    });
    meets = meets || leafHolds(leaf, line.points().front());
  }
};

bool leafMeets(const Leaf& leaf, const Box& window) {
  bool meets = false;
  if (const AcDbCurve* curve = AcDbCurve::cast(&leaf.entity)) {
    for (const AcDbCurvePiece& piece : curve->pieces()) {
      visitPiece(piece, leaf.matrix, [&](const AcGePoint2d& a, const AcGePoint2d& b) {
        meets = meets || segmentMeets(window, a, b);
      });
    }
    return meets;
  }
  AcDbExtents box;
  leaf.entity.addExtentsUnder(leaf.matrix, box);
  return !box.isEmpty() && window.meets(box);
}

/// Layers that are looked at, each once.
class LayerStates {
public:
  struct State {
    bool visible = true;
    bool locked = false;
  };
  const State& of(AcDbObjectId layer) {
    const auto [at, isNew] = m_states.try_emplace(layer);
    if (!isNew) return at->second;
    const AcDbObjectPointer<AcDbLayerTableRecord> record(layer);
    if (record) at->second = {!record->isOff() && !record->isFrozen(), record->isLocked()};
    return at->second;
  }

private:
  std::unordered_map<AcDbObjectId, State> m_states;
};

std::vector<AcDbObjectId> entitiesOf(AcDbObjectId space) {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(space);
  std::vector<AcDbObjectId> live;
  if (!record) return live;
  for (const AcDbObjectId id : record->entities()) {
    if (id.isLive()) live.push_back(id);
  }
  return live;
}

void consider(const Leaf& leaf, const AcGePoint2d& point, AcEdHit& hit) {
  const double distance = leafDistance(leaf, point);
  if (!(distance < hit.distance)) return;
  hit.distance = distance;
  hit.innermost = leaf.entity.objectId();
  hit.toWorld = leaf.matrix;
  hit.references.assign(leaf.references.rbegin(), leaf.references.rend());
}

}  // namespace

std::vector<AcDbObjectId> AcEdPicker::visible(bool unlocked) const {
  LayerStates layers;
  std::vector<AcDbObjectId> seen;
  for (const AcDbObjectId id : entitiesOf(m_database.modelSpaceId())) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity || entity->visibility() == AcDb::kInvisible) continue;
    const LayerStates::State& layer = layers.of(entity->layerId());
    if (layer.visible && !(unlocked && layer.locked)) seen.push_back(id);
  }
  return seen;
}

std::vector<AcDbObjectId> AcEdPicker::all() const {
  std::vector<AcDbObjectId> everything;
  const AcDbObjectPointer<AcDbBlockTable> blocks(m_database.blockTableId());
  if (!blocks) return everything;
  for (const AcDbObjectId space : blocks->records()) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(space);
    if (!record || (!record->isLayout() && space != m_database.modelSpaceId())) continue;
    const std::vector<AcDbObjectId> live = entitiesOf(space);
    everything.insert(everything.end(), live.begin(), live.end());
  }
  return everything;
}

std::optional<AcEdHit> AcEdPicker::pick(const AcGePoint3d& point, double aperture) const {
  const AcGePoint2d at = flat(point);
  std::optional<AcEdHit> best;
  for (const AcDbObjectId id : visible()) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity) continue;
    AcEdHit hit;
    hit.distance = HUGE_VAL;
    // The place of a block is found even where nothing is drawn.
    if (const AcDbBlockReference* reference = AcDbBlockReference::cast(entity)) {
      hit.distance = flat(reference->position()).distanceTo(at);
      hit.innermost = id;
    }
    AcDbExtents extents;
    const bool hasBox = entity->getGeomExtents(extents) == Acad::eOk && !extents.isEmpty();
    if (!hasBox || distanceToBox(at, extents) <= aperture)
      Walk([&](const Leaf& leaf) { consider(leaf, at, hit); }).entity(*entity, AcGeMatrix3d());
    if (hit.distance > aperture || (best && hit.distance > best->distance)) continue;
    hit.entity = id;
    best = std::move(hit);
  }
  return best;
}

std::vector<AcDbObjectId> AcEdPicker::window(const AcGePoint3d& a, const AcGePoint3d& b,
                                             bool crossing) const {
  const Box box = {{std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
  std::vector<AcDbObjectId> found;
  for (const AcDbObjectId id : visible()) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    AcDbExtents extents;
    if (!entity || entity->getGeomExtents(extents) != Acad::eOk || extents.isEmpty()) continue;
    bool inside = box.contains(extents);
    if (!inside && crossing && box.meets(extents))
      Walk([&](const Leaf& leaf) {
        inside = inside || leafMeets(leaf, box);
      }).entity(*entity, AcGeMatrix3d());
    if (inside) found.push_back(id);
  }
  return found;
}

std::vector<AcDbObjectId> AcEdPicker::outline(const AcEdOutline& line, bool crossing) const {
  std::vector<AcDbObjectId> found;
  if (line.points().size() < (line.closed() ? 3U : 2U)) return found;
  AcDbExtents reach;
  for (const AcGePoint2d& point : line.points()) reach.addPoint({point.x, point.y, 0.0});
  const Box box = {flat(reach.minPoint()), flat(reach.maxPoint())};
  for (const AcDbObjectId id : visible()) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    AcDbExtents extents;
    if (!entity || entity->getGeomExtents(extents) != Acad::eOk || extents.isEmpty() || !box.meets(extents))
      continue;
    Relation relation;
    Walk([&](const Leaf& leaf) { relation.add(leaf, line); }).entity(*entity, AcGeMatrix3d());
    if (crossing || !line.closed() ? relation.meets : relation.drawn && relation.within) found.push_back(id);
  }
  return found;
}

double acedPickAperture() { return acedView().height / 100.0; }
