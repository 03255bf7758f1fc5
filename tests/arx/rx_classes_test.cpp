#include "arx/db/dbmain.h"
#include "arx/ge/gematrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

constexpr double kPi = 3.14159265358979323846;

TEST(Classes, FormOneTreeAndAreFoundByBothNames) {
  AcRxClass* const layer = AcDbLayerTableRecord::desc();
  EXPECT_TRUE(layer->isDerivedFrom(AcDbSymbolTableRecord::desc()));
  EXPECT_TRUE(layer->isDerivedFrom(AcRxObject::desc()));
  EXPECT_FALSE(layer->isDerivedFrom(AcDbDictionary::desc()));
  EXPECT_EQ(AcRxClass::findByName(L"AcDbLayerTableRecord"), layer);
  EXPECT_EQ(AcRxClass::findByDxfName("LAYER"), layer);
  EXPECT_EQ(AcRxClass::findByDxfName("RIEN"), nullptr);
  EXPECT_EQ(AcDbSymbolTableRecord::desc()->create(), nullptr) << "abstract";

  const std::unique_ptr<AcRxObject> made(layer->create());
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->isA(), layer);
  EXPECT_NE(AcDbObject::cast(made.get()), nullptr);
  EXPECT_EQ(AcDbDictionary::cast(made.get()), nullptr);
  EXPECT_EQ(AcDbDictionary::cast(nullptr), nullptr);
}

void expectNear(const AcGePoint3d& a, const AcGePoint3d& b, double tolerance, const char* name) {
  EXPECT_LT(a.distanceTo(b), tolerance) << name << ": " << a.x << ' ' << a.y << ' ' << a.z;
}

TEST(Matrix, MovesPointsOfANationalGrid) {
  const AcGePoint3d station{650000, 6860000, 100};
  const AcGePoint3d target{650010, 6860000, 100};
  struct Row {
    const char* name;
    AcGeMatrix3d matrix;
    AcGePoint3d expected;
  };
  const Row rows[] = {
      {"translation", AcGeMatrix3d::translation({1, 2, 3}), {650011, 6860002, 103}},
      {"quarter turn about the station",
       AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis, station),
       {650000, 6860010, 100}},
      {"half turn about X",
       AcGeMatrix3d::rotation(kPi, AcGeVector3d::kXAxis, {0, 6860000, 0}),
       {650010, 6860000, -100}},
      {"twice as far from the station", AcGeMatrix3d::scaling(2.0, station), {650020, 6860000, 100}},
      {"mirrored", AcGeMatrix3d::scaling(AcGeScale3d(-1, 1, 1), station), {649990, 6860000, 100}},
  };
  for (const Row& row : rows) {
    expectNear(row.matrix * target, row.expected, 1e-8, row.name);
    expectNear(row.matrix.inverse() * (row.matrix * target), target, 1e-8, row.name);
    expectNear((row.matrix * row.matrix) * target, row.matrix * (row.matrix * target), 1e-8, row.name);
  }
}

TEST(Matrix, TellsItsScaleAndKeepsAnglesOrNot) {
  const AcGeMatrix3d turned = AcGeMatrix3d::rotation(0.3, {1, 2, 3}) * AcGeMatrix3d::scaling(2.5);
  EXPECT_NEAR(turned.scale(), 2.5, 1e-12);
  EXPECT_NEAR(turned.det(), 15.625, 1e-11);
  EXPECT_TRUE(turned.isUniScaledOrtho());
  EXPECT_TRUE(AcGeMatrix3d::scaling(AcGeScale3d(2, -2, 2)).isUniScaledOrtho());
  EXPECT_FALSE(AcGeMatrix3d::scaling(AcGeScale3d(2, 2, 2.001)).isUniScaledOrtho());
  AcGeMatrix3d sheared;
  sheared.entry[0][1] = 0.1;
  EXPECT_FALSE(sheared.isUniScaledOrtho());
  const AcGeMatrix3d flat = AcGeMatrix3d::scaling(AcGeScale3d(1, 1, 0));
  expectNear(flat.inverse() * AcGePoint3d{1, 2, 3}, {1, 2, 3}, 1e-15, "a singular matrix has no inverse");
}

TEST(Matrix, ObjectCoordinatesFollowTheArbitraryAxisRule) {
  // Upside down, X is mirrored: the usual case of mirrored plans.
  expectNear(AcGeMatrix3d::planeToWorld({0, 0, -1}) * AcGePoint3d{1, 2, 3}, {-1, 2, -3}, 1e-15, "-Z");
  expectNear(AcGeMatrix3d::planeToWorld({1, 0, 0}) * AcGePoint3d{1, 2, 3}, {3, 1, 2}, 1e-15, "X");
  expectNear(AcGeMatrix3d::planeToWorld({0, 0, 0}) * AcGePoint3d{1, 2, 3}, {1, 2, 3}, 1e-15, "no normal");
  for (const AcGeVector3d& normal : {AcGeVector3d{0.01, 0.01, 1}, {0.02, 0, 1}, {1, 2, 3}, {0, -1, 0}}) {
    const AcGePoint3d point{3, -4, 5};
    expectNear(AcGeMatrix3d::worldToPlane(normal) * (AcGeMatrix3d::planeToWorld(normal) * point), point,
               1e-12, "round trip");
  }
}

TEST(Extents, GrowAndMove) {
  AcDbExtents box;
  EXPECT_TRUE(box.isEmpty());
  box.addExt(AcDbExtents());
  EXPECT_TRUE(box.isEmpty());
  box.addPoint({1, 2, 3});
  box.addPoint({-1, 5, 0});
  EXPECT_EQ(box.minPoint(), AcGePoint3d(-1, 2, 0));
  EXPECT_EQ(box.maxPoint(), AcGePoint3d(1, 5, 3));
  box.transformBy(AcGeMatrix3d::rotation(kPi / 2, AcGeVector3d::kZAxis));
  expectNear(box.minPoint(), {-5, -1, 0}, 1e-12, "min");
  expectNear(box.maxPoint(), {-2, 1, 3}, 1e-12, "max");
}

}  // namespace
