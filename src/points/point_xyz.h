#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"

class AcDbDatabase;

namespace veltora {

class tableCodification;

/// A point on its way into the drawing: wide texts and an observation.
struct VELTORA_API pointXYZ {
  int code = 1;
  AcString obs;  ///< shown in attribute OBS
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  Adesk::UInt32 numeroInterne;  ///< running number within the process
  Adesk::Int32 reserve = 0;
  AcString nom;  ///< of any length

  pointXYZ();

  /// Inserts the block of the point's code with its attributes CODE, NUMPT, Z, OBS into the model space of
  /// `db`.
  /// @param avecAltitude  0 leaves the attribute Z empty
  /// @param creerCalques  makes missing layers of the code
  /// @param idResultat  the reference; unchanged when the block file cannot be read
  /// @return always 0
  int ecrireBlocPoint(AcDbDatabase* db, tableCodification& codes, AcDbObjectId& idResultat, int avecAltitude,
                      int creerCalques) const;
  /// Inserts the block into the working drawing and appends the point to the current table. @return 1; 0
  /// without an installed project
  int ajouterPointDessine() const;
};

/// Factor on the size of every block drawn from now on; 1.0 at start.
VELTORA_API double facteurTailleBloc();
/// @param facteur  its absolute value counts; below 1e-6 it becomes 1.0
VELTORA_API void setFacteurTailleBloc(double facteur);

}  // namespace veltora
