#pragma once

#include "arx/db/dbid.h"
#include "base/export.h"
#include "drafting/clothoids/clothoide.h"

namespace veltora {

/// What is drawn beside a clothoid.
struct infosClothoide {
  /// Bits: 1 a mark at the start, 2 at the end, 4 the end tangents, 8 a line from where they meet to the
  /// nearest point of the curve, with a mark there.
  int infosAlignements = 7;
  double tailleInfos = 1.5;  ///< height of the texts, drawing units
};

struct clothoideDessinee {
  AcDbObjectId polyligne;
  int sommets = 0;
};

/// Draws the curve into the current space of the working drawing, as one group without a name: a polyline
/// with the extended data, and on the layer "Infos_Alignements" what stands beside it. When `startParam`
/// exceeds `endParam` the two change places.
/// @param couleur  index, 256 for that of the layer
/// @return the null id, nothing drawn, without a drawing, and for a curve that has no length, no vertices or
/// parallel end tangents
VELTORA_API clothoideDessinee dessiner(clothoide& courbe, int couleur, const infosClothoide& infos = {});

}  // namespace veltora
