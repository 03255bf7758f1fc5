#include "jobs/placer_liste.h"

#include "arx/db/dbmain.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/suivi.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/point_name.h"
#include "jobs/codes_libelles.h"
#include "jobs/placer_stations.h"
#include "points/projets_topo.h"

#include <algorithm>
#include <set>
#include <utility>

namespace veltora {
namespace {

std::set<int> codesEmployes(const listeLue& liste) {
  std::set<int> codes;
  for (const ligneListe& ligne : liste.lignes) codes.insert(ligne.point.code);
  for (const listePointsDuDessin* table : tablesPoints->tablesListe)
    if (table)
      for (const pointDuDessin& point : *table->getData()) codes.insert(point.code);
  return codes;
}

/// Where the points of a list go, one after the other.
class Placement {
public:
  Placement(const std::wstring& table, listeLue& liste, resultatPoints& resultat)
      : m_table(table), m_liste(liste), m_resultat(resultat) {}

  /// @return false, with the reason, when the user stops or a block is missing
  bool placer() {
    ouvrirTables();
    nommer();
    coder();
    remplacer();
    return dessiner();
  }

private:
  [[nodiscard]] listePointsDuDessin& table(const ligneListe& ligne) const {
    return *m_tables[m_tables.size() == 1 || ligne.table < 0 ? 0 : static_cast<std::size_t>(ligne.table)];
  }

  /// The tables that the list names, unless the user wants another one. A new drawing gets those only, and
  /// the current one of the list.
  void ouvrirTables() {
    auto& toutes = tablesPoints->tablesListe;
    if (!m_table.empty() || m_liste.tables.empty()) {
      m_tables = {&tablesPoints->tableOuNouvelle(m_table)};
      return;
    }
    const bool neuf = toutes.GetSize() == 1 && tablesPoints->currTable()->nbPoint() == 0;
    for (const std::wstring& nom : m_liste.tables) m_tables.push_back(&tablesPoints->tableOuNouvelle(nom));
    if (!neuf) return;
    const auto rang = [&toutes](const listePointsDuDessin* table) {
      return static_cast<int>(std::find(toutes.begin(), toutes.end(), table) - toutes.begin());
    };
    if (m_liste.courante >= 0)
      tablesPoints->tableCourante = rang(m_tables[static_cast<std::size_t>(m_liste.courante)]);
    if (std::find(m_tables.begin(), m_tables.end(), toutes.GetAt(0)) == m_tables.end())
      tablesPoints->removeTablePoints(0);
  }

  /// Points without a name get the numbers behind the largest one of the tables and of the list, so that they
  /// take the place of none.
  void nommer() {
    int dernier = 0;
    int nommes = 0;
    for (const listePointsDuDessin* une : m_tables) dernier = std::max(dernier, une->getMaxNum());
    for (const ligneListe& ligne : m_liste.lignes) {
      if (ligne.point.nom.empty()) ++nommes;
      dernier = std::max(dernier, base::lireEntier(ligne.point.nom));
    }
    if (nommes == 0) return;
    m_resultat.remarques.ajouter(
        base::formater(L"points sans numéro, numérotés à partir de %d : %d", dernier + 1, nommes));
    for (ligneListe& ligne : m_liste.lignes)
      if (ligne.point.nom.empty()) ligne.point.nom = std::to_wstring(++dernier);
  }

  void coder() {
    tableCodification& codes = getTableCodification();
    if (!m_liste.libelles.empty()) {
      const std::vector<int> trouves =
          codesDesLibelles(m_liste.libelles, codesEmployes(m_liste), m_resultat.remarques);
      for (ligneListe& ligne : m_liste.lignes)
        if (ligne.libelle >= 0) ligne.point.code = trouves[static_cast<std::size_t>(ligne.libelle)];
    }
    std::set<int> vus;
    for (const ligneListe& ligne : m_liste.lignes)
      if (vus.insert(ligne.point.code).second) codes.getOuCreerCode(ligne.point.code);
    codes.creerTousLayers(acdbHostApplicationServices()->workingDatabase());
  }

  /// Removes the points whose names the list brings again.
  void remplacer() {
    int remplaces = 0;
    for (const ligneListe& ligne : m_liste.lignes) {
      listePointsDuDessin& sienne = table(ligne);
      const int avant = sienne.nbPoint();
      sienne.supprimerPoint(base::widen(pointName(ligne.point.nom)).c_str());
      remplaces += avant - sienne.nbPoint();
    }
    if (remplaces > 0)
      m_resultat.remarques.ajouter(base::formater(L"points du même nom remplacés : %d", remplaces));
  }

  bool dessiner() {
    int sansBloc = 0;
    if (m_tables.size() == 1) m_tables.front()->reserver(m_liste.lignes.size());
    base::Suivi suivi(static_cast<long long>(m_liste.lignes.size()) - 1);
    for (const ligneListe& ligne : m_liste.lignes) {
      if (suivi.arrete()) return m_resultat.echec(kInterrompu);
      pointDuDessin point;
      point = ligne.point;
      point.creer(false, ligne.point.obs.c_str());  // `coder` made the layers of all codes
      if (point.id.isNull()) ++sansBloc;
      table(ligne).Ajouter(point);
      suivi.avancer();
    }
    m_resultat.erreur = texteSansBloc(sansBloc);
    return m_resultat.erreur.empty();
  }

  const std::wstring& m_table;
  listeLue& m_liste;
  resultatPoints& m_resultat;
  std::vector<listePointsDuDessin*> m_tables;  ///< of the list, or the one for all
};

}  // namespace

void remarquerNoms(const listeLue& liste, base::Remarques& remarques) {
  int coupes = 0;
  int doubles = 0;
  std::set<std::pair<int, std::string>> noms;
  for (const ligneListe& ligne : liste.lignes) {
    if (ligne.point.nom.empty()) continue;
    if (ligne.point.nom.size() > kPointNameLength) ++coupes;
    if (!noms.emplace(ligne.table, base::toLowerAnsi(pointName(ligne.point.nom))).second) ++doubles;
  }
  const auto dire = [&remarques](const wchar_t* texte, int nombre) {
    if (nombre > 0) remarques.ajouter(base::formater(texte, nombre));
  };
  dire(L"noms coupés à 9 caractères : %d", coupes);
  dire(L"noms qui se répètent dans la liste : %d", doubles);
}

bool placerListe(const std::wstring& table, listeLue& liste, resultatPoints& resultat) {
  if (!Placement(table, liste, resultat).placer()) return false;
  resultat.nombre = static_cast<int>(liste.lignes.size());
  return true;
}

}  // namespace veltora
