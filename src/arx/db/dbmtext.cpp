#include "arx/db/dbmtext.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbmtextplain.h"
#include "arx/db/dbplanemap.h"
#include "arx/db/dbtextsize.h"
#include "arx/gi/girenderer.h"

#include <algorithm>
#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbMText, AcDbEntity, "MTEXT")

namespace {

constexpr std::size_t kChunk = 250;  // characters in one group of a long text

}  // namespace

Acad::ErrorStatus AcDbMText::setContents(const ACHAR* text) {
  if (!text) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_contents = text;
  m_hasExtent = false;  // what another program measured is of the former text
  return status;
}

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& location) { return change(m_location, location); }
Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
  return change(m_normal, acdbUnitNormal(normal));
}

AcGeVector3d AcDbMText::direction() const {
  if (m_byDirection && m_direction.lengthSqrd() > 0) return m_direction.normal();
  const double angle = acdbRadians(m_rotation);
  return AcGeMatrix3d::planeToWorld(acdbUnitNormal(m_normal)) *
         AcGeVector3d(std::cos(angle), std::sin(angle), 0);
}

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
  if (!(direction.lengthSqrd() > 0)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = change(m_direction, direction.normal());
  if (status == Acad::eOk) m_byDirection = true;
  return status;
}

double AcDbMText::rotation() const {
  if (!m_byDirection) return acdbRadians(m_rotation);
  const AcGeVector3d flat = AcGeMatrix3d::worldToPlane(acdbUnitNormal(m_normal)) * m_direction;
  return AcGeVector2d(flat.x, flat.y).angle();
}

Acad::ErrorStatus AcDbMText::setRotation(double radians) {
  if (!std::isfinite(radians)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = change(m_rotation, acdbDegrees(radians));
  if (status == Acad::eOk) m_byDirection = false;
  return status;
}

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
  return height > 0 && std::isfinite(height) ? change(m_height, height) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbMText::setWidth(double width) {
  return width >= 0 && std::isfinite(width) ? change(m_width, width) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
  const bool known = attachment >= kTopLeft && attachment <= kBottomRight;
  return known ? change(m_attachment, static_cast<Adesk::Int16>(attachment)) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
  if (database() && style.database() != database()) return Acad::eWrongDatabase;
  return change(m_style, style);
}

void AcDbMText::setDatabaseDefaults(AcDbDatabase* database) {
  AcDbEntity::setDatabaseDefaults(database);
  if (database && m_style.isNull()) m_style = database->textstyle();
}

AcString AcDbMText::text() const { return acdbPlainText(m_contents); }

AcDbMTextLayout AcDbMText::layout() const {
  const int place = m_attachment >= kTopLeft && m_attachment <= kBottomRight ? m_attachment - 1 : 0;
  return acdbLayOutText(m_contents, {m_style, m_height, m_width, m_spacing > 0 ? m_spacing : 1.0, place % 3});
}

double AcDbMText::linePitch() const { return m_height * kLinePitch * (m_spacing > 0 ? m_spacing : 1.0); }

std::vector<AcString> AcDbMText::lines() const {
  std::vector<AcString> lines = layout().lines;
  if (lines.empty()) lines.emplace_back();
  return lines;
}

double AcDbMText::actualWidth() const { return layout().width; }
double AcDbMText::actualHeight() const { return layout().height; }

Acad::ErrorStatus AcDbMText::transformBy(const AcGeMatrix3d& matrix) {
  const AcDbPlaneMap plane(matrix, m_normal);
  if (!plane.valid || !plane.conformal) return Acad::eCannotScaleNonUniformly;
  const AcGeVector3d turned = (matrix * direction()).normal();
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_location = matrix * m_location;
  m_normal = plane.normal;
  if (!m_byDirection) {
    m_rotation = plane.turned(m_rotation);
  } else if ((turned - direction()).length() > 1e-15) {
    m_direction = turned;
  }
  for (double* length : {&m_height, &m_width, &m_definedHeight, &m_horizontalExtent, &m_verticalExtent}) {
    *length *= plane.factor;
  }
  return status;
}

void AcDbMText::subWorldDraw(AcGiWorldDraw& draw) const {
  const AcDbMTextLayout set = layout();
  const int place = m_attachment >= kTopLeft && m_attachment <= kBottomRight ? m_attachment - 1 : 0;
  const double left = -set.width * (place % 3) / 2;
  const int row = place / 3;
  const double top = set.height * row / 2;
  const AcGeVector3d along = direction();
  const AcGeVector3d up = acdbUnitNormal(m_normal).crossProduct(along).normal();
  const auto corner = [&](double x, double y) { return m_location + along * x + up * y; };
  AcGiRenderer* const renderer = draw.geometry().renderer();
  if (!renderer) {
    const AcGePoint3d corners[] = {corner(left, top - set.height), corner(left + set.width, top - set.height),
                                   corner(left + set.width, top), corner(left, top)};
    return draw.geometry().area(corners);
  }
  const double factor =
      acdbTextExtents(L"H", m_style, 1.0, 0.0).width / acdbTextExtents(L"H", 1.0).width;  // of the style
  for (const AcDbMTextRun& run : set.runs) {
    renderer->setColor(run.color ? &*run.color : nullptr);
    renderer->textLine({run.text, corner(left + run.base.x, top + run.base.y),
                        along * (run.height * factor * run.widthFactor),
                        along * (run.height * run.slant) + up * run.height});
  }
  for (const AcDbMTextStroke& stroke : set.strokes) {
    renderer->setColor(stroke.color ? &*stroke.color : nullptr);
    const AcGePoint3d ends[] = {corner(left + stroke.from.x, top + stroke.from.y),
                                corner(left + stroke.to.x, top + stroke.to.y)};
    renderer->edges(ends);
  }
  renderer->setColor(nullptr);
}

bool AcDbMText::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 1:
    case 3:
      m_contents += in.wide();
      return true;
    case 7:
      m_style = in.textStyle();
      return true;
    case 40:
      m_height = in.real();
      return true;
    case 41:
      m_width = in.real();
      return true;
    case 42:
      m_horizontalExtent = in.real();
      return m_hasExtent = true;
    case 43:
      m_verticalExtent = in.real();
      return m_hasExtent = true;
    case 44:
      m_spacing = in.real();
      return true;
    case 46:
      m_definedHeight = in.real();
      return m_hasDefinedHeight = true;
    case 50:
      m_rotation = in.real();
      m_byDirection = false;
      return true;
    case 71:
      m_attachment = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 72:
      m_flow = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 73:
      m_spacingStyle = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 11:
      m_byDirection = true;
      return in.coordinate(11, m_direction);
    default:
      return in.coordinate(10, m_location) || in.coordinate(11, m_direction) || in.coordinate(210, m_normal);
  }
}

void AcDbMText::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbMText");
}

void AcDbMText::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbMText");
  out.point(10, m_location);
  out.real(40, m_height);
  out.real(41, m_width);
  if (m_hasDefinedHeight) out.real(46, m_definedHeight);
  out.integer(71, m_attachment);
  out.integer(72, m_flow);
  std::wstring_view rest = m_contents;
  for (; rest.size() > kChunk; rest.remove_prefix(kChunk)) out.wide(3, rest.substr(0, kChunk));
  out.wide(1, rest);
  const auto* style = m_style.isValid() ? AcDbTextStyleTableRecord::cast(m_style.stub()->object) : nullptr;
  if (style && style->name() != L"Standard") out.wide(7, style->name());
  out.normal(m_normal);
  if (m_byDirection) {
    out.vector(11, m_direction);
  } else if (m_rotation != 0.0) {
    out.real(50, m_rotation);
  }
  if (m_hasExtent) out.real(42, m_horizontalExtent);
  if (m_hasExtent) out.real(43, m_verticalExtent);
  out.integer(73, m_spacingStyle);
  out.real(44, m_spacing);
  writeExtras(out, "AcDbMText");
}

void AcDbMText::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  if (!m_style.isNull()) visit(m_style);
}

void AcDbMText::exchangeFields(AcDbMText& other) {
  m_contents.swap(other.m_contents);
  std::swap(m_location, other.m_location);
  std::swap(m_normal, other.m_normal);
  std::swap(m_direction, other.m_direction);
  std::swap(m_rotation, other.m_rotation);
  std::swap(m_height, other.m_height);
  std::swap(m_width, other.m_width);
  std::swap(m_definedHeight, other.m_definedHeight);
  std::swap(m_horizontalExtent, other.m_horizontalExtent);
  std::swap(m_verticalExtent, other.m_verticalExtent);
  std::swap(m_spacing, other.m_spacing);
  std::swap(m_style, other.m_style);
  std::swap(m_attachment, other.m_attachment);
  std::swap(m_flow, other.m_flow);
  std::swap(m_spacingStyle, other.m_spacingStyle);
  std::swap(m_byDirection, other.m_byDirection);
  std::swap(m_hasExtent, other.m_hasExtent);
  std::swap(m_hasDefinedHeight, other.m_hasDefinedHeight);
  AcDbEntity::exchangeFields(other);
}
