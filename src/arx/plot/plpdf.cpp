#include "arx/plot/plpdf.h"

#include "base/sibling_library.h"

std::unique_ptr<AcPlPen> acplPdfPen(const AcPlPaper& paper, std::string& reason) {
  using Maker = AcPlPen* (*)(const AcPlPaper&);
  const auto make =
      reinterpret_cast<Maker>(veltora::base::siblingFunction("libveltora_pdf.so", "acplMakePdfPen", reason));
  if (!make) return nullptr;
  std::unique_ptr<AcPlPen> pen(make(paper));
  if (!pen) reason = "aucune police TrueType pour les textes";
  return pen;
}
