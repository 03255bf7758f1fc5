#include "arx/db/dbfileformat.h"

namespace {
const AcDbFileFormat* g_installed = nullptr;
}

const AcDbFileFormat* AcDbFileFormat::installed() { return g_installed; }

void AcDbFileFormat::install(const AcDbFileFormat* format) { g_installed = format; }
