// Long jobs that the user stops: what stood before stays, what is done by then stays too.

#include "drafting/dialogs/formulaire_xyz_dlg.h"
#include "drafting/dialogs/points_dlg.h"
#include "jobs/exporter_table.h"
#include "jobs/importer_liste.h"
#include "points/exchange/import_dessin.h"
#include "support/atelier.h"
#include "support/dialog_script.h"
#include "support/dossier_temporaire.h"
#include "ui/progress.h"

#include <functional>

namespace {

using namespace veltora;

/// Stops the job in progress as soon as it has come so far.
class Interrupteur : public ui::ScriptDriver {
public:
  using ScriptDriver::ScriptDriver;
  void update(ui::Dialog& dialogue) override {
    ScriptDriver::update(dialogue);
    if (dynamic_cast<ui::CMyProgressDlg&>(dialogue).bar.percent() >= 40) requestStop(), ++arrets;
  }
  int arrets = 0;
};

class Interruption : public Atelier {
protected:
  Interruption() {
    for (int i = 1; i <= kPoints; ++i) table().Ajouter(unPoint(nom(i).c_str(), i, 2 * i, 3));
    base::remplacerFichier(fichier, "ancien");
  }
  static std::wstring nom(int i) { return L"P" + std::to_wstring(i); }
  /// Works a dialog by lines while every progress is stopped at 40 %. @return how often it was
  int jouer(const std::function<void()>& travail, std::vector<std::string> lignes = {}) {
    DialogScript script(std::move(lignes));
    Interrupteur pilote(script, script);
    acedPorts().source = &script;
    ui::Driver* avant = ui::setDriver(&pilote);
    travail();
    ui::setDriver(avant);
    acedPorts().source = nullptr;
    return pilote.arrets;
  }
  [[nodiscard]] std::string contenu() const { return base::lireFichier(fichier).value_or("(absent)"); }

  static constexpr int kPoints = 10;
  DossierTemporaire dossier;
  std::filesystem::path fichier = dossier.chemin / "liste.xyz";
};

TEST_F(Interruption, placingKeepsTheBlocksThatStand) {
  EXPECT_EQ(jouer([] { montrerPointsDuDessin(DlgPntsDuDessin::kImportPoints); }, {"[Placer]", "[Fermer]"}),
            1);
  EXPECT_EQ(entites(), 4);
  EXPECT_EQ(jouer([this] { table().renumeroter(true); }), 1);
  EXPECT_EQ(entites(), 4) << "the blocks that were there are updated first";
  EXPECT_EQ(attribut(table().getData(0)->id, L"NUMPT"), L"1");
  EXPECT_EQ(noms(table()), "1 2 3 4 5 6 7 8 9 10") << "the table is numbered whole";
}

TEST_F(Interruption, readingTheDrawingLeavesTheTable) {
  table().updateDrawing();
  ASSERT_EQ(entites(), kPoints);
  table().Ajouter(unPoint(L"seul", 0, 0));
  const std::string avant = noms(table());
  EXPECT_EQ(jouer([this] { table().updateFromDrawing(); }), 1);
  EXPECT_EQ(noms(table()), avant);
  int index = -1;
  EXPECT_TRUE(table().existPoint(L"P3", index));
}

TEST_F(Interruption, importKeepsAndNumbersWhatItHasMade) {
  for (int i = 0; i < 10; ++i) {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId(), AcDb::kForWrite);
    auto* point = new AcDbPoint(AcGePoint3d(100 + i, 0, 5));
    espace->appendAcDbEntity(point);
    point->close();
  }
  parametresImport parametres;
  parametres.masque = kToutesSources;
  EXPECT_EQ(jouer([&] { importerToutLeDessin(table(), parametres); }), 1);
  EXPECT_EQ(table().nbPoint(), kPoints + 4);
  EXPECT_STREQ(table().getData(kPoints + 3)->nomPoint, "4");
}

TEST_F(Interruption, writtenFilesAreWholeOrTheOldOnes) {
  for (const char* extension : {".xyz", ".htm"}) {
    std::filesystem::rename(fichier, std::filesystem::path(fichier).replace_extension(extension));
    fichier.replace_extension(extension);
    const auto exporter = [] { montrerPointsDuDessin(DlgPntsDuDessin::kExportPoints); };
    EXPECT_EQ(jouer(exporter, {"[Exporter]", fichier.string(), "[Fermer]"}), 1);
    EXPECT_EQ(contenu(), "ancien") << extension;
  }
  resultatPoints resultat;
  EXPECT_EQ(jouer([&] {
              EXPECT_FALSE(exporterTable({fichier, L"", 0, colonnePoints::kOrdre}, resultat));
            }),
            1);
  EXPECT_EQ(resultat.erreur, L"interrompu");
  EXPECT_EQ(contenu(), "ancien");
  EXPECT_EQ(imprime, "") << "the user knows";
}

TEST_F(Interruption, longListsAreReadWholeOrNotAtAll) {
  std::string octets;
  for (int i = 0; i < 3000; ++i) octets += base::narrow(nom(i)) + " 1 2 3\n";
  base::remplacerFichier(fichier, octets);
  tableObsXYZ liste;
  liste.lire("avant 1 2\n");
  CformulaireXYZ formulaire(getTableCodification(), liste);
  EXPECT_GT(jouer([&] { formulaire.doModal(); },
                  {"[Charger ...]", fichier.string(), "[Fusionner]", fichier.string(), "[Fin]"}),
            1);
  ASSERT_EQ(liste.lignes.size(), 1U);
  EXPECT_EQ(liste.lignes[0].nom, L"avant");
  ASSERT_EQ(liste.charger(fichier.wstring().c_str()), 1);
  base::remplacerFichier(fichier, "ancien");
  EXPECT_GT(jouer([&] { CformulaireXYZ(getTableCodification(), liste).doModal(); },
                  {"[Sauvegarder]", fichier.string(), "[PLacer dans le dessin]", "[Fin]"}),
            1);
  EXPECT_EQ(contenu(), "ancien");
  EXPECT_GT(entites(), 1000);
  EXPECT_LT(entites(), 1300);
}

TEST_F(Interruption, aDrawnTableKeepsItsRows) {
  EXPECT_EQ(jouer([] { montrerPointsDuDessin(DlgPntsDuDessin::kTableXYZ); },
                  {"[Table XYZ]", "[OK]", "0,0", "[Fermer]"}),
            1);
  EXPECT_EQ(entites(), 4 + 3 + 2 + 4 * 4)
      << "four titles, three lines between columns, line, frame, four rows";
}

}  // namespace
