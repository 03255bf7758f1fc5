#include "drafting/texts/texte_ajuste.h"

#include "arx/db/dbmain.h"
#include "core/drawing_space.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace veltora {
namespace {

constexpr double kPlusPetiteLargeur = 0.6;
constexpr double kPlusPetiteHauteur = 0.7;

struct justification {
  AcDb::TextHorzMode horizontale = AcDb::kTextLeft;
  AcDb::TextVertMode verticale = AcDb::kTextBase;
};

justification lireStyle(const std::wstring& style) {
  switch (style.empty() ? L' ' : style.front()) {
    case L'C':
    case L'c':
      return {AcDb::kTextCenter, AcDb::kTextBase};
    case L'M':
    case L'm':
      return {AcDb::kTextMid, AcDb::kTextVertMid};
    case L'R':
    case L'r':
      return {AcDb::kTextRight, AcDb::kTextBase};
    default:
      return {};
  }
}

void ajuster(AcDbText& texte, double limite) {
  const double facteur = texte.widthFactor();
  texte.setWidthFactor(1.0);
  const ajustementTexte ajustement = ajusterLargeur(texte.measure().width, limite);
  texte.setWidthFactor(ajustement.facteurLargeur == 1.0 ? facteur : ajustement.facteurLargeur);
  if (ajustement.facteurHauteur != 1.0) texte.setHeight(texte.height() * ajustement.facteurHauteur);
}

}  // namespace

ajustementTexte ajusterLargeur(double largeur, double limite) {
  ajustementTexte ajustement;
  if (largeur < limite || !(largeur > 0.0)) return ajustement;
  ajustement.facteurLargeur = limite / largeur;
  if (ajustement.facteurLargeur >= kPlusPetiteLargeur) return ajustement;
  ajustement.facteurLargeur = kPlusPetiteLargeur;
  ajustement.facteurHauteur = std::clamp(limite / (kPlusPetiteLargeur * largeur), kPlusPetiteHauteur, 1.0);
  return ajustement;
}

AcDbObjectId placerTexte(const texteAPlacer& demande) {
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return {};
  auto texte = std::make_unique<AcDbText>(demande.point, demande.texte.c_str(), dessin->textstyle());
  if (texte->setHeight(demande.hauteur) != Acad::eOk) return {};
  texte->setRotation(demande.rotation);
  texte->setWidthFactor(demande.facteurLargeur);
  if (demande.limite < kSansLimite) ajuster(*texte, demande.limite);
  const justification style = lireStyle(demande.style);
  texte->setHorizontalMode(style.horizontale);
  texte->setVerticalMode(style.verticale);
  if (!texte->isDefaultAlignment()) texte->setAlignmentPoint(demande.point);
  return addToModelSpace(std::move(texte));
}

}  // namespace veltora
