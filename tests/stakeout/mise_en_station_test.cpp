// Stations: what the instrument reads, how an orientation is worded, which marks tell an obstacle.

#include "stakeout/mise_en_station.h"

#include "arx/db/dblines.h"
#include "arx/db/dbservices.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/compteur_identifiants.h"
#include "core/drawing_space.h"
#include "core/resbuf_serializer.h"
#include "stakeout/marques_implantation.h"
#include "stakeout/projet_implantation.h"
#include "support/projet_essai.h"

#include <cmath>

namespace {

using namespace veltora;

uneStationReference place(double x, double y, const wchar_t* nom = L"") {
  uneStationReference p;
  p.x = x;
  p.y = y;
  p.nom = nom;
  return p;
}

// Around a station at national coordinates: due north, south-east by the 3-4-5 triangle, due west. The
// bearing of the triangle's long leg is 90 + 36.869897645844 degrees, the angle of 3/4.
TEST(MiseEnStation, ReadsTheAngleFromTheReference) {
  const auto s = place(650000.0, 6860000.0);
  const auto est = place(650004.0, 6859997.0);
  const observationMiseEnStationVisee versNord(s, place(650000.0, 6860100.0));
  const observationMiseEnStationVisee versOuest(s, place(649000.0, 6860000.0));
  EXPECT_NEAR(enGrades(versNord.gisementVers(est)), 140.966552939827, 1e-9);
  EXPECT_NEAR(enGrades(versOuest.gisementVers(est)), 240.966552939827, 1e-9);
  EXPECT_NEAR(enGrades(versOuest.gisementBrut(est)), 140.966552939827, 1e-9);
  EXPECT_NEAR(enGrades(versOuest.gisementVers(place(650000.0, 6860001.0))), 100.0, 1e-9);
  EXPECT_EQ(versNord.gisementVers(place(650000.0, 6860000.5)), 0.0);
  EXPECT_EQ(observationMiseEnStationVisee(s, uneStationReference()).gisementVers(est), Z_ABSENT);
  EXPECT_EQ(versNord.gisementVers(uneStationReference()), Z_ABSENT);
}

TEST(MiseEnStation, OrienteePlusV0IsNotReduced) {
  observationMiseEnStationOrientee mise(place(650000.0, 6860000.0));
  mise.angleV0 = 300.0 * kPi / 200.0;
  EXPECT_NEAR(enGrades(mise.gisementVers(place(649000.0, 6860000.0))), 600.0, 1e-9);
}

TEST(MiseEnStation, OrientationLettreO) {
  const std::pair<double, const char*> cas[] = {{0.0, "NORD (O gr)"},          {100.0, "EST (10O gr)"},
                                                {200.0, "SUD (20O gr)"},       {300.0, "OUEST (30O gr)"},
                                                {100.0000005, "EST (10O gr)"}, {100.000002, "100.0000 gr"},
                                                {-0.0000005, "NORD (O gr)"},   {33.25, "33.2500 gr"}};
  for (const auto& [grades, mot] : cas)
    EXPECT_EQ(base::toUtf8(motOrientation(grades * kPi / 200.0)), mot) << grades;
}

TEST(MiseEnStation, NamesItselfOrItsCoordinates) {
  const observationMiseEnStationVisee anonyme(place(1.0, 2.0), place(3.0, 4.00006));
  EXPECT_EQ(anonyme.texteStation(), L"X=1.0000,Y=2.0000");
  EXPECT_EQ(anonyme.texteReference(), L"X=3.0000,Y=4.0001");
  observationMiseEnStationOrientee nord(place(1.0, 2.0, L"S1"));
  EXPECT_EQ(nord.texteStation(), L"S1");
  EXPECT_EQ(nord.texteReference(), L"NORD");
  nord.angleV0 = kPi / 3.0;
  EXPECT_EQ(nord.texteReference(), L"V0=66.6667 gr");
}

class Projet : public ProjetEssai {
protected:
  [[nodiscard]] std::size_t entites() const {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(m_dessin.modelSpaceId());
    return static_cast<std::size_t>(std::ranges::count_if(espace->entities(), &AcDbObjectId::isLive));
  }
};

TEST_F(Projet, IdentifiersNeverNameNothing) {
  compteurIdentifiants::commun().reinitialiser([] { return 0xFFFFFFFEu; });
  EXPECT_EQ(uneStationReference().id, 0xFFFFFFFEu);
  EXPECT_NE(uneStationReference().id, kSansIdentifiant);
  compteurIdentifiants::commun().reinitialiser();
}

TEST_F(Projet, KnowsPointsByPlace) {
  projetImplantation projet;
  for (const double x : {652000.0, -0.004, 1e38}) {
    observationImplantation point;
    point.x = x;
    point.y = 6862000.0;
    projet.ajouterPoint(point);
  }
  EXPECT_TRUE(projet.pointExiste(652000.0099, 6862000.0));
  EXPECT_FALSE(projet.pointExiste(652000.0101, 6862000.0));
  EXPECT_TRUE(projet.pointExiste(651999.995, 6862000.008));
  EXPECT_TRUE(projet.pointExiste(0.005, 6862000.0));
  projet.retirerPoint(projet.points.GetAt(0).id);
  EXPECT_FALSE(projet.pointExiste(652000.0, 6862000.0));
  EXPECT_TRUE(projet.pointExiste(0.0, 6862000.0));
  EXPECT_EQ(entites(), 2u) << "the cross of the one left; none of a point without coordinates";
}

TEST_F(Projet, KeepsAStationOnce) {
  projetImplantation projet;
  auto station = std::make_unique<observationMiseEnStationOrientee>(place(0.0, 0.0));
  const std::uint32_t id = station->idMise;
  projet.ajouterStation(std::move(station));
  auto meme = std::make_unique<observationMiseEnStationOrientee>(place(0.0, 0.0));
  meme->idMise = id;
  projet.ajouterStation(std::move(meme));
  projet.ajouterStation(std::make_unique<observationMiseEnStationOrientee>(place(0.0, 0.0)));
  EXPECT_EQ(projet.stations.GetSize(), 2);
  observationImplantation point;
  point.idStation = id;
  projet.ajouterPoint(point);
  projet.retirerStationsInutiles();
  ASSERT_EQ(projet.stations.GetSize(), 1);
  EXPECT_EQ(projet.stations.GetAt(0)->idMise, id);
}

// Items as they stand in drawings; a reader takes a mark of exactly its own shape, on whatever entity.
TEST_F(Projet, ReadsMarksOfTheRightShapeOnly) {
  const auto marque = [](resbuf* chaine) {
    acdbRegApp(kXDataObstacles);
    const chaineResbuf tenue(chaine);
    const AcDbObjectId id =
        addToModelSpace(std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0)));
    const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForWrite);
    EXPECT_EQ(entite->setXData(tenue.tete), Acad::eOk);
    return id;
  };
  const wchar_t* const a = kXDataObstacles;
  const AcDbObjectId lineaire = marque(acutBuildList(1001, a, 1071, 71209, 1040, 2.5, 1071, 7, RTNONE));
  marque(acutBuildList(1001, a, 1071, 71208, 1040, 2.5, 1071, 7, RTNONE));
  marque(acutBuildList(1001, a, 1071, 71209, 1041, 2.5, 1071, 7, RTNONE));
  marque(acutBuildList(1001, a, 1071, 71209, 1040, 2.5, RTNONE));
  marque(acutBuildList(1001, a, 1071, 71209, 1040, 2.5, 1071, 7, 1071, 7, RTNONE));
  marque(acutBuildList(1001, a, 1071, 87340, 1040, 2.5, 1071, 7, RTNONE));
  const AcDbObjectId ponctuel =
      marque(acutBuildList(1001, a, 1071, 87340, 1040, 3.0, 1041, 1.5, 1071, 8, RTNONE));
  projetImplantation projet;
  ASSERT_EQ(projet.obstacles.GetSize(), 2);
  EXPECT_EQ(projet.obstacles.GetAt(0)->objet, lineaire);
  EXPECT_EQ(projet.obstacles.GetAt(0)->hauteur, 2.5);
  EXPECT_EQ(projet.obstacles.GetAt(0)->idObstacle, 7u);
  EXPECT_EQ(projet.obstacles.GetAt(1)->objet, ponctuel);
  EXPECT_TRUE(projet.retirerObstacle(lineaire));
  EXPECT_FALSE(projet.retirerObstacle(lineaire));
  EXPECT_EQ(projetImplantation().obstacles.GetSize(), 1) << "the mark is gone too";
}

}  // namespace
