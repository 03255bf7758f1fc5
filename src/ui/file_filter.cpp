#include "ui/file_filter.h"

#include "base/paths.h"
#include "base/text.h"

#include <algorithm>
#include <filesystem>

namespace veltora::ui {
namespace fs = std::filesystem;
namespace {

std::vector<std::wstring> split(const std::wstring& text, wchar_t sign) {
  std::vector<std::wstring> parts(1);
  for (const wchar_t c : text) {
    if (c == sign)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

bool isFile(const std::wstring& path) {
  std::error_code error;
  const fs::file_status status = fs::status(base::cheminDuTexte(path), error);
  return fs::exists(status) && !fs::is_directory(status);
}

std::wstring servedFile(const base::FileRequest& request, const std::wstring& path) {
  return request.serving ? request.serving(path) : path;
}

}  // namespace

std::vector<std::wstring> FileFilter::extensions() const {
  std::vector<std::wstring> found;
  for (const std::wstring& one : split(pattern, L';')) {
    const std::wstring trimmed = base::trim(one);
    if (!trimmed.starts_with(L"*.")) continue;
    const std::wstring extension = trimmed.substr(2);
    if (!extension.empty() && extension.find_first_of(L"*?") == std::wstring::npos)
      found.push_back(extension);
  }
  return found;
}

std::vector<FileFilter> filtersOf(const std::wstring& filter) {
  const std::vector<std::wstring> parts = split(filter, L'|');
  std::vector<FileFilter> filters;
  for (std::size_t i = 0; i + 1 < parts.size() && !parts[i].empty(); i += 2)
    filters.push_back({parts[i], parts[i + 1]});
  return filters;
}

std::wstring completedPath(const base::FileRequest& request, const std::wstring& path, int filterIndex) {
  std::wstring extension = request.extension.substr(request.extension.rfind(L'.') + 1);  // also of "*.TXT"
  if (extension.empty() || base::cheminDuTexte(path).has_extension()) return path;
  const std::vector<FileFilter> filters = filtersOf(request.filter);
  if (filterIndex > 1 && static_cast<std::size_t>(filterIndex) <= filters.size()) {
    const std::vector<std::wstring> asked = filters[static_cast<std::size_t>(filterIndex) - 1].extensions();
    const auto same = [&](const std::wstring& one) { return base::toLower(one) == base::toLower(extension); };
    if (!asked.empty() && std::none_of(asked.begin(), asked.end(), same)) extension = asked.front();
  }
  return path + L"." + extension;
}

std::wstring foundFile(const base::FileRequest& request, const std::wstring& path, int filterIndex) {
  const std::wstring full = completedPath(request, path, filterIndex);
  const std::wstring inFolder = request.folder.empty() ? L"" : request.folder + L"/";
  for (const std::wstring& candidate : {path, full, inFolder + path, inFolder + full})
    if (isFile(servedFile(request, candidate))) return candidate;
  return {};
}

std::wstring replacedFile(const base::FileRequest& request, const std::wstring& path) {
  const std::wstring written = servedFile(request, path);
  return request.confirmOverwrite && isFile(written) ? written : std::wstring();
}

std::wstring overwriteQuestion(const std::wstring& file) {
  return file + L" existe déjà.\nVoulez-vous le remplacer ?";
}

}  // namespace veltora::ui
