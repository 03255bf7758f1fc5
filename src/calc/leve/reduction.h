#pragma once

#include "base/remarque.h"
#include "core/leve_terrain.h"

#include <optional>
#include <string>
#include <vector>

/// Pointings of one station into directions, horizontal distances and height differences: the two faces
/// joined, repeated pointings averaged, lengths reduced. Textbook: Kahmen and Faig, Surveying, on theodolite
/// errors and the reduction of distances.
namespace veltora {

inline constexpr double kRayonTerre = 6371000.0;  ///< metres, mean

/// Corrections, none of which is applied unless asked for.
struct optionsLeve {
  std::optional<double>
      refraction;        ///< coefficient k; with it heights get curvature less refraction, (1 - k) D2 / 2R
  double facteur = 1.0;  ///< of horizontal distances: scale of the projection, reduction to the ellipsoid
  std::optional<double> hMire;      ///< metres, where the book tells none
  std::optional<double> hAppareil;  ///< likewise
};

/// What is measured to one point from one station.
struct mesureReduite {
  std::wstring nom;
  std::wstring cle;          ///< the name as it is compared
  int ligne = 0;             ///< of the first pointing
  std::optional<double> h;   ///< direction, grades, first face
  std::optional<double> d;   ///< horizontal distance with all corrections
  std::optional<double> dz;  ///< height of the point above the station
  int pointages = 0;
  bool deuxFaces = false;
  std::wstring code;
  std::wstring observation;
};

/// What both faces tell of the instrument, means over the points that were sighted in both. Grades.
struct facesStation {
  int paires = 0;
  int uneFace = 0;           ///< points sighted in one face only, when there are pairs
  double collimation = 0.0;  ///< half of second face less half a turn less first face
  double index = 0.0;        ///< half of the sum of both zenith distances less a turn
};

struct mesuresStation {
  std::vector<mesureReduite> mesures;  ///< one a point, in the order of the first pointing
  facesStation faces;
  int sansMire = 0;      ///< heights computed without a height of target
  int sansAppareil = 0;  ///< likewise of the instrument
};

/// Doubts pointings of one point that do not agree, of which the first one counts, faces that do not pair,
/// zenith distances that look like elevations, slopes without a zenith distance, distances that contradict
/// each other.
VELTORA_API mesuresStation reduireVisees(const miseEnPlace& station, const optionsLeve& options,
                                         base::Remarques& remarques);

}  // namespace veltora
