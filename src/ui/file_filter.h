#pragma once

#include "base/console.h"

/// What drivers share of a choice of files.
namespace veltora::ui {

/// One filter of "Texte|*.ext;*.ext|Texte|*.ext".
struct FileFilter {
  std::wstring text;
  std::wstring pattern;
  /// The endings that the pattern asks for, without the point, as written; none for "*.*".
  [[nodiscard]] std::vector<std::wstring> extensions() const;
};

/// A text without a pattern ends the filters.
VELTORA_API std::vector<FileFilter> filtersOf(const std::wstring& filter);

/// The path with an extension when it has none: the request's, or the first of a filter chosen in place of
/// the first one where that filter asks for others. A request without an extension leaves the path alone.
/// @param filterIndex from 1
VELTORA_API std::wstring completedPath(const base::FileRequest& request, const std::wstring& path,
                                       int filterIndex);

/// The file to read that a path of a user stands for: as it is, completed, or in the request's folder; empty
/// when there is none.
VELTORA_API std::wstring foundFile(const base::FileRequest& request, const std::wstring& path,
                                   int filterIndex);

/// The file that a save under this name would replace and whose owner must agree; empty when nothing is to be
/// asked.
VELTORA_API std::wstring replacedFile(const base::FileRequest& request, const std::wstring& path);

/// What is asked before a file is replaced.
VELTORA_API std::wstring overwriteQuestion(const std::wstring& file);

}  // namespace veltora::ui
