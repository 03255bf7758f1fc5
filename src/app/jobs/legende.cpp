#include "jobs/legende.h"

#include "app/jobs/legende.h"
#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/output.h"
#include "app/session/program.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string point;
  std::string output;
  demandeDessinLegende demand;
};

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  demandeDessinLegende demand = options.demand;
  const auto [x, y] = *readPlanPoint(options.point);
  demand.coin.set(x, y);
  resultatLegende result;
  const bool good = dessinerLegendeDuDessin(demand, result);
  printRemarks(result.remarques);
  if (!good) printError(result.erreur);
  if (!good || !program.save(options.output)) return kFailure;
  print("\nLégende : " + counted(result.blocs, "bloc"));
  if (demand.mesures.legendeLayers) print(", " + counted(result.layers, "calque"));
  print("\nDessin  : " + writtenDrawing(options.output).string() + "\n");
  return kSuccess;
}

void declareSizes(CLI::App& sub, demandeLegende& sizes) {
  constexpr double kSmallest = 1e-6;
  constexpr double kLargest = 1e6;
  const auto add = [&](const char* name, double& value, double least, const char* what) {
    sub.add_option(name, value, what)->type_name("LONGUEUR")->check(between(least, kLargest));
  };
  add("--taille-textes", sizes.tailleTextes, kSmallest, "Hauteur des textes, unités du dessin (1)");
  add("--taille-blocs", sizes.tailleBlocs, kSmallest, "Plus grand côté des blocs (1)");
  add("--distance-lignes", sizes.distanceLignes, 0.0,
      "D'une ligne à la suivante, si c'est plus que 1.2 fois la plus grande des tailles (1)");
  add("--longueur-trait", sizes.longueurTrait, 0.0,
      "Du trait des calques, si c'est plus que 5 fois la taille des textes (2.5)");
}

}  // namespace

Run declareLegende(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  sub.add_option("--point", options->point, "Coin inférieur gauche de la première ligne")
      ->type_name("X,Y")
      ->check(planPoint())
      ->required();
  demandeLegende& sizes = options->demand.mesures;
  sub.add_flag("--tous", options->demand.tous, "Aussi les blocs que le dessin ne montre pas");
  sub.add_flag("--calques", sizes.legendeLayers, "Aussi les calques : un trait et leur nom");
  sub.add_flag("--grouper", sizes.grouper, "Groupe les blocs avec leurs textes, puis les calques");
  declareSizes(sub, sizes);
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN")->required();
  declareFiles(sub).reads(options->drawing, FileKind::kDrawing).writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
