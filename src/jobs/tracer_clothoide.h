#pragma once

#include "base/export.h"
#include "base/remarque.h"
#include "drafting/clothoids/clothoide_construite.h"
#include "drafting/clothoids/dessin_clothoide.h"

#include <string>

/// A clothoid by radii and points, computed, listed and drawn in one call.
namespace veltora {

struct demandeTracerClothoide {
  donneesClothoide donnees;
  double pas = 20.0;    ///< of the points, drawing units, above 0
  double fleche = 0.0;  ///< above 0: instead, how far their chords may lie from the curve
  bool dessiner = false;
  bool matrice = false;  ///< print how the curve lies in the world
  int couleur = 256;     ///< index
  infosClothoide infos;
  bool malgreDoutes = false;
};

struct resultatTracerClothoide {
  std::wstring texte;  ///< the curve and its points, in lines
  std::string csv;     ///< the points, columns parted by semicolons, CR LF
  int points = 0;
  int sommets = 0;            ///< of the polyline drawn
  bool retenu = false;        ///< nothing was drawn, for there are doubts
  base::Remarques remarques;  ///< what does not fit together
  std::wstring erreur;        ///< French, why nothing was done; empty on success
};

/// @return false with `erreur` set, nothing drawn: there is no such curve, too many points, no drawing
VELTORA_API bool tracerClothoide(const demandeTracerClothoide& demande, resultatTracerClothoide& resultat);

}  // namespace veltora
