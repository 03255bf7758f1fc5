#include "points/exchange/verifier_xyz.h"

#include "points/exchange/colonnes_devinees.h"
#include "points/exchange/echantillon_liste.h"

#include <algorithm>

namespace veltora {
namespace {

using enum roleColonne;

using Colonnes = std::vector<roleColonne>;

/// The columns of an `.xyz` list, as many as are looked at.
const Colonnes kColonnes{kNumero, kX, kY, kZ, kCode};

/// A field for each column: a blank column Z between tabs is an empty one.
void decouper(std::string_view ligne, std::vector<champListe>& champs) {
  decouperLigne(ligne, ' ', champs);
  std::vector<champListe> colonnes;
  decouperLigne(ligne, '\t', colonnes);
  if (colonnes.size() > 4 && colonnes[3].texte.empty() && champs.size() >= 3)
    champs.insert(champs.begin() + 3, champListe{});
}

std::vector<statsColonne> compter(const echantillonListe& lignes) {
  std::vector<statsColonne> stats(kColonnes.size());
  std::vector<champListe> champs;
  for (const auto& ligne : lignes.lignes) {
    decouper(ligne.texte, champs);
    if (champs.size() < 3 || !estNombre(champs[1], '.') || !estNombre(champs[2], '.')) continue;
    for (std::size_t c = 0; c < stats.size(); ++c)
      stats[c].ajouter(c < champs.size() ? &champs[c] : nullptr, '.');
  }
  return stats;
}

/// Question with the one reading that would explain what was met.
questionListe question(const std::wstring& texte, const std::wstring& sens, Colonnes colonnes) {
  optionsListe options;
  options.colonnes = std::move(colonnes);
  return {texte, {{sens, std::move(options)}}};
}

/// Names that are numbers with decimals, or the X of a pair of national coordinates.
std::optional<questionListe> sansNumero(const std::vector<statsColonne>& stats) {
  const statsColonne& nom = stats[0];
  const auto zone = [&stats](std::size_t c) {
    const ordreXY ordre = jugerOrdre(placesDe(stats[c], stats[c + 1]), std::nullopt).ordre;
    return ordre == ordreXY::kDroit || ordre == ordreXY::kEchange;
  };
  const bool decimales = nom.reelle() && 2 * nom.aDecimales >= nom.remplis;
  const bool coordonnees = nom.numerique() && zone(0) && !zone(1);
  if (!decimales && !coordonnees) return std::nullopt;
  return question(
      L"les numéros sont des nombres à décimales ou des coordonnées : la liste semble être sans numéros",
      L"sans numéros", {kX, kY, kZ, kCode, kObservation});
}

std::optional<questionListe> codesAilleurs(const std::vector<statsColonne>& stats) {
  const statsColonne& z = stats[3];
  const statsColonne& code = stats[4];
  const auto surtoutReelle = [](const statsColonne& s) { return 2 * s.aDecimales > s.nombres; };
  if (!z.codes() || !surtoutReelle(stats[1]) || !surtoutReelle(stats[2])) return std::nullopt;
  if (code.reelle() && surtoutReelle(code))
    return question(L"les altitudes sont entières et les codes ont des décimales : ils semblent échangés",
                    L"code avant altitude", {kNumero, kX, kY, kCode, kZ, kObservation});
  if (code.numerique()) return std::nullopt;
  return question(L"les altitudes sont entières, des codes semblent tenir leur place", L"sans altitudes",
                  {kNumero, kX, kY, kCode, kObservation});
}

}  // namespace

std::vector<questionListe> verifierXyz(std::string_view octets, const reperesListe& reperes) {
  const echantillonListe lignes(octets);
  const std::vector<statsColonne> stats = compter(lignes);
  if (stats[1].nombres == 0) return {};
  if (auto sans = sansNumero(stats)) return {std::move(*sans)};
  optionsListe toutes;
  std::vector<questionListe> questions =
      verifierOrdre(stats, {kNumero, kX, kY, kZ, kCode, kObservation}, toutes, reperes);
  if (auto ailleurs = codesAilleurs(stats)) questions.push_back(std::move(*ailleurs));
  return questions;
}

}  // namespace veltora
