// The point record: names, comparison, altitude text.

#include "points/point_xyz.h"
#include "support/atelier.h"

namespace {

using namespace veltora;

TEST(PointDuDessin, cutsNamesAt9BytesAndZeroesTheRest) {
  struct {
    const wchar_t* donne;
    const char* garde;
  } const cas[] = {{L"123456789", "123456789"},
                   {L"1234567890", "123456789"},
                   {L"", ""},
                   {L"Repère €", "Rep\xE8re \x80"},
                   {L"p→q", "p?q"},
                   {nullptr, ""}};
  for (const auto& c : cas) {
    pointDuDessin a = unPoint(L"zzzzzzzzz", 0, 0);
    pointDuDessin b = a;
    pointDuDessin copie = a;
    pointXYZ large;
    large.nom = c.donne ? c.donne : L"";
    a.setNomPoint(c.donne);
    b.setParams(c.donne, {1, 2, 3}, 4);
    copie = large;
    char attendu[sizeof(a.nomPoint)] = {};
    std::copy_n(c.garde, std::strlen(c.garde), attendu);
    for (const pointDuDessin* p : {&a, &b, &copie})
      EXPECT_EQ(std::string(p->nomPoint, sizeof(p->nomPoint)), std::string(attendu, sizeof(attendu)))
          << c.garde;
  }
}

TEST(PointDuDessin, comparesPlacesCodesAndNamesIgnoringCase) {
  const pointDuDessin a = unPoint(L"Éa1", 650000, 6860000, 100, 3);
  struct {
    const char* nom;
    pointDuDessin autre;
    bool pareil;
  } const cas[] = {
      {"case", unPoint(L"éA1", 650000, 6860000, 100, 3), true},
      {"trailing blank", unPoint(L"Éa1 ", 650000, 6860000, 100, 3), false},
      {"within", unPoint(L"Éa1", 650000.00009, 6860000, 100, 3), true},
      {"beyond", unPoint(L"Éa1", 650000, 6860000.00011, 100, 3), false},
      {"altitude", unPoint(L"Éa1", 650000, 6860000, Z_ABSENT, 3), false},
      {"code", unPoint(L"Éa1", 650000, 6860000, 100, 4), false},
  };
  for (const auto& c : cas) EXPECT_EQ(a == c.autre, c.pareil) << c.nom;
  EXPECT_FALSE(unPoint(L"", 0, 0) == unPoint(L"", 0.0001, 0)) << "the limit itself is outside";
  EXPECT_TRUE(pointDuDessin() == pointDuDessin()) << "both without altitude";
}

// Deliberate: the third argument is the altitude.
TEST(PointDuDessin, setXY_altitude_isOverwritten) {
  pointDuDessin point = unPoint(L"1", 7, 7, 7);
  point.setXY(1, 2, 3);
  EXPECT_EQ(point.getAs3dPnt(), AcGePoint3d(1, 2, 3));
}

TEST(PointDuDessin, takesAWidePointButKeepsItsBlock) {
  AcDbStub stub;
  pointDuDessin point;
  point.setId(AcDbObjectId(&stub));
  pointXYZ source;
  source.x = 1;
  source.code = 12;
  point = source;
  EXPECT_EQ(point.getId(), AcDbObjectId(&stub));
  EXPECT_EQ(point.z, 0.0);
  EXPECT_EQ(point.code, 12);
  EXPECT_NE(pointXYZ().numeroInterne, pointXYZ().numeroInterne);
}

class PointEtCodes : public Atelier {};

TEST_F(PointEtCodes, showsTheAltitudeWithTheDecimalsOfItsCode) {
  getTableCodification().getOuCreerCode(5).precisionAltitudes = 4;
  CString texte = L"avant";
  const int codes = getTableCodification().codes.GetSize();
  unPoint(L"1", 0, 0, Z_ABSENT, 77).getZAsString(texte);
  EXPECT_EQ(texte, L"");
  EXPECT_EQ(getTableCodification().codes.GetSize(), codes) << "the code table is not asked";
  unPoint(L"1", 0, 0, 100.125, 5).getZAsString(texte);
  EXPECT_EQ(texte, L"100.1250");
  unPoint(L"1", 0, 0, -0.5, 1).getZAsString(texte);
  EXPECT_EQ(texte, L"-0.50");
}

}  // namespace
