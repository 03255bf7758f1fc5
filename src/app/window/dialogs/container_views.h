#pragma once

#include "app/window/dialogs/control_view.h"

class QTabWidget;

/// Controls that hold controls; each lays out what it holds.
namespace veltora::app {

class GroupView : public ControlView {
public:
  GroupView(DialogWindow& window, ui::Group& group);
  [[nodiscard]] bool grows() const override { return m_grows; }

protected:
  void refreshContent() override;

private:
  ui::Group& m_group;
  bool m_grows = false;
};

/// A tab for each page; a page that is hidden has none.
class PagesView : public ControlView {
public:
  PagesView(DialogWindow& window, ui::Pages& pages);
  [[nodiscard]] QTabWidget& tabs() const { return *m_tabs; }
  [[nodiscard]] bool grows() const override { return true; }
  [[nodiscard]] QWidget* keyboard() const override;

protected:
  void refreshContent() override;

private:
  ui::Pages& m_pages;
  QTabWidget* m_tabs;
};

/// The content of one tab.
class PageView : public ControlView {
public:
  PageView(DialogWindow& window, ui::Page& page, QTabWidget& tabs);

protected:
  void refreshContent() override;
  void refreshVisible(bool visible) override;

private:
  ui::Page& m_page;
  QTabWidget& m_tabs;
};

}  // namespace veltora::app
