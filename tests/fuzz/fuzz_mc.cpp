// Reads any bytes as a network in both ways, with weights and without, and solves what is small enough: the
// told solution may fail by the exception of a foreign index, and in no other way; a weighted one gives a
// reason or numbers.
#include "fuzz/fuzz.h"

#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/reseau_compense.h"
#include "calc/adjustment/textes_compenses.h"
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

void solve(reseauMoindresCarres& network) {
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
}

void checkAdjusted(const reseauCompense& result) {
  require(std::isfinite(result.test.m0) && std::isfinite(result.bilan.somme));
  for (const statistiqueMesure& m : result.mesures)
    require(m.redondance >= 0.0 && m.redondance <= 1.0 && !std::isnan(m.w));
  for (const statistiquePoint& p : result.points)
    require(p.plan.a >= p.plan.b && !std::isnan(p.s[0]) && !std::isnan(p.s[2]));
  for (const auto& lines : {lignesBilan(result), lignesPoints(result), lignesMesures(result, 5)})
    for (const std::wstring& line : lines) require(line.find(L"nan") == std::wstring::npos);
  require(!jsonCompense(result).empty());
}

/// Weights, the words that only they read, and what is asked of the adjustment: in turn by the file's size.
void adjust(std::string_view bytes) {
  reseauCompense result;
  if (!lireMcPondere(bytes, result.reseau, result.remarques).empty()) return;
  if (result.reseau.points.size() > kPointsMax || result.reseau.mesures.size() > kObservationsMax) return;
  formulesPoids formulas;
  formulas.distances = "1/(d1+1)";
  formulas.compiler();
  choixPonderes choice;
  choice.methode = static_cast<robustesse>(bytes.size() % 3);
  choice.prevoir = bytes.size() % 5 == 4;
  if (bytes.size() % 7 == 6) choice.formules = &formulas;
  choice.paires = {{L"A", L"B"}, {L"P", L"Q"}};
  if (compenserReseau(choice, result).empty()) checkAdjusted(result);
}

}  // namespace

void fuzz(std::string_view bytes) {
  adjust(bytes);
  reseauMoindresCarres network;
  base::Remarques remarks;
  const bool read = lireMc(bytes, network, &remarks);
  require(read == (!network.points.empty() && !network.observations.empty()));
  for (const base::Remarque& remark : remarks) require(!remark.texte.empty());
  checkRead(network);
  if (network.points.GetSize() > kPointsMax || network.observations.GetSize() > kObservationsMax) return;
  const int points = network.points.GetSize();
  solve(network);
  require(network.points.GetSize() == points);
  checkRead(network);
}
