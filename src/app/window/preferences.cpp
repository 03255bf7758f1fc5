#include "app/window/preferences.h"

namespace veltora::app {

void Preferences::noteRecent(const QString& path) {
  constexpr qsizetype kMost = 10;
  QStringList files = recent();
  files.removeAll(path);
  files.prepend(path);
  if (files.size() > kMost) files.resize(kMost);
  m_settings.setValue("recents", files);
}

}  // namespace veltora::app
