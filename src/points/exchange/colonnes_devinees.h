#pragma once

#include "points/exchange/echantillon_liste.h"
#include "points/exchange/forme_liste.h"

/// Which column holds what, told by what stands in it: the part of `reconnaitreListe` that guesses.
namespace veltora {

struct colonnesDevinees {
  std::vector<roleColonne> colonnes;  ///< empty: no two columns look like coordinates
  bool codesTexte = false;
  std::vector<questionListe> questions;
};

/// Tells the columns of a list without titles apart. What is usual goes first: number, X, Y, Z, code,
/// observation, as far as the columns can hold it.
/// @param options  what the user said, for the answers to the questions
colonnesDevinees devinerColonnes(const std::vector<statsColonne>& stats, const optionsListe& options,
                                 const reperesListe& reperes);

/// Whether the columns X and Y that the titles name hold what they should; asks when not.
std::vector<questionListe> verifierOrdre(const std::vector<statsColonne>& stats,
                                         const std::vector<roleColonne>& colonnes,
                                         const optionsListe& options, const reperesListe& reperes);

}  // namespace veltora
