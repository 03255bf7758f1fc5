#pragma once

#include "base/export.h"
#include "calc/traverse/obs_fichier.h"
#include "calc/traverse/polygonale_ouverte.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// An open traverse as its file and its dialog hold it.
struct polygonaleOuverteObs : donneesObs {
  stationConnue depart;
  stationConnue arrivee;
  double fermeture = 0.0;  ///< closing angle at the arrival, in the unit in force
};

/// True for a file with a line of departure or arrival as only open traverses have.
VELTORA_API bool estObsOuverte(std::string_view octets);
/// Reads a file. Rows and both stations are emptied first; closing angle and modes stay when the file does
/// not name them. Lines that fit nothing are passed over.
/// @return what was passed over or guessed, in order of the lines
VELTORA_API base::Remarques lireObsOuverte(std::string_view octets, polygonaleOuverteObs& donnees);
/// The bytes of a file, as `ecrireObsFermee`; the block of the levelling mode stands twice.
VELTORA_API std::string ecrireObsOuverte(const polygonaleOuverteObs& donnees);

/// Computes a traverse as it was read or typed; see the function of all single values.
VELTORA_API int calculerPolygonaleOuverte(const polygonaleOuverteObs& donnees, lignesPolygonale& lignes,
                                          base::CArray<double>& X, base::CArray<double>& Y,
                                          base::CArray<double>& Z, htmlDocument* rapport, bool dessinerBrute,
                                          bool dessinerCompensee, fermeturesPolygonale* fermetures = nullptr);

}  // namespace veltora
