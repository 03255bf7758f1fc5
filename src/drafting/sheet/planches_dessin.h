#pragma once

#include "arx/db/dbpl.h"
#include "drafting/sheet/planche.h"

#include <vector>

namespace veltora {

/// A sheet of the drawing, as its paper lies there now.
struct plancheDessinee {
  AcGePoint2d papier;     ///< size, mm
  AcGePoint2d origine;    ///< lower left corner of the paper
  AcGeVector2d cote;      ///< along its lower side, length 1
  double echelle = 0.0;   ///< denominator for drawings in metres, by the sides as they are now
  double voulue = 0.0;    ///< with which it was made; another one when it was enlarged since
  bool deformee = false;  ///< its paper is no rectangle of its shape any more; what is above does not count
};

/// Makes the rectangle of a paper known as that of a sheet; before it is added to the working drawing.
VELTORA_API void marquerPlanche(AcDbPolyline& papier, const demandePlanche& demande);
/// The sheets of model space in the order in which they were drawn, copies included. Sheets drawn before
/// papers were marked are not among them: their size and scale cannot be told from their sides.
VELTORA_API std::vector<plancheDessinee> planchesDuDessin(AcDbDatabase& dessin);

}  // namespace veltora
