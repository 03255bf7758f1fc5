#include "base/files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltora::base {
namespace fs = std::filesystem;
namespace {

/// What the system replaces by characters that make a name unique.
const std::string kUnique(6, 'X');

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
  if (reason) *reason = "Impossible d'écrire \"" + path.string() + "\" : " + raisonSysteme(error);
  return false;
}

}  // namespace

std::string raisonSysteme(int erreur) {
  switch (erreur) {
    case ENOENT:
      return "dossier ou fichier introuvable";
    case EACCES:
    case EPERM:
      return "accès refusé";
    case EISDIR:
      return "c'est un dossier";
    case ENOTDIR:
      return "une partie du chemin n'est pas un dossier";
    case EROFS:
      return "support protégé en écriture";
    case ENOSPC:
    case EDQUOT:
      return "plus de place sur le disque";
    case ENAMETOOLONG:
      return "nom trop long";
    case EIO:
      return "erreur du disque";
    default:
      return std::string("erreur du système, ") + std::strerror(erreur);
  }
}

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

RemplacementFichier::RemplacementFichier(const fs::path& path) : m_path(path) {
  std::error_code ignored;
  m_target = fs::is_symlink(path, ignored) ? fs::weakly_canonical(path, ignored) : path;
  struct stat info {};
  if (::stat(m_target.c_str(), &info) == 0) {
    // A rename would replace even a read-only file; the user's protection counts.
    const int refusal = S_ISDIR(info.st_mode) ? EISDIR : ::access(m_target.c_str(), W_OK) != 0 ? errno : 0;
    if (refusal) {
      abandonner(refusal);
      return;
    }
  }
  m_temporary = (m_target.parent_path() / (".veltora-" + kUnique)).string();
  m_descriptor = ::mkostemp(m_temporary.data(), O_CLOEXEC);
  if (m_descriptor < 0) abandonner(errno);
}

RemplacementFichier::~RemplacementFichier() { abandonner(0); }

void RemplacementFichier::abandonner(int error) {
  if (m_descriptor >= 0) {
    ::close(m_descriptor);
    ::unlink(m_temporary.c_str());
    m_descriptor = -1;
  }
  if (m_error == 0) m_error = error;
}

bool RemplacementFichier::ecrire(std::string_view piece) {
  if (m_descriptor < 0) return false;
  if (!writeAll(m_descriptor, piece)) abandonner(errno);
  return m_descriptor >= 0;
}

bool RemplacementFichier::terminer(std::string* reason) {
  const bool ready = m_descriptor >= 0 && ::fchmod(m_descriptor, permissionsFor(m_target)) == 0 &&
                     ::fsync(m_descriptor) == 0;
  if (!ready) {
    abandonner(errno);
    return fail(reason, m_path, m_error);
  }
  const int closed = ::close(std::exchange(m_descriptor, -1));
  if (closed == 0 && ::rename(m_temporary.c_str(), m_target.c_str()) == 0) return true;
  m_error = errno;
  ::unlink(m_temporary.c_str());
  return fail(reason, m_path, m_error);
}

bool remplacerFichier(const fs::path& path, std::string_view content, std::string* reason) {
  RemplacementFichier replacement(path);
  replacement.ecrire(content);
  return replacement.terminer(reason);
}

fs::path dossierTemporaire() {
  if (!temporaryFolderOverride().empty()) return temporaryFolderOverride();
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  return error ? fs::path("/tmp") : folder;
}

void setDossierTemporaire(const fs::path& folder) { temporaryFolderOverride() = folder; }

fs::path creerFichierTemporaire(const fs::path& folder, std::string_view prefix) {
  std::string pattern = (folder / (std::string(prefix) + kUnique + ".tmp")).string();
  const int descriptor = ::mkostemps(pattern.data(), 4, O_CLOEXEC);
  if (descriptor < 0) return {};
  ::close(descriptor);
  return pattern;
}

}  // namespace veltora::base
