#pragma once

#include "arx/db/dbents.h"

#include <optional>
#include <string>
#include <vector>

/// An opening of a layout onto model space, as its groups give it.
struct AcDbViewportLook {
  AcGePoint2d center;  ///< in the layout, likewise width and height
  double width = 0.0;
  double height = 0.0;
  AcGePoint2d viewCenter;  ///< what lies in its middle, in the coordinates of the view
  AcGePoint2d target;      ///< origin of these in model space
  double twist = 0.0;      ///< of the view, radians counter-clockwise
  double scale = 1.0;      ///< units of the layout for one of model space
  bool fromAbove = true;
  bool clipped = false;                ///< by a curve, and not by its rectangle
  AcDbObjectId outline;                ///< this curve; none where the drawing lacks it
  std::vector<AcString> frozenLayers;  ///< that it does not show
};

/// @return nothing for another entity, the layout's own viewport, one that is off or without a size
ARX_API std::optional<AcDbViewportLook> acdbViewportLook(const AcDbOtherEntity& entity);
/// Whether it is the one through which the layout itself is seen, which nobody draws.
ARX_API bool acdbIsPaperViewport(const AcDbOtherEntity& entity);
