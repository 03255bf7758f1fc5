#pragma once

#include "app/window/dialogs/control_view.h"

class QAbstractButton;
class QButtonGroup;
class QComboBox;
class QGroupBox;

/// Combo boxes, check boxes, radio buttons.
namespace veltora::app {

class ComboView : public ControlView {
public:
  ComboView(DialogWindow& window, ui::ComboBox& combo);
  [[nodiscard]] QComboBox& box() const { return *m_box; }

protected:
  void refreshContent() override;

private:
  void watchText();
  ui::ComboBox& m_combo;
  QComboBox* m_box;
};

/// A check box, or a button that stays pressed.
class CheckView : public ControlView {
public:
  CheckView(DialogWindow& window, ui::CheckBox& check);
  [[nodiscard]] QAbstractButton& button() const { return *m_button; }

protected:
  void refreshContent() override;

private:
  ui::CheckBox& m_check;
  QAbstractButton* m_button;
};

class RadioView : public ControlView {
public:
  RadioView(DialogWindow& window, ui::RadioGroup& radio);
  [[nodiscard]] QAbstractButton* button(int index) const;
  [[nodiscard]] QWidget* keyboard() const override;

protected:
  void refreshContent() override;

private:
  ui::RadioGroup& m_radio;
  QWidget* m_box;
  QButtonGroup* m_buttons;
};

}  // namespace veltora::app
