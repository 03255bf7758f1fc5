#pragma once

#include "base/export.h"
#include "calc/leve/calcul_leve.h"

#include <string>

namespace veltora {

class htmlDocument;

/// A value times a factor in a printf format; "-" for none.
VELTORA_API std::wstring texteMesure(const std::optional<double>& valeur, const wchar_t* format,
                                     double facteur = 1.0);

/// The corrections in force, one sentence.
VELTORA_API std::wstring texteCorrections(const optionsLeve& options);

/// Writes the report of a survey into an empty document: corrections as told, stations with their references,
/// points with their determinations, remarks.
VELTORA_API void rapportLeve(const resultatCalculLeve& resultat, const std::wstring& corrections,
                             htmlDocument& document);

}  // namespace veltora
