#include "base/usage_note.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltora::base {
namespace {

constexpr std::string_view kUser = "utilisateur : ";
constexpr std::string_view kProcess = "processus : ";
constexpr std::string_view kSince = "depuis : ";

std::string userName() {
  const passwd* const entry = ::getpwuid(::geteuid());
  return entry ? entry->pw_name : std::to_string(::geteuid());
}

std::string now() {
  const std::time_t time = std::time(nullptr);
  std::tm local{};
  std::array<char, 32> text{};
  ::localtime_r(&time, &local);
  return std::string(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local));
}

std::string noteText() {
  const auto line = [](std::string_view key, const std::string& value) {
    return std::string(key) + value + "\n";
  };
  return "Ce dessin est ouvert ; cette note s'efface à sa fermeture.\n" + line(kPosteDeNote, nomDuPoste()) +
         line(kUser, userName()) + line(kProcess, std::to_string(::getpid())) + line(kSince, now());
}

std::string valueOf(std::string_view note, std::string_view key) {
  constexpr std::size_t kLongest = 80;
  return valeurDeNote(note, key).substr(0, kLongest);
}

std::string readNote(int descriptor) {
  std::array<char, 1024> bytes{};
  const ssize_t got = ::pread(descriptor, bytes.data(), bytes.size(), 0);
  return got > 0 ? std::string(bytes.data(), static_cast<std::size_t>(got)) : std::string();
}

/// "par Jean sur poste12 (processus 1234), depuis le ..."
std::string holder(const std::string& note) {
  const std::string user = valueOf(note, kUser);
  if (user.empty()) return "par une autre session";
  return "par " + user + " sur " + valueOf(note, kPosteDeNote) + " (processus " + valueOf(note, kProcess) +
         "), depuis le " + valueOf(note, kSince);
}

}  // namespace

std::string valeurDeNote(std::string_view note, std::string_view key) {
  const std::size_t at = note.find("\n" + std::string(key));
  if (at == std::string_view::npos) return {};
  const std::string_view value = note.substr(at + 1 + key.size());
  return std::string(value.substr(0, value.find('\n')));
}

std::string nomDuPoste() {
  std::array<char, 256> name{};
  return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

EtatFichier etatFichier(const std::filesystem::path& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return {};
  return {true,
          static_cast<std::uint64_t>(info.st_dev),
          static_cast<std::uint64_t>(info.st_ino),
          static_cast<std::int64_t>(info.st_size),
          static_cast<std::int64_t>(info.st_mtim.tv_sec),
          static_cast<std::int64_t>(info.st_mtim.tv_nsec)};
}

NoteUsage::NoteUsage(NoteUsage&& other) noexcept
    : m_note(std::move(other.m_note)), m_descriptor(std::exchange(other.m_descriptor, -1)) {}

NoteUsage& NoteUsage::operator=(NoteUsage&& other) noexcept {
  if (this != &other) {
    retirer();
    m_note = std::move(other.m_note);
    m_descriptor = std::exchange(other.m_descriptor, -1);
  }
  return *this;
}

void NoteUsage::retirer() {
  m_note.effacer();
  if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
}

std::string NoteUsage::poser(const std::filesystem::path& file) {
  retirer();
  const std::string name = file.string() + ".ouvert";
  std::string message;
  for (int attempt = 0; attempt < 3; ++attempt) {
    {
      const SignauxRetenus held;
      m_descriptor = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
      if (m_descriptor >= 0) m_note = FichierPassager(name);
    }
    if (m_descriptor >= 0) {
      ::flock(m_descriptor, LOCK_EX | LOCK_NB);
      const std::string text = noteText();
      if (::write(m_descriptor, text.data(), text.size()) != static_cast<ssize_t>(text.size())) retirer();
      return message;
    }
    if (errno != EEXIST) return message;
    const int other = ::open(name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (other < 0) return "ce dessin est déjà ouvert par une autre session";
    const std::string note = readNote(other);
    // Its process holds a lock while it lives; a lock held elsewhere need not be seen on this machine.
    const bool abandoned = (note.empty() || valueOf(note, kPosteDeNote) == nomDuPoste()) &&
                           ::flock(other, LOCK_EX | LOCK_NB) == 0;
    if (abandoned) ::unlink(name.c_str());
    ::close(other);
    if (!abandoned) return "ce dessin est déjà ouvert " + holder(note);
    message = "ce dessin a été laissé ouvert " + holder(note) + ", par une session qui n'est plus là";
  }
  return message;
}

}  // namespace veltora::base
