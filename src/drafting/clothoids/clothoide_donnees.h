#pragma once

#include "base/export.h"
#include "drafting/clothoids/clothoide.h"

class AcDbEntity;
class TiXmlElement;
struct resbuf;

/// Clothoids kept with polylines of a drawing, and in XML files.
namespace veltora {

/// The extended data of a polyline along the curve: its ends, where their tangents meet, the centres at the
/// ends. Registers their application in the working drawing.
/// @return a chain that the caller owns; null when the curve has no length or its end tangents are parallel
VELTORA_API resbuf* xDataClothoide(const clothoide& courbe);

/// Rebuilds the curve from such a chain, its 1001 item in front or not, by `definirParRayons`: on whichever
/// side of the chord the rule there takes.
/// @return false, `courbe` unchanged, when the chain is another one or no clothoid has these data
VELTORA_API bool lireXData(clothoide& courbe, const resbuf* chaine);

/// Rebuilds the curve from the extended data of a polyline, on the side of the chord on which the polyline
/// lies: its vertices tell, which lie on the curve within 0.01 drawing units.
/// @param entite  open; of an entity that is no polyline the data alone count
/// @return false, `courbe` unchanged, without such data, and when the vertices lie on neither side's curve,
/// because the polyline was changed since: then it is what its segments show
VELTORA_API bool lireXDataEntite(clothoide& courbe, const AcDbEntity& entite);

/// Adds the fields as child elements, six decimals each.
VELTORA_API void ecrireXML(const clothoide& courbe, TiXmlElement& element);
/// Adds them to a new child element.
/// @param nom  not used: the child is called "nomvar"
VELTORA_API void ecrireXML(const clothoide& courbe, TiXmlElement& element, const char* nom);
/// @return false, `courbe` unchanged, at the first element that is missing, empty or no finite number
VELTORA_API bool lireXML(clothoide& courbe, const TiXmlElement& element);

}  // namespace veltora
