#include "app/jobs/list_preview.h"

#include "app/session/output.h"
#include "base/text.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace veltora::app {
namespace {

/// Characters of a field that are shown.
constexpr std::size_t kShown = 24;

using Row = std::vector<std::wstring>;

/// Roles, titles when there are any, then the rows as they stand in the file.
std::vector<Row> tableOf(const apercuListe& list) {
  std::vector<Row> table{list.roles};
  if (list.forme.ligneTitres > 0) table.push_back(list.forme.titres);
  table.insert(table.end(), list.lignes.begin(), list.lignes.end());
  std::size_t width = 0;
  for (const Row& row : table) width = std::max(width, row.size());
  table[0].resize(width, L"-");
  for (Row& row : table)
    for (std::wstring& field : row)
      if (field.size() > kShown) field = field.substr(0, kShown - 1) + L"…";
  return table;
}

void printTable(const std::vector<Row>& table) {
  std::vector<std::size_t> widths(table[0].size());
  for (const Row& row : table)
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  for (const Row& row : table) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) line += "  " + padded(row[i], widths[i]);
    print(base::trim(line, "\n").substr(0, line.find_last_not_of(' ') + 1) + "\n");
  }
}

std::optional<std::string> ask(base::LineSource& source, const std::string& prompt,
                               std::vector<std::string> keywords) {
  base::Request request;
  request.prompt = prompt;
  request.keywords = std::move(keywords);
  return source.readLine(request);
}

/// An answer that is no choice: columns in order. @return what comes next; nothing when it is none either
std::optional<suiteListe> takeColumns(const std::wstring& answer, optionsListe& options) {
  std::wstring reason;
  if (nommerColonnes(answer, options, reason)) return suiteListe::kRelire;
  print(base::toUtf8(reason) + "\n");
  return std::nullopt;
}

suiteListe settle(base::LineSource& source, const questionListe& question, optionsListe& options) {
  print("\n" + base::toUtf8(question.texte) + "\n");
  for (std::size_t i = 0; i < question.reponses.size(); ++i)
    print("  " + std::to_string(i + 1) + "  " + base::toUtf8(question.reponses[i].sens) + "\n");
  for (;;) {
    const auto line =
        ask(source, "Numéro de la réponse, colonnes dans l'ordre, ou rien pour abandonner : ", {});
    const std::wstring answer = base::trim(base::fromUtf8(line.value_or("")));
    if (answer.empty() || answer == L"*Annuler*") return suiteListe::kAbandonner;
    for (std::size_t i = 0; i < question.reponses.size(); ++i) {
      if (answer != std::to_wstring(i + 1)) continue;
      options = question.reponses[i].options;
      return suiteListe::kRelire;
    }
    if (const auto next = takeColumns(answer, options)) return *next;
  }
}

suiteListe confirm(base::LineSource& source, optionsListe& options) {
  for (;;) {
    const auto line =
        ask(source, "Placer ces points ? [Oui/Non], ou colonnes dans l'ordre <Oui> : ", {"Oui", "Non"});
    if (!line || *line == "*Annuler*") return suiteListe::kAbandonner;
    const std::wstring answer = base::toLower(base::trim(base::fromUtf8(*line)));
    if (answer.empty() || answer == L"oui" || answer == L"o") return suiteListe::kContinuer;
    if (answer == L"non" || answer == L"n") return suiteListe::kAbandonner;
    if (const auto next = takeColumns(answer, options)) return *next;
  }
}

}  // namespace

montrerListe listViewer(base::LineSource& source) {
  return [&source](const apercuListe& list, optionsListe& options) {
    print(base::toUtf8(list.fichier + L" : liste " + list.description) + "\n");
    printTable(tableOf(list));
    std::fflush(stdout);  // in front of what standard error tells of it
    if (!source.interactive()) return suiteListe::kContinuer;
    const auto open = std::find_if(list.forme.questions.begin(), list.forme.questions.end(),
                                   [](const questionListe& question) { return !question.reponses.empty(); });
    return open == list.forme.questions.end() ? confirm(source, options) : settle(source, *open, options);
  };
}

}  // namespace veltora::app
