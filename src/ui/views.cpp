#include "ui/views.h"

#include <algorithm>
#include <utility>

namespace veltora::ui {

ProgressBar::ProgressBar(Container* parent, std::wstring caption) : Control(parent, std::move(caption)) {}

void ProgressBar::setRange(long long minimum, long long maximum) {
  m_minimum = minimum;
  m_maximum = std::max(minimum, maximum);
  setPosition(minimum);
}

void ProgressBar::setPosition(long long position) {
  m_position = std::clamp(position, m_minimum, m_maximum);
  touch();
}

void ProgressBar::stepIt() {
  long long next = 0;
  if (__builtin_add_overflow(m_position, m_step, &next)) next = m_step > 0 ? m_maximum : m_minimum;
  setPosition(next);
}

int ProgressBar::percent() const {
  if (m_maximum <= m_minimum) return 100;
  const double start = static_cast<double>(m_minimum);
  const double share = (static_cast<double>(m_position) - start) / (static_cast<double>(m_maximum) - start);
  return static_cast<int>(share * 100.0);
}

WebView::WebView(Container* parent, std::wstring caption) : Control(parent, std::move(caption)) {}

void WebView::setPath(const std::wstring& path) {
  m_path = path;
  touch();
}

Preview::Preview(Container* parent, std::wstring caption) : Control(parent, std::move(caption)) {}

void Preview::setPath(const std::wstring& path) {
  m_path = path;
  touch();
}

bool Preview::userPress() {
  if (!userEnter()) return false;
  call(onClick);
  return true;
}

}  // namespace veltora::ui
