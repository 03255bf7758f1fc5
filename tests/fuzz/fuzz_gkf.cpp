// Reads any bytes as an XML network, else as a weighted .mc, and adjusts what is small enough: every measure
// names points that there are, every standard deviation is a positive number or none.
#include "fuzz/fuzz.h"

#include "calc/adjustment/lecture_gkf.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/reseau_compense.h"

#include <cmath>

using namespace veltora;

namespace {

// Larger ones take their time without saying more.
constexpr std::size_t kPointsMax = 40;
constexpr std::size_t kMeasuresMax = 120;

bool pointOf(const reseauPondere& network, int index, bool wanted) {
  return index < static_cast<int>(network.points.size()) && (index >= 0 || !wanted);
}

void checkRead(const reseauPondere& network) {
  for (const mesurePonderee& m : network.mesures) {
    require(pointOf(network, m.station, true));
    require(pointOf(network, m.vise, m.genre < genreMesure::X));
    require(pointOf(network, m.reference, m.genre == genreMesure::angle));
    require(m.genre != genreMesure::direction || m.tour < static_cast<int>(network.orientations.size()));
    require(!std::isnan(m.valeur) && m.ecart >= 0.0);
  }
}

}  // namespace

void fuzz(std::string_view bytes) {
  reseauCompense result;
  const std::wstring refused = estGkf(bytes) ? lireGkf(bytes, result.reseau, result.remarques)
                                             : lireMcPondere(bytes, result.reseau, result.remarques);
  if (!refused.empty()) return;
  checkRead(result.reseau);
  if (result.reseau.points.size() > kPointsMax || result.reseau.mesures.size() > kMeasuresMax) return;
  const std::wstring error = compenserReseau({}, result);
  require(!error.empty() || result.mesures.size() == result.reseau.mesures.size());
}
