#include "app/jobs/clothoide.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "jobs/tracer_clothoide.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string p1;
  std::string p2;
  std::string pi;
  std::string csv;
  std::string output;
  demandeTracerClothoide demand;
};

AcGePoint2d pointOf(const std::string& text) {
  const auto [x, y] = readPlanPoint(text).value_or(std::pair(0.0, 0.0));
  return {x, y};
}

bool writeList(const std::string& file, const std::string& content) {
  std::string reason;
  if (file.empty() || base::remplacerFichier(file, content, &reason)) return true;
  printError(reason);
  return false;
}

int run(Options& options) {
  demandeTracerClothoide& demand = options.demand;
  donneesClothoide& data = demand.donnees;
  data.p1 = pointOf(options.p1);
  data.p2 = pointOf(options.p2);
  data.pi = pointOf(options.pi);
  demand.dessiner = !options.output.empty();
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  resultatTracerClothoide result;
  const bool good = tracerClothoide(demand, result);
  if (good) print("\n" + base::toUtf8(result.texte));
  if (const auto status = statusBeforeSaving(good, result)) {
    const bool written = !good || writeList(options.csv, result.csv);
    return written ? *status : kFailure;
  }
  if (demand.dessiner && !program.save(options.output)) return kFailure;
  if (!writeList(options.csv, result.csv)) return kFailure;
  print(base::formater("\nPoints : %d\n", result.points));
  if (demand.dessiner)
    print(base::formater("Sommets dessinés : %d\nDessin : %s\n", result.sommets,
                         writtenDrawing(options.output).string()));
  return exitStatus(result.remarques);
}

constexpr double kLeast = 1e-6;
constexpr double kLargest = 1e9;

void declareData(CLI::App& sub, Options& options) {
  donneesClothoide& data = options.demand.donnees;
  const auto radius = [&sub](const char* name, double& value, const char* help) {
    sub.add_option(name, value, help)->type_name("RAYON")->check(between(0.0, kLargest));
  };
  const auto point = [&sub](const char* name, std::string& value, const char* help) {
    sub.add_option(name, value, help)->type_name("X,Y")->required()->check(planPoint());
  };
  radius("--r1", data.r1, "Rayon en P1, 0 pour une droite (0)");
  radius("--r2", data.r2, "Rayon en P2, 0 pour une droite (0)");
  point("--p1", options.p1, "Première extrémité");
  point("--p2", options.p2, "Seconde extrémité");
  point("--pi", options.pi, "Intersection des tangentes aux extrémités");
}

}  // namespace

Run declareClothoide(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  demandeTracerClothoide& demand = options->demand;
  sub.add_option("dessin", options->drawing, "Dessin DXF où elle est tracée (un nouveau)")
      ->type_name("DESSIN");
  declareData(sub, *options);
  CLI::Option* step = sub.add_option("--pas", demand.pas, "Pas des points le long de la courbe (20)")
                          ->type_name("LONGUEUR")
                          ->check(between(kLeast, kLargest));
  sub.add_option("--fleche", demand.fleche, "Au lieu d'un pas, l'écart permis entre la courbe et ses cordes")
      ->type_name("LONGUEUR")
      ->check(between(kLeast, kLargest))
      ->excludes(step);
  sub.add_option(
         "--infos", demand.infos.infosAlignements,
         "Marques dessinées, leur somme : 1 au début, 2 à la fin, 4 tangentes, 8 au plus près de PI (7)")
      ->type_name("NOMBRE")
      ->check(between(0, 15));
  sub.add_option("--taille-infos", demand.infos.tailleInfos, "Hauteur des textes des marques (1.5)")
      ->type_name("LONGUEUR")
      ->check(between(kLeast, kLargest));
  sub.add_option("--couleur", demand.couleur, "Couleur, de 1 à 255, ou 256 pour celle du calque (256)")
      ->type_name("NOMBRE")
      ->check(between(1, 256));
  sub.add_flag("--matrice", demand.matrice, "Affiche comment le repère de la courbe est placé");
  sub.add_option("--csv", options->csv, "Fichier où les points sont écrits")->type_name("FICHIER");
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN");
  addDoubtOption(sub, demand.malgreDoutes);
  declareFiles(sub)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->csv, FileKind::kText)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
