#include "arx/ed/edsets.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edselect.h"

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

int acedSSLength(const ads_name set, Adesk::Int32* length) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  if (!found || !length) return RTERROR;
  *length = static_cast<Adesk::Int32>(found->entities().size());
  return RTNORM;
}

int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  if (!found || !entity || index < 0) return RTERROR;
  if (static_cast<std::size_t>(index) >= found->entities().size()) return RTERROR;
  acedNameOf(found->entities()[static_cast<std::size_t>(index)], entity);
  return RTNORM;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
  if (!result) return RTERROR;
  const bool hasEntity = entity && !ads_name_nil(entity);
  const bool hasSet = set && !ads_name_nil(set);
  const AcDbObjectId id = hasEntity ? acedIdOf(entity) : AcDbObjectId();
  if (hasEntity && (!id.objectClass() || !id.objectClass()->isDerivedFrom(AcDbEntity::desc())))
    return RTERROR;
  if (!hasSet) {
    AcEdSelectionSet& made = acedSelectionSets().make(result);
    if (hasEntity) made.add(id);
    return RTNORM;
  }
  AcEdSelectionSet* found = acedSelectionSets().find(set);
  if (!found || !hasEntity) return RTERROR;
  found->add(id);
  ads_name_set(set, result);
  return RTNORM;
}

int acedSSDel(const ads_name entity, const ads_name set) {
  AcEdSelectionSet* found = acedSelectionSets().find(set);
  return found && found->remove(acedIdOf(entity)) ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name entity, const ads_name set) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  const AcDbObjectId id = acedIdOf(entity);
  return found && !id.isNull() && found->has(id) ? RTNORM : RTERROR;
}

int acedSSFree(const ads_name set) {
  if (!acedSelectionSets().find(set)) return RTERROR;
  acedSelectionSets().sets.erase(set[0]);
  return RTNORM;
}

int acedSSSetFirst(const ads_name, const ads_name pickSet) {
  acedSelectionSets().pickFirst.clear();
  if (!pickSet || ads_name_nil(pickSet)) return RTNORM;
  const AcEdSelectionSet* found = acedSelectionSets().find(pickSet);
  if (!found) return RTERROR;
  acedSelectionSets().pickFirst = found->entities();
  return RTNORM;
}

bool acedIsSelectionSet(const ads_name name) { return acedSelectionSets().find(name) != nullptr; }

std::vector<AcDbObjectId> acedSSEntities(const ads_name set) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  return found ? found->entities() : std::vector<AcDbObjectId>();
}

void acedSSFromEntities(const std::vector<AcDbObjectId>& entities, ads_name set) {
  AcEdSelectionSet& made = acedSelectionSets().make(set);
  for (const AcDbObjectId id : entities) made.add(id);
}
