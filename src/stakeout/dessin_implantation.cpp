#include "stakeout/dessin_implantation.h"

#include "base/format.h"
#include "core/drawing_groups.h"
#include "stakeout/crayon_implantation.h"

#include <unordered_map>
#include <unordered_set>

namespace veltora {
namespace {

using Option = paramsDessinImplantation::Option;

int couleurVisee(const observationImplantation& point) {
  constexpr int kSansVerification = 7;
  const reglagesImplantation& reglages = reglagesImplantation::commun();
  if (!point.visibiliteCalculee) return kSansVerification;
  switch (verdict(point)) {
    case verdictVisee::kVisible:
      return reglages.couleurVisible;
    case verdictVisee::kNonVisible:
      return reglages.couleurNonVisible;
    case verdictVisee::kNonVerifie:
      break;
  }
  return reglages.couleurNonVerifie;
}

void joindre(const entitesDessinees& de, std::vector<AcDbObjectId>& vers) {
  vers.insert(vers.end(), de.begin(), de.end());
}

}  // namespace

verdictVisee verdict(const observationImplantation& point) {
  if (!point.visibiliteCalculee || point.hauteurRequise == Z_ABSENT) return verdictVisee::kNonVerifie;
  return point.hauteurRequise <= reglagesImplantation::commun().hauteurMin ? verdictVisee::kVisible
                                                                           : verdictVisee::kNonVisible;
}

void dessinerPoint(observationImplantation& point, int options) {
  if (!point.entites.empty() || !point.situe()) return;
  const reglagesImplantation& reglages = reglagesImplantation::commun();
  const double taille = reglages.croixPoint;
  const double h = reglages.hauteurTexte;
  const AcGePoint2d place(point.x + taille + 0.1 * taille, point.y - taille / 2.0);
  crayonImplantation crayon(marqueImplantation::kPoint, point.id);
  if (options & Option::kNumero) {
    crayon.ligne({point.x - taille, point.y}, {point.x + taille, point.y}, kDuCalque, point.entites);
    crayon.ligne({point.x, point.y - taille}, {point.x, point.y + taille}, kDuCalque, point.entites);
    crayon.texte(place, h, point.nom, 0.0, kDuCalque, point.entites);
  }
  struct {
    int option;
    const wchar_t* lettre;
    double valeur;
  } const coordonnees[] = {
      {Option::kX, L"X=", point.x}, {Option::kY, L"Y=", point.y}, {Option::kZ, L"Z=", point.z}};
  constexpr double kInterligne = 1.2;  // in text heights
  double y = place.y;
  for (const auto& [option, lettre, valeur] : coordonnees) {
    if (!(options & option) || valeur == Z_ABSENT) continue;
    y -= kInterligne * h;
    crayon.texte({place.x, y}, h,
                 (options & Option::kNumero ? lettre : L"") + base::formater(L"%.4f", valeur), 0.0, kDuCalque,
                 point.entites);
  }
}

void dessinerVisee(observationImplantation& point, const observationMiseEnStation& station, int options) {
  if (!point.entitesLiens.empty()) return;
  crayonImplantation(marqueImplantation::kPoint, point.id)
      .visee(station, point, station.gisementVers(point), options, couleurVisee(point), point.entitesLiens);
}

void effacerPoint(observationImplantation& point) {
  effacerDessinees(point.entites);
  effacerDessinees(point.entitesLiens);
}

void dessinerResultats(projetImplantation& projet, int options, const std::vector<std::uint32_t>* ids) {
  std::unordered_map<std::uint32_t, observationMiseEnStation*> stations;
  for (observationMiseEnStation* mise : projet.stations) stations.emplace(mise->idMise, mise);
  const std::unordered_set<std::uint32_t> choisis =
      ids ? std::unordered_set<std::uint32_t>(ids->begin(), ids->end()) : std::unordered_set<std::uint32_t>();
  for (observationImplantation& point : projet.points) {
    if (ids && !choisis.contains(point.id)) continue;
    dessinerPoint(point, options);
    const auto mise = stations.find(point.idStation);
    if (mise == stations.end()) continue;
    dessinerVisee(point, *mise->second, options);
    if (projet.dessin.miseEnStation) mise->second->dessiner(options);
  }
}

void effacerResultats(projetImplantation& projet) {
  for (observationImplantation& point : projet.points) effacerPoint(point);
  for (observationMiseEnStation* mise : projet.stations) mise->effacerEntites();
}

void oublierResultats(projetImplantation& projet) {
  for (observationImplantation& point : projet.points) {
    point.entites.RemoveAll();
    point.entitesLiens.RemoveAll();
  }
  for (observationMiseEnStation* mise : projet.stations) mise->oublierEntites();
}

void grouperResultats(projetImplantation& projet) {
  if (projet.dessin.groupement == paramsDessinImplantation::kSans) return;
  const bool tout = projet.dessin.groupement == paramsDessinImplantation::kTout;
  // One list for each station; the points without one have theirs.
  std::vector<std::vector<AcDbObjectId>> groupes(tout ? 1 : projet.stations.size() + 1);
  std::unordered_map<std::uint32_t, std::size_t> rangs;
  for (std::size_t i = 0; i < projet.stations.size(); ++i) {
    const std::size_t rang = tout ? 0 : i;
    rangs.emplace(projet.stations[i]->idMise, rang);
    entitesDessinees siennes;
    projet.stations[i]->recupererEntites(siennes, false);
    joindre(siennes, groupes[rang]);
  }
  for (const observationImplantation& point : projet.points) {
    const auto rang = rangs.find(point.idStation);
    std::vector<AcDbObjectId>& groupe = rang == rangs.end() ? groupes.back() : groupes[rang->second];
    joindre(point.entites, groupe);
    joindre(point.entitesLiens, groupe);
  }
  for (const std::vector<AcDbObjectId>& groupe : groupes) groupEntities(groupe);
}

}  // namespace veltora
