#pragma once

#include "base/remarque.h"
#include "calc/adjustment/reseau_compense.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace veltora {

/// A network adjusted with weights, from its file in one call, without a dialog.
struct demandeCompenser {
  std::filesystem::path fichier;   ///< .mc or .gkf, told by what it holds
  std::filesystem::path epoque;    ///< the same network measured later; empty for none
  std::filesystem::path formules;  ///< .fmc; empty for none
  std::filesystem::path json;      ///< empty for none, likewise the others
  std::filesystem::path rapport;   ///< HTML
  std::filesystem::path plan;      ///< PDF, SVG or PNG of the drawing
  ecartsParGenre ecarts;
  robustesse methode = robustesse::aucune;
  bool prevoir = false;
  std::vector<std::pair<std::wstring, std::wstring>> paires;  ///< whose relative ellipses are wanted
  bool dessiner = false;         ///< points, ellipses and sides into the working drawing
  double echelleEllipses = 0.0;  ///< by which they are enlarged; 0 for a round one
  bool malgreDoutes = false;     ///< draw even what is doubtful
};

struct resultatCompenser {
  std::vector<std::wstring> bilan;  ///< lines to be shown, likewise the others
  std::vector<std::wstring> points;
  std::vector<std::wstring> mesures;  ///< the worst ones
  std::vector<std::wstring> epoques;  ///< the comparison
  std::vector<std::wstring> paires;   ///< those that were asked for
  double echelleEllipses = 0.0;       ///< of what was drawn
  int places = 0;                     ///< points that were placed
  bool retenu = false;                ///< nothing was drawn, for there are doubts
  base::Remarques remarques;
  std::wstring erreur;  ///< French, why there is no result; empty on success
};

/// Reads, adjusts, draws, writes, in this order. @return false with `erreur` set: the file cannot be read or
/// is refused, the network floats, a layer is locked, a file cannot be written
VELTORA_API bool executerCompenser(const demandeCompenser& demande, resultatCompenser& resultat);

}  // namespace veltora
