#include "app/window/dialogs/field_views.h"

#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/text.h"

#include <QAbstractSpinBox>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <functional>
#include <utility>

namespace veltora::app {
namespace {

constexpr int kNumberChars = 11;
constexpr int kTextChars = 16;
constexpr int kLongestNumber = 26;
constexpr int kAreaChars = 46;
constexpr int kLongestLabel = 420;  ///< pixels; longer texts are broken into lines

/// Arrows around a field that count its number on; what is typed is the field's alone.
class Stepper : public QAbstractSpinBox {
public:
  Stepper(QWidget* parent, QLineEdit* edit, std::function<void(int)> step)
      : QAbstractSpinBox(parent), m_step(std::move(step)) {
    setLineEdit(edit);
    setFocusPolicy(Qt::StrongFocus);
  }
  void stepBy(int steps) override { m_step(steps); }
  QValidator::State validate(QString&, int&) const override { return QValidator::Acceptable; }

protected:
  [[nodiscard]] StepEnabled stepEnabled() const override {
    return lineEdit()->isReadOnly() ? StepEnabled(StepNone) : StepUpEnabled | StepDownEnabled;
  }

private:
  std::function<void(int)> m_step;
};

}  // namespace

TextView::TextView(DialogWindow& window, ui::Label& text)
    : ControlView(window, text), m_text(text), m_shown(new QLabel(&window)) {
  m_shown->setTextFormat(Qt::PlainText);
  m_shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
  m_shown->setFocusPolicy(Qt::NoFocus);
  place(m_shown, false);
}

void TextView::refreshContent() {
  const std::wstring caption = m_text.plainCaption();
  const bool both = !caption.empty() && !m_text.text().empty();
  const wchar_t* between = !both ? L"" : caption.back() == L':' ? L" " : L" : ";
  const QString text = shown(caption + between + m_text.text());
  m_shown->setText(text);
  const bool wide = m_shown->fontMetrics().boundingRect(text).width() > kLongestLabel;
  m_shown->setWordWrap(wide);
  m_shown->setMinimumWidth(wide ? kLongestLabel : 0);
}

FieldView::FieldView(DialogWindow& window, ui::TextField& field)
    : ControlView(window, field), m_field(field), m_edit(new QLineEdit(&window)) {
  auto* const number = dynamic_cast<ui::NumberField*>(&field);
  const int letter = m_edit->fontMetrics().averageCharWidth();
  m_edit->setMinimumWidth(letter * (number ? kNumberChars : kTextChars) + 16);
  if (number) m_edit->setMaximumWidth(letter * kLongestNumber);
  QWidget* shown = m_edit;
  if (number && number->stepped())
    shown = new Stepper(&window, m_edit, [this, number](int steps) {
      this->window().act(m_field, [number, steps] { return number->userStep(steps); });
    });
  place(shown, true);
  QObject::connect(m_edit, &QLineEdit::textEdited, &window, [this](const QString& text) {
    this->window().act(m_field, [this, typed = wide(text)] { return m_field.userType(typed); });
  });
}

void FieldView::refreshContent() {
  m_edit->setReadOnly(m_field.readOnly());
  const QString text = shown(m_field.text());
  if (m_edit->text() != text) m_edit->setText(text);  // what is equal keeps its cursor
  const auto* number = dynamic_cast<ui::NumberField*>(&m_field);
  QString range;
  if (number && std::isfinite(number->minimum()) && std::isfinite(number->maximum()))
    range =
        QStringLiteral("de %1 à %2").arg(number->minimum(), 0, 'g', 15).arg(number->maximum(), 0, 'g', 15);
  m_edit->setToolTip(range);
}

AreaView::AreaView(DialogWindow& window, ui::TextField& field)
    : ControlView(window, field), m_field(field), m_edit(new QPlainTextEdit(&window)) {
  m_edit->setTabChangesFocus(true);
  m_edit->setMinimumWidth(m_edit->fontMetrics().averageCharWidth() * kAreaChars);
  m_edit->setMinimumHeight(m_edit->fontMetrics().lineSpacing() * 5);
  place(m_edit, true);
  QObject::connect(m_edit, &QPlainTextEdit::textChanged, &window, [this] {
    this->window().act(m_field, [this] { return m_field.userType(wide(m_edit->toPlainText())); });
  });
}

void AreaView::refreshContent() {
  m_edit->setReadOnly(m_field.readOnly());
  // What is only read is a journal or a file, in columns.
  if (m_field.readOnly()) m_edit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  m_edit->setLineWrapMode(m_field.readOnly() ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
  const QString text = shown(m_field.text()).remove(QLatin1Char('\r'));
  if (m_edit->toPlainText() == text) return;
  const QSignalBlocker silent(m_edit);
  m_edit->setPlainText(text);
}

ButtonView::ButtonView(DialogWindow& window, ui::Button& button)
    : ControlView(window, button), m_button(button), m_shown(new QPushButton(&window)) {
  m_shown->setAutoDefault(false);
  // The mouse leaves no field for a button that cancels.
  if (button.role() == ui::Button::Role::Cancel) m_shown->setFocusPolicy(Qt::TabFocus);
  place(m_shown, false);
  QObject::connect(m_shown, &QPushButton::clicked, &window,
                   [this] { this->window().act(m_button, [this] { return m_button.userPress(); }); });
}

void ButtonView::refreshContent() {
  const QString caption = shown(m_button.caption());
  m_shown->setText(caption);
  if (caption.size() <= 3 && m_button.role() == ui::Button::Role::Normal)
    m_shown->setMaximumWidth(m_shown->fontMetrics().averageCharWidth() * 6 + 16);
}

ProgressView::ProgressView(DialogWindow& window, ui::ProgressBar& bar)
    : ControlView(window, bar), m_bar(bar), m_shown(new QProgressBar(&window)) {
  m_shown->setRange(0, 100);
  m_shown->setMinimumWidth(280);
  place(m_shown, false);
}

void ProgressView::refreshContent() { m_shown->setValue(m_bar.percent()); }

}  // namespace veltora::app
