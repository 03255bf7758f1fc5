#include "report/html_text.h"

#include "base/format.h"

#include <algorithm>

namespace veltora {

htmlText::htmlText(std::string_view nouveauTexte, std::string_view nouveauxAttributs)
    : texte(nouveauTexte), attributs(nouveauxAttributs) {}

htmlText::htmlText(double nombre, int decimales, std::string_view nouveauxAttributs, int nouveauType)
    : texte(texteNombre(nombre, decimales)), attributs(nouveauxAttributs), type(nouveauType) {}

void htmlText::set(int nouveauType, std::string_view nouveauTexte, std::string_view nouveauxAttributs) {
  type = nouveauType;
  texte = nouveauTexte;
  attributs = nouveauxAttributs;
}

std::string htmlText::html() const {
  switch (type) {
    case element:
      return "<LI " + attributs + ">" + texte + "</LI>";
    case paragraphe:
      return "<P " + attributs + ">" + texte + "</P>";
    default:
      return {};
  }
}

std::string texteNombre(double valeur, int decimales) {
  return base::formater("%.*f", std::clamp(decimales, 0, 99), valeur);
}

}  // namespace veltora
