#include "calc/helmert/couples_fichier.h"

#include "base/format.h"
#include "base/lines/line_reader.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/obs_jetons.h"
#include "core/nombre_suspect.h"

#include <array>
#include <cmath>

namespace veltora {
namespace {

using Jetons = std::vector<std::wstring>;

constexpr std::size_t kNombres = 4;
/// Longest piece of a line that a remark shows.
constexpr std::size_t kExtrait = 60;

/// The last four tokens as numbers. @return false when one is none
bool lireNombres(const Jetons& jetons, std::array<double, kNombres>& valeurs) {
  for (std::size_t i = 0; i < kNombres; ++i) {
    const std::wstring& jeton = jetons[jetons.size() - kNombres + i];
    if (!base::lireReelExact(base::narrow(jeton), valeurs[i]) || !std::isfinite(valeurs[i])) return false;
  }
  return true;
}

/// What of a line that was left out looks like a number.
std::wstring raisonDe(const Jetons& jetons) {
  for (const std::wstring& jeton : jetons) {
    const std::wstring raison = raisonNombre(jeton);
    if (!raison.empty()) return L" : « " + jeton + L" », " + raison;
  }
  return milliersSepares(jetons, kNombres + 1) ? std::wstring(L" : ") + kRaisonMilliers : std::wstring();
}

void omettre(int ligne, const std::wstring& texte, const Jetons& jetons, base::Remarques& remarques) {
  const std::wstring phrase =
      base::formater(L"ignorée, « %s » n'est pas de la forme [nom] x y X Y", texte.substr(0, kExtrait));
  const std::wstring raison = raisonDe(jetons);
  if (raison.empty())
    remarques.omettre(ligne, phrase);
  else
    remarques.douter(ligne, phrase + raison);
}

}  // namespace

couplesNommes lireCouples(std::string_view octets) {
  couplesNommes lus;
  base::LineReader lignes(octets);
  while (lignes.next()) {
    const std::wstring texte = base::trim(lignes.wide());
    if (texte.empty() || texte.front() == L'#') continue;
    if (const auto coupe = lignes.cut()) lus.remarques.ajouter(*coupe);
    const Jetons jetons = decouperLigneObs(texte);
    if (jetons.empty()) continue;
    std::array<double, kNombres> v{};
    const bool nomme = jetons.size() == kNombres + 1;
    if ((!nomme && jetons.size() != kNombres) || !lireNombres(jetons, v)) {
      omettre(lignes.number(), texte, jetons, lus.remarques);
      continue;
    }
    lus.noms.push_back(nomme ? jetons[0] : L"ligne " + std::to_wstring(lignes.number()));
    lus.couples.depart.emplace_back(v[0], v[1]);
    lus.couples.arrivee.emplace_back(v[2], v[3]);
  }
  return lus;
}

}  // namespace veltora
