#include "calc/adjustment/reseau_compense.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/adjustment/causes_ponderees.h"
#include "calc/adjustment/depart_pondere.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/lois.h"
#include "calc/adjustment/mouvements.h"
#include "calc/adjustment/systeme_pondere.h"
#include "calc/network/donnees_reseau.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <set>

namespace veltora {
namespace {

constexpr std::size_t kSuspectesMax = 5;
constexpr std::size_t kFlottantsMax = 100;  // points whose motions are looked at
constexpr double kFlottement = 0.1;  // of its sides' mean length: a standard deviation that is no precision

std::wstring direFlottement(const reseauCompense& r) {
  std::wstring texte = L"le réseau flotte, les points donnés ou libres ne tiennent pas :";
  for (const std::wstring& partie :
       direMouvements(r.reseau, r.systeme->colonnes(), r.systeme->mouvementsSansDatum()))
    texte += L"\n  " + partie;
  return texte + L"\nDonner des points connus, un gisement ou une distance, ou marquer des points « libre »";
}

/// The measures of a plan take the values that the coordinates give.
void prevoirMesures(reseauPondere& reseau) {
  for (mesurePonderee& m : reseau.mesures)
    if (!m.ecarte) m.valeur = reseau.valeurCalculee(m);
}

std::wstring verifierMesurees(reseauPondere& reseau) {
  for (const mesurePonderee& m : reseau.mesures)
    if (m.prevue)
      return base::formater(L"ligne %d : « ? » à la place d'une mesure ne sert qu'à prévoir (--prevoir) : %s",
                            m.ligne, reseau.nommer(m));
  return {};
}

void chercherPaires(const choixPonderes& choix, reseauCompense& r) {
  std::set<std::pair<int, int>> vues;
  const auto calcule = [&](int i) { return r.points[static_cast<std::size_t>(i)].calculePlan; };
  for (const mesurePonderee& m : r.reseau.mesures) {
    if (m.ecarte || m.genre > genreMesure::distance || !calcule(m.station) || !calcule(m.vise)) continue;
    const auto paire = std::minmax(m.station, m.vise);
    if (vues.insert(paire).second)
      r.paires.push_back(
          {paire.first, paire.second, ellipseRelative(*r.systeme, paire.first, paire.second, false), true});
  }
  for (const auto& [nomA, nomB] : choix.paires) {
    const int a = r.reseau.chercher(nomA);
    const int b = r.reseau.chercher(nomB);
    if (a < 0 || b < 0 || a == b) {
      r.remarques.douter(L"ellipse relative demandée de « " + nomA + L" » à « " + nomB +
                         L" » : point inconnu ou deux fois le même");
      continue;
    }
    r.paires.push_back({a, b, ellipseRelative(*r.systeme, a, b, true), false});
  }
}

/// How points move that are hardly held: the eigenvectors of their cofactors by which one moves beyond
/// `seuil`.
std::vector<std::wstring> direFlottementFaible(const reseauCompense& r, const std::vector<int>& points,
                                               double seuil) {
  std::vector<int> colonnes;
  for (std::size_t i = 0; i < points.size(); i += points.size() / kFlottantsMax + 1)
    for (std::size_t axe = 0; axe < 2; ++axe)
      colonnes.push_back(r.systeme->colonnes().points[static_cast<std::size_t>(points[i])].at(axe));
  const auto n = static_cast<Eigen::Index>(colonnes.size());
  Eigen::MatrixXd Q(n, n);
  for (Eigen::Index j = 0; j < n; ++j) {
    const Eigen::VectorXd q = r.systeme->colonneDeQ(colonnes[static_cast<std::size_t>(j)]);
    for (Eigen::Index i = 0; i < n; ++i) Q(i, j) = q[colonnes[static_cast<std::size_t>(i)]];
  }
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> propres(Q);
  Eigen::MatrixXd V = Eigen::MatrixXd::Zero(r.inconnues, 0);
  for (Eigen::Index k = n - 1; k >= 0; --k) {
    const double ampleur = std::sqrt(std::max(propres.eigenvalues()[k], 0.0)) * r.facteur();
    const Eigen::VectorXd v = propres.eigenvectors().col(k) * ampleur;
    double plusGrand = 0.0;
    for (Eigen::Index i = 0; i + 1 < n; i += 2) plusGrand = std::max(plusGrand, std::hypot(v[i], v[i + 1]));
    if (!(plusGrand > seuil)) break;
    V.conservativeResize(Eigen::NoChange, V.cols() + 1);
    V.rightCols(1).setZero();
    for (Eigen::Index i = 0; i < n; ++i)
      V(colonnes[static_cast<std::size_t>(i)], V.cols() - 1) = v[i] / ampleur;
  }
  return V.cols() > 0 ? direMouvements(r.reseau, r.systeme->colonnes(), V, true)
                      : std::vector<std::wstring>();
}

void douterPrecision(reseauCompense& r) {
  const double cote = r.reseau.coteMoyen();
  if (!(cote > 0.0)) return;
  std::vector<std::wstring> noms;
  std::vector<int> points;
  for (std::size_t i = 0; i < r.points.size(); ++i) {
    if (!(r.points[i].plan.a * r.facteur() > kFlottement * cote)) continue;
    noms.push_back(r.reseau.points[i].nom);
    points.push_back(static_cast<int>(i));
  }
  if (noms.empty()) return;
  r.remarques.douter(L"presque indéterminés, leur ellipse dépasse le dixième des côtés du réseau : " +
                     base::enumerer(noms));
  for (const std::wstring& partie : direFlottementFaible(r, points, kFlottement * cote))
    r.remarques.douter(L"presque libres : " + partie);
}

void douterFautes(reseauCompense& r) {
  const testGlobal& t = r.test;
  if (t.tropFort())
    r.remarques.douter(
        base::formater(L"m0 = %.2f dépasse %.2f, limite du test à 5 %% : mesure fausse, point connu faux, ou "
                       L"écarts-types trop optimistes",
                       t.m0, t.haut));
  if (t.tropFaible())
    r.remarques.ajouter(base::formater(
        L"m0 = %.2f est sous %.2f, limite du test à 5 %% : les écarts-types donnés sont pessimistes", t.m0,
        t.bas));
  for (const connuSuspect& c : r.connus) {
    const std::wstring& nom = r.reseau.point(c.point).nom;
    if (c.altitude)
      r.remarques.douter(
          base::formater(L"altitude connue de « %s » suspecte : les mesures la veulent à %+.1f mm", nom,
                         c.ecart[2] * kMillimetres));
    else
      r.remarques.douter(
          base::formater(L"point connu « %s » suspect : les mesures le veulent à dX %+.1f mm, dY %+.1f mm",
                         nom, c.ecart[0] * kMillimetres, c.ecart[1] * kMillimetres));
    break;
  }
  bool premiere = true;
  for (const mesureSuspecte& s : r.suspectes) {
    const mesurePonderee& m = r.reseau.mesures[static_cast<std::size_t>(s.mesure)];
    r.remarques.douter(
        m.ligne,
        base::formater(L"mesure suspecte%s : %s, erreur probable %s (w = %.1f) ; sans elle m0 = %.2f",
                       std::wstring(premiere ? L"" : L", sans les précédentes"), r.reseau.nommer(m),
                       texteEcart(m.genre, s.erreur), s.w, s.m0Sans));
    premiere = false;
  }
}

void douterRobuste(reseauCompense& r) {
  for (std::size_t i = 0; i < r.reseau.mesures.size(); ++i) {
    const double poids = r.bilan.poidsRobustes[i];
    if (poids >= 0.5) continue;
    const mesurePonderee& m = r.reseau.mesures[i];
    r.remarques.douter(m.ligne,
                       base::formater(L"poids réduit à %.2g par l'estimation robuste : %s, résidu %s", poids,
                                      r.reseau.nommer(m), texteEcart(m.genre, -r.reseau.ecartAuCalcul(m))));
  }
}

std::wstring preparer(const choixPonderes& choix, reseauCompense& r) {
  if (!choix.prevoir)
    if (std::wstring erreur = verifierMesurees(r.reseau); !erreur.empty()) return erreur;
  calculerDepart(r.reseau, r.remarques);
  if (choix.prevoir) prevoirMesures(r.reseau);
  if (choix.formules)
    if (const std::wstring mesure = peserParFormules(r.reseau, *choix.formules); !mesure.empty())
      return L"les formules ne donnent pas de poids positif : " + mesure;
  r.reseau.completerEcarts();
  for (const mesurePonderee& m : r.reseau.mesures)
    if (!m.ecarte && !(m.ecart > 0.0 && std::isfinite(m.ecart)))
      return base::formater(L"ligne %d : écart-type nul : %s", m.ligne, r.reseau.nommer(m));
  return {};
}

std::wstring ajuster(const choixPonderes& choix, reseauCompense& r) {
  r.systeme = std::make_unique<systemePondere>(r.reseau);
  if (r.systeme->colonnes().nombre == 0) {
    if (!choix.prevoir) chercherCausesPonderees(r);
    return L"aucun point à calculer : les mesures ne joignent que des points connus, ou aucun point connu";
  }
  if (!compenser(r.reseau, *r.systeme, r.bilan))
    return r.systeme->datumDefini()
               ? L"le calcul ne donne pas de nombres : coordonnées ou mesures hors de toute proportion"
               : direFlottement(r);
  if (choix.methode != robustesse::aucune && !choix.prevoir &&
      !compenserRobuste(r.reseau, *r.systeme, choix.methode, r.bilan))
    return L"l'estimation robuste ne laisse pas assez de mesures";
  return {};
}

}  // namespace

reseauCompense::reseauCompense() = default;
reseauCompense::~reseauCompense() = default;

double reseauCompense::facteur95() const {
  if (!prevu) return test.facteurEllipse();
  return std::sqrt(quantileKhi2(0.95, 2.0));
}

std::wstring compenserReseau(const choixPonderes& choix, reseauCompense& r) {
  r.prevu = choix.prevoir;
  if (std::wstring erreur = preparer(choix, r); !erreur.empty()) return erreur;
  if (std::wstring erreur = ajuster(choix, r); !erreur.empty()) return erreur;
  r.systeme->inverser();
  r.mesures = statistiquesMesures(r.reseau, *r.systeme);
  r.points = statistiquesPoints(r.reseau, *r.systeme);
  r.test = testerGlobal(r.reseau, *r.systeme, r.bilan.somme);
  r.inconnues = r.systeme->colonnes().nombre;
  r.defauts = static_cast<int>(r.systeme->mouvements().cols());
  chercherPaires(choix, r);
  douterPrecision(r);
  if (choix.prevoir) return {};
  if (!r.bilan.convergence)
    r.remarques.douter(L"le calcul ne converge pas : coordonnées approchées ou mesures fausses");
  if (choix.methode == robustesse::aucune) {
    r.connus = libererConnus(r.reseau, *r.systeme);
    r.suspectes =
        chercherMesuresFausses(r.mesures, *r.systeme, r.bilan.somme, r.test.redondance, kSuspectesMax);
  } else {
    douterRobuste(r);
  }
  douterFautes(r);
  const bool ecartees = std::any_of(r.reseau.mesures.begin(), r.reseau.mesures.end(),
                                    [](const mesurePonderee& m) { return m.ecarte; });
  if (r.test.tropFort() || ecartees) chercherCausesPonderees(r);
  return {};
}

}  // namespace veltora
