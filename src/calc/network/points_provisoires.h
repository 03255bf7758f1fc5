#pragma once

#include "calc/network/donnees_reseau.h"

#include <vector>

namespace veltora {

/// Provisional coordinates: each observation that joins an unknown point to usable ones is a locus, see
/// lieux.h, and the mean of the intersections of the loci gives the point, which then serves the next ones.
/// Gives X and Y to the unknown points whose observations join them to usable ones, and makes them usable;
/// known points are usable from the beginning. A point that falls on another one, from which or to which it
/// was observed, gets none: such an observation has no derivative, and one alone would leave the whole
/// network without coordinates. @return false when no point is known
bool calculerPointsProvisoires(donneesReseau& reseau, std::wstring& journal);

/// Why a point has no provisional coordinates.
struct etatProvisoire {
  enum class Cause {
    kAucune,           ///< it has coordinates
    kSansCanevas,      ///< no point of the network is known
    kSansObservation,  ///< neither angle nor distance names it
    kTropDirections,   ///< three directions or more go from it to usable points
    kPasRattache,      ///< no observation joins it to usable points
    kUneEquation,      ///< only one does
    kLieuxDisjoints,   ///< the loci do not meet: parallel lines, circles too far apart, the same locus twice
    kIndecis,          ///< they meet in two places, and nothing tells which
    kSansValeur        ///< they meet where an observation of the point has no value
  } cause = Cause::kAucune;
  int directions = 0;           ///< from the point to usable ones
  int equations = 0;            ///< loci
  bool droitesSeules = false;   ///< all loci are lines
  std::vector<int> sansValeur;  ///< the observations that have none there, by index
};

/// Two of the directions that leave a point with too many without coordinates (indexes of observations), with
/// which it gets some; of several pairs the one that the other directions fit best. -1 when no pair serves.
struct deuxDirections {
  int premiere = -1;
  int seconde = -1;
};
deuxDirections garderDeuxDirections(donneesReseau& reseau, int point);
/// Whether the point gets coordinates when the observations that name it stand in front of all others: points
/// are computed in the order in which their names appear.
bool seCalculeEnTete(const donneesReseau& reseau, int point);

/// The state of each point as the last pass of provisional coordinates left it; `utilisable` is that of the
/// plan, not yet of the heights.
std::vector<etatProvisoire> examinerPoints(donneesReseau& reseau);

}  // namespace veltora
