#include "arx/db/dbmirror.h"
#include "arx/db/dbtable.h"
#include "arx/db/dbundo.h"
#include "arx/ent_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ent_test;

// Two columns of 30 and 20, a title of 6, a header of 5 and a row of 4, text heights 2.5.
AcDbTable* makeTable(AcDbDatabase& db, bool title = true) {
  auto table = std::make_unique<AcDbTable>();
  table->setSize(3, 2);
  table->suppressTitleRow(!title);
  table->setPosition(kFar);
  const double heights[] = {6, 5, 4};
  for (int row = 0; row < 3; ++row) table->setRowHeight(row, heights[row]);
  table->setColumnWidth(0, 30);
  table->setColumnWidth(1, 20);
  table->setTextString(0, 0, L"Levé ^ du 3");
  table->setTextString(2, 1, L"6860000.25");
  table->setAlignment(2, 1, AcDb::kBottomRight);
  AcDbTable* const raw = place(db, std::move(table));
  const AcDbObjectPointer<AcDbTable> open(raw->objectId(), AcDb::kForWrite);
  EXPECT_EQ(open->recomputeTableBlock(), Acad::eOk);
  return raw;
}

std::vector<const AcDbEntity*> partsOf(const AcDbTable& table) {
  std::vector<const AcDbEntity*> parts;
  const AcDbObjectPointer<AcDbBlockTableRecord> block(table.blockTableRecord());
  for (const AcDbObjectId id : block->entities())
    if (id.isLive()) parts.push_back(AcDbEntity::cast(id.stub()->object));
  return parts;
}

TEST(Table, IsReadAsItWasWrittenAndForeignOnesStayText) {
  AcDbDatabase db;
  const AcDbTable* table = makeTable(db);
  const std::string whole = written(*table);
  const std::string groups = whole.substr(whole.find("100 AcDbEntity"));  // without its place in the drawing
  const auto again = read(db, "ACAD_TABLE", groups);
  ASSERT_NE(AcDbTable::cast(again.get()), nullptr) << groups;
  EXPECT_EQ(written(*again), groups);
  EXPECT_EQ(AcDbTable::cast(again.get())->textString(0, 0), L"Levé ^ du 3");
  EXPECT_EQ(AcDbTable::cast(again.get())->blockTableRecord(), table->blockTableRecord());
  const std::pair<const char*, const char*> foreign[] = {
      {"|91 3|", "|91 4|"},      {"|91 3|", "|91 1000000000|"},  {"|92 2|", "|92 0|"},
      {"|171 1|", "|171 2|"},    {"|141 5.0|", "|141 -5.0|"},    {"|170 9|", "|170 10|"},
      {"|140 2.5|", ""},         {"|11 1.0|", "|11 x|"},         {"|302 6860000.25|", "|302 1|"},
      {"|96 0|", "|96 0|97 1|"}, {"|2 *T1|", "|2 *Model_Space|"}};
  for (const auto& [from, to] : foreign) {
    std::string other = groups;
    ASSERT_NE(other.find(from), std::string::npos) << from;
    other.replace(other.find(from), std::string(from).size(), *to ? to : "|");
    const auto entity = read(db, "ACAD_TABLE", other);
    EXPECT_EQ(entity->isA(), AcDbOtherEntity::desc()) << to;
    EXPECT_EQ(written(*entity), other);
  }
}

TEST(Table, ShowsItsTextsInItsCells) {
  AcDbDatabase db;
  const AcDbTable* table = makeTable(db);
  AcDbExtents box;
  ASSERT_EQ(table->getGeomExtents(box), Acad::eOk);
  EXPECT_POINT(kFar + AcGeVector3d(0, -15, 0), box.minPoint(), 1e-8);
  EXPECT_POINT(kFar + AcGeVector3d(50, 0, 0), box.maxPoint(), 1e-8);
  std::vector<const AcDbText*> texts;
  int upright = 0;
  for (const AcDbEntity* part : partsOf(*table)) {
    if (const AcDbText* text = AcDbText::cast(part)) texts.push_back(text);
    const AcDbLine* line = AcDbLine::cast(part);
    if (line && line->startPoint().x == line->endPoint().x && line->startPoint().x == 30) ++upright;
  }
  EXPECT_EQ(upright, 2) << "the title runs over both columns";
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_POINT(AcGePoint3d(25, -3, 0), texts[0]->alignmentPoint(), 1e-9);
  EXPECT_EQ(texts[0]->horizontalMode(), AcDb::kTextCenter);
  EXPECT_POINT(AcGePoint3d(50 - 0.25, -15 + 0.25, 0), texts[1]->alignmentPoint(), 1e-9);
  EXPECT_EQ(texts[1]->horizontalMode(), AcDb::kTextRight);
  EXPECT_EQ(makeTable(db, false)->rowType(0), AcDb::kHeaderRow);
}

// A copy shows the same block until one of both changes.
TEST(Table, CopiesPartWhenOneChanges) {
  AcDbDatabase db;
  AcDbTable* table = makeTable(db);
  AcDbTable* copy = place(db, std::unique_ptr<AcDbTable>(static_cast<AcDbTable*>(table->cloneAlone())));
  ASSERT_EQ(copy->blockTableRecord(), table->blockTableRecord());
  db.undoLog().begin(L"SCALE");
  {
    const AcDbObjectPointer<AcDbTable> open(copy->objectId(), AcDb::kForWrite);
    EXPECT_EQ(open->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(2, 1, 1))), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(open->transformBy(AcGeMatrix3d::rotation(1, {1, 0, 0})), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(
        open->transformBy(AcGeMatrix3d::scaling(2, kFar) * AcGeMatrix3d::rotation(kPi / 2, {0, 0, 1}, kFar)),
        Acad::eOk);
  }
  db.undoLog().end();
  EXPECT_NE(copy->blockTableRecord(), table->blockTableRecord());
  AcDbExtents box, former;
  table->getGeomExtents(former);
  EXPECT_POINT(kFar + AcGeVector3d(50, 0, 0), former.maxPoint(), 1e-8);
  copy->getGeomExtents(box);
  EXPECT_POINT(kFar, box.minPoint(), 1e-8);
  EXPECT_POINT(kFar + AcGeVector3d(30, 100, 0), box.maxPoint(), 1e-7);
  EXPECT_EQ(copy->textHeight(2, 1), 5);
  db.undoLog().undo();
  EXPECT_EQ(copy->blockTableRecord(), table->blockTableRecord());
  copy->getGeomExtents(box);
  EXPECT_POINT(former.maxPoint(), box.maxPoint(), 0);
}

// Across the vertical line through its corner, a table that climbs by 30 degrees falls by as much, and its
// first corner lies where the mirror image of its second one does.
TEST(Table, IsMirroredSoThatItCanBeRead) {
  AcDbDatabase db;
  const AcDbObjectPointer<AcDbTable> table(makeTable(db)->objectId(), AcDb::kForWrite);
  const double c = std::sqrt(0.75);
  const double s = 0.5;
  ASSERT_EQ(table->setDirection({c, s, 0}), Acad::eOk);
  const AcGeMatrix3d mirror = acdbMirrorMatrix(kFar, kFar + AcGeVector3d(0, 1, 0));
  for (const bool readable : {true, false}) {
    ASSERT_EQ(acdbMirror(*table, mirror, readable), Acad::eOk);
    const double way = readable ? 1 : -1;  // the second time back to where it was
    EXPECT_NEAR(table->direction().x, c, 1e-12);
    EXPECT_NEAR(table->direction().y, -way * s, 1e-12);
    const AcGeVector3d shift = readable ? AcGeVector3d(-50 * c, 50 * s, 0) : AcGeVector3d(0, 0, 0);
    EXPECT_POINT(kFar + shift, table->position(), 1e-8);
  }
}

TEST(Table, MakesItsBlockAnewInPlace) {
  AcDbDatabase db;
  AcDbTable* table = makeTable(db);
  const AcDbObjectId block = table->blockTableRecord();
  const std::size_t count = partsOf(*table).size();
  const AcDbObjectPointer<AcDbTable> open(table->objectId(), AcDb::kForWrite);
  EXPECT_EQ(open->setTextString(2, 0, L"X"), Acad::eOk);
  EXPECT_EQ(open->recomputeTableBlock(), Acad::eOk);
  EXPECT_EQ(table->blockTableRecord(), block);
  EXPECT_EQ(partsOf(*table).size(), count + 1);
}

TEST(Table, RefusesWhatNoTableHolds) {
  AcDbTable table;
  EXPECT_EQ(table.setSize(0, 2), Acad::eInvalidInput);
  EXPECT_EQ(table.setSize(100000, 1000), Acad::eInvalidInput);
  ASSERT_EQ(table.setSize(2, 2), Acad::eOk);
  EXPECT_EQ(table.setRowHeight(2, 1), Acad::eInvalidIndex);
  EXPECT_EQ(table.setRowHeight(0, 0), Acad::eInvalidInput);
  EXPECT_EQ(table.setColumnWidth(0, std::nan("")), Acad::eInvalidInput);
  EXPECT_EQ(table.setTextString(0, -1, L"a"), Acad::eInvalidIndex);
  EXPECT_EQ(table.setTextString(0, 0, AcString(std::wstring(251, L'a').c_str())), Acad::eInvalidInput);
  EXPECT_EQ(table.setDirection({0, 0, 1}), Acad::eInvalidInput);
  EXPECT_EQ(table.recomputeTableBlock(), Acad::eNoDatabase);
}

}  // namespace
