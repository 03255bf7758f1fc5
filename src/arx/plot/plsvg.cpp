#include "arx/plot/plsvg.h"

#include "arx/plot/plclip.h"

#include <fmt/format.h>

#include <iterator>

namespace {

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '&')
      result += "&amp;";
    else if (c == '<')
      result += "&lt;";
    else if (c == '>')
      result += "&gt;";
    else if (c == '"')
      result += "&quot;";
    else
      result += byte < 0x20 ? ' ' : c;  // XML knows no control characters
  }
  return result;
}

std::string hex(const AcPlColor& color) {
  return fmt::format("#{:02x}{:02x}{:02x}", color.red, color.green, color.blue);
}

}  // namespace

void AcPlSvgPen::layer(const std::string& name) { m_layer = name; }

void AcPlSvgPen::openGroup() {
  if (m_inGroup && m_groupLayer == m_layer) return;
  closeGroup();
  fmt::format_to(std::back_inserter(m_content), "<g id=\"calque{}\" data-calque=\"{}\">\n", ++m_groups,
                 escaped(m_layer));
  m_groupLayer = m_layer;
  m_inGroup = true;
}

void AcPlSvgPen::closeGroup() {
  closePath();
  if (m_inGroup) m_content += "</g>\n";
  m_inGroup = false;
}

void AcPlSvgPen::closePath() {
  if (m_inPath) m_content += "\"/>\n";
  m_inPath = false;
}

void AcPlSvgPen::addRing(std::span<const AcGePoint2d> points) {
  char command = 'M';
  for (const AcGePoint2d& p : points) {
    fmt::format_to(std::back_inserter(m_content), "{}{:.3f} {:.3f}", command, p.x, m_paper.height - p.y);
    command = 'L';
  }
}

void AcPlSvgPen::clip(std::span<const AcGePoint2d> ring) {
  closeGroup();
  if (m_clipped) m_content += "</g>\n";
  m_clipped = !ring.empty();
  if (!m_clipped) return;
  m_content += fmt::format("<clipPath id=\"fenetre{}\"><path clip-rule=\"evenodd\" d=\"", ++m_clips);
  addRing(ring);
  m_content += fmt::format("Z\"/></clipPath>\n<g clip-path=\"url(#fenetre{})\">\n", m_clips);
}

void AcPlSvgPen::line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) {
  if (points.size() < 2) return;
  openGroup();
  const bool whole = stroke.dashes.empty();
  if (!m_inPath || !whole || !(m_stroke == stroke)) {
    closePath();
    std::string dashes;
    for (const double dash : stroke.dashes)
      dashes += fmt::format("{}{:.3f}", dashes.empty() ? "" : " ", dash);
    if (!whole)
      dashes = fmt::format(" stroke-dasharray=\"{}\" stroke-dashoffset=\"{:.3f}\"", dashes, stroke.phase);
    m_content += fmt::format("<path fill=\"none\" stroke=\"{}\" stroke-width=\"{:.3f}\"{} d=\"",
                             hex(stroke.color), stroke.width, dashes);
    m_stroke = stroke;
    m_inPath = true;
  }
  addRing(points);
}

void AcPlSvgPen::fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) {
  openGroup();
  closePath();
  m_content += fmt::format("<path fill=\"{}\" fill-rule=\"evenodd\" d=\"", hex(color));
  for (const std::vector<AcGePoint2d>& ring : rings) {
    addRing(ring);
    m_content += 'Z';
  }
  m_content += "\"/>\n";
}

void AcPlSvgPen::text(const AcPlText& text) {
  openGroup();
  closePath();
  if (text.within) {
    const AcPlBox& box = *text.within;
    m_content += fmt::format(
        "<svg x=\"{0:.3f}\" y=\"{1:.3f}\" width=\"{2:.3f}\" height=\"{3:.3f}\" "
        "viewBox=\"{0:.3f} {1:.3f} {2:.3f} {3:.3f}\">",
        box.left, m_paper.height - box.top, box.right - box.left, box.top - box.bottom);
  }
  // The font's size is one unit, whose capitals are lower by the font's share.
  const double k = 1.0 / kAcPlCapital;
  m_content += fmt::format(
      "<text font-size=\"1\" fill=\"{}\" transform=\"matrix({:.6f} {:.6f} {:.6f} {:.6f} {:.3f} "
      "{:.3f})\">{}</text>\n",
      hex(text.color), text.along.x * k, -text.along.y * k, -text.up.x * k, text.up.y * k, text.base.x,
      m_paper.height - text.base.y, escaped(text.text));
  if (text.within) m_content += "</svg>\n";
}

bool AcPlSvgPen::finish(std::string& file, std::string&) {
  file = fmt::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
      "width=\"{0:.3f}mm\" "
      "height=\"{1:.3f}mm\" viewBox=\"0 0 {0:.3f} {1:.3f}\" font-family=\"DejaVu Sans, sans-serif\" "
      "xml:space=\"preserve\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n"
      "<clipPath id=\"feuille\"><rect width=\"{0:.3f}\" height=\"{1:.3f}\"/></clipPath>\n"
      "<rect width=\"{0:.3f}\" height=\"{1:.3f}\" fill=\"{2}\"/>\n",
      m_paper.width, m_paper.height, hex(m_paper.background));
  file += "<g clip-path=\"url(#feuille)\">\n";
  clip({});
  file += m_content;
  file += "</g>\n</svg>\n";
  return true;
}
