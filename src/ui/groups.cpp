#include "ui/groups.h"

#include "ui/dialog.h"

#include <utility>

namespace veltora::ui {

Group::Group(Container* parent, std::wstring caption) : Control(parent, std::move(caption)) {}

Pages::Pages(Container* parent, std::wstring caption) : Control(parent, std::move(caption)) {}

Page* Pages::page(int index) const {
  return index >= 0 && index < count() ? static_cast<Page*>(controls()[static_cast<std::size_t>(index)])
                                       : nullptr;
}

int Pages::indexOf(const Page& page) const {
  for (int i = 0; i < count(); ++i) {
    if (controls()[static_cast<std::size_t>(i)] == &page) return i;
  }
  return -1;
}

void Pages::setIndex(int index) {
  if (!page(index)) return;
  m_index = index;
  touch();
}

bool Pages::userChoose(int index) {
  const Page* chosen = page(index);
  if (!chosen || !chosen->usable() || !userEnter()) return false;
  if (index == m_index) return true;
  setIndex(index);
  call(onChange);
  return true;
}

Page::Page(Pages* pages, std::wstring caption) : Control(pages, std::move(caption)), m_pages(pages) {}

bool Page::inFront() const { return m_pages->page(m_pages->index()) == this; }

}  // namespace veltora::ui
