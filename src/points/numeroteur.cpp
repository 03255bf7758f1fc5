#include "points/numeroteur.h"

#include "base/format.h"

namespace veltora {
namespace {

/// Sum that wraps round instead of leaving the range.
std::int32_t somme(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

}  // namespace

std::wstring successeurLettres(std::wstring_view texte) {
  std::wstring suivant(texte);
  for (std::size_t i = suivant.size(); i-- > 0;) {
    if (suivant[i] != L'Z') {
      ++suivant[i];
      return suivant;
    }
    suivant[i] = L'A';
  }
  return L'A' + suivant;
}

void numeroteurEntier::initialiser(const AcString& nouveauPrefixe, int numeroDepart,
                                   const AcString& nouveauSuffixe, int nouveauPas) {
  prefixe = nouveauPrefixe;
  suffixe = nouveauSuffixe;
  courant = numeroDepart;
  pas = nouveauPas;
}

AcString numeroteurEntier::suivant() {
  AcString nom = nomNumerote(prefixe, courant, 0, suffixe);
  ajouter(pas);
  return nom;
}

void numeroteurEntier::incrementerSuffixe() {
  numeroteur::incrementerSuffixe();
  courant = depart;
}

void numeroteurEntier::incrementerPrefixe() {
  numeroteur::incrementerPrefixe();
  courant = depart;
}

int numeroteurEntier::numero(bool puisAvancer) {
  const int pris = courant;
  if (puisAvancer) ajouter(1);
  return pris;
}

void numeroteurEntier::ajouter(std::int32_t nombre) { courant = somme(courant, nombre); }

AcString nomNumerote(const AcString& prefixe, int depart, std::size_t rang, const AcString& suffixe) {
  return base::formater(L"%s%d%s", prefixe, somme(depart, static_cast<std::int32_t>(rang)), suffixe);
}

}  // namespace veltora
