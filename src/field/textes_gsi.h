#pragma once

#include "field/mots_gsi.h"

#include <string>
#include <string_view>
#include <vector>

/// Field books in words that a person reads.
namespace veltora {

/// One word: what it is and its value, behind a tab; of a point name the name alone.
VELTORA_API std::wstring texteMotGSI(const motGSI& mot);
/// One word of a code block.
VELTORA_API std::wstring texteMotCodeGSI(const motGSI& mot);

/// A whole line, its words one behind the other. Empty for a line that opens with neither 11 (a sighting) nor
/// 41 (a code block). A sighting ends the run of code blocks of the state.
VELTORA_API void texteLigneGSI(etatLectureGSI& etat, const ligneGSI& mots, std::wstring& sortie);
/// The same in Windows-1252, behind what the output holds.
VELTORA_API void ajouterTexteLigneGSI(etatLectureGSI& etat, const ligneGSI& mots, std::string& sortie);
/// The same, one text a word: none without words, an empty one for a line that opens otherwise.
VELTORA_API void texteLigneGSIListe(etatLectureGSI& etat, const ligneGSI& mots,
                                    std::vector<std::wstring>& sorties);

/// The data of the words of a line of width 16, whatever they are: "* INFO :", then each without its leading
/// zeros and behind it a tab. Nothing of the program calls it. @return always 1
VELTORA_API int texteInfoGSI(std::wstring_view ligne, std::wstring& sortie);

}  // namespace veltora
