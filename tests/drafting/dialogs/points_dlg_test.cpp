// The list of points: buttons, order, filter, export, placing, reading back, the picker, the import.

#include "drafting/dialogs/points_dlg.h"
#include "support/atelier.h"
#include "support/case_rows.h"
#include "support/dialog_script.h"
#include "support/dossier_temporaire.h"
#include "support/golden.h"

#include <algorithm>
#include <filesystem>
#include <functional>

namespace {

using namespace veltora;
using Mode = DlgPntsDuDessin::Mode;

/// Answers of dialogs and prompts; `avant` runs before a given answer.
class Reponses : public DialogScript {
public:
  using DialogScript::DialogScript;
  std::optional<std::string> readLine(const base::Request& request) override {
    auto ligne = DialogScript::readLine(request);
    if (ligne && *ligne == repere && avant) avant();
    return ligne;
  }
  std::string repere;
  std::function<void()> avant;
};

class PointsDuDessin : public Atelier {
protected:
  PointsDuDessin() {
    table().Ajouter(unPoint(L"P10", 650003, 6860001, 12.3456, 7));
    table().Ajouter(unPoint(L"p2", 650001, 6860003, Z_ABSENT, 1));
    table().Ajouter(unPoint(L"3", 650003, 6860002, -4, 7));
    table().Ajouter(unPoint(L"Été", 650002, 6860002, 0, 1));
    getTableCodification().getOuCreerCode(7).libelle = L"Arbre";
  }

  /// Runs the dialog on these lines. @return what was printed
  std::string jouer(int mode, const std::vector<std::string>& lignes) {
    Reponses script(lignes);
    return jouer(mode, script);
  }
  std::string jouer(int mode, Reponses& script) {
    acedPorts().source = &script;
    montrerPointsDuDessin(mode);
    EXPECT_TRUE(script.finished()) << script.transcript;
    acedPorts().source = nullptr;
    return script.transcript;
  }
  /// The column of numbers after these lines.
  std::string ordre(std::vector<std::string> lignes) {
    DialogScript script(lignes);
    DlgPntsDuDessin dialogue(getTableCodification(), table(), Mode::kExportPoints);
    dialogue.doModal();
    std::string liste;
    for (int i = 0; i < dialogue.liste.rowCount(); ++i)
      liste += base::toUtf8(dialogue.liste.cell(i, 1)) + " ";
    return liste;
  }
  [[nodiscard]] std::string chemin(const std::string& nom) const { return (dossier.chemin / nom).string(); }

  const DossierTemporaire dossier;
};

TEST_F(PointsDuDessin, EachModeShowsItsButtons) {
  const struct {
    int mode;
    const char* boutons;
  } cas[] = {{Mode::kImportPoints, "Importer Placer"},
             {Mode::kMajPoints, "Raffraichir"},
             {Mode::kExportPoints, "Exporter Raffraichir"},
             {Mode::kTableXYZ, "Table XYZ Raffraichir"},
             {Mode::kChoixPoint, "OK"}};
  for (const auto& c : cas) {
    const DlgPntsDuDessin dialogue(getTableCodification(), table(), c.mode);
    std::string visibles;
    for (const ui::Control* controle : dialogue.controls()) {
      const std::wstring legende = controle->plainCaption();
      if (controle->kindName() == L"Bouton" && controle->visible() && legende != L"Fermer")
        visibles += (visibles.empty() ? "" : " ") + base::toUtf8(legende);
    }
    EXPECT_EQ(visibles, c.boutons);
  }
}

TEST_F(PointsDuDessin, AClickSortsAnotherClickOnTheColumnTurnsRound) {
  for (const CaseRow& cas : caseRows("drafting/cases/points.txt", "order"))
    EXPECT_EQ(base::trim(ordre(cas[0].empty() ? std::vector<std::string>() : cas.list(0)), " "), cas[1])
        << cas;
}

TEST_F(PointsDuDessin, ExportsWhatIsSelectedElseWhatIsListedInTheFormOfTheName) {
  jouer(Mode::kExportPoints,
        {"[Exporter]", chemin("tout"), "Liste ^ Z", "Liste: 1 3", "[Exporter]", chemin("choix.TXT"),
         "Filtre = 0001   Point topo", "[Exporter]", chemin("filtre.xyz"), "[Exporter]", "", "[Fermer]"});
  EXPECT_TRUE(memeQueReference("export_points.xyz", dossier.lire("tout.XYZ")));
  EXPECT_EQ(dossier.lire("choix.TXT"),
            "         3\t    650003.0000\t   6860002.0000\t        -4.0000\t    7\n"
            "       P10\t    650003.0000\t   6860001.0000\t        12.3456\t    7\n");
  EXPECT_EQ(dossier.lire("filtre.xyz").substr(0, 10), "       \xC9t\xE9");
  jouer(Mode::kExportPoints, {"[Exporter]", chemin("r.doc"), "[Fermer]"});
  EXPECT_TRUE(memeQueReference("export_points.doc", dossier.lire("r.doc")));
}

TEST_F(PointsDuDessin, ExportToujoursWord) {
  jouer(Mode::kExportPoints, {"[Exporter]", chemin("r.htm"), "[Exporter]", chemin("r.HTML"), "[Exporter]",
                              chemin("r.Doc"), "[Fermer]"});
  EXPECT_TRUE(memeQueReference("export_points.doc", dossier.lire("r.htm")));
  EXPECT_EQ(dossier.lire("r.HTML"), dossier.lire("r.htm"));
  EXPECT_EQ(dossier.lire("r.Doc"), dossier.lire("r.htm"));
}

TEST_F(PointsDuDessin, AFileThatCannotBeWrittenIsToldOnTheCommandLine) {
  jouer(Mode::kExportPoints,
        {"[Exporter]", chemin("absent/a.xyz"), "[Exporter]", chemin("absent/a.doc"), "[Fermer]"});
  EXPECT_NE(imprime.find("absent/a.xyz"), std::string::npos) << imprime;
  EXPECT_NE(imprime.find("absent/a.doc"), std::string::npos) << imprime;
}

TEST_F(PointsDuDessin, PlacesThePointsOfTheFilterAndReadsThemBack) {
  jouer(Mode::kImportPoints, {"Filtre = 0007   Arbre", "[Placer]", "[Fermer]"});
  EXPECT_EQ(entites(), 2);
  EXPECT_EQ(attribut(table().getData(0)->id, L"NUMPT"), L"P10");
  jouer(Mode::kImportPoints, {"[Placer]", "[Fermer]"});
  EXPECT_EQ(entites(), 4) << "blocks that stand are updated";
  table().Ajouter(unPoint(L"perdu", 1, 2));
  const std::string ecran = jouer(Mode::kMajPoints, {"[Raffraichir]", "?", "[Fermer]"});
  EXPECT_EQ(noms(table()), "P10 3 P2 \xC9T\xC9") << "as the blocks stand in the drawing";
  EXPECT_NE(ecran.find("ÉTÉ"), std::string::npos) << ecran;
}

TEST_F(PointsDuDessin, ImportAddsToTheListAndKeepsTheFilter) {
  mettre(dessin, new AcDbPoint({1, 2, 3}));
  const std::string ecran = jouer(Mode::kImportPoints, {"[Importer]", "[Annuler]", "Filtre = 0007   Arbre",
                                                        "[Importer]", "[OK]", "TOUT", "", "?", "[Fermer]"});
  EXPECT_EQ(table().nbPoint(), 5);
  EXPECT_NE(ecran.find("Filtre = 0007   Arbre"), std::string::npos) << ecran;
  EXPECT_NE(ecran.find("9997   Sommets importes a partir des points"), std::string::npos) << ecran;
}

TEST_F(PointsDuDessin, ThePickerGivesOneName) {
  const struct {
    std::vector<std::string> lignes;
    const wchar_t* nom;
  } cas[] = {{{"Liste: 2", "[OK]"}, L"p2"},
             {{"Liste ^ Z", "Liste: 2", "[OK]"}, L"Été"},
             {{"Liste 3 !"}, L"3"},
             {{"[OK]", "[OK]", "[Fermer]"}, L"-"},
             {{"Liste: 1", "[Fermer]"}, L"-"}};
  for (const auto& c : cas) {
    DialogScript script(c.lignes);
    AcString nom = L"-";
    EXPECT_EQ(choisirPoint(nom), *c.nom != L'-');
    EXPECT_EQ(nom, c.nom);
    EXPECT_TRUE(script.finished());
  }
}

TEST_F(PointsDuDessin, ATableThatIsRemovedDuringThePromptClosesTheDialog) {
  projet.creerTablePoints(L"autre");
  Reponses script({"[Table XYZ]", "[OK]", "1,2"});
  script.repere = "1,2";
  script.avant = [this] { projet.removeTablePoints(0); };
  jouer(Mode::kTableXYZ, script);
  EXPECT_EQ(entites(), 0);
}

TEST(SansProjet, NothingIsShown) {
  montrerPointsDuDessin(Mode::kExportPoints);
  AcString nom;
  EXPECT_FALSE(choisirPoint(nom));
}

}  // namespace
