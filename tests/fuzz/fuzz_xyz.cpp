// Reads any bytes as a list of coordinates, writes and reads them again, sorts and compares names.
#include "fuzz/fuzz.h"

#include "points/comparer_numeros.h"
#include "points/exchange/table_obs_xyz.h"

#include <cmath>

using namespace veltora;

void fuzz(std::string_view bytes) {
  tableObsXYZ table;
  table.colonneZCompte = bytes.size() % 2 == 1;
  table.lire(bytes);
  for (const base::Remarque& remarque : table.remarques) require(!remarque.texte.empty());
  for (const pointXYZ& ligne : table.lignes)
    require(std::isfinite(ligne.x) && std::isfinite(ligne.y) && std::isfinite(ligne.z) && ligne.code != 0);
  // Every line stays readable when it is written, whatever its name is.
  tableObsXYZ relue;
  relue.lire(table.contenu());
  require(relue.lignes.size() <= table.lignes.size());
  for (int colonne = 0; colonne < 7; ++colonne) {
    const auto comparer = table.comparateur(colonne);
    for (std::size_t i = 1; i < table.lignes.size(); ++i) {
      const long long a = table.lignes[i - 1].numeroInterne;
      const long long b = table.lignes[i].numeroInterne;
      require(comparer(a, b) == -comparer(b, a));
    }
  }
  if (!table.lignes.empty()) require(comparerNumeros(table.lignes[0].nom, table.lignes[0].nom) == 0);
  table.renumeroter(L"P", static_cast<int>(bytes.size()), L"");
  relue.lire(table.contenu());
  // A number of 1e300 takes more than a line.
  require(relue.lignes.size() <= table.lignes.size());
}
