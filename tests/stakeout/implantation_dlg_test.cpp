// The stake-out dialog: its boxes of heights, rows by groups, numbering, results that are asked for in vain.

#include "stakeout/dialogs/implantation_dlg.h"

#include "stakeout/ajouter_points.h"
#include "stakeout/dialogs/params_implantation_dlg.h"
#include "support/dialog_script.h"
#include "support/projet_essai.h"

namespace {

using namespace veltora;

class DialogueImplantation : public ProjetEssai {
protected:
  DialogueImplantation() { reglagesImplantation::commun() = {}; }
  /// Two groups, of two points and one.
  static void remplir(projetImplantation& projet) {
    const ServicesTerrain terrain;
    for (const double x : {0.0, 1.0}) ajouterPointImplantation(projet, terrain, x, 0.0);
    finirGroupe(projet);
    ajouterPointImplantation(projet, terrain, 2.0, 0.0);
  }
};

TEST_F(DialogueImplantation, HminBoite) {
  projetImplantation projet;
  projet.hauteurStation = 1.7;
  CDlgImplantationDirecte dialogue(projet);
  playDialog(dialogue, "? // [Annuler]");
  EXPECT_EQ(dialogue.hMin.text(), L"1.70") << "at start the station's height";
  EXPECT_EQ(dialogue.hStat.text(), L"");
  playDialog(dialogue, "H.Stat = -2 // H.Min = 3 // [Vérifier visibilité] // ? // [Annuler]");
  EXPECT_EQ(projet.hauteurStation, 0.0);
  EXPECT_EQ(reglagesImplantation::commun().hauteurMin, 3.0);
  playDialog(dialogue, "H.Stat = 1e31 // [Vérifier visibilité] // ? // [Annuler]");
  EXPECT_EQ(projet.hauteurStation, 1.2);
  EXPECT_EQ(dialogue.hMin.text(), L"1.20");
  EXPECT_EQ(dialogue.hStat.text(), L"1e31");
  EXPECT_EQ(reglagesImplantation::commun().hauteurMin, 3.0) << "what is shown there is not written";
}

TEST_F(DialogueImplantation, RowsAreChosenByGroups) {
  projetImplantation projet;
  remplir(projet);
  CDlgImplantationDirecte dialogue(projet);
  playDialog(dialogue, "Liste: 2 // [Annuler]");
  EXPECT_EQ(dialogue.liste.selection(), (std::vector<int>{0, 1}));
  dialogue.liste.userClick(2, true);
  EXPECT_EQ(dialogue.liste.selection(), (std::vector<int>{0, 1, 2}));
  dialogue.liste.userClick(2, false);
  EXPECT_EQ(dialogue.liste.selection(), (std::vector<int>{2}));
  EXPECT_FALSE(dialogue.numerotation.enabled());
  playDialog(dialogue, "Liste: * // [Enlever] // [Annuler]");
  EXPECT_TRUE(dialogue.numerotation.enabled());
  EXPECT_EQ(projet.points.GetSize(), 0);
}

TEST_F(DialogueImplantation, NothingAskedForKeepsItOpen) {
  projetImplantation projet;
  remplir(projet);
  CDlgImplantationDirecte dialogue(projet);
  playDialog(dialogue, "[Générer résultats] // Dessiner = oui // [Générer résultats]", ui::kOk);
}

TEST_F(DialogueImplantation, NumberingBeginsAnew) {
  projetImplantation projet;
  projet.params.afficherCodeStations = 1;
  projet.params.codeStations = 4321;
  CDlgParamsImplantationAuto dialogue(projet.params);
  const std::string montre = playDialog(
      dialogue,
      "? // Préfixe = Q // Num départ = 7 // Incrémenation Automatique du préfixe = non // [Continuer]",
      ui::kOk);
  EXPECT_NE(montre.find("4321 Code 4321 (0 pts)"), std::string::npos) << montre;
  dialogue.prendre(projet.params);
  EXPECT_EQ(projet.params.codeStations, 4321);
  remplir(projet);
  EXPECT_EQ(projet.points.GetAt(0).nom, L"Q7");
  EXPECT_EQ(projet.points.GetAt(2).nom, L"Q9");
}

}  // namespace
