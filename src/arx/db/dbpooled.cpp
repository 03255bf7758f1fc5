#include "arx/db/dbpooled.h"

#include "base/sanitized.h"

#include <memory_resource>

namespace {

std::pmr::memory_resource& pool() {
  if (veltora::base::kSanitized) return *std::pmr::new_delete_resource();
  static auto* const own = new std::pmr::unsynchronized_pool_resource;  // for ever: as drawings may
  return *own;
}

}  // namespace

void* AcDbPooled::operator new(std::size_t size) { return pool().allocate(size); }

void AcDbPooled::operator delete(void* memory, std::size_t size) { pool().deallocate(memory, size); }
