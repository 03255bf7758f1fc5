#include "points/attribs_points.h"

namespace veltora {

const attribsPoints etiquettesPoints;

}  // namespace veltora
