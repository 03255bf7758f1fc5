// The rule of what text is a number, and the counter of identifiers.
#include "base/text.h"
#include "core/compteur_identifiants.h"
#include "core/nombre_suspect.h"
#include "core/valider_nombre.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {
using namespace veltora;

bool nombre(const std::string& texte) {
  EXPECT_EQ(validerNombre(texte), validerNombre(base::widen(texte))) << texte;
  return validerNombre(texte);
}

TEST(ValiderNombre, TakesSignedAndUnsignedDecimals) {
  for (const CaseRow& cas : caseRows("core/cases/numbers.txt", "numbers"))
    EXPECT_EQ(nombre(cas[0]), cas[1] == "yes") << cas;
  EXPECT_FALSE(nombre("12\r\n"));
  EXPECT_TRUE(nombre(std::string("12\0junk", 7))) << "a zero ends the text";
}

TEST(NombreSuspect, SaysHowANumberIsWrittenOtherwise) {
  for (const CaseRow& cas : caseRows("core/cases/numbers.txt", "written otherwise"))
    EXPECT_EQ(base::toUtf8(raisonNombre(base::fromUtf8(cas[0]))), cas.at(1)) << cas;
}

TEST(NombreSuspect, FindsNumbersInTwoWords) {
  for (const CaseRow& cas : caseRows("core/cases/numbers.txt", "in two words")) {
    std::vector<std::wstring> mots;
    std::istringstream texte(cas[0]);
    for (std::string mot; texte >> mot;) mots.push_back(base::widen(mot));
    EXPECT_EQ(milliersSepares(mots, static_cast<std::size_t>(cas.integer(1))), cas[2] == "yes") << cas;
  }
}

TEST(ValiderNombre, validerNombre_pointInitial_LeavesNoNumberAroundABarePoint) {
  for (const char* texte : {"1.", ".5", "+.5"}) EXPECT_FALSE(nombre(texte)) << texte;
}

TEST(ValiderNombre, validerNombre_exposant_IsACapitalBehindAPointOnly) {
  for (const char* texte : {"1E5", "1e5", "1.5e3"}) EXPECT_FALSE(nombre(texte)) << texte;
  EXPECT_TRUE(nombre("1.E5"));
}

TEST(CompteurIdentifiants, IsSeededOnceFromTheClock) {
  compteurIdentifiants compteur;
  std::int64_t maintenant = 0x1'0000'0010;
  compteur.reinitialiser([&] { return maintenant; });
  EXPECT_EQ(compteur.suivant(), 0x10u) << "low 32 bits";
  maintenant = 500;
  EXPECT_EQ(compteur.suivant(), 0x11u);
}

TEST(CompteurIdentifiants, NeverGivesAllBits) {
  compteurIdentifiants compteur;
  compteur.reinitialiser([] { return std::int64_t{0xFFFFFFFF}; });
  EXPECT_EQ(compteur.suivant(), 0u);
  EXPECT_EQ(compteur.suivant(), 1u);
  compteur.reinitialiser([] { return std::int64_t{0xFFFFFFFE}; });
  EXPECT_EQ(compteur.suivant(), 0xFFFFFFFEu);
  EXPECT_NE(compteur.suivant(), 0xFFFFFFFFu);
}

}  // namespace
