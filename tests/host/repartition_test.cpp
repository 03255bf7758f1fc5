// The module's entry: commands, LISP functions, document state.

#include "arx/ap/apsession.h"
#include "arx/db/dbdict.h"
#include "arx/ed/edhelp.h"
#include "host/donnees_document.h"
#include "host/lisp/table_lisp.h"
#include "points/infos_topo.h"
#include "support/module_essai.h"

#include <sstream>

namespace {

using namespace veltora;

class Repartition : public ModuleEssai {};

TEST_F(Repartition, registersTheCommandsInOrderWithTheirFlags) {
  std::string liste;
  for (const AcEdCommand* c : acedCommandStack()->commands())
    if (std::wstring_view(c->groupName()) == L"VELTORA4") {
      liste += base::toUtf8(c->globalName()) + " " + std::to_string(c->commandFlags()) + "\n";
    }
  EXPECT_EQ(liste,
            "CARROYAGE 2\nVCODIFICATION 1\nCOORDSXYZ 0\nCORRPOLFERMEE 0\nCORRPOLOUVERTE 0\nCORRMCARRES 0\n"
            "IMPORTGSI 0\nRECT3PT 3\nIMPORTPOINTS 2\nEXPORTPOINTS 2\nTABLEXYZ 2\nMAJPOINTS 2\nPTSEN3D 0\n"
            "TABLECOORD 0\nMNT 0\nMNTZ 0\nMNTPROFIL 0\nCOURBES 0\nMNTFACES 0\nPLOT 0\nCLOTHOIDE 0\n"
            "IMPLANTAUTO 0\nLEVER 0\n");
  EXPECT_EQ(acedCommandStack()->lookupCmd(L"TRACER"), acedCommandStack()->lookupCmd(L"PLOT"));
  EXPECT_TRUE(acrxDynamicLinker->isAppMDIAware(L"veltora"));
  EXPECT_FALSE(acrxDynamicLinker->isApplicationLocked(L"veltora"));
  acrxDynamicLinker->unloadModule(L"veltora");
  EXPECT_EQ(acedCommandStack()->lookupCmd(L"CARROYAGE"), nullptr);
  EXPECT_EQ(acedLispFunctions()->find(L"maxnum"), nullptr);
}

TEST_F(Repartition, eachCommandIsDescribedOrSaysThatItIsNotThereYet) {
  const AcApSession session;
  const std::wstring aide = acedHelpText();
  const auto decrite = [&](const std::wstring& nom) {
    for (const AcEdCommandHelp& d : acedDescriptions())
      if ((L", " + d.names + L",").find(L", " + nom + L",") != std::wstring::npos) return true;
    return false;
  };
  for (const AcEdCommand* c : acedCommandStack()->commands()) {
    imprime.clear();
    const std::wstring nom = c->localName();
    if (decrite(nom) || nom == L"?") continue;
    c->functionAddr()();
    EXPECT_NE(imprime.find("n'est pas encore disponible"), std::string::npos) << base::toUtf8(nom);
  }
  for (const auto& fonction : acedLispFunctions()->functions()) {
    imprime.clear();
    if (base::toUpper(fonction.name.substr(0, 2)) != L"C:" || decrite(base::toUpper(fonction.name.substr(2))))
      continue;
    appeler(fonction.name.c_str());
    EXPECT_NE(imprime.find("n'est pas encore disponible"), std::string::npos) << base::toUtf8(fonction.name);
  }
  EXPECT_NE(aide.find(L"\nCalculs\n  CORRPOLFERMEE"), std::wstring::npos) << base::toUtf8(aide);
  acrxDynamicLinker->unloadModule(L"veltora");
  EXPECT_EQ(acedHelpText().find(L"CORRPOLFERMEE"), std::wstring::npos);
}

TEST_F(Repartition, bindsEachNameToItsPlaceInEveryDocument) {
  std::istringstream noms(
      "calctailleblock add_pt analyse attrvisibility c:projpoly c:vcode ename_pt getsegtype - k_getpt "
      "maxnum modif-attrib reg_pts select_all seloncode selonnum vndelfile superpos sxd wait_user "
      "tpcdaddpt loadcodept addcodept resetcodespts choixpoint chgreppts updarxttxt c:decrireblock "
      "c:tablegendes c:gererLeves C:pointsParDecalage C:ZoomLeve selectionnerCode c:TopJndre VARNTEXT "
      "c:DISSOCBLOCK c:IMPLANT2 c:VNDEPORTPNTS c:VNAJUSTERZ c:HELMERT c:CREERPLANCHE C:POL3DTOPOL2D");
  acDocManager->appContextNewDocument();
  std::string nom;
  int code = 0;
  for (; noms >> nom; ++code) {
    if (nom == "-") continue;
    const auto* fonction = acedLispFunctions()->find(base::fromUtf8(nom));
    ASSERT_NE(fonction, nullptr) << nom;
    EXPECT_EQ(fonction->code, code);
    EXPECT_EQ(base::toUtf8(fonction->name), nom);
  }
  EXPECT_EQ(code, static_cast<int>(kNombreFonctionsLisp));
  EXPECT_EQ(acedLispFunctions()->functions().size(), 41U);
}

TEST_F(Repartition, codesOutsideTheTableDoNothing) {
  for (const int code : {42, 1000, -1, 8}) {
    acedLispFunctions()->define(L"essai", L"veltora", code);
    EXPECT_EQ(appeler(L"essai"), "void") << code;
  }
  EXPECT_EQ(acrxEntryPoint(AcRx::kInvkSubrMsg, nullptr), 0) << "outside a call";
  for (const auto msg : {AcRx::kCfgMsg, AcRx::kEndMsg, AcRx::kQuitMsg, AcRx::kNullMsg})
    EXPECT_EQ(acrxEntryPoint(msg, nullptr), 0);
  EXPECT_EQ(imprime, "");
}

TEST_F(Repartition, whatIsMissingSaysSoInFrench) {
  acedCommandStack()->lookupCmd(L"MNT")->functionAddr()();
  EXPECT_EQ(imprime.find("\nMNT non disponible : "), 0U) << imprime;
}

TEST_F(Repartition, savingADocumentStoresTheProject) {
  table().Ajouter(unPoint(L"12", 1, 2, 3));
  const std::wstring fichier = base::fromUtf8((installationEssai() / "enregistre.dxf").string());
  ASSERT_EQ(acDocManager->saveDocument(acDocManager->curDocument(), fichier.c_str()), Acad::eOk);
  AcDbDatabase relu(false);
  ASSERT_EQ(relu.readDwgFile(fichier.c_str()), Acad::eOk);
  projetsTopo lu;
  setSrcInfosTopo(&relu, &lu, 0, 1);
  EXPECT_EQ(noms(*lu.currTable()), "12");
}

TEST_F(Repartition, functionsAnswerNilWithoutAProject) {
  setSrcInfosTopo(nullptr, nullptr, 0, 0);
  for (const wchar_t* nom :
       {L"maxnum", L"reg_pts", L"select_all", L"seloncode", L"ename_pt", L"add_pt", L"c:vcode"})
    EXPECT_EQ(appeler(nom, acutBuildList(RTSHORT, 1, RTNONE)), "nil") << base::toUtf8(nom);
  appeler(L"C:ZoomLeve");
  acedCommandStack()->lookupCmd(L"PTSEN3D")->functionAddr()();
  EXPECT_EQ(imprime, "\nPas de points dans cette table");
}

TEST_F(Repartition, ptsEn3DDrawsThePointsThatHaveAnAltitude) {
  for (const double z : {-1e8, 12.5, 1e8, Z_ABSENT, -1.1e8, std::numeric_limits<double>::quiet_NaN()})
    table().Ajouter(unPoint(L"p", 650000, 6860000, z));
  AcApSession session;
  session.runCommand(L"ptsen3d");
  std::string cotes;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin->modelSpaceId());
  for (const AcDbObjectId& id : espace->entities())
    cotes += base::ecrireReel(AcDbObjectPointer<AcDbPoint>(id)->position().z) + " ";
  EXPECT_EQ(cotes, "-1e+08 12.5 ");
  EXPECT_NE(imprime.find("\n6 points"), std::string::npos) << imprime;
}

}  // namespace
