#include "app/session/reading_log.h"

#include "app/session/output.h"
#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <unordered_map>
#include <utility>

namespace veltora::app {
namespace {

constexpr std::size_t kKindsShown = 10;

struct Log {
  std::string path;  // empty when nobody asked for it
  std::string text;  // of all drawings so far
};
Log& theLog() {
  static auto* const log = new Log;
  return *log;
}

struct Kind {
  std::string text;
  std::string place;  // of the first
  int count = 0;
};

/// "ligne 12 : texte" in two; handles are left out, so that like troubles are counted together.
std::pair<std::string, std::string> placeAndText(const std::string& finding) {
  constexpr std::string_view kHandle = "handle ";
  const std::size_t colon = finding.rfind("ligne ", 0) == 0 ? finding.find(" : ") : std::string::npos;
  std::string place = colon == std::string::npos ? "" : finding.substr(0, colon);
  std::string text = colon == std::string::npos ? finding : finding.substr(colon + 3);
  if (text.rfind(kHandle, 0) == 0)
    if (const std::size_t blank = text.find(' ', kHandle.size()); blank != std::string::npos)
      text.erase(kHandle.size(), blank + 1 - kHandle.size());
  return {std::move(place), std::move(text)};
}

std::vector<Kind> kindsOf(const std::vector<std::string>& findings) {
  std::vector<Kind> kinds;
  std::unordered_map<std::string, std::size_t> known;
  for (const std::string& finding : findings) {
    auto [place, text] = placeAndText(finding);
    const auto [at, isNew] = known.emplace(text, kinds.size());
    if (isNew) kinds.push_back({std::move(text), std::move(place)});
    ++kinds[at->second].count;
  }
  return kinds;
}

void printSummary(const std::string& name, const std::vector<std::string>& findings) {
  if (findings.empty()) return;
  const std::vector<Kind> kinds = kindsOf(findings);
  for (std::size_t i = 0; i < kinds.size() && i < kKindsShown; ++i) {
    const Kind& kind = kinds[i];
    const std::string place = kind.place.empty() ? "" : ", " + kind.place;
    const std::string number = kind.count > 1 ? base::formater(" (%d fois)", kind.count) : "";
    printError("\"" + name + "\"" + place + " : " + kind.text + number);
  }
  if (kinds.size() > kKindsShown)
    printError(base::formater("\"%s\" : %d autres sortes de défauts ; --journal-lecture FICHIER les dit tous",
                              name, static_cast<int>(kinds.size() - kKindsShown)));
}

void writeLog(const std::string& drawing, const std::vector<std::string>& findings) {
  Log& log = theLog();
  if (log.path.empty()) return;
  // Of the call's own files this was asked before; a session may open others.
  if (base::memeFichier(log.path, base::cheminDuTexte(base::fromUtf8(drawing)))) {
    printError("le journal de lecture \"" + log.path + "\" est le dessin lui-même, il n'est pas écrit");
    return;
  }
  log.text += drawing + "\n";
  for (const std::string& finding : findings) log.text += "  " + finding + "\n";
  if (findings.empty()) log.text += "  aucun défaut\n";
  base::RemplacementFichier file(log.path);
  file.ecrire(log.text);
  std::string reason;
  if (!file.terminer(&reason)) printError("journal de lecture : " + reason);
}

}  // namespace

const std::string& addReadingLogOption(CLI::App& app) {
  app.add_option("--journal-lecture", theLog().path,
                 "Écrit dans ce fichier tout ce que la lecture des dessins a réparé ou laissé de côté")
      ->type_name("FICHIER");
  return theLog().path;
}

void tellReading(const std::wstring& drawing, const std::vector<std::string>& findings) {
  const std::string path = base::toUtf8(drawing);
  printSummary(std::filesystem::path(path).filename().string(), findings);
  writeLog(path, findings);
}

void ReadingLog::documentCreated(AcApDocument* document) {
  if (document->isNamedDrawing()) tellReading(document->fileName(), document->database()->readFindings());
}

}  // namespace veltora::app
