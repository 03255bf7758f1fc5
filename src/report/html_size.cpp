#include "report/html_size.h"

#include "base/format.h"

#include <limits>

namespace veltora {
namespace {

/// True when a truncation to 32 bits leaves the value as it is; `entier` is then the value.
bool estEntier(double valeur, int& entier) {
  if (!(valeur >= std::numeric_limits<int>::min() && valeur <= std::numeric_limits<int>::max())) return false;
  entier = static_cast<int>(valeur);
  return static_cast<double>(entier) == valeur;
}

const char* suffixe(int unite, bool entier) {
  switch (unite) {
    case htmlSize::pourcent:
      return entier ? "%" : " %";
    case htmlSize::pt:
      return "pt";
    case htmlSize::mm:
      return "mm";
    case htmlSize::cm:
      return "cm";
    case htmlSize::pc:
      return "pc";
    case htmlSize::in:
      return "in";
    case htmlSize::px:
      return "px";
    default:
      return "";
  }
}

}  // namespace

void htmlSize::set(double nouvelleValeur, int nouvelleUnite) {
  valeur = nouvelleValeur;
  unite = nouvelleUnite;
}

std::string htmlSize::css() const {
  int entier = 0;
  if (estEntier(valeur, entier)) return base::formater("%d%s", entier, suffixe(unite, true));
  return base::formater("%.2f%s", valeur, suffixe(unite, false));
}

}  // namespace veltora
