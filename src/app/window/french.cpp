#include "app/window/french.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace veltora::app {

bool speakFrench() {
  auto* const french = new QTranslator(QCoreApplication::instance());
  return french->load("qtbase_fr", QLibraryInfo::path(QLibraryInfo::TranslationsPath)) &&
         QCoreApplication::installTranslator(french);
}

}  // namespace veltora::app
