#include "app/jobs/terrain.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/format.h"
#include "base/text.h"
#include "jobs/terrain.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;  ///< the source is one or the other
  std::string list;
  std::string name = "Terrain";
  std::string from = "reconnue";
  std::string codes;
  std::string lines;
  std::string limit;
  std::string profile;
  std::string output;
  DemandeTerrain demand;
};

const std::map<std::string, SourceTerrain>& origins() {
  static const std::map<std::string, SourceTerrain> words{{"reconnue", SourceTerrain::kReconnue},
                                                          {"table", SourceTerrain::kTable},
                                                          {"points", SourceTerrain::kEntites},
                                                          {"faces", SourceTerrain::kFaces},
                                                          {"terrain", SourceTerrain::kExistant}};
  return words;
}

/// A drawing by its ending; anything else is a list of coordinates.
bool isDrawing(const std::string& file) {
  const std::string name = base::toLowerAnsi(file);
  return name.ends_with(".dxf") || name.ends_with(".dwg");
}

void tell(const ResultatTerrain& result, const Options& options) {
  print(base::formater("\nTerrain « %s » : %d sommets, %d faces, %d segments de lignes\n",
                       base::toUtf8(result.nom), result.sommets, result.faces, result.lignes));
  print(base::formater("Surface en plan : %.2f ; altitudes de %.3f à %.3f\n", result.surface, result.basse,
                       result.haute));
  if (options.demand.equidistance > 0.0)
    print(base::formater("Courbes : %d, dont maîtresses : %d\n", result.courbes, result.maitresses));
  if (result.profils > 0)
    print(base::formater("Profils : %d, de %d points\n", result.profils, result.placesProfils));
  if (options.demand.faces) print(base::formater("Faces 3D : %d\n", result.facesDessinees));
  print("Dessin : " + writtenDrawing(options.output).string() + "\n");
}

int run(Options& options) {
  DemandeTerrain& demand = options.demand;
  demand.nom = base::fromUtf8(options.name);
  demand.source = origins().at(options.from);
  demand.codes = base::fromUtf8(options.codes);
  demand.calqueLignes = base::fromUtf8(options.lines);
  demand.calqueLimite = base::fromUtf8(options.limit);
  demand.calqueProfil = base::fromUtf8(options.profile);
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  ResultatTerrain result;
  const bool good = faireTerrain(options.list, demand, result);
  if (const auto status = statusBeforeSaving(good, result)) return *status;
  if (!program.save(options.output)) return kFailure;
  tell(result, options);
  return exitStatus(result.remarques);
}

void declareSources(CLI::App& sub, Options& options) {
  sub.add_option_function<std::string>(
         "source",
         [&options](const std::string& file) { (isDrawing(file) ? options.drawing : options.list) = file; },
         "Liste de points (.xyz, .csv...), ou dessin DXF : points de sa table courante, sinon points "
         "dessinés, sinon faces 3D")
      ->type_name("FICHIER")
      ->required();
  sub.add_option("--source", options.from,
                 "Ce dont le terrain est fait, dans un dessin : table, points, faces ; « terrain » prend "
                 "celui qui s'y "
                 "trouve (reconnue)")
      ->type_name("SOURCE")
      ->check(oneOf(wordsOf(origins())));
  sub.add_option("--nom", options.name, "Nom du terrain ; il remplace celui de ce nom (Terrain)")
      ->type_name("NOM");
  sub.add_option("--codes", options.codes, "Codes des points : 100, 200-299 (tous)")->type_name("CODES");
  sub.add_option("--lignes", options.lines,
                 "Calque dont les lignes et polylignes 3D sont des lignes de rupture")
      ->type_name("CALQUE");
  sub.add_option("--limite", options.limit, "Calque dont les polylignes sont des limites extérieures")
      ->type_name("CALQUE");
  sub.add_option("--arete", options.demand.areteMaximale,
                 "Plus longue arête d'une face, en plan, en unités du dessin (sans)")
      ->type_name("LONGUEUR")
      ->check(between(1e-3, 1e9));
}

}  // namespace

Run declareTerrain(CLI::App& sub) {
  const auto options = std::make_shared<Options>();
  DemandeTerrain& demand = options->demand;
  declareSources(sub, *options);
  sub.add_option("--courbes", demand.equidistance, "Dessine les courbes de niveau de cette équidistance")
      ->type_name("EQUIDISTANCE")
      ->check(between(1e-3, 1e6));
  sub.add_option("--maitresses", demand.maitresses, "Toutes les combien de courbes une maîtresse (5)")
      ->type_name("NOMBRE")
      ->check(between(1, 1000));
  sub.add_option("--profil", options->profile, "Calque le long des lignes duquel les profils sont dessinés")
      ->type_name("CALQUE");
  sub.add_option("--exageration", demand.exageration, "Exagération des altitudes des profils (10)")
      ->type_name("NOMBRE")
      ->check(between(1e-3, 1e6));
  sub.add_flag("--faces", demand.faces, "Dessine les faces 3D du terrain");
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN")->required();
  addDoubtOption(sub, demand.malgreDoutes);
  declareFiles(sub)
      .reads(options->drawing, FileKind::kDrawing)
      .reads(options->list)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
