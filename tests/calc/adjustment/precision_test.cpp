// Expected values: dense normal equations in another language, derivatives by differences, free datum by a
// bordered system; measures left out, points freed and weights lowered by adjusting anew.

#include "base/format.h"
#include "calc/adjustment/epoques.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/lois.h"
#include "calc/adjustment/reseau_compense.h"
#include "calc/adjustment/textes_compenses.h"

#include <gtest/gtest.h>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace veltora {
namespace {

// All kinds of measures with their default deviations, rounds, an observed point, lengths of their own.
constexpr const char* kMixte =
    "A 1000 2000 100\nB 1240 1985\nC 1115 2210 104.5\nD 1010.012 2150.007 s=0.01 s=0.015\n"
    "P 1085 2085 101.8 approche\nQ 1190 2110 103.1 approche\nOBS\n"
    "P A Q 235.12015 107.9392 1.2970\nP B C 278.51870 . .\nA C P 18.10500 120.2022 1.8040 . . . l=250\n"
    "Q NORD B 175.77731 134.6321 .\nC NORD A 198.89570 . . . . . tour=1\n"
    "C NORD P 181.99476 128.5516 . . . . tour=1\nC NORD Q 126.03375 . . . . . tour=1\n"
    "P B D 208.98517 99.2522 .\nD NORD Q 42.42070 184.3869 . . . . tour=2\n"
    "D NORD C 395.45053 . . . . . tour=2\nQ NORD C . 124.9970 1.4020 . . . s=0.004 s=0.003\n";
// The same in plan without the bearing; the datum rests on A, C, D and P alone.
constexpr const char* kLibre =
    "A 1000.01 2000 libre\nB 1240 1985 approche\nC 1114.98 2210.01 libre\nD 1010.005 2150.01 libre\n"
    "P 1085 2084.99 libre\nQ 1190 2110 approche\nOBS\n"
    "P A Q 235.12015 107.9392\nP B C 278.51870 .\nA C P 18.10500 120.2022\n"
    "Q NORD B . 134.6321\nC NORD A 198.89570 . . . . . tour=1\nC NORD P 181.99476 128.5516 . . . . tour=1\n"
    "C NORD Q 126.03375 . . . . . tour=1\nP B D 208.98517 99.2522\nD NORD Q 42.42070 184.3869 . . . . "
    "tour=2\n"
    "D NORD C 395.45053 . . . . . tour=2\nQ NORD C . 124.9970 . . . . s=0.004\n";
// Levelling with two planted errors, then with B given 20 mm too high, then two epochs between which C rose.
constexpr const char* kMesuresNiv =
    "A . B . . 1.002 . . . s=0.002\nB . C . . 2.001 . . . s=0.003\nC . D . . -1.499 . . . s=0.002\n"
    "D . A . . -1.503 . . . s=0.004\nB . D . . 0.501 . . . s=0.002\nA . E . . 0.750 . . . s=0.002\n"
    "E . C . . 2.252 . . . s=0.003\nE . B . . 0.249 . . . s=0.003\n";
constexpr const char* kFautes = "A . C . . 3.026 . . . s=0.003\nE . D . . 0.731 . . . s=0.002\n";
constexpr const char* kTroisieme = "C . A . . -2.970 . . . s=0.003\n";
constexpr const char* kEpoque1 =
    "A . B . . 1.002 . . . s=0.002\nB . C . . 2.001 . . . s=0.003\nC . D . . -1.499 . . . s=0.002\n"
    "D . A . . -1.503 . . . s=0.004\nA . C . . 3.002 . . . s=0.003\nB . D . . 0.501 . . . s=0.002\n";
constexpr const char* kEpoque2 =
    "A . B . . 1.001 . . . s=0.002\nB . C . . 2.014 . . . s=0.003\nC . D . . -1.511 . . . s=0.002\n"
    "D . A . . -1.502 . . . s=0.004\nA . C . . 3.016 . . . s=0.003\nB . D . . 0.502 . . . s=0.002\n";

void compenser(const std::string& texte, reseauCompense& r, const choixPonderes& choix = {}) {
  r.reseau.ecarts = {0.6, 0.4, 1.5, 4.0, 12.0, 1.0, 6.0, 1.5, 2.5};
  ASSERT_EQ(lireMcPondere(texte, r.reseau, r.remarques), L"");
  ASSERT_EQ(compenserReseau(choix, r), L"");
}

/// The number of a key behind a place of a text; -1 for null.
double champ(const std::string& json, std::size_t ou, const std::string& cle) {
  const std::size_t place = json.find("\"" + cle + "\": ", ou);
  if (place == std::string::npos) return 1e300;
  const std::size_t debut = place + cle.size() + 4;
  double valeur = -1.0;
  std::from_chars(json.data() + debut, json.data() + json.size(), valeur);
  return valeur;
}

struct pointAttendu {
  const char* nom;
  double c[3];  // metres; 0 for none
  double s[3];  // mm
  double a, b, gisement;
};
struct mesureAttendue {
  const char* genre;
  double ecart, residu, redondance, w, detectable, effet;  // mgr or mm; no redundancy: nothing behind it
};
struct paireAttendue {
  double a, b, gisement;
};
struct reseauAttendu {
  const char* nom;
  const char* texte;
  int redondance;
  double m0, bas, haut, facteur95;
  std::vector<pointAttendu> points;
  std::vector<mesureAttendue> mesures;
  paireAttendue mesuree, demandee;  // P-Q, P-D
  const wchar_t* wEtTau;            // as printed: of the largest |w|, 95 % of the first point and of P-D
  const wchar_t* ellipses;
  const wchar_t* paire95;
};

const std::vector<reseauAttendu>& reseauxAttendus() {
  static const std::vector<reseauAttendu> tous = {
      {"all kinds, fixed datum",
       kMixte,
       12,
       0.650602,
       0.605791,
       1.394533,
       2.787577,
       {{"D", {1010.00151, 2150.00335, 0}, {2.309422, 3.280168, 0}, 3.324147, 2.245658, 14.1141},
        {"P",
         {1085.00042, 2085.00020, 101.80274},
         {1.164111, 1.475840, 1.568668},
         1.539006,
         1.079222,
         26.0407},
        {"Q",
         {1189.99996, 2110.00159, 103.09913},
         {1.632971, 1.684683, 1.540823},
         1.739450,
         1.574505,
         160.1622}},
       {{"x", 10.00000, -10.49290, 0.873998, -1.12238, 44.17685, 5.72650},
        {"y", 15.00000, -3.65001, 0.887026, -0.25837, 65.77686, 7.48418},
        {"angle", 2.62644, -1.64587, 0.360202, -1.04413, 18.07357, 8.25439},
        {"distance", 6.04482, -4.15735, 0.791706, -0.77295, 28.05767, 3.84221},
        {"denivelee", 2.21039, -0.61365, 0.204549, -0.61383, 20.18460, 8.45045},
        {"angle", 1.92659, 0.08773, 0.506939, 0.06396, 11.17539, 8.47519},
        {"angle", 1.65431, -0.41964, 0.678632, -0.30792, 8.29374, 5.26907},
        {"distance", 6.17414, 6.38729, 0.863288, 1.11343, 27.44409, 3.81666},
        {"denivelee", 3.16228, -1.25598, 0.418659, -0.61383, 20.18460, 11.73414},
        {"gisement", 2.03731, -0.83701, 0.680387, -0.49808, 10.20069, 6.90379},
        {"distance", 6.32731, -1.49329, 0.823354, -0.26009, 28.79889, 5.09192},
        {"direction", 0.87232, 0.00563, 0.267954, 0.01247, 6.95980, 0.0},
        {"direction", 1.49822, 0.52324, 0.596477, 0.45219, 8.01179, 3.77089},
        {"distance", 6.26264, -2.28704, 0.859490, -0.39391, 27.89889, 3.93513},
        {"direction", 1.53777, -0.56873, 0.398966, -0.58552, 10.05483, 9.96047},
        {"angle", 2.42002, 0.94926, 0.107613, 1.19573, 30.46758, 39.66961},
        {"distance", 5.95372, -3.79099, 0.565798, -0.84651, 32.68944, 13.28368},
        {"direction", 1.08320, 0.05359, 0.162628, 0.12269, 11.09332, 11.60340},
        {"distance", 6.86272, 2.86266, 0.673542, 0.50827, 34.53536, 7.60107},
        {"direction", 1.58620, -0.11493, 0.348734, -0.12269, 11.09332, 11.60340},
        {"distance", 4.00000, 1.70824, 0.553266, 0.57415, 22.20971, 9.92187},
        {"denivelee", 3.00000, -1.13038, 0.376793, -0.61383, 20.18460, 12.57919}},
       {1.848156, 1.706830, 42.422840},
       {2.761386, 2.139191, 186.707239},
       L"    1.20    1.84",
       L"    9.27    6.26",
       L"      7.70"},
      {"free datum on four of six",
       kLibre,
       5,
       0.642625,
       0.407728,
       1.602030,
       3.401804,
       {{"A", {1000.01044, 2000.00015, 0}, {1.635486, 2.764344, 0}, 3.020794, 1.091429, 28.4685},
        {"B", {1240.00787, 1985.01379, 0}, {7.145256, 3.675236, 0}, 7.177688, 3.611487, 107.0091},
        {"C", {1114.98973, 2210.00544, 0}, {1.410007, 2.121689, 0}, 2.381221, 0.905246, 32.6619},
        {"D", {1009.99491, 2150.00103, 0}, {1.706131, 2.355673, 0}, 2.356933, 1.704390, 3.0143},
        {"P", {1084.99992, 2085.00337, 0}, {1.252122, 1.217083, 0}, 1.450876, 0.971628, 52.3743},
        {"Q", {1189.99709, 2110.01269, 0}, {1.974557, 2.430292, 0}, 2.491572, 1.896645, 22.0785}},
       {{"angle", 2.62655, -1.28749, 0.279807, -0.92668, 20.50723, 15.50304},
        {"distance", 6.04482, -4.63043, 0.637562, -0.95935, 31.26602, 8.74500},
        {"angle", 1.92651, -0.23522, 0.027884, -0.73118, 47.64757, 158.05414},
        {"angle", 1.65447, -0.14320, 0.552875, -0.11640, 9.18959, 9.61497},
        {"distance", 6.17414, 0.79265, 0.122892, 0.36622, 72.73858, 47.14904},
        {"distance", 6.32731, 0.0, 0.0, -1.0, -1.0, -1.0},
        {"direction", 0.87234, -0.25191, 0.127163, -0.80979, 10.10309, 8.57214},
        {"direction", 1.49806, 0.80379, 0.446952, 0.80257, 9.25443, 6.18463},
        {"distance", 6.26264, -2.36413, 0.558001, -0.50535, 34.62502, 11.81278},
        {"direction", 1.53754, -0.06414, 0.184829, -0.09703, 14.77043, 15.84314},
        {"angle", 2.41981, 0.37110, 0.043993, 0.73118, 47.64757, 47.17155},
        {"distance", 5.95372, -2.77977, 0.514662, -0.65082, 34.27500, 12.15909},
        {"direction", 1.08316, -0.04023, 0.142475, -0.09840, 11.85153, 9.61731},
        {"distance", 6.86272, 3.58765, 0.617114, 0.66547, 36.07976, 7.85577},
        {"direction", 1.58630, 0.08629, 0.305578, 0.09840, 11.85153, 9.61731},
        {"distance", 4.00000, 1.62102, 0.438215, 0.61219, 24.95550, 12.51731}},
       {2.675634, 1.921960, 35.897185},
       {2.969393, 2.396248, 199.089837},
       L"   -0.96   -1.49",
       L"   10.28    3.71",
       L"     10.10"},
  };
  return tous;
}

void comparerPoints(const reseauAttendu& attendu, const std::string& json) {
  for (const pointAttendu& p : attendu.points) {
    const std::size_t ou = json.find("\"" + std::string(p.nom) + "\": {");
    for (std::size_t axe = 0; axe < 3; ++axe) {
      const std::string lettre(1, "xyz"[axe]);
      if (p.c[axe] == 0.0) continue;
      EXPECT_NEAR(champ(json, ou, lettre), p.c[axe], 1.1e-5) << p.nom << lettre;
      EXPECT_NEAR(champ(json, ou, "s" + lettre) * 1e3, p.s[axe], 2e-5) << p.nom << lettre;
    }
    EXPECT_NEAR(champ(json, ou, "a") * 1e3, p.a, 2e-5) << p.nom;
    EXPECT_NEAR(champ(json, ou, "b") * 1e3, p.b, 2e-5) << p.nom;
    EXPECT_NEAR(champ(json, ou, "gisement"), p.gisement, 2e-3) << p.nom;
  }
}

void comparerMesures(const reseauAttendu& attendu, const std::string& json) {
  std::size_t ou = json.find("\"observations\"");
  for (const mesureAttendue& m : attendu.mesures) {
    ou = json.find("{\"type\"", ou + 1);
    ASSERT_NE(ou, std::string::npos);
    const std::string type = "{\"type\": \"" + std::string(m.genre) + "\"";
    EXPECT_EQ(json.compare(ou, type.size(), type), 0) << m.genre << json.substr(ou, 40);
    const auto egal = [&](const char* cle, double voulu, double marge, double unite) {
      const double lu = champ(json, ou, cle);
      EXPECT_NEAR(lu == -1.0 ? lu : lu * unite, voulu, marge) << m.genre << " " << m.ecart << " " << cle;
    };
    egal("ecart", m.ecart, 2e-5, 1e3);  // grades to mgr, metres to mm
    egal("residu", m.residu, 2e-4, 1e3);
    egal("redondance", m.redondance, 2e-5, 1.0);
    egal("w", m.w, 1e-4, 1.0);
    egal("detectable", m.detectable, 1e-6 + std::abs(m.detectable) * 1e-4, 1e3);
    egal("effet", m.effet, 1e-6 + std::abs(m.effet) * 2e-4, 1e3);
  }
  EXPECT_EQ(json.find("{\"type\"", ou + 1), std::string::npos);
}

TEST(Precision, EveryFigureIsThatOfAnotherRoute) {
  for (const reseauAttendu& attendu : reseauxAttendus()) {
    SCOPED_TRACE(attendu.nom);
    reseauCompense r;
    choixPonderes choix;
    choix.paires = {{L"P", L"D"}, {L"p", L"Q"}};
    compenser(attendu.texte, r, choix);
    const std::string json = jsonCompense(r);
    EXPECT_EQ(champ(json, 0, "redondance"), attendu.redondance);
    EXPECT_NEAR(champ(json, 0, "m0"), attendu.m0, 1e-5);
    EXPECT_NEAR(r.test.bas, attendu.bas, 1e-6);
    EXPECT_NEAR(r.test.haut, attendu.haut, 1e-6);
    EXPECT_NEAR(r.facteur95(), attendu.facteur95, 1e-6);
    comparerPoints(attendu, json);
    EXPECT_NE(lignesMesures(r, 1).at(1).find(attendu.wEtTau), std::wstring::npos);
    EXPECT_NE(lignesPoints(r).at(1).find(attendu.ellipses), std::wstring::npos);
    EXPECT_NE(lignesPaires(r, false).at(1).find(attendu.paire95), std::wstring::npos);
    comparerMesures(attendu, json);
    for (const ellipseDePaire& p : r.paires) {
      const std::wstring noms = r.reseau.point(p.a).nom + r.reseau.point(p.b).nom;
      if (noms != L"PQ" && (p.mesuree || noms != L"PD")) continue;
      const paireAttendue& voulue = noms == L"PQ" ? attendu.mesuree : attendu.demandee;
      EXPECT_NEAR(p.e.a * r.facteur() * 1e3, voulue.a, 2e-5);
      EXPECT_NEAR(p.e.b * r.facteur() * 1e3, voulue.b, 2e-5);
      EXPECT_NEAR(p.e.gisement * 63.66197724, voulue.gisement, 2e-3);
    }
  }
}

TEST(Precision, LimitsAreThoseOfPrintedTables) {
  const struct {
    const char* nom;
    double vu, table;
  } cas[] = {
      {"chi-square 95 %, 2", quantileKhi2(0.95, 2), 5.991},
      {"chi-square 2.5 %, 10", quantileKhi2(0.025, 10), 3.247},
      {"F 95 %, 2 and 10", quantileF(0.95, 2, 10), 4.103},
      {"normal 99.95 %", quantileNormal(0.9995), 3.291},
      {"tau 0.1 %, 10 (by Student's t of 9: 4.781)", limiteTau(0.001, 10), 2.6786},
      {"|w| of 10 measures", limiteW(10), 3.291},
      {"|w| of 5,000 measures, at 5 % of them all", limiteW(5000), 4.417},
  };
  for (const auto& c : cas) EXPECT_NEAR(c.vu, c.table, 6e-4) << c.nom;
}

TEST(Precision, MistakesAreNamedOneBehindTheOther) {
  reseauCompense r;
  compenser(std::string("A 0 0 10\nOBS\n") + kMesuresNiv + kFautes + kTroisieme, r);
  const struct {
    const wchar_t* nom;
    double w, erreur, m0Sans;  // mm
  } attendues[] = {{L"dénivelée de C à A", -10.87623, 37.428782, 4.290967},
                   {L"dénivelée de E à D", 8.20013, -23.525690, 2.940486},
                   {L"dénivelée de A à C", -6.52615, 23.851251, 0.400539}};
  ASSERT_EQ(r.suspectes.size(), 3U);  // what is left is good
  for (std::size_t i = 0; i < 3; ++i) {
    const mesureSuspecte& s = r.suspectes[i];
    EXPECT_EQ(r.reseau.nommer(r.reseau.mesures[static_cast<std::size_t>(s.mesure)]), attendues[i].nom);
    EXPECT_NEAR(s.w, attendues[i].w, 1e-5);
    EXPECT_NEAR(s.erreur * 1e3, attendues[i].erreur, 1e-5);
    EXPECT_NEAR(s.m0Sans, attendues[i].m0Sans, 1e-6);
  }
}

TEST(Precision, RobustWeightsSettleWhereTheyMust) {
  const struct {
    robustesse methode;
    double z[4];  // B, C, D, E
    double poidsAC, poidsED;
  } cas[] = {{robustesse::huber, {11.001824, 13.003646, 11.502414, 10.752528}, 0.22201, 0.14765},
             {robustesse::danoise, {11.001438, 13.002150, 11.502817, 10.750609}, 0.00009, 0.000001}};
  reseauCompense moyen;
  choixPonderes danoise;
  danoise.methode = robustesse::danoise;
  std::string repetee = "A 0 0 10\nOBS\n";  // one length of levelling five times, the last 9 mm off
  for (const char* const h : {"1.000", "1.001", "0.999", "1.0005", "1.0095"})
    repetee += "A . P . . " + std::string(h) + " . . . s=0.002\n";
  compenser(repetee, moyen, danoise);
  EXPECT_NEAR(moyen.bilan.poidsRobustes[4], 0.16228, 1e-3);
  EXPECT_NEAR(moyen.reseau.point(moyen.reseau.chercher(L"P")).c[2], 11.00049051, 1e-5);
  for (const auto& c : cas) {
    reseauCompense r;
    choixPonderes choix;
    choix.methode = c.methode;
    compenser(std::string("A 0 0 10\nOBS\n") + kMesuresNiv + kFautes, r, choix);
    for (int i = 0; i < 4; ++i)
      EXPECT_NEAR(r.reseau.point(r.reseau.chercher(std::wstring(1, L"BCDE"[i]))).c[2], c.z[i], 1e-5)
          << "BCDE"[i];
    EXPECT_NEAR(r.bilan.poidsRobustes[8], c.poidsAC, 1e-3);
    EXPECT_NEAR(r.bilan.poidsRobustes[9], c.poidsED, 1e-3);
    EXPECT_EQ(r.remarques.nombre(), 3U);  // the two measures, and m0
  }
}

TEST(Precision, FreedPointsGoWhereAnAdjustmentPutsThem) {
  reseauCompense r;
  compenser(std::string("A 0 0 10\nB 0 0 11.020\nD 0 0 11.5\nOBS\n") + kMesuresNiv, r);
  const struct {
    const wchar_t* nom;
    double ecart, test;
  } attendus[] = {{L"B", -0.019971, 20.256904}, {L"D", 0.017183, 9.688075}, {L"A", 0.013731, 6.186002}};
  ASSERT_EQ(r.connus.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(r.reseau.point(r.connus[i].point).nom, attendus[i].nom);
    EXPECT_TRUE(r.connus[i].altitude);
    EXPECT_NEAR(r.connus[i].ecart[2], attendus[i].ecart, 1e-6);
    EXPECT_NEAR(r.connus[i].test, attendus[i].test, 1e-4);
  }
}

TEST(Precision, EpochsAreComparedOnThePointsThatStay) {
  const struct {
    const char* nom;
    const char* points;
    std::vector<double> d, tests;  // mm
  } cas[] = {
      {"on A",
       "A 0 0 10\nOBS\n",
       {-0.74705882, 12.69411765, 0.30980392},
       {0.13468987, 28.08673310, 0.01703274}},
      {"free: on all but C",
       "A 0 0 10 libre\nB 0 0 11.001 libre\nC 0 0 13 libre\nD 0 0 11.5 libre\nOBS\n",
       {0.14575163, -0.60130719, 12.83986928, 0.45555556},
       {0.01059550, 0.27511889, 43.15987779, 0.11012107}},
  };
  for (const auto& c : cas) {
    reseauCompense premiere;
    reseauCompense seconde;
    compenser(std::string(c.points) + kEpoque1, premiere);
    compenser(std::string(c.points) + kEpoque2, seconde);
    comparaisonEpoques e;
    ASSERT_EQ(comparerEpoques(premiere, seconde, e), L"");
    EXPECT_NEAR(e.m0, 0.263885, 1e-6) << c.nom;
    EXPECT_NEAR(e.test, 183.68616, 1e-4) << c.nom;
    EXPECT_NEAR(e.limite, 4.75706, 1e-5) << c.nom;
    ASSERT_EQ(e.points.size(), c.d.size()) << c.nom;
    for (std::size_t i = 0; i < c.d.size(); ++i) {
      EXPECT_NEAR(e.points[i].d[2] * 1e3, c.d[i], 1e-6) << c.nom << i;
      EXPECT_NEAR(e.points[i].test, c.tests[i], 1e-5) << c.nom << i;
      EXPECT_EQ(e.points[i].bouge, e.points[i].nom == L"C") << c.nom << i;
    }
  }
}

}  // namespace
}  // namespace veltora
