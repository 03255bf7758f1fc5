// The page "Import GSI" of the sheet, and the dialog of IMPORTGSI.

#include "base/files.h"
#include "base/text.h"
#include "calc/dialogs/calculs_topo_dlg.h"
#include "field/dialogs/import_gsi_dlg.h"
#include "support/dialog_script.h"
#include "support/dossier_temporaire.h"

#include <gtest/gtest.h>

namespace veltora {
namespace {

constexpr const char* kCarnet =
    "110001+000000P1 210002+00100000 220002+10000000 310000+00012345 810000+00001000 820000+00002000 \n"
    "110002+000000P2 810000+00003000 820000+00004000 830000+00005000 \r\n"
    "110003+000000P3 210002+00200000 \r"
    "840001+00001000 \n"
    "410005+00000012 ";

class PageGsi : public ::testing::Test {
protected:
  void SetUp() override {
    getTableObsRayonnees().viderTable();
    base::remplacerFichier(fichier, kCarnet);
  }
  void TearDown() override { getTableObsRayonnees().viderTable(); }
  static std::string contenu(const ui::List& liste) {
    std::string texte;
    for (int i = 0; i < liste.rowCount(); ++i) {
      for (std::size_t j = 0; j < liste.columns().size(); ++j)
        texte += base::toUtf8(liste.cell(i, static_cast<int>(j))) + "|";
      texte += "\n";
    }
    return texte;
  }
  DossierTemporaire dossier;
  std::string fichier = (dossier.chemin / "carnet.gsi").string();
};

TEST_F(PageGsi, ReadsAnalysesAndShows) {
  getTableObsRayonnees().nomsCanevas().insert("nord");
  CDlgCalculsTopo feuille;
  DlgCalcImportGSI& page = feuille.importGsi;
  DialogScript script({"[Import GSI]", "[Fichier de données/...]", fichier, "[Analyse]",
                       "[Detail des données]", "Format ?", "[OK]"});
  EXPECT_EQ(feuille.doModal(), ui::kOk);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_NE(script.transcript.find("Sans extension"), std::string::npos);
  // The order of the known points is the set's.
  EXPECT_EQ(contenu(page.canevas).size(),
            std::string("      P1|1.0000|2.0000||\n      P2|3.0000|4.0000|5.0000|\n").size());
  EXPECT_NE(contenu(page.canevas).find("      P1|1.0000|2.0000||\n"), std::string::npos);
  EXPECT_NE(contenu(page.canevas).find("      P2|3.0000|4.0000|5.0000|\n"), std::string::npos);
  EXPECT_EQ(contenu(page.lectures),
            "0|      P1|1.00000|2.00000||1.00000|100.00000|12.34500|\n"
            "1|      P2|3.00000|4.00000|5.00000||||\n2|      P3||||2.00000|||\n3|      P3||||2.00000|||\n");
  EXPECT_EQ(base::toUtf8(page.format.text()),
            "      P1\tah = 1.00000\tav =  100.00000\tdi =  12.34500\tXpt = 1.00000\tYpt = 2.00000\r\n"
            "      P2\tXpt = 3.00000\tYpt = 4.00000\tZpt = 5.00000\r\n"
            "      P3\tah = 2.00000\r\n code: 41 val = [      12]\r\n");
  EXPECT_FALSE(getTableObsRayonnees().nomsCanevas().contains("nord")) << "the analysis empties the table";
}

TEST_F(PageGsi, GsiBoutonsInertes) {
  CDlgCalculsTopo feuille;
  DlgCalcImportGSI& page = feuille.importGsi;
  const std::string absent = (dossier.chemin / "absent").string();
  DialogScript script({"[Import GSI]", "[Fichier de données/...]", fichier, "[Analyse]", "[Config]",
                       "[Transferer pour calculs]", "[Detail des données]", "[Données brutes]",
                       "[Fichier de données/...]", "", "[Analyse]", "[OK]"});
  EXPECT_EQ(feuille.doModal(), ui::kOk);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(page.lectures.rowCount(), 4)
      << "a file choice that is left changes nothing, a second analysis nothing";
  EXPECT_EQ(base::toUtf8(page.format.text()).substr(0, 40), std::string(kCarnet).substr(0, 40));
  EXPECT_TRUE(page.format.text().ends_with(L"840001+00001000 \r\n410005+00000012 \r\n"));
}

TEST_F(PageGsi, CopiesTheSelectedRowsOrAll) {
  CDlgCalculsTopo feuille;
  DialogScript script({"[Import GSI]", "[Fichier de données/...]", fichier, "[Analyse]", "Lectures: 2 4",
                       "[Lectures/Copier]", "[OK]", "[OK]"});
  EXPECT_EQ(feuille.doModal(), ui::kOk);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(base::toUtf8(script.driver.clipboard().value_or(L"")),
            "Id\tNUM\tCoord X\tCoord Y\tCoord Z\tAngle Horiz\tAngle Vertic\tDist Incl\r\n"
            "1\t      P2\t3.00000\t4.00000\t5.00000\t\t\t\r\n3\t      P3\t\t\t\t2.00000\t\t\r\n");
  EXPECT_NE(script.transcript.find("--- Copie vers presse papier ---\nDonnées copiées dans le presse papier"),
            std::string::npos);
  DialogScript tout({"[Import GSI]", "[Canevas/Copier]", "[OK]", "[OK]"});
  EXPECT_EQ(feuille.doModal(), ui::kOk);
  EXPECT_TRUE(tout.finished()) << tout.transcript;
  const std::wstring copie = tout.driver.clipboard().value_or(L"");
  EXPECT_TRUE(copie.starts_with(L"NUM\tCoord X\tCoord Y\tCoord Z\r\n"));
  EXPECT_EQ(std::count(copie.begin(), copie.end(), L'\n'), 3);
}

TEST_F(PageGsi, GsiAnalyseAjouteToTheTable) {
  ImportGSI boite;
  EXPECT_FALSE(boite.analyser.enabled());
  DialogScript script(
      {"[Fichier/...]", "", "[Fichier/...]", fichier, "Analyse ?", "[Analyser]", "[Analyser]", "[Cancel]"});
  EXPECT_EQ(boite.doModal(), ui::kCancel);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_NE(script.transcript.find("Appuyer sur le bouton Analyser \n  pour démarrer l'analyse!"),
            std::string::npos)
      << script.transcript;
  EXPECT_EQ(getTableObsRayonnees().lectures.size(), 8U);
  EXPECT_TRUE(boite.analyse.text().ends_with(L"\n code: 41 val = [      12]\n"));
  EXPECT_EQ(boite.progression.maximum(), 4);
  EXPECT_EQ(boite.progression.position(), 4);
  EXPECT_EQ(boite.brut.text().substr(0, 8), L"110001+0");
}

}  // namespace
}  // namespace veltora
