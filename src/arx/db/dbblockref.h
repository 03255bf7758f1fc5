#pragma once

#include "arx/db/dbattr.h"
#include "arx/db/dbsubents.h"

/// A block shown at a place, with its attributes. A reference that repeats the block in rows and columns
/// keeps these.
class ARX_API AcDbBlockReference : public AcDbEntity, public AcDbSubEntityOwner {
  ACRX_DECLARE_MEMBERS(AcDbBlockReference)
  ACDB_DECLARE_COPY(AcDbBlockReference)
public:
  /// Rows and columns of the repeated block.
  struct Grid {
    Adesk::Int16 columns = 1;
    Adesk::Int16 rows = 1;
    double columnSpacing = 0.0;
    double rowSpacing = 0.0;
    bool ownMarker = false;  // written in the section of the repeated block
    bool operator==(const Grid&) const = default;
  };

  AcDbBlockReference() = default;
  AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId block)
      : m_position(position), m_block(block) {}

  [[nodiscard]] AcDbObjectId blockTableRecord() const { return m_block; }
  Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
  [[nodiscard]] AcGePoint3d position() const;  ///< in the world
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  [[nodiscard]] AcGeScale3d scaleFactors() const { return m_scale; }
  /// `eInvalidInput` when one is 0 or not finite.
  Acad::ErrorStatus setScaleFactors(const AcGeScale3d& factors);
  [[nodiscard]] double rotation() const;  ///< radians
  Acad::ErrorStatus setRotation(double radians);
  [[nodiscard]] AcGeVector3d normal() const { return m_look->normal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);  ///< the position stays in the world
  /// From the block's coordinates to the world; the block's origin comes to lie on the position.
  [[nodiscard]] AcGeMatrix3d blockTransform() const;
  Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& matrix);
  [[nodiscard]] Grid grid() const { return m_look->grid; }

  /// Adds an attribute, which the database owns from then on and which is left open for writing. The
  /// reference must be in a database (`eNotInDatabase`) and open for writing. An attribute without a style or
  /// layer takes the current one.
  Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
  Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
  /// Live attributes; deleted by the caller.
  [[nodiscard]] AcDbObjectIterator* attributeIterator() const;

  AcDbSubEntityOwner* subEntityOwner() override { return this; }
  [[nodiscard]] AcRxClass* subEntityClass() const override { return AcDbAttribute::desc(); }
  [[nodiscard]] std::vector<AcDbObjectId> subObjects() const override { return allSubs(true); }
  /// Attributes move along.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  /// The visible attributes, then the block.
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbBlockReference& other);

private:
  struct Look {
    AcGeVector3d normal = AcGeVector3d::kZAxis;
    Grid grid;
  };
  /// While reading: nothing is kept for a value that says what goes without saying.
  template <class Value>
  void setGrid(Value Grid::*field, std::type_identity_t<Value> value) {
    if (m_look->grid.*field != value) m_look.own().grid.*field = value;
  }
  AcGePoint3d m_position;  // own plane
  AcGeScale3d m_scale;
  double m_rotation = 0.0;  // degrees, as in the file
  AcDbObjectId m_block;
  AcDbRarely<Look> m_look;
};
