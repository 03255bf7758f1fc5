#pragma once

#include "calc/leve/calcul_leve.h"

#include <string>
#include <vector>

/// A survey handed over to the adjustments.
namespace veltora {

/// The network of a survey as a `.mc` file: known points, then of each station the angles from its first
/// direction, the distances and the height differences, as they were reduced. Names are those that are
/// compared, blanks and separators as "_".
VELTORA_API std::string reseauDuLeve(const resultatCalculLeve& resultat,
                                     const std::vector<pointConnuLeve>& canevas);

/// Traverses between two known stations over stations that nobody knows, each as an `.obs` file in grades:
/// both ways sighted, the known ones oriented on a known point. Distances and height differences are the
/// means of both ways. Then closed ones, from a known station over two unknown ones or more and back. A
/// station stands in one traverse only; the shortest ones are found first.
struct polygonaleDuLeve {
  std::vector<std::wstring> stations;
  std::string contenu;
};
VELTORA_API std::vector<polygonaleDuLeve> polygonalesDuLeve(const resultatCalculLeve& resultat,
                                                            const std::vector<pointConnuLeve>& canevas);

}  // namespace veltora
