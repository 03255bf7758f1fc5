#include "calc/network/remarques_reseau.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/network/causes_reseau.h"
#include "calc/network/controle_reseau.h"
#include "calc/network/essai_reseau.h"
#include "calc/network/listing_reseau.h"
#include "calc/network/points_provisoires.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace veltora {
namespace {

bool fini(const pointACalculer& p) { return std::isfinite(p.X) && std::isfinite(p.Y); }

/// For each point whether a height difference names it.
std::vector<bool> nommesEnAltitude(const reseauMoindresCarres& reseau) {
  std::vector<bool> nommes(reseau.points.size());
  for (const ObservationReduite& o : reseau.observations) {
    if (o.type != ObservationReduite::kDenivelee) continue;
    for (const int point : {o.station, o.vise}) nommes.at(static_cast<std::size_t>(point)) = true;
  }
  return nommes;
}

std::wstring citer(const reseauMoindresCarres& reseau, const std::vector<int>& observations) {
  std::vector<std::wstring> textes;
  for (const int i : observations) textes.push_back(citerObservation(reseau, reseau.observations.GetAt(i)));
  return base::enumerer(textes);
}

std::wstring raison(const reseauMoindresCarres& reseau, const etatProvisoire& etat, bool enAltitude) {
  using Cause = etatProvisoire::Cause;
  switch (etat.cause) {
    case Cause::kSansCanevas:
      return L"le réseau n'a aucun point connu";
    case Cause::kSansObservation:
      return enAltitude ? L"il n'a que des dénivelées, ni angle ni distance"
                        : L"aucune observation d'angle ou de distance ne le concerne";
    case Cause::kTropDirections:
      return base::formater(
          L"%d directions partent de lui vers des points calculables ; à partir de trois il est laissé de "
          L"côté, quelles que soient ses autres observations",
          etat.directions);
    case Cause::kPasRattache:
      return L"aucune de ses observations ne s'appuie sur assez de points calculables : leurs coordonnées "
             L"manquent aussi";
    case Cause::kUneEquation:
      return L"une seule observation le rattache à des points calculables, il en faut deux";
    case Cause::kLieuxDisjoints:
      return etat.droitesSeules
                 ? L"ses directions sont parallèles ou confondues"
                 : L"ses observations ne se coupent pas (distance trop courte ou trop longue, angle faux)";
    case Cause::kIndecis:
      return L"ses observations se coupent en deux endroits et rien ne les départage : il en faut une de "
             L"plus";
    case Cause::kSansValeur:
      return L"il tombe sur l'autre bout d'une visée, qui n'a alors ni longueur ni valeur : " +
             citer(reseau, etat.sansValeur);
    case Cause::kAucune:
      break;
  }
  return L"le calcul n'a pas de valeur";
}

/// What makes the point computable, found by computing it so; empty when nothing tried does.
std::wstring conseil(reseauMoindresCarres& reseau, int point, const etatProvisoire& etat) {
  using Cause = etatProvisoire::Cause;
  if (etat.cause == Cause::kAucune || etat.cause == Cause::kSansCanevas ||
      etat.cause == Cause::kSansObservation)
    return {};
  if (seCalculeEnTete(reseau, point)) {
    return L" ; l'ordre des lignes en décide : avec les siennes en tête des observations, il se calcule";
  }
  if (etat.cause != Cause::kTropDirections) return {};
  const deuxDirections deux = garderDeuxDirections(reseau, point);
  if (deux.premiere < 0)
    return L" ; même avec deux d'entre elles il ne se calcule pas : visez-le depuis d'autres points";
  return L" : n'en gardez que deux, il se calcule avec " +
         citerObservation(reseau, reseau.observations.GetAt(deux.premiere)) + L" et " +
         citerObservation(reseau, reseau.observations.GetAt(deux.seconde));
}

/// Points without coordinates and why; none when the file has neither angle nor distance.
void remarquerPointsAbsents(reseauMoindresCarres& reseau, base::Remarques& remarques) {
  const std::vector<etatProvisoire> etats = examinerPoints(reseau);
  const std::vector<bool> enAltitude = nommesEnAltitude(reseau);
  std::size_t conseils = 0;
  for (int i = 0; i < reseau.points.GetSize(); ++i) {
    const pointACalculer& p = reseau.points.GetAt(i);
    if (p.planiConnue || (reseau.utilisable.GetAt(i) && fini(p))) continue;
    const auto rang = static_cast<std::size_t>(i);
    const std::wstring suite =
        conseils++ < base::Remarques::kCitees ? conseil(reseau, i, etats[rang]) : std::wstring();
    remarques.ajouter(base::formater(L"point %s sans coordonnées : %s", p.nom,
                                     raison(reseau, etats[rang], enAltitude[rang]) + suite));
  }
}

std::wstring nommer(const reseauMoindresCarres& reseau, const std::vector<int>& points) {
  std::vector<std::wstring> noms;
  for (const int point : points) noms.push_back(reseau.points.GetAt(point).nom);
  return base::enumerer(noms);
}

void remarquerIteration(reseauMoindresCarres& reseau, const bilanIteration& bilan,
                        base::Remarques& remarques) {
  const double pas = reseau.dernierPas;
  if (!std::isfinite(pas)) {
    const auto& [point, observation] = reseau.arret;
    remarques.douter(base::formater(
        L"le calcul n'a plus de valeur au point %s%s : la passe %d s'arrête et laisse les points où ils "
        L"étaient",
        reseau.point(point).nom,
        observation < 0 ? std::wstring()
                        : L" (" + citerObservation(reseau, reseau.observations.GetAt(observation)) + L")",
        bilan.passes));
    return;
  }
  if (pas < 0.0 && bilan.pointDeplace >= 0) {
    remarques.douter(
        base::formater(L"le système devient singulier à la passe %d, après des passes qui ont déplacé les "
                       L"points (%s de %.6g m) : "
                       L"leurs coordonnées ne sont ni provisoires ni compensées",
                       bilan.passes, reseau.point(bilan.pointDeplace).nom, bilan.deplacement));
  } else if (pas < 0.0) {
    remarques.douter(
        L"le système est singulier : tous les points gardent leurs coordonnées provisoires, rien n'est "
        L"compensé");
  } else if (!bilan.convergence) {
    remarques.douter(base::formater(
        L"pas de convergence après %d passes (dernier pas : %.4f) : ces coordonnées ne valent rien",
        bilan.passes, pas));
  }
  const std::vector<int> faibles = reseau.pointsIndetermines();
  if (!faibles.empty()) {
    remarques.douter(
        L"observations insuffisantes pour fixer " + nommer(reseau, faibles) +
        L" (ou les points qui en dépendent) : il manque un point connu, une orientation ou une distance");
  }
}

/// Angles whose measure and computed value lie on both sides of 0: the difference counts as a whole turn.
void remarquerTours(const reseauMoindresCarres& reseau, base::Remarques& remarques) {
  base::Remarques liste;
  const auto place = [&reseau](int point) {
    return reseau.utilisable.GetAt(point) && fini(reseau.points.GetAt(point));
  };
  for (const ObservationReduite& o : reseau.observations) {
    if (o.type != ObservationReduite::kAngle || !place(o.station) || !place(o.vise)) continue;
    if (o.reference != -1 && !place(o.reference)) continue;
    if (!compteUnTour(reseau, o)) continue;
    liste.douter(base::formater(
        L"%s : la valeur calculée est %.4f, l'écart compte comme un tour entier et fausse le calcul ; donnez "
        L"l'angle avec un tour de plus ou de moins, ou depuis une autre référence",
        citerObservation(reseau, o), reseau.valeurCalculee(o) * 200.0 / kPi));
  }
  remarques.citer(liste);
}

/// Residuals, distances from the fixed points, and what would explain a bad fit.
void remarquerAccord(reseauMoindresCarres& reseau, const bilanIteration& bilan, base::Remarques& remarques) {
  const std::vector<residuSuspect> suspects = suspectsDuPlan(reseau, residusPlan(reseau));
  douterResidus(reseau, suspects, remarques);
  const std::vector<int> loin = pointsTropLoin(reseau);
  if (!loin.empty()) {
    remarques.douter(L"plus loin de tout point connu qu'aucune observation ne l'explique : " +
                     nommer(reseau, loin));
  }
  const bool aucun = pointsEnPlan(reseau) == 0;
  if (!suspects.empty() || !loin.empty() || aucun || (!bilan.convergence && bilan.passes > 1))
    chercherCausesPlan(reseau, remarques);
}

}  // namespace

bool nivellementSeul(const donneesReseau& reseau) {
  return std::all_of(reseau.observations.begin(), reseau.observations.end(),
                     [](const ObservationReduite& o) { return o.type == ObservationReduite::kDenivelee; });
}

void remarquerObservations(const reseauMoindresCarres& reseau, base::Remarques& remarques) {
  int poids = 0;
  base::Remarques insensees;
  for (const ObservationReduite& o : reseau.observations) {
    if (o.poids != base::Z_ABSENT) ++poids;
    if (o.station == o.vise) {
      insensees.ajouter(citerObservation(reseau, o) + L" : le point se vise lui-même");
    } else if (o.type == ObservationReduite::kAngle && o.reference == o.station) {
      insensees.ajouter(citerObservation(reseau, o) + L" : la station est sa propre référence");
    } else if (o.type == ObservationReduite::kDistance && !(o.mesure > 0.0)) {
      insensees.ajouter(citerObservation(reseau, o) + L" : distance nulle ou négative");
    }
  }
  remarques.citer(insensees);
  base::Remarques equivalentes;
  for (const auto& [supprimee, gardee] : reseau.equivalentes) {
    base::Remarque remarque(base::formater(L"%s : laissée de côté, équivalente à %s",
                                           citerObservation(reseau, supprimee),
                                           citerObservation(reseau, gardee)));
    remarque.douteuse = seContredisent(supprimee, gardee);
    if (remarque.douteuse) remarque.texte += L", dont elle s'écarte trop";
    equivalentes.ajouter(remarque);
  }
  remarques.citer(equivalentes);
  if (poids > 0) {
    remarques.ajouter(
        base::formater(L"%d poids donnés dans le fichier : sans effet sur les coordonnées", poids));
  }
}

void remarquerPlan(reseauMoindresCarres& reseau, const bilanIteration& bilan, base::Remarques& remarques) {
  if (nivellementSeul(reseau)) return;
  remarquerIteration(reseau, bilan, remarques);
  remarquerPointsAbsents(reseau, remarques);
  remarquerTours(reseau, remarques);
  if (std::isfinite(reseau.dernierPas)) remarquerAccord(reseau, bilan, remarques);
}

void remarquerAltitudes(const reseauMoindresCarres& reseau, base::Remarques& remarques) {
  const bool nivellement =
      std::any_of(reseau.observations.begin(), reseau.observations.end(),
                  [](const ObservationReduite& o) { return o.type == ObservationReduite::kDenivelee; });
  if (!nivellement) return;
  const bool connue = std::any_of(reseau.points.begin(), reseau.points.end(),
                                  [](const pointACalculer& p) { return p.altiConnue; });
  if (!connue) {
    remarques.ajouter(L"dénivelées sans emploi : aucun point connu n'a d'altitude");
    return;
  }
  const std::vector<bool> enAltitude = nommesEnAltitude(reseau);
  for (int i = 0; i < reseau.points.GetSize(); ++i) {
    if (reseau.utilisable.GetAt(i) || !enAltitude[static_cast<std::size_t>(i)]) continue;
    remarques.ajouter(
        base::formater(L"point %s sans altitude : ses dénivelées ne le rattachent à aucune altitude connue",
                       reseau.points.GetAt(i).nom));
  }
  const std::vector<residuSuspect> suspects = residusSuspects(reseau, residusAltitudes(reseau));
  douterResidus(reseau, suspects, remarques);
  if (!suspects.empty()) chercherCausesAltitudes(reseau, remarques);
}

}  // namespace veltora
