#pragma once

#include "points/numeroteur.h"

#include <cstdint>

namespace veltora {

/// How the points of an element are chosen and named. Prefix "A", number 1, no suffix, step 1 at first.
class VELTORA_API paramsImplantation : public numeroteurEntier {
public:
  enum Mode { kParPas = 0, kErreurMax = 1 };  ///< "Interpolation par pas", "Implantation suivt erreur max"

  paramsImplantation() { initialiser(L"A", 1, L"", 1); }

  std::int32_t codeStations = 100;     ///< of the points that may be stations
  std::int32_t interpolerDroites = 0;  ///< points along straight lines too
  double distArcs = 20.0;              ///< step or chord error, drawing units; likewise the next
  double distClothoides = 20.0;
  double distDroites = 100.0;  ///< step
  std::int32_t modeClothoides = kParPas;
  std::int32_t modeArcs = kParPas;
  std::int32_t afficherCodeStations = 0;  ///< the dialog shows the choice of the code
  std::int32_t incrementerPrefixe = 1;    ///< the prefix steps behind each element
};

/// What the results show in the drawing.
struct paramsDessinImplantation {
  enum Groupement { kSans = 0, kParMiseEnStation = 1, kTout = 2 };
  /// Bits of the option word.
  enum Option { kNumero = 1, kVisee = 2, kDistance = 4, kAngle = 8, kX = 16, kY = 32, kZ = 64 };

  std::int32_t groupement = kParMiseEnStation;
  std::int32_t miseEnStation = 1;
  std::int32_t implantations = 1;  ///< sight lines
  std::int32_t numeros = 1;
  std::int32_t textes = 1;  ///< distances and angles
  std::int32_t coordonnees = 0;

  /// Sum of `Option` that drawing takes.
  [[nodiscard]] int options() const {
    return (numeros ? kNumero : 0) + (implantations ? kVisee : 0) + (textes ? kDistance + kAngle : 0) +
           (coordonnees ? kX + kY + kZ : 0);
  }
};

/// Sizes, colours and the least height of sight, for the whole process. Sizes in drawing units, above 0.
struct VELTORA_API reglagesImplantation {
  static reglagesImplantation& commun();

  /// The station's star follows: twice the height.
  void poserHauteurTexte(double hauteur) { hauteurTexte = hauteur, croixStation = 2.0 * hauteur; }

  double hauteurTexte = 1.5;
  double largeurFleche = 2.5;
  double longueurFleche = 2.4;
  double croixPoint = 2.0;
  double croixStation = 3.0;
  int couleurNonVerifie = 7;
  int couleurVisible = 4;
  int couleurNonVisible = 1;
  int couleurReference = 6;
  int couleurStation = 1;
  double hauteurMin = 1.0;  ///< "H.Min": what may rise above a sight and leave it clear
};

/// A height as the boxes "H.Min" and "H.Stat" take it: 0 for a negative one, 1.2 above 1e30.
VELTORA_API double hauteurAdmise(double hauteur);

}  // namespace veltora
