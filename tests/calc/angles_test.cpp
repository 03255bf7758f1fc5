#include "calc/angles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace veltora {
namespace {

TEST(Angles, ReduireAngleEndsInOneTurn) {
  struct Cas {
    double valeur, tour, attendu;
  };
  const std::vector<Cas> cas = {{-10, 400, 390}, {800, 400, 0},      {400, 400, 0},  {399.5, 400, 399.5},
                                {5, 0, 5},       {-5, 0, -5},        {-800, 400, 0}, {-1e-9, 400, 400 - 1e-9},
                                {725, 360, 5},   {-0.5, 360, 359.5}, {1e6, 400, 0}};
  for (const Cas& c : cas) EXPECT_DOUBLE_EQ(reduireAngle(c.valeur, c.tour), c.attendu) << c.valeur;
  EXPECT_TRUE(std::isnan(reduireAngle(std::nan(""), 400)));
  EXPECT_TRUE(std::isnan(reduireAngle(INFINITY, 400)));
}

TEST(Angles, ReduireTourEntier) {
  EXPECT_EQ(reduireAngle(-1e-20, 400.0), 400.0) << "not 0: the sum rounds up to the turn";
  EXPECT_EQ(reduireAngle(-1e-20, 360.0), 360.0);
}

TEST(Angles, GisementAtTheQuartersInEachUnit) {
  struct Cas {
    const char* nom;
    double dx, dy, quarts;
  };
  const std::vector<Cas> cas = {{"north", 0, 1, 0},         {"east", 1, 0, 1},
                                {"south", 0, -1, 2},        {"west", -1, 0, 3},
                                {"north-east", 2, 2, 0.5},  {"south-west", -3, -3, 2.5},
                                {"north-west", -1, 1, 3.5}, {"same point", 0, 0, 1}};
  const std::vector<double> origines = {0.0, 650000.0, -6860000.0};
  for (const Cas& c : cas) {
    for (const double o : origines) {
      for (int mode = 0; mode < 3; ++mode) {
        EXPECT_NEAR(calculGisement(o, -o, o + c.dx, -o + c.dy, mode), c.quarts * uniteDeMode(mode).tour / 4,
                    1e-12)
            << c.nom << " " << o << " " << mode;
      }
    }
  }
  EXPECT_EQ(calculGisement(3, 4, 3, 4, 0), 100.0);
}

TEST(Angles, AnUnknownUnitIsGrades) {
  for (const int mode : {-1, 3, 1000}) {
    EXPECT_EQ(uniteDeMode(mode).tour, 400.0);
    EXPECT_DOUBLE_EQ(calculGisement(0, 0, 1, 0, mode), 100.0);
  }
}

}  // namespace
}  // namespace veltora
