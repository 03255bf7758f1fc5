#pragma once

#include "core/config_variable.h"

/// The variables of the system. A program that links them fills "config.ini" when it starts.
namespace veltora {

/// User paper formats 0 to 5 of the sheet dialog, "VARN.UserPaperScale0" and so on; default (1000, 1000).
VELTORA_API extern Static_ConfigVariable<AcGePoint2d> UserPaperScale[6];
/// Decimals of x and y in the coordinate lists of the Helmert dialog; default 3.
VELTORA_API extern Static_ConfigVariable<int> gPrecisionCoordonneesX;
VELTORA_API extern Static_ConfigVariable<int> gPrecisionCoordonneesY;

}  // namespace veltora
