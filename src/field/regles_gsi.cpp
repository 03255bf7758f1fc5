#include "field/regles_gsi.h"

#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>

namespace veltora {
namespace {

void lireHauteur(reglesCodesGSI& regles, const std::string& texte) {
  const double lue = base::lireReelC(texte.c_str());
  const auto accepter = [&regles, lue](double facteur) {
    regles.hauteur = lue / facteur;
    regles.hauteurLue = true;
  };
  regles.hauteur = lue;
  if (lue >= 0.0 && lue <= 2.99) return accepter(1.0);
  if (lue >= 3.0 && lue < 299.0) return accepter(100.0);
  if (lue >= 300.0 && lue < 2999.0) return accepter(1000.0);
}

void appliquer(reglesCodesGSI& regles, regleCodeGSI& regle, const std::string& texte) {
  switch (regle.genre) {
    case regleCodeGSI::kPresence:
      regle.vu = true;
      break;
    case regleCodeGSI::kTexte:
      regle.texte = base::toUpperAnsi(regle.texte);
      if (regle.texte == texte) regle.vu = true;
      break;
    case regleCodeGSI::kHauteur:
      lireHauteur(regles, texte);
      break;
    case regleCodeGSI::kCode:
      regles.code = texte;
      regles.codeLu = true;
      break;
    default:
      break;
  }
}

}  // namespace

reglesCodesGSI& getReglesCodesGSI() {
  static reglesCodesGSI regles;
  return regles;
}

void analyserCodesGSI(reglesCodesGSI& regles, std::uint32_t numeroLigne, const ligneGSI& mots) {
  if (regles.regles.empty()) return;
  for (const motGSI& mot : mots) {
    const std::string texte = base::toUpperAnsi(mot.texte);
    for (regleCodeGSI& regle : regles.regles)
      if (regle.indexMot == mot.indexMot && regle.ligne != numeroLigne) appliquer(regles, regle, texte);
  }
}

// Deliberate (gsi-hauteur-lue): a height that was read keeps the rules from being complete.
bool reglesCompletes(const reglesCodesGSI& regles) {
  return !regles.hauteurLue && regles.codeLu &&
         std::all_of(regles.regles.begin(), regles.regles.end(), [](const regleCodeGSI& regle) {
           return regle.genre > regleCodeGSI::kTexte || regle.vu;
         });
}

void razReglesCodes(reglesCodesGSI& regles) {
  regles.hauteurLue = false;
  regles.codeLu = false;
  for (regleCodeGSI& regle : regles.regles) regle.vu = false;
}

}  // namespace veltora
