#include "arx/db/dbmain.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

/// A drawing with one layer "A", nothing open and nothing to undo.
struct OpenTest : testing::Test {
  AcDbDatabase db{false};
  AcDbObjectId layer;

  void SetUp() override {
    layer = db.recordOf("LAYER", L"A");
    db.undoLog().clear();
  }
};

TEST_F(OpenTest, ModesClashAsAHostsDo) {
  struct Row {
    const char* name;
    AcDb::OpenMode first;
    AcDb::OpenMode second;
    Acad::ErrorStatus expected;
  };
  const Row rows[] = {
      {"read read", AcDb::kForRead, AcDb::kForRead, Acad::eOk},
      {"read write", AcDb::kForRead, AcDb::kForWrite, Acad::eWasOpenForRead},
      {"write read", AcDb::kForWrite, AcDb::kForRead, Acad::eWasOpenForWrite},
      {"write write", AcDb::kForWrite, AcDb::kForWrite, Acad::eWasOpenForWrite},
  };
  for (const Row& row : rows) {
    AcDbObjectPointer<AcDbLayerTableRecord> first(layer, row.first);
    ASSERT_EQ(first.openStatus(), Acad::eOk) << row.name;
    AcDbObjectPointer<AcDbLayerTableRecord> second(layer, row.second);
    EXPECT_EQ(second.openStatus(), row.expected) << row.name;
    EXPECT_EQ(second.object() != nullptr, row.expected == Acad::eOk) << row.name;
  }
  AcDbObjectPointer<AcDbLayerTableRecord> last(layer, AcDb::kForWrite);
  EXPECT_EQ(last.openStatus(), Acad::eOk) << "the scopes have closed everything";
}

TEST_F(OpenTest, OpeningRefusesWhatIsNotThere) {
  AcDbObject* object = nullptr;
  EXPECT_EQ(acdbOpenObject(object, AcDbObjectId()), Acad::eNullObjectId);
  EXPECT_EQ(acdbOpenObject(object, db.idOf(0x7777)), Acad::eUnknownHandle);
  AcDbXrecord* record = nullptr;
  EXPECT_EQ(acdbOpenObject(record, layer), Acad::eNotThatKindOfClass);
  AcDbObjectPointer<AcDbLayerTableRecord> writer(layer, AcDb::kForWrite);
  EXPECT_EQ(writer.openStatus(), Acad::eOk) << "the failed opening has left it closed";
}

TEST_F(OpenTest, SettersNeedTheWriteMode) {
  AcDbObjectPointer<AcDbLayerTableRecord> open(layer, AcDb::kForRead);
  EXPECT_EQ(open->setIsOff(true), Acad::eNotOpenForWrite);
  EXPECT_FALSE(open->isOff());
  EXPECT_EQ(open->erase(), Acad::eNotOpenForWrite);
  EXPECT_EQ(open->createExtensionDictionary(), Acad::eNotOpenForWrite);
  {
    AcDbObjectPointer<AcDbLayerTableRecord> other(layer, AcDb::kForRead);
    EXPECT_EQ(open->upgradeOpen(), Acad::eWasOpenForRead);
  }
  EXPECT_EQ(open->upgradeOpen(), Acad::eOk);
  EXPECT_EQ(open->setIsOff(true), Acad::eOk);
  EXPECT_EQ(open->downgradeOpen(), Acad::eOk);
  EXPECT_EQ(open->setIsOff(false), Acad::eNotOpenForWrite);
}

TEST_F(OpenTest, AnErasedObjectOpensOnlyOnDemand) {
  AcDbObjectPointer<AcDbLayerTableRecord> open(layer, AcDb::kForWrite);
  ASSERT_EQ(open->createExtensionDictionary(), Acad::eOk);
  EXPECT_EQ(open->createExtensionDictionary(), Acad::eAlreadyInDb);
  const AcDbObjectId dictionary = open->extensionDictionary();
  ASSERT_EQ(open->erase(), Acad::eOk);
  EXPECT_EQ(open->erase(), Acad::eWasErased);
  open.close();
  EXPECT_TRUE(dictionary.isErased()) << "it belongs to the layer";
  EXPECT_EQ(open.open(layer, AcDb::kForRead), Acad::eWasErased);
  ASSERT_EQ(open.open(layer, AcDb::kForWrite, true), Acad::eOk);
  EXPECT_EQ(open->erase(false), Acad::eOk);
  EXPECT_TRUE(dictionary.isLive());
}

TEST_F(OpenTest, ArbitraryNamesNameNothing) {
  ads_name good;
  ASSERT_EQ(acdbGetAdsName(good, layer), Acad::eOk);
  AcDbObjectId id;
  EXPECT_EQ(acdbGetObjectId(id, good), Acad::eOk);
  EXPECT_EQ(id, layer);
  const ads_name bad[] = {{0, 0}, {1, 1}, {-1, -1}, {good[0], 0}, {good[0] + 8, good[1]}, {good[1], good[0]}};
  for (const ads_name& name : bad) {
    EXPECT_EQ(acdbGetObjectId(id, name), Acad::eInvalidInput);
    EXPECT_TRUE(id.isNull());
  }
  ads_name gone;
  {
    AcDbDatabase other(false);
    acdbGetAdsName(gone, other.recordOf("LAYER", L"B"));
  }
  EXPECT_NE(acdbGetObjectId(id, gone), Acad::eOk) << "its drawing is closed";
}

TEST_F(OpenTest, ADatabaseTakesAnObjectOnce) {
  AcDbObjectId id;
  auto* record = new AcDbXrecord;
  ASSERT_EQ(db.addAcDbObject(id, record), Acad::eOk);
  EXPECT_TRUE(record->isWriteEnabled()) << "the caller closes it";
  record->close();
  EXPECT_EQ(db.addAcDbObject(id, record), Acad::eAlreadyInDb);
  const auto second = std::make_unique<AcDbXrecord>();
  EXPECT_EQ(db.addWithHandle(id, second.get(), record->handle()), Acad::eDuplicateKey);
  EXPECT_EQ(db.addWithHandle(id, second.get(), AcDbHandle()), Acad::eInvalidInput);
  EXPECT_LE(sizeof(AcDbObject), 48u);
}

TEST_F(OpenTest, HandlesGivenByFilesAreNotGivenAgain) {
  const AcDbHandle seed = db.handseed();
  const AcDbObjectId awaited = db.idOf(seed);  // a file refers to it before it comes
  AcDbObjectId fresh;
  auto* record = new AcDbXrecord;
  db.addAcDbObject(fresh, record);
  record->close();
  EXPECT_NE(fresh, awaited);
  AcDbObjectId late;
  ASSERT_EQ(db.addWithHandle(late, new AcDbXrecord, seed), Acad::eOk);
  EXPECT_EQ(late, awaited);
  db.setHandseed(1);
  EXPECT_GT(db.handseed(), fresh.handle());
}

TEST_F(OpenTest, TheHighestHandleOfAFileDoesNotEndTheCount) {
  AcDbObjectId id;
  ASSERT_EQ(db.addWithHandle(id, new AcDbXrecord, 0xFFFFFFFFFFFFFFFE), Acad::eOk);
  for (int i = 0; i < 3; ++i) {
    auto* record = new AcDbXrecord;
    ASSERT_EQ(db.addAcDbObject(id, record), Acad::eOk) << i;
    record->close();
  }
  EXPECT_LT(id.handle(), 100u);
}

TEST(DatabaseSize, SixHundredThousandObjectsAreAllFound) {
  AcDbDatabase db(false);
  db.reserve(600000);
  db.undoLog().setRecording(false);
  for (Adesk::UInt64 handle = 600000; handle > 0; --handle) {
    AcDbObjectId id;
    ASSERT_EQ(db.addWithHandle(id, new AcDbXrecord, handle), Acad::eOk);
  }
  const std::vector<AcDbObjectId> all = db.allObjects();
  ASSERT_EQ(all.size(), 600000u);
  for (std::size_t i = 0; i < all.size(); ++i) ASSERT_EQ(all[i].handle(), i + 1);
}

}  // namespace
