#pragma once

#include "arx/adesk.h"

#include <cstddef>

/// Base of what a drawing holds by the million: memory from one pool, without the sixteen bytes or so that
/// each piece costs from the heap. Drawings belong to one thread, and so does the pool.
struct ARX_API AcDbPooled {
  static void* operator new(std::size_t size);
  static void operator delete(void* memory, std::size_t size);
};

/// The same for short lists that such objects hold.
template <class Value>
struct AcDbPoolAllocator {
  using value_type = Value;
  AcDbPoolAllocator() = default;
  template <class Other>
  AcDbPoolAllocator(const AcDbPoolAllocator<Other>&) {}
  Value* allocate(std::size_t count) {
    return static_cast<Value*>(AcDbPooled::operator new(count * sizeof(Value)));
  }
  void deallocate(Value* memory, std::size_t count) {
    AcDbPooled::operator delete(memory, count * sizeof(Value));
  }
  bool operator==(const AcDbPoolAllocator&) const = default;
};
