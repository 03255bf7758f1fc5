#pragma once

#include "arx/plot/plpen.h"

/// What the library of the PDF pen exports; `acplPdfPen` finds it by name. The caller owns the pen.
/// @return null without a font to put into the file
extern "C" __attribute__((visibility("default"))) AcPlPen* acplMakePdfPen(const AcPlPaper& paper);
