#pragma once

#include "arx/plot/plpen.h"

#include <map>

/// An SVG file: millimetres, one group a layer in the order in which they are first drawn on, texts as texts.
class ARX_API AcPlSvgPen : public AcPlPen {
public:
  explicit AcPlSvgPen(const AcPlPaper& paper) : m_paper(paper) {}
  void layer(const std::string& name) override;
  void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) override;
  void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) override;
  void text(const AcPlText& text) override;
  bool finish(std::string& file, std::string& reason) override;

private:
  struct Layer {
    std::string name;
    std::string content;
    AcPlStroke stroke;  // of the path that is open
    bool open = false;
  };
  Layer& current();
  static void closePath(Layer& layer);
  void addRing(std::string& out, std::span<const AcGePoint2d> points) const;
  AcPlPaper m_paper;
  std::vector<Layer> m_layers;
  std::map<std::string, std::size_t> m_byName;
  std::size_t m_current = 0;
};
