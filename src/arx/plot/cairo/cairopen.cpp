#include "arx/plot/cairo/cairopen.h"

#include "arx/plot/plclip.h"

#include <cairo-pdf.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>

// The only source that knows Cairo.

namespace {

constexpr double kPointsPerMm = 72.0 / 25.4;

cairo_status_t append(void* file, const unsigned char* data, unsigned int length) {
  static_cast<std::string*>(file)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

class CairoPen : public AcPlPen {
public:
  CairoPen(const AcPlPaper& paper, AcPlCairoKind kind) : m_paper(paper), m_kind(kind) {
    double scale = kPointsPerMm;
    if (kind == AcPlCairoKind::kPdf) {
      m_surface =
          cairo_pdf_surface_create_for_stream(append, &m_file, paper.width * scale, paper.height * scale);
    } else {
      scale = paper.dotsPerInch / 25.4;
      const int width = std::max(1, static_cast<int>(std::lround(paper.width * scale)));
      const int height = std::max(1, static_cast<int>(std::lround(paper.height * scale)));
      m_surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    }
    m_cairo = cairo_create(m_surface);
    cairo_scale(m_cairo, scale, -scale);  // y up
    cairo_translate(m_cairo, 0, -paper.height);
    cairo_set_line_cap(m_cairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(m_cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_select_font_face(m_cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_set_font_options(m_cairo, options);
    cairo_font_options_destroy(options);
    setColor(paper.background);
    cairo_paint(m_cairo);
  }
  ~CairoPen() override {
    cairo_destroy(m_cairo);
    cairo_surface_destroy(m_surface);
  }
  CairoPen(const CairoPen&) = delete;
  CairoPen& operator=(const CairoPen&) = delete;

  void layer(const std::string&) override {}

  void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) override {
    if (points.size() < 2) return;
    if (m_pending == 0 || m_pending > kMostTogether || !(m_stroke == stroke) || !stroke.dashes.empty()) {
      flush();
      m_stroke = stroke;
    }
    add(points);
    m_pending += points.size();
  }

  void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) override {
    flush();
    for (const std::vector<AcGePoint2d>& ring : rings) {
      add(ring);
      cairo_close_path(m_cairo);
    }
    setColor(color);
    cairo_set_fill_rule(m_cairo, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_fill(m_cairo);
  }

  void text(const AcPlText& text) override {
    flush();
    const double k = 1.0 / kAcPlCapital;
    cairo_matrix_t matrix;  // letters are told with y down
    cairo_matrix_init(&matrix, text.along.x * k, text.along.y * k, -text.up.x * k, -text.up.y * k, 0, 0);
    cairo_set_font_matrix(m_cairo, &matrix);
    setColor(text.color);
    if (text.within) {
      const AcPlBox& box = *text.within;
      cairo_save(m_cairo);
      cairo_rectangle(m_cairo, box.left, box.bottom, box.right - box.left, box.top - box.bottom);
      cairo_clip(m_cairo);
    }
    cairo_move_to(m_cairo, text.base.x, text.base.y);
    cairo_show_text(m_cairo, text.text.c_str());
    cairo_new_path(m_cairo);
    if (text.within) cairo_restore(m_cairo);
  }

  void clip(std::span<const AcGePoint2d> ring) override {
    flush();
    if (m_clipped) cairo_reset_clip(m_cairo);
    m_clipped = !ring.empty();
    if (!m_clipped) return;
    add(ring);
    cairo_close_path(m_cairo);
    cairo_set_fill_rule(m_cairo, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_clip(m_cairo);
  }

  bool finish(std::string& file, std::string& reason) override {
    flush();
    cairo_status_t status = cairo_status(m_cairo);
    if (status == CAIRO_STATUS_SUCCESS && m_kind == AcPlCairoKind::kPng)
      status = cairo_surface_write_to_png_stream(m_surface, append, &m_file);
    cairo_surface_finish(m_surface);
    if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(m_surface);
    if (status != CAIRO_STATUS_SUCCESS) {
      reason = cairo_status_to_string(status);
      return false;
    }
    file = std::move(m_file);
    return true;
  }

private:
  static constexpr std::size_t kMostTogether = 400;  // points of one path: longer ones cost time in readers

  void setColor(const AcPlColor& color) {
    cairo_set_source_rgb(m_cairo, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
  }
  void add(std::span<const AcGePoint2d> points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (i == 0)
        cairo_move_to(m_cairo, points[i].x, points[i].y);
      else
        cairo_line_to(m_cairo, points[i].x, points[i].y);
    }
  }
  void flush() {
    if (m_pending == 0) return;
    setColor(m_stroke.color);
    cairo_set_line_width(m_cairo, m_stroke.width);
    cairo_set_dash(m_cairo, m_stroke.dashes.data(), static_cast<int>(m_stroke.dashes.size()), m_stroke.phase);
    cairo_stroke(m_cairo);
    m_pending = 0;
  }

  AcPlPaper m_paper;
  AcPlCairoKind m_kind;
  std::string m_file;
  cairo_surface_t* m_surface = nullptr;
  cairo_t* m_cairo = nullptr;
  AcPlStroke m_stroke;
  std::size_t m_pending = 0;
  bool m_clipped = false;
};

}  // namespace

AcPlPen* acplMakeCairoPen(const AcPlPaper& paper, AcPlCairoKind kind) { return new CairoPen(paper, kind); }
