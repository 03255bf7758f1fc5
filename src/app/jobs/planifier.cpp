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

namespace veltora::app {
namespace {

const std::map<std::string, int>& references() {
  using Plan = planImplantationAuto;
  static const std::map<std::string, int> modes{{"proche", Plan::kProche},
                                                {"proche-de-tous", Plan::kProcheDeTous},
                                                {"lointaine", Plan::kLointaine},
                                                {"lointaine-de-tous", Plan::kLointaineDeTous}};
  return modes;
}

void tellFiles(const demandePlanifier& demand, const resultatPlanifier& result) {
  const std::string columns = demand.csv.string();
  if (!demand.rapport.empty()) print("\nRapport  : " + demand.rapport.string() + "\n");
  if (!demand.texte.empty()) print("Texte    : " + demand.texte.string() + "\n");
  if (!columns.empty() && !result.retenu) print("Colonnes : " + columns + "\n");
  if (!columns.empty() && result.retenu) printError("« " + columns + " » n'est pas écrit");
}

}  // namespace

CLI::Option* declarePlan(CLI::App& sub, PlanOptions& options) {
  constexpr double kLargest = 1e9;
  demandePlanifier& demand = options.demand;
  CLI::Option* plan = sub.add_flag("--auto", options.asked,
                                   "Implante chaque point depuis la plus proche des stations d'un code");
  const auto length = [&sub, plan](const char* name, double& value, const char* help) {
    sub.add_option(name, value, help)->type_name("LONGUEUR")->check(between(0.0, kLargest))->needs(plan);
  };
  sub.add_option("--code-stations", demand.codeStations,
                 "Code des points de la table courante qui sont des stations, de 1 à 9999 (100)")
      ->type_name("CODE")
      ->check(between(1, 9999))
      ->needs(plan);
  sub.add_option("--references", options.references,
                 "Référence des stations : proche, lointaine, proche-de-tous, lointaine-de-tous (proche)")
      ->type_name("CHOIX")
      ->check(oneOf(wordsOf(references())))
      ->needs(plan);
  length("--reference-min", demand.referenceMin, "Distance voulue de la référence, au moins (1)");
  length("--reference-max", demand.referenceMax, "Distance voulue de la référence, au plus (1000)");
  length("--portee-min", demand.porteeMin, "Distance voulue des points à leur station, au moins (0)");
  length("--portee", demand.porteeMax, "Distance voulue des points à leur station, au plus");
  sub.add_flag("--moins-de-stations", demand.moinsDeStations,
               "Prend peu de stations plutôt que les plus proches, dans la portée voulue")
      ->needs(plan);
  sub.add_option("--tables", options.tables, "Coin supérieur gauche des listes, dessinées en tables")
      ->type_name("X,Y")
      ->check(planPoint())
      ->needs(plan);
  return plan;
}

int runPlan(PlanOptions& options, const std::string& drawing, const std::string& output) {
  demandePlanifier& demand = options.demand;
  demand.modeReference = references().at(options.references);
  if (const auto corner = readPlanPoint(options.tables)) demand.tables = {corner->first, corner->second};
  demand.dessiner = !output.empty();
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(drawing)) return kFailure;
  resultatPlanifier result;
  const bool good = planifierImplantation(demand, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  const bool save = demand.dessiner && !result.retenu;
  if (save && !program.save(output)) return kFailure;
  print("\n" + base::toUtf8(result.listing) +
        base::formater("\nPoints   : %d\nStations : %d\n", result.points, result.stations));
  tellFiles(demand, result);
  if (save) print("Dessin   : " + writtenDrawing(output).string() + "\n");
  if (demand.dessiner && result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

}  // namespace veltora::app
