#pragma once

#include "arx/db/dbpl.h"
#include "base/export.h"

#include <string>

namespace veltora {

/// What was drawn into one region.
struct resultatCarroyage {
  int croix = 0;
  bool interrompu = false;  ///< the user stopped it; what was drawn until then stays
};

/// Draws the grid of a region into the current space, on the current layer and in the current text style, as
/// one anonymous group: a cross at each node within the border, and where a grid line first meets the border
/// and leaves it last, a tick and its coordinate as text.
///
/// The nodes are the multiples of the steps, reached by adding the step. A row meets the border in points of
/// ascending X; crosses stand strictly between the first and the second, the third and the fourth..., so that
/// with an odd number the last one counts for the texts only. Nothing is drawn for a region without extents,
/// or with steps that are none or vanish beside its coordinates.
/// @param region  in the plane of altitude 0: another one meets no grid line
/// @param pasX, pasY  from node to node, above 0; likewise the size of the crosses and the height of the
/// texts; all in drawing units
/// @param internes  the texts stand within the region, else outside
/// @param format  decimals of the texts, 0 to 4
VELTORA_API resultatCarroyage dessinerCarroyage(const AcDbPolyline& region, double pasX, double pasY,
                                                double tailleCroix, double tailleTexte, bool internes,
                                                int format);

/// How much a grid would draw.
struct ampleurCarroyage {
  double croix = 0.0;
  double lignes = 0.0;  ///< rows and columns
  /// Too much to be drawn unasked: more than a million crosses, or rows and columns.
  [[nodiscard]] bool demesuree() const;
  ampleurCarroyage& operator+=(const ampleurCarroyage& autre);
};

/// "le carroyage compterait 1200000 croix, sur 2200 lignes et colonnes".
VELTORA_API std::wstring texteDemesure(const ampleurCarroyage& ampleur);

/// What `dessinerCarroyage` would draw: exact, but for regions of very many rows, whose crosses are told by
/// the area.
VELTORA_API ampleurCarroyage estimerCarroyage(const AcDbPolyline& region, double pasX, double pasY);

}  // namespace veltora
