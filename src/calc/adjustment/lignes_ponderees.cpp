#include "calc/adjustment/lignes_ponderees.h"

#include <cmath>

namespace veltora {
namespace {

/// Adds the derivatives of a bearing.
void deriverGisement(const reseauPondere& r, int de, int vers, double signe, lignePonderee& ligne) {
  const double d = r.distance(de, vers);
  const double g = r.gisement(de, vers);
  const double dx = signe * std::cos(g) / d;
  const double dy = -signe * std::sin(g) / d;
  ligne.ajouter(vers, 0, dx);
  ligne.ajouter(vers, 1, dy);
  ligne.ajouter(de, 0, -dx);
  ligne.ajouter(de, 1, -dy);
}

/// The station of an angle stands in both of its bearings.
lignePonderee deriverAngle(const reseauPondere& r, const mesurePonderee& m) {
  lignePonderee vise;
  lignePonderee reference;
  deriverGisement(r, m.station, m.vise, 1.0, vise);
  deriverGisement(r, m.station, m.reference, -1.0, reference);
  for (std::size_t i = 2; i < 4; ++i) vise.termes[i].a += reference.termes[i].a;
  for (std::size_t i = 0; i < 2; ++i) vise.ajouter(m.reference, static_cast<int>(i), reference.termes[i].a);
  return vise;
}

}  // namespace

colonnesPonderees::colonnesPonderees(const reseauPondere& reseau)
    : points(reseau.points.size(), {-1, -1, -1}), orientations(reseau.orientations.size(), -1) {
  std::vector<std::array<bool, 3>> nommes(points.size());
  for (const mesurePonderee& m : reseau.mesures) {
    if (m.ecarte) continue;
    for (const lignePonderee::terme& t : deriver(reseau, m)) {
      if (t.point >= 0)
        nommes[static_cast<std::size_t>(t.point)].at(static_cast<std::size_t>(t.axe)) = true;
      else
        orientations[static_cast<std::size_t>(t.axe)] = 0;
    }
  }
  for (std::size_t i = 0; i < points.size(); ++i) {
    for (std::size_t axe = 0; axe < 3; ++axe) {
      if (!nommes[i].at(axe) || reseau.points[i].statut.at(axe) == statutCoordonnee::fixe) continue;
      points[i].at(axe) = nombre++;
      m_places.push_back({static_cast<int>(i), static_cast<int>(axe)});
    }
  }
  for (int& o : orientations) {
    if (o < 0) continue;
    o = nombre++;
    m_places.push_back({});
  }
}

lignePonderee deriver(const reseauPondere& r, const mesurePonderee& m) {
  lignePonderee ligne;
  switch (m.genre) {
    case genreMesure::angle:
      return deriverAngle(r, m);
    case genreMesure::direction:
      deriverGisement(r, m.station, m.vise, 1.0, ligne);
      ligne.ajouter(-1, m.tour, -1.0);
      break;
    case genreMesure::gisement:
      deriverGisement(r, m.station, m.vise, 1.0, ligne);
      break;
    case genreMesure::distance: {
      const double g = r.gisement(m.station, m.vise);
      ligne.ajouter(m.vise, 0, std::sin(g));
      ligne.ajouter(m.vise, 1, std::cos(g));
      ligne.ajouter(m.station, 0, -std::sin(g));
      ligne.ajouter(m.station, 1, -std::cos(g));
      break;
    }
    case genreMesure::denivelee:
      ligne.ajouter(m.vise, 2, 1.0);
      ligne.ajouter(m.station, 2, -1.0);
      break;
    default:
      ligne.ajouter(m.station, static_cast<int>(m.genre) - static_cast<int>(genreMesure::X), 1.0);
  }
  return ligne;
}

}  // namespace veltora
