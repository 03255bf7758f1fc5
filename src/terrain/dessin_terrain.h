#pragma once

#include "arx/ge/gepoint.h"
#include "base/export.h"
#include "terrain/courbes.h"
#include "terrain/profil.h"

#include <string>

class AcDbDatabase;

/// What a terrain shows in a drawing, each kind on a layer of its own, in model space.
namespace veltora::terrain {

inline constexpr const wchar_t* kCalqueCourbes = L"COURBES_NIVEAU";
inline constexpr const wchar_t* kCalqueMaitresses = L"COURBES_MAITRESSES";
inline constexpr const wchar_t* kCalqueFaces = L"TERRAIN_FACES";
inline constexpr const wchar_t* kCalqueProfil = L"TERRAIN_PROFIL";

/// More vertices of contour lines, or faces, than are drawn unasked.
inline constexpr double kDemesure = 1e6;

/// How contour lines are drawn.
struct AspectCourbes {
  double equidistance = 1.0;  ///< from `kPlusFine` on, drawing units
  int maitresses = 5;         ///< each so many intervals a line is a master one; at least 1
};
inline constexpr double kPlusFine = 1e-3;

/// Counts of what was drawn.
struct BilanCourbes {
  int courbes = 0;
  int maitresses = 0;  ///< of them
  int anciennes = 0;   ///< polylines that lay on the two layers before
  bool interrompu = false;
};

/// Draws contour lines as light polylines at their altitude.
/// @param erreur  French, why nothing was drawn: a locked layer, a drawing that refuses
bool dessinerCourbes(AcDbDatabase& dessin, const Triangulation& surface, const AspectCourbes& aspect,
                     BilanCourbes& bilan, std::wstring& erreur);

/// Draws the faces of the ground as 3D faces. @return their number, -1 with `erreur` set
int dessinerFaces(AcDbDatabase& dessin, const Triangulation& surface, std::wstring& erreur);

/// How a profile is drawn, in drawing units.
struct AspectProfil {
  AcGePoint3d coin;           ///< its lower left corner, where the reference altitude stands at distance 0
  double exageration = 10.0;  ///< of altitudes against distances, above 0
  double hauteurTexte = 2.5;  ///< above 0
};

/// Draws a profile over its reference altitude as one group, and below it the table of its places.
/// @param profil  has a place
bool dessinerProfil(AcDbDatabase& dessin, const Profil& profil, const AspectProfil& aspect,
                    std::wstring& erreur);

/// The reference altitude of a profile: the multiple of ten at or below its lowest place.
double altitudeDeReference(const Profil& profil);
std::size_t nombreDePlaces(const Profil& profil);

}  // namespace veltora::terrain
