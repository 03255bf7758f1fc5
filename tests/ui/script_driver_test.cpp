// Dialogs, message boxes, file choices and progress on a script or a terminal: what is printed, asked and
// answered.
#include "base/files.h"
#include "sample_dialog.h"
#include "support/dialog_script.h"
#include "support/dossier_temporaire.h"
#include "support/golden.h"
#include "ui/progress.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

namespace {
namespace base = veltora::base;
namespace fs = std::filesystem;

TEST(ScriptDriver, PrintsADialogInTheFormsOfItsLines) {
  SampleDialog dialog;
  dialog.points.select(1);
  dialog.points.setChecked(2, true);
  dialog.notes.setText(L"a\r\nb");
  DialogScript script({"?", "[Annuler]"});
  dialog.doModal();
  EXPECT_TRUE(memeQueReference("dialogue_echantillon.txt", script.transcript));
}

TEST(ScriptDriver, CutsLongListsShortUnlessAskedForTheList) {
  ui::Dialog dialog(L"D");
  ui::List list(&dialog, L"L");
  list.addColumn(L"A", 100);
  for (int i = 0; i < 60; ++i) list.addRow({L"r" + std::to_wstring(i)});
  DialogScript script({"?"});
  dialog.doModal();
  EXPECT_NE(script.transcript.find("  50 | r49\n  … 10 autres lignes\n"), std::string::npos)
      << script.transcript;
  DialogScript whole({"l ?"});
  dialog.doModal();
  EXPECT_NE(whole.transcript.find("  60 | r59\n"), std::string::npos) << whole.transcript;
}

TEST(ScriptDriver, ATerminalSeesChangesAndIsAskedAgain) {
  ui::Dialog dialog(L"Calcul");
  ui::TextField x(&dialog, L"X");
  ui::Label result(&dialog, L"Gisement calculé:");
  x.onChange = [&] { result.setText(L"100.0000"); };
  DialogScript script({"Y = 1", "X = 5"}, true);
  EXPECT_EQ(dialog.doModal(), ui::kCancel);
  EXPECT_EQ(script.transcript,
            "\n=== Calcul ===\nX =\nGisement calculé:\n"
            "« Y » ne désigne rien dans « Calcul ». Attendu : « Légende = valeur » avec X.\n"
            "  X = 5\n  Gisement calculé: 100.0000\n");
  EXPECT_EQ(script.prompts, std::vector<std::string>(3, "Dialogue> "));
}

TEST(ScriptDriver, ATerminalShowsReportsAsText) {
  const DossierTemporaire folder;
  const fs::path file = folder.chemin / "r.html";
  base::remplacerFichier(
      file,
      "<html>\n<head>\n<style>\n<!--\n.petit{ color:red;}\n-->\n</style>\n</head>\n<body x>\n"
      "<P CLASS=grand>Ferm\xE9"
      "e</P>\n<P >\r\nA : 1\tB&nbsp&lt;2</P><table border=\"0\">\n"
      "<tr ><td class=celgris align=center>Nom</td><td class=celgris align=center>Valeur</td></tr>"
      "<tr ><td class=celnorm align='left'>P12</td><td class=celnorm align=right>1.5</td></tr>"
      "<tr ><td colspan=2 align=right>Somme de tout</td></tr></table>\n</body>\n</html>\n");
  const std::string text = "\nFermée\nA : 1 B <2\n  Nom   Valeur\n  P12       1.5\n  Somme de tout\n\n";
  ui::Dialog dialog(L"Résultats");
  ui::WebView page(&dialog);
  page.setPath(file.wstring());
  DialogScript terminal({"[Rien]"}, true);
  dialog.doModal();
  EXPECT_EQ(terminal.transcript.substr(0, terminal.transcript.find("===")), text + "\n");
  DialogScript script({"?", "Page web ?"});
  dialog.doModal();
  const std::size_t at = script.transcript.find("Fermée");
  EXPECT_EQ(script.transcript.substr(at - 1), text) << "a script sees it when it asks";
  page.setPath(L"/absent.html");
  DialogScript absent({}, true);
  dialog.doModal();
  EXPECT_EQ(absent.transcript.find("\n=== Résultats"), 0U);
}

TEST(ScriptDriver, CtrlCAnswersMessagesAndFileChoices) {
  DialogScript script({"*Annuler*", "*annuler*", "*Annuler*", "*Annuler*", "*Annuler*"}, true);
  EXPECT_EQ(ui::messageBox(L"Fait", L"", ui::Buttons::Ok), ui::kOk);
  EXPECT_EQ(ui::messageBox(L"Faire ?", L"", ui::Buttons::YesNo), ui::kNo);
  EXPECT_EQ(ui::messageBox(L"Faire ?", L"", ui::Buttons::YesNoCancel), ui::kCancel);
  base::FileRequest request;
  request.extension = L"doc";
  EXPECT_FALSE(ui::chooseFile(request));
  request.save = true;
  EXPECT_FALSE(ui::chooseFile(request)) << "no file of that name";
  EXPECT_EQ(script.prompts.size(), 5U) << "each is answered at once";
}

TEST(Dialog, EndsAsItsButtonsSay) {
  SampleDialog dialog;
  {
    DialogScript script({"[OK]"});
    EXPECT_EQ(dialog.doModal(), ui::kOk);
    EXPECT_EQ(dialog.log, "quitte Code");
  }
  dialog.log.clear();
  {
    DialogScript script({"[Annuler]"});
    EXPECT_EQ(dialog.doModal(), ui::kCancel);
    EXPECT_EQ(dialog.log, "") << "Cancel leaves no field";
  }
  {
    DialogScript script({"*annuler*"});
    EXPECT_EQ(dialog.doModal(), ui::kCancel);
    EXPECT_TRUE(script.finished());
  }
  dialog.exporter.onClick = [&] { dialog.endDialog(42); };
  DialogScript script({"[Exporter]"});
  EXPECT_EQ(dialog.doModal(), 42);
}

TEST(Dialog, EndOfInputCancelsEvenWhatDoesNotWantTo) {
  class Stubborn : public ui::Dialog {
  public:
    Stubborn() : Dialog(L"S") {}
    void onCancel() override { ++asked; }
    int asked = 0;
  } dialog;
  DialogScript script({"; rien"});
  EXPECT_EQ(dialog.doModal(), ui::kCancel);
  EXPECT_EQ(dialog.asked, 1);
  EXPECT_FALSE(dialog.isOpen());
}

TEST(Dialog, OkChecksNumberFieldsInOrder) {
  struct Case {
    const char* text;
    const char* fault;
  };
  const Case integers[] = {{"0", "Entrez un nombre entier compris entre 1 et 9999."},
                           {"10000", "Entrez un nombre entier compris entre 1 et 9999."},
                           {"1.0", "Entrez un nombre entier."},
                           {"abc", "« Numéro » : « abc » n'est pas un nombre. Entrez un nombre entier."},
                           {"", "« Numéro » : Entrez un nombre entier."},
                           {"12x", "« Numéro » : « 12x » n'est pas un nombre. Entrez un nombre entier."},
                           {"100,5",
                            "« Numéro » : « 100,5 » n'est pas un nombre, le signe décimal est le point. "
                            "Entrez un nombre entier."},
                           {"inf", "« Numéro » : « inf » n'est pas un nombre. Entrez un nombre entier."},
                           {" 9999 ", ""},
                           {"+1", ""}};
  for (const Case& test : integers) {
    SCOPED_TRACE(test.text);
    SampleDialog dialog;
    std::vector<std::string> lines = {std::string("Numéro = \"") + test.text + "\"", "[OK]"};
    const bool good = !*test.fault;
    if (!good) lines.insert(lines.end(), {"[OK]", "[Annuler]"});
    DialogScript script(lines);
    EXPECT_EQ(dialog.doModal(), good ? ui::kOk : ui::kCancel);
    EXPECT_TRUE(script.finished());
    if (!good) {
      EXPECT_NE(script.transcript.find("--- Échantillon ---\n" + std::string(test.fault) + "\n[OK]\n"),
                std::string::npos)
          << script.transcript;
    }
  }
  SampleDialog dialog;
  ui::NumberField size(&dialog, L"Taille", 1.0);
  const std::pair<const wchar_t*, const wchar_t*> reals[] = {
      {L"2e6", L"Entrez un nombre compris entre 1e-06 et 1000000."},
      {L"1e-6", L""},
      {L"nan", L"Entrez un nombre."}};
  size.setRange(1e-6, 1e6);
  for (const auto& [text, fault] : reals) {
    size.setText(text);
    EXPECT_EQ(size.fault(), fault);
  }
  size.setRange(0.0, ui::NumberField::kUnbounded);
  size.setText(L"-1");
  EXPECT_EQ(size.fault(), L"Entrez un nombre supérieur ou égal à 0.");
  size.disable();
  DialogScript script({"[OK]"});
  EXPECT_EQ(dialog.doModal(), ui::kOk) << "a field out of use is not checked";
}

TEST(Dialog, NumbersAreReadFromTheTextAsTyped) {
  SampleDialog dialog;
  ui::NumberField field(&dialog, L"N", 650000.1234);
  EXPECT_EQ(field.text(), L"650000.1234");
  field.setText(L"12,5 m");
  EXPECT_EQ(field.value(), 12.0);
  field.setText(L"-1e99");
  EXPECT_EQ(field.intValue(), -2147483647 - 1);
}

/// The field insists on a number when it is left, as the code field of the code table does.
class InsistentDialog : public ui::Dialog {
public:
  InsistentDialog() : Dialog(L"Codification") {
    code.onLeave = [this] {
      if (code.text() != L"?") return;
      ui::messageBox(L"Code incorrect", L"Erreur");
      code.setFocus();
    };
  }
  ui::TextField code{this, L"Code", L"?"};
  ui::TextField libelle{this, L"Libellé"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
};

TEST(Dialog, AFieldThatTakesTheFocusBackUndoesTheMove) {
  InsistentDialog dialog;
  DialogScript script({"Libellé = a", "[OK]", "[OK]", "[OK]", "Code = 5", "[OK]"});
  EXPECT_EQ(dialog.doModal(), ui::kOk);
  EXPECT_EQ(dialog.libelle.text(), L"");
  EXPECT_TRUE(script.finished());
  const std::string note = "--- Erreur ---\nCode incorrect\n[OK]\nLe curseur est revenu sur « Code » : « ";
  EXPECT_NE(script.transcript.find(note + "Libellé = a » est resté sans effet.\n"), std::string::npos)
      << script.transcript;
  EXPECT_NE(script.transcript.find(note + "[OK] » est resté sans effet.\n"), std::string::npos);

  dialog.code.setText(L"?");
  DialogScript cancelled({"[Annuler]"});
  EXPECT_EQ(dialog.doModal(), ui::kCancel) << "it never holds the user back";
}

TEST(Dialog, NestsAndComesBack) {
  SampleDialog outer;
  InsistentDialog inner;
  outer.cal.onClick = [&] {
    outer.note(inner.doModal() == ui::kOk ? L"ok" : L"annulé");
    const ui::HiddenDialog hidden(outer);
    outer.note(outer.hidden() ? L"cachée" : L"visible");
  };
  DialogScript script({"[Cal]", "Code = 1", "[OK]", "Code = 2", "[Annuler]"});
  EXPECT_EQ(outer.doModal(), ui::kCancel);
  EXPECT_EQ(outer.log, "quitte Code, ok, cachée, Code=2");
  EXPECT_FALSE(outer.hidden());
  EXPECT_EQ(script.transcript, "\n=== Échantillon ===\n\n=== Codification ===\n\n=== Échantillon ===\n");
}

TEST(Dialog, ExceptionsPassAndLeaveItUsable) {
  SampleDialog dialog;
  dialog.cal.onClick = [&] {
    const ui::HiddenDialog hidden(dialog);
    throw std::runtime_error("défaut");
  };
  {
    DialogScript script({"[Cal]"});
    EXPECT_EQ(dialog.doModal(), ui::kCancel) << "the next lines of a script are not for this dialog";
    EXPECT_NE(script.transcript.find("\nErreur : défaut\n"), std::string::npos) << script.transcript;
  }
  {
    DialogScript person({"[Cal]", "[OK]"}, true);
    EXPECT_EQ(dialog.doModal(), ui::kOk) << "a person goes on: what was done before stays";
    EXPECT_NE(person.transcript.find("Erreur : défaut\n"), std::string::npos) << person.transcript;
  }
  DialogScript script({"[OK]"});
  EXPECT_EQ(dialog.doModal(), ui::kOk);
  dialog.cal.onClick = [&] { dialog.doModal(); };
  DialogScript again({"[Cal]"});
  EXPECT_EQ(dialog.doModal(), ui::kCancel);
  EXPECT_NE(again.transcript.find("déjà ouverte"), std::string::npos) << "a dialog is open once";
  dialog.cal.onClick = [&] {
    ui::Dialog inner(L"Dedans");
    ui::Button button(&inner, L"Panne", [] { throw std::runtime_error("panne"); });
    EXPECT_EQ(inner.doModal(), ui::kCancel);
  };
  DialogScript nested({"[Cal]", "[Panne]", "[OK]"});
  EXPECT_EQ(dialog.doModal(), ui::kCancel) << "the dialog below ends too";
  EXPECT_EQ(dialog.doModal(), ui::kOk) << "and the failure with it";
}

TEST(Dialog, OpeningRunsEachOnInit) {
  class InitPage : public ui::Page {
  public:
    InitPage(ui::Pages* pages, std::string& order) : Page(pages, L"P"), m_order(order) {}
    void onInit() override { m_order += "page "; }
    std::string& m_order;
  };
  class Sheet : public ui::Dialog {
  public:
    Sheet() : Dialog(L"S") {}
    void onInit() override { order += "dialog "; }
    std::string order;
    ui::Pages pages{this};
    InitPage page{&pages, order};
  } sheet;
  DialogScript script({});
  sheet.doModal();
  sheet.doModal();
  EXPECT_EQ(sheet.order, "dialog page dialog page ");
}

TEST(Driver, NoneIsAPlainRefusal) {
  SampleDialog dialog;
  try {
    dialog.doModal();
    FAIL();
  } catch (const ui::NoDriver& error) {
    EXPECT_STREQ(error.what(),
                 "Aucun pilote de dialogue n'est installé : « Échantillon » ne peut pas être affiché.");
  }
  EXPECT_THROW(ui::messageBox(L"texte"), ui::NoDriver);
  EXPECT_THROW(ui::chooseFile({}), ui::NoDriver);
}

TEST(MessageBox, ReadsOneOfItsButtons) {
  struct Case {
    ui::Buttons buttons;
    std::vector<std::string> lines;
    int answer;
  };
  const Case cases[] = {{ui::Buttons::Ok, {"[OK]"}, ui::kOk},
                        {ui::Buttons::Ok, {"; lu", "", " [ok] "}, ui::kOk},
                        {ui::Buttons::OkCancel, {"[Annuler]"}, ui::kCancel},
                        {ui::Buttons::YesNo, {"[oui]"}, ui::kYes},
                        {ui::Buttons::YesNoCancel, {"[Non]"}, ui::kNo}};
  for (const Case& test : cases) {
    DialogScript script(test.lines);
    EXPECT_EQ(ui::messageBox(L"\nTexte", L"Titre", test.buttons), test.answer);
    EXPECT_TRUE(script.finished());
    EXPECT_EQ(script.transcript.find("\n--- Titre ---\nTexte\n["), 0U) << script.transcript;
  }
}

TEST(MessageBox, AScriptMustAnswerIt) {
  const auto ask = [](std::vector<std::string> lines, const std::wstring& title, ui::Buttons buttons) {
    DialogScript script(std::move(lines));
    return scriptErrorOf([&] { ui::messageBox(L"t", title, buttons); });
  };
  EXPECT_EQ(ask({"Code = 1"}, L"Erreur", ui::Buttons::Ok),
            "Le message « Erreur » attend [OK], pas « Code = 1 ».");
  EXPECT_EQ(ask({"OK"}, L"", ui::Buttons::OkCancel),
            "Le message « Message » attend [OK] ou [Annuler], pas « OK ».");
  EXPECT_EQ(ask({}, L"A", ui::Buttons::YesNo),
            "Le message « A » attend [Oui] ou [Non], et le script est fini.");
  DialogScript terminal({"quoi", "[Oui]"}, true);
  EXPECT_EQ(ui::messageBox(L"t", L"A", ui::Buttons::YesNo), ui::kYes);
  DialogScript closed({}, true);
  EXPECT_EQ(ui::messageBox(L"t", L"A", ui::Buttons::YesNo), ui::kNo);
}

/// A folder of its own, with a file "a.txt" and a folder "d.txt".
class FileChoice : public ::testing::Test {
protected:
  FileChoice() {
    fs::create_directories(folder / "d.txt");
    base::remplacerFichier(folder / "a.txt", "x");
  }
  [[nodiscard]] std::string in(const char* name) const { return (folder / name).string(); }

  static std::string choose(const base::FileRequest& request, std::vector<std::string> lines) {
    DialogScript script(std::move(lines));
    std::string result = "cancelled";
    const std::string error = scriptErrorOf([&] {
      if (const auto answer = ui::chooseFile(request)) {
        result = base::toUtf8(answer->path) + " " + std::to_string(answer->filterIndex);
      }
    });
    EXPECT_TRUE(script.finished() || error != "");
    return error == "" ? result : error;
  }

  const DossierTemporaire dossier;
  const fs::path& folder = dossier.chemin;
  base::FileRequest open{L"", L"", L"*.txt", L"Texte|*.txt|Tous|*.*||", false, false, {}};
  base::FileRequest save{L"", L"", L"txt", L"Texte|*.txt|Tous|*.*", true, true, {}};
};

TEST_F(FileChoice, OpensWhatExists) {
  EXPECT_EQ(choose(open, {in("a.txt")}), in("a.txt") + " 1");
  EXPECT_EQ(choose(open, {"; le fichier", in("a") + " | 2"}), in("a.txt") + " 2");
  EXPECT_EQ(choose(open, {""}), "cancelled");
  EXPECT_EQ(choose(open, {}), "cancelled");
  EXPECT_EQ(choose(open, {in("b")}), "Fichier introuvable : « " + in("b.txt") + " ».");
  EXPECT_EQ(choose(open, {in("d.txt")}), "« " + in("d.txt") + " » n'est pas un nom de fichier.");
  EXPECT_EQ(choose(open, {"| 1"}), "« | 1 » n'est pas un nom de fichier.");
  EXPECT_EQ(choose(open, {"a | 3"}), "« a | 3 » : le filtre se donne par son numéro, de 1 à 2.");
}

TEST_F(FileChoice, SavesAndAsksBeforeReplacing) {
  EXPECT_EQ(choose(save, {in("n")}), in("n.txt") + " 1");
  EXPECT_EQ(choose(save, {in("n.xyz") + "|2"}), in("n.xyz") + " 2");
  EXPECT_EQ(choose(save, {in("a"), "[Oui]"}), in("a.txt") + " 1");
  EXPECT_EQ(choose(save, {in("a"), "[Non]", in("c")}), in("c.txt") + " 1");
  EXPECT_EQ(choose(save, {in("a"), "[Non]", ""}), "cancelled");
  save.confirmOverwrite = false;
  EXPECT_EQ(choose(save, {in("a")}), in("a.txt") + " 1");
}

TEST_F(FileChoice, ShowsTheFilters) {
  DialogScript script({""});
  ui::chooseFile(open);
  EXPECT_EQ(script.transcript, "\n--- Ouvrir ---\n  1  Texte   *.txt\n  2  Tous   *.*\n");
}

/// Counts what a long job tells it.
class CountingDriver : public ui::ScriptDriver {
public:
  using ScriptDriver::ScriptDriver;
  void update(ui::Dialog& dialog) override {
    auto& progress = dynamic_cast<ui::CMyProgressDlg&>(dialog);
    ++updates;
    if (updates == 50 && stopAtFifty) requestStop();
    if (updates == 50 && closeAtFifty) progress.fermer.userPress();
    text = progress.pourcentage.text();
    open = progress.isOpen();
  }
  int updates = 0;
  std::wstring text;
  bool open = false;
  bool stopAtFifty = false;
  bool closeAtFifty = false;
};

class Progress : public ::testing::Test {
protected:
  /// @return the number of steps done
  int run() {
    ui::Driver* former = ui::setDriver(&driver);
    int done = 0;
    {
      veltora::base::Suivi suivi(499999);
      while (done < 499999 && !suivi.arrete()) {
        ++done;
        suivi.avancer();
      }
    }
    ui::setDriver(former);
    return done;
  }
  DialogScript lines{{}};
  CountingDriver driver{lines, lines};
};

TEST_F(Progress, TellsTheDriverOnlyOfNewPercentages) {
  EXPECT_EQ(run(), 499999);
  EXPECT_EQ(driver.updates, 101);
  EXPECT_EQ(driver.text, L"100%");
  EXPECT_TRUE(driver.open);
  EXPECT_EQ(lines.transcript, "") << "a script's transcript is not littered";
}

TEST_F(Progress, StopsWhenTheUserWants) {
  driver.requestStop();  // of an earlier job
  driver.stopAtFifty = true;
  EXPECT_EQ(run(), 245000);
  EXPECT_EQ(driver.text, L"49%");
}

TEST_F(Progress, ItsButtonOnlyClosesIt) {
  driver.closeAtFifty = true;
  EXPECT_EQ(run(), 499999);
  EXPECT_EQ(driver.updates, 50);
  EXPECT_FALSE(driver.open);
}

TEST(ProgressBar, AnyRangeHasAPercentage) {
  const long long big = 9223372036854775807LL;
  struct Case {
    long long minimum, maximum, position;
    int percent;
  };
  for (const Case& test : {Case{0, 0, 0, 100},
                           {0, -1, 0, 100},
                           {10, 20, 15, 50},
                           {0, 3, 1, 33},
                           {0, 3, 9, 100},
                           {-big, big, 0, 50},
                           {0, big, big, 100}}) {
    ui::CMyProgressDlg progress;
    progress.setRange(test.minimum, test.maximum);
    progress.setPos(test.position);
    progress.setStep(big);
    EXPECT_EQ(progress.bar.percent(), test.percent) << test.minimum << ' ' << test.maximum;
    progress.stepIt();
    EXPECT_EQ(progress.bar.percent(), 100);
  }
}

TEST(ProgressBar, TerminalShowsPercentages) {
  DialogScript script({}, true);
  {
    ui::CMyProgressDlg progress;
    progress.setRange(0, 2);
    progress.stepIt();
    progress.stepIt();
  }
  EXPECT_EQ(script.transcript, "\nMise en place des points\n\r  0 %\r 50 %\r100 %\n");
}

}  // namespace
