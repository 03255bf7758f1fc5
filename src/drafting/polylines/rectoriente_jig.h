#pragma once

#include "arx/db/dbpl.h"
#include "arx/ed/edjig.h"
#include "base/export.h"

namespace veltora {

/// A rectangle in any direction: a corner, the side that begins there, the side across.
class VELTORA_API rectorienteJig : public AcEdJig {
public:
  ~rectorienteJig() override;
  /// Asks for the points until the rectangle stands or the user leaves.
  /// @return the rectangle in the current space; null, nothing left in the drawing, when he leaves
  AcDbObjectId dessiner();

protected:
  DragStatus sampler() override;
  bool update() override;
  [[nodiscard]] AcDbEntity* entity() const override { return polyligne; }

private:
  /// What the next point gives.
  enum Etat { kOrigine, kRotation, kDiagonale, kCote };
  void commencer(Etat nouveau);
  /// Takes what the point gives in the present stage. @return false when that is no side
  bool prendre(const AcGePoint2d& point);

  Etat etat = kOrigine;
  AcDbPolyline* polyligne = nullptr;  ///< four vertices, closed; `append` takes it
  AcGePoint2d origine;
  double angle = 0.0;        ///< of the first side, radians, counter-clockwise from +X
  float longueur = 0.0;      ///< of the first side, drawing units
  float largeur = 0.0;       ///< across, positive to the left of the first side
  bool m_prise = false;      ///< the latest point gave what it had to
  AcGePoint2d dernierPoint;  ///< of the sample before, in the stage `dernierEtat`
  int dernierEtat = -1;
};

}  // namespace veltora
