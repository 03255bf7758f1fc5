#include "arx/db/dbents.h"

#include "arx/db/dbmain.h"
#include "arx/gi/giextents.h"
#include "base/text.h"

#include <cmath>

ACRX_DEFINE_MEMBERS(AcDbEntity, AcDbObject, nullptr, nullptr)
ACDB_DEFINE_MEMBERS(AcDbOtherEntity, AcDbEntity, nullptr)
ACDB_DEFINE_MEMBERS(AcDbSequenceEnd, AcDbEntity, "SEQEND")

namespace {

AcDbDatabase* databaseOf(const AcDbEntity& entity) {
  AcDbDatabase* own = entity.database();
  return own ? own : acdbHostApplicationServices()->workingDatabase();
}

// The record itself, open or not: names are read while a table is being changed.
const AcDbSymbolTableRecord* recordOf(AcDbObjectId id) {
  return id.isValid() ? AcDbSymbolTableRecord::cast(id.stub()->object) : nullptr;
}

const AcDbSymbolTable* tableOf(AcDbObjectId id) {
  return id.isValid() ? AcDbSymbolTable::cast(id.stub()->object) : nullptr;
}

Acad::ErrorStatus findRecord(AcDbObjectId table, const ACHAR* name, AcDbObjectId& record) {
  const AcDbSymbolTable* records = name ? tableOf(table) : nullptr;
  return records ? records->getIdAt(name, record) : Acad::eKeyNotFound;
}

bool isByLayerName(const AcDbSymbolTableRecord* record) {
  return record && veltora::base::compareNoCase(record->name(), L"ByLayer") == 0;
}

}  // namespace

AcString AcDbEntity::layer() const {
  const AcDbSymbolTableRecord* record = recordOf(m_layer);
  return record ? record->name() : AcString(L"0");
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* name) {
  const AcDbDatabase* database = databaseOf(*this);
  AcDbObjectId id;
  if (!database) return Acad::eNoDatabase;
  const Acad::ErrorStatus found = findRecord(database->layerTableId(), name, id);
  return found == Acad::eOk ? setLayer(id) : found;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer) {
  if (layer.isNull()) return Acad::eNullObjectId;
  if (database() && layer.database() != database()) return Acad::eWrongDatabase;
  return change(m_layer, layer);
}

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_color = color, m_colorGiven = true;
  return status;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(int index) {
  AcCmColor color;
  return color.setColorIndex(index) ? setColor(color) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbEntity::setLinetype(const ACHAR* name) {
  const AcDbDatabase* database = databaseOf(*this);
  AcDbObjectId id;
  if (!database) return Acad::eNoDatabase;
  const Acad::ErrorStatus found = findRecord(database->linetypeTableId(), name, id);
  return found == Acad::eOk ? setLinetype(id) : found;
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype) {
  if (database() && !linetype.isNull() && linetype.database() != database()) return Acad::eWrongDatabase;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_lineLook.set(&LineLook::linetype, isByLayerName(recordOf(linetype)) ? AcDbObjectId() : linetype);
  m_linetypeGiven = true;
  return status;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale) {
  if (!(scale > 0) || !std::isfinite(scale)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_lineLook.set(&LineLook::linetypeScale, scale);
  return status;
}

Acad::ErrorStatus AcDbEntity::setLineWeight(int weight) {
  if (weight < -3 || weight > 211) return Acad::eInvalidInput;
  return change(m_lineWeight, static_cast<Adesk::Int16>(weight));
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility) {
  return change(m_invisible, visibility == AcDb::kInvisible);
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* other) {
  if (!other) return Acad::eNullObjectPointer;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_layer = other->m_layer;
  m_color = other->m_color;
  m_lineLook = other->m_lineLook;
  m_lineWeight = other->m_lineWeight;
  m_invisible = other->m_invisible;
  m_colorGiven = m_linetypeGiven = true;
  return status;
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* database) {
  if (!database) return;
  if (m_layer.isNull()) m_layer = database->clayer();
  if (!m_colorGiven && m_color == AcCmColor()) {
    const double index = database->cecolor();
    if (index >= 0 && index <= 256) m_color.setColorIndex(static_cast<int>(index));
  }
  if (!m_linetypeGiven && m_lineLook->linetype.isNull()) {
    const AcDbObjectId id = database->celtype();
    if (!isByLayerName(recordOf(id))) m_lineLook.set(&LineLook::linetype, id);
  }
  m_colorGiven = m_linetypeGiven = true;
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) { return Acad::eNotImplementedYet; }

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
  AcGiExtents look;
  look.show(*this);
  if (look.box().isEmpty()) return Acad::eInvalidExtents;
  extents = look.box();
  return Acad::eOk;
}

void AcDbEntity::addExtentsUnder(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
  AcGiExtents look(matrix);
  look.show(*this);
  extents.addExt(look.box());
}

AcGiLayerState AcDbEntity::layerState() const {
  const auto* layer = m_layer.isLive() ? AcDbLayerTableRecord::cast(m_layer.stub()->object) : nullptr;
  return layer ? AcGiLayerState{layer->isOff() || layer->isFrozen(), layer->isLocked()} : AcGiLayerState();
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity*, AcDb::Intersect, AcGePoint3dArray&) const {
  return Acad::eNotImplementedYet;
}

bool AcDbEntity::takeGroup(AcDbDxfReader&) { return false; }

bool AcDbEntity::takeCommonGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 8:
      m_layer = in.layer();
      return true;
    case 6: {
      const AcDbObjectId linetype = in.linetype();
      m_lineLook.set(&LineLook::linetype, isByLayerName(recordOf(linetype)) ? AcDbObjectId() : linetype);
      return true;
    }
    case 62: {
      AcCmColor color;
      if (!color.setColorIndex(in.integer())) return false;
      if (m_color.isTrueColor()) color.setRGB(m_color.rgb());
      m_color = color;
      return true;
    }
    case 420: {
      const int rgb = in.integer();
      if (rgb < 0) return false;
      m_color.setRGB(rgb);
      return true;
    }
    case 48:
      m_lineLook.set(&LineLook::linetypeScale, in.real());
      return true;
    case 60:
      m_invisible = in.flag();
      return true;
    case 67:
      m_paperSpace = in.flag();
      return true;
    case 370:
      m_lineWeight = static_cast<Adesk::Int16>(in.integer());
      return true;
    default:
      return false;
  }
}

void AcDbEntity::dxfInFields(AcDbDxfReader& in) {
  AcDbObject::dxfInFields(in);
  m_colorGiven = m_linetypeGiven = true;
  readSection(in, "AcDbEntity", [this](AcDbDxfReader& group) { return takeCommonGroup(group); });
}

bool AcDbEntity::readSection(AcDbDxfReader& in, std::string_view marker) {
  return readSection(in, marker, [this](AcDbDxfReader& group) { return takeGroup(group); });
}

void AcDbEntity::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbObject::dxfOutFields(out);
  out.subclass("AcDbEntity");
  if (m_paperSpace) out.integer(67, 1);
  const AcDbSymbolTableRecord* layer = recordOf(m_layer);
  out.wide(8, layer ? std::wstring_view(layer->name()) : std::wstring_view(L"0"));
  if (const AcDbSymbolTableRecord* linetype = recordOf(m_lineLook->linetype)) out.wide(6, linetype->name());
  if (m_color.colorIndex() != 256) out.integer(62, m_color.colorIndex());
  if (m_lineWeight != -1) out.integer(370, m_lineWeight);
  if (m_lineLook->linetypeScale != 1.0) out.real(48, m_lineLook->linetypeScale);
  if (m_invisible) out.integer(60, 1);
  if (m_color.isTrueColor()) out.integer(420, m_color.rgb());
  writeExtras(out, "AcDbEntity");
}

void AcDbEntity::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbObject::visitReferences(visit);
  visit(m_layer);
  AcDbObjectId linetype = m_lineLook->linetype;
  if (linetype.isNull()) return;
  visit(linetype);
  m_lineLook.set(&LineLook::linetype, linetype);
}

void AcDbEntity::exchangeFields(AcDbEntity& other) {
  std::swap(m_layer, other.m_layer);
  m_lineLook.swap(other.m_lineLook);
  std::swap(m_color, other.m_color);
  std::swap(m_lineWeight, other.m_lineWeight);
  std::swap(m_invisible, other.m_invisible);
  std::swap(m_paperSpace, other.m_paperSpace);
  std::swap(m_colorGiven, other.m_colorGiven);
  std::swap(m_linetypeGiven, other.m_linetypeGiven);
  AcDbObject::exchangeBase(other);
}

void AcDbOtherEntity::exchangeFields(AcDbOtherEntity& other) {
  m_type.swap(other.m_type);
  AcDbEntity::exchangeFields(other);
}
