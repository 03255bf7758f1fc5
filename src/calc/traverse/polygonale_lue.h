#pragma once

#include "calc/traverse/obs_fichier.h"
#include "calc/traverse/polygonale.h"
#include "calc/traverse/tolerances_polygonale.h"

#include <memory>
#include <string_view>
#include <vector>

namespace veltora {

class htmlDocument;

/// A traverse from a file, whichever of the two kinds it is.
class polygonaleLue {
public:
  virtual ~polygonaleLue() = default;
  [[nodiscard]] virtual bool ouverte() const = 0;
  [[nodiscard]] virtual const donneesObs& donnees() const = 0;
  /// Computes as the kind says, each time from the rows as read.
  /// @return the stations to place
  virtual std::vector<stationCalculee> calculer(htmlDocument* rapport, bool brute, bool compensee,
                                                fermeturesPolygonale& fermetures) const = 0;
  /// What looks wrong in the data, as far as it can be seen from how they close.
  [[nodiscard]] virtual base::Remarques doutes(const fermeturesPolygonale& fermetures,
                                               const tolerancesPolygonale& tolerances) const = 0;
};

/// @param remarques  gets what was passed over or guessed
std::unique_ptr<polygonaleLue> lirePolygonale(std::string_view octets, base::Remarques& remarques);

}  // namespace veltora
