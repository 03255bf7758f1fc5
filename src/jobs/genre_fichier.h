#pragma once

#include "base/export.h"
#include "base/remarque.h"

#include <string>
#include <string_view>

/// What a file is by what it holds, whatever its name: a file of one kind that is given to the reader of
/// another yields nothing, or wrong points without a word.
namespace veltora {

enum class genreFichier {
  inconnu,   ///< nothing that can be told for sure
  obs,       ///< traverse, closed or open
  mc,        ///< network
  xyz,       ///< list of coordinates with codes
  couples,   ///< pairs of points
  formules,  ///< weights of observations
  dxf,
  dwg,
  html,  ///< a report
  xml,
  gkf,  ///< network of gama-local, which is XML
  gsi,  ///< field book
  lisp,
  binaire,  ///< anything that is no text
};

/// Looks at the first lines. What two kinds have in common (a name and three numbers a line) is `inconnu`.
VELTORA_API genreFichier reconnaitreGenre(std::string_view octets);

/// @param nom  of the file, as the user knows it
/// @return empty when the file may be of the kind that is expected; else a French sentence that tells what it
/// seems to be and what reads it
VELTORA_API std::wstring refusDuGenre(std::wstring_view nom, std::string_view octets, genreFichier attendu);
/// The same as a doubt, for dialogs, which read whatever they are given.
VELTORA_API base::Remarques doutesDuGenre(std::wstring_view nom, std::string_view octets,
                                          genreFichier attendu);

}  // namespace veltora
