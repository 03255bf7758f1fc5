#pragma once

#include "core/drawing_space.h"
#include "stakeout/marques_implantation.h"
#include "stakeout/params_implantation.h"
#include "stakeout/un_point.h"

#include <memory>
#include <string>

namespace veltora {

/// Colour number of what follows its layer.
inline constexpr int kDuCalque = 256;

/// Draws for one point or station into model space: every entity bears its mark and is remembered in a list.
/// Heights above 0 are in drawing units; everything lies at altitude 0.
class crayonImplantation : private Uncopyable {
public:
  crayonImplantation(marqueImplantation genre, std::uint32_t id) : m_genre(genre), m_id(id) {}

  void tracer(std::unique_ptr<AcDbEntity> entite, int couleur, entitesDessinees& sortie);
  void ligne(const AcGePoint2d& de, const AcGePoint2d& vers, int couleur, entitesDessinees& sortie);
  /// In the current text style. @param rotation  radians from +X
  void texte(const AcGePoint2d& place, double hauteur, const std::wstring& texte, double rotation,
             int couleur, entitesDessinees& sortie);
  /// A sight line with its text, by the option word. @param gisement  the angle to tell, radians; `Z_ABSENT`
  /// leaves it out
  void visee(const unPoint& de, const unPoint& vers, double gisement, int options, int couleur,
             entitesDessinees& sortie);

private:
  DrawingSpace m_espace;
  marqueImplantation m_genre;
  std::uint32_t m_id;
};

/// Erases what a list remembers and empties it; what cannot be opened any more is passed over.
void effacerDessinees(entitesDessinees& entites);

}  // namespace veltora
