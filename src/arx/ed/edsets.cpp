#include "arx/ed/edsets.h"

#include "arx/db/dbobject.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace {
/// Second word of the name of a set; the name of an entity has its handle there.
constexpr Adesk::Int64 kSetMark = -19280;

std::size_t lowBit(std::size_t number) { return number & (~number + 1); }
}  // namespace

bool AcEdSelectionSet::add(AcDbObjectId id) {
  if (!m_slots.emplace(id, m_order.size()).second) return false;
  m_order.push_back(id);
  if (m_counts.empty()) return true;
  const std::size_t last = m_order.size();
  std::size_t count = 1;
  for (std::size_t i = last - 1; i > last - lowBit(last); i -= lowBit(i)) count += m_counts[i - 1];
  m_counts.push_back(count);
  return true;
}

bool AcEdSelectionSet::remove(AcDbObjectId id) {
  const auto found = m_slots.find(id);
  if (found == m_slots.end()) return false;
  if (m_counts.empty()) countSlots();
  for (std::size_t i = found->second + 1; i <= m_counts.size(); i += lowBit(i)) --m_counts[i - 1];
  m_order[found->second] = {};
  m_slots.erase(found);
  return true;
}

void AcEdSelectionSet::countSlots() {
  m_counts.assign(m_order.size(), 1);
  for (std::size_t i = 1; i <= m_counts.size(); ++i)
    if (const std::size_t above = i + lowBit(i); above <= m_counts.size())
      m_counts[above - 1] += m_counts[i - 1];
}

AcDbObjectId AcEdSelectionSet::at(std::size_t place) const {
  if (m_counts.empty()) return m_order[place];
  std::size_t slot = 0;  // the slots in front of it hold `place` entities at most
  for (std::size_t step = std::bit_floor(m_counts.size()); step > 0; step /= 2) {
    if (slot + step > m_counts.size() || m_counts[slot + step - 1] > place) continue;
    slot += step;
    place -= m_counts[slot - 1];
  }
  return m_order[slot];
}

std::vector<AcDbObjectId> AcEdSelectionSet::entities() const {
  std::vector<AcDbObjectId> all;
  all.reserve(size());
  std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(all),
               [](AcDbObjectId id) { return !id.isNull(); });
  return all;
}

void AcEdSelectionSet::dropDatabase(const AcDbDatabase* database) {
  AcEdSelectionSet kept;
  for (const AcDbObjectId id : entities())
    if (id.database() != database) kept.add(id);
  *this = std::move(kept);
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
