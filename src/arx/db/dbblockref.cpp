#include "arx/db/dbblockref.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbplanemap.h"
#include "arx/gi/gigeometry.h"

#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, "INSERT")

namespace {

constexpr double kRightAngle = 1e-9;  // relative: axes of a block that are farther from it are refused

bool isFactor(double value) { return value != 0 && std::isfinite(value); }

}  // namespace

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
  return change(m_block, block);
}

AcGePoint3d AcDbBlockReference::position() const { return acdbToWorld(m_position, m_look->normal); }
Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
  return change(m_position, acdbToPlane(position, m_look->normal));
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& factors) {
  const bool good = isFactor(factors.sx) && isFactor(factors.sy) && isFactor(factors.sz);
  return good ? change(m_scale, factors) : Acad::eInvalidInput;
}

double AcDbBlockReference::rotation() const { return acdbRadians(m_rotation); }
Acad::ErrorStatus AcDbBlockReference::setRotation(double radians) {
  return std::isfinite(radians) ? change(m_rotation, acdbDegrees(radians)) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_position = acdbToPlane(position(), acdbUnitNormal(normal));
  m_look.set(&Look::normal, acdbUnitNormal(normal));
  return status;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
  const AcDbBlockTableRecord* block = acdbBlockRecord(m_block);
  const AcGePoint3d origin = block ? block->origin() : AcGePoint3d::kOrigin;
  const AcGeMatrix3d turned =
      AcGeMatrix3d::rotation(acdbRadians(m_rotation), AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(m_scale);
  const AcGeMatrix3d placed = AcGeMatrix3d::translation(m_position.asVector()) * turned *
                              AcGeMatrix3d::translation(-origin.asVector());
  if (m_look->normal == AcGeVector3d::kZAxis) return placed;
  return AcGeMatrix3d::planeToWorld(acdbUnitNormal(m_look->normal)) * placed;
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& matrix) {
  const AcGeVector3d x = matrix * AcGeVector3d::kXAxis;
  const AcGeVector3d y = matrix * AcGeVector3d::kYAxis;
  const AcGeVector3d z = matrix * AcGeVector3d::kZAxis;
  const AcGeScale3d size(x.length(), y.length(), z.length());
  if (!isFactor(size.sx) || !isFactor(size.sy) || !isFactor(size.sz)) return Acad::eInvalidInput;
  const bool square = std::fabs(x.dotProduct(y)) <= kRightAngle * size.sx * size.sy &&
                      std::fabs(y.dotProduct(z)) <= kRightAngle * size.sy * size.sz &&
                      std::fabs(z.dotProduct(x)) <= kRightAngle * size.sz * size.sx;
  if (!square) return Acad::eCannotScaleNonUniformly;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const AcDbBlockTableRecord* block = acdbBlockRecord(m_block);
  const AcGeVector3d normal = acdbUnitNormal(z);
  m_look.set(&Look::normal, normal);
  const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
  const AcGeVector3d flat = toPlane * x;
  m_position = acdbToPlane(matrix * (block ? block->origin() : AcGePoint3d::kOrigin), normal);
  m_rotation = acdbDegrees(AcGeVector2d(flat.x, flat.y).angle());
  m_scale = size;
  if (x.crossProduct(y).dotProduct(z) < 0) m_scale.sy = -m_scale.sy;
  return status;
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
  return appendSub(*this, id, attribute);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
  AcDbObjectId id;
  return appendAttribute(id, attribute);
}

AcDbObjectIterator* AcDbBlockReference::attributeIterator() const {
  return new AcDbObjectIterator(subEntityIds());
}

Acad::ErrorStatus AcDbBlockReference::transformBy(const AcGeMatrix3d& matrix) {
  const AcDbPlaneMap plane(matrix, m_look->normal);
  const bool simple = plane.valid && plane.conformal && plane.upright;
  Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (simple) {
    m_position = plane.map * m_position;
    m_look.set(&Look::normal, plane.normal);
    m_rotation = plane.turned(m_rotation);
    m_scale.sx *= plane.factor;
    m_scale.sy *= plane.mirrored ? -plane.factor : plane.factor;
    m_scale.sz *= plane.depth;
    if (m_look->grid != Grid()) {
      m_look.own().grid.columnSpacing *= plane.factor;
      m_look.own().grid.rowSpacing *= plane.mirrored ? -plane.factor : plane.factor;
    }
  } else {
    status = setBlockTransform(matrix * blockTransform());
  }
  // A copy without a place in a drawing shares its attributes with the original.
  return status == Acad::eOk && database() ? transformSubs(matrix) : status;
}

void AcDbBlockReference::subWorldDraw(AcGiWorldDraw& draw) const {
  for (const AcDbObjectId& id : subEntityIds()) {
    const AcDbAttribute* attribute = id.isLive() ? AcDbAttribute::cast(id.stub()->object) : nullptr;
    if (attribute) draw.geometry().draw(*attribute);
  }
  const AcDbBlockTableRecord* block = acdbBlockRecord(m_block);
  if (!block) return;
  AcGiBlockPlace place{*block, block->entities().size(), blockTransform()};
  const Grid& grid = m_look->grid;
  if (grid.columns > 1 || grid.rows > 1) {
    const AcGeMatrix3d turned = AcGeMatrix3d::planeToWorld(acdbUnitNormal(m_look->normal)) *
                                AcGeMatrix3d::rotation(acdbRadians(m_rotation), AcGeVector3d::kZAxis);
    place.repeated = true;
    place.columns = std::max<int>(1, grid.columns);
    place.rows = std::max<int>(1, grid.rows);
    place.toLastColumn = turned * AcGeVector3d((grid.columns - 1) * grid.columnSpacing, 0, 0);
    place.toLastRow = turned * AcGeVector3d(0, (grid.rows - 1) * grid.rowSpacing, 0);
  }
  draw.geometry().block(place);
}

bool AcDbBlockReference::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 2:
      m_block = in.block();
      return true;
    case 41:
      m_scale.sx = in.real();
      return true;
    case 42:
      m_scale.sy = in.real();
      return true;
    case 43:
      m_scale.sz = in.real();
      return true;
    case 50:
      m_rotation = in.real();
      return true;
    case 66:
      return true;  // follows from the attributes
    case 44:
      setGrid(&Grid::columnSpacing, in.real());
      return true;
    case 45:
      setGrid(&Grid::rowSpacing, in.real());
      return true;
    case 70:
      setGrid(&Grid::columns, static_cast<Adesk::Int16>(in.integer()));
      return true;
    case 71:
      setGrid(&Grid::rows, static_cast<Adesk::Int16>(in.integer()));
      return true;
    default:
      return in.coordinate(10, m_position) || in.coordinate(210, m_look, &Look::normal);
  }
}

void AcDbBlockReference::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  if (!readSection(in, "AcDbBlockReference") && readSection(in, "AcDbMInsertBlock"))
    m_look.own().grid.ownMarker = true;
}

void AcDbBlockReference::dxfOutFields(AcDbDxfWriter& out) const {
  const std::string_view marker = m_look->grid.ownMarker ? "AcDbMInsertBlock" : "AcDbBlockReference";
  AcDbEntity::dxfOutFields(out);
  out.subclass(marker);
  if (hasLiveSub()) out.integer(66, 1);
  const AcDbSymbolTableRecord* block =
      m_block.isValid() ? AcDbSymbolTableRecord::cast(m_block.stub()->object) : nullptr;
  out.wide(2, block ? std::wstring_view(block->name()) : std::wstring_view());
  out.point(10, m_position);
  if (m_scale.sx != 1.0) out.real(41, m_scale.sx);
  if (m_scale.sy != 1.0) out.real(42, m_scale.sy);
  if (m_scale.sz != 1.0) out.real(43, m_scale.sz);
  if (m_rotation != 0.0) out.real(50, m_rotation);
  const Grid& grid = m_look->grid;
  if (grid.columns != 1) out.integer(70, grid.columns);
  if (grid.rows != 1) out.integer(71, grid.rows);
  if (grid.columnSpacing != 0.0) out.real(44, grid.columnSpacing);
  if (grid.rowSpacing != 0.0) out.real(45, grid.rowSpacing);
  out.normal(m_look->normal);
  writeExtras(out, marker);
}

void AcDbBlockReference::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  visit(m_block);
  visitSubs(visit);
}

void AcDbBlockReference::exchangeFields(AcDbBlockReference& other) {
  std::swap(m_position, other.m_position);
  std::swap(m_scale, other.m_scale);
  std::swap(m_rotation, other.m_rotation);
  std::swap(m_block, other.m_block);
  m_look.swap(other.m_look);
  exchangeSubs(other);
  AcDbEntity::exchangeFields(other);
}
