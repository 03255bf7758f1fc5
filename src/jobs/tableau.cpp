#include "jobs/tableau.h"

#include "codes/table_codification.h"
#include "drafting/lists/table_dessinee.h"
#include "points/projets_topo.h"

namespace veltora {

bool dessinerTableau(const demandeTableau& demande, resultatTableau& resultat) {
  resultat = {};
  if (!tablesPoints || tablesPoints->currTable()->nbPoint() == 0) {
    resultat.erreur = L"la table courante ne contient aucun point";
    return false;
  }
  listePointsDuDessin& table = *tablesPoints->currTable();
  const std::vector<pointDuDessin> points(table.getData()->begin(), table.getData()->end());
  paramsTableXYZ params;
  params.hauteur = demande.hauteur;
  tableCodification codes;
  if (placerTableXYZ(params, points, codes, demande.coin).isNull()) {
    resultat.erreur = L"la table a trop de points pour un tableau, ou le dessin ne le reçoit pas";
    return false;
  }
  resultat.points = static_cast<int>(points.size());
  return true;
}

}  // namespace veltora
