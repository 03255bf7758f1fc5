#pragma once

#include "arx/db/resbuf.h"

#include <optional>
#include <string>

/// A value as the answer that would be typed for it: number, `x,y,z`, text; "" for nil and for no value.
/// Nothing for a list or a name.
/// @param radians a real is an angle: it gets the mark of radians
ARX_API std::optional<std::wstring> acedAnswerText(const resbuf* value, bool radians = false);
/// A value as LISP prints it. Empty for RTVOID.
ARX_API std::wstring acedValueText(const resbuf* value);
