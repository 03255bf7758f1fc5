// What a driver hears of changes, and how it tells kinds apart.
#include "ui/observer.h"
#include "sample_dialog.h"
#include "ui/kinds.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

/// Notes what it hears.
class Ear : public ui::Observer {
public:
  void changed(ui::Control& control) override { note(control.names().front()); }
  void cellChanged(ui::List& list, int row, int column) override {
    note(list.names().front() + L" " + std::to_wstring(row) + L"," + std::to_wstring(column));
  }
  void changed(ui::Dialog& dialog) override { note(L"boîte " + dialog.title()); }
  void gone(ui::Control&) override { ++goneControls; }
  void gone(ui::Dialog&) override { note(L"fin"); }
  void note(const std::wstring& text) { heard += (heard.empty() ? "" : ", ") + veltora::base::toUtf8(text); }

  std::string heard;
  int goneControls = 0;
};

TEST(Observer, HearsWhateverAUserCanSee) {
  struct Row {
    const char* what;
    std::function<void(SampleDialog&)> change;
    const char* heard;
  };
  const Row rows[] = {
      {"range", [](SampleDialog& d) { d.numero.setRange(0, 5); }, "Numéro"},
      {"selection mode", [](SampleDialog& d) { d.points.setSelectionMode(ui::List::Selection::Single); },
       "Points"},
      {"row data", [](SampleDialog& d) { d.points.setData(2, 77); }, "Points"},
      {"one cell", [](SampleDialog& d) { d.points.setCell(3, 1, L"0"); }, "Points 3,1"},
      {"no such cell", [](SampleDialog& d) { d.points.setCell(3, 2, L"0"); }, ""},
      {"a new entry", [](SampleDialog& d) { d.table.add(L"Trier", {}); }, "Table"},
      {"an entry's check", [](SampleDialog& d) { d.table.entries()[0]->setChecked(true); }, "Table"},
      {"a nested entry", [](SampleDialog& d) { d.table.entries()[2]->entries()[1]->enable(); }, "Table"},
      {"its caption", [](SampleDialog& d) { d.table.entries()[0]->setCaption(L"Lire"); }, "Table"},
      {"beside", [](SampleDialog& d) { d.cal.beside(d.code); }, "Cal"},
      {"pictures",
       [](SampleDialog& d) {
         d.mode.setPictures({L"a.svg", L"b.svg"});
       },
       "Mode"},
      {"title", [](SampleDialog& d) { d.setTitle(L"Autre"); }, "boîte Autre"},
      {"focus", [](SampleDialog& d) { d.notes.setFocus(); }, "boîte Échantillon"},
      {"a control on a page", [](SampleDialog& d) { d.resultatsVo.setText(L"1"); }, "Vo"},
  };
  for (const Row& row : rows) {
    SampleDialog dialog;
    Ear ear;
    dialog.setObserver(&ear);
    row.change(dialog);
    dialog.setObserver(nullptr);
    EXPECT_EQ(ear.heard, row.heard) << row.what;
  }
}

TEST(Observer, HearsTheTextThatATypedChoiceHasByThen) {
  ui::Dialog dialog(L"D");
  ui::ComboBox combo(&dialog, L"Echelle", {L"500"});
  combo.setEditable();
  class Reader : public Ear {
  public:
    void changed(ui::Control& control) override { note(dynamic_cast<ui::ComboBox&>(control).text()); }
  } reader;
  dialog.setObserver(&reader);
  combo.setText(L"750");
  dialog.setObserver(nullptr);
  EXPECT_EQ(reader.heard, "750");
}

TEST(Observer, IsToldTheEndOfControlsAndOfTheDialog) {
  Ear ear;
  auto dialog = std::make_unique<SampleDialog>();
  dialog->setObserver(&ear);
  dialog.reset();
  EXPECT_EQ(ear.heard, "fin");
  EXPECT_EQ(ear.goneControls, 33);  // one for each member that is a control
}

TEST(Dialog, TheEnterKeyIsTheFirstOkButtonThatCanBeUsed) {
  SampleDialog dialog;
  EXPECT_EQ(dialog.defaultButton(), &dialog.ok);
  dialog.ok.disable();
  EXPECT_EQ(dialog.defaultButton(), nullptr);
  ui::Button second(&dialog.station, L"Valider", ui::Button::Role::Ok);
  EXPECT_EQ(dialog.defaultButton(), &second);
  dialog.station.hide();
  EXPECT_EQ(dialog.defaultButton(), nullptr);
}

TEST(Kinds, ANumberIsATextWhereNothingElseIsSaid) {
  SampleDialog dialog;
  int texts = 0;
  for (ui::Control* control : dialog.controls()) {
    texts += ui::visit(
        *control, [](ui::TextField*) { return 1; }, [](ui::Button*) { return 0; },
        [](ui::CheckBox*) { return 0; }, [](ui::ComboBox*) { return 0; }, [](ui::Group*) { return 0; },
        [](ui::Label*) { return 0; }, [](ui::List*) { return 0; }, [](ui::Menu*) { return 0; },
        [](ui::Page*) { return 0; }, [](ui::Pages*) { return 0; }, [](ui::Preview*) { return 0; },
        [](ui::ProgressBar*) { return 0; }, [](ui::RadioGroup*) { return 0; },
        [](ui::WebView*) { return 0; });
  }
  EXPECT_EQ(texts, 7);  // six text fields and the number of those that lie in no group
}

}  // namespace
