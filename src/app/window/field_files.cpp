#include "app/window/field_files.h"

#include "app/window/dialogs/window_driver.h"
#include "app/window/text.h"
#include "app/window/window_lines.h"
#include "base/paths.h"
#include "base/text.h"
#include "jobs/dialogue_fichier.h"

namespace veltora::app {

bool isDrawing(const QString& path) {
  return path.endsWith(".dxf", Qt::CaseInsensitive) || path.endsWith(".dwg", Qt::CaseInsensitive);
}

QString openFieldFile(WindowLines& lines, const QString& path) {
  std::wstring reason;
  const auto job = dialoguePour(base::cheminDuTexte(wide(path)), reason);
  if (!job) return shown(reason);
  const bool taken = lines.queue([job = *job, file = wide(path)] {
    if (auto* const driver = dynamic_cast<WindowDriver*>(ui::driver()))
      driver->prepare(WindowDriver::Prepared{job.ligne, file});
    return std::optional(base::toUtf8(job.commande));
  });
  return taken ? QString() : QString("Fermez d'abord la boîte de dialogue.");
}

}  // namespace veltora::app
