#pragma once

#include "arx/adesk.h"

#include <filesystem>

// Drawings on disk. The source installs this folder's readers and writers as the file format of all
// databases.

/// The file that serves a drawing's name: for "x.dwg" the file itself when it holds text, else "x.dxf". For
/// reading, a binary "x.dwg" without an "x.dxf" beside it serves itself, to be refused.
ARX_API std::filesystem::path dxfServingFile(const std::filesystem::path& path, bool forWriting = false);
