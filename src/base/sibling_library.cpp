#include "base/sibling_library.h"

#include <dlfcn.h>

#include <filesystem>

namespace veltora::base {

void* siblingFunction(const char* library, const char* function, std::string& reason) {
  Dl_info here;
  const bool known = dladdr(reinterpret_cast<void*>(&siblingFunction), &here) != 0 && here.dli_fname;
  const std::string path =
      known ? (std::filesystem::path(here.dli_fname).parent_path() / library).string() : library;
  void* const loaded = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const found = loaded ? dlsym(loaded, function) : nullptr;
  if (found) return found;
  const char* const why = dlerror();
  reason = why ? why : "raison inconnue";
  return nullptr;
}

}  // namespace veltora::base
