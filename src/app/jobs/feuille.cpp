#include "app/jobs/feuille.h"

#include "app/session/call_files.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "jobs/feuille_calculs.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string script;
  std::string clipboard;
};

int run(const Options& options) {
  const std::unique_ptr<base::LineSource> source = sourceOf({}, options.script);
  if (!source) return kFailure;
  Program program(*source);
  if (!program.load()) return kFailure;
  const bool good = program.show([] { montrerFeuilleCalculs(); });
  const bool copied = options.clipboard.empty() || program.saveClipboard(options.clipboard);
  return good && copied ? kSuccess : kFailure;
}

}  // namespace

Run declareFeuille(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("--script", options->script, "Lit les lignes de ce fichier au lieu du terminal")
      ->type_name("FICHIER");
  sub.add_option("--presse-papier", options->clipboard,
                 "Écrit à la fin ce que « Copier » a mis en dernier dans le presse-papier (UTF-8)")
      ->type_name("FICHIER");
  declareFiles(sub).reads(options->script).writes(options->clipboard, FileKind::kText);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
