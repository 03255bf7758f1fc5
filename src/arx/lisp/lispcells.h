#pragma once

#include "arx/adesk.h"

#include <cstddef>
#include <new>

namespace aclisp {

/// Room for list cells, which come and go by the million: taken from the heap in pieces of many, the free
/// ones in a chain. It stays with the process. One thread only, like all values.
class ARX_API CellRoom {
public:
  static constexpr std::size_t kCell = 40;  ///< bytes
  static void* take() {
    if (!s_free) grow();
    Free* const cell = s_free;
    s_free = cell->next;
    return cell;
  }
  static void give(void* cell) noexcept { s_free = new (cell) Free{s_free}; }

private:
  struct Free {
    Free* next;
  };
  static void grow();
  static Free* s_free;
};

}  // namespace aclisp
