#include "drafting/texts/superposer_dessin.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "core/acad_undo_group.h"
#include "drafting/texts/superpositions.h"

#include <algorithm>
#include <memory>

namespace veltora {
namespace {

/// A side below this, in drawing units, is none; strict.
constexpr double kCoteNul = 1e-8;
/// Distance of the eight places from the block, for a scale of 1.
constexpr double kRayon = 0.55;

/// The annotations and, at the same index, what they are in the drawing.
struct annotationsDessin {
  struct origine {
    AcDbObjectId attribut;  ///< null for a text
    AcDbObjectId bloc;
  };
  std::vector<annotationPlane> plan;
  std::vector<origine> origines;

  void prendreBloc(const AcDbBlockReference& bloc);
  void prendreTexte(const AcDbText& texte);
};

void annotationsDessin::prendreBloc(const AcDbBlockReference& bloc) {
  const AcGePoint3d place = bloc.position();
  const AcGeScale3d echelle = bloc.scaleFactors();
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc.attributeIterator());
  for (; !attributs->done(); attributs->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribut(attributs->objectId());
    AcDbExtents boite;
    if (attribut.openStatus() != Acad::eOk || attribut->isInvisible() ||
        attribut->visibility() == AcDb::kInvisible || attribut->getGeomExtents(boite) != Acad::eOk)
      continue;
    const AcGeVector3d taille = boite.maxPoint() - boite.minPoint();
    if (!(taille.x > kCoteNul) || !(taille.y > kCoteNul)) continue;
    annotationPlane annotation;
    annotation.boite = {boite.minPoint().x, boite.minPoint().y, taille.x, taille.y};
    annotation.ancreX = place.x;
    annotation.ancreY = place.y;
    annotation.rayon = kRayon * std::max(echelle.sx, echelle.sy);
    plan.push_back(annotation);
    origines.push_back({attribut->objectId(), bloc.objectId()});
  }
}

void annotationsDessin::prendreTexte(const AcDbText& texte) {
  ads_name nom = {0, 0};
  ads_point bas = {0, 0, 0};
  ads_point haut = {0, 0, 0};
  acdbGetAdsName(nom, texte.objectId());
  resbuf* chaine = acdbEntGet(nom);
  const int mesure = acedTextBox(chaine, bas, haut);
  acutRelRb(chaine);
  annotationPlane annotation;
  annotation.boite = {texte.position().x, texte.position().y, haut[0] - bas[0], haut[1] - bas[1]};
  annotation.fixe = true;
  if (mesure != RTNORM || annotation.boite.largeur == 0.0 || annotation.boite.hauteur == 0.0) return;
  plan.push_back(annotation);
  origines.push_back({});
}

annotationsDessin collecter(const std::vector<AcDbObjectId>& entites) {
  annotationsDessin annotations;
  for (const AcDbObjectId& id : entites) {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    if (entite.openStatus() != Acad::eOk) continue;
    if (const auto* bloc = AcDbBlockReference::cast(entite.object()))
      annotations.prendreBloc(*bloc);
    else if (entite->isA() == AcDbText::desc())
      annotations.prendreTexte(*AcDbText::cast(entite.object()));
  }
  return annotations;
}

/// Sets the insertion point of an attribute; the altitude stays.
void deplacerAttribut(const AcDbObjectId& attribut, const AcDbObjectId& bloc, const boitePlane& boite) {
  ads_name nom = {0, 0};
  acdbGetAdsName(nom, attribut);
  resbuf* chaine = acdbEntGet(nom);
  for (resbuf* element = chaine; element; element = element->rbnext) {
    if (element->restype != 10) continue;
    element->resval.rpoint[0] = boite.x;
    element->resval.rpoint[1] = boite.y;
    break;
  }
  if (acdbEntMod(chaine) == RTNORM) acdbEntUpd(nom);
  acutRelRb(chaine);
  acdbGetAdsName(nom, bloc);
  acdbEntUpd(nom);
}

bool dire(int iteration, int element, int nombre) {
  acutPrintf(L"\rIteration %d Element %d / %d (%8.2f %%)", iteration, element, nombre,
             100.0 * element / nombre);
  return acedUsrBrk() != 1;
}

}  // namespace

void superposerDessin(const std::vector<AcDbObjectId>& entites) {
  const CAcadUndoGroup groupe;
  annotationsDessin annotations = collecter(entites);
  acutPrintf(L"\nVerification des superpositions\n");
  reduireSuperpositions(annotations.plan, dire,
                        [](double surface) { acutPrintf(L"\t Surface commune: %12.3f\n", surface); });
  for (std::size_t i = 0; i < annotations.plan.size(); ++i) {
    if (!annotations.plan[i].deplacee) continue;
    deplacerAttribut(annotations.origines[i].attribut, annotations.origines[i].bloc,
                     annotations.plan[i].boite);
  }
}

}  // namespace veltora
