#include "calc/obs_jetons.h"

#include <algorithm>

namespace veltora {
namespace {

constexpr std::wstring_view kSeparateurs = L" \t:=";

void ajouter(std::vector<std::wstring>& jetons, std::wstring_view jeton) {
  if (!jeton.empty()) jetons.emplace_back(jeton);
}

}  // namespace

std::vector<std::wstring> decouperLigneObs(std::wstring_view ligne) {
  std::vector<std::wstring> jetons;
  if (ligne.empty() || ligne.front() == L'*') return jetons;
  std::size_t debut = 0;
  std::size_t i = 0;
  while (i < ligne.size()) {
    if (ligne[i] == L'"') {
      ajouter(jetons, ligne.substr(debut, i - debut));
      const std::size_t fin = std::min(ligne.find(L'"', i + 1), ligne.size());
      ajouter(jetons, ligne.substr(i + 1, fin - i - 1));
      i = std::min(fin + 1, ligne.size());
      debut = i;
    } else if (kSeparateurs.find(ligne[i]) != std::wstring_view::npos) {
      ajouter(jetons, ligne.substr(debut, i - debut));
      debut = ++i;
    } else {
      ++i;
    }
  }
  ajouter(jetons, ligne.substr(debut));
  return jetons;
}

}  // namespace veltora
