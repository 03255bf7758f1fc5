#pragma once

#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <string>

/// The paper formats of the sheet: ten of the ISO rows, then those of the user. Their sizes stand in
/// "config.ini", "VARN.PaperFormat0" to 9 and "VARN.UserPaperScale0" to 5; the former are entered there when
/// they are first asked for.
namespace veltora {

inline constexpr int kNombreFormats = 16;

/// "Format A4 Portrait"; trailing blanks are part of it. Empty outside 0 to 15.
VELTORA_API std::wstring nomFormat(int rang);
/// Width and height in millimetres; 1000 by 1000 outside 0 to 15.
VELTORA_API AcGePoint2d tailleFormat(int rang);
/// What a list shows: "Format A4 Portrait ( 210 x 297 )".
VELTORA_API std::wstring ligneFormat(int rang);
/// What a command line calls it: "A4-portrait", "user-0".
VELTORA_API std::wstring motFormat(int rang);
/// Sets sizes with a negative component back to their defaults.
VELTORA_API void retablirFormats();

}  // namespace veltora
