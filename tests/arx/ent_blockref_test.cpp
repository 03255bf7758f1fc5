#include "arx/ent_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ent_test;

class BlockReference : public ::testing::Test {
protected:
  AcDbBlockReference* insert(AcDbObjectId id, const AcGePoint3d& at = {}) {
    return place(db, std::make_unique<AcDbBlockReference>(at, id));
  }
  AcDbObjectId attribute(AcDbBlockReference* reference, const ACHAR* tag, const ACHAR* text,
                         const AcGePoint3d& at) {
    const AcDbObjectPointer<AcDbBlockReference> open(reference->objectId(), AcDb::kForWrite);
    auto* made = new AcDbAttribute(at, text, tag);
    made->setHeight(2);
    AcDbObjectId id;
    EXPECT_EQ(open->appendAttribute(id, made), Acad::eOk);
    made->close();
    return id;
  }
  static std::wstring tags(const AcDbBlockReference& reference) {
    std::wstring all;
    const std::unique_ptr<AcDbObjectIterator> walk(reference.attributeIterator());
    for (; !walk->done(); walk->step()) {
      const AcDbObjectPointer<AcDbAttribute> attribute(walk->objectId());
      all += attribute->tag() + L"=" + attribute->textString() + L" ";
    }
    return all;
  }
  AcDbDatabase db;
};

TEST_F(BlockReference, WalksItsAttributesInOrder) {
  AcDbBlockReference* reference = insert(block(db, L"PNT"));
  EXPECT_EQ(written(*reference).find("|66 1|"), std::string::npos);
  EXPECT_TRUE(reference->subObjects().empty());
  attribute(reference, L"CODE", L"1", {});
  const AcDbObjectId number = attribute(reference, L"NUMPT", L"A12", {});
  attribute(reference, L"Z", L"", {});
  EXPECT_EQ(tags(*reference), L"CODE=1 NUMPT=A12 Z= ");
  EXPECT_NE(written(*reference).find("|66 1|"), std::string::npos);
  ASSERT_EQ(reference->subObjects().size(), 4U);
  EXPECT_EQ(reference->subObjects()[3], reference->sequenceEndId());
  for (const AcDbObjectId& id : reference->subObjects()) {
    const AcDbObjectPointer<AcDbEntity> part(id);
    EXPECT_EQ(part->ownerId(), reference->objectId());
    EXPECT_EQ(part->layer(), L"0");
  }
  erase(number);
  EXPECT_EQ(tags(*reference), L"CODE=1 Z= ");
}

TEST_F(BlockReference, WithoutLiveAttributesWritesNoSequence) {
  AcDbBlockReference* reference = insert(block(db, L"PNT"));
  const AcDbObjectId only = attribute(reference, L"Z", L"1", {});
  erase(only);
  EXPECT_EQ(written(*reference).find("|66 1|"), std::string::npos);
  for (const AcDbObjectId& id : reference->subObjects()) EXPECT_FALSE(id.isLive());
  attribute(reference, L"Z", L"2", {});
  EXPECT_EQ(reference->subObjects().size(), 3U);
}

TEST_F(BlockReference, TakesAttributesOnlyInADrawing) {
  AcDbBlockReference loose;
  auto attribute = std::make_unique<AcDbAttribute>();
  AcDbObjectId id;
  EXPECT_EQ(loose.appendAttribute(id, attribute.get()), Acad::eNotInDatabase);
  EXPECT_EQ(loose.appendAttribute(id, nullptr), Acad::eNullObjectPointer);
  AcDbBlockReference* closed = insert(block(db, L"PNT"));
  EXPECT_EQ(closed->appendAttribute(id, attribute.get()), Acad::eNotOpenForWrite);
  EXPECT_TRUE(closed->subObjects().empty());
}

TEST_F(BlockReference, EraseAndUndoTakeTheAttributesAlong) {
  AcDbBlockReference* reference = insert(block(db, L"PNT"));
  const AcDbObjectId id = attribute(reference, L"Z", L"1", {});
  db.undoLog().clear();
  db.undoLog().begin(L"ERASE");
  erase(reference->objectId());
  db.undoLog().end();
  EXPECT_TRUE(id.isErased());
  EXPECT_TRUE(reference->sequenceEndId().isErased());
  db.undoLog().undo();
  EXPECT_EQ(tags(*reference), L"Z=1 ");
  EXPECT_TRUE(reference->sequenceEndId().isLive());
}

TEST_F(BlockReference, UndoOfAnAttributeRestoresTheListAndTheText) {
  AcDbBlockReference* reference = insert(block(db, L"PNT"));
  const AcDbObjectId id = attribute(reference, L"Z", L"1", {});
  db.undoLog().clear();
  db.undoLog().begin(L"ATTEDIT");
  attribute(reference, L"OBS", L"borne", {});
  AcDbObjectPointer<AcDbAttribute>(id, AcDb::kForWrite)->setTextString(L"une altitude bien trop longue");
  db.undoLog().end();
  EXPECT_EQ(tags(*reference), L"Z=une altitude bien trop longue OBS=borne ");
  db.undoLog().undo();
  EXPECT_EQ(tags(*reference), L"Z=1 ");
  db.undoLog().redo();
  EXPECT_EQ(tags(*reference), L"Z=une altitude bien trop longue OBS=borne ");
}

TEST_F(BlockReference, MovesItsAttributes) {
  AcDbBlockReference* reference = insert(block(db, L"PNT"), kFar);
  const AcDbObjectId id = attribute(reference, L"Z", L"1", kFar + AcGeVector3d(2, -3, 0));
  const AcGeMatrix3d quarter = AcGeMatrix3d::rotation(kPi / 2, {0, 0, 1}, kFar);
  {
    const AcDbObjectPointer<AcDbBlockReference> open(reference->objectId(), AcDb::kForWrite);
    ASSERT_EQ(open->transformBy(quarter), Acad::eOk);
    EXPECT_POINT(kFar, open->position(), 2e-9);
    // A copy that is in no drawing must leave the original's attributes alone.
    const std::unique_ptr<AcDbObject> copy(open->cloneAlone());
    static_cast<AcDbBlockReference*>(copy.get())->transformBy(AcGeMatrix3d::translation({9, 9, 9}));
  }
  const AcDbObjectPointer<AcDbAttribute> moved(id);
  EXPECT_POINT(kFar + AcGeVector3d(3, 2, 0), moved->position(), 4e-9);
  EXPECT_NEAR(moved->rotation(), kPi / 2, 1e-12);
}

TEST_F(BlockReference, TransformIsWhereTheBlockIsSeen) {
  const AcDbObjectId id = block(db, L"PNT", {10, 20, 0});
  AcDbBlockReference reference({100, 200, 5}, id);
  reference.setScaleFactors({2, -3, 4});
  reference.setRotation(kPi / 2);
  const AcGeMatrix3d matrix = reference.blockTransform();
  EXPECT_POINT(AcGePoint3d(100, 200, 5), matrix * AcGePoint3d(10, 20, 0), 1e-12);
  EXPECT_POINT(AcGePoint3d(103, 202, 9), matrix * AcGePoint3d(11, 21, 1), 1e-12);
  AcDbBlockReference other({}, id);
  ASSERT_EQ(other.setBlockTransform(matrix), Acad::eOk);
  EXPECT_POINT(reference.position(), other.position(), 1e-12);
  EXPECT_NEAR(other.rotation(), kPi / 2, 1e-12);
  EXPECT_NEAR(other.scaleFactors().sy, -3, 1e-12);
  EXPECT_EQ(other.setBlockTransform(AcGeMatrix3d::scaling(AcGeScale3d(1, 0, 1))), Acad::eInvalidInput);
  EXPECT_EQ(other.setScaleFactors({1, 0, 1}), Acad::eInvalidInput);
}

TEST_F(BlockReference, ExtentsSeeBlocksWithinBlocksAndVisibleAttributes) {
  const AcDbObjectId inner = block(db, L"INNER", {1, 0, 0});
  addTo(inner, new AcDbLine({1, 0, 0}, {3, 0, 0}));
  auto* hidden = new AcDbLine({0, 0, 0}, {900, 0, 0});
  hidden->setVisibility(AcDb::kInvisible);
  addTo(inner, hidden);
  addTo(inner, new AcDbAttributeDefinition({500, 0, 0}, L"x", L"TAG", L""));
  const AcDbObjectId outer = block(db, L"OUTER");
  auto* nested = new AcDbBlockReference({10, 0, 0}, inner);
  nested->setRotation(kPi / 4);
  addTo(outer, nested);
  addTo(outer, new AcDbBlockReference({0, 0, 0}, outer));  // shows itself
  AcDbBlockReference* reference = insert(outer, {100, 100, 0});
  AcDbExtents box;
  ASSERT_EQ(reference->getGeomExtents(box), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(110, 100, 0), box.minPoint(), 1e-9);
  EXPECT_POINT(AcGePoint3d(110 + std::sqrt(2), 100 + std::sqrt(2), 0), box.maxPoint(), 1e-9);
  attribute(reference, L"Z", L"AB", {200, 90, 0});
  const AcDbObjectId invisible = attribute(reference, L"CODE", L"AB", {900, 900, 0});
  AcDbObjectPointer<AcDbAttribute>(invisible, AcDb::kForWrite)->setInvisible(true);
  ASSERT_EQ(reference->getGeomExtents(box), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(110, 90, 0), box.minPoint(), 1e-9);
  EXPECT_NEAR(box.maxPoint().x, 203.758, 1e-9);
  EXPECT_EQ(insert(block(db, L"EMPTY"))->getGeomExtents(box), Acad::eInvalidExtents);
  EXPECT_EQ(AcDbBlockReference().getGeomExtents(box), Acad::eInvalidExtents);
}

// Thirty levels that each show the next one twice would be a thousand million entities.
TEST_F(BlockReference, ExtentsOfDeepNestingStaySwift) {
  AcDbObjectId last = block(db, L"B0");
  addTo(last, new AcDbLine({0, 0, 0}, {1, 1, 0}));
  for (int i = 1; i <= 1000; ++i) {
    const AcDbObjectId next = block(db, (L"B" + std::to_wstring(i)).c_str());
    addTo(next, new AcDbBlockReference({0, 0, 0}, last));
    addTo(next, new AcDbBlockReference({i <= 30 ? 1.0 : 0.0, 0, 0}, last));
    if (i == 30) {
      AcDbExtents box;
      ASSERT_EQ(insert(next)->getGeomExtents(box), Acad::eOk);
      EXPECT_POINT(AcGePoint3d(31, 1, 0), box.maxPoint(), 1e-9);
    }
    last = next;
  }
  AcDbExtents box;
  EXPECT_EQ(insert(last)->getGeomExtents(box), Acad::eInvalidExtents);  // deeper than is followed
}

TEST_F(BlockReference, RowsAndColumnsWidenTheExtents) {
  const AcDbObjectId id = block(db, L"B");
  addTo(id, new AcDbLine({0, 0, 0}, {1, 1, 0}));
  db.undoLog().clear();
  const auto grid = read(
      db, "INSERT",
      "100 AcDbEntity|8 0|100 AcDbBlockReference|2 B|10 0.0|20 0.0|30 0.0|50 90.0|70 3|71 2|44 10.0|45 5.0");
  AcDbExtents box;
  ASSERT_EQ(grid->getGeomExtents(box), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-6, 0, 0), box.minPoint(), 1e-9);
  EXPECT_POINT(AcGePoint3d(0, 21, 0), box.maxPoint(), 1e-9);
}

TEST_F(BlockReference, AttributeTakesAfterItsDefinition) {
  AcDbAttributeDefinition definition({1, 2, 0}, L"0.00", L"Z", L"Altitude");
  definition.setHeight(0.5);
  definition.setInvisible(true);
  definition.setHorizontalMode(AcDb::kTextRight);
  definition.setAlignmentPoint({3, 2, 0});
  definition.setColorIndex(3);
  AcDbBlockReference reference({100, 100, 0}, block(db, L"B"));
  reference.setScaleFactors(AcGeScale3d(4));
  reference.setRotation(kPi / 2);
  AcDbAttribute attribute;
  ASSERT_EQ(attribute.setAttributeFromBlock(&definition, reference.blockTransform()), Acad::eOk);
  EXPECT_EQ(attribute.tag(), L"Z");
  EXPECT_EQ(attribute.textString(), L"0.00");
  EXPECT_TRUE(attribute.isInvisible());
  EXPECT_EQ(attribute.colorIndex(), 3);
  EXPECT_NEAR(attribute.height(), 2, 1e-12);
  EXPECT_NEAR(attribute.rotation(), kPi / 2, 1e-12);
  EXPECT_POINT(AcGePoint3d(92, 112, 0), attribute.alignmentPoint(), 1e-9);
  reference.setScaleFactors({8, 4, 1});  // wider than high: the width factor takes it
  ASSERT_EQ(attribute.setAttributeFromBlock(&definition, reference.blockTransform()), Acad::eOk);
  EXPECT_NEAR(attribute.height(), 2, 1e-12);
  EXPECT_NEAR(attribute.widthFactor(), 2, 1e-12);
  EXPECT_EQ(attribute.setAttributeFromBlock(nullptr, {}), Acad::eNullObjectPointer);
}

}  // namespace
