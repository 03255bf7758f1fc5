// Files on the disk: names, replacement of old ones, and what is left of erased objects.
#include "arx/ed/edgraphics.h"
#include "arx/ent_support.h"
#include "support/dossier_temporaire.h"

#include <gtest/gtest.h>

#include <random>

namespace fs = std::filesystem;
using veltora::base::lireFichier;
using veltora::base::remplacerFichier;

namespace {

class DxfFiles : public testing::Test {
protected:
  std::wstring name(const char* file) const { return (folder / file).wstring(); }
  const DossierTemporaire dossier;
  const fs::path& folder = dossier.chemin;
  std::wstring message;
};

AcDbObjectId addPoint(AcDbDatabase& database, double x) {
  return ent_test::addTo(database.modelSpaceId(), new AcDbPoint(AcGePoint3d{x, 2, 3}));
}

TEST_F(DxfFiles, aNewDrawingIsReadBackAsItWasSaved) {
  AcDbDatabase drawing;
  addPoint(drawing, 650000.123456789);
  ASSERT_EQ(drawing.saveAs(name("a.dxf").c_str(), &message), Acad::eOk);
  AcDbDatabase again(false);
  ASSERT_EQ(again.readDwgFile(name("a.dxf").c_str(), &message), Acad::eOk);
  EXPECT_EQ(*lireFichier(folder / "a.dxf"), dxfWriteText(again));
  EXPECT_EQ(again.headerReal("INSUNITS", 0), 6);
  EXPECT_EQ(again.headerReal("MEASUREMENT", 0), 1);
  EXPECT_FALSE(again.isModified());
  EXPECT_EQ(again.fileName(), name("a.dxf"));
}

TEST_F(DxfFiles, aSaveTellsWhereThingsAreAndShowsThemUnlessAViewWasSet) {
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  ASSERT_EQ(drawing.saveAs(name("vide.dxf").c_str()), Acad::eOk);
  EXPECT_NE(lireFichier(folder / "vide.dxf")->find("$EXTMIN\n 10\n1e+20\n"), std::string::npos);
  addPoint(drawing, 650000);
  addPoint(drawing, 650300);
  ASSERT_EQ(drawing.saveAs(name("a.dxf").c_str()), Acad::eOk);
  EXPECT_EQ(acedView().height, 297.0) << "the session goes on in its view";
  EXPECT_FALSE(drawing.isModified());
  const std::string text = *lireFichier(folder / "a.dxf");
  for (const char* part :
       {"$EXTMIN\n 10\n650000.0\n 20\n2.0\n 30\n3.0\n", "$EXTMAX\n 10\n650300.0\n 20\n2.0\n 30\n3.0\n",
        " 14\n650000.0\n", " 15\n650300.0\n", " 12\n650150.0\n 22\n2.0\n"})
    EXPECT_NE(text.find(part), std::string::npos) << part;
  acedSetView({5, 6}, 7);
  ASSERT_EQ(drawing.saveAs(name("a.dxf").c_str()), Acad::eOk);
  EXPECT_NE(lireFichier(folder / "a.dxf")->find(" 12\n5.0\n 22\n6.0\n 40\n7.0\n"), std::string::npos);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

// References that cannot reach beyond what was seen are passed by: the box must be that of all of them.
TEST_F(DxfFiles, storedExtentsAreThoseOfAllThings) {
  std::mt19937 random(3);
  const auto between = [&](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  for (const bool flat : {true, false}) {
    for (const bool text : {true, false}) {
      AcDbDatabase drawing;
      const AcDbObjectId block = drawing.recordOf("BLOCK_RECORD", L"borne");
      ent_test::addTo(block, new AcDbCircle({0.3, 0, flat ? 0.0 : 0.1}, {0, 0, 1}, 0.7));
      ent_test::addTo(block,
                      new AcDbArc({0, 0.2, 0}, {0, flat ? 0.0 : 0.6, flat ? 1.0 : 0.8}, 1.1, 0.3, 2.9));
      if (text) ent_test::addTo(block, new AcDbText({0.1, 0.1, 0}, L"Sygne", {}, 0.4));
      AcDbExtents right;
      for (int i = 0; i < 300; ++i) {
        auto* reference = new AcDbBlockReference(
            {650000 + between(0, 40), 6860000 + between(0, 40), flat ? 0.0 : between(0, 2)}, block);
        reference->setRotation(between(0, 6.3));
        reference->setScaleFactors({between(0.1, 3), between(0.1, 3), between(0.1, 3)});
        const AcDbObjectId id = ent_test::addTo(drawing.modelSpaceId(), reference);
        AcDbExtents box;
        ASSERT_EQ(AcDbObjectPointer<AcDbEntity>(id)->getGeomExtents(box), Acad::eOk);
        right.addExt(box);
      }
      ASSERT_EQ(drawing.saveAs(name("a.dxf").c_str()), Acad::eOk);
      for (const auto& [variable, corner] :
           {std::pair("EXTMIN", right.minPoint()), std::pair("EXTMAX", right.maxPoint())}) {
        DxfTagText expected, stored;
        expected.appendReal(10, corner.x), expected.appendReal(20, corner.y),
            expected.appendReal(30, corner.z);
        drawing.header(variable, stored);
        EXPECT_EQ(stored.text(), expected.text()) << variable << (flat ? " flat" : " in space");
      }
    }
  }
}

TEST_F(DxfFiles, aDwgNameIsServedByTextUnderThatNameElseByTheDxfBeside) {
  AcDbDatabase drawing;
  ASSERT_EQ(drawing.saveAs(name("a.dwg").c_str()), Acad::eOk);
  EXPECT_TRUE(fs::exists(folder / "a.dxf"));
  EXPECT_FALSE(fs::exists(folder / "a.dwg"));
  AcDbDatabase beside(false);
  EXPECT_EQ(beside.readDwgFile(name("a.dwg").c_str()), Acad::eOk);

  fs::rename(folder / "a.dxf", folder / "b.dwg");
  AcDbDatabase text(false);
  EXPECT_EQ(text.readDwgFile(name("b.dwg").c_str()), Acad::eOk);
  EXPECT_EQ(text.saveAs(name("b.dwg").c_str()), Acad::eOk);
  EXPECT_FALSE(fs::exists(folder / "b.dxf"));

  const std::string binary("AC1032\0\0\0\0", 10);
  remplacerFichier(folder / "c.dwg", binary);
  AcDbDatabase refused(false);
  EXPECT_EQ(refused.readDwgFile(name("c.dwg").c_str(), &message), Acad::eFilerError);
  EXPECT_NE(message.find(L"dessin binaire"), std::wstring::npos);
  EXPECT_EQ(drawing.saveAs(name("c.dwg").c_str()), Acad::eOk);
  EXPECT_EQ(lireFichier(folder / "c.dwg"), binary) << "another program's drawing stays whole";
  EXPECT_TRUE(fs::exists(folder / "c.dxf"));
}

TEST_F(DxfFiles, aFailedSaveLeavesTheOldFileAndSaysWhy) {
  AcDbDatabase drawing;
  fs::create_directory(folder / "dossier.dxf");
  EXPECT_EQ(drawing.saveAs(name("dossier.dxf").c_str(), &message), Acad::eFileAccessErr);
  EXPECT_NE(message.find(L"Impossible d'écrire"), std::wstring::npos);
  EXPECT_EQ(drawing.saveAs(name("absent/a.dxf").c_str(), &message), Acad::eFileAccessErr);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1)
      << "nothing is left beside";
  AcDbDatabase empty(false);
  EXPECT_EQ(empty.readDwgFile(name("absent.dxf").c_str(), &message), Acad::eFileNotFound);
  EXPECT_NE(message.find(L"absent.dxf"), std::wstring::npos);
}

TEST(DxfSave, whatIsErasedIsNeitherWrittenNorReferredTo) {
  AcDbDatabase drawing;
  const AcDbObjectId first = addPoint(drawing, 1);
  const AcDbObjectId second = addPoint(drawing, 2);
  AcDbObjectId groupId;
  {
    AcDbObjectPointer<AcDbDictionary> groups(drawing.groupDictionaryId(), AcDb::kForWrite);
    auto* group = new AcDbGroup(L"essai");
    ASSERT_EQ(groups->setAt(L"LOT", group, groupId), Acad::eOk);
    group->append(first);
    group->append(second);
    group->close();
    AcDbObjectPointer<AcDbPoint> point(first, AcDb::kForWrite);
    ASSERT_EQ(point->createExtensionDictionary(), Acad::eOk);
  }
  const std::string before = dxfWriteText(drawing);
  AcDbObjectPointer<AcDbPoint>(first, AcDb::kForWrite)->erase();
  const std::string after = dxfWriteText(drawing);
  DxfTagText handle;
  handle.appendHandle(340, first.handle());
  EXPECT_NE(before.find(handle.text()), std::string::npos) << "the group's reference";
  EXPECT_EQ(after.find(handle.text()), std::string::npos);
  DxfTagText owner;
  owner.appendHandle(330, first.handle());
  EXPECT_NE(before.find(owner.text()), std::string::npos) << "the dictionary's owner";
  EXPECT_EQ(after.find(owner.text()), std::string::npos);
  EXPECT_EQ(DxfLoaded(after).saved(), after);
}

TEST(DxfSave, blocksMadeHereGetTheirMarkersAndAHandleBelowTheSeed) {
  AcDbDatabase drawing;
  ent_test::addTo(ent_test::block(drawing, L"Borne"), new AcDbAttributeDefinition);
  const std::string text = dxfWriteText(drawing);
  EXPECT_NE(text.find("100\nAcDbBlockBegin\n  2\nBorne\n 70\n2\n"), std::string::npos)
      << "says that it has attributes";
  EXPECT_EQ(dxfWriteText(drawing), text) << "saving again makes nothing new";
  DxfLoaded again(text);
  EXPECT_TRUE(again.findings.empty()) << testing::PrintToString(again.findings);
  EXPECT_EQ(again.saved(), text);
}

}  // namespace
