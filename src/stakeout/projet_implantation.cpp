#include "stakeout/projet_implantation.h"

#include "arx/db/resbuf.h"
#include "core/picking.h"
#include "stakeout/dessin_implantation.h"
#include "stakeout/marques_implantation.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace veltora {
namespace {

constexpr double kMemePoint = 0.01;  // drawing units, strict
constexpr double kMemePointCarre = 0.0001;

std::int64_t rangCase(double valeur) {
  constexpr double kDemesure = 1e15;  // beyond, all share one cell
  const double rang = std::floor(valeur / kMemePoint);
  return std::abs(rang) < kDemesure ? static_cast<std::int64_t>(rang) : 0;
}

std::uint64_t numeroCase(std::int64_t x, std::int64_t y) {
  return static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15u ^ static_cast<std::uint64_t>(y);
}

template <class Obstacle>
std::unique_ptr<obstacleImplantation> lireObstacle(const AcDbObjectId& id) {
  auto obstacle = std::make_unique<Obstacle>();
  return obstacle->lireDepuis(id) ? std::move(obstacle) : nullptr;
}

}  // namespace

projetImplantation::projetImplantation() : hauteurStation(reglagesImplantation::commun().hauteurMin) {
  inscrireApplicationsImplantation();
  chargerObstacles();
}

projetImplantation::~projetImplantation() {
  for (obstacleImplantation* obstacle : obstacles) delete obstacle;
  for (observationMiseEnStation* mise : stations) delete mise;
}

observationImplantation* projetImplantation::point(std::uint32_t id) {
  const int rang = indexPoint(id);
  return rang < 0 ? nullptr : &points.GetAt(rang);
}

observationMiseEnStation* projetImplantation::station(std::uint32_t idMise) {
  const auto trouvee = std::find_if(stations.begin(), stations.end(),
                                    [idMise](const auto* mise) { return mise->idMise == idMise; });
  return trouvee == stations.end() ? nullptr : *trouvee;
}

const observationMiseEnStation* projetImplantation::station(std::uint32_t idMise) const {
  return const_cast<projetImplantation*>(this)->station(idMise);
}

int projetImplantation::indexPoint(std::uint32_t id) const {
  const auto trouve =
      std::find_if(points.begin(), points.end(), [id](const auto& point) { return point.id == id; });
  return trouve == points.end() ? -1 : static_cast<int>(trouve - points.begin());
}

void projetImplantation::inscrirePlaces() const {
  for (; m_inscrits < points.size(); ++m_inscrits) {
    const observationImplantation& point = points[m_inscrits];
    m_places.emplace(numeroCase(rangCase(point.x), rangCase(point.y)), m_inscrits);
  }
}

bool projetImplantation::pointExiste(double x, double y) const {
  inscrirePlaces();
  for (int i = 0; i < 9; ++i) {
    const auto [debut, fin] =
        m_places.equal_range(numeroCase(rangCase(x) + i % 3 - 1, rangCase(y) + i / 3 - 1));
    for (auto place = debut; place != fin; ++place) {
      const double dx = points[place->second].x - x;
      const double dy = points[place->second].y - y;
      if (dx * dx + dy * dy < kMemePointCarre) return true;
    }
  }
  return false;
}

bool projetImplantation::stationUtilisee(std::uint32_t idMise) const {
  return std::any_of(points.begin(), points.end(),
                     [idMise](const auto& point) { return point.idStation == idMise; });
}

void projetImplantation::ajouterPoint(const observationImplantation& point) {
  points.Add(point);
  const int options = dessin.options();
  if (options & paramsDessinImplantation::kNumero) dessinerPoint(points.GetAt(points.GetSize() - 1), options);
}

void projetImplantation::ajouterStation(std::unique_ptr<observationMiseEnStation> nouvelle) {
  if (nouvelle && !station(nouvelle->idMise)) stations.Add(nouvelle.release());
}

void projetImplantation::retirerPoints(const std::vector<std::uint32_t>& ids) {
  const std::unordered_set<std::uint32_t> retires(ids.begin(), ids.end());
  base::CArray<observationImplantation> gardes;
  for (observationImplantation& point : points) {
    if (retires.contains(point.id))
      effacerPoint(point);
    else
      gardes.Add(std::move(point));
  }
  points = std::move(gardes);
  m_places.clear();
  m_inscrits = 0;
}

void projetImplantation::retirerStation(std::uint32_t idMise) {
  for (int i = stations.GetSize() - 1; i >= 0; --i) {
    observationMiseEnStation* const mise = stations.GetAt(i);
    if (mise->idMise != idMise) continue;
    mise->effacerEntites();
    delete mise;
    stations.RemoveAt(i);
  }
}

void projetImplantation::retirerStationsInutiles() {
  std::unordered_set<std::uint32_t> utilisees;
  for (const observationImplantation& point : points) utilisees.insert(point.idStation);
  for (int i = stations.GetSize() - 1; i >= 0; --i)
    if (!utilisees.contains(stations.GetAt(i)->idMise)) retirerStation(stations.GetAt(i)->idMise);
}

obstacleImplantation* projetImplantation::obstacleSurObjet(const AcDbObjectId& objet) {
  int rang = -1;
  return indexObstacle(objet, rang) ? obstacles.GetAt(rang) : nullptr;
}

bool projetImplantation::indexObstacle(const AcDbObjectId& objet, int& index) const {
  const auto trouve = std::find_if(obstacles.begin(), obstacles.end(),
                                   [&objet](const auto* obstacle) { return obstacle->objet == objet; });
  index = trouve == obstacles.end() ? -1 : static_cast<int>(trouve - obstacles.begin());
  return index >= 0;
}

bool projetImplantation::retirerObstacle(const AcDbObjectId& objet) {
  int rang = -1;
  if (!indexObstacle(objet, rang) || !obstacles.GetAt(rang)->retirerMarque()) return false;
  delete obstacles.GetAt(rang);
  obstacles.RemoveAt(rang);
  return true;
}

void projetImplantation::chargerObstacles(const std::vector<AcDbObjectId>* selection) {
  std::vector<AcDbObjectId> entites;
  if (selection)
    entites = *selection;
  else
    selectEntities(L"X", acutBuildList(1001, kXDataObstacles, RTNONE), entites);
  std::unordered_set<AcDbObjectId> connus;
  for (const obstacleImplantation* obstacle : obstacles) connus.insert(obstacle->objet);
  for (const AcDbObjectId& id : entites) {
    if (!connus.insert(id).second) continue;
    auto obstacle = lireObstacle<obstacleLineaireImplantation>(id);
    if (!obstacle) obstacle = lireObstacle<obstaclePonctuelImplantation>(id);
    if (obstacle) obstacles.Add(obstacle.release());
  }
}

}  // namespace veltora
