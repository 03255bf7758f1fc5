#include "arx/db/dbmain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

TEST(SymbolTable, NamesAreCheckedAndUnique) {
  AcDbDatabase db(false);
  AcDbObjectPointer<AcDbLayerTable> table(db.ensureTable("LAYER"), AcDb::kForWrite);
  struct Row {
    const ACHAR* name;
    Acad::ErrorStatus expected;
  };
  const Row rows[] = {
      {L"Été 1", Acad::eOk},          {L"ÉTÉ 1", Acad::eDuplicateRecordName}, {L"", Acad::eInvalidInput},
      {nullptr, Acad::eInvalidInput}, {L"a/b", Acad::eInvalidInput},          {L"a\\b", Acad::eInvalidInput},
      {L"a:b", Acad::eInvalidInput},  {L"*A", Acad::eInvalidInput},           {L"a|b", Acad::eInvalidInput},
      {L"a`b", Acad::eInvalidInput},  {L"a\nb", Acad::eInvalidInput},         {L"a=b", Acad::eInvalidInput},
      {L"$-_#@.+ (1)", Acad::eOk}};
  for (const Row& row : rows) {
    auto record = std::make_unique<AcDbLayerTableRecord>();
    Acad::ErrorStatus status = record->setName(row.name);
    if (status == Acad::eOk) status = table->add(record.get());
    EXPECT_EQ(status, row.expected) << (row.name ? row.name : L"null");
    if (status == Acad::eOk) record.release()->close();
  }
  EXPECT_EQ(std::make_unique<AcDbBlockTableRecord>()->setName(L"*U1"), Acad::eOk)
      << "blocks may be anonymous";
  const auto style = std::make_unique<AcDbTextStyleTableRecord>();
  style->setName(L"S");
  EXPECT_EQ(table->add(style.get()), Acad::eWrongObjectType);

  AcDbObjectId id;
  ASSERT_EQ(table->getIdAt(L"été 1", id), Acad::eOk);
  AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
  EXPECT_EQ(layer->setName(L"$-_#@.+ (1)"), Acad::eDuplicateRecordName);
  EXPECT_EQ(layer->setName(L"ÉTÉ 1"), Acad::eOk) << "its own name in another case";
  EXPECT_EQ(layer->setName(L"Hiver"), Acad::eOk);
  EXPECT_FALSE(table->has(L"été 1"));
  EXPECT_TRUE(table->has(L"HIVER"));
}

TEST(SymbolTable, IterationSkipsErasedRecords) {
  AcDbDatabase db(false);
  for (const wchar_t* name : {L"A", L"B", L"C"}) ASSERT_FALSE(db.recordOf("LAYER", name).isNull());
  AcDbObjectPointer<AcDbObject>(db.recordOf("LAYER", L"B"), AcDb::kForWrite)->erase();
  AcDbLayerTable* table = nullptr;
  ASSERT_EQ(db.getLayerTable(table), Acad::eOk);
  AcDbSymbolTableIterator* raw = nullptr;
  table->newIterator(raw);
  const std::unique_ptr<AcDbSymbolTableIterator> walk(raw);
  std::wstring names;
  AcDbObjectId id;
  for (; !walk->done(); walk->step()) {
    walk->getRecordId(id);
    names += AcDbObjectPointer<AcDbLayerTableRecord>(id)->name();
  }
  table->close();
  EXPECT_EQ(names, L"AC");
  EXPECT_EQ(walk->getRecordId(id), Acad::eInvalidIndex);
}

TEST(Layer, RefusesWhatItCannotHold) {
  AcDbDatabase db(false);
  AcDbDatabase other(false);
  AcDbObjectPointer<AcDbLayerTableRecord> layer(db.recordOf("LAYER", L"A"), AcDb::kForWrite);
  EXPECT_EQ(layer->setColor(AcCmColor(256)), Acad::eInvalidInput);
  EXPECT_EQ(layer->setColor(AcCmColor(0)), Acad::eInvalidInput);
  EXPECT_EQ(layer->setColor(AcCmColor(255)), Acad::eOk);
  EXPECT_EQ(layer->setLinetypeObjectId(layer->objectId()), Acad::eWrongObjectType);
  EXPECT_EQ(layer->setLinetypeObjectId(AcDbObjectId()), Acad::eWrongObjectType);
  EXPECT_EQ(layer->setLinetypeObjectId(other.continuousLinetype()), Acad::eWrongDatabase);
  EXPECT_EQ(layer->setLinetypeObjectId(db.byLayerLinetype()), Acad::eOk);
  layer->setIsFrozen(true), layer->setIsLocked(true), layer->setIsFrozen(false);
  EXPECT_TRUE(layer->isLocked());
  EXPECT_FALSE(layer->isFrozen());
}

TEST(Database, CurrentLayerAndStyleFollowTheDrawing) {
  AcDbDatabase db(false);
  AcDbDatabase other(false);
  const AcDbObjectId zero = db.clayer();
  EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(zero)->name(), L"0") << "made when missing";
  const AcDbObjectId layer = db.recordOf("LAYER", L"Voie n°1");
  EXPECT_EQ(db.setClayer(layer), Acad::eOk);
  EXPECT_EQ(db.clayer(), layer);
  EXPECT_EQ(db.setClayer(other.layerZero()), Acad::eWrongDatabase);
  EXPECT_EQ(db.setClayer(db.textstyle()), Acad::eWrongObjectType);
  EXPECT_EQ(db.setTextstyle(layer), Acad::eWrongObjectType);
  AcDbObjectPointer<AcDbObject>(layer, AcDb::kForWrite)->erase();
  EXPECT_EQ(db.setClayer(layer), Acad::eNullObjectId);
  EXPECT_EQ(db.clayer(), zero) << "the current one is gone";
}

TEST(Database, HeaderVariablesAreAddedAndReplaced) {
  AcDbDatabase db(false);
  DxfTagText value;
  value.appendReal(40, 2.5);
  db.setHeader("TEXTSIZE", value);
  EXPECT_EQ(db.headerReal("TEXTSIZE", 1.0), 2.5);
  value.clear();
  value.append(40, "abc");
  db.setHeader("TEXTSIZE", value);
  EXPECT_EQ(db.headerReal("TEXTSIZE", 1.0), 1.0) << "no number";
  EXPECT_EQ(db.headers().size(), 1u);
  EXPECT_FALSE(db.header("textsize", value)) << "names are exact";
}

TEST(Dictionary, KeysKeepOrderAndSpellingAndMatchInAnyCase) {
  AcDbDatabase db(false);
  AcDbDictionary* dictionary = nullptr;
  ASSERT_EQ(db.getNamedObjectsDictionary(dictionary, AcDb::kForWrite), Acad::eOk);
  AcDbObjectId id;
  for (const wchar_t* key : {L"Zone", L"Été", L"a"}) {
    auto* record = new AcDbXrecord;
    ASSERT_EQ(dictionary->setAt(key, record, id), Acad::eOk);
    EXPECT_EQ(record->ownerId(), dictionary->objectId());
    record->close();
  }
  EXPECT_TRUE(dictionary->has(L"ÉTÉ"));
  EXPECT_EQ(dictionary->remove(L"zone"), Acad::eOk);
  EXPECT_EQ(dictionary->remove(L"zone"), Acad::eKeyNotFound);
  EXPECT_TRUE(dictionary->has(L"A")) << "behind the removed one";
  const auto unused = std::make_unique<AcDbXrecord>();
  EXPECT_EQ(dictionary->setAt(L"", unused.get(), id), Acad::eInvalidKey);
  EXPECT_EQ(dictionary->setAt(L"x", nullptr, id), Acad::eNullObjectPointer);

  AcDbLayerTableRecord* wrong = nullptr;
  EXPECT_EQ(dictionary->getAt(L"a", wrong), Acad::eNotThatKindOfClass);
  std::wstring keys;
  const std::unique_ptr<AcDbDictionaryIterator> walk(dictionary->newIterator());
  for (; !walk->done(); walk->next()) keys += std::wstring(walk->name()) + L' ';
  EXPECT_EQ(keys, L"Été a ");
  dictionary->close();
}

TEST(Dictionary, ErasingItTakesItsEntriesAlong) {
  AcDbDatabase db(false);
  const AcDbObjectId groups = db.groupDictionaryId();
  EXPECT_EQ(db.groupDictionaryId(), groups) << "made once";
  AcDbObjectPointer<AcDbDictionary> open(groups, AcDb::kForWrite);
  auto* group = new AcDbGroup(L"g");
  AcDbObjectId id;
  open->setAt(L"G", group, id);
  EXPECT_EQ(group->append(groups), Acad::eOk);
  EXPECT_EQ(group->append(groups), Acad::eDuplicateKey);
  EXPECT_EQ(group->remove(id), Acad::eKeyNotFound);
  group->close();
  db.undoLog().begin(L"EFFACE");
  open->erase();
  db.undoLog().end();
  open.close();
  EXPECT_TRUE(id.isErased());
  db.undoLog().undo();
  EXPECT_TRUE(id.isLive());
}

TEST(References, ACopyIsTranslatedOnce) {
  AcDbDatabase from(false);
  AcDbDatabase to(false);
  for (int i = 0; i < 40; ++i) ASSERT_FALSE(to.recordOf("LAYER", L"pad" + std::to_wstring(i)).isNull());
  const AcDbObjectId original = from.recordOf("LAYER", L"A");
  const AcDbObjectId copied = to.recordOf("LAYER", L"A");
  AcDbObjectId id;
  auto* source = new AcDbXrecord;
  from.addAcDbObject(id, source);
  DxfTagText tags;
  tags.appendHandle(330, original.handle());
  tags.append(1, "x");
  tags.appendHandle(340, 0xDEAD);
  source->setTags(tags);
  source->setXDataTags(tags);
  source->addPersistentReactor(original);

  auto* clone = static_cast<AcDbXrecord*>(source->cloneAlone());
  EXPECT_EQ(clone->database(), nullptr);
  EXPECT_TRUE(clone->reactors().empty());
  to.addAcDbObject(id, clone);
  int visits = 0;
  const auto translate = [&](AcDbObjectId& reference) {
    ++visits;
    EXPECT_EQ(reference.database(), &from);
    reference = reference == original ? copied : AcDbObjectId();
  };
  clone->visitReferences(translate);
  EXPECT_EQ(visits, 4);
  DxfTagText expected;
  expected.appendHandle(330, copied.handle());
  expected.append(1, "x");
  expected.append(340, "0");
  EXPECT_EQ(clone->tags().text(), expected.text());
  EXPECT_EQ(clone->xDataTags().text(), expected.text());
  std::size_t inTarget = 0;
  clone->visitReferences([&](AcDbObjectId& reference) { inTarget += reference == copied; });
  EXPECT_EQ(inTarget, 2u) << "handles now name objects of its own drawing";
  EXPECT_EQ(source->tags().text(), tags.text());
}

}  // namespace
