#include "jobs/lever.h"

#include "app/jobs/lever.h"
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
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string book;
  std::string known;
  std::string rules;
  std::vector<std::string> stations;
  std::optional<double> refraction;
  double factor = 1.0;
  std::string projection;
  std::optional<double> target;
  std::optional<double> instrument;
  std::string points;
  std::string network;
  std::string traverse;
  std::string report;
  std::string drawing;
  std::string output;
  bool despiteDoubts = false;
};

std::string optional(const std::optional<double>& value, const char* format, int width, double factor = 1.0) {
  return value ? base::formater(format, *value * factor)
               : padded(L"", static_cast<std::size_t>(width - 1)) + "-";
}

void showReferences(const stationDuLeve& station) {
  const auto& references = station.place.references;
  const std::size_t width = nameWidth(references, [](const referenceLeve& r) { return r.mesure.nom; });
  print("  " + padded(L"Référence", std::max<std::size_t>(width, 11)) +
        base::formater("%12s%10s%10s%10s%10s\n", "distance", "dH mgr", "lat. mm", "dD mm", "dZ mm"));
  for (const referenceLeve& r : references)
    print("  " + padded(r.mesure.nom, std::max<std::size_t>(width, 11)) +
          base::formater("%12.3f", r.distance) + optional(r.ecartH, "%10.2f", 10, 1000.0) +
          optional(r.lateral, "%10.1f", 10, 1000.0) + optional(r.ecartD, "%10.1f", 10, 1000.0) +
          optional(r.ecartZ, "%10.1f", 10, 1000.0) + (r.fausse ? "  à vérifier\n" : "\n"));
}

void showStation(const stationDuLeve& station) {
  print(base::formater("Station %s (%s, ligne %d)", base::toUtf8(station.nom),
                       base::toUtf8(nomOrigine(station.origine)), station.ligne));
  if (!station.refus.empty()) {
    print(" : pas calculée\n\n");
    return;
  }
  const stationLeve& place = station.place;
  print(base::formater("\n  X %.4f  Y %.4f  Z %s  V0 %.5f gr", place.x, place.y,
                       place.z ? base::formater("%.4f", *place.z) : "-", place.g0));
  if (place.emq) print(base::formater("  emq %.2f mgr", *place.emq * 1000.0));
  if (place.sx && place.sy)
    print(base::formater("  sX %.1f mm  sY %.1f mm", *place.sx * 1000.0, *place.sy * 1000.0));
  print("\n");
  if (const facesStation& faces = station.mesures.faces; faces.paires > 0)
    print(base::formater("  Deux cercles sur %d points : collimation %.2f mgr, index %.2f mgr\n",
                         faces.paires, faces.collimation * 1000.0, faces.index * 1000.0));
  showReferences(station);
  print("\n");
}

void showPoints(const std::vector<pointDuLeve>& points) {
  const std::size_t width = nameWidth(points, [](const pointDuLeve& p) { return p.nom; });
  print(padded(L"Point", width) +
        base::formater("%15s%15s%12s%8s%10s%8s\n", "X", "Y", "Z", "visé de", "écart mm", "code"));
  for (const pointDuLeve& p : points) {
    const int stations = static_cast<int>(p.stations.size());
    print(padded(p.nom, width) + base::formater("%15.4f%15.4f", p.x, p.y) + optional(p.z, "%12.4f", 12) +
          base::formater("%8d", stations) +
          (p.ecart > 0.0 ? base::formater("%10.1f", p.ecart * 1000.0) : std::string("         -")) +
          (p.code.empty() ? std::string("       -\n") : base::formater("%8s\n", base::toUtf8(p.code))));
  }
}

void showFiles(const Options& options, const resultatLever& result) {
  for (const polygonaleDuLeve& traverse : result.polygonales) {
    std::string names;
    for (const std::wstring& name : traverse.stations)
      names += (names.empty() ? "" : " - ") + base::toUtf8(name);
    print("Polygonale    : " + names + "\n");
  }
  for (const std::filesystem::path& file : result.ecrites) print("  écrite      : " + file.string() + "\n");
  if (!options.report.empty()) print("Rapport       : " + options.report + "\n");
  if (!options.network.empty()) print("Réseau        : " + options.network + "\n");
  if (!options.points.empty() && !result.retenu) print("Liste         : " + options.points + "\n");
}

/// The request of a call. @throws BadCall for a station that is no "LIGNE=NOM"
demandeLever jobOf(const Options& options) {
  demandeLever job;
  job.carnet = options.book;
  job.canevas = options.known;
  job.regles = options.rules;
  for (const std::string& text : options.stations)
    job.stations.push_back(*lireStationNommee(base::fromUtf8(text)));
  job.options = {options.refraction, options.factor, options.target, options.instrument};
  job.projection = options.projection;
  job.points = options.points;
  job.reseau = options.network;
  job.polygonale = options.traverse;
  job.rapport = options.report;
  job.placer = !options.output.empty();
  job.malgreDoutes = options.despiteDoubts;
  return job;
}

int run(const Options& options) {
  LinesSource none("", {});
  Program program(none);
  const demandeLever job = jobOf(options);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  resultatLever result;
  const bool good = lever(job, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  print(base::formater("Visées        : %d, points connus : %d\n", static_cast<int>(result.visees),
                       result.connus) +
        "Corrections   : " + base::toUtf8(result.corrections) + "\n\n");
  for (const stationDuLeve& station : result.calcul.stations) showStation(station);
  showPoints(result.calcul.points);
  print("\n");
  const bool save = job.placer && !result.retenu;
  if (save && options.drawing.empty()) acedZoomExtents();
  if (save && !program.save(options.output)) return kFailure;
  showFiles(options, result);
  if (save)
    print("Dessin        : " + writtenDrawing(options.output).string() + ", " +
          counted(result.places, "point") + (result.places > 1 ? " placés\n" : " placé\n"));
  if (!options.points.empty() && result.retenu) printError("« " + options.points + " » n'est pas écrit");
  if ((job.placer || !options.points.empty()) && result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

CLI::Validator stationOfLine() {
  return CLI::Validator(
      [](std::string& text) {
        return lireStationNommee(base::fromUtf8(text))
                   ? std::string()
                   : "« " + text + " » : une station se donne par LIGNE=NOM ou LIGNE=NOM,HAUTEUR";
      },
      "");
}

void declareValues(CLI::App& sub, Options& options) {
  sub.add_option("--station", options.stations,
                 "Nomme la station des visées à partir d'une ligne du carnet, et la hauteur de l'appareil ; "
                 "répétable")
      ->type_name("LIGNE=NOM[,H]")
      ->check(stationOfLine())
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  sub.add_option("--refraction", options.refraction,
                 "Corrige les altitudes de courbure et réfraction, coefficient k (0.13)")
      ->type_name("K")
      ->check(between(-1.0, 1.0));
  sub.add_option("--facteur", options.factor,
                 "Multiplie les distances horizontales (échelle de la projection)")
      ->type_name("F")
      ->check(between(0.9, 1.1));
  sub.add_option("--projection", options.projection,
                 "Multiplie les distances par l'échelle de la projection au milieu du canevas et les réduit "
                 "de son altitude")
      ->type_name("L93|CC42...CC50|EPSG:N");
  sub.add_option("--mire", options.target, "Hauteur de mire où le carnet n'en dit aucune, mètres")
      ->type_name("H")
      ->check(between(-10.0, 100.0));
  sub.add_option("--appareil", options.instrument, "Hauteur d'appareil où le carnet n'en dit aucune, mètres")
      ->type_name("H")
      ->check(between(-10.0, 100.0));
}

}  // namespace

Run declareLever(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  const auto file = [&sub](const char* name, std::string& value, const char* type, const char* help) {
    return sub.add_option(name, value, help)->type_name(type);
  };
  file("carnet", options->book, "CARNET", "Carnet GSI, mots de 8 ou de 16 caractères")->required();
  file("--canevas", options->known, "LISTE", "Points connus : .xyz, ou toute liste que lit « importer »")
      ->required();
  file("--regles", options->rules, "F", "Règles des blocs de code qui ouvrent une station");
  declareValues(sub, *options);
  file("--points", options->points, "F.xyz", "Liste à écrire des points calculés, avec code et observation");
  file("--mc", options->network, "F.mc", "Réseau à écrire, pour « reseau »");
  file("--obs", options->traverse, "F.obs", "Polygonale à écrire, quand le carnet en contient une");
  file("--rapport", options->report, "FICHIER",
       "Rapport à écrire (HTML ; forme Word si le nom finit par .doc)");
  CLI::Option* output =
      file("--sortie", options->output, "DESSIN", "Dessin à enregistrer avec les points calculés");
  file("--dessin", options->drawing, "DESSIN", "Dessin où placer (nouveau dessin sans cette option)")
      ->needs(output);
  addDoubtOption(sub, options->despiteDoubts);
  declareFiles(sub)
      .reads(options->book)
      .reads(options->known)
      .reads(options->rules)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->points, FileKind::kText)
      .writes(options->network, FileKind::kNetwork)
      .writes(options->traverse, FileKind::kTraverse)
      .writes(options->report, FileKind::kReport)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
