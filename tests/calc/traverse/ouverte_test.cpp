#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/obs_ouverte.h"
#include "report/html_document.h"
#include "support/golden.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace veltora {
namespace {

struct Resultat {
  lignesPolygonale lignes;
  base::CArray<double> X, Y, Z;
  fermeturesPolygonale f;
  std::string rapport;
  int retour = 0;
};

Resultat calculer(const polygonaleOuverteObs& obs) {
  Resultat r;
  r.lignes = lireLignes(obs.lignes);
  htmlDocument document;
  r.retour = calculerPolygonaleOuverte(obs, r.lignes, r.X, r.Y, r.Z, &document, false, false, &r.f);
  r.rapport = document.contenu();
  return r;
}

polygonaleOuverteObs lireExemple(const std::string& nom) {
  polygonaleOuverteObs obs;
  const auto octets = base::lireFichier(VELTORA_SOURCE_DIR "/examples/" + nom);
  EXPECT_TRUE(octets && estObsOuverte(*octets)) << nom;
  if (octets) {
    EXPECT_TRUE(lireObsOuverte(*octets, obs).empty()) << nom;
    EXPECT_EQ(ecrireObsOuverte(obs), *octets) << nom << " is in the writer's layout";
  }
  return obs;
}

/// From A (1000, 1000, 100) due east in legs of 300, 100 and 200 to D, 0.6 short of the known arrival and 1.2
/// m too high.
polygonaleOuverteObs versEst(int nivellement = 0) {
  polygonaleOuverteObs obs;
  obs.depart = {L"A", 1000, 1000, 100, 100};
  obs.arrivee = {L"FIN", 1600.6, 1000, 105, 100};
  obs.fermeture = 200;
  obs.modeNivellement = nivellement;
  obs.lignes = {formaterLigne(L"B", 200, 300, 4), formaterLigne(L"C", 200, 100, -1),
                formaterLigne(L"D", 200, 200, 3.2)};
  return obs;
}

TEST(PolygonaleOuverte, AStraightLineHasNoAngularError) {
  const Resultat r = calculer(versEst());
  EXPECT_EQ(r.retour, 1);
  EXPECT_EQ(r.f.E, 0.0);
  EXPECT_NEAR(r.f.Ex, -0.6, 1e-9);
  EXPECT_EQ(r.f.D, 600.0);
  const double attendu[3] = {1300.3, 1400.4, 1600.6};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(r.X[i], attendu[i], 1e-9);
    EXPECT_NEAR(r.Y[i], 1000, 1e-9);
  }
  for (const std::size_t n : {0U, 1U}) {
    polygonaleOuverteObs courte = versEst();
    courte.lignes.resize(n);
    EXPECT_EQ(calculer(courte).retour, 0);
  }
}

TEST(PolygonaleOuverte, longueurs_bouclees_HeightsAfterEachMode) {
  // H = 6.2 - 5 = 1.2; lengths B-C, C-D and, wrapped round, D-B.
  const double L[3] = {100.1, 200.2, 300.3};
  const auto racines = std::sqrt(L[0]) + std::sqrt(L[1]) + std::sqrt(L[2]);
  for (int mode = 0; mode <= 4; ++mode) {
    double z = 100;
    const Resultat r = calculer(versEst(mode));
    const double dz[3] = {4, -1, 3.2};
    EXPECT_NEAR(r.f.H, 1.2, 1e-12);
    ASSERT_EQ(r.Z.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
      const double parts[5] = {0, 0.4, 1.2 * L[i] / 600.6, 1.2 * std::sqrt(L[i]) / racines, 0};
      EXPECT_NEAR(r.Z[i], z, 1e-9) << mode << " station " << i;
      EXPECT_NEAR(r.lignes[i].dz, dz[i] - parts[mode], 1e-9) << mode << " " << i;
      z += dz[i] - parts[mode];
    }
    const char* const references[5] = {"rapport_ouverte_sans.html", "", "", "rapport_ouverte_racine.html",
                                       ""};
    if (*references[mode]) {
      EXPECT_TRUE(memeQueReference(references[mode], r.rapport));
    }
  }
}

/// From (0, 0) due north, with height differences that close by 0.37, to an arrival at this X.
Resultat versNord(std::initializer_list<double> distances, double xArrivee, int nivellement) {
  polygonaleOuverteObs obs;
  obs.fermeture = 200;
  obs.arrivee.x = xArrivee;
  obs.modeNivellement = nivellement;
  for (const double distance : distances) {
    obs.lignes.push_back(formaterLigne(L"P", 200, distance, obs.lignes.empty() ? 0.37 : 0));
    obs.arrivee.y += distance;
  }
  return calculer(obs);
}

TEST(PolygonaleOuverte, TheMultiplicationComesFirst) {
  EXPECT_EQ(versNord({356.8, 389.0, 370.5}, 0.6, 0).X[0], 0.19177640419242142)
      << "not ...214 or ...137, which divide first";
  const lignesPolygonale distances = versNord({310.1, 110.3, 207.9}, 0, 2).lignes;
  EXPECT_EQ(distances[1].dz, -0.12087209302325583) << "not ...581";
  const lignesPolygonale racines = versNord({310.1, 110.3, 207.9}, 0, 3).lignes;
  EXPECT_EQ(racines[1].dz, -0.12476667077382478) << "not ...476";
}

TEST(PolygonaleOuverte, StationsToPlaceEndWithTheKnownHeight) {
  const polygonaleOuverteObs obs = versEst(1);
  const Resultat r = calculer(obs);
  const auto stations = stationsOuverte(obs.depart, obs.arrivee.z, r.lignes, r.X, r.Y, r.Z);
  ASSERT_EQ(stations.size(), 4U);
  EXPECT_EQ(stations[0].nom + stations[1].nom + stations[2].nom + stations[3].nom, L"ABCD");
  EXPECT_NEAR(stations[1].z, 103.6, 1e-9) << "the height of station 1 stands in Z[1], its position in X[0]";
  EXPECT_NEAR(stations[1].x, 1300.3, 1e-9);
  EXPECT_NEAR(stations[3].x, 1600.6, 1e-9);
  EXPECT_EQ(stations[3].z, 105.0);
}

TEST(PolygonaleOuverte, TheReportOfTheExample) {
  EXPECT_TRUE(memeQueReference("rapport_ouverte_exemple.html",
                               calculer(lireExemple("polygonale_ouverte.obs")).rapport));
}

// ---- properties ----

/// A random line of stations at a national position with errorless observations, the arrival's bearing in the
/// turn in which the angles sum up.
polygonaleOuverteObs terrainAuHasard(unsigned graine, std::vector<stationConnue>& vrais) {
  std::mt19937 hasard(graine);
  const auto tirer = [&hasard] { return static_cast<double>(hasard()) / 4294967296.0; };
  const std::size_t n = 2 + hasard() % 60;
  polygonaleOuverteObs obs;
  obs.modeAngle = static_cast<int>(graine % 3);
  obs.modeNivellement = static_cast<int>(graine % 4);
  const uniteAngle& unite = uniteDeMode(obs.modeAngle);
  for (std::size_t i = 0; i <= n; ++i) {
    vrais.push_back({L"S" + std::to_wstring(i), 650000 + 2000 * tirer(), 6860000 + 2000 * tirer(),
                     200 + 50 * tirer(), 0.0});
  }
  obs.depart = vrais.front();
  obs.arrivee = vrais.back();
  obs.depart.gisement = tirer() * unite.tour;
  obs.arrivee.gisement = tirer() * unite.tour;
  double precedent = obs.depart.gisement;
  double cumul = precedent;
  const auto angleVers = [&](double gisement) {
    const double angle = reduireAngle(gisement - precedent - unite.demi(), unite.tour);
    cumul += angle + unite.demi() - unite.tour;
    precedent = gisement;
    return angle;
  };
  const auto texte = [](double valeur) { return base::formater(L"%.17g", valeur); };
  for (std::size_t i = 0; i < n; ++i) {
    const stationConnue& a = vrais[i];
    const stationConnue& b = vrais[i + 1];
    const double angle = angleVers(calculGisement(a.x, a.y, b.x, b.y, obs.modeAngle));
    obs.lignes.push_back({b.nom, texte(angle), texte(std::hypot(b.x - a.x, b.y - a.y)), texte(b.z - a.z)});
  }
  obs.fermeture = angleVers(obs.arrivee.gisement);
  obs.arrivee.gisement = cumul;
  return obs;
}

TEST(PolygonaleOuverte, ErrorlessTraversesComeBack) {
  for (unsigned graine = 1; graine <= 60; ++graine) {
    std::vector<stationConnue> vrais;
    const polygonaleOuverteObs obs = terrainAuHasard(graine, vrais);
    const Resultat r = calculer(obs);
    const auto stations = stationsOuverte(obs.depart, obs.arrivee.z, r.lignes, r.X, r.Y, r.Z);
    ASSERT_EQ(stations.size(), vrais.size());
    for (std::size_t i = 0; i < stations.size(); ++i) {
      ASSERT_NEAR(stations[i].x, vrais[i].x, 1e-6) << "seed " << graine << " station " << i;
      ASSERT_NEAR(stations[i].y, vrais[i].y, 1e-6) << "seed " << graine << " station " << i;
      ASSERT_NEAR(stations[i].z, vrais[i].z, 1e-6) << "seed " << graine << " station " << i;
    }
  }
}

TEST(PolygonaleOuverte, TurningMovingAndChangingUnitsTurnsAndMovesTheResult) {
  polygonaleOuverteObs local = lireExemple("polygonale_ouverte.obs");
  const double x0 = local.depart.x;
  const double y0 = local.depart.y;
  for (stationConnue* s : {&local.depart, &local.arrivee}) s->x -= x0, s->y -= y0;
  const Resultat origine = calculer(local);
  for (const double tour : {0.0, 17.0, 123.456, -250.0}) {
    polygonaleOuverteObs obs = local;
    const double s = std::sin(tour * kPi / 200);
    const double c = std::cos(tour * kPi / 200);
    obs.modeAngle = 1;
    for (stationConnue* station : {&obs.depart, &obs.arrivee}) {
      *station = {station->nom, 650000 + c * station->x + s * station->y,
                  6860000 - s * station->x + c * station->y, station->z + 300,
                  (station->gisement + tour) * 0.9};
    }
    obs.fermeture *= 0.9;
    for (ligneObs& ligne : obs.lignes) ligne.angle = base::formater(L"%.17g", lireLigne(ligne).angle * 0.9);
    const Resultat r = calculer(obs);
    EXPECT_NEAR(r.f.E, origine.f.E * 0.9, 1e-9) << tour;
    for (std::size_t i = 0; i < r.X.size(); ++i) {
      EXPECT_NEAR(r.X[i], 650000 + c * origine.X[i] + s * origine.Y[i], 2e-7) << tour;
      EXPECT_NEAR(r.Y[i], 6860000 - s * origine.X[i] + c * origine.Y[i], 2e-7) << tour;
      EXPECT_NEAR(r.Z[i], 300 + origine.Z[i], 1e-9) << tour;
    }
  }
}

// ---- deliberate oddities ----

TEST(PolygonaleOuverte, ErreurToursEntiers) {
  for (const int tours : {-1, 1}) {
    polygonaleOuverteObs obs = versEst();
    obs.arrivee.gisement -= 400.0 * tours;
    const Resultat r = calculer(obs);
    EXPECT_NEAR(r.f.E, 400.0 * tours, 1e-9) << "not reduced";
    EXPECT_GT(std::abs(r.Y[0] - 1000), 100.0) << "and spread: the first leg is bent by a quarter of it";
    EXPECT_NEAR(r.X[2], 1600.6, 1e-9);
  }
  polygonaleOuverteObs tourne = versEst();
  tourne.lignes[0].angle = L"1000";
  EXPECT_NEAR(calculer(tourne).f.E, 0.0, 1e-9) << "the rows' angles are reduced before";
}

TEST(PolygonaleOuverte, ErreurOpposee) {
  polygonaleOuverteObs obs = versEst();
  obs.fermeture = 200.04;
  const std::string rapport = calculer(obs).rapport;
  EXPECT_NE(rapport.find("<td class=celnorm>-0.0400</td>"), std::string::npos);
  EXPECT_NE(rapport.find("Erreur :</td><td class=celnorm align=right>0.0400</td>"), std::string::npos);
}

TEST(PolygonaleOuverte, TotauxDecales) {
  const std::string rapport = calculer(versEst()).rapport;
  EXPECT_NE(rapport.find("<tr ><td colspan=2></td><td class=celnorm>Total</td>"), std::string::npos);
  EXPECT_NE(
      rapport.find("<tr ><td class=celnorm align='left'>FIN-A</td><td class=celnorm align=right>600.6000"),
      std::string::npos);
  EXPECT_NE(
      rapport.find("<tr ><td class=celnorm align='left'>Erreur</td><td class=celnorm align=right>0.6000"),
      std::string::npos);
}

}  // namespace
}  // namespace veltora
