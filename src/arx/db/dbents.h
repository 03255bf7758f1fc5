#pragma once

#include "arx/db/dbcolor.h"
#include "arx/db/dbobject.h"
#include "arx/ge/gematrix.h"

class AcDbDatabase;

/// Something drawn. New entities take layer, colour and line type from the drawing's current settings when they are
/// appended, unless these were set before.
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
  [[nodiscard]] AcDbObjectId linetypeId() const { return m_linetype; }  ///< null for ByLayer
  Acad::ErrorStatus setLinetype(const ACHAR* name);
  Acad::ErrorStatus setLinetype(AcDbObjectId linetype);
  [[nodiscard]] double linetypeScale() const { return m_linetypeScale; }
  Acad::ErrorStatus setLinetypeScale(double scale);
  [[nodiscard]] int lineWeight() const { return m_lineWeight; }
  Acad::ErrorStatus setLineWeight(int weight);
  [[nodiscard]] AcDb::Visibility visibility() const { return m_invisible ? AcDb::kInvisible : AcDb::kVisible; }
  Acad::ErrorStatus setVisibility(AcDb::Visibility visibility);
  /// Layer, colour, line type, its scale, line weight and visibility of another entity.
  Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* other);
  [[nodiscard]] bool inPaperSpace() const { return m_paperSpace; }
  void setInPaperSpace(bool paper) { m_paperSpace = paper; }
  /// Fills what was not set, from a database: for entities being appended.
  void setDatabaseDefaults(AcDbDatabase* database);

  /// `eNotImplementedYet` for an entity that the host does not model, `eCannotScaleNonUniformly` where the shape forbids.
  virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
  /// Box in world coordinates; `eInvalidExtents` when the entity has none.
  virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;

  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  void exchangeFields(AcDbEntity& other);

private:
  AcDbObjectId m_layer;
  AcDbObjectId m_linetype;
  double m_linetypeScale = 1.0;
  AcCmColor m_color;
  Adesk::Int16 m_lineWeight = -1;
  bool m_invisible = false;
  bool m_paperSpace = false;
};

/// An entity that the host does not model: its common properties are read, the rest is kept and written back.
class ARX_API AcDbOtherEntity : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbOtherEntity)
  ACDB_DECLARE_COPY(AcDbOtherEntity)
public:
  AcDbOtherEntity() = default;
  explicit AcDbOtherEntity(std::string type) : m_type(std::move(type)) {}
  [[nodiscard]] std::string_view dxfName() const override { return m_type; }

protected:
  void exchangeFields(AcDbOtherEntity& other);

private:
  std::string m_type;
};

/// End of a run of attributes or vertices.
class ARX_API AcDbSequenceEnd : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbSequenceEnd)
  ACDB_DECLARE_COPY(AcDbSequenceEnd)
protected:
  void exchangeFields(AcDbSequenceEnd& other) { AcDbEntity::exchangeFields(other); }
};
