#pragma once

#include "arx/adesk.h"

#include <string_view>

/// A text of several lines as it reads when it is drawn: formatting codes resolved or left out, paragraphs
/// apart by "\n". Codes that are not known stay as they stand.
AcString acdbPlainText(std::wstring_view contents);
