#include "app/jobs/carroyer.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/format.h"
#include "base/text.h"
#include "jobs/carroyer.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string layer;
  std::string output;
  demandeCarroyer demand;
  double stepY = 0.0;
  bool outside = false;
};

int run(Options& options) {
  demandeCarroyer& demand = options.demand;
  demand.calque = base::fromUtf8(options.layer);
  demand.aspect.pasY = options.stepY > 0.0 ? options.stepY : demand.aspect.pasX;
  demand.aspect.internes = !options.outside;
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  resultatCarroyer result;
  if (const auto status = statusBeforeSaving(carroyer(demand, result), result)) return *status;
  if (!program.save(options.output)) return kFailure;
  print(base::formater("\nRégions : %d, croix : %d\nDessin : %s\n", result.regions, result.croix,
                       writtenDrawing(options.output).string()));
  return exitStatus(result.remarques);
}

}  // namespace

Run declareCarroyer(CLI::App& sub) {
  constexpr double kLeast = 1e-6;
  constexpr double kLargest = 1e36;
  const auto options = std::make_shared<Options>();
  aspectCarroyage& aspect = options->demand.aspect;
  const auto size = [&sub](const char* name, double& value, const char* help) {
    sub.add_option(name, value, help)->type_name("LONGUEUR")->check(between(kLeast, kLargest));
  };
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  sub.add_option("--calque", options->layer, "Calque dont les polylignes légères sont les régions")
      ->type_name("NOM")
      ->required();
  size("--pas", aspect.pasX, "Pas du carroyage, en unités du dessin (100)");
  size("--pas-y", options->stepY, "Pas sur Y, s'il n'est pas celui sur X");
  size("--croix", aspect.tailleCroix, "Taille des croix (5)");
  size("--texte", aspect.tailleTexte, "Hauteur des textes (2)");
  sub.add_option("--decimales", aspect.format, "Décimales des textes, de 0 à 4 (2)")
      ->type_name("NOMBRE")
      ->check(between(0, 4));
  sub.add_flag("--externes", options->outside, "Écrit les coordonnées hors des régions, non à l'intérieur");
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN")->required();
  addDoubtOption(sub, options->demand.malgreDoutes);
  declareFiles(sub).reads(options->drawing, FileKind::kDrawing).writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
