#pragma once

#include "arx/ge/gepoint.h"

#include <QPointF>
#include <QSize>

namespace veltora::app {

/// Which part of a drawing a widget or a picture shows.
struct ViewPlace {
  AcGePoint2d center;
  double unitsPerPixel = 1.0;  ///< above 0
  QSize size;                  ///< pixels

  bool operator==(const ViewPlace&) const = default;
  [[nodiscard]] QPointF toPixel(const AcGePoint2d& world) const {
    return {size.width() / 2.0 + (world.x - center.x) / unitsPerPixel,
            size.height() / 2.0 - (world.y - center.y) / unitsPerPixel};
  }
  [[nodiscard]] AcGePoint2d toWorld(const QPointF& pixel) const {
    return {center.x + (pixel.x() - size.width() / 2.0) * unitsPerPixel,
            center.y - (pixel.y() - size.height() / 2.0) * unitsPerPixel};
  }
  [[nodiscard]] double height() const { return size.height() * unitsPerPixel; }
  [[nodiscard]] double width() const { return size.width() * unitsPerPixel; }
};

}  // namespace veltora::app
