#pragma once

#include "calc/traverse/nivellement.h"
#include "report/plume_rapport.h"

#include <initializer_list>

/// What the reports of both kinds of traverse say of the heights.
namespace veltora {

/// "Pas de correction…", or "Correction des altitudes" and the title of the mode.
void titresAltitudes(plumeRapport& plume, int modeNivellement);
/// Header of the height table: `premieres`, the column of the mode, correction, corrected difference, height.
void entetesAltitudes(plumeRapport& plume, std::initializer_list<const wchar_t*> premieres,
                      int modeNivellement);
/// The cells of row i behind its names: X, Y, the difference before correction, the mode's length, the
/// correction, the corrected difference, Z.
void celluleAltitudes(plumeRapport& plume, int modeNivellement, const corrections& parts, std::size_t i,
                      double X, double Y, double Z);

}  // namespace veltora
