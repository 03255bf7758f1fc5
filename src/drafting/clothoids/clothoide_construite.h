#pragma once

#include "base/export.h"
#include "base/remarque.h"
#include "drafting/clothoids/clothoide.h"

#include <string>
#include <vector>

/// A clothoid from what a user gives, held against what he gave.
namespace veltora {

/// The data of `definirParRayons`: radii at both ends, 0 for a straight end, the ends, and where the tangents
/// meet.
struct donneesClothoide {
  double r1 = 0.0;
  double r2 = 0.0;
  AcGePoint2d p1;
  AcGePoint2d p2;
  AcGePoint2d pi;
};

struct clothoideConstruite {
  clothoide courbe;
  double s1 = 0.0;       ///< of the end at p1
  double s2 = 0.0;       ///< of the other end
  double ecartP2 = 0.0;  ///< from there to p2
  double ecartPI = 0.0;  ///< the larger distance of pi from the tangents at both ends
  [[nodiscard]] double longueur() const;
};

/// Makes the curve on the side of `pi`.
/// @return null; or why there is none (see `raisonSansClothoide`), `construite` unchanged
VELTORA_API const wchar_t* construireClothoide(const donneesClothoide& donnees,
                                               clothoideConstruite& construite);

/// Tells of ends and tangents that miss what was given by more than 0.01 drawing units.
VELTORA_API void controlerClothoide(const clothoideConstruite& construite, base::Remarques& remarques);

/// Parameter, length, deflection, and for each end its place, radius, centre and tangent. Lines, each ended.
VELTORA_API std::wstring decrireClothoide(const clothoideConstruite& construite);

/// A point along the curve.
struct pointClothoide {
  double abscisse = 0.0;  ///< length from p1
  AcGePoint2d point;
  double rayon = 0.0;     ///< 0 for straight
  double gisement = 0.0;  ///< of the tangent on the way from p1 to p2, grades
};

/// Points every `pas` of length from p1, and p2's end; where `fleche` is above 0, instead as many as keep the
/// chords so near to the curve.
/// @param pas  above 0, at most a million points
/// @return empty when there are more
VELTORA_API std::vector<pointClothoide> listerPoints(const clothoideConstruite& construite, double pas,
                                                     double fleche);

}  // namespace veltora
