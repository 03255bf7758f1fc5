#include "core/registry.h"

namespace veltora {
namespace {

const Registry*& current() {
  static const Registry* installed = nullptr;
  return installed;
}

}  // namespace

const Registry* systemRegistry() { return current(); }

void setSystemRegistry(const Registry* registry) { current() = registry; }

}  // namespace veltora
