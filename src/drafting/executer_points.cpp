#include "drafting/executer_points.h"

#include "arx/db/dbmain.h"
#include "base/format.h"
#include "base/suivi.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "drafting/exporter_points.h"
#include "points/projets_topo.h"
#include "points/table_obs_xyz.h"

#include <algorithm>
#include <numeric>
#include <set>

namespace veltora {
namespace {

/// Remarks that are told one by one.
constexpr std::size_t kRemarquesCitees = 20;
constexpr const wchar_t* kSansProjet = L"aucun dessin n'est ouvert";
constexpr const wchar_t* kInterrompu = L"interrompu";

std::wstring nomAffiche(const std::filesystem::path& fichier) { return base::fromUtf8(fichier.string()); }

/// Index of the first table of that name, ignoring case; the current one for an empty name, -1 for none.
int chercherTable(const std::wstring& nom) {
  tablesPoints->currTable();
  if (nom.empty()) return tablesPoints->tableCourante;
  for (int i = 0; i < tablesPoints->tablesListe.GetSize(); ++i)
    if (base::compareNoCase(tablesPoints->tablesListe.GetAt(i)->getNomTable(), nom) == 0) return i;
  return -1;
}

void remarquerLignes(const tableObsXYZ& liste, const std::wstring& fichier, resultatPoints& resultat) {
  const std::size_t nombre = liste.remarques.size();
  for (std::size_t i = 0; i < std::min(nombre, kRemarquesCitees); ++i)
    resultat.remarques.push_back(fichier + L", " + texteRemarque(liste.remarques[i]));
  if (nombre > kRemarquesCitees)
    resultat.remarques.push_back(
        base::formater(L"%s : %d autres remarques", fichier, static_cast<int>(nombre - kRemarquesCitees)));
}

void remarquerNoms(const tableObsXYZ& liste, resultatPoints& resultat) {
  int coupes = 0;
  int doubles = 0;
  std::set<std::string> noms;
  for (const pointXYZ& ligne : liste.lignes) {
    std::string nom = base::narrow(ligne.nom);
    if (nom.size() > pointDuDessin::kLongueurNom) {
      ++coupes;
      nom.resize(pointDuDessin::kLongueurNom);
    }
    if (!noms.insert(base::toLowerAnsi(nom)).second) ++doubles;
  }
  const auto dire = [&resultat](const wchar_t* texte, int nombre) {
    if (nombre > 0) resultat.remarques.push_back(base::formater(texte, nombre));
  };
  dire(L"noms coupés à 9 caractères : %d", coupes);
  dire(L"noms qui se répètent dans la liste : %d", doubles);
}

/// Removes the points whose names the list brings again.
void remplacer(listePointsDuDessin& table, const tableObsXYZ& liste, resultatPoints& resultat) {
  int remplaces = 0;
  for (const pointXYZ& ligne : liste.lignes) {
    pointDuDessin point;
    point.setNomPoint(ligne.nom.c_str());
    const std::wstring nom = base::widen(point.nomPoint);
    const int avant = table.nbPoint();
    table.supprimerPoint(nom.c_str());
    remplaces += avant - table.nbPoint();
  }
  if (remplaces > 0)
    resultat.remarques.push_back(base::formater(L"points du même nom remplacés : %d", remplaces));
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
    resultat.remarques.push_back(
        base::formater(L"points sans bloc dans le dessin (fichier de bloc introuvable) : %d", sansBloc));
  return true;
}

std::vector<pointDuDessin> choisir(const listePointsDuDessin& table, const demandeExportPoints& demande) {
  const std::vector<int> rangs = rangsPoints(table, demande.tri);
  std::vector<std::size_t> ordre(rangs.size());
  std::iota(ordre.begin(), ordre.end(), std::size_t{0});
  std::stable_sort(ordre.begin(), ordre.end(),
                   [&rangs](std::size_t a, std::size_t b) { return rangs[a] < rangs[b]; });
  std::vector<pointDuDessin> points;
  points.reserve(ordre.size());
  for (const std::size_t i : ordre) {
    const pointDuDessin& point = (*table.getData())[i];
    if (demande.code == 0 || point.code == demande.code) points.push_back(point);
  }
  return points;
}

bool echec(resultatPoints& resultat, const std::wstring& erreur) {
  resultat.erreur = erreur;
  return false;
}

}  // namespace

bool placerListeXYZ(const demandeListeXYZ& demande, resultatPoints& resultat) {
  resultat = {};
  const std::wstring fichier = nomAffiche(demande.fichier);
  if (!tablesPoints) return echec(resultat, kSansProjet);
  tableObsXYZ liste;
  liste.colonneZCompte = true;
  if (!liste.charger(fichier.c_str()))
    return echec(resultat, L"« " + fichier + L" » : fichier introuvable ou illisible");
  remarquerLignes(liste, fichier, resultat);
  if (liste.lignes.empty()) return echec(resultat, L"« " + fichier + L" » : aucun point");
  remarquerNoms(liste, resultat);
  int indice = chercherTable(demande.table);
  if (indice < 0) {
    tablesPoints->creerTablePoints(demande.table.c_str());
    indice = tablesPoints->tablesListe.GetSize() - 1;
  }
  listePointsDuDessin& table = *tablesPoints->tablesListe.GetAt(indice);
  remplacer(table, liste, resultat);
  if (!placer(table, liste, resultat)) return echec(resultat, kInterrompu);
  resultat.nombre = static_cast<int>(liste.lignes.size());
  return true;
}

bool exporterTable(const demandeExportPoints& demande, resultatPoints& resultat) {
  resultat = {};
  if (!tablesPoints) return echec(resultat, kSansProjet);
  const int indice = chercherTable(demande.table);
  if (indice < 0) return echec(resultat, L"aucune table « " + demande.table + L" » dans ce dessin");
  const std::vector<pointDuDessin> points = choisir(*tablesPoints->tablesListe.GetAt(indice), demande);
  if (points.empty()) return echec(resultat, L"aucun point à exporter");
  std::wstring raison;
  if (!exporterPoints(points, nomAffiche(demande.fichier), raison))
    return echec(resultat, raison.empty() ? kInterrompu : raison);
  resultat.nombre = static_cast<int>(points.size());
  const auto sansAltitude = std::count_if(points.begin(), points.end(),
                                          [](const pointDuDessin& point) { return point.z == Z_ABSENT; });
  if (sansAltitude > 0)
    resultat.remarques.push_back(base::formater(L"points sans altitude, dont la colonne Z reste vide : %d",
                                                static_cast<int>(sansAltitude)));
  return true;
}

}  // namespace veltora
