#pragma once

#include "base/export.h"

#include <filesystem>
#include <string>
#include <string_view>

/// Names of files as texts, and which of them name one file.
namespace veltora::base {

/// A path as text. A byte that is not part of UTF-8 becomes U+DC80 to U+DCFF, which `cheminDuTexte` turns
/// back: every name of the system survives. Shown, such a character is "�".
VELTORA_API std::wstring texteDuChemin(const std::filesystem::path& path);
VELTORA_API std::filesystem::path cheminDuTexte(std::wstring_view text);

/// What stands behind the last point of the name, in lower case, without the point; empty without one.
VELTORA_API std::wstring terminaison(const std::filesystem::path& path);

/// True when both name one file: by links or detours, or one place where no file stands yet.
VELTORA_API bool memeFichier(const std::filesystem::path& a, const std::filesystem::path& b);

/// Complete, links followed as far as files stand there.
VELTORA_API std::filesystem::path cheminComplet(const std::filesystem::path& path);

}  // namespace veltora::base
