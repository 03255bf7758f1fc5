#pragma once

#include "arx/adesk.h"

#include <array>
#include <cstddef>

namespace veltora {

/// What AIDE tells of a command.
struct descriptionAide {
  const ACHAR* sujet = nullptr;
  const ACHAR* ligne = nullptr;
};

/// A function offered to LISP. It takes its arguments from the host, hands its result to the host (nothing
/// handed over: no value) and returns what the host's call returned, which nobody reads. Wrong arguments give
/// nil or a message; none raises an error of LISP. `lispAddPt` and the others bear the names of LISP.
struct fonctionLisp {
  const ACHAR* nom = nullptr;  ///< null for a place that is kept free
  int (*fonction)() = nullptr;
  descriptionAide aide = {};  ///< of a command ("c:..."); none for what is not there yet
};

inline constexpr std::size_t kNombreFonctionsLisp = 42;
/// The place in this table is the code that the host binds to the name: its order never changes.
extern const std::array<fonctionLisp, kNombreFonctionsLisp> tableFonctionsLisp;

/// Registers the functions in the current document, in order, until the host refuses one.
void enregistrerFonctionsLisp();
void retirerFonctionsLisp();
/// Calls the function whose code the host tells; nothing for a code outside the table.
void appelerFonctionLisp();

}  // namespace veltora
