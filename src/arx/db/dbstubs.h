#pragma once

#include "arx/db/dbid.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <unordered_map>

/// The stubs of a drawing by their handles. They never move. Handles of drawings lie close together: sixteen
/// neighbours share a page, so that a stub costs little more than itself.
class AcDbStubTable {
public:
  /// Null when the handle was not met yet.
  [[nodiscard]] AcDbStub* find(Adesk::UInt64 handle) const {
    // Beyond all others is the handle of each new object, and of each in most files.
    if (handle > m_highest) return nullptr;
    Page* const page = pageOf(handle);
    if (!page) return nullptr;
    AcDbStub& stub = (*page)[handle % kOnPage];
    return stub.database ? &stub : nullptr;
  }
  /// Made when the handle was not met yet.
  [[nodiscard]] AcDbStub& get(Adesk::UInt64 handle, AcDbDatabase& database) {
    Page* page = pageOf(handle);
    if (!page) {
      page = remember(handle, m_pages.emplace_back());
      m_byNumber.emplace(handle / kOnPage, page);
    }
    AcDbStub& stub = (*page)[handle % kOnPage];
    stub.database = &database;
    stub.handle = handle;
    m_highest = std::max(m_highest, handle);
    return stub;
  }
  void reserve(std::size_t stubs) { m_byNumber.reserve(stubs / kOnPage + 1); }
  void clear() { *this = {}; }
  /// Calls `visit` with each stub; in order of handles where they were made so.
  template <class Visit>
  void forEach(Visit visit) const {
    for (Page& page : m_pages) {
      for (AcDbStub& stub : page) {
        if (stub.database) visit(stub);
      }
    }
  }

private:
  static constexpr std::size_t kOnPage = 16;
  using Page = std::array<AcDbStub, kOnPage>;

  Page* remember(Adesk::UInt64 handle, Page& page) const {
    m_lastNumber = handle / kOnPage;
    return m_lastPage = &page;
  }
  [[nodiscard]] Page* pageOf(Adesk::UInt64 handle) const {
    if (m_lastPage && handle / kOnPage == m_lastNumber) return m_lastPage;
    const auto found = m_byNumber.find(handle / kOnPage);
    return found == m_byNumber.end() ? nullptr : remember(handle, *found->second);
  }
  mutable std::deque<Page> m_pages;  // stubs belong to all who hold an id
  std::unordered_map<Adesk::UInt64, Page*> m_byNumber;
  Adesk::UInt64 m_highest = 0;
  mutable Page* m_lastPage = nullptr;  // the one asked for last
  mutable Adesk::UInt64 m_lastNumber = 0;
};
