#include "points/index_noms.h"

#include "base/text.h"

namespace veltora {

cleNomPoint::cleNomPoint(std::wstring_view nom, std::wstring_view bords) {
  const std::size_t premier = nom.find_first_not_of(bords);
  if (premier == std::wstring_view::npos) return;
  nom = nom.substr(premier, nom.find_last_not_of(bords) - premier + 1);
  impossible = nom.size() > lettres.size();
  if (impossible) return;
  for (const wchar_t lettre : nom) {
    const wchar_t minuscule = base::toLower(lettre);
    if (static_cast<std::uint32_t>(minuscule) > 0xFFFF) impossible = true;
    lettres[longueur++] = static_cast<char16_t>(minuscule);
  }
}

cleNomPoint::cleNomPoint(std::string_view nom, std::wstring_view bords)
    : cleNomPoint(base::widen(nom), bords) {}

std::size_t hachageNomPoint::operator()(const cleNomPoint& cle) const noexcept {
  std::uint64_t valeur = 0xCBF29CE484222325ULL;
  for (std::size_t i = 0; i < cle.longueur; ++i)
    valeur = (valeur ^ static_cast<std::uint64_t>(cle.lettres[i])) * 0x100000001B3ULL;
  return static_cast<std::size_t>(valeur ^ (valeur >> 29U));
}

}  // namespace veltora
