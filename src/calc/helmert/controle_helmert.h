#pragma once

#include "base/remarque.h"
#include "calc/helmert/couples_fichier.h"

namespace veltora {

/// What makes the pairs of a transformation doubtful: one that disagrees with all others, pairs of which one
/// system is a mirror image (X and Y exchanged), a bad fit on the whole; and how much the computation with
/// raw coordinates loses far from the origin. Causes come from fits on centred coordinates, which lose no
/// digits: a = sum(x X + y Y) / s, b = sum(y X - x Y) / s, s = sum(x^2 + y^2) about the means.
/// @param lus  three pairs or more, with their names
/// @param portes  the departure points as the transformation carried them
VELTORA_API void controlerCouples(const couplesNommes& lus, const std::vector<AcGePoint2d>& portes,
                                  base::Remarques& remarques);

/// X = a x + b y + c.x and Y = a y - b x + c.y: the translation c for the origin of coordinates.
VELTORA_API AcGeVector2d translationOrigine(const std::vector<AcGePoint2d>& depart,
                                            const resultatHelmert& resultat);
/// A point carried so.
VELTORA_API AcGePoint2d porterPoint(const AcGePoint2d& point, const resultatHelmert& resultat,
                                    const AcGePoint2d& centre);

}  // namespace veltora
