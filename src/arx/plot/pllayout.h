#pragma once

#include "arx/plot/pldraw.h"

#include <string>
#include <vector>

/// A layout of paper space: a sheet with openings onto model space.
struct AcPlLayout {
  std::wstring name;
  AcDbObjectId space;  ///< its block
  double width = 0.0;  ///< of the paper, mm, as it is turned; 0 when the layout does not say
  double height = 0.0;
  double mmPerUnit = 1.0;    ///< of paper space
  AcGePoint2d corner;        ///< of paper space, at the lower left corner of the paper
  double denominator = 0.0;  ///< scale of its largest opening for drawings in metres; 0 without one
  bool empty = true;         ///< nothing stands in it but its own viewport
};

/// The layouts of a drawing in the order of their tabs, model space left out.
ARX_API std::vector<AcPlLayout> acplLayouts(AcDbDatabase& database);

/// Draws a layout: what stands in it, and model space through its openings at their scales, without the
/// layers that are frozen there.
/// @param view  paper, colours and layers; how paper space lies on it
ARX_API AcPlOmissions acplPlotLayout(AcDbDatabase& database, const AcPlLayout& layout, const AcPlView& view,
                                     AcPlPen& pen);
