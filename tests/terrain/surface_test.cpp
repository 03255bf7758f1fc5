// The faces of a terrain, altitudes and paths on it, contour lines, profiles: against planes and against a
// search through all faces.

#include "terrain/courbes.h"
#include "terrain/profil.h"
#include "terrain/terrain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <set>

namespace {

using namespace veltora::terrain;
using veltora::Terrain;

constexpr double kX = 652000.0;
constexpr double kY = 6862000.0;

double croix(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// A place on a segment, and the ground there.
struct Lieu {
  double t;
  double z;
};

std::array<AcGePoint3d, 3> coins(const Triangulation& surface, const Face& face) {
  const auto& s = surface.sommets();
  return {s[static_cast<std::size_t>(face.sommets[0])], s[static_cast<std::size_t>(face.sommets[1])],
          s[static_cast<std::size_t>(face.sommets[2])]};
}

double surPlan(const std::array<AcGePoint3d, 3>& c, const AcGePoint3d& p) {
  const double w1 = croix(c[0], p, c[2]);
  const double w2 = croix(c[0], c[1], p);
  return c[0].z + (w1 * (c[1].z - c[0].z) + w2 * (c[2].z - c[0].z)) / croix(c[0], c[1], c[2]);
}

/// The altitude of a place on any ground face that holds it, border included; -1 outside.
double parUneFace(const Triangulation& surface, const AcGePoint3d& p) {
  for (const Face& face : surface.faces()) {
    const auto c = coins(surface, face);
    if (face.sol && croix(c[0], c[1], p) >= 0 && croix(c[1], c[2], p) >= 0 && croix(c[2], c[0], p) >= 0)
      return surPlan(c, p);
  }
  return -1.0;
}

/// The part of a segment within each ground face, from one half plane to the next: pairs of places.
std::vector<std::pair<Lieu, Lieu>> parTousLesFaces(const Triangulation& surface, const AcGePoint3d& p,
                                                   const AcGePoint3d& q) {
  std::vector<std::pair<Lieu, Lieu>> parts;
  for (const Face& face : surface.faces()) {
    if (!face.sol) continue;
    const auto c = coins(surface, face);
    double de = 0.0;
    double a = 1.0;
    for (std::size_t i = 0; i < 3; ++i) {
      const double debut = croix(c[i], c[(i + 1) % 3], p);
      const double fin = croix(c[i], c[(i + 1) % 3], q);
      if (debut < 0.0 && fin < 0.0) a = -1.0;
      if ((debut < 0.0) == (fin < 0.0)) continue;
      const double t = debut / (debut - fin);
      (debut < 0.0 ? de : a) = debut < 0.0 ? std::max(de, t) : std::min(a, t);
    }
    if (!(a - de > 1e-12)) continue;
    const auto place = [&](double t) { return Lieu{t, surPlan(c, p + (q - p) * t)}; };
    parts.emplace_back(place(de), place(a));
  }
  std::sort(parts.begin(), parts.end(), [](const auto& x, const auto& y) { return x.first.t < y.first.t; });
  return parts;
}

void verifierChemin(const Triangulation& surface, const AcGePoint3d& p, const AcGePoint3d& q) {
  SCOPED_TRACE(testing::Message() << p.x - kX << "," << p.y - kY << " -> " << q.x - kX << "," << q.y - kY);
  const auto parts = parTousLesFaces(surface, p, q);
  std::vector<Lieu> attendus;
  std::size_t troncons = 0;
  double fin = -1.0;
  for (const auto& [de, a] : parts) {
    if (de.t > fin + 1e-9) ++troncons;
    fin = std::max(fin, a.t);
    for (const Lieu& lieu : {de, a})
      if (std::none_of(attendus.begin(), attendus.end(),
                       [&](const Lieu& l) { return std::abs(l.t - lieu.t) < 1e-9; }))
        attendus.push_back(lieu);
  }
  std::sort(attendus.begin(), attendus.end(), [](const Lieu& x, const Lieu& y) { return x.t < y.t; });
  const Chemins chemins = surface.chemin(p, q);
  std::vector<Lieu> trouves;
  for (const auto& chemin : chemins)
    for (const AcGePoint3d& s : chemin)
      trouves.push_back({std::hypot(s.x - p.x, s.y - p.y) / std::hypot(q.x - p.x, q.y - p.y), s.z});
  EXPECT_EQ(chemins.size(), troncons);
  ASSERT_EQ(trouves.size(), attendus.size());
  for (std::size_t i = 0; i < trouves.size(); ++i) {
    EXPECT_NEAR(trouves[i].t, attendus[i].t, 1e-8);
    EXPECT_NEAR(trouves[i].z, attendus[i].z, 1e-6);
  }
}

Modele alea(unsigned graine, int nombre, double cote) {
  std::mt19937 tirage(graine);
  std::uniform_real_distribution<double> lieu(0.0, cote);
  std::uniform_real_distribution<double> haut(200.0, 210.0);
  Modele modele;
  for (int i = 0; i < nombre; ++i)
    modele.sommets.push_back({kX + lieu(tirage), kY + lieu(tirage), haut(tirage)});
  return modele;
}

/// A grid of whole coordinates and whole altitudes: lines run through vertices and along edges, level faces
/// occur.
Modele grille(unsigned graine, int cote, int hauteurs) {
  std::mt19937 tirage(graine);
  std::uniform_int_distribution<int> haut(0, hauteurs);
  Modele modele;
  for (int x = 0; x < cote; ++x)
    for (int y = 0; y < cote; ++y)
      modele.sommets.push_back({kX + x, kY + y, static_cast<double>(haut(tirage))});
  return modele;
}

TEST(Surface, altitudesSurUnPlan) {
  Modele modele = alea(1, 300, 500.0);
  const auto plan = [](const AcGePoint3d& p) { return 200.0 + 0.03 * (p.x - kX) - 0.05 * (p.y - kY); };
  for (AcGePoint3d& s : modele.sommets) s.z = plan(s);
  const Terrain terrain(modele);
  for (AcGePoint3d p : alea(2, 500, 500.0).sommets) {
    p.z = -7.0;
    if (terrain.surface().altitude(p))
      EXPECT_NEAR(p.z, plan(p), 1e-7);
    else
      EXPECT_EQ(p.z, -7.0);
  }
  AcGePoint3d dehors(kX - 1.0, kY + 250.0, 5.0);
  EXPECT_FALSE(terrain.surface().altitude(dehors));
  dehors.x = std::nan("");
  EXPECT_FALSE(terrain.surface().altitude(dehors));
}

TEST(Surface, altitudesParToutesLesFaces) {
  const Terrain terrain(alea(3, 200, 100.0));
  int dedans = 0;
  for (AcGePoint3d p : alea(4, 500, 100.0).sommets) {
    const double attendue = parUneFace(terrain.surface(), p);
    ASSERT_EQ(terrain.surface().altitude(p), attendue >= 0.0);
    if (attendue < 0.0) continue;
    ++dedans;
    EXPECT_NEAR(p.z, attendue, 1e-7);
  }
  EXPECT_GT(dedans, 400);
}

TEST(Surface, cerclesVides) {
  const Terrain terrain(alea(5, 120, 100.0));
  for (const Face& face : terrain.surface().faces()) {
    const auto c = coins(terrain.surface(), face);
    EXPECT_GT(croix(c[0], c[1], c[2]), 0.0);
    for (const AcGePoint3d& d : terrain.modele().sommets) {
      const double ax = c[0].x - d.x, ay = c[0].y - d.y, bx = c[1].x - d.x, by = c[1].y - d.y;
      const double cx = c[2].x - d.x, cy = c[2].y - d.y;
      EXPECT_LT((ax * ax + ay * ay) * (bx * cy - cx * by) - (bx * bx + by * by) * (ax * cy - cx * ay) +
                    (cx * cx + cy * cy) * (ax * by - bx * ay),
                1e-3);
    }
  }
}

TEST(Surface, cheminsAuHasard) {
  Modele modele = alea(6, 150, 100.0);
  for (const double arete : {0.0, 12.0}) {
    modele.areteMaximale = arete;
    const Terrain terrain(modele);
    const auto bouts = alea(7, 400, 140.0).sommets;
    for (std::size_t i = 0; i + 1 < bouts.size(); i += 2) {
      const AcGeVector3d recul(20.0, 20.0, 0.0);
      verifierChemin(terrain.surface(), bouts[i] - recul, bouts[i + 1] - recul);
    }
  }
}

TEST(Surface, cheminsLeLongDAretesEtParSommets) {
  Modele modele = grille(8, 7, 9);
  // A court in the middle, and a corner cut off: ground with borders inside of the hull.
  const auto point = [](double x, double y) { return AcGePoint2d(kX + x, kY + y); };
  const auto numero = [](int x, int y) { return x * 7 + y; };
  for (const bool cour : {false, true}) {
    if (cour) {
      modele.limites = {{point(0, 0), point(6, 0), point(6, 4), point(4, 6), point(0, 6)},
                        {point(2, 2), point(4, 2), point(4, 4), point(2, 4)}};
      for (int i = 0; i < 2; ++i) {
        modele.lignes.emplace_back(numero(2 + i, 2), numero(3 + i, 2));
        modele.lignes.emplace_back(numero(2 + i, 4), numero(3 + i, 4));
        modele.lignes.emplace_back(numero(2, 2 + i), numero(2, 3 + i));
        modele.lignes.emplace_back(numero(4, 2 + i), numero(4, 3 + i));
        modele.lignes.emplace_back(numero(6 - i, 4 + i), numero(5 - i, 5 + i));
      }
    }
    const Terrain terrain(modele);
    double aire = 0.0;
    for (const Face& face : terrain.surface().faces())
      if (const auto c = coins(terrain.surface(), face); face.sol) aire += croix(c[0], c[1], c[2]) / 2.0;
    EXPECT_DOUBLE_EQ(aire, cour ? 30.0 : 36.0);
    for (int x = -1; x <= 13; ++x)
      for (int y = -1; y <= 13; ++y) {
        AcGePoint3d p(kX + x / 2.0, kY + y / 2.0, -1.0);
        const double attendue = parUneFace(terrain.surface(), p);
        EXPECT_EQ(terrain.surface().altitude(p), attendue >= 0.0) << x << "," << y;
        EXPECT_NEAR(p.z, attendue, 1e-9);
      }
    std::mt19937 tirage(9);
    std::uniform_int_distribution<int> demi(-2, 14);
    for (int i = 0; i < 3000; ++i) {
      const AcGePoint3d p(kX + demi(tirage) / 2.0, kY + demi(tirage) / 2.0, 0.0);
      const AcGePoint3d q(kX + demi(tirage) / 2.0, kY + demi(tirage) / 2.0, 0.0);
      if (!(p == q)) verifierChemin(terrain.surface(), p, q);
      if (HasFailure()) return;
    }
    EXPECT_TRUE(terrain.surface().chemin({kX, kY, 0}, {kX, kY, 9}).empty());
  }
}

TEST(Surface, lignesTenues) {
  Modele modele = alea(10, 300, 100.0);
  for (int i = 0; i < 40; i += 2) modele.lignes.emplace_back(i, i + 1);
  const Terrain terrain(modele);
  EXPECT_GT(terrain.surface().sommets().size(), modele.sommets.size());
  // The ground along a line is the line, but for the crossings, which take the mean of two.
  int simples = 0;
  for (const auto& [de, a] : modele.lignes) {
    const AcGePoint3d p = modele.sommets[static_cast<std::size_t>(de)];
    const AcGePoint3d q = modele.sommets[static_cast<std::size_t>(a)];
    const Chemins chemins = terrain.surface().chemin(p, q);
    ASSERT_EQ(chemins.size(), 1U);
    if (chemins[0].size() == 2) ++simples;
    EXPECT_NEAR(chemins[0].front().z, p.z, 1e-9);
    EXPECT_NEAR(chemins[0].back().z, q.z, 1e-9);
  }
  EXPECT_GE(simples, 1);
}

TEST(Surface, croisementALaMoyenneEtSommetPresDeLaLigne) {
  Modele modele;
  modele.sommets = {{kX, kY, 0},        {kX + 10, kY + 10, 0}, {kX + 10, kY, 100},
                    {kX, kY + 10, 100}, {kX + 20, kY, 50},     {kX + 5, kY - 5e-5, 7}};
  modele.lignes = {{0, 1}, {2, 3}, {0, 4}};
  const Terrain terrain(modele);
  ASSERT_EQ(terrain.surface().sommets().size(), 7U);
  EXPECT_NEAR(terrain.surface().sommets()[6].x, kX + 5, 1e-9);
  EXPECT_DOUBLE_EQ(terrain.surface().sommets()[6].z, 50.0);
  // The vertex beside the line, and the one that ends another line on it, became part of it.
  AcGePoint3d p(kX + 2.5, kY, 0);
  ASSERT_TRUE(terrain.surface().altitude(p));
  EXPECT_NEAR(p.z, 3.5, 1e-3);
}

TEST(Surface, alignes) {
  std::vector<AcGePoint3d> points;
  for (int i = 0; i < 50; ++i) points.push_back({kX + 3.0 * i, kY + 7.0 * i, 1.0 * i});
  EXPECT_TRUE(Triangulation::alignes(points));
  points.push_back({kX + 30.0, kY + 70.01, 0.0});
  EXPECT_FALSE(Triangulation::alignes(points));
  EXPECT_TRUE(Triangulation::alignes({{kX, kY, 0}, {kX + 1, kY, 0}}));
}

TEST(Surface, facesReprises) {
  // Two squares apart and a T joint: the neighbour's corner lies on the long edge.
  Modele modele;
  modele.sommets = {{0, 0, 1},  {10, 0, 1},  {10, 10, 1}, {0, 10, 1},
                    {20, 0, 2}, {20, 10, 2}, {10, 5, 1},  {50, 50, 9}};
  modele.facettes = {{0, 1, 2}, {0, 2, 3}, {1, 4, 6}, {6, 5, 2}, {4, 5, 6}};
  const Terrain terrain(modele);
  for (const auto& [x, y, sol] :
       {std::tuple{5.0, 5.0, true}, {9.9, 5.1, true}, {15.0, 5.0, true}, {40.0, 40.0, false}}) {
    AcGePoint3d p(x, y, 0);
    EXPECT_EQ(terrain.surface().altitude(p), sol) << x << "," << y;
  }
}

/// Checks each contour line by the faces, and the length of all of them against what each face holds.
void verifierCourbes(const Triangulation& surface, double pas) {
  std::map<long long, double> longueurs;
  tracerCourbes(surface, pas, [&](const Courbe& courbe) {
    const std::size_t n = courbe.sommets.size();
    EXPECT_GE(n, courbe.fermee ? 3U : 2U);
    EXPECT_DOUBLE_EQ(courbe.altitude, static_cast<double>(courbe.rang) * pas);
    for (std::size_t i = 0; i < n; ++i) {
      AcGePoint3d p(courbe.sommets[i].x, courbe.sommets[i].y, 0.0);
      if (surface.altitude(p)) {
        EXPECT_NEAR(p.z, courbe.altitude, 1e-6);
      }
      if (i + 1 == n && !courbe.fermee) break;
      const AcGePoint2d& suivant = courbe.sommets[(i + 1) % n];
      EXPECT_GT(courbe.sommets[i].distanceTo(suivant), 0.0);
      longueurs[courbe.rang] += courbe.sommets[i].distanceTo(suivant);
      // Between its vertices it lies on one face, and higher ground to its left.
      const AcGeVector2d sens = (suivant - courbe.sommets[i]) * 0.5;
      AcGePoint3d milieu(p.x + sens.x, p.y + sens.y, 0.0);
      if (surface.altitude(milieu)) {
        EXPECT_NEAR(milieu.z, courbe.altitude, 1e-6);
      }
      AcGePoint3d gauche(milieu.x - 1e-4 * sens.y, milieu.y + 1e-4 * sens.x, 0.0);
      AcGePoint3d droite(milieu.x + 1e-4 * sens.y, milieu.y - 1e-4 * sens.x, 0.0);
      if (surface.altitude(gauche) && surface.altitude(droite)) {
        EXPECT_GE(gauche.z, courbe.altitude - 1e-9);
        EXPECT_LT(droite.z, courbe.altitude);
      }
    }
    return true;
  });
  std::map<long long, double> attendues;
  for (const Face& face : surface.faces()) {
    if (!face.sol) continue;
    const auto c = coins(surface, face);
    for (long long rang = 190; rang < 430; ++rang) {
      const double h = static_cast<double>(rang) * pas;
      std::vector<AcGePoint3d> coupes;
      for (std::size_t i = 0; i < 3; ++i) {
        const AcGePoint3d& a = c[i];
        const AcGePoint3d& b = c[(i + 1) % 3];
        if ((a.z >= h) != (b.z >= h)) coupes.push_back(a + (b - a) * ((h - a.z) / (b.z - a.z)));
      }
      if (coupes.size() == 2)
        attendues[rang] += std::hypot(coupes[0].x - coupes[1].x, coupes[0].y - coupes[1].y);
    }
  }
  double total = 0.0;
  for (const auto& [rang, longueur] : attendues) {
    total += longueur;
    EXPECT_NEAR(longueurs[rang], longueur, 1e-6 * (1.0 + longueur)) << rang;
  }
  EXPECT_GT(total, 0.0);
  for (const auto& [rang, longueur] : longueurs) EXPECT_TRUE(attendues.contains(rang)) << rang;
}

TEST(Courbes, surLesFaces) {
  verifierCourbes(Terrain(alea(11, 300, 100.0)).surface(), 1.0);
  verifierCourbes(Terrain(alea(12, 100, 100.0)).surface(), 0.7);
  Modele troue = alea(13, 300, 100.0);
  troue.areteMaximale = 9.0;
  verifierCourbes(Terrain(troue).surface(), 0.5);
}

/// Ground made of the altitudes of a square grid, row by row.
Modele carte(const std::vector<std::vector<int>>& altitudes) {
  Modele modele;
  for (std::size_t y = 0; y < altitudes.size(); ++y)
    for (std::size_t x = 0; x < altitudes[y].size(); ++x)
      modele.sommets.push_back({static_cast<double>(x), static_cast<double>(y), 1.0 * altitudes[y][x]});
  return modele;
}

TEST(Courbes, altitudesDesSommets) {
  struct Cas {
    const char* nom;
    std::vector<std::vector<int>> altitudes;
    int courbes;
    double longueur;
  };
  const Cas cas[] = {
      // At altitude 1, of ground between 0 and 1 or 1 and 2.
      {"plateau", {{0, 0, 0, 0}, {0, 1, 1, 0}, {0, 1, 1, 0}, {0, 0, 0, 0}}, 1, 4.0},
      {"cuvette", {{2, 2, 2, 2}, {2, 1, 1, 2}, {2, 1, 1, 2}, {2, 2, 2, 2}}, 0, 0.0},
      {"sommet", {{0, 0, 0}, {0, 1, 0}, {0, 0, 0}}, 0, 0.0},
      {"crete", {{0, 0, 0, 0}, {0, 1, 1, 0}, {0, 0, 0, 0}}, 0, 0.0},
      {"versant", {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}, 1, 2.0},
      {"plat", {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, 0, 0.0},
      {"terrasse", {{0, 0, 0}, {1, 1, 1}, {1, 1, 1}, {2, 2, 2}}, 1, 2.0},
  };
  for (const Cas& c : cas) {
    int courbes = 0;
    double longueur = 0.0;
    tracerCourbes(Terrain(carte(c.altitudes)).surface(), 1.0, [&](const Courbe& courbe) {
      if (courbe.rang != 1) return true;
      ++courbes;
      for (std::size_t i = 0; i + (courbe.fermee ? 0 : 1) < courbe.sommets.size(); ++i)
        longueur += courbe.sommets[i].distanceTo(courbe.sommets[(i + 1) % courbe.sommets.size()]);
      return true;
    });
    EXPECT_EQ(courbes, c.courbes) << c.nom;
    EXPECT_NEAR(longueur, c.longueur, 1e-12) << c.nom;
  }
}

TEST(Courbes, arretEtAmpleur) {
  const Terrain terrain(alea(14, 200, 100.0));
  int vues = 0;
  tracerCourbes(terrain.surface(), 0.5, [&](const Courbe&) { return ++vues < 3; });
  EXPECT_EQ(vues, 3);
  double sommets = 0.0;
  tracerCourbes(terrain.surface(), 0.5, [&](const Courbe& courbe) {
    sommets += static_cast<double>(courbe.sommets.size()) - (courbe.fermee ? 0.0 : 1.0);
    return true;
  });
  EXPECT_DOUBLE_EQ(ampleurCourbes(terrain.surface(), 0.5), sommets);
}

TEST(Profil, chaqueArete) {
  const Terrain terrain(alea(15, 150, 100.0));
  const std::vector<AcGePoint3d> axe = {
      {kX - 10, kY + 50, 0}, {kX + 40, kY + 55, 0}, {kX + 60, kY + 30, 0}, {kX + 60, kY + 130, 0}};
  const Profil profil = profilLeLong(terrain.surface(), axe);
  ASSERT_EQ(profil.size(), 1U);
  std::set<long> lieux;
  double avant = 0.0;
  for (std::size_t i = 0; i + 1 < axe.size(); ++i) {
    const double longueur = std::hypot(axe[i + 1].x - axe[i].x, axe[i + 1].y - axe[i].y);
    for (const auto& [de, a] : parTousLesFaces(terrain.surface(), axe[i], axe[i + 1]))
      for (const double t : {de.t, a.t}) lieux.insert(std::lround((avant + t * longueur) * 1e5));
    avant += longueur;
  }
  ASSERT_EQ(profil[0].size(), lieux.size());
  int surAxe = 0;
  auto attendu = lieux.begin();
  for (const SommetProfil& s : profil[0]) {
    EXPECT_NEAR(s.distance, static_cast<double>(*attendu++) / 1e5, 2e-5);
    AcGePoint3d p = s.point;
    if (terrain.surface().altitude(p)) {
      EXPECT_NEAR(p.z, s.point.z, 1e-6);
    }
    surAxe += s.surAxe ? 1 : 0;
  }
  EXPECT_EQ(surAxe, 2);
}

}  // namespace
