#include "core/valider_nombre.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace veltora {
namespace {

enum Classe : std::size_t { kChiffre, kSigne, kPoint, kExposant, kAutre };
constexpr std::int8_t kEchec = -1;

struct Etat {
  std::array<std::int8_t, 5> suivant;  ///< by class of the next character
  bool accepte;
};

constexpr std::array<Etat, 10> kEtats{{
    {{8, 1, 9, kEchec, kEchec}, false},            // 0 start
    {{2, kEchec, kEchec, kEchec, kEchec}, false},  // 1 after the sign
    {{2, kEchec, 3, kEchec, kEchec}, true},        // 2 integer behind a sign
    {{4, kEchec, kEchec, 5, kEchec}, false},       // 3 just behind the point
    {{4, kEchec, kEchec, 5, kEchec}, true},        // 4 fraction
    {{7, 6, kEchec, kEchec, kEchec}, false},       // 5 behind "E"
    {{7, kEchec, kEchec, kEchec, kEchec}, false},  // 6 sign of the exponent
    {{7, kEchec, kEchec, kEchec, kEchec}, true},   // 7 digits of the exponent
    {{2, kEchec, 3, kEchec, kEchec}, true},        // 8 integer without sign
    // Deliberate (validernombre-point-initial): no digit behind a leading point makes it a number.
    {{9, kEchec, kEchec, kEchec, kEchec}, false},  // 9 leading point
}};

template <class Char>
Classe classeDe(Char c) {
  if (c >= Char('0') && c <= Char('9')) return kChiffre;
  if (c == Char('+') || c == Char('-')) return kSigne;
  if (c == Char('.')) return kPoint;
  // Deliberate (validernombre-exposant): only the capital letter, and only behind a point.
  return c == Char('E') ? kExposant : kAutre;
}

template <class Char>
bool finDeNombre(Char c) {
  return c == Char(0) || c == Char('\t') || c == Char('\n') || c == Char('\r') || c == Char(' ');
}

template <class Vue>
bool valider(Vue texte) {
  using Char = typename Vue::value_type;
  std::size_t i = 0;
  while (i < texte.size() && texte[i] == Char(' ')) ++i;
  std::size_t etat = 0;
  for (; i < texte.size() && !finDeNombre(texte[i]); ++i) {
    const std::int8_t suivant = kEtats[etat].suivant[classeDe(texte[i])];
    if (suivant == kEchec) return false;
    etat = static_cast<std::size_t>(suivant);
  }
  while (i < texte.size() && texte[i] == Char(' ')) ++i;
  return kEtats[etat].accepte && (i == texte.size() || texte[i] == Char(0));
}

}  // namespace

bool validerNombre(std::wstring_view texte) { return valider(texte); }
bool validerNombre(std::string_view texte) { return valider(texte); }

}  // namespace veltora
