#pragma once

#include "base/remarque.h"
#include "base/suivi.h"
#include "points/exchange/forme_liste.h"
#include "points/point_xyz.h"

#include <string>
#include <string_view>
#include <vector>

/// The points of a list whose form is known.
namespace veltora {

/// Lines between two signs of progress.
inline constexpr int kLignesParSuivi = 1000;

/// A row of a list: a point, and what a point does not hold by itself.
struct ligneListe {
  pointXYZ point;    ///< an empty name where the list gives none; z `Z_ABSENT` where it is blank
  int table = -1;    ///< of `tables`; -1 where the list names none
  int libelle = -1;  ///< of `libelles`, in place of a code; -1 for none
};

struct listeLue {
  std::vector<ligneListe> lignes;
  std::vector<std::wstring> tables;    ///< in the order in which they come
  int courante = -1;                   ///< of them, the one that the list calls current; -1 for none
  std::vector<std::wstring> libelles;  ///< texts in place of codes, in the order in which they come
  bool interrompue = false;            ///< the user stopped the reading
  /// Lines without a point are remarks, those that should have one are doubts: X, Y or Z is no number, or
  /// more fields than columns, which something within a number may have shifted.
  base::Remarques remarques;
};

/// Reads a list. A blank Z, or 1e38, is no altitude; a code that is missing or 0 is 1; fields behind those
/// that are wanted are passed over, but for the words of an observation at the end of a list that is parted
/// by blanks, which are joined by one blank.
VELTORA_API listeLue lireListe(std::string_view octets, const formeListe& forme,
                               base::Suivi* suivi = nullptr);

/// The fields of the first rows with points, as they stand in the file.
VELTORA_API std::vector<std::vector<std::wstring>> premieresLignes(std::string_view octets,
                                                                   const formeListe& forme,
                                                                   std::size_t nombre);

}  // namespace veltora
