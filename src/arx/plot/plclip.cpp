#include "arx/plot/plclip.h"

#include <cmath>

namespace {

constexpr double kSharpestMitre = 4.0;  // half widths

/// The shares of a segment within a box (Y. Liang, B. Barsky, 1984). @return false when it lies outside
bool sharesWithin(const AcGePoint2d& a, const AcGePoint2d& b, const AcPlBox& box, double& from, double& to) {
  from = 0.0;
  to = 1.0;
  const AcGeVector2d d = b - a;
  const double steps[4] = {-d.x, d.x, -d.y, d.y};
  const double rooms[4] = {a.x - box.left, box.right - a.x, a.y - box.bottom, box.top - a.y};
  for (int i = 0; i < 4; ++i) {
    if (steps[i] == 0.0) {
      if (rooms[i] < 0.0) return false;
      continue;
    }
    const double share = rooms[i] / steps[i];
    if (steps[i] < 0.0)
      from = std::max(from, share);
    else
      to = std::min(to, share);
  }
  return from <= to;
}

using Points = std::vector<AcGePoint2d>;

/// Keeps what lies on the side of a line where `room` is not negative.
template <class Room>
Points cutSide(const Points& ring, Room room) {
  Points kept;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const AcGePoint2d& a = ring[i];
    const AcGePoint2d& b = ring[(i + 1) % ring.size()];
    const double ra = room(a);
    const double rb = room(b);
    if (ra >= 0.0) kept.push_back(a);
    if ((ra < 0.0) != (rb < 0.0)) kept.push_back(a + (b - a) * (ra / (ra - rb)));
  }
  return kept;
}

}  // namespace

void acplClipLine(std::span<const AcGePoint2d> points, const AcPlBox& box,
                  const std::function<void(std::span<const AcGePoint2d>, double)>& run) {
  Points inside;
  double before = 0.0;  // length up to the segment
  double start = 0.0;   // and up to the run
  const auto flush = [&] {
    if (inside.size() > 1) run(inside, start);
    inside.clear();
  };
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const AcGePoint2d& a = points[i];
    const AcGePoint2d& b = points[i + 1];
    const double length = a.distanceTo(b);
    double from = 0.0;
    double to = 1.0;
    if (sharesWithin(a, b, box, from, to)) {
      if (from > 0.0) flush();
      if (inside.empty()) {
        start = before + length * from;
        inside.push_back(from > 0.0 ? a + (b - a) * from : a);
      }
      inside.push_back(to < 1.0 ? a + (b - a) * to : b);
      if (to < 1.0) flush();
    } else {
      flush();
    }
    before += length;
  }
  flush();
}

std::vector<AcGePoint2d> acplClipRing(std::span<const AcGePoint2d> ring, const AcPlBox& box) {
  Points kept(ring.begin(), ring.end());
  kept = cutSide(kept, [&](const AcGePoint2d& p) { return p.x - box.left; });
  kept = cutSide(kept, [&](const AcGePoint2d& p) { return box.right - p.x; });
  kept = cutSide(kept, [&](const AcGePoint2d& p) { return p.y - box.bottom; });
  return cutSide(kept, [&](const AcGePoint2d& p) { return box.top - p.y; });
}

std::vector<AcGePoint2d> acplWiden(std::span<const AcGePoint2d> points, double startWidth, double endWidth) {
  Points line;
  for (const AcGePoint2d& p : points)
    if (line.empty() || p.distanceTo(line.back()) > 0.0) line.push_back(p);
  if (line.size() < 2) return {};
  double length = 0.0;
  for (std::size_t i = 0; i + 1 < line.size(); ++i) length += line[i].distanceTo(line[i + 1]);
  Points left;
  Points right;
  double at = 0.0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (i > 0) at += line[i - 1].distanceTo(line[i]);
    const AcGeVector2d in = (line[i] - line[i > 0 ? i - 1 : 0]).normal();
    const AcGeVector2d out = (line[std::min(i + 1, line.size() - 1)] - line[i]).normal();
    const AcGeVector2d before = i > 0 ? in.perpVector() : out.perpVector();
    const AcGeVector2d after = i + 1 < line.size() ? out.perpVector() : before;
    const AcGeVector2d middle = (before + after).normal();
    const double cosine = middle.dotProduct(after);
    const double half = (startWidth + (endWidth - startWidth) * at / length) / 2;
    const AcGeVector2d side = middle * (half * std::min(kSharpestMitre, cosine > 0.0 ? 1 / cosine : 1.0));
    left.push_back(line[i] + side);
    right.push_back(line[i] - side);
  }
  left.insert(left.end(), right.rbegin(), right.rend());
  return left;
}
