// The text form of one record, which nothing but this form's reader knows.
#include "codes/codif_point.h"
#include "codes/flux_texte.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace {
using namespace veltora;

class FormeTexte : public ::testing::Test {
protected:
  /// Reads the next record of a text.
  int lire(const std::wstring& texte) {
    fluxTexteMemoire flux(texte);
    ligne = codifPoint();
    return ligne.lireTexte(flux);
  }
  DossierEssai dossier;
  codifPoint ligne;
};

TEST_F(FormeTexte, ReadsEveryKeywordInAnyCase) {
  ASSERT_EQ(
      lire(L"bruit\r\n code {\r\n\tcode: 12\n\tLibelle: Arbre é; \n\tCHEMIN:biblio\\a.dwg\n BLKTAILLE: 2.5\n"
           L"PRECISIONALTITUDES: 4\nLAYBLOCK: B\nLAYALTITUDES: A\nLAYNUMERO: N\nLAYOBSERVATIONS: O\nLAYCODE: "
           L"C\n"
           L"COULLAYBLOCK: 1\nCOULLAYALTI: 2\nCOULLAYNUM: 3\nCOULLAYOBS: 4\nCOULLAYCODE: 5\ninconnu: 3\n}\n"),
      1);
  EXPECT_EQ(ligne.code, 12);
  EXPECT_EQ(ligne.libelle, L"Arbre é") << "a final semicolon is lost";
  EXPECT_EQ(ligne.chemin, L"biblio\\a.dwg");
  EXPECT_EQ(ligne.tailleBlock, 2.5);
  EXPECT_EQ(ligne.precisionAltitudes, 4);
  EXPECT_EQ(ligne.layers, (std::array<std::wstring, 5>{L"B", L"A", L"N", L"O", L"C"}));
  EXPECT_EQ(ligne.coulLayers, (std::array<int, 5>{1, 2, 3, 4, 5}));
}

TEST_F(FormeTexte, BringsValuesWithinTheirRanges) {
  struct Cas {
    const wchar_t* champ;
    double attendu;
    std::function<double(const codifPoint&)> valeur;
  };
  const auto code = [](const codifPoint& l) { return double(l.code); };
  const auto taille = [](const codifPoint& l) { return l.tailleBlock; };
  const auto couleur = [](const codifPoint& l) { return double(l.coulLayers[layerBlock]); };
  const auto decimales = [](const codifPoint& l) { return double(l.precisionAltitudes); };
  const std::vector<Cas> cas{
      {L"CODE: 0", 1, code},
      {L"CODE: -7", 1, code},
      {L"CODE: 10000", 9999, code},
      {L"CODE: abc", 1, code},
      {L"CODE:9999", 9999, code},
      {L"BLKTAILLE: -3", 1, taille},
      {L"BLKTAILLE: 0", 1, taille},
      {L"BLKTAILLE: .5", 5, taille},  // the point is trimmed with the blanks
      {L"BLKTAILLE: 0.5", 0.5, taille},
      {L"COULLAYBLOCK: 257", 7, couleur},
      {L"COULLAYBLOCK: -1", 7, couleur},
      {L"COULLAYBLOCK: 256", 256, couleur},
      {L"COULLAYBLOCK: 0", 0, couleur},
      {L"PRECISIONALTITUDES: 12", 8, decimales},
      {L"PRECISIONALTITUDES: -1", 0, decimales},
  };
  for (const auto& [champ, attendu, valeur] : cas) {
    ASSERT_EQ(lire(std::wstring(L"Code {\n") + champ + L"\n}"), 1);
    EXPECT_EQ(valeur(ligne), attendu) << std::string(champ, champ + std::wcslen(champ));
  }
}

TEST_F(FormeTexte, EndsAtTheBraceOrFailsAtTheEndAndAtTheNextRecord) {
  EXPECT_EQ(lire(L""), 0);
  EXPECT_EQ(lire(L"CODE: 5\n}\n"), 0) << "no record begins";
  EXPECT_EQ(lire(L"Code {\nCODE: 5\n"), 0);
  EXPECT_EQ(ligne.code, 5) << "what was read stays";
  EXPECT_EQ(lire(L"Code {\nCODE: 5\nCode {\nCODE: 6\n}\n"), 0);
  EXPECT_EQ(ligne.code, 5);
  fluxTexteMemoire deux(L"Code {\nCODE: 5\n} fin\nCode {\nCODE: 6\n}");
  EXPECT_EQ(ligne.lireTexte(deux), 1);
  EXPECT_EQ(ligne.lireTexte(deux), 1);
  EXPECT_EQ(ligne.code, 6);
}

TEST_F(FormeTexte, ecrireTexte_coupe_LosesTextsAtTheirFirstCharacter) {
  ligne.code = 12;
  ligne.libelle = L"Arbre";
  ligne.chemin = L"/b\\a.dwg";
  ligne.layers[layerObs].clear();
  fluxTexteMemoire flux;
  ligne.ecrireTexte(flux);
  EXPECT_EQ(flux.texte(),
            L"\nCode {\n\tCODE: 12\n\tL A\n\tC /\n\tBLKTAILLE: 1.000000\n\tPRECISIONALTITUDES: 2\n\tL 0\n\tL "
            L"_\n\tL _"
            L"\n\tL \n\tL _\n\tCOULLAYBLOCK: 7\n\tCOULLAYALTI: 7\n\tCOULLAYNUM: 7\n\tCOULLAYOBS: "
            L"7\n\tCOULLAYCODE: 7"
            L"\n}");
  EXPECT_EQ(lire(flux.texte()), 1);
  EXPECT_EQ(ligne.code, 12);
  EXPECT_EQ(ligne.libelle, L"Point Topo");
}

TEST_F(FormeTexte, AltitudesShowTheDecimalsOfTheCode) {
  EXPECT_EQ(texteAltitude(12.345, 2), L"12.35");
  EXPECT_EQ(texteAltitude(-0.5, 0), L"-0");
  EXPECT_EQ(texteAltitude(1e38, 2), L"") << "no altitude";
  EXPECT_EQ(texteAltitude(-std::nan(""), 2), L"");
  EXPECT_EQ(texteAltitude(HUGE_VAL, 2), L"");
  EXPECT_EQ(texteAltitude(1.0, -3), L"1");
  EXPECT_EQ(texteAltitude(1.0, 2000000000).size(), 32u) << "a file may hold any number";
}

}  // namespace
