#pragma once

#include "arx/plot/plpen.h"

/// An SVG file: millimetres, texts as texts. What is drawn later lies over what was drawn
/// before, so that a layer has as many groups as it is returned to.
class ARX_API AcPlSvgPen : public AcPlPen {
public:
  explicit AcPlSvgPen(const AcPlPaper& paper) : m_paper(paper) {}
  void layer(const std::string& name) override;
  void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) override;
  void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) override;
  void text(const AcPlText& text) override;
  void clip(std::span<const AcGePoint2d> ring) override;
  bool finish(std::string& file, std::string& reason) override;

private:
  void openGroup();
  void closeGroup();
  void closePath();
  void addRing(std::span<const AcGePoint2d> points);
  AcPlPaper m_paper;
  std::string m_content;
  std::string m_layer = "0";
  std::string m_groupLayer;  // of the group that is open
  bool m_inGroup = false;
  int m_groups = 0;
  AcPlStroke m_stroke;  // of the path that is open
  bool m_inPath = false;
  int m_clips = 0;
  bool m_clipped = false;
};
