#include "app/window/dialogs/container_views.h"

#include "app/window/dialogs/dialog_layout.h"
#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/text.h"

#include <QGroupBox>
#include <QTabBar>
#include <QTabWidget>

namespace veltora::app {

GroupView::GroupView(DialogWindow& window, ui::Group& group) : ControlView(window, group), m_group(group) {
  auto* box = new QGroupBox(&window);
  m_grows = layOut(window, group, *box);
  place(box, false);
}

void GroupView::refreshContent() { static_cast<QGroupBox*>(widget())->setTitle(shown(m_group.caption())); }

PagesView::PagesView(DialogWindow& window, ui::Pages& pages)
    : ControlView(window, pages), m_pages(pages), m_tabs(new QTabWidget(&window)) {
  for (int i = 0; i < pages.count(); ++i) {
    auto* sheet = new QWidget(&window);
    layOut(window, *pages.page(i), *sheet);
    m_tabs->addTab(sheet, {});
    window.add(std::make_unique<PageView>(window, *pages.page(i), *m_tabs));
  }
  place(m_tabs, false);
  QObject::connect(m_tabs, &QTabWidget::currentChanged, &window, [this](int index) {
    this->window().act(m_pages, [this, index] { return m_pages.userChoose(index); });
  });
}

QWidget* PagesView::keyboard() const { return m_tabs->tabBar(); }

void PagesView::refreshContent() { m_tabs->setCurrentIndex(m_pages.index()); }

PageView::PageView(DialogWindow& window, ui::Page& page, QTabWidget& tabs)
    : ControlView(window, page), m_page(page), m_tabs(tabs) {
  place(tabs.widget(page.pages().indexOf(page)), false);
}

void PageView::refreshContent() { m_tabs.setTabText(m_tabs.indexOf(widget()), shown(m_page.caption())); }

void PageView::refreshVisible(bool visible) { m_tabs.setTabVisible(m_tabs.indexOf(widget()), visible); }

}  // namespace veltora::app
