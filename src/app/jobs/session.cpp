#include "app/jobs/session.h"

#include "app/session/call_files.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "arx/ed/edroutines.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string script;
  std::vector<std::string> lines;
  std::string output;
  bool withoutFiles = false;
};

int run(const Options& options) {
  const std::unique_ptr<base::LineSource> source = sourceOf(options.lines, options.script);
  if (!source) return kFailure;
  Program program(*source);
  if (options.withoutFiles) acedCloseFilesToRoutines({});
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  if (source->interactive())
    print(std::string("\nVeltora ") + VELTORA_VERSION +
          ". AIDE : les commandes ; Tab complète ; Ctrl-C annule ; QUITTER : fin.\n");
  const bool good = program.run() && (options.output.empty() || program.save(options.output));
  program.tellUnsaved();
  return good ? kSuccess : kFailure;
}

}  // namespace

Run declareSession(CLI::App& app) {
  const auto options = std::make_shared<Options>();
  app.add_option("dessin", options->drawing, "Dessin à ouvrir")->type_name("DESSIN");
  app.add_option("--script", options->script, "Lit les lignes de ce fichier au lieu du terminal")
      ->type_name("FICHIER");
  app.add_option("--commande", options->lines, "Exécute une ligne ; peut être répété")
      ->type_name("LIGNE")
      ->expected(1)
      ->take_all();
  app.add_option("--sortie", options->output, "Enregistre le dessin à la fin")->type_name("DESSIN");
  app.add_flag("--lisp-sans-fichiers", options->withoutFiles,
               "Les routines LISP ne lisent, n'écrivent et n'effacent aucun fichier");
  declareFiles(app)
      .reads(options->drawing, FileKind::kDrawing)
      .reads(options->script)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
