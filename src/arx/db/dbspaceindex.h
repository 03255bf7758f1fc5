#pragma once

#include "arx/db/dbdraworder.h"
#include "arx/db/dbplaces.h"
#include "arx/ge/gematrix.h"
#include "base/box_index.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class AcDbBlockTableRecord;
class AcDbEntity;
class AcGiDrawable;

/// Where the entities of model space lie: their boxes, and an R-tree of these. Made when somebody first asks;
/// from then on the database tells which objects it touched, and the next question measures these again. What
/// was touched in a block that model space shows, or in a text style, lets the index begin anew.
///
/// An entity goes by its place in the list of the space (`AcDbBlockTableRecord::entities`), which only grows:
/// an ascending list of places is in order of drawing, but where `drawOrder` says otherwise. Costs about 100
/// bytes an entity.
class ARX_API AcDbSpaceIndex : private veltora::Uncopyable {
public:
  explicit AcDbSpaceIndex(AcDbDatabase& database) : m_database(database) {}
  /// Notes that an object changed, or is about to: its state, or whether it is erased.
  void touch(AcDbStub& stub) {
    ++m_touches;
    m_touched.add(stub);
  }
  /// Grows with every change of an object of the drawing: what was drawn of it holds while it stays.
  [[nodiscard]] Adesk::UInt64 touches() const { return m_touches; }

  /// Around all that shows otherwise than when this was asked last, before and after; empty for nothing.
  /// @return nothing when it is not known: the first time, after a change of a layer, a block, a style
  [[nodiscard]] std::optional<AcDbExtents> takeChange();

  /// How many entities are not erased.
  [[nodiscard]] std::size_t living();
  /// Places of all entities that show anything in a rectangle, sides included, or are block references whose
  /// position lies there; and of a few more, of which this is not known. Hidden ones too, no erased one.
  /// Valid until the next question.
  [[nodiscard]] const std::vector<std::size_t>& touching(const veltora::base::PlaneBox& box);
  /// What `AcDbEntity::getGeomExtents` gives for the entity at a place that `touching` told; empty for none.
  [[nodiscard]] const AcDbExtents& boxAt(std::size_t place) const { return m_slots[place].box; }
  [[nodiscard]] AcDbObjectId entityAt(std::size_t place) const;
  /// In which order they are drawn; valid until the drawing changes.
  [[nodiscard]] const AcDbDrawOrder& drawOrder();
  /// Around all entities that are not erased.
  [[nodiscard]] AcDbExtents wholeBox();

private:
  /// What is known of the entity at one place of the list.
  struct Slot {
    AcDbExtents box;
    bool lives = false;
    bool indexed = false;  ///< stands in the tree
    bool farther = false;  ///< is found in `m_farther`, not in its box alone
  };
  class Measure;
  enum class Effect { kNone, kOne, kAll };

  void update();
  void begin(const AcDbBlockTableRecord* space);
  Effect effectOf(AcDbStub& stub, std::size_t& place) const;
  Effect effectOfBlock(const AcDbBlockTableRecord& block) const;
  std::optional<veltora::base::PlaneBox> measure(Slot& slot, std::size_t place);
  void measureAgain(std::size_t place);
  void noteChange(const Slot& slot);
  [[nodiscard]] veltora::base::PlaneBox indexedBox(std::size_t place) const;

  AcDbDatabase& m_database;
  const AcDbBlockTableRecord* m_space = nullptr;  ///< that was measured
  std::vector<Slot> m_slots;
  AcDbPlaces m_places;
  std::unordered_map<std::size_t, veltora::base::PlaneBox> m_farther;
  std::optional<veltora::base::BoxIndex> m_tree;
  std::optional<AcDbDrawOrder> m_order;
  Adesk::UInt64 m_orderTouches = 0;                 ///< when it was asked for
  std::unordered_set<const AcGiDrawable*> m_shown;  ///< blocks within what was measured
  AcDbTouched m_touched{1};
  Adesk::UInt64 m_touches = 0;
  Adesk::UInt64 m_revivals = 0;
  std::size_t m_living = 0;
  AcDbExtents m_change;        ///< since `takeChange`
  bool m_changeKnown = false;  ///< all of it
};
