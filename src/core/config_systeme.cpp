#include "core/config_systeme.h"

namespace veltora {

Static_ConfigVariable<AcGePoint2d> UserPaperScale[6] = {
    {"VARN.UserPaperScale0", {1000, 1000}}, {"VARN.UserPaperScale1", {1000, 1000}},
    {"VARN.UserPaperScale2", {1000, 1000}}, {"VARN.UserPaperScale3", {1000, 1000}},
    {"VARN.UserPaperScale4", {1000, 1000}}, {"VARN.UserPaperScale5", {1000, 1000}},
};
Static_ConfigVariable<int> gPrecisionCoordonneesX("VARN.gPrecisionCoordonneesX", 3);
Static_ConfigVariable<int> gPrecisionCoordonneesY("VARN.gPrecisionCoordonneesY", 3);

}  // namespace veltora
