#include "arx/db/dbclone.h"
#include "arx/db/dbexplode.h"
#include "arx/db/dbmirror.h"
#include "arx/ent_support.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ent_test;

class OfEachKind : public ::testing::TestWithParam<CaseRow> {
protected:
  OfEachKind() {
    const AcDbObjectId id = block(db, L"BLK");
    addTo(id, new AcDbLine({0, 0, 0}, {1, 2, 3}));
  }
  AcDbObjectId made() {
    return addTo(db.modelSpaceId(), read(db, GetParam()[1], "100 AcDbEntity|8 0|" + GetParam()[2]).release());
  }
  AcDbDatabase db;
};

std::string withoutHandle(const std::string& groups) { return groups.substr(groups.find('|')); }

// A copy is written as the original but for its handle, and goes where it is sent while the original stays.
TEST_P(OfEachKind, IsCopied) {
  const AcDbObjectId id = made();
  const std::vector<AcDbObjectId> copies = acdbCopyEntities({id});
  ASSERT_EQ(copies.size(), 1U);
  const AcDbObjectPointer<AcDbEntity> original(id);
  const AcDbObjectPointer<AcDbEntity> copy(copies[0], AcDb::kForWrite);
  ASSERT_TRUE(copy);
  EXPECT_NE(copies[0], id);
  EXPECT_EQ(copy->ownerId(), original->ownerId());
  const std::string before = written(*original);
  EXPECT_EQ(withoutHandle(written(*copy)), withoutHandle(before));
  ASSERT_EQ(copy->transformBy(AcGeMatrix3d::translation({1024, -2048, 0.5})), Acad::eOk);
  EXPECT_EQ(written(*original), before);
}

// The reflected look, texts readable: their boxes are those of the reflection, at any slope of the axis.
TEST_P(OfEachKind, IsMirroredReadable) {
  const struct {
    AcGePoint3d a, b;
  } axes[] = {{{0, 0, 0}, {0, 5, 0}}, {{1, 2, 7}, {9, 2, 0}}, {{650000, 6860000, 0}, {650003, 6860003, 0}}};
  for (const auto& axis : axes) {
    const AcDbObjectId id = made();
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    const AcGeMatrix3d mirror = acdbMirrorMatrix(axis.a, axis.b);
    EXPECT_POINT(axis.b, mirror * axis.b, 1e-8);
    EXPECT_NEAR(mirror.det(), -1.0, 1e-12);
    AcDbExtents predicted, seen;
    entity->addExtentsUnder(mirror, predicted);
    ASSERT_EQ(acdbMirror(*entity, mirror, true), Acad::eOk);
    if (entity->getGeomExtents(seen) != Acad::eOk) continue;
    const AcGePoint3d middle = predicted.minPoint() + (predicted.maxPoint() - predicted.minPoint()) * 0.5;
    EXPECT_POINT(middle, seen.minPoint() + (seen.maxPoint() - seen.minPoint()) * 0.5, 2e-8);
    // This text leans to the same side as before.
    if (GetParam()[1] != "TEXT") {
      EXPECT_POINT(predicted.minPoint(), seen.minPoint(), 2e-8);
    }
    const AcDbText* text = AcDbText::cast(entity.object());
    EXPECT_FALSE(text && (text->isMirroredInX() || text->isMirroredInY()));
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, OfEachKind,
                         ::testing::ValuesIn(caseRows("arx/cases/entities.txt", "one of each kind", ';')));

// Attributes and vertices belong to the copy alone; what copies refer to is copied when it goes along; a
// group keeps its members.
TEST(Copies, OwnTheirParts) {
  AcDbDatabase db;
  const AcDbObjectId blk = block(db, L"BLK");
  addTo(blk, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1));
  const AcDbObjectId insert = addTo(db.modelSpaceId(), new AcDbBlockReference({5, 5, 0}, blk));
  const AcDbObjectId spatial = addTo(db.modelSpaceId(), new AcDb3dPolyline);
  {
    const AcDbObjectPointer<AcDbBlockReference> open(insert, AcDb::kForWrite);
    auto* attribute = new AcDbAttribute({5, 6, 0}, L"12", L"NUM");
    open->appendAttribute(attribute);
    attribute->close();
    const AcDbObjectPointer<AcDb3dPolyline> poly(spatial, AcDb::kForWrite);
    for (const double x : {0.0, 10.0}) {
      AcDbObjectId id;
      auto* vertex = new AcDb3dPolylineVertex({x, 0, x});
      poly->appendVertex(id, vertex);
      vertex->close();
    }
    poly->createExtensionDictionary();
    const AcDbObjectPointer<AcDbDictionary> dictionary(poly->extensionDictionary(), AcDb::kForWrite);
    auto* record = new AcDbXrecord;
    AcDbObjectId id;
    dictionary->setAt(L"NOTE", record, id);
    DxfTagText tags;
    tags.appendHandle(330, insert.handle());
    record->setTags(tags);
    record->close();
  }
  const std::vector<AcDbObjectId> copies = acdbCopyEntities({insert, spatial});
  for (const AcDbObjectId id : copies) {
    const AcDbObjectPointer<AcDbEntity> copy(id, AcDb::kForWrite);
    ASSERT_EQ(copy->transformBy(AcGeMatrix3d::translation({100, 0, 0})), Acad::eOk);
  }
  const auto firstPart = [](AcDbObjectId id) {
    return AcDbObjectPointer<AcDbEntity>(id)->subEntityOwner()->subEntityIds().front();
  };
  EXPECT_EQ(AcDbObjectPointer<AcDbAttribute>(firstPart(insert))->position().x, 5);
  EXPECT_EQ(AcDbObjectPointer<AcDbAttribute>(firstPart(copies[0]))->position().x, 105);
  EXPECT_EQ(AcDbObjectPointer<AcDb3dPolylineVertex>(firstPart(spatial))->position().x, 0);
  EXPECT_EQ(AcDbObjectPointer<AcDb3dPolylineVertex>(firstPart(copies[1]))->position().x, 100);
  const AcDbObjectId dictionary = AcDbObjectPointer<AcDbEntity>(copies[1])->extensionDictionary();
  const AcDbObjectPointer<AcDbDictionary> notes(dictionary);
  AcDbXrecord* note = nullptr;
  ASSERT_EQ(notes->getAt(L"NOTE", note), Acad::eOk);
  DxfTagText wanted;
  wanted.appendHandle(330, copies[0].handle());
  EXPECT_EQ(note->tags().text(), wanted.text());
  note->close();
  erase(copies[0]);
  EXPECT_TRUE(firstPart(insert).isLive());
}

TEST(Explosion, StopsAtABlockThatHoldsItself) {
  AcDbDatabase db;
  const AcDbObjectId blk = block(db, L"BLK");
  addTo(blk, new AcDbLine({0, 0, 0}, {1, 0, 0}));
  addTo(blk, new AcDbBlockReference({1, 0, 0}, blk));
  const AcDbObjectId insert = addTo(db.modelSpaceId(), new AcDbBlockReference({10, 20, 0}, blk));
  std::vector<AcDbObjectId> parts;
  ASSERT_EQ(acdbExplode(insert, parts), Acad::eOk);
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_POINT(AcGePoint3d(11, 20, 0), AcDbObjectPointer<AcDbBlockReference>(parts[1])->position(), 1e-12);
}

// Under unequal scales circles and arcs become ellipses, which lie on the mapped points and run as far.
TEST(Explosion, MakesEllipsesOfWhatIsSqueezed) {
  AcDbDatabase db;
  const AcDbObjectId blk = block(db, L"BLK");
  const AcGePoint3d center(3, 4, 0);
  addTo(blk, new AcDbCircle(center, {0, 0, 1}, 2.0));
  addTo(blk, new AcDbArc(center, {0, 0, 1}, 2.0, 0.5, 2.0));
  const AcDbObjectId insert = addTo(db.modelSpaceId(), new AcDbBlockReference({652000, 6862000, 0}, blk));
  AcGeMatrix3d matrix;
  {
    const AcDbObjectPointer<AcDbBlockReference> reference(insert, AcDb::kForWrite);
    reference->setScaleFactors({3.0, -0.5, 1.0});
    reference->setRotation(0.7);
    matrix = reference->blockTransform();
  }
  std::vector<AcDbObjectId> parts;
  ASSERT_EQ(acdbExplode(insert, parts), Acad::eOk);
  ASSERT_EQ(parts.size(), 2U);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const AcDbObjectPointer<AcDbEllipse> ellipse(parts[i]);
    ASSERT_TRUE(ellipse);
    EXPECT_EQ(ellipse->isClosed(), i == 0);
    for (const double angle : {0.5, 1.1, 2.0}) {
      const AcGePoint3d mapped =
          matrix * AcGePoint3d(center.x + 2 * std::cos(angle), center.y + 2 * std::sin(angle), 0);
      AcGePoint3d near;
      ASSERT_EQ(ellipse->getClosestPointTo(mapped, near), Acad::eOk);
      EXPECT_POINT(mapped, near, 1e-7);
    }
  }
  const AcDbObjectPointer<AcDbEllipse> arc(parts[1]);
  AcGePoint3d start, end;
  arc->getStartPoint(start);
  arc->getEndPoint(end);
  const AcGePoint3d first =
      matrix * AcGePoint3d(center.x + 2 * std::cos(0.5), center.y + 2 * std::sin(0.5), 0);
  const AcGePoint3d last =
      matrix * AcGePoint3d(center.x + 2 * std::cos(2.0), center.y + 2 * std::sin(2.0), 0);
  const bool along = start.distanceTo(first) < 1e-7 && end.distanceTo(last) < 1e-7;
  const bool back = start.distanceTo(last) < 1e-7 && end.distanceTo(first) < 1e-7;
  EXPECT_TRUE(along || back);  // a mirrored block turns the way round
}

// Lines and arcs lie where the polyline lay, on either side of its plane.
TEST(Explosion, OfACurveCoversIt) {
  for (const double side : {1.0, -1.0}) {
    AcDbDatabase db;
    auto drawn = polyline({{0, 0, 0.5}, {10, 0, -1}, {10, 10, 0}, {10, 10, 0}, {0, 10, 0}}, true);
    drawn->setNormal({0, 0, side});
    drawn->setElevation(3);
    const AcDbObjectId id = addTo(db.modelSpaceId(), drawn.release());
    std::vector<AcDbObjectId> parts;
    ASSERT_EQ(acdbExplode(id, parts), Acad::eOk);
    EXPECT_EQ(parts.size(), 4U);  // none for the doubled vertex
    const AcDbObjectPointer<AcDbPolyline> whole(id);
    double sum = 0;
    for (const AcDbObjectId part : parts) {
      const AcDbObjectPointer<AcDbCurve> curve(part);
      double start = 0, end = 0, length = 0;
      curve->getStartParam(start);
      curve->getEndParam(end);
      curve->getDistAtParam(end, length);
      sum += length;
      for (const double share : {0.0, 0.3, 1.0}) {
        AcGePoint3d on, near;
        ASSERT_EQ(curve->getPointAtParam(start + (end - start) * share, on), Acad::eOk);
        whole->getClosestPointTo(on, near);
        EXPECT_POINT(on, near, 1e-9);
      }
    }
    double end = 0, length = 0;
    whole->getEndParam(end);
    whole->getDistAtParam(end, length);
    EXPECT_NEAR(sum, length, 1e-9);
  }
}

}  // namespace
