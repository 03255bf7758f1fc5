#pragma once

#include "points/point_du_dessin.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// What the name of a coordinate file asks for: ".htm", ".html" and ".doc" a report, any other text.
enum class formeExport { kTexte, kRapport };
VELTORA_API formeExport formeDuFichier(std::wstring_view chemin);

/// One line of a coordinate file, in the ANSI code page, with its line end: name, X, Y, Z with four decimals
/// and code, in columns parted by tabs. Without altitude the column Z is blank.
VELTORA_API std::string texteDuPoint(const pointDuDessin& point);

/// Writes points, in their order, to a file of the form that its name asks for; the old file stays whole when
/// that fails or is stopped. Reports have the Word form whatever the extension. Shows progress.
/// @param raison  why it failed, French; empty when it was stopped
/// @param observations  of the points, which stand in a text behind the codes; empty for none
VELTORA_API bool exporterPoints(const std::vector<pointDuDessin>& points, const std::wstring& chemin,
                                std::wstring& raison, const std::vector<std::wstring>& observations = {});

}  // namespace veltora
