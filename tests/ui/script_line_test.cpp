// The line language of dialogs: every form of a line, and the exact text of every refusal.
#include "ui/script_line.h"
#include "sample_dialog.h"
#include "support/case_rows.h"
#include "support/dialog_script.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(ScriptLine, DoesWhatItSays) {
  for (const CaseRow& row : caseRows("ui/cases/script_lines.txt", "taken")) {
    SCOPED_TRACE(row.place + ": " + row[0]);
    SampleDialog dialog;
    std::vector<std::string> lines = row.list(1);
    lines.emplace_back("[Annuler]");
    DialogScript script(lines);
    EXPECT_EQ(scriptErrorOf([&] { EXPECT_EQ(dialog.doModal(), ui::kCancel); }), "");
    EXPECT_EQ(dialog.log, row[2]);
    EXPECT_TRUE(script.finished());
  }
}

TEST(ScriptLine, RefusesWithAMessageAndChangesNothing) {
  for (const CaseRow& row : caseRows("ui/cases/script_lines.txt", "refused")) {
    SCOPED_TRACE(row.place);
    SampleDialog dialog;
    DialogScript script({row[0], "[OK]"});
    const std::string message = scriptErrorOf([&] { dialog.doModal(); });
    EXPECT_NE(message, "");
    if (row.cells.size() > 1) {
      EXPECT_EQ(message, row[1]);
    }
    EXPECT_EQ(dialog.log, "");
    EXPECT_FALSE(dialog.isOpen());
  }
}

TEST(ScriptLine, KnowsTheLinesThatAreTakenNow) {
  SampleDialog dialog;
  const std::vector<std::wstring> lines = ui::possibleLines(dialog);
  for (const CaseRow& row : caseRows("ui/cases/script_lines.txt", "possible")) {
    const std::wstring line = veltora::base::fromUtf8(row[0]);
    const auto count = std::count_if(lines.begin(), lines.end(), [&](const std::wstring& possible) {
      return veltora::base::trim(possible) == line;
    });
    EXPECT_EQ(count, row.integer(1)) << row;
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
    EXPECT_EQ(scriptErrorOf([&] { dialog.doModal(); }), message);
  }
  EXPECT_EQ(list.selectedRow(), 1);
}

TEST(ScriptLine, LongNonsenseIsRefusedQuickly) {
  SampleDialog dialog;
  DialogScript script({std::string(200000, '/').append(" = ").append(200000, '=')});
  EXPECT_THROW(dialog.doModal(), veltora::base::ScriptError);
}

}  // namespace
