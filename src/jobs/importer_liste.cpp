#include "jobs/importer_liste.h"

#include "jobs/placer_liste.h"
#include "points/projets_topo.h"

namespace veltora {

bool importerListe(const demandeImportListe& demande, resultatPoints& resultat) {
  resultat = {};
  if (!tablesPoints) return resultat.echec(kSansProjet);
  listeLue liste;
  if (!lireListePoints({demande.fichier, demande.options, demande.montrer}, liste, resultat)) return false;
  remarquerNoms(liste, resultat.remarques);
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  return resultat.retenu || placerListe(demande.table, liste, resultat);
}

}  // namespace veltora
