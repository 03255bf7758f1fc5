#pragma once

#include "arx/plot/plpen.h"

#include <memory>

/// A pen for PDF with the layers of the drawing as layers of the document. It stands in a library of its own
/// beside the host's, as the pens on Cairo do (`acplCairoPen`).
/// @return null with a reason in French, UTF-8, when that library or a font for it is not there
ARX_API std::unique_ptr<AcPlPen> acplPdfPen(const AcPlPaper& paper, std::string& reason);
