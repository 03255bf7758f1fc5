#pragma once

#include "ui/dialog.h"

namespace veltora::ui {

/// What a user does with a control, whoever stands for him. This one tells the control itself; another may
/// work what a driver shows in its place. All give false when the control did not take it.
class VELTORA_API Hand {
public:
  virtual ~Hand() = default;
  virtual bool type(TextField& field, const std::wstring& text) { return field.userType(text); }
  virtual bool type(ComboBox& combo, const std::wstring& text) { return combo.userType(text); }
  virtual bool choose(ComboBox& combo, int index) { return combo.userChoose(index); }
  virtual bool choose(RadioGroup& radio, int index) { return radio.userChoose(index); }
  virtual bool choose(Pages& pages, int index) { return pages.userChoose(index); }
  virtual bool set(CheckBox& check, bool checked) { return check.userSet(checked); }
  virtual bool toggle(CheckBox& check) { return check.userToggle(); }
  virtual bool press(Button& button) { return button.userPress(); }
  virtual bool press(Preview& preview) { return preview.userPress(); }
  virtual bool press(Menu& menu, const Menu::Entry& entry) { return menu.userPress(entry); }
  virtual bool select(List& list, const std::vector<int>& rows) { return list.userSelect(rows); }
  virtual bool selectAll(List& list) { return list.userSelectAll(); }
  virtual bool doubleClick(List& list, int row) { return list.userDoubleClick(row); }
  virtual bool clickColumn(List& list, int column) { return list.userColumn(column); }
  virtual bool edit(List& list, int row, int column, const std::wstring& text) {
    return list.userEdit(row, column, text);
  }
  virtual bool check(List& list, int row, bool checked) { return list.userCheck(row, checked); }
};

}  // namespace veltora::ui
