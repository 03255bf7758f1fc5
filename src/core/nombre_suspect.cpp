#include "core/nombre_suspect.h"

#include "base/text.h"

#include <algorithm>

namespace veltora {
namespace {

constexpr std::wstring_view kChiffres = L"0123456789";
/// What stands behind degrees: the sign, its look-alike, or a letter.
constexpr std::wstring_view kDegres = L"°ºdD";
constexpr std::wstring_view kMinutes = L"'′’mM";
/// No-break blanks and apostrophes between thousands; a plain blank parts words.
constexpr std::wstring_view kMilliers = L"\u00A0\u202F\u2009 '’";

std::wstring_view sansSigne(std::wstring_view mot) {
  if (!mot.empty() && (mot.front() == L'+' || mot.front() == L'-')) mot.remove_prefix(1);
  return mot;
}

/// Takes the digits off the front. @return how many
std::size_t prendreChiffres(std::wstring_view& mot) {
  const std::size_t nombre = std::min(mot.find_first_not_of(kChiffres), mot.size());
  mot.remove_prefix(nombre);
  return nombre;
}

bool virguleDecimale(std::wstring_view mot) {
  mot = sansSigne(mot);
  prendreChiffres(mot);
  if (!mot.starts_with(L',')) return false;
  mot.remove_prefix(1);
  return prendreChiffres(mot) > 0 && mot.empty();
}

bool sexagesimal(std::wstring_view mot) {
  mot = sansSigne(mot);
  if (prendreChiffres(mot) == 0 || mot.empty() || kDegres.find(mot.front()) == std::wstring_view::npos)
    return false;
  mot.remove_prefix(1);
  if (mot.empty()) return true;
  const std::size_t minutes = prendreChiffres(mot);
  return minutes >= 1 && minutes <= 2 &&
         (mot.empty() || kMinutes.find(mot.front()) != std::wstring_view::npos);
}

/// Digits that are parted in threes within the word.
bool milliersDansLeMot(std::wstring_view mot) {
  mot = sansSigne(mot);
  const std::size_t tete = prendreChiffres(mot);
  if (tete < 1 || tete > 3) return false;
  bool separe = false;
  while (!mot.empty() && kMilliers.find(mot.front()) != std::wstring_view::npos) {
    mot.remove_prefix(1);
    if (prendreChiffres(mot) != 3) return false;
    separe = true;
  }
  return separe && (mot.empty() || mot.front() == L'.' || mot.front() == L',');
}

bool troisChiffres(std::wstring_view mot, bool& decimales) {
  if (prendreChiffres(mot) != 3) return false;
  decimales = mot.starts_with(L'.') || mot.starts_with(L',');
  if (decimales) mot.remove_prefix(1);
  prendreChiffres(mot);
  return mot.empty();
}

bool teteDeMilliers(std::wstring_view mot) {
  mot = sansSigne(mot);
  const std::size_t chiffres = prendreChiffres(mot);
  return chiffres >= 1 && chiffres <= 3 && mot.empty();
}

}  // namespace

std::wstring raisonNombre(std::wstring_view texte) {
  const std::wstring mot = base::trim(texte);
  if (virguleDecimale(mot)) {
    std::wstring avecPoint = mot;
    std::replace(avecPoint.begin(), avecPoint.end(), L',', L'.');
    return L"virgule décimale, écrire " + avecPoint;
  }
  if (sexagesimal(mot)) return L"degrés, minutes et secondes, écrire un nombre décimal";
  return milliersDansLeMot(mot) ? kRaisonMilliers : L"";
}

bool milliersSepares(std::wstring_view tete, std::wstring_view suite) {
  bool decimales = false;
  return teteDeMilliers(tete) && troisChiffres(suite, decimales);
}

bool milliersSepares(const std::vector<std::wstring>& mots, std::size_t attendus) {
  if (mots.size() <= attendus) return false;
  std::size_t nombres = 0;
  for (std::size_t i = 0; i < mots.size(); ++nombres) {
    bool decimales = !teteDeMilliers(mots[i++]);
    while (!decimales && i < mots.size() && troisChiffres(mots[i], decimales)) ++i;
  }
  return nombres <= attendus;
}

}  // namespace veltora
