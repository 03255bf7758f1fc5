#pragma once

#include "arx/db/dbents.h"

#include <string>
#include <string_view>

// Geometry of entities that the host keeps as file text: which of their groups are points, vectors, lengths
// and angles, by the definition of the file format. One table serves all who place such entities.

/// What a map does to the kept sections of an entity, and where its points lie then.
class AcDbGroupMap {
public:
  /// @param type name of the entity in the file  @param matrix a similarity that mirrors nothing
  AcDbGroupMap(std::string_view type, const AcGeMatrix3d& matrix) : m_type(type), m_matrix(matrix) {}
  /// Whether the groups of this type are known.
  [[nodiscard]] static bool knows(std::string_view type);
  /// Maps one section. @return false when it holds geometry that is not known, or groups that are no numbers
  bool section(std::string_view marker, DxfTagText& tags);
  /// Around the points that were met, as mapped: whole ellipses and circles, images to their corners, the
  /// vertices of what is curved otherwise.
  [[nodiscard]] const AcDbExtents& box() const { return m_box; }

private:
  friend class AcDbSectionMap;
  std::string_view m_type;
  const AcGeMatrix3d& m_matrix;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;  // as given last
  AcDbExtents m_box;
};

/// Entities of these that no similarity can carry along, counted by type: "2 MULTILEADER, 1 REGION"; empty
/// when all can be. Commands ask before they change anything.
/// @param mirrored  a similarity that mirrors, which what is kept as file text does not follow
ARX_API std::wstring acdbImmovable(const std::vector<AcDbObjectId>& entities, bool mirrored = false);
