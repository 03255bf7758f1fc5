#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"
#include "arx/ge/gepoint.h"
#include "base/numbers.h"
#include "core/point_name.h"

namespace veltora {

class VeltoraSerializer;
struct pointXYZ;
using base::Z_ABSENT;

/// One survey point: a plain record of fixed size that owns nothing, so that a table of points is one block
/// of memory.
struct VELTORA_API pointDuDessin {
  static constexpr int kLongueurNom = kPointNameLength;  ///< longest name, in bytes of the ANSI code page

  double x = Z_ABSENT;                   ///< easting, drawing units
  double y = Z_ABSENT;                   ///< northing
  double z = Z_ABSENT;                   ///< altitude; exactly `Z_ABSENT` for none
  int code = 1;                          ///< key into the code table
  char nomPoint[kLongueurNom + 1] = {};  ///< ANSI code page, always terminated; the bytes behind are 0
  AcDbObjectId id;                       ///< block reference that shows the point; null for none

  pointDuDessin() = default;
  pointDuDessin(const pointDuDessin&) = default;
  ~pointDuDessin() = default;
  pointDuDessin& operator=(const pointDuDessin& autre);
  /// Takes coordinates, code and name, cut at 9 bytes; `id` stays.
  pointDuDessin& operator=(const pointXYZ& source);
  /// Same place (each coordinate within 0.0001, strictly), code, and name ignoring case; `id` takes no part.
  bool operator==(const pointDuDessin& autre) const;

  [[nodiscard]] double getX() const { return x; }
  [[nodiscard]] double getY() const { return y; }
  [[nodiscard]] double getZ() const { return z; }
  void setX(double valeur) { x = valeur; }
  void setY(double valeur) { y = valeur; }
  void setZ(double valeur) { z = valeur; }
  void getXY(double& px, double& py) const { px = x, py = y; }
  // Deliberate (setxy-altitude): sets the altitude too, in spite of its name.
  void setXY(double px, double py, double pz) { x = px, y = py, z = pz; }
  /// Marker of a missing altitude included.
  [[nodiscard]] AcGePoint3d getAs3dPnt() const { return {x, y, z}; }
  [[nodiscard]] int getCode() const { return code; }
  [[nodiscard]] AcDbObjectId& getId() { return id; }
  void setId(AcDbObjectId valeur) { id = valeur; }
  [[nodiscard]] const char* getNomPoint() const { return nomPoint; }
  /// Cut at 9 bytes; null empties the name.
  void setNomPoint(const char* nom);
  void setNomPoint(const wchar_t* nom);
  void setParams(const wchar_t* nom, const AcGePoint3d& position, int codePoint);
  /// Empty without altitude, otherwise the altitude with the decimals of the point's code.
  void getZAsString(CString& texte) const;
  /// Distance in the plane.
  [[nodiscard]] double distanceTo(const pointDuDessin& autre) const;

  /// Inserts the block of the point into the working drawing and keeps its id. The name shown is upper case
  /// and trimmed; the record keeps its spelling. Without a block file no block is made, and `id` stays null.
  /// @param creerCalques makes the layers of the code that are missing  @param obs observation, null for none
  void creer(bool creerCalques, const wchar_t* obs);
  /// Rewrites the block from the record (name, altitude, position); makes a new one when there is none.
  void updateDrawing();
  /// Reads the record from a point block. @return 0 when the id is no reference with an attribute NUMPT
  int updateFromDrawing(const AcDbObjectId& bloc);

  /// The six items of a point. @return 0 at the first item that fails
  int saveToXRecord(VeltoraSerializer* flux) const;
  int readFromXRecord(VeltoraSerializer* flux);
};

/// A coordinate with that many decimals; empty when absent.
VELTORA_API std::wstring texteCoordonnee(double valeur, int decimales);

/// The observation that the block of a point shows; empty when it has none, or there is no block.
VELTORA_API AcString observationDuBloc(const AcDbObjectId& bloc);

}  // namespace veltora
