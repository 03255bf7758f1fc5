#include "report/report_setup.h"

#include "report/html_document.h"
#include "report/html_style.h"
#include "report/html_table.h"

namespace veltora {

void ajouterPrologue(htmlDocument& document) {
  const htmlSize dixPoints(10.0, htmlSize::pt);
  htmlStyle style;
  style.setFontFamily("Arial", "serif");
  style.setFontSize(dixPoints);
  document.ajouterStyle(".petit", style.css());

  style.setFontSize(htmlSize(18.0, htmlSize::pt));
  document.ajouterStyle(".grand", style.css());

  style.setFontSize(dixPoints);
  style.setTextDecoration(1);
  document.ajouterStyle(".titre", style.css());

  style.setFontSize(dixPoints);
  style.setTextDecoration(0);
  style.setBorderStyle(4);
  style.setBorderColor(htmlColor());
  style.setBorderWidth(htmlSize(1.0, htmlSize::px));
  style.setPadding(htmlSize(4.0, htmlSize::px));
  style.setMargin(htmlSize(4.0, htmlSize::px));
  document.ajouterStyle(".celnorm", style.css());

  htmlColor gris;
  gris.setRGB(239, 239, 239);
  style.setBackgroundColor(gris);
  document.ajouterStyle(".celgris", style.css());
}

void preparerTable(htmlTable& table) {
  table.setAlignement(2);
  table.setBordure(0, 1);
  table.setCellPadding(0);
  table.setCellSpacing(0);
}

}  // namespace veltora
