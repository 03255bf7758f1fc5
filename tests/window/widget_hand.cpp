#include "window/widget_hand.h"

#include "app/window/dialogs/choice_views.h"
#include "app/window/dialogs/container_views.h"
#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/field_views.h"
#include "app/window/dialogs/list_view.h"
#include "app/window/dialogs/menu_view.h"
#include "app/window/dialogs/picture_views.h"
#include "app/window/dialogs/text.h"
#include "base/console.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <utility>

using namespace veltora;

namespace {

[[noreturn]] void fail(const ui::Control& control, const char* what) {
  throw base::ScriptError{"fenêtre : « " + app::utf8(app::shown(control.names().front())) + " » " + what};
}

void replaceText(QLineEdit& edit, const std::wstring& text) {
  edit.selectAll();
  if (text.empty())
    edit.del();
  else
    edit.insert(app::shown(text));
}

}  // namespace

void WidgetHand::took(bool taken) {
  m_heard = true;
  m_taken = m_taken && taken;
}

template <class View>
View& WidgetHand::find(ui::Control& control) {
  app::DialogWindow* const window = m_driver.front();
  auto* const view = window ? dynamic_cast<View*>(window->view(control)) : nullptr;
  if (!view) fail(control, "n'a pas d'image dans la fenêtre");
  window->catchUp();
  if (!window->isVisible()) fail(control, "est dans une fenêtre cachée");
  const bool inMenu = dynamic_cast<ui::Menu*>(&control) != nullptr;
  if (!inMenu && !view->widget()->isVisible()) fail(control, "ne se voit pas dans la fenêtre");
  if (!inMenu && !view->widget()->isEnabled()) fail(control, "ne peut pas servir dans la fenêtre");
  if (view->label() && view->label()->text() != app::shown(control.caption()))
    fail(control, "porte une autre légende");
  return *view;
}

bool WidgetHand::finish() {
  QCoreApplication::processEvents();
  if (std::exception_ptr thrown = std::exchange(m_thrown, nullptr)) std::rethrow_exception(thrown);
  return m_heard && m_taken;
}

bool WidgetHand::work(ui::Control& control, const std::function<void()>& deed) {
  m_taken = true;
  m_heard = false;
  m_thrown = nullptr;
  const auto* const button = dynamic_cast<ui::Button*>(&control);
  if (control.focusable() && !(button && button->role() == ui::Button::Role::Cancel)) {
    find<app::ControlView>(control).keyboard()->setFocus(Qt::TabFocusReason);
    finish();
    if (!m_taken) return false;
    if (!control.usable()) return false;
  }
  m_heard = false;
  deed();
  return finish();
}

bool WidgetHand::type(ui::TextField& field, const std::wstring& text) {
  if (field.multiline()) {
    QPlainTextEdit& area = find<app::AreaView>(field).edit();
    return work(field, [&] {
      area.selectAll();
      area.insertPlainText(app::shown(text));
    });
  }
  QLineEdit& edit = find<app::FieldView>(field).edit();
  const bool done = work(field, [&] { replaceText(edit, text); });
  return done || (m_taken && text.empty() && field.text().empty());  // nothing in place of nothing
}

bool WidgetHand::type(ui::ComboBox& combo, const std::wstring& text) {
  QComboBox& box = find<app::ComboView>(combo).box();
  return work(combo, [&] { replaceText(*box.lineEdit(), text); });
}

bool WidgetHand::choose(ui::ComboBox& combo, int index) {
  QComboBox& box = find<app::ComboView>(combo).box();
  return work(combo, [&] {
    if (box.itemText(index) != app::shown(combo.item(index))) fail(combo, "montre un autre choix");
    box.setCurrentIndex(index);
    emit box.activated(index);
  });
}

bool WidgetHand::choose(ui::RadioGroup& radio, int index) {
  auto& view = find<app::RadioView>(radio);
  return work(radio, [&] { view.button(index)->click(); });
}

bool WidgetHand::choose(ui::Pages& pages, int index) {
  QTabWidget& tabs = find<app::PagesView>(pages).tabs();
  const bool same = tabs.currentIndex() == index;
  const bool done = work(pages, [&] { tabs.setCurrentIndex(index); });
  return done || (same && m_taken);
}

bool WidgetHand::set(ui::CheckBox& check, bool checked) {
  QAbstractButton& button = find<app::CheckView>(check).button();
  const bool same = button.isChecked() == checked;
  const bool done = work(check, [&] {
    if (!same) button.click();
  });
  return done || (same && m_taken);
}

bool WidgetHand::toggle(ui::CheckBox& check) {
  QAbstractButton& button = find<app::CheckView>(check).button();
  return work(check, [&] { button.click(); });
}

bool WidgetHand::press(ui::Button& button) {
  QPushButton& shown = find<app::ButtonView>(button).button();
  return work(button, [&] {
    if (shown.text() != app::shown(button.caption())) fail(button, "porte une autre légende");
    shown.click();
  });
}

bool WidgetHand::press(ui::Preview& preview) {
  QToolButton& button = find<app::PreviewView>(preview).button();
  return work(preview, [&] { button.click(); });
}

bool WidgetHand::press(ui::Menu& menu, const ui::Menu::Entry& entry) {
  QAction* const action = find<app::MenuView>(menu).action(entry);
  if (!action || action->text() != app::shown(entry.caption())) fail(menu, "n'a pas cette entrée");
  return work(menu, [&] { action->trigger(); });
}

void WidgetHand::clickRow(QTreeView& table, int row, bool ctrl) {
  const QModelIndex index = table.model()->index(row, 0);
  table.scrollTo(index);
  const QRect place = table.visualRect(index);
  QTest::mouseClick(table.viewport(), Qt::LeftButton, ctrl ? Qt::ControlModifier : Qt::NoModifier,
                    {place.right() - 4, place.center().y()});
}

bool WidgetHand::select(ui::List& list, const std::vector<int>& rows) {
  QTreeView& table = find<app::ListView>(list).table();
  const bool none = rows.empty() && list.selection().empty();
  const bool done = work(list, [&] {
    if (rows.empty()) table.clearSelection();
    for (std::size_t i = 0; i < rows.size(); ++i) clickRow(table, rows[i], i > 0);
  });
  return done || (none && m_taken);
}

bool WidgetHand::selectAll(ui::List& list) {
  QTreeView& table = find<app::ListView>(list).table();
  const bool all = static_cast<int>(list.selection().size()) == list.rowCount();
  const bool done = work(list, [&] { table.selectAll(); });
  return done || (all && m_taken);
}

bool WidgetHand::doubleClick(ui::List& list, int row) {
  QTreeView& table = find<app::ListView>(list).table();
  return work(list, [&] {
    clickRow(table, row, false);
    const QModelIndex index = table.model()->index(row, 0);
    const QRect place = table.visualRect(index);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier,
                       {place.right() - 4, place.center().y()});
  });
}

bool WidgetHand::clickColumn(ui::List& list, int column) {
  QHeaderView& header = *find<app::ListView>(list).table().header();
  return work(list, [&] {
    const int x = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
    QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, {x, header.height() / 2});
  });
}

bool WidgetHand::edit(ui::List& list, int row, int column, const std::wstring& text) {
  QTreeView& table = find<app::ListView>(list).table();
  const bool same = list.cell(row, column) == text;
  const bool done = work(list, [&] {
    table.edit(table.model()->index(row, column));
    auto* const editor = table.viewport()->findChild<QLineEdit*>();
    if (!editor) fail(list, "ne laisse pas modifier cette case");
    replaceText(*editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
  });
  return done || (same && m_taken);
}

bool WidgetHand::check(ui::List& list, int row, bool checked) {
  QTreeView& table = find<app::ListView>(list).table();
  return work(list, [&] {
    table.model()->setData(table.model()->index(row, 0), checked ? Qt::Checked : Qt::Unchecked,
                           Qt::CheckStateRole);
  });
}
