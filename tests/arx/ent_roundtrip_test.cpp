#include "arx/ent_support.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

namespace {

using namespace ent_test;

std::string groups(const std::string& brief) {
  return brief[0] == '+' ? "100 AcDbEntity|8 0|100 " + brief.substr(1) : brief;
}

// What is read is written again, or what the row says.
class EntityRoundTrip : public ::testing::TestWithParam<CaseRow> {
protected:
  AcDbDatabase db;
  const std::string given = groups(GetParam()[2]);
  const std::unique_ptr<AcDbEntity> entity = read(db, GetParam()[1], given);
};

TEST_P(EntityRoundTrip, WritesWhatItRead) {
  const CaseRow& row = GetParam();
  EXPECT_EQ(entity->dxfName(), row[1]);
  const std::string first = written(*entity);
  EXPECT_EQ(first, row.cells.size() > 3 ? groups(row[3]) : given);
  EXPECT_EQ(written(*read(db, row[1], first)), first) << "changes at the second saving";
}

TEST_P(EntityRoundTrip, LosesNothingInCopies) {
  const std::unique_ptr<AcDbObject> copy(entity->cloneAlone());
  EXPECT_EQ(written(*copy), written(*entity));
  EXPECT_EQ(copy->isA(), entity->isA());
}

// Undo exchanges an object with a copy that was kept: every field must change sides.
TEST_P(EntityRoundTrip, ExchangesEveryField) {
  const std::string before = written(*entity);
  const std::string bare = "100 AcDbEntity|8 AUTRE|100 " + std::string("AcDbNothing");
  const std::unique_ptr<AcDbObject> other(static_cast<AcDbEntity*>(entity->isA()->create()));
  if (entity->isA() != AcDbOtherEntity::desc()) {
    other->dxfIn(tagsOf(bare), db);
    const std::string after = written(*other);
    ASSERT_NE(before, after);
    entity->exchangeState(*other);
    EXPECT_EQ(written(*entity), after);
  } else {
    entity->exchangeState(*other);
  }
  EXPECT_EQ(written(*other), before);
  entity->exchangeState(*other);
  EXPECT_EQ(written(*entity), before);
}

INSTANTIATE_TEST_SUITE_P(Rows, EntityRoundTrip,
                         ::testing::ValuesIn(caseRows("arx/cases/entities.txt", "round trip", ';')));

// Which class answers for a type that several share.
TEST(EntityFactory, TellsClassesOfOneTypeApart) {
  const struct {
    const char* type;
    const char* tags;
    const AcRxClass* expected;
  } rows[] = {
      {"POLYLINE", "100 AcDbEntity|100 AcDb3dPolyline|70 0", AcDb3dPolyline::desc()},
      {"POLYLINE", "100 AcDbEntity|100 AcDb2dPolyline|70 8", AcDb2dPolyline::desc()},
      {"POLYLINE", "70 8", AcDb3dPolyline::desc()},
      {"POLYLINE", "70 16", AcDbPolygonMesh::desc()},
      {"POLYLINE", "70 64", AcDbPolyFaceMesh::desc()},
      {"POLYLINE", "", AcDb2dPolyline::desc()},
      {"VERTEX", "70 128", AcDbFaceRecord::desc()},
      {"VERTEX", "70 64", AcDbPolygonMeshVertex::desc()},
      {"VERTEX", "100 AcDbVertex|100 AcDb2dVertex|70 32", AcDb2dVertex::desc()},
      {"VERTEX", "70 abc", AcDb2dVertex::desc()},
      {"line", "", AcDbOtherEntity::desc()},
      {"", "", AcDbOtherEntity::desc()},
  };
  for (const auto& row : rows) {
    const std::unique_ptr<AcDbEntity> entity(acdbNewEntity(row.type, tagsOf(row.tags)));
    EXPECT_EQ(entity->isA(), row.expected) << row.type << ' ' << row.tags;
    EXPECT_EQ(entity->dxfName(), row.type);
  }
}

// Drawings hold half a million attributes.
TEST(EntityMemory, KeepsFrequentEntitiesSmall) {
  EXPECT_LE(sizeof(AcDbBlockReference), 320U);
  EXPECT_LE(sizeof(AcDbAttribute), 400U);
  EXPECT_LE(sizeof(AcDb3dPolylineVertex), 128U);
}

TEST(EntityProperties, TakesTheDrawingsSettingsWhenAppended) {
  AcDbDatabase db;
  DxfTagText colour;
  colour.append(62, "1");
  db.setHeader("CECOLOR", colour);
  AcDbLine* plain = place(db, std::make_unique<AcDbLine>());
  EXPECT_EQ(plain->layer(), L"0");
  EXPECT_EQ(plain->colorIndex(), 1);
  auto chosen = std::make_unique<AcDbLine>();
  chosen->setColorIndex(256);  // by layer, and on purpose
  EXPECT_EQ(place(db, std::move(chosen))->colorIndex(), 256);
}

// A value that no integer holds was cast: the sanitizers say so.
TEST(EntityProperties, TakeNoColourOutOfRangeFromTheDrawing) {
  AcDbDatabase db;
  for (const char* value : {"1e20", "-1e300", "257"}) {
    DxfTagText colour;
    colour.append(62, value);
    db.setHeader("CECOLOR", colour);
    EXPECT_EQ(place(db, std::make_unique<AcDbLine>())->colorIndex(), 256) << value;
  }
}

TEST(EntityProperties, RefusesWhatADrawingCannotHold) {
  AcDbDatabase db;
  AcDbDatabase other;
  AcDbLine* line = place(db, std::make_unique<AcDbLine>());
  EXPECT_EQ(line->setColorIndex(3), Acad::eNotOpenForWrite);
  EXPECT_EQ(line->colorIndex(), 256);
  const AcDbObjectPointer<AcDbLine> open(line->objectId(), AcDb::kForWrite);
  EXPECT_EQ(open->setLayer(L"ABSENT"), Acad::eKeyNotFound);
  EXPECT_EQ(open->setLayer(other.layerZero()), Acad::eWrongDatabase);
  EXPECT_EQ(open->setColorIndex(257), Acad::eInvalidInput);
  EXPECT_EQ(open->setLinetypeScale(0), Acad::eInvalidInput);
  EXPECT_EQ(open->setLineWeight(212), Acad::eInvalidInput);
  EXPECT_EQ(open->setLineWeight(25), Acad::eOk);
  EXPECT_EQ(open->setLayer(static_cast<const ACHAR*>(nullptr)), Acad::eKeyNotFound);
  EXPECT_EQ(open->setLinetype(L"BYLAYER"), Acad::eOk);
  EXPECT_TRUE(open->linetypeId().isNull());
}

}  // namespace
