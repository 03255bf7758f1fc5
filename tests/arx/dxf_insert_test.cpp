// Copies between drawings: what comes along, whose definition wins, and where references point afterwards.
#include "arx/ent_support.h"

#include <gtest/gtest.h>

namespace {

const char* const kTables =
    R"(SECTION|2 HEADER|9 $ACADVER|1 AC1032|9 $HANDSEED|5 1000|9 $INSBASE|10 7|20 8|30 9|ENDSEC
SECTION|2 TABLES
TABLE|2 LTYPE|5 5|LTYPE|5 50|100 AcDbLinetypeTableRecord|2 TIRETS|70 0|3 |72 65|73 0|40 0.0|ENDTAB
TABLE|2 LAYER|5 2|LAYER|5 51|100 AcDbLayerTableRecord|2 COMMUN|70 0|62 3|6 Continuous
LAYER|5 52|100 AcDbLayerTableRecord|2 NOUVEAU|70 0|62 5|6 TIRETS|ENDTAB
TABLE|2 STYLE|5 3|STYLE|5 53|100 AcDbTextStyleTableRecord|2 ETROIT|70 0|40 0|41 0.8|50 0|71 0|42 2|3 arial.ttf|4 |ENDTAB
TABLE|2 APPID|5 9|APPID|5 54|100 AcDbRegAppTableRecord|2 APPLI|70 0|ENDTAB
TABLE|2 BLOCK_RECORD|5 1|BLOCK_RECORD|5 60|100 AcDbBlockTableRecord|2 *Model_Space|340 0
BLOCK_RECORD|5 61|100 AcDbBlockTableRecord|2 *U1|340 0|BLOCK_RECORD|5 62|100 AcDbBlockTableRecord|2 BORNE|340 0
ENDTAB|ENDSEC
SECTION|2 BLOCKS
BLOCK|5 63|330 61|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 *U1|70 1|10 1|20 2|30 3|3 *U1|1 
INSERT|5 64|330 61|100 AcDbEntity|8 NOUVEAU|100 AcDbBlockReference|2 BORNE|10 0|20 0|30 0
ENDBLK|5 65|330 61|100 AcDbEntity|8 0|100 AcDbBlockEnd
BLOCK|5 66|330 62|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 BORNE|70 0|10 0|20 0|30 0|3 BORNE|1 
POINT|5 67|330 62|100 AcDbEntity|8 COMMUN|100 AcDbPoint|10 1|20 1|30 1
ENDBLK|5 68|330 62|100 AcDbEntity|8 0|100 AcDbBlockEnd|ENDSEC
SECTION|2 ENTITIES
INSERT|5 70|330 60|102 {ACAD_XDICTIONARY|360 80|102 }|100 AcDbEntity|8 COMMUN|100 AcDbBlockReference|66 1|2 *U1|10 0|20 0|30 0
|1001 APPLI|1005 73|1003 NOUVEAU
ATTRIB|5 71|330 70|100 AcDbEntity|8 0|100 AcDbText|10 0|20 0|30 0|40 1|1 x|7 ETROIT|100 AcDbAttribute|2 NUM|70 0
SEQEND|5 72|330 70|100 AcDbEntity|8 0
CHOSE|5 73|330 60|100 AcDbEntity|8 0|6 TIRETS|100 Inconnue|340 82|330 70|330 51
ENDSEC
SECTION|2 OBJECTS
DICTIONARY|5 C|330 0|100 AcDbDictionary|3 VELTORA|350 81
DICTIONARY|5 81|330 C|100 AcDbDictionary|3 PLAN|350 82
CONFIG|5 82|330 81|100 Config|1 source
DICTIONARY|5 80|330 70|100 AcDbDictionary|280 1|3 DONNEES|360 83
XRECORD|5 83|330 80|100 AcDbXrecord|280 1|330 71|1 texte
ENDSEC|EOF)";

class DxfInsert : public testing::Test {
protected:
  void SetUp() override {
    ASSERT_EQ(source.status, Acad::eOk) << source.messageText();
    AcDbObjectPointer<AcDbLayerTableRecord>(target.recordOf("LAYER", L"Commun"), AcDb::kForWrite)
        ->setColor(AcCmColor(1));
    for (const wchar_t* name : {L"*U1", L"PLAN"})
      ent_test::addTo(ent_test::block(target, name), new AcDbPoint(AcGePoint3d{5, 5, 5}));
    target.undoLog().clear();
    before = dxfWriteText(target);
  }
  /// Value of the first group of this code behind a text of the saved target.
  std::string behind(const std::string& text, const std::string& place, const std::string& code) const {
    const std::size_t at = text.find("\n" + code + "\n", text.find(place));
    if (at == std::string::npos) return {};
    const std::size_t value = at + code.size() + 2;
    return text.substr(value, text.find('\n', value) - value);
  }
  DxfLoaded source{dxfText(kTables)};
  AcDbDatabase target;
  std::string before;
  AcDbObjectId block;
};

TEST_F(DxfInsert, bringsWhatIsReferredToAndTheTargetsDefinitionsWin) {
  ASSERT_EQ(target.insert(block, L"PLAN", &source.database), Acad::eOk);
  AcDbObjectPointer<AcDbBlockTableRecord> record(block);
  EXPECT_EQ(record->origin(), (AcGePoint3d{7, 8, 9}));
  std::size_t live = 0;
  for (const AcDbObjectId id : record->entities()) live += id.isLive();
  EXPECT_EQ(live, 2u) << "the former contents went";
  const auto has = [&](AcDbObjectId tableId, const wchar_t* name) {
    return AcDbObjectPointer<AcDbSymbolTable>(tableId)->has(name);
  };
  EXPECT_TRUE(has(target.layerTableId(), L"NOUVEAU"));
  EXPECT_TRUE(has(target.linetypeTableId(), L"TIRETS"));
  EXPECT_TRUE(has(target.textStyleTableId(), L"ETROIT"));
  EXPECT_TRUE(has(target.regAppTableId(), L"APPLI"));
  EXPECT_TRUE(has(target.blockTableId(), L"BORNE"));
  EXPECT_TRUE(has(target.blockTableId(), L"*U2")) << "an anonymous block gets a free name";
  AcDbObjectId common;
  AcDbObjectPointer<AcDbSymbolTable>(target.layerTableId())->getIdAt(L"COMMUN", common);
  EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(common)->color().colorIndex(), 1);
}

TEST_F(DxfInsert, translatesReferencesInFieldsKeptGroupsAndExtendedData) {
  ASSERT_EQ(target.insert(block, L"PLAN", &source.database), Acad::eOk);
  const std::string text = dxfWriteText(target);
  const std::string insertHandle = behind(text, "  0\nINSERT\n", "  5");
  const std::string thing = behind(text, "  0\nCHOSE\n", "  5");
  EXPECT_EQ(behind(text, "  0\nINSERT\n", "  2"), "*U2");
  EXPECT_EQ(behind(text, "1001\nAPPLI\n", "1005"), thing);
  EXPECT_EQ(behind(text, "100\nInconnue\n", "340"), behind(text, "  0\nCONFIG\n", "  5"));
  EXPECT_EQ(behind(text, "100\nInconnue\n", "330"), insertHandle);
  const std::string dictionary = behind(text, "  0\nINSERT\n", "360");
  EXPECT_NE(text.find("DICTIONARY\n  5\n" + dictionary + "\n330\n" + insertHandle + "\n"), std::string::npos);
  EXPECT_NE(
      text.find("XRECORD\n  5\n" + behind(text, "  3\nDONNEES\n", "360") + "\n330\n" + dictionary + "\n"),
      std::string::npos);
  EXPECT_EQ(behind(text, "100\nAcDbXrecord\n", "330"), behind(text, "  0\nATTRIB\n", "  5"));
  DxfLoaded again(text);
  ASSERT_EQ(again.status, Acad::eOk) << again.messageText();
  EXPECT_TRUE(again.findings.empty()) << testing::PrintToString(again.findings);
  EXPECT_EQ(again.saved(), text);
}

TEST_F(DxfInsert, isOneStepForUndo) {
  ASSERT_EQ(target.insert(block, L"PLAN", &source.database), Acad::eOk);
  const std::string inserted = dxfWriteText(target);
  ASSERT_NE(inserted, before);
  target.undoLog().undo();
  const auto body = [](const std::string& text) { return text.substr(text.find("  0\nENDSEC")); };
  EXPECT_EQ(body(dxfWriteText(target)), body(before));
  target.undoLog().redo();
  EXPECT_EQ(body(dxfWriteText(target)), body(inserted));
}

TEST_F(DxfInsert, aDrawingThatHoldsABlockOfItsOwnNameDoesNotContainItself) {
  ASSERT_EQ(target.insert(block, L"BORNE", &source.database), Acad::eOk);
  const std::string text = dxfWriteText(target);
  EXPECT_NE(text.find("  2\nBORNE_1\n"), std::string::npos);
  EXPECT_EQ(DxfLoaded(text).saved(), text);
}

TEST_F(DxfInsert, refusesItselfAndNamesThatNoBlockMayHave) {
  EXPECT_EQ(target.insert(block, L"A", &target), Acad::eInvalidInput);
  EXPECT_EQ(target.insert(block, L"a/b", &source.database), Acad::eInvalidInput);
  EXPECT_EQ(dxfWriteText(target), before);
}

}  // namespace
