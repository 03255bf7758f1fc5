#pragma once

#include "base/export.h"

namespace veltora {

/// Stands for every code in the answer of `selectionnerCode`.
inline constexpr int kTousLesCodes = -9999;

/// Lets the user choose a code at the command line: typed, or taken from a point block that he
/// picks; "T" answers `kTousLesCodes`, Enter the code chosen last. The way of choosing and that
/// code are remembered for the run.
/// @return false, `code` unchanged, when he cancels
VELTORA_API bool selectionnerCode(int& code);

}  // namespace veltora
