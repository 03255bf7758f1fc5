#pragma once

#include "arx/db/dbents.h"
#include "base/uncopyable.h"
#include "stakeout/un_point.h"

class AcDbLine;

namespace veltora {

/// Something that may stand in a sight: an entity of the drawing with a height above the ground, in drawing
/// units. The entity's mark keeps the data (docs/formats.md).
class VELTORA_API obstacleImplantation : private Uncopyable {
public:
  /// Erases the mark from the entity; one that is gone has none. @return false on a locked layer
  virtual bool retirerMarque();
  /// Writes the mark. @return false when the entity does not open, or lies on a locked layer
  virtual bool ecrireMarque() = 0;
  /// Takes the data of an entity's mark. @return 1; 0, nothing changed, without a valid mark of this kind
  virtual int lireDepuis(const AcDbObjectId& objectId) = 0;
  /// Shows it in temporary graphics.
  virtual void surligner(int couleur) const = 0;
  /// Where a sight line meets it in the plane; appends points of altitude 0. @return true for at least one
  virtual bool intersections(const AcDbLine& ligne, AcGePoint3dArray& sortie) const = 0;
  virtual ~obstacleImplantation() = default;

  AcDbObjectId objet;
  double hauteur = Z_ABSENT;
  std::uint32_t idObstacle;

protected:
  obstacleImplantation();
};

/// A curve.
class VELTORA_API obstacleLineaireImplantation : public obstacleImplantation {
public:
  bool ecrireMarque() override;
  int lireDepuis(const AcDbObjectId& objectId) override;
  void surligner(int couleur) const override;
  bool intersections(const AcDbLine& ligne, AcGePoint3dArray& sortie) const override;
};

/// A block reference, as a circle about a place.
class VELTORA_API obstaclePonctuelImplantation : public obstacleImplantation {
public:
  bool ecrireMarque() override;
  /// The place is the block's insertion point, which the mark does not hold.
  int lireDepuis(const AcDbObjectId& objectId) override;
  void surligner(int couleur) const override;
  bool intersections(const AcDbLine& ligne, AcGePoint3dArray& sortie) const override;

  double x = Z_ABSENT;
  double y = Z_ABSENT;
  double rayon = Z_ABSENT;
};

}  // namespace veltora
