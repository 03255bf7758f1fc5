#include "arx/plot/plcairo.h"

#include <dlfcn.h>

#include <filesystem>

namespace {

constexpr const char* kLibrary = "libveltora_cairo.so";

/// The library beside the one that this function is in.
std::string libraryPath() {
  Dl_info here;
  const bool known = dladdr(reinterpret_cast<void*>(&acplCairoPen), &here) != 0 && here.dli_fname;
  return known ? (std::filesystem::path(here.dli_fname).parent_path() / kLibrary).string() : kLibrary;
}

}  // namespace

std::unique_ptr<AcPlPen> acplCairoPen(const AcPlPaper& paper, AcPlCairoKind kind, std::string& reason) {
  using Maker = AcPlPen* (*)(const AcPlPaper&, AcPlCairoKind);
  void* const library = dlopen(libraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
  const auto make = library ? reinterpret_cast<Maker>(dlsym(library, "acplMakeCairoPen")) : nullptr;
  if (make) return std::unique_ptr<AcPlPen>(make(paper, kind));
  const char* const why = dlerror();
  reason = "PDF et PNG ne sont pas disponibles ici (bibliothèque libveltora_cairo.so, faite avec Cairo) : ";
  reason += why ? why : "raison inconnue";
  return nullptr;
}
