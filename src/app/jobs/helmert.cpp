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

void showParameters(const resultatHelmert& p, const AcGeVector2d& shift) {
  print(base::formater("Échelle             : %.8f\n", p.echelle));
  print(base::formater("Rotation            : %.5f grades\n", p.rotation * kGonsPerRadian));
  print(base::formater("Déplacement en X, Y : %.4f  %.4f\n", p.deplacement.x, p.deplacement.y));
  print(base::formater("Paramètres A, B     : %.8f  %.8f\n", p.ab.x, p.ab.y));
  print(base::formater(
      "Formule             : X = A x + B y + C, Y = A y - B x + D, avec A = %.12f, B = %.12f,\n"
      "                      C = %.6f, D = %.6f\n\n",
      p.ab.x, p.ab.y, shift.x, shift.y));
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
  std::string points;
  std::string to;
  bool tables = false;
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
  job.tables = options.tables;
  job.points = options.points;
  job.vers = options.to;
  job.malgreDoutes = options.despiteDoubts;
  resultatHelmertUnAppel result;
  const bool good = executerHelmert(job, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  showParameters(result.parametres, result.translation);
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
  if (result.portes > 0) print("Liste   : " + options.to + ", " + counted(result.portes, "point") + "\n");
  if (!options.to.empty() && result.retenu) printError("« " + options.to + " » n'est pas écrit");
  if ((apply || !options.to.empty()) && result.retenu) printWithheld();
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
  sub.add_flag("--tables", options->tables,
               "Porte aussi les points des tables du dessin (X et Y ; sans cela ils gardent les anciennes)")
      ->needs(drawing);
  CLI::Option* points = sub.add_option("--points", options->points,
                                       "Liste .xyz à porter (altitudes, codes, observations gardés)")
                            ->type_name("LISTE");
  CLI::Option* to = sub.add_option("--vers", options->to, "Liste portée à écrire")->type_name("LISTE");
  points->needs(to);
  to->needs(points);
  addDoubtOption(sub, options->despiteDoubts);
  declareFiles(sub)
      .reads(options->pairs)
      .reads(options->points)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->report, FileKind::kReport)
      .writes(options->to, FileKind::kText)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
