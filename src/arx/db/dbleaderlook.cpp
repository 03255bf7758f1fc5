#include "arx/db/dbleaderlook.h"

#include "arx/db/dbblocktable.h"
#include "arx/db/dbkeptgroups.h"
#include "arx/db/dbkeptpen.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbspline.h"
#include "arx/db/dbsymrecords.h"

#include <cmath>
#include <optional>
#include <string_view>

namespace {

// Groups of a leader
constexpr int kStyleName = 3;
constexpr int kHasHead = 71;
constexpr int kIsCurved = 72;
constexpr int kAnnotation = 73;  // 0 for a text
constexpr int kTurnedLanding = 74;
constexpr int kHasLanding = 75;
constexpr int kTextWidth = 41;
constexpr int kHorizontal = 211;
// Groups of a dimension style
constexpr int kScale = 40;     // DIMSCALE
constexpr int kHeadSize = 41;  // DIMASZ
constexpr int kTextAbove = 77;
constexpr int kTextGap = 147;
constexpr int kLineColor = 176;
constexpr int kHeadBlock = 341;  // DIMLDRBLK

constexpr double kUsualHead = 2.5;
constexpr double kUsualGap = 0.625;
constexpr double kHeadSlope = 1.0 / 6.0;  // half of the usual head's width, of its length

using Value = std::optional<std::string_view>;

/// What a leader says otherwise than its style: pairs of a group code (1070) and its value between braces.
Value overridden(const DxfTagText& extended, int code) {
  DxfTagText::Cursor cursor = extended.tags();
  bool own = false;
  bool within = false;
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code == 1001) own = tag.value == "ACAD", within = false;
    if (own && tag.code == 1000 && tag.value == "DSTYLE") within = true;
    if (!within || tag.code != 1070) continue;
    Adesk::Int64 named = 0;
    DxfTag value;
    if (!dxfParseInteger(tag.value, named) || !cursor.next(value)) return std::nullopt;
    if (named == code) return value.value;
  }
  return std::nullopt;
}

/// The settings that count for a leader.
class LeaderStyle {
public:
  explicit LeaderStyle(const AcDbOtherEntity& leader) : m_leader(leader) {
    const AcDbDatabase* const database = leader.database();
    const Value name = AcDbKeptGroups::textOf(leader.keptSections(), kStyleName);
    if (!database || !name) return;
    const AcDbObjectId table = database->tableId("DIMSTYLE");
    if (!table.isLive()) return;
    const AcDbObjectId id = AcDbSymbolTable::cast(table.stub()->object)->idOfText(*name);
    if (id.isLive()) m_style = AcDbOtherTableRecord::cast(id.stub()->object);
  }
  [[nodiscard]] Value value(int code) const {
    const Value own = overridden(m_leader.xDataTags(), code);
    return own || !m_style ? own : AcDbKeptGroups::textOf(m_style->keptSections(), code);
  }
  [[nodiscard]] double real(int code, double usual) const {
    const Value text = value(code);
    double number = 0.0;
    return text && dxfParseReal(*text, number) && std::isfinite(number) ? number : usual;
  }
  /// Zero leaves the scale to viewports: that of the drawing itself is 1.
  [[nodiscard]] double scale() const {
    const double given = real(kScale, 1.0);
    return given == 0.0 ? 1.0 : given;
  }
  [[nodiscard]] double headLength() const { return real(kHeadSize, kUsualHead) * scale(); }
  /// 0 leaves it to the leader, 256 to its layer.
  [[nodiscard]] AcCmColor color() const {
    AcCmColor color(0);
    const double index = real(kLineColor, 0.0);
    if (index >= 0.0 && index <= 256.0) color.setColorIndex(static_cast<int>(index));
    const AcDbObjectId id = m_leader.layerId();
    const auto* const layer = id.isLive() ? AcDbLayerTableRecord::cast(id.stub()->object) : nullptr;
    return color.isByLayer() && layer ? layer->color() : color;
  }
  [[nodiscard]] const AcDbBlockTableRecord* head() const {
    const Value handle = value(kHeadBlock);
    AcDbDatabase* const database = m_leader.database();
    const AcDbObjectId id = handle && database ? database->liveIdOf(*handle) : AcDbObjectId();
    return id.isNull() ? nullptr : AcDbBlockTableRecord::cast(id.stub()->object);
  }

private:
  const AcDbOtherEntity& m_leader;
  const AcDbOtherTableRecord* m_style = nullptr;
};

/// From the last vertex under the text, whose style sets it above the line.
std::optional<AcGeVector3d> landingOf(AcDbKeptGroups& groups, const LeaderStyle& style) {
  const double width = groups.real(kTextWidth);
  const bool wanted = groups.real(kAnnotation, 3.0) == 0.0 && groups.real(kHasLanding, 1.0) != 0.0;
  if (!wanted || !(width > 0.0) || style.real(kTextAbove, 1.0) == 0.0) return std::nullopt;
  const auto& given = groups.points(kHorizontal);
  const AcGeVector3d along = given.empty() ? AcGeVector3d::kXAxis : given.front().asVector();
  const double turned = groups.real(kTurnedLanding) != 0.0 ? -1.0 : 1.0;
  return along * (turned * (style.real(kTextGap, kUsualGap) * style.scale() + width));
}

std::vector<AcGeCurvePiece> piecesOf(const std::vector<AcGePoint3d>& vertices, bool curved) {
  std::vector<AcGeCurvePiece> pieces;
  if (curved && vertices.size() > 2) pieces = AcDbSpline(vertices).pieces();
  return pieces.empty() ? AcDbKeptPen::straight(vertices) : pieces;
}

/// At the first vertex, pointing away from the second.
void drawHead(const std::vector<AcGePoint3d>& vertices, const AcGeVector3d& normal, const LeaderStyle& style,
              const AcDbKeptPen& pen) {
  const AcGeVector3d first = vertices[1] - vertices[0];
  const double length = style.headLength();
  if (!(length > 0.0) || !(length <= first.length() / 2)) return;
  const AcGePoint3d& tip = vertices[0];
  if (const AcDbBlockTableRecord* const block = style.head()) {
    const AcGeVector3d flat = AcGeMatrix3d::worldToPlane(normal) * first;
    const AcGeMatrix3d place = AcGeMatrix3d::translation(tip.asVector()) *
                               AcGeMatrix3d::planeToWorld(normal) *
                               AcGeMatrix3d::rotation(std::atan2(-flat.y, -flat.x), AcGeVector3d::kZAxis) *
                               AcGeMatrix3d::scaling(length);
    return pen.geometry().block({*block, block->entities().size(), place});
  }
  const AcGeVector3d along = first.normal() * length;
  const AcGeVector3d side = normal.crossProduct(along) * kHeadSlope;
  const std::vector<AcGePoint3d> head = {tip, tip + along + side, tip + along - side};
  pen.polygon({&head, 1});
}

}  // namespace

void acdbDrawLeader(const AcDbOtherEntity& leader, AcDbKeptGroups& groups, const AcDbKeptPen& pen) {
  std::vector<AcGePoint3d> vertices = groups.points(10);
  if (vertices.size() < 2) return;
  const LeaderStyle style(leader);
  const AcCmColor color = style.color();
  if (pen.renderer() && !color.isByBlock()) pen.renderer()->setColor(&color);
  AcGeVector3d normal = groups.normal();
  if (!(normal.length() > 0.0)) normal = AcGeVector3d::kZAxis;
  if (groups.real(kHasHead, 1.0) != 0.0) drawHead(vertices, normal.normal(), style, pen);
  if (const auto landing = landingOf(groups, style)) vertices.push_back(vertices.back() + *landing);
  pen.geometry().curve(piecesOf(vertices, groups.real(kIsCurved) != 0.0));
  if (pen.renderer() && !color.isByBlock()) pen.renderer()->setColor(nullptr);
}
