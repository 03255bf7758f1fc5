#include "arx/ap/commands_draw.h"

#include "arx/ap/acdocman.h"
#include "arx/ap/commands_shared.h"
#include "arx/db/dballents.h"
#include "arx/ed/edinput.h"
#include "arx/ge/gearc2d.h"

#include <cmath>
#include <memory>
#include <optional>
#include <vector>

using arx_commands::add;
using arx_commands::askPoint;

namespace {

AcGePoint2d planOf(const AcGePoint3d& p) { return {p.x, p.y}; }

void warn(const wchar_t* what) { acutPrintf(L"\n%s\n", what); }

/// Centre of the circle through three points of the plane; nothing when they are on one line.
std::optional<AcGePoint2d> centerOf(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
  // From the first point: coordinates of national grids would cancel otherwise.
  const double bx = b.x - a.x, by = b.y - a.y, cx = c.x - a.x, cy = c.y - a.y;
  const double twice = 2.0 * (bx * cy - by * cx);
  const double bb = bx * bx + by * by, cc = cx * cx + cy * cy;
  if (std::fabs(twice) <= 1e-12 * (bb + cc)) return std::nullopt;
  return AcGePoint2d(a.x + (cy * bb - by * cc) / twice, a.y + (bx * cc - cx * bb) / twice);
}

/// The three points of a circle or arc. @return false when the user leaves
bool askThree(const wchar_t* second, const wchar_t* third, AcGePoint3d& b, AcGePoint3d& c) {
  return askPoint(second, b) == RTNORM && askPoint(third, c) == RTNORM;
}

void circleThroughThree() {
  AcGePoint3d a, b, c;
  if (askPoint(L"\nPremier point : ", a) != RTNORM) return;
  if (!askThree(L"\nDeuxième point : ", L"\nTroisième point : ", b, c)) return;
  const std::optional<AcGePoint2d> center = centerOf(a, b, c);
  if (!center) return warn(L"Les trois points sont alignés.");
  add(std::make_unique<AcDbCircle>(AcGePoint3d(center->x, center->y, a.z), AcGeVector3d::kZAxis,
                                   center->distanceTo(planOf(a))));
}

}  // namespace

namespace arx_commands {

void line() {
  std::vector<AcGePoint3d> points(1);
  std::vector<AcDbObjectId> lines;
  if (askPoint(L"\nDu point : ", points[0]) != RTNORM) return;
  for (;;) {
    AcGePoint3d next;
    const bool canClose = lines.size() > 1;
    const int status =
        askPoint(canClose ? L"\nAu point ou [Clore/annUler] : " : L"\nAu point ou [annUler] : ", next,
                 &points.back(), canClose ? L"Clore annUler _Close Undo" : L"annUler _Undo");
    const bool close = status == RTKWORD && keywordGiven() == L"Close";
    if (status == RTNORM || close) {
      if (close) next = points.front();
      lines.push_back(add(std::make_unique<AcDbLine>(points.back(), next)));
      points.push_back(next);
    } else if (status == RTKWORD && !lines.empty()) {
      const AcDbObjectPointer<AcDbEntity> last(lines.back(), AcDb::kForWrite);
      if (last) last->erase();
      lines.pop_back();
      points.pop_back();
    }
    if (close || (status != RTNORM && status != RTKWORD)) return;
  }
}

void polyline() {
  std::vector<AcGePoint3d> points(1);
  if (askPoint(L"\nDu point : ", points[0]) != RTNORM) return;
  bool closed = false;
  while (!closed) {
    AcGePoint3d next;
    const int status = askPoint(L"\nPoint suivant ou [Clore/annUler] : ", next, &points.back(),
                                L"Clore annUler _Close Undo");
    if (status == RTNORM)
      points.push_back(next);
    else if (status == RTNONE)
      break;
    else if (status != RTKWORD)
      return;
    else if (keywordGiven() == L"Close")
      closed = points.size() > 1;
    else if (points.size() > 1)
      points.pop_back();
  }
  if (points.size() < 2) return;
  auto drawn = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(points.size()));
  for (const AcGePoint3d& point : points) drawn->addVertexAt(drawn->numVerts(), planOf(point));
  drawn->setElevation(points.front().z);
  drawn->setClosed(closed);
  add(std::move(drawn));
}

void point() {
  AcGePoint3d at;
  if (askPoint(L"\nPoint : ", at) == RTNORM) add(std::make_unique<AcDbPoint>(at));
}

void circle() {
  AcGePoint3d center;
  const int status = askPoint(L"\nCentre ou [3P] : ", center, nullptr, L"3P _3P");
  if (status == RTKWORD) return circleThroughThree();
  if (status != RTNORM) return;
  const ads_point from = {center.x, center.y, center.z};
  double size = 0.0;
  acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG | RSG_2D, L"Diamètre _Diameter");
  int sized = acedGetDist(from, L"\nRayon ou [Diamètre] : ", &size);
  const bool diameter = sized == RTKWORD;
  if (diameter) {
    acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG | RSG_2D, nullptr);
    sized = acedGetDist(from, L"\nDiamètre : ", &size);
  }
  if (sized == RTNORM)
    add(std::make_unique<AcDbCircle>(center, AcGeVector3d::kZAxis, diameter ? size / 2.0 : size));
}

void arc() {
  AcGePoint3d a, b, c;
  if (askPoint(L"\nPoint de départ : ", a) != RTNORM) return;
  if (!askThree(L"\nDeuxième point : ", L"\nPoint final : ", b, c)) return;
  const std::optional<AcGePoint2d> center = centerOf(a, b, c);
  if (!center) return warn(L"Les trois points sont alignés.");
  const auto directionTo = [&](const AcGePoint3d& p) { return std::atan2(p.y - center->y, p.x - center->x); };
  const bool counterClockwise = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) > 0.0;
  const double start = directionTo(counterClockwise ? a : c);
  const double end = directionTo(counterClockwise ? c : a);
  add(std::make_unique<AcDbArc>(AcGePoint3d(center->x, center->y, a.z), center->distanceTo(planOf(a)), start,
                                end));
}

}  // namespace arx_commands
