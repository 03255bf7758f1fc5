#pragma once

#include "base/remarque.h"

#include <set>
#include <string>
#include <vector>

namespace veltora {

/// The codes that labels stand for, in the code table, whatever their case; a label that is new gets the
/// smallest code that nobody has, and the table is saved.
/// @param pris  codes that are in use besides those of the table
/// @param remarques  told of new codes, and of labels for which none was left: they get code 1
/// @return a code for each label
std::vector<int> codesDesLibelles(const std::vector<std::wstring>& libelles, const std::set<int>& pris,
                                  base::Remarques& remarques);

}  // namespace veltora
