#include "arx/db/dbkeptlook.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbhatchlook.h"
#include "arx/db/dbkeptgroups.h"
#include "arx/db/dbkeptpen.h"
#include "arx/db/dbleaderlook.h"
#include "arx/db/dbmain.h"

#include <cmath>

// The look of entities that are kept as file text.

namespace {

void drawSolid(const AcDbKeptPen& pen, AcDbKeptGroups& groups) {
  std::vector<AcGePoint3d> corners;
  for (const int code : {10, 11, 13, 12}) {  // the file crosses the last two
    if (!groups.points(code).empty()) corners.push_back(groups.points(code).front());
  }
  if (corners.size() < 3) return;
  pen.polygon({&corners, 1});
}

/// The four corners of a picture or a mask; empty for one without a size.
std::vector<AcGePoint3d> cornersOf(AcDbKeptGroups& groups) {
  for (const int code : {10, 11, 12, 13})
    if (groups.points(code).empty()) return {};
  const AcGePoint3d at = groups.points(10)[0];
  const AcGePoint3d size = groups.points(13)[0];  // in pixels
  const AcGeVector3d u = groups.points(11)[0].asVector();
  const AcGeVector3d v = groups.points(12)[0].asVector();
  return {at, at + u * size.x, at + u * size.x + v * size.y, at + v * size.y};
}

/// What it is clipped to (14), in pixels from the upper left corner, the centre of the first one at 0; the
/// corners where it is not.
std::vector<AcGePoint3d> borderOf(AcDbKeptGroups& groups, const std::vector<AcGePoint3d>& corners) {
  std::vector<AcGePoint3d> clip = groups.points(14);
  if (corners.empty() || groups.real(280) == 0.0 || clip.size() < 2) return corners;
  const double height = groups.points(13)[0].y;
  const AcGeVector3d u = groups.points(11)[0].asVector();
  const AcGeVector3d v = groups.points(12)[0].asVector();
  if (clip.size() == 2) {
    const AcGePoint3d a = clip[0];
    const AcGePoint3d b = clip[1];
    clip = {a, {b.x, a.y, 0}, b, {a.x, b.y, 0}};
  }
  for (AcGePoint3d& corner : clip) corner = corners[0] + u * (corner.x + 0.5) + v * (height - corner.y - 0.5);
  return clip;
}

void drawFrame(const AcDbKeptPen& pen, std::vector<AcGePoint3d> border) {
  if (!border.empty()) border.push_back(border.front());
  pen.edges(border);
}

void drawImage(const AcDbKeptPen& pen, AcDbKeptGroups& groups) {
  drawFrame(pen, borderOf(groups, cornersOf(groups)));
}

/// Whether the drawing shows the frames of its masks (70 of its settings); it does when it does not say.
bool showsMaskFrames(AcDbDatabase* database) {
  if (!database || !database->namedObjectsDictionaryId().isLive()) return true;
  const auto* const named = AcDbDictionary::cast(database->namedObjectsDictionaryId().stub()->object);
  AcDbObjectId id;
  if (!named || named->getAt(L"ACAD_WIPEOUT_VARS", id) != Acad::eOk || !id.isLive()) return true;
  const auto* const settings = AcDbOtherObject::cast(id.stub()->object);
  DxfTagText::Cursor cursor = settings ? settings->tags().tags() : DxfTagText::Cursor({});
  Adesk::Int64 shown = 1;
  for (DxfTag tag; cursor.next(tag);)
    if (tag.code == 70) return !dxfParseInteger(tag.value, shown) || shown != 0;
  return true;
}

/// Hides what lies within its border, or between its corners and the border (290).
void drawMask(const AcDbOtherEntity& entity, const AcDbKeptPen& pen, AcDbKeptGroups& groups) {
  std::vector<AcGePoint3d> ring = cornersOf(groups);
  const std::vector<AcGePoint3d> border = borderOf(groups, ring);
  if (border.empty()) return;
  if (AcGiRenderer* const renderer = pen.renderer()) {
    const bool inverted = groups.real(290) != 0.0 && groups.real(280) != 0.0;
    // One ring with a bridge to the hole: where it goes and comes back, nothing lies between.
    ring.push_back(ring.front());
    ring.insert(ring.end(), border.begin(), border.end());
    ring.push_back(border.front());
    renderer->mask(inverted ? ring : border);
    if (!showsMaskFrames(entity.database())) return;
  }
  drawFrame(pen, border);
}

void drawViewport(const AcDbKeptPen& pen, AcDbKeptGroups& groups) {
  if (groups.points(10).empty()) return;
  const AcGePoint3d c = groups.points(10)[0];
  const double w = groups.real(40) / 2;
  const double h = groups.real(41) / 2;
  const AcGePoint3d frame[] = {{c.x - w, c.y - h, c.z},
                               {c.x + w, c.y - h, c.z},
                               {c.x + w, c.y + h, c.z},
                               {c.x - w, c.y + h, c.z},
                               {c.x - w, c.y - h, c.z}};
  pen.edges(frame);
}

/// Lines through a point of each vertex' mitre: the first parameter (41) of each element (74) is its
/// distance.
void drawMultiline(const AcDbKeptPen& pen, AcDbKeptGroups& groups) {
  const std::vector<AcGePoint3d>& vertices = groups.points(11);
  const std::vector<AcGePoint3d>& mitres = groups.points(13);
  std::vector<std::vector<AcGePoint3d>> lines;
  std::size_t vertex = 0;  // from 1
  std::size_t element = 0;
  bool first = false;
  for (const auto& [code, value] : groups.inOrder()) {
    if (code == 11) ++vertex, element = 0;
    if (code == 74) first = true;
    if (code != 41 || !first || vertex == 0 || vertex > mitres.size() || vertex > vertices.size()) continue;
    first = false;
    if (lines.size() <= element) lines.resize(element + 1);
    lines[element++].push_back(vertices[vertex - 1] + mitres[vertex - 1].asVector() * value);
  }
  const bool closed = (static_cast<int>(groups.real(71)) & 2) != 0;
  for (std::vector<AcGePoint3d>& line : lines) {
    if (closed && !line.empty()) line.push_back(line.front());
    pen.edges(line);
  }
}

void drawPicture(AcGiGeometry& geometry, const AcDbOtherEntity& entity, AcDbKeptGroups& groups) {
  const AcDbBlockTableRecord* const block = entity.picture();
  if (!block) return;
  AcGeMatrix3d place;  // that of a dimension stands in the world
  if (entity.dxfName() != "DIMENSION" && !groups.points(10).empty()) {
    const AcGePoint3d along = groups.points(11).empty() ? AcGePoint3d(1, 0, 0) : groups.points(11)[0];
    place = AcGeMatrix3d::translation(groups.points(10)[0].asVector()) *
            AcGeMatrix3d::rotation(std::atan2(along.y, along.x), AcGeVector3d::kZAxis);
  }
  geometry.block({*block, block->entities().size(), place});
}

}  // namespace

void acdbDrawKept(const AcDbOtherEntity& entity, const std::vector<DxfExtra>& sections,
                  AcGiGeometry& geometry) {
  const AcDbKeptPen pen(geometry);
  const std::string_view type = entity.dxfName();
  AcDbKeptGroups groups(sections);
  if (entity.picture()) return drawPicture(geometry, entity, groups);
  if (type == "LEADER") return acdbDrawLeader(entity, groups, pen);
  if (type == "IMAGE") return drawImage(pen, groups);
  if (type == "WIPEOUT") return drawMask(entity, pen, groups);
  if (type == "MLINE") return drawMultiline(pen, groups);
  if (type == "VIEWPORT") return drawViewport(pen, groups);
  if (type != "SOLID" && type != "TRACE" && type != "HATCH") {
    if (pen.renderer()) pen.renderer()->unknown();
    return;
  }
  AcGeVector3d normal = groups.normal();
  if (!(normal.length() > 0.0)) normal = AcGeVector3d::kZAxis;
  geometry.pushModelTransform(AcGeMatrix3d::planeToWorld(normal.normal()));
  if (type != "HATCH") drawSolid(pen, groups);
  for (const DxfExtra& section : sections)
    if (section.subclass == "AcDbHatch") AcDbHatchLook(section.tags).draw(pen);
  geometry.popModelTransform();
}
