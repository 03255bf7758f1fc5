#pragma once

#include "arx/db/dbid.h"
#include "base/uncopyable.h"

#include <optional>
#include <vector>

/// Objects that were touched since an index looked at them, each once.
class AcDbTouched : private veltora::Uncopyable {
public:
  /// @param bit of `AcDbStub::touched`: each list of a drawing has its own
  explicit AcDbTouched(unsigned char bit) : m_bit(bit) {}
  ~AcDbTouched() { clear(); }
  void add(AcDbStub& stub);
  void clear();
  [[nodiscard]] const std::vector<AcDbStub*>& stubs() const { return m_stubs; }

private:
  unsigned char m_bit;
  std::vector<AcDbStub*> m_stubs;
};

/// Places of entities in the list of a block, found by id: four bytes each. The list only grows.
class AcDbPlaces {
public:
  /// Takes in what was appended to the list. @return the first new place
  std::size_t grow(const std::vector<AcDbObjectId>& list);
  [[nodiscard]] std::size_t size() const { return m_byHandle.size(); }
  /// Nothing for an object that is not in the list, as far as it was taken in.
  [[nodiscard]] std::optional<std::size_t> find(const std::vector<AcDbObjectId>& list, AcDbObjectId id) const;

private:
  std::vector<Adesk::UInt32> m_byHandle;
};
