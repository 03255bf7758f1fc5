#include "app/jobs/importer.h"

#include "app/jobs/list_preview.h"
#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/format.h"
#include "base/text.h"
#include "jobs/importer_dessin.h"
#include "jobs/importer_liste.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string list;
  std::string table;
  std::string output;
  bool despiteDoubts = false;
  std::string columns;
  std::string separator;
  std::string decimal;
  bool textCodes = false;
  std::vector<std::string> sources;
  std::vector<std::string> tags;  // number, altitude, code
};

std::vector<std::wstring> wide(const std::vector<std::string>& texts) {
  std::vector<std::wstring> result;
  for (const std::string& text : texts) result.push_back(base::fromUtf8(text));
  return result;
}

std::vector<std::string> sourceNames() {
  std::vector<std::string> names;
  for (const std::wstring& name : nomsSourcesImport()) names.push_back(base::toUtf8(name));
  return names;
}

const std::map<std::string, char>& separators() {
  static const std::map<std::string, char> names{{";", ';'},           {",", ','}, {"\t", '\t'},
                                                 {"tabulation", '\t'}, {" ", ' '}, {"blancs", ' '}};
  return names;
}

/// @return false, with the reason on standard error, for columns that are none
bool readingOptions(const Options& options, optionsListe& reading) {
  if (!options.separator.empty()) reading.separateur = separators().at(options.separator);
  if (!options.decimal.empty()) reading.decimale = options.decimal[0];
  reading.codesTexte = options.textCodes;
  std::wstring reason;
  if (options.columns.empty() || nommerColonnes(base::fromUtf8(options.columns), reading, reason))
    return true;
  printError(L"--colonnes : " + reason);
  return false;
}

int importList(const Options& options) {
  if (options.output.empty()) {
    printError("argument obligatoire manquant : --sortie");
    return kBadCall;
  }
  demandeImportListe demand{options.list, base::fromUtf8(options.table), options.despiteDoubts};
  if (!readingOptions(options, demand.options)) return kBadCall;
  TerminalSource terminal;
  demand.montrer = listViewer(terminal);
  Program program(terminal);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  resultatPoints result;
  if (const auto status = statusBeforeSaving(importerListe(demand, result), result)) return *status;
  if (!program.save(options.output)) return kFailure;
  const std::string what = result.nombre > 1 ? " points placés : " : " point placé : ";
  print("\n" + std::to_string(result.nombre) + what + writtenDrawing(options.output).string() + "\n");
  return exitStatus(result.remarques);
}

int importEntities(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  if (options.drawing.empty()) {
    printError("il faut un dessin, ou une liste de points (--points)");
    return kBadCall;
  }
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  resultatImportDessin result;
  if (!importerDessin({base::fromUtf8(options.table), wide(options.sources), wide(options.tags)}, result)) {
    printError(result.erreur);
    return kFailure;
  }
  print("\n");
  for (const auto& [count, title] : result.comptes)
    print(base::formater("%6d  %s\n", count, base::toUtf8(title)));
  print(base::formater("Table %s : %d points\n", base::toUtf8(result.table), result.points));
  if (options.output.empty()) return kSuccess;
  if (!program.save(options.output)) return kFailure;
  print("Dessin : " + writtenDrawing(options.output).string() + "\n");
  return kSuccess;
}

int run(const Options& options) {
  return options.list.empty() ? importEntities(options) : importList(options);
}

/// How a list is to be read, where it does not tell by itself.
void declareReading(CLI::App& sub, Options& options) {
  sub.add_option(
         "--colonnes", options.columns,
         "Colonnes de la liste, dans l'ordre : numero, x, y, z, code, obs, table, courante, - pour une "
         "colonne à laisser (reconnues)")
      ->type_name("COLONNES")
      ->needs("--points");
  sub.add_option("--separateur", options.separator,
                 "Ce qui sépare les colonnes : \";\", \",\", tabulation ou blancs (reconnu)")
      ->type_name("SIGNE")
      ->check(oneOf(wordsOf(separators()), "\";\", \",\", tabulation, blancs"))
      ->needs("--points");
  sub.add_option("--decimale", options.decimal, "Signe décimal : \".\" ou \",\" (reconnu)")
      ->type_name("SIGNE")
      ->check(oneOf({".", ","}, "\".\", \",\""))
      ->needs("--points");
  sub.add_flag("--codes-texte", options.textCodes,
               "Les codes sont des libellés de la codification ; les nouveaux y reçoivent un code libre")
      ->needs("--points");
}

}  // namespace

Run declareImporter(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("dessin", options->drawing, "Dessin DXF ; un nouveau dessin sans ce nom")
      ->type_name("DESSIN");
  sub.add_option(
         "--points", options->list,
         "Liste .xyz : une ligne par point, numéro X Y Z code observation ; ou tout autre tableau de "
         "coordonnées (.csv, .txt), dont la forme est reconnue ; sans liste, les entités du dessin donnent "
         "les points")
      ->type_name("LISTE");
  declareReading(sub, *options);
  sub.add_option("--table", options->table, "Table qui reçoit les points, créée s'il le faut (la courante)")
      ->type_name("NOM");
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN");
  CLI::Option* sources =
      sub.add_option(
             "--sources", options->sources,
             "Entités reprises, séparées par des virgules : polylignes3d, polylignes2d, points, "
             "maillages, polyfaces, facettes, lignes, polylignes, blocs, attributs, insertions, textes "
             "(toutes)")
          ->type_name("SOURCES")
          ->delimiter(',')
          ->check(oneOf(sourceNames()));
  CLI::Option* tags =
      sub.add_option("--attributs", options->tags,
                     "Attributs des blocs repris par « attributs » : numéro,altitude[,code] (NUMPT,Z)")
          ->type_name("ETIQUETTES")
          ->delimiter(',')
          ->expected(1)
          ->take_all();
  addDoubtOption(sub, options->despiteDoubts)->needs("--points");
  for (CLI::Option* option : {sources, tags}) option->excludes("--points");
  declareFiles(sub)
      .reads(options->drawing, FileKind::kDrawing)
      .reads(options->list)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
