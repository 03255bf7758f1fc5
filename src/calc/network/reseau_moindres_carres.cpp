#include "calc/network/reseau_moindres_carres.h"

#include "arx/ed/acedads.h"
#include "calc/network/moindres_carres_alti.h"
#include "calc/network/moindres_carres_plani.h"
#include "calc/network/points_provisoires.h"

#include <cmath>

namespace veltora {
namespace {

constexpr int kPassesMax = 100;
constexpr double kPasNegligeable = 1e-8;   // norm of the step in the plan, strict
constexpr double kAltitudesNulles = 1e-8;  // norm of the heights, strict

void mesurerDeplacement(const base::CArray<pointACalculer>& provisoires, const reseauMoindresCarres& reseau,
                        bilanIteration& bilan) {
  for (int i = 0; i < provisoires.GetSize(); ++i) {
    const pointACalculer& avant = provisoires.GetAt(i);
    const pointACalculer& apres = reseau.points.GetAt(i);
    const double d = std::hypot(apres.X - avant.X, apres.Y - avant.Y);
    if (!(d > bilan.deplacement)) continue;
    bilan.deplacement = d;
    bilan.pointDeplace = i;
  }
}

}  // namespace

bool reseauMoindresCarres::calculerPlani(std::wstring& journal, bool premierPassage) {
  preparerUtilisable();
  dernierPas = 0.0;
  if (premierPassage) {
    reduireObservations(journal);
    if (!calculerPointsProvisoires(*this, journal)) return false;
  }
  bool aCalculer = false;
  for (std::size_t i = 0; i < points.size(); ++i)
    aCalculer = aCalculer || (!points[i].planiConnue && utilisable[i]);
  if (!aCalculer) return false;
  systemePlani plan(*this);
  dernierPas = plan.resoudre(journal);
  arret = plan.arret();
  return dernierPas > kPasNegligeable;
}

bool reseauMoindresCarres::calculerPlaniEnSilence() {
  preparerUtilisable();
  dernierPas = systemePlani(*this).resoudreEnSilence();
  return dernierPas > kPasNegligeable;
}

std::vector<int> reseauMoindresCarres::pointsIndetermines() {
  preparerUtilisable();
  systemePlani plan(*this);
  return plan.pointsDe(plan.lineariser().inconnuesFaibles());
}

bool reseauMoindresCarres::calculerAlti(std::wstring& journal) {
  dernierPas = 0.0;
  utilisable.RemoveAll();
  utilisable.SetSize(points.size());
  bool connu = false;
  for (std::size_t i = 0; i < points.size(); ++i) {
    pointACalculer& p = points[i];
    if (!p.planiConnue) p.Z = base::Z_ABSENT;
    utilisable[i] = p.planiConnue && p.Z != base::Z_ABSENT ? 1 : 0;
    connu = connu || utilisable[i];
  }
  if (!connu) return false;
  if (!altitudesProvisoires(*this, journal)) return false;
  dernierPas = systemeAlti(*this).resoudre(journal);
  return dernierPas > kAltitudesNulles;
}

bilanIteration iterer(reseauMoindresCarres& reseau, std::wstring& journal, std::wstring* premiere) {
  std::wstring brouillon;
  reseau.calculerPlani(brouillon, true);
  if (premiere) *premiere = brouillon;
  const base::CArray<pointACalculer> provisoires = reseau.points;
  bilanIteration bilan;
  bool continuer = true;
  while (continuer && bilan.passes < kPassesMax && !acedUsrBrk()) {
    brouillon.clear();
    continuer = reseau.calculerPlani(brouillon, false);
    ++bilan.passes;
  }
  bilan.convergence = !continuer && reseau.dernierPas >= 0.0;
  journal += brouillon;
  mesurerDeplacement(provisoires, reseau, bilan);
  return bilan;
}

}  // namespace veltora
