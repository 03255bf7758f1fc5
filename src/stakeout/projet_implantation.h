#pragma once

#include "core/services_terrain.h"
#include "stakeout/mise_en_station.h"
#include "stakeout/obstacle_implantation.h"
#include "stakeout/params_implantation.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace veltora {

/// A stake-out job on the working drawing: the points, their stations, the obstacles. What was drawn belongs
/// to the drawing; the job only remembers it. An index outside an array raises `std::invalid_argument`.
class VELTORA_API projetImplantation : private Uncopyable {
public:
  /// Registers the marks' applications and reads all marked obstacles of the drawing.
  projetImplantation();
  ~projetImplantation();

  /// Null when absent, likewise the next.
  observationImplantation* point(std::uint32_t id);
  observationMiseEnStation* station(std::uint32_t idMise);
  const observationMiseEnStation* station(std::uint32_t idMise) const;
  /// -1 when absent.
  [[nodiscard]] int indexPoint(std::uint32_t id) const;
  /// Is there a point within 0.01, strictly, in the plane?
  [[nodiscard]] bool pointExiste(double x, double y) const;
  [[nodiscard]] bool stationUtilisee(std::uint32_t idMise) const;

  /// Copies a point into the job and draws it by the current options.
  void ajouterPoint(const observationImplantation& point);
  /// Takes a station over, unless its `idMise` is there already.
  void ajouterStation(std::unique_ptr<observationMiseEnStation> station);
  /// Removes points; what was drawn for them is erased.
  void retirerPoint(std::uint32_t id) { retirerPoints({id}); }
  void retirerPoints(const std::vector<std::uint32_t>& ids);
  /// Removes a station with what was drawn for it. Its points keep its number.
  void retirerStation(std::uint32_t idMise);
  /// Removes the stations that no point uses.
  void retirerStationsInutiles();

  obstacleImplantation* obstacleSurObjet(const AcDbObjectId& objet);
  /// @return whether the entity is an obstacle; `index` is -1 otherwise
  bool indexObstacle(const AcDbObjectId& objet, int& index) const;
  /// Erases the mark, and the obstacle from the job. @return false when the entity is none, or its mark
  /// cannot be erased
  bool retirerObstacle(const AcDbObjectId& objet);
  /// Reads the marks of these entities; of all marked entities of the drawing for null. One that is an
  /// obstacle already is passed over.
  void chargerObstacles(const std::vector<AcDbObjectId>* selection = nullptr);

  std::int32_t verifierVisibilite = 1;
  paramsImplantation params;
  paramsDessinImplantation dessin;
  double hauteurStation;                             ///< "H.Stat"
  base::CArray<obstacleImplantation*> obstacles;     ///< owned
  base::CArray<observationMiseEnStation*> stations;  ///< owned
  base::CArray<observationImplantation> points;

private:
  using Case = std::uint64_t;
  void inscrirePlaces() const;

  // Points by cells of the plane as wide as two points may be near; as many as were entered so far.
  mutable std::unordered_multimap<Case, std::size_t> m_places;
  mutable std::size_t m_inscrits = 0;
};

}  // namespace veltora
