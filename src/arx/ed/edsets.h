#pragma once

#include "arx/db/dbid.h"
#include "arx/ed/acutads.h"

#include <map>
#include <unordered_map>
#include <vector>

/// Entities in order, each once. Adding takes constant time, removing and asking for a place the logarithm of
/// the number at most.
class ARX_API AcEdSelectionSet {
public:
  /// @return false when it is in already
  bool add(AcDbObjectId id);
  bool remove(AcDbObjectId id);
  [[nodiscard]] bool has(AcDbObjectId id) const { return m_slots.contains(id); }
  [[nodiscard]] std::size_t size() const { return m_slots.size(); }
  [[nodiscard]] bool empty() const { return m_slots.empty(); }
  /// The entity at a place below `size()`.
  [[nodiscard]] AcDbObjectId at(std::size_t place) const;
  /// All of them, in order.
  [[nodiscard]] std::vector<AcDbObjectId> entities() const;
  void dropDatabase(const AcDbDatabase* database);

private:
  void countSlots();

  std::vector<AcDbObjectId> m_order;  ///< null where one was removed
  std::unordered_map<AcDbObjectId, std::size_t> m_slots;
  /// Empty until one is removed; then slot i holds how many entities stand in the slots
  /// i + 1 - lowbit(i + 1) to i (a binary indexed tree, Fenwick 1994).
  std::vector<std::size_t> m_counts;
};

/// All living sets by number, the set selected last, and the pick-first set.
struct AcEdSelectionSets {
  std::map<Adesk::Int64, AcEdSelectionSet> sets;
  Adesk::Int64 lastNumber = 0;
  std::vector<AcDbObjectId> previous;
  std::vector<AcDbObjectId> pickFirst;
  /// What the user has selected so far while he is being asked; null while he is not.
  const AcEdSelectionSet* growing = nullptr;

  /// The set of a name, null for none.
  AcEdSelectionSet* find(const ads_name name);
  AcEdSelectionSet& make(ads_name name);
};
ARX_API AcEdSelectionSets& acedSelectionSets();

/// Id of an entity name; null for a name of nothing.
AcDbObjectId acedIdOf(const ads_name name);
/// Name of an id.
void acedNameOf(AcDbObjectId id, ads_name name);
