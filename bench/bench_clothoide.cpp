// Clothoids: evaluations, points along many of them, reading them back from polylines, nearest points.

#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "drafting/clothoids/clothoide_construite.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "drafting/clothoids/clothoide_parcours.h"
#include "mesure.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using namespace veltora;

constexpr double kX = 652000.0;
constexpr double kY = 6862000.0;

/// One of a row of curves, from a straight line to a radius of 150 to 250, some 60 long.
clothoideConstruite courbe(int rang) {
  const double rayon = 150.0 + rang % 100;
  const double tau = 0.1 + 0.001 * (rang % 7);
  // Tangent lengths of the flat curve, near enough: the curve ends a little beside p2.
  const AcGePoint2d p1(kX + rang * 3.0, kY);
  const double longueur = 2.0 * tau * rayon;
  const AcGePoint2d pi = p1 + AcGeVector2d(longueur * 2.0 / 3.0, 0.0);
  const AcGePoint2d p2 = pi + AcGeVector2d(std::cos(tau), std::sin(tau)) * (longueur / 3.0);
  clothoideConstruite construite;
  if (construireClothoide({0.0, rayon, p1, p2, pi}, construite)) std::exit(1);
  return construite;
}

std::unique_ptr<AcDbPolyline> polyligneSur(clothoide c) {
  auto polyligne = std::make_unique<AcDbPolyline>();
  for (const double s : echantillonner(c, 0.001, 0.9))
    polyligne->addVertexAt(polyligne->numVerts(), c.pointEn(c.startParam + s));
  resbuf* const donnees = xDataClothoide(c);
  if (polyligne->setXData(donnees) != Acad::eOk) std::exit(1);
  acutRelRb(donnees);
  return polyligne;
}

void evaluer(Mesure& mesure, int n) {
  const clothoide c = courbe(1).courbe;
  double somme = 0.0;
  mesure("points of one curve", n, [&] {
    for (int i = 0; i < n; ++i) somme += c.pointEn(c.endParam * i / n).x;
  });
  if (!std::isfinite(somme)) std::exit(1);
}

/// Reading a polyline's curve and a hundred points along it, as stake-out does.
void implanter(Mesure& mesure, int courbes) {
  std::vector<std::unique_ptr<AcDbPolyline>> polylignes;
  for (int i = 0; i < courbes; ++i) polylignes.push_back(polyligneSur(courbe(i).courbe));
  std::size_t points = 0;
  mesure("curves read, 100 points each", courbes * 100, [&] {
    for (const auto& polyligne : polylignes) {
      clothoideConstruite lue;
      if (!lireXDataEntite(lue.courbe, *polyligne)) std::exit(1);
      lue.s1 = lue.courbe.startParam, lue.s2 = lue.courbe.endParam;
      points += listerPoints(lue, lue.longueur() / 99.0, 0.0).size();
    }
  });
  if (points != static_cast<std::size_t>(courbes) * 100) std::exit(1);
}

void approcher(Mesure& mesure, int n) {
  const clothoide c = courbe(1).courbe;
  double somme = 0.0;
  mesure("nearest points", n, [&] {
    for (int i = 0; i < n; ++i) somme += pointLePlusProche(c, {kX + i * 40.0 / n, kY + 1.0}).s;
  });
  if (!std::isfinite(somme)) std::exit(1);
}

}  // namespace

int main() {
  AcDbDatabase dessin;
  acdbHostApplicationServices()->setWorkingDatabase(&dessin);
  Mesure mesure;
  for (const int n : {100000, 1000000, 10000000}) evaluer(mesure, n);
  for (const int courbes : {100, 1000, 10000}) implanter(mesure, courbes);
  for (const int n : {10000, 100000}) approcher(mesure, n);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return 0;
}
