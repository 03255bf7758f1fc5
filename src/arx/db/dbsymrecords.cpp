#include "arx/db/dbsymrecords.h"

#include "arx/db/dbmain.h"

#include <cmath>
#include <cstdlib>

ACDB_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, "LAYER")
ACDB_DEFINE_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, "STYLE")
ACDB_DEFINE_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE")
ACDB_DEFINE_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, "APPID")
ACDB_DEFINE_MEMBERS(AcDbViewportTableRecord, AcDbSymbolTableRecord, "VPORT")
ACDB_DEFINE_MEMBERS(AcDbOtherTableRecord, AcDbSymbolTableRecord, nullptr)

namespace {

constexpr const char* kLayer = "AcDbLayerTableRecord";
constexpr const char* kTextStyle = "AcDbTextStyleTableRecord";
constexpr const char* kLinetype = "AcDbLinetypeTableRecord";
constexpr const char* kRegApp = "AcDbRegAppTableRecord";
constexpr const char* kViewport = "AcDbViewportTableRecord";

}  // namespace

// ---- Layer

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
  if (color.colorIndex() < 1 || color.colorIndex() > 255) return Acad::eInvalidInput;
  return change(m_color, color);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) { return change(m_off, off); }

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
  return change(m_flags, frozen ? m_flags | 1 : m_flags & ~1);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
  return change(m_flags, locked ? m_flags | 4 : m_flags & ~4);
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype) {
  if (linetype.objectClass() != AcDbLinetypeTableRecord::desc()) return Acad::eWrongObjectType;
  if (database() && linetype.database() != database()) return Acad::eWrongDatabase;
  return change(m_linetype, linetype);
}

void AcDbLayerTableRecord::setDatabaseDefaults(AcDbDatabase& database) {
  setLinetypeObjectId(database.continuousLinetype());
}

void AcDbLayerTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbSymbolTableRecord::dxfInFields(in);
  if (!in.enter(kLayer)) return;
  int index = 7;
  double plotted = 1.0;
  Adesk::Int32 rgb = -1;
  while (in.next()) {
    switch (in.code()) {
      case 62:
        index = in.integer();
        break;
      case 420:
        rgb = in.integer();
        break;
      case 6:
        m_linetype = in.linetype();
        break;
      case 370:
        m_lineWeight = in.integer();
        break;
      case 290:  // kept as well, to be written as it was
        m_plottable = !dxfParseReal(in.text(), plotted) || plotted != 0.0;
        [[fallthrough]];
      default:
        if (!dxfInNameOrFlags(in)) in.keep();
    }
  }
  m_off = index < 0;
  m_color = AcCmColor(7);
  if (index > -257 && index < 257) m_color.setColorIndex(std::abs(index));
  if (rgb >= 0) m_color.setRGB(rgb & 0xFFFFFF);
}

void AcDbLayerTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbSymbolTableRecord::dxfOutFields(out);
  out.subclass(kLayer);
  dxfOutNameAndFlags(out);
  out.integer(62, m_off ? -m_color.colorIndex() : m_color.colorIndex());
  if (m_color.isTrueColor()) out.integer(420, m_color.rgb());
  const auto* linetype =
      m_linetype.isLive() ? AcDbLinetypeTableRecord::cast(m_linetype.stub()->object) : nullptr;
  out.wide(6, linetype ? linetype->name() : L"Continuous");
  out.integer(370, m_lineWeight);
  writeExtras(out, kLayer);
}

void AcDbLayerTableRecord::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbSymbolTableRecord::visitReferences(visit);
  visit(m_linetype);
}

void AcDbLayerTableRecord::exchangeFields(AcDbLayerTableRecord& other) {
  AcDbSymbolTableRecord::exchangeFields(other);
  std::swap(m_color, other.m_color);
  std::swap(m_off, other.m_off);
  std::swap(m_lineWeight, other.m_lineWeight);
  std::swap(m_linetype, other.m_linetype);
  std::swap(m_plottable, other.m_plottable);
}

// ---- Text style

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
  if (!(size >= 0.0) || !std::isfinite(size)) return Acad::eInvalidInput;
  return change(m_textSize, size);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
  if (!(scale > 0.0) || !std::isfinite(scale)) return Acad::eInvalidInput;
  return change(m_xScale, scale);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* name) {
  if (!name) return Acad::eInvalidInput;
  return change(m_fileName, name);
}

void AcDbTextStyleTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbSymbolTableRecord::dxfInFields(in);
  if (!in.enter(kTextStyle)) return;
  while (in.next()) {
    switch (in.code()) {
      case 40:
        m_textSize = in.real();
        break;
      case 41:
        m_xScale = in.real();
        break;
      case 50:
        m_oblique = in.real();
        break;
      case 71:
        m_generation = in.integer();
        break;
      case 42:
        m_lastHeight = in.real();
        break;
      case 3:
        m_fileName = in.wide();
        break;
      case 4:
        m_bigFontFileName = in.wide();
        break;
      default:
        if (!dxfInNameOrFlags(in)) in.keep();
    }
  }
}

void AcDbTextStyleTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbSymbolTableRecord::dxfOutFields(out);
  out.subclass(kTextStyle);
  dxfOutNameAndFlags(out);
  out.real(40, m_textSize);
  out.real(41, m_xScale);
  out.real(50, m_oblique);
  out.integer(71, m_generation);
  out.real(42, m_lastHeight);
  out.wide(3, m_fileName);
  out.wide(4, m_bigFontFileName);
  writeExtras(out, kTextStyle);
}

void AcDbTextStyleTableRecord::exchangeFields(AcDbTextStyleTableRecord& other) {
  AcDbSymbolTableRecord::exchangeFields(other);
  std::swap(m_textSize, other.m_textSize);
  std::swap(m_xScale, other.m_xScale);
  std::swap(m_oblique, other.m_oblique);
  std::swap(m_lastHeight, other.m_lastHeight);
  std::swap(m_generation, other.m_generation);
  std::swap(m_fileName, other.m_fileName);
  std::swap(m_bigFontFileName, other.m_bigFontFileName);
}

// ---- Line type

Acad::ErrorStatus AcDbLinetypeTableRecord::setComments(const ACHAR* text) {
  if (!text) return Acad::eInvalidInput;
  return change(m_comments, text);
}

void AcDbLinetypeTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbSymbolTableRecord::dxfInFields(in);
  if (!in.enter(kLinetype)) return;
  m_dashes.clear();
  while (in.next()) {
    if (in.code() == 3) {
      m_comments = in.wide();
    } else if (!dxfInNameOrFlags(in)) {
      if (in.code() == 40) m_length = in.real();
      if (in.code() == 49) m_dashes.push_back(in.real());
      in.keep();  // dashes and shapes stand in an order that matters
    }
  }
}

void AcDbLinetypeTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbSymbolTableRecord::dxfOutFields(out);
  out.subclass(kLinetype);
  dxfOutNameAndFlags(out);
  out.wide(3, m_comments);
  if (hasExtras(kLinetype)) return writeExtras(out, kLinetype);
  out.integer(72, 'A');  // alignment, the only one there is
  out.integer(73, static_cast<Adesk::Int64>(m_dashes.size()));
  out.real(40, m_length);
  for (const double dash : m_dashes) {
    out.real(49, dash);
    out.integer(74, 0);
  }
}

void AcDbLinetypeTableRecord::exchangeFields(AcDbLinetypeTableRecord& other) {
  AcDbSymbolTableRecord::exchangeFields(other);
  std::swap(m_comments, other.m_comments);
  std::swap(m_length, other.m_length);
  std::swap(m_dashes, other.m_dashes);
}

// ---- Application name

void AcDbRegAppTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbSymbolTableRecord::dxfInFields(in);
  if (!in.enter(kRegApp)) return;
  while (in.next()) {
    if (!dxfInNameOrFlags(in)) in.keep();
  }
}

void AcDbRegAppTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbSymbolTableRecord::dxfOutFields(out);
  out.subclass(kRegApp);
  dxfOutNameAndFlags(out);
  writeExtras(out, kRegApp);
}

// ---- View on model space

Acad::ErrorStatus AcDbViewportTableRecord::setCenterPoint(const AcGePoint2d& center) {
  return change(m_center, center);
}

Acad::ErrorStatus AcDbViewportTableRecord::setHeight(double height) {
  if (!(height > 0.0) || !std::isfinite(height)) return Acad::eInvalidInput;
  return change(m_height, height);
}

void AcDbViewportTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbSymbolTableRecord::dxfInFields(in);
  if (!in.enter(kViewport)) return;
  while (in.next()) {
    switch (in.code()) {
      case 12:
        m_center.x = in.real();
        break;
      case 22:
        m_center.y = in.real();
        break;
      case 40:
        m_height = in.real();
        break;
      case 41:
        m_aspect = in.real();
        break;
      default:
        if (!dxfInNameOrFlags(in)) in.keep();
    }
  }
}

void AcDbViewportTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbSymbolTableRecord::dxfOutFields(out);
  out.subclass(kViewport);
  dxfOutNameAndFlags(out);
  const bool kept = hasExtras(kViewport);
  if (!kept) {
    out.point2d(10, 0.0, 0.0);  // the whole screen
    out.point2d(11, 1.0, 1.0);
  }
  out.point2d(12, m_center.x, m_center.y);
  out.real(40, m_height);
  out.real(41, m_aspect);
  if (kept) return writeExtras(out, kViewport);
  out.point2d(13, 0.0, 0.0);
  out.point2d(14, 10.0, 10.0);
  out.point2d(15, 10.0, 10.0);
  out.point(16, {0.0, 0.0, 1.0});  // seen from above
  out.point(17, {0.0, 0.0, 0.0});
  out.real(42, 50.0);
  for (const int code : {43, 44, 50, 51}) out.real(code, 0.0);
  out.integer(71, 0);
  out.integer(72, 1000);
  out.integer(73, 1);
  out.integer(74, 3);
  for (const int code : {75, 76, 77, 78}) out.integer(code, 0);
}

void AcDbViewportTableRecord::exchangeFields(AcDbViewportTableRecord& other) {
  AcDbSymbolTableRecord::exchangeFields(other);
  std::swap(m_center, other.m_center);
  std::swap(m_height, other.m_height);
  std::swap(m_aspect, other.m_aspect);
}

// ---- Records of other tables

void AcDbOtherTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbSymbolTableRecord::dxfInFields(in);
  if (!in.enter(m_subclass)) return;
  bool hasName = false;
  bool hasFlags = false;
  while (in.next()) {
    bool& seen = in.code() == 2 ? hasName : hasFlags;
    if (seen || !dxfInNameOrFlags(in))
      in.keep();
    else
      seen = true;
  }
}

void AcDbOtherTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbSymbolTableRecord::dxfOutFields(out);
  out.subclass(m_subclass);
  dxfOutNameAndFlags(out);
  writeExtras(out, m_subclass);
}

void AcDbOtherTableRecord::exchangeFields(AcDbOtherTableRecord& other) {
  AcDbSymbolTableRecord::exchangeFields(other);
  std::swap(m_type, other.m_type);
  std::swap(m_subclass, other.m_subclass);
}
