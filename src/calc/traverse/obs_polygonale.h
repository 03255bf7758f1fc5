#pragma once

#include "base/export.h"
#include "base/growable_array.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// One row of a traverse. What `angle` and `nom` refer to depends on the traverse:
/// - closed: the leg of row i goes from `nom[i-1]` to `nom[i]` (indices modulo the number of rows);
///   `angle` is the exterior angle at `nom[i-1]`, between `nom[i-2]` and `nom[i]`; the last row's name is
///   the departure station.
/// - open: the leg of row i goes from station i to station i+1, `angle` is measured at station i, from the
///   back sight to the next station; `nom` is the station at the end of the leg.
struct VELTORA_API obsPolygonale {
  wchar_t nom[20] = {};   ///< terminated; at most 18 characters are kept by `setNom`
  double angle = 0.0;     ///< in the unit in force
  double distance = 0.0;  ///< drawing units
  double dz = 0.0;        ///< height difference along the leg

  void setNom(std::wstring_view texte);
};

/// One row as text, as a list or a file shows it.
struct ligneObs {
  std::wstring nom;
  std::wstring angle;
  std::wstring distance;
  std::wstring dz;
  int ligne = 0;  ///< of the file, from 1; 0 for a row that was typed
};

/// The row that a line of text stands for: the name cut to 18 characters, each number the longest numeric
/// prefix of its cell, 0.0 for none.
VELTORA_API obsPolygonale lireLigne(const ligneObs& ligne);
/// A row of text from typed values, numbers with five decimals.
VELTORA_API ligneObs formaterLigne(std::wstring_view nom, double angle, double distance, double dz);

using lignesPolygonale = base::CArray<obsPolygonale>;

/// The rows of the text cells.
VELTORA_API lignesPolygonale lireLignes(const std::vector<ligneObs>& lignes);

}  // namespace veltora
