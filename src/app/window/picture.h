#pragma once

#include "app/window/view_place.h"
#include "arx/db/dbid.h"
#include "arx/ge/gematrix.h"

#include <QImage>
#include <QPicture>
#include <vector>

class AcDbDatabase;
class AcDbEntity;
class AcDbExtents;

namespace veltora::app {

/// A picture of the model space of a drawing as it looks at a place: what cannot be seen there is passed by,
/// what is smaller than a pixel is a dot. @param dark  on a dark background  @param smooth  without steps in
/// leaning lines, which takes longer
QImage pictureOf(AcDbDatabase& database, const ViewPlace& place, bool dark, bool smooth = false);

/// Draws a part of such a picture anew. @param changed  the part of the drawing that looks otherwise
/// @return false, with nothing drawn, when that is so much that all of it is as soon drawn
bool drawChanged(QImage& picture, AcDbDatabase& database, const ViewPlace& place, bool dark,
                 const AcDbExtents& changed, bool smooth = false);

/// Paints entities over what is there, in one colour, wider than they are.
void paintHighlighted(QPainter& painter, AcDbDatabase& database, const std::vector<AcDbObjectId>& entities,
                      const ViewPlace& place, const QColor& color);

/// Paints something that stands in no drawing yet, as it is dragged.
void paintDragged(QPainter& painter, AcDbDatabase& database, const AcDbEntity& entity, const ViewPlace& place,
                  bool dark);

/// Entities in one colour, to be painted under any map: those about the view as far as its size beyond its
/// borders, in its pixels. Of very many the first ones stand for all.
QPicture recordOf(AcDbDatabase& database, const std::vector<AcDbObjectId>& entities, const ViewPlace& place,
                  const QColor& color);

/// What a map of the drawing means for the pixels of a view.
QTransform pixelMapOf(const AcGeMatrix3d& map, const ViewPlace& place);

/// The colour of an empty view.
QColor backgroundOf(bool dark);

}  // namespace veltora::app
