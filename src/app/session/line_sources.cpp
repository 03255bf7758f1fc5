#include "app/session/line_sources.h"

#include "app/session/output.h"
#include "base/files.h"
#include "base/lines/line_reader.h"
#include "base/text.h"
#include "ui/driver.h"

#include <editline/readline.h>
#include <poll.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iostream>

namespace veltora::app {
namespace {

constexpr int kHistoryLength = 500;

volatile std::sig_atomic_t s_waits = 0;
volatile std::sig_atomic_t s_cancelled = 0;
/// The question in progress; null between questions.
const base::Request* s_request = nullptr;
/// What the text in front of the cursor may become.
std::vector<std::string> s_matches;

/// While the user types, the interrupt gets through only where the program waits for a key: between the look
/// at the flag and a plain read it would be seen by neither, and the line would go on.
class InterruptGate {
public:
  InterruptGate() {
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    sigprocmask(SIG_BLOCK, &interrupt, &s_outside);
  }
  ~InterruptGate() { sigprocmask(SIG_SETMASK, &s_outside, nullptr); }
  InterruptGate(const InterruptGate&) = delete;
  InterruptGate& operator=(const InterruptGate&) = delete;

  /// Waits for a byte of the terminal. @return -1 at its end and when the line is cancelled
  static int nextByte(int terminal) {
    pollfd waited{terminal, POLLIN, 0};
    while (!s_cancelled) {
      if (::ppoll(&waited, 1, nullptr, &s_outside) < 0) {
        if (errno == EINTR) continue;
        return -1;
      }
      unsigned char byte = 0;
      const ssize_t count = ::read(terminal, &byte, 1);
      if (count == 1) return byte;
      if (count == 0 || errno != EINTR) return -1;
    }
    return -1;
  }

private:
  static sigset_t s_outside;
};
sigset_t InterruptGate::s_outside;

/// The next character typed, for the line editor, which takes it whole.
int nextCharacter(FILE* terminal) {
  std::mbstate_t state{};
  while (true) {
    const int byte = InterruptGate::nextByte(::fileno(terminal));
    if (byte < 0) return -1;
    const char piece = static_cast<char>(byte);
    wchar_t character = 0;
    const std::size_t length = std::mbrtowc(&character, &piece, 1, &state);
    if (length == static_cast<std::size_t>(-1))
      state = {};  // no UTF-8: left out
    else if (length != static_cast<std::size_t>(-2))
      return static_cast<int>(character);
  }
}

/// The matches, one a call: what the line editor asks for at Tab.
char* nextMatch(const char*, int state) {
  static std::size_t s_next = 0;
  if (state == 0) s_next = 0;
  return s_next < s_matches.size() ? ::strdup(s_matches[s_next++].c_str()) : nullptr;
}

/// Whether the answer is the whole line, blanks included.
bool isWholeLine(const base::Request& request) {
  using Kind = base::Request::Kind;
  return request.kind == Kind::kDialog || request.kind == Kind::kFile || request.kind == Kind::kButton;
}

/// The files and folders whose path begins so.
std::vector<std::string> filesBeginning(const std::string& typed) {
  const std::size_t name = typed.rfind('/') + 1;  // 0 without a folder
  const std::string folder = typed.substr(0, name);
  std::vector<std::string> found;
  std::error_code error;
  for (std::filesystem::directory_iterator it(folder.empty() ? "." : folder, error), end; !error && it != end;
       it.increment(error)) {
    const std::string entry = it->path().filename().string();
    if (!entry.starts_with(typed.substr(name)) || (name == typed.size() && entry.starts_with('.'))) continue;
    std::error_code ignored;
    found.push_back(folder + entry + (it->is_directory(ignored) ? "/" : ""));
  }
  std::sort(found.begin(), found.end());
  return found;
}

/// The words that begin so, whatever the case. Of a line "Légende = choix" what lies behind the sign is
/// offered once that far is typed.
std::vector<std::string> wordsBeginning(const base::Request& request, const std::string& typed) {
  const std::wstring wanted = base::toLower(base::fromUtf8(typed));
  std::vector<std::string> found;
  for (std::string word : request.keywords) {
    if (request.kind == base::Request::Kind::kDialog) {
      const std::size_t value = word.find(" = ");
      if (value != std::string::npos && typed.size() < value + 3) word.resize(value + 3);
    }
    if (base::toLower(base::fromUtf8(word)).starts_with(wanted) &&
        std::find(found.begin(), found.end(), word) == found.end())
      found.push_back(word);
  }
  // "Légende = " itself says nothing more beside its choices.
  if (found.size() > 1 && found.front().size() == typed.size()) found.erase(found.begin());
  return found;
}

/// At a prompt without a keyword that fits the editor goes on with names of files.
char** completions(const char* text, int, int) {
  if (!s_request) return nullptr;
  rl_attempted_completion_over = isWholeLine(*s_request) ? 1 : 0;
  if (s_request->kind == base::Request::Kind::kFile)
    s_matches = filesBeginning(text);
  else
    s_matches = wordsBeginning(*s_request, text);
  return s_matches.empty() ? nullptr : rl_completion_matches(text, nextMatch);
}

/// Where the history of typed lines is kept; empty when there is no home.
std::filesystem::path historyFile() {
  const char* state = std::getenv("XDG_STATE_HOME");
  const char* home = std::getenv("HOME");
  std::filesystem::path folder;
  if (state && *state) {
    folder = state;
  } else if (home && *home) {
    folder = std::filesystem::path(home) / ".local" / "state";
  } else {
    return {};
  }
  folder /= "veltora";
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  return error ? std::filesystem::path() : folder / "historique";
}

}  // namespace

TerminalSource::TerminalSource() : m_interactive(::isatty(STDIN_FILENO) == 1) {
  if (!m_interactive) return;
  // The editing library converts prompts by the locale, and fails on accents in any other than this one.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  rl_attempted_completion_function = completions;
  rl_getc_function = nextCharacter;
  using_history();
  stifle_history(kHistoryLength);
  m_history = historyFile();
  if (!m_history.empty()) read_history(m_history.c_str());
}

TerminalSource::~TerminalSource() {
  if (m_interactive && !m_history.empty()) write_history(m_history.c_str());
}

bool TerminalSource::cancel() {
  if (s_waits) s_cancelled = 1;
  return s_waits != 0;
}

std::optional<std::string> TerminalSource::readLine(const base::Request& request) {
  ++m_line;
  if (!m_interactive) {
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
  }
  std::fflush(stdout);
  if (ui::Driver* driver = ui::driver()) driver->oublierArret();
  const InterruptGate gate;
  s_waits = 1;
  s_cancelled = 0;
  s_request = &request;
  // What Tab completes ends at one of these in front; nothing is appended where blanks count.
  static const char* const s_wordBreaks = rl_basic_word_break_characters;
  rl_basic_word_break_characters = isWholeLine(request) ? "" : s_wordBreaks;
  rl_completion_append_character = isWholeLine(request) ? '\0' : ' ';
  char* typed = readline(request.prompt.c_str());
  s_request = nullptr;
  s_waits = 0;
  if (!typed && s_cancelled) {
    std::puts("");
    return "*Annuler*";
  }
  if (!typed) return std::nullopt;
  std::string line = typed;
  std::free(typed);
  if (!line.empty()) add_history(line.c_str());
  return line;
}

std::string TerminalSource::position() const {
  return m_interactive || m_line == 0 ? std::string() : "entrée standard:" + std::to_string(m_line);
}

LinesSource::LinesSource(std::string name, std::vector<std::string> lines)
    : m_name(std::move(name)), m_lines(std::move(lines)) {}

std::optional<std::string> LinesSource::readLine(const base::Request&) {
  if (m_next >= m_lines.size()) return std::nullopt;
  return m_lines[m_next++];
}

std::string LinesSource::position() const {
  return m_next == 0 ? std::string() : m_name + ":" + std::to_string(m_next);
}

std::optional<std::vector<std::string>> lireScript(const std::filesystem::path& path) {
  const auto content = base::lireFichier(path);
  if (!content) return std::nullopt;
  std::vector<std::string> lines;
  base::LineReader reader(*content);
  while (reader.next()) lines.push_back(base::toUtf8(reader.wide()));
  return lines;
}

std::optional<std::string> ChainedSource::readLine(const base::Request& request) {
  while (!m_sources.empty()) {
    if (auto line = m_sources.front()->readLine(request)) return line;
    if (m_sources.size() == 1) return std::nullopt;
    m_sources.pop_front();
  }
  return std::nullopt;
}

std::string ChainedSource::position() const {
  return m_sources.empty() ? std::string() : m_sources.front()->position();
}

std::unique_ptr<base::LineSource> sourceOf(const std::vector<std::string>& lines, const std::string& script) {
  auto chain = std::make_unique<ChainedSource>();
  if (!lines.empty()) chain->append(std::make_unique<LinesSource>("--commande", lines));
  if (!script.empty()) {
    auto read = lireScript(script);
    if (!read) {
      printError("impossible de lire le script \"" + script + "\"");
      return nullptr;
    }
    chain->append(std::make_unique<LinesSource>(script, std::move(*read)));
  }
  if (lines.empty() && script.empty()) chain->append(std::make_unique<TerminalSource>());
  return chain;
}

void StandardOutput::print(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

}  // namespace veltora::app
