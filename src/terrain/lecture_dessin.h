#pragma once

#include "arx/db/dbid.h"
#include "terrain/fabrication.h"

#include <string>

class AcDbDatabase;
class AcDbEntity;

/// Sources of terrains and lines of profiles among the entities of a drawing.
namespace veltora::terrain {

/// Codes of points by which these are chosen: "100", "100-199", several with "," or ";" between them, empty
/// for all. @return false for any other text
class ChoixCodes {
public:
  static bool lire(const std::wstring& texte, ChoixCodes& choix);
  [[nodiscard]] bool prend(int code) const;

private:
  std::vector<std::pair<int, int>> m_plages;
};

/// Adds the points of the installed project's current table. @return how many
int ajouterTable(const ChoixCodes& codes, Sources& sources);

/// The vertices of a line, a polyline of any kind, an arc or another curve that ends, curved stretches by
/// chords.
/// @return empty for any other entity
std::vector<AcGePoint3d> sommetsDe(const AcDbEntity& entite, bool& fermee);

/// What entities gave.
struct Bilan {
  int points = 0;
  int lignes = 0;
  int facettes = 0;
  int ouvertes = 0;  ///< outlines among the lines whose ends lie apart
  int autres = 0;    ///< that give nothing: of other kinds, or plane lines at altitude 0
};

/// What of an entity is taken.
enum class Role { kToutes, kPoints, kLignes, kLimite, kFacettes };

/// Adds what entities give in a role: of all of them points and lines in space.
Bilan ajouterEntites(const std::vector<AcDbObjectId>& ids, Role role, Sources& sources);

/// The entities of model space, those of one layer when it is named, whatever the case.
/// @return false when the drawing has no such layer
bool entitesDuCalque(AcDbDatabase& dessin, const std::wstring& calque, std::vector<AcDbObjectId>& ids);

}  // namespace veltora::terrain
