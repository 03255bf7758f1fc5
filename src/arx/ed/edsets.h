#pragma once

#include "arx/db/dbid.h"
#include "arx/ed/acutads.h"

#include <map>
#include <unordered_set>
#include <vector>

/// Entities in order, each once.
class AcEdSelectionSet {
public:
  /// @return false when it is in already
  bool add(AcDbObjectId id);
  bool remove(AcDbObjectId id);
  [[nodiscard]] bool has(AcDbObjectId id) const { return m_known.contains(id); }
  [[nodiscard]] const std::vector<AcDbObjectId>& entities() const { return m_order; }
  void dropDatabase(const AcDbDatabase* database);

private:
  std::vector<AcDbObjectId> m_order;
  std::unordered_set<AcDbObjectId> m_known;
};

/// All living sets by number, the set selected last, and the pick-first set.
struct AcEdSelectionSets {
  std::map<Adesk::Int64, AcEdSelectionSet> sets;
  Adesk::Int64 lastNumber = 0;
  std::vector<AcDbObjectId> previous;
  std::vector<AcDbObjectId> pickFirst;

  /// The set of a name, null for none.
  AcEdSelectionSet* find(const ads_name name);
  AcEdSelectionSet& make(ads_name name);
};
AcEdSelectionSets& acedSelectionSets();

/// Id of an entity name; null for a name of nothing.
AcDbObjectId acedIdOf(const ads_name name);
/// Name of an id.
void acedNameOf(AcDbObjectId id, ads_name name);
