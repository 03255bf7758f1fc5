// Clothoids against quadrature of their definition: points, ends, radii, tangents, vertices, data kept.

#include "drafting/clothoids/clothoide.h"

#include "arx/db/dbpl.h"
#include "base/format.h"
#include "core/xdata_names.h"
#include "core/xml_champs.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "drafting/clothoids/clothoide_parcours.h"
#include "drafting/clothoids/fresnel.h"
#include "support/atelier.h"

#include <cmath>
#include <numbers>

namespace {

using namespace veltora;

constexpr double kPi = std::numbers::pi;

/// Integral of a function by Gauss's rule of five points in `parts` parts.
template <class Fonction>
long double integrale(Fonction fonction, long double a, long double b, int parts) {
  constexpr long double kX[] = {0.0L, 0.538469310105683091036314L, 0.906179845938663992797627L};
  constexpr long double kW[] = {0.568888888888888888888889L, 0.478628670499366468041292L,
                                0.236926885056189087514264L};
  const long double h = (b - a) / parts / 2.0L;
  long double somme = 0.0L;
  for (int i = 0; i < parts; ++i) {
    const long double milieu = a + h * (2 * i + 1);
    somme += kW[0] * fonction(milieu);
    for (int k = 1; k < 3; ++k)
      somme += kW[k] * (fonction(milieu - h * kX[k]) + fonction(milieu + h * kX[k]));
  }
  return somme * h;
}

/// A curve that starts at a point in a direction with a curvature and turns linearly to another curvature,
/// counter-clockwise positive: its end, the direction there, where its end tangents meet.
struct courbeEssai {
  courbeEssai(const AcGePoint2d& depuis, double direction, double longueur, double k1, double k2)
      : p1(depuis) {
    const auto cap = [=](long double l) {
      return static_cast<long double>(direction) + k1 * l + (k2 - k1) * l * l / (2 * longueur);
    };
    p2 = {depuis.x + static_cast<double>(
                         integrale([&](long double l) { return std::cos(cap(l)); }, 0, longueur, 400)),
          depuis.y + static_cast<double>(
                         integrale([&](long double l) { return std::sin(cap(l)); }, 0, longueur, 400))};
    d1 = {std::cos(direction), std::sin(direction)};
    const auto fin = static_cast<double>(cap(longueur));
    d2 = {std::cos(fin), std::sin(fin)};
    pi = p1 + d1 * ((p2 - p1).crossProduct(d2) / d1.crossProduct(d2));
    r1 = k1 == 0 ? 0 : 1 / std::fabs(k1);
    r2 = k2 == 0 ? 0 : 1 / std::fabs(k2);
  }
  [[nodiscard]] clothoide parRayons() const {
    clothoide courbe;
    EXPECT_TRUE(courbe.definirParRayons(r1, r2, p1, p2, pi));
    return courbe;
  }
  AcGePoint2d p1, p2, pi;
  AcGeVector2d d1, d2;
  double r1, r2;
};

TEST(Clothoide, fresnelIntegralsAgreeWithQuadrature) {
  // The two sides of the series' limit (1.60078), small ones, some turns.
  for (const double x : {1e-3, 0.1, 0.7, 1.6, 1.6008, 2.0, 5.5, 12.0}) {
    const auto angle = [](long double u) { return std::numbers::pi_v<long double> * u * u / 2; };
    const int parts = 40 + static_cast<int>(40 * x * x);
    const long double c = integrale([&](long double u) { return std::cos(angle(u)); }, 0, x, parts);
    const long double s = integrale([&](long double u) { return std::sin(angle(u)); }, 0, x, parts);
    for (const double sens : {1.0, -1.0}) {
      const integralesFresnel f = calculerFresnel(sens * x);
      EXPECT_NEAR(static_cast<double>(f.c * sens / c), 1.0, 1e-12) << x;
      EXPECT_NEAR(static_cast<double>(f.s * sens / s), 1.0, 1e-12) << x;
    }
  }
  // A table of the integrals (Abramowitz and Stegun, table 7.7), and their limit.
  EXPECT_NEAR(calculerFresnel(1.0).c, 0.7798934, 5e-8);
  EXPECT_NEAR(calculerFresnel(1.0).s, 0.4382591, 5e-8);
  EXPECT_EQ(calculerFresnel(37000.0).c, 0.5);
  EXPECT_EQ(calculerFresnel(-37000.0).s, -0.5);
}

struct rangeeCourbe {
  const char* nom;
  double direction, longueur, k1, k2;
};
constexpr rangeeCourbe kCourbes[] = {
    {"line to left", 0.3, 20, 0, 1 / 100.0},         {"line to right", 2.0, 80, 0, -1 / 60.0},
    {"left to line", -1.0, 50, 1 / 250.0, 0},        {"right to line", 4.0, 30, -1 / 40.0, 0},
    {"wide to tight", 1.0, 60, 1 / 300.0, 1 / 90.0}, {"tight to wide", 5.0, 60, -1 / 90.0, -1 / 300.0},
    {"nearly half a turn", 0.0, 300, 0, 1 / 50.0},   {"flat", 0.7, 12, 0, 1 / 4000.0},
};

TEST(Clothoide, byRadiiItHasTheEndsRadiiAndTangentsAsked) {
  const struct {
    AcGePoint2d depuis;
    double precision;
  } lieux[] = {{{12.5, -40.0}, 1e-9}, {{652000.0, 6862000.0}, 1e-6}};
  for (const rangeeCourbe& rangee : kCourbes) {
    for (const auto& lieu : lieux) {
      SCOPED_TRACE(rangee.nom);
      const courbeEssai essai(lieu.depuis, rangee.direction, rangee.longueur, rangee.k1, rangee.k2);
      clothoide courbe = essai.parRayons();
      courbe.orienterVers(essai.pi);
      const bool finDroite = essai.r2 == 0;  // then s is counted from p2
      const double debut = finDroite ? courbe.endParam : courbe.startParam;
      const double fin = finDroite ? courbe.startParam : courbe.endParam;
      EXPECT_LT(courbe.pointEn(debut).distanceTo(essai.p1), lieu.precision);
      EXPECT_LT(courbe.pointEn(fin).distanceTo(essai.p2), lieu.precision);
      EXPECT_NEAR(std::fabs(fin - debut), rangee.longueur, lieu.precision * 2);
      EXPECT_NEAR(1.0 / courbe.rayonEn(debut), std::fabs(rangee.k1), 1e-12);
      EXPECT_NEAR(1.0 / courbe.rayonEn(fin), std::fabs(rangee.k2), 1e-12);
      const double sens = fin > debut ? 1.0 : -1.0;
      EXPECT_LT((courbe.tangenteUnitaireEn(debut) * sens - essai.d1).length(), 1e-9);
      EXPECT_LT((courbe.tangenteUnitaireEn(fin) * sens - essai.d2).length(), 1e-9);
      if (essai.r2 > 0) {  // the centre lies across the tangent, on the side to which the curve turns
        const double cote = rangee.k2 > 0 ? 1.0 : -1.0;
        EXPECT_LT(courbe.centreEn(fin).distanceTo(essai.p2 + essai.d2.perpVector() * (cote * essai.r2)),
                  1e-6);
      }
    }
  }
}

TEST(Clothoide, clothoideMirrored_theRuleTakesTheFarSideUnlessTheSecondEndIsStraight) {
  for (const rangeeCourbe& rangee : kCourbes) {
    SCOPED_TRACE(rangee.nom);
    const courbeEssai essai({0, 0}, rangee.direction, rangee.longueur, rangee.k1, rangee.k2);
    clothoide courbe = essai.parRayons();
    AcGePoint2d rencontre;
    ASSERT_TRUE(courbe.intersectionTangentes(rencontre));
    // The mirror image of a point in the line through both ends.
    const AcGeVector2d corde = (essai.p2 - essai.p1).normal();
    const AcGeVector2d vers = essai.pi - essai.p1;
    const AcGePoint2d image = essai.p1 + corde * (2.0 * corde.dotProduct(vers)) - vers;
    EXPECT_LT(rencontre.distanceTo(rangee.k2 == 0 ? essai.pi : image), 1e-6);
    courbe.orienterVers(essai.pi);
    ASSERT_TRUE(courbe.intersectionTangentes(rencontre));
    EXPECT_LT(rencontre.distanceTo(essai.pi), 1e-6);
  }
}

TEST(Clothoide, dataWithoutACurveAreToldApart) {
  clothoide courbe;
  // A straight line to a radius of 100 with a deflection of 0.1.
  const AcGePoint2d pi(10, 0);
  const AcGePoint2d p2 = pi + AcGeVector2d(std::cos(0.1), std::sin(0.1)) * 5.0;
  ASSERT_TRUE(courbe.definirParRayons(0, 100, {0, 0}, p2, pi));
  EXPECT_NEAR(courbe.paramA, std::sqrt(0.2) * 100, 1e-10);
  EXPECT_EQ(courbe.startParam, 0.0);
  EXPECT_NEAR(courbe.endParam, 20.0, 1e-12);
  const clothoide avant = courbe;
  EXPECT_FALSE(courbe.definirParRayons(0, 1e-12, {0, 0}, {9, 9}, {5, 0}));
  EXPECT_EQ(courbe.pointEn(20.0), avant.pointEn(20.0));
  const double nan = std::nan("");
  const struct {
    double r1, r2;
    AcGePoint2d p1, p2, pi;
    const wchar_t* raison;
  } rangees[] = {
      {0, 100, {0, 0}, {9, 2}, {5, 0}, nullptr},
      {50, 0, {0, 0}, {9, 2}, {5, 0}, nullptr},
      {0, 0, {0, 0}, {9, 2}, {5, 0}, L"nuls"},
      {70, 70, {0, 0}, {9, 2}, {5, 0}, L"égaux"},
      {-70, 20, {0, 0}, {9, 2}, {5, 0}, L"négatif"},
      {nan, 20, {0, 0}, {9, 2}, {5, 0}, L"hors de toute mesure"},
      {0, 20, {0, 0}, {9, 2}, {5, 1e300}, L"hors de toute mesure"},
      {0, 20, {4, 4}, {4, 4}, {5, 0}, L"confondues"},
      {0, 20, {0, 0}, {9, 2}, {9, 2}, L"PI est confondu"},
      {0, 20, {0, 0}, {9, 3}, {6, 2}, L"alignés"},
      {0, 20, {0, 0}, {9, 3}, {12, 4}, L"alignés"},
  };
  for (const auto& r : rangees) {
    const wchar_t* const raison = raisonSansClothoide(r.r1, r.r2, r.p1, r.p2, r.pi);
    if (r.raison) {
      EXPECT_NE(std::wstring(raison ? raison : L"").find(r.raison), std::wstring::npos);
      continue;
    }
    EXPECT_EQ(raison, nullptr);
    clothoide essai;
    EXPECT_TRUE(essai.definirParRayons(r.r1, r.r2, r.p1, r.p2, r.pi) && essai.estTracable());
  }
}

TEST(Clothoide, clothoidePointMiroir_placedAtAPointItIsTurnedOverAfterwards) {
  clothoide courbe;
  courbe.paramA = 50;
  courbe.endParam = 40;
  courbe.ajusterEnPoint(30, {1000, 2000}, 1.25);
  EXPECT_LT(courbe.pointEn(30).distanceTo({1000, 2000}), 1e-9);
  EXPECT_LT((courbe.tangenteUnitaireEn(30) - AcGeVector2d(std::cos(1.25), std::sin(1.25))).length(), 1e-12);
  const AcGePoint2d origine = courbe.offset();
  courbe.setMirrored(true);
  courbe.ajusterEnPoint(30, {1000, 2000}, 1.25);
  EXPECT_TRUE(courbe.mirrored());
  EXPECT_LT(courbe.offset().distanceTo(origine), 1e-9);
  EXPECT_GT(courbe.pointEn(30).distanceTo({1000, 2000}), 1.0);
}

TEST(Clothoide, clothoideFleche_chordsStayWithinTheToleranceAtTheRatiosPlace) {
  for (const rangeeCourbe& rangee : kCourbes) {
    SCOPED_TRACE(rangee.nom);
    clothoide courbe =
        courbeEssai({0, 0}, rangee.direction, rangee.longueur, rangee.k1, rangee.k2).parRayons();
    const double longueur = std::fabs(courbe.endParam - courbe.startParam);
    for (const double ratio : {0.9, 0.5}) {
      const std::vector<double> s = echantillonner(courbe, 0.001, ratio);
      EXPECT_LT(courbe.startParam, courbe.endParam);
      ASSERT_GE(s.size(), 2u);
      EXPECT_EQ(s.front(), 0.0);
      EXPECT_NEAR(s.back(), longueur, 1e-12);
      double ecart = 0.0;
      for (std::size_t i = 1; i < s.size(); ++i) {
        ASSERT_LT(s[i - 1], s[i]);
        const AcGePoint2d a = courbe.pointEn(courbe.startParam + s[i - 1]);
        const AcGeVector2d corde = courbe.pointEn(courbe.startParam + s[i]) - a;
        for (int k = 1; k < 20; ++k) {
          const AcGePoint2d q = courbe.pointEn(courbe.startParam + s[i - 1] + (s[i] - s[i - 1]) * k / 20.0);
          ecart = std::max(ecart, std::fabs(corde.crossProduct(q - a)) / corde.length());
        }
      }
      // At 0.9 of a chord the curve lies at 4 * 0.9 * 0.1 of the sagitta.
      EXPECT_LT(ecart, ratio == 0.9 ? 0.001 / 0.36 : 0.00105);
      EXPECT_GT(ecart, ratio == 0.9 ? 0.0015 : 0.0005);
      // The sagitta of a chord c over radius R is c^2 / 8 R: no more vertices than the tightest radius would
      // need, twice over.
      const double rayon = 1.0 / std::max(std::fabs(rangee.k1), std::fabs(rangee.k2));
      EXPECT_LT(static_cast<double>(s.size()), 3.0 + 2.0 * longueur / std::sqrt(8.0 * rayon * 0.001));
    }
  }
}

TEST(Clothoide, tooManyVerticesDoubleTheTolerance) {
  clothoide courbe;
  courbe.paramA = 100;
  courbe.startParam = 4000;  // changes places with the end
  courbe.endParam = 0;
  const std::vector<double> fins = echantillonner(courbe, 2e-5, 2.0);
  EXPECT_EQ(courbe.endParam, 4000);
  EXPECT_LE(fins.size(), 10000u);
  EXPECT_GT(fins.size(), 5000u);
  EXPECT_EQ(fins.back(), 4000.0);
  courbe.endParam = 1e7;  // 800 million turns
  EXPECT_TRUE(echantillonner(courbe, 0.001, 0.9).empty());
  courbe.paramA = std::nan("");
  EXPECT_TRUE(echantillonner(courbe, 0.001, 0.9).empty());
}

TEST(Clothoide, nearestPointIsTheFootOrAnEnd) {
  for (const rangeeCourbe& rangee : kCourbes) {
    SCOPED_TRACE(rangee.nom);
    const clothoide courbe =
        courbeEssai({500, 700}, rangee.direction, rangee.longueur, rangee.k1, rangee.k2).parRayons();
    const double debut = std::min(courbe.startParam, courbe.endParam);
    const double fin = std::max(courbe.startParam, courbe.endParam);
    for (const double part : {0.0, 0.013, 0.37, 0.5, 0.98, 1.0}) {
      const double s = debut + (fin - debut) * part;
      const auto lieu = pointLePlusProche(courbe, courbe.pointEn(s));
      EXPECT_NEAR(lieu.s, s, 1e-6);
      EXPECT_EQ(lieu.point, courbe.pointEn(lieu.s));
    }
    const AcGeVector2d sens = courbe.tangenteUnitaireEn(fin);
    EXPECT_EQ(pointLePlusProche(courbe, courbe.pointEn(fin) + sens * 3.0).s, fin);
    EXPECT_EQ(pointLePlusProche(courbe, courbe.pointEn(debut) - courbe.tangenteUnitaireEn(debut) * 3.0).s,
              debut);
  }
}

/// A polyline along a curve, its vertices rounded as a file of three decimals has them.
std::unique_ptr<AcDbPolyline> polyligneSur(clothoide courbe) {
  auto polyligne = std::make_unique<AcDbPolyline>();
  for (const double s : echantillonner(courbe, 0.001, 0.9)) {
    const AcGePoint2d p = courbe.pointEn(courbe.startParam + s);
    polyligne->addVertexAt(polyligne->numVerts(), {std::round(p.x * 1e3) / 1e3, std::round(p.y * 1e3) / 1e3});
  }
  return polyligne;
}

class ClothoideDessinee : public Atelier {};

TEST_F(ClothoideDessinee, dataOfAPolylineGiveItsCurveOnTheSideOfItsVertices) {
  for (const rangeeCourbe& rangee : kCourbes) {
    for (const bool retournee : {false, true}) {
      SCOPED_TRACE(base::formater("%s %d", rangee.nom, retournee));
      clothoide courbe =
          courbeEssai({652000, 6862000}, rangee.direction, rangee.longueur, rangee.k1, rangee.k2).parRayons();
      if (retournee) courbe.retournerSurCorde();
      const std::unique_ptr<AcDbPolyline> polyligne = polyligneSur(courbe);
      if (courbe.startParam > courbe.endParam) std::swap(courbe.startParam, courbe.endParam);
      resbuf* const chaine = xDataClothoide(courbe);
      ASSERT_EQ(polyligne->setXData(chaine), Acad::eOk);
      acutRelRb(chaine);
      clothoide lue;
      ASSERT_TRUE(lireXDataEntite(lue, *polyligne));
      EXPECT_NEAR(lue.paramA, courbe.paramA, 1e-5);
      for (const double part : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        const double pas = (courbe.endParam - courbe.startParam) * part;
        EXPECT_LT(lue.pointEn(lue.startParam + pas).distanceTo(courbe.pointEn(courbe.startParam + pas)),
                  1e-6);
      }
      // It goes along with its polyline, turned, scaled and mirrored.
      AcGeMatrix3d placement = AcGeMatrix3d::rotation(1.0, AcGeVector3d::kZAxis, {652000, 6862000, 0}) *
                               AcGeMatrix3d::scaling(retournee ? AcGeScale3d(2, 2, 2) : AcGeScale3d(1, -1, 1),
                                                     {652000, 6862000, 0});
      ASSERT_EQ(polyligne->transformBy(placement), Acad::eOk);
      EXPECT_FALSE(lireXDataEntite(lue, *polyligne));
      ASSERT_EQ(polyligne->xDataTransformBy(placement), Acad::eOk);
      ASSERT_TRUE(lireXDataEntite(lue, *polyligne));
      EXPECT_NEAR(lue.paramA, courbe.paramA * (retournee ? 2 : 1), 1e-5);
      // Moved without its data it is a polyline like others.
      for (unsigned int i = 0; i < polyligne->numVerts(); ++i) {
        AcGePoint2d p;
        polyligne->getPointAt(i, p);
        polyligne->setPointAt(i, p + AcGeVector2d(0.5, 0.5));
      }
      EXPECT_FALSE(lireXDataEntite(lue, *polyligne));
    }
  }
  EXPECT_EQ(imprime, "");
}

TEST_F(ClothoideDessinee, chainsOfOtherKindsAreNoClothoid) {
  const ads_point p1 = {0, 0, 0}, p2 = {40, 4, 0}, pi = {25, 0, 0}, centre = {38, 104, 0},
                  loin = {1e300, 0, 0};
  const auto lire = [](resbuf* chaine) {
    clothoide courbe;
    const bool lue = lireXData(courbe, chaine);
    acutRelRb(chaine);
    return lue;
  };
  const ACHAR* const nom = kXDataClothoide;
  EXPECT_TRUE(lire(acutBuildList(1001, nom, 1071, 0x75B1BD4, 1011, p1, 1011, p2, 1011, pi, 1011, p1, 1011,
                                 centre, RTNONE)));
  EXPECT_TRUE(
      lire(acutBuildList(1071, 123411412, 1011, p1, 1011, p2, 1011, pi, 1011, p1, 1011, centre, RTNONE)));
  EXPECT_FALSE(lire(nullptr));
  EXPECT_FALSE(lire(acutBuildList(1001, nom, RTNONE)));
  EXPECT_FALSE(lire(acutBuildList(1001, nom, 1071, 123411413, 1011, p1, 1011, p2, 1011, pi, 1011, p1, 1011,
                                  centre, RTNONE)));
  EXPECT_FALSE(
      lire(acutBuildList(1001, nom, 1070, 1, 1011, p1, 1011, p2, 1011, pi, 1011, p1, 1011, centre, RTNONE)));
  EXPECT_FALSE(
      lire(acutBuildList(1001, nom, 1071, 123411412, 1011, p1, 1011, p2, 1011, pi, 1011, p1, RTNONE)));
  EXPECT_FALSE(lire(acutBuildList(1001, nom, 1071, 123411412, 1011, p1, 1011, p2, 1010, pi, 1011, p1, 1011,
                                  centre, RTNONE)));
  // No curve: both ends straight, a point beyond all measure.
  EXPECT_FALSE(lire(
      acutBuildList(1001, nom, 1071, 123411412, 1011, p1, 1011, p2, 1011, pi, 1011, p1, 1011, p2, RTNONE)));
  EXPECT_FALSE(lire(
      acutBuildList(1001, nom, 1071, 123411412, 1011, p1, 1011, p2, 1011, pi, 1011, p1, 1011, loin, RTNONE)));
  EXPECT_EQ(imprime, "");
}

TEST(Clothoide, clothoideNomvar_theXmlKeepsTheFieldsUnderThatName) {
  clothoide courbe;
  courbe.startParam = 1.25, courbe.endParam = 80.123456, courbe.paramA = 60;
  courbe.setOffset({652000.5, 6862000.25});
  courbe.setAngleRot(-0.75);
  courbe.setMirrored(true);
  TiXmlElement racine("courbes");
  ecrireXML(courbe, racine, "raccordement");
  const TiXmlElement* const enfant = racine.FirstChildElement("nomvar");
  ASSERT_TRUE(enfant);
  EXPECT_FALSE(racine.FirstChildElement("raccordement"));
  EXPECT_STREQ(enfant->FirstChildElement("offset.x")->GetText(), "652000.500000");
  clothoide lue;
  ASSERT_TRUE(lireXML(lue, *enfant));
  EXPECT_EQ(lue.pointEn(70), courbe.pointEn(70));
  EXPECT_EQ(lue.startParam, 1.25);
  const struct {
    const char* champ;
    const char* texte;
    bool lue;
    bool miroir;
  } rangees[] = {{"mirrored", "0", true, false},  {"mirrored", "01", true, false},
                 {"mirrored", "oui", true, true}, {"mirrored", "", false, true},
                 {"paramA", "", false, true},     {"angleRot", "1e999", false, true}};
  for (const auto& rangee : rangees) {
    TiXmlElement copie(*enfant);
    copie.FirstChildElement(rangee.champ)->Clear();
    if (*rangee.texte) copie.FirstChildElement(rangee.champ)->LinkEndChild(new TiXmlText(rangee.texte));
    clothoide essai = courbe;
    EXPECT_EQ(lireXML(essai, copie), rangee.lue) << rangee.texte;
    EXPECT_EQ(essai.mirrored(), rangee.miroir) << rangee.texte;
  }
}

}  // namespace
