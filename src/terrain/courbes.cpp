// Contour lines, altitude by altitude, face by face.
//
//   h  the altitude of a line; a corner is high when it lies at h or above, else low
//
// A face with high and low corners is crossed once: the line comes in over the edge whose first corner,
// counter- clockwise, is high and its second one low, and leaves over the other one.

#include "terrain/courbes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltora::terrain {
namespace {

/// The first and the last interval that a face crosses; none when the first is the larger.
std::pair<long long, long long> rangs(const Triangulation& surface, const Face& face, double pas) {
  double bas = std::numeric_limits<double>::infinity();
  double haut = -bas;
  for (const int numero : face.sommets) {
    const double z = surface.sommets()[static_cast<std::size_t>(numero)].z;
    bas = std::min(bas, z);
    haut = std::max(haut, z);
  }
  // By the very products that are the altitudes: the quotient alone may be one off.
  auto premier = static_cast<long long>(std::floor(bas / pas)) - 1;
  auto dernier = static_cast<long long>(std::ceil(haut / pas)) + 1;
  while (static_cast<double>(premier) * pas <= bas) ++premier;
  while (static_cast<double>(dernier) * pas > haut) --dernier;
  return {premier, dernier};
}

class Traceur {
public:
  Traceur(const Triangulation& surface, double pas)
      : m_surface(surface), m_pas(pas), m_vues(surface.faces().size(), kJamais) {}

  void tracer(const std::function<bool(const Courbe&)>& donner) {
    // Faces by altitude, in order.
    std::vector<std::pair<long long, int>> a;
    for (std::size_t i = 0; i < m_surface.faces().size(); ++i) {
      if (!m_surface.faces()[i].sol) continue;
      const auto [premier, dernier] = rangs(m_surface, m_surface.faces()[i], m_pas);
      for (long long rang = premier; rang <= dernier; ++rang) a.emplace_back(rang, static_cast<int>(i));
    }
    std::sort(a.begin(), a.end());
    for (const auto& [rang, face] : a) {
      if (m_vues[static_cast<std::size_t>(face)] == rang) continue;
      const Courbe courbe = suivre(rang, face);
      if (courbe.sommets.size() >= 2 && !donner(courbe)) return;
    }
  }

private:
  static constexpr long long kJamais = std::numeric_limits<long long>::min();

  [[nodiscard]] const AcGePoint3d& sommet(int numero) const {
    return m_surface.sommets()[static_cast<std::size_t>(numero)];
  }
  [[nodiscard]] bool haut(int numero) const { return sommet(numero).z >= m_h; }
  /// The edge, by the corner in front of it, over which the line enters or leaves a face.
  [[nodiscard]] std::size_t bord(const Face& face, bool sortie) const {
    for (std::size_t i = 0; i < 2; ++i)
      if (haut(face.sommets[(i + 1) % 3]) != sortie && haut(face.sommets[(i + 2) % 3]) == sortie) return i;
    return 2;
  }
  [[nodiscard]] AcGePoint2d passage(const Face& face, std::size_t i) const {
    const AcGePoint3d* bas = &sommet(face.sommets[(i + 1) % 3]);
    const AcGePoint3d* haute = &sommet(face.sommets[(i + 2) % 3]);
    if (bas->z >= m_h) std::swap(bas, haute);
    if (haute->z == m_h) return {haute->x, haute->y};
    const double part = (m_h - bas->z) / (haute->z - bas->z);
    return {bas->x + (haute->x - bas->x) * part, bas->y + (haute->y - bas->y) * part};
  }
  [[nodiscard]] int voisine(const Face& face, std::size_t i) const {
    const int autre = face.voisines[i];
    return autre >= 0 && m_surface.faces()[static_cast<std::size_t>(autre)].sol ? autre : -1;
  }
  [[nodiscard]] const Face& face(int rang) const { return m_surface.faces()[static_cast<std::size_t>(rang)]; }

  /// The whole line through a face: back to its beginning, then along it.
  Courbe suivre(long long rang, int depart) {
    m_h = static_cast<double>(rang) * m_pas;
    Courbe courbe{rang, m_h, {}, false};
    int debut = depart;
    for (int avant = voisine(face(debut), bord(face(debut), false)); avant >= 0;
         avant = voisine(face(debut), bord(face(debut), false))) {
      debut = avant;
      courbe.fermee = debut == depart;
      if (courbe.fermee) break;
    }
    if (!courbe.fermee) ajouter(courbe.sommets, passage(face(debut), bord(face(debut), false)));
    for (int ici = debut;;) {
      m_vues[static_cast<std::size_t>(ici)] = rang;
      const std::size_t sortie = bord(face(ici), true);
      ajouter(courbe.sommets, passage(face(ici), sortie));
      ici = voisine(face(ici), sortie);
      if (ici < 0 || ici == debut) break;
    }
    if (courbe.fermee) fermer(courbe);
    return courbe;
  }
  /// What goes somewhere and straight back, along a ridge, is no part of a line.
  static void ajouter(std::vector<AcGePoint2d>& sommets, const AcGePoint2d& point) {
    const std::size_t n = sommets.size();
    if (n > 0 && sommets[n - 1] == point) return;
    if (n > 1 && sommets[n - 2] == point)
      sommets.pop_back();
    else
      sommets.push_back(point);
  }
  static void fermer(Courbe& courbe) {
    std::vector<AcGePoint2d>& s = courbe.sommets;
    while (s.size() > 1 && s.front() == s.back()) s.pop_back();
    while (s.size() > 2 && s[s.size() - 1] == s[1]) {
      s.erase(s.begin());
      s.pop_back();
    }
    while (s.size() > 2 && s[s.size() - 2] == s[0]) {
      s.pop_back();
      s.pop_back();
    }
    if (s.size() < 3) s.clear();
  }

  const Triangulation& m_surface;
  double m_pas;
  double m_h = 0.0;
  std::vector<long long> m_vues;  ///< of each face, the altitude at which it was crossed last
};

}  // namespace

void tracerCourbes(const Triangulation& surface, double equidistance,
                   const std::function<bool(const Courbe&)>& donner) {
  Traceur(surface, equidistance).tracer(donner);
}

double ampleurCourbes(const Triangulation& surface, double equidistance) {
  double somme = 0.0;
  for (const Face& face : surface.faces()) {
    if (!face.sol) continue;
    const auto [premier, dernier] = rangs(surface, face, equidistance);
    somme += static_cast<double>(dernier - premier + 1);
  }
  return somme;
}

}  // namespace veltora::terrain
