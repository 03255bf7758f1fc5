#include "jobs/importer_dessin.h"

#include "base/suivi.h"
#include "jobs/resultat_points.h"
#include "points/exchange/import_dessin.h"
#include "points/projets_topo.h"

#include <algorithm>

namespace veltora {
namespace {

parametresImport parametresDe(const demandeImportDessin& demande) {
  parametresImport parametres;
  if (demande.sources.empty()) parametres.masque = kToutesSources;
  for (const sourceImport& source : sourcesImport)
    if (std::count(demande.sources.begin(), demande.sources.end(), source.nom))
      parametres.masque |= source.drapeau;
  const std::vector<std::wstring>& etiquettes = demande.etiquettes;
  if (etiquettes.size() < 2) return parametres;
  parametres.etiquetteNumero = etiquettes[0];
  parametres.etiquetteAltitude = etiquettes[1];
  if (etiquettes.size() > 2) parametres.etiquetteCode = etiquettes[2];
  return parametres;
}

}  // namespace

std::vector<std::wstring> nomsSourcesImport() {
  std::vector<std::wstring> noms;
  for (const sourceImport& source : sourcesImport) noms.emplace_back(source.nom);
  return noms;
}

bool importerDessin(const demandeImportDessin& demande, resultatImportDessin& resultat) {
  resultat = {};
  if (!tablesPoints) {
    resultat.erreur = kSansProjet;
    return false;
  }
  listePointsDuDessin& table = tablesPoints->tableOuNouvelle(demande.table);
  const comptesImport comptes = importerToutLeDessin(table, parametresDe(demande));
  for (std::size_t i = 0; i < kNombreSources; ++i)
    if (comptes[i] > 0) resultat.comptes.emplace_back(comptes[i], sourcesImport[i].intitule);
  resultat.table = table.getNomTable();
  resultat.points = table.nbPoint();
  if (!base::portSuivi() || !base::portSuivi()->arretDemande()) return true;
  resultat.erreur = kInterrompu;
  return false;
}

}  // namespace veltora
