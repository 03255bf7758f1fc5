#include "base/files.h"
#include "base/text.h"
#include "calc/dialogs/gisement_dlg.h"
#include "calc/dialogs/mise_en_place_dlg.h"
#include "calc/dialogs/resultats_dlg.h"
#include "support/dialog_script.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltora {
namespace {

class DialoguesPolygonale : public ::testing::Test {
protected:
  void SetUp() override { base::setDossierTemporaire(m_dossier.chemin); }
  void TearDown() override { base::setDossierTemporaire({}); }
  [[nodiscard]] std::string chemin(const std::string& nom) const { return (m_dossier.chemin / nom).string(); }
  [[nodiscard]] std::string lu(const std::string& nom) const { return m_dossier.lire(nom); }
  DossierEssai m_dossier;
};

TEST_F(DialoguesPolygonale, ToujoursWord) {
  for (const std::string nom : {"a.doc", "a.htm", "A.DOC", "sans"}) {
    htmlDocument document;
    document.ajouterCorps("<P >corps</P>");
    DialogScript script({"[Sauvegarder]", chemin(nom), "[OK]", "[Fermer]"});
    montrerRapport(document);
    EXPECT_TRUE(script.finished()) << script.transcript;
    EXPECT_NE(lu(nom == "sans" ? "sans.doc" : nom).find("<w:View>Print</w:View>"), std::string::npos) << nom;
    EXPECT_EQ(base::lireFichier(document.nomFichier).value_or("<w:View>").find("<w:View>"), std::string::npos)
        << "the file in view stays as it is";
  }
}

TEST_F(DialoguesPolygonale, OfTheTemporaryReportsTheLatestStays) {
  htmlDocument premier;
  htmlDocument dernier;
  for (htmlDocument* document : {&premier, &dernier}) {
    document->ajouterCorps("<P >corps</P>");
    DialogScript script({"[Fermer]"});
    montrerRapport(*document);
  }
  const std::filesystem::directory_iterator dossier(m_dossier.chemin);
  const auto rapports = std::count_if(begin(dossier), end(dossier), [](const auto& entree) {
    return entree.path().filename().string().starts_with("_TP");
  });
  EXPECT_EQ(rapports, 2) << "the report and the empty file of its name";
  EXPECT_FALSE(std::filesystem::exists(premier.nomFichier));
  EXPECT_TRUE(std::filesystem::exists(dernier.nomFichier));
}

TEST(CCalcGisementDlg, ComputesOnEachChangeOnly) {
  CCalcGisementDlg dialogue;
  EXPECT_EQ(dialogue.unite.text(), L"Grades");
  dialogue.modeAngle = 1;
  dialogue.stationX.setValue(650000.0);
  dialogue.directionX.setValue(650100.0);
  DialogScript script({"?", "Station/Nom = S1", "?", "Direction/Y = 100", "[OK]"});
  EXPECT_EQ(dialogue.doModal(), ui::kOk);
  EXPECT_EQ(dialogue.unite.text(), L"degres");
  EXPECT_EQ(script.transcript.find("90.0000"), std::string::npos) << "not on opening, nor with the name";
  EXPECT_EQ(dialogue.gisement.text(), L"45.0000");
  EXPECT_NEAR(dialogue.gisementCalcule(), 45.0, 1e-12);
}

TEST(CCalcGisementDlg, PreleverInerte) {
  CCalcGisementDlg dialogue;
  DialogScript script({"[Station/Prélever du dessin]", "[Direction/Prélever du dessin]", "[Cancel]"});
  EXPECT_EQ(dialogue.doModal(), ui::kCancel);
  EXPECT_EQ(dialogue.gisement.text(), L"");
}

TEST(CParamMisePlaceResultCalcs, DefaultsAndLimitsOfTheCode) {
  CParamMisePlaceResultCalcs dialogue;
  EXPECT_FALSE(dialogue.altitudes.checked() || dialogue.originelle.checked() || dialogue.compensee.checked());
  EXPECT_EQ(dialogue.altitudes.caption(), L"Ne pas placer les altitudes");
  const std::vector<std::pair<int, int>> cas = {{100, 100},   {0, 100}, {10000, 100},
                                                {9999, 9999}, {1, 1},   {-5, 100}};
  for (const auto& [tape, code] : cas) {
    dialogue.code.setValue(tape);
    EXPECT_EQ(dialogue.codeStations(), code) << tape;
  }
  DialogScript script({"[Ne pas placer les altitudes]", "[OK]"});
  EXPECT_EQ(dialogue.doModal(), ui::kOk);
  EXPECT_TRUE(dialogue.altitudes.checked());
  EXPECT_EQ(dialogue.altitudes.caption(), L"Placer les altitudes");
}

}  // namespace
}  // namespace veltora
