#include "jobs/aplatir.h"

#include "app/jobs/aplatir.h"
#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/text.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

namespace veltora::app {
namespace {

using Altitude = demandePolylines2d::Altitude;

const std::map<std::string, Altitude>& altitudes() {
  static const std::map<std::string, Altitude> names{{"zero", demandePolylines2d::kAltitudeZero},
                                                     {"premiere", demandePolylines2d::kPremiere},
                                                     {"basse", demandePolylines2d::kPlusBasse},
                                                     {"moyenne", demandePolylines2d::kMoyenne},
                                                     {"haute", demandePolylines2d::kPlusHaute}};
  return names;
}

struct Options {
  std::string drawing;
  std::string altitude = "zero";
  std::vector<std::string> layers;
  std::string pattern;
  std::string output;
  demandeAplatir demand;
};

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  demandeAplatir demand = options.demand;
  demand.polylines.modeAltitude = altitudes().at(options.altitude);
  demand.polylines.modeleLayer = base::fromUtf8(options.pattern);
  for (const std::string& name : options.layers) demand.layers.push_back(base::fromUtf8(name));
  resultatAplatir result;
  const bool good = aplatirPolylines(demand, result);
  printRemarks(result.remarques);
  if (!good) printError(result.erreur);
  if (good && result.retenu) printWithheld();
  if (good && result.retenu) return kDoubtful;
  if (!good || !program.save(options.output)) return kFailure;
  print("\n" + counted(result.bilan.creees, "polyligne") +
        (result.bilan.creees > 1 ? " aplaties : " : " aplatie : ") + writtenDrawing(options.output).string() +
        "\n");
  return exitStatus(result.remarques);
}

}  // namespace

Run declareAplatir(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  demandePolylines2d& polylines = options->demand.polylines;
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  sub.add_option("--altitude", options->altitude,
                 "Altitude de chaque polyligne : zero, ou la premiere, la plus basse, la moyenne, la plus "
                 "haute de ses sommets (zero)")
      ->type_name("ALTITUDE")
      ->check(oneOf(wordsOf(altitudes()), "zero, premiere, basse, moyenne, haute"));
  sub.add_option("--calques", options->layers,
                 "Seulement les polylignes de ces calques, séparés par des virgules (tous)")
      ->type_name("CALQUES")
      ->delimiter(',');
  CLI::Option* pattern =
      sub.add_option(
             "--modele", options->pattern,
             "Calque des polylignes créées, {LAYER} étant celui d'origine : {LAYER}-2D (le même calque)")
          ->type_name("MODELE");
  sub.add_option("--couleur", polylines.couleurLayer, "Couleur des calques créés, de 1 à 255 (7)")
      ->type_name("COULEUR")
      ->check(between(1, 255))
      ->needs(pattern);
  sub.add_flag("--supprimer", polylines.supprimerOriginales, "Supprime les polylignes 3D");
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN")->required();
  addDoubtOption(sub, options->demand.malgreDoutes);
  declareFiles(sub).reads(options->drawing, FileKind::kDrawing).writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
