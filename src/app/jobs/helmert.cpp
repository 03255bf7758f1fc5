#include "jobs/helmert.h"

#include "app/jobs/helmert.h"
#include "app/session/call_files.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/format.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <memory>

namespace veltora::app {
namespace {

constexpr double kGonsPerRadian = 200.0 / 3.141592653589793;

void showParameters(const resultatHelmert& p) {
  print(base::formater("Échelle             : %.8f\n", p.echelle));
  print(base::formater("Rotation            : %.5f grades\n", p.rotation * kGonsPerRadian));
  print(base::formater("Déplacement en X, Y : %.4f  %.4f\n", p.deplacement.x, p.deplacement.y));
  print(base::formater("Paramètres A, B     : %.8f  %.8f\n\n", p.ab.x, p.ab.y));
}

void showResiduals(const std::vector<residuHelmert>& residus) {
  const std::size_t width = nameWidth(residus, [](const residuHelmert& r) { return r.nom; });
  print(padded(L"Couple", width) + base::formater("%12s%12s%12s\n", "dX", "dY", "Distance"));
  for (const residuHelmert& residu : residus) {
    print(padded(residu.nom, width) +
          base::formater("%12.4f%12.4f%12.4f\n", residu.ecart.x, residu.ecart.y, residu.ecart.length()));
  }
}

void showErrors(const ecartsHelmert& e) {
  print(base::formater("\nErreur inférieure   : %.4f\n", e.inferieur));
  print(base::formater("Erreur supérieure   : %.4f\n", e.superieur));
  print(base::formater("Erreur moyenne      : %.4f\n", e.moyenne));
  print("Err. moy. quadr.    : " +
        (std::isnan(e.quadratique) ? std::string("sans valeur") : base::formater("%.4f", e.quadratique)) +
        "\n");
  print(
      "  (racine de la moyenne des carrés des distances, diminuée de 1 : elle n'a de valeur que si cette "
      "moyenne\n"
      "   atteint 1 ; sans valeur, les écarts sont petits)\n");
}

struct Options {
  std::string pairs;
  std::string report;
  std::string drawing;
  std::string output;
  bool despiteDoubts = false;
};

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  const bool apply = !options.drawing.empty();
  if (!program.load() || (apply && !program.open(options.drawing))) return kFailure;
  demandeHelmert job;
  job.fichier = options.pairs;
  job.rapport = options.report;
  job.appliquer = apply;
  job.malgreDoutes = options.despiteDoubts;
  resultatHelmertUnAppel result;
  const bool good = executerHelmert(job, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  showParameters(result.parametres);
  showResiduals(result.residus);
  showErrors(result.ecarts);
  const bool save = apply && !result.retenu;
  if (save && !program.save(options.output)) return kFailure;
  if (!options.report.empty()) print("\nRapport : " + options.report + "\n");
  if (save) {
    print(base::formater("Dessin  : %s, %d entités transformées\n", writtenDrawing(options.output).string(),
                         result.transformees));
    if (result.refusees > 0)
      printError(base::formater("%d entités ne se laissent pas transformer", result.refusees));
  }
  if (apply && result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

}  // namespace

Run declareHelmert(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("couples", options->pairs, "Fichier de couples, une ligne chacun : [nom] x y X Y")
      ->type_name("FICHIER")
      ->required();
  sub.add_option("--rapport", options->report,
                 "Rapport à écrire (HTML ; forme Word si le nom finit par .doc)")
      ->type_name("FICHIER");
  CLI::Option* drawing =
      sub.add_option("--appliquer", options->drawing, "Dessin dont toutes les entités sont transformées")
          ->type_name("DESSIN");
  CLI::Option* output =
      sub.add_option("--sortie", options->output, "Dessin transformé à enregistrer")->type_name("DESSIN");
  drawing->needs(output);
  output->needs(drawing);
  addDoubtOption(sub, options->despiteDoubts)->needs(output);
  declareFiles(sub)
      .reads(options->pairs)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->report, FileKind::kReport)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
