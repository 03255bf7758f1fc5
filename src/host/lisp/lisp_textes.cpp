#include "host/lisp/lisp_textes.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/text.h"
#include "core/drawing_space.h"
#include "core/picking.h"
#include "core/xdata_names.h"
#include "drafting/texts/superposer_dessin.h"
#include "drafting/texts/texte_ajuste.h"
#include "host/lisp/arguments_lisp.h"

#include <memory>

namespace veltora {
namespace {

using Args = argumentsLisp;

/// A text that looks as an attribute does.
std::unique_ptr<AcDbText> texteDe(const AcDbAttribute& attribut, const std::wstring& contenu) {
  auto texte = std::make_unique<AcDbText>(attribut.position(), contenu.c_str(), attribut.textStyle());
  texte->setLayer(attribut.layerId());
  texte->setColor(attribut.color());
  texte->setNormal(attribut.normal());
  texte->setHeight(attribut.height());
  texte->setRotation(attribut.rotation());
  texte->setOblique(attribut.oblique());
  texte->setThickness(attribut.thickness());
  texte->setWidthFactor(attribut.widthFactor());
  texte->mirrorInX(attribut.isMirroredInX());
  texte->mirrorInY(attribut.isMirroredInY());
  texte->setPosition(attribut.position());
  texte->setHorizontalMode(attribut.horizontalMode());
  texte->setVerticalMode(attribut.verticalMode());
  if (!attribut.isDefaultAlignment()) texte->setAlignmentPoint(attribut.alignmentPoint());
  return texte;
}

void dissocier(const AcDbObjectId& id, bool tousBlocs) {
  const AcDbObjectPointer<AcDbBlockReference> bloc(id, AcDb::kForWrite);
  if (bloc.openStatus() != Acad::eOk || (!tousBlocs && !bloc->hasXData(kXDataVeltora))) return;
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc->attributeIterator());
  for (; !attributs->done(); attributs->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribut(attributs->objectId(), AcDb::kForWrite);
    if (attribut.openStatus() != Acad::eOk) continue;
    const std::wstring contenu = base::trim(attribut->textString());
    if (!contenu.empty()) addToModelSpace(texteDe(*attribut, contenu));
    attribut->erase();
  }
}

/// The blocks that the user selects. @return false when he cancels
bool choisirBlocs(std::vector<AcDbObjectId>& blocs) {
  acutPrintf(L"\nSelectionnez les elements a dissocier");
  return selectEntities(nullptr, acutBuildList(0, L"INSERT", RTNONE), blocs) != RTCAN;
}

}  // namespace

int lispVarnText() {
  const Args args(acedGetArgs());
  const auto point = lirePosition(args.element(1));
  if (args.nombre() < 5 || !Args::estTexte(args.element(0)) || !point || !Args::estReel(args.element(2)) ||
      !Args::estReel(args.element(3)) || !Args::estTexte(args.element(4)))
    return acedRetNil();
  texteAPlacer demande;
  demande.style = args.element(0)->resval.rstring;
  demande.point = *point;
  demande.hauteur = Args::reel(args.element(2));
  demande.rotation = Args::reel(args.element(3));
  demande.texte = args.element(4)->resval.rstring;
  // Deliberate (varntext-marqueur): the sixth argument only announces the seventh, which is the factor.
  if (Args::estReel(args.element(5)) && Args::estReel(args.element(6)))
    demande.facteurLargeur = Args::reel(args.element(6));
  placerTexte(demande);
  return acedRetNil();
}

int lispDissocBlock() {
  const Args args(acedGetArgs());
  acedRetNil();
  const resbuf* drapeau = args.element(0);
  const bool tousBlocs = drapeau && drapeau->restype != RTNIL;
  std::vector<AcDbObjectId> blocs;
  if (args.nombre() < 2) {
    if (!choisirBlocs(blocs)) return RTNORM;
  } else {
    const resbuf* jeu = args.element(1);
    if (jeu->restype != RTPICKS || !acedIsSelectionSet(jeu->resval.rlname)) return RTNORM;
    blocs = acedSSEntities(jeu->resval.rlname);
  }
  for (const AcDbObjectId& id : blocs) dissocier(id, tousBlocs);
  return acedRetT();
}

int lispSuperpos() {
  const Args args(acedGetArgs());
  const resbuf* jeu = args.element(0);
  if (!jeu || jeu->restype != RTPICKS || !acedIsSelectionSet(jeu->resval.rlname)) return RTNORM;
  superposerDessin(acedSSEntities(jeu->resval.rlname));
  return RTNORM;
}

}  // namespace veltora
