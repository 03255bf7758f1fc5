#include "base/text.h"
#include "calc/dialogs/calculs_topo_dlg.h"
#include "calc/network/canevas.h"
#include "support/dialog_script.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltora {
namespace {

class FeuilleCalculs : public ::testing::Test {
protected:
  void SetUp() override { canevas().RemoveAll(); }
  void TearDown() override { canevas().RemoveAll(); }
  /// Runs the sheet on these lines and gives the rows of its list.
  static std::string montrer(std::vector<std::string> lignes) {
    CDlgCalculsTopo feuille;
    lignes.emplace_back("[OK]");
    DialogScript script(lignes);
    EXPECT_EQ(feuille.doModal(), ui::kOk);
    EXPECT_TRUE(script.finished()) << script.transcript;
    std::string rangs;
    for (int i = 0; i < feuille.canevas.liste.rowCount(); ++i) {
      for (int colonne = 0; colonne < 5; ++colonne)
        rangs += base::toUtf8(feuille.canevas.liste.cell(i, colonne)) + (colonne < 4 ? " " : "\n");
    }
    return rangs;
  }
};

TEST_F(FeuilleCalculs, AddsAndReplacesPointsOfOneArray) {
  EXPECT_EQ(
      montrer({"Station = A", "X = 650000.12346", "Y = -2", "Z = .", "Vo = ", "[Ajouter]", "Station = b",
               "X = 1.5E3", "Y = abc", "Z = 7", "Vo = 12.5", "[Ajouter]", "Station = ", "[Ajouter]"}),
      "A 650000.1235 -2.0000 . .\nb 1500.0000 . 7.0000 12.5000\n");
  // Another opening finds them again.
  EXPECT_EQ(montrer({"Station = a", "X = 1", "Y = 2", "Z = 3", "Vo = .", "[Ajouter]"}),
            "a 1.0000 2.0000 3.0000 .\nb 1500.0000 . 7.0000 12.5000\n");
  EXPECT_TRUE(canevas()[0].planiConnue && canevas()[0].altiConnue);
  EXPECT_FALSE(canevas()[1].planiConnue);
  EXPECT_EQ(canevas()[0].vo, 1e38);
}

TEST_F(FeuilleCalculs, ImportsLinesOfText) {
  CDlgCalculsTopo feuille;
  DialogScript script({"[Importer]", "?",
                       "Texte = A 1 2 3 50\\nB 4 5\\n\\n\"St 1\" 4 . x\\nC 1 2 3 4 reste\\n* D 1 2 3", "[OK]",
                       "[Importer]", "Texte = Z 1 2 3", "[Annuler]", "[Annuler]"});
  EXPECT_EQ(feuille.doModal(), ui::kCancel);
  EXPECT_NE(script.transcript.find("Introduisez les points a ajouter un par ligne."), std::string::npos);
  EXPECT_NE(script.transcript.find("Format  Nom X Y Z Vo .  Mettez un \".\" pour une donnée absente"),
            std::string::npos);
  EXPECT_EQ(montrer({"[Importer]", "Texte = a 9 9 .\\nc 9 9 9 .", "[OK]"}),
            "A 9.0000 9.0000 . 50.0000\nSt 1 4.0000 . . .\nC 9.0000 9.0000 9.0000 .\n")
      << "without Vo a point keeps its own";
}

TEST_F(FeuilleCalculs, RemovesTheSelectedRowsInWhateverOrder) {
  importerCanevas(L"A 1 1 1\nB 2 2 2\nC 3 3 3\nD 4 4 4");
  EXPECT_EQ(montrer({"[Supprimer]", "Liste: 4 1 3", "[Supprimer]"}), "B 2.0000 2.0000 2.0000 .\n");
  EXPECT_EQ(montrer({"Liste: 1", "[Supprimer]", "[Supprimer]"}), "");
}

TEST_F(FeuilleCalculs, PagesInertes) {
  CDlgCalculsTopo feuille;
  EXPECT_EQ(feuille.title(), L"Calculs topométriques");
  std::wstring titres;
  for (int i = 0; i < feuille.pages.count(); ++i) titres += feuille.pages.page(i)->caption() + L"|";
  EXPECT_EQ(titres, L"Canevas|Observations|Resultats|Import GSI|");
  DialogScript script({"[Observations]", "Station = A", "Référence = B", "Angle Horizontal = 100",
                       "Distance Horizontale = 50", "Dz = 1", "[Importer]", "[Supprimer]", "[Resultats]",
                       "[Exporter]", "[Dessiner]", "[Import GSI]", "?", "[OK]"});
  EXPECT_EQ(feuille.doModal(), ui::kOk);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(feuille.observations.liste.rowCount(), 0);
  EXPECT_EQ(feuille.resultats.vue.path(), L"");
  EXPECT_TRUE(canevas().empty());
}

}  // namespace
}  // namespace veltora
