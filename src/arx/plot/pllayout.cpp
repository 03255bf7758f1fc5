#include "arx/plot/pllayout.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbviewportlook.h"

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

template <class Work>
void forEntities(AcDbObjectId space, Work work) {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(space);
  if (!record) return;
  for (const AcDbObjectId& id : record->entities()) {
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
    if (opening.clipped) ++omissions.clipped;
    omissions.add(acplPlot(m_database, m_database.modelSpaceId(), through(opening), m_pen,
                           onPaper() ? 1.0 / opening.scale : 1.0));
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
    if (const auto opening = kept ? acdbViewportLook(*kept) : std::nullopt)
      openings.draw(*opening, omissions);
    draw.entity(entity);
  });
  omissions.add(draw.omissions());
  return omissions;
}
