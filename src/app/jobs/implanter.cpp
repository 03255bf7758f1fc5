#include "jobs/implanter.h"

#include "app/jobs/implanter.h"
#include "app/jobs/planifier.h"
#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/format.h"
#include "base/text.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  demandeImplanter job;
  PlanOptions plan;
  std::string drawing;
  std::string list;
  std::string layer;
  std::string station;
  std::string reference;
  std::string unit = "grades";
  std::string report;
  std::string text;
  std::string columns;
  std::string output;
};

const std::map<std::string, int>& units() {
  static const std::map<std::string, int> modes{{"grades", 0}, {"degres", 1}, {"radians", 2}};
  return modes;
}

void tellFiles(const Options& options, const resultatImplanter& result) {
  if (!options.report.empty()) print("\nRapport  : " + options.report + "\n");
  if (!options.text.empty()) print("Texte    : " + options.text + "\n");
  if (!options.columns.empty() && !result.retenu) print("Colonnes : " + options.columns + "\n");
  if (!options.columns.empty() && result.retenu) printError("« " + options.columns + " » n'est pas écrit");
}

int runAutomatic(Options& options) {
  demandePlanifier& plan = options.plan.demand;
  plan.liste = options.list;
  plan.calque = base::fromUtf8(options.layer);
  plan.code = options.job.code;
  plan.pas = options.job.pas;
  plan.fleche = options.job.fleche;
  plan.pasDroites = options.job.pasDroites;
  plan.rapport = options.report;
  plan.texte = options.text;
  plan.csv = options.columns;
  plan.modeAngle = units().at(options.unit);
  plan.hauteurTexte = options.job.hauteurTexte;
  plan.malgreDoutes = options.job.malgreDoutes;
  return runPlan(options.plan, options.drawing, options.output);
}

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  demandeImplanter job = options.job;
  job.liste = options.list;
  job.calque = base::fromUtf8(options.layer);
  job.station = base::fromUtf8(options.station);
  job.reference = base::fromUtf8(options.reference);
  job.rapport = options.report;
  job.texte = options.text;
  job.csv = options.columns;
  job.modeAngle = units().at(options.unit);
  job.dessiner = !options.output.empty();
  resultatImplanter result;
  const bool good = implanter(job, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  const bool save = job.dessiner && !result.retenu;
  if (save && !program.save(options.output)) return kFailure;
  print("\n" + base::toUtf8(result.listing) + base::formater("\nPoints   : %d\n", result.points));
  if (result.visibles + result.masques > 0)
    print(base::formater("Visées   : visibles %d, masquées %d\n", result.visibles, result.masques));
  tellFiles(options, result);
  if (save) print("Dessin   : " + writtenDrawing(options.output).string() + "\n");
  if (job.dessiner && result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

void declareWhat(CLI::App& sub, Options& options) {
  CLI::Option* list =
      sub.add_option("--points", options.list, "Liste .xyz des points à implanter")->type_name("LISTE");
  CLI::Option* layer =
      sub.add_option("--calque", options.layer, "Calque dont les éléments donnent les points à implanter")
          ->type_name("NOM");
  CLI::Option* code = sub.add_option("--code", options.job.code,
                                     "Code des points de la table courante à implanter, de 1 à 9999")
                          ->type_name("CODE")
                          ->check(between(1, 9999));
  list->excludes(layer)->excludes(code);
  layer->excludes(code);
  sub.add_option("--station", options.station, "Station : nom d'un point de la table courante ou de la liste")
      ->type_name("NOM")
      ->excludes("--auto");
  sub.add_option("--reference", options.reference,
                 "Référence, où l'instrument lit 0 : nom d'un point, ou NORD (gisements)")
      ->type_name("NOM")
      ->excludes("--auto");
}

void declareSteps(CLI::App& sub, demandeImplanter& job) {
  constexpr double kLeast = 1e-4;
  constexpr double kLargest = 1e9;
  const auto size = [&sub](const char* name, double& value, const char* help) {
    return sub.add_option(name, value, help)->type_name("LONGUEUR")->check(between(kLeast, kLargest));
  };
  CLI::Option* step = size("--pas", job.pas, "Pas sur les arcs et les clothoïdes, en unités du dessin (20)");
  size("--fleche", job.fleche, "Flèche la plus grande entre corde et courbe, au lieu d'un pas")
      ->excludes(step);
  size("--droites", job.pasDroites, "Points aussi sur les droites, tous les tant");
  size("--hauteur-texte", job.hauteurTexte, "Hauteur des textes dessinés (1.5)");
  const auto height = [&sub](const char* name, double& value, const char* help) {
    sub.add_option(name, value, help)->type_name("HAUTEUR")->check(between(0.0, 1e30))->excludes("--auto");
  };
  height("--hauteur-station", job.hauteurStation,
         "Hauteur de l'instrument et de la cible au-dessus du terrain, s'il y en a un (1)");
  height("--hauteur-min", job.hauteurMin, "Ce qui peut dépasser la visée sans la masquer (1)");
}

}  // namespace

Run declareImplanter(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("dessin", options->drawing, "Dessin DXF")->type_name("DESSIN")->required();
  declarePlan(sub, options->plan);
  declareWhat(sub, *options);
  declareSteps(sub, options->job);
  sub.add_option("--unite", options->unit, "Unité des angles affichés : grades, degres, radians (grades)")
      ->type_name("UNITE")
      ->check(oneOf(wordsOf(units())));
  sub.add_option("--rapport", options->report,
                 "Rapport à écrire (HTML ; forme Word si le nom finit par .doc)")
      ->type_name("FICHIER");
  sub.add_option("--texte", options->text, "Liste à écrire en texte")->type_name("FICHIER");
  sub.add_option("--csv", options->columns, "Liste à écrire en colonnes, séparées par des points-virgules")
      ->type_name("FICHIER");
  sub.add_flag("--coordonnees", options->job.coordonnees, "Dessine aussi les coordonnées des points")
      ->excludes("--auto");
  sub.add_option("--sortie", options->output, "Dessin à enregistrer, avec les implantations")
      ->type_name("DESSIN");
  addDoubtOption(sub, options->job.malgreDoutes);
  declareFiles(sub)
      .reads(options->drawing, FileKind::kDrawing)
      .reads(options->list)
      .writes(options->report, FileKind::kReport)
      .writes(options->text, FileKind::kText)
      .writes(options->columns, FileKind::kText)
      .writes(options->output, FileKind::kDrawing);
  return [options] {
    if (options->list.empty() && options->layer.empty() && options->job.code == 0) {
      printError("il faut --points, --calque ou --code");
      return kBadCall;
    }
    if (options->plan.asked) return runAutomatic(*options);
    if (options->station.empty() || options->reference.empty()) {
      printError("il faut --station et --reference, ou --auto");
      return kBadCall;
    }
    return run(*options);
  };
}

}  // namespace veltora::app
