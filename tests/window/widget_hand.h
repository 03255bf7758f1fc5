#pragma once

#include "app/window/dialogs/window_driver.h"
#include "ui/hand.h"

#include <functional>

class QTreeView;

/// The hand of a user at the window: what a line asks of a control is done to the widget that shows it, by
/// clicks, keys and what the toolkit's own events do. A widget that is not to be seen or used is an error.
class WidgetHand : public veltora::ui::Hand {
public:
  explicit WidgetHand(veltora::app::WindowDriver& driver) : m_driver(driver) {}
  bool type(veltora::ui::TextField& field, const std::wstring& text) override;
  bool type(veltora::ui::ComboBox& combo, const std::wstring& text) override;
  bool choose(veltora::ui::ComboBox& combo, int index) override;
  bool choose(veltora::ui::RadioGroup& radio, int index) override;
  bool choose(veltora::ui::Pages& pages, int index) override;
  bool set(veltora::ui::CheckBox& check, bool checked) override;
  bool toggle(veltora::ui::CheckBox& check) override;
  bool press(veltora::ui::Button& button) override;
  bool press(veltora::ui::Preview& preview) override;
  bool press(veltora::ui::Menu& menu, const veltora::ui::Menu::Entry& entry) override;
  bool select(veltora::ui::List& list, const std::vector<int>& rows) override;
  bool selectAll(veltora::ui::List& list) override;
  bool doubleClick(veltora::ui::List& list, int row) override;
  bool clickColumn(veltora::ui::List& list, int column) override;
  bool edit(veltora::ui::List& list, int row, int column, const std::wstring& text) override;
  bool check(veltora::ui::List& list, int row, bool checked) override;

  /// What the driver says of the deed in progress.
  void took(bool taken);
  void failed(std::exception_ptr thrown) { m_thrown = thrown; }

private:
  /// The view of a control as the user finds it. @throws base::ScriptError when it cannot be worked
  template <class View>
  View& find(veltora::ui::Control& control);
  /// The keyboard goes there, then the deed is done. @return false when the control did not take it
  bool work(veltora::ui::Control& control, const std::function<void()>& deed);
  bool finish();
  void clickRow(QTreeView& table, int row, bool ctrl);

  veltora::app::WindowDriver& m_driver;
  bool m_heard = false;
  bool m_taken = true;
  std::exception_ptr m_thrown;
};
