#include "report/html_text.h"

#include "base/format.h"

#include <algorithm>

namespace veltora {
namespace {

template <class Signe>
std::basic_string<Signe> sansBalises(std::basic_string_view<Signe> texte) {
  std::basic_string<Signe> resultat;
  for (const Signe signe : texte) {
    const std::string_view entite = signe == '&' ? "&amp;" : signe == '<' ? "&lt;" : "";
    if (entite.empty())
      resultat += signe;
    else
      resultat.append(entite.begin(), entite.end());
  }
  return resultat;
}

}  // namespace

std::string echappe(std::string_view texte) { return sansBalises(texte); }
std::wstring echappe(std::wstring_view texte) { return sansBalises(texte); }

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
