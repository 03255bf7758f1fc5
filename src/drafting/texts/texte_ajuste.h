#pragma once

#include "arx/db/dbid.h"
#include "arx/db/dbtext.h"
#include "base/export.h"

#include <string>

namespace veltora {

/// A limit on the width that sets none.
inline constexpr double kSansLimite = 1e36;

/// How a text is drawn so that it is no wider than a limit.
struct ajustementTexte {
  double facteurLargeur = 1.0;  ///< 0.6 to 1, of the width
  double facteurHauteur = 1.0;  ///< 0.7 to 1, of the height
};
/// @param largeur  of the text at width factor 1, drawing units
/// @param limite  above 0; a text that needs more than both factors give still exceeds it
VELTORA_API ajustementTexte ajusterLargeur(double largeur, double limite);

/// A text to be placed.
struct texteAPlacer {
  std::wstring style;  ///< its first letter is the justification: C centre, M middle, R right, else left
  AcGePoint3d point;
  double hauteur = 0.0;   ///< drawing units
  double rotation = 0.0;  ///< radians
  std::wstring texte;
  double facteurLargeur = 1.0;
  double limite = kSansLimite;  ///< of the width
};
/// Adds the text to the model space of the working drawing, in its current text style and layer.
/// @return the null id when there is no drawing or the height is not above 0
VELTORA_API AcDbObjectId placerTexte(const texteAPlacer& demande);

}  // namespace veltora
