#include "arx/db/dbplaces.h"

#include <algorithm>

void AcDbTouched::add(AcDbStub& stub) {
  if (stub.touched & m_bit) return;
  stub.touched = (stub.touched | m_bit) & 3U;
  m_stubs.push_back(&stub);
}

void AcDbTouched::clear() {
  for (AcDbStub* const stub : m_stubs) stub->touched = stub->touched & ~m_bit & 3U;
  m_stubs.clear();
}

std::size_t AcDbPlaces::grow(const std::vector<AcDbObjectId>& list) {
  const std::size_t former = m_byHandle.size();
  for (std::size_t place = former; place < list.size(); ++place)
    m_byHandle.push_back(static_cast<Adesk::UInt32>(place));
  const auto before = [&](Adesk::UInt32 a, Adesk::UInt32 b) { return list[a].handle() < list[b].handle(); };
  const auto fresh = m_byHandle.begin() + static_cast<std::ptrdiff_t>(former);
  std::sort(fresh, m_byHandle.end(), before);
  // New entities bear new handles; only files give them in any order.
  if (former > 0 && fresh != m_byHandle.end() && before(*fresh, *(fresh - 1)))
    std::inplace_merge(m_byHandle.begin(), fresh, m_byHandle.end(), before);
  return former;
}

std::optional<std::size_t> AcDbPlaces::find(const std::vector<AcDbObjectId>& list, AcDbObjectId id) const {
  const auto before = [&](Adesk::UInt32 place, Adesk::UInt64 handle) {
    return list[place].handle() < handle;
  };
  const auto found = std::lower_bound(m_byHandle.begin(), m_byHandle.end(), id.handle(), before);
  if (found == m_byHandle.end() || list[*found] != id) return std::nullopt;
  return *found;
}
