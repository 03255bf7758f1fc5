#pragma once

#include "arx/plot/plpen.h"

#include <memory>

enum class AcPlCairoKind { kPdf, kPng };

/// A pen for PDF or PNG. It stands in a library of its own beside the host's, loaded when first asked for, so
/// that a program that draws nothing does not start with it.
/// @return null with a reason in French, UTF-8, when that library is not there
ARX_API std::unique_ptr<AcPlPen> acplCairoPen(const AcPlPaper& paper, AcPlCairoKind kind,
                                              std::string& reason);
