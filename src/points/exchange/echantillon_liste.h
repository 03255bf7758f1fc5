#pragma once

#include "base/lines/line_reader.h"
#include "core/code_range.h"
#include "points/exchange/champs_liste.h"
#include "points/exchange/vraisemblance_xy.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

/// The lines by which a list of coordinates is judged, and what their columns look like.
namespace veltora {

/// Up to a thousand lines of a list that are not empty: the first ones, then some all over the file.
class echantillonListe {
public:
  struct ligne {
    int numero = 0;
    std::string_view texte;
  };

  /// @param octets  of the whole file, outlive this
  explicit echantillonListe(std::string_view octets);
  [[nodiscard]] std::wstring large(std::string_view morceau) const { return m_lecteur.wide(morceau); }
  std::vector<ligne> lignes;

private:
  base::LineReader m_lecteur;
};

/// The field as wide text, doubled quotes within quotes as one.
std::wstring texteChamp(const champListe& champ, const base::LineReader& lignes);

/// How many fields are numbers. @param decimale  0: with either sign
int compterNombres(const std::vector<champListe>& champs, char decimale);
/// Whether the field is a number. @param decimale  0: with either sign
bool estNombre(const champListe& champ, char decimale);

/// What one column holds.
struct statsColonne {
  int lignes = 0;   ///< lines that were looked at
  int remplis = 0;  ///< of them, with something in this column
  int nombres = 0;
  int aDecimales = 0;        ///< numbers with a decimal sign
  int decimales = 0;         ///< the most that one has
  bool aBlanc = false;       ///< a text has a blank within
  bool consecutifs = true;   ///< whole numbers, each the one before and 1
  std::size_t longueur = 0;  ///< of the longest text, bytes
  int aChiffre = 0;          ///< texts with a digit
  double bas = 0.0;          ///< of the numbers
  double haut = 0.0;
  std::vector<double> valeurs;  ///< one a line; not-a-number where there is none
  std::set<std::string_view> distincts;

  void ajouter(const champListe* champ, char decimale);
  [[nodiscard]] bool numerique() const;
  [[nodiscard]] bool entiere() const { return numerique() && aDecimales == 0; }
  [[nodiscard]] bool reelle() const { return numerique() && aDecimales > 0; }
  [[nodiscard]] bool texte() const { return remplis > 0 && !numerique(); }
  [[nodiscard]] bool uniques() const { return static_cast<int>(distincts.size()) == remplis; }
  /// Whole numbers that could be codes of points.
  [[nodiscard]] bool codes() const { return entiere() && bas >= kSmallestCode && haut <= kLargestCode; }
};

/// The places that two columns give, where both are numbers.
std::vector<placeXY> placesDe(const statsColonne& x, const statsColonne& y);

}  // namespace veltora
