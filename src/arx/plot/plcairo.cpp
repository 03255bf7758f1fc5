#include "arx/plot/plcairo.h"

#include <dlfcn.h>

std::unique_ptr<AcPlPen> acplCairoPen(const AcPlPaper& paper, AcPlCairoKind kind, std::string& reason) {
  using Maker = AcPlPen* (*)(const AcPlPaper&, AcPlCairoKind);
  void* const library = dlopen("libveltora_cairo.so", RTLD_NOW | RTLD_LOCAL);
  const auto make = library ? reinterpret_cast<Maker>(dlsym(library, "acplMakeCairoPen")) : nullptr;
  if (make) return std::unique_ptr<AcPlPen>(make(paper, kind));
  const char* const why = dlerror();
  reason =
      std::string(
          "PDF et PNG ne sont pas disponibles ici (bibliothèque libveltora_cairo.so, faite avec Cairo) : ") +
      (why ? why : "raison inconnue");
  return nullptr;
}
