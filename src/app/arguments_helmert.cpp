#include "app/arguments_helmert.h"

namespace veltora::app {

CLI::App* declarerHelmert(CLI::App& app, Demande& demande) {
  CLI::App* sub = app.add_subcommand(
      "helmert",
      "Calcule une transformation d'Helmert sur des couples de points, affiche paramètres et résidus");
  sub->add_option("couples", demande.couples, "Fichier de couples, une ligne chacun : [nom] x y X Y")
      ->type_name("FICHIER")
      ->required();
  sub->add_option("--rapport", demande.rapport,
                  "Rapport à écrire (HTML ; forme Word si le nom finit par .doc)")
      ->type_name("FICHIER");
  CLI::Option* dessin =
      sub->add_option("--appliquer", demande.dessin, "Dessin dont toutes les entités sont transformées")
          ->type_name("DESSIN");
  CLI::Option* sortie =
      sub->add_option("--sortie", demande.sortie, "Dessin transformé à enregistrer")->type_name("DESSIN");
  dessin->needs(sortie);
  sortie->needs(dessin);
  return sub;
}

}  // namespace veltora::app
