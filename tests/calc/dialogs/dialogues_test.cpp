#include "base/files.h"
#include "base/text.h"
#include "calc/dialogs/fermee_dlg.h"
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

const std::vector<std::string> kCarre = {"Station de départ/Numéro = A",
                                         "Station = B",
                                         "Angle = 300",
                                         "Distance = 100",
                                         "Altitude = 1,5",
                                         "[Ajouter]",
                                         "Station = C",
                                         "[Ajouter]",
                                         "Station = D",
                                         "Altitude = -1",
                                         "[Ajouter]",
                                         "Station = A",
                                         "[Ajouter]"};

std::vector<std::string> suite(std::vector<std::string> debut, const std::vector<std::string>& fin) {
  debut.insert(debut.end(), fin.begin(), fin.end());
  return debut;
}

TEST_F(DialoguesPolygonale, TypesRowsComputesAndSavesTheReport) {
  corrPolygoDLG dialogue;
  DialogScript script(suite(kCarre, {"Nivellement = simple", "[Calculer !]", "[Sauvegarder]",
                                     chemin("Rapport.htm"), "[OK]", "[Fermer]", "[Fermer]"}));
  EXPECT_EQ(dialogue.doModal(), ui::kCancel);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(dialogue.liste.cell(0, 3), L"1.00000") << "the field's text is read as far as it is a number";
  EXPECT_EQ(dialogue.liste.cell(3, 0), L"A");
  EXPECT_EQ(dialogue.liste.cell(3, 3), L"-1.00000") << "the list keeps what was typed";
  EXPECT_NE(script.transcript.find("Résultats des calculs"), std::string::npos);
  EXPECT_NE(script.transcript.find("Le fichier " + chemin("Rapport.htm") + " a été crée ! "),
            std::string::npos);
  EXPECT_NE(lu("Rapport.htm").find("Correction simple"), std::string::npos);
}

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

TEST_F(DialoguesPolygonale, SavesInLowerCaseAndLoadsBack) {
  corrPolygoDLG dialogue;
  DialogScript script(suite(kCarre, {"X = 650000.125", "Nord = 12.5", "Angles = radians", "[Sauvegarder]",
                                     chemin("Carré"), "[Fermer]"}));
  dialogue.doModal();
  const std::string octets = lu("carré.obs");
  EXPECT_NE(octets.find("\nNom=\"A\" X= 650000.12500 Y= 1000.00000 Z= 100.00000 Gis= 12.50000\n"),
            std::string::npos);

  corrPolygoDLG autre;
  DialogScript lecture({"[Charger]", chemin("carré.obs"), "[Sauvegarder]", chemin("copie"), "[Fermer]"});
  autre.doModal();
  EXPECT_TRUE(lecture.finished()) << lecture.transcript;
  EXPECT_EQ(autre.departX.text(), L"650000.125");
  EXPECT_EQ(autre.angles.index(), 2);
  EXPECT_EQ(autre.liste.rowCount(), 4);
  EXPECT_EQ(lu("copie.obs"), octets);
}

TEST_F(DialoguesPolygonale, OneRowAndAFileThatCannotBeWrittenAreMessages) {
  corrPolygoDLG dialogue;
  DialogScript script({"[Ajouter]", "[Calculer !]", "[OK]", "[Placer !!!]", "[OK]", "[Sauvegarder]",
                       chemin("absent/a.obs"), "[OK]", "[Charger]", "", "[Fermer]"});
  dialogue.doModal();
  EXPECT_TRUE(script.finished()) << script.transcript;
  const std::string peu = "--- Calculs Topo ---\nErreur , données insuffisantes \n";
  const std::size_t premier = script.transcript.find(peu);
  EXPECT_NE(script.transcript.find(peu, premier + 1), std::string::npos) << "neither computed nor placed";
  EXPECT_NE(script.transcript.find("--- Erreur ---\nOuverture impossible du fichier\n"), std::string::npos);
  EXPECT_EQ(dialogue.liste.rowCount(), 1);
}

TEST_F(DialoguesPolygonale, RemovesTheSelectedRowElseTheLast) {
  corrPolygoDLG dialogue;
  DialogScript script(suite(kCarre, {"Liste: 2", "[Enlever !]", "[Enlever !]", "[Fermer]"}));
  dialogue.doModal();
  ASSERT_EQ(dialogue.liste.rowCount(), 2);
  EXPECT_EQ(dialogue.liste.cell(0, 0) + dialogue.liste.cell(1, 0), L"BD");
  EXPECT_TRUE(dialogue.liste.selection().empty());
  DialogScript vide({"[Enlever !]", "[Enlever !]", "[Enlever !]", "[Fermer]"});
  dialogue.doModal();
  EXPECT_EQ(dialogue.liste.rowCount(), 0);
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
