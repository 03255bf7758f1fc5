#pragma once

#include "arx/ge/gepoint.h"
#include "points/point_du_dessin.h"

#include <vector>

namespace veltora {

class tableCodification;

/// What the drawn coordinate table shows.
struct paramsTableXYZ {
  enum Cadre { kColonnes = 1, kEntete = 2, kLignes = 4, kEncadrer = 8 };

  bool numeros = true;
  bool x = true;
  bool y = true;
  bool z = true;
  bool code = false;
  bool libelle = false;
  double hauteur = 2.5;  ///< of the texts, drawing units, above 0
  int decimalesXY = 4;   ///< 0 to 5, likewise for Z
  int decimalesZ = 2;
  int cadre = kColonnes | kEntete | kEncadrer;  ///< sum of `Cadre`

  [[nodiscard]] bool aucuneColonne() const { return !(numeros || x || y || z || code || libelle); }
};

/// Draws a table of these points into the current space of the working drawing, in the current text style;
/// `coin` is its upper left corner. A code that the code table lacks is added to it when labels are shown.
/// Shows progress; when the user stops it, the rows drawn so far stay.
/// @return false when nothing was drawn: no point, no column, no drawing
VELTORA_API bool dessinerTableXYZ(const paramsTableXYZ& params, const std::vector<pointDuDessin>& points,
                                  tableCodification& codes, const AcGePoint3d& coin);

/// The same columns as one object, an `AcDbTable` with a header row, in the current space of the working
/// drawing and its current text style; the widths follow the texts. `coin` is its upper left corner. Of
/// `params` the lines count for nothing: a table has all of them.
/// @return the table; the null id, nothing drawn, without points, columns or drawing, and for 100,000 points
/// and more
VELTORA_API AcDbObjectId placerTableXYZ(const paramsTableXYZ& params,
                                        const std::vector<pointDuDessin>& points, tableCodification& codes,
                                        const AcGePoint3d& coin);

}  // namespace veltora
