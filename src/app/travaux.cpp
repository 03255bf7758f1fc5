#include "app/travaux.h"

#include "app/programme.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edgraphics.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/executer_polygonale.h"
#include "points/export_tables.h"

#include <cmath>
#include <cstdio>

namespace veltora::app {
namespace {

void ecrire(const std::string& texte) { std::fwrite(texte.data(), 1, texte.size(), stdout); }

std::unique_ptr<base::LineSource> sourceDeSession(const Demande& demande) {
  auto chain = std::make_unique<ChainedSource>();
  if (!demande.commandes.empty())
    chain->append(std::make_unique<LinesSource>("--commande", demande.commandes));
  if (!demande.script.empty()) {
    auto lines = lireScript(demande.script);
    if (!lines) {
      direErreur("impossible de lire le script \"" + demande.script + "\"");
      return nullptr;
    }
    chain->append(std::make_unique<LinesSource>(demande.script, std::move(*lines)));
  }
  if (demande.commandes.empty() && demande.script.empty()) chain->append(std::make_unique<TerminalSource>());
  return chain;
}

const char* nomUnite(int modeAngle) {
  constexpr const char* kNoms[] = {"grades", "degrés", "radians"};
  return kNoms[modeAngle >= 0 && modeAngle <= 2 ? modeAngle : 0];
}

/// Text padded by characters, not by bytes.
std::string colonne(const std::wstring& texte, std::size_t largeur) {
  return base::toUtf8(texte.size() < largeur ? texte + std::wstring(largeur - texte.size(), L' ') : texte);
}

void afficherResultat(const resultatPolygonale& resultat) {
  const fermeturesPolygonale& f = resultat.fermetures;
  std::size_t largeur = 8;
  for (const stationCalculee& station : resultat.stations)
    largeur = std::max(largeur, station.nom.size() + 2);
  ecrire(resultat.ouverte ? "Polygonale ouverte\n" : "Polygonale fermée\n");
  ecrire(base::formater("Fermeture angulaire : %.5f %s\n", f.E, nomUnite(resultat.modeAngle)));
  ecrire(base::formater("Fermeture en X, Y   : %.4f  %.4f\n", f.Ex, f.Ey));
  ecrire(base::formater("Fermeture en Z      : %.4f\n", f.H));
  ecrire(base::formater("Longueur            : %.4f\n\n", f.D));
  ecrire(colonne(L"Station", largeur) + base::formater("%15s%15s%15s\n", "X", "Y", "Z"));
  for (const stationCalculee& station : resultat.stations) {
    ecrire(colonne(station.nom, largeur) +
           base::formater("%15.4f%15.4f%15.4f\n", station.x, station.y, station.z));
  }
}

}  // namespace

int travailSession(const Demande& demande) {
  const std::unique_ptr<base::LineSource> source = sourceDeSession(demande);
  if (!source) return kEchec;
  Programme programme(*source);
  if (!programme.charger() || !programme.ouvrir(demande.dessin)) return kEchec;
  if (!programme.executer()) return kEchec;
  if (!demande.sortie.empty() && !programme.enregistrer(demande.sortie)) return kEchec;
  return kSucces;
}

int travailPolygonale(const Demande& demande) {
  LinesSource aucune("", {});
  Programme programme(aucune);
  const bool dessiner = !demande.sortie.empty();
  if (!programme.charger() || (dessiner && !programme.ouvrir(demande.dessin))) return kEchec;

  demandePolygonale travail;
  travail.fichier = demande.fichierObs;
  travail.rapport = demande.rapport;
  travail.code = demande.code;
  travail.altitudes = demande.altitudes;
  travail.placer = dessiner;
  travail.dessinerBrute = dessiner && demande.tracerBrute;
  travail.dessinerCompensee = dessiner && demande.tracerCompensee;
  resultatPolygonale resultat;
  const bool good = executerPolygonale(travail, resultat);
  for (const std::wstring& remarque : resultat.remarques) direErreur(remarque);
  if (!good) {
    direErreur(resultat.erreur);
    return kEchec;
  }
  afficherResultat(resultat);
  // A new drawing opens elsewhere on its contents.
  if (dessiner && demande.dessin.empty()) acedZoomExtents();
  if (dessiner && !programme.enregistrer(demande.sortie)) return kEchec;
  if (!demande.rapport.empty()) ecrire("\nRapport : " + demande.rapport + "\n");
  if (dessiner) ecrire("Dessin  : " + demande.sortie + "\n");
  return kSucces;
}

int travailPoints(const Demande& demande) {
  AcDbDatabase database(false, true);
  std::wstring message;
  if (database.readDwgFile(base::fromUtf8(demande.dessin).c_str(), &message) != Acad::eOk) {
    direErreur(message);
    return kEchec;
  }
  std::string sortie;
  if (!exporterTables(&database, demande.csv ? formatTables::kCsv : formatTables::kTexte, sortie)) {
    direErreur(sortie);
    return kEchec;
  }
  ecrire(sortie);
  return kSucces;
}

}  // namespace veltora::app
