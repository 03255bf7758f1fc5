#include "base/format.h"
#include "base/text.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/reseau_compense.h"
#include "support/remarques.h"

#include <gtest/gtest.h>
#include <string>

namespace veltora {
namespace {

std::wstring compenser(const std::string& texte, reseauCompense& r) {
  const std::wstring erreur = lireMcPondere(texte, r.reseau, r.remarques);
  return erreur.empty() ? compenserReseau({}, r) : erreur;
}

TEST(Depart, PlacesFromWhateverLeadsToThem) {
  // Truth: A 0 0, B 300 20, C 180 250, P 100 80, Q 170 120.
  const struct {
    const char* nom;
    const char* texte;
    double x = 100.0, y = 80.0;
  } cas[] = {
      {"two bearings", "A 0 0\nB 300 20\nOBS\nA NORD P 57.04466\nB NORD P 318.55472\n"},
      {"a bearing and a length", "A 0 0\nOBS\nA NORD P 57.04466 128.0625\n"},
      {"an angle and a length", "A 0 0\nB 300 20\nOBS\nA B P 361.28252 128.0625\n"},
      {"back along its own bearing", "A 0 0\nOBS\nP NORD A 257.04466 128.0625\n"},
      {"three lengths",
       "A 0 0\nB 300 20\nC 180 250\nOBS\nA . P . 128.0625\nB . P . 208.8061\nC . P . 187.8829\n"},
      {"two lengths and a place near",
       "A 0 0\nB 300 20\nP 99 81 approche\nOBS\nA . P . 128.0625\nB . P . 208.8061\n"},
      {"two lengths and a place on the other side",
       "A 0 0\nB 300 20\nP 110 -65 approche\nOBS\nA . P . 128.0625\nB . P . 208.8061\n", 109.7345, -66.0177},
      {"angles alone from a place far away, where whole steps do not come back",
       "A 0 0\nB 300 20\nC 180 250\nP -125 765 approche\nOBS\nP A B 261.51006\nP A C 170.95659\n"},
      {"two lengths, an angle tells the side",
       "A 0 0\nB 300 20\nOBS\nA B P 361.28252 128.0625\nB . P . 208.8061\n"},
      {"a round of readings at the point",
       "A 0 0\nB 300 20\nC 180 250\nOBS\nP NORD A 240.04466 . . . . . tour=1\nP NORD B 101.55472 . . . . . "
       "tour=1\n"
       "P NORD C 11.00125 . . . . . tour=1\n"},
      {"two known points seen from two new ones that see each other, angles alone",
       "A 0 0\nB 300 20\nOBS\nP Q A 190.09453\nQ P A 393.91921\nP Q B 51.60458\nQ P B 274.79275\n"},
      {"a figure of its own, turned by a bearing between new points",
       "A 0 0\nOBS\nQ NORD P 266.95013 80.6226\nP Q A 190.09453 128.0625\n"},
  };
  for (const auto& c : cas) {
    reseauCompense r;
    ASSERT_EQ(compenser(c.texte, r), L"") << c.nom << "\n" << texteDe(r.remarques);
    const pointPondere& p = r.reseau.point(r.reseau.chercher(L"P"));
    EXPECT_NEAR(p.c[0], c.x, 0.005) << c.nom;
    EXPECT_NEAR(p.c[1], c.y, 0.005) << c.nom;
    // From a place that fits the measures there is next to nothing left to do.
    if (std::string(c.texte).find("approche") == std::string::npos) {
      EXPECT_LE(r.bilan.passes, 3) << c.nom;
    }
    EXPECT_FALSE(r.remarques.douteuses()) << c.nom << "\n" << texteDe(r.remarques);
  }
}

TEST(Depart, WhatCannotBePlacedIsNamedAndTheRestComputed) {
  const struct {
    const char* texte;
    const char* doute;
  } cas[] = {
      {"A 0 0\nB 300 20\nOBS\nA NORD Q 60 100\nA . P . 128.0625\nB . P . 208.8061\n",
       "deux positions symétriques conviennent également, donner des coordonnées « approche » : P"},
      {"A 0 0\nB 300 20\nOBS\nA NORD Q 60 100\nS T U 60 100\n",
       "(îlot sans lien suffisant avec les points donnés, ou coordonnées approchées à fournir avec « "
       "approche ») : S, "
       "U, T"},
      {"A 0 0\nB 300 20\nOBS\nA NORD Q 60 100\nA . P . 50\nB . P . 60\n",
       "les mesures de « P » se contredisent, il est laissé de côté avec elles ; mesuré moins calculé là où "
       "elles "
       "s'accordent le mieux : les distances à « A » et « B » ne se coupent pas, il s'en faut de 190.666 m"},
      // C 60 m too far: nobody can tell which of the three is wrong; the best place leaves 36 m at B.
      {"A 0 0\nB 300 20\nC 180 250\nOBS\nA NORD Q 60 100\nA . P . 128.0625\nB . P . 208.8061\nC . P . "
       "247.8829\n",
       "les mesures de « P » se contredisent, il est laissé de côté avec elles ; mesuré moins calculé là où "
       "elles "
       "s'accordent le mieux : distance à « B » : +36.198 m, distance à « A » : "},
      // S at 160 160 sees B on the other side than B sees S; a figure of S without lengths must not take Q's.
      {"A 0 0\nB 300 20\nOBS\nA NORD Q 60 100\nS NORD A 100 . . . . . tour=1\nS NORD B 200 . . . . . tour=1\n"
       "A NORD S 50\nB NORD S 150\n",
       "les mesures de « S » se contredisent, il est laissé de côté avec elles ; mesuré moins calculé là où "
       "elles "
       "s'accordent le mieux : "},
      {"A 0 0\nB 300 20\nOBS\nA NORD R 60 100\nP Q A 190.09453\nQ . P . 84.6537\nQ P A 393.91921\nP "
       "Q B 51.60458\n"
       "Q P B 274.79275\n",
       "une figure mesurée ne se cale pas sur A, B : ses distances sont à multiplier par 0.95238 pour y "
       "passer"},
      {"A 0 0 5\nOBS\nA . Q . . 1\nS . T . . 1\n",
       "sans altitude de départ, aucune dénivelée ne les joint à un point d'altitude donnée : S, T"},
  };
  for (const auto& c : cas) {
    reseauCompense r;
    ASSERT_EQ(compenser(c.texte, r), L"") << c.texte;
    EXPECT_NE(texteDe(r.remarques).find(c.doute), std::string::npos) << c.texte << texteDe(r.remarques);
  }
}

TEST(Depart, AMajorityPlacesAPointAndTheMistakeIsNamed) {
  reseauCompense r;
  // D lies at 400 300; its length is 100 m too short.
  ASSERT_EQ(compenser("A 0 0\nB 300 20\nC 180 250\nD 400 300\nOBS\nA . P . 128.0625\nB . P . 208.8061\n"
                      "C . P . 187.8829\nD . P . 272.0215\n",
                      r),
            L"");
  ASSERT_FALSE(r.suspectes.empty());
  EXPECT_EQ(r.reseau.nommer(r.reseau.mesures[static_cast<std::size_t>(r.suspectes[0].mesure)]),
            L"distance de D à P");
  EXPECT_NEAR(r.suspectes[0].erreur, -100.0, 30.0);  // the linearised size of so large an error
}

TEST(Depart, MistakenInputIsToldWithItsCause) {
  const struct {
    const wchar_t* cause;  // nothing: what is right must not be accused
    double angles, distances;
    bool echange;
  } cas[] = {
      {L"", 1, 1, false},
      {L"des angles en degrés lus en grades", 0.9, 1, false},
      {L"des angles en grades lus en degrés", 1 / 0.9, 1, false},
      {L"des angles comptés dans l'autre sens", -1, 1, false},
      {L"des distances en millimètres", 1, 1000, false},
      {L"des distances en kilomètres", 1, 0.001, false},
      {L"des distances en pieds", 1, 1 / 0.3048, false},
      {L"X et Y des points donnés échangés", 1, 1, true},
  };
  for (const auto& c : cas) {
    std::string texte = c.echange ? "A 0 0\nB 20 300\nC 250 180\nOBS\n" : "A 0 0\nB 300 20\nC 180 250\nOBS\n";
    const auto visee = [&](const char* visees, double angle, double distance) {
      texte += base::formater("%s %.6f %.7f\n", visees, angle * c.angles, distance * c.distances);
    };
    visee("A B P", -38.71748, 128.0625);
    visee("B A P", 22.79258, 208.8061);
    visee("P A C", 170.95659, 187.8829);
    visee("P A B", -138.48994, 208.8061);
    reseauCompense r;
    const std::wstring erreur = compenser(texte, r);
    const std::string dit = base::toUtf8(erreur) + texteDe(r.remarques);
    EXPECT_EQ(dit.find("en supposant") == std::string::npos, c.cause[0] == L'\0') << dit;
    EXPECT_NE(dit.find(base::toUtf8(c.cause)), std::string::npos) << dit;
  }
}

TEST(Depart, HeightsRunAlongTheLevelledLinesBothWays) {
  reseauCompense r;
  ASSERT_EQ(compenser("A 0 0 10\nOBS\nA . P . . 1.5\nQ . P . . 0.5\nQ . R . . -2\n", r), L"");
  const std::pair<const wchar_t*, double> hauteurs[] = {{L"P", 11.5}, {L"Q", 11.0}, {L"R", 9.0}};
  for (const auto& [nom, z] : hauteurs) EXPECT_NEAR(r.reseau.point(r.reseau.chercher(nom)).c[2], z, 1e-9);
}

TEST(Mouvements, FloatingPartsAreToldByPointsAndMotions) {
  const struct {
    const char* texte;
    const wchar_t* dit;
  } cas[] = {
      {"A 0 0 approche\nB 100 0 approche\nC 50 80 approche\nOBS\nA B C 360\nB C A 360\nC A B 280\n",
       L"A, B, C : translation en X, translation en Y, rotation, échelle\n"},
      {"A 0 0 approche\nB 100 0 approche\nC 50 80 approche\nOBS\nA NORD B 100\nB NORD C 350\nA NORD C 30\n",
       L"A, B, C : translation en X, translation en Y, échelle\n"},
      {"A 0 0\nB 100 0 approche\nC 50 80 approche\nOBS\nA B C 360\nB C A 360\nA . B . 100\n",
       L"B, C : rotation\n"},
      {"A 0 0\nB 100 0 approche\nC 50 80 approche\nOBS\nA NORD B 100\nB NORD C 350\nA NORD C 36\n",
       L"B, C : échelle\n"},
      {"A 0 0\nP 30 70 approche\nOBS\nA NORD P 26\n",
       L"P : une mesure manque, il glisse vers le gisement 26 grades\n"},
      {"A 0 0\nP 30 70 approche\nOBS\nA . P . 76\n",
       L"P : une mesure manque, il glisse vers le gisement 126 grades\n"},
      {"A 0 0 5 approche\nB 0 0 8 approche\nOBS\nA . B . . 3\n", L"A, B : translation en Z\n"},
      {"A 0 0\nB 100 0\nC 100 100 approche\nD 0 100 approche\nOBS\nA . D . 100\nD . C . 100\nC . B . 100\n",
       L"C, D : translation en X\n"},
      {"A 0 0\nB 100 0\nC 90 80 approche\nD 10 70 approche\nE 40 120 approche\nOBS\nA . D . 70.711\nD . E . "
       "58.310\n"
       "E . C . 64.031\nC . B . 80.623\n",
       L"C, D, E : rotation, déformation\n"},
      {"A 0 0\nP 70 70 approche\nQ -70 70 approche\nOBS\nA NORD P 50\nA . Q . 99\n",
       L"P : une mesure manque, il glisse vers le gisement 50 grades\n"
       L"  Q : une mesure manque, il glisse vers le gisement 50 grades\n"},
  };
  for (const auto& c : cas) {
    reseauCompense r;
    const std::wstring dit = compenser(c.texte, r);
    EXPECT_NE(dit.find(L"ne tiennent pas :\n  " + std::wstring(c.dit) + L"Donner"), std::wstring::npos)
        << c.texte << base::toUtf8(dit);
  }
}

TEST(Mouvements, WhatIsHardlyHeldIsToldByItsMotion) {
  const struct {
    const char* texte;
    const char* dit;
  } cas[] = {
      {"A 0 0\nB 100 0 approche\nC 50 80 approche\nOBS\nA . B . 100\nA . C . 94.340\nB . C . 94.340\n"
       "A NORD B 100 . . . . . s=8000\n",
       "presque libres : B, C : rotation\n"},
      {"A 0 0\nB 100 0 approche\nC 50 80 approche\nOBS\nA NORD B 100\nA NORD C 35.5994\nB NORD C 364.4006 "
       "94.34 . . . . "
       "s=1 s=20\n",
       "presque libres : B, C : échelle\n"},
      {"A 0 0 s=20\nB 100 0 approche\nC 50 80 approche\nOBS\nA NORD B 100 100\nA NORD C 35.5994 94.34\nB . C "
       ". 94.34\n",
       "presque libres : A, B, C : translation en X, translation en Y\n"},
      {"A 0 0\nB 100 0\nOBS\nA NORD P 35.5994 . . . . . s=1\nA . P . 94.34 . . . . s=30\n",
       "presque libres : P : une mesure manque, il glisse vers le gisement 36 grades\n"},
  };
  for (const auto& c : cas) {
    reseauCompense r;
    ASSERT_EQ(compenser(c.texte, r), L"") << c.texte;
    EXPECT_NE(texteDe(r.remarques).find(c.dit), std::string::npos) << c.texte << texteDe(r.remarques);
  }
}

}  // namespace
}  // namespace veltora
