// Reads any bytes as a network, and solves what is small enough: it may fail by the exception of a foreign
// index, and in no other way.
#include "fuzz/fuzz.h"

#include "calc/network/fichier_mc.h"

#include <cmath>
#include <stdexcept>

using namespace veltora;

namespace {

// Larger ones take their time without saying more.
constexpr int kPointsMax = 60;
constexpr int kObservationsMax = 200;
constexpr int kPasses = 3;

bool validIndex(const reseauMoindresCarres& network, int index) {
  return index >= -1 && index < network.points.GetSize();
}

void checkRead(const reseauMoindresCarres& network) {
  for (const ObservationReduite& o : network.observations) {
    require(o.type >= ObservationReduite::kAngle && o.type <= ObservationReduite::kDenivelee);
    require(validIndex(network, o.station) && validIndex(network, o.vise) &&
            validIndex(network, o.reference));
    require(!std::isnan(o.mesure) && !std::isnan(o.poids));
  }
}

}  // namespace

void fuzz(std::string_view bytes) {
  reseauMoindresCarres network;
  base::Remarques remarks;
  const bool read = lireMc(bytes, network, &remarks);
  require(read == (!network.points.empty() && !network.observations.empty()));
  for (const base::Remarque& remark : remarks) require(!remark.texte.empty());
  checkRead(network);
  if (network.points.GetSize() > kPointsMax || network.observations.GetSize() > kObservationsMax) return;
  const int points = network.points.GetSize();
  std::wstring log;
  try {
    network.formules.gisements = "1/d1^2+ang";
    for (int pass = 0; pass < kPasses; ++pass) network.calculerPlani(log, pass == 0);
  } catch (const std::invalid_argument&) {
  }
  try {
    network.calculerAlti(log);
  } catch (const std::invalid_argument&) {
  }
  require(network.points.GetSize() == points);
  checkRead(network);
}
