#include "arx/db/dbmain.h"
#include "base/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

namespace {

/// A drawing with a layer table and a dictionary, and shorthands for what commands do.
struct UndoTest : testing::Test {
  AcDbDatabase db{false};
  AcDbUndoLog& log = db.undoLog();
  AcDbObjectId table;
  AcDbObjectId dictionary;

  void SetUp() override {
    table = db.ensureTable("LAYER");
    AcDbDictionary* named = nullptr;
    db.getNamedObjectsDictionary(named);
    dictionary = named->objectId();
    named->close();
    log.begin(L"close");  // what was made outside of a command is a step
    log.end();
    log.clear();
    db.setModified(false);
  }

  AcDbObjectId layerOf(const ACHAR* name) const {
    AcDbObjectId id;
    AcDbObjectPointer<AcDbLayerTable>(table)->getAt(name, id);
    return id;
  }
  AcDbObjectId make(const ACHAR* name) {
    AcDbObjectPointer<AcDbLayerTable> open(table, AcDb::kForWrite);
    auto record = std::make_unique<AcDbLayerTableRecord>();
    record->setName(name);
    AcDbObjectId id;
    if (open->add(id, record.get()) == Acad::eOk) record.release()->close();
    return id;
  }
  static void off(AcDbObjectId id, bool value) {
    AcDbObjectPointer<AcDbLayerTableRecord>(id, AcDb::kForWrite)->setIsOff(value);
  }
  static bool isOff(AcDbObjectId id) { return AcDbObjectPointer<AcDbLayerTableRecord>(id)->isOff(); }
  static void rename(AcDbObjectId id, const ACHAR* name) {
    EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(id, AcDb::kForWrite)->setName(name), Acad::eOk);
  }
  static void erase(AcDbObjectId id) { AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite)->erase(); }
  AcDbObjectId put(const ACHAR* key) {
    AcDbObjectPointer<AcDbDictionary> open(dictionary, AcDb::kForWrite);
    auto* record = new AcDbXrecord;
    AcDbObjectId id;
    EXPECT_EQ(open->setAt(key, record, id), Acad::eOk);
    record->close();
    return id;
  }
  AcDbObjectId at(const ACHAR* key) const {
    AcDbObjectId id;
    AcDbObjectPointer<AcDbDictionary>(dictionary)->getAt(key, id);
    return id;
  }
  template <class Action>
  void step(const ACHAR* name, Action action) {
    log.begin(name);
    action();
    log.end();
  }
};

TEST_F(UndoTest, CreationChangeAndErasureGoBackAndForth) {
  AcDbObjectId id;
  step(L"CREE", [&] { id = make(L"A"); });
  step(L"CHANGE", [&] { off(id, true), off(id, true); });
  step(L"EFFACE", [&] { erase(id); });
  EXPECT_TRUE(layerOf(L"A").isNull());
  EXPECT_EQ(log.undo(), L"EFFACE");
  EXPECT_EQ(layerOf(L"a"), id);
  EXPECT_TRUE(isOff(id));
  EXPECT_EQ(log.undo(), L"CHANGE");
  EXPECT_FALSE(isOff(id));
  EXPECT_EQ(log.undo(), L"CREE");
  EXPECT_TRUE(layerOf(L"A").isNull());
  EXPECT_EQ(log.undo(), L"");
  for (const ACHAR* name : {L"CREE", L"CHANGE", L"EFFACE"}) EXPECT_EQ(log.redo(), name);
  EXPECT_EQ(log.redo(), L"");
  EXPECT_TRUE(id.isErased());
  log.undo();
  EXPECT_TRUE(isOff(id)) << "the second round gives the same states";
}

TEST_F(UndoTest, NamesOfUndoneRecordsAreFreeAndComeBack) {
  AcDbObjectId first;
  AcDbObjectId second;
  step(L"1", [&] { first = make(L"A"); });
  step(L"2", [&] { rename(first, L"B"); });
  step(L"3", [&] { second = make(L"A"); });
  EXPECT_TRUE(make(L"b").isNull()) << "taken, whatever the case";
  step(L"4", [&] { erase(second), rename(first, L"A"); });
  EXPECT_EQ(layerOf(L"A"), first);
  log.undo();
  EXPECT_EQ(layerOf(L"A"), second);
  EXPECT_EQ(layerOf(L"B"), first);
  log.undo();
  EXPECT_TRUE(layerOf(L"A").isNull());
  log.undo();
  EXPECT_EQ(layerOf(L"A"), first);
  EXPECT_TRUE(layerOf(L"B").isNull());
  for (int i = 0; i < 3; ++i) log.redo();
  EXPECT_EQ(layerOf(L"A"), first);
  EXPECT_TRUE(layerOf(L"B").isNull());
  EXPECT_EQ(AcDbObjectPointer<AcDbLayerTable>(table)->records().size(), 1u);
}

TEST_F(UndoTest, ReplacedAndRemovedEntriesOfADictionaryComeBack) {
  AcDbObjectId first;
  AcDbObjectId second;
  step(L"1", [&] { first = put(L"CLE"); });
  step(L"2", [&] { second = put(L"cle"); });
  EXPECT_TRUE(first.isErased()) << "replaced";
  step(L"3", [&] { AcDbObjectPointer<AcDbDictionary>(dictionary, AcDb::kForWrite)->remove(L"CLE"); });
  EXPECT_TRUE(at(L"CLE").isNull());
  EXPECT_TRUE(second.isErased());
  log.undo();
  EXPECT_EQ(at(L"CLE"), second);
  log.undo();
  EXPECT_EQ(at(L"CLE"), first);
  EXPECT_TRUE(second.isErased());
  log.undo();
  EXPECT_TRUE(at(L"CLE").isNull());
  log.redo(), log.redo();
  EXPECT_EQ(at(L"CLE"), second);
  EXPECT_EQ(AcDbObjectPointer<AcDbDictionary>(dictionary)->numEntries(), 1u);
}

TEST_F(UndoTest, AFailedCommandInAGroupIsTakenBackAlone) {
  AcDbObjectId id;
  log.begin(L"GROUPE");
  id = make(L"A");
  log.begin(L"ECHEC");
  off(id, true);
  make(L"B");
  log.rollBack();
  EXPECT_FALSE(isOff(id));
  EXPECT_TRUE(layerOf(L"B").isNull());
  EXPECT_EQ(layerOf(L"A"), id);
  step(L"REUSSI", [&] { off(id, true); });
  log.end();
  EXPECT_TRUE(isOff(id));
  EXPECT_EQ(log.undo(), L"GROUPE");
  EXPECT_TRUE(layerOf(L"A").isNull());
  EXPECT_FALSE(log.canUndo()) << "one step for the whole group";
  log.redo();
  EXPECT_TRUE(isOff(id));
}

TEST_F(UndoTest, ObjectsMadeInARowComeAndGoByLevels) {
  const auto add = [this] {
    AcDbObjectId id;
    EXPECT_EQ(db.addAcDbObject(id, new AcDbXrecord), Acad::eOk);
    id.stub()->object->close();
    return id;
  };
  log.begin(L"GROUPE");
  const AcDbObjectId first = add();
  const AcDbObjectId second = add();
  db.setModified(false);  // as a save in the middle of a command
  const AcDbObjectId third = add();
  EXPECT_TRUE(db.isModified());
  log.begin(L"ECHEC");
  const AcDbObjectId failed = add();
  log.rollBack();
  EXPECT_TRUE(failed.isErased());
  EXPECT_TRUE(first.isLive() && second.isLive() && third.isLive());
  const AcDbObjectId last = add();
  AcDbDatabase other(false);
  AcDbObjectId elsewhere;  // another drawing's object with the next handle
  ASSERT_EQ(other.addWithHandle(elsewhere, new AcDbXrecord, last.handle() + 1), Acad::eOk);
  log.end();
  log.undo();
  for (const AcDbObjectId id : {first, second, third, failed, last}) EXPECT_TRUE(id.isErased());
  EXPECT_TRUE(elsewhere.isLive());
  log.redo();
  for (const AcDbObjectId id : {first, second, third, last}) EXPECT_TRUE(id.isLive());
  EXPECT_TRUE(failed.isErased());
}

TEST_F(UndoTest, ARolledBackStepLeavesWhatCanBeRedone) {
  AcDbObjectId id;
  step(L"1", [&] { id = make(L"A"); });
  log.undo();
  log.begin(L"ECHEC");
  make(L"B");
  EXPECT_EQ(log.undo(), L"") << "not in the middle of a command that changed something";
  log.rollBack();
  EXPECT_EQ(log.depth(), 0);
  EXPECT_EQ(log.redo(), L"1");
  EXPECT_EQ(layerOf(L"A"), id);
}

TEST_F(UndoTest, ANewStepDropsWhatCouldBeRedoneAndAnEmptyOneVanishes) {
  step(L"1", [&] { make(L"A"); });
  log.undo();
  step(L"VIDE", [] {});
  EXPECT_TRUE(log.canRedo());
  step(L"2", [&] { make(L"C"); });
  EXPECT_FALSE(log.canRedo());
  EXPECT_EQ(log.undo(), L"2");
  EXPECT_EQ(log.undo(), L"");
}

TEST_F(UndoTest, ChangesBetweenCommandsJoinInOneStep) {
  const AcDbObjectId id = make(L"A");
  off(id, true);
  EXPECT_TRUE(log.canUndo());
  step(L"CHANGE", [&] { off(id, false); });
  EXPECT_EQ(log.undo(), L"CHANGE");
  EXPECT_TRUE(isOff(id));
  log.undo();
  EXPECT_TRUE(layerOf(L"A").isNull());
  EXPECT_FALSE(log.canUndo());
}

TEST_F(UndoTest, AStepThatJoinsTheFormerOneGoesBackAndForthWithIt) {
  log.begin(L"first");
  make(L"A");
  log.end();
  log.begin(L"save");
  make(L"B");
  log.joinFormer();
  log.end();
  EXPECT_EQ(log.undo(), L"first");
  EXPECT_TRUE(layerOf(L"A").isNull() && layerOf(L"B").isNull());
  EXPECT_FALSE(log.canUndo());
  EXPECT_EQ(log.redo(), L"first");
  EXPECT_FALSE(layerOf(L"A").isNull() || layerOf(L"B").isNull());
}

TEST_F(UndoTest, RaritiesAndHeaderVariablesGoBackToo) {
  const AcDbObjectId id = make(L"A");
  acdbHostApplicationServices()->setWorkingDatabase(&db);
  ASSERT_EQ(acdbRegApp(L"APP"), Acad::eOk);
  step(L"1", [&] {
    AcDbObjectPointer<AcDbLayerTableRecord> open(id, AcDb::kForWrite);
    resbuf* const chain = acutBuildList(1001, L"APP", 1070, 1, RTNONE);
    EXPECT_EQ(open->setXData(chain), Acad::eOk);
    acutRelRb(chain);
    EXPECT_EQ(open->createExtensionDictionary(), Acad::eOk);
    db.setClayer(id);
    db.setClayer(db.layerZero());
    db.setClayer(id);
  });
  const AcDbObjectId owned = AcDbObjectPointer<AcDbLayerTableRecord>(id)->extensionDictionary();
  EXPECT_EQ(db.clayer(), id);
  log.undo();
  EXPECT_EQ(db.headerText("CLAYER", L"-"), L"-");
  EXPECT_FALSE(AcDbObjectPointer<AcDbLayerTableRecord>(id)->hasXData(L"APP"));
  EXPECT_TRUE(AcDbObjectPointer<AcDbLayerTableRecord>(id)->extensionDictionary().isNull());
  log.redo();
  EXPECT_EQ(db.headerText("CLAYER", L"-"), L"A");
  EXPECT_TRUE(AcDbObjectPointer<AcDbLayerTableRecord>(id)->hasXData(L"app"));
  EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(id)->extensionDictionary(), owned);
}

TEST_F(UndoTest, ModificationIsToldButNotWhileReading) {
  log.setRecording(false);
  const AcDbObjectId id = make(L"A");
  off(id, true);
  log.setRecording(true);
  EXPECT_FALSE(db.isModified());
  EXPECT_FALSE(log.canUndo());
  off(id, false);
  EXPECT_TRUE(db.isModified());
  db.setModified(false);
  log.undo();
  EXPECT_TRUE(db.isModified());
}

TEST_F(UndoTest, FiftyThousandCreationsAreOneStep) {
  log.begin(L"LOT");
  for (int i = 0; i < 50000; ++i) make((L"P" + std::to_wstring(i)).c_str());
  log.end();
  EXPECT_FALSE(layerOf(L"p49999").isNull());
  log.undo();
  EXPECT_TRUE(layerOf(L"P0").isNull());
  EXPECT_TRUE(AcDbObjectPointer<AcDbLayerTable>(table)->records().empty());
  log.redo();
  EXPECT_EQ(AcDbObjectPointer<AcDbLayerTable>(table)->records().size(), 50000u);
}

// Lookups are remembered: after any change, undone or not, they must be those of a walk over the table.
TEST_F(UndoTest, namesAreFoundAsTheyStandAfterEveryChange) {
  const wchar_t* const names[] = {L"A", L"a", L"B", L"C", L"Été", L"0"};
  const auto nameOf = [](AcDbObjectId id) { return AcDbObjectPointer<AcDbLayerTableRecord>(id)->name(); };
  const auto walk = [&](const std::wstring& name) {
    std::vector<AcDbObjectId> found;
    const AcDbObjectPointer<AcDbLayerTable> open(table);
    for (const AcDbObjectId id : open->entries())
      if (id.isLive() && veltora::base::compareNoCase(nameOf(id), name) == 0) found.push_back(id);
    return found;
  };
  std::mt19937 random(7);
  const auto any = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  const auto someLayer = [&] {
    const AcDbObjectPointer<AcDbLayerTable> open(table);
    return open->entries().empty() ? AcDbObjectId() : open->entries()[any(open->entries().size())];
  };
  for (int turn = 0; turn < 3000; ++turn) {
    const wchar_t* const name = names[any(std::size(names))];
    const AcDbObjectId id = someLayer();
    switch (any(7)) {
      case 0:
        if (layerOf(name).isNull()) step(L"new", [&] { make(name); });
        break;
      case 1:
        if (id.isLive())
          step(L"rename",
               [&] { AcDbObjectPointer<AcDbLayerTableRecord>(id, AcDb::kForWrite)->setName(name); });
        break;
      case 2:
      case 3:
        if (!id.isNull())
          step(L"erase",
               [&] { AcDbObjectPointer<AcDbObject>(id, AcDb::kForWrite, true)->erase(!id.isErased()); });
        break;
      case 4:
        if (id.isLive()) step(L"current", [&] { db.setClayer(id); });
        break;
      case 5:
        log.undo();
        break;
      default:
        log.redo();
    }
    for (const wchar_t* const asked : names) {
      const std::vector<AcDbObjectId> right = walk(asked);
      const AcDbObjectId byText = AcDbObjectPointer<AcDbLayerTable>(table)->idOfText(dxfFromWide(asked));
      ASSERT_EQ(layerOf(asked).isNull(), right.empty()) << turn;
      ASSERT_EQ(byText, layerOf(asked)) << turn;
      ASSERT_TRUE(right.empty() || std::ranges::find(right, byText) != right.end()) << turn;
    }
    const std::vector<AcDbObjectId> current = walk(db.headerText("CLAYER", L"0"));
    if (!current.empty()) {
      ASSERT_NE(std::ranges::find(current, db.clayer()), current.end()) << turn;
    }
  }
}

}  // namespace
