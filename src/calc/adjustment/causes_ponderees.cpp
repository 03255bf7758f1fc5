#include "calc/adjustment/causes_ponderees.h"

#include "base/format.h"
#include "calc/adjustment/depart_pondere.h"
#include "calc/adjustment/reseau_compense.h"

#include "calc/adjustment/systeme_pondere.h"

#include <Eigen/Dense>
#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

namespace veltora {
namespace {

constexpr std::size_t kMesuresMax = 5000;
constexpr double kAmelioration = 5.0;  // so many times smaller m0 becomes
constexpr double kAcceptable = 3.0;    // limits of the test

void multiplier(reseauPondere& r, bool angles, double facteur) {
  for (mesurePonderee& m : r.mesures)
    if (angles ? estAngulaire(m.genre) : m.genre == genreMesure::distance) m.valeur *= facteur;
}

void echangerXY(reseauPondere& r) {
  for (pointPondere& p : r.points) {
    std::swap(p.c[0], p.c[1]);
    std::swap(p.donnee[0], p.donnee[1]);
  }
}

/// m0 of a copy, 0 when it has none.
double essayer(const reseauPondere& depart, const std::function<void(reseauPondere&)>& changer) {
  reseauPondere copie = depart;
  for (pointPondere& p : copie.points) p.c = p.donnee;
  for (mesurePonderee& m : copie.mesures) m.ecarte = false;
  changer(copie);
  base::Remarques inutiles;
  calculerDepart(copie, inutiles);
  if (std::any_of(copie.mesures.begin(), copie.mesures.end(), [](const auto& m) { return m.ecarte; }))
    return 0.0;
  copie.completerEcarts();
  systemePondere systeme(copie);
  bilanPondere bilan;
  if (systeme.colonnes().nombre == 0 || !compenser(copie, systeme, bilan) || !bilan.convergence) return 0.0;
  const testGlobal test = testerGlobal(copie, systeme, bilan.somme);
  return test.redondance > 0 && test.m0 < kAcceptable * test.haut ? test.m0 : 0.0;
}

}  // namespace

void chercherCausesPonderees(reseauCompense& resultat) {
  const auto& mesures = resultat.reseau.mesures;
  const bool ecartees = std::any_of(mesures.begin(), mesures.end(), [](const auto& m) { return m.ecarte; });
  const double actuel = ecartees ? std::numeric_limits<double>::infinity() : resultat.test.m0;
  if (mesures.size() > kMesuresMax || actuel < kAmelioration) return;
  const std::pair<const wchar_t*, std::function<void(reseauPondere&)>> essais[] = {
      {L"des angles en degrés lus en grades", [](reseauPondere& r) { multiplier(r, true, 10.0 / 9.0); }},
      {L"des angles en grades lus en degrés", [](reseauPondere& r) { multiplier(r, true, 0.9); }},
      {L"des angles comptés dans l'autre sens", [](reseauPondere& r) { multiplier(r, true, -1.0); }},
      {L"des distances en millimètres", [](reseauPondere& r) { multiplier(r, false, 0.001); }},
      {L"des distances en kilomètres", [](reseauPondere& r) { multiplier(r, false, 1000.0); }},
      {L"des distances en pieds", [](reseauPondere& r) { multiplier(r, false, 0.3048); }},
      {L"X et Y des points donnés échangés", echangerXY},
  };
  for (const auto& [cause, changer] : essais) {
    const double m0 = essayer(resultat.reseau, changer);
    if (m0 > 0.0 && m0 * kAmelioration < actuel)
      resultat.remarques.douter(
          base::formater(L"tout s'accorde (m0 = %.2f) en supposant %s", m0, std::wstring(cause)));
  }
}

}  // namespace veltora
