#include "points/exchange/export_tables.h"

#include "base/csv.h"
#include "base/format.h"
#include "base/text.h"
#include "points/infos_topo.h"

#include <algorithm>
#include <array>
#include <vector>

namespace veltora {
namespace {

constexpr std::size_t kColonnes = 5;
using ligneTable = std::array<std::wstring, kColonnes>;
const ligneTable kEnTetes{L"Nom", L"X", L"Y", L"Z", L"Code"};

/// A coordinate: to the millimetre for reading, in full for another program; empty when absent.
std::wstring coordonnee(double valeur, formatTables format) {
  if (format != formatTables::kCsv) return texteCoordonnee(valeur, 3);
  return valeur == Z_ABSENT ? std::wstring() : base::widen(base::ecrireReel(valeur));
}

ligneTable ligneDe(const pointDuDessin& point, formatTables format) {
  return {base::widen(point.nomPoint), coordonnee(point.x, format), coordonnee(point.y, format),
          coordonnee(point.z, format), base::formater(L"%d", point.code)};
}

/// The sheet of all tables. The column of observations stands there when a point shows one.
std::wstring csv(const projetsTopo& projets) {
  std::vector<std::wstring> observations;
  for (const listePointsDuDessin* table : projets.tablesListe)
    for (const pointDuDessin& point : *table->getData()) observations.push_back(observationDuBloc(point.id));
  const bool montrees = std::any_of(observations.begin(), observations.end(),
                                    [](const std::wstring& observation) { return !observation.empty(); });
  std::wstring sortie = L"Table;Courante;Nom;X;Y;Z;Code";
  sortie += montrees ? L";Observation\n" : L"\n";
  auto observation = observations.begin();
  for (int i = 0; i < projets.tablesListe.GetSize(); ++i) {
    const listePointsDuDessin& table = *projets.tablesListe.GetAt(i);
    const std::wstring debut =
        base::champCsv(table.getNomTable()) + (i == projets.tableCourante ? L";oui" : L";non");
    for (const pointDuDessin& point : *table.getData()) {
      sortie += debut;
      for (const std::wstring& champ : ligneDe(point, formatTables::kCsv))
        sortie += L';' + base::champCsv(champ);
      if (montrees) sortie += L';' + base::champCsv(*observation);
      ++observation;
      sortie += L'\n';
    }
  }
  return sortie;
}

/// Names to the left, numbers to the right.
void ecrireLigne(const ligneTable& ligne, const std::array<std::size_t, kColonnes>& largeurs,
                 std::wstring& sortie) {
  std::wstring texte;
  for (std::size_t i = 0; i < kColonnes; ++i) {
    const std::wstring blancs(largeurs[i] - ligne[i].size(), L' ');
    texte += L"  " + (i == 0 ? ligne[i] + blancs : blancs + ligne[i]);
  }
  sortie += base::trimRight(texte, L" ") + L'\n';
}

void ecrireTexte(const listePointsDuDessin& table, bool courante, std::wstring& sortie) {
  if (!sortie.empty()) sortie += L'\n';
  const int nombre = table.nbPoint();
  const wchar_t* mot = nombre > 1 ? L"points" : L"point";
  sortie += base::formater(L"Table \"%s\"%s : %d %s\n", table.getNomTable(),
                           std::wstring(courante ? L" (courante)" : L""), nombre, mot);
  if (nombre == 0) return;
  std::vector<ligneTable> lignes{kEnTetes};
  for (const pointDuDessin& point : *table.getData()) lignes.push_back(ligneDe(point, formatTables::kTexte));
  std::array<std::size_t, kColonnes> largeurs{};
  for (const ligneTable& ligne : lignes)
    for (std::size_t i = 0; i < kColonnes; ++i) largeurs[i] = std::max(largeurs[i], ligne[i].size());
  for (const ligneTable& ligne : lignes) ecrireLigne(ligne, largeurs, sortie);
}

}  // namespace

bool exporterTables(AcDbDatabase* db, formatTables format, std::string& sortie) {
  projetsTopo projets;
  const lectureTables lu = lireTables(db, projets);
  if (lu == lectureTables::kIllisibles) {
    sortie = "Les points enregistrés dans ce dessin sont illisibles.\n";
    return false;
  }
  std::wstring texte;
  if (format == formatTables::kCsv)
    texte = csv(projets);
  else if (lu == lectureTables::kAucune)
    texte = L"Aucune table de points dans ce dessin.\n";
  else
    for (int i = 0; i < projets.tablesListe.GetSize(); ++i)
      ecrireTexte(*projets.tablesListe.GetAt(i), i == projets.tableCourante, texte);
  sortie = base::toUtf8(texte);
  return true;
}

}  // namespace veltora
