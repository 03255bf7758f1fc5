// The line language of dialogs: every form of a line, and the exact text of every refusal.
#include "sample_dialog.h"
#include "support/dialog_script.h"

#include <gtest/gtest.h>

namespace {

struct LineCase {
  const char* name;
  std::vector<std::string> lines;
  std::string log;  ///< what the dialog was told
};

TEST(ScriptLine, DoesWhatItSays) {
  const LineCase cases[] = {
      {"a field", {"Code = 100"}, "Code=100"},
      {"case, accelerator and final colon are nothing", {"cODE: = A B "}, "Code=A B"},
      {"accented capitals", {"VO DÉPART = 1"}, "quitte Code, Vo départ=1"},
      {"runs of blanks in a caption", {"Vo   départ=1"}, "quitte Code, Vo départ=1"},
      {"an empty value", {"Code ="}, "Code="},
      {"the value keeps its own equal sign and colon", {"Code = a=b: c"}, "Code=a=b: c"},
      {"a question mark is a value", {"Code = ?"}, "Code=?"},
      {"quotation marks keep outer blanks", {"Code = \" ??? \""}, "Code= ??? "},
      {"quotation marks inside are text", {"Code = a \"b\""}, "Code=a \"b\""},
      {"line ends in a text area", {"Notes = a\\nb\\\\n"}, "quitte Code, Notes=a\nb\\n"},
      {"no line ends in a field", {"Code = a\\nb"}, "Code=a\\nb"},
      {"leaving comes with the next control, once",
       {"Code = 1", "Code = 2", "Angles = degres", "Angles = radians"},
       "Code=1, Code=2, quitte Code, 1:degres, 2:radians"},
      {"the first control has the focus at the start", {"Angles = degres"}, "quitte Code, 1:degres"},
      {"a group tells twins apart", {"Direction/X = 7"}, "quitte Code, X=7"},
      {"a group's button", {"[station/prélever]"}, "quitte Code, station"},
      {"a neighbour is a scope", {"[Vo départ/Cal]", "[Cal]"}, "quitte Code, cal, cal"},
      {"a caption with a slash", {"Dist / Err max = 2", "Direction/Dist / Err max = 3"}, "quitte Code"},
      {"comments and blank lines", {"; Code = 5", "", "   ", "Code = 6"}, "Code=6"},
      {"a choice by case", {"Angles = RADIANS"}, "quitte Code, 2:radians"},
      {"a choice by number", {"Filtre = #2"}, "quitte Code, 1:0100   Station"},
      {"a choice by its beginning", {"Filtre = 0101"}, "quitte Code, 2:0101   Arbre"},
      {"an exact text goes before a longer one", {"Echelle = 500"}, "quitte Code, 1:500"},
      {"a text typed into a combo box", {"Echelle = 50"}, "quitte Code, -1:50"},
      {"a check box",
       {"Placer coordonnée X = non", "Placer coordonnée X = non"},
       "quitte Code, Placer coordonnée X non"},
      {"a check box clicked", {"[placer coordonnée x]"}, "quitte Code, Placer coordonnée X non"},
      {"a caption of equal signs", {"<=> = oui"}, "quitte Code, <=> oui"},
      {"a push check pressed by its caption in force",
       {"[Ne pas placer les altitudes]", "[Placer les altitudes]"},
       "quitte Code, Placer les altitudes oui, Ne pas placer les altitudes non"},
      {"a push check by what its captions mean",
       {"Placer les altitudes = oui", "Ne pas placer les altitudes = non",
        "Ne pas placer les altitudes = oui"},
       "quitte Code, Placer les altitudes oui, Ne pas placer les altitudes non"},
      {"radio buttons by their frame", {"Mode = Différence d'altitudes"}, "quitte Code, mode 1"},
      {"a radio button pressed",
       {"[différence d'altitudes]", "[Mode/Nouvelle altitude]"},
       "quitte Code, mode 1, mode 0"},
      {"a radio button set", {"Différence d'altitudes = oui"}, "quitte Code, mode 1"},
      {"rows", {"Points: 4 2"}, "quitte Code, clic 3, clic 1+, choix 2"},
      {"rows as ranges, each once", {"Points: 1-3, 2"}, "quitte Code, clic 0, clic 1+, clic 2+, choix 3"},
      {"all rows and none", {"Points: *", "Points:"}, "quitte Code, choix 5, choix 0"},
      {"a double click", {"Points 2 !"}, "quitte Code, clic 1, choix 1, double P2"},
      {"a column by its title, by its number",
       {"Points ^ x", "Points ^ 1"},
       "quitte Code, colonne 1, colonne 0"},
      {"checks of rows",
       {"Points [1 3] = oui", "Points [*] = non"},
       "quitte Code, coche 0+, coche 2+, coche 0-, coche 1-, coche 2-, coche 3-, coche 4-"},
      {"a menu",
       {"[Charger ...]", "[Table/Charger ...]", "[Table/Trier/Par nom]", "[Trier/Par nom]"},
       "charger, charger, tri nom, tri nom"},
      {"a preview", {"[Aperçu]"}, "aperçu"},
      {"pages", {"[Resultats]", "Onglets = Canevas"}, "quitte Code, onglet 1, onglet 0"},
      {"the page in front goes first",
       {"Vo = 1", "[Resultats]", "Vo = 2"},
       "quitte Code, Vo=1, quitte Vo, onglet 1, Vo=2"},
      {"a control behind brings its page", {"[Exporter]"}, "quitte Code, onglet 1, exporter"},
      {"a page is a scope", {"Resultats/Vo = 3"}, "quitte Code, onglet 1, Vo=3"},
  };
  for (const LineCase& test : cases) {
    SCOPED_TRACE(test.name);
    std::vector<std::string> lines = test.lines;
    lines.emplace_back("[Annuler]");
    SampleDialog dialog;
    DialogScript script(lines);
    try {
      EXPECT_EQ(dialog.doModal(), ui::kCancel);
    } catch (const veltora::base::ScriptError& error) {
      ADD_FAILURE() << error.message;
    }
    EXPECT_EQ(dialog.log, test.log);
    EXPECT_TRUE(script.finished());
  }
}

struct RefusalCase {
  std::string line;
  std::string message;
};

TEST(ScriptLine, RefusesWithAMessageAndChangesNothing) {
  const RefusalCase cases[] = {
      {"n'importe quoi",
       "Ligne incomprise dans « Échantillon » : « n'importe quoi ». Attendu : « Légende = valeur », « "
       "[Bouton] », « Liste: 1 3 », « Liste 2 ! », « Liste ^ Colonne » ou « ? »."},
      {"X = 1", "« X » désigne plusieurs éléments de « Échantillon » : Station/X, Direction/X."},
      {"[Prélever]",
       "« Prélever » désigne plusieurs éléments de « Échantillon » : Station/Prélever, Direction/Prélever."},
      {"Station/Y = 1",
       "« Station/Y » ne désigne rien dans « Échantillon ». Attendu : « Légende = valeur » avec Code, "
       "Numéro, Vo départ, Notes, Chemin, Figé, Station/X, Direction/X, Dist / Err max, Angles, Filtre, "
       "Echelle, Placer coordonnée X, <=>, Ne pas placer les altitudes, Placer les altitudes, Mode, "
       "Nouvelle altitude, Différence d'altitudes, Onglets, Canevas/Vo."},
      {"[Enregistrer]",
       "« Enregistrer » ne désigne rien dans « Échantillon ». Attendu : « [Légende] » avec Charger ..., "
       "Par nom, Par code, Cal, Station/Prélever, Direction/Prélever, Placer coordonnée X, <=>, Ne pas "
       "placer les altitudes, Nouvelle altitude, Différence d'altitudes, Aperçu, Canevas, Resultats, OK, "
       "Annuler."},
      {"[Placer les altitudes]", ""},  // not the caption in force; the message is the long one above
      {"Cal = 1", "« Cal » ne reçoit pas de valeur."},
      {"Caché = 1", "« Caché » est masqué."},
      {"Figé = 1", "« Figé » est désactivé."},
      {"Chemin = x", "« Chemin » est en lecture seule."},
      {"[Par code]", "« Trier/Par code » est désactivé."},
      {"Angles = tours", "« tours » n'est pas un choix de « Angles ». Attendu : grades, degres, radians."},
      {"Filtre = 010", ""},  // three items begin so
      {"Placer coordonnée X = peut-être",
       "« peut-être » ne convient pas à « Placer coordonnée X ». Attendu : oui ou non."},
      {"Nouvelle altitude = non",
       "« Mode/Nouvelle altitude » ne se décoche pas : choisissez un autre bouton."},
      {"Points: 6", "« Points » n'a pas de ligne 6 (lignes : 5)."},
      {"Points: 0", "« Points » n'a pas de ligne 0 (lignes : 5)."},
      {"Points: 1-99999999999", "« Points » n'a pas de ligne 99999999999 (lignes : 5)."},
      {"Points: P1", "« P1 » n'est pas un numéro de ligne de « Points »."},
      {"Points 9 !", "« Points » n'a pas de ligne 9 (lignes : 5)."},
      {"Points ^ Z", "« Points » n'a pas de colonne « Z ». Attendu : Num, X  ."},
      {"(getvar \"x\")", ""},
      {"[]", ""},
      {"=", ""},
      {"!", ""},
      {"^", ""},
      {":", ""},
      {"/", ""},
      {"& = 1", ""},
  };
  for (const RefusalCase& test : cases) {
    SCOPED_TRACE(test.line);
    SampleDialog dialog;
    DialogScript script({test.line, "[OK]"});
    try {
      dialog.doModal();
      ADD_FAILURE() << "accepted";
    } catch (const veltora::base::ScriptError& error) {
      EXPECT_EQ(error.message, test.message.empty() ? error.message : test.message);
      EXPECT_FALSE(error.message.empty());
    }
    EXPECT_EQ(dialog.log, "");
    EXPECT_FALSE(dialog.isOpen());
  }
}

TEST(ScriptLine, ListWithoutCaptionIsCalledListe) {
  ui::Dialog dialog(L"D");
  ui::List list(&dialog, {}, ui::List::Selection::Single);
  list.addColumn(L"A", 100);
  list.addRow({L"a"});
  list.addRow({L"b"});
  ui::Button close(&dialog, L"Fermer", ui::Button::Role::Cancel);
  {
    DialogScript script({"Liste: 2", "[Fermer]"});
    dialog.doModal();
    EXPECT_EQ(list.selectedRow(), 1);
  }
  const std::pair<const char*, const char*> refusals[] = {
      {"Liste: 1 2", "« Liste » n'accepte qu'une ligne à la fois."},
      {"Liste [1] = oui", "« Liste » n'a pas de cases à cocher."},
  };
  for (const auto& [line, message] : refusals) {
    DialogScript script({line});
    try {
      dialog.doModal();
      ADD_FAILURE() << line;
    } catch (const veltora::base::ScriptError& error) {
      EXPECT_EQ(error.message, message);
    }
  }
  EXPECT_EQ(list.selectedRow(), 1);
}

TEST(ScriptLine, LongNonsenseIsRefusedQuickly) {
  SampleDialog dialog;
  DialogScript script({std::string(200000, '/') + " = " + std::string(200000, '=')});
  EXPECT_THROW(dialog.doModal(), veltora::base::ScriptError);
}

}  // namespace
