#pragma once

#include "app/window/dialogs/control_view.h"

class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

/// Texts, fields, buttons and progress.
namespace veltora::app {

class TextView : public ControlView {
public:
  TextView(DialogWindow& window, ui::Label& text);

protected:
  void refreshContent() override;

private:
  ui::Label& m_text;
  QLabel* m_shown;
};

/// A field of one line, for texts and numbers.
class FieldView : public ControlView {
public:
  FieldView(DialogWindow& window, ui::TextField& field);
  [[nodiscard]] QLineEdit& edit() const { return *m_edit; }

protected:
  void refreshContent() override;

private:
  ui::TextField& m_field;
  QLineEdit* m_edit;
};

/// A text area.
class AreaView : public ControlView {
public:
  AreaView(DialogWindow& window, ui::TextField& field);
  [[nodiscard]] QPlainTextEdit& edit() const { return *m_edit; }
  [[nodiscard]] bool grows() const override { return true; }

protected:
  void refreshContent() override;

private:
  ui::TextField& m_field;
  QPlainTextEdit* m_edit;
};

class ButtonView : public ControlView {
public:
  ButtonView(DialogWindow& window, ui::Button& button);
  [[nodiscard]] QPushButton& button() const { return *m_shown; }

protected:
  void refreshContent() override;

private:
  ui::Button& m_button;
  QPushButton* m_shown;
};

class ProgressView : public ControlView {
public:
  ProgressView(DialogWindow& window, ui::ProgressBar& bar);

protected:
  void refreshContent() override;

private:
  ui::ProgressBar& m_bar;
  QProgressBar* m_shown;
};

}  // namespace veltora::app
