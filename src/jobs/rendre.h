#pragma once

#include "base/export.h"
#include "base/remarque.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

/// The working drawing on paper: a PDF, SVG or PNG file, in one call.
namespace veltora {

struct demandeRendu {
  std::wstring fichier;  ///< its ending says the kind: .pdf, .svg or .png
  double echelle = 0.0;  ///< denominator; 0 for the first round one that fits the paper
  std::wstring format;   ///< one of `motsFormats`; empty for A4, or with a scale for the first that fits
  /// X1, Y1, X2, Y2 of two opposite corners: what is drawn, and nothing else. None for all that is to be
  /// seen.
  std::optional<std::array<double, 4>> fenetre;
  /// The number of a sheet made by CREERPLANCHE, from 1, or the name of a layout: says paper, scale and
  /// place, so that the three above do not count. Empty for none.
  std::wstring planche;
  std::vector<std::wstring> calques;  ///< the only ones drawn; all that are on for none
  bool fondNoir = false;
  bool monochrome = false;
  int ppp = 150;  ///< dots an inch of a PNG
};

struct resultatRendu {
  double echelle = 0.0;  ///< denominator; 0 for a layout without openings
  double largeur = 0.0;  ///< of the paper, mm
  double hauteur = 0.0;
  std::wstring format;        ///< its word; empty for a size of its own
  base::Remarques remarques;  ///< what was not drawn, what the paper cuts off
  std::wstring erreur;        ///< French, why nothing was written; empty on success
};

/// Writes the model space, or a layout. @return false with `erreur` set and no file written: no drawing,
/// nothing to be seen, an ending or a format that is not known, a sheet that is not there or is deformed, a
/// layer that the drawing does not have, a paper too large, no library for PDF and PNG, a file that cannot be
/// written
VELTORA_API bool rendreDessin(const demandeRendu& demande, resultatRendu& resultat);

}  // namespace veltora
