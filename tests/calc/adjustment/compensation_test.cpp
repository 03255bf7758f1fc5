#include "base/format.h"
#include "calc/adjustment/lecture_gkf.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/reseau_compense.h"
#include "calc/adjustment/systeme_pondere.h"
#include "calc/adjustment/textes_compenses.h"
#include "calc/angles.h"
#include "calc/network/donnees_reseau.h"
#include "support/remarques.h"

#include <gtest/gtest.h>
#include <Eigen/Dense>
#include <cmath>
#include <random>
#include <string>

namespace veltora {
namespace {

// Ghilani, Adjustment Computations: weighted levelling, and a plan of three angles and two distances.
constexpr const char* kNivellement =
    "XYZ\nA 0 0 437.596\nOBS\n"
    "A . B . . 10.509 . . . s=0.006\nB . C . . 5.360 . . . s=0.004\nC . D . . -8.523 . . . s=0.005\n"
    "D . A . . -7.348 . . . s=0.003\nB . D . . -3.167 . . . s=0.004\nA . C . . 15.881 . . . s=0.012\n";
constexpr const char* kPlan =
    "ANGLES DEGRES\nXYZ\nQ 1000 800\nR 1000 1000\nS 1223 1186.5\nT 1400 1186.5\nOBS\n"
    "R Q U 240 200.00 . . . . s=9.259259 s=0.05\nU R S 150 100.00 . . . . s=9.259259 s=0.08\n"
    "S U T 240.01666667 . . . . . s=9.259259\n";
// A braced quadrilateral with all lengths and a round of directions at each point; g stands for what is
// known.
constexpr const char* kCarre =
    "A 1000 1000 %s\nB 1100 1000 %s\nC 1100 1100 %s\nD 1000 1100 %s\nOBS\n"
    "A NORD B 100 100.003 . . . . tour=1\nA NORD C 50.0003 141.423 . . . . tour=1\n"
    "A NORD D 399.9998 99.998 . . . . tour=1\nB NORD C 7.0002 100.001 . . . . tour=1\n"
    "B NORD D 356.9996 141.419 . . . . tour=1\nB NORD A 307 . . . . . tour=1\n"
    "C NORD D 311.0004 100.002 . . . . tour=1\nC NORD A 261.0001 . . . . . tour=1\n"
    "C NORD B 210.9998 . . . . . tour=1\n";

std::wstring compenser(const std::string& texte, reseauCompense& r, const choixPonderes& choix = {}) {
  const std::wstring erreur = lireMcPondere(texte, r.reseau, r.remarques);
  return erreur.empty() ? compenserReseau(choix, r) : erreur;
}

std::string carre(const std::string& a, const std::string& autres) {
  std::string t = kCarre;
  for (int i = 0; i < 4; ++i) t.replace(t.find("%s"), 2, i == 0 ? a : autres);
  return t;
}

const pointPondere& point(const reseauCompense& r, const wchar_t* nom) {
  return r.reseau.point(r.reseau.chercher(nom));
}
const statistiquePoint& precision(const reseauCompense& r, const wchar_t* nom) {
  return r.points[static_cast<std::size_t>(r.reseau.chercher(nom))];
}

TEST(Compensation, PublishedLevellingIsReproduced) {
  reseauCompense r;
  ASSERT_EQ(compenser(kNivellement, r), L"");
  const struct {
    const wchar_t* nom;
    double z, s;
  } attendus[] = {{L"B", 448.1087, 2.3}, {L"C", 453.4685, 2.6}, {L"D", 444.9436, 1.8}};
  for (const auto& a : attendus) {
    EXPECT_NEAR(point(r, a.nom).c[2], a.z, 5e-5);
    EXPECT_NEAR(precision(r, a.nom).s[2] * r.facteur() * 1000.0, a.s, 0.05);
  }
  EXPECT_EQ(r.test.redondance, 3);
  EXPECT_FALSE(r.remarques.douteuses());
}

TEST(Compensation, PublishedPlanIsReproduced) {
  reseauCompense r;
  ASSERT_EQ(compenser(kPlan, r), L"");
  EXPECT_NEAR(point(r, L"U").c[0], 1173.0886, 5e-5);
  EXPECT_NEAR(point(r, L"U").c[1], 1099.9872, 5e-5);
}

/// N^-1 by a dense inverse, on the datum of a pseudo-inverse restricted to nothing: for networks with fixed
/// points.
Eigen::MatrixXd inverseDense(const reseauCompense& r) {
  const int n = r.inconnues;
  Eigen::MatrixXd N = Eigen::MatrixXd::Zero(n, n);
  for (std::size_t i = 0; i < r.reseau.mesures.size(); ++i) {
    Eigen::VectorXd a = Eigen::VectorXd::Zero(n);
    for (const auto& t : deriver(r.reseau, r.reseau.mesures[i]))
      if (const int c = r.systeme->colonne(t); c >= 0) a[c] += t.a;
    N += a * a.transpose() / std::pow(r.reseau.mesures[i].ecart, 2);
  }
  return N.completeOrthogonalDecomposition().pseudoInverse();
}

TEST(Compensation, SelectedInverseIsTheDenseInverse) {
  reseauCompense r;
  ASSERT_EQ(compenser(carre("", "approche"), r),
            L"le réseau flotte, les points "
            L"donnés ou libres ne tiennent pas :\n  B, C, D : rotation\nDonner des points connus, un "
            L"gisement ou une "
            L"distance, ou marquer des points « libre »");
  reseauCompense tenu;
  ASSERT_EQ(compenser(carre("", "approche") + "A NORD B 100.0001 . . . . . s=0.5\n", tenu), L"");
  const Eigen::MatrixXd Q = inverseDense(tenu);
  double sommeR = 0.0;
  for (const statistiqueMesure& s : tenu.mesures) sommeR += s.redondance;
  EXPECT_NEAR(sommeR, tenu.test.redondance, 1e-9);
  for (const mesurePonderee& m : tenu.reseau.mesures) {
    const lignePonderee ligne = deriver(tenu.reseau, m);
    for (const auto& s : ligne) {
      for (const auto& t : ligne) {
        const int i = tenu.systeme->colonne(s);
        const int j = tenu.systeme->colonne(t);
        if (i < 0 || j < 0) continue;
        EXPECT_NEAR(tenu.systeme->cofacteur(i, j), Q(i, j), 1e-9 * Q.cwiseAbs().maxCoeff());
      }
    }
  }
}

TEST(Compensation, FreeDatumIsThePseudoInverseAndKeepsTheMeasures) {
  reseauCompense libre;
  ASSERT_EQ(compenser(carre("libre", "libre"), libre), L"");
  reseauCompense fixe;
  ASSERT_EQ(compenser(carre("", "approche") + "A NORD B 100.0001 . . . . . s=0.0001\n", fixe), L"");
  EXPECT_EQ(libre.defauts, 3);
  double deplacement[2] = {0.0, 0.0};
  double tour = 0.0;
  double trace = 0.0;
  for (const pointPondere& p : libre.reseau.points) {
    for (std::size_t axe = 0; axe < 2; ++axe) deplacement[axe] += p.c.at(axe) - p.donnee.at(axe);
    tour += (p.c[0] - p.donnee[0]) * (p.donnee[1] - 1050.0) - (p.c[1] - p.donnee[1]) * (p.donnee[0] - 1050.0);
  }
  // The inner constraints: neither shift nor turn against the given coordinates.
  EXPECT_NEAR(deplacement[0], 0.0, 1e-9);
  EXPECT_NEAR(deplacement[1], 0.0, 1e-9);
  EXPECT_NEAR(tour, 0.0, 1e-4);
  for (std::size_t i = 0; i < libre.mesures.size(); ++i) {
    EXPECT_NEAR(libre.mesures[i].residu, fixe.mesures[i].residu, 1e-8);
    EXPECT_NEAR(libre.mesures[i].redondance, fixe.mesures[i].redondance, 1e-6);
  }
  for (const statistiquePoint& p : libre.points) trace += p.s[0] * p.s[0] + p.s[1] * p.s[1];
  double traceFixe = 0.0;
  for (const statistiquePoint& p : fixe.points) traceFixe += p.s[0] * p.s[0] + p.s[1] * p.s[1];
  EXPECT_LT(trace, traceFixe);  // the least trace of all datums
}

TEST(Compensation, PlantedErrorIsNamedWithItsSize) {
  std::string texte = carre("", "");
  texte.replace(texte.find("1100 1100 "), 10, "1100 1100 approche");
  const std::size_t ou = texte.find("141.423");
  texte.replace(ou, 7, "141.523");
  reseauCompense r;
  ASSERT_EQ(compenser(texte, r), L"");
  ASSERT_FALSE(r.suspectes.empty());
  const mesurePonderee& m = r.reseau.mesures[static_cast<std::size_t>(r.suspectes[0].mesure)];
  EXPECT_EQ(r.reseau.nommer(m), L"distance de A à C");
  EXPECT_NEAR(r.suspectes[0].erreur, 0.100, 0.004);
  EXPECT_TRUE(r.remarques.douteuses());
  // Robust estimation keeps it from moving the point.
  reseauCompense robuste;
  choixPonderes choix;
  choix.methode = robustesse::danoise;
  ASSERT_EQ(compenser(texte, robuste, choix), L"");
  texte.replace(ou, 7, "141.423");
  reseauCompense juste;
  ASSERT_EQ(compenser(texte, juste), L"");
  const auto loin = [&](const reseauCompense& autre) {
    return std::abs(point(autre, L"C").c[0] - point(juste, L"C").c[0]);
  };
  EXPECT_LT(loin(robuste), 0.001);
  EXPECT_GT(loin(r), 0.002);
}

TEST(Compensation, WrongKnownPointIsNamed) {
  std::string texte = carre("", "");
  texte.replace(texte.find("1000 1100"), 9, "1000.08 1100");
  reseauCompense r;
  texte += "E NORD A 250 70.711\nE NORD B 150 70.711\nE NORD C 50 70.711\nE NORD D 350 70.711\n";
  ASSERT_EQ(compenser(texte, r), L"");
  ASSERT_FALSE(r.connus.empty());
  EXPECT_EQ(r.reseau.point(r.connus[0].point).nom, L"D");
  EXPECT_NEAR(r.connus[0].ecart[0], -0.08, 0.006);
}

TEST(Compensation, NinetyFivePercentEllipsesHoldTheTruth) {
  constexpr int kReseaux = 400;
  std::mt19937 hasard(7);
  std::normal_distribution<double> bruit;
  int dedans = 0;
  for (int i = 0; i < kReseaux; ++i) {
    std::string texte = "A 0 0\nB 100 0\nC 130 90\nOBS\n";  // the truth: P 40, 60
    const double points[3][2] = {{0, 0}, {100, 0}, {130, 90}};
    for (int k = 0; k < 3; ++k) {
      const double dx = 40.0 - points[k][0];
      const double dy = 60.0 - points[k][1];
      texte += base::formater("%c NORD P %.7f %.6f . . . . s=3 s=0.005\n", "ABC"[k],
                              std::remainder(std::atan2(dx, dy) * 200.0 / kPi + 3e-3 * bruit(hasard), 400.0),
                              std::hypot(dx, dy) + 0.005 * bruit(hasard));
    }
    reseauCompense r;
    ASSERT_EQ(compenser(texte, r), L"");
    const ellipse& e = precision(r, L"P").plan;
    const double dx = point(r, L"P").c[0] - 40.0;
    const double dy = point(r, L"P").c[1] - 60.0;
    const double lelong = (dx * std::sin(e.gisement) + dy * std::cos(e.gisement)) / e.a;
    const double travers = (dx * std::cos(e.gisement) - dy * std::sin(e.gisement)) / e.b;
    dedans += std::hypot(lelong, travers) < r.facteur() * r.facteur95() ? 1 : 0;
  }
  EXPECT_NEAR(dedans / static_cast<double>(kReseaux), 0.95, 0.04);
}

TEST(Compensation, CovariancesOfAClusterCount) {
  // Two equal observations of a length with full correlation but for a tenth count hardly more than one.
  const std::string gkf =
      "<gama-local><network axes-xy=\"ne\" angles=\"left-handed\"><parameters "
      "sigma-apr=\"1\"/><points-observations>"
      "<point id=\"A\" x=\"0\" y=\"0\" fix=\"xy\"/><point id=\"P\" adj=\"xy\"/>"
      "<obs from=\"A\"><azimuth to=\"P\" val=\"50\" stdev=\"10\"/></obs>"
      "<obs from=\"A\"><distance to=\"P\" val=\"100\"/><distance to=\"P\" val=\"100.001\"/>"
      "<cov-mat dim=\"2\" band=\"1\">1 0.9 4</cov-mat></obs></points-observations></network></gama-local>";
  reseauCompense r;
  ASSERT_EQ(lireGkf(gkf, r.reseau, r.remarques), L"");
  ASSERT_EQ(compenserReseau({}, r), L"");
  // By hand: weights of C^-1 = [4 -0.9; -0.9 1] / 3.19, so that the mean is (3.1 l1 + 0.1 l2) / 3.2 and its
  // variance 3.19 / 3.2.
  EXPECT_NEAR(std::hypot(point(r, L"P").c[0], point(r, L"P").c[1]), 100.0 + 0.001 * 0.1 / 3.2, 1e-9);
  // 10 centesimal seconds at 100 m make 1.5708 mm across the sight, more than the variance along it.
  const ellipse& e = precision(r, L"P").plan;
  EXPECT_NEAR(e.b * 1000.0, std::sqrt(3.19 / 3.2), 1e-6);
  EXPECT_NEAR(e.a * 1000.0, 1.5708, 1e-4);
  EXPECT_NEAR(e.gisement * 200.0 / kPi, 150.0, 1e-6);
  double redondances = 0.0;
  for (const statistiqueMesure& s : r.mesures) redondances += s.redondance;
  EXPECT_NEAR(redondances, 1.0, 1e-9);
}

TEST(Compensation, StartsFindWhatTheGivenPointsLeaveOut) {
  // Truth: A 0 0, B 300 20, C 180 250, P 100 80, Q 170 120.
  const struct {
    const char* nom;
    const char* texte;
  } cas[] = {
      {"three sights from the point, no length",
       "A 0 0\nB 300 20\nC 180 250\nOBS\nP A B 261.51006\nP A C 170.95659\n"},
      {"a traverse between known points that see nobody",
       "A 0 0\nB 300 20\nOBS\nP A Q 209.90547 80.6226\nA NORD P . 128.0625\nQ P B 274.79275 164.0122\n"},
  };
  for (const auto& c : cas) {
    reseauCompense r;
    ASSERT_EQ(compenser(c.texte, r), L"") << c.nom;
    EXPECT_NEAR(point(r, L"P").c[0], 100.0, 0.02) << c.nom;
    EXPECT_NEAR(point(r, L"P").c[1], 80.0, 0.02) << c.nom;
  }
}

TEST(Compensation, RefusalsNameTheLine) {
  const struct {
    const char* texte;
    const wchar_t* dit;
  } cas[] = {
      {"A 0 0\nB 10 0\nOBS\nA NORD P 50 10 . . . . s=0\n",
       L"ligne 4 : « s=0 » : un écart-type ou une longueur doit être positif"},
      {"A 0 0\nB 10 0\nOBS\nA NORD P 50 10 . . . . s=-1\n",
       L"ligne 4 : « s=-1 » : un écart-type ou une longueur doit être positif"},
      {"A 0 0\nOBS\nA NORD P 50 10 . . . . s=0,3\n",
       L"ligne 3 : « s=0,3 » n'est pas un nombre, virgule décimale, écrire 0.3"},
      {"A 0 0\nOBS\nA NORD P 50 10 . . . . p=3\n",
       L"ligne 3 : « p=3 » n'est pas compris ; on attend s=, l= ou tour=, écrits sans blanc"},
      {"A 0 0\nOBS\nA NORD P 50 ?\n",
       L"ligne 3 : « ? » à la place d'une mesure ne sert qu'à prévoir (--prevoir) : distance de A à P"},
      {"A 0 0\nOBS\nA NORD P 50 10 . -2\n", L"ligne 3 : poids nul ou négatif"},
      {"A 0 0\nOBS\nA B P 50 10\n",
       L"aucun point à calculer : les mesures ne joignent que des points connus, ou aucun point connu"},
  };
  for (const auto& c : cas) {
    reseauCompense r;
    EXPECT_EQ(compenser(c.texte, r), c.dit) << c.texte;
  }
}

}  // namespace
}  // namespace veltora
