#include "app/window/dialogs/dialog_layout.h"

#include "app/window/dialogs/container_views.h"
#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/menu_view.h"
#include "ui/kinds.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

namespace veltora::app {
namespace {

constexpr int kFieldsInAColumn = 3;
constexpr int kChecksInAColumn = 4;
constexpr int kGroupsInARow = 3;
constexpr int kWidestGroups = 860;   ///< pixels of a row
constexpr int kWidestButtons = 640;  ///< pixels of a row

/// How controls that follow each other share their room.
enum class Place { Field, Check, Button, Group, Alone, Wide, Nowhere };

Place placeOf(const ui::Control& control) {
  return ui::visit(
      control, [](const ui::TextField* field) { return field->multiline() ? Place::Wide : Place::Field; },
      [](const ui::ComboBox*) { return Place::Field; },
      [](const ui::CheckBox* check) { return check->pushLike() ? Place::Button : Place::Check; },
      [](const ui::Button*) { return Place::Button; }, [](const ui::Group*) { return Place::Group; },
      [](const ui::Label*) { return Place::Alone; }, [](const ui::RadioGroup*) { return Place::Alone; },
      [](const ui::ProgressBar*) { return Place::Alone; }, [](const ui::Preview*) { return Place::Alone; },
      [](const ui::List*) { return Place::Wide; }, [](const ui::WebView*) { return Place::Wide; },
      [](const ui::Pages*) { return Place::Wide; }, [](const ui::Page*) { return Place::Nowhere; },
      [](const ui::Menu*) { return Place::Nowhere; });
}

/// The places of controls in their order; a check box among fields stands with them.
std::vector<Place> placesOf(const std::vector<ui::Control*>& controls) {
  std::vector<Place> places;
  for (const ui::Control* control : controls) places.push_back(placeOf(*control));
  for (std::size_t i = 1; i + 1 < places.size(); ++i)
    if (places[i] == Place::Check && places[i - 1] == Place::Field && places[i + 1] == Place::Field)
      places[i] = Place::Field;
  return places;
}

/// The views of one container on their way into its layout.
class Builder {
public:
  Builder(DialogWindow& window, const ui::Container& container, QWidget& host)
      : m_window(window), m_container(container), m_column(new QVBoxLayout(&host)) {}

  bool build() {
    for (ui::Control* control : m_container.controls()) make(*control);
    const bool whole = dynamic_cast<const ui::Dialog*>(&m_container) != nullptr;
    const std::vector<ui::Control*> standing = own();
    const std::vector<Place> places = placesOf(standing);
    for (std::size_t i = 0; i < standing.size();) {
      const Place place = places[i];
      std::size_t end = i + 1;
      while (end < standing.size() && places[end] == place) ++end;
      const std::vector<ui::Control*> run(standing.begin() + static_cast<std::ptrdiff_t>(i),
                                          standing.begin() + static_cast<std::ptrdiff_t>(end));
      add(place, run, whole && end == standing.size());
      i = end;
    }
    if (!m_grows) m_column->addStretch();
    return m_grows;
  }

private:
  void make(ui::Control& control) {
    std::unique_ptr<ControlView> view = makeView(m_window, control);
    if (view) return m_window.add(std::move(view));
    if (auto* group = dynamic_cast<ui::Group*>(&control))
      m_window.add(std::make_unique<GroupView>(m_window, *group));
    else if (auto* pages = dynamic_cast<ui::Pages*>(&control))
      m_window.add(std::make_unique<PagesView>(m_window, *pages));
    else if (auto* menu = dynamic_cast<ui::Menu*>(&control))
      m_window.add(std::make_unique<MenuView>(m_window, *menu));
  }

  /// Those that stand on a line of their own.
  [[nodiscard]] std::vector<ui::Control*> own() const {
    std::vector<ui::Control*> found;
    for (ui::Control* control : m_container.controls())
      if (placeOf(*control) != Place::Nowhere && !besideHere(*control)) found.push_back(control);
    return found;
  }
  [[nodiscard]] bool besideHere(const ui::Control& control) const {
    return control.neighbour() && control.neighbour()->parent() == &m_container;
  }

  void add(Place place, const std::vector<ui::Control*>& run, bool last) {
    switch (place) {
      case Place::Field:
        return addPairs(run, run.size() > kFieldsInAColumn ? 2 : 1);
      case Place::Check:
        return addPairs(run, run.size() > kChecksInAColumn ? 2 : 1);
      case Place::Button:
        return addButtons(run, last);
      case Place::Group:
        return addGroups(run);
      case Place::Alone:
      case Place::Wide:
      case Place::Nowhere:
        for (ui::Control* control : run) addAlone(*control);
    }
  }

  /// The widget, with what stands beside it behind it.
  QBoxLayout* line(ui::Control& control) {
    auto* row = new QHBoxLayout;
    row->addWidget(m_window.view(control)->widget(), placeOf(control) == Place::Button ? 0 : 1);
    for (ui::Control* other : m_container.controls()) {
      if (other->neighbour() != &control || placeOf(*other) == Place::Nowhere) continue;
      if (QLabel* caption = m_window.view(*other)->label()) row->addWidget(caption);
      row->addLayout(line(*other));
    }
    return row;
  }

  /// Captions and fields in one or two columns of pairs, row by row as the Tab key goes; what is hidden at
  /// first comes last.
  void addPairs(std::vector<ui::Control*> run, int columns) {
    std::stable_partition(run.begin(), run.end(), [](const ui::Control* c) { return c->visible(); });
    auto* grid = new QGridLayout;
    int cell = 0;
    for (ui::Control* control : run) {
      const int row = cell / columns;
      const int column = 3 * (cell % columns);
      ++cell;
      QLabel* const caption = m_window.view(*control)->label();
      if (caption) grid->addWidget(caption, row, column);
      QBoxLayout* const cellLine = line(*control);
      cellLine->addStretch();  // behind what has a greatest width
      grid->addLayout(cellLine, row, caption ? column + 1 : column, 1, caption ? 1 : 2);
      grid->setColumnStretch(column + 1, 1);
      if (column > 0) grid->setColumnMinimumWidth(column - 1, 12);
    }
    m_column->addLayout(grid);
  }

  void addButtons(const std::vector<ui::Control*>& run, bool last) {
    QHBoxLayout* row = nullptr;
    int width = 0;
    for (ui::Control* control : run) {
      const int one = m_window.view(*control)->widget()->sizeHint().width() + 6;
      if (!row || width + one > kWidestButtons) {
        if (row && !last) row->addStretch();
        row = new QHBoxLayout;
        if (last) row->addStretch();
        m_column->addLayout(row);
        width = 0;
      }
      row->addLayout(line(*control));
      width += one;
    }
    if (!last) row->addStretch();
  }

  void addGroups(const std::vector<ui::Control*>& run) {
    QHBoxLayout* row = nullptr;
    int width = 0;
    for (ui::Control* group : run) {
      ControlView* const view = m_window.view(*group);
      const bool grows = view->grows();
      const int one = view->widget()->sizeHint().width();
      if (!row || grows || row->count() == kGroupsInARow || width + one > kWidestGroups) {
        row = new QHBoxLayout;
        m_column->addLayout(row, grows ? 1 : 0);
        width = 0;
      }
      width += one;
      row->addWidget(view->widget());
      if (grows) row = nullptr;
      m_grows = m_grows || grows;
    }
  }

  void addAlone(ui::Control& control) {
    ControlView* const view = m_window.view(control);
    if (view->label()) m_column->addWidget(view->label());
    m_column->addLayout(line(control), view->grows() ? 1 : 0);
    m_grows = m_grows || view->grows();
  }

  DialogWindow& m_window;
  const ui::Container& m_container;
  QVBoxLayout* m_column;
  bool m_grows = false;
};

}  // namespace

bool layOut(DialogWindow& window, const ui::Container& container, QWidget& host) {
  return Builder(window, container, host).build();
}

}  // namespace veltora::app
