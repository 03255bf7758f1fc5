#pragma once

#include "arx/adesk.h"

#include <filesystem>
#include <functional>
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
/// The file that serves a drawing's name: for "x.dwg" the file itself when it holds text, else "x.dxf". For
/// reading, a binary "x.dwg" without an "x.dxf" beside it serves itself, to be refused.
ARX_API std::filesystem::path dxfServingFile(const std::filesystem::path& path, bool forWriting = false);

/// Writes the whole drawing piece by piece. Makes what every drawing must have and this one lacks (tables,
/// block ends).
ARX_API void dxfWrite(AcDbDatabase& database, const std::function<void(std::string_view)>& sink);
ARX_API std::string dxfWriteText(AcDbDatabase& database);

/// Oldest version written: the first one in UTF-8. Older drawings are raised to it.
inline constexpr const char* kDxfOldestWritten = "AC1021";
