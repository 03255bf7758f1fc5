#pragma once

#include "base/remarque.h"
#include "calc/helmert/helmert.h"

#include <filesystem>
#include <string>
#include <vector>

namespace veltora {

/// A transformation run from a file of pairs in one call, without a dialog.
struct demandeHelmert {
  std::filesystem::path fichier;  ///< lines `[name] x y X Y`
  std::filesystem::path rapport;  ///< report to write; empty for none; the Word form when it ends in ".doc"
  bool appliquer = false;         ///< to all entities of the model space of the working drawing
  bool tables = false;            ///< carry the points of all tables of the drawing with it, in X and Y
  std::filesystem::path points;   ///< list of coordinates to carry, as .xyz is told; empty for none
  std::filesystem::path
      vers;                   ///< the carried list: X and Y are new, altitude, code, observation as they were
  bool malgreDoutes = false;  ///< transform even when the parameters are doubtful
};

struct residuHelmert {
  std::wstring nom;
  AcGeVector2d ecart;  ///< carried point less final point
};

struct resultatHelmertUnAppel {
  resultatHelmert parametres;
  std::vector<residuHelmert> residus;  ///< one a pair, in order
  ecartsHelmert ecarts;
  AcGeVector2d
      translation;  ///< for the origin of coordinates: X = a x + b y + translation.x, Y = a y - b x + ...
  int portes = 0;   ///< points of the list that was written
  int transformees = 0;       ///< entities carried
  int refusees = 0;           ///< entities that would not be
  bool retenu = false;        ///< nothing was transformed, for there are doubts
  base::Remarques remarques;  ///< what was passed over
  std::wstring erreur;        ///< French, why there is no result; empty on success
};

/// Reads, computes, writes the report, then the carried list, transforms, in this order; the first failure
/// ends it, and nothing is transformed then.
/// @return false with `erreur` set: the file cannot be read or has fewer than three pairs, the pairs
/// determine no transformation, the list cannot be read or holds no point, the drawing holds what cannot be
/// transformed, the report or the carried list cannot be written
VELTORA_API bool executerHelmert(const demandeHelmert& demande, resultatHelmertUnAppel& resultat);

}  // namespace veltora
