#pragma once

#include "base/growable_array.h"
#include "base/uncopyable.h"
#include "points/liste_points_du_dessin.h"

class AcDbDatabase;

namespace veltora {

/// The tables of one drawing, one of which is current. Owns them.
class VELTORA_API projetsTopo : private Uncopyable {
public:
  /// One empty table "LEVE", which is current.
  projetsTopo();
  ~projetsTopo();

  void reset();      ///< back to the state of a new project
  void removeAll();  ///< no table; `tableCourante` is -1
  /// Appends an empty table; the current one stays. There is no test for a name in use.
  void creerTablePoints(const wchar_t* nom);
  /// Nothing happens to the only table, or outside the list. The current index moves down by one when the
  /// table stands at it or in front of it.
  void removeTablePoints(int i);
  /// The current table, never null; repairs an empty list and an index past its end.
  /// @throws std::invalid_argument for a negative index on a list that has tables
  listePointsDuDessin* currTable();
  /// The first table of this name, ignoring case; the current one for an empty name. Null when there is none.
  listePointsDuDessin* chercherTable(const std::wstring& nom);
  /// The same; a table that is missing is made.
  listePointsDuDessin& tableOuNouvelle(const std::wstring& nom);
  void decalZ(const double& dz);
  void notifyPositionPoint(const AcDbObjectId& id, const AcGePoint3d& pt, int masque);
  void notifyPositionPoints(const placesBlocs& places, int masque);

  /// @return 1, or 0 at the first item that fails
  int SaveToXRecord(VeltoraSerializer* flux) const;
  /// Replaces all tables. @return 0, after `reset`, at the first item that fails
  int GetFromXRecord(VeltoraSerializer* flux);

  int tableCourante = -1;
  base::CArray<listePointsDuDessin*> tablesListe;  ///< owned, in order of creation

private:
  void supprimer(int i);
  void nettoyerLeveVides();
};

/// The project on which all commands work; null at load. Its owner installs it with `setSrcInfosTopo`.
VELTORA_API extern projetsTopo* tablesPoints;

}  // namespace veltora
