#pragma once

#include "base/text.h"
#include "ui/dialog.h"

#include <string>

namespace ui = veltora::ui;

/// A dialog with every kind of control, which notes what it is told.
class SampleDialog : public ui::Dialog {
public:
  SampleDialog() : Dialog(L"Échantillon") {
    echelle.setEditable();
    notes.setMultiline();
    chemin.setReadOnly();
    numero.setRange(1, 9999);
    cal.beside(azimut);
    cache.hide();
    fige.disable();
    points.setCheckBoxes();
    points.addColumn(L"Num", 20);
    points.addColumn(L"X  ", 40, ui::Align::Right);
    points.setEditable(1);
    for (int i = 1; i <= 5; ++i)
      points.addRow({L"P" + std::to_wstring(i), std::to_wstring(i * 10) + L".0"}, i);
    table.add(L"Charger ...", [this] { note(L"charger"); });
    table.addSeparator();
    ui::Menu::Entry& tri = table.addSubmenu(L"&Trier");
    tri.add(L"&Par nom", [this] { note(L"tri nom"); });
    tri.add(L"Par code", [this] { note(L"tri code"); }).enable(false);
    wire();
  }

  void note(const std::wstring& text) { log += (log.empty() ? "" : ", ") + veltora::base::toUtf8(text); }

  std::string log;

  ui::Menu table{this, L"Table"};
  ui::TextField code{this, L"Code"};
  ui::NumberField numero{this, L"&Numéro :", 1, L"%d", ui::NumberField::kInteger};
  ui::TextField azimut{this, L"Vo départ"};
  ui::Button cal{this, L"Cal"};
  ui::TextField notes{this, L"Notes"};
  ui::TextField chemin{this, L"Chemin", L"/blocs/a.dwg"};
  ui::TextField cache{this, L"Caché"};
  ui::TextField fige{this, L"Figé", L"0"};
  ui::Group station{this, L"Station"};
  ui::TextField stationX{&station, L"X"};
  ui::Button preleverStation{&station, L"Prélever"};
  ui::Group direction{this, L"Direction"};
  ui::TextField directionX{&direction, L"X"};
  ui::Button preleverDirection{&direction, L"Prélever"};
  ui::NumberField distErr{&direction, L"Dist / Err max", 0.5};
  ui::ComboBox angles{this, L"Angles", {L"grades", L"degres", L"radians"}};
  ui::ComboBox filtre{
      this, L"Filtre", {L"*** TOUS LES CODES ***", L"0100   Station", L"0101   Arbre", L"0102   Arbuste"}};
  ui::ComboBox echelle{this, L"Echelle", {L"1000", L"500"}};
  ui::CheckBox placerX{this, L"Placer coordonnée &X", true};
  ui::CheckBox lier{this, L"<=>"};
  ui::CheckBox altitudes{this, L"Ne pas placer les altitudes", L"Placer les altitudes", false};
  ui::RadioGroup mode{this, L"Mode", {L"Nouvelle altitude", L"Différence d'altitudes"}};
  ui::List points{this, L"Points:"};
  ui::Preview apercu{this};
  ui::Pages onglets{this};
  ui::Page canevas{&onglets, L"Canevas"};
  ui::TextField canevasVo{&canevas, L"Vo"};
  ui::Page resultats{&onglets, L"Resultats"};
  ui::TextField resultatsVo{&resultats, L"Vo"};
  ui::Button exporter{&resultats, L"E&xporter"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

private:
  void wire() {
    for (ui::TextField* field : {&code, &azimut, &notes, &stationX, &directionX, &canevasVo, &resultatsVo}) {
      const std::wstring name = field->caption();
      field->onChange = [this, field, name] { note(name + L"=" + field->text()); };
      field->onLeave = [this, name] { note(L"quitte " + name); };
    }
    cal.onClick = [this] { note(L"cal"); };
    preleverStation.onClick = [this] { note(L"station"); };
    preleverDirection.onClick = [this] { note(L"direction"); };
    exporter.onClick = [this] { note(L"exporter"); };
    apercu.onClick = [this] { note(L"aperçu"); };
    for (ui::ComboBox* combo : {&angles, &filtre, &echelle}) {
      combo->onChange = [this, combo] { note(std::to_wstring(combo->index()) + L":" + combo->text()); };
    }
    for (ui::CheckBox* check : {&placerX, &lier, &altitudes}) {
      check->onChange = [this, check] {
        note(check->plainCaption() + (check->checked() ? L" oui" : L" non"));
      };
    }
    mode.onChange = [this] { note(L"mode " + std::to_wstring(mode.index())); };
    onglets.onChange = [this] { note(L"onglet " + std::to_wstring(onglets.index())); };
    points.onClick = [this](int row, bool ctrl) {
      note(L"clic " + std::to_wstring(row) + (ctrl ? L"+" : L""));
    };
    points.onChange = [this] { note(L"choix " + std::to_wstring(points.selection().size())); };
    points.onDoubleClick = [this](int row) { note(L"double " + points.cell(row, 0)); };
    points.onColumn = [this](int column) { note(L"colonne " + std::to_wstring(column)); };
    points.onEdit = [this](int row, int column, const std::wstring& text) {
      note(L"case " + std::to_wstring(row) + L"/" + std::to_wstring(column) + L" " + text);
      return text == L"non" ? std::nullopt : std::optional(text + L".0");
    };
    points.onCheck = [this](int row) {
      note(L"coche " + std::to_wstring(row) + (points.checked(row) ? L"+" : L"-"));
    };
  }
};
