#include "app/jobs/exporter.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/text.h"
#include "jobs/exporter_table.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string file;
  std::string table;
  int code = 0;
  std::string order;
  bool observations = false;
};

const std::map<std::string, colonnePoints>& columns() {
  static const std::map<std::string, colonnePoints> names{{"numero", colonnePoints::kNumero},
                                                          {"x", colonnePoints::kX},
                                                          {"y", colonnePoints::kY},
                                                          {"z", colonnePoints::kZ},
                                                          {"code", colonnePoints::kCode}};
  return names;
}

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  demandeExportPoints job;
  job.fichier = options.file;
  job.table = base::fromUtf8(options.table);
  job.code = options.code;
  if (!options.order.empty()) job.tri = columns().at(options.order);
  job.observations = options.observations;
  resultatPoints result;
  const bool good = exporterTable(job, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  const std::string what = result.nombre > 1 ? " points écrits : " : " point écrit : ";
  print("\n" + std::to_string(result.nombre) + what + options.file + "\n");
  return kSuccess;
}

}  // namespace

Run declareExporter(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  sub.add_option("fichier", options->file,
                 "Fichier à écrire : texte en colonnes (.xyz, .txt) ou rapport (.htm, .doc)")
      ->type_name("FICHIER")
      ->required();
  sub.add_option("--table", options->table, "Table à écrire (la courante)")->type_name("NOM");
  sub.add_option("--code", options->code, "Seulement les points de ce code")
      ->type_name("CODE")
      ->check(between(kSmallestCode, kLargestCode));
  sub.add_option("--trier", options->order, "Trie par numero, x, y, z ou code (ordre de la table)")
      ->type_name("COLONNE")
      ->check(oneOf(wordsOf(columns())));
  sub.add_flag("--observations", options->observations,
               "Écrit dans un texte, derrière le code, l'observation que montre chaque point");
  declareFiles(sub)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->file, FileKind::kText, FileKind::kReport);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
