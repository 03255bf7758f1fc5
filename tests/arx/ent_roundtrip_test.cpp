#include "arx/ent_support.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using namespace ent_test;

// What is read is written again: the second column, or the first when it is empty. A sign + in front stands
// for the groups of an entity on layer 0.
struct Row {
  const char* name;
  const char* type;
  const char* read;
  const char* written = "";
};
std::string groups(const char* brief) {
  return *brief == '+' ? "100 AcDbEntity|8 0|100 " + std::string(brief + 1) : brief;
}
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

constexpr Row kRows[] = {
    {"common properties", "POINT",
     "100 AcDbEntity|67 1|410 Plan A|8 TOPO|6 DASHED|62 3|370 25|48 2.5|60 1|420 1193046|430 RAL|440 "
     "33554559|100 AcDbPoint|10 1.5|20 2.5|30 3.5",
     "100 AcDbEntity|67 1|8 TOPO|6 DASHED|62 3|370 25|48 2.5|60 1|420 1193046|410 Plan A|430 RAL|440 "
     "33554559|100 AcDbPoint|10 1.5|20 2.5|30 3.5"},
    {"a true colour in front of its index", "POINT",
     "100 AcDbEntity|8 0|420 255|62 5|100 AcDbPoint|10 1.0|20 2.0|30 3.0",
     "100 AcDbEntity|8 0|62 5|420 255|100 AcDbPoint|10 1.0|20 2.0|30 3.0"},
    {"point, all fields", "POINT",
     "+AcDbPoint|10 650000.123|20 6860000.456|30 102.5|39 2.5|210 0.0|220 1.0|230 0.0|50 12.5"},
    {"line, all fields and one unknown", "LINE",
     "+AcDbLine|39 1.5|10 0.1|20 0.2|30 0.3|11 1e-07|21 123456789.125|31 -0.3|210 0.0|220 0.0|230 -1.0|999 "
     "x"},
    {"line of an old file without markers", "LINE", "8 0|62 1|10 1.0|20 2.0|30 3.0|11 4.0|21 5.0|31 6.0",
     "100 AcDbEntity|8 0|62 1|100 AcDbLine|10 1.0|20 2.0|30 3.0|11 4.0|21 5.0|31 6.0"},
    {"ray", "RAY", "+AcDbRay|10 1.0|20 2.0|30 3.0|11 0.6|21 0.8|31 0.0"},
    {"circle in a tilted plane", "CIRCLE",
     "+AcDbCircle|39 0.5|10 1.1|20 2.2|30 3.3|40 4.4|210 0.6|220 0.0|230 0.8"},
    {"arc", "ARC", "+AcDbCircle|10 1.0|20 2.0|30 0.0|40 5.0|100 AcDbArc|50 33.33333333333333|51 359.9"},
    {"face", "3DFACE",
     "+AcDbFace|10 1.0|20 2.0|30 3.0|11 4.0|21 5.0|31 6.0|12 7.0|22 8.0|32 9.0|13 1.5|23 2.5|33 3.5|70 5"},
    {"triangle without its fourth corner", "3DFACE",
     "+AcDbFace|10 1.0|20 2.0|30 3.0|11 4.0|21 5.0|31 6.0|12 7.0|22 8.0|32 9.0",
     "+AcDbFace|10 1.0|20 2.0|30 3.0|11 4.0|21 5.0|31 6.0|12 7.0|22 8.0|32 9.0|13 7.0|23 8.0|33 9.0"},
    {"polyline with one width for all", "LWPOLYLINE",
     "+AcDbPolyline|90 2|70 129|43 0.25|38 12.5|39 3.0|10 1.0|20 2.0|42 0.5|10 3.0|20 4.0|91 7|210 0.0|220 "
     "0.0|230 -1.0"},
    {"polyline with widths of its own", "LWPOLYLINE",
     "+AcDbPolyline|90 2|70 0|10 1.0|20 2.0|40 0.1|41 0.2|10 3.0|20 4.0|40 0.0|41 0.0"},
    {"polyline without vertices", "LWPOLYLINE", "+AcDbPolyline|90 0|70 1|43 0.0"},
    {"polyline whose count lies", "LWPOLYLINE", "+AcDbPolyline|90 2000000000|70 0|43 0.0|10 1.0|20 2.0",
     "+AcDbPolyline|90 1|70 0|43 0.0|10 1.0|20 2.0"},
    {"width in front of all vertices", "LWPOLYLINE", "+AcDbPolyline|90 1|70 0|40 9.5|10 1.0|20 2.0",
     "+AcDbPolyline|90 1|70 0|43 0.0|10 1.0|20 2.0"},
    {"text, all fields", "TEXT",
     "+AcDbText|39 1.0|10 1.5|20 2.5|30 3.5|40 2.0|1 Béton %%d|50 30.0|41 0.8|51 15.0|7 ROMANS|71 2|72 1|"
     "11 5.5|21 6.5|31 3.5|210 0.0|220 0.0|230 -1.0|100 AcDbText|73 2"},
    {"text with its vertical mode in the first section", "TEXT",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 a|72 1|11 1.0|21 2.0|31 0.0|73 3",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 a|72 1|11 1.0|21 2.0|31 0.0|100 AcDbText|73 3"},
    {"text with a second point but the default alignment", "TEXT",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 |11 0.0|21 0.0|31 0.0|100 AcDbText"},
    {"text of an old file", "TEXT",
     "8 0|10 1.0|20 2.0|30 0.0|40 2.0|1 a|50 90.0|72 2|11 4.0|21 2.0|31 0.0|73 1",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 a|50 90.0|72 2|11 4.0|21 2.0|31 0.0|100 AcDbText|73 1"},
    {"attribute of a current file", "ATTRIB",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 A12|72 1|11 1.0|21 2.0|31 0.0|100 AcDbAttribute|280 0|2 "
     "NUMPT|70 9|73 6|74 2|280 1"},
    {"attribute of an older file, lock only", "ATTRIB",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 A12|100 AcDbAttribute|2 NUMPT|70 0|280 1"},
    {"attribute of an old file without markers", "ATTRIB",
     "8 0|10 1.0|20 2.0|30 0.0|40 2.0|1 A12|2 NUMPT|70 1|73 4|74 1|72 4|11 1.0|21 2.0|31 0.0",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 A12|72 4|11 1.0|21 2.0|31 0.0|100 AcDbAttribute|2 NUMPT|70 1|"
     "73 4|74 1"},
    {"attribute of several lines", "ATTRIB",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 A|100 AcDbAttribute|280 0|2 OBS|70 0|280 0|71 2|72 0|11 5.0|"
     "21 6.0|31 7.0|101 Embedded Object|70 1|10 1.0|20 2.0|30 3.0|2 X"},
    {"a long tag and text", "ATTRIB",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 une observation de plus de seize lettres|100 AcDbAttribute|"
     "280 0|2 OBSERVATIONS|70 0|280 0"},
    {"definition of an attribute", "ATTDEF",
     "+AcDbText|10 1.0|20 2.0|30 0.0|40 2.0|1 0.00|7 ROMANS|72 2|11 4.0|21 2.0|31 0.0|100 "
     "AcDbAttributeDefinition|280 0|3 Altitude ?|2 Z|70 4|73 8|74 3|280 1"},
    {"block reference, all fields", "INSERT",
     "+AcDbBlockReference|2 BLK|10 1.5|20 2.5|30 3.5|41 2.0|42 -2.0|43 0.5|50 33.3|210 0.0|220 0.0|230 "
     "-1.0"},
    {"block reference that tells of attributes it lost", "INSERT",
     "+AcDbBlockReference|66 1|2 BLK|10 1.0|20 2.0|30 0.0", "+AcDbBlockReference|2 BLK|10 1.0|20 2.0|30 0.0"},
    {"rows and columns", "INSERT", "+AcDbMInsertBlock|2 BLK|10 1.0|20 2.0|30 0.0|70 3|71 2|44 10.0|45 20.5"},
    {"rows and columns of one", "INSERT",
     "+AcDbBlockReference|2 BLK|10 1.0|20 2.0|30 0.0|70 1|71 1|44 0.0|45 0.0",
     "+AcDbBlockReference|2 BLK|10 1.0|20 2.0|30 0.0"},
    {"text of several lines", "MTEXT",
     "+AcDbMText|10 1.0|20 2.0|30 3.0|40 2.5|41 40.0|46 8.0|71 5|72 1|1 a\\Pb|7 ROMANS|210 0.0|220 0.0|230 "
     "-1.0|11 0.0|21 1.0|31 0.0|42 8.5|43 2.5|73 2|44 1.5|90 1|63 256|101 Embedded Object|70 1|10 9.0|20 "
     "9.0|30 9.0"},
    {"text of several lines, turned by an angle", "MTEXT",
     "+AcDbMText|10 1.0|20 2.0|30 3.0|40 2.5|41 0.0|71 1|72 5|3 abc|1 def|50 45.0|73 1|44 1.0",
     "+AcDbMText|10 1.0|20 2.0|30 3.0|40 2.5|41 0.0|71 1|72 5|1 abcdef|50 45.0|73 1|44 1.0"},
    {"old plane polyline", "POLYLINE",
     "+AcDb2dPolyline|66 1|10 0.0|20 0.0|30 12.5|39 1.0|70 5|40 0.5|41 0.6|75 6|210 0.0|220 0.0|230 -1.0"},
    {"its vertex", "VERTEX",
     "+AcDbVertex|100 AcDb2dVertex|10 1.0|20 2.0|30 12.5|40 0.5|41 0.6|42 -0.4|70 2|50 30.0"},
    {"old plane polyline without markers", "POLYLINE", "8 0|66 1|10 0.0|20 0.0|30 5.0|70 1",
     "+AcDb2dPolyline|66 1|10 0.0|20 0.0|30 5.0|70 1"},
    {"polyline in space", "POLYLINE", "+AcDb3dPolyline|66 1|10 0.0|20 0.0|30 0.0|70 9"},
    {"its vertex of an old file", "VERTEX", "8 0|10 1.0|20 2.0|30 3.0|70 32",
     "+AcDbVertex|100 AcDb3dPolylineVertex|10 1.0|20 2.0|30 3.0|70 32"},
    {"mesh", "POLYLINE", "+AcDbPolygonMesh|66 1|10 0.0|20 0.0|30 0.0|70 17|71 4|72 3|73 6|74 6|75 5"},
    {"its vertex", "VERTEX", "+AcDbVertex|100 AcDbPolygonMeshVertex|10 1.0|20 2.0|30 3.0|70 64"},
    {"mesh of faces by its flags", "POLYLINE", "8 0|66 1|10 0.0|20 0.0|30 0.0|70 64|71 8|72 6",
     "+AcDbPolyFaceMesh|66 1|10 0.0|20 0.0|30 0.0|70 64|71 8|72 6"},
    {"its vertex by its flags", "VERTEX", "8 0|10 1.0|20 2.0|30 3.0|70 192",
     "+AcDbVertex|100 AcDbPolyFaceMeshVertex|10 1.0|20 2.0|30 3.0|70 192"},
    {"its face", "VERTEX", "+AcDbFaceRecord|10 0.0|20 0.0|30 0.0|70 128|71 1|72 -2|73 3"},
    {"sequence end", "SEQEND", "100 AcDbEntity|8 0"},
    {"begin of a block", "BLOCK", "+AcDbBlockBegin|2 BLK|70 2|10 1.0|20 2.0|30 0.0|3 BLK|1 |4 remarque"},
    {"end of a block", "ENDBLK", "+AcDbBlockEnd"},
    {"what the host does not model", "HATCH",
     "100 AcDbEntity|8 0|62 4|100 AcDbHatch|10 0.0|20 0.0|2 SOLID|70 1",
     "100 AcDbEntity|8 0|62 4|100 AcDbHatch|10 0.0|20 0.0|2 SOLID|70 1"},
};

class EntityRoundTrip : public ::testing::TestWithParam<Row> {
protected:
  AcDbDatabase db;
  const std::string given = groups(GetParam().read);
  const std::unique_ptr<AcDbEntity> entity = read(db, GetParam().type, given);
};

TEST_P(EntityRoundTrip, WritesWhatItRead) {
  const Row& row = GetParam();
  EXPECT_EQ(entity->dxfName(), row.type);
  const std::string first = written(*entity);
  EXPECT_EQ(first, *row.written ? groups(row.written) : given);
  EXPECT_EQ(written(*read(db, row.type, first)), first) << "changes at the second saving";
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

INSTANTIATE_TEST_SUITE_P(Rows, EntityRoundTrip, ::testing::ValuesIn(kRows));

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
  EXPECT_EQ(open->setLayer(static_cast<const ACHAR*>(nullptr)), Acad::eKeyNotFound);
  EXPECT_EQ(open->setLinetype(L"BYLAYER"), Acad::eOk);
  EXPECT_TRUE(open->linetypeId().isNull());
}

}  // namespace
