#include "arx/db/dbploffset.h"

#include "arx/db/dbpl.h"
#include "arx/db/dbplanemap.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr double kNearer = 1e-6;   // by which a parallel may lie too near, share of the distance and units
constexpr double kTangent = 1e-9;  // sine of the angle between neighbours that pass smoothly into each other

// One segment, moved aside.
struct Moved {
  bool isArc = false;
  AcGePoint2d start;  // of the moved segment, before it is cut
  AcGePoint2d end;
  AcGePoint2d center;
  double radius = 0.0;
  double bulge = 0.0;
  AcGeVector2d inDirection;  // unit vectors of travel at the start and at the end
  AcGeVector2d outDirection;
};

AcGeVector2d right(const AcGeVector2d& direction) { return -direction.perpVector(); }

std::optional<Moved> moveLine(const AcGeLineSeg2d& segment, double offset) {
  Moved moved;
  moved.inDirection = moved.outDirection = segment.direction();
  moved.start = segment.startPoint() + right(moved.inDirection) * offset;
  moved.end = segment.endPoint() + right(moved.inDirection) * offset;
  return moved;
}

std::optional<Moved> moveArc(const AcGePoint2d& start, const AcGePoint2d& end, const AcGeCircArc2d& arc,
                             double offset, double bulge) {
  const double turn = arc.isClockWise() ? -1.0 : 1.0;
  Moved moved;
  moved.isArc = true;
  moved.center = arc.center();
  moved.radius = arc.radius() + offset * turn;  // the right of a counter-clockwise arc lies outside
  if (!(moved.radius > 0)) return std::nullopt;
  moved.bulge = bulge;
  const AcGeVector2d from = (start - arc.center()).normal();
  const AcGeVector2d to = (end - arc.center()).normal();
  moved.start = arc.center() + from * moved.radius;
  moved.end = arc.center() + to * moved.radius;
  moved.inDirection = from.perpVector() * turn;
  moved.outDirection = to.perpVector() * turn;
  return moved;
}

// Candidates where the endless line or whole circle of one cuts that of the other; the one nearest to the
// ends wins.
std::optional<AcGePoint2d> joint(const Moved& first, const Moved& second, const AcGeTol& tol) {
  const double sine = std::fabs(first.outDirection.crossProduct(second.inDirection));
  if (sine <= kTangent && first.outDirection.dotProduct(second.inDirection) > 0) return second.start;
  AcGePoint2d found[2];
  int count = 0;
  const AcGeLine2d firstLine(first.start, first.end);
  const AcGeLine2d secondLine(second.start, second.end);
  const AcGeCircArc2d firstCircle(first.center, first.radius);
  const AcGeCircArc2d secondCircle(second.center, second.radius);
  if (!first.isArc && !second.isArc) {
    count = firstLine.intersectWith(secondLine, found[0], tol) ? 1 : 0;
  } else if (first.isArc && second.isArc) {
    count = firstCircle.intersectWith(secondCircle, found, tol);
  } else {
    count = first.isArc ? firstCircle.intersectWith(secondLine, found, tol)
                        : secondCircle.intersectWith(firstLine, found, tol);
  }
  if (count == 0) return std::nullopt;
  const auto far = [&](const AcGePoint2d& p) { return p.distanceTo(first.end) + p.distanceTo(second.start); };
  return count == 2 && far(found[1]) < far(found[0]) ? found[1] : found[0];
}

// Bulge of a moved segment between its new ends; none when it has turned round or lost its length.
std::optional<double> bulgeBetween(const Moved& moved, const AcGePoint2d& start, const AcGePoint2d& end) {
  if (!moved.isArc) {
    if (!((end - start).dotProduct(moved.inDirection) > 0)) return std::nullopt;
    return 0.0;
  }
  const AcGeCircArc2d circle(moved.center, moved.radius, (start - moved.center).angle(),
                             (end - moved.center).angle(), moved.bulge < 0);
  const double before = 4 * std::atan(moved.bulge);
  // A cut end moves the sweep a little; one that passes the other end makes nearly a whole turn of it.
  if (std::fabs(circle.sweep() - before) > 3.141592653589793) return std::nullopt;
  return std::tan(circle.sweep() / 4);
}

// Where each moved segment starts, and the last one ends; nothing when two neighbours do not meet.
std::vector<AcGePoint2d> endsOf(const std::vector<Moved>& moved, bool closed, const AcGeTol& tol) {
  const std::size_t count = moved.size();
  std::vector<AcGePoint2d> ends(count + 1);
  for (std::size_t k = 0; k <= count; ++k) {
    if (!closed && (k == 0 || k == count)) {
      ends[k] = k == 0 ? moved.front().start : moved.back().end;
      continue;
    }
    const std::optional<AcGePoint2d> meet = joint(moved[(k + count - 1) % count], moved[k % count], tol);
    if (!meet) return {};
    ends[k] = *meet;
  }
  return ends;
}

bool isSegment(const AcDbPolyline& polyline, unsigned int index) {
  const AcDbPolyline::SegType type = polyline.segType(index);
  return type == AcDbPolyline::kLine || type == AcDbPolyline::kArc;
}

// The segment behind a vertex, moved; none when it vanishes.
std::optional<Moved> moveSegment(const AcDbPolyline& polyline, unsigned int index, double offset) {
  AcGeLineSeg2d line;
  if (polyline.getLineSegAt(index, line) == Acad::eOk) return moveLine(line, offset);
  AcGeCircArc2d arc;
  AcGePoint2d start;
  AcGePoint2d end;
  double bulge = 0;
  polyline.getArcSegAt(index, arc);
  polyline.getPointAt(index, start);
  polyline.getPointAt((index + 1) % polyline.numVerts(), end);
  polyline.getBulgeAt(index, bulge);
  return moveArc(start, end, arc, offset, bulge);
}

// A segment that goes on in the parallel, and the vertex behind which it stood.
struct Kept {
  Moved moved;
  unsigned int vertex = 0;
  double length = 0.0;  // of the chord, before
};

// The segments in order; arcs whose radius vanishes are left out at once.
std::vector<Kept> keptSegments(const AcDbPolyline& polyline, double offset) {
  std::vector<Kept> kept;
  for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
    if (!isSegment(polyline, i)) continue;
    AcGePoint2d from, to;
    polyline.getPointAt(i, from);
    polyline.getPointAt((i + 1) % polyline.numVerts(), to);
    if (const std::optional<Moved> moved = moveSegment(polyline, i, offset))
      kept.push_back({*moved, i, from.distanceTo(to)});
  }
  return kept;
}

// Where the segments start and end between their neighbours, with their bulges. The shortest of those that
// turn round goes, until none does; nothing when neighbours do not meet.
std::vector<AcGePoint2d> settle(std::vector<Kept>& kept, bool closed, const AcGeTol& tol) {
  while (!kept.empty()) {
    std::vector<Moved> moved;
    for (const Kept& segment : kept) moved.push_back(segment.moved);
    std::vector<AcGePoint2d> ends = endsOf(moved, closed, tol);
    if (ends.empty()) return {};
    auto shortest = kept.end();
    for (std::size_t k = 0; k < kept.size(); ++k) {
      const std::optional<double> bulge = bulgeBetween(moved[k], ends[k], ends[k + 1]);
      const auto at = kept.begin() + static_cast<std::ptrdiff_t>(k);
      if (!bulge && (shortest == kept.end() || at->length < shortest->length)) shortest = at;
      if (bulge) at->moved.bulge = *bulge;
    }
    if (shortest == kept.end()) return ends;
    kept.erase(shortest);
  }
  return {};
}

// Whether each vertex of a parallel without some of its segments lies as far from the polyline as it ought
// to.
bool keepsDistance(const AcDbPolyline& polyline, const std::vector<AcGePoint2d>& ends, double offset) {
  return std::ranges::all_of(ends, [&](const AcGePoint2d& end) {
    AcGePoint3d foot;
    const AcGePoint3d place = acdbToWorld({end.x, end.y, polyline.elevation()}, polyline.normal());
    return polyline.getClosestPointTo(place, foot) == Acad::eOk &&
           place.distanceTo(foot) >= std::fabs(offset) * (1 - kNearer) - kNearer;
  });
}

}  // namespace

std::vector<AcDbOffsetVertex> acdbOffsetVertices(const AcDbPolyline& polyline, double offset) {
  if (!std::isfinite(offset) || polyline.numVerts() < 2) return {};
  double size = 1;
  std::size_t segments = 0;
  for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
    AcGePoint2d from;
    polyline.getPointAt(i, from);
    size = std::max({size, std::fabs(from.x), std::fabs(from.y)});
    if (isSegment(polyline, i)) ++segments;
  }
  std::vector<Kept> kept = keptSegments(polyline, offset);
  const std::vector<AcGePoint2d> ends = settle(kept, polyline.isClosed(), {1e-9 + size * 8e-15, 1e-12});
  if (ends.empty() || (kept.size() < segments && !keepsDistance(polyline, ends, offset))) return {};
  std::vector<AcDbOffsetVertex> vertices;
  std::size_t k = 0;  // the kept segment that starts at a vertex, or follows a doubled one
  for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
    const bool own = k < kept.size() && kept[k].vertex == i;
    if (isSegment(polyline, i) && !own) continue;  // left out
    vertices.push_back({ends[k], own && kept[k].moved.isArc ? kept[k].moved.bulge : 0.0, i});
    if (own) ++k;
  }
  return vertices;
}
