#pragma once

#include "arx/db/resbuf.h"
#include "arx/ed/acutads.h"
#include "arx/ge/gematrix.h"

#include <vector>

/// A vector drawn over the drawing until the next redraw.
struct AcEdTransientVector {
  AcGePoint3d from;
  AcGePoint3d to;
  int color = 7;  ///< 1 to 255, -1 to invert
  bool highlight = false;
};

/// Draws a vector between two points in world coordinates.
ARX_API int acedGrDraw(const ads_point from, const ads_point to, int color, int highlight);
/// Draws vectors: a chain of pairs of points, with RTSHORT items that set the colour of those behind.
/// `matrix` is applied when not null. RTERROR, nothing drawn, for a chain of another shape.
ARX_API int acedGrVecs(const resbuf* vectors, const ads_matrix matrix);
/// With a null vector: clears what was drawn. Result RTNORM.
ARX_API int acedRedraw(const ads_name entity, int mode);
/// What is drawn now, for a window.
ARX_API const std::vector<AcEdTransientVector>& acedTransientGraphics();

/// The view of the working drawing, kept in its viewport record "*Active".
struct AcEdView {
  AcGePoint2d center;
  double height = 297.0;
  double aspect = 1.5;  ///< width / height
};
ARX_API AcEdView acedView();
ARX_API Acad::ErrorStatus acedSetView(const AcGePoint2d& center, double height);
/// Width over height of the window that shows the view, in place of what the record tells; 0 for no window.
ARX_API void acedSetViewAspect(double aspect);
/// Shows a rectangle as a whole, in the middle; a degenerate one only moves the view.
ARX_API Acad::ErrorStatus acedZoomWindow(const AcGePoint2d& a, const AcGePoint2d& b);
/// Shows all of model space with a small margin. `eInvalidExtents` when nothing there has a size.
ARX_API Acad::ErrorStatus acedZoomExtents();
/// Size of a screen pixel in drawing units, as if the view were 1000 pixels high.
ARX_API double acedPixelSize();
