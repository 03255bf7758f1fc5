#include "jobs/exporter_table.h"

#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "points/exchange/exporter_points.h"
#include "points/projets_topo.h"

#include <algorithm>
#include <numeric>

namespace veltora {
namespace {

std::vector<pointDuDessin> choisir(const listePointsDuDessin& table, const demandeExportPoints& demande) {
  const std::vector<int> rangs = rangsPoints(table, demande.tri);
  std::vector<std::size_t> ordre(rangs.size());
  std::iota(ordre.begin(), ordre.end(), std::size_t{0});
  std::stable_sort(ordre.begin(), ordre.end(),
                   [&rangs](std::size_t a, std::size_t b) { return rangs[a] < rangs[b]; });
  std::vector<pointDuDessin> points;
  points.reserve(ordre.size());
  for (const std::size_t i : ordre) {
    const pointDuDessin& point = (*table.getData())[i];
    if (demande.code == 0 || point.code == demande.code) points.push_back(point);
  }
  return points;
}

std::vector<std::wstring> observationsDe(const std::vector<pointDuDessin>& points) {
  std::vector<std::wstring> observations;
  for (const pointDuDessin& point : points) observations.push_back(observationDuBloc(point.id));
  return observations;
}

}  // namespace

bool exporterTable(const demandeExportPoints& demande, resultatPoints& resultat) {
  resultat = {};
  if (!tablesPoints) return resultat.echec(kSansProjet);
  const listePointsDuDessin* table = tablesPoints->chercherTable(demande.table);
  if (!table) return resultat.echec(L"aucune table « " + demande.table + L" » dans ce dessin");
  const std::vector<pointDuDessin> points = choisir(*table, demande);
  if (points.empty()) return resultat.echec(L"aucun point à exporter");
  const std::wstring fichier = base::texteDuChemin(demande.fichier);
  const bool ecrites = demande.observations && formeDuFichier(fichier) == formeExport::kTexte;
  const std::vector<std::wstring> observations = observationsDe(points);
  std::wstring raison;
  if (!exporterPoints(points, fichier, raison, ecrites ? observations : std::vector<std::wstring>()))
    return resultat.echec(raison.empty() ? kInterrompu : raison);
  resultat.nombre = static_cast<int>(points.size());
  const auto sansAltitude = std::count_if(points.begin(), points.end(),
                                          [](const pointDuDessin& point) { return point.z == Z_ABSENT; });
  if (sansAltitude > 0)
    resultat.remarques.ajouter(base::formater(L"points sans altitude, dont la colonne Z reste vide : %d",
                                              static_cast<int>(sansAltitude)));
  const auto laissees = std::count_if(observations.begin(), observations.end(),
                                      [](const std::wstring& observation) { return !observation.empty(); });
  if (!ecrites && laissees > 0)
    resultat.remarques.ajouter(
        base::formater(L"observations laissées de côté : %d (--observations les écrit dans un texte)",
                       static_cast<int>(laissees)));
  return true;
}

}  // namespace veltora
