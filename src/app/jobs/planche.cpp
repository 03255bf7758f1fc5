#include "app/jobs/planche.h"

#include "app/session/call_files.h"
#include "app/session/choices.h"
#include "app/session/doubts.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "base/format.h"
#include "base/text.h"
#include "jobs/dresser_planche.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

namespace veltora::app {
namespace {

struct Options {
  std::string drawing;
  std::string format;
  std::string titleBlock;
  std::string corner = "bas-gauche";
  std::string point;
  std::vector<std::string> texts;
  std::string output;
  bool centred = false;  ///< said, not only meant
  demandeDressage demand;
};

const std::map<std::string, int>& corners() {
  static const std::map<std::string, int> names{
      {"bas-gauche", 0}, {"bas-droite", 1}, {"haut-gauche", 2}, {"haut-droite", 3}};
  return names;
}

CLI::Validator anAttribute() {
  const auto check = [](const std::string& text) {
    const std::size_t sign = text.find('=');
    return sign != std::string::npos && sign > 0
               ? std::string()
               : base::formater("« %s » n'est pas un attribut : ETIQUETTE=TEXTE", text);
  };
  return {check, ""};
}

int run(Options& options) {
  demandeDressage& demand = options.demand;
  demand.format = base::fromUtf8(options.format);
  demand.cartouche = base::fromUtf8(options.titleBlock);
  demand.emplacement = corners().at(options.corner);
  for (const std::string& text : options.texts) {
    const std::size_t sign = text.find('=');
    demand.attributs.emplace_back(base::fromUtf8(text.substr(0, sign)),
                                  base::fromUtf8(text.substr(sign + 1)));
  }
  if (!options.point.empty()) demand.point = readPlanPoint(options.point);
  LinesSource none("", {});
  Program program(none);
  if (!program.load() || !program.open(options.drawing)) return kFailure;
  resultatDressage result;
  if (const auto status = statusBeforeSaving(dresserPlanche(demand, result), result)) return *status;
  if (!program.save(options.output)) return kFailure;
  print(base::formater("\nPlanche %s au 1/%.15g, coin bas gauche %.3f, %.3f\n", options.format,
                       demand.echelle, result.x, result.y));
  if (demand.carroyage != 0) print(base::formater("Carroyage : %d croix\n", result.croix));
  print("Dessin : " + writtenDrawing(options.output).string() + "\n");
  return exitStatus(result.remarques);
}

void declareTitleBlock(CLI::App& sub, Options& options) {
  CLI::Option* file =
      sub.add_option("--cartouche", options.titleBlock,
                     "Dessin du cartouche, en mm ; un fichier, ou un nom du dossier Cartouches : "
                     "A4-portrait-bandeau, A3-paysage")
          ->type_name("DESSIN");
  sub.add_option("--emplacement", options.corner,
                 "Coin du cadre où est le cartouche : bas-gauche, bas-droite, haut-gauche, haut-droite")
      ->type_name("COIN")
      ->check(oneOf(wordsOf(corners())));
  sub.add_option("--attribut", options.texts, "Texte d'un attribut du cartouche, plusieurs fois s'il le faut")
      ->type_name("ETIQUETTE=TEXTE")
      ->check(anAttribute())
      ->expected(1)
      ->take_all()
      ->needs(file);
}

void declareGrid(CLI::App& sub, demandeDressage& demand) {
  constexpr double kLeast = 0.1;
  constexpr double kLargest = 1e9;
  sub.add_option("--carroyage", demand.carroyage,
                 "0 aucun, 1 dans tout l'espace libre, 2 sauf à côté du cartouche (0)")
      ->type_name("MODE")
      ->check(between(0, 2));
  sub.add_option("--pas", demand.pas, "Pas du carroyage, en unités du dessin (100)")
      ->type_name("LONGUEUR")
      ->check(between(kLeast, kLargest));
  sub.add_option("--croix", demand.croix, "Taille des croix, en mm (5)")
      ->type_name("MM")
      ->check(between(kLeast, kLargest));
  sub.add_option("--texte", demand.texte, "Hauteur des coordonnées, en mm (2.5)")
      ->type_name("MM")
      ->check(between(kLeast, kLargest));
  sub.add_option("--decimales", demand.decimales, "Décimales des coordonnées, de 0 à 4 (1)")
      ->type_name("NOMBRE")
      ->check(between(0, 4));
}

}  // namespace

Run declarePlanche(CLI::App& sub) {
  constexpr double kLargestScale = 1e9;
  constexpr double kTurn = 400.0;
  const auto options = std::make_shared<Options>();
  demandeDressage& demand = options->demand;
  sub.add_option("dessin", options->drawing, "Dessin DXF, en mètres")->type_name("DESSIN")->required();
  sub.add_option("--format", options->format,
                 "Papier : A4-portrait, A4-paysage... A0-paysage, A0-portrait, user-0 à user-5")
      ->type_name("FORMAT")
      ->required()
      ->check(CLI::Validator([](std::string& text) { return oneOf(motsFormats())(text); }, ""));
  sub.add_option("--echelle", demand.echelle, "Dénominateur de l'échelle : 500 pour 1/500 (1000)")
      ->type_name("NOMBRE")
      ->check(between(1e-3, kLargestScale));
  sub.add_option("--marge", demand.marge, "Marge du cadre, en mm (10)")
      ->type_name("MM")
      ->check(between(0.1, kLargestScale));
  declareTitleBlock(sub, *options);
  declareGrid(sub, demand);
  CLI::Option* point = sub.add_option("--point", options->point, "Coin bas gauche du papier, dans le dessin")
                           ->type_name("X,Y")
                           ->check(planPoint());
  sub.add_flag("--centrer", options->centred,
               "Met le milieu du papier sur celui du plan, ce qui se fait aussi sans --point")
      ->excludes(point);
  sub.add_option("--orientation", demand.orientation,
                 "Direction du bas de la planche, en grades dans le sens inverse des aiguilles depuis X (0)")
      ->type_name("GRADES")
      ->check(between(-kTurn, kTurn));
  sub.add_option("--sortie", options->output, "Dessin à enregistrer")->type_name("DESSIN")->required();
  addDoubtOption(sub, demand.malgreDoutes);
  declareFiles(sub)
      .reads(options->drawing, FileKind::kDrawing)
      .reads(options->titleBlock, FileKind::kDrawing, true)
      .writes(options->output, FileKind::kDrawing);
  return [options] { return run(*options); };
}

}  // namespace veltora::app
