// Names of points: handing them out, their order, the two dialogs.

#include "base/format.h"
#include "points/comparer_numeros.h"
#include "points/dialogs/choix_multiple_dlg.h"
#include "points/dialogs/numerotation_dlg.h"
#include "points/numeroteur.h"
#include "points/tri_points.h"
#include "support/atelier.h"
#include "support/dialog_script.h"

#include <algorithm>
#include <climits>
#include <cstdint>

namespace {

using namespace veltora;

TEST(SuccesseurLettres, CountsOnLettersAndMovesAnyOtherCharacterByOne) {
  const struct {
    const wchar_t* texte;
    const wchar_t* suivant;
  } cas[] = {{L"", L"A"},     {L"A", L"B"},     {L"Y", L"Z"},    {L"Z", L"AA"},  {L"AZ", L"BA"},
             {L"ZZ", L"AAA"}, {L"B1", L"B2"},   {L"ab", L"ac"},  {L"az", L"a{"}, {L"1Z", L"2A"},
             {L"B9", L"B:"},  {L"AZZ", L"BAA"}, {L"A Z", L"A!A"}};
  for (const auto& c : cas) EXPECT_EQ(successeurLettres(c.texte), c.suivant);
}

TEST(NumeroteurEntier, HandsOutNamesByItsStep) {
  numeroteurEntier n;
  EXPECT_EQ(n.suivant(), L"1") << "defaults";
  n.initialiser(L"P", 9, L"b", 2);
  EXPECT_EQ(n.suivant(), L"P9b");
  EXPECT_EQ(n.suivant(), L"P11b");
  EXPECT_EQ(n.numero(false), 13);
  EXPECT_EQ(n.numero(false), 13);
  EXPECT_EQ(n.numero(true), 13);
  EXPECT_EQ(n.numero(false), 14);
  n.depart = 5;
  n.initialiser(L"A", 40, L"", 1);
  EXPECT_EQ(n.depart, 5) << "kept by the initialiser";
  n.incrementerPrefixe();
  EXPECT_EQ(n.suivant(), L"B5");
  n.incrementerSuffixe();
  EXPECT_EQ(n.suivant(), L"B5A");
  n.initialiser(L"", INT_MAX, L"", 1);
  n.suivant();
  EXPECT_EQ(n.suivant(), base::formater(L"%d", INT_MIN)) << "no overflow";
}

TEST(NumeroteurEntier, AvancerSansPas) {
  numeroteurEntier n;
  n.initialiser(L"", 1, L"", 10);
  n.avancer();
  EXPECT_EQ(n.courant, 2);
}

TEST(ComparerNumeros, OrdersNamesAsASurveyorDoes) {
  const struct {
    const wchar_t* a;
    const wchar_t* b;
    int ordre;
  } cas[] = {{L"A2", L"A10", -1},   {L"A2", L"2", -1},    {L"2", L"10", -1},
             {L"a2", L"A2", 0},     {L"A2a", L"A2B", -1}, {L"B1", L"a9", 1},
             {L"AB", L"AB1", -1},   {L"AB", L"AB0", 0},   {L"A1", L"A01", 0},
             {L"AB", L"AC", -1},    {L"", L"Z", 1},       {L"", L"7", -1},
             {L"É1", L"é2", -1},    {L"7-1", L"7-2", -1}, {L"99999999999", L"1", 1},
             {L"A1b2", L"A1b10", 1}};
  for (const auto& c : cas) {
    const auto signe = [](int n) { return (n > 0) - (n < 0); };
    EXPECT_EQ(signe(comparerNumeros(c.a, c.b)), c.ordre) << base::toUtf8(c.a) << " / " << base::toUtf8(c.b);
    EXPECT_EQ(signe(comparerNumeros(c.b, c.a)), -c.ordre) << base::toUtf8(c.b) << " / " << base::toUtf8(c.a);
  }
}

TEST(RangsPoints, EachColumnSortsAndEqualPointsShareTheirRank) {
  listePointsDuDessin table;
  table.Ajouter(unPoint(L"10", 3, 1, Z_ABSENT, 2));
  table.Ajouter(unPoint(L"A10", 1, 2, 5, 2));
  table.Ajouter(unPoint(L"a2", 3, 0, -5, 1));
  const struct {
    colonnePoints colonne;
    std::vector<int> rangs;
  } cas[] = {{colonnePoints::kOrdre, {0, 1, 2}}, {colonnePoints::kNumero, {2, 1, 0}},
             {colonnePoints::kX, {1, 0, 1}},     {colonnePoints::kY, {1, 2, 0}},
             {colonnePoints::kZ, {2, 1, 0}},     {colonnePoints::kCode, {1, 1, 0}}};
  for (const auto& c : cas) EXPECT_EQ(rangsPoints(table, c.colonne), c.rangs) << static_cast<int>(c.colonne);
}

TEST(ModeNumerotation, ShowsAnExampleAndGivesBackWhatWasTypedOnlyOnOk) {
  CString prefixe = L"S";
  CString suffixe;
  int depart = 12;
  {
    DialogScript script({"Préfixe = P", "Suffixe = b", "?", "[Annuler]"});
    EXPECT_EQ(saisirNumerotation(prefixe, depart, suffixe), 0);
    EXPECT_NE(script.transcript.find("P12b"), std::string::npos) << script.transcript;
  }
  EXPECT_EQ(prefixe + suffixe, L"S");
  DialogScript script({"Préfixe = P", "Numéro de départ = 40", "[OK]"});
  EXPECT_EQ(saisirNumerotation(prefixe, depart, suffixe), 1);
  EXPECT_EQ(nomNumerote(prefixe, depart, 2, suffixe), L"P42");
}

TEST(ModeNumerotation, AFailureIsPrintedAndGivesZero) {
  CString texte;
  int depart = 1;
  EXPECT_EQ(saisirNumerotation(texte, depart, texte), 0) << "no driver is installed";
}

TEST(MultiChoice, TicksAllNoneInverseAndWritesOnOk) {
  const std::vector<std::wstring> textes{L"un", L"deux", L"trois"};
  const struct {
    std::vector<std::string> lignes;
    int resultat;
    std::vector<std::uint16_t> coches;
  } cas[] = {{{"[OK]"}, 1, {0, 1, 0}},
             {{"[Inverser]", "[OK]"}, 1, {1, 0, 1}},
             {{"[Tous]", "Calques [2] = non", "[OK]"}, 1, {1, 0, 1}},
             {{"[Aucun]", "[OK]"}, 1, {0, 0, 0}},
             {{"[Tous]", "[Annuler]"}, 0, {0, 7, 0}}};
  for (const auto& c : cas) {
    std::vector<std::uint16_t> coches{0, 7, 0};
    DialogScript script(c.lignes);
    EXPECT_EQ(choisirPlusieurs(textes, coches, L"Lesquels ?", L"Titre", L"Calques"), c.resultat);
    EXPECT_EQ(coches, c.coches);
    EXPECT_TRUE(script.finished());
  }
}

TEST(MultiChoice, LengthsThatDifferShowNothing) {
  std::vector<std::uint16_t> coches{1};
  EXPECT_EQ(choisirPlusieurs({L"a", L"b"}, coches), 0) << "without a driver a dialog would throw";
  coches.clear();
  DialogScript script({"[Tous]", "[OK]"});
  EXPECT_EQ(choisirPlusieurs({L"a", L"b"}, coches), 1);
  EXPECT_EQ(coches, (std::vector<std::uint16_t>{1, 1})) << "an empty array is filled first";
  EXPECT_NE(script.transcript.find("Choisissez"), std::string::npos);
}

}  // namespace
