#pragma once

#include "base/export.h"

#include <filesystem>
#include <string>
#include <string_view>

#include <tinyxml.h>

/// Fields of XML files, each a child element with a text, and whole files.
namespace veltora {

/// Adds `<nom>` with the integer in "%d".
VELTORA_API void ajouterElementEntier(TiXmlElement& parent, const char* nom, int valeur);
/// Adds `<nom>` with the number in "%lf", six decimals.
VELTORA_API void ajouterElementDouble(TiXmlElement& parent, const char* nom, double valeur);
/// Adds `<nom mode="utf8">` with the text in the UTF-8 of `utf8DepuisTexte`.
VELTORA_API void ajouterElementTexte(TiXmlElement& parent, const char* nom, std::wstring_view valeur);

// Readers of the first child of a name: 1 and the value, or 0 with `valeur` unchanged when the child is
// missing or, for numbers, has no text. Junk reads as 0. A text with the attribute mode absent or "asc" is in
// the code page, with any other in UTF-8; without text it is empty.
VELTORA_API int lireElementEntier(const TiXmlElement& parent, const char* nom, int& valeur);
VELTORA_API int lireElementDouble(const TiXmlElement& parent, const char* nom, double& valeur);
VELTORA_API int lireElementTexte(const TiXmlElement& parent, const char* nom, std::wstring& valeur);

/// Number of children of exactly this name.
VELTORA_API int compterElements(const TiXmlElement& parent, const char* nom);

/// Reads a document from bytes of any 8-bit encoding.
/// @return false, the document empty, when they are not well-formed XML, nested deeper than 100 or above 64
/// MiB
VELTORA_API bool analyserXML(TiXmlDocument& document, std::string_view octets);
VELTORA_API bool chargerFichierXML(TiXmlDocument& document, const std::filesystem::path& chemin);
/// The library's indented printing.
VELTORA_API std::string texteXML(const TiXmlDocument& document);
/// Replaces the file; the old one stays whole when that fails. @return false then
VELTORA_API bool sauverFichierXML(const TiXmlDocument& document, const std::filesystem::path& chemin);

}  // namespace veltora
