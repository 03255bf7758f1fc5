// One table: names, duplicates, numbers, removal.

#include "support/atelier.h"

#include <limits>
#include <random>

namespace {

using namespace veltora;

int indexDe(const listePointsDuDessin& table, const wchar_t* nom) {
  int index = 99;
  const int trouve = table.existPoint(nom, index);
  EXPECT_EQ(trouve != 0, index >= 0);
  return index;
}

class TablePoints : public Atelier {
protected:
  void ajouter(std::initializer_list<const wchar_t*> liste) {
    for (const wchar_t* nom : liste) table().Ajouter(unPoint(nom, table().nbPoint(), 0));
  }
};

TEST_F(TablePoints, findsNamesIgnoringCaseAndOuterBlanks) {
  ajouter({L"A1", L" b2", L"ÉTÉ", L"", L"a1"});
  EXPECT_EQ(indexDe(table(), L" A1 "), 4) << "of two points the later one";
  EXPECT_EQ(indexDe(table(), L"B2"), 1);
  EXPECT_EQ(indexDe(table(), L"été"), 2);
  EXPECT_EQ(indexDe(table(), L"   "), 3);
  EXPECT_EQ(indexDe(table(), std::wstring(200, L'1').c_str()), -1);
  EXPECT_EQ(indexDe(table(), L"中"), -1);
  EXPECT_EQ(indexDe(table(), nullptr), 3);
  EXPECT_THROW(table().getData(5), std::invalid_argument);
  EXPECT_THROW(table().getData(-1), std::invalid_argument);
}

// Deliberate: a tab at the edge of a name is part of its key when it is entered, and not when it is removed.
TEST_F(TablePoints, cleNomPoint_tabulation_isTrimmedOnOneSideOnly) {
  ajouter({L"a\t", L"b"});
  EXPECT_EQ(indexDe(table(), L"a"), -1);
  EXPECT_EQ(indexDe(table(), L"a\t"), 0);
  table().supprimerPoint(L"a\t");
  EXPECT_EQ(noms(table()), "b");
  EXPECT_EQ(indexDe(table(), L"a\t"), 0) << "the key stays";
  AcDbObjectId id;
  table().supprimerPoint(L"b");
  EXPECT_EQ(table().getObjId(L"a\t", id), 0) << "its index lies outside the array now";
  AcGePoint3d pt;
  int code = 0;
  EXPECT_EQ(table().getBlockPosition(L"a\t", pt, code), 0);
  table().supprimerPoint(L"a\t");
  EXPECT_EQ(table().nbPoint(), 0);
}

// Deliberate: an altitude of exactly 0 is none at all.
TEST_F(TablePoints, CreerPoint_zero_addsNothing) {
  table().CreerPoint({1, 2, 0.0}, 3, L"x");
  table().CreerPoint({1, 2, -0.0}, 3, L"x");
  EXPECT_EQ(table().nbPoint(), 0);
  table().CreerPoint({1, 2, Z_ABSENT}, 3, L"x");
  table().CreerPoint({1, 2, std::numeric_limits<double>::quiet_NaN()}, 3, nullptr);
  EXPECT_EQ(noms(table()), "x *");
}

TEST_F(TablePoints, takesTheLargestLeadingNumber) {
  EXPECT_EQ(table().getMaxNum(), 0);
  ajouter({L"B99", L"-5"});
  EXPECT_EQ(table().getMaxNum(), 0);
  ajouter({L"12A", L" 7"});
  EXPECT_EQ(table().getMaxNum(), 12);
  // What was looked at once counts only while no name in it changes.
  table().getData(2)->setNomPoint(L"C");
  EXPECT_EQ(table().getMaxNum(), 7);
  (*table().getData())[0].setNomPoint(L"40");
  EXPECT_EQ(table().getMaxNum(), 40);
  table().supprimerPoint(L"B99");  // under the name by which it was entered
  EXPECT_EQ(table().getMaxNum(), 7);
  ajouter({L"9"});
  EXPECT_EQ(table().getMaxNum(), 9);
  table().supprimerPoint(L"9");
  ajouter({L"8"});
  EXPECT_EQ(table().getMaxNum(), 8);
  table().renumeroter(true);
  EXPECT_EQ(table().getMaxNum(), 4);
}

TEST_F(TablePoints, supprimerPointPutsTheLastOneInItsPlace) {
  ajouter({L"A", L"B", L"C"});
  table().supprimerPoint(L" a ");
  EXPECT_EQ(noms(table()), "C B");
  EXPECT_EQ(indexDe(table(), L"c"), 0);
  EXPECT_EQ(indexDe(table(), L"a"), -1);
  table().supprimerPoint(L"inconnu");
  table().supprimerPoint(L"b");
  table().supprimerPoint(L"c");
  EXPECT_EQ(table().nbPoint(), 0);
}

TEST_F(TablePoints, delDupsSortsAndKeepsTheFirstOfEachPlace) {
  table().Ajouter(unPoint(L"d", 650000, 6860001, 1));
  table().Ajouter(unPoint(L"b2", 650000, 6860000, 5, 2));
  table().Ajouter(unPoint(L"b1", 650000, 6860000, 6, 1));
  table().Ajouter(unPoint(L"b1bis", 650000, 6860000, 7, 1));
  table().Ajouter(unPoint(L"a", 649999, 6860009, 1));
  table().delDups();
  EXPECT_EQ(noms(table()), "a b1 d") << "lowest code, then the earlier one; altitudes do not count";
  EXPECT_EQ(indexDe(table(), L"d"), 2);
  EXPECT_EQ(indexDe(table(), L"b2"), -1);
}

TEST_F(TablePoints, delDupsMeasuresFromTheFirstOfAChain) {
  for (const double x : {0.0, 0.6e-8, 1.2e-8, 1.8e-8}) table().Ajouter(unPoint(L"p", x, 0));
  table().delDups();
  ASSERT_EQ(table().nbPoint(), 2);
  EXPECT_EQ(table().getData(1)->x, 1.2e-8);
}

// Deliberate: without duplicates the names are forgotten, and the order stays.
TEST_F(TablePoints, delDups_index_staysEmptyWithoutDuplicates) {
  table().delDups();
  ajouter({L"c", L"b", L"a"});
  table().delDups();
  EXPECT_EQ(noms(table()), "c b a");
  EXPECT_EQ(indexDe(table(), L"a"), -1);
  table().renumeroter(false);
  EXPECT_EQ(indexDe(table(), L"a"), -1);
  table().renumeroter(true);
  EXPECT_EQ(noms(table()), "1 2 3");
  EXPECT_EQ(indexDe(table(), L"3"), 2);
}

/// The comparison with tolerances is no order: whatever stands in the table, the sort ends and loses nobody.
TEST_F(TablePoints, delDupsSurvivesCoordinatesThatHaveNoOrder) {
  std::mt19937 hasard(4711);
  const double valeurs[] = {0,
                            0.7e-8,
                            1.4e-8,
                            2.1e-8,
                            std::numeric_limits<double>::quiet_NaN(),
                            1e38,
                            std::numeric_limits<double>::infinity(),
                            -0.0};
  for (int i = 0; i < 3000; ++i)
    table().Ajouter(
        unPoint(L"n", valeurs[hasard() % 8], valeurs[hasard() % 8], 1, static_cast<int>(hasard() % 3)));
  int sansPlace = 0;
  for (const pointDuDessin& p : *table().getData())
    sansPlace += std::isfinite(p.x) && std::isfinite(p.y) ? 0 : 1;
  table().delDups();
  int restent = 0;
  for (const pointDuDessin& p : *table().getData())
    restent += std::isfinite(p.x) && std::isfinite(p.y) ? 0 : 1;
  EXPECT_EQ(restent, sansPlace) << "a point without a place is nobody's duplicate";
}

TEST_F(TablePoints, renumeroterNamesOnlyThePointsWithoutAName) {
  ajouter({L"7", L"", L"*", L"ab", L" *. ", L"*9*"});
  table().renumeroter(false);
  EXPECT_EQ(noms(table()), "7 8 9 ab 10 *9*");
}

TEST_F(TablePoints, findsThePointNextToAPlace) {
  pointDuDessin trouve;
  EXPECT_EQ(table().findNearestTo(0, 0, trouve), 0);
  table().Ajouter(unPoint(L"loin", 1e20, 0));
  EXPECT_EQ(table().findNearestTo(0, 0, trouve), 1);
  EXPECT_STREQ(trouve.nomPoint, "loin") << "beyond all distances the first one is taken";
  table().Ajouter(unPoint(L"g", 650000, 6860000, 900));
  table().Ajouter(unPoint(L"d", 650002, 6860000, 1));
  EXPECT_EQ(table().findNearestTo(650001, 6860000, trouve), 1);
  EXPECT_STREQ(trouve.nomPoint, "g");
  EXPECT_EQ(table().getAt(650002 + 9e-7, 6860000, trouve), 1);
  EXPECT_STREQ(trouve.nomPoint, "d");
  EXPECT_EQ(table().getAt(650002 + 2e-6, 6860000, trouve), 0);
}

TEST_F(TablePoints, movesThePointsOfABlockByTheMaskInAllTables) {
  AcDbStub stub;
  const AcDbObjectId id(&stub);
  for (const wchar_t* nom : {L"a", L"b"}) {
    table().Ajouter(unPoint(nom, 1, 2, 3));
    table().getData(table().nbPoint() - 1)->setId(id);
  }
  projet.creerTablePoints(L"autre");
  projet.tablesListe.GetAt(1)->Ajouter(*table().getData(0));
  projet.notifyPositionPoint(id, {10, 20, 30}, 4);
  EXPECT_EQ(table().getData(0)->getAs3dPnt(), AcGePoint3d(1, 2, 30));
  EXPECT_EQ(table().getData(1)->getAs3dPnt(), AcGePoint3d(1, 2, 3)) << "the first of a table only";
  EXPECT_EQ(projet.tablesListe.GetAt(1)->getData(0)->z, 30);
  projet.notifyPositionPoint(id, {10, 20, 30}, 3);
  EXPECT_EQ(table().getData(0)->getAs3dPnt(), AcGePoint3d(10, 20, 30));
}

TEST_F(TablePoints, shiftsAltitudesThatArePresent) {
  table().Ajouter(unPoint(L"a", 0, 0, 100));
  table().Ajouter(unPoint(L"b", 0, 0));
  projet.decalZ(-1.5);
  EXPECT_EQ(table().getData(0)->z, 98.5);
  EXPECT_EQ(table().getData(1)->z, Z_ABSENT);
}

TEST_F(TablePoints, joinsAnotherTableAndEvenItself) {
  listePointsDuDessin autre;
  autre.Ajouter(unPoint(L"A", 5, 5));
  ajouter({L"a", L"b"});
  table().fusionnerAvec(autre);
  table().fusionnerAvec(table());
  EXPECT_EQ(noms(table()), "a b A a b A");
  EXPECT_EQ(indexDe(table(), L"a"), 5);
}

/// Seconds would show a dictionary with long chains, hours a removal that rebuilds it.
TEST_F(TablePoints, worksOn60000Points) {
  constexpr int kNombre = 60000;
  for (int i = 0; i < kNombre; ++i)
    table().Ajouter(unPoint(std::to_wstring(i).c_str(), i % (kNombre / 2), 0));
  for (int i = 0; i < kNombre; ++i) ASSERT_EQ(indexDe(table(), std::to_wstring(i).c_str()), i);
  table().delDups();
  EXPECT_EQ(table().nbPoint(), kNombre / 2);
  for (int i = 0; i < kNombre / 4; ++i) table().supprimerPoint(std::to_wstring(i).c_str());
  EXPECT_EQ(table().nbPoint(), kNombre / 4);
}

// Deliberate: removeTablePoints_courante moves the index down when the current table itself goes.
TEST(Projet, removeTablePoints_courante_movesDownWithWhatGoes) {
  struct {
    const char* nom;
    int courante;
    int retiree;
    const wchar_t* reste;
    int index;
  } const cas[] = {
      {"in front", 2, 0, L"C", 1}, {"the first itself", 0, 0, L"B", 0}, {"behind", 0, 2, L"LEVE", 0},
      {"itself", 2, 2, L"B", 1},   {"outside", 2, 3, L"C", 2},          {"negative", 2, -1, L"C", 2},
  };
  for (const auto& c : cas) {
    projetsTopo projet;
    projet.creerTablePoints(L"B");
    projet.creerTablePoints(L"C");
    projet.tableCourante = c.courante;
    projet.removeTablePoints(c.retiree);
    EXPECT_EQ(projet.tableCourante, c.index) << c.nom;
    EXPECT_EQ(projet.currTable()->getNomTable(), c.reste) << c.nom;
  }
  projetsTopo seule;
  seule.removeTablePoints(0);
  EXPECT_EQ(seule.tablesListe.GetSize(), 1);
}

TEST(Projet, currTableRepairsWhatItCan) {
  projetsTopo projet;
  EXPECT_EQ(projet.currTable()->getNomTable(), L"LEVE");
  projet.tableCourante = 5;
  EXPECT_EQ(projet.currTable(), projet.tablesListe.GetAt(0));
  projet.tableCourante = -1;
  EXPECT_THROW(projet.currTable(), std::invalid_argument);
  projet.removeAll();
  EXPECT_EQ(projet.tableCourante, -1);
  EXPECT_EQ(projet.currTable()->getNomTable(), L"") << "not LEVE";
  delete projet.tablesListe.GetAt(0);
  projet.tablesListe.GetAt(0) = nullptr;
  EXPECT_EQ(projet.currTable()->nbPoint(), 0);
}

}  // namespace
