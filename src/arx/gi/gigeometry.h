#pragma once

#include "arx/ge/gecurvepiece.h"
#include "arx/gi/gidrawable.h"

#include <cstddef>
#include <span>
#include <vector>

/// A block shown at a place, or in rows and columns.
struct AcGiBlockPlace {
  const AcGiDrawable& block;  ///< the definition, whose look is that of its parts
  std::size_t parts = 0;      ///< about how many parts it has
  AcGeMatrix3d toOuter;       ///< from the coordinates of the block to those of its reference
  bool repeated = false;      ///< in more than one row or column
  int columns = 1;
  int rows = 1;
  AcGeVector3d toLastColumn{};  ///< from the first column to the last
  AcGeVector3d toLastRow{};
};

class AcGiRenderer;

/// Takes in how things look: base of all who want to know. What is drawn hands over curves and areas in its
/// own coordinates, `toWorld` places them. The walk into blocks and to attributes stands here.
class ARX_API AcGiGeometry {
public:
  AcGiGeometry() = default;
  virtual ~AcGiGeometry() = default;
  AcGiGeometry(const AcGiGeometry&) = delete;
  AcGiGeometry& operator=(const AcGiGeometry&) = delete;

  /// This geometry as one that wants what is drawn (`AcGiRenderer`); null for one that asks where things lie.
  [[nodiscard]] virtual AcGiRenderer* renderer() { return nullptr; }
  /// Looks at something, hidden or not.
  void show(const AcGiDrawable& drawable);
  /// Looks at something unless it is hidden: for the parts of what is shown.
  void draw(const AcGiDrawable& drawable);
  /// A curve, piece by piece in order.
  virtual void curve(std::span<const AcGeCurvePiece> pieces) = 0;
  /// Something filled, given by its corners: the box of a text, a face, a mesh, a point with its thickness.
  virtual void area(std::span<const AcGePoint3d> corners) = 0;
  /// A block. A block within itself is entered once; blocks nested deeper than `deepest` are not entered. Of
  /// rows and columns the first place is looked at.
  virtual void block(const AcGiBlockPlace& place);

  /// What is drawn until the pop is placed by this matrix first.
  void pushModelTransform(const AcGeMatrix3d& matrix);
  void popModelTransform();

protected:
  explicit AcGiGeometry(const AcGeMatrix3d& toWorld, std::size_t deepest = kDeepest)
      : m_toWorld(toWorld), m_deepest(deepest) {}
  static constexpr std::size_t kDeepest = 16;
  /// Places what is handed over now.
  [[nodiscard]] const AcGeMatrix3d& toWorld() const { return m_toWorld; }
  /// The innermost thing that is drawn now.
  [[nodiscard]] const AcGiDrawable& drawn() const { return *m_drawn; }
  /// From its coordinates, whatever matrices it has pushed.
  [[nodiscard]] const AcGeMatrix3d& drawnToWorld() const { return m_drawnToWorld; }
  /// The references around it whose blocks it is part of, innermost last.
  [[nodiscard]] const std::vector<const AcGiDrawable*>& references() const { return m_references; }
  [[nodiscard]] bool mayEnter(const AcGiDrawable& block) const;
  /// Looks at the parts of a block under a matrix to the world.
  void enter(const AcGiDrawable& block, const AcGeMatrix3d& matrix);
  /// Nothing more is of interest: the rest is passed by.
  void finish() { m_finished = true; }

private:
  AcGeMatrix3d m_toWorld;
  AcGeMatrix3d m_drawnToWorld;
  std::size_t m_deepest = kDeepest;
  const AcGiDrawable* m_drawn = nullptr;
  std::vector<const AcGiDrawable*> m_references;
  std::vector<const AcGiDrawable*> m_blocks;  // of these references
  std::vector<AcGeMatrix3d> m_pushed;
  bool m_finished = false;
};

/// What a drawable gets to show itself with.
class ARX_API AcGiWorldDraw {
public:
  explicit AcGiWorldDraw(AcGiGeometry& geometry) : m_geometry(geometry) {}
  [[nodiscard]] AcGiGeometry& geometry() const { return m_geometry; }

private:
  AcGiGeometry& m_geometry;
};
