#include "base/files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltora::base {
namespace fs = std::filesystem;
namespace {

fs::path& temporaryFolderOverride() {
  static fs::path folder;
  return folder;
}

bool writeAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// The permissions of the file that is replaced, else those that a new file would get.
mode_t permissionsFor(const fs::path& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) == 0) return info.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

bool fail(std::string* reason, const fs::path& path, int error) {
  if (reason) *reason = "Impossible d'écrire \"" + path.string() + "\" : " + std::strerror(error);
  return false;
}

}  // namespace

std::optional<std::string> lireFichier(const fs::path& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::nullopt;
  struct stat info {};
  std::string content;
  bool good = ::fstat(descriptor, &info) == 0 && !S_ISDIR(info.st_mode);
  if (good && info.st_size > 0) content.resize(static_cast<std::size_t>(info.st_size));
  std::size_t used = 0;
  while (good) {
    if (used == content.size()) content.resize(used + (used ? used / 2 : 4096));
    const ssize_t got = ::read(descriptor, content.data() + used, content.size() - used);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) good = false;
    if (got <= 0) break;
    used += static_cast<std::size_t>(got);
    if (used == content.size() && static_cast<off_t>(used) == info.st_size) break;
  }
  ::close(descriptor);
  if (!good) return std::nullopt;
  content.resize(used);
  return content;
}

bool remplacerFichier(const fs::path& path, std::string_view content, std::string* reason) {
  std::error_code ignored;
  const fs::path target = fs::is_symlink(path, ignored) ? fs::weakly_canonical(path, ignored) : path;
  struct stat info {};
  if (::stat(target.c_str(), &info) == 0) {
    if (S_ISDIR(info.st_mode)) return fail(reason, path, EISDIR);
    // A rename would replace even a read-only file; the user's protection counts.
    if (::access(target.c_str(), W_OK) != 0) return fail(reason, path, errno);
  }
  std::string pattern = (target.parent_path() / (".veltora-XXXXXX")).string();
  const int descriptor = ::mkostemp(pattern.data(), O_CLOEXEC);
  if (descriptor < 0) return fail(reason, path, errno);
  bool good = writeAll(descriptor, content) && ::fchmod(descriptor, permissionsFor(target)) == 0 &&
              ::fsync(descriptor) == 0;
  int error = good ? 0 : errno;
  if (::close(descriptor) != 0 && good) {
    good = false;
    error = errno;
  }
  if (good && ::rename(pattern.c_str(), target.c_str()) != 0) {
    good = false;
    error = errno;
  }
  if (!good) {
    ::unlink(pattern.c_str());
    return fail(reason, path, error);
  }
  return true;
}

fs::path dossierTemporaire() {
  if (!temporaryFolderOverride().empty()) return temporaryFolderOverride();
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  return error ? fs::path("/tmp") : folder;
}

void setDossierTemporaire(const fs::path& folder) { temporaryFolderOverride() = folder; }

fs::path creerFichierTemporaire(const fs::path& folder, std::string_view prefix) {
  std::string pattern = (folder / (std::string(prefix) + "XXXXXX.tmp")).string();
  const int descriptor = ::mkostemps(pattern.data(), 4, O_CLOEXEC);
  if (descriptor < 0) return {};
  ::close(descriptor);
  return pattern;
}

}  // namespace veltora::base
