#pragma once

#include "arx/db/dbid.h"

#include <algorithm>
#include <bit>
#include <deque>
#include <vector>

/// The stubs of a drawing by their handles. They never move; a walk meets them in the order in which they
/// were made.
class AcDbStubTable {
public:
  /// Null when the handle was not met yet.
  [[nodiscard]] AcDbStub* find(Adesk::UInt64 handle) const {
    // Beyond all others is the handle of each new object, and of each in most files.
    if (handle > m_highest || m_chains.empty()) return nullptr;
    AcDbStub* stub = m_chains[place(handle)];
    while (stub && stub->handle != handle) stub = stub->next;
    return stub;
  }
  /// Made when the handle was not met yet.
  [[nodiscard]] AcDbStub& get(Adesk::UInt64 handle, AcDbDatabase& database) {
    if (AcDbStub* const known = find(handle)) return *known;
    if (m_stubs.size() >= m_chains.size()) reserve(2 * m_stubs.size() + 1);
    AcDbStub& stub = m_stubs.emplace_back();
    stub.database = &database;
    stub.handle = handle;
    enter(stub);
    m_highest = std::max(m_highest, handle);
    return stub;
  }
  void reserve(std::size_t stubs) {
    const std::size_t chains = std::bit_ceil(std::max<std::size_t>(stubs, kFewest));
    if (chains <= m_chains.size()) return;
    m_shift = 64 - std::countr_zero(chains);
    m_chains.assign(chains, nullptr);
    for (AcDbStub& stub : m_stubs) enter(stub);
  }
  void clear() {
    m_stubs.clear();
    m_chains.clear();
    m_highest = 0;
  }
  [[nodiscard]] auto begin() { return m_stubs.begin(); }
  [[nodiscard]] auto end() { return m_stubs.end(); }
  [[nodiscard]] auto begin() const { return m_stubs.begin(); }
  [[nodiscard]] auto end() const { return m_stubs.end(); }

private:
  static constexpr std::size_t kFewest = 64;
  /// Multiplicative hashing (Knuth, The Art of Computer Programming 3, 6.4): handles in steps spread evenly.
  [[nodiscard]] std::size_t place(Adesk::UInt64 handle) const {
    return static_cast<std::size_t>((handle * 0x9E3779B97F4A7C15U) >> m_shift);
  }
  void enter(AcDbStub& stub) {
    AcDbStub*& first = m_chains[place(stub.handle)];
    stub.next = first;
    first = &stub;
  }
  std::deque<AcDbStub> m_stubs;
  std::vector<AcDbStub*> m_chains;  // a power of two of them
  int m_shift = 0;
  Adesk::UInt64 m_highest = 0;
};
