#pragma once

#include "arx/db/dbmain.h"
#include "arx/gi/girenderer.h"
#include "arx/plot/plclip.h"
#include "arx/plot/pllooks.h"

#include <map>
#include <optional>
#include <set>
#include <string>

/// How a drawing lies on the paper, and what of it is drawn.
struct AcPlView {
  AcPlPaper paper;
  std::optional<AcPlBox> window;  ///< what is drawn of the paper, mm; all for none
  AcGePoint2d corner;             ///< of the drawing, at the lower left corner of the paper
  double mmPerUnit = 1.0;         ///< above 0
  double chordError = 0.005;      ///< mm that chords of arcs may lie off them, above 0
  bool printed = false;           ///< on paper: without what only screens show
  bool masks = true;              ///< masks hide what was drawn before them
  bool monochrome = false;        ///< everything in the colour that stands out from the background
  /// Of the drawing, along the lower side of the paper; its upward side lies a quarter counter-clockwise.
  AcGeVector2d right{1.0, 0.0};
  std::vector<std::wstring> layers;        ///< the only ones to be drawn; all for none
  std::vector<std::wstring> hiddenLayers;  ///< further ones not to be drawn
};

/// What a drawing showed that was not drawn, or drawn otherwise.
struct AcPlOmissions {
  std::map<std::string, int> kinds;  ///< entities of kinds whose look is not known, by their names in files
  int places = 0;                    ///< entities with coordinates that are no numbers
  int texts = 0;                     ///< letters taller than the paper could hold
  int repeats = 0;                   ///< references whose rows and columns were too many
  int slanted = 0;                   ///< openings of layouts that do not look from above
  int clipped = 0;               ///< openings of layouts whose own outline is not there, drawn as rectangles
  std::set<std::wstring> fonts;  ///< of the styles of texts, drawn in the font of all pens
  void add(const AcPlOmissions& other);
};

/// Draws what it is shown in the plan view with a pen. Lines are cut off beyond the paper; arcs are chords
/// that stay within the error told, splines within 0.0001 of the size of a stretch.
class ARX_API AcPlDraw : public AcGiRenderer {
public:
  /// Draws nothing by itself; the pen outlives it. @param linetypeScale of the drawing
  AcPlDraw(const AcPlView& view, AcPlPen& pen, double linetypeScale);
  /// Draws an entity of a space.
  void entity(const AcDbEntity& entity);
  /// What an entity of a space is drawn with; nothing when it is not drawn.
  [[nodiscard]] std::optional<AcPlColor> inkOf(const AcDbEntity& entity);
  [[nodiscard]] const AcPlOmissions& omissions() const { return m_omissions; }

  void curve(std::span<const AcGeCurvePiece> pieces) override;
  void block(const AcGiBlockPlace& place) override;
  void unknown() override;
  void textLine(const AcGiTextLine& line) override;
  void setColor(const AcCmColor* color) override;
  void dot(const AcGePoint3d& place) override;
  void edges(std::span<const AcGePoint3d> points) override;
  void polygon(std::span<const std::vector<AcGePoint3d>> rings) override;
  void mask(std::span<const AcGePoint3d> ring) override;
  void wideCurve(std::span<const AcGeCurvePiece> pieces,
                 std::span<const std::pair<double, double>> widths) override;

private:
  using Points = std::vector<AcGePoint2d>;
  [[nodiscard]] AcGePoint2d onPaper(const AcGePoint3d& place) const;
  [[nodiscard]] AcGeVector2d onPaper(const AcGeVector3d& way) const;
  void addPiece(const AcGeCurvePiece& piece, Points& points) const;
  /// The look of what is drawn now; null when it is hidden. Chooses its layer with the pen.
  const AcPlLook* look();
  [[nodiscard]] AcPlColor inkOf(const AcPlLook& look) const;
  [[nodiscard]] AcPlStroke strokeOf(const AcPlLook& look, bool dashed) const;
  void stroke(const Points& points, AcPlStroke stroke);
  [[nodiscard]] bool isFinite(const Points& points);
  /// Nothing is drawn when one of the rings has no places.
  template <class Rings>
  void fill(const Rings& rings, const AcPlColor& color);
  /// How the drawing shows its points (PDMODE, PDSIZE), asked for once.
  struct PointStyle {
    int mode = 0;
    double size = 0.0;  ///< mm
  };
  const PointStyle& pointStyle();
  void noteFont();
  /// What is drawn, and a margin in which the ends of lines cannot be seen where the paper ends.
  [[nodiscard]] AcPlBox visible(double lineWidth) const;
  AcPlView m_view;
  AcPlPen& m_pen;
  double m_linetypeScale;
  AcPlLooks m_looks;
  std::vector<AcPlLook> m_outer;          // of the references around what is drawn, innermost last
  const AcGiDrawable* m_known = nullptr;  // whose look this is
  std::size_t m_knownDepth = 0;
  AcPlLook m_look;
  std::optional<PointStyle> m_pointStyle;
  const AcDbStub* m_notedStyle = nullptr;  // whose font is among those told
  std::optional<AcCmColor> m_ownColor;     // of a part of what is drawn
  AcPlOmissions m_omissions;
};

/// Draws what stands in a space of a drawing that lies on the paper.
/// @param linetypeShare  of the length that the drawing gives its line types
ARX_API AcPlOmissions acplPlot(AcDbDatabase& database, AcDbObjectId space, const AcPlView& view, AcPlPen& pen,
                               double linetypeShare = 1.0);
