#include "app/jobs/table.h"

#include "app/jobs/aplatir.h"
#include "app/jobs/carnet.h"
#include "app/jobs/carroyer.h"
#include "app/jobs/clothoide.h"
#include "app/jobs/exporter.h"
#include "app/jobs/feuille.h"
#include "app/jobs/helmert.h"
#include "app/jobs/implanter.h"
#include "app/jobs/importer.h"
#include "app/jobs/legende.h"
#include "app/jobs/lever.h"
#include "app/jobs/lisp.h"
#include "app/jobs/planche.h"
#include "app/jobs/points.h"
#include "app/jobs/polygonale.h"
#include "app/jobs/rendre.h"
#include "app/jobs/reseau.h"
#include "app/jobs/tableau.h"
#include "app/jobs/terrain.h"

namespace veltora::app {

std::span<const Job> jobTable() {
  static constexpr Job kJobs[] = {
      {"polygonale", "Calcule une polygonale, fermée ou ouverte (fichier .obs), affiche les coordonnées",
       declarePolygonale},
      {"helmert",
       "Calcule une transformation d'Helmert sur des couples de points, affiche paramètres et résidus",
       declareHelmert},
      {"reseau", "Compense un réseau par moindres carrés (fichier .mc), affiche les coordonnées calculées",
       declareReseau},
      {"carnet", "Lit un carnet de terrain GSI, affiche les points dont il donne X et Y", declareCarnet},
      {"lever", "Calcule un levé : le carnet GSI et le canevas donnent stations et points", declareLever},
      {"feuille", "Ouvre la feuille « Calculs topométriques » : canevas, import GSI", declareFeuille},
      {"points", "Affiche les tables de points enregistrées dans un dessin", declarePoints},
      {"importer",
       "Place dans un dessin les points d'une liste (.xyz, .csv...), ou reprend ceux de ses entités",
       declareImporter},
      {"exporter", "Écrit les points d'un dessin dans un fichier de coordonnées", declareExporter},
      {"tableau", "Dessine le tableau des coordonnées des points d'un dessin", declareTableau},
      {"legende", "Dessine la légende d'un dessin : ses blocs avec leurs descriptions, ses calques",
       declareLegende},
      {"aplatir", "Fait des polylignes 2D des polylignes 3D d'un dessin", declareAplatir},
      {"carroyer", "Dessine le carroyage des régions d'un calque", declareCarroyer},
      {"clothoide", "Calcule une clothoïde par ses rayons et trois points, en liste des points, la dessine",
       declareClothoide},
      {"planche", "Dessine une planche autour d'un plan : papier, cadre, cartouche, carroyage",
       declarePlanche},
      {"rendre", "Écrit le plan d'un dessin en PDF, SVG ou PNG, à l'échelle", declareRendre},
      {"implanter", "Angles et distances des points à implanter depuis une station", declareImplanter},
      {"terrain", "Fait un terrain d'une liste de points ou d'un dessin : courbes de niveau, profils, faces",
       declareTerrain},
      {"lisp", "Exécute un fichier LISP dans un dessin", declareLisp},
  };
  return kJobs;
}

}  // namespace veltora::app
