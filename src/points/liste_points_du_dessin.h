#pragma once

#include "base/growable_array.h"
#include "base/uncopyable.h"
#include "points/index_noms.h"
#include "points/point_du_dessin.h"

#include <unordered_map>
#include <vector>

namespace veltora {

/// Where blocks have come to stand.
using placesBlocs = std::unordered_map<AcDbObjectId, AcGePoint3d>;

/// One named table of points: an array, which is the truth, and a dictionary by name, which is a
/// fast way in. Of two points of one name the dictionary knows the later one. Names compare
/// ignoring case and outer blanks.
///
/// An index outside the array raises std::invalid_argument. Operations that take a name never throw.
class VELTORA_API listePointsDuDessin : private Uncopyable {
public:
  using Tableau = base::CArray<pointDuDessin>;

  listePointsDuDessin();

  /// Appends a copy. There is no test for a name already in use.
  void Ajouter(const pointDuDessin& point);
  /// Makes room for that many more points.
  void reserver(std::size_t points) { indexNoms.reserve(indexNoms.size() + points); }
  /// Makes a point and appends it; an altitude of exactly 0.0 adds nothing. @param nom  null for "*"
  void CreerPoint(const AcGePoint3d& pt, int code, const wchar_t* nom);
  /// @return 1 and the index when the dictionary knows the name, else 0 and -1
  int existPoint(const wchar_t* nom, int& index) const;
  /// Valid until the array next grows or the largest number is asked for.
  pointDuDessin* getData(int i) {
    oublierNumeros(i);
    return &pointsTable.GetAt(i);
  }
  const pointDuDessin* getData(int i) const { return &pointsTable.GetAt(i); }
  Tableau* getData() {
    oublierNumeros(0);
    return &pointsTable;
  }
  const Tableau* getData() const { return &pointsTable; }
  [[nodiscard]] int nbPoint() const { return pointsTable.GetSize(); }
  [[nodiscard]] AcString getNomTable() const { return nomTable; }
  void setNomTable(const wchar_t* nom) { nomTable = nom ? nom : L""; }
  /// Largest number with which a name begins, at least 0. Asked for at each new point it looks at that one
  /// only.
  [[nodiscard]] int getMaxNum() const;
  [[nodiscard]] int nombreAyantCode(int code) const;
  /// @return 1 and the point's block, 0 when the name is unknown
  int getObjId(const wchar_t* nom, AcDbObjectId& id) const;
  /// @return 0 when the name is unknown; else 1, the code, and the block's place or, without a block, the
  /// table's
  int getBlockPosition(const wchar_t* nom, AcGePoint3d& pt, int& code) const;
  /// The point nearest in the plane, the earlier of two equally near ones. @return 0 on an empty table
  int findNearestTo(double x, double y, pointDuDessin& out) const;
  /// Farthest in x and in y that a point may lie from the place where it is looked for, strictly.
  static constexpr double kMemePlace = 1e-6;
  static bool estEn(const pointDuDessin& point, double x, double y);
  /// The first point less than `kMemePlace` away in x and in y. @return 0 when there is none
  int getAt(double x, double y, pointDuDessin& out) const;
  /// Adds to every altitude that is not absent.
  void decalZ(const double& dz);
  /// Appends the points of another table, which stays as it is.
  void fusionnerAvec(const listePointsDuDessin& autre);
  /// Removes points of the same place in the plane (within 1e-8), keeping of each group the lowest code, then
  /// the earliest. A table that lost points comes out sorted by x, y, code.
  void delDups();
  /// @param tous  true: names "1", "2"... in array order, blocks follow; false: only names made of " *." get
  /// the next free number, neither dictionary nor drawing follow
  void renumeroter(bool tous);
  /// Removes the point and erases its block; the last point takes its place.
  void supprimerPoint(const wchar_t* nom);
  /// Moves the first point that is shown by `id`. @param masque  1 takes x, 2 y, 4 z
  void notifyPositionPoint(const AcDbObjectId& id, const AcGePoint3d& pt, int masque);
  /// The same for many blocks in one pass over the table.
  void notifyPositionPoints(const placesBlocs& places, int masque);

  /// Lets the user select entities of the drawing and turns them into points; see points/import_dessin.h.
  /// @param masque  sum of `drapeauSource`; without any nothing happens
  /// @param etiquetteNumero, etiquetteAltitude, etiquetteCode  attributes of the blocks of other tags, the
  /// code's may be empty
  /// @param decalage  from the position of a one-line text to its point, drawing units
  void importFromDrawing(int masque, CString& etiquetteNumero, CString& etiquetteAltitude,
                         CString& etiquetteCode, AcGeVector2d& decalage);
  /// Rewrites every block from the table, with progress; can be interrupted.
  void updateDrawing();
  /// Rebuilds the table from all point blocks of the drawing, from whatever table they came, with progress. A
  /// table that is interrupted stays as it was.
  void updateFromDrawing();

  /// @return 0 at the first item that fails
  int saveToXRecord(VeltoraSerializer* flux) const;
  int GetFromXRecord(VeltoraSerializer* flux);

private:
  void entrer(std::wstring_view bords, int index);
  /// The names may change from this index on.
  void oublierNumeros(int index);

  indexNomsPoints indexNoms;
  Tableau pointsTable;
  /// Of the first points of the array, the largest number up to each; as many as no change could reach.
  mutable std::vector<int> plusGrandsNumeros;
  AcString nomTable;
};

}  // namespace veltora
