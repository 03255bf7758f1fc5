#include "jobs/polygonale.h"

#include "app/jobs/polygonale.h"
#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "arx/ed/edgraphics.h"
#include "base/format.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <memory>

namespace veltora::app {
namespace {

// What the tolerances may be: grades, and the N of 1/N.
constexpr double kSmallestAngle = 1e-6;
constexpr double kLargestAngle = 10.0;
constexpr double kSmallestRatio = 10.0;
constexpr double kLargestRatio = 1e6;

struct Options {
  demandePolygonale job;
  std::string file;
  std::string report;
  std::string drawing;
  std::string output;
};

const char* unitName(int modeAngle) {
  constexpr const char* kNames[] = {"grades", "degrés", "radians"};
  return kNames[modeAngle >= 0 && modeAngle <= 2 ? modeAngle : 0];
}

/// Misclosures, each behind its tolerance.
void showMisclosures(const resultatPolygonale& result, const tolerancesPolygonale& tolerances) {
  const fermeturesPolygonale& f = result.fermetures;
  print(result.ouverte ? "Polygonale ouverte\n" : "Polygonale fermée\n");
  const char* unit = unitName(result.modeAngle);
  print(base::formater("Fermeture angulaire : %.5f %s (tolérance %.4f %s)\n", f.E, unit,
                       result.limiteAngulaire, unit));
  print(base::formater("Fermeture en X, Y   : %.4f  %.4f (%.4f en tout, tolérance 1/%.0f : %.4f)\n", f.Ex,
                       f.Ey, std::hypot(f.Ex, f.Ey), tolerances.lineaire, f.D / tolerances.lineaire));
  const std::string height =
      result.limiteAltitude > 0.0 ? base::formater(" (tolérance %.4f)", result.limiteAltitude) : "";
  print(base::formater("Fermeture en Z      : %.4f%s\n", f.H, height));
  print(base::formater("Longueur            : %.4f\n\n", f.D));
}

void showStations(const resultatPolygonale& result) {
  const std::size_t width = nameWidth(result.stations, [](const stationCalculee& s) { return s.nom; });
  print(padded(L"Station", width) + base::formater("%15s%15s%15s\n", "X", "Y", "Z"));
  for (const stationCalculee& s : result.stations)
    print(padded(s.nom, width) + base::formater("%15.4f%15.4f%15.4f\n", s.x, s.y, s.z));
}

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  const bool draw = !options.output.empty();
  if (!program.load() || (draw && !program.open(options.drawing))) return kFailure;
  demandePolygonale job = options.job;
  job.fichier = options.file;
  job.rapport = options.report;
  job.placer = draw;
  resultatPolygonale result;
  const bool good = executerPolygonale(job, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  showMisclosures(result, job.tolerances);
  showStations(result);
  const bool save = draw && !result.retenu;
  // A new drawing opens elsewhere on its contents.
  if (save && options.drawing.empty()) acedZoomExtents();
  if (save && !program.save(options.output)) return kFailure;
  if (!options.report.empty()) print("\nRapport : " + options.report + "\n");
  if (save) print("Dessin  : " + writtenDrawing(options.output).string() + "\n");
  if (draw && result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

}  // namespace

Run declarePolygonale(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("fichier", options->file, "Fichier d'observations .obs")->type_name("FICHIER")->required();
  sub.add_option("--rapport", options->report,
                 "Rapport à écrire (HTML ; forme Word si le nom finit par .doc)")
      ->type_name("FICHIER");
  CLI::Option* drawing = sub.add_option("--dessin", options->drawing,
                                        "Dessin où placer les stations (nouveau dessin sans cette option)")
                             ->type_name("DESSIN");
  CLI::Option* output = sub.add_option("--sortie", options->output, "Dessin à enregistrer avec les stations")
                            ->type_name("DESSIN");
  sub.add_option("--code", options->job.code, "Code des stations, 1 à 9999")
      ->type_name("CODE")
      ->check(between(kSmallestCode, kLargestCode))
      ->capture_default_str();
  CLI::Option* heights =
      sub.add_flag("--altitudes", options->job.altitudes, "Place les stations avec leur altitude");
  CLI::Option* raw =
      sub.add_flag("--tracer-brute", options->job.dessinerBrute, "Dessine la polygonale originelle");
  CLI::Option* adjusted =
      sub.add_flag("--tracer-compensee", options->job.dessinerCompensee, "Dessine la polygonale compensée");
  sub.add_option("--tolerance-angulaire", options->job.tolerances.angulaire,
                 "Fermeture angulaire admise, en grades, multipliée par la racine du nombre d'angles")
      ->type_name("GRADES")
      ->check(between(kSmallestAngle, kLargestAngle))
      ->capture_default_str();
  sub.add_option("--tolerance-lineaire", options->job.tolerances.lineaire,
                 "Fermeture en plan admise : 1/N de la longueur")
      ->type_name("N")
      ->check(between(kSmallestRatio, kLargestRatio))
      ->capture_default_str();
  CLI::Option* doubts = addDoubtOption(sub, options->job.malgreDoutes);
  for (CLI::Option* option : {drawing, heights, raw, adjusted, doubts}) option->needs(output);
  declareFiles(sub)
      .reads(options->file)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->report, FileKind::kReport)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
