#pragma once

#include "base/export.h"

#include <string>
#include <string_view>

/// The one place where numbers are read and printed; the decimal sign is always a point.
namespace veltora::base {

/// Marks an absent altitude, coordinate or angle. Compared exactly, never with a tolerance.
inline constexpr double Z_ABSENT = 1e38;
/// Start value of searches for a minimum.
inline constexpr double kDebutRecherche = 1e36;

/// Longest numeric prefix after leading white space ("12abc" is 12, ".5" is 0.5); nothing numeric
/// gives 0.0. Decimal forms only: "inf", "nan" and hexadecimal text give 0.0 or the digits in
/// front. Overflow gives infinity.
VELTORA_API double lireReel(std::string_view text);
VELTORA_API double lireReel(std::wstring_view text);
/// As the C library's `strtod` in the "C" locale, "inf", "nan" and hexadecimal text included.
VELTORA_API double lireReelC(const char* text);
/// As the C library's `atoi`: white space, sign, digits; nothing numeric gives 0. Out of range saturates.
VELTORA_API int lireEntier(std::string_view text);
VELTORA_API int lireEntier(std::wstring_view text);
/// Reads a whole text as a number, nothing else around it. @return false, with `value` unchanged, otherwise.
VELTORA_API bool lireReelExact(std::string_view text, double& value);
/// Shortest text that reads back as the same double, with at least one decimal ("1.0", "1e+22" as printed).
VELTORA_API std::string ecrireReel(double value);
/// Appends the number as printf's "%.<decimals>f" does, at a fraction of its cost for what is measured.
/// @param decimals  0 to 9
VELTORA_API void ajouterFixe(std::string& text, double value, int decimals);

}  // namespace veltora::base
