#include "points/comparer_numeros.h"

#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <numeric>

namespace veltora {

cleNumero::cleNumero(std::wstring_view nom) {
  constexpr std::wstring_view kChiffres = L"0123456789";
  const std::size_t debut = std::min(nom.find_first_of(kChiffres), nom.size());
  const std::size_t fin = std::min(nom.find_first_not_of(kChiffres, debut), nom.size());
  prefixe = base::toLower(nom.substr(0, debut));
  numero = base::lireEntier(nom.substr(debut, fin - debut));
  suffixe = base::toLower(nom.substr(fin));
}

int comparerNumeros(const cleNumero& a, const cleNumero& b) {
  if (a.prefixe.empty() != b.prefixe.empty()) return a.prefixe.empty() ? 1 : -1;
  if (const int ordre = a.prefixe.compare(b.prefixe)) return ordre;
  if (a.numero != b.numero) return a.numero < b.numero ? -1 : 1;
  return a.suffixe.compare(b.suffixe);
}

int comparerNumeros(std::wstring_view a, std::wstring_view b) {
  return comparerNumeros(cleNumero(a), cleNumero(b));
}

std::vector<int> rangsTries(std::size_t nombre,
                            const std::function<int(std::size_t, std::size_t)>& comparer) {
  std::vector<std::size_t> ordre(nombre);
  std::iota(ordre.begin(), ordre.end(), std::size_t{0});
  std::stable_sort(ordre.begin(), ordre.end(),
                   [&](std::size_t a, std::size_t b) { return comparer(a, b) < 0; });
  std::vector<int> rangs(nombre);
  for (std::size_t i = 1; i < nombre; ++i)
    rangs[ordre[i]] = rangs[ordre[i - 1]] + (comparer(ordre[i - 1], ordre[i]) != 0 ? 1 : 0);
  return rangs;
}

}  // namespace veltora
