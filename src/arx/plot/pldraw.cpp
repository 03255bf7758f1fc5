#include "arx/plot/pldraw.h"

#include "arx/db/dbdraworder.h"
#include "arx/db/dbmtext.h"
#include "arx/db/dbsymrecords.h"
#include "arx/db/dbtext.h"
#include "arx/db/dbtextsize.h"
#include "arx/ge/geangle.h"
#include "arx/plot/plclip.h"
#include "arx/plot/plcolor.h"
#include "base/text.h"

#include <algorithm>
#include <cmath>

namespace base = veltora::base;

namespace {

constexpr double kUsualWeight = 0.25;  // mm
constexpr double kThinnest = 0.05;     // mm, of lines of weight 0
constexpr double kDot = 0.35;          // mm
constexpr double kUsualPoint = 0.05;   // of the paper's height: size of points
// What PDMODE is made of: a mark, a circle and a square around it. Marks reach as far as the size to each
// side, circle and square are as wide as it.
constexpr int kMark = 7;
constexpr int kNoMark = 1;
constexpr int kPlus = 2;
constexpr int kCross = 3;
constexpr int kTick = 4;
constexpr int kCircled = 32;
constexpr int kSquared = 64;
constexpr double kShortestPattern = 0.5;   // mm: a finer one looks like a whole line
constexpr double kTallestLetter = 2000.0;  // mm: no paper shows more of it than a stroke
constexpr double kLowestLetter = 0.02;     // mm
constexpr double kMostRepeats = 100000;

AcGeVector2d flat(const AcGeVector3d& v) { return {v.x, v.y}; }

AcGeVector2d turnedToPaper(const AcGeVector2d& v, const AcPlView& view) {
  return AcGeVector2d(v.dotProduct(view.right), v.dotProduct(view.right.perpVector())) * view.mmPerUnit;
}

bool isPlace(const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

std::vector<AcGePoint2d> roundJoint(const AcGePoint2d& at, double radius) {
  constexpr int kCorners = 32;
  std::vector<AcGePoint2d> ring;
  for (int i = 0; i < kCorners; ++i) {
    const double a = kTurn * i / kCorners;
    ring.push_back({at.x + radius * std::cos(a), at.y + radius * std::sin(a)});
  }
  return ring;
}

}  // namespace

AcPlDraw::AcPlDraw(const AcPlView& view, AcPlPen& pen, double linetypeScale)
    : m_view(view),
      m_pen(pen),
      m_linetypeScale(linetypeScale),
      m_looks(view.layers, view.hiddenLayers, view.printed) {}

void AcPlDraw::entity(const AcDbEntity& entity) {
  m_known = nullptr;
  draw(entity);
}

std::optional<AcPlColor> AcPlDraw::inkOf(const AcDbEntity& entity) {
  if (entity.isHidden()) return std::nullopt;
  const AcPlLook look = m_looks.of(entity, nullptr);
  return look.hidden ? std::nullopt : std::optional(inkOf(look));
}

AcGePoint2d AcPlDraw::onPaper(const AcGePoint3d& place) const {
  const AcGePoint3d world = toWorld() * place;
  const AcGeVector2d from = AcGePoint2d(world.x, world.y) - m_view.corner;
  return AcGePoint2d() + turnedToPaper(from, m_view);
}

AcGeVector2d AcPlDraw::onPaper(const AcGeVector3d& way) const {
  return turnedToPaper(flat(toWorld() * way), m_view);
}

const AcPlLook* AcPlDraw::look() {
  if (m_known != &drawn() || m_knownDepth != m_outer.size()) {
    const auto* const entity = AcDbEntity::cast(&drawn());
    if (!entity) return nullptr;
    m_look = m_looks.of(*entity, m_outer.empty() ? nullptr : &m_outer.back());
    m_known = &drawn();
    m_knownDepth = m_outer.size();
  }
  if (m_look.hidden) return nullptr;
  m_pen.layer(m_looks.layerName(m_look.layer));
  return &m_look;
}

AcPlColor AcPlDraw::inkOf(const AcPlLook& look) const {
  const AcPlColor& paper = m_view.paper.background;
  const bool dark = paper.red + paper.green + paper.blue < 3 * 128;
  const AcPlColor standsOut = dark ? AcPlColor{255, 255, 255} : AcPlColor{0, 0, 0};
  if (m_view.monochrome) return standsOut;
  const AcCmColor& color = m_ownColor ? *m_ownColor : look.color;
  if (color.isTrueColor()) {
    const int rgb = color.rgb();
    return {(rgb >> 16) & 255, (rgb >> 8) & 255, rgb & 255};
  }
  return color.colorIndex() == 7 ? standsOut : acplIndexColor(color.colorIndex());
}

AcPlStroke AcPlDraw::strokeOf(const AcPlLook& look, bool dashed) const {
  AcPlStroke stroke;
  stroke.color = inkOf(look);
  stroke.width = look.weight < 0 ? kUsualWeight : std::max(kThinnest, look.weight / 100.0);
  if (!dashed || !look.linetype) return stroke;
  const double scale = m_linetypeScale * look.linetypeScale * m_view.mmPerUnit;
  double period = 0.0;
  for (const double dash : look.linetype->dashes()) {
    const bool gap = dash < 0.0;
    const bool gapNext = stroke.dashes.size() % 2 == 1;
    if (gap != gapNext && stroke.dashes.empty()) stroke.dashes.push_back(0.0);
    if (gap != (stroke.dashes.size() % 2 == 1))
      stroke.dashes.back() += std::fabs(dash) * scale;
    else
      stroke.dashes.push_back(std::fabs(dash) * scale);
    period += std::fabs(dash) * scale;
  }
  if (stroke.dashes.size() % 2 == 1) stroke.dashes.push_back(0.0);
  if (!(period >= kShortestPattern) || !std::isfinite(period)) stroke.dashes.clear();
  return stroke;
}

bool AcPlDraw::isFinite(const Points& points) {
  const bool good = std::all_of(points.begin(), points.end(), isPlace);
  if (!good) ++m_omissions.places;
  return good;
}

AcPlBox AcPlDraw::visible(double lineWidth) const {
  return m_view.window ? *m_view.window : AcPlBox::around(m_view.paper, lineWidth);
}

void AcPlDraw::stroke(const Points& points, AcPlStroke stroke) {
  if (points.empty() || !isFinite(points)) return;
  double period = 0.0;
  for (const double dash : stroke.dashes) period += dash;
  const AcPlBox box = visible(stroke.width);
  acplClipLine(points, box, [&](std::span<const AcGePoint2d> run, double before) {
    if (period > 0.0) stroke.phase = std::fmod(before, period);
    m_pen.line(run, stroke);
  });
}

void AcPlDraw::addPiece(const AcGeCurvePiece& piece, Points& points) const {
  const AcGePoint2d start = onPaper(piece.start);
  if (!piece.isArc && !piece.bezier) {
    AcGePoint2d end = onPaper(piece.end);
    AcGePoint2d from = start;
    const AcGeVector2d along = end - start;
    const double reach = 2 * (std::hypot(start.x, start.y) + m_view.paper.width + m_view.paper.height);
    const double length = along.length();
    if (piece.endlessBefore && length > 0.0) from = start - along * (reach / length);
    if (piece.endless && length > 0.0) end = start + along * (reach / length);
    if (points.empty()) points.push_back(from);
    points.push_back(end);
    return;
  }
  if (points.empty()) points.push_back(start);
  if (piece.bezier) {
    for (const double share : piece.chords()) points.push_back(onPaper(piece.pointAt(share)));
    return;
  }
  const double x = flat(toWorld() * piece.xAxis).length();
  const double y = flat(toWorld() * piece.yAxis).length();
  const double radius = piece.radius * std::max(x, y * std::max(1.0, piece.ratio)) * m_view.mmPerUnit;
  const double error = m_view.chordError;
  const double chord = radius > error ? 2 * std::acos(1 - error / radius) : kTurn;
  const double sweep = std::min(std::fabs(piece.sweep), kTurn);
  const int count =
      std::isfinite(radius) ? static_cast<int>(std::clamp(std::ceil(sweep / chord), 8.0, 20000.0)) : 8;
  for (int i = 1; i <= count; ++i) points.push_back(onPaper(piece.pointAt(static_cast<double>(i) / count)));
}

void AcPlDraw::curve(std::span<const AcGeCurvePiece> pieces) {
  const AcPlLook* const now = look();
  if (!now) return;
  Points points;
  for (const AcGeCurvePiece& piece : pieces) addPiece(piece, points);
  stroke(points, strokeOf(*now, true));
}

void AcPlDraw::block(const AcGiBlockPlace& place) {
  const AcPlLook* const now = look();
  if (!now) return;
  m_outer.push_back(*now);
  const double repeats = static_cast<double>(place.columns) * place.rows;
  if (repeats > kMostRepeats) ++m_omissions.repeats;
  const int columns = repeats > kMostRepeats ? 1 : place.columns;
  const int rows = repeats > kMostRepeats ? 1 : place.rows;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const AcGeVector3d shift =
          place.toLastColumn * (columns > 1 ? static_cast<double>(column) / (columns - 1) : 0) +
          place.toLastRow * (rows > 1 ? static_cast<double>(row) / (rows - 1) : 0);
      pushModelTransform(AcGeMatrix3d::translation(shift));
      AcGiGeometry::block(place);
      popModelTransform();
    }
  }
  m_outer.pop_back();
  m_known = nullptr;
}

void AcPlDraw::unknown() {
  const auto* const entity = AcDbEntity::cast(&drawn());
  if (entity && look()) ++m_omissions.kinds[std::string(entity->dxfName())];
}

void AcPlDraw::textLine(const AcGiTextLine& line) {
  const AcPlLook* const now = look();
  if (!now) return;
  AcPlText text;
  text.base = onPaper(line.base);
  text.along = onPaper(line.along);
  text.up = onPaper(line.up);
  const Points frame{text.base, text.base + text.along, text.base + text.up};
  if (!isFinite(frame)) return;
  const double area = std::fabs(text.along.x * text.up.y - text.along.y * text.up.x);
  if (area < kLowestLetter * kLowestLetter) return;
  if (std::max(text.along.length(), text.up.length()) > kTallestLetter) {
    ++m_omissions.texts;
    return;
  }
  const std::wstring shown = acdbShownText(line.text);
  const double width = acdbTextExtents(shown, 1.0).width;
  AcPlBox box;
  for (const double u : {0.0, width})
    for (const double v : {-0.5, 1.5}) box.add(text.base + text.along * u + text.up * v);
  const AcPlBox shownBox = visible(0.0);
  if (!box.meets(shownBox)) return;
  if (m_view.window && !shownBox.holds(box)) text.within = &shownBox;
  text.text = base::toUtf8(shown);
  text.color = inkOf(*now);
  m_pen.text(text);
  noteFont();
}

/// Every new drawing has a style with the font "txt", which nobody chose.
void AcPlDraw::noteFont() {
  const auto* const line = AcDbText::cast(&drawn());
  const auto* const lines = line ? nullptr : AcDbMText::cast(&drawn());
  const AcDbObjectId style = line ? line->textStyle() : lines ? lines->textStyle() : AcDbObjectId();
  if (!style.isLive() || style.stub() == m_notedStyle) return;
  m_notedStyle = style.stub();
  const auto* const record = AcDbTextStyleTableRecord::cast(style.stub()->object);
  const std::wstring font = record ? base::toLower(record->fileName()) : std::wstring();
  if (font.empty() || font == L"txt" || font == L"txt.shx" || font.starts_with(L"dejavusans")) return;
  m_omissions.fonts.insert(record->fileName());
}

void AcPlDraw::setColor(const AcCmColor* color) { m_ownColor = color ? std::optional(*color) : std::nullopt; }

void AcPlDraw::dot(const AcGePoint3d& place) {
  const AcPlLook* const now = look();
  if (!now) return;
  AcPlStroke ink = strokeOf(*now, false);
  const AcGePoint2d at = onPaper(place);
  const PointStyle& style = pointStyle();
  const double size = style.size;
  const auto line = [&](double fromX, double fromY, double toX, double toY) {
    stroke({at + AcGeVector2d(fromX, fromY) * size, at + AcGeVector2d(toX, toY) * size}, ink);
  };
  if ((style.mode & kCircled) != 0) {
    Points circle = roundJoint(at, size / 2);
    circle.push_back(circle.front());
    stroke(circle, ink);
  }
  if ((style.mode & kSquared) != 0) {
    const AcGeVector2d u(size / 2, 0), v(0, size / 2);
    stroke({at - u - v, at + u - v, at + u + v, at - u + v, at - u - v}, ink);
  }
  switch (style.mode & kMark) {
    case kNoMark:
      return;
    case kPlus:
      line(-1, 0, 1, 0);
      return line(0, -1, 0, 1);
    case kCross:
      line(-1, -1, 1, 1);
      return line(-1, 1, 1, -1);
    case kTick:
      return line(0, 0, 0, 0.5);
    default:
      ink.width = std::max(ink.width, kDot);
      stroke({at, at}, ink);
  }
}

const AcPlDraw::PointStyle& AcPlDraw::pointStyle() {
  if (m_pointStyle) return *m_pointStyle;
  PointStyle style;
  const auto* const entity = AcDbEntity::cast(&drawn());
  if (const AcDbDatabase* const database = entity ? entity->database() : nullptr) {
    style.mode = static_cast<int>(std::clamp(database->headerReal("PDMODE", 0.0), 0.0, 255.0));
    const double size = database->headerReal("PDSIZE", 0.0);
    style.size = size > 0.0 ? size * m_view.mmPerUnit
                            : m_view.paper.height * (size < 0.0 ? -size / 100.0 : kUsualPoint);
  }
  m_pointStyle = style;
  return *m_pointStyle;
}

void AcPlDraw::edges(std::span<const AcGePoint3d> points) {
  const AcPlLook* const now = look();
  if (!now) return;
  Points placed;
  for (const AcGePoint3d& point : points) placed.push_back(onPaper(point));
  stroke(placed, strokeOf(*now, false));
}

template <class Rings>
void AcPlDraw::fill(const Rings& rings, const AcPlColor& color) {
  const AcPlBox box = visible(0.0);
  std::vector<Points> placed;
  for (const auto& ring : rings) {
    Points points;
    for (const AcGePoint3d& corner : ring) points.push_back(onPaper(corner));
    if (!isFinite(points)) return;
    points = acplClipRing(points, box);
    if (points.size() > 2) placed.push_back(std::move(points));
  }
  if (!placed.empty()) m_pen.fill(placed, color);
}

void AcPlDraw::polygon(std::span<const std::vector<AcGePoint3d>> rings) {
  if (const AcPlLook* const now = look()) fill(rings, inkOf(*now));
}

void AcPlDraw::mask(std::span<const AcGePoint3d> ring) {
  if (m_view.masks && look()) fill(std::span(&ring, 1), m_view.paper.background);
}

void AcPlDraw::wideCurve(std::span<const AcGeCurvePiece> pieces,
                         std::span<const std::pair<double, double>> widths) {
  const AcPlLook* const now = look();
  if (!now) return;
  const double scale = flat(toWorld() * AcGeVector3d::kXAxis).length() * m_view.mmPerUnit;
  const AcPlBox box = visible(0.0);
  std::vector<Points> rings;
  for (std::size_t i = 0; i < pieces.size() && i < widths.size(); ++i) {
    Points points;
    addPiece(pieces[i], points);
    if (!isFinite(points)) continue;
    if (!(std::max(widths[i].first, widths[i].second) > 0.0)) {
      stroke(points, strokeOf(*now, true));
      continue;
    }
    const Points ring =
        acplClipRing(acplWiden(points, widths[i].first * scale, widths[i].second * scale), box);
    if (ring.size() > 2) rings.push_back(ring);
    const bool joined = i + 1 < pieces.size() || pieces.front().start.distanceTo(pieces.back().end) == 0.0;
    if (!joined || widths[i].second != widths[(i + 1) % widths.size()].first) continue;
    const Points joint = acplClipRing(roundJoint(points.back(), widths[i].second * scale / 2), box);
    if (joint.size() > 2) rings.push_back(joint);
  }
  // One by one: where two pieces lie over each other, both are filled.
  for (const Points& ring : rings) m_pen.fill({&ring, 1}, inkOf(*now));
}

void AcPlOmissions::add(const AcPlOmissions& other) {
  for (const auto& [kind, count] : other.kinds) kinds[kind] += count;
  places += other.places;
  texts += other.texts;
  repeats += other.repeats;
  slanted += other.slanted;
  clipped += other.clipped;
  fonts.insert(other.fonts.begin(), other.fonts.end());
}

AcPlOmissions acplPlot(AcDbDatabase& database, AcDbObjectId space, const AcPlView& view, AcPlPen& pen,
                       double linetypeShare) {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(space);
  AcPlDraw draw(view, pen, database.headerReal("LTSCALE", 1.0) * linetypeShare);
  if (!record) return {};
  for (const AcDbObjectId id : AcDbDrawOrder(*record).entities()) {
    const auto* const entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (entity) draw.entity(*entity);
  }
  return draw.omissions();
}
