#include "ui/script_driver.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "ui/dialog_text.h"
#include "ui/file_filter.h"
#include "ui/script_line.h"

#include <exception>
#include <filesystem>
#include <map>

namespace veltora::ui {
namespace fs = std::filesystem;
namespace {

std::wstring captionsOf(const std::vector<MessageButton>& choices, const wchar_t* separator) {
  std::wstring text;
  for (const MessageButton& choice : choices)
    text += (text.empty() ? L"" : separator) + (L"[" + std::wstring(choice.caption)) + L"]";
  return text;
}

using Revisions = std::map<const Control*, unsigned>;

void addRevisions(Revisions& revisions, const Container& container) {
  for (Control* control : container.controls()) {
    revisions[control] = control->revision();
    if (const auto* inner = dynamic_cast<Container*>(control)) addRevisions(revisions, *inner);
  }
}

/// The controls that are no longer what they were, a line each.
std::wstring changes(const Revisions& before, const Container& container) {
  std::wstring text;
  for (Control* control : container.controls()) {
    const auto known = before.find(control);
    if (known == before.end() || known->second != control->revision())
      text += L"  " + controlSummary(*control);
    if (const auto* inner = dynamic_cast<Container*>(control)) text += changes(before, *inner);
  }
  return text;
}

bool isFolder(const std::wstring& path) {
  std::error_code error;
  return fs::is_directory(base::cheminDuTexte(path), error);
}

/// What the Escape key and Ctrl-C give.
bool isCancel(const std::wstring& line) { return comparable(line) == L"*annuler*"; }

[[noreturn]] void fail(const std::wstring& message) { throw base::ScriptError{base::toUtf8(message)}; }

}  // namespace

std::optional<std::wstring> ScriptDriver::readLine(base::Request request, const char* prompt) {
  request.prompt = prompt;
  for (;;) {
    const std::optional<std::string> read = m_source.readLine(request);
    if (!read) return std::nullopt;
    const std::wstring line = base::trim(base::fromUtf8(*read), L" \t\r\n");
    if (!line.starts_with(L";")) return line;
  }
}

void ScriptDriver::print(const std::wstring& text) { m_sink.print(base::toUtf8(text)); }

/// At a terminal the message is printed and the line asked for again; a script stops.
void ScriptDriver::refuse(const base::ScriptError& error) {
  if (!m_source.interactive()) throw error;
  m_sink.print(error.message + "\n");
}

/// Dialogs lie one upon the other: when the lowest is left, a failure is over.
class ScriptDriver::OpenDialog : private Uncopyable {
public:
  explicit OpenDialog(ScriptDriver& driver) : m_driver(driver) { ++m_driver.m_open; }
  ~OpenDialog() {
    if (--m_driver.m_open == 0) m_driver.m_failed = false;
  }

private:
  ScriptDriver& m_driver;
};

void ScriptDriver::runModal(Dialog& dialog) {
  const OpenDialog open(*this);
  print(m_source.interactive() ? shownReports(dialog) + dialogText(dialog) : titleLine(dialog.title()));
  while (dialog.isOpen()) {
    base::Request request;
    request.kind = base::Request::Kind::kDialog;
    if (m_source.interactive())
      for (const std::wstring& line : possibleLines(dialog)) request.keywords.push_back(base::toUtf8(line));
    const std::optional<std::wstring> line = readLine(request, "Dialogue> ");
    if (!line) {
      dialog.onCancel();
      dialog.endDialog(kCancel);
      return;
    }
    if (line->empty()) continue;
    try {
      answer(dialog, *line);
    } catch (const base::ScriptError& error) {
      refuse(error);
    }
    if (m_failed) dialog.endDialog(kCancel);
  }
}

void ScriptDriver::answer(Dialog& dialog, const std::wstring& line) {
  if (line == L"?") return print(dialogText(dialog));
  if (isCancel(line)) return dialog.onCancel();
  Revisions before;
  if (m_source.interactive()) addRevisions(before, dialog);
  LineResult result;
  try {
    result = applyLine(dialog, line, hand());
  } catch (const std::exception& error) {
    // What earlier buttons did stays. A person goes on in the dialog; the next lines of a script are meant
    // for what follows the command.
    m_sink.print(std::string("\nErreur : ") + error.what() + "\n");
    m_failed = !m_source.interactive();
    return;
  }
  if (result.asked) return print(controlText(*result.asked));
  if (!result.done) {
    const std::wstring where = dialog.focus() ? L" sur « " + dialog.focus()->names().front() + L" »" : L"";
    print(L"Le curseur est revenu" + where + L" : « " + line + L" » est resté sans effet.\n");
  }
  if (m_source.interactive() && dialog.isOpen()) print(changes(before, dialog));
}

void ScriptDriver::setVisible(Dialog& dialog, bool visible) {
  if (visible) print(titleLine(dialog.title()));
}

void ScriptDriver::showModeless(Dialog& dialog) {
  if (m_source.interactive()) print(L"\n" + dialog.title() + L"\n");
}

void ScriptDriver::update(Dialog& dialog) {
  if (!m_source.interactive()) return;
  for (Control* control : dialog.controls()) {
    if (const auto* bar = dynamic_cast<ProgressBar*>(control)) {
      print(base::formater(std::wstring(L"\r%3d %%"), bar->percent()));
    }
  }
}

void ScriptDriver::closeModeless(Dialog&) {
  if (m_source.interactive()) print(L"\n");
}

int ScriptDriver::messageBox(const std::wstring& text, const std::wstring& title, Buttons buttons) {
  const std::vector<MessageButton> choices = buttonsOf(buttons);
  const std::wstring name = title.empty() ? L"Message" : title;
  print(L"\n--- " + name + L" ---\n" + base::trim(text, L"\r\n") + L"\n" + captionsOf(choices, L"  ") +
        L"\n");
  base::Request request;
  request.kind = base::Request::Kind::kButton;
  for (const MessageButton& choice : choices)
    request.keywords.push_back(base::toUtf8(L"[" + std::wstring(choice.caption) + L"]"));
  for (;;) {
    const std::optional<std::wstring> line = readLine(request, "Réponse> ");
    const std::wstring expected = L"Le message « " + name + L" » attend " + captionsOf(choices, L" ou ");
    if (m_source.interactive() && (!line || isCancel(*line))) return choices.back().answer;
    if (!line) fail(expected + L", et le script est fini.");
    if (line->empty()) continue;
    for (const MessageButton& choice : choices) {
      if (comparable(*line) == comparable(L"[" + std::wstring(choice.caption) + L"]")) return choice.answer;
    }
    refuse({base::toUtf8(expected + L", pas « " + *line + L" ».")});
  }
}

void ScriptDriver::copyText(const std::wstring& text) {
  print(L"\n--- Presse-papier ---\n" + text);
  m_clipboard = text;
}

std::optional<base::FileAnswer> ScriptDriver::chooseFile(const base::FileRequest& request) {
  const std::wstring title =
      request.title.empty() ? (request.save ? L"Enregistrer sous" : L"Ouvrir") : request.title;
  print(L"\n--- " + title + L" ---\n");
  int number = 0;
  for (const FileFilter& filter : filtersOf(request.filter))
    print(base::formater(std::wstring(L"  %d  %s   %s\n"), ++number, filter.text, filter.pattern));
  if (!request.defaultName.empty()) print(L"  proposé : " + request.defaultName + L"\n");
  base::Request asked;
  asked.kind = base::Request::Kind::kFile;
  for (;;) {
    const std::optional<std::wstring> line = readLine(asked, "Fichier> ");
    if (!line || line->empty() || isCancel(*line)) return std::nullopt;
    try {
      if (std::optional<base::FileAnswer> answer = acceptFile(request, *line)) return answer;
    } catch (const base::ScriptError& error) {
      refuse(error);
    }
  }
}

std::optional<base::FileAnswer> ScriptDriver::acceptFile(const base::FileRequest& request,
                                                         const std::wstring& line) {
  base::FileAnswer answer{line, 1};
  const std::size_t bar = line.rfind(L'|');
  if (bar != std::wstring::npos) {
    const auto count = static_cast<int>(filtersOf(request.filter).size());
    answer.path = base::trim(line.substr(0, bar));
    answer.filterIndex = base::lireEntier(std::wstring_view(line).substr(bar + 1));
    if (answer.filterIndex < 1 || answer.filterIndex > count) {
      fail(base::formater(std::wstring(L"« %s » : le filtre se donne par son numéro, de 1 à %d."), line,
                          count));
    }
  }
  const std::wstring full = completedPath(request, answer.path, answer.filterIndex);
  if (isFolder(full) || answer.path.empty()) fail(L"« " + line + L" » n'est pas un nom de fichier.");
  if (request.save) {
    answer.path = full;
    const std::wstring replaced = replacedFile(request, full);
    if (!replaced.empty() &&
        messageBox(overwriteQuestion(replaced), L"Enregistrer sous", Buttons::YesNo) != kYes)
      return std::nullopt;
    return answer;
  }
  answer.path = foundFile(request, answer.path, answer.filterIndex);
  if (!answer.path.empty()) return answer;
  fail(L"Fichier introuvable : « " + full + L" ».");
}

}  // namespace veltora::ui
