#include "app/jobs/rendre.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/format.h"
#include "base/text.h"
#include "jobs/dresser_planche.h"
#include "jobs/rendre.h"

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <optional>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string file;
  std::string format;
  std::string window;
  std::string sheet;
  std::vector<std::string> layers;
  std::string background = "blanc";
  demandeRendu demand;
};

/// "X1,Y1,X2,Y2". Nothing for any other text.
std::optional<std::array<double, 4>> readWindow(const std::string& text) {
  const std::size_t comma = text.find(',', text.find(',') + 1);
  if (comma == std::string::npos) return std::nullopt;
  const auto first = readPlanPoint(text.substr(0, comma));
  const auto second = readPlanPoint(text.substr(comma + 1));
  if (!first || !second) return std::nullopt;
  return std::array{first->first, first->second, second->first, second->second};
}

CLI::Validator planWindow() {
  const auto check = [](const std::string& text) {
    return readWindow(text)
               ? std::string()
               : base::formater("« %s » n'est pas une fenêtre : X1,Y1,X2,Y2 avec des points décimaux", text);
  };
  return {check, ""};
}

int run(Options& options) {
  demandeRendu& demand = options.demand;
  demand.fichier = base::fromUtf8(options.file);
  demand.format = base::fromUtf8(options.format);
  demand.planche = base::fromUtf8(options.sheet);
  demand.fondNoir = options.background == "noir";
  for (const std::string& layer : options.layers) demand.calques.push_back(base::fromUtf8(layer));
  if (const auto corners = readWindow(options.window)) demand.fenetre = *corners;
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  resultatRendu result;
  const bool good = rendreDessin(demand, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  const std::string paper = result.format.empty() ? "Papier" : base::toUtf8(result.format);
  print(base::formater("\n%s, %.15g x %.15g mm", paper, result.largeur, result.hauteur));
  if (result.echelle > 0.0) print(base::formater(", au 1/%.15g", result.echelle));
  print("\nPlan : " + options.file + "\n");
  return exitStatus(result.remarques);
}

}  // namespace

Run declareRendre(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  demandeRendu& demand = options->demand;
  sub.add_option("dessin", options->drawing, "Dessin DXF, en mètres")->type_name("DESSIN")->required();
  sub.add_option("plan", options->file, "Plan à écrire : .pdf, .svg ou .png")->type_name("PLAN")->required();
  sub.add_option(
         "--echelle", demand.echelle,
         "Dénominateur de l'échelle : 500 pour 1/500 ; sans elle, la première échelle ronde qui entre")
      ->type_name("NOMBRE")
      ->check(between(1e-3, 1e12));
  sub.add_option(
         "--format", options->format,
         "Papier : A4-portrait, A4-paysage... user-5 ; sans lui, A4, ou le premier où entre l'échelle")
      ->type_name("FORMAT")
      ->check(CLI::Validator([](std::string& text) { return oneOf(motsFormats())(text); }, ""));
  sub.add_option("--fenetre", options->window, "Deux coins opposés de ce qui est tracé, et rien d'autre")
      ->type_name("X1,Y1,X2,Y2")
      ->check(planWindow());
  sub.add_option("--planche", options->sheet,
                 "Numéro d'une planche de CREERPLANCHE, ou nom d'une présentation : son papier à son échelle")
      ->type_name("N")
      ->excludes("--echelle")
      ->excludes("--format")
      ->excludes("--fenetre");
  sub.add_option("--calques,--calque", options->layers, "Ne trace que ces calques")
      ->type_name("A,B")
      ->delimiter(',')
      ->expected(1)
      ->take_all();
  sub.add_option("--fond", options->background, "blanc ou noir (blanc)")
      ->type_name("FOND")
      ->check(oneOf({"blanc", "noir"}));
  sub.add_flag("--monochrome", demand.monochrome, "Trace tout de la même encre");
  sub.add_option("--ppp", demand.ppp, "Points par pouce d'une image PNG (150)")
      ->type_name("NOMBRE")
      ->check(between(10, 2400));
  declareFiles(sub).reads(options->drawing, FileKind::kDrawing).writes(options->file, FileKind::kPlan);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
