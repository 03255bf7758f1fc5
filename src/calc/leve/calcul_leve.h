#pragma once

#include "base/remarque.h"
#include "calc/leve/station_leve.h"

#include <cstddef>
#include <string>
#include <vector>

/// From a survey to coordinates: stations one after the other, as soon as what they sight is known, then
/// points.
namespace veltora {

/// Where the coordinates of a station come from.
enum class origineStation {
  kCanevas,  ///< the list of known points
  kCarnet,   ///< words of the field book
  kLancee,   ///< sighted from another station
  kLibre     ///< computed from the points that it sights
};
constexpr const wchar_t* nomOrigine(origineStation origine) {
  constexpr const wchar_t* kNoms[] = {L"canevas", L"carnet", L"lancée", L"libre"};
  return kNoms[static_cast<std::size_t>(origine)];
}

struct stationDuLeve {
  std::wstring nom;
  std::wstring cle;  ///< the name as it is compared
  int ligne = 0;     ///< of the book, that opens it
  origineStation origine = origineStation::kCanevas;
  stationLeve place;
  mesuresStation mesures;
  std::wstring refus;  ///< French, why it has no place or no orientation; empty when it has both
};

/// A point computed from one station or more.
struct pointDuLeve {
  std::wstring nom;
  double x = 0.0;  ///< mean of all determinations
  double y = 0.0;
  std::optional<double> z;  ///< mean of those with a height
  std::wstring code;
  std::wstring observation;
  std::vector<std::wstring> stations;  ///< that determine it
  double ecart = 0.0;                  ///< metres, largest distance of a determination from the mean
  double ecartZ = 0.0;
};

struct resultatCalculLeve {
  std::vector<stationDuLeve> stations;  ///< in the order of the book
  std::vector<pointDuLeve> points;      ///< in the order in which the book first sights them; no known points
  std::vector<std::wstring>
      libres;  ///< names of computed stations that are no known point, among `points` too
  base::Remarques remarques;
};

/// Computes what can be computed: stations that are known first, then those that others sighted, then free
/// ones. A known point keeps its coordinates, whatever is measured to it. Points sighted from several
/// stations get the mean. Doubts: references that do not fit, stations without a place or without a check,
/// determinations of one point that lie more than 5 cm apart in plan or 10 cm in height, known points of one
/// name.
VELTORA_API resultatCalculLeve calculerLeve(const leveTerrain& leve,
                                            const std::vector<pointConnuLeve>& canevas,
                                            const optionsLeve& options);

}  // namespace veltora
