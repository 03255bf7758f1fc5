#include "app/window/dialogs/choice_views.h"

#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/text.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace veltora::app {
namespace {

constexpr int kWidestRow = 460;  ///< pixels; radio buttons that need more stand one below the other
constexpr int kPicture = 48;

}  // namespace

ComboView::ComboView(DialogWindow& window, ui::ComboBox& combo)
    : ControlView(window, combo), m_combo(combo), m_box(new QComboBox(&window)) {
  m_box->setInsertPolicy(QComboBox::NoInsert);
  m_box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  m_box->setMaximumWidth(420);
  place(m_box, true);
  QObject::connect(m_box, &QComboBox::activated, &window, [this](int index) {
    this->window().act(m_combo, [this, index] { return m_combo.userChoose(index); });
  });
}

void ComboView::watchText() {
  m_box->setCompleter(nullptr);
  m_box->lineEdit()->installEventFilter(&window());
  QObject::connect(m_box->lineEdit(), &QLineEdit::textEdited, &window(), [this](const QString& text) {
    window().act(m_combo, [this, typed = wide(text)] { return m_combo.userType(typed); });
  });
}

void ComboView::refreshContent() {
  if (m_box->isEditable() != m_combo.editable()) {
    m_box->setEditable(m_combo.editable());
    if (m_combo.editable()) watchText();
  }
  bool same = m_box->count() == m_combo.count();
  for (int i = 0; same && i < m_combo.count(); ++i) same = m_box->itemText(i) == shown(m_combo.item(i));
  if (!same) {
    QStringList items;
    for (int i = 0; i < m_combo.count(); ++i) items << shown(m_combo.item(i));
    m_box->clear();
    m_box->addItems(items);
  }
  if (m_box->currentIndex() != m_combo.index()) m_box->setCurrentIndex(m_combo.index());
  if (m_combo.editable() && m_box->currentText() != shown(m_combo.text()))
    m_box->setEditText(shown(m_combo.text()));
}

CheckView::CheckView(DialogWindow& window, ui::CheckBox& check) : ControlView(window, check), m_check(check) {
  if (check.pushLike())
    m_button = new QPushButton(&window);
  else
    m_button = new QCheckBox(&window);
  m_button->setCheckable(true);
  if (auto* push = qobject_cast<QPushButton*>(m_button)) push->setAutoDefault(false);
  place(m_button, false);
  QObject::connect(m_button, &QAbstractButton::clicked, &window, [this](bool checked) {
    this->window().act(m_check, [this, checked] { return m_check.userSet(checked); });
  });
}

void CheckView::refreshContent() {
  m_button->setText(shown(m_check.caption()));
  m_button->setChecked(m_check.checked());
}

RadioView::RadioView(DialogWindow& window, ui::RadioGroup& radio)
    : ControlView(window, radio), m_radio(radio), m_buttons(new QButtonGroup(&window)) {
  const bool framed = !radio.plainCaption().empty();
  m_box = framed ? new QGroupBox(&window) : new QWidget(&window);
  int width = 0;
  QList<QAbstractButton*> made;
  for (const std::wstring& item : radio.items()) {
    auto* button = new QRadioButton(shown(item), m_box);
    const auto index = static_cast<std::size_t>(made.size());
    // A picture stands in place of the text, which a hint then tells.
    if (index < radio.pictures().size() && QFileInfo::exists(shown(radio.pictures()[index]))) {
      if (const QPixmap picture(shown(radio.pictures()[index])); !picture.isNull()) {
        button->setIcon(picture);
        button->setIconSize({kPicture, kPicture});
        button->setToolTip(button->text());
        button->setText({});
      }
    }
    width += button->sizeHint().width();
    m_buttons->addButton(button, static_cast<int>(made.size()));
    button->installEventFilter(&window);
    made << button;
  }
  auto* box = new QBoxLayout(width > kWidestRow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, m_box);
  if (!framed) box->setContentsMargins(0, 0, 0, 0);
  for (QAbstractButton* button : made) box->addWidget(button);
  box->addStretch();
  place(m_box, false);
  QObject::connect(m_buttons, &QButtonGroup::idClicked, &window, [this](int index) {
    this->window().act(m_radio, [this, index] { return m_radio.userChoose(index); });
  });
}

QAbstractButton* RadioView::button(int index) const { return m_buttons->button(index); }

QWidget* RadioView::keyboard() const {
  QAbstractButton* chosen = m_buttons->checkedButton();
  if (!chosen) chosen = m_buttons->button(0);
  return chosen ? static_cast<QWidget*>(chosen) : m_box;
}

void RadioView::refreshContent() {
  if (auto* frame = qobject_cast<QGroupBox*>(m_box)) frame->setTitle(shown(m_radio.caption()));
  m_buttons->setExclusive(false);  // so that none may be pressed
  for (QAbstractButton* button : m_buttons->buttons()) {
    const int index = m_buttons->id(button);
    button->setChecked(index == m_radio.index());
    button->setEnabled(m_radio.itemEnabled(index));
  }
  m_buttons->setExclusive(true);
}

}  // namespace veltora::app
