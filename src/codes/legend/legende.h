#pragma once

#include "arx/db/dbid.h"
#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veltora {

/// A block definition of the drawing.
struct infoBlocks {
  std::wstring nom;
  std::int32_t occurrences = 0;  ///< references in model space
  AcDbObjectId idBlock;          ///< the block table record
  double tailleX = 0.0;          ///< of its box at scale 1, drawing units
  double tailleY = 0.0;
  double minX = 0.0;  ///< lower left corner of the box
  double minY = 0.0;
};

/// The blocks of the working drawing in the order of its table, without layouts and without those that have
/// no box.
VELTORA_API std::vector<infoBlocks> listerBlocs();

/// Sizes in drawing units.
struct demandeLegende {
  double tailleTextes = 1.0;
  double distanceLignes = 1.0;  ///< from line to line, when larger than what the sizes ask for
  double tailleBlocs = 1.0;
  double longueurTrait = 2.5;  ///< of a layer's sample
  bool legendeLayers = false;
  bool grouper = false;
};

/// A line of the legend.
struct ligneLegende {
  infoBlocks bloc;
  std::wstring description;
};

/// Draws the lines of the blocks, and below them those of the layers, into the current space. A block without
/// size takes no line.
/// @param coin  lower left corner of the first line
VELTORA_API void dessinerLegende(const std::vector<ligneLegende>& lignes, const demandeLegende& demande,
                                 const AcGePoint2d& coin);

}  // namespace veltora
