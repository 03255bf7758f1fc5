#pragma once

#include "arx/lisp/lispinterp.h"

#include <string>

namespace aclisp {

/// Makes what a list of groups describes: an entity of model space or a layer. Part after part, entering the
/// drawing with the last one: a polyline with its vertices, a block reference (66 . 1) with its attributes,
/// up to SEQEND; a block definition from BLOCK to ENDBLK, which takes entities without parts.
/// @param made  stays null for parts of what is unfinished, for layers and for blocks
/// @param block  name of the block that ENDBLK made, else unchanged
/// @return false when the list does not fit
bool makeEntity(Interpreter& in, const Value& list, ads_name made, std::wstring& block);
/// Drops what is unfinished.
void forgetParts(Interpreter& in);

}  // namespace aclisp
