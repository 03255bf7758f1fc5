#pragma once

#include "base/remarque.h"
#include "calc/traverse/polygonale.h"
#include "calc/traverse/tolerances_polygonale.h"
#include "core/code_range.h"

#include <filesystem>
#include <string>
#include <vector>

namespace veltora {

/// A traverse run from its file in one call, without a dialog. The file tells whether it is open or closed.
struct demandePolygonale {
  std::filesystem::path fichier;  ///< the .obs file
  std::filesystem::path rapport;  ///< report to write; empty for none; the Word form when it ends in ".doc"
  bool placer = true;             ///< stations into the current table and the working drawing
  bool malgreDoutes = false;      ///< place and draw even what is doubtful
  int code = kStationCode;        ///< of the stations
  bool altitudes = false;         ///< place the stations with their altitudes
  bool dessinerBrute = false;
  bool dessinerCompensee = false;
  tolerancesPolygonale tolerances;
};

struct resultatPolygonale {
  bool ouverte = false;
  std::vector<stationCalculee> stations;  ///< departure first; the last of an open traverse is its arrival
  fermeturesPolygonale fermetures;
  int modeAngle = 0;             ///< of the file: 0 grades, 1 degres, 2 radians
  double limiteAngulaire = 0.0;  ///< allowed angular misclosure, in that unit
  double limiteAltitude = 0.0;   ///< allowed misclosure in height; 0 when heights are not adjusted
  bool retenu = false;           ///< nothing was placed or drawn, for there are doubts
  base::Remarques remarques;     ///< what was passed over, guessed or looks wrong
  std::wstring erreur;           ///< French, why there is no result; empty on success
};

/// Reads, computes, writes the report, places the stations, in this order; the first failure ends it, and
/// nothing is placed or drawn then, nor when the coordinates are doubtful. Shows nothing.
/// @return false with `erreur` set: the file cannot be read or has fewer than two rows, the code is out of
/// range, the coordinates are no numbers, the report cannot be written. `remarques` is filled in any case
VELTORA_API bool executerPolygonale(const demandePolygonale& demande, resultatPolygonale& resultat);

}  // namespace veltora
