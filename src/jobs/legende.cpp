#include "jobs/legende.h"

#include "arx/db/dbmain.h"
#include "codes/legend/description_bloc.h"
#include "jobs/resultat_points.h"

#include <algorithm>

namespace veltora {
namespace {

bool estSansTaille(const infoBlocks& bloc) { return !(std::max(bloc.tailleX, bloc.tailleY) > 0.0); }

/// The lines of the blocks asked for; what gets no line is told.
std::vector<ligneLegende> lignesDe(const demandeDessinLegende& demande, base::Remarques& remarques) {
  std::vector<ligneLegende> lignes;
  for (infoBlocks& bloc : listerBlocs()) {
    if (!demande.tous && bloc.occurrences < 1) continue;
    if (estSansTaille(bloc)) {
      remarques.ajouter(L"le bloc " + bloc.nom + L" n'a pas d'étendue : pas de ligne dans la légende");
      continue;
    }
    std::wstring description = descriptionBloc(bloc.idBlock);
    lignes.push_back({std::move(bloc), std::move(description)});
  }
  return lignes;
}

/// How many layers the drawing has; what hides the legend is told.
int compterLayers(AcDbDatabase& dessin, base::Remarques& remarques) {
  const AcDbObjectPointer<AcDbLayerTableRecord> courant(dessin.clayer());
  if (courant.openStatus() == Acad::eOk && (courant->isFrozen() || courant->isOff()))
    remarques.ajouter(L"le calque courant " + courant->name() +
                      L" est gelé ou inactif : la légende ne s'y verra pas");
  const AcDbObjectPointer<AcDbSymbolTable> table(dessin.layerTableId());
  if (table.openStatus() != Acad::eOk) return 0;
  return static_cast<int>(
      std::ranges::count_if(table->records(), [](const AcDbObjectId& id) { return id.isLive(); }));
}

}  // namespace

bool dessinerLegendeDuDessin(const demandeDessinLegende& demande, resultatLegende& resultat) {
  resultat = {};
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) {
    resultat.erreur = kSansProjet;
    return false;
  }
  const std::vector<ligneLegende> lignes = lignesDe(demande, resultat.remarques);
  const int layers = compterLayers(*dessin, resultat.remarques);
  if (lignes.empty() && !demande.mesures.legendeLayers) {
    resultat.erreur = demande.tous ? L"le dessin n'a pas de bloc à mettre en légende"
                                   : L"le dessin ne montre aucun bloc à mettre en légende";
    return false;
  }
  resultat.blocs = static_cast<int>(lignes.size());
  resultat.layers = demande.mesures.legendeLayers ? layers : 0;
  dessinerLegende(lignes, demande.mesures, demande.coin);
  return true;
}

}  // namespace veltora
