#include "base/files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltora::base {
namespace fs = std::filesystem;
namespace {

fs::path& temporaryFolderOverride() {
  static fs::path folder;
  return folder;
}

/// A true folder that belongs to this user, closed to all others.
bool isOwnFolder(const fs::path& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::geteuid() &&
         (info.st_mode & 0077) == 0;
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

mode_t modeOfNewFiles() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

/// What the names of the files half written for this target begin with; six more characters follow.
std::string beginningBeside(const fs::path& target) {
  constexpr std::size_t kLongest = 200;  // a name has up to 255 bytes
  return "." + target.filename().string().substr(0, kLongest) + ".veltora-";
}

/// Removes what a killed process left beside a target. Whoever still writes holds a lock on the file.
void removeLitter(const fs::path& target) {
  const std::string beginning = beginningBeside(target);
  std::error_code error;
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    const std::string name = it->path().filename().string();
    if (!name.starts_with(beginning) || name.size() != beginning.size() + kUnique.size()) continue;
    const int litter = ::open(it->path().c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (litter < 0) continue;
    if (::flock(litter, LOCK_EX | LOCK_NB) == 0) ::unlink(it->path().c_str());
    ::close(litter);
  }
}

/// The file that a path stands for. @return 0, or the error number of what stands there and cannot be
/// replaced
int findTarget(const fs::path& path, fs::path& target) {
  std::error_code error;
  target = path;
  if (fs::is_symlink(path, error)) {
    target = fs::canonical(path, error);
    if (error) return error.value() == ENOENT ? ENOLINK : error.value();
  }
  struct stat info {};
  if (::stat(target.c_str(), &info) != 0) return 0;
  if (S_ISDIR(info.st_mode)) return EISDIR;
  if (!S_ISREG(info.st_mode)) return ENODEV;
  // A rename would replace even a read-only file; the user's protection counts.
  return ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0 ? errno : 0;
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
    case EFBIG:
      return "taille permise aux fichiers dépassée";
    case ENODEV:
      return "c'est un périphérique ou un tube, pas un fichier";
    case ENOLINK:
      return "c'est un lien vers un fichier qui n'existe pas";
    case ELOOP:
      return "liens en cercle";
    default:
      return std::string("erreur du système, ") + std::strerror(erreur);
  }
}

std::optional<std::string> lireFichier(const fs::path& path) {
  constexpr std::size_t kLargest = std::size_t{2} << 30;
  // A pipe without a writer would be waited for.
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return std::nullopt;
  struct stat info {};
  std::string content;
  bool good = ::fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) &&
              static_cast<std::size_t>(info.st_size) <= kLargest;
  if (good && info.st_size > 0) content.resize(static_cast<std::size_t>(info.st_size));
  std::size_t used = 0;
  while (good) {
    if (used == content.size()) content.resize(used + (used ? used / 2 : 4096));
    const ssize_t got = ::read(descriptor, content.data() + used, content.size() - used);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) good = false;
    if (got <= 0) break;
    used += static_cast<std::size_t>(got);
    if (used > kLargest) good = false;
    if (used == content.size() && static_cast<off_t>(used) == info.st_size) break;
  }
  ::close(descriptor);
  if (!good) return std::nullopt;
  content.resize(used);
  return content;
}

RemplacementFichier::RemplacementFichier(const fs::path& path) : m_path(path) {
  if (const int refusal = findTarget(path, m_target)) {
    abandonner(refusal);
    return;
  }
  removeLitter(m_target);
  ouvrir();
}

RemplacementFichier::~RemplacementFichier() { abandonner(0); }

void RemplacementFichier::ouvrir() {
  // Another process may take the new file for litter before it is locked: then it has gone, and one more is
  // made.
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::string name = (m_target.parent_path() / (beginningBeside(m_target) + kUnique)).string();
    {
      const SignauxRetenus held;
      m_descriptor = ::mkostemp(name.data(), O_CLOEXEC);
      if (m_descriptor < 0) return abandonner(errno);
      m_temporary = FichierPassager(std::move(name));
    }
    struct stat info {};
    ::flock(m_descriptor, LOCK_EX);
    if (::fstat(m_descriptor, &info) == 0 && info.st_nlink > 0) return;
    ::close(std::exchange(m_descriptor, -1));
  }
  abandonner(EBUSY);
}

void RemplacementFichier::abandonner(int error) {
  if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
  m_temporary.effacer();
  if (m_error == 0) m_error = error;
}

bool RemplacementFichier::ecrire(std::string_view piece) {
  if (m_descriptor < 0) return false;
  if (!writeAll(m_descriptor, piece)) abandonner(errno);
  return m_descriptor >= 0;
}

bool RemplacementFichier::imiter() {
  struct stat former {};
  struct stat fresh {};
  if (::stat(m_target.c_str(), &former) != 0) {
    ::fchmod(m_descriptor, modeOfNewFiles());
    return true;
  }
  const bool alike =
      ::fstat(m_descriptor, &fresh) == 0 && former.st_uid == fresh.st_uid && former.st_gid == fresh.st_gid;
  return (alike || ::fchown(m_descriptor, former.st_uid, former.st_gid) == 0) &&
         ::fchmod(m_descriptor, former.st_mode & 07777) == 0;
}

bool RemplacementFichier::recopier() {
  const int old = ::open(m_target.c_str(), O_WRONLY | O_CLOEXEC);
  struct stat info {};
  const auto content = lireFichier(m_temporary.chemin());
  // The room is taken first: a full disk leaves the old content.
  bool good = old >= 0 && content && ::fstat(m_descriptor, &info) == 0;
  if (good && info.st_size > 0) {
    if (const int error = ::posix_fallocate(old, 0, info.st_size)) {
      errno = error;
      good = false;
    }
  }
  good = good && writeAll(old, *content) && ::ftruncate(old, info.st_size) == 0 && ::fsync(old) == 0;
  const int error = errno;
  if (old >= 0) ::close(old);
  errno = error;
  return good;
}

bool RemplacementFichier::terminer(std::string* reason) {
  if (m_descriptor < 0 || ::fsync(m_descriptor) != 0) {
    abandonner(errno);
    return fail(reason, m_path, m_error);
  }
  const bool inPlace = !imiter();
  const bool good = inPlace ? recopier() : ::rename(m_temporary.chemin().c_str(), m_target.c_str()) == 0;
  const int error = errno;
  if (good && !inPlace) m_temporary.garder();
  abandonner(good ? 0 : error);
  return good || fail(reason, m_path, m_error);
}

bool remplacerFichier(const fs::path& path, std::string_view content, std::string* reason) {
  RemplacementFichier replacement(path);
  replacement.ecrire(content);
  return replacement.terminer(reason);
}

fs::path dossierTemporaire() {
  fs::path& folder = temporaryFolderOverride();
  if (!folder.empty()) return folder;
  std::error_code error;
  const fs::path shared = fs::temp_directory_path(error);
  const std::string own = ((error ? fs::path("/tmp") : shared) / "veltora-").string();
  const fs::path usual = own + std::to_string(::geteuid());
  if (::mkdir(usual.c_str(), 0700) == 0 || isOwnFolder(usual)) return usual;
  // Somebody else took the name: another one, for this run.
  std::string unique = own + kUnique;
  if (::mkdtemp(unique.data())) folder = unique;
  return unique;
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
