// The triangulation of a terrain, and the walk along a line through its faces.
//
//   p, q  ends of the line that is walked
//   t     place on it, 0 at p, 1 at q
//
// A vertex on the line counts as lying beside it, on one side for a whole walk: so the line never runs
// through a vertex, and enters and leaves each face through one edge. What runs along the edge of the ground
// is found by a second walk with the vertices on the other side.

#include "terrain/triangulation.h"

#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Projection_traits_xy_3.h>
#include <CGAL/Triangulation_face_base_with_info_2.h>
#include <CGAL/Triangulation_hierarchy_2.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>
#include <CGAL/spatial_sort.h>

#include <algorithm>
#include <cmath>

namespace veltora::terrain {
namespace {

using Noyau = CGAL::Exact_predicates_inexact_constructions_kernel;
using Traits = CGAL::Projection_traits_xy_3<Noyau>;
using BaseSommet =
    CGAL::Triangulation_hierarchy_vertex_base_2<CGAL::Triangulation_vertex_base_with_info_2<int, Traits>>;
using BaseFace =
    CGAL::Constrained_triangulation_face_base_2<Traits,
                                                CGAL::Triangulation_face_base_with_info_2<int, Traits>>;
using Donnees = CGAL::Triangulation_data_structure_2<BaseSommet, BaseFace>;
using Contrainte = CGAL::Constrained_Delaunay_triangulation_2<Traits, Donnees, CGAL::Exact_predicates_tag>;
using Hierarchie = CGAL::Triangulation_hierarchy_2<Contrainte>;
using Point = Hierarchie::Point;
using Sommet = Hierarchie::Vertex_handle;
using Maille = Hierarchie::Face_handle;

/// How many mean spacings away from the last place the next one is still looked for from there.
constexpr double kVoisinage = 30.0;

Point versPoint(const AcGePoint3d& p) { return {p.x, p.y, p.z}; }
AcGePoint3d depuisPoint(const Point& p) { return {p.x(), p.y(), p.z()}; }

double aire(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The altitude of a place of a face by the areas of its parts: between those of the corners in any face, be
/// it as thin as can be.
double altitudeDansFace(const std::array<AcGePoint3d, 3>& s, const AcGePoint3d& p) {
  const double poids[3] = {std::max(0.0, aire(p, s[1], s[2])), std::max(0.0, aire(s[0], p, s[2])),
                           std::max(0.0, aire(s[0], s[1], p))};
  const double somme = poids[0] + poids[1] + poids[2];
  if (somme > 0.0) return s[0].z + (poids[1] * (s[1].z - s[0].z) + poids[2] * (s[2].z - s[0].z)) / somme;
  return std::min({s[0], s[1], s[2]},
                  [&p](const AcGePoint3d& a, const AcGePoint3d& b) {
                    return a.distanceTo({p.x, p.y, a.z}) < b.distanceTo({p.x, p.y, b.z});
                  })
      .z;
}

/// What a line does in one face.
struct Passage {
  Maille face;
  AcGePoint3d entree;
  AcGePoint3d sortie;
  double tEntree = 0.0;
  double tSortie = 0.0;
};

}  // namespace

bool estPlacable(const AcGePoint3d& point) {
  for (const double c : {point.x, point.y, point.z})
    if (!(std::abs(c) <= kPlusLoin)) return false;
  return true;
}

struct Triangulation::Interne {
  Hierarchie arbre;
  std::vector<Sommet> sommets;  ///< by number
  double voisinage = 0.0;
  mutable Maille derniere;
  mutable AcGePoint3d dernierLieu;

  Maille situer(const AcGePoint3d& p, Hierarchie::Locate_type& sorte, int& rang) const {
    const bool proche = derniere != Maille() && std::abs(p.x - dernierLieu.x) < voisinage &&
                        std::abs(p.y - dernierLieu.y) < voisinage;
    const Maille face = arbre.locate(versPoint(p), sorte, rang, proche ? derniere : Maille());
    dernierLieu = p;
    derniere = sorte == Hierarchie::OUTSIDE_CONVEX_HULL ? Maille() : face;
    return face;
  }
  static std::array<AcGePoint3d, 3> coins(Maille face) {
    return {depuisPoint(face->vertex(0)->point()), depuisPoint(face->vertex(1)->point()),
            depuisPoint(face->vertex(2)->point())};
  }
};

namespace {

/// One walk along a line.
class Marche {
public:
  Marche(const Hierarchie& arbre, const AcGePoint3d& p, const AcGePoint3d& q, bool surLigneAGauche)
      : m_arbre(arbre),
        m_p(p),
        m_q(q),
        m_de(versPoint(p)),
        m_a(versPoint(q)),
        m_zero(surLigneAGauche ? 1 : -1) {}

  /// @param depart  where p lies @param visite  is given each passage between p and q, in order
  template <class Visite>
  void parcourir(Maille depart, Hierarchie::Locate_type sorte, int rang, Visite visite) {
    Maille face = premiere(depart, sorte, rang);
    if (face == Maille()) return;
    for (;;) {
      const int cote = bord(face, false);
      if (passer(face, cote).second <= 0.0) break;
      const Maille avant = face->neighbor(cote);
      if (m_arbre.is_infinite(avant)) break;
      face = avant;
    }
    while (!m_arbre.is_infinite(face)) {
      const int sortie = bord(face, true);
      const auto [entre, tEntree] = passer(face, bord(face, false));
      const auto [sort, tSortie] = passer(face, sortie);
      if (tSortie > 0.0 && tEntree < 1.0) visite(Passage{face, entre, sort, tEntree, tSortie});
      if (tSortie >= 1.0) return;
      face = face->neighbor(sortie);
    }
  }
  /// Whether a vertex was met that lies on the line.
  [[nodiscard]] bool surSommet() const { return m_surSommet; }

private:
  int orientation(Sommet s) {
    const int signe = static_cast<int>(m_arbre.geom_traits().orientation_2_object()(m_de, m_a, s->point()));
    if (signe == 0) m_surSommet = true;
    return signe;
  }
  int cote(Sommet s) {
    const int signe = orientation(s);
    return signe == 0 ? m_zero : signe;
  }
  bool traversee(Maille face) {
    if (m_arbre.is_infinite(face)) return false;
    const int premier = cote(face->vertex(0));
    return cote(face->vertex(1)) != premier || cote(face->vertex(2)) != premier;
  }
  /// A face that the line runs through, at p when there is one; none when the line misses them all.
  Maille premiere(Maille depart, Hierarchie::Locate_type sorte, int rang) {
    if (sorte == Hierarchie::FACE) return depart;
    if (sorte == Hierarchie::EDGE) {
      if (traversee(depart)) return depart;
      if (traversee(depart->neighbor(rang))) return depart->neighbor(rang);
    } else if (sorte == Hierarchie::VERTEX) {
      auto tour = m_arbre.incident_faces(depart->vertex(rang));
      const auto debut = tour;
      do {
        if (traversee(tour)) return tour;
      } while (++tour != debut);
    }
    auto tour = m_arbre.incident_faces(m_arbre.infinite_vertex());
    const auto debut = tour;
    do {
      const int i = tour->index(m_arbre.infinite_vertex());
      if (cote(tour->vertex(Hierarchie::ccw(i))) != cote(tour->vertex(Hierarchie::cw(i))))
        return tour->neighbor(i);
    } while (++tour != debut);
    return {};
  }
  /// The edge through which the line leaves a face, or enters it.
  int bord(Maille face, bool sortie) {
    const int avant = sortie ? -1 : 1;
    for (int i = 0; i < 2; ++i)
      if (cote(face->vertex(Hierarchie::ccw(i))) == avant && cote(face->vertex(Hierarchie::cw(i))) == -avant)
        return i;
    return 2;
  }
  /// Where the line meets an edge, with its t. The same for both faces of the edge.
  std::pair<AcGePoint3d, double> passer(Maille face, int i) {
    Sommet gauche = face->vertex(Hierarchie::ccw(i));
    Sommet droite = face->vertex(Hierarchie::cw(i));
    if (cote(gauche) < 0) std::swap(gauche, droite);
    const AcGePoint3d a = depuisPoint(gauche->point());
    const AcGePoint3d b = depuisPoint(droite->point());
    AcGePoint3d lieu = a;
    if (orientation(gauche) != 0) {
      const double versA = std::max(0.0, aire(m_p, m_q, a));
      const double versB = std::max(0.0, -aire(m_p, m_q, b));
      const double part = versA + versB > 0.0 ? versA / (versA + versB) : 0.5;
      lieu = orientation(droite) == 0 ? b : a + (b - a) * part;
    }
    const double dx = m_q.x - m_p.x;
    const double dy = m_q.y - m_p.y;
    return {lieu, ((lieu.x - m_p.x) * dx + (lieu.y - m_p.y) * dy) / (dx * dx + dy * dy)};
  }

  const Hierarchie& m_arbre;
  AcGePoint3d m_p;
  AcGePoint3d m_q;
  Point m_de;
  Point m_a;
  int m_zero;
  bool m_surSommet = false;
};

/// Appends a vertex that is not the last one again.
void ajouter(std::vector<AcGePoint3d>& ligne, const AcGePoint3d& point) {
  if (ligne.empty() || !(ligne.back() == point)) ligne.push_back(point);
}

}  // namespace

Triangulation::Triangulation(const std::vector<AcGePoint3d>& points,
                             const std::vector<std::pair<int, int>>& lignes)
    : m_interne(std::make_unique<Interne>()), m_sommets(points) {
  std::vector<std::pair<Point, int>> ordre;
  ordre.reserve(points.size());
  for (std::size_t i = 0; i < points.size(); ++i)
    ordre.emplace_back(versPoint(points[i]), static_cast<int>(i));
  using Carte = CGAL::First_of_pair_property_map<std::pair<Point, int>>;
  CGAL::spatial_sort(ordre.begin(), ordre.end(), CGAL::Spatial_sort_traits_adapter_2<Traits, Carte>());
  m_interne->sommets.resize(points.size());
  Maille pres;
  for (const auto& [point, numero] : ordre) {
    const Sommet sommet = m_interne->arbre.insert(point, pres);
    sommet->info() = numero;
    m_interne->sommets[static_cast<std::size_t>(numero)] = sommet;
    pres = sommet->face();
  }
  insererLignes(lignes);
  numeroter();
}

Triangulation::~Triangulation() = default;

bool Triangulation::alignes(const std::vector<AcGePoint3d>& points) {
  if (points.size() < 3) return true;
  const AcGePoint3d& p = points.front();
  const auto loin = [&p](const AcGePoint3d& a) { return std::hypot(a.x - p.x, a.y - p.y); };
  const AcGePoint3d q = *std::max_element(
      points.begin(), points.end(), [&loin](const auto& a, const auto& b) { return loin(a) < loin(b); });
  const double longueur = loin(q);
  return std::none_of(points.begin(), points.end(),
                      [&](const AcGePoint3d& a) { return std::abs(aire(p, q, a)) > kSurLaLigne * longueur; });
}

/// Each segment is cut at the vertices on it first: one that passes a vertex by less than a rounding would
/// cut the ground into slivers.
void Triangulation::insererLignes(const std::vector<std::pair<int, int>>& lignes) {
  Interne& interne = *m_interne;
  std::vector<std::pair<int, int>> morceaux;
  std::vector<std::pair<double, int>> surLigne;
  for (const auto& [de, a] : lignes) {
    if (de == a) continue;
    const AcGePoint3d& p = m_sommets[static_cast<std::size_t>(de)];
    const AcGePoint3d& q = m_sommets[static_cast<std::size_t>(a)];
    const double longueur = std::hypot(q.x - p.x, q.y - p.y);
    surLigne.assign(1, {1.0, a});
    const auto retenir = [&](const Passage& passage) {
      for (int i = 0; i < 3; ++i) {
        const int numero = passage.face->vertex(i)->info();
        const AcGePoint3d s = depuisPoint(passage.face->vertex(i)->point());
        const double t = ((s.x - p.x) * (q.x - p.x) + (s.y - p.y) * (q.y - p.y)) / (longueur * longueur);
        if (numero != de && numero != a && t > 0.0 && t < 1.0 &&
            std::abs(aire(p, q, s)) < kSurLaLigne * longueur)
          surLigne.emplace_back(t, numero);
      }
    };
    const Sommet depart = interne.sommets[static_cast<std::size_t>(de)];
    for (const bool gauche : {true, false})
      Marche(interne.arbre, p, q, gauche)
          .parcourir(depart->face(), Hierarchie::VERTEX, depart->face()->index(depart), retenir);
    std::sort(surLigne.begin(), surLigne.end());
    int avant = de;
    for (const auto& [t, numero] : surLigne) {
      if (numero == avant) continue;
      if (numero != a) m_surLignes.push_back({de, a, numero, t});
      morceaux.emplace_back(avant, numero);
      avant = numero;
    }
  }
  for (const auto& [de, a] : morceaux)
    interne.arbre.insert_constraint(interne.sommets[static_cast<std::size_t>(de)],
                                    interne.sommets[static_cast<std::size_t>(a)]);
}

/// A vertex that is not the one of its number is the crossing of two lines, whose number nobody set.
void Triangulation::numeroter() {
  Interne& interne = *m_interne;
  const int donnes = static_cast<int>(m_sommets.size());
  for (auto it = interne.arbre.finite_vertices_begin(); it != interne.arbre.finite_vertices_end(); ++it) {
    const int numero = it->info();
    if (numero >= 0 && numero < donnes && interne.sommets[static_cast<std::size_t>(numero)] == Sommet(it))
      continue;
    it->info() = static_cast<int>(m_sommets.size());
    m_sommets.push_back(depuisPoint(it->point()));
  }
  int rang = 0;
  for (const Maille face : interne.arbre.finite_face_handles()) face->info() = rang++;
  m_faces.reserve(static_cast<std::size_t>(rang));
  for (const Maille face : interne.arbre.finite_face_handles()) {
    Face& copie = m_faces.emplace_back();
    for (int i = 0; i < 3; ++i) {
      const auto place = static_cast<std::size_t>(i);
      const Maille voisine = face->neighbor(i);
      copie.sommets[place] = face->vertex(i)->info();
      copie.voisines[place] = interne.arbre.is_infinite(voisine) ? -1 : voisine->info();
      copie.contrainte[place] = face->is_constrained(i);
    }
  }
  const auto [x0, x1] = std::minmax_element(m_sommets.begin(), m_sommets.end(),
                                            [](const auto& a, const auto& b) { return a.x < b.x; });
  const auto [y0, y1] = std::minmax_element(m_sommets.begin(), m_sommets.end(),
                                            [](const auto& a, const auto& b) { return a.y < b.y; });
  interne.voisinage = kVoisinage * std::sqrt((x1->x - x0->x) * (y1->y - y0->y) / static_cast<double>(donnes));
}

void Triangulation::retirer(const std::vector<bool>& horsSol) {
  for (std::size_t i = 0; i < m_faces.size() && i < horsSol.size(); ++i)
    if (horsSol[i]) m_faces[i].sol = false;
}

bool Triangulation::altitude(AcGePoint3d& point) const {
  if (!estPlacable({point.x, point.y, 0.0})) return false;
  Hierarchie::Locate_type sorte = Hierarchie::FACE;
  int rang = 0;
  const Maille face = m_interne->situer({point.x, point.y, 0.0}, sorte, rang);
  const auto prendre = [&](Maille candidate) {
    if (m_interne->arbre.is_infinite(candidate) || !m_faces[static_cast<std::size_t>(candidate->info())].sol)
      return false;
    point.z = altitudeDansFace(Interne::coins(candidate), point);
    return true;
  };
  if (sorte == Hierarchie::FACE) return prendre(face);
  if (sorte == Hierarchie::EDGE) return prendre(face) || prendre(face->neighbor(rang));
  if (sorte != Hierarchie::VERTEX) return false;
  auto tour = m_interne->arbre.incident_faces(face->vertex(rang));
  const auto debut = tour;
  do {
    if (prendre(tour)) return true;
  } while (++tour != debut);
  return false;
}

Chemins Triangulation::chemin(const AcGePoint3d& de, const AcGePoint3d& a) const {
  const AcGePoint3d p(de.x, de.y, 0.0);
  const AcGePoint3d q(a.x, a.y, 0.0);
  if (!estPlacable(p) || !estPlacable(q) || !((q - p).lengthSqrd() > 0.0)) return {};
  Hierarchie::Locate_type sorte = Hierarchie::FACE;
  int rang = 0;
  const Maille depart = m_interne->situer(p, sorte, rang);
  std::vector<Passage> passages;
  const auto retenir = [&](const Passage& passage) {
    if (m_faces[static_cast<std::size_t>(passage.face->info())].sol) passages.push_back(passage);
  };
  Marche marche(m_interne->arbre, p, q, true);
  marche.parcourir(depart, sorte, rang, retenir);
  if (marche.surSommet() || passages.empty()) {
    Marche(m_interne->arbre, p, q, false).parcourir(depart, sorte, rang, retenir);
    std::stable_sort(passages.begin(), passages.end(), [](const Passage& x, const Passage& y) {
      return x.tEntree < y.tEntree || (x.tEntree == y.tEntree && x.tSortie < y.tSortie);
    });
  }
  Chemins chemins;
  double fin = -1.0;
  for (const Passage& passage : passages) {
    if (passage.tSortie <= std::max(fin, passage.tEntree)) continue;
    const auto coupe = [&](const AcGePoint3d& bout) {
      return AcGePoint3d(bout.x, bout.y, altitudeDansFace(Interne::coins(passage.face), bout));
    };
    if (chemins.empty() || passage.tEntree > fin) chemins.emplace_back();
    ajouter(chemins.back(), passage.tEntree <= 0.0 ? coupe(p) : passage.entree);
    ajouter(chemins.back(), passage.tSortie >= 1.0 ? coupe(q) : passage.sortie);
    fin = passage.tSortie;
  }
  std::erase_if(chemins, [](const std::vector<AcGePoint3d>& chemin) { return chemin.size() < 2; });
  return chemins;
}

}  // namespace veltora::terrain
