#include "arx/plot/plcairo.h"

#include "base/sibling_library.h"

std::unique_ptr<AcPlPen> acplCairoPen(const AcPlPaper& paper, AcPlCairoKind kind, std::string& reason) {
  using Maker = AcPlPen* (*)(const AcPlPaper&, AcPlCairoKind);
  std::string why;
  const auto make =
      reinterpret_cast<Maker>(veltora::base::siblingFunction("libveltora_cairo.so", "acplMakeCairoPen", why));
  if (make) return std::unique_ptr<AcPlPen>(make(paper, kind));
  reason =
      "PDF et PNG ne sont pas disponibles ici (bibliothèque libveltora_cairo.so, faite avec Cairo) : " + why;
  return nullptr;
}
