#include "arx/plot/pllayout.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbdraworder.h"
#include "arx/db/dbviewportlook.h"
#include "arx/ge/geangle.h"
#include "arx/gi/gigeometry.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

constexpr double kMmPerInch = 25.4;
constexpr double kMmPerMetre = 1000.0;
constexpr double kLongestSide = 1e5;  // mm: what claims to be longer is no paper

/// The numbers of one section of a layout by group code, its name, and where its tab stands.
struct LayoutGroups {
  std::map<int, double> settings;  // of the plot
  std::map<int, double> own;
  std::wstring name;

  explicit LayoutGroups(const AcDbOtherObject& layout) {
    bool inOwn = false;
    DxfTagText::Cursor cursor = layout.tags().tags();
    for (DxfTag tag; cursor.next(tag);) {
      double value = 0.0;
      if (tag.code == 100) inOwn = tag.value == "AcDbLayout";
      if (inOwn && tag.code == 1) name = dxfToWide(tag.value);
      if (dxfParseReal(tag.value, value) && std::isfinite(value))
        (inOwn ? own : settings).try_emplace(tag.code, value);
    }
  }
  [[nodiscard]] double setting(int code, double fallback = 0.0) const {
    const auto found = settings.find(code);
    return found == settings.end() ? fallback : found->second;
  }
};

/// Paper, margins and scale. Margins (40 left, 41 bottom, 42 right, 43 top) and size (44, 45) are those of
/// the sheet before it is turned (73, quarters counter-clockwise); the origin of paper space is the corner of
/// what can be printed, moved by 46 and 47.
void takePaper(AcPlLayout& layout, const LayoutGroups& groups) {
  double margins[] = {groups.setting(40), groups.setting(41), groups.setting(42), groups.setting(43)};
  layout.width = groups.setting(44);
  layout.height = groups.setting(45);
  const int turn = static_cast<int>(groups.setting(73)) & 3;
  std::rotate(margins, margins + turn, margins + 4);
  if (turn % 2 == 1) std::swap(layout.width, layout.height);
  const bool paper = layout.width > 0.0 && layout.height > 0.0 && layout.width < kLongestSide &&
                     layout.height < kLongestSide;
  if (!paper) layout.width = layout.height = 0.0;
  const double unit = groups.setting(72, 1.0) == 0.0 ? kMmPerInch : 1.0;
  const double share = groups.setting(142, 1.0) / groups.setting(143, 1.0);
  if (share > 0.0 && std::isfinite(share)) layout.mmPerUnit = unit * share;
  layout.corner = {-(margins[0] + groups.setting(46)) / layout.mmPerUnit,
                   -(margins[1] + groups.setting(47)) / layout.mmPerUnit};
}

/// In order of drawing.
template <class Work>
void forEntities(AcDbObjectId space, Work work) {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(space);
  if (!record) return;
  for (const AcDbObjectId id : AcDbDrawOrder(*record).entities()) {
    const auto* const entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (entity) work(*entity);
  }
}

void takeContents(AcPlLayout& layout) {
  double largest = 0.0;
  forEntities(layout.space, [&](const AcDbEntity& entity) {
    const auto* const kept = AcDbOtherEntity::cast(&entity);
    layout.empty = layout.empty && kept && acdbIsPaperViewport(*kept);
    const auto opening = kept ? acdbViewportLook(*kept) : std::nullopt;
    if (!opening || !(opening->width * opening->height > largest)) return;
    largest = opening->width * opening->height;
    layout.denominator = kMmPerMetre / (opening->scale * layout.mmPerUnit);
  });
}

/// The corners of a curve, cut into chords.
class Outline : public AcGiGeometry {
public:
  /// @param error  that chords of arcs may lie off them
  explicit Outline(double error) : m_error(error) {}
  void curve(std::span<const AcGeCurvePiece> pieces) override {
    for (const AcGeCurvePiece& piece : pieces) {
      add(piece.start);
      if (piece.bezier) {
        for (const double share : piece.chords()) add(piece.pointAt(share));
      } else if (piece.isArc) {
        const double radius = piece.radius * std::max(1.0, piece.ratio);
        const double chord = radius > m_error ? 2 * std::acos(1 - m_error / radius) : kTurn;
        const double count = std::clamp(std::ceil(std::fabs(piece.sweep) / chord), 8.0, kMostChords);
        for (double i = 1; i < count; ++i) add(piece.pointAt(i / count));
      }
    }
    if (!pieces.empty()) add(pieces.back().end);
  }
  void area(std::span<const AcGePoint3d>) override {}
  [[nodiscard]] const std::vector<AcGePoint2d>& corners() const { return m_corners; }

private:
  static constexpr double kMostChords = 20000.0;
  void add(const AcGePoint3d& point) {
    const AcGePoint3d place = toWorld() * point;
    if (std::isfinite(place.x) && std::isfinite(place.y)) m_corners.emplace_back(place.x, place.y);
  }
  double m_error;
  std::vector<AcGePoint2d> m_corners;
};

/// What is seen through openings, each with its own place on the paper.
class Openings {
public:
  Openings(AcDbDatabase& database, const AcPlView& view, AcPlPen& pen)
      : m_database(database), m_view(view), m_pen(pen) {}
  void draw(const AcDbViewportLook& opening, AcPlOmissions& omissions) const {
    if (!opening.fromAbove) {
      ++omissions.slanted;
      return;
    }
    const std::vector<AcGePoint2d> outline = outlineOf(opening);
    if (opening.clipped && outline.empty()) ++omissions.clipped;
    if (!outline.empty()) m_pen.clip(outline);
    omissions.add(acplPlot(m_database, m_database.modelSpaceId(), through(opening), m_pen,
                           onPaper() ? 1.0 / opening.scale : 1.0));
    if (!outline.empty()) m_pen.clip({});
  }
  /// On the paper, of one that is cut out by a curve; empty without one.
  [[nodiscard]] std::vector<AcGePoint2d> outlineOf(const AcDbViewportLook& opening) const {
    const auto* const curve =
        opening.outline.isLive() ? AcDbEntity::cast(opening.outline.stub()->object) : nullptr;
    if (!curve) return {};
    Outline outline(m_view.chordError / m_view.mmPerUnit);
    outline.show(*curve);
    std::vector<AcGePoint2d> ring;
    for (const AcGePoint2d& corner : outline.corners()) ring.push_back(place(corner));
    return ring.size() < 3 ? std::vector<AcGePoint2d>() : ring;
  }

private:
  /// Line types are as long in all openings as on the paper.
  [[nodiscard]] bool onPaper() const { return m_database.headerReal("PSLTSCALE", 1.0) != 0.0; }
  [[nodiscard]] AcPlView through(const AcDbViewportLook& opening) const {
    AcPlView view = m_view;
    view.mmPerUnit = m_view.mmPerUnit * opening.scale;
    // The view turns counter-clockwise: the paper's lower side lies that much clockwise in the drawing.
    const AcGeVector2d right(std::cos(opening.twist), -std::sin(opening.twist));
    const AcGePoint2d low = place(opening.center - AcGeVector2d(opening.width, opening.height) * 0.5);
    const AcGePoint2d high = place(opening.center + AcGeVector2d(opening.width, opening.height) * 0.5);
    view.window = AcPlBox{low.x, high.x, low.y, high.y};
    if (m_view.window) view.window = view.window->common(*m_view.window);
    const AcGePoint2d middle = place(opening.center);
    const AcGeVector2d back(opening.viewCenter.x - middle.x / view.mmPerUnit,
                            opening.viewCenter.y - middle.y / view.mmPerUnit);
    view.right = right;
    view.corner = opening.target + right * back.x + right.perpVector() * back.y;
    view.hiddenLayers = opening.frozenLayers;
    return view;
  }
  /// Millimetres on the paper of a place in the layout.
  [[nodiscard]] AcGePoint2d place(const AcGePoint2d& point) const {
    return AcGePoint2d() + (point - m_view.corner) * m_view.mmPerUnit;
  }
  AcDbDatabase& m_database;
  const AcPlView& m_view;
  AcPlPen& m_pen;
};

}  // namespace

std::vector<AcPlLayout> acplLayouts(AcDbDatabase& database) {
  std::vector<std::pair<double, AcPlLayout>> found;
  const AcDbObjectPointer<AcDbBlockTable> blocks(database.blockTableId());
  if (!blocks) return {};
  for (const AcDbObjectId& id : blocks->entries()) {
    const auto* const block = id.isLive() ? AcDbBlockTableRecord::cast(id.stub()->object) : nullptr;
    if (!block || id == database.modelSpaceId() || !block->getLayoutId().isLive()) continue;
    const auto* const object = AcDbOtherObject::cast(block->getLayoutId().stub()->object);
    if (!object || object->dxfName() != "LAYOUT") continue;
    const LayoutGroups groups(*object);
    AcPlLayout layout;
    layout.name = groups.name;
    layout.space = id;
    takePaper(layout, groups);
    takeContents(layout);
    const auto tab = groups.own.find(71);
    found.emplace_back(tab == groups.own.end() ? 0.0 : tab->second, std::move(layout));
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<AcPlLayout> layouts;
  for (auto& [tab, layout] : found) layouts.push_back(std::move(layout));
  return layouts;
}

AcPlOmissions acplPlotLayout(AcDbDatabase& database, const AcPlLayout& layout, const AcPlView& view,
                             AcPlPen& pen) {
  AcPlOmissions omissions;
  const Openings openings(database, view, pen);
  AcPlDraw draw(view, pen, database.headerReal("LTSCALE", 1.0));
  forEntities(layout.space, [&](const AcDbEntity& entity) {
    const auto* const kept = AcDbOtherEntity::cast(&entity);
    if (kept && acdbIsPaperViewport(*kept)) return;
    const auto opening = kept ? acdbViewportLook(*kept) : std::nullopt;
    if (opening) openings.draw(*opening, omissions);
    // The curve that cuts an opening out stands in the layout by itself.
    if (!opening || openings.outlineOf(*opening).empty()) draw.entity(entity);
  });
  omissions.add(draw.omissions());
  return omissions;
}
