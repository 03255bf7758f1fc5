#include "arx/ed/edselect.h"

#include "arx/ed/edsets.h"
#include "ed_support.h"

#include <algorithm>
#include <functional>
#include <random>

namespace {

using Ids = std::vector<AcDbObjectId>;

class SelectTest : public DrawingTest {
protected:
  /// What a call selects; the set is freed.
  Ids selected(const wchar_t* mode, const resbuf* filter = nullptr, const ads_real* a = nullptr,
               const ads_real* b = nullptr) {
    ads_name set;
    status = acedSSGet(mode, a, b, filter, set);
    const Ids ids = acedSSEntities(set);
    if (status == RTNORM) {
      EXPECT_EQ(acedSSFree(set), RTNORM);
    } else {
      EXPECT_TRUE(ads_name_nil(set)) << "no set without success";
    }
    return ids;
  }
  int status = 0;
};

// The set finds places in a tree of counts; a plain list is what it must equal.
TEST(SelectionSet, KeepsItsOrderWhateverIsRemovedAndAdded) {
  AcDbDatabase drawing;
  Ids pool;
  for (Adesk::UInt64 handle = 0x10000; pool.size() < 300; ++handle)
    pool.push_back(drawing.idOf(AcDbHandle(handle)));
  AcEdSelectionSet set;
  Ids list;
  std::minstd_rand random(5);
  for (int i = 0; i < 6000; ++i) {
    const AcDbObjectId id = pool[random() % pool.size()];
    const auto found = std::find(list.begin(), list.end(), id);
    ASSERT_EQ(set.has(id), found != list.end());
    if (random() % 2 == 0) {
      ASSERT_EQ(set.add(id), found == list.end());
      if (found == list.end()) list.push_back(id);
    } else {
      ASSERT_EQ(set.remove(id), found != list.end());
      if (found != list.end()) list.erase(found);
    }
    ASSERT_EQ(set.size(), list.size());
    if (list.empty()) continue;
    const std::size_t place = random() % list.size();
    ASSERT_EQ(set.at(place), list[place]) << i;
    ASSERT_EQ(set.at(list.size() - 1), list.back()) << i;
  }
  EXPECT_EQ(set.entities(), list);
  set.dropDatabase(&drawing);
  EXPECT_TRUE(set.empty());
}

// Filters one by one are in tests/lisp/cases/selection.txt; here what no list of LISP says.
TEST_F(SelectTest, FiltersAsAModuleBuildsThem) {
  line(0, 0, 10, 0);
  const AcDbObjectId p = point(5, 5);
  acdbRegApp(L"VARNPLUS");
  const AcEdRbHolder xdata(acutBuildList(1001, L"VARNPLUS", 1070, 1));
  ASSERT_EQ(AcDbObjectPointer<AcDbEntity>(p, AcDb::kForWrite)->setXData(xdata.get()), Acad::eOk);
  for (resbuf* chain : {acutBuildList(1001, L"VARNPLUS"), acutBuildList(-3, 1001, L"varnplus"),
                        acutBuildList(-3, RTLB, RTLB, 1001, L"VARNPLUS", RTLE, RTLE),
                        acutBuildList(-3, RTLB, RTSTR, L"varn*", RTLE, 0, L"POINT")}) {
    const AcEdRbHolder filter(chain);
    EXPECT_TRUE(acedIsFilter(chain));
    EXPECT_EQ(selected(L"X", chain), Ids{p});
  }
  const AcEdRbHolder open(acutBuildList(-4, L"<OR", 0, L"POINT"));
  EXPECT_FALSE(acedIsFilter(open.get()));
  EXPECT_TRUE(selected(L"X", open.get()).empty());
  EXPECT_EQ(status, RTERROR);
  AcEdRbHolder deep;
  for (int i = 0; i < 100000; ++i) {
    resbuf* item = acutBuildList(-4, L"<NOT");
    item->rbnext = deep.release();
    deep.reset(item);
  }
  EXPECT_FALSE(acedIsFilter(deep.get())) << "however deep";
}

TEST_F(SelectTest, ModesThatAskNothing) {
  const AcDbObjectId a = line(0, 0, 10, 0);
  const AcDbObjectId b = line(20, 0, 30, 10);
  const AcDbObjectId off = point(5, 5, 0, L"Masque");
  const AcDbObjectId locked = point(6, 6, 0, L"Bloque");
  AcDbObjectPointer<AcDbLayerTableRecord>(db->recordOf("LAYER", L"Masque"), AcDb::kForWrite)->setIsOff(true);
  AcDbObjectPointer<AcDbLayerTableRecord>(db->recordOf("LAYER", L"Bloque"), AcDb::kForWrite)
      ->setIsLocked(true);
  const double low[] = {-1, -1, 0};
  const double mid[] = {22, 11, 0};
  const double on[] = {3, 0, 0};
  struct Row {
    const char* name;
    const wchar_t* mode;
    const double* from;
    const double* to;
    Ids expected;
  };
  const Row rows[] = {
      {"all", L"X", nullptr, nullptr, {a, b, off, locked}},
      {"all, international", L"_x", nullptr, nullptr, {a, b, off, locked}},
      {"accessible", L"A", nullptr, nullptr, {a, b}},
      {"window", L"W", low, mid, {a, locked}},
      {"window, corners exchanged", L"W", mid, low, {a, locked}},
      {"crossing", L"C", low, mid, {a, b, locked}},
      {"last", L"L", nullptr, nullptr, {locked}},
      {"previous", L"P", nullptr, nullptr, {locked}},
      {"at a point", L"", on, nullptr, {a}},
      {"pick-first, none", L"I", nullptr, nullptr, {}},
      {"window without points", L"W", nullptr, nullptr, {}},
      {"unknown", L"Q", nullptr, nullptr, {}},
  };
  for (const Row& row : rows)
    EXPECT_EQ(selected(row.mode, nullptr, row.from, row.to), row.expected) << row.name;
  const double below[] = {24, 0, 0};
  const double above[] = {29, 2, 0};
  EXPECT_TRUE(selected(L"C", nullptr, below, above).empty()) << "the box of a line is not the line";
}

TEST_F(SelectTest, SelectionLines) {
  const AcDbObjectId a = line(0, 0, 10, 0);
  const AcDbObjectId b = line(650000, 6860000, 650010, 6860000);
  const AcDbObjectId c = point(5, 50);
  struct Row {
    const char* name;
    std::vector<const char*> lines;
    int status;
    Ids expected;
  };
  const Row rows[] = {
      {"all", {"tout", ""}, RTNORM, {a, b, c}},
      {"last", {"DERNIER", ""}, RTNORM, {c}},
      {"pick", {"3,0.5", ""}, RTNORM, {a}},
      {"pick at national coordinates", {"650005,6860000", ""}, RTNORM, {b}},
      {"beside", {"3,20", ""}, RTERROR, {}},
      {"window", {"F -1,-1 11,60", ""}, RTNORM, {a, c}},
      {"crossing", {"c 4,-1 @2,2", ""}, RTNORM, {a}},
      {"one after the other, each once", {"5,50", "tout", "5,50", ""}, RTNORM, {c, a, b}},
      {"nothing", {""}, RTERROR, {}},
      {"end of the input", {"tout"}, RTCAN, {}},
      {"cancelled", {"tout", "*Annuler*"}, RTCAN, {}},
  };
  for (const Row& row : rows) {
    source.lines.assign(row.lines.begin(), row.lines.end());
    EXPECT_EQ(selected(nullptr), row.expected) << row.name;
    EXPECT_EQ(status, row.status) << row.name;
  }
  for (const char* wrong : {"F 1,1", "F 1,1 2,2 3,3", "F", "abc", "12"}) {
    answer({wrong, ""});
    EXPECT_THROW(selected(nullptr), veltora::base::ScriptError) << wrong;
  }
  answer({"tout", ""});
  const AcEdRbHolder filter(acutBuildList(0, L"POINT"));
  EXPECT_EQ(selected(nullptr, filter.get()), Ids{c}) << "the filter holds for each line";
  EXPECT_TRUE(transcript.has("1 trouvé(s), 1 au total"));
  answer({"tout"});
  EXPECT_EQ(selected(L":S").size(), 3u) << "one line is all";
}

TEST_F(SelectTest, LifeOfASet) {
  const AcDbObjectId a = point(0, 0);
  const AcDbObjectId b = point(1, 0);
  ads_name nameA = {0, 0};
  ads_name nameB = {0, 0};
  acdbGetAdsName(nameA, a);
  acdbGetAdsName(nameB, b);
  const ads_name none = {0, 0};
  ads_name set;
  ads_name other;
  Adesk::Int32 length = -1;
  ASSERT_EQ(acedSSAdd(none, none, set), RTNORM);
  EXPECT_EQ(acedSSLength(set, &length), RTNORM);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(acedSSAdd(nameA, set, other), RTNORM);
  EXPECT_TRUE(ads_name_equal(set, other));
  EXPECT_EQ(acedSSAdd(nameA, set, other), RTNORM);
  EXPECT_EQ(acedSSAdd(nameB, set, other), RTNORM);
  acedSSLength(set, &length);
  EXPECT_EQ(length, 2) << "an entity stands in a set once";
  EXPECT_EQ(acedSSMemb(nameA, set), RTNORM);
  EXPECT_EQ(acedSSDel(nameA, set), RTNORM);
  EXPECT_EQ(acedSSDel(nameA, set), RTERROR);
  ads_name first;
  EXPECT_EQ(acedSSName(set, 0, first), RTNORM);
  EXPECT_TRUE(ads_name_equal(first, nameB));
  EXPECT_EQ(acedSSName(set, 1, first), RTERROR);
  EXPECT_EQ(acedSSName(set, -1, first), RTERROR);
  EXPECT_EQ(acedSSAdd(set, none, other), RTERROR) << "a set is no entity";

  AcDbObjectPointer<AcDbEntity>(b, AcDb::kForWrite)->erase();
  acedSSLength(set, &length);
  EXPECT_EQ(length, 1) << "an erased entity stays in its set";
  acedForgetDatabase(db.get());
  acedSSLength(set, &length);
  EXPECT_EQ(length, 0) << "those of a closed drawing do not";
  EXPECT_EQ(acedSSFree(set), RTNORM);
  EXPECT_EQ(acedSSFree(set), RTERROR);
  EXPECT_EQ(acedSSLength(set, &length), RTERROR);
  EXPECT_EQ(acedSSLength(nameA, &length), RTERROR) << "an entity is no set";
  EXPECT_EQ(acedSSLength(none, &length), RTERROR);
}

TEST_F(SelectTest, PickFirstSet) {
  const AcDbObjectId a = point(0, 0);
  ads_name set;
  acedSSFromEntities({a}, set);
  EXPECT_EQ(acedSSSetFirst(nullptr, set), RTNORM);
  EXPECT_EQ(selected(L"I"), Ids{a});
  EXPECT_EQ(acedSSSetFirst(nullptr, nullptr), RTNORM);
  EXPECT_TRUE(selected(L"I").empty());
  acedSSFree(set);
}

class EntSelTest : public SelectTest {
protected:
  /// A block "SIGNE" with a line from (0, 0) to (2, 0), shown at (100, 100) twice as large with an attribute.
  AcDbObjectId block() {
    auto* record = new AcDbBlockTableRecord;
    record->setName(L"SIGNE");
    AcDbObjectId recordId;
    AcDbObjectPointer<AcDbBlockTable>(db->blockTableId(), AcDb::kForWrite)->add(recordId, record);
    auto* inner = new AcDbLine({0, 0, 0}, {2, 0, 0});
    record->appendAcDbEntity(innerLine, inner);
    inner->close();
    record->close();
    auto* reference = new AcDbBlockReference({100, 100, 0}, recordId);
    reference->setScaleFactors(AcGeScale3d(2.0));
    const AcDbObjectId id = append(*db, reference);
    AcDbObjectPointer<AcDbBlockReference> open(id, AcDb::kForWrite);
    auto* made = new AcDbAttribute({100, 110, 0}, L"12", L"NUMPT");
    made->setHeight(2.0);
    open->appendAttribute(attribute, made);
    made->close();
    return id;
  }
  AcDbObjectId innerLine;
  AcDbObjectId attribute;
};

TEST_F(EntSelTest, TheNearestEntityWithinTheAperture) {
  const AcDbObjectId under = line(0, 0, 10, 0);
  const AcDbObjectId over = line(0, 0, 10, 0);
  auto* ring = new AcDbCircle({300, 300, 0}, AcGeVector3d::kZAxis, 50);
  const AcDbObjectId circle = append(*db, ring);
  ads_name name;
  ads_point at;
  struct Row {
    const char* line;
    int status;
    AcDbObjectId expected;
  };
  const double aperture = acedView().height / 100;
  EXPECT_GT(aperture, 1.0);
  for (const Row& row :
       {Row{"5,1", RTNORM, over}, Row{"350,300", RTNORM, circle}, Row{"300,300", RTERROR, {}},
        Row{"265,335", RTNORM, circle}, Row{"", RTNONE, {}}, Row{"DERNIER", RTNORM, circle}}) {
    answer({row.line});
    acedSetErrno(0);
    ASSERT_EQ(acedEntSel(L"\nObjet : ", name, at), row.status) << row.line;
    AcDbObjectId id;
    if (row.status == RTNORM) acdbGetObjectId(id, name);
    EXPECT_EQ(id, row.expected) << row.line;
    resbuf number = {};
    acedGetVar(L"errno", &number);
    EXPECT_EQ(number.resval.rint, row.status == RTERROR ? 7 : row.status == RTNONE ? 52 : 0) << row.line;
  }
  AcDbObjectPointer<AcDbEntity>(over, AcDb::kForWrite)->setVisibility(AcDb::kInvisible);
  answer({"5,1"});
  acedEntSel(nullptr, name, at);
  AcDbObjectId id;
  acdbGetObjectId(id, name);
  EXPECT_EQ(id, under) << "what is not seen is not picked";
  EXPECT_EQ(at[1], 1.0);
}

TEST_F(EntSelTest, BlocksArePickedByWhatTheyShow) {
  const AcDbObjectId reference = block();
  ads_name name;
  ads_point at;
  ads_matrix matrix;
  resbuf* references = nullptr;
  struct Row {
    const char* name;
    const char* line;
    AcDbObjectId innermost;
    bool nested;
  };
  for (const Row& row :
       {Row{"line", "103.5,100", innerLine, true}, Row{"attribute", "101,111", attribute, false}}) {
    answer({row.line, row.line});
    ASSERT_EQ(acedEntSel(L"", name, at), RTNORM) << row.name;
    AcDbObjectId id;
    acdbGetObjectId(id, name);
    EXPECT_EQ(id, reference) << row.name;
    ASSERT_EQ(acedNEntSelP(L"", name, at, 0, matrix, &references), RTNORM) << row.name;
    acdbGetObjectId(id, name);
    EXPECT_EQ(id, row.innermost) << row.name;
    EXPECT_EQ(references != nullptr, row.nested) << row.name;
    EXPECT_EQ(matrix[0][3], row.nested ? 100.0 : 0.0) << row.name;
    acutRelRb(references);
  }
  at[0] = 200, at[1] = 200, at[2] = 0;
  EXPECT_EQ(acedNEntSelP(nullptr, name, at, 1, matrix, &references), RTERROR) << "at a given point";
  {
    auto* hidden = new AcDbAttributeDefinition({2, 50, 0}, L"X", L"CACHE", L"");
    hidden->setHeight(1.0);
    hidden->setConstant(true);
    hidden->setInvisible(true);
    AcDbObjectId record;
    AcDbObjectPointer<AcDbBlockTable>(db->blockTableId())->getIdAt(L"SIGNE", record);
    AcDbObjectPointer<AcDbBlockTableRecord>(record, AcDb::kForWrite)->appendAcDbEntity(hidden);
    hidden->close();
  }
  at[0] = 102.1, at[1] = 150.1;
  EXPECT_EQ(acedNEntSelP(nullptr, name, at, 1, matrix, &references), RTERROR) << "an invisible attribute";
}

// Each reference in it was once followed to the sixteenth level: with twenty of them, for ever.
TEST_F(EntSelTest, ABlockThatShowsItselfIsEnteredOnce) {
  block();
  AcDbObjectId record;
  AcDbObjectPointer<AcDbBlockTable>(db->blockTableId())->getIdAt(L"SIGNE", record);
  {
    AcDbObjectPointer<AcDbBlockTableRecord> open(record, AcDb::kForWrite);
    for (int i = 0; i < 20; ++i) {
      auto* self = new AcDbBlockReference({0, 0, 0}, record);
      open->appendAcDbEntity(self);
      self->close();
    }
  }
  answer({"103.5,100"});
  ads_name name;
  ads_point at;
  EXPECT_EQ(acedEntSel(L"", name, at), RTNORM);
}

// Ten references to ten references ... to ten lines: a hundred million lines.
TEST_F(EntSelTest, BlocksInBlocksAreLookedIntoWhereTheyMatter) {
  const auto nested = [this](const std::wstring& name, double step, double factor) {
    AcDbObjectId inner;
    for (int level = 0; level < 8; ++level, step *= factor) {
      auto* record = new AcDbBlockTableRecord;
      record->setName((name + std::to_wstring(level)).c_str());
      AcDbObjectId id;
      AcDbObjectPointer<AcDbBlockTable>(db->blockTableId(), AcDb::kForWrite)->add(id, record);
      for (int i = 0; i < 10; ++i) {
        auto* part = level == 0 ? static_cast<AcDbEntity*>(new AcDbLine({i * step, 0, 0}, {i * step, 5, 0}))
                                : new AcDbBlockReference({i * step, 0, 0}, inner);
        record->appendAcDbEntity(part);
        part->close();
      }
      record->close();
      inner = id;
    }
    return append(*db, new AcDbBlockReference({0, 0, 0}, inner));
  };
  const AcDbObjectId wide = nested(L"LARGE", 1, 10);
  ads_name name;
  ads_point at = {12345678, 2, 0};
  ads_matrix matrix;
  resbuf* references = nullptr;
  ASSERT_EQ(acedNEntSelP(nullptr, name, at, 1, matrix, &references), RTNORM);
  EXPECT_EQ(matrix[0][3], 12345670.0) << "of the block with the line";
  acutRelRb(references);
  const ads_point from = {77.4, 1, 0};
  const ads_point between = {77.6, 2, 0};
  const ads_point beyond = {78.6, 2, 0};
  EXPECT_TRUE(selected(L"C", nullptr, from, between).empty()) << "between two lines";
  EXPECT_EQ(selected(L"C", nullptr, from, beyond), Ids{wide});
  EXPECT_FALSE(transcript.has("Recherche abandonnée"));
  // All of them in one place: nothing can be left out, and the search is given up.
  const AcDbObjectId narrow = nested(L"ETROIT", 1e-9, 1);
  answer({});
  at[0] = 36.5e-9;  // in the middle of the boxes
  ASSERT_EQ(acedNEntSelP(nullptr, name, at, 1, matrix, &references), RTNORM);
  acutRelRb(references);
  EXPECT_TRUE(transcript.has("Recherche abandonnée")) << narrow.handle();
}

TEST_F(EntSelTest, AnExpressionGivesANameAndAPoint) {
  const AcDbObjectId p = point(3, 4);
  ads_name name = {0, 0};
  ads_point at = {0, 0, 0};
  acdbGetAdsName(name, p);
  const double picked[] = {3, 4, 0};
  acedPorts().evaluate = [&](const std::wstring&) {
    return acutBuildList(RTLB, RTENAME, name, RT3DPOINT, picked, RTLE);
  };
  answer({"(entsel)"});
  ads_name found;
  EXPECT_EQ(acedEntSel(L"", found, at), RTNORM);
  EXPECT_TRUE(ads_name_equal(name, found));
  EXPECT_EQ(at[1], 4.0);
  answer({"(entlast)", ""});
  EXPECT_EQ(selected(nullptr), Ids{p});
}

}  // namespace
