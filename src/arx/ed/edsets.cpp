#include "arx/ed/edsets.h"

#include "arx/db/dbobject.h"

#include <algorithm>

namespace {
/// Second word of the name of a set; the name of an entity has its handle there.
constexpr Adesk::Int64 kSetMark = -19280;
}  // namespace

bool AcEdSelectionSet::add(AcDbObjectId id) {
  if (!m_known.insert(id).second) return false;
  m_order.push_back(id);
  return true;
}

bool AcEdSelectionSet::remove(AcDbObjectId id) {
  if (m_known.erase(id) == 0) return false;
  m_order.erase(std::find(m_order.begin(), m_order.end(), id));
  return true;
}

void AcEdSelectionSet::dropDatabase(const AcDbDatabase* database) {
  std::erase_if(m_order, [&](AcDbObjectId id) { return id.database() == database; });
  m_known = {m_order.begin(), m_order.end()};
}

AcEdSelectionSet* AcEdSelectionSets::find(const ads_name name) {
  if (!name || name[1] != kSetMark) return nullptr;
  const auto found = sets.find(name[0]);
  return found == sets.end() ? nullptr : &found->second;
}

AcEdSelectionSet& AcEdSelectionSets::make(ads_name name) {
  name[0] = ++lastNumber;
  name[1] = kSetMark;
  return sets[lastNumber];
}

AcEdSelectionSets& acedSelectionSets() {
  static auto* const only = new AcEdSelectionSets;
  return *only;
}

AcDbObjectId acedIdOf(const ads_name name) {
  AcDbObjectId id;
  if (!name || acdbGetObjectId(id, name) != Acad::eOk) return {};
  return id;
}

void acedNameOf(AcDbObjectId id, ads_name name) {
  ads_name made = {0, 0};
  if (!id.isNull()) acdbGetAdsName(made, id);
  ads_name_set(made, name);
}
