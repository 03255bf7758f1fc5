#pragma once

#include "calc/leve/reduction.h"

#include <optional>
#include <string>
#include <vector>

/// A station with what it sights of points that are known.
namespace veltora {

struct pointConnuLeve {
  std::wstring nom;
  double x = 0.0;
  double y = 0.0;
  std::optional<double> z;
};

/// A sight to a known point, and how well it fits. Measured less computed.
struct referenceLeve {
  pointConnuLeve point;
  mesureReduite mesure;
  double distance = 0.0;          ///< from the station, by coordinates
  std::optional<double> ecartH;   ///< grades
  std::optional<double> lateral;  ///< metres, of the same across the sight
  std::optional<double> ecartD;   ///< metres
  std::optional<double> ecartZ;   ///< metres
  bool fausse = false;            ///< looks wrong
};

/// Station's place and orientation. Coordinates in metres.
struct stationLeve {
  double x = 0.0;
  double y = 0.0;
  std::optional<double> z;
  double g0 = 0.0;            ///< bearing of the circle's zero, grades
  std::optional<double> emq;  ///< of g0, grades: root of the weighted mean square over all but one
  std::optional<double> sx;   ///< standard deviations of a free station, metres; absent without a check
  std::optional<double> sy;
  int surabondantes = 0;  ///< measures beyond those that are needed
  std::vector<referenceLeve> references;
};

}  // namespace veltora
