#include "app/window/recovery_folder.h"

#include "base/files.h"
#include "base/paths.h"
#include "base/text.h"
#include "base/usage_note.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <sstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltora::app {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view kFile = "dessin : ";
constexpr std::string_view kTitle = "titre : ";
constexpr std::string_view kState = "état : ";
constexpr std::size_t kLongestNote = 65536;
const std::string kNote = ".note";

std::string lineOf(std::string_view key, const std::string& value) { return std::string(key) + value + "\n"; }

/// A name of a file as one line; none can be told of one that has several.
std::string lineName(const std::wstring& fileName) {
  const std::string bytes = base::cheminDuTexte(fileName).string();
  return bytes.find('\n') == std::string::npos ? bytes : std::string();
}

std::string stateText(const base::EtatFichier& state) {
  if (!state.present) return {};
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << state.device << ' ' << state.inode << ' ' << state.size << ' ' << state.seconds << ' '
       << state.nanoseconds;
  return text.str();
}

base::EtatFichier stateOf(const std::string& line) {
  base::EtatFichier state;
  std::istringstream text(line);
  text.imbue(std::locale::classic());
  text >> state.device >> state.inode >> state.size >> state.seconds >> state.nanoseconds;
  state.present = !text.fail();
  return state;
}

std::string contentOf(int descriptor) {
  std::string text(kLongestNote, '\0');
  const ssize_t got = ::pread(descriptor, text.data(), text.size(), 0);
  text.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return text;
}

bool isLocked(int descriptor) { return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0; }

/// Whether the name still leads to the file that was opened.
bool isStillThere(int descriptor) {
  struct stat info {};
  return ::fstat(descriptor, &info) == 0 && info.st_nlink > 0;
}

}  // namespace

fs::path recoveryFolder() {
  const auto variable = [](const char* name) {
    const char* const value = std::getenv(name);
    return fs::path(value ? value : "");
  };
  if (const fs::path state = variable("XDG_STATE_HOME"); state.is_absolute())
    return state / "veltora" / "recuperation";
  const fs::path home = variable("HOME");
  return home.empty() ? fs::path() : home / ".local" / "state" / "veltora" / "recuperation";
}

std::unique_ptr<RecoveryCopy> RecoveryCopy::make(const fs::path& folder, std::string& reason) {
  std::error_code error;
  if (folder.empty())
    error = std::make_error_code(std::errc::no_such_file_or_directory);
  else
    fs::create_directories(folder, error);
  if (!error) fs::permissions(folder, fs::perms::owner_all, error);  // drawings are nobody else's business
  int failure = error.value();
  // Another process may take a new note for litter before it is locked: then one more is made.
  for (int attempt = 0; !error && attempt < 100; ++attempt) {
    std::string name = (folder / (base::kUnique + kNote)).string();
    const int descriptor = ::mkostemps(name.data(), static_cast<int>(kNote.size()), O_CLOEXEC);
    failure = errno;
    if (descriptor < 0) break;
    if (isLocked(descriptor) && isStillThere(descriptor))
      return std::unique_ptr<RecoveryCopy>(new RecoveryCopy(std::move(name), descriptor));
    ::close(descriptor);
  }
  reason = "\"" + folder.string() + "\" : " + base::raisonSysteme(failure);
  return nullptr;
}

/// The place of a note that no process of this machine holds; null for any other.
std::unique_ptr<RecoveryCopy> RecoveryCopy::hold(const fs::path& note) {
  const int descriptor = ::open(note.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  const std::string text = contentOf(descriptor);
  const std::string host = base::valeurDeNote(text, base::kPosteDeNote);
  // A lock held elsewhere need not be seen on this machine.
  if ((!host.empty() && host != base::nomDuPoste()) || !isLocked(descriptor) || !isStillThere(descriptor)) {
    ::close(descriptor);
    return nullptr;
  }
  std::unique_ptr<RecoveryCopy> held(new RecoveryCopy(note, descriptor));
  held->read(text);
  return held;
}

std::vector<std::unique_ptr<RecoveryCopy>> RecoveryCopy::abandoned(const fs::path& folder) {
  std::vector<fs::path> notes;
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
    if (it->path().extension() == kNote) notes.push_back(it->path());
  std::vector<std::pair<fs::file_time_type, std::unique_ptr<RecoveryCopy>>> found;
  for (const fs::path& note : notes) {
    std::unique_ptr<RecoveryCopy> held = hold(note);
    if (!held) continue;
    const fs::file_time_type time = fs::last_write_time(held->copy(), error);
    if (error)
      held->remove();
    else
      found.emplace_back(time, std::move(held));
  }
  std::ranges::sort(found, {}, [](const auto& each) { return each.first; });
  std::vector<std::unique_ptr<RecoveryCopy>> copies;
  for (auto& [time, copy] : found) copies.push_back(std::move(copy));
  return copies;
}

RecoveryCopy::~RecoveryCopy() {
  if (m_descriptor >= 0) ::close(m_descriptor);
}

bool RecoveryCopy::describe(const RecoveredDrawing& drawing) {
  m_drawing = drawing;
  const std::string text =
      "Copie de secours d'un dessin ; la fenêtre la propose après une panne.\n" +
      lineOf(base::kPosteDeNote, base::nomDuPoste()) + lineOf(kFile, lineName(drawing.fileName)) +
      lineOf(kTitle, base::toUtf8(drawing.title)) + lineOf(kState, stateText(drawing.state));
  return ::ftruncate(m_descriptor, 0) == 0 &&
         ::pwrite(m_descriptor, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
}

void RecoveryCopy::read(std::string_view text) {
  m_drawing.fileName = base::texteDuChemin(base::valeurDeNote(text, kFile));
  m_drawing.title = base::fromUtf8(base::valeurDeNote(text, kTitle));
  m_drawing.state = stateOf(base::valeurDeNote(text, kState));
}

fs::path RecoveryCopy::copy() const { return fs::path(m_note).replace_extension(".dxf"); }

std::string RecoveryCopy::written() const {
  struct stat info {};
  if (::stat(copy().c_str(), &info) != 0) return {};
  std::tm local{};
  std::array<char, 32> text{};
  ::localtime_r(&info.st_mtim.tv_sec, &local);
  return {text.data(), std::strftime(text.data(), text.size(), "%d/%m/%Y %H:%M", &local)};
}

void RecoveryCopy::remove() {
  ::unlink(copy().c_str());
  // What a killed process was writing.
  const std::string beginning = "." + copy().filename().string() + ".veltora-";
  std::error_code error;
  for (fs::directory_iterator it(m_note.parent_path(), error), end; !error && it != end; it.increment(error))
    if (it->path().filename().string().starts_with(beginning)) ::unlink(it->path().c_str());
  ::unlink(m_note.c_str());
}

}  // namespace veltora::app
