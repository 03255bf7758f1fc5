#include "jobs/importer_liste.h"

#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/format.h"
#include "base/suivi.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/point_name.h"
#include "jobs/genre_fichier.h"
#include "points/exchange/table_obs_xyz.h"
#include "points/projets_topo.h"

#include <set>

namespace veltora {
namespace {

std::wstring nomAffiche(const std::filesystem::path& fichier) { return base::fromUtf8(fichier.string()); }

void remarquerLignes(const tableObsXYZ& liste, const std::wstring& fichier, base::Remarques& remarques) {
  base::Remarques lues = liste.remarques;
  lues.situer(fichier);
  remarques.citer(lues, [&fichier](int reste) {
    return fichier + L" : " + std::to_wstring(reste) + L" autres remarques";
  });
}

void remarquerNoms(const tableObsXYZ& liste, resultatPoints& resultat) {
  int coupes = 0;
  int doubles = 0;
  std::set<std::string> noms;
  for (const pointXYZ& ligne : liste.lignes) {
    if (ligne.nom.size() > kPointNameLength) ++coupes;
    if (!noms.insert(base::toLowerAnsi(pointName(ligne.nom))).second) ++doubles;
  }
  const auto dire = [&resultat](const wchar_t* texte, int nombre) {
    if (nombre > 0) resultat.remarques.ajouter(base::formater(texte, nombre));
  };
  dire(L"noms coupés à 9 caractères : %d", coupes);
  dire(L"noms qui se répètent dans la liste : %d", doubles);
}

/// Removes the points whose names the list brings again.
void remplacer(listePointsDuDessin& table, const tableObsXYZ& liste, resultatPoints& resultat) {
  int remplaces = 0;
  for (const pointXYZ& ligne : liste.lignes) {
    const int avant = table.nbPoint();
    table.supprimerPoint(base::widen(pointName(ligne.nom)).c_str());
    remplaces += avant - table.nbPoint();
  }
  if (remplaces > 0)
    resultat.remarques.ajouter(base::formater(L"points du même nom remplacés : %d", remplaces));
}

/// @return false when the user stops
bool placer(listePointsDuDessin& table, const tableObsXYZ& liste, resultatPoints& resultat) {
  tableCodification& codes = getTableCodification();
  std::set<int> vus;
  for (const pointXYZ& ligne : liste.lignes)
    if (vus.insert(ligne.code).second) codes.getOuCreerCode(ligne.code);
  codes.creerTousLayers(acdbHostApplicationServices()->workingDatabase());
  int sansBloc = 0;
  base::Suivi suivi(static_cast<long long>(liste.lignes.size()) - 1);
  for (const pointXYZ& ligne : liste.lignes) {
    if (suivi.arrete()) return false;
    pointDuDessin point;
    point = ligne;
    point.creer(true, ligne.obs.c_str());
    if (point.id.isNull()) ++sansBloc;
    table.Ajouter(point);
    suivi.avancer();
  }
  if (sansBloc > 0)
    resultat.remarques.ajouter(
        base::formater(L"points sans bloc dans le dessin (fichier de bloc introuvable) : %d", sansBloc));
  return true;
}

}  // namespace

bool importerListe(const demandeImportListe& demande, resultatPoints& resultat) {
  resultat = {};
  const std::wstring fichier = nomAffiche(demande.fichier);
  if (!tablesPoints) return resultat.echec(kSansProjet);
  if (const auto octets = base::lireFichier(demande.fichier)) {
    const std::wstring refus = refusDuGenre(fichier, *octets, genreFichier::xyz);
    if (!refus.empty()) return resultat.echec(refus);
  }
  tableObsXYZ liste;
  liste.colonneZCompte = true;
  if (!liste.charger(fichier.c_str()))
    return resultat.echec(L"« " + fichier + L" » : fichier introuvable ou illisible");
  remarquerLignes(liste, fichier, resultat.remarques);
  if (liste.lignes.empty()) return resultat.echec(L"« " + fichier + L" » : aucun point");
  remarquerNoms(liste, resultat);
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (resultat.retenu) return true;
  listePointsDuDessin& table = tablesPoints->tableOuNouvelle(demande.table);
  remplacer(table, liste, resultat);
  if (!placer(table, liste, resultat)) return resultat.echec(kInterrompu);
  resultat.nombre = static_cast<int>(liste.lignes.size());
  return true;
}

}  // namespace veltora
