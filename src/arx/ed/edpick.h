#pragma once

#include "arx/db/dbid.h"
#include "arx/ed/edoutline.h"
#include "arx/ge/gematrix.h"

#include <optional>
#include <vector>

class AcDbDatabase;
class AcDbEntity;
class AcEdFilter;
struct AcEdBox;

/// What was found at a picked point.
struct AcEdHit {
  AcDbObjectId entity;                   ///< of model space
  AcDbObjectId innermost;                ///< the entity or attribute that is really drawn there
  std::vector<AcDbObjectId> references;  ///< block references around it, innermost first
  AcGeMatrix3d toWorld;                  ///< from the innermost entity's coordinates
  double distance = 0.0;
};

/// Searches among the entities of model space that can be seen, by their look (arx/gi). Distances and windows
/// are those of the plan view.
class ARX_API AcEdPicker {
public:
  /// How entities are found by place: by `AcDbSpaceIndex`, or by measuring each anew, which finds the same.
  enum class Way { kIndex, kWalk };
  explicit AcEdPicker(AcDbDatabase& database, Way way = Way::kIndex) : m_database(database), m_way(way) {}
  /// Nearest entity within `aperture` of a point, of equals the one drawn last. What is kept as file text
  /// counts as a tenth of the aperture farther: a hatch leaves its border to the polyline there.
  [[nodiscard]] std::optional<AcEdHit> pick(const AcGePoint3d& point, double aperture) const;
  /// Everything drawn within `aperture` of a point, parts of blocks and attributes one by one, in order of
  /// drawing; a block reference itself where its place lies there.
  [[nodiscard]] std::vector<AcEdHit> around(const AcGePoint3d& point, double aperture) const;
  /// Entities that lie wholly in a rectangle, or, crossing, at least partly.
  [[nodiscard]] std::vector<AcDbObjectId> window(const AcGePoint3d& a, const AcGePoint3d& b,
                                                 bool crossing) const;
  /// Entities that lie wholly in a polygon, or, crossing, at least partly; those that an open line meets.
  [[nodiscard]] std::vector<AcDbObjectId> outline(const AcEdOutline& line, bool crossing) const;
  /// Visible entities in order of drawing. @param unlocked without those on locked layers
  [[nodiscard]] std::vector<AcDbObjectId> visible(bool unlocked = false) const;
  /// The one drawn last; null for none.
  [[nodiscard]] AcDbObjectId lastVisible() const;
  /// All living entities of all layouts, seen or not, that fit a filter.
  [[nodiscard]] std::vector<AcDbObjectId> fitting(const AcEdFilter& filter) const;

private:
  [[nodiscard]] std::size_t living() const;
  template <class Work>
  void forEachNear(const AcEdBox& around, Work work) const;

  AcDbDatabase& m_database;
  Way m_way;
};

/// Radius in which a pick finds: a hundredth of the view's height.
ARX_API double acedPickAperture();
