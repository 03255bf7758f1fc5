#pragma once

#include "arx/adesk.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;

/// What a reader found wrong in a drawing and mended: French texts, UTF-8, each with its line.
using DxfFindings = std::vector<std::string>;

/// Reads a drawing's text into an empty database (made with `buildDefaultDrawing` false).
/// @param name how messages call the drawing  @param message why it failed, in French, with name and line
/// @return `eOk`; `eOldVersion`, `eFilerError` or `eBadDxfSequence`, the database then being empty
ARX_API Acad::ErrorStatus dxfReadText(AcDbDatabase& database, std::string_view text, const std::string& name,
                                      std::wstring* message = nullptr, DxfFindings* findings = nullptr);
/// The same for a file, which is read in pieces; no ".dwg" rule. `eFileNotFound` when it cannot be opened.
ARX_API Acad::ErrorStatus dxfReadFile(AcDbDatabase& database, const std::filesystem::path& path,
                                      std::wstring* message = nullptr, DxfFindings* findings = nullptr);
