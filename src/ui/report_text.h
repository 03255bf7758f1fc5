#pragma once

#include "base/export.h"

#include <string>
#include <string_view>

namespace veltora::ui {

/// A report as a terminal shows it: paragraphs a line each, tables in columns as wide as their widest cell,
/// two blanks between them; right-aligned and centred cells so. What stands in front of the body, tags and
/// comments are left out.
/// @param html  the bytes of an HTML file, Windows-1252
VELTORA_API std::wstring reportText(std::string_view html);

}  // namespace veltora::ui
