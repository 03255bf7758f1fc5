#include "jobs/aplatir.h"

#include "arx/db/dbheavypoly.h"
#include "arx/db/dbmain.h"
#include "base/format.h"
#include "core/drawing_records.h"
#include "jobs/resultat_points.h"

#include <algorithm>

namespace veltora {
namespace {

/// The 3D polylines of model space on these layers; empty for all.
std::vector<AcDbObjectId> polylines3d(AcDbDatabase& dessin, const std::vector<AcDbObjectId>& layers) {
  std::vector<AcDbObjectId> trouvees;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  if (espace.openStatus() != Acad::eOk) return trouvees;
  for (const AcDbObjectId& id : espace->entities()) {
    const AcDbObjectPointer<AcDb3dPolyline> polyligne(id);
    if (polyligne.openStatus() != Acad::eOk) continue;
    if (layers.empty() || std::ranges::count(layers, polyligne->layerId()) > 0) trouvees.push_back(id);
  }
  return trouvees;
}

/// @return false with the name of the layer that is not there
bool chercherLayers(AcDbDatabase& dessin, const std::vector<std::wstring>& noms,
                    std::vector<AcDbObjectId>& layers, std::wstring& absent) {
  for (const std::wstring& nom : noms) {
    absent = nom;
    layers.push_back(recordNamed(dessin.layerTableId(), nom));
    if (layers.back().isNull()) return false;
  }
  return true;
}

void dire(const bilanPolylines2d& bilan, base::Remarques& remarques) {
  if (bilan.tropCourtes > 0)
    remarques.ajouter(base::formater(L"polylignes de moins de 3 sommets, laissées : %d", bilan.tropCourtes));
  if (bilan.sansLayer > 0)
    remarques.douter(
        base::formater(L"polylignes laissées, faute d'un nom de calque possible : %d", bilan.sansLayer));
  if (bilan.verrouillees > 0)
    remarques.douter(base::formater(
        L"polylignes sur un calque verrouillé, qui ne peuvent être supprimées : %d", bilan.verrouillees));
}

}  // namespace

bool aplatirPolylines(const demandeAplatir& demande, resultatAplatir& resultat) {
  resultat = {};
  const auto echec = [&](const std::wstring& raison) {
    resultat.erreur = raison;
    return false;
  };
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return echec(kSansProjet);
  demandePolylines2d polylines = demande.polylines;
  if (!polylines.modeleLayer.empty() && !modelePossible(polylines.modeleLayer))
    return echec(L"un calque ne peut pas porter le nom que donne le modèle « " + polylines.modeleLayer +
                 L" »");
  std::wstring absent;
  if (!chercherLayers(*dessin, demande.layers, polylines.layers, absent))
    return echec(L"le dessin n'a pas de calque « " + absent + L" »");
  const std::vector<AcDbObjectId> sources = polylines3d(*dessin, polylines.layers);
  if (sources.empty()) return echec(L"aucune polyligne 3D à aplatir dans le dessin");
  const bilanPolylines2d prevu = examinerPolylines3d(sources, polylines);
  dire(prevu, resultat.remarques);
  if (prevu.creees == 0) return echec(L"aucune polyligne ne peut être aplatie");
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  resultat.bilan = resultat.retenu ? prevu : convertirPolylines3d(sources, polylines);
  return true;
}

}  // namespace veltora
