#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/polygonale_fermee.h"
#include "report/html_document.h"
#include "support/case_rows.h"
#include "support/golden.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace veltora {
namespace {

struct Rangee {
  const wchar_t* nom;
  double angle, distance, dz;
};

struct Depart {
  double x = 1000.0, y = 1000.0, z = 100.0, vo = 0.0;
  int nivellement = 0, angle = 0;
};

struct Resultat {
  lignesPolygonale lignes;
  base::CArray<double> X, Y, Z;
  fermeturesPolygonale f;
  std::string rapport;
  int retour = 0;
};

Resultat calculer(const lignesPolygonale& lignes, const Depart& d) {
  Resultat r;
  r.lignes = lignes;
  htmlDocument document;
  r.retour = calculerPolygonaleFermee(lignes.empty() ? L"" : lignes[lignes.size() - 1].nom, d.x, d.y, d.z,
                                      d.vo, d.nivellement, d.angle, r.lignes, r.X, r.Y, r.Z, &document, false,
                                      false, &r.f);
  r.rapport = document.contenu();
  return r;
}

lignesPolygonale lignesDe(const std::vector<Rangee>& rangees) {
  lignesPolygonale lignes;
  for (const Rangee& rangee : rangees) {
    obsPolygonale obs;
    obs.setNom(rangee.nom);
    obs.angle = rangee.angle;
    obs.distance = rangee.distance;
    obs.dz = rangee.dz;
    lignes.Add(obs);
  }
  return lignes;
}

/// 400 by 900, run clockwise from its south-west corner; height misclosure 1.
const std::vector<Rangee> kRectangle = {
    {L"B", 300, 400, 2.0}, {L"C", 300, 900, -0.5}, {L"D", 300, 400, -1.5}, {L"A", 300, 900, 1.0}};

TEST(PolygonaleFermee, HeightsAfterEachMode) {
  struct Cas {
    int mode;
    double Z[4];
    double dz[4];
  };
  const double c400 = 400.0 / 2600.0;
  const double c900 = 900.0 / 2600.0;
  const std::vector<Cas> cas = {
      {0, {100, 102, 101.5, 100}, {2.0, -0.5, -1.5, 1.0}},
      {1, {100, 101.75, 101, 99.25}, {1.75, -0.75, -1.75, 0.75}},
      {2, {100, 102 - c400, 101, 99.5 - c400}, {2 - c400, -0.5 - c900, -1.5 - c400, 1 - c900}},
      {3, {100, 101.8, 101, 99.3}, {1.8, -0.8, -1.7, 0.7}},
      {9, {100, 102, 101.5, 100}, {2.0, -0.5, -1.5, 1.0}},
  };
  for (const Cas& c : cas) {
    Depart d;
    d.nivellement = c.mode;
    const Resultat r = calculer(lignesDe(kRectangle), d);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_NEAR(r.Z[i], c.Z[i], 1e-9) << c.mode << " " << i;
      EXPECT_NEAR(r.lignes[i].dz, c.dz[i], 1e-9) << c.mode << " " << i;
    }
    if (c.mode == 1 || c.mode == 3) {
      EXPECT_TRUE(memeQueReference(c.mode == 1 ? "rapport_fermee_simple.html" : "rapport_fermee_racine.html",
                                   r.rapport));
    }
  }
}

TEST(PolygonaleFermee, TheDivisionComesFirst) {
  // Legs to the four winds: the first has no easting, so that X at its end is the correction alone.
  const Resultat r = calculer(
      lignesDe({{L"B", 300, 101.3, 0}, {L"C", 300, 907.3, 0}, {L"D", 300, 99.1, 0}, {L"A", 300, 900.9, 0}}),
      {0, 0, 0, 0});
  EXPECT_EQ(r.X[1], -0.32277208005575914) << "not -0.3227720800557591, which multiplies first";
}

TEST(PolygonaleFermee, TwoRowsShareTheWholeSum) {
  const Resultat r = calculer(lignesDe({{L"B", 10, 50, 0}, {L"A", 390, 50, 0}}), Depart());
  EXPECT_EQ(r.retour, 1);
  EXPECT_EQ(r.f.S, 400.0);
  EXPECT_EQ(r.f.E, r.f.S);
  EXPECT_TRUE(memeQueReference("rapport_fermee_deux.html", r.rapport));
  for (const auto& rangees : {std::vector<Rangee>{}, std::vector<Rangee>{{L"A", 1, 2, 3}}}) {
    EXPECT_EQ(calculer(lignesDe(rangees), Depart()).retour, 0);
  }
}

// ---- against others
// -------------------------------------------------------------------------------------------------

polygonaleFermeeObs lireExemple(const std::string& nom) {
  polygonaleFermeeObs obs;
  const auto octets = base::lireFichier(VELTORA_SOURCE_DIR "/examples/" + nom);
  EXPECT_TRUE(octets) << nom;
  if (octets) lireObsFermee(*octets, obs);
  return obs;
}

Resultat calculerExemple(const std::string& nom) {
  const polygonaleFermeeObs obs = lireExemple(nom);
  return calculer(lireLignes(obs.lignes), {obs.x, obs.y, obs.z, obs.vo, obs.modeNivellement, obs.modeAngle});
}

TEST(PolygonaleFermee, TheReportOfTheExample) {
  EXPECT_TRUE(
      memeQueReference("rapport_fermee_exemple.html", calculerExemple("polygonale_fermee.obs").rapport));
}

// ---- properties
// -----------------------------------------------------------------------------------------------------

struct Terrain {
  lignesPolygonale lignes;
  std::vector<double> x, y, z;
  double vo = 0.0;
};

/// A star-shaped polygon around a national position, run clockwise, with errorless observations.
Terrain terrainAuHasard(unsigned graine, int modeAngle) {
  std::mt19937 hasard(graine);
  const auto tirer = [&hasard] { return static_cast<double>(hasard()) / 4294967296.0; };
  const std::size_t n = 3 + hasard() % 60;
  const uniteAngle& unite = uniteDeMode(modeAngle);
  Terrain t;
  for (std::size_t i = 0; i < n; ++i) {
    const double direction = (static_cast<double>(i) + 0.4 * tirer()) * 2 * kPi / static_cast<double>(n);
    const double rayon = 100 + 1900 * tirer();
    t.x.push_back(650000 + rayon * std::sin(direction));
    t.y.push_back(6860000 + rayon * std::cos(direction));
    t.z.push_back(200 + 50 * tirer());
  }
  const auto gisement = [&](std::size_t i) {
    return calculGisement(t.x[i % n], t.y[i % n], t.x[(i + 1) % n], t.y[(i + 1) % n], modeAngle);
  };
  t.vo = gisement(0);
  for (std::size_t i = 0; i < n; ++i) {
    obsPolygonale obs;
    const std::size_t but = (i + 1) % n;
    obs.setNom(L"S" + std::to_wstring(but));
    obs.angle = reduireAngle(gisement(i) - gisement(i + n - 1) + unite.demi(), unite.tour);
    obs.distance = std::hypot(t.x[but] - t.x[i], t.y[but] - t.y[i]);
    obs.dz = t.z[but] - t.z[i];
    t.lignes.Add(obs);
  }
  return t;
}

TEST(PolygonaleFermee, ErrorlessTraversesComeBack) {
  for (unsigned graine = 1; graine <= 60; ++graine) {
    const int modeAngle = static_cast<int>(graine % 3);
    const Terrain t = terrainAuHasard(graine, modeAngle);
    const Resultat r =
        calculer(t.lignes, {t.x[0], t.y[0], t.z[0], t.vo, static_cast<int>(graine % 4), modeAngle});
    for (std::size_t i = 0; i < t.x.size(); ++i) {
      ASSERT_NEAR(r.X[i], t.x[i], 1e-6) << "seed " << graine << " station " << i;
      ASSERT_NEAR(r.Y[i], t.y[i], 1e-6) << "seed " << graine << " station " << i;
      ASSERT_NEAR(r.Z[i], t.z[i], 1e-6) << "seed " << graine << " station " << i;
    }
  }
}

TEST(PolygonaleFermee, TurningMovingAndChangingUnitsTurnsAndMovesTheResult) {
  const Resultat local =
      calculer(lireLignes(lireExemple("polygonale_fermee.obs").lignes), {0, 0, 0, 0, 2, 0});
  lignesPolygonale degres = lireLignes(lireExemple("polygonale_fermee.obs").lignes);
  for (obsPolygonale& ligne : degres) ligne.angle *= 0.9;
  for (const double tour : {0.0, 17.0, 123.456, 399.0}) {
    const Depart d{650000, 6860000, 500, tour * 0.9, 2, 1};
    const Resultat r = calculer(degres, d);
    const double s = std::sin(tour * kPi / 200);
    const double c = std::cos(tour * kPi / 200);
    for (std::size_t i = 0; i < r.X.size(); ++i) {
      EXPECT_NEAR(r.X[i], 650000 + c * local.X[i] + s * local.Y[i], 2e-7) << tour;
      EXPECT_NEAR(r.Y[i], 6860000 - s * local.X[i] + c * local.Y[i], 2e-7) << tour;
      EXPECT_NEAR(r.Z[i], 500 + local.Z[i], 1e-9) << tour;
    }
  }
}

// ---- deliberate oddities
// --------------------------------------------------------------------------------------------

TEST(PolygonaleFermee, AngleSansTolerance) {
  lignesPolygonale interieurs = lignesDe(kRectangle);
  for (obsPolygonale& ligne : interieurs) ligne.angle = 100;
  const Resultat r = calculer(interieurs, Depart());
  EXPECT_EQ(r.retour, 1);
  EXPECT_EQ(r.f.E, 800.0) << "the sum of the other side's angles is spread all the same";
}

TEST(PolygonaleFermee, PremierAngleInutile) {
  std::vector<Rangee> rangees = kRectangle;
  rangees[0].angle = 296;  // E = 4, one grade a station, and the bearings follow the others' corrections
  Depart d;
  d.vo = 450.0;
  const Resultat r = calculer(lignesDe(rangees), d);
  EXPECT_NEAR(r.f.E, 4.0, 1e-12);
  EXPECT_NE(r.rapport.find("<td class=celnorm align=right>450.0000</td>"), std::string::npos)
      << "Vo is not reduced";
  EXPECT_NE(r.rapport.find("<td class=celnorm align=right>151.0000</td>"), std::string::npos)
      << "450 + 301 - 200 - 400";
}

TEST(PolygonaleFermee, DistancesCompensees) {
  std::vector<Rangee> rangees = kRectangle;
  rangees[3].distance = 980;  // 80 too long: the adjusted legs differ from the measured ones
  Depart d;
  d.nivellement = 2;
  const Resultat r = calculer(lignesDe(rangees), d);
  double SL = 0;
  std::vector<double> L;
  for (std::size_t i = 0; i < 4; ++i) {
    L.push_back(std::hypot(r.X[(i + 1) % 4] - r.X[i], r.Y[(i + 1) % 4] - r.Y[i]));
    SL += L[i];
  }
  EXPECT_GT(std::abs(L[3] - 980), 20.0);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(rangees[i].dz - r.lignes[i].dz, L[i] / SL, 1e-12) << i;
}

TEST(PolygonaleFermee, FormatZ) {
  EXPECT_NE(calculer(lignesDe(kRectangle), Depart()).rapport.find("Y=1000.0000\tZ=100.000000\tVo=0.0000"),
            std::string::npos);
}

// ---- check routine
// --------------------------------------------------------------------------------------------------

struct Verification {
  int retour = 0;
  double vo = -10.0;
  std::string noms, message;
};

Verification verifier(const wchar_t* depart, double x, const std::vector<Rangee>& rangees) {
  Verification v;
  lignesPolygonale lignes = lignesDe(rangees);
  v.retour = verifierPolygonaleFermee(depart, x, 0, 0, v.vo, lignes, 0,
                                      [&](const std::wstring& texte, const std::wstring& titre) {
                                        v.message += base::toUtf8(titre + L"|" + texte);
                                      });
  for (const obsPolygonale& ligne : lignes) v.noms += base::toUtf8(ligne.nom);
  return v;
}

TEST(VerifierPolygonaleFermee, PutsTheRowsInOrderOrSaysWhyNot) {
  for (const CaseRow& cas : caseRows("calc/cases/traverse.txt", "checked", ';')) {
    std::vector<Rangee> rangees;
    if (cas[2] != "none") rangees = {{L"B", -100, 1, 0}, {L" c ", 500, 1, 0}, {L"D", 1, 1, 0}};
    if (cas[2] != "none" && cas[2] != "all") rangees[1].distance = cas.number(2);
    const Verification v = verifier(base::fromUtf8(cas[0]).c_str(), base::lireReel(cas[1]), rangees);
    EXPECT_EQ(v.noms, cas[3]) << cas;
    EXPECT_EQ(v.message, cas[4]) << cas;
    EXPECT_EQ(v.retour, cas[4].empty() ? 1 : 0) << cas;
    EXPECT_TRUE(v.retour == 0 || v.vo == 390.0) << cas;
  }
  EXPECT_EQ(verifier(L"B", std::nan(""), kRectangle).message,
            "Erreur !|\nErreur coordonnées de départ aberrantes");
}

TEST(VerifierPolygonaleFermee, DepartEnCapitales) {
  EXPECT_EQ(verifier(L"b", 0, {{L"b", 1, 1, 0}, {L"A", 1, 1, 0}}).retour, 0);
  EXPECT_EQ(verifier(L"B", 0, {{L"b", 1, 1, 0}, {L"A", 1, 1, 0}}).retour, 1);
}

}  // namespace
}  // namespace veltora
