#pragma once

#include "base/remarque.h"
#include "calc/helmert/helmert.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// Pairs from a text file, with their names.
struct couplesNommes {
  couplesHelmert couples;
  std::vector<std::wstring> noms;  ///< one a pair; the line's number ("ligne 3") for want of a name
  base::Remarques remarques;       ///< lines that were passed over
};

/// Reads `[name] x y X Y`, a pair a line, tokens as in traverse files. Empty lines and those that begin with
/// "*" or "#" are comments; lines with another number of tokens, or with one that is no number, are passed
/// over.
VELTORA_API couplesNommes lireCouples(std::string_view octets);

}  // namespace veltora
