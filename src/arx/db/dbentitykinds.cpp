#include "arx/db/dbentitykinds.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"

#include <algorithm>

namespace {

void insert(AcDbEntityKinds::Places& places, std::size_t place) {
  const auto number = static_cast<Adesk::UInt32>(place);
  const auto at = places.empty() || places.back() < number
                      ? places.end()
                      : std::lower_bound(places.begin(), places.end(), number);
  if (at == places.end() || *at != number) places.insert(at, number);
}

template <class Map>
AcDbEntityKinds::Places& listed(Map& map, std::string_view name) {
  const auto found = map.find(name);
  return found != map.end() ? found->second : map[std::string(name)];
}

template <class Map, class Accepts>
AcDbEntityKinds::Lists accepted(const Map& map, const Accepts& accepts) {
  AcDbEntityKinds::Lists lists;
  for (const auto& [name, places] : map)
    if (accepts(name)) lists.push_back(&places);
  return lists;
}

}  // namespace

AcDbEntityKinds::Lists AcDbEntityKinds::ofTypes(const AcDbBlockTableRecord& block,
                                                const std::function<bool(std::string_view)>& accepts) {
  return accepted(update(block).types, accepts);
}

AcDbEntityKinds::Lists AcDbEntityKinds::onLayers(const AcDbBlockTableRecord& block,
                                                 const std::function<bool(AcDbObjectId)>& accepts) {
  return accepted(update(block).layers, accepts);
}

AcDbEntityKinds::Lists AcDbEntityKinds::ofApplications(const AcDbBlockTableRecord& block,
                                                       const std::function<bool(std::string_view)>& accepts) {
  return accepted(update(block).applications, accepts);
}

AcDbEntityKinds::Block& AcDbEntityKinds::update(const AcDbBlockTableRecord& block) {
  relist();
  Block& known = m_blocks[&block];
  for (std::size_t place = known.places.grow(block.entities()); place < block.entities().size(); ++place) {
    const AcDbObjectId id = block.entities()[place];
    if (const auto* entity = id.isValid() ? AcDbEntity::cast(id.stub()->object) : nullptr)
      list(known, place, *entity);
  }
  return known;
}

/// Lists what was touched also under what it is now.
void AcDbEntityKinds::relist() {
  for (const AcDbStub* const stub : m_touched.stubs()) {
    const auto* const entity = stub->object ? AcDbEntity::cast(stub->object) : nullptr;
    const AcDbObjectId owner = entity ? entity->ownerId() : AcDbObjectId();
    const auto* const block = owner.isValid() ? AcDbBlockTableRecord::cast(owner.stub()->object) : nullptr;
    const auto known = m_blocks.find(block);
    if (known == m_blocks.end()) continue;
    if (const auto place = known->second.places.find(block->entities(), entity->objectId()))
      list(known->second, *place, *entity);
  }
  m_touched.clear();
}

void AcDbEntityKinds::list(Block& block, std::size_t place, const AcDbEntity& entity) {
  insert(listed(block.types, entity.dxfName()), place);
  insert(block.layers[entity.layerId()], place);
  DxfTagText::Cursor cursor = entity.xDataTags().tags();
  for (DxfTag tag; cursor.next(tag);)
    if (tag.code == 1001) insert(listed(block.applications, tag.value), place);
}
