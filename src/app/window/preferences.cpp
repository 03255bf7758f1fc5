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

int Preferences::recoveryMinutes() const {
  constexpr int kUsual = 5;
  constexpr int kMost = 24 * 60;
  bool good = false;
  const int minutes = m_settings.value("copie_de_secours", kUsual).toInt(&good);
  return good && minutes >= 0 && minutes <= kMost ? minutes : kUsual;
}

}  // namespace veltora::app
