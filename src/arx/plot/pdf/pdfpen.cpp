#include "arx/plot/pdf/pdfpen.h"

#include "arx/plot/pdf/pdffont.h"
#include "arx/plot/plclip.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <exception>
#include <map>
#include <optional>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>

namespace {

constexpr double kPointsPerMm = 72.0 / 25.4;
constexpr int kPlaceDigits = 3;   // of millimetres
constexpr int kMatrixDigits = 6;  // of the letters' matrix

/// Writes a page's operators: millimetres, layers as marked content, which keeps the order of drawing.
class PdfPen : public AcPlPen {
public:
  explicit PdfPen(const AcPlPaper& paper) : m_paper(paper) {
    m_page = fmt::format("{:.9f} 0 0 {:.9f} 0 0 cm 1 J 1 j\n", kPointsPerMm, kPointsPerMm);
    if (paper.background == AcPlColor{255, 255, 255}) return;
    setColor(paper.background, m_filling, "rg");
    numbers({0.0, 0.0, paper.width, paper.height}, kPlaceDigits);
    m_page += "re f\n";
  }
  [[nodiscard]] bool isUsable() const { return m_font.isUsable(); }

  void layer(const std::string& name) override {
    if (m_named && *m_named == name) return;
    m_named = name;
    m_wanted = m_layers.try_emplace(name, m_layers.size()).first->second;
  }

  void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) override {
    if (points.size() < 2) return;
    mark();
    setStroke(stroke);
    path(points);
    m_page += "S\n";
  }

  void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) override {
    if (rings.empty()) return;
    mark();
    setColor(color, m_filling, "rg");
    for (const std::vector<AcGePoint2d>& ring : rings) {
      path(ring);
      m_page += "h ";
    }
    m_page += "f*\n";
  }

  void text(const AcPlText& text) override {
    const std::string glyphs = m_font.glyphs(text.text);
    if (glyphs.empty()) return;
    mark();
    setColor(text.color, m_filling, "rg");
    if (text.within) {
      m_page += "q ";
      numbers({text.within->left, text.within->bottom, text.within->right - text.within->left,
               text.within->top - text.within->bottom},
              kPlaceDigits);
      m_page += "re W n ";
    }
    const double k = 1.0 / kAcPlCapital;
    m_page += "BT /F 1 Tf ";
    numbers({text.along.x * k, text.along.y * k, text.up.x * k, text.up.y * k}, kMatrixDigits);
    numbers({text.base.x, text.base.y}, kPlaceDigits);
    m_page += "Tm <" + glyphs + (text.within ? "> Tj ET Q\n" : "> Tj ET\n");
  }

  void clip(std::span<const AcGePoint2d> ring) override {
    endMark();
    if (m_clipped) m_page += "Q\n";
    m_filling.reset();  // what was set within holds no more
    m_stroking.reset();
    m_stroke.reset();
    m_clipped = !ring.empty();
    if (!m_clipped) return;
    m_page += "q ";
    path(ring);
    m_page += "h W* n\n";
  }

  bool finish(std::string& file, std::string& reason) override {
    clip({});
    try {
      file = document();
    } catch (const std::exception& error) {
      reason = error.what();
      return false;
    }
    return true;
  }

private:
  /// Numbers, a blank behind each, without needless digits.
  void numbers(std::initializer_list<double> values, int digits) {
    std::array<char, 64> buffer;
    for (const double value : values) {
      char* end =
          std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, digits)
              .ptr;
      while (end[-1] == '0') --end;
      if (end[-1] == '.') --end;
      const std::string_view shown(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
      m_page += shown == "-0" || shown.empty() ? "0" : shown;
      m_page += ' ';
    }
  }
  void path(std::span<const AcGePoint2d> points) {
    char op = 'm';
    for (const AcGePoint2d& point : points) {
      numbers({point.x, point.y}, kPlaceDigits);
      m_page += op;
      m_page += ' ';
      op = 'l';
    }
  }
  /// What follows lies on the layer that was asked for.
  void mark() {
    if (m_marked == m_wanted) return;
    if (m_marked) m_page += "EMC ";
    m_marked = m_wanted;
    m_page += fmt::format("/OC /C{} BDC\n", *m_wanted);
  }
  void endMark() {
    if (m_marked) m_page += "EMC\n";
    m_marked.reset();
  }
  void setColor(const AcPlColor& color, std::optional<AcPlColor>& current, std::string_view op) {
    if (current == color) return;
    current = color;
    numbers({color.red / 255.0, color.green / 255.0, color.blue / 255.0}, kPlaceDigits);
    m_page += op;
    m_page += ' ';
  }
  void setStroke(const AcPlStroke& stroke) {
    setColor(stroke.color, m_stroking, "RG");
    if (m_stroke && m_stroke->width == stroke.width && m_stroke->dashes == stroke.dashes &&
        m_stroke->phase == stroke.phase)
      return;
    if (!m_stroke || m_stroke->width != stroke.width) {
      numbers({stroke.width}, kPlaceDigits);
      m_page += "w ";
    }
    if (!m_stroke || m_stroke->dashes != stroke.dashes || m_stroke->phase != stroke.phase) {
      m_page += "[";
      for (const double dash : stroke.dashes) numbers({dash}, kPlaceDigits);
      m_page += "] ";
      numbers({stroke.phase}, kPlaceDigits);
      m_page += "d ";
    }
    m_stroke = stroke;
  }

  /// The layers as optional content, all shown: adds them to the document, gives them their names on the
  /// page.
  QPDFObjectHandle addLayers(QPDF& document) {
    QPDFObjectHandle properties = QPDFObjectHandle::newDictionary();
    QPDFObjectHandle order = QPDFObjectHandle::newArray();  // by name, as the map holds them
    for (const auto& [name, number] : m_layers) {
      QPDFObjectHandle group = QPDFObjectHandle::parse("<< /Type /OCG >>");
      group.replaceKey("/Name", QPDFObjectHandle::newUnicodeString(name));
      group = document.makeIndirectObject(group);
      properties.replaceKey("/C" + std::to_string(number), group);
      order.appendItem(group);
    }
    QPDFObjectHandle shown = QPDFObjectHandle::parse("<< /BaseState /ON >>");
    shown.replaceKey("/Order", order);
    QPDFObjectHandle all = QPDFObjectHandle::newDictionary();
    all.replaceKey("/OCGs", order.shallowCopy());
    all.replaceKey("/D", shown);
    document.getRoot().replaceKey("/OCProperties", all);
    return properties;
  }

  std::string document() {
    QPDF document;
    document.emptyPDF();
    QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
    if (!m_layers.empty()) resources.replaceKey("/Properties", addLayers(document));
    QPDFObjectHandle fonts = QPDFObjectHandle::newDictionary();
    fonts.replaceKey("/F", m_font.embed(document));
    resources.replaceKey("/Font", fonts);
    QPDFObjectHandle page =
        QPDFObjectHandle::parse(fmt::format("<< /Type /Page /MediaBox [0 0 {:.3f} {:.3f}] >>",
                                            m_paper.width * kPointsPerMm, m_paper.height * kPointsPerMm));
    page.replaceKey("/Resources", resources);
    page.replaceKey("/Contents", document.newStream(m_page));
    document.addPage(document.makeIndirectObject(page), false);
    QPDFObjectHandle info = QPDFObjectHandle::parse("<< /Producer (Veltora) >>");
    document.getTrailer().replaceKey("/Info", document.makeIndirectObject(info));
    QPDFWriter writer(document);
    writer.setOutputMemory();
    writer.setMinimumPDFVersion("1.5");  // of optional content
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.setDeterministicID(true);
    writer.write();
    const std::shared_ptr<Buffer> bytes = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize()};
  }

  AcPlPaper m_paper;
  std::string m_page;
  PdfFont m_font;
  std::map<std::string, std::size_t> m_layers;  // names, and the numbers they go by on the page
  std::optional<std::string> m_named;
  std::optional<std::size_t> m_wanted;
  std::optional<std::size_t> m_marked;  // what is written now
  std::optional<AcPlColor> m_filling;
  std::optional<AcPlColor> m_stroking;
  std::optional<AcPlStroke> m_stroke;
  bool m_clipped = false;
};

}  // namespace

AcPlPen* acplMakePdfPen(const AcPlPaper& paper) {
  auto pen = std::make_unique<PdfPen>(paper);
  return pen->isUsable() ? pen.release() : nullptr;
}
