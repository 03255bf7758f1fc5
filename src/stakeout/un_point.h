#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"
#include "base/export.h"
#include "base/growable_array.h"
#include "base/numbers.h"

#include <cstdint>

/// What is set out, and from where: the records of a stake-out job. Coordinates in drawing units, angles in
/// radians, bearings clockwise from +Y. `Z_ABSENT` marks an unknown coordinate, height or angle.
namespace veltora {

using base::Z_ABSENT;
using entitesDessinees = base::CArray<AcDbObjectId>;

/// Identifier of nothing.
inline constexpr std::uint32_t kSansIdentifiant = 0xFFFFFFFFu;

/// The group of selection that new stake-out points take; moved on behind each element, and behind each run
/// of single points.
VELTORA_API extern std::int32_t compteurGroupes;

/// A named place. Copies keep the identifier.
struct VELTORA_API unPoint {
  unPoint();

  std::uint32_t id;  ///< unique in the process
  AcString nom;
  double x = Z_ABSENT;
  double y = Z_ABSENT;
  double z = Z_ABSENT;
  entitesDessinees entites{8};  ///< drawn for the point; not saved

  /// Are both plane coordinates known?
  [[nodiscard]] bool situe() const { return x != Z_ABSENT && y != Z_ABSENT; }
};

/// A point in its part as station or as reference.
struct uneStationReference : unPoint {};

/// A point to set out.
struct VELTORA_API observationImplantation : unPoint {
  entitesDessinees entitesLiens{8};            ///< the sight line and its text
  std::uint32_t idStation = kSansIdentifiant;  ///< `idMise` of its station
  std::int32_t visibiliteCalculee = 0;         ///< non-zero when the sight was checked
  std::int32_t groupe = compteurGroupes;
  double hauteurRequise = Z_ABSENT;  ///< how far the worst blocker rises above the sight; 0 for none
};

/// Bearing of a point as seen from another one, radians in [0, 2 pi); a quarter turn for coinciding points.
VELTORA_API double gisementImplantation(double x1, double y1, double x2, double y2);
/// The same; `Z_ABSENT` when a coordinate is unknown.
VELTORA_API double gisementImplantation(const unPoint& de, const unPoint& vers);
/// In the plane; `Z_ABSENT` when a coordinate is unknown.
VELTORA_API double distanceImplantation(const unPoint& de, const unPoint& vers);
/// Grades of radians.
VELTORA_API double enGrades(double radians);

}  // namespace veltora
