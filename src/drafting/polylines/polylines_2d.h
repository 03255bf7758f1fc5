#pragma once

#include "arx/db/dbid.h"
#include "base/export.h"

#include <string>
#include <vector>

namespace veltora {

/// What 3D polylines are turned into.
struct demandePolylines2d {
  /// Where the plane of a new polyline lies: at 0, or by the altitudes of the vertices.
  enum Altitude { kAltitudeZero, kPremiere, kPlusBasse, kMoyenne, kPlusHaute };
  Altitude modeAltitude = kAltitudeZero;
  bool supprimerOriginales = false;
  /// Layers of the polylines that are turned; empty for all.
  std::vector<AcDbObjectId> layers;
  /// The new polylines go to a layer made from this, "{LAYER}" standing for the layer of the old one; empty:
  /// they stay on the layer of the old ones.
  std::wstring modeleLayer;
  int couleurLayer = 7;  ///< index of a layer that is made, 1 to 255
};

struct bilanPolylines2d {
  int creees = 0;
  int tropCourtes = 0;   ///< fewer than three vertices: left as they are
  int sansLayer = 0;     ///< no layer can bear the name that the model gives: left as they are
  int verrouillees = 0;  ///< on a locked layer, from which they would have to go: left as they are
};

/// A name of a layer by the model. The case of "{LAYER}" counts.
VELTORA_API std::wstring nomDuModele(const std::wstring& modele, const std::wstring& layer);

/// Whether layers can bear the names that the model gives.
VELTORA_API bool modelePossible(const std::wstring& modele);

/// Makes a light polyline in the current space of each 3D polyline among the entities, closed as it is. Of a
/// smoothed one the vertices on the curve count, not its frame.
VELTORA_API bilanPolylines2d convertirPolylines3d(const std::vector<AcDbObjectId>& entites,
                                                  const demandePolylines2d& demande);

/// What it would do, with nothing changed.
VELTORA_API bilanPolylines2d examinerPolylines3d(const std::vector<AcDbObjectId>& entites,
                                                 const demandePolylines2d& demande);

}  // namespace veltora
