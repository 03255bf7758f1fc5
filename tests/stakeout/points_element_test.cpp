// The points of elements, and lists that lead back to them.

#include "stakeout/points_element.h"

#include "arx/db/dbcircle.h"
#include "arx/db/dbheavypoly.h"
#include "arx/db/dblines.h"
#include "arx/db/dbpl.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/drawing_space.h"
#include "core/resbuf_serializer.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "stakeout/ajouter_points.h"
#include "stakeout/listes_implantation.h"
#include "stakeout/saisir_station.h"
#include "support/projet_essai.h"

#include <cmath>
#include <random>
#include <sstream>

namespace {

using namespace veltora;

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;

std::string lus(const AcDbEntity& entite, const paramsImplantation& params) {
  AcGePoint3dArray points;
  if (!pointsElement(entite, params, points)) return "trop";
  std::string texte;
  for (const AcGePoint3d& p : points) texte += base::formater("%.3f,%.3f ", p.x - kX, p.y - kY);
  return texte;
}

std::unique_ptr<AcDbPolyline> polyligne(const std::vector<std::array<double, 3>>& sommets, bool fermee) {
  auto faite = std::make_unique<AcDbPolyline>(4U);
  for (const auto& [x, y, courbure] : sommets)
    faite->addVertexAt(faite->numVerts(), {kX + x, kY + y}, courbure);
  faite->setClosed(fermee);
  return faite;
}

// A half circle of radius 10 about the origin, bulge 1, from (10,0) to (-10,0): a step of 5 is half a radian.
TEST(PointsElement, FollowsArcsByStepAndByRise) {
  paramsImplantation params;
  params.distArcs = 5.0 * kPi;  // a quarter turn each
  EXPECT_EQ(lus(*polyligne({{10, 0, 1}, {-10, 0, 0}}, false), params),
            "10.000,0.000 0.000,10.000 -10.000,0.000 ");
  EXPECT_EQ(lus(*polyligne({{-10, 0, -1}, {10, 0, 0}}, false), params),
            "-10.000,0.000 0.000,10.000 10.000,0.000 ");
  params.distArcs = 1000.0;
  EXPECT_EQ(lus(*polyligne({{10, 0, 1}, {-10, 0, 0}}, false), params),
            "10.000,0.000 0.000,10.000 -10.000,0.000 ")
      << "at most half the arc";
  params.distArcs = 20.0 * kPi / 6.0;  // a sixth of a turn: 60 degrees
  EXPECT_EQ(lus(AcDbArc({kX, kY, 0}, 10.0, kPi / 2.0, kPi * 1.5), params),
            "0.000,10.000 -8.660,5.000 -8.660,-5.000 0.000,-10.000 ");
  params.modeArcs = paramsImplantation::kErreurMax;
  params.distArcs = 10.0 * (1.0 - std::cos(kPi / 6.0));  // rise of the chord of 60 degrees
  EXPECT_EQ(lus(AcDbArc({kX, kY, 0}, 10.0, kPi / 2.0, kPi * 1.45), params),
            "0.000,10.000 -8.660,5.000 -8.660,-5.000 -1.564,-9.877 ");
  EXPECT_EQ(lus(AcDbArc({kX, kY, 0}, 1e-9, 0.0, 1.0), params), "");
  params.distArcs = 1e-12;
  EXPECT_EQ(lus(AcDbArc({kX, kY, 0}, 10.0, 0.0, 1.0), params), "trop");
}

// An arc of the other normal is seen from below: its angles run clockwise in the plan.
TEST(PointsElement, PlacesMirroredArcs) {
  paramsImplantation params;
  params.distArcs = 1000.0;
  const AcDbArc arc({kX, kY, 0}, AcGeVector3d(0, 0, -1), 10.0, 0.0, kPi);
  AcGePoint3dArray points;
  ASSERT_TRUE(pointsElement(arc, params, points));
  ASSERT_EQ(points.size(), 3u);
  AcGePoint3d fin;
  arc.getEndPoint(fin);
  EXPECT_LT(points[2].distanceTo(fin), 1e-9);
  arc.getPointAtParam(kPi / 2.0, fin);
  EXPECT_LT(points[1].distanceTo(fin), 1e-9);
}

TEST(PointsElement, CutsLinesOnlyWhenAsked) {
  paramsImplantation params;
  params.distDroites = 4.0;
  const AcDbLine droite({kX, kY, 0}, {kX + 8.0, kY, 0});
  EXPECT_EQ(lus(droite, params), "0.000,0.000 8.000,0.000 ");
  params.interpolerDroites = 1;
  EXPECT_EQ(lus(droite, params), "0.000,0.000 4.000,0.000 8.000,0.000 ");
  EXPECT_EQ(
      lus(*polyligne({{0, 0, 0}, {5, 0, 0}, {5, 3, 0}}, true), params),
      "0.000,0.000 4.000,0.000 5.000,0.000 5.000,0.000 5.000,3.000 5.000,3.000 1.570,0.942 0.000,0.000 ")
      << "closed: as many segments as vertices";
  params.distDroites = 1e-9;
  EXPECT_EQ(lus(droite, params), "trop");
  EXPECT_EQ(lus(AcDbCircle({kX, kY, 0}, AcGeVector3d::kZAxis, 5.0), params), "");
}

class Implantations : public ProjetEssai {};

// The series of the Fresnel integrals in the curve's own frame, which is the world's but for its origin.
AcGePoint2d surClothoide(double s, double a) {
  const double t = s * s / (a * a);  // twice the angle of the tangent
  return {kX + s * (1.0 - t * t / 40.0 + std::pow(t, 4) / 3456.0),
          kY + s * (t / 6.0 - std::pow(t, 3) / 336.0)};
}

TEST_F(Implantations, FollowsAClothoidByItsLength) {
  constexpr double kA = 100.0;
  clothoide courbe;
  courbe.endParam = 60.0;
  courbe.paramA = kA;
  courbe.setOffset({kX, kY});
  auto ligne = std::make_unique<AcDbPolyline>(4U);
  for (const double s : {0.0, 20.0, 40.0, 60.0}) ligne->addVertexAt(ligne->numVerts(), surClothoide(s, kA));
  const chaineResbuf donnees(xDataClothoide(courbe));
  DrawingSpace espace;
  AcDbPolyline* const posee = espace.addOpen(std::move(ligne));
  ASSERT_EQ(posee->setXData(donnees.tete), Acad::eOk);
  paramsImplantation params;
  params.distClothoides = 25.0;
  AcGePoint3dArray points;
  ASSERT_TRUE(pointsElement(*posee, params, points));
  ASSERT_EQ(points.size(), 4u);
  const double abscisses[] = {0.0, 25.0, 50.0, 60.0};
  for (std::size_t i = 0; i < 4; ++i) {
    const AcGePoint2d attendu = surClothoide(abscisses[i], kA);
    EXPECT_NEAR(points[i].x, attendu.x, 1e-5) << i;
    EXPECT_NEAR(points[i].y, attendu.y, 1e-5) << i;
  }
  params.modeClothoides = paramsImplantation::kErreurMax;
  params.distClothoides = 5.0;
  ASSERT_TRUE(pointsElement(*posee, params, points));
  EXPECT_EQ(points.size(), 2u);
  params.distClothoides = 0.01;
  ASSERT_TRUE(pointsElement(*posee, params, points));
  EXPECT_GT(points.size(), 5u);
  params.modeClothoides = paramsImplantation::kParPas;
  params.distClothoides = 1e-6;
  EXPECT_FALSE(pointsElement(*posee, params, points));
  posee->close();
}

TEST_F(Implantations, LeavesOutPointsThatAreThereAndNamesTheOthers) {
  projetImplantation projet;
  const ServicesTerrain terrain;
  const AcDbObjectId a = addToModelSpace(polyligne({{0, 0, 0}, {5, 0, 0}, {5, 3, 0}}, true));
  const std::int32_t groupe = compteurGroupes;
  EXPECT_EQ(ajouterElement(projet, terrain, a), 3);
  EXPECT_EQ(ajouterElement(projet, terrain, a), 0);
  ajouterPointImplantation(projet, terrain, kX, kY);
  std::string noms;
  for (const auto& point : projet.points)
    noms += base::toUtf8(point.nom) + base::formater("/%d ", point.groupe - groupe);
  EXPECT_EQ(noms, "A1/0 A2/0 A3/0 C1/2 ");
}

// Each list leads back to its points: from the station by angle and distance, the reference's bearing added.
TEST_F(Implantations, ListsLeadBackToTheirPoints) {
  std::mt19937 hasard(20241122);
  std::uniform_real_distribution<double> ecart(-2000.0, 2000.0);
  for (int essai = 0; essai < 50; ++essai) {
    projetImplantation projet;
    projet.dessin.numeros = 0;
    uneStationReference station;
    station.x = kX + ecart(hasard);
    station.y = kY + ecart(hasard);
    const AcGePoint3d reference(kX + ecart(hasard), kY + ecart(hasard), Z_ABSENT);
    const bool nord = essai % 2 == 0;
    const std::uint32_t id = creerMiseEnStation(projet, station, L"R", reference,
                                                nord ? modeOrientation::kNord : modeOrientation::kReference);
    for (int i = 0; i < 40; ++i) {
      observationImplantation point;
      point.nom = std::to_wstring(i);
      point.x = station.x + ecart(hasard) / 50.0;
      point.y = station.y + ecart(hasard) / 50.0;
      point.idStation = id;
      projet.ajouterPoint(point);
    }
    const double depart = nord ? 0.0 : std::atan2(reference.x - station.x, reference.y - station.y);
    std::istringstream csv(base::toUtf8(csvImplantation(projet)));
    std::string ligne;
    std::getline(csv, ligne);
    for (int i = 0; i < 40; ++i) {
      ASSERT_TRUE(std::getline(csv, ligne));
      for (char& c : ligne) c = c == ';' ? ' ' : c;
      std::istringstream champs(ligne);
      std::string nomStation, nomReference;
      int nom = -1;
      double x = 0, y = 0, angle = 0, distance = 0;
      champs >> nomStation >> nomReference >> nom >> x >> y >> angle >> distance;
      const double gisement = depart + angle * kPi / 200.0;
      const observationImplantation& point = projet.points.GetAt(i);
      EXPECT_EQ(nom, i);
      EXPECT_NEAR(station.x + distance * std::sin(gisement), point.x, 1e-4) << ligne;
      EXPECT_NEAR(station.y + distance * std::cos(gisement), point.y, 1e-4) << ligne;
    }
  }
}

TEST_F(Implantations, AnglesThatAreMissingAreShown) {
  observationMiseEnStationVisee mise({}, {});
  observationImplantation point;
  point.x = kX;
  point.y = kY;
  EXPECT_EQ(celluleAngle(nullptr, point), L"-");
  EXPECT_EQ(celluleAngle(&mise, point), L"-");
  mise.x = kX - 1.0;
  mise.y = kY;
  EXPECT_EQ(celluleAngle(&mise, point), L"g= 100.0000");
  mise.reference.x = kX - 1.0;
  mise.reference.y = kY + 10.0;
  EXPECT_EQ(celluleAngle(&mise, point), L"100.0000");
}

}  // namespace
