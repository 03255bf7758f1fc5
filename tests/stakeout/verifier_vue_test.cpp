// Sights over the terrain of a module: the ground, obstacles on it, what the services do not reach.

#include "stakeout/verifier_vue.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dblines.h"
#include "arx/db/dbpl.h"
#include "arx/rx/rxdlinkr.h"
#include "base/text.h"
#include "core/drawing_space.h"
#include "stakeout/dessin_implantation.h"
#include "stakeout/saisir_station.h"
#include "support/projet_essai.h"

#include <cmath>

namespace {

using namespace veltora;

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;

class VerifierVue : public ProjetEssai {
protected:
  VerifierVue() {
    reglagesImplantation::commun() = {};
    std::wstring raison;
    EXPECT_TRUE(acrxDynamicLinker->loadModule(base::fromUtf8(VELTORA_TERRAIN_ESSAI).c_str(), false, &raison))
        << base::toUtf8(raison);
    projet = std::make_unique<projetImplantation>();
  }
  ~VerifierVue() override { acrxDynamicLinker->unloadModule(kModuleTerrain, false); }

  /// A point east and north of the origin, from a station at the origin.
  observationImplantation& viser(double est, double nord = 0.0, double hauteurInstrument = 1.0) {
    observationImplantation point;
    point.x = kX + est;
    point.y = kY + nord;
    projet->ajouterPoint(point);
    uneStationReference station;
    station.x = kX;
    station.y = kY;
    const std::uint32_t id = creerMiseEnStation(*projet, station, L"", {}, modeOrientation::kNord);
    observationImplantation& posee = projet->points.GetAt(projet->points.GetSize() - 1);
    posee.idStation = id;
    projet->hauteurStation = hauteurInstrument;
    verifierVisibilites(*projet);
    return posee;
  }
  void opposer(std::unique_ptr<AcDbEntity> courbe, double hauteur) {
    obstacleLineaireImplantation obstacle;
    obstacle.objet = addToModelSpace(std::move(courbe));
    obstacle.hauteur = hauteur;
    EXPECT_TRUE(obstacle.ecrireMarque());
    projet->chargerObstacles();
  }

  std::unique_ptr<projetImplantation> projet;
};

// On the slope A = (0, 101), B = (100, 102): the crest, at d = 50 and z = 104.5, stands 3 above the line,
// thus 3 * 100 / hypot(100, 1) from it.
TEST_F(VerifierVue, MeasuresTheWorstOfTheGround) {
  EXPECT_NEAR(viser(100.0).hauteurRequise, 300.0 / std::hypot(100.0, 1.0), 1e-9);
  EXPECT_EQ(projet->stations.GetAt(0)->z, 100.0);
  EXPECT_NEAR(projet->points.GetAt(0).z, 101.0, 1e-9);
  EXPECT_EQ(verdict(projet->points.GetAt(0)), verdictVisee::kNonVisible);
  reglagesImplantation::commun().hauteurMin = 3.0;
  EXPECT_EQ(verdict(projet->points.GetAt(0)), verdictVisee::kVisible);
}

TEST_F(VerifierVue, VueHauteurDouble) {
  // 3 less at both ends than with H = 1: the crest now touches a line 1 above it.
  EXPECT_EQ(viser(100.0, 0.0, 5.0).hauteurRequise, 0.0);
  EXPECT_EQ(verdict(projet->points.GetAt(0)), verdictVisee::kVisible);
}

TEST_F(VerifierVue, LeavesUncheckedWhatTheTerrainDoesNotReach) {
  for (const observationImplantation* point : {&viser(1500.0)}) {
    EXPECT_EQ(point->visibiliteCalculee, 0);
    EXPECT_EQ(point->hauteurRequise, Z_ABSENT);
    EXPECT_EQ(verdict(*point), verdictVisee::kNonVerifie);
  }
  EXPECT_EQ(viser(40.0).hauteurRequise, 0.0);
  EXPECT_EQ(viser(0.0).hauteurRequise, 0.0) << "a sight of no length sees itself";
  projet->verifierVisibilite = 0;
  verifierVisibilites(*projet);
  EXPECT_EQ(projet->points.GetAt(1).visibiliteCalculee, 0);
  EXPECT_EQ(projet->points.GetAt(1).hauteurRequise, Z_ABSENT);
}

// West of the origin the slope alone: A = (0, 101), B = (100, 100). What stands 2.5 high at d = 30 rises to
// 102.2, the line there to 100.7.
TEST_F(VerifierVue, PutsObstaclesOnTheGroundWhereTheyCrossInPlan) {
  const double attendu = 1.5 * 100.0 / std::hypot(100.0, 1.0);
  auto niveau = std::make_unique<AcDbPolyline>(2U);
  niveau->addVertexAt(0, {kX - 30.0, kY - 10.0});
  niveau->addVertexAt(1, {kX - 30.0, kY + 10.0});
  niveau->setElevation(250.0);
  opposer(std::move(niveau), 2.5);
  EXPECT_NEAR(viser(-100.0).hauteurRequise, attendu, 1e-6);
  EXPECT_EQ(viser(-100.0, 60.0).hauteurRequise, 0.0) << "passes beside it";
  opposer(std::make_unique<AcDbLine>(AcGePoint3d(kX - 30.0, kY + 5.0, 90.0),
                                     AcGePoint3d(kX - 30.0, kY + 30.0, 130.0)),
          2.5);
  EXPECT_GT(viser(-100.0, 60.0).hauteurRequise, 1.0) << "a line that climbs counts by its plan";
}

TEST_F(VerifierVue, TakesABlockAsACircleAndForgetsWhatWasErased) {
  obstaclePonctuelImplantation arbre;
  arbre.objet = addToModelSpace(std::make_unique<AcDbBlockReference>(
      AcGePoint3d(kX - 50.0, kY + 2.0, 0.0), m_dessin.recordOf("BLOCK_RECORD", L"ARBRE")));
  arbre.hauteur = 8.0;
  arbre.rayon = 2.5;
  ASSERT_TRUE(arbre.ecrireMarque());
  projet->chargerObstacles();
  // Two crossings at d = 50 +- 1.5; the far one rises more above the line: ground - 1 % of d, line likewise.
  EXPECT_NEAR(viser(-100.0).hauteurRequise, 7.0 * 100.0 / std::hypot(100.0, 1.0), 1e-6);
  EXPECT_EQ(viser(-100.0, -10.0).hauteurRequise, 0.0);
  AcDbObjectPointer<AcDbEntity>(arbre.objet, AcDb::kForWrite)->erase();
  EXPECT_EQ(viser(-100.0).hauteurRequise, 0.0);
}

TEST_F(VerifierVue, WithoutTheModuleNothingIsCheckedOrPrinted) {
  acrxDynamicLinker->unloadModule(kModuleTerrain, false);
  const observationImplantation& point = viser(100.0);
  EXPECT_EQ(point.visibiliteCalculee, 0);
  EXPECT_EQ(point.z, Z_ABSENT);
}

}  // namespace
