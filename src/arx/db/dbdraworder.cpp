#include "arx/db/dbdraworder.h"

#include "arx/db/dbblocktable.h"
#include "arx/db/dbdict.h"
#include "arx/db/dxftags.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace {

const AcDbOtherObject* sortingTableOf(const AcDbBlockTableRecord& block) {
  const AcDbObjectId extension = block.extensionDictionary();
  const auto* const dictionary =
      extension.isLive() ? AcDbDictionary::cast(extension.stub()->object) : nullptr;
  AcDbObjectId id;
  if (!dictionary || dictionary->getAt(L"ACAD_SORTENTS", id) != Acad::eOk || !id.isLive()) return nullptr;
  return AcDbOtherObject::cast(id.stub()->object);
}

/// Handles of entities (331), each followed by that which it is sorted by (5).
std::unordered_map<Adesk::UInt64, Adesk::UInt64> sortingHandles(const AcDbOtherObject& table) {
  std::unordered_map<Adesk::UInt64, Adesk::UInt64> keys;
  DxfTagText::Cursor cursor = table.tags().tags();
  Adesk::UInt64 entity = 0;
  for (DxfTag tag; cursor.next(tag);) {
    Adesk::UInt64 handle = 0;
    const bool known = (tag.code == 331 || tag.code == 5) && dxfParseHandle(tag.value, handle);
    if (tag.code == 5 && known && entity != 0) keys[entity] = handle;
    entity = tag.code == 331 && known ? handle : 0;
  }
  return keys;
}

}  // namespace

AcDbDrawOrder::AcDbDrawOrder(const AcDbBlockTableRecord& block) : m_block(&block) {
  const AcDbOtherObject* const table = sortingTableOf(block);
  if (!table) return;
  const auto given = sortingHandles(*table);
  if (given.empty()) return;
  m_keys.reserve(block.entities().size());
  for (const AcDbObjectId id : block.entities()) {
    const Adesk::UInt64 handle = id.handle();
    const auto found = given.find(handle);
    m_keys.push_back(found == given.end() ? handle : found->second);
  }
  if (std::ranges::is_sorted(m_keys)) m_keys.clear();
}

void AcDbDrawOrder::arrange(std::vector<std::size_t>& places) const {
  if (followsList()) return;
  std::ranges::stable_sort(places, {}, [&](std::size_t place) { return m_keys[place]; });
}

std::vector<AcDbObjectId> AcDbDrawOrder::entities() const {
  const std::vector<AcDbObjectId>& list = m_block->entities();
  std::vector<std::size_t> places(list.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  arrange(places);
  std::vector<AcDbObjectId> sorted;
  sorted.reserve(list.size());
  for (const std::size_t place : places) sorted.push_back(list[place]);
  return sorted;
}
