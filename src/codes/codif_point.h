#pragma once

#include "arx/db/dbid.h"
#include "base/export.h"
#include "core/code_range.h"

#include <array>
#include <string>
#include <string_view>

class TiXmlElement;

namespace veltora {

class fluxTexte;

/// What falls off both ends of names and values of codes.
inline constexpr std::wstring_view kBordsCode = L" \t,;.";

/// The five layers of a drawn point, in the order of all arrays of `codifPoint`.
enum IndexLayer { layerBlock = 0, layerAltitudes, layerNumero, layerObs, layerCode, nbLayers };

/// What one point code means: label, block and its size, decimals of the altitude, layers and their colours.
/// A plain value. Nothing checks its ranges: a code file may hold any value.
struct VELTORA_API codifPoint {
  /// Defaults as below; `chemin` is "biblio\varnblk1.dwg" below the installation directory.
  codifPoint();

  int code = kSmallestCode;
  std::wstring libelle = L"Point Topo";
  std::wstring chemin;                                  ///< block drawing; see `completerChemin`
  double tailleBlock = 1.0;                             ///< scale of the block, above 0
  std::array<int, nbLayers> coulLayers{7, 7, 7, 7, 7};  ///< colour indices, 0 to 256
  std::array<AcDbObjectId, nbLayers> idLayers;          ///< in the current drawing; never stored in a file
  std::array<std::wstring, nbLayers> layers{L"0", L"_ Altitudes Points", L"_ Numero Points", L"_ Obs Points",
                                            L"_ Codes Points"};
  int precisionAltitudes = 2;  ///< decimals, 0 to 8

  /// Reads the fields that the element has; the others keep their values.
  /// @return 0, nothing changed, when the element is not called "codifPoint" in any case; else 1
  int lireXML(const TiXmlElement& element);
  /// Adds one "codifPoint" child to the parent.
  void ecrireXML(TiXmlElement& parent) const;

  /// Reads the next record of the line-oriented text form: skips to the line "Code {", then reads up to "}".
  /// Values out of range are brought within it; unknown lines are ignored.
  /// @return 1; 0 at the end of the stream or when another record begins, with the fields read so far
  int lireTexte(fluxTexte& flux);
  /// Writes the record in the same form. Its texts come out cut at their first character and do not read
  /// back.
  void ecrireTexte(fluxTexte& flux) const;
};

/// Altitude as it is shown with a code's number of decimals; empty for `Z_ABSENT`. Decimals below 0 count as
/// 0 and above 30 as 30: a code file may hold any number.
VELTORA_API std::wstring texteAltitude(double z, int decimales);

}  // namespace veltora
