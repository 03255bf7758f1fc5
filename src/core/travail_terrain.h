#pragma once

#include "arx/ge/gepoint.h"
#include "base/remarque.h"

#include <string>
#include <vector>

/// What is asked of the sibling terrain module in one call, on the working drawing and the installed project.
namespace veltora {

/// What a terrain is made of.
enum class SourceTerrain {
  kReconnue,  ///< the points given; else points of the table, points drawn; else 3D faces
  kTable,     ///< the current table's points
  kEntites,   ///< points drawn
  kFaces,     ///< 3D faces of the drawing
  kExistant,  ///< none is made: the drawing's current terrain
};

/// A point of a list.
struct PointTerrain {
  AcGePoint3d lieu;  ///< z exactly `Z_ABSENT` for none
  std::wstring nom;
  int code = 1;
};

struct DemandeTerrain {
  std::wstring nom = L"Terrain";     ///< of the terrain that is made; one of this name is replaced
  std::vector<PointTerrain> points;  ///< of a list; empty: the drawing's
  SourceTerrain source = SourceTerrain::kReconnue;
  std::wstring codes;          ///< of the points of a list or a table: "100, 200-299"; empty for all
  std::wstring calqueLignes;   ///< whose lines in space are breaklines; empty for none
  std::wstring calqueLimite;   ///< whose lines are outer limits; empty for none
  double areteMaximale = 0.0;  ///< of a face, in plan; 0 for any
  double equidistance = 0.0;   ///< of contour lines to be drawn; 0 for none
  int maitresses = 5;          ///< each so many contour lines a master one
  std::wstring calqueProfil;   ///< along whose lines profiles are drawn; empty for none
  double exageration = 10.0;   ///< of the profiles' altitudes
  bool faces = false;          ///< draw the faces
  bool malgreDoutes = false;   ///< go on whatever is doubtful
};

struct ResultatTerrain {
  std::wstring nom;
  int sommets = 0;
  int lignes = 0;
  int faces = 0;
  double surface = 0.0;  ///< of the ground in plan, squared drawing units
  double basse = 0.0;
  double haute = 0.0;
  int courbes = 0;
  int maitresses = 0;
  int profils = 0;
  int placesProfils = 0;
  int facesDessinees = 0;
  bool retenu = false;        ///< nothing was made, for there are doubts
  base::Remarques remarques;  ///< what was left out, and what is to be checked
  std::wstring erreur;        ///< French, why nothing was made; empty on success
};

/// The module's export "travailTerrain", extern "C". @return 0 with `erreur` set, the drawing as it was
using ServiceTravailTerrain = int (*)(const DemandeTerrain* demande, ResultatTerrain* resultat);
inline constexpr const char* kTravailTerrain = "travailTerrain";
/// Its export "commandeTerrain", extern "C": runs one of its commands by name. @return 0 for another name
using ServiceCommandeTerrain = int (*)(const wchar_t* nom);
inline constexpr const char* kCommandeTerrain = "commandeTerrain";

}  // namespace veltora
