#pragma once

#include "arx/db/dbcolor.h"
#include "arx/db/dbobject.h"
#include "arx/db/dbrarely.h"
#include "arx/ge/gematrix.h"

#include <vector>

class AcDbDatabase;
class AcDbSubEntityOwner;

using AcGePoint3dArray = std::vector<AcGePoint3d>;

namespace AcDb {
/// Which operands of an intersection are taken beyond their ends.
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };
}  // namespace AcDb

/// Something drawn. New entities take layer, colour and line type from the drawing's current settings when
/// they are appended, unless these were set before.
class ARX_API AcDbEntity : public AcDbObject {
  ACRX_DECLARE_MEMBERS(AcDbEntity)
public:
  [[nodiscard]] AcDbObjectId blockId() const { return ownerId(); }
  [[nodiscard]] AcString layer() const;
  [[nodiscard]] AcDbObjectId layerId() const { return m_layer; }
  /// By name: `eKeyNotFound` when the drawing (the working one for a non-resident entity) has no such layer.
  Acad::ErrorStatus setLayer(const ACHAR* name);
  Acad::ErrorStatus setLayer(AcDbObjectId layer);
  [[nodiscard]] const AcCmColor& color() const { return m_color; }
  Acad::ErrorStatus setColor(const AcCmColor& color);
  [[nodiscard]] int colorIndex() const { return m_color.colorIndex(); }
  Acad::ErrorStatus setColorIndex(int index);
  [[nodiscard]] AcDbObjectId linetypeId() const { return m_lineLook->linetype; }  ///< null for ByLayer
  Acad::ErrorStatus setLinetype(const ACHAR* name);
  Acad::ErrorStatus setLinetype(AcDbObjectId linetype);
  [[nodiscard]] double linetypeScale() const { return m_lineLook->linetypeScale; }
  Acad::ErrorStatus setLinetypeScale(double scale);
  [[nodiscard]] int lineWeight() const { return m_lineWeight; }
  Acad::ErrorStatus setLineWeight(int weight);
  [[nodiscard]] AcDb::Visibility visibility() const {
    return m_invisible ? AcDb::kInvisible : AcDb::kVisible;
  }
  Acad::ErrorStatus setVisibility(AcDb::Visibility visibility);
  /// Layer, colour, line type, its scale, line weight and visibility of another entity.
  Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* other);
  [[nodiscard]] bool inPaperSpace() const { return m_paperSpace; }
  void setInPaperSpace(bool paper) { m_paperSpace = paper; }
  /// Fills what was not set, from a database: for entities being appended.
  virtual void setDatabaseDefaults(AcDbDatabase* database);

  /// `eNotImplementedYet` for an entity that the host does not model, `eCannotScaleNonUniformly` where the
  /// shape forbids.
  virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
  /// Whether a similarity without reflection can carry the entity: to be asked before anything is changed.
  [[nodiscard]] virtual bool isTransformable() const { return true; }
  /// Replaces the box by that of the entity's look in world coordinates (`AcGiExtents`), hidden or not;
  /// `eInvalidExtents`, box unchanged, when it has none.
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
  /// Adds the box of the entity as a matrix would place it. Adds nothing for an entity without extents.
  void addExtentsUnder(const AcGeMatrix3d& matrix, AcDbExtents& extents) const;
  [[nodiscard]] bool isHidden() const override { return m_invisible; }
  [[nodiscard]] AcGiLayerState layerState() const override;
  /// Whether a reference to the block that holds the entity shows it.
  [[nodiscard]] virtual bool isShownByReferences() const { return !m_invisible; }
  /// Appends the points that both have in common; two points closer than 1e-9 of the coordinates' size count
  /// as one, stretches in common give their two ends.
  /// Splines are not extended. `eNotImplementedYet` unless both are curves.
  virtual Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                          AcGePoint3dArray& points) const;
  /// The entity as owner of attributes or vertices; null for one that has none.
  [[nodiscard]] virtual AcDbSubEntityOwner* subEntityOwner() { return nullptr; }
  [[nodiscard]] const AcDbSubEntityOwner* subEntityOwner() const {
    return const_cast<AcDbEntity*>(this)->subEntityOwner();
  }

  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  void exchangeFields(AcDbEntity& other);
  /// Takes one group of the class's own sections. @return false for a group of no meaning here
  virtual bool takeGroup(AcDbDxfReader& in);
  /// Reads the next section with this marker: each group goes to `takeGroup`, else it is kept. In files
  /// without markers all groups that nobody took so far are offered. @return false when there is no such
  /// section
  bool readSection(AcDbDxfReader& in, std::string_view marker);
  /// The same with another taker.
  template <class Take>
  static bool readSection(AcDbDxfReader& in, std::string_view marker, Take take) {
    if (!in.enter(marker)) return false;
    while (in.next()) {
      if (!take(in)) in.keep();
    }
    return true;
  }

private:
  struct LineLook {
    AcDbObjectId linetype;
    double linetypeScale = 1.0;
  };
  bool takeCommonGroup(AcDbDxfReader& in);
  AcDbObjectId m_layer;
  AcDbRarely<LineLook> m_lineLook;
  AcCmColor m_color;
  Adesk::Int16 m_lineWeight = -1;
  bool m_invisible = false;
  bool m_paperSpace = false;
  bool m_colorGiven = false;  // set by hand: the drawing's current settings do not replace it
  bool m_linetypeGiven = false;
};

class AcDbBlockTableRecord;
class AcDbGroupMap;

/// An entity that the host does not model: its common properties are read, the rest is kept and written back.
/// The groups of the usual types are known by their roles (arx/db/dbgroupmap.h), so that they move along.
class ARX_API AcDbOtherEntity : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbOtherEntity)
  ACDB_DECLARE_COPY(AcDbOtherEntity)
public:
  AcDbOtherEntity() = default;
  explicit AcDbOtherEntity(std::string type) : m_type(std::move(type)) {}
  [[nodiscard]] std::string_view dxfName() const override { return m_type; }
  /// Similarities without reflection only; the picture of a dimension or a table goes along.
  /// `eNotImplementedYet`, nothing changed, for a type or groups that are not known.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  [[nodiscard]] bool isTransformable() const override;
  /// Adds the points that the groups give. @return false when they are not known
  bool addKeptExtents(AcDbExtents& extents) const;
  /// Its groups by section, as in the file.
  using AcDbObject::keptSections;
  /// Block that holds the picture of a dimension or a table, as file text; empty without one.
  [[nodiscard]] std::string pictureName() const;
  /// That block; null without one.
  [[nodiscard]] const AcDbBlockTableRecord* picture() const;
  /// Drawn as far as its groups say how (hatches, dimensions, leaders, solids, multilines, frames of
  /// pictures); only renderers are shown it.
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  /// For one that has a picture. @param name  file text
  Acad::ErrorStatus setPictureName(const std::string& name);

protected:
  void exchangeFields(AcDbOtherEntity& other);

private:
  bool mapGroups(AcDbGroupMap& map, std::vector<DxfExtra>& sections) const;
  std::string m_type;
};

/// End of a run of attributes or vertices.
class ARX_API AcDbSequenceEnd : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbSequenceEnd)
  ACDB_DECLARE_COPY(AcDbSequenceEnd)
protected:
  void exchangeFields(AcDbSequenceEnd& other) { AcDbEntity::exchangeFields(other); }
};
