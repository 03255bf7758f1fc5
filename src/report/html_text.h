#pragma once

#include "base/export.h"
#include "base/uncopyable.h"

#include <string>
#include <string_view>

namespace veltora {

/// One paragraph or list item. Texts are Windows-1252 and are written as they stand, markup included.
class VELTORA_API htmlText : Uncopyable {
public:
  enum Type { element = 0, paragraphe = 1 };

  htmlText() = default;
  htmlText(std::string_view nouveauTexte, std::string_view nouveauxAttributs);
  /// The number with this many decimals (0 to 99) as text.
  htmlText(double nombre, int decimales, std::string_view nouveauxAttributs, int nouveauType);

  void set(int nouveauType, std::string_view nouveauTexte, std::string_view nouveauxAttributs);
  /// "<P attributs>texte</P>" or "<LI ...>"; an empty text for any other type.
  [[nodiscard]] std::string html() const;

  std::string texte;
  std::string attributs;
  int type = paragraphe;
};

/// A name or a sentence as content of a report: `&` and `<` as what readers show as these signs.
VELTORA_API std::string echappe(std::string_view texte);
VELTORA_API std::wstring echappe(std::wstring_view texte);

/// A number with a fixed number of decimals, as paragraphs and cells show it.
/// @param decimales 0 to 99; a value outside counts as the nearest of these
std::string texteNombre(double valeur, int decimales);

}  // namespace veltora
