#pragma once

#include "arx/plot/plpen.h"

/// The colour that drawings mean by an index from 1 to 255: 1 to 9 as named, 10 to 249 by hue, value and
/// saturation, 250 to 255 greys. Index 7 is the colour that stands out from the background: white here.
ARX_API AcPlColor acplIndexColor(int index);
