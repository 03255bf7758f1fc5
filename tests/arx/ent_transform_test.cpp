#include "arx/db/dbgroupmap.h"
#include "arx/ent_support.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ent_test;

class Transform : public ::testing::TestWithParam<CaseRow> {
protected:
  Transform() {
    const AcDbObjectId id = block(db, L"BLK");
    addTo(id, new AcDbLine({0, 0, 0}, {1, 2, 3}));
    addTo(id, new AcDbText({1, 1, 0}, L"gap", {}, 0.5, 0.3));
  }
  std::unique_ptr<AcDbEntity> made(const char* plane = "") {
    return read(db, GetParam()[1], "100 AcDbEntity|8 0|" + GetParam()[2] + plane);
  }
  AcDbDatabase db;
};

// A box of the mapped entity must be the box that the map predicts: the two ways share no code.
TEST_P(Transform, MovesWhatIsSeen) {
  const AcGeMatrix3d maps[] = {
      AcGeMatrix3d::translation(kFar.asVector()),
      AcGeMatrix3d::rotation(0.7, {0, 0, 1}, {5, -3, 0}),
      AcGeMatrix3d::rotation(kPi, {0, 0, 1}),
      AcGeMatrix3d::scaling(2.5, {1, 1, 1}),
      AcGeMatrix3d::rotation(1.2, {0.6, 0, 0.8}),
      AcGeMatrix3d::translation(kFar.asVector()) * AcGeMatrix3d::rotation(-2.1, {0, 0.6, -0.8}),
      AcGeMatrix3d::scaling(AcGeScale3d(-1, 1, 1)),
      AcGeMatrix3d::scaling(AcGeScale3d(1, -1, 1)),
      AcGeMatrix3d::rotation(0.4, {0, 0, 1}) * AcGeMatrix3d::scaling(AcGeScale3d(3, -3, 3)),
  };
  const char* const planes[] = {"", "|210 0.0|220 0.0|230 -1.0", "|210 0.6|220 0.0|230 0.8"};
  for (const char* plane : planes) {
    const bool hasPlane = std::string_view("RAY 3DFACE").find(GetParam()[1]) == std::string_view::npos;
    const bool lastGroups = std::string_view("ARC TEXT ATTRIB").find(GetParam()[1]) == std::string_view::npos;
    if (*plane && (!hasPlane || !lastGroups)) continue;
    for (std::size_t i = 0; i < std::size(maps); ++i) {
      SCOPED_TRACE(std::string(plane) + " map " + std::to_string(i));
      const bool mirrors = maps[i].det() < 0;
      if (mirrors && std::string_view(GetParam()[1]) == "MTEXT") continue;  // stays readable
      const std::unique_ptr<AcDbEntity> entity = made(plane);
      AcDbExtents predicted, seen;
      entity->addExtentsUnder(maps[i], predicted);
      ASSERT_EQ(entity->transformBy(maps[i]), Acad::eOk);
      if (entity->getGeomExtents(seen) == Acad::eInvalidExtents) {
        EXPECT_TRUE(predicted.isEmpty());
        continue;
      }
      EXPECT_POINT(predicted.minPoint(), seen.minPoint(), 2e-8);
      EXPECT_POINT(predicted.maxPoint(), seen.maxPoint(), 2e-8);
    }
  }
}

// Groups other than coordinates keep every digit when an entity is moved, and all of them when nothing
// happens.
TEST_P(Transform, KeepsDigitsThatDoNotChange) {
  const std::unique_ptr<AcDbEntity> entity = made();
  const std::string before = written(*entity);
  ASSERT_EQ(entity->transformBy(AcGeMatrix3d()), Acad::eOk);
  EXPECT_EQ(written(*entity), before);
  const AcGeMatrix3d there = AcGeMatrix3d::translation({1024, -2048, 0.5});
  const AcGeMatrix3d back = AcGeMatrix3d::translation({-1024, 2048, -0.5});
  ASSERT_EQ(entity->transformBy(there), Acad::eOk);
  EXPECT_NE(written(*entity), before);
  ASSERT_EQ(entity->transformBy(back), Acad::eOk);
  EXPECT_EQ(written(*entity), before);
  // Heights, radii and widths survive turns, whose matrices are not exactly of unit length.
  const auto sizes = [](const std::string& text) {
    std::string kept;
    for (const DxfTag& tag : tagsOf(text)) {
      if (tag.code >= 40 && tag.code < 44) kept += std::string(tag.value) + ' ';
    }
    return kept;
  };
  for (int i = 1; i < 9; ++i) entity->transformBy(AcGeMatrix3d::rotation(0.3 * i, {0, 0, 1}, {7, 7, 0}));
  EXPECT_EQ(sizes(written(*entity)), sizes(before));
}

TEST_P(Transform, RefusesACollapse) {
  const std::unique_ptr<AcDbEntity> entity = made();
  const std::string type = GetParam()[1];
  const std::string before = written(*entity);
  const Acad::ErrorStatus status = entity->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(1, 0, 1)));
  if (type == "POINT" || type == "LINE" || type == "3DFACE" || type == "RAY")
    return;  // these may lose a dimension
  EXPECT_NE(status, Acad::eOk);
  EXPECT_EQ(written(*entity), before);
}

INSTANTIATE_TEST_SUITE_P(Rows, Transform,
                         ::testing::ValuesIn(caseRows("arx/cases/entities.txt", "one of each kind", ';')));

TEST(TransformSkew, IsRefusedWhereTheShapeForbids) {
  AcGeMatrix3d skew;
  skew.entry[0][1] = 0.5;
  const AcGeMatrix3d stretch = AcGeMatrix3d::scaling(AcGeScale3d(2, 1, 1));
  AcDbDatabase db;
  const auto entity = [&](const char* type, const char* groups) {
    return read(db, type, std::string("100 AcDbEntity|8 0|") + groups);
  };
  const struct {
    const char *type, *groups;
    Acad::ErrorStatus skewed, stretched;
  } rows[] = {
      {"LINE", "100 AcDbLine|10 0.0|20 0.0|30 0.0|11 1.0|21 1.0|31 0.0", Acad::eOk, Acad::eOk},
      {"CIRCLE", "100 AcDbCircle|10 0.0|20 0.0|30 0.0|40 1.0", Acad::eCannotScaleNonUniformly,
       Acad::eCannotScaleNonUniformly},
      {"LWPOLYLINE", "100 AcDbPolyline|90 2|70 0|10 0.0|20 0.0|10 1.0|20 1.0", Acad::eOk, Acad::eOk},
      {"LWPOLYLINE", "100 AcDbPolyline|90 2|70 0|10 0.0|20 0.0|42 0.5|10 1.0|20 1.0",
       Acad::eCannotScaleNonUniformly, Acad::eCannotScaleNonUniformly},
      {"TEXT", "100 AcDbText|10 0.0|20 0.0|30 0.0|40 1.0|1 a", Acad::eCannotScaleNonUniformly, Acad::eOk},
      {"TEXT", "100 AcDbText|10 0.0|20 0.0|30 0.0|40 1.0|1 a|50 30.0", Acad::eCannotScaleNonUniformly,
       Acad::eCannotScaleNonUniformly},
      {"INSERT", "100 AcDbBlockReference|2 B|10 0.0|20 0.0|30 0.0", Acad::eCannotScaleNonUniformly,
       Acad::eOk},
      {"INSERT", "100 AcDbBlockReference|2 B|10 0.0|20 0.0|30 0.0|50 30.0", Acad::eCannotScaleNonUniformly,
       Acad::eCannotScaleNonUniformly},
      {"MTEXT", "100 AcDbMText|10 0.0|20 0.0|30 0.0|40 1.0|1 a", Acad::eCannotScaleNonUniformly,
       Acad::eCannotScaleNonUniformly},
      {"HATCH", "100 AcDbHatch|2 SOLID", Acad::eCannotScaleNonUniformly, Acad::eCannotScaleNonUniformly},
      {"REGION", "100 AcDbModelerGeometry|70 1", Acad::eNotImplementedYet, Acad::eNotImplementedYet},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(entity(row.type, row.groups)->transformBy(skew), row.skewed) << row.groups;
    EXPECT_EQ(entity(row.type, row.groups)->transformBy(stretch), row.stretched) << row.groups;
  }
}

// What moves by its groups alone (compared with another program by tests/dxf/check_transform.py).
TEST(KeptEntities, MoveWithTheirPicturesOrAreNamedBeforeAnythingMoves) {
  AcDbDatabase db;
  const AcDbObjectId picture = block(db, L"*D1");
  const AcDbObjectId part = addTo(picture, new AcDbLine({0, 0, 0}, {1, 2, 3}));
  const auto kept = [&](const char* type, const std::string& groups) {
    return addTo(db.modelSpaceId(), read(db, type, "100 AcDbEntity|8 0|" + groups).release());
  };
  const std::string dimension = "100 AcDbDimension|2 *D1|10 1.0|20 2.0|30 0.0|70 0|42 5.0";
  const AcDbObjectId first = kept("DIMENSION", dimension);
  std::vector<AcDbObjectId> all{first,
                                kept("ELLIPSE", "100 AcDbEllipse|10 0|20 0|30 0|11 1|21 0|31 0|40 0.5")};
  EXPECT_EQ(acdbImmovable(all), L"");
  db.undoLog().begin(L"MOVE");
  {
    const AcDbObjectPointer<AcDbEntity> open(first, AcDb::kForWrite);
    EXPECT_EQ(open->transformBy(AcGeMatrix3d::scaling(2)), Acad::eOk);
    EXPECT_NE(written(*open).find("10 2.0|20 4.0|30 0.0|70 0|42 10.0"), std::string::npos) << written(*open);
  }
  db.undoLog().end();
  AcDbExtents box;
  AcDbObjectPointer<AcDbEntity>(part)->getGeomExtents(box);
  EXPECT_POINT(AcGePoint3d(2, 4, 6), box.maxPoint(), 0);
  db.undoLog().undo();
  AcDbObjectPointer<AcDbEntity>(part)->getGeomExtents(box);
  EXPECT_POINT(AcGePoint3d(1, 2, 3), box.maxPoint(), 0);
  // Unknown, half known, holding another object, a copy placed elsewhere, two dimensions with one picture.
  all.push_back(kept("REGION", "100 AcDbModelerGeometry|70 1"));
  all.push_back(kept("ELLIPSE", "100 AcDbEllipse|10 x|20 0|30 0"));
  all.push_back(kept("SPLINE", "100 AcDbSpline|10 0|20 0|30 0|101 Embedded Object|10 1|20 1|30 1"));
  all.push_back(kept("HATCH", "100 AcDbHatch|10 0|20 0|30 0|91 1|92 1|93 1|72 9|75 0"));
  all.push_back(kept("DIMENSION", dimension + "|12 1|22 1|32 0"));
  EXPECT_EQ(acdbImmovable(all), L"2 DIMENSION, 1 ELLIPSE, 1 HATCH, 1 REGION, 1 SPLINE");
}

// Points of an entity in a turned plane come out in the world, and go in from there.
TEST(OwnPlane, IsSeenFromTheWorld) {
  AcDbDatabase db;
  const auto entity = read(
      db, "TEXT", "100 AcDbEntity|8 0|100 AcDbText|10 5.0|20 7.0|30 2.0|40 1.0|1 a|210 0.0|220 0.0|230 -1.0");
  AcDbText* text = AcDbText::cast(entity.get());
  EXPECT_POINT(AcGePoint3d(-5, 7, -2), text->position(), 0);
  ASSERT_EQ(text->setPosition({-6, 8, -3}), Acad::eOk);
  EXPECT_NE(written(*text).find("10 6.0|20 8.0|30 3.0"), std::string::npos);
  ASSERT_EQ(text->setNormal({0, 0, 9}), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-6, 8, -3), text->position(), 0);
  EXPECT_NE(written(*text).find("10 -6.0|20 8.0|30 -3.0"), std::string::npos);
  AcDbCircle circle({1, 2, 3}, {0.6, 0, 0.8}, 1);
  EXPECT_POINT(AcGePoint3d(1, 2, 3), circle.center(), 1e-12);
  circle.setNormal({0, 0, 0});  // no direction: +Z
  EXPECT_POINT(AcGePoint3d(1, 2, 3), circle.center(), 1e-12);
  EXPECT_EQ(circle.normal(), AcGeVector3d::kZAxis);
}

}  // namespace
