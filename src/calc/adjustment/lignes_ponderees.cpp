#include "calc/adjustment/lignes_ponderees.h"

#include <cmath>

namespace veltora {
namespace {

/// A side divided by its length: sine and cosine of its bearing, which is 0 for a side without length.
struct coteReduit {
  double x = 0.0;
  double y = 1.0;
};

coteReduit reduire(const reseauPondere& r, int de, int vers, double longueur) {
  if (longueur == 0.0) return {};
  const auto& a = r.point(de).c;
  const auto& b = r.point(vers).c;
  return {(b[0] - a[0]) / longueur, (b[1] - a[1]) / longueur};
}

/// Adds the derivatives of a bearing.
void deriverGisement(const reseauPondere& r, int de, int vers, double signe, lignePonderee& ligne) {
  const double d = r.distance(de, vers);
  const coteReduit u = reduire(r, de, vers, d);
  const double dx = signe * u.y / d;
  const double dy = -signe * u.x / d;
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

/// The first and the last of the axes on which a measure depends, of each of its points.
std::pair<int, int> axesDe(genreMesure genre) {
  if (genre == genreMesure::denivelee) return {2, 2};
  if (genre < genreMesure::X) return {0, 1};
  const int axe = static_cast<int>(genre) - static_cast<int>(genreMesure::X);
  return {axe, axe};
}

}  // namespace

colonnesPonderees::colonnesPonderees(const reseauPondere& reseau)
    : points(reseau.points.size(), {-1, -1, -1}), orientations(reseau.orientations.size(), -1) {
  std::vector<std::array<bool, 3>> nommes(points.size());
  for (const mesurePonderee& m : reseau.mesures) {
    if (m.ecarte) continue;
    if (m.genre == genreMesure::direction) orientations[static_cast<std::size_t>(m.tour)] = 0;
    const auto [premier, dernier] = axesDe(m.genre);
    for (const int p : {m.station, m.vise, m.reference})
      for (int axe = premier; p >= 0 && axe <= dernier; ++axe)
        nommes[static_cast<std::size_t>(p)].at(static_cast<std::size_t>(axe)) = true;
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
      const coteReduit u = reduire(r, m.station, m.vise, r.distance(m.station, m.vise));
      ligne.ajouter(m.vise, 0, u.x);
      ligne.ajouter(m.vise, 1, u.y);
      ligne.ajouter(m.station, 0, -u.x);
      ligne.ajouter(m.station, 1, -u.y);
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
