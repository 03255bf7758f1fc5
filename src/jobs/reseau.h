#pragma once

#include "base/remarque.h"

#include <filesystem>
#include <string>
#include <vector>

namespace veltora {

/// A network run from its file in one call, without a dialog.
struct demandeReseau {
  std::filesystem::path fichier;  ///< the .mc file
  std::filesystem::path journal;  ///< log to write, Windows-1252 with CR LF; empty for none
  bool placer = false;            ///< all points with X and Y into the current table and the working drawing
  bool malgreDoutes = false;      ///< place even what is doubtful
};

/// A point that got coordinates; Z_ABSENT marks those that it has not.
struct pointReseau {
  std::wstring nom;
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

struct resultatReseau {
  std::vector<std::wstring> connus;     ///< points of the file whose X and Y are fixed, each name once
  std::vector<std::wstring> aCalculer;  ///< the others
  std::wstring unites;                  ///< of the angles: "grades"; empty without angles
  int angles = 0;                       ///< observations that were kept, by type
  int distances = 0;
  int denivelees = 0;
  int passes = 0;                     ///< behind the one that gives the provisional points
  bool convergence = false;           ///< of X and Y
  std::vector<pointReseau> calcules;  ///< points with X and Y or a height computed, in the order of the file
  std::vector<std::wstring> residus;  ///< table of the largest ones, by name
  int places = 0;
  bool retenu = false;        ///< nothing was placed, for there are doubts
  base::Remarques remarques;  ///< what the surveyor must know and the log does not say
  std::wstring erreur;        ///< French, why there is no result; empty on success
};

/// Reads, computes X and Y, then the heights when there are height differences, writes the log, places the
/// points, in this order. X and Y stay as computed whatever the heights give. Shows nothing.
/// @return false with `erreur` set, nothing placed: the file cannot be read, holds no point or no
/// observation, has an observation from or to "NORD", no point could be computed, the log cannot be written.
/// `remarques` is filled in any case
VELTORA_API bool executerReseau(const demandeReseau& demande, resultatReseau& resultat);

}  // namespace veltora
