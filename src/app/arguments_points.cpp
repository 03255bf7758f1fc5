#include "app/arguments_points.h"

namespace veltora::app {

CLI::App* declarerPoints(CLI::App& app, Demande& demande) {
  CLI::App* sub = app.add_subcommand("points", "Affiche les tables de points enregistrées dans un dessin");
  sub->add_option("dessin", demande.dessin, "Dessin DXF")->type_name("DESSIN")->required();
  sub->add_flag("--csv", demande.csv, "Sépare les colonnes par des points-virgules");
  return sub;
}

CLI::App* declarerImporter(CLI::App& app, Demande& demande) {
  CLI::App* sub =
      app.add_subcommand("importer", "Place dans un dessin les points d'une liste de coordonnées (.xyz)");
  sub->add_option("dessin", demande.dessin, "Dessin DXF ; un nouveau dessin sans ce nom")
      ->type_name("DESSIN");
  sub->add_option("--points", demande.listePoints,
                  "Liste .xyz : une ligne par point, numéro X Y Z code observation")
      ->type_name("LISTE")
      ->required();
  sub->add_option("--table", demande.table, "Table qui reçoit les points, créée s'il le faut (la courante)")
      ->type_name("NOM");
  sub->add_option("--sortie", demande.sortie, "Dessin à enregistrer")->type_name("DESSIN")->required();
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
