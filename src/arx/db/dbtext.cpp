#include "arx/db/dbtext.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbplanemap.h"
#include "arx/gi/girenderer.h"

#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbText, AcDbEntity, "TEXT")

namespace {

constexpr double kRightAngle = 1e-9;  // relative: a map that skews a text more is refused

AcGeVector2d direction(double degrees) {
  // Exact for the four axes, which most texts are drawn along.
  if (degrees == 0) return {1, 0};
  if (degrees == 90) return {0, 1};
  if (degrees == 180) return {-1, 0};
  if (degrees == 270) return {0, -1};
  return {std::cos(acdbRadians(degrees)), std::sin(acdbRadians(degrees))};
}

}  // namespace

AcDbText::AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style, double height,
                   double rotation)
    : m_position(position),
      m_height(height > 0 && std::isfinite(height) ? height : 0.0),
      m_rotation(std::isfinite(rotation) ? acdbDegrees(rotation) : 0.0),
      m_style(style),
      m_text(text ? text : L"") {}

AcGePoint3d AcDbText::position() const { return acdbToWorld(m_position, m_look->normal); }
AcGePoint3d AcDbText::alignmentPoint() const { return acdbToWorld(m_look->alignment, m_look->normal); }

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) {
  return change(m_position, acdbToPlane(position, m_look->normal));
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
  const Acad::ErrorStatus status = changeLook(&Look::alignment, acdbToPlane(point, m_look->normal));
  if (status != Acad::eOk) return status;
  m_hasAlignment = true;
  if (!isDefaultAlignment()) adjustAlignment();
  return status;
}

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const AcGeVector3d unit = acdbUnitNormal(normal);
  m_position = acdbToPlane(position(), unit);
  if (m_hasAlignment) m_look.set(&Look::alignment, acdbToPlane(alignmentPoint(), unit));
  m_look.set(&Look::normal, unit);
  return status;
}

Acad::ErrorStatus AcDbText::setThickness(double thickness) { return changeLook(&Look::thickness, thickness); }

double AcDbText::oblique() const { return acdbRadians(m_look->oblique); }
Acad::ErrorStatus AcDbText::setOblique(double radians) {
  return std::isfinite(radians) ? changeLook(&Look::oblique, acdbDegrees(radians)) : Acad::eInvalidInput;
}

double AcDbText::rotation() const { return acdbRadians(m_rotation); }
Acad::ErrorStatus AcDbText::setRotation(double radians) {
  return std::isfinite(radians) ? change(m_rotation, acdbDegrees(radians)) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setHeight(double height) {
  return height > 0 && std::isfinite(height) ? change(m_height, height) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
  return factor != 0 && std::isfinite(factor) ? changeLook(&Look::widthFactor, factor) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
  if (!text) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_text.assign(text);
  return status;
}

Acad::ErrorStatus AcDbText::setTextString(const AcString& text) { return setTextString(text.c_str()); }

Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
  if (database() && style.database() != database()) return Acad::eWrongDatabase;
  return change(m_style, style);
}

Acad::ErrorStatus AcDbText::mirrorInX(bool mirrored) {
  return change(m_generation, static_cast<Adesk::Int16>(mirrored ? m_generation | 2 : m_generation & ~2));
}

Acad::ErrorStatus AcDbText::mirrorInY(bool mirrored) {
  return change(m_generation, static_cast<Adesk::Int16>(mirrored ? m_generation | 4 : m_generation & ~4));
}

Acad::ErrorStatus AcDbText::setModes(int horizontal, int vertical) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_horizontal = static_cast<Adesk::Int8>(horizontal);
  m_vertical = static_cast<Adesk::Int8>(vertical);
  if (!isDefaultAlignment() && !m_hasAlignment) {
    m_look.set(&Look::alignment, m_position);
    m_hasAlignment = true;
  }
  return status;
}

Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) {
  const bool known = mode >= AcDb::kTextLeft && mode <= AcDb::kTextFit;
  return known ? setModes(mode, m_vertical) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) {
  const bool known = mode >= AcDb::kTextBase && mode <= AcDb::kTextTop;
  return known ? setModes(m_horizontal, mode) : Acad::eInvalidInput;
}

void AcDbText::setDatabaseDefaults(AcDbDatabase* database) {
  AcDbEntity::setDatabaseDefaults(database);
  if (database && m_style.isNull()) m_style = database->textstyle();
}

AcDbTextSize AcDbText::measure() const {
  return acdbTextExtents(m_text.view(), m_style, m_height, m_look->widthFactor);
}

// Where the base line starts. Aligned and fitted texts run from the position; the others hang on the
// alignment point.
AcGePoint3d AcDbText::basePoint() const {
  if (isDefaultAlignment() || runsBetweenPoints() || !m_hasAlignment) return m_position;
  const AcDbTextSize size = measure();
  double right = 0;
  double up = 0;
  if (m_horizontal == AcDb::kTextCenter || m_horizontal == AcDb::kTextMid) right = size.width / 2;
  if (m_horizontal == AcDb::kTextRight) right = size.width;
  if (m_horizontal == AcDb::kTextMid) up = (size.height - size.descent) / 2;
  if (m_vertical == AcDb::kTextBottom) up = -size.descent;
  if (m_vertical == AcDb::kTextVertMid) up = size.height / 2;
  if (m_vertical == AcDb::kTextTop) up = size.height;
  if (isMirroredInX()) right = -right;
  if (isMirroredInY()) up = -up;
  const AcGeVector2d along = direction(m_rotation);
  const AcGeVector2d upwards = along.perpVector();
  const AcGePoint3d& hook = m_look->alignment;
  return {hook.x - along.x * right - upwards.x * up, hook.y - along.y * right - upwards.y * up, hook.z};
}

AcDbText::Run AcDbText::run() const {
  Run run{m_rotation, m_height, m_look->widthFactor};
  if (!runsBetweenPoints() || !m_hasAlignment) return run;
  const AcGeVector2d along(m_look->alignment.x - m_position.x, m_look->alignment.y - m_position.y);
  const double grow = along.length() / measure().width;
  if (!(grow > 0) || !std::isfinite(grow)) return run;
  run.rotation = acdbDegrees(along.angle());
  (m_horizontal == AcDb::kTextAlign ? run.height : run.widthFactor) *= grow;
  return run;
}

Acad::ErrorStatus AcDbText::adjustAlignment(const AcDbDatabase*) {
  if (isDefaultAlignment()) return Acad::eNotApplicable;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (!runsBetweenPoints()) {
    m_position = basePoint();
    return status;
  }
  const AcGeVector2d along(m_look->alignment.x - m_position.x, m_look->alignment.y - m_position.y);
  if (!(along.length() > 0) || !(measure().width > 0)) return Acad::eDegenerateGeometry;
  const Run fitted = run();
  m_rotation = fitted.rotation;
  m_height = fitted.height;
  m_look.set(&Look::widthFactor, fitted.widthFactor);
  return status;
}

void AcDbText::copyLook(const AcDbText& other) {
  m_position = other.m_position;
  m_height = other.m_height;
  m_rotation = other.m_rotation;
  m_style = other.m_style;
  m_look = other.m_look;
  m_text = other.m_text;
  m_generation = other.m_generation;
  m_horizontal = other.m_horizontal;
  m_vertical = other.m_vertical;
  m_hasAlignment = other.m_hasAlignment;
}

std::unique_ptr<AcDbText> AcDbText::plainText() const {
  auto text = std::make_unique<AcDbText>();
  text->setPropertiesFrom(this);
  text->copyLook(*this);
  return text;
}

Acad::ErrorStatus AcDbText::transformBy(const AcGeMatrix3d& matrix) { return moveBy(matrix, false); }
Acad::ErrorStatus AcDbText::placeBy(const AcGeMatrix3d& matrix) { return moveBy(matrix, true); }

Acad::ErrorStatus AcDbText::moveBy(const AcGeMatrix3d& matrix, bool dropSkew) {
  const AcDbPlaneMap plane(matrix, m_look->normal);
  if (!plane.valid) return Acad::eCannotScaleNonUniformly;
  const AcGeVector2d along = direction(m_rotation);
  const AcGeVector3d x = plane.map * AcGeVector3d(along.x, along.y, 0);
  const AcGeVector3d y = plane.map * AcGeVector3d(-along.y, along.x, 0);
  const double lx = std::hypot(x.x, x.y);
  const double ly = std::fabs(x.x * y.y - x.y * y.x) / lx;  // across the base line
  const bool square = std::fabs(x.x * y.x + x.y * y.y) <= kRightAngle * lx * ly;
  if (!square && !dropSkew) return Acad::eCannotScaleNonUniformly;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_position = plane.map * m_position;
  if (m_hasAlignment) m_look.set(&Look::alignment, plane.map * m_look->alignment);
  m_look.set(&Look::normal, plane.normal);
  m_look.set(&Look::thickness, m_look->thickness * plane.depth);
  m_height *= plane.conformal ? plane.factor : ly;
  if (!plane.conformal) m_look.set(&Look::widthFactor, m_look->widthFactor * (lx / ly));
  double turned = plane.turned(m_rotation);
  if (!plane.conformal) turned = acdbDegrees(AcGeVector2d(x.x, x.y).angle());
  if (plane.mirrored) {
    // Upside down along the mapped base line, or backward along its opposite: what turns the text less.
    const bool keepsWay = x.x * along.x + x.y * along.y >= 0;
    m_generation = static_cast<Adesk::Int16>(m_generation ^ (keepsWay ? 4 : 2));
    if (!keepsWay) turned = turned >= 180 ? turned - 180 : turned + 180;
  }
  m_rotation = turned;
  return status;
}

void AcDbText::subWorldDraw(AcGiWorldDraw& draw) const {
  const AcGeVector3d& normal = m_look->normal;
  const bool flat = normal == AcGeVector3d::kZAxis;
  if (!flat) draw.geometry().pushModelTransform(AcGeMatrix3d::planeToWorld(acdbUnitNormal(normal)));
  drawInPlane(draw.geometry());
  if (!flat) draw.geometry().popModelTransform();
}

void AcDbText::drawInPlane(AcGiGeometry& geometry) const {
  const Run fitted = run();
  const AcDbTextSize size = acdbTextExtents(m_text.view(), m_style, fitted.height, fitted.widthFactor);
  const AcGePoint3d base = basePoint();
  const AcGeVector2d right = direction(fitted.rotation);
  const AcGeVector2d along = right * (isMirroredInX() ? -1.0 : 1.0);
  const AcGeVector2d up = right.perpVector() * (isMirroredInY() ? -1.0 : 1.0);
  const double oblique = m_look->oblique;
  const double slant = oblique == 0.0 ? 0.0 : std::tan(acdbRadians(std::fmod(oblique, 180)));
  const double lean = std::fabs(slant) < 12 ? slant : 0.0;  // beyond 85 degrees no program draws
  const auto corner = [&](double u, double v) {
    const double shift = u + v * lean;
    return AcGePoint3d(base.x + along.x * shift + up.x * v, base.y + along.y * shift + up.y * v, base.z);
  };
  if (AcGiRenderer* const renderer = geometry.renderer()) {
    if (size.width == 0.0) return;
    const double factor =
        acdbTextExtents(L"H", m_style, 1.0, fitted.widthFactor).width / acdbTextExtents(L"H", 1.0).width;
    renderer->textLine(
        {m_text.view(), base, corner(size.height * factor, 0.0) - base, corner(0.0, size.height) - base});
    for (const AcDbTextStroke& stroke : acdbTextStrokes(m_text.view())) {
      const AcGePoint3d ends[] = {corner(stroke.from * factor * size.height, stroke.v * size.height),
                                  corner(stroke.to * factor * size.height, stroke.v * size.height)};
      renderer->edges(ends);
    }
    return;
  }
  const AcGePoint3d corners[] = {corner(0.0, -size.descent), corner(size.width, -size.descent),
                                 corner(size.width, size.height), corner(0.0, size.height)};
  geometry.area(corners);
}

bool AcDbText::takeTextGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 1:
      in.wide(m_text);
      return true;
    case 7:
      m_style = in.textStyle();
      return true;
    case 39:
      m_look.set(&Look::thickness, in.real());
      return true;
    case 40:
      m_height = in.real();
      return true;
    case 41:
      m_look.set(&Look::widthFactor, in.real());
      return true;
    case 50:
      m_rotation = in.real();
      return true;
    case 51:
      m_look.set(&Look::oblique, in.real());
      return true;
    case 71:
      m_generation = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 72:
      m_horizontal = static_cast<Adesk::Int8>(in.integer());
      return true;
    case 11:
      m_hasAlignment = true;
      [[fallthrough]];
    default:
      return in.coordinate(10, m_position) || in.coordinate(11, m_look, &Look::alignment) ||
             in.coordinate(210, m_look, &Look::normal);
  }
}

bool AcDbText::takeVerticalMode(AcDbDxfReader& in) {
  m_vertical = static_cast<Adesk::Int8>(in.integer());
  return true;
}

bool AcDbText::takeGroup(AcDbDxfReader& in) {
  return in.code() == 73 ? takeVerticalMode(in) : takeTextGroup(in);
}

void AcDbText::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbText");
  readSection(in, "AcDbText");  // texts have two, the vertical mode stands in the second
}

void AcDbText::writeTextSection(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbText");
  const Look& look = *m_look;
  if (look.thickness != 0.0) out.real(39, look.thickness);
  out.point(10, m_position);
  out.real(40, m_height);
  out.wide(1, m_text.view());
  if (m_rotation != 0.0) out.real(50, m_rotation);
  if (look.widthFactor != 1.0) out.real(41, look.widthFactor);
  if (look.oblique != 0.0) out.real(51, look.oblique);
  if (const auto* style =
          m_style.isValid() ? AcDbTextStyleTableRecord::cast(m_style.stub()->object) : nullptr) {
    if (style->name() != L"Standard") out.wide(7, style->name());
  }
  if (m_generation != 0) out.integer(71, m_generation);
  if (m_horizontal != 0) out.integer(72, m_horizontal);
  if (m_hasAlignment) out.point(11, look.alignment);
  out.normal(look.normal);
}

void AcDbText::writeVerticalMode(AcDbDxfWriter& out, int code) const {
  if (m_vertical != 0) out.integer(code, m_vertical);
}

void AcDbText::dxfOutFields(AcDbDxfWriter& out) const {
  writeTextSection(out);
  out.subclass("AcDbText");
  writeVerticalMode(out, 73);
  writeExtras(out, "AcDbText");
}

void AcDbText::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  if (!m_style.isNull()) visit(m_style);
}

void AcDbText::exchangeFields(AcDbText& other) {
  std::swap(m_position, other.m_position);
  std::swap(m_height, other.m_height);
  std::swap(m_rotation, other.m_rotation);
  std::swap(m_style, other.m_style);
  m_look.swap(other.m_look);
  m_text.swap(other.m_text);
  std::swap(m_generation, other.m_generation);
  std::swap(m_horizontal, other.m_horizontal);
  std::swap(m_vertical, other.m_vertical);
  std::swap(m_hasAlignment, other.m_hasAlignment);
  AcDbEntity::exchangeFields(other);
}
