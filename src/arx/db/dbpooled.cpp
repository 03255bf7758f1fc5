#include "arx/db/dbpooled.h"

#include <memory_resource>

#if defined(__SANITIZE_ADDRESS__)
#define ACDB_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ACDB_SANITIZED
#endif
#endif

namespace {

std::pmr::memory_resource& pool() {
#ifdef ACDB_SANITIZED
  return *std::pmr::new_delete_resource();  // the sanitizer knows each object then
#else
  static auto* const own = new std::pmr::unsynchronized_pool_resource;  // for ever: as drawings may
  return *own;
#endif
}

}  // namespace

void* AcDbPooled::operator new(std::size_t size) { return pool().allocate(size); }

void AcDbPooled::operator delete(void* memory, std::size_t size) { pool().deallocate(memory, size); }
