#include "jobs/carnet.h"

#include "app/jobs/carnet.h"
#include "app/session/call_files.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "arx/ed/edgraphics.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string file;
  std::string known;
  std::string sightings;
  std::string detail;
  std::string drawing;
  std::string output;
  bool place = false;
  bool despiteDoubts = false;
};

void showPoints(const std::vector<pointCarnet>& points) {
  if (points.empty()) return;
  const auto coordinate = [](double value) {
    return value == base::Z_ABSENT ? base::formater("%15s", "-") : base::formater(" %14.4f", value);
  };
  const std::size_t width = nameWidth(points, [](const pointCarnet& p) { return p.nom; });
  print("\n" + padded(L"Canevas", width) + base::formater("%15s%15s%15s\n", "X", "Y", "Z"));
  for (const pointCarnet& p : points)
    print(padded(p.nom, width) + coordinate(p.x) + coordinate(p.y) + coordinate(p.z) + "\n");
}

void showCounts(const resultatCarnet& r) {
  print(base::formater("\nLignes        : %d\n", static_cast<int>(r.lignes)));
  if (!r.finsDeLigne.empty()) print("Fins de ligne : " + base::toUtf8(r.finsDeLigne) + "\n");
  print(base::formater("Mots          : %d\nVisées        : %d\nPoints connus : %d\n",
                       static_cast<int>(r.mots), static_cast<int>(r.visees),
                       static_cast<int>(r.canevas.size())));
}

void showFiles(const Options& options) {
  for (const auto& [caption, name] : {std::pair{"Canevas       : ", &options.known},
                                      {"Lectures      : ", &options.sightings},
                                      {"Détail        : ", &options.detail}})
    if (!name->empty()) print(caption + *name + "\n");
}

int run(const Options& options) {
  if (options.place && options.output.empty()) {
    printError("--placer demande le dessin à enregistrer (--sortie)");
    return kBadCall;
  }
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || (options.place && !program.open(options.drawing))) return kFailure;
  const demandeCarnet job{options.file,   options.known, options.sightings,
                          options.detail, options.place, options.despiteDoubts};
  resultatCarnet result;
  const bool good = lireCarnetUnAppel(job, result);
  if (good) showPoints(result.canevas);
  if (result.lignes > 0) showCounts(result);
  // What was left out is told behind what was read, wherever both go.
  if (!outputWritten()) return kFailure;
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  showFiles(options);
  const bool save = options.place && !result.retenu;
  // A new drawing opens elsewhere on its contents.
  if (save && options.drawing.empty()) acedZoomExtents();
  if (save && !program.save(options.output)) return kFailure;
  if (save)
    print("Dessin        : " + writtenDrawing(options.output).string() + ", " +
          counted(result.places, "point") + (result.places > 1 ? " placés\n" : " placé\n"));
  if (options.place && result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

}  // namespace

Run declareCarnet(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  const auto file = [&sub](const char* name, std::string& value, const char* type, const char* help) {
    return sub.add_option(name, value, help)->type_name(type);
  };
  file("fichier", options->file, "CARNET", "Carnet GSI, mots de 8 ou de 16 caractères")->required();
  file("--canevas", options->known, "F.xyz",
       "Liste à écrire des points dont le carnet donne X et Y, code 100");
  file("--lectures", options->sightings, "F.csv", "Tableau à écrire de toutes les visées");
  file("--detail", options->detail, "F.txt", "Texte à écrire : tous les mots en clair, ligne par ligne");
  CLI::Option* place = sub.add_flag("--placer", options->place, "Place le canevas dans un dessin, code 100");
  CLI::Option* output = file("--sortie", options->output, "DESSIN", "Dessin à enregistrer")->needs(place);
  file("--dessin", options->drawing, "DESSIN", "Dessin où placer (nouveau dessin sans cette option)")
      ->needs(output);
  addDoubtOption(sub, options->despiteDoubts)->needs(place);
  declareFiles(sub)
      .reads(options->file)
      .reads(options->drawing, FileKind::kDrawing)
      .writes(options->known, FileKind::kText)
      .writes(options->sightings, FileKind::kText)
      .writes(options->detail, FileKind::kText)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
