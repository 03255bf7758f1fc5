#pragma once

#include "base/remarque.h"
#include "calc/adjustment/modele_pondere.h"

#include <string>
#include <string_view>

namespace veltora {

/// Whether bytes hold an XML network of gama-local (`.gkf`).
VELTORA_API bool estGkf(std::string_view octets);

/// Reads one: points (fixed, adjusted, in capitals part of the datum), rounds of directions, angles,
/// azimuths, distances, height differences, observed coordinates, covariance matrices of each cluster (mm and
/// centesimal seconds, or seconds of measures in degrees). Axes and the sense of angles are turned to X east,
/// Y north, clockwise.
/// @param remarques  gets what is not read (slope distances, zenith angles, vectors), as doubts
/// @return empty, or why the file is refused as a whole: no such XML, entities, values that are no numbers,
/// standard deviations that are not positive, covariance matrices of another size, or not positive definite
VELTORA_API std::wstring lireGkf(std::string_view octets, reseauPondere& reseau, base::Remarques& remarques);

}  // namespace veltora
