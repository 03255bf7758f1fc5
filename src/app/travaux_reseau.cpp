#include "app/programme.h"
#include "app/travaux.h"
#include "arx/ed/edgraphics.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/executer_reseau.h"

#include <algorithm>
#include <cstdio>

namespace veltora::app {
namespace {

void ecrire(const std::string& texte) { std::fwrite(texte.data(), 1, texte.size(), stdout); }

/// "3 angles", "1 angle".
std::string compte(int nombre, const char* mot) {
  return base::formater("%d %s%s", nombre, mot, nombre > 1 ? "s" : "");
}

std::string nombre(double valeur) {
  return valeur == base::Z_ABSENT ? base::formater("%15s", "-") : base::formater(" %14.4f", valeur);
}

void afficherPoints(const std::vector<pointReseau>& points) {
  std::size_t largeur = 8;
  for (const pointReseau& p : points) largeur = std::max(largeur, p.nom.size() + 2);
  const auto colonne = [largeur](std::wstring texte) {
    texte.resize(std::max(largeur, texte.size()), L' ');
    return base::toUtf8(texte);
  };
  ecrire(colonne(L"Point") + base::formater("%15s%15s%15s\n", "X", "Y", "Z"));
  for (const pointReseau& p : points) ecrire(colonne(p.nom) + nombre(p.x) + nombre(p.y) + nombre(p.z) + "\n");
}

void afficherResultat(const resultatReseau& r) {
  ecrire("Points       : " + compte(r.connus, "connu") + ", " +
         base::formater("%d à calculer\n", r.aCalculer));
  ecrire("Observations : " + compte(r.angles, "angle") + ", " + compte(r.distances, "distance") + ", " +
         compte(r.denivelees, "dénivelée") + "\n");
  ecrire(base::formater("Passes       : %d%s\n\n", r.passes, r.convergence ? "" : ", sans convergence"));
  afficherPoints(r.calcules);
  ecrire(
      "\nCompensation sans pondération : un écart d'un radian (63.66 grades) compte autant qu'un mètre ;\n"
      "les poids, donnés ou par formule, ne changent pas les coordonnées.\n");
}

}  // namespace

int travailReseau(const Demande& demande) {
  LinesSource aucune("", {});
  Programme programme(aucune);
  demandeReseau travail;
  travail.fichier = demande.fichierReseau;
  travail.journal = demande.journal;
  travail.placer = !demande.sortie.empty();
  if (!programme.charger() || (travail.placer && !programme.ouvrir(demande.dessin))) return kEchec;
  resultatReseau resultat;
  const bool reussi = executerReseau(travail, resultat);
  for (const std::wstring& remarque : resultat.remarques) direErreur(remarque);
  if (!reussi) {
    direErreur(resultat.erreur);
    return kEchec;
  }
  afficherResultat(resultat);
  // A new drawing opens elsewhere on its contents.
  if (travail.placer && demande.dessin.empty()) acedZoomExtents();
  if (travail.placer && !programme.enregistrer(demande.sortie)) return kEchec;
  if (!demande.journal.empty()) ecrire("\nJournal : " + demande.journal + "\n");
  if (travail.placer) {
    ecrire("Dessin  : " + demande.sortie + ", " + compte(resultat.places, "point") +
           (resultat.places > 1 ? " placés\n" : " placé\n"));
  }
  return kSucces;
}

}  // namespace veltora::app
