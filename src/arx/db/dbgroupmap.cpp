#include "arx/db/dbgroupmap.h"

#include "arx/db/dbkeptlook.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbplanemap.h"
#include "arx/gi/gigeometry.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

namespace {

enum class Role {
  kPoint,       // of the world
  kPlanePoint,  // of the plane whose normal is group 210, with its elevation
  kVector,      // of the world, with a length
  kDirection,   // of the world, its length has no meaning
  kLength,
  kDepth,  // along the normal
  kTurn,   // degrees in the plane
  kTurnBack,
  kMustBeZero,  // what is placed by it is not known
};

struct Row {
  std::string_view section;
  int first;
  int last;
  Role role;
};

// Sections by their markers: groups of other codes mean no place.
constexpr std::array kRows = {
    Row{"AcDbEllipse", 10, 10, Role::kPoint},
    Row{"AcDbEllipse", 11, 11, Role::kVector},
    Row{"AcDbEllipse", 210, 210, Role::kDirection},
    Row{"AcDbSpline", 10, 11, Role::kPoint},
    Row{"AcDbSpline", 12, 13, Role::kVector},
    Row{"AcDbSpline", 210, 210, Role::kDirection},
    Row{"AcDbHelix", 10, 11, Role::kPoint},
    Row{"AcDbHelix", 12, 12, Role::kDirection},
    Row{"AcDbHelix", 40, 40, Role::kLength},
    Row{"AcDbHelix", 42, 42, Role::kLength},
    Row{"AcDbTrace", 10, 13, Role::kPlanePoint},
    Row{"AcDbTrace", 39, 39, Role::kDepth},
    Row{"AcDbTrace", 210, 210, Role::kDirection},
    Row{"AcDbXline", 10, 10, Role::kPoint},
    Row{"AcDbXline", 11, 11, Role::kDirection},
    Row{"AcDbDimension", 10, 10, Role::kPoint},
    Row{"AcDbDimension", 11, 11, Role::kPlanePoint},
    Row{"AcDbDimension", 12, 12, Role::kMustBeZero},
    Row{"AcDbDimension", 51, 51, Role::kTurnBack},  // from the plane's X axis, clockwise
    Row{"AcDbDimension", 53, 53, Role::kTurn},
    Row{"AcDbDimension", 210, 210, Role::kDirection},
    Row{"AcDbAlignedDimension", 12, 12, Role::kMustBeZero},
    Row{"AcDbAlignedDimension", 13, 14, Role::kPoint},
    Row{"AcDbAlignedDimension", 50, 50, Role::kTurn},
    Row{"AcDbRotatedDimension", 50, 50, Role::kTurn},
    Row{"AcDbRadialDimension", 15, 15, Role::kPoint},
    Row{"AcDbRadialDimension", 40, 40, Role::kLength},
    Row{"AcDbDiametricDimension", 15, 15, Role::kPoint},
    Row{"AcDbDiametricDimension", 40, 40, Role::kLength},
    Row{"AcDb3PointAngularDimension", 13, 15, Role::kPoint},
    Row{"AcDb3PointAngularDimension", 16, 16, Role::kPlanePoint},
    Row{"AcDb2LineAngularDimension", 13, 15, Role::kPoint},
    Row{"AcDb2LineAngularDimension", 16, 16, Role::kPlanePoint},
    Row{"AcDbOrdinateDimension", 13, 14, Role::kPoint},
    Row{"AcDbLeader", 10, 10, Role::kPoint},
    Row{"AcDbLeader", 40, 41, Role::kLength},
    Row{"AcDbLeader", 210, 211, Role::kDirection},
    Row{"AcDbLeader", 212, 213, Role::kVector},
    Row{"AcDbRasterImage", 10, 10, Role::kPoint},
    Row{"AcDbRasterImage", 11, 12, Role::kVector},
    Row{"AcDbWipeout", 10, 10, Role::kPoint},
    Row{"AcDbWipeout", 11, 12, Role::kVector},
    Row{"AcDbFcf", 10, 10, Role::kPoint},
    Row{"AcDbFcf", 11, 11, Role::kDirection},
    Row{"AcDbFcf", 210, 210, Role::kDirection},
    Row{"AcDbShape", 10, 10, Role::kPoint},
    Row{"AcDbShape", 39, 39, Role::kDepth},
    Row{"AcDbShape", 40, 40, Role::kLength},
    Row{"AcDbShape", 50, 50, Role::kTurn},
    Row{"AcDbShape", 210, 210, Role::kDirection},
    Row{"AcDbMline", 10, 11, Role::kPoint},
    Row{"AcDbMline", 12, 13, Role::kDirection},
    Row{"AcDbMline", 40, 42, Role::kLength},
    Row{"AcDbMline", 210, 210, Role::kDirection},
    Row{"AcDbSubDMesh", 10, 10, Role::kPoint},
    Row{"AcDbBlockReference", 10, 10, Role::kPoint},
    Row{"AcDbBlockReference", 210, 210, Role::kDirection},
    Row{"AcDbTable", 11, 11, Role::kDirection},
    Row{"AcDbTable", 40, 41, Role::kLength},
    Row{"AcDbTable", 140, 142, Role::kLength},
};

constexpr std::array<std::string_view, 16> kMappedTypes = {
    "HATCH", "ELLIPSE", "SPLINE", "SOLID",   "DIMENSION", "LEADER", "IMAGE", "ACAD_TABLE",
    "TRACE", "HELIX",   "XLINE",  "WIPEOUT", "TOLERANCE", "SHAPE",  "MLINE", "MESH"};

bool hasPicture(std::string_view type) { return type == "DIMENSION" || type == "ACAD_TABLE"; }

/// A group whose number may change; its text stays when it does not.
struct Group {
  int code;
  std::string_view value;
  std::optional<double> changed;
};

}  // namespace

/// The groups of one section under a map.
class AcDbSectionMap {
public:
  AcDbSectionMap(AcDbGroupMap& whole, const DxfTagText& tags);
  bool rows(std::string_view marker);
  bool hatch();
  [[nodiscard]] DxfTagText text() const;

private:
  [[nodiscard]] std::optional<double> number(std::size_t at) const;
  [[nodiscard]] int codeAt(std::size_t at) const { return at < m_groups.size() ? m_groups[at].code : -1; }
  [[nodiscard]] std::size_t find(int code, std::size_t from = 0) const;
  bool point(std::size_t at, AcGePoint3d& p, bool& deep) const;
  void put(std::size_t at, double value);
  void putPoint(std::size_t at, const AcGePoint3d& p, bool deep);
  bool apply(std::size_t at, Role role);
  bool plainNumber(std::size_t at, Role role);
  bool planar(std::size_t at, double elevation);
  void addEllipse();
  void addImage();
  [[nodiscard]] bool isMeasuredLength(std::size_t at) const;
  // A hatch, whose codes mean what their place in the order says.
  bool hatchPath(std::size_t& at, double elevation);
  bool hatchEdge(std::size_t& at, double elevation);
  bool hatchRest(std::size_t at, double elevation);
  bool lengthAt(std::size_t at) { return plainNumber(at, Role::kLength); }
  bool vectorAt(std::size_t at);

  AcDbGroupMap& m_whole;
  std::vector<Group> m_groups;
  AcDbPlaneMap m_plane;
};

namespace {

/// The normal of a section, else that of the sections in front of it.
AcGeVector3d normalOf(const std::vector<Group>& groups, const AcGeVector3d& former) {
  double parts[3] = {former.x, former.y, former.z};
  for (const Group& group : groups) {
    if (group.code >= 210 && group.code <= 230 && group.code % 10 == 0)
      dxfParseReal(group.value, parts[(group.code - 210) / 10]);
  }
  return acdbUnitNormal({parts[0], parts[1], parts[2]});
}

std::vector<Group> groupsOf(const DxfTagText& tags) {
  std::vector<Group> groups;
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) groups.push_back({tag.code, tag.value, {}});
  return groups;
}

}  // namespace

AcDbSectionMap::AcDbSectionMap(AcDbGroupMap& whole, const DxfTagText& tags)
    : m_whole(whole), m_groups(groupsOf(tags)), m_plane(whole.m_matrix, normalOf(m_groups, whole.m_normal)) {
  whole.m_normal = normalOf(m_groups, whole.m_normal);
}

std::optional<double> AcDbSectionMap::number(std::size_t at) const {
  double value = 0.0;
  if (at >= m_groups.size()) return std::nullopt;
  if (m_groups[at].changed) return m_groups[at].changed;
  if (!dxfParseReal(m_groups[at].value, value)) return std::nullopt;
  return value;
}

std::size_t AcDbSectionMap::find(int code, std::size_t from) const {
  while (from < m_groups.size() && m_groups[from].code != code) ++from;
  return from;
}

void AcDbSectionMap::put(std::size_t at, double value) {
  if (number(at) != value) m_groups[at].changed = value;
}

bool AcDbSectionMap::point(std::size_t at, AcGePoint3d& p, bool& deep) const {
  const int code = codeAt(at);
  const auto x = number(at);
  const auto y = codeAt(at + 1) == code + 10 ? number(at + 1) : std::nullopt;
  deep = codeAt(at + 2) == code + 20;
  const auto z = deep ? number(at + 2) : 0.0;
  if (!x || !y || !z) return false;
  p = {*x, *y, *z};
  return true;
}

void AcDbSectionMap::putPoint(std::size_t at, const AcGePoint3d& p, bool deep) {
  put(at, p.x);
  put(at + 1, p.y);
  if (deep) return put(at + 2, p.z);
  if (p.z != 0.0)
    m_groups.insert(m_groups.begin() + static_cast<std::ptrdiff_t>(at) + 2,
                    Group{m_groups[at].code + 20, {}, p.z});
}

bool AcDbSectionMap::plainNumber(std::size_t at, Role role) {
  const auto value = number(at);
  if (!value) return false;
  if (role == Role::kLength) put(at, *value * m_plane.factor);
  if (role == Role::kDepth) put(at, *value * m_plane.depth);
  if (role == Role::kTurn) put(at, m_plane.turned(*value));
  if (role == Role::kTurnBack && m_plane.turn != 0.0) put(at, -m_plane.turned(-*value));
  return true;
}

bool AcDbSectionMap::vectorAt(std::size_t at) {
  AcGePoint3d p;
  bool deep = false;
  if (!point(at, p, deep)) return false;
  const AcGeVector3d mapped = m_plane.map * p.asVector();
  put(at, mapped.x);
  put(at + 1, mapped.y);
  return true;
}

bool AcDbSectionMap::apply(std::size_t at, Role role) {
  if (role == Role::kLength || role == Role::kDepth || role == Role::kTurn || role == Role::kTurnBack)
    return plainNumber(at, role);
  AcGePoint3d p;
  bool deep = false;
  if (!point(at, p, deep)) return false;
  const AcGeMatrix3d& matrix = m_whole.m_matrix;
  switch (role) {
    case Role::kPoint:
      p = matrix * p;
      m_whole.m_box.addPoint(p);
      break;
    case Role::kPlanePoint:
      p = m_plane.map * p;
      m_whole.m_box.addPoint(acdbToWorld(p, m_plane.normal));
      break;
    case Role::kVector:
      p = AcGePoint3d::kOrigin + matrix * p.asVector();
      break;
    case Role::kDirection: {
      const double length = p.asVector().length();
      const AcGeVector3d mapped = matrix * p.asVector();
      if (mapped == p.asVector()) return true;
      p = AcGePoint3d::kOrigin + mapped.normal() * length;
      break;
    }
    default:
      return p == AcGePoint3d::kOrigin;
  }
  putPoint(at, p, deep);
  return true;
}

bool AcDbSectionMap::isMeasuredLength(std::size_t at) const {
  const auto kind = number(find(70));
  if (codeAt(at) != 42 || !kind) return false;
  const int low = static_cast<int>(std::clamp(*kind, 0.0, 255.0)) & 7;
  return low == 0 || low == 1 || low == 3 || low == 4;  // along, aligned, diameter, radius: no angle
}

bool AcDbSectionMap::rows(std::string_view marker) {
  for (std::size_t at = 0; at < m_groups.size(); ++at) {
    const int code = m_groups[at].code;
    if (code == 101) return false;  // another object within
    if (code == 301 && m_groups[at].value == "CELL_VALUE") at = find(304, at);
    for (const Row& row : kRows) {
      if (row.section != marker || code < row.first || code > row.last) continue;
      if (!apply(at, row.role)) return false;
      break;
    }
    if (marker == "AcDbDimension" && isMeasuredLength(at) && !lengthAt(at)) return false;
  }
  if (marker == "AcDbEllipse") addEllipse();
  if (marker == "AcDbRasterImage" || marker == "AcDbWipeout") addImage();
  return true;
}

/// All of it, drawn or not: in each direction the root of the squares of both half axes.
void AcDbSectionMap::addEllipse() {
  AcGePoint3d center, major;
  bool deep = false;
  const auto ratio = number(find(40));
  if (!point(find(10), center, deep) || !point(find(11), major, deep) || !ratio) return;
  const AcGeVector3d a = major.asVector();
  const AcGeVector3d b = m_plane.normal.crossProduct(a) * *ratio;
  const AcGeVector3d reach(std::hypot(a.x, b.x), std::hypot(a.y, b.y), std::hypot(a.z, b.z));
  m_whole.m_box.addPoint(center + reach);
  m_whole.m_box.addPoint(center - reach);
}

void AcDbSectionMap::addImage() {
  AcGePoint3d corner, u, v;
  bool deep = false;
  const std::size_t size = find(13);
  const auto width = number(size);
  const auto height = number(size + 1);
  if (!point(find(10), corner, deep) || !point(find(11), u, deep) || !point(find(12), v, deep)) return;
  if (!width || !height) return;
  const AcGeVector3d across = u.asVector() * *width;
  const AcGeVector3d up = v.asVector() * *height;
  for (const AcGeVector3d& way : {across, up, across + up}) m_whole.m_box.addPoint(corner + way);
}

// ---- Hatches

/// A point of the plane given by two coordinates.
bool AcDbSectionMap::planar(std::size_t at, double elevation) {
  const auto x = number(at);
  const auto y = codeAt(at + 1) == codeAt(at) + 10 ? number(at + 1) : std::nullopt;
  if (!x || !y) return false;
  const AcGePoint3d p = m_plane.map * AcGePoint3d(*x, *y, elevation);
  m_whole.m_box.addPoint(acdbToWorld(p, m_plane.normal));
  put(at, p.x);
  put(at + 1, p.y);
  return true;
}

/// One edge: its kind at `at`, which goes on to the next one.
bool AcDbSectionMap::hatchEdge(std::size_t& at, double elevation) {
  const auto kind = number(at);
  if (!kind || *kind < 1 || *kind > 4) return false;
  const std::size_t begin = ++at;
  const auto ends = [&](int code) {
    return code == 72 || code == 92 || code == 75 || code == 97 || code < 0;
  };
  const bool spline = *kind == 4;
  // A spline tells the number of its fit points by the code that otherwise ends the path.
  bool fit = false;
  for (; !ends(codeAt(at)) || (spline && !fit && codeAt(at) == 97); ++at) fit = fit || codeAt(at) == 97;
  const std::size_t way = find(73, begin);
  const bool clockwise = *kind == 2 && way < at && number(way) == 0.0;
  for (std::size_t i = begin; i < at; ++i) {
    const int code = m_groups[i].code;
    const bool relative = (*kind == 3 && code == 11) || (spline && (code == 12 || code == 13));
    if (relative ? !vectorAt(i) : (code == 10 || code == 11) && !planar(i, elevation)) return false;
    if (*kind == 2 && code == 40 && !lengthAt(i)) return false;
    const bool angle = *kind == 2 && (code == 50 || code == 51);
    if (angle && !plainNumber(i, clockwise ? Role::kTurnBack : Role::kTurn)) return false;
  }
  return true;
}

/// One path: its flags at `at`, which goes on to the next one.
bool AcDbSectionMap::hatchPath(std::size_t& at, double elevation) {
  constexpr int kPolyline = 2;
  const auto flags = number(at);
  if (!flags) return false;
  ++at;
  if ((static_cast<int>(std::clamp(*flags, 0.0, 65535.0)) & kPolyline) == 0) {
    const auto count = codeAt(at) == 93 ? number(at) : std::nullopt;
    if (!count) return false;
    ++at;
    while (codeAt(at) == 72)
      if (!hatchEdge(at, elevation)) return false;
  }
  // Vertices of a polyline, and the objects that the path came from.
  for (; at < m_groups.size() && codeAt(at) != 92 && codeAt(at) != 75; ++at)
    if (codeAt(at) == 10 && !planar(at, elevation)) return false;
  return true;
}

/// Pattern and seed points.
bool AcDbSectionMap::hatchRest(std::size_t at, double elevation) {
  for (; at < m_groups.size(); ++at) {
    bool known = true;
    switch (m_groups[at].code) {
      case 10:
        known = planar(at, elevation);
        break;
      case 41:
      case 49:
        known = lengthAt(at);
        break;
      case 52:
      case 53:
        known = plainNumber(at, Role::kTurn);
        break;
      case 43:
      case 45: {
        const bool base = m_groups[at].code == 43;
        const auto x = number(at);
        const auto y = codeAt(at + 1) == codeAt(at) + 1 ? number(at + 1) : std::nullopt;
        if (!x || !y) return false;
        AcGePoint3d p(*x, *y, base ? elevation : 0.0);
        p = base ? m_plane.map * p : AcGePoint3d::kOrigin + m_plane.map * p.asVector();
        put(at, p.x);
        put(at + 1, p.y);
        break;
      }
      case 460: {  // of a gradient, radians
        const auto angle = number(at);
        if (!angle) return false;
        if (m_plane.turn != 0.0) put(at, acdbRadians(m_plane.turned(acdbDegrees(*angle))));
        break;
      }
      case 101:
        return false;
      default:
        break;
    }
    if (!known) return false;
  }
  return true;
}

bool AcDbSectionMap::hatch() {
  const std::size_t base = find(10);
  std::size_t at = find(91);
  AcGePoint3d elevation;
  bool deep = false;
  if (base < at && !point(base, elevation, deep)) return false;
  if (at >= m_groups.size()) return true;  // no boundary
  ++at;
  while (codeAt(at) == 92)
    if (!hatchPath(at, elevation.z)) return false;
  if (at < m_groups.size() && codeAt(at) != 75) return false;
  if (!hatchRest(at, elevation.z)) return false;
  // Of the base point the elevation alone has a meaning.
  if (base < m_groups.size() && deep) put(base + 2, (m_plane.map * AcGePoint3d(0.0, 0.0, elevation.z)).z);
  const std::size_t normal = find(210);
  return normal >= m_groups.size() || apply(normal, Role::kDirection);
}

DxfTagText AcDbSectionMap::text() const {
  DxfTagText result;
  for (const Group& group : m_groups) {
    if (group.changed)
      result.appendReal(group.code, *group.changed);
    else
      result.append(group.code, group.value);
  }
  return result;
}

// ---- Whole entities

bool AcDbGroupMap::knows(std::string_view type) {
  return std::find(kMappedTypes.begin(), kMappedTypes.end(), type) != kMappedTypes.end();
}

bool AcDbGroupMap::section(std::string_view marker, DxfTagText& tags) {
  if (marker == "AcDbEntity") return true;
  const bool known = marker == "AcDbHatch" || std::any_of(kRows.begin(), kRows.end(), [&](const Row& row) {
                       return row.section == marker;
                     });
  if (!known) return false;
  AcDbSectionMap map(*this, tags);
  if (marker == "AcDbHatch" ? !map.hatch() : !map.rows(marker)) return false;
  tags = map.text();
  return true;
}

// ---- The entity

namespace {

/// The parts of a picture, which stand in the world for a dimension.
template <class Work>
bool forParts(const AcDbBlockTableRecord& picture, Work work) {
  for (const AcDbObjectId id : picture.entities()) {
    const auto* part = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (part && !work(id, *part)) return false;
  }
  return true;
}

}  // namespace

bool AcDbOtherEntity::mapGroups(AcDbGroupMap& map, std::vector<DxfExtra>& sections) const {
  if (!AcDbGroupMap::knows(m_type)) return false;
  for (DxfExtra& section : sections)
    if (!map.section(section.subclass, section.tags)) return false;
  return true;
}

bool AcDbOtherEntity::isTransformable() const {
  std::vector<DxfExtra> sections = keptSections();
  const AcGeMatrix3d identity;
  AcDbGroupMap map(m_type, identity);
  if (!mapGroups(map, sections)) return false;
  const AcDbBlockTableRecord* const drawn = picture();
  // A picture that holds a picture could hold itself.
  return !drawn || forParts(*drawn, [](AcDbObjectId, const AcDbEntity& part) {
    return !hasPicture(part.dxfName()) && part.isTransformable();
  });
}

Acad::ErrorStatus AcDbOtherEntity::transformBy(const AcGeMatrix3d& matrix) {
  if (!isTransformable()) return Acad::eNotImplementedYet;
  if (!matrix.isUniScaledOrtho() || matrix.det() <= 0) return Acad::eCannotScaleNonUniformly;
  std::vector<DxfExtra> sections = keptSections();
  AcDbGroupMap map(m_type, matrix);
  if (!mapGroups(map, sections)) return Acad::eNotImplementedYet;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  setKeptSections(std::move(sections));
  const AcDbBlockTableRecord* const drawn = picture();
  if (!drawn) return Acad::eOk;
  // That of a table hangs at its insertion point and turns with it.
  const AcGeMatrix3d parts =
      m_type == "DIMENSION" ? matrix : AcGeMatrix3d::scaling(AcDbPlaneMap(matrix, {0, 0, 1}).factor);
  Acad::ErrorStatus result = Acad::eOk;
  forParts(*drawn, [&](AcDbObjectId id, const AcDbEntity&) {
    const AcDbObjectPointer<AcDbEntity> part(id, AcDb::kForWrite);
    const Acad::ErrorStatus done = part ? part->transformBy(parts) : part.openStatus();
    if (result == Acad::eOk) result = done;
    return true;
  });
  return result;
}

bool AcDbOtherEntity::addKeptExtents(AcDbExtents& extents) const {
  std::vector<DxfExtra> sections = keptSections();
  const AcGeMatrix3d identity;
  AcDbGroupMap map(m_type, identity);
  if (!mapGroups(map, sections)) return false;
  extents.addExt(map.box());
  return true;
}

namespace {
bool namesPicture(const DxfExtra& section) {
  return section.subclass == "AcDbDimension" || section.subclass == "AcDbBlockReference";
}
}  // namespace

const AcDbBlockTableRecord* AcDbOtherEntity::picture() const {
  AcDbDatabase* const owner = database();
  const std::string name = pictureName();
  if (!owner || name.empty()) return nullptr;
  const AcDbObjectId table = owner->blockTableId();
  AcDbObjectId id;
  if (!table.isLive() ||
      AcDbSymbolTable::cast(table.stub()->object)->getIdAt(dxfToWide(name).c_str(), id) != Acad::eOk)
    return nullptr;
  return AcDbBlockTableRecord::cast(id.stub()->object);
}

void AcDbOtherEntity::subWorldDraw(AcGiWorldDraw& draw) const {
  acdbDrawKept(*this, keptSections(), draw.geometry());
}

std::string AcDbOtherEntity::pictureName() const {
  if (!hasPicture(m_type)) return {};
  for (const DxfExtra& section : keptSections()) {
    if (!namesPicture(section)) continue;
    DxfTagText::Cursor cursor = section.tags.tags();
    for (DxfTag tag; cursor.next(tag);)
      if (tag.code == 2) return std::string(tag.value);
  }
  return {};
}

Acad::ErrorStatus AcDbOtherEntity::setPictureName(const std::string& name) {
  if (pictureName().empty()) return Acad::eNotApplicable;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  std::vector<DxfExtra> sections = keptSections();
  for (DxfExtra& section : sections) {
    if (!namesPicture(section)) continue;
    DxfTagText renamed;
    DxfTagText::Cursor cursor = section.tags.tags();
    for (DxfTag tag; cursor.next(tag);) renamed.append(tag.code, tag.code == 2 ? name : tag.value);
    section.tags = std::move(renamed);
  }
  setKeptSections(std::move(sections));
  return status;
}

namespace {

/// Pictures by the number of entities that show them: a shared one cannot move with one alone.
std::map<std::string, int> picturesOf(const AcDbDatabase& database) {
  std::map<std::string, int> count;
  for (const AcDbObjectId id : database.allObjects()) {
    const auto* other = id.isLive() ? AcDbOtherEntity::cast(id.stub()->object) : nullptr;
    if (other && hasPicture(other->dxfName())) ++count[other->pictureName()];
  }
  return count;
}

}  // namespace

std::wstring acdbImmovable(const std::vector<AcDbObjectId>& entities, bool mirrored) {
  std::map<std::string, int> counts;
  std::optional<std::map<std::string, int>> pictures;
  for (const AcDbObjectId id : entities) {
    const auto* entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (!entity) continue;
    bool movable = entity->isTransformable();
    const auto* other = AcDbOtherEntity::cast(entity);
    if (other && mirrored) movable = false;
    if (movable && other && hasPicture(other->dxfName())) {
      if (!pictures) pictures = picturesOf(*id.database());
      const std::string picture = other->pictureName();
      movable = picture.empty() || (*pictures)[picture] < 2;
    }
    if (!movable) ++counts[std::string(entity->dxfName())];
  }
  std::wstring text;
  for (const auto& [type, count] : counts) {
    if (!text.empty()) text += L", ";
    text += std::to_wstring(count) + L' ' + veltora::base::fromUtf8(type);
  }
  return text;
}
