#pragma once

#include "base/export.h"
#include "calc/traverse/obs_fichier.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// A closed traverse as its file and its dialog hold it.
struct polygonaleFermeeObs : donneesObs {
  std::wstring nom = L"ST1";  ///< departure station
  double x = 1000.0;
  double y = 1000.0;
  double z = 100.0;
  double vo = 0.0;  ///< bearing of the first leg, in the unit in force
};

/// Reads a file. Rows, departure name and the four numbers are emptied first; the modes stay when the file
/// does not name them. Lines that fit nothing are passed over.
/// @return what was passed over or guessed, in order of the lines
VELTORA_API base::Remarques lireObsFermee(std::string_view octets, polygonaleFermeeObs& donnees);
/// The bytes of a file, Windows-1252 with LF ends; what the code page lacks becomes "?". Cells are written as
/// they stand; names are quoted, so that one with blanks survives (one with a double quote does not).
VELTORA_API std::string ecrireObsFermee(const polygonaleFermeeObs& donnees);

}  // namespace veltora
