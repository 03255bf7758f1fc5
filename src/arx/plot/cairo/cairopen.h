#pragma once

#include "arx/plot/plcairo.h"

/// What the library of the pens on Cairo exports; `acplCairoPen` finds it by name. The caller owns the pen.
extern "C" __attribute__((visibility("default"))) AcPlPen* acplMakeCairoPen(const AcPlPaper& paper,
                                                                            AcPlCairoKind kind);
