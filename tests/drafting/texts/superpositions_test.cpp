// Overlaps between annotations, and fitted texts.

#include "drafting/texts/superpositions.h"

#include "drafting/texts/texte_ajuste.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using namespace veltora;

TEST(SurfaceCommune, isTheIntersectionHoweverTheBoxesLie) {
  struct {
    const char* nom;
    boitePlane a, b;
    double surface;
  } const cas[] = {
      {"corner", {0, 0, 4, 4}, {3, 2, 4, 4}, 2},
      {"inside", {0, 0, 4, 4}, {1, 1, 1, 2}, 2},
      {"cross, no corner inside", {0, 1, 9, 1}, {4, 0, 1, 9}, 1},
      {"side by side", {0, 0, 4, 4}, {4, 0, 4, 4}, 0},
      {"apart in y", {0, 0, 4, 4}, {1, 5, 1, 1}, 0},
      {"same", {0, 0, 2, 3}, {0, 0, 2, 3}, 6},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(surfaceCommune(c.a, c.b), c.surface) << c.nom;
    EXPECT_EQ(surfaceCommune(c.b, c.a), c.surface) << c.nom << ", exchanged";
  }
}

annotationPlane mobile(boitePlane boite, double x, double y, double rayon = 1.0) {
  annotationPlane a;
  a.boite = boite;
  a.ancreX = x;
  a.ancreY = y;
  a.rayon = rayon;
  return a;
}
annotationPlane obstacle(boitePlane boite) {
  annotationPlane a;
  a.boite = boite;
  a.fixe = true;
  return a;
}

std::vector<double> reduire(std::vector<annotationPlane>& annotations,
                            rechercheVoisins recherche = rechercheVoisins::kIndex) {
  std::vector<double> bilans;
  reduireSuperpositions(
      annotations, [](int, int, int) { return true; }, [&](double s) { bilans.push_back(s); }, recherche);
  return bilans;
}

TEST(Superpositions, takeTheEarliestOfTheEightPlacesThatCoverLeast) {
  // A box of 2 by 1 around the anchor at the origin, radius 1; all places but one are blocked.
  const boitePlane places[] = {{-1, 1, 2, 1},  {1, 1, 2, 1},   {1, -0.5, 2, 1},  {1, -2, 2, 1},
                               {-1, -2, 2, 1}, {-3, -2, 2, 1}, {-3, -0.5, 2, 1}, {-3, 1, 2, 1}};
  for (std::size_t libre = 0; libre < 8; ++libre) {
    std::vector<annotationPlane> annotations = {mobile({-0.4, -0.4, 2, 1}, 0, 0),
                                                obstacle({-0.4, -0.4, 0.3, 0.3})};
    for (std::size_t i = 0; i < libre; ++i)
      annotations.push_back(obstacle({places[i].x + 0.9, places[i].y + 0.45, 0.7, 0.3}));
    const std::vector<double> bilans = reduire(annotations);
    EXPECT_EQ(bilans, std::vector<double>({0.0})) << libre;
    EXPECT_TRUE(annotations[0].deplacee);
    EXPECT_EQ(annotations[0].boite.x, places[libre].x) << libre;
    EXPECT_EQ(annotations[0].boite.y, places[libre].y) << libre;
  }
}

TEST(Superpositions, leaveWhatIsFreeWhatIsFixedAndWhatIsNotStrictlyBetter) {
  std::vector<annotationPlane> annotations = {mobile({50, 50, 2, 1}, 0, 0), obstacle({0, 0, 1, 1}),
                                              obstacle({0.5, 0, 1, 1})};
  EXPECT_EQ(reduire(annotations), std::vector<double>({0.0}));
  EXPECT_FALSE(annotations[0].deplacee);
  // Everything is covered alike: the place stays, and the second sum is not below the first.
  annotations = {mobile({0, 0, 2, 1}, 0, 0), obstacle({-100, -100, 200, 200})};
  EXPECT_EQ(reduire(annotations), std::vector<double>({2.0, 2.0}));
  EXPECT_FALSE(annotations[0].deplacee);
  annotations.clear();
  EXPECT_EQ(reduire(annotations), std::vector<double>({0.0}));
}

TEST(Superpositions, endAfter50Iterations) {
  // Box k may only go to where box k + 1 stands, which gives it a little more room: one moves an iteration.
  std::vector<annotationPlane> annotations;
  for (int k = 0; k < 60; ++k) annotations.push_back(mobile({10.0 * k - 9, -0.5, 1, 1}, 10.0 * k, 0));
  for (int k = 0; k < 60; ++k) {
    const double x = 10.0 * k;
    annotations.push_back(obstacle({x - 9, -0.5, 0.9 - 0.01 * k, 1}));
    for (const auto& [dx, dy] :
         {std::pair(-0.5, 1.0), std::pair(1.0, 1.0), std::pair(1.0, -2.0), std::pair(-0.5, -2.0),
          std::pair(-2.0, -2.0), std::pair(-2.0, -0.5), std::pair(-2.0, 1.0)})
      annotations.push_back(obstacle({x + dx, dy, 1, 1}));
  }
  EXPECT_EQ(reduire(annotations).size(), 50U);
  EXPECT_TRUE(annotations[10].deplacee);
  EXPECT_FALSE(annotations[9].deplacee);
}

TEST(Superpositions, stopWhenTheUserAsks) {
  std::vector<annotationPlane> annotations(3, mobile({0, 0, 2, 1}, 0, 0));
  int appels = 0;
  reduireSuperpositions(
      annotations, [&](int, int element, int nombre) { return ++appels, element < 2 && nombre == 3; },
      [](double) { FAIL(); });
  EXPECT_EQ(appels, 2);
  EXPECT_TRUE(annotations[0].deplacee) << "what was placed stays";
}

TEST(Superpositions, indexAndFullSearchGiveTheSameDigits) {
  for (const unsigned graine : {1U, 2U, 3U}) {
    std::mt19937 hasard(graine);
    std::uniform_real_distribution<double> lieu(0.0, 60.0);
    std::uniform_real_distribution<double> cote(0.1, 4.0);
    std::vector<annotationPlane> indexees;
    for (int i = 0; i < 250; ++i) {
      const double x = 650000 + lieu(hasard);
      const double y = 6860000 + lieu(hasard);
      indexees.push_back(mobile({x, y, cote(hasard), cote(hasard)}, x, y, cote(hasard)));
      indexees.back().fixe = i % 7 == 0;
    }
    indexees.push_back(obstacle({649000, 6859990, 5000, 20}));  // over nearly all
    indexees.push_back(obstacle({-1e300, 0, 1e301, 1}));
    std::vector<annotationPlane> toutes = indexees;
    EXPECT_EQ(reduire(indexees), reduire(toutes, rechercheVoisins::kToutes)) << graine;
    for (std::size_t i = 0; i < indexees.size(); ++i) {
      EXPECT_EQ(indexees[i].boite.x, toutes[i].boite.x) << graine << " " << i;
      EXPECT_EQ(indexees[i].boite.y, toutes[i].boite.y) << graine << " " << i;
      EXPECT_EQ(indexees[i].deplacee, toutes[i].deplacee) << graine << " " << i;
    }
  }
}

TEST(TexteAjuste, narrowsThenLowers) {
  struct {
    double largeur, limite, facteurLargeur, facteurHauteur;
  } const cas[] = {{100, kSansLimite, 1, 1}, {100, 100.1, 1, 1}, {100, 100, 1, 1},
                   {100, 80, 0.8, 1},        {100, 60, 0.6, 1},  {100, 50, 0.6, 50 / 60.0},
                   {100, 30, 0.6, 0.7},      {0, 0, 1, 1}};
  for (const auto& c : cas) {
    const ajustementTexte a = ajusterLargeur(c.largeur, c.limite);
    EXPECT_DOUBLE_EQ(a.facteurLargeur, c.facteurLargeur) << c.largeur << " in " << c.limite;
    EXPECT_DOUBLE_EQ(a.facteurHauteur, c.facteurHauteur) << c.largeur << " in " << c.limite;
  }
}

}  // namespace
