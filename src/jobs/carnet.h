#pragma once

#include "base/export.h"
#include "base/remarque.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace veltora {

/// A field book in GSI form, read in one call without a dialog.
struct demandeCarnet {
  std::filesystem::path fichier;
  std::filesystem::path canevas;   ///< list of the known points to write, `.xyz`; empty for none
  std::filesystem::path lectures;  ///< sheet of all sightings to write, CSV; empty for none
  std::filesystem::path detail;    ///< all words in plain text to write; empty for none
  bool placer = false;             ///< known points into the current table and the working drawing
  bool malgreDoutes = false;       ///< place even what is doubtful
};

/// A point that a sighting gave X and Y; metres, Z_ABSENT without altitude.
struct pointCarnet {
  std::wstring nom;  ///< without outer blanks
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

struct resultatCarnet {
  std::size_t lignes = 0;
  std::size_t mots = 0;
  std::size_t visees = 0;
  std::wstring finsDeLigne;          ///< "CR LF", "LF (20), CR (3)"; empty for a file of one line without end
  std::vector<pointCarnet> canevas;  ///< in the order of the first sighting, with the coordinates of the last
  int places = 0;
  bool retenu = false;        ///< nothing was placed, for there are doubts
  base::Remarques remarques;  ///< what the reading passed over, or read otherwise than it was meant
  std::wstring erreur;        ///< French, why there is no result; empty on success
};

/// Reads the book into the emptied table of the process, writes the files, places the points, in this order.
/// @return false with `erreur` set, nothing placed: the file cannot be read, holds no sighting, or a file
/// cannot be written. `remarques` is filled in any case
VELTORA_API bool lireCarnetUnAppel(const demandeCarnet& demande, resultatCarnet& resultat);

}  // namespace veltora
