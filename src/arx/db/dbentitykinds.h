#pragma once

#include "arx/db/dbplaces.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class AcDbBlockTableRecord;
class AcDbEntity;

/// Which entities of a layout are of a type, on a layer, or bear data of an application. Made when somebody
/// first asks; the database tells what it touched. An entity stays listed under what it was once, so that a
/// list holds all that are asked for, and perhaps more: who asks looks at each. About 16 bytes an entity.
class AcDbEntityKinds : private veltora::Uncopyable {
public:
  explicit AcDbEntityKinds(AcDbDatabase& database) : m_database(database) {}
  void touch(AcDbStub& stub) { m_touched.add(stub); }

  /// Places in the list of a block, `AcDbBlockTableRecord::entities`, in order.
  using Places = std::vector<Adesk::UInt32>;
  /// Lists of one question.
  using Lists = std::vector<const Places*>;
  /// The lists of the types, layers (null id: none) and applications that a test accepts. Valid until the
  /// next question or change.
  [[nodiscard]] Lists ofTypes(const AcDbBlockTableRecord& block,
                              const std::function<bool(std::string_view type)>& accepts);
  [[nodiscard]] Lists onLayers(const AcDbBlockTableRecord& block,
                               const std::function<bool(AcDbObjectId layer)>& accepts);
  [[nodiscard]] Lists ofApplications(const AcDbBlockTableRecord& block,
                                     const std::function<bool(std::string_view name)>& accepts);

private:
  struct Block {
    AcDbPlaces places;
    std::map<std::string, Places, std::less<>> types;
    std::unordered_map<AcDbObjectId, Places> layers;
    std::map<std::string, Places, std::less<>> applications;
  };
  Block& update(const AcDbBlockTableRecord& block);
  void relist();
  static void list(Block& block, std::size_t place, const AcDbEntity& entity);

  AcDbDatabase& m_database;
  std::unordered_map<const AcDbBlockTableRecord*, Block> m_blocks;
  AcDbTouched m_touched{2};
};
