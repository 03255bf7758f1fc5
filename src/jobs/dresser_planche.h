#pragma once

#include "base/export.h"
#include "base/remarque.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// A sheet around what the working drawing holds, in one call.
namespace veltora {

struct demandeDressage {
  std::wstring format;      ///< one of `motsFormats`
  double echelle = 1000.0;  ///< denominator, above 0
  double marge = 10.0;      ///< of the frame, mm
  std::wstring cartouche;   ///< a drawing, or the name of one of the folder of title blocks; empty for none
  int emplacement = 0;      ///< of it: 0 lower left, 1 lower right, 2 upper left, 3 upper right corner
  std::vector<std::pair<std::wstring, std::wstring>> attributs;  ///< of it: tag and text
  int carroyage = 0;   ///< 0 none, 1 all the free space, 2 not beside the title block
  double pas = 100.0;  ///< of the grid, drawing units
  double croix = 5.0;  ///< mm, likewise the next
  double texte = 2.5;
  int decimales = 1;
  /// Lower left corner of the paper; none: the middle of the paper lies on that of the drawing's extents.
  std::optional<std::pair<double, double>> point;
  double orientation = 0.0;  ///< of the lower side, grades counter-clockwise from +X
  bool malgreDoutes = false;
};

struct resultatDressage {
  double x = 0.0;  ///< where the lower left corner of the paper lies
  double y = 0.0;
  int croix = 0;
  bool retenu = false;        ///< nothing was drawn, for there are doubts
  base::Remarques remarques;  ///< what lies outside the frame, attributes that the title block lacks...
  std::wstring erreur;        ///< French, why nothing was drawn; empty on success
};

/// The paper formats as a command line names them, in their order.
VELTORA_API std::vector<std::string> motsFormats();

/// @return false with `erreur` set, nothing drawn: no drawing, nothing to centre on, a margin that leaves
/// nothing of the paper, a title block that cannot be read; also when the user stops the grid, and then what
/// was drawn stays
VELTORA_API bool dresserPlanche(const demandeDressage& demande, resultatDressage& resultat);

}  // namespace veltora
