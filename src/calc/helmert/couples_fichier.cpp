#include "calc/helmert/couples_fichier.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/obs_jetons.h"
#include "calc/traverse/obs_fichier.h"

#include <array>
#include <cmath>

namespace veltora {
namespace {

constexpr std::size_t kNombres = 4;
/// Longest piece of a line that a remark shows.
constexpr std::size_t kExtrait = 60;

/// The last four tokens as numbers. @return false when one is none
bool lireNombres(const jetonsObs& jetons, std::array<double, kNombres>& valeurs) {
  for (std::size_t i = 0; i < kNombres; ++i) {
    const std::wstring& jeton = jetons[jetons.size() - kNombres + i];
    if (!base::lireReelExact(base::narrow(jeton), valeurs[i]) || !std::isfinite(valeurs[i])) return false;
  }
  return true;
}

}  // namespace

couplesNommes lireCouples(std::string_view octets) {
  couplesNommes lus;
  const bool utf8 = base::isUtf8(octets);
  int numero = 0;
  parcourirLignes(octets, [&](std::string_view ligne) {
    ++numero;
    const std::wstring texte = base::trim(utf8 ? base::fromUtf8(ligne) : base::widen(ligne), L" \t\xFEFF");
    if (texte.empty() || texte.front() == L'#') return;
    const jetonsObs jetons = decouperLigneObs(texte);
    if (jetons.empty()) return;
    std::array<double, kNombres> v{};
    const bool nomme = jetons.size() == kNombres + 1;
    if ((!nomme && jetons.size() != kNombres) || !lireNombres(jetons, v)) {
      lus.remarques.push_back(
          base::formater(L"ligne %d : ignorée, « %s » n'est pas de la forme [nom] x y X Y", numero,
                         texte.substr(0, kExtrait).c_str()));
      return;
    }
    lus.noms.push_back(nomme ? jetons[0] : L"ligne " + std::to_wstring(numero));
    lus.couples.depart.emplace_back(v[0], v[1]);
    lus.couples.arrivee.emplace_back(v[2], v[3]);
  });
  return lus;
}

}  // namespace veltora
