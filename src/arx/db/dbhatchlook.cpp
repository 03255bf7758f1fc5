#include "arx/db/dbhatchlook.h"

#include "arx/db/dbkeptpen.h"
#include "arx/ge/geangle.h"
#include "arx/ge/gearc2d.h"
#include "arx/ge/genurbs.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

constexpr double kMostLines = 20000;
constexpr double kMostDashes = 20000;  // on one line
constexpr int kMostParts = 1000000;    // that a count of the file may promise

double radians(double degrees) { return degrees * kTurn / 360.0; }

/// The groups of a hatch in order, as numbers.
class HatchGroups {
public:
  explicit HatchGroups(const DxfTagText& tags) : m_cursor(tags.tags()) { advance(); }
  [[nodiscard]] bool atEnd() const { return m_end; }
  [[nodiscard]] int code() const { return m_tag.code; }
  [[nodiscard]] double value() const { return m_value; }
  void advance() {
    m_end = !m_cursor.next(m_tag);
    m_value = 0.0;
    const DxfKind kind = dxfKind(m_end ? 0 : m_tag.code);
    const bool number = kind == DxfKind::kReal || kind == DxfKind::kPoint || kind == DxfKind::kInt16 ||
                        kind == DxfKind::kInt32;
    if (!m_end && number && !dxfParseReal(m_tag.value, m_value)) m_end = true;
  }
  /// The value of this group when it is the next, which is passed; else the fallback.
  double take(int code, double fallback = 0.0) {
    if (m_end || m_tag.code != code) return fallback;
    const double value = m_value;
    advance();
    return value;
  }
  AcGePoint2d point(int code) {
    const double x = take(code);
    return {x, take(code + 10)};
  }
  int count(int code) {
    return static_cast<int>(std::clamp(take(code), 0.0, static_cast<double>(kMostParts)));
  }

private:
  DxfTagText::Cursor m_cursor;
  DxfTag m_tag;
  double m_value = 0.0;
  bool m_end = false;
};

using Ring = std::vector<AcGePoint2d>;

/// center + x cos a + y sin a, its end included.
void addArc(Ring& ring, const AcGePoint2d& center, const AcGeVector2d& x, const AcGeVector2d& y, double from,
            double sweep) {
  const double turn = std::isfinite(sweep) ? std::clamp(sweep, -kTurn, kTurn) : 0.0;
  const int parts = std::max(1, static_cast<int>(std::ceil(std::fabs(turn) * 128 / kTurn)));
  for (int i = 0; i <= parts; ++i) {
    const double a = from + turn * i / parts;
    ring.push_back(center + x * std::cos(a) + y * std::sin(a));
  }
}

void readPolyline(HatchGroups& in, Ring& ring) {
  const bool bulges = in.take(72) != 0.0;
  in.take(73);
  std::vector<double> bulge;
  Ring corners;
  for (int n = in.count(93); n > 0 && !in.atEnd(); --n) {
    corners.push_back(in.point(10));
    bulge.push_back(bulges ? in.take(42) : 0.0);
  }
  for (std::size_t i = 0; i < corners.size(); ++i) {
    ring.push_back(corners[i]);
    const AcGeCircArc2d arc(corners[i], corners[(i + 1) % corners.size()], bulge[i]);
    if (bulge[i] != 0.0 && arc.radius() > 0.0)
      addArc(ring, arc.center(), {arc.radius(), 0}, {0, arc.radius()}, arc.startAng(), arc.sweep());
  }
}

void readSpline(HatchGroups& in, Ring& ring) {
  AcGeNurbs spline;
  spline.degree = static_cast<int>(in.take(94));
  const bool rational = in.take(73) != 0.0;
  in.take(74);
  const int knots = in.count(95);
  const int controls = in.count(96);
  for (int i = 0; i < knots && !in.atEnd(); ++i) spline.knots.push_back(in.take(40));
  for (int i = 0; i < controls && !in.atEnd(); ++i) {
    const AcGePoint2d p = in.point(10);
    spline.controls.emplace_back(p.x, p.y, 0.0);
    if (rational) spline.weights.push_back(in.take(42, 1.0));
  }
  if (!spline.isUsable()) return;
  for (const AcGeSplineSpan& span : spline.spans()) {
    for (int i = 0; i <= 16; ++i) {
      const AcGePoint3d p = span.curve.pointAt(i / 16.0);
      ring.push_back({p.x, p.y});
    }
  }
}

/// @return false for an edge of a kind that does not exist
bool readEdge(HatchGroups& in, Ring& ring) {
  switch (static_cast<int>(in.take(72))) {
    case 1:
      ring.push_back(in.point(10));
      ring.push_back(in.point(11));
      return true;
    case 2: {
      const AcGePoint2d center = in.point(10);
      const double radius = in.take(40);
      const double from = radians(in.take(50));
      const double sweep = radians(in.take(51)) - from;
      const double side =
          in.take(73, 1.0) != 0.0 ? 1.0 : -1.0;  // clockwise angles are told as of the mirrored arc
      addArc(ring, center, {radius, 0}, {0, radius * side}, from, sweep);
      return true;
    }
    case 3: {
      const AcGePoint2d center = in.point(10);
      const AcGePoint2d end = in.point(11);
      const AcGeVector2d major(end.x, end.y);
      const double ratio = in.take(40, 1.0);
      const double from = radians(in.take(50));
      const double sweep = radians(in.take(51)) - from;
      const double side = in.take(73, 1.0) != 0.0 ? 1.0 : -1.0;
      addArc(ring, center, major, major.perpVector() * (ratio * side), from, sweep);
      return true;
    }
    case 4:
      readSpline(in, ring);
      return true;
    default:
      return false;
  }
}

/// Where a line crosses the rings: lengths along it from `base`, ascending.
std::vector<double> crossings(const std::vector<Ring>& rings, const AcGePoint2d& base,
                              const AcGeVector2d& along) {
  std::vector<double> found;
  const AcGeVector2d across = along.perpVector();
  for (const Ring& ring : rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const AcGeVector2d a = ring[i] - base;
      const AcGeVector2d b = ring[(i + 1) % ring.size()] - base;
      const double ha = a.dotProduct(across);
      const double hb = b.dotProduct(across);
      if ((ha < 0.0) == (hb < 0.0)) continue;
      const double share = ha / (ha - hb);
      found.push_back(a.dotProduct(along) + (b - a).dotProduct(along) * share);
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

void drawDashes(const std::vector<double>& dashes, double from, double to,
                const std::function<void(double, double)>& stretch) {
  double period = 0.0;
  for (const double dash : dashes) period += std::fabs(dash);
  if (!(period > 0.0) || (to - from) / period * static_cast<double>(dashes.size()) > kMostDashes)
    return stretch(from, to);
  double at = std::floor(from / period) * period;
  for (std::size_t i = 0; at < to; i = (i + 1) % dashes.size()) {
    const double end = at + std::fabs(dashes[i]);
    if (dashes[i] >= 0.0 && end >= from) stretch(std::max(at, from), std::min(end, to));
    at = end;
  }
}

}  // namespace

AcDbHatchLook::AcDbHatchLook(const DxfTagText& tags) {
  HatchGroups in(tags);
  double z[3] = {0, 0, 1};
  for (int n = 0; !in.atEnd();) {
    const int code = in.code();
    if (code == 30) elevation = in.value();
    if (code == 210 || code == 220 || code == 230) z[(code - 210) / 10] = in.value();
    if (code == 70) solid = in.value() != 0.0;
    if (code == 91) n = in.count(91);
    if (code == 91) {
      for (; n > 0 && !in.atEnd(); --n) {
        while (!in.atEnd() && in.code() != 92) in.advance();
        const int kind = static_cast<int>(in.take(92));
        Ring ring;
        bool good = true;
        if ((kind & 2) != 0) {
          readPolyline(in, ring);
        } else {
          for (int edges = in.count(93); good && edges > 0 && !in.atEnd(); --edges) good = readEdge(in, ring);
        }
        if (ring.size() > 2) rings.push_back(std::move(ring));
        if (!good) break;
      }
      continue;
    }
    if (code == 53) {
      Lines lines;
      lines.angle = radians(in.take(53));
      lines.base = {in.take(43), in.take(44)};
      lines.offset = {in.take(45), in.take(46)};
      for (int dashes = in.count(79); dashes > 0 && !in.atEnd(); --dashes)
        lines.dashes.push_back(in.take(49));
      families.push_back(std::move(lines));
      continue;
    }
    in.advance();
  }
  normal = AcGeVector3d(z[0], z[1], z[2]);
}

void AcDbHatchLook::draw(const AcDbKeptPen& pen) const {
  if (!solid && pen.renderer()) {
    for (const Lines& lines : families) drawLines(*pen.renderer(), lines);
    return;
  }
  std::vector<std::vector<AcGePoint3d>> filled;
  for (const Ring& ring : rings) {
    std::vector<AcGePoint3d>& corners = filled.emplace_back();
    for (const AcGePoint2d& p : ring) corners.emplace_back(p.x, p.y, elevation);
  }
  pen.polygon(filled);
}

void AcDbHatchLook::drawLines(AcGiRenderer& renderer, const Lines& lines) const {
  const AcGeVector2d along(std::cos(lines.angle), std::sin(lines.angle));
  const AcGeVector2d across = along.perpVector();
  const double pitch = lines.offset.dotProduct(across);
  if (pitch == 0.0 || !std::isfinite(pitch)) return;
  double first = 1e300;
  double last = -1e300;
  for (const Ring& ring : rings) {
    for (const AcGePoint2d& p : ring) {
      const double rank = (p - lines.base).dotProduct(across) / pitch;
      first = std::min(first, rank);
      last = std::max(last, rank);
    }
  }
  if (!(last - first <= kMostLines) || std::fabs(first) > 1e15) return;
  for (double rank = std::ceil(first); rank <= last; rank += 1.0) {
    const AcGePoint2d base = lines.base + lines.offset * rank;
    const std::vector<double> cuts = crossings(rings, base, along);
    for (std::size_t i = 0; i + 1 < cuts.size(); i += 2) {
      drawDashes(lines.dashes, cuts[i], cuts[i + 1], [&](double from, double to) {
        const AcGePoint2d a = base + along * from;
        const AcGePoint2d b = base + along * to;
        const AcGePoint3d ends[] = {{a.x, a.y, elevation}, {b.x, b.y, elevation}};
        renderer.edges(ends);
      });
    }
  }
}
