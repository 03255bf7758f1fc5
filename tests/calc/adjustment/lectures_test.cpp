#include "base/text.h"
#include "calc/adjustment/lecture_gkf.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/network/formules_poids.h"
#include "support/remarques.h"

#include <gtest/gtest.h>
#include <cmath>
#include <string>
#include <vector>

namespace veltora {
namespace {

constexpr double kGrade = 3.14159265358979 / 200.0;
constexpr double kDegre = 3.14159265358979 / 180.0;
constexpr double kCc = kGrade / 1e4;
constexpr double kSeconde = kDegre / 3600.0;

std::wstring lire(const std::string& contenu, reseauPondere& r, base::Remarques& remarques,
                  const std::string& reseau = "", const std::string& defauts = "") {
  return lireGkf("<gama-local><network " + reseau + "><parameters sigma-apr=\"2\"/><points-observations " +
                     defauts + ">" + contenu + "</points-observations></network></gama-local>",
                 r, remarques);
}

TEST(LectureGkf, ValuesAndDeviationsByUnit) {
  constexpr const char* kDefauts =
      "angle-stdev=\"12\" direction-stdev=\"15\" azimuth-stdev=\"20\" distance-stdev=\"5 3 2\"";
  const struct {
    const char* mesure;
    const char* angles;
    genreMesure genre;
    double valeur, ecart, longueur;
  } cas[] = {
      {"<angle bs=\"A\" fs=\"B\" val=\"50.5\" stdev=\"10\"/>", "left-handed", genreMesure::angle,
       50.5 * kGrade, 10 * kCc, -1},
      {"<angle bs=\"A\" fs=\"B\" val=\"50.5\"/>", "right-handed", genreMesure::angle, -50.5 * kGrade,
       12 * kCc, -1},
      {"<angle bs=\"A\" fs=\"B\" val=\"30-15-36\" stdev=\"10\"/>", "left-handed", genreMesure::angle,
       30.26 * kDegre, 10 * kSeconde, -1},
      {"<angle bs=\"A\" fs=\"B\" val=\"-0-30-00\"/>", "left-handed", genreMesure::angle, -0.5 * kDegre,
       12 * kSeconde, -1},
      {"<direction to=\"A\" val=\"100\"/>", "right-handed", genreMesure::direction, -100 * kGrade, 15 * kCc,
       -1},
      {"<azimuth to=\"A\" val=\"100\"/>", "right-handed", genreMesure::gisement, 100 * kGrade, 20 * kCc, -1},
      {"<distance to=\"A\" val=\"500\"/>", "", genreMesure::distance, 500, 0.005 + 0.003 * 0.25, -1},
      {"<distance to=\"A\" val=\"500\" stdev=\"7\"/>", "", genreMesure::distance, 500, 0.007, -1},
      {"<dh to=\"A\" val=\"-1.25\" dist=\"0.25\"/>", "", genreMesure::denivelee, -1.25, 0.001, 250},
      {"<dh to=\"A\" val=\"-1.25\" dist=\"0.25\" stdev=\"3\"/>", "", genreMesure::denivelee, -1.25, 0.003,
       250},
      {"<dh to=\"A\" val=\"-1.25\"/>", "", genreMesure::denivelee, -1.25, 0.0, -1},
  };
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    ASSERT_EQ(lire("<obs from=\"S\">" + std::string(c.mesure) + "</obs>", r, remarques,
                   "angles=\"" + std::string(c.angles) + "\"", kDefauts),
              L"")
        << c.mesure;
    const mesurePonderee& m = r.mesures.at(0);
    EXPECT_EQ(m.genre, c.genre) << c.mesure;
    EXPECT_NEAR(m.valeur, c.valeur, 1e-12) << c.mesure;
    EXPECT_NEAR(m.ecart, c.ecart, 1e-15) << c.mesure;
    EXPECT_EQ(m.longueur, c.longueur < 0 ? base::Z_ABSENT : c.longueur) << c.mesure;
    EXPECT_EQ(r.point(m.station).nom, L"S") << c.mesure;
    EXPECT_EQ(r.point(m.vise).nom, c.genre == genreMesure::angle ? L"B" : L"A") << c.mesure;
    EXPECT_EQ(m.reference >= 0, c.genre == genreMesure::angle) << c.mesure;
    EXPECT_EQ(m.tour >= 0, c.genre == genreMesure::direction) << c.mesure;
    EXPECT_EQ(r.m0Apriori, 2.0);
  }
}

TEST(LectureGkf, WithoutAWordTheUnitOfWeightIsTen) {
  reseauPondere r;
  base::Remarques remarques;
  ASSERT_EQ(lireGkf("<gama-local><network><points-observations><obs from=\"S\"><dh to=\"A\" val=\"1\" "
                    "dist=\"4\"/></obs>"
                    "</points-observations></network></gama-local>",
                    r, remarques),
            L"");
  EXPECT_EQ(r.m0Apriori, 10.0);
  EXPECT_NEAR(r.mesures.at(0).ecart, 0.020, 1e-15);  // 10 mm times the root of 4 km
}

TEST(LectureGkf, AxesAreTurnedToEastAndNorth) {
  const struct {
    const char* axes;
    double X, Y;  // of x="1" y="2"
  } cas[] = {{"ne", 2, 1}, {"nw", -2, 1}, {"se", 2, -1}, {"sw", -2, -1},
             {"en", 1, 2}, {"wn", -1, 2}, {"es", 1, -2}, {"ws", -1, -2}};
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    ASSERT_EQ(
        lire(
            "<point id=\"A\" x=\"1\" y=\"2\" z=\"3\" fix=\"xy\" adj=\"Z\"/><coordinates>"
            "<point id=\"A\" x=\"1\" y=\"2\" z=\"3\"/><cov-mat dim=\"3\" band=\"2\">4 1 0.5 9 -2 16</cov-mat>"
            "</coordinates>",
            r, remarques, "axes-xy=\"" + std::string(c.axes) + "\""),
        L"")
        << c.axes;
    const pointPondere& p = r.points.at(0);
    EXPECT_EQ(p.c, (std::array<double, 3>{c.X, c.Y, 3})) << c.axes;
    EXPECT_TRUE(p.planFixe()) << c.axes;
    EXPECT_EQ(p.statut[2], statutCoordonnee::libre) << c.axes;
    // Observed coordinates, mm squared: the signs of the axes turn the covariances too.
    ASSERT_EQ(r.mesures.size(), 3U) << c.axes;
    const bool nordDabord = c.axes[0] == 'n' || c.axes[0] == 's';
    const double signeX = (nordDabord ? c.Y : c.X) < 0 ? -1 : 1;
    const double signeY = (nordDabord ? c.X : c.Y) < 0 ? -1 : 1;
    EXPECT_EQ(r.mesures[0].genre, nordDabord ? genreMesure::Y : genreMesure::X) << c.axes;
    EXPECT_EQ(r.mesures[1].valeur, nordDabord ? c.X : c.Y) << c.axes;
    EXPECT_EQ(r.mesures[2].genre, genreMesure::Z) << c.axes;
    const double voulues[9] = {
        4, signeX * signeY, 0.5 * signeX, signeX * signeY, 9, -2 * signeY, 0.5 * signeX, -2 * signeY, 16};
    for (std::size_t i = 0; i < 9; ++i)
      EXPECT_NEAR(r.blocs.at(0).C[i] * 1e6, voulues[i], 1e-9) << c.axes << i;
    EXPECT_NEAR(r.mesures[1].ecart, 0.003, 1e-12) << c.axes;
  }
}

TEST(LectureGkf, StatusByLettersAndWhatHasNoValueStaysOpen) {
  using s = statutCoordonnee;
  const struct {
    const char* point;
    std::array<s, 3> statut;
  } cas[] = {
      {"x=\"1\" y=\"2\" z=\"3\" fix=\"XYZ\"", {s::fixe, s::fixe, s::fixe}},
      {"x=\"1\" y=\"2\" z=\"3\" fix=\"z\" adj=\"xy\"", {s::approche, s::approche, s::fixe}},
      {"x=\"1\" y=\"2\" adj=\"XYz\"", {s::libre, s::libre, s::absente}},
      {"adj=\"XYZ\"", {s::absente, s::absente, s::absente}},
  };
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    EXPECT_EQ(lire("<point id=\"A\" " + std::string(c.point) + "/>", r, remarques), L"aucune observation");
    EXPECT_EQ(r.points.at(0).statut, c.statut) << c.point;
  }
}

TEST(LectureGkf, CovariancesFollowUnitsAndSkipWhatIsNotRead) {
  reseauPondere r;
  base::Remarques remarques;
  // A right-handed angle in gon, a slope distance that is not read, a length, an angle in seconds; band of 2.
  ASSERT_EQ(lire("<obs from=\"S\"><angle bs=\"A\" fs=\"B\" val=\"50\"/><s-distance to=\"A\" val=\"9\"/>"
                 "<distance to=\"A\" val=\"9\"/><angle bs=\"A\" fs=\"B\" val=\"30-00-00\"/>"
                 "<cov-mat dim=\"4\" band=\"2\">100 1 3 64 1 1 25 2 36</cov-mat></obs>",
                 r, remarques, "angles=\"right-handed\""),
            L"");
  EXPECT_EQ(phrasesDe(remarques).back(), "à vérifier : <s-distance to=\"A\"> n'est pas lu, laissé de côté");
  ASSERT_EQ(r.mesures.size(), 3U);
  const double u[3] = {-kCc, 1e-3, -kSeconde};
  const double C[3][3] = {{100, 3, 0}, {3, 25, 2}, {0, 2, 36}};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j)
      EXPECT_NEAR(r.blocs.at(0).C[3 * i + j] / (u[i] * u[j]), C[i][j], 1e-9) << i << j;
  EXPECT_NEAR(r.mesures[2].ecart / kSeconde, 6.0, 1e-9);
}

TEST(LectureGkf, RefusalsNameTheElement) {
  const struct {
    const char* contenu;
    const wchar_t* dit;
  } cas[] = {
      {"<obs from=\"S\"><angle bs=\"A\" fs=\"B\" val=\"30-75-00\"/></obs>",
       L"<angle bs=\"A\" fs=\"B\"> : « val=\"30-75-00\" » n'est pas un angle"},
      {"<obs from=\"S\"><distance to=\"A\" val=\"-3\"/></obs>",
       L"<distance to=\"A\"> : distance nulle ou négative"},
      {"<obs from=\"S\"><distance to=\"A\" val=\"3\" stdev=\"0\"/></obs>",
       L"<distance to=\"A\"> : « stdev » doit être positif"},
      {"<obs from=\"S\"><distance to=\"A\" val=\"trois\"/></obs>",
       L"<distance to=\"A\"> : « val=\"trois\" » n'est pas un nombre"},
      {"<obs><distance to=\"A\" val=\"3\"/></obs>", L"<obs> : attribut « from » absent"},
      {"<obs from=\"A\"><distance to=\"A\" val=\"3\"/></obs>",
       L"<distance to=\"A\"> : visée d'un point sur lui-même"},
      {"<obs from=\"S\"><distance to=\"A\" val=\"3\"/><cov-mat dim=\"1\" band=\"0\">4 4</cov-mat></obs>",
       L"<cov-mat> : <cov-mat> a des nombres en trop"},
      {"<obs from=\"S\"><distance to=\"A\" val=\"3\"/><cov-mat dim=\"1\" band=\"0\"></cov-mat></obs>",
       L"<cov-mat> : <cov-mat> incomplète ou illisible"},
      {"<obs from=\"S\"><distance to=\"A\" val=\"3\"/><cov-mat dim=\"1\" band=\"1\">4</cov-mat></obs>",
       L"<cov-mat> : <cov-mat> de dimension 1 et de bande 1 pour 1 mesures"},
  };
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    EXPECT_EQ(lire(c.contenu, r, remarques), c.dit) << c.contenu;
  }
}

TEST(LectureGkf, DoubtsNameTheLikelyCause) {
  const struct {
    const char* contenu;
    const char* dit;
  } cas[] = {
      {"<point id=\"A\" x=\"1\" y=\"2\" fix=\"xy\"/><point id=\"A\" x=\"1\" y=\"2.5\" fix=\"xy\"/>",
       "à vérifier : le point « A » est donné deux fois, avec des coordonnées qui se contredisent (0.500 m "
       "en X) ; les "
       "dernières servent\n"},
      {"<point id=\"A\" x=\"1\" y=\"2\" fix=\"xy\"/><point id=\"A\" x=\"1\" y=\"2\" z=\"3\"/>", ""},
      {"<obs from=\"S\"><distance to=\"A\" val=\"9\" stdev=\"0.005\"/></obs>",
       "à vérifier : <distance to=\"A\"> : écart-type infime, il se donne en millimètres, sans doute des "
       "mètres\n"},
      {"<obs from=\"S\"><distance to=\"A\" val=\"9\" stdev=\"2000\"/></obs>",
       "à vérifier : <distance to=\"A\"> : écart-type démesuré, il se donne en millimètres\n"},
      {"<obs from=\"S\"><azimuth to=\"A\" val=\"9\" stdev=\"0.001\"/></obs>",
       "à vérifier : <azimuth to=\"A\"> : écart-type infime, il se donne en secondes (centésimales des "
       "grades)\n"},
      {"<obs from=\"S\"><dh to=\"A\" val=\"-1.5\" dist=\"850\"/></obs>",
       "à vérifier : <dh to=\"A\"> : longueur de 850 km pour une dénivelée de -1.500 m, « dist » se donne en "
       "kilomètres\n"},
  };
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    lire("<obs from=\"S\"><dh to=\"T\" val=\"1\" stdev=\"2\"/></obs>" + std::string(c.contenu), r, remarques,
         "axes-xy=\"ne\"");
    std::string doutes;
    for (const base::Remarque& remarque : remarques)
      if (remarque.douteuse) doutes += base::toUtf8(remarque.phrase()) + "\n";
    EXPECT_EQ(doutes, c.dit) << c.contenu;
  }
}

TEST(LectureMcPonderee, WordsBehindALine) {
  const struct {
    const char* ligne;
    genreMesure genre;  // of the last measure
    double valeur, ecart, longueur;
  } cas[] = {
      {"S NORD A 100 50 1.5 . . . s=2 s=0.003 s=0.001", genreMesure::denivelee, 1.5, 0.001, 50},
      {"S NORD A 100 50 . . . . s=2 s=0.003", genreMesure::distance, 50, 0.003, -1},
      {"S NORD A 100 . . . . . S=2", genreMesure::gisement, 100 * kGrade, 2e-3 * kGrade, -1},
      {"S B A 100 . . . . . s=2", genreMesure::angle, 100 * kGrade, 2e-3 * kGrade, -1},
      {"S B A 100 . . . . . s=2 tour=1", genreMesure::direction, 100 * kGrade, 2e-3 * kGrade, -1},
      {"S . A . . 1.5 . . . l=850", genreMesure::denivelee, 1.5, 0.0, 850},
      {"S . A . 50 1.5 . . . l=850", genreMesure::denivelee, 1.5, 0.0, 850},
      {"S . A . . 1.5", genreMesure::denivelee, 1.5, 0.0, -1},
      {"S . A . 50\nS . A . . 1.5", genreMesure::denivelee, 1.5, 0.0, -1},
      {"S . A . 50 . . 40000", genreMesure::distance, 50, 0.005, -1},
  };
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    ASSERT_EQ(lireMcPondere("A 0 0\nB 9 9\nOBS\n" + std::string(c.ligne) + "\n", r, remarques), L"")
        << c.ligne;
    const mesurePonderee& m = r.mesures.back();
    EXPECT_EQ(m.genre, c.genre) << c.ligne;
    EXPECT_NEAR(m.valeur, c.valeur, 1e-12) << c.ligne;
    EXPECT_NEAR(m.ecart, c.ecart, 1e-15) << c.ligne;
    EXPECT_EQ(m.longueur, c.longueur < 0 ? base::Z_ABSENT : c.longueur) << c.ligne;
    EXPECT_EQ(m.ligne, std::string(c.ligne).find('\n') == std::string::npos ? 4 : 5) << c.ligne;
    EXPECT_FALSE(remarques.douteuses()) << c.ligne;
  }
}

TEST(LectureMcPonderee, RoundsAreOfTheirStation) {
  reseauPondere r;
  base::Remarques remarques;
  ASSERT_EQ(lireMcPondere("A 0 0\nOBS\nS NORD A 1 . . . . . tour=1\nT NORD A 1 . . . . . tour=1\n"
                          "s NORD B 2 . . . . . tour=1\nS NORD A 3 . . . . . tour=2\n",
                          r, remarques),
            L"");
  std::vector<int> tours;
  for (const mesurePonderee& m : r.mesures) tours.push_back(m.tour);
  EXPECT_EQ(tours, (std::vector<int>{0, 1, 0, 2}));
  EXPECT_EQ(r.stationsDesTours, (std::vector<int>{r.chercher(L"S"), r.chercher(L"T"), r.chercher(L"S")}));
}

TEST(LectureMcPonderee, PointsAndTheirWords) {
  using s = statutCoordonnee;
  const struct {
    const char* point;
    std::array<s, 3> statut;
    std::vector<double> ecarts;  // of its observed coordinates
  } cas[] = {
      {"A 1 2 3", {s::fixe, s::fixe, s::fixe}, {}},
      {"A 1 2", {s::fixe, s::fixe, s::absente}, {}},
      {"A 1 2 3 libre", {s::libre, s::libre, s::libre}, {}},
      {"A 1 2 3 Approché", {s::approche, s::approche, s::approche}, {}},
      {"A 1 2 3 s=0.01", {s::approche, s::approche, s::approche}, {0.01, 0.01, 0.01}},
      {"A 1 2 3 s=0.01 s=0.02 s=0.03", {s::approche, s::approche, s::approche}, {0.01, 0.02, 0.03}},
      {"A 1 2 s=0.01 s=0.02", {s::approche, s::approche, s::absente}, {0.01, 0.02}},
  };
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    ASSERT_EQ(lireMcPondere(std::string(c.point) + "\nOBS\nS NORD A 1\n", r, remarques), L"") << c.point;
    EXPECT_EQ(r.points.at(0).statut, c.statut) << c.point;
    ASSERT_EQ(r.mesures.size(), c.ecarts.size() + 1) << c.point;
    for (std::size_t i = 0; i < c.ecarts.size(); ++i) {
      EXPECT_EQ(r.mesures[i].genre,
                static_cast<genreMesure>(static_cast<int>(genreMesure::X) + static_cast<int>(i)));
      EXPECT_EQ(r.mesures[i].valeur, static_cast<double>(i + 1)) << c.point;
      EXPECT_EQ(r.mesures[i].ecart, c.ecarts[i]) << c.point;
    }
  }
}

TEST(LectureMcPonderee, FormulasWeighWhatHasNoDeviation) {
  reseauPondere r;
  base::Remarques remarques;
  // From S at 0 0: A 30 m north, B 40 m east, so that A and B are 50 m apart.
  ASSERT_EQ(
      lireMcPondere("S 0 0\nA 0 30\nB 40 0\nOBS\nS A B 100 40\nS NORD B 100\nS NORD B 100 . . . . . s=1\n"
                    "S . A . . 1\n",
                    r, remarques),
      L"");
  formulesPoids formules;
  formules.gisements = "d1+ang*10";  // of angles too
  formules.distances = "d1*d1";
  EXPECT_EQ(peserParFormules(r, formules), L"");
  const double poids[] = {30 + 1000, 1600, 40 + 1000};
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_NEAR(1.0 / std::pow(r.mesures[i].ecart, 2) / poids[i], 1.0, 1e-9) << i;
  EXPECT_NEAR(r.mesures[3].ecart, 1e-3 * kGrade, 1e-12);
  EXPECT_EQ(r.mesures[4].ecart, 0.0);
  formules.gisements = "d2+100*d3";
  r.mesures[0].ecart = 0.0;
  EXPECT_EQ(peserParFormules(r, formules), L"");
  EXPECT_NEAR(1.0 / std::pow(r.mesures[0].ecart, 2), 40 + 5000, 1e-6);
  formules.distances = "0-1";
  r.mesures[1].ecart = 0.0;
  EXPECT_EQ(peserParFormules(r, formules), L"distance de S à B");
}

TEST(LectureMcPonderee, DoubtsNameTheLikelyCause) {
  const struct {
    const char* texte;
    const char* dit;  // nothing when there must be no doubt
  } cas[] = {
      {"A 0 0\nA 0 0.0005\nOBS\nS NORD A 1\n", ""},
      {"A 0 0\nA 0 0.002\nOBS\nS NORD A 1\n",
       "à vérifier : ligne 2 : le point « A » est donné deux fois, avec des coordonnées qui se contredisent "
       "(0.002 m "
       "en Y) ; celles de la ligne 1 servent\n"},
      {"A 0 0\nOBS\nS NORD A 1 5 . . . . s=2\n",
       "à vérifier : ligne 3 : 1 s= pour 2 mesures : en donner un par mesure, dans leur ordre\n"},
      {"A 0 0\nOBS\nS NORD A 1 . . . . . s=0.001\n",
       "à vérifier : ligne 3 : écart-type de 0.001 mgr : s= se donne en milligrades pour les angles, sans "
       "doute des "
       "grades\n"},
      {"A 0 0\nOBS\nS . A . 5 . . . . s=3\n",
       "à vérifier : ligne 3 : écart-type de 3.0 m : s= se donne en mètres pour les longueurs, sans doute "
       "des "
       "millimètres\n"},
      {"A 0 0\nOBS\nS . A . 5 . . 40000\nS . A . 5\n",
       "à vérifier : 1 poids du fichier pris pour 1/s², s en radians et en mètres, les autres mesures ont "
       "l'écart-type "
       "de leur genre : poids et écarts-types se mêlent\n"},
      {"A 0 0\nOBS\nS . A . 5\nS . S . 5\n",
       "à vérifier : ligne 4 : visée d'un point sur lui-même, ignorée : distance de S à S\n"},
      {"A 0 0\nOBS\nS . A . 5\nS . A . -5\n",
       "à vérifier : ligne 4 : distance nulle ou négative, ignorée : distance de S à A\n"},
      {"A 0 0 1 s=0.01 s=0.02\nOBS\nS . A . . 1\n",
       "à vérifier : ligne 1 : 2 s= pour 3 coordonnées : en donner un, ou un par coordonnée\n"},
      {"A 0 0 1\nOBS\nS . A . . -10.5 . . . l=0.85\n",
       "à vérifier : ligne 3 : longueur de 0.85 m pour une dénivelée de -10.500 m : l= se donne en mètres\n"},
      {"A 0 0 1\nOBS\nS . A . . 10.5 . . . l=850000\n",
       "à vérifier : ligne 3 : longueur de 850000 m pour une dénivelée de 10.500 m : l= se donne en "
       "mètres\n"},
      {"A 0 0 1\nOBS\nS . A . 5 10.5\nS . A . . ? . . . l=5\n", ""},
  };
  for (const auto& c : cas) {
    reseauPondere r;
    base::Remarques remarques;
    ASSERT_EQ(lireMcPondere(c.texte, r, remarques), L"") << c.texte;
    std::string doutes;
    for (const base::Remarque& remarque : remarques)
      if (remarque.douteuse) doutes += base::toUtf8(remarque.phrase()) + "\n";
    EXPECT_EQ(doutes, c.dit) << c.texte;
  }
}

}  // namespace
}  // namespace veltora
