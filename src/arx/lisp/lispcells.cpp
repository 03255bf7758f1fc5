#include "arx/lisp/lispcells.h"

namespace aclisp {

CellRoom::Free* CellRoom::s_free = nullptr;

void CellRoom::grow() {
  constexpr std::size_t kCells = 1600;
  auto* const piece = static_cast<std::byte*>(::operator new(kCells* kCell));  // for ever: as values may
  for (std::size_t i = kCells; i > 0; --i) give(piece + (i - 1) * kCell);
}

}  // namespace aclisp
