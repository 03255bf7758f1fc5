#pragma once

#include "base/remarque.h"
#include "base/suivi.h"
#include "base/uncopyable.h"
#include "points/point_xyz.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// Lines of coordinates in memory, read from and written to `.xyz` files. Each line has a running number of
/// its own within the process (`pointXYZ::numeroInterne`).
class VELTORA_API tableObsXYZ : private Uncopyable {
public:
  static constexpr std::size_t kLongueurLigne = 1024;  ///< characters that are read of a line

  /// Appends the lines of a file. A line: name, X, Y, then Z (none: absent), code (none or 0: 1),
  /// the rest is the observation; words are parted by blanks and tabs. A line that does not give
  /// name, X and Y is passed over.
  /// @param fichier  null for `nomFichier`; trimmed of blanks, tabs and ",;."
  /// @param vider  drops the former lines first  @param suivi  null: no progress is shown, nothing stops
  /// @return 1; 0, the lines unchanged, when the name is empty, the file cannot be read or the user stops it
  int charger(const wchar_t* fichier = nullptr, bool vider = true, base::Suivi* suivi = nullptr);
  /// The same from bytes in memory.
  int lire(std::string_view octets, bool vider = true, base::Suivi* suivi = nullptr);
  /// Writes all lines, in the ANSI code page; the old file stays whole when that fails. A name that does not
  /// end in ".xyz", whatever its case, gets that ending. An absent altitude is written in full, as 1e38, and
  /// is absent again when read.
  /// @param fichier  as for `charger`
  /// @return 1; 0 when the name is empty, the file cannot be written or the user stops it
  int sauver(const wchar_t* fichier = nullptr, base::Suivi* suivi = nullptr) const;
  [[nodiscard]] std::string contenu() const;

  /// Line i gets the name made of prefix, start + i, suffix.
  void renumeroter(const AcString& prefixe, int depart, const AcString& suffixe);

  /// The line with this running number, null for none.
  [[nodiscard]] const pointXYZ* chercher(long long numeroInterne) const;
  /// A comparison of two lines, given by their running numbers: by column 0 name, 1 X, 2 Y, 3 Z, 4 code, 5
  /// running number. 0 when a line is missing. Valid until the lines change.
  [[nodiscard]] std::function<int(long long, long long)> comparateur(int colonne) const;

  /// True: a blank column Z in a line that is parted by tabs, as `texteDuPoint` writes it, means no altitude.
  /// False: only words count, and the code behind it is read as the altitude, with a remark.
  bool colonneZCompte = false;
  std::vector<pointXYZ> lignes;
  std::wstring nomFichier;
  base::Remarques remarques;  ///< of the last reading
};

}  // namespace veltora
