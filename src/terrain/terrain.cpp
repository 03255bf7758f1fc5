#include "terrain/terrain.h"

#include "base/box_index.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace veltora {
namespace terrain {
namespace {

using Sommets = std::vector<AcGePoint3d>;

const AcGePoint3d& a(const Sommets& sommets, int numero) { return sommets[static_cast<std::size_t>(numero)]; }

double aire(const AcGePoint3d& p, const AcGePoint3d& q, const AcGePoint3d& r) {
  return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
}

AcGePoint3d centre(const Sommets& sommets, const Face& face) {
  const AcGePoint3d& o = a(sommets, face.sommets[0]);
  return o + ((a(sommets, face.sommets[1]) - o) + (a(sommets, face.sommets[2]) - o)) * (1.0 / 3.0);
}

double aire(const Sommets& sommets, const Face& face) {
  return aire(a(sommets, face.sommets[0]), a(sommets, face.sommets[1]), a(sommets, face.sommets[2]));
}

bool dansContours(const Modele& modele, const AcGePoint3d& p) {
  bool dedans = false;
  for (const std::vector<AcGePoint2d>& contour : modele.limites) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
      const AcGePoint2d& s = contour[i];
      const AcGePoint2d& t = contour[(i + 1) % contour.size()];
      if ((s.y > p.y) == (t.y > p.y)) continue;
      if (p.x - s.x < (p.y - s.y) / (t.y - s.y) * (t.x - s.x)) dedans = !dedans;
    }
  }
  return dedans;
}

/// A face as thin as roundings are: where a limit leaves the ground its end lies a little beside the border,
/// and such a face joins both sides.
bool estMince(const Sommets& sommets, const Face& face) {
  constexpr double kMince = 1e-6;  // drawing units
  double longue = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    const AcGeVector3d cote = a(sommets, face.sommets[(i + 1) % 3]) - a(sommets, face.sommets[i]);
    longue = std::max(longue, std::hypot(cote.x, cote.y));
  }
  return aire(sommets, face) < kMince * longue;
}

/// Faces that no line parts lie on one side of the limits: one question for all of them, asked of the
/// largest.
void ecarterHorsLimites(const Modele& modele, const Triangulation& surface, std::vector<bool>& horsSol) {
  const std::vector<Face>& faces = surface.faces();
  std::vector<bool> vues(faces.size(), false);
  std::vector<int> region;
  for (std::size_t depart = 0; depart < faces.size(); ++depart) {
    if (vues[depart]) continue;
    vues[depart] = true;
    region.assign(1, static_cast<int>(depart));
    std::size_t grande = depart;
    for (std::size_t k = 0; k < region.size(); ++k) {
      const auto rang = static_cast<std::size_t>(region[k]);
      if (estMince(surface.sommets(), faces[rang])) continue;
      if (aire(surface.sommets(), faces[rang]) > aire(surface.sommets(), faces[grande])) grande = rang;
      for (std::size_t i = 0; i < 3; ++i) {
        const int voisine = faces[rang].voisines[i];
        if (voisine < 0 || faces[rang].contrainte[i] || vues[static_cast<std::size_t>(voisine)]) continue;
        if (estMince(surface.sommets(), faces[static_cast<std::size_t>(voisine)])) continue;
        vues[static_cast<std::size_t>(voisine)] = true;
        region.push_back(voisine);
      }
    }
    if (dansContours(modele, centre(surface.sommets(), faces[grande]))) continue;
    for (const int rang : region) horsSol[static_cast<std::size_t>(rang)] = true;
  }
}

void ecarterLongues(const Modele& modele, const Triangulation& surface, std::vector<bool>& horsSol) {
  for (std::size_t k = 0; k < surface.faces().size(); ++k) {
    const Face& face = surface.faces()[k];
    for (std::size_t i = 0; i < 3; ++i) {
      const AcGePoint3d& p = a(surface.sommets(), face.sommets[i]);
      const AcGePoint3d& q = a(surface.sommets(), face.sommets[(i + 1) % 3]);
      if (std::hypot(q.x - p.x, q.y - p.y) > modele.areteMaximale) horsSol[k] = true;
    }
  }
}

std::array<int, 3> triee(std::array<int, 3> facette) {
  std::sort(facette.begin(), facette.end());
  return facette;
}

/// A face is ground when it is one of those taken over, or a part of one, where these overlap or meet
/// unevenly.
void ecarterHorsFacettes(const Modele& modele, const Triangulation& surface, std::vector<bool>& horsSol) {
  std::vector<std::array<int, 3>> connues;
  std::vector<base::PlaneBox> boites;
  for (const std::array<int, 3>& facette : modele.facettes) {
    connues.push_back(triee(facette));
    base::PlaneBox& boite = boites.emplace_back(base::PlaneBox{1e300, 1e300, -1e300, -1e300});
    for (const int numero : facette) {
      const AcGePoint3d& s = a(modele.sommets, numero);
      boite = {std::min(boite.x0, s.x), std::min(boite.y0, s.y), std::max(boite.x1, s.x),
               std::max(boite.y1, s.y)};
    }
  }
  std::sort(connues.begin(), connues.end());
  base::BoxIndex index(boites);
  for (std::size_t k = 0; k < surface.faces().size(); ++k) {
    const Face& face = surface.faces()[k];
    if (std::binary_search(connues.begin(), connues.end(), triee(face.sommets))) continue;
    const AcGePoint3d p = centre(surface.sommets(), face);
    const std::vector<std::size_t>& pres = index.touching({p.x, p.y, p.x, p.y});
    horsSol[k] = std::none_of(pres.begin(), pres.end(), [&](std::size_t rang) {
      const std::array<int, 3>& f = modele.facettes[rang];
      const double c[3] = {aire(a(modele.sommets, f[0]), a(modele.sommets, f[1]), p),
                           aire(a(modele.sommets, f[1]), a(modele.sommets, f[2]), p),
                           aire(a(modele.sommets, f[2]), a(modele.sommets, f[0]), p)};
      return (c[0] >= 0 && c[1] >= 0 && c[2] >= 0) || (c[0] <= 0 && c[1] <= 0 && c[2] <= 0);
    });
  }
}

}  // namespace

std::vector<std::pair<int, int>> toutesLesLignes(const Modele& modele) {
  std::vector<std::pair<int, int>> lignes = modele.lignes;
  for (const std::array<int, 3>& f : modele.facettes)
    for (std::size_t i = 0; i < 3; ++i) lignes.emplace_back(f[i], f[(i + 1) % 3]);
  for (auto& [de, a] : lignes)
    if (de > a) std::swap(de, a);
  std::sort(lignes.begin(), lignes.end());
  lignes.erase(std::unique(lignes.begin(), lignes.end()), lignes.end());
  return lignes;
}

bool estValable(const Modele& modele) {
  const int nombre = static_cast<int>(modele.sommets.size());
  const auto nomme = [nombre](int numero) { return numero >= 0 && numero < nombre; };
  if (!(modele.areteMaximale >= 0.0 && modele.areteMaximale <= kPlusLoin)) return false;
  if (!std::all_of(modele.sommets.begin(), modele.sommets.end(), estPlacable)) return false;
  for (const auto& [de, a] : modele.lignes)
    if (!nomme(de) || !nomme(a)) return false;
  for (const std::vector<AcGePoint2d>& contour : modele.limites)
    for (const AcGePoint2d& p : contour)
      if (!estPlacable({p.x, p.y, 0.0})) return false;
  for (const std::array<int, 3>& facette : modele.facettes)
    if (!std::all_of(facette.begin(), facette.end(), nomme)) return false;
  std::vector<std::pair<double, double>> lieux;
  lieux.reserve(modele.sommets.size());
  for (const AcGePoint3d& s : modele.sommets) lieux.emplace_back(s.x, s.y);
  std::sort(lieux.begin(), lieux.end());
  return std::adjacent_find(lieux.begin(), lieux.end()) == lieux.end() &&
         !Triangulation::alignes(modele.sommets);
}

}  // namespace terrain

const terrain::Triangulation& Terrain::surface() const {
  using namespace terrain;
  if (m_surface) return *m_surface;
  auto surface = std::make_unique<Triangulation>(m_modele.sommets, toutesLesLignes(m_modele));
  std::vector<bool> horsSol(surface->faces().size(), false);
  if (!m_modele.facettes.empty()) ecarterHorsFacettes(m_modele, *surface, horsSol);
  if (!m_modele.limites.empty()) ecarterHorsLimites(m_modele, *surface, horsSol);
  if (m_modele.areteMaximale > 0.0) ecarterLongues(m_modele, *surface, horsSol);
  surface->retirer(horsSol);
  m_surface = std::move(surface);
  return *m_surface;
}

}  // namespace veltora
