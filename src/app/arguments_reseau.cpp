#include "app/arguments_reseau.h"

namespace veltora::app {

CLI::App* declarerReseau(CLI::App& app, Demande& demande) {
  CLI::App* sub = app.add_subcommand(
      "reseau", "Compense un réseau par moindres carrés (fichier .mc), affiche les coordonnées calculées");
  sub->add_option("fichier", demande.fichierReseau,
                  "Réseau .mc : points connus, puis angles (grades sans autre mot), distances, dénivelées")
      ->type_name("FICHIER")
      ->required();
  sub->add_option("--journal", demande.journal, "Journal complet du calcul à écrire (texte)")
      ->type_name("FICHIER");
  CLI::Option* dessin = sub->add_option("--dessin", demande.dessin,
                                        "Dessin où placer les points (nouveau dessin sans cette option)")
                            ->type_name("DESSIN");
  CLI::Option* sortie =
      sub->add_option("--sortie", demande.sortie, "Dessin à enregistrer avec tous les points, code 100")
          ->type_name("DESSIN");
  dessin->needs(sortie);
  return sub;
}

}  // namespace veltora::app
