#include "app/ligne_de_commande.h"

#include "app/arguments_helmert.h"
#include "app/arguments_points.h"
#include "app/arguments_reseau.h"
#include "app/programme.h"

#include <CLI/CLI.hpp>
#include <iostream>

namespace veltora::app {
namespace {

constexpr const char* kDescription =
    "Veltora : topographie dans le dessin.\n"
    "Sans travail nommé, ouvre ou crée un dessin et lit des commandes au terminal ou dans un script.";

void franciser(CLI::App& app) {
  const auto formatter = app.get_formatter();
  formatter->label("Usage", "Utilisation");
  formatter->label("OPTIONS", "OPTIONS");
  formatter->label("Needs", "avec");
  formatter->label("Excludes", "sans");
  formatter->label("SUBCOMMAND", "TRAVAIL");
  formatter->label("SUBCOMMANDS", "TRAVAIL");
  formatter->label("Positionals", "Arguments");
  formatter->label("REQUIRED", "(obligatoire)");
  formatter->label("TEXT", "TEXTE");
  formatter->label("INT", "ENTIER");
  formatter->label("Options", "Options");
  app.set_help_flag("-h,--help", "Affiche cette aide");
}

std::string enFrancais(const CLI::ParseError& error) {
  const std::string text = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error)) {
    return "argument inattendu : " +
           text.substr(text.find(": ") == std::string::npos ? 0 : text.find(": ") + 2);
  }
  if (dynamic_cast<const CLI::RequiresError*>(&error))
    return "options incomplètes : " + text.substr(text.rfind(' ') + 1) + " manque";
  if (dynamic_cast<const CLI::ExcludesError*>(&error))
    return "options incompatibles : " + text.substr(0, text.find(' ')) + " et " +
           text.substr(text.rfind(' ') + 1);
  const std::string name = text.substr(0, text.find_first_of(": "));
  if (dynamic_cast<const CLI::RequiredError*>(&error)) return "argument obligatoire manquant : " + name;
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error)) return "valeur manquante ou en trop : " + name;
  if (dynamic_cast<const CLI::ConversionError*>(&error) ||
      dynamic_cast<const CLI::ValidationError*>(&error)) {
    return "valeur refusée : " + name;
  }
  return "arguments refusés : " + text;
}

CLI::App* declarerPolygonale(CLI::App& app, Demande& demande) {
  CLI::App* sub = app.add_subcommand(
      "polygonale", "Calcule une polygonale, fermée ou ouverte (fichier .obs), affiche les coordonnées");
  sub->add_option("fichier", demande.fichierObs, "Fichier d'observations .obs")
      ->type_name("FICHIER")
      ->required();
  sub->add_option("--rapport", demande.rapport,
                  "Rapport à écrire (HTML ; forme Word si le nom finit par .doc)")
      ->type_name("FICHIER");
  CLI::Option* dessin = sub->add_option("--dessin", demande.dessin,
                                        "Dessin où placer les stations (nouveau dessin sans cette option)")
                            ->type_name("DESSIN");
  CLI::Option* sortie = sub->add_option("--sortie", demande.sortie, "Dessin à enregistrer avec les stations")
                            ->type_name("DESSIN");
  sub->add_option("--code", demande.code, "Code des stations, 1 à 9999")
      ->type_name("CODE")
      ->capture_default_str();
  CLI::Option* altitudes =
      sub->add_flag("--altitudes", demande.altitudes, "Place les stations avec leur altitude");
  CLI::Option* brute =
      sub->add_flag("--tracer-brute", demande.tracerBrute, "Dessine la polygonale originelle");
  CLI::Option* compensee =
      sub->add_flag("--tracer-compensee", demande.tracerCompensee, "Dessine la polygonale compensée");
  for (CLI::Option* option : {dessin, altitudes, brute, compensee}) option->needs(sortie);
  return sub;
}

}  // namespace

bool lireArguments(int argc, char** argv, Demande& demande, int& statut) {
  CLI::App app(kDescription, "veltora");
  franciser(app);
  app.set_version_flag("--version", std::string("veltora ") + VELTORA_VERSION, "Affiche la version");
  app.add_option("dessin", demande.dessin, "Dessin à ouvrir")->type_name("DESSIN");
  app.add_option("--script", demande.script, "Lit les lignes de ce fichier au lieu du terminal")
      ->type_name("FICHIER");
  app.add_option("--commande", demande.commandes, "Exécute une ligne ; peut être répété")
      ->type_name("LIGNE")
      ->expected(1)
      ->take_all();
  app.add_option("--sortie", demande.sortie, "Enregistre le dessin à la fin")->type_name("DESSIN");
  const CLI::App* polygonale = declarerPolygonale(app, demande);
  const CLI::App* helmert = declarerHelmert(app, demande);
  const CLI::App* reseau = declarerReseau(app, demande);
  const CLI::App* points = declarerPoints(app, demande);
  const CLI::App* importer = declarerImporter(app, demande);
  const CLI::App* exporter = declarerExporter(app, demande);
  const CLI::App* lisp = declarerLisp(app, demande);
  for (CLI::App* sub : app.get_subcommands({})) {
    sub->group("Travaux");
    franciser(*sub);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& done) {
    statut = app.exit(done, std::cout, std::cerr) == 0 ? kSucces : kMauvaisAppel;
    return false;
  } catch (const CLI::ParseError& error) {
    direErreur(enFrancais(error) + "\nEssayez « veltora --help ».");
    statut = kMauvaisAppel;
    return false;
  }
  if (*polygonale) demande.travail = Demande::Travail::kPolygonale;
  if (*helmert) demande.travail = Demande::Travail::kHelmert;
  if (*reseau) demande.travail = Demande::Travail::kReseau;
  if (*points) demande.travail = Demande::Travail::kPoints;
  if (*importer) demande.travail = Demande::Travail::kImporter;
  if (*lisp) demande.travail = Demande::Travail::kLisp;
  if (*exporter) demande.travail = Demande::Travail::kExporter;
  return true;
}

}  // namespace veltora::app
