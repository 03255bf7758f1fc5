// The rule of what text is a number, and the counter of identifiers.
#include "base/text.h"
#include "core/compteur_identifiants.h"
#include "core/valider_nombre.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {
using namespace veltora;

struct CasNombre {
  const char* texte;
  bool nombre;
};

void verifier(const std::vector<CasNombre>& cas) {
  for (const auto& [texte, nombre] : cas) {
    EXPECT_EQ(validerNombre(std::string_view(texte)), nombre) << "\"" << texte << "\"";
    EXPECT_EQ(validerNombre(base::widen(texte)), nombre) << "wide \"" << texte << "\"";
  }
}

TEST(ValiderNombre, TakesSignedAndUnsignedDecimals) {
  verifier({{"12", true},     {"1", true},        {"123456", true},   {"+1", true},      {"-1.5", true},
            {"0.50", true},   {"  12", true},     {"12   ", true},    {" -3.25 ", true}, {"1.5E3", true},
            {"1.E3", true},   {"-1.5E-03", true}, {"1.5E+2", true},   {"", false},       {"   ", false},
            {"+", false},     {"- 1", false},     {"1 2", false},     {"12a", false},    {"1,5", false},
            {"1.2.3", false}, {"--1", false},     {"1.5E", false},    {"1.5E+", false},  {"1.5E3.", false},
            {"0x10", false},  {"inf", false},     {"1.5E+-2", false}, {"\xE9", false},   {"12\xA0", false}});
}

TEST(ValiderNombre, validerNombre_pointInitial_LeavesNoNumberAroundABarePoint) {
  verifier({{"1.", false}, {".5", false}, {"+.5", false}, {".", false}, {".5.", false}, {"-.", false}});
}

TEST(ValiderNombre, validerNombre_exposant_IsACapitalBehindAPointOnly) {
  verifier(
      {{"1E5", false}, {"1e5", false}, {"1.5e3", false}, {"+1E5", false}, {"1.E5", true}, {".E5", false}});
}

TEST(ValiderNombre, OnlyBlanksAreSkipped) {
  verifier({{"12\t", false}, {"\t12", false}, {"12\n", false}, {"12\r\n", false}, {"12 \t", false}});
  EXPECT_TRUE(validerNombre(std::string_view("12\0junk", 7))) << "a zero ends the text";
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
