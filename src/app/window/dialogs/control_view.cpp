#include "app/window/dialogs/control_view.h"

#include "app/window/dialogs/choice_views.h"
#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/field_views.h"
#include "app/window/dialogs/list_view.h"
#include "app/window/dialogs/picture_views.h"
#include "app/window/dialogs/text.h"
#include "ui/kinds.h"

namespace veltora::app {

void ControlView::place(QWidget* widget, bool labelled) {
  m_widget = widget;
  widget->installEventFilter(&m_window);
  if (keyboard() != widget) keyboard()->installEventFilter(&m_window);
  if (!labelled) return;
  m_label = new QLabel(widget->parentWidget());
  m_label->setBuddy(keyboard());
}

void ControlView::refresh() {
  if (m_label) m_label->setText(shown(m_control.caption()));
  refreshVisible(m_control.visible());
  m_widget->setEnabled(m_control.enabled());
  refreshContent();
}

void ControlView::refreshCell(int, int) { refreshContent(); }

void ControlView::refreshVisible(bool visible) {
  m_widget->setVisible(visible);
  if (m_label) m_label->setVisible(visible && !m_control.plainCaption().empty());
}

void ControlView::retire() {
  for (QWidget* widget : {m_widget, static_cast<QWidget*>(m_label)}) {
    if (!widget) continue;
    widget->blockSignals(true);
    widget->hide();
    widget->deleteLater();
  }
}

std::unique_ptr<ControlView> makeView(DialogWindow& window, ui::Control& control) {
  using View = std::unique_ptr<ControlView>;
  return ui::visit(
      control, [&](ui::Label* label) -> View { return std::make_unique<TextView>(window, *label); },
      [&](ui::TextField* field) -> View {
        if (field->multiline()) return std::make_unique<AreaView>(window, *field);
        return std::make_unique<FieldView>(window, *field);
      },
      [&](ui::ComboBox* combo) -> View { return std::make_unique<ComboView>(window, *combo); },
      [&](ui::CheckBox* check) -> View { return std::make_unique<CheckView>(window, *check); },
      [&](ui::RadioGroup* radio) -> View { return std::make_unique<RadioView>(window, *radio); },
      [&](ui::Button* button) -> View { return std::make_unique<ButtonView>(window, *button); },
      [&](ui::List* list) -> View { return std::make_unique<ListView>(window, *list); },
      [&](ui::ProgressBar* bar) -> View { return std::make_unique<ProgressView>(window, *bar); },
      [&](ui::WebView* view) -> View { return std::make_unique<ReportView>(window, *view); },
      [&](ui::Preview* preview) -> View { return std::make_unique<PreviewView>(window, *preview); },
      [](ui::Group*) -> View { return nullptr; }, [](ui::Page*) -> View { return nullptr; },
      [](ui::Pages*) -> View { return nullptr; }, [](ui::Menu*) -> View { return nullptr; });
}

}  // namespace veltora::app
