#include "jobs/reseau.h"

#include "app/jobs/reseau.h"
#include "app/jobs/reseau_pondere.h"
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

std::string coordinate(double value) {
  return value == base::Z_ABSENT ? base::formater("%15s", "-") : base::formater(" %14.4f", value);
}

void showPoints(const std::vector<pointReseau>& points) {
  const std::size_t width = nameWidth(points, [](const pointReseau& p) { return p.nom; });
  print(padded(L"Point", width) + base::formater("%15s%15s%15s\n", "X", "Y", "Z"));
  for (const pointReseau& p : points)
    print(padded(p.nom, width) + coordinate(p.x) + coordinate(p.y) + coordinate(p.z) + "\n");
}

void showNames(const char* caption, const std::vector<std::wstring>& names) {
  if (!names.empty()) print(caption + base::toUtf8(base::enumerer(names)) + "\n");
}

void showResiduals(const std::vector<std::wstring>& table) {
  if (table.empty()) return;
  print(
      "\nPlus grands résidus (calculé moins mesuré), et leurs numéros au journal et dans la table des "
      "poids\n");
  for (const std::wstring& line : table) print(base::toUtf8(line) + "\n");
}

void show(const resultatReseau& r) {
  print("Points       : " + counted(static_cast<int>(r.connus.size()), "connu") + ", " +
        base::formater("%d à calculer\n", static_cast<int>(r.aCalculer.size())));
  showNames("  connus     : ", r.connus);
  showNames("  à calculer : ", r.aCalculer);
  print("Observations : " + counted(r.angles, "angle") + ", " + counted(r.distances, "distance") + ", " +
        counted(r.denivelees, "dénivelée") + "\n");
  if (!r.unites.empty()) print("Angles       : lus en " + base::toUtf8(r.unites) + "\n");
  print(base::formater("Passes       : %d%s\n\n", r.passes, r.convergence ? "" : ", sans convergence"));
  showPoints(r.calcules);
  showResiduals(r.residus);
  if (r.angles + r.distances == 0) {
    print("\nCompensation sans pondération : toutes les dénivelées comptent autant.\n");
    return;
  }
  print(
      "\nCompensation sans pondération : un écart d'un radian (63.66 grades) compte autant qu'un mètre ;\n"
      "les poids, donnés ou par formule, ne changent pas les coordonnées.\n");
}

struct Options {
  std::string file;
  std::string log;
  std::string drawing;
  std::string output;
  bool despiteDoubts = false;
  WeightedOptions weighted;
};

/// Options that do not go together, beyond those of which each needs one other.
bool checkOptions(const Options& options) {
  const bool weighted = options.weighted.wanted();
  if (options.despiteDoubts && options.output.empty() && options.weighted.plan.empty())
    printError(
        "options incomplètes : --malgre-doutes ne sert qu'avec --sortie ou --plan, et --sortie manque");
  else if (weighted && !options.log.empty())
    printError(
        "--journal n'est écrit que sans poids ; --rapport et --json écrivent la compensation pondérée");
  else
    return true;
  return false;
}

int run(Options& options) {
  if (!checkOptions(options)) return kBadCall;
  if (options.weighted.wanted())
    return runWeighted(options.weighted, options.file, options.drawing, options.output,
                       options.despiteDoubts);
  LinesSource none("", {});
  Program program(none);
  demandeReseau job;
  job.fichier = options.file;
  job.journal = options.log;
  job.placer = !options.output.empty();
  job.malgreDoutes = options.despiteDoubts;
  if (!program.load() || (job.placer && !program.open(options.drawing))) return kFailure;
  resultatReseau result;
  const bool good = executerReseau(job, result);
  printRemarks(result.remarques);
  if (!good) {
    printError(result.erreur);
    return kFailure;
  }
  show(result);
  const bool save = job.placer && !result.retenu;
  // A new drawing opens elsewhere on its contents.
  if (save && options.drawing.empty()) acedZoomExtents();
  if (save && !program.save(options.output)) return kFailure;
  if (!options.log.empty()) print("\nJournal : " + options.log + "\n");
  if (save) {
    print("Dessin  : " + writtenDrawing(options.output).string() + ", " + counted(result.places, "point") +
          (result.places > 1 ? " placés\n" : " placé\n"));
  }
  if (job.placer && result.retenu) printWithheld();
  return exitStatus(result.remarques);
}

}  // namespace

Run declareReseau(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  sub.add_option("fichier", options->file,
                 "Réseau .mc : points connus, puis angles (grades sans autre mot), distances, dénivelées")
      ->type_name("FICHIER")
      ->required();
  sub.add_option("--journal", options->log, "Journal complet du calcul à écrire (texte)")
      ->type_name("FICHIER");
  CLI::Option* drawing = sub.add_option("--dessin", options->drawing,
                                        "Dessin où placer les points (nouveau dessin sans cette option)")
                             ->type_name("DESSIN");
  CLI::Option* output =
      sub.add_option("--sortie", options->output, "Dessin à enregistrer avec tous les points, code 100")
          ->type_name("DESSIN");
  drawing->needs(output);
  addDoubtOption(sub, options->despiteDoubts);
  addWeightedOptions(sub, options->weighted);
  declareFiles(sub)
      .reads(options->file)
      .reads(options->drawing, FileKind::kDrawing)
      .reads(options->weighted.formulas)
      .reads(options->weighted.epoch)
      .writes(options->log, FileKind::kText)
      .writes(options->weighted.json, FileKind::kOther)
      .writes(options->weighted.report, FileKind::kReport)
      .writes(options->weighted.plan, FileKind::kPlan)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
