#include "jobs/carroyer.h"

#include "arx/db/dbheavypoly.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "base/format.h"
#include "core/drawing_records.h"
#include "drafting/grid/carroyage.h"
#include "jobs/echec.h"
#include "jobs/resultat_points.h"

#include <cmath>
#include <vector>

namespace veltora {
namespace {

/// The light polylines on a layer. @param autres  how many polylines of other kinds and closed curves lie
/// there
std::vector<AcDbObjectId> regionsDu(AcDbDatabase& dessin, const AcDbObjectId& layer, int& autres) {
  std::vector<AcDbObjectId> regions;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  for (const AcDbObjectId& id : espace->entities()) {
    const AcDbObjectPointer<AcDbCurve> courbe(id);
    if (courbe.openStatus() != Acad::eOk || courbe->layerId() != layer) continue;
    if (AcDbPolyline::cast(courbe.object()))
      regions.push_back(id);
    else if (courbe->isClosed() || AcDb2dPolyline::cast(courbe.object()) ||
             AcDb3dPolyline::cast(courbe.object()))
      ++autres;
  }
  return regions;
}

/// What a region is told by: its number and where its first vertex lies.
std::wstring nommer(const AcDbPolyline& region, int rang) {
  AcGePoint3d sommet;
  region.getPointAt(0, sommet);
  return base::formater(L"région %d (depuis %.2f,%.2f)", rang, sommet.x, sommet.y);
}

class Carroyage {
public:
  Carroyage(const demandeCarroyer& demande, const std::vector<AcDbObjectId>& regions,
            resultatCarroyer& resultat)
      : m_demande(demande), m_regions(regions), m_resultat(resultat) {}

  void controler() {
    ampleurCarroyage ampleur;
    parcourir([&](const AcDbPolyline& region, int rang) {
      ampleur += estimerCarroyage(region, m_demande.aspect.pasX, m_demande.aspect.pasY);
      if (!region.isClosed()) m_resultat.remarques.douter(nommer(region, rang) + L" : polyligne ouverte");
      return true;
    });
    if (ampleur.demesuree()) m_resultat.remarques.douter(texteDemesure(ampleur));
  }
  /// @return false when the user stops it
  bool dessiner() {
    const aspectCarroyage& a = m_demande.aspect;
    return parcourir([&](const AcDbPolyline& region, int rang) {
      const resultatCarroyage fait =
          dessinerCarroyage(region, a.pasX, a.pasY, a.tailleCroix, a.tailleTexte, a.internes, a.format);
      ++m_resultat.regions;
      m_resultat.croix += fait.croix;
      if (fait.croix == 0) remarquerVide(region, rang);
      return !fait.interrompu;
    });
  }

private:
  void remarquerVide(const AcDbPolyline& region, int rang) {
    AcGePoint3d sommet;
    region.getPointAt(0, sommet);
    m_resultat.remarques.ajouter(nommer(region, rang) +
                                 (sommet.z != 0.0
                                      ? base::formater(L" : à l'altitude %.3f, rien n'est tracé", sommet.z)
                                      : std::wstring(L" : aucun nœud du carroyage à l'intérieur")));
  }
  template <class Work>
  bool parcourir(Work travail) {
    int rang = 0;
    for (const AcDbObjectId& id : m_regions) {
      const AcDbObjectPointer<AcDbPolyline> region(id);
      if (region.openStatus() == Acad::eOk && !travail(*region, ++rang)) return false;
    }
    return true;
  }

  const demandeCarroyer& m_demande;
  const std::vector<AcDbObjectId>& m_regions;
  resultatCarroyer& m_resultat;
};

}  // namespace

bool carroyer(const demandeCarroyer& demande, resultatCarroyer& resultat) {
  resultat = {};
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return echec(resultat, kSansProjet);
  const AcDbObjectId layer = recordNamed(dessin->layerTableId(), demande.calque);
  if (layer.isNull()) return echec(resultat, L"le dessin n'a pas de calque « " + demande.calque + L" »");
  int autres = 0;
  const std::vector<AcDbObjectId> regions = regionsDu(*dessin, layer, autres);
  if (autres > 0)
    resultat.remarques.ajouter(base::formater(
        L"polylignes 3D ou lourdes, cercles et ellipses de ce calque, laissés de côté : %d", autres));
  if (regions.empty())
    return echec(resultat, L"le calque « " + demande.calque + L" » ne porte aucune polyligne légère");
  Carroyage travail(demande, regions, resultat);
  travail.controler();
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (resultat.retenu) return true;
  return travail.dessiner() || echec(resultat, kInterrompu);
}

}  // namespace veltora
