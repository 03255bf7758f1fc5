#include "base/files.h"
#include "base/text.h"
#include "calc/dialogs/def_variable_dlg.h"
#include "calc/dialogs/formule_poids_dlg.h"
#include "calc/dialogs/tab_poids_dlg.h"
#include "calc/network/fichier_mc.h"
#include "core/file_serializer.h"
#include "support/dialog_script.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <string>
#include <vector>

namespace veltora {
namespace {

// Pieces of a formula file, byte by byte: what any other program would write.

std::string petitBoutiste(std::uint64_t bits, int octets) {
  std::string texte;
  for (int i = 0; i < octets; ++i) texte += static_cast<char>((bits >> (8 * i)) & 0xFF);
  return texte;
}

std::string entier(int valeur) { return "i" + petitBoutiste(static_cast<std::uint32_t>(valeur), 4); }
std::string reel(double valeur) { return "d" + petitBoutiste(std::bit_cast<std::uint64_t>(valeur), 8); }
std::string texte(const std::string& ansi, int longueur = INT_MIN) {
  const int n = longueur == INT_MIN ? static_cast<int>(ansi.size()) : longueur;
  return "c" + entier(n) + "b" + ansi + std::string(1, '\0');
}
std::string variable(const std::string& nom, double valeur, const std::string& commentaire) {
  return texte(nom) + reel(valeur) + texte(commentaire);
}

const std::string kTextes = texte("q") + texte("A+1") + texte("1/d1") + texte("former") + texte("D*d1");
const std::string kDeuxVariables = variable("D1", 4.0, "ignored") + variable("Essai", 2.5, "\xE9tal");
const std::string kBon = entier(12345) + kTextes + entier(2) + kDeuxVariables;

class Poids : public ::testing::Test {
protected:
  [[nodiscard]] std::string chemin(const std::string& nom) const { return (m_dossier.chemin / nom).string(); }
  DossierEssai m_dossier;
};

struct CasFmc {
  const char* nom;
  std::string octets;
  bool bon;
  const char* angles;  ///< texts after the load
  const char* distances;
  int variables;
};

TEST_F(Poids, LoadsFormulaFilesAsFarAsTheyCanBeRead) {
  const std::string debut = entier(12345);
  const std::string suite = kTextes.substr(texte("q").size());
  const CasFmc cas[] = {
      {"good", kBon, true, "A+1", "D*d1", 5},
      {"wrong magic, all the rest is read", entier(1) + kBon.substr(5), false, "A+1", "D*d1", 5},
      {"magic of another type", reel(12345) + kBon.substr(5), false, "1.0", "1.0", 4},
      {"empty", "", false, "1.0", "1.0", 4},
      {"negative count", debut + kTextes + entier(-3) + kDeuxVariables, true, "A+1", "D*d1", 4},
      {"count beyond the end", debut + kTextes + entier(INT_MAX) + kDeuxVariables, false, "A+1", "D*d1", 5},
      {"comment missing", debut + kTextes + entier(1) + texte("x") + reel(1), false, "A+1", "D*d1", 4},
      {"distances once only", debut + kTextes.substr(0, kTextes.size() - texte("D*d1").size()) + entier(0),
       false, "A+1", "former", 4},
      {"text as long as allowed", debut + texte(std::string(255, 'q')) + suite + entier(0), true, "A+1",
       "D*d1", 4},
      {"text too long", debut + texte(std::string(256, 'q')) + suite, false, "1.0", "1.0", 4},
      {"negative length", debut + texte("q", -1) + suite, false, "1.0", "1.0", 4},
      {"huge length", debut + texte("q", INT_MAX) + suite, false, "1.0", "1.0", 4},
      {"zero byte in a text", debut + texte(std::string("q\0q", 3)) + suite, false, "1.0", "1.0", 4},
  };
  for (const CasFmc& c : cas) {
    m_dossier.ecrire("essai.fmc", c.octets);
    formulesPoids formules;
    formules.angles = formules.distances = "gone";
    formules.definir("gone", 1.0);
    CDlgFormulePoids dialogue(formules);
    std::vector<std::string> lignes{"[Charger]", chemin("essai.fmc"), "[Fermer]"};
    if (!c.bon) lignes.insert(lignes.end() - 1, "[OK]");
    DialogScript script(lignes);
    dialogue.doModal();
    EXPECT_TRUE(script.finished()) << c.nom << script.transcript;
    const bool message = script.transcript.find("\nErreur dans le fichier\n") != std::string::npos;
    EXPECT_EQ(message, !c.bon) << c.nom;
    EXPECT_EQ(base::narrow(dialogue.angles.text()), c.angles) << c.nom;
    EXPECT_EQ(formules.distances, c.distances) << c.nom;
    EXPECT_EQ(dialogue.constantes.rowCount(), c.variables) << c.nom;
  }
}

TEST_F(Poids, AFileCutAnywhereIsReadUpToThereAndRefused) {
  for (std::size_t coupe = 0; coupe < kBon.size(); ++coupe) {
    m_dossier.ecrire("coupe.fmc", kBon.substr(0, coupe));
    FileSerializer fichier(chemin("coupe.fmc"), false);
    formulesPoids formules;
    ASSERT_FALSE(formules.lire(fichier)) << coupe;
    const std::size_t finAngles = entier(0).size() + texte("q").size() + texte("A+1").size();
    ASSERT_EQ(formules.angles, coupe < finAngles ? "1.0" : "A+1") << coupe;
  }
}

TEST_F(Poids, AVariableOfTheFileKeepsWhatTheSystemSaysOfIt) {
  m_dossier.ecrire("essai.fmc", kBon);
  formulesPoids formules;
  CDlgFormulePoids dialogue(formules);
  playDialog(dialogue, "[Charger] // " + chemin("essai") +
                           " // Constantes: 2 // [Supprimer] // [Modifier] // Constantes: 5 // [Supprimer] "
                           "// [Supprimer] // [Charger] //  // [Fermer]");
  ASSERT_EQ(formules.nombre(), 4) << "the file's own variable goes, d1 does not";
  EXPECT_EQ(formules.valeur(1), 4.0);
  EXPECT_EQ(dialogue.constantes.cell(1, 1), L"* obs *");
  EXPECT_EQ(dialogue.constantes.cell(1, 2), L"Distance station - Point visé");
  EXPECT_EQ(formules.quatrieme, "q");
}

TEST_F(Poids, AFileThatCannotBeOpenedChangesNothing) {
  // The name leaves the code page of the file layer.
  m_dossier.ecrire("\xD0\x96.fmc", kBon);
  formulesPoids formules;
  formules.gisements = "d1";
  formules.definir("k", 3.0);
  CDlgFormulePoids dialogue(formules);
  const std::string script = playDialog(
      dialogue, "Gisements = d2 // [Charger] // " + chemin("\xD0\x96.fmc") + " // [OK] // [Fermer]");
  EXPECT_NE(script.find("\nErreur ouverture de fichier\n"), std::string::npos);
  EXPECT_EQ(dialogue.gisements.text(), L"d2");
  EXPECT_EQ(formules.gisements, "d1");
  EXPECT_EQ(formules.nombre(), 5);
}

TEST_F(Poids, FmcSansEcriture) {
  m_dossier.ecrire("ancien.fmc", kBon);
  formulesPoids formules;
  CDlgFormulePoids dialogue(formules);
  const std::string script =
      playDialog(dialogue, "Angles = 1/d1 // Gisements = 2 // Distances = d1^2 // [Enregistrer] // " +
                               chemin("ancien") + " // [OK] // [Enregistrer] // " + chemin("neuf.fmc") +
                               " // [OK] // [Enregistrer] // " + chemin("absent/neuf.fmc") +
                               " // [OK] // Angles = 7 // [Enregistrer] //  // Angles = 8 // [Fermer]");
  EXPECT_EQ(m_dossier.lire("ancien.fmc"), kBon) << "what stood there is whole";
  EXPECT_EQ(m_dossier.lire("neuf.fmc"), "(absent)");
  int messages = 0;
  for (std::size_t lieu = 0; (lieu = script.find("Erreur création de fichier", lieu)) != std::string::npos;
       ++lieu)
    ++messages;
  EXPECT_EQ(messages, 3) << "in every case but the cancelled choice";
  EXPECT_EQ(formules.angles + "," + formules.gisements + "," + formules.distances, "7,2,d1^2")
      << "the texts are kept by \"Enregistrer\", not by \"Fermer\"";
}

TEST_F(Poids, ChecksFormulasOfEveryKind) {
  const std::pair<const char*, const char*> cas[] = {
      {"1/d1^2", "OK : ( 1.0000 / ( d1 ^ 2.0000 ) )"},
      {"10-3-2", "OK : ( 10.0000 - ( 3.0000 - 2.0000 ) )"},
      {"", "OK : Erreur !!!"},
      {"2+", "OK : #ERR"},
      {"(2", "Erreur dans la formule2.0000"},
      {"1.", "Erreur dans la formuleErreur !!!"},
      {"d1 d2!", "Erreur dans la formuled1d2"},
      {"é", "Erreur dans la formuleErreur !!!"},
  };
  for (const auto& [saisie, lu] : cas) {
    for (const std::string champ : {"Angles", "Gisements", "Distances"}) {
      formulesPoids formules;
      CDlgFormulePoids dialogue(formules);
      playDialog(dialogue, champ + " = " + saisie + " // " + "[" + champ + "/Vérifer]" + " // [Fermer]");
      EXPECT_EQ(base::toUtf8(dialogue.lecture.text()), lu) << champ << " " << saisie;
    }
  }
}

TEST_F(Poids, TriesTheThreeFormulasOnTypedValues) {
  formulesPoids formules;
  formules.definir("k", 100.0);
  CDlgFormulePoids dialogue(formules);
  const std::string script = playDialog(
      dialogue,
      "Angles = k/d1 // Gisements = ang+d2*d3 // Distances = 1/d1/inconnu // d1 = 50 // d2 = 2 // d3 = 3 // "
      "angle(gr) = 400.5 // [Calculer] // [OK] // angle(gr) = 400 // [Calculer] // [Fermer]");
  EXPECT_NE(script.find("Entrez un nombre compris entre 0 et 400."), std::string::npos);
  EXPECT_EQ(dialogue.poidsAngle1.text(), L"2");
  EXPECT_EQ(dialogue.poidsAngle2.text(), L"406");
  EXPECT_EQ(dialogue.poidsDistance.text(), L"0") << "d1/inconnu is 0, and so is 1 over it";
}

TEST_F(Poids, DeclaresNamesAndEditsVariables) {
  formulesPoids formules;
  CDlgFormulePoids dialogue(formules);
  playDialog(dialogue,
             "Angles = Alpha+beta*D1 // Gisements = ALPHA-( // Distances = gamma // [Importer] // [Ajouter] "
             "// [OK] // Nom = ang // [OK] // Nom = beta. // [OK] // Nom =  ;Delta., // Valeur = 1,5 // "
             "Commentaire = été // [OK] // [Ajouter] // Nom = rien // [Cancel] // [Modifier] // [Supprimer] "
             "// Constantes: 8 // [Modifier] // Valeur = -2.25x // Commentaire = hiver // [OK] // "
             "Constantes: 5 // [Modifier] // Valeur = 9 // [Cancel] // [Supprimer] // [Fermer]");
  std::wstring lignes;
  for (int i = 4; i < dialogue.constantes.rowCount(); ++i) {
    for (int colonne = 0; colonne < 3; ++colonne) lignes += dialogue.constantes.cell(i, colonne) + L"|";
  }
  EXPECT_EQ(base::toUtf8(lignes),
            "beta|1.0000|Importé des formules|gamma|1.0000|Importé des formules|delta|-2.2500|hiver|");
  EXPECT_FALSE(formules.systeme(formules.chercher("DELTA")));
  CDefVariable modification(formules, formules.chercher("delta"));
  EXPECT_EQ(modification.valeur.text(), L"-2.2500");
  EXPECT_TRUE(modification.nom.readOnly());
}

// Angles with and without reference, a distance, a height difference, and a station named NORD.
constexpr const char* kReseau =
    "XYZ\nA 0 0 10\nB 100 0\nOBS\nA B P 50.5 70.25 1.5 3\nA NORD P 100 . . .\nNORD A P 25 . . 2\n";

TEST_F(Poids, ShowsEachObservationWithItsWeight) {
  reseauMoindresCarres reseau;
  ASSERT_TRUE(lireMc(kReseau, reseau));
  ObservationReduite etrangere;
  etrangere.station = 99;
  reseau.observations.Add(etrangere);
  CDlgTabPoidsObse dialogue(reseau);
  playDialog(dialogue, "[Fermer]");
  std::string lignes;
  for (int i = 0; i < dialogue.liste.rowCount(); ++i) {
    for (int colonne = 0; colonne < 7; ++colonne)
      lignes += base::toUtf8(dialogue.liste.cell(i, colonne)) + (colonne < 6 ? "|" : "\n");
  }
  EXPECT_EQ(lignes,
            "0|Ang|B|A|P|50.5000|3.0000\n"
            "1|Dist|Nord|A|P|70.2500|* calc *\n"
            "2|DZ|Nord|A|P|1.5000|* calc *\n"
            "3|Ang|Nord|A|P|100.0000|* calc *\n"
            "4|Ang|A|Nord|P|25.0000|2.0000\n"
            "5||Nord||Nord|0.0000|* calc *\n");
}

TEST_F(Poids, FixesOrFreesTheWeightOfSelectedRows) {
  const std::pair<const char*, const char*> cas[] = {
      {"2.5", "2.5000"},   {"-4", "4.0000"},       {"1e-9", "0.0000"},   {"", "* calc *"},
      {"0", "* calc *"},   {"-0.0", "* calc *"},   {"1e38", "* calc *"}, {"-1e38", "* calc *"},
      {"abc", "* calc *"}, {"\"  7 x\"", "7.0000"}};
  for (const auto& [saisie, montre] : cas) {
    reseauMoindresCarres reseau;
    ASSERT_TRUE(lireMc(kReseau, reseau));
    CDlgTabPoidsObse dialogue(reseau);
    playDialog(dialogue, std::string("Poids (vider pour calcul selon formules) = ") + saisie +
                             " // [Fixer] // Liste: 1 3 // [Fixer] // [Fermer]");
    for (const int rang : {0, 2}) {
      EXPECT_EQ(base::toUtf8(dialogue.liste.cell(rang, 6)), montre) << saisie;
      EXPECT_EQ(reseau.observations.GetAt(rang).poids == 1e38, std::string(montre) == "* calc *") << saisie;
    }
    EXPECT_EQ(reseau.observations.GetAt(1).poids, 1e38) << "not selected";
  }
}

}  // namespace
}  // namespace veltora
