#include "arx/ed/edsnap.h"

#include "arx/db/dballents.h"
#include "arx/ed/edpick.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace base = veltora::base;

namespace {

struct SnapWord {
  AcEdSnap snap;
  const wchar_t* international;
  const wchar_t* french;
};
constexpr std::array kWords = {
    SnapWord{AcEdSnap::kEnd, L"ENDPOINT", L"EXTREMITE"},
    SnapWord{AcEdSnap::kMiddle, L"MIDPOINT", L"MILIEU"},
    SnapWord{AcEdSnap::kCenter, L"CENTER", L"CENTRE"},
    SnapWord{AcEdSnap::kIntersection, L"INTERSECTION", L"INTERSECTION"},
    SnapWord{AcEdSnap::kNode, L"NODE", L"NODAL"},
    SnapWord{AcEdSnap::kInsertion, L"INSERTION", L"INSERTION"},
    SnapWord{AcEdSnap::kNearest, L"NEAREST", L"PROCHE"},
    SnapWord{AcEdSnap::kPerpendicular, L"PERPENDICULAR", L"PERPENDICULAIRE"},
};
constexpr std::size_t kShortest = 3;
constexpr std::size_t kMostCrossed = 50;  // entities whose intersections with each other are looked for

std::optional<AcEdSnap> readSnap(const std::wstring& typed) {
  const bool onlyInternational = typed.starts_with(L'_');
  const std::wstring word = base::toUpper(base::trimLeft(typed, L"_"));
  if (word.size() < kShortest) return std::nullopt;
  for (const SnapWord& row : kWords) {
    const bool named = std::wstring_view(row.international).starts_with(word) ||
                       (!onlyInternational && std::wstring_view(row.french).starts_with(word));
    if (named) return row.snap;
  }
  return std::nullopt;
}

double planDistance(const AcGePoint3d& a, const AcGePoint3d& b) { return std::hypot(a.x - b.x, a.y - b.y); }

bool isStraight(const AcGeCurvePiece& piece) { return !piece.isArc && !piece.bezier; }

/// Share of a straight piece's line where a place lies in plan.
double shareInPlan(const AcGeCurvePiece& piece, const AcGePoint3d& place) {
  const double dx = piece.end.x - piece.start.x, dy = piece.end.y - piece.start.y;
  const double square = dx * dx + dy * dy;
  return square > 0 ? ((place.x - piece.start.x) * dx + (place.y - piece.start.y) * dy) / square : 0.0;
}

AcGePoint3d onLine(const AcGeCurvePiece& piece, double share) {
  return piece.start + (piece.end - piece.start) * share;
}

AcGePoint3d nearestInPlan(const AcGeCurvePiece& piece, const AcGePoint3d& place) {
  if (isStraight(piece))
    return onLine(piece, std::clamp(shareInPlan(piece, place), piece.endlessBefore ? -HUGE_VAL : 0.0,
                                    piece.endless ? HUGE_VAL : 1.0));
  return piece.pointAt(piece.closest({place.x, place.y, piece.start.z}, false, piece.endless));
}

/// A piece as a block places it; nothing when it becomes another shape, and for splines of blocks.
std::optional<AcGeCurvePiece> placed(AcGeCurvePiece piece, const AcGeMatrix3d& matrix, bool inBlock) {
  piece.start = matrix * piece.start;
  piece.end = matrix * piece.end;
  if (isStraight(piece)) return piece;
  if (piece.bezier) return inBlock ? std::nullopt : std::optional(piece);
  if (!matrix.isUniScaledOrtho()) return std::nullopt;
  piece.center = matrix * piece.center;
  piece.radius *= (matrix * piece.xAxis).length();
  piece.xAxis = (matrix * piece.xAxis).normal();
  piece.yAxis = (matrix * piece.yAxis).normal();
  return piece;
}

/// Gathers the points of the entities around a place and keeps the nearest.
class Snapping {
public:
  Snapping(const std::vector<AcEdSnap>& snaps, const AcGePoint3d& place, double aperture,
           const AcGePoint3d& from)
      : m_snaps(snaps), m_place(place), m_aperture(aperture), m_from(from) {}
  void look(const AcEdHit& hit);
  void cross(const std::vector<AcEdHit>& hits);
  [[nodiscard]] bool wants(AcEdSnap snap) const { return std::ranges::count(m_snaps, snap) > 0; }
  [[nodiscard]] std::optional<AcGePoint3d> found() const { return m_found; }

private:
  void offer(AcEdSnap snap, const AcGePoint3d& point);
  void curve(const AcDbCurve& curve, const AcGeMatrix3d& toWorld, bool inBlock);
  void piece(const AcGeCurvePiece& piece);
  void perpendicular(const AcGeCurvePiece& piece);

  const std::vector<AcEdSnap>& m_snaps;
  const AcGePoint3d& m_place;
  double m_aperture;
  const AcGePoint3d& m_from;
  std::optional<AcGePoint3d> m_found;
};

void Snapping::offer(AcEdSnap snap, const AcGePoint3d& point) {
  if (!wants(snap)) return;
  if (!m_found || planDistance(point, m_place) < planDistance(*m_found, m_place)) m_found = point;
}

void Snapping::look(const AcEdHit& hit) {
  const AcDbObjectPointer<AcDbEntity> top(hit.entity);
  if (const auto* reference = AcDbBlockReference::cast(top.object()))
    offer(AcEdSnap::kInsertion, reference->position());
  const AcDbObjectPointer<AcDbEntity> entity(hit.innermost);
  if (!entity) return;
  if (const auto* point = AcDbPoint::cast(entity.object()))
    offer(AcEdSnap::kNode, hit.toWorld * point->position());
  if (const auto* text = AcDbText::cast(entity.object()))
    offer(AcEdSnap::kInsertion,
          hit.toWorld * (text->isDefaultAlignment() ? text->position() : text->alignmentPoint()));
  if (const auto* text = AcDbMText::cast(entity.object()))
    offer(AcEdSnap::kInsertion, hit.toWorld * text->location());
  if (const auto* face = AcDbFace::cast(entity.object())) {
    for (Adesk::UInt16 corner = 0; corner < 4; ++corner) {
      AcGePoint3d point;
      face->getVertexAt(corner, point);
      offer(AcEdSnap::kEnd, hit.toWorld * point);
    }
  }
  if (const auto* curve = AcDbCurve::cast(entity.object()))
    this->curve(*curve, hit.toWorld, !hit.references.empty());
}

void Snapping::curve(const AcDbCurve& curve, const AcGeMatrix3d& toWorld, bool inBlock) {
  for (const AcGeCurvePiece& own : curve.pieces()) {
    const std::optional<AcGeCurvePiece> shown = placed(own, toWorld, inBlock);
    if (shown && planDistance(nearestInPlan(*shown, m_place), m_place) <= m_aperture) piece(*shown);
  }
}

void Snapping::piece(const AcGeCurvePiece& piece) {
  const bool turn = piece.isArc && piece.start == piece.end;  // a whole circle has no ends
  if (!turn && !piece.endlessBefore) offer(AcEdSnap::kEnd, piece.start);
  if (!turn && !piece.endless) offer(AcEdSnap::kEnd, piece.end);
  if (!turn && !piece.endless) offer(AcEdSnap::kMiddle, piece.pointAt(0.5));
  if (piece.isArc) offer(AcEdSnap::kCenter, piece.center);
  offer(AcEdSnap::kNearest, nearestInPlan(piece, m_place));
  perpendicular(piece);
}

void Snapping::perpendicular(const AcGeCurvePiece& piece) {
  if (isStraight(piece)) return offer(AcEdSnap::kPerpendicular, onLine(piece, shareInPlan(piece, m_from)));
  if (!piece.isEven()) {
    const double foot = piece.closest({m_from.x, m_from.y, piece.start.z}, false, false);
    return offer(AcEdSnap::kPerpendicular, piece.pointAt(foot));
  }
  const AcGePoint3d from(m_from.x, m_from.y, piece.center.z);
  const AcGeVector3d out = (from - piece.center).normal() * piece.radius;
  offer(AcEdSnap::kPerpendicular, piece.center + out);
  offer(AcEdSnap::kPerpendicular, piece.center - out);
}

/// Where the curves of model space themselves meet; what blocks show is not crossed.
void Snapping::cross(const std::vector<AcEdHit>& hits) {
  std::vector<AcDbObjectId> curves;
  for (const AcEdHit& hit : hits)
    if (hit.references.empty() && std::ranges::count(curves, hit.innermost) == 0 &&
        curves.size() < kMostCrossed)
      curves.push_back(hit.innermost);
  for (std::size_t i = 0; i < curves.size(); ++i) {
    const AcDbObjectPointer<AcDbCurve> first(curves[i]);
    for (std::size_t k = 0; first && k < i; ++k) {
      const AcDbObjectPointer<AcDbCurve> second(curves[k]);
      AcGePoint3dArray common;
      if (second) first->intersectWith(second.object(), AcDb::kOnBothOperands, common);
      for (const AcGePoint3d& point : common) offer(AcEdSnap::kIntersection, point);
    }
  }
}

}  // namespace

std::optional<std::vector<AcEdSnap>> acedReadSnaps(const std::wstring& line) {
  std::vector<AcEdSnap> snaps;
  std::wstring rest = base::trim(line) + L',';
  for (std::size_t comma = rest.find(L','); comma != std::wstring::npos; comma = rest.find(L',')) {
    const std::optional<AcEdSnap> snap = readSnap(base::trim(rest.substr(0, comma)));
    if (!snap) return std::nullopt;
    snaps.push_back(*snap);
    rest.erase(0, comma + 1);
  }
  return snaps;
}

std::optional<AcGePoint3d> acedSnap(AcDbDatabase& database, const std::vector<AcEdSnap>& snaps,
                                    const AcGePoint3d& place, double aperture, const AcGePoint3d& from) {
  Snapping snapping(snaps, place, aperture, from);
  const std::vector<AcEdHit> hits = AcEdPicker(database).around(place, aperture);
  for (const AcEdHit& hit : hits) snapping.look(hit);
  if (snapping.wants(AcEdSnap::kIntersection)) snapping.cross(hits);
  return snapping.found();
}
