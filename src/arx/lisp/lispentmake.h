#pragma once

#include "arx/lisp/lispinterp.h"

namespace aclisp {

/// Makes what a list of groups describes: an entity of model space, a layer, or, part after part, a polyline
/// with its vertices, which enters the drawing with its SEQEND.
/// @return false when the list does not fit; `made` stays null for parts of an unfinished polyline and for
/// layers
bool makeEntity(Interpreter& in, const Value& list, ads_name made);
/// Drops an unfinished polyline.
void forgetPolyline(Interpreter& in);

}  // namespace aclisp
