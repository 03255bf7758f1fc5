// The jobs on point tables.

#include "app/programme.h"
#include "app/travaux.h"
#include "base/format.h"
#include "base/text.h"
#include "drafting/executer_points.h"

#include <cstdio>
#include <map>

namespace veltora::app {
namespace {

/// Opens the drawing, runs the job and tells its remarks.
template <class Travail>
bool executer(Programme& programme, const Demande& demande, resultatPoints& resultat, Travail travail) {
  if (!programme.charger() || !programme.ouvrir(demande.dessin)) return false;
  const bool reussi = travail();
  for (const std::wstring& remarque : resultat.remarques) direErreur(remarque);
  if (!reussi) direErreur(resultat.erreur);
  return reussi;
}

void direResultat(int nombre, const char* un, const char* plusieurs, const std::string& fichier) {
  const std::string ligne = base::formater("\n%d %s : %s\n", nombre, nombre > 1 ? plusieurs : un, fichier);
  std::fwrite(ligne.data(), 1, ligne.size(), stdout);
}

colonnePoints colonneDe(const std::string& nom) {
  static const std::map<std::string, colonnePoints> colonnes{{"numero", colonnePoints::kNumero},
                                                             {"x", colonnePoints::kX},
                                                             {"y", colonnePoints::kY},
                                                             {"z", colonnePoints::kZ},
                                                             {"code", colonnePoints::kCode}};
  const auto trouvee = colonnes.find(nom);
  return trouvee == colonnes.end() ? colonnePoints::kOrdre : trouvee->second;
}

}  // namespace

int travailImporter(const Demande& demande) {
  if (demande.listePoints.empty()) return travailImporterDessin(demande);
  if (demande.sortie.empty()) {
    direErreur("argument obligatoire manquant : --sortie");
    return kMauvaisAppel;
  }
  LinesSource aucune("", {});
  Programme programme(aucune);
  resultatPoints resultat;
  const demandeListeXYZ liste{demande.listePoints, base::fromUtf8(demande.table)};
  if (!executer(programme, demande, resultat, [&] { return placerListeXYZ(liste, resultat); })) return kEchec;
  if (!programme.enregistrer(demande.sortie)) return kEchec;
  direResultat(resultat.nombre, "point placé", "points placés", demande.sortie);
  return kSucces;
}

int travailExporter(const Demande& demande) {
  LinesSource aucune("", {});
  Programme programme(aucune);
  resultatPoints resultat;
  demandeExportPoints exportation;
  exportation.fichier = demande.fichierPoints;
  exportation.table = base::fromUtf8(demande.table);
  exportation.code = demande.codePoints;
  exportation.tri = colonneDe(demande.tri);
  if (!executer(programme, demande, resultat, [&] { return exporterTable(exportation, resultat); }))
    return kEchec;
  direResultat(resultat.nombre, "point écrit", "points écrits", demande.fichierPoints);
  return kSucces;
}

}  // namespace veltora::app
