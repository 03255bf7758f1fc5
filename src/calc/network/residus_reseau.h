#pragma once

#include "calc/network/donnees_reseau.h"

#include <string>
#include <vector>

/// What a network holds and what its adjustment leaves over, by name.
namespace veltora {

/// The points of a network, each name once, and the units of its angles.
struct recensementReseau {
  std::vector<std::wstring> connus;     ///< X and Y fixed
  std::vector<std::wstring> aCalculer;  ///< the others
  std::wstring unites;  ///< of the angles read: "grades", "grades (12), degrés (3)"; empty for no angle
};
VELTORA_API recensementReseau recenser(const donneesReseau& reseau);
/// The same as lines: "Points : 2 connus (A, B), 1 à calculer (P)", "Angles lus en grades".
VELTORA_API std::vector<std::wstring> lignesRecensement(const donneesReseau& reseau);

/// What the present coordinates leave of an observation: computed less measured, which is the log's column
/// "- L" of a converged pass.
struct residuObservation {
  int observation = -1;  ///< its index, the number of its row in the table of weights
  int ligne = -1;        ///< its number in the log; -1 when the log has no row of it
  double valeur = 0.0;   ///< radians or metres; of an angle not reduced into one turn
};

/// Of the angles and distances between usable points, in their order. To be called before the heights are
/// computed, which say anew what is usable.
VELTORA_API std::vector<residuObservation> residusPlan(const donneesReseau& reseau);
/// Of the height differences between points with heights, in their order.
VELTORA_API std::vector<residuObservation> residusAltitudes(const donneesReseau& reseau);

/// A residual with its unit: "-12.3 mm", "1.57 mgr".
std::wstring texteResidu(signed char type, double valeur);
/// A table of the largest residuals of each kind, at most five, with the names of their points and both
/// numbers. Empty without residuals.
VELTORA_API std::vector<std::wstring> tableauResidus(const donneesReseau& reseau,
                                                     const std::vector<residuObservation>& residus);
/// The same table with all of them, in their order.
VELTORA_API std::vector<std::wstring> tableauComplet(const donneesReseau& reseau,
                                                     const std::vector<residuObservation>& residus);

}  // namespace veltora
