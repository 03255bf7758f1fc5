#pragma once

#include "points/exchange/colonnes_liste.h"
#include "points/exchange/vraisemblance_xy.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What a list of coordinates looks like, found by looking at it: pure functions of its bytes.
namespace veltora {

/// What may help to tell the columns apart.
struct reperesListe {
  std::optional<rectangleXY> dessin;                       ///< of the points that the drawing has
  std::function<bool(std::wstring_view)> estLibelle = {};  ///< whether the code table has this label
};

/// Something that the list leaves open: placing it would be a guess.
struct VELTORA_API questionListe {
  struct reponse {
    std::wstring sens;     ///< French, what it means
    optionsListe options;  ///< with which nothing of this question is open any more
  };
  std::wstring texte;             ///< French, without capital and full stop
  std::vector<reponse> reponses;  ///< none: only another file settles it
  /// The question, and the options that settle it.
  [[nodiscard]] std::wstring phrase() const;
};

/// How a list is to be read.
struct VELTORA_API formeListe {
  char separateur = ';';  ///< as in `optionsListe`
  char decimale = '.';
  bool deuxChamps = false;     ///< the comma parts columns and decimals: a coordinate takes two fields
  bool codesTexte = false;     ///< codes that are no numbers are labels
  bool codesLibelles = false;  ///< those that look like numbers too
  std::size_t champs = 0;      ///< fields of a line: of the titles, or of most lines; 0: any number
  int ligneTitres = 0;         ///< from 1; 0: no titles
  int premiereLigne = 1;       ///< the first one with a point
  std::vector<std::wstring> titres;
  std::vector<roleColonne> colonnes;  ///< empty: nothing looks like coordinates
  std::vector<questionListe> questions;

  [[nodiscard]] bool trouvee() const { return !colonnes.empty(); }
  /// "séparée par des points-virgules, virgule décimale, titres en ligne 1".
  [[nodiscard]] std::wstring description() const;
};

/// Looks at up to a thousand lines of a list, all over the file, and finds what the options leave open:
/// separator, decimal sign, titles, columns. Where several readings make sense a question says so, and the
/// form is that of its first answer.
VELTORA_API formeListe reconnaitreListe(std::string_view octets, const optionsListe& options,
                                        const reperesListe& reperes);

/// True when every line that is not empty has the form of an `.xyz` list: name, X, Y, then Z or a blank
/// column between tabs, a whole number as code, an observation. A name that is a number with decimals is
/// none.
VELTORA_API bool formeXyz(std::string_view octets);

}  // namespace veltora
