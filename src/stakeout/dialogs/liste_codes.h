#pragma once

#include "ui/choices.h"

namespace veltora {

/// Fills a list with the codes of the current table's points, "%4d %s (%d pts)", each with its code; the code
/// in force is among them, and chosen.
void listerCodes(ui::ComboBox& liste, int choisi);

}  // namespace veltora
