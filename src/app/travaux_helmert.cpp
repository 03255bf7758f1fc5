#include "app/programme.h"
#include "app/travaux.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/executer_helmert.h"

#include <cmath>
#include <cstdio>

namespace veltora::app {
namespace {

constexpr double kGradesParRadian = 200.0 / 3.141592653589793;

void ecrire(const std::string& texte) { std::fwrite(texte.data(), 1, texte.size(), stdout); }

void afficherParametres(const resultatHelmert& p) {
  ecrire(base::formater("Échelle             : %.8f\n", p.echelle));
  ecrire(base::formater("Rotation            : %.5f grades\n", p.rotation * kGradesParRadian));
  ecrire(base::formater("Déplacement en X, Y : %.4f  %.4f\n", p.deplacement.x, p.deplacement.y));
  ecrire(base::formater("Paramètres A, B     : %.8f  %.8f\n\n", p.ab.x, p.ab.y));
}

void afficherResidus(const std::vector<residuHelmert>& residus) {
  std::size_t largeur = 8;
  for (const residuHelmert& residu : residus) largeur = std::max(largeur, residu.nom.size() + 2);
  const auto colonne = [largeur](std::wstring texte) {
    texte.resize(std::max(largeur, texte.size()), L' ');
    return base::toUtf8(texte);
  };
  ecrire(colonne(L"Couple") + base::formater("%12s%12s%12s\n", "dX", "dY", "Distance"));
  for (const residuHelmert& residu : residus) {
    ecrire(colonne(residu.nom) +
           base::formater("%12.4f%12.4f%12.4f\n", residu.ecart.x, residu.ecart.y, residu.ecart.length()));
  }
}

void afficherEcarts(const ecartsHelmert& e) {
  ecrire(base::formater("\nErreur inférieure   : %.4f\n", e.inferieur));
  ecrire(base::formater("Erreur supérieure   : %.4f\n", e.superieur));
  ecrire(base::formater("Erreur moyenne      : %.4f\n", e.moyenne));
  ecrire("Err. moy. quadr.    : " +
         (std::isnan(e.quadratique) ? std::string("sans valeur") : base::formater("%.4f", e.quadratique)) +
         "\n");
  ecrire(
      "  (racine de la moyenne des carrés des distances, diminuée de 1 : elle n'a de valeur que si cette "
      "moyenne\n"
      "   atteint 1 ; sans valeur, les écarts sont petits)\n");
}

}  // namespace

int travailHelmert(const Demande& demande) {
  LinesSource aucune("", {});
  Programme programme(aucune);
  const bool appliquer = !demande.dessin.empty();
  if (!programme.charger() || (appliquer && !programme.ouvrir(demande.dessin))) return kEchec;
  demandeHelmert travail;
  travail.fichier = demande.couples;
  travail.rapport = demande.rapport;
  travail.appliquer = appliquer;
  resultatHelmertUnAppel resultat;
  const bool reussi = executerHelmert(travail, resultat);
  for (const std::wstring& remarque : resultat.remarques) direErreur(remarque);
  if (!reussi) {
    direErreur(resultat.erreur);
    return kEchec;
  }
  afficherParametres(resultat.parametres);
  afficherResidus(resultat.residus);
  afficherEcarts(resultat.ecarts);
  if (appliquer && !programme.enregistrer(demande.sortie)) return kEchec;
  if (!demande.rapport.empty()) ecrire("\nRapport : " + demande.rapport + "\n");
  if (appliquer) {
    ecrire(base::formater("Dessin  : %s, %d entités transformées\n", demande.sortie, resultat.transformees));
    if (resultat.refusees > 0)
      direErreur(base::formater("%d entités ne se laissent pas transformer", resultat.refusees));
  }
  return kSucces;
}

}  // namespace veltora::app
