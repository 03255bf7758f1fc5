#include "app/jobs/reseau_pondere.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "arx/ed/edgraphics.h"
#include "base/format.h"
#include "base/text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

namespace veltora::app {
namespace {

const std::map<std::string, robustesse> kMethods = {{"danoise", robustesse::danoise},
                                                    {"huber", robustesse::huber}};

void printLines(const char* title, const std::vector<std::wstring>& lines) {
  if (lines.empty()) return;
  print(title);
  for (const std::wstring& line : lines) print(base::toUtf8(line) + "\n");
}

void show(const resultatCompenser& r, bool planned) {
  print("Compensation pondérée\n");
  printLines("", r.bilan);
  printLines("\nPoints : coordonnées en mètres, écarts-types et demi-axes en mm, gisement de a en grades\n",
             r.points);
  printLines(planned ? "\nMesures : redondance et plus petite erreur décelable\n"
                     : "\nMesures, les plus grands |w| d'abord (résidu : compensé moins mesuré)\n",
             r.mesures);
  printLines("\n", r.epoques);
  printLines("\nEllipses relatives demandées : demi-axes en mm, gisement en grades\n", r.paires);
}

void tellFiles(const WeightedOptions& options, const std::string& output, const resultatCompenser& r) {
  if (!options.json.empty()) print("\nJSON    : " + options.json + "\n");
  if (!options.report.empty()) print("\nRapport : " + options.report + "\n");
  if (r.retenu || r.places == 0) return;
  if (!options.plan.empty()) print("\nPlan    : " + options.plan + "\n");
  print(base::formater("\nEllipses dessinées %g fois plus grandes\n", r.echelleEllipses));
  if (!output.empty())
    print("Dessin  : " + writtenDrawing(output).string() + ", " + counted(r.places, "point") + "\n");
}

bool readPairs(WeightedOptions& options) {
  for (const std::string& pair : options.pairs) {
    const std::size_t comma = pair.find(',');
    if (comma == std::string::npos || comma == 0 || comma + 1 == pair.size()) {
      printError("--paire " + pair + " : deux noms de points, \"A,B\"");
      return false;
    }
    options.demand.paires.emplace_back(base::fromUtf8(pair.substr(0, comma)),
                                       base::fromUtf8(pair.substr(comma + 1)));
  }
  return true;
}

}  // namespace

bool WeightedOptions::wanted() const {
  return std::any_of(declared.begin(), declared.end(), [](const CLI::Option* o) { return o->count() > 0; });
}

void addWeightedOptions(CLI::App& sub, WeightedOptions& options) {
  ecartsParGenre& e = options.demand.ecarts;
  const auto group = [&options](CLI::Option* option) {
    options.declared.push_back(option);
    return option->group("Compensation pondérée");
  };
  const auto size = [&](const char* name, double& value, const char* help, double least) {
    group(sub.add_option(name, value, help)->type_name("NOMBRE")->check(between(least, 1e6)));
  };
  group(sub.add_flag(
      "--pondere", options.weighted,
      "Compense avec des poids, précision et recherche des fautes ; les options qui suivent le supposent"));
  size("--angle", e.angle, "Écart-type d'un angle, mgr (1)", 1e-6);
  size("--direction", e.direction, "Écart-type d'une direction, mgr (1)", 1e-6);
  size("--gisement", e.gisement, "Écart-type d'un gisement, mgr (1)", 1e-6);
  size("--distance", e.distance, "Écart-type d'une distance, mm (5)", 0.0);
  size("--ppm", e.ppm, "Part qui croît avec la distance, mm/km (5)", 0.0);
  size("--nivellement", e.nivellement, "Écart-type d'une dénivelée, mm (0)", 0.0);
  size("--nivellement-km", e.racineKm, "Le même par racine de km (2)", 0.0);
  size("--centrage-station", e.centrageStation, "Écart-type du centrage de l'appareil, mm (0)", 0.0);
  size("--centrage-vise", e.centrageVise, "Écart-type du centrage de la cible, mm (0)", 0.0);
  group(sub.add_option("--formules", options.formulas,
                       "Formules de poids .fmc, pour les mesures sans écart-type propre")
            ->type_name("FICHIER"));
  group(sub.add_option("--robuste", options.robust, "Estimation robuste : danoise ou huber")
            ->type_name("METHODE")
            ->check(oneOf(wordsOf(kMethods))));
  group(sub.add_flag("--prevoir", options.demand.prevoir,
                     "Précision prévue d'un réseau sans mesures (« ? » à leur place)"));
  group(sub.add_option("--paire", options.pairs, "Ellipse relative de deux points, A,B ; se répète")
            ->type_name("A,B")
            ->take_all()
            ->expected(1));
  group(sub.add_option("--rapport", options.report, "Rapport HTML à écrire (Word si le nom finit par .doc)")
            ->type_name("FICHIER"));
  group(sub.add_option("--plan", options.plan, "Plan du réseau et de ses ellipses à écrire, PDF, SVG ou PNG")
            ->type_name("FICHIER"));
  group(sub.add_option("--echelle-ellipses", options.demand.echelleEllipses,
                       "Agrandissement des ellipses dessinées (arrondi de lui-même)")
            ->type_name("NOMBRE")
            ->check(between(1.0, 1e9)));
  group(sub.add_option("--epoque", options.epoch, "Le même réseau mesuré plus tard : quels points ont bougé")
            ->type_name("FICHIER"));
  group(sub.add_option("--json", options.json, "Résultats en JSON à écrire")->type_name("FICHIER"));
}

int runWeighted(WeightedOptions& options, const std::string& file, const std::string& drawing,
                const std::string& output, bool despiteDoubts) {
  demandeCompenser& demand = options.demand;
  demand.fichier = file;
  demand.formules = options.formulas;
  demand.json = options.json;
  demand.epoque = options.epoch;
  demand.rapport = options.report;
  demand.plan = options.plan;
  demand.malgreDoutes = despiteDoubts;
  demand.dessiner = !output.empty() || !options.plan.empty();
  if (!options.robust.empty()) demand.methode = kMethods.at(options.robust);
  if (!readPairs(options)) return kBadCall;
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || (demand.dessiner && !program.open(drawing))) return kFailure;
  resultatCompenser result;
  const bool good = executerCompenser(demand, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  show(result, demand.prevoir);
  const bool save = !output.empty() && !result.retenu;
  if (save && drawing.empty()) acedZoomExtents();
  if (save && !program.save(output)) return kFailure;
  tellFiles(options, output, result);
  if (result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

}  // namespace veltora::app
