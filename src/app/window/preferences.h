#pragma once

#include <QSettings>
#include <QStringList>

namespace veltora::app {

/// What the window remembers from one session to the next, in the user's folder of settings.
class Preferences {
public:
  Preferences() : m_settings(QSettings::IniFormat, QSettings::UserScope, "veltora", "fenetre") {}
  [[nodiscard]] QStringList recent() const { return m_settings.value("recents").toStringList(); }
  /// Puts a drawing in front of the recent ones.
  void noteRecent(const QString& path);
  /// Between two copies of unsaved drawings, 0 for none.
  [[nodiscard]] int recoveryMinutes() const;
  void setRecoveryMinutes(int minutes) { m_settings.setValue("copie_de_secours", minutes); }
  [[nodiscard]] QSettings& settings() { return m_settings; }

private:
  QSettings m_settings;
};

}  // namespace veltora::app
