#pragma once

#include "arx/db/dbsymtb.h"
#include "base/growable_array.h"
#include "base/uncopyable.h"
#include "codes/codif_point.h"

#include <functional>
#include <optional>
#include <unordered_map>

class AcDbDatabase;
class TiXmlDocument;

namespace veltora {

/// The code table: one for the process, shared by all drawings, kept in one XML file. Rows stand in the order
/// in which they were added; lookups give the first match. Codes are unique only by the checks of those who
/// add rows. Others append rows to `codes` and change their fields, the code excepted; rows are removed and
/// reordered by the members only, which keep the index of the lookups.
class VELTORA_API tableCodification : private Uncopyable {
public:
  /// Reads the file of this name and, when that gives no rows, "defcodif" of the installation directory. When
  /// that gives none either, makes the two default rows and writes them to "defcodif".
  explicit tableCodification(const std::wstring& fichier = {});
  virtual ~tableCodification() = default;

  /// Appends the records of `nomFichier`. A missing file, or one that is not well-formed XML, gives no rows.
  /// @return 1 when the table holds at least one row, else 0
  int chargerXML();
  /// The same from a document in memory.
  int lireXML(const TiXmlDocument& document);
  /// Writes the table to the file, or to `nomFichier`; the old file stays whole when that fails.
  /// @return 1, also when the file could not be written
  int sauverXML(const std::wstring& fichier = {}) const;
  /// Moves a file that holds something but no rows out of the way, and says so. @return false when it could
  /// not
  [[nodiscard]] bool garderIllisible() const;
  /// Adds the table to an empty document.
  void ecrireXML(TiXmlDocument& document) const;

  /// Index of the first row with this code, -1 for none.
  [[nodiscard]] int chercherCode(int code) const;
  /// The row with this code; when missing, a default row labelled "Code %d" is appended. Valid until rows are
  /// added or removed.
  codifPoint& getOuCreerCode(int code);
  /// The label of the code; when missing, a default row labelled "Code N° %d" is appended.
  std::wstring getLibelleCode(int code);
  /// @return the new number of rows. @throws std::invalid_argument for a bad index
  int supprimerLigne(int index);
  /// Removes all rows; the file is not touched.
  void viderTable();
  /// The two default rows, 1 "Point topo" and 100 "Station", in place of all others.
  void resetDefauts();
  /// Sorts by ascending code; rows of the same code keep their order.
  void trierParCode();
  /// The smallest code that no row has; nothing when all are taken.
  [[nodiscard]] std::optional<int> codeLibre() const;
  /// A comparison of two rows, given by their codes, for the list dialog: by column 0 code, 1 label ignoring
  /// case, 2 decimals then code, 3 block path ignoring case. Negative, 0 or positive; 0 when a row is
  /// missing. Valid until the table changes.
  [[nodiscard]] std::function<int(long long, long long)> comparateur(int colonne) const;

  /// Finds or makes the five layers of a row in the layer table, open for writing; without one, in that of
  /// the working drawing. A layer that exists keeps its colour; an empty name becomes "0". @param ligne
  /// belongs to this table or not
  void creerLayers(codifPoint& ligne, AcDbLayerTable* calques = nullptr) const;
  void creerTousLayers(AcDbDatabase* dessin);

  /// Lets the user edit a row, its code excepted. @return 0 for a bad index, else 1, also when he cancels
  int modifierLigne(int index);
  /// Shows the table to the user.
  void afficherTable();

  std::wstring nomFichier;
  base::CArray<codifPoint> codes;

private:
  void ajouterDefauts();
  /// Takes this row and those behind it out of the index.
  void oublierLignes(int premiere) const;

  /// Index of the first row of each code, among the first `m_indexees` rows; the rest follows at the next
  /// lookup.
  mutable std::unordered_map<int, int> m_premiers;
  mutable int m_indexees = 0;
};

/// Shows the code table to the user: its dialogs, which stand above it.
class VELTORA_API presentationCodes {
public:
  virtual ~presentationCodes() = default;
  /// Lets him edit a row of the table, its code excepted; the row stays when he cancels.
  virtual void modifier(tableCodification& table, codifPoint& ligne) = 0;
  virtual void afficher(tableCodification& table) = 0;
};
/// Installs who shows code tables, which the caller owns; null for nobody, and then nothing is shown.
VELTORA_API void setPresentationCodes(presentationCodes* presentation);

/// The table of the process, made at the first call.
VELTORA_API tableCodification& getTableCodification();

}  // namespace veltora
