#include "app/jobs/tableau.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "jobs/tableau.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string point;
  double height = 2.5;
  std::string output;
};

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  demandeTableau job;
  const auto [x, y] = *readPlanPoint(options.point);
  job.coin = {x, y, 0.0};
  job.hauteur = options.height;
  resultatTableau result;
  if (!dessinerTableau(job, result)) {
    printError(result.erreur);
    return kFailure;
  }
  if (!program.save(options.output)) return kFailure;
  const std::string what = result.points > 1 ? " points en tableau : " : " point en tableau : ";
  print("\n" + std::to_string(result.points) + what + writtenDrawing(options.output).string() + "\n");
  return kSuccess;
}

}  // namespace

Run declareTableau(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  sub.add_option("--point", options->point, "Coin supérieur gauche du tableau")
      ->type_name("X,Y")
      ->required()
      ->check(planPoint());
  sub.add_option("--hauteur", options->height, "Hauteur des textes, en unités du dessin (2.5)")
      ->type_name("H")
      ->check(between(0.001, 1000000.0));
  sub.add_option("--sortie", options->output, "Dessin à écrire")->type_name("F.dxf")->required();
  declareFiles(sub).reads(options->drawing, FileKind::kDrawing).writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
