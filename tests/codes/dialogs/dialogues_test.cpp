// The two dialogs, worked by lines as a script works them.
#include "base/text.h"
#include "codes/commandes_codes.h"
#include "codes/dialogs/codification_dlg.h"
#include "codes/dialogs/tab_codification_dlg.h"
#include "support/dialog_script.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
using namespace veltora;

class DialoguesCodes : public ::testing::Test {
protected:
  DialoguesCodes() { installerDialoguesCodes(); }
  /// Shows the table's dialog and works it; every line has to be used.
  std::string jouer(std::vector<std::string> lignes) {
    DialogScript script(std::move(lignes));
    table.afficherTable();
    EXPECT_TRUE(script.finished());
    return script.transcript;
  }
  static bool contient(const std::string& texte, const std::string& partie) {
    return texte.find(partie) != std::string::npos;
  }
  DossierEssai dossier;
  tableCodification table;
};

TEST_F(DialoguesCodes, TheTableShowsItsColumns) {
  table.viderTable();
  table.getOuCreerCode(12).chemin = L"C:\\a.dwg";
  EXPECT_EQ(jouer({"?", "[Fermer]"}), R"(
=== Table codification ===

=== Table codification ===
[Nouveau]
[Supprimer]
[Fermer]
Liste : 1 ligne
       | Code  | Libéllé | PreciZ | Chemin
     1 |    12 | Code 12 |      2 | C:\a.dwg
)");
}

TEST_F(DialoguesCodes, TheCodesDialogShowsItsFields) {
  const std::string texte = jouer({"Liste 2 !", "?", "[Cancel]", "[Fermer]"});
  EXPECT_TRUE(contient(texte,
                       "=== Codification ===\nCode = 100   (lecture seule)\nLibellé = Station\n"
                       "Layer Block = 0\nLayer Numéros = _ Numero Points\n"
                       "Layer Altitudes = _ Altitudes Points\nLayer Obs = _ Obs Points\n"
                       "Layer Code = _ Codes Points\nTaille = 1\nPrecision Altis = 2\n[Symbole]\n"))
      << texte;
}

TEST_F(DialoguesCodes, nouveau_defauts_KeepsOnlyCodeLabelAndPath) {
  jouer({"[Nouveau]", "Code = 12", "Libellé = Arbre", "Layer Block = ARBRES", "Taille = 3",
         "Precision Altis = 4", "[OK]", "[Fermer]"});
  ASSERT_EQ(table.codes.size(), 3u);
  const codifPoint& ligne = table.codes[2];
  EXPECT_EQ(ligne.code, 12);
  EXPECT_EQ(ligne.libelle, L"Arbre");
  EXPECT_EQ(ligne.chemin, L"") << "the default block";
  EXPECT_EQ(ligne.layers[layerBlock], L"0");
  EXPECT_EQ(ligne.tailleBlock, 1.0);
  EXPECT_EQ(ligne.precisionAltitudes, 2);
}

TEST_F(DialoguesCodes, ACodeIsCheckedWhenItsFieldIsLeft) {
  // The new dialog opens on "-1": OK cannot be reached before the code is right.
  const std::string texte =
      jouer({"[Nouveau]", "[OK]", "[OK]", "Code = 10000", "[OK]", "[OK]", "Code = abc", "Libellé = x", "[OK]",
             "Code = 100", "[OK]", "[OK]", "Code =  ? ;", "[OK]", "[Fermer]"});
  EXPECT_TRUE(contient(texte, "--- Erreur ---\nCode incorrect\nTapez un nombre compris entre 1 et 9999\n"))
      << texte;
  EXPECT_TRUE(contient(texte,
                       "--- Erreur ---\nCode déjà existant\nTapez un '?' pour qu'un numéro soit attribué "
                       "automatiquement\n"))
      << texte;
  ASSERT_EQ(table.codes.size(), 3u);
  EXPECT_EQ(table.codes[2].code, 2) << "the smallest free one";
  EXPECT_EQ(table.codes[2].libelle, L" ???") << "the label proposed";
  jouer({"[Nouveau]", "Code = 0", "[OK]", "[OK]", "[OK]", "[Fermer]"});
  EXPECT_EQ(table.codes[3].code, 3) << "a wrong code leaves a question mark";
}

TEST_F(DialoguesCodes, AFullTableGivesNoCode) {
  table.viderTable();
  for (int code = 1; code <= 9999; ++code)
    table.codes.Add(codifPoint()), table.codes[table.codes.size() - 1].code = code;
  const std::string texte = jouer({"[Nouveau]", "Code = ?", "[OK]", "[OK]", "[OK]", "[Cancel]", "[Fermer]"});
  EXPECT_TRUE(contient(texte, "--- erreur ---\nPas de code à attribuer\n")) << texte;
  EXPECT_EQ(table.codes.size(), 9999u);
}

TEST_F(DialoguesCodes, ADoubleClickEditsEverythingButTheCode) {
  jouer({"Liste 2 !", "Libellé = Borne", "Layer Block = B", "Layer Numéros = N", "Layer Altitudes = A",
         "Layer Obs = O", "Layer Code = C", "Taille = 0.25", "Precision Altis = 0", "[OK]", "[Fermer]"});
  const codifPoint& ligne = table.codes[1];
  EXPECT_EQ(ligne.code, 100);
  EXPECT_EQ(ligne.libelle, L"Borne");
  EXPECT_EQ(ligne.layers, (std::array<std::wstring, 5>{L"B", L"A", L"N", L"O", L"C"}));
  EXPECT_EQ(ligne.tailleBlock, 0.25);
  EXPECT_EQ(ligne.precisionAltitudes, 0);
  EXPECT_EQ(ligne.chemin, cheminInstallation(L"biblio\\varnblk3.dwg"));
}

TEST_F(DialoguesCodes, SizesAndDecimalsAreCheckedOnOk) {
  const std::string texte = jouer({"Liste 1 !", "Taille = 0", "[OK]", "[OK]", "Taille = 2",
                                   "Precision Altis = 9", "[OK]", "[OK]", "[Cancel]", "[Fermer]"});
  EXPECT_TRUE(contient(texte, "compris entre 0 et 8")) << texte;
  EXPECT_EQ(table.codes[0].tailleBlock, 1.0) << "cancelled";
}

TEST_F(DialoguesCodes, symbole_immediat_ChangesAnExistingRowBeforeOk) {
  const std::string fichier = (dossier.chemin / "borne.dxf").string();
  dossier.ecrire("borne.dxf", "");
  jouer({"Liste 2 !", "[Symbole]", fichier, "[Cancel]", "[Fermer]"});
  const std::wstring attendu(dossier.chemin.wstring() + L"/borne.dwg");
  EXPECT_EQ(table.codes[1].chemin, attendu) << "kept though cancelled; served by the .dxf of that name";
  const std::string texte = jouer({"[Nouveau]", "Code = 3", "[Symbole]", fichier, "[OK]", "[Fermer]"});
  EXPECT_TRUE(contient(texte, "--- Fichier à utiliser ---")) << texte;
  EXPECT_EQ(table.codes[2].chemin, attendu);
}

TEST_F(DialoguesCodes, SymboleProposesAFileThatItAccepts) {
  dossier.ecrire("borne.dxf", "");
  const std::string present = (dossier.chemin / "borne").string();
  table.codes[0].chemin = base::fromUtf8(present + ".dwg");
  std::string texte = jouer({"Liste 1 !", "[Symbole]", present + ".dxf", "[OK]", "[Fermer]"});
  EXPECT_TRUE(contient(texte, "proposé : " + present + ".dxf\n")) << texte;
  EXPECT_EQ(table.codes[0].chemin, base::fromUtf8(present + ".dwg"));
  table.codes[0].chemin = base::fromUtf8(present + "2.dwg");
  texte = jouer({"Liste 1 !", "[Symbole]", "", "[OK]", "[Fermer]"});
  EXPECT_FALSE(contient(texte, "proposé :")) << texte;
}

TEST_F(DialoguesCodes, BlockPathsAreCompletedWhenShown) {
  const std::pair<const wchar_t*, std::wstring> cas[] = {
      {L"biblio\\varnblk1", cheminInstallation(L"biblio\\varnblk1.dwg")},
      {L"C:\\blocs\\A.DWG", L"C:\\blocs\\A.DWG"},
      {L"/blocs/a.bak", L"/blocs/a.bak.dwg"},
      {L"dwg", cheminInstallation(L"dwg.dwg")},
      {L"", L""},
  };
  for (const auto& [saisi, complet] : cas) {
    table.codes[0].chemin = saisi;
    jouer({"Liste 1 !", "[OK]", "[Fermer]"});
    EXPECT_EQ(table.codes[0].chemin, complet);
  }
}

TEST_F(DialoguesCodes, DeletingAsksFirst) {
  for (const int code : {5, 6, 7}) table.getOuCreerCode(code);
  jouer({"[Supprimer]", "Liste: 1 3 5", "[Supprimer]", "[Non]", "[Fermer]"});
  EXPECT_EQ(table.codes.size(), 5u) << "no selection, then No";
  const std::string texte = jouer({"Liste: 1 3 5", "[Supprimer]", "[Oui]", "?", "[Fermer]"});
  EXPECT_TRUE(contient(texte, "--- Suppression ---\nConfirmez la suppression\ndes éléments sélectionnés\n"))
      << texte;
  EXPECT_TRUE(contient(texte, "Liste : 2 lignes"));
  ASSERT_EQ(table.codes.size(), 2u);
  EXPECT_EQ(table.codes[0].code, 100);
  EXPECT_EQ(table.codes[1].code, 6);
}

TEST_F(DialoguesCodes, AColumnTitleSortsTheListNotTheTable) {
  table.getOuCreerCode(50).libelle = L"arbre";
  const std::string texte = jouer({"Liste ^ Libéllé", "Liste: 1", "[Supprimer]", "[Oui]", "[Fermer]"});
  ASSERT_EQ(table.codes.size(), 2u);
  EXPECT_EQ(table.codes[0].code, 1) << "the row goes by its code";
  EXPECT_EQ(table.codes[1].code, 100);
}

TEST_F(DialoguesCodes, TheCommandWritesTheFileWhateverButtonClosedIt) {
  getTableCodification().nomFichier = cheminInstallation(L"defcodif");
  getTableCodification().viderTable();
  DialogScript script({"[Nouveau]", "Code = 77", "Libellé = Mur", "[OK]", "*Annuler*"});
  vcodification();
  EXPECT_TRUE(contient(dossier.lire("defcodif"),
                       "<code>77</code>\n            <libelle mode=\"utf8\">Mur</libelle>"));
}

}  // namespace
