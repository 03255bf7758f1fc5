#include "drafting/polylines/polylines_2d.h"

#include "arx/db/dbcolor.h"
#include "arx/db/dbheavypoly.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "core/drawing_layers.h"
#include "core/drawing_space.h"

#include <algorithm>
#include <map>
#include <memory>
#include <numeric>

namespace veltora {
namespace {

constexpr std::wstring_view kLayer = L"{LAYER}";
constexpr std::size_t kSommetsMinimum = 3;

std::vector<AcGePoint3d> sommetsDe(const AcDb3dPolyline& polyligne) {
  std::vector<AcGePoint3d> sommets;
  const std::unique_ptr<AcDbObjectIterator> iterateur(polyligne.vertexIterator());
  for (; !iterateur->done(); iterateur->step()) {
    const AcDbObjectPointer<AcDb3dPolylineVertex> sommet(iterateur->objectId());
    if (sommet.openStatus() == Acad::eOk && sommet->vertexType() != AcDb::k2dSplineCtlVertex)
      sommets.push_back(sommet->position());
  }
  return sommets;
}

double altitudeDe(const std::vector<AcGePoint3d>& sommets, demandePolylines2d::Altitude mode) {
  const auto plusBas = [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.z < b.z; };
  switch (mode) {
    case demandePolylines2d::kPremiere:
      return sommets.front().z;
    case demandePolylines2d::kPlusBasse:
      return std::min_element(sommets.begin(), sommets.end(), plusBas)->z;
    case demandePolylines2d::kMoyenne:
      return std::accumulate(sommets.begin(), sommets.end(), 0.0,
                             [](double somme, const AcGePoint3d& sommet) { return somme + sommet.z; }) /
             static_cast<double>(sommets.size());
    case demandePolylines2d::kPlusHaute:
      return std::max_element(sommets.begin(), sommets.end(), plusBas)->z;
    default:
      return 0.0;
  }
}

/// The layers by the model, each looked up once.
class layersDuModele {
public:
  /// @param essai  no layer is made: the layer of the source stands for it
  layersDuModele(const demandePolylines2d& demande, bool essai) : m_demande(demande), m_essai(essai) {}
  /// The layer that takes what comes of this one; null when there can be none.
  AcDbObjectId pour(const AcDbObjectId& layer) {
    if (m_demande.modeleLayer.empty()) return layer;
    const auto [place, nouveau] = m_connus.try_emplace(layer);
    if (nouveau) place->second = chercher(layer);
    return place->second;
  }

private:
  AcDbObjectId chercher(const AcDbObjectId& layer) const {
    std::wstring nom;
    if (const AcDbObjectPointer<AcDbLayerTableRecord> source(layer); source.openStatus() == Acad::eOk)
      source->getName(nom);
    nom = nomDuModele(m_demande.modeleLayer, nom);
    if (m_essai) return AcDbLayerTableRecord().setName(nom.c_str()) == Acad::eOk ? layer : AcDbObjectId();
    AcDbLayerTable* layers = nullptr;
    AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
    if (!dessin || dessin->getLayerTable(layers, AcDb::kForWrite) != Acad::eOk) return AcDbObjectId::kNull;
    const AcDbObjectId id = layerOrNew(*layers, nom, m_demande.couleurLayer);
    layers->close();
    return id;
  }
  const demandePolylines2d& m_demande;
  bool m_essai;
  std::map<AcDbObjectId, AcDbObjectId> m_connus;
};

std::unique_ptr<AcDbPolyline> polyligneDe(const std::vector<AcGePoint3d>& sommets, bool fermee,
                                          double altitude) {
  auto polyligne = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(sommets.size()));
  for (const AcGePoint3d& sommet : sommets)
    polyligne->addVertexAt(polyligne->numVerts(), {sommet.x, sommet.y});
  polyligne->setClosed(fermee);
  polyligne->setElevation(altitude);
  return polyligne;
}

/// What a 3D polyline holds for its flat one.
struct sourcePolyline {
  std::vector<AcGePoint3d> sommets;
  bool fermee = false;
  AcDbObjectId layer;  ///< null for what is no 3D polyline of the layers asked for
  bool verrouillee = false;
};

sourcePolyline lire(const AcDbObjectId& id, const std::vector<AcDbObjectId>& voulus) {
  sourcePolyline lue;
  const AcDbObjectPointer<AcDb3dPolyline> polyligne(id);
  if (polyligne.openStatus() != Acad::eOk) return lue;
  const AcDbObjectId layer = polyligne->layerId();
  if (!voulus.empty() && std::find(voulus.begin(), voulus.end(), layer) == voulus.end()) return lue;
  return {sommetsDe(*polyligne), polyligne->isClosed(), layer, polyligne->layerState().locked};
}

/// Adds the flat one. @return false when the drawing refuses
bool creer(const sourcePolyline& source, const AcDbObjectId& layer, const demandePolylines2d& demande,
           DrawingSpace& espace) {
  auto polyligne =
      polyligneDe(source.sommets, source.fermee, altitudeDe(source.sommets, demande.modeAltitude));
  polyligne->setDatabaseDefaults(acdbHostApplicationServices()->workingDatabase());
  polyligne->setLayer(layer);
  if (!demande.modeleLayer.empty()) polyligne->setColorIndex(kColorByLayer);
  return !espace.add(std::move(polyligne)).isNull();
}

/// @param espace  takes the new polylines; null to count only
bilanPolylines2d traiter(const std::vector<AcDbObjectId>& entites, const demandePolylines2d& demande,
                         DrawingSpace* espace) {
  bilanPolylines2d bilan;
  layersDuModele layers(demande, espace == nullptr);
  for (const AcDbObjectId& id : entites) {
    const sourcePolyline source = lire(id, demande.layers);
    if (source.layer.isNull()) continue;
    if (source.sommets.size() < kSommetsMinimum) {
      ++bilan.tropCourtes;
      continue;
    }
    if (source.verrouillee && demande.supprimerOriginales) {
      ++bilan.verrouillees;
      continue;
    }
    const AcDbObjectId layer = layers.pour(source.layer);
    if (layer.isNull()) {
      ++bilan.sansLayer;
      continue;
    }
    if (espace && !creer(source, layer, demande, *espace)) continue;
    ++bilan.creees;
    if (!espace || !demande.supprimerOriginales) continue;
    const AcDbObjectPointer<AcDb3dPolyline> ancienne(id, AcDb::kForWrite);
    if (ancienne.openStatus() == Acad::eOk) ancienne->erase();
  }
  return bilan;
}

}  // namespace

std::wstring nomDuModele(const std::wstring& modele, const std::wstring& layer) {
  std::wstring nom = modele;
  for (std::size_t place = nom.find(kLayer); place != std::wstring::npos; place = nom.find(kLayer, place)) {
    nom.replace(place, kLayer.size(), layer);
    place += layer.size();
  }
  return nom;
}

bool modelePossible(const std::wstring& modele) {
  return AcDbLayerTableRecord().setName(nomDuModele(modele, L"0").c_str()) == Acad::eOk;
}

bilanPolylines2d convertirPolylines3d(const std::vector<AcDbObjectId>& entites,
                                      const demandePolylines2d& demande) {
  DrawingSpace espace(nullptr, DrawingSpace::kCurrent);
  return espace.ready() ? traiter(entites, demande, &espace) : bilanPolylines2d();
}

bilanPolylines2d examinerPolylines3d(const std::vector<AcDbObjectId>& entites,
                                     const demandePolylines2d& demande) {
  return traiter(entites, demande, nullptr);
}

}  // namespace veltora
