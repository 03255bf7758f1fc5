#include "app/arguments_points.h"

#include "base/text.h"
#include "points/import_dessin.h"

namespace veltora::app {
namespace {

std::vector<std::string> nomsDesSources() {
  std::vector<std::string> noms;
  for (const sourceImport& source : sourcesImport) noms.push_back(base::toUtf8(source.nom));
  return noms;
}

}  // namespace

CLI::App* declarerPoints(CLI::App& app, Demande& demande) {
  CLI::App* sub = app.add_subcommand("points", "Affiche les tables de points enregistrées dans un dessin");
  sub->add_option("dessin", demande.dessin, "Dessin DXF")->type_name("DESSIN")->required();
  sub->add_flag("--csv", demande.csv, "Sépare les colonnes par des points-virgules");
  return sub;
}

CLI::App* declarerImporter(CLI::App& app, Demande& demande) {
  CLI::App* sub = app.add_subcommand(
      "importer", "Place dans un dessin les points d'une liste (.xyz), ou reprend ceux de ses entités");
  sub->add_option("dessin", demande.dessin, "Dessin DXF ; un nouveau dessin sans ce nom")
      ->type_name("DESSIN");
  sub->add_option(
         "--points", demande.listePoints,
         "Liste .xyz : une ligne par point, numéro X Y Z code observation ; sans liste, les entités du "
         "dessin donnent les points")
      ->type_name("LISTE");
  sub->add_option("--table", demande.table, "Table qui reçoit les points, créée s'il le faut (la courante)")
      ->type_name("NOM");
  sub->add_option("--sortie", demande.sortie, "Dessin à enregistrer")->type_name("DESSIN");
  CLI::Option* sources =
      sub->add_option(
             "--sources", demande.sources,
             "Entités reprises, séparées par des virgules : polylignes3d, polylignes2d, points, "
             "maillages, polyfaces, facettes, lignes, polylignes, blocs, attributs, insertions, textes "
             "(toutes)")
          ->type_name("SOURCES")
          ->delimiter(',')
          ->check(CLI::IsMember(nomsDesSources()).description(""));
  CLI::Option* etiquettes =
      sub->add_option("--attributs", demande.etiquettes,
                      "Attributs des blocs repris par « attributs » : numéro,altitude[,code] (NUMPT,Z)")
          ->type_name("ETIQUETTES")
          ->delimiter(',')
          ->expected(1)
          ->take_all();
  for (CLI::Option* option : {sources, etiquettes}) option->excludes("--points");
  return sub;
}

CLI::App* declarerLisp(CLI::App& app, Demande& demande) {
  CLI::App* sub = app.add_subcommand("lisp", "Exécute un fichier LISP dans un dessin");
  sub->add_option("fichier", demande.fichierLisp, "Fichier LISP")->type_name("FICHIER")->required();
  sub->add_option("dessin", demande.dessin, "Dessin DXF ; un nouveau dessin sans ce nom")
      ->type_name("DESSIN");
  sub->add_option(
         "--commande", demande.commandes,
         "Ligne exécutée une fois le fichier chargé, ou réponse à ce qu'il demande ; peut être répété")
      ->type_name("LIGNE")
      ->expected(1)
      ->take_all();
  sub->add_option("--sortie", demande.sortie, "Dessin à enregistrer")->type_name("DESSIN");
  return sub;
}

CLI::App* declarerExporter(CLI::App& app, Demande& demande) {
  CLI::App* sub =
      app.add_subcommand("exporter", "Écrit les points d'un dessin dans un fichier de coordonnées");
  sub->add_option("dessin", demande.dessin, "Dessin DXF")->type_name("DESSIN")->required();
  sub->add_option("fichier", demande.fichierPoints,
                  "Fichier à écrire : texte en colonnes (.xyz, .txt) ou rapport (.htm, .doc)")
      ->type_name("FICHIER")
      ->required();
  sub->add_option("--table", demande.table, "Table à écrire (la courante)")->type_name("NOM");
  sub->add_option("--code", demande.codePoints, "Seulement les points de ce code")
      ->type_name("CODE")
      ->check(CLI::Range(1, 9999).description(""));
  sub->add_option("--trier", demande.tri, "Trie par numero, x, y, z ou code (ordre de la table)")
      ->type_name("COLONNE")
      ->check(CLI::IsMember({"numero", "x", "y", "z", "code"}).description(""));
  return sub;
}

}  // namespace veltora::app
