#include "drafting/clothoids/dessin_clothoide.h"

#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "base/format.h"
#include "calc/angles.h"
#include "core/drawing_groups.h"
#include "core/drawing_layers.h"
#include "core/drawing_space.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "drafting/clothoids/clothoide_parcours.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <string>

namespace veltora {
namespace {

constexpr double kTolerance = 0.001;  // drawing units
constexpr double kRatio = 0.9;
constexpr double kSoulignement = 1.1;  // of the width of a mark's text
constexpr const wchar_t* kLayerInfos = L"Infos_Alignements";
constexpr int kCouleurLayer = 7;

std::unique_ptr<AcDbPolyline> polyligneDe(const std::vector<AcGePoint2d>& sommets) {
  auto polyligne = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(sommets.size()));
  for (const AcGePoint2d& sommet : sommets) polyligne->addVertexAt(polyligne->numVerts(), sommet);
  return polyligne;
}

/// Where a mark begins, where its line leads, and its text.
struct marque {
  AcGePoint2d depart;
  AcGeVector2d direction;
  AcGePoint2d placeTexte;
  double rotation = 0.0;
  std::wstring texte;
};

marque marqueEn(const clothoide& courbe, double s, double h) {
  const double miroir = courbe.mirrored() ? -1.0 : 1.0;
  if (s <= kInflexion) {
    const AcGeMatrix2d& monde = courbe.matriceVersMonde();
    const AcGePoint2d depart = monde * AcGePoint2d();
    return {depart, (monde * AcGePoint2d(0.0, 100.0) - depart).normal(),
            monde * AcGePoint2d(-miroir * h / 2.0, h / 2.0),
            std::fmod(courbe.angleRot() + miroir * kTour / 4.0 + kTour, kTour),
            base::formater(L"A=%.4f S= 0.00 R=INF ", courbe.paramA)};
  }
  const AcGePoint2d depart = courbe.pointEn(s);
  const AcGeVector2d d = (courbe.centreEn(s) - depart).normal();
  const AcGeVector2d t = courbe.tangenteUnitaireEn(s);
  return {depart, d, depart + ((d - t * miroir) * 0.5).normal() * (h / 2.0), d.angle(),
          base::formater(L"A=%.4f S=%.3f R=%.3f", courbe.paramA, s, courbe.rayonEn(s))};
}

/// Adds what belongs to one curve.
class plumeClothoide {
public:
  explicit plumeClothoide(int couleur) : m_couleur(couleur), m_espace(nullptr, DrawingSpace::kCurrent) {}

  [[nodiscard]] bool prete() const { return m_espace.ready(); }
  AcDbObjectId ajouter(std::unique_ptr<AcDbEntity> entite) {
    entite->setColorIndex(m_couleur);
    const AcDbObjectId id = m_espace.add(std::move(entite));
    m_entites.push_back(id);
    return id;
  }
  void ajouterInfo(std::unique_ptr<AcDbEntity> entite) {
    if (m_layer.isNull()) m_layer = layerInfos();
    if (!m_layer.isNull()) entite->setLayer(m_layer);
    ajouter(std::move(entite));
  }
  void ligne(const AcGePoint2d& de, const AcGePoint2d& vers) {
    ajouterInfo(std::make_unique<AcDbLine>(enPlan(de), enPlan(vers)));
  }
  void marquer(const clothoide& courbe, double s, double h) {
    const marque m = marqueEn(courbe, s, h);
    const AcDbObjectId style = acdbHostApplicationServices()->workingDatabase()->textstyle();
    auto texte = std::make_unique<AcDbText>(enPlan(m.placeTexte), m.texte.c_str(), style, h, m.rotation);
    const double longueur = texte->measure().width * kSoulignement;
    ajouterInfo(std::move(texte));
    ligne(m.depart, m.depart + m.direction * longueur);
  }
  void grouper() { groupEntities(m_entites); }

private:
  static AcDbObjectId layerInfos() {
    const AcDbObjectPointer<AcDbLayerTable> layers(
        acdbHostApplicationServices()->workingDatabase()->layerTableId(), AcDb::kForWrite);
    return layers.openStatus() == Acad::eOk ? layerOrNew(*layers, kLayerInfos, kCouleurLayer)
                                            : AcDbObjectId();
  }

  int m_couleur;
  DrawingSpace m_espace;
  AcDbObjectId m_layer;
  std::vector<AcDbObjectId> m_entites;
};

void dessinerInfos(plumeClothoide& plume, const clothoide& courbe, const infosClothoide& infos) {
  const int bits = infos.infosAlignements;
  const double h = infos.tailleInfos;
  if (bits & 1) plume.marquer(courbe, courbe.startParam, h);
  if (bits & 2) plume.marquer(courbe, courbe.endParam, h);
  AcGePoint2d pi;
  if (!courbe.intersectionTangentes(pi)) return;
  if (bits & 4)
    plume.ajouterInfo(polyligneDe({courbe.pointEn(courbe.startParam), pi, courbe.pointEn(courbe.endParam)}));
  if (bits & 8) {
    const lieuClothoide proche = pointLePlusProche(courbe, pi);
    plume.ligne(pi, proche.point);
    plume.marquer(courbe, proche.s, h);
  }
}

}  // namespace

clothoideDessinee dessiner(clothoide& courbe, int couleur, const infosClothoide& infos) {
  std::vector<AcGePoint2d> sommets;
  for (const double ecart : echantillonner(courbe, kTolerance, kRatio))
    sommets.push_back(courbe.pointEn(courbe.startParam + ecart));
  AcGePoint2d pi;
  if (sommets.size() < 2 || !courbe.intersectionTangentes(pi)) return {};
  plumeClothoide plume(couleur);
  if (!plume.prete()) return {};
  std::unique_ptr<AcDbPolyline> polyligne = polyligneDe(sommets);
  resbuf* const donnees = xDataClothoide(courbe);
  polyligne->setXData(donnees);
  acutRelRb(donnees);
  clothoideDessinee dessinee;
  dessinee.polyligne = plume.ajouter(std::move(polyligne));
  dessinee.sommets = static_cast<int>(sommets.size());
  dessinerInfos(plume, courbe, infos);
  plume.grouper();
  return dessinee;
}

}  // namespace veltora
