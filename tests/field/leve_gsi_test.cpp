// A field book as a survey: words with signs and units, stations, rules.

#include "field/leve_gsi.h"
#include "base/text.h"
#include "field/mots_leve.h"

#include <gtest/gtest.h>

namespace veltora {
namespace {

std::string mot(int indice, char unite, const std::string& donnees) {
  return std::to_string(indice) + "..." + unite + donnees.substr(0, 1) +
         std::string(9 - donnees.size(), '0') + donnees.substr(1) + " ";
}

TEST(LeveGsi, UnitesEtSignes) {
  struct Cas {
    std::string mot;
    double valeur;
    bool lisible;
  };
  const Cas cas[] = {
      {mot(21, '2', "+12345678"), 123.45678, true},
      {mot(21, '3', "+09000000"), 100.0, true},
      {mot(21, '4', "+09030000"), 90.5 / 0.9, true},           // 90°30'00"
      {mot(21, '4', "+00000360"), 36.0 / 3600.0 / 0.9, true},  // 36.0"
      {mot(21, '4', "+00060000"), 0.0, false},                 // 60 minutes
      {mot(21, '5', "+16000000"), 100.0, true},                // 1600 mils
      {mot(21, '0', "+12345678"), 0.0, false},                 // metres of an angle
      {mot(31, '0', "+00012345"), 12.345, true},
      {mot(31, '1', "+00100000"), 30.48, true},
      {mot(31, '7', "+01000000"), 30.48, true},
      {mot(31, '6', "+00123456"), 12.3456, true},
      {mot(31, '8', "+01234567"), 12.34567, true},
      {mot(31, '2', "+00012345"), 0.0, false},
      {mot(83, '0', "-00003250"), -3.25, true},
      {mot(83, '0', "+--------"), 0.0, false},
  };
  for (const Cas& c : cas) {
    bool entiere = false;
    const auto mots = motsLeve("110001+000000P1 " + c.mot, entiere);
    ASSERT_EQ(mots.size(), 2U) << c.mot;
    EXPECT_TRUE(entiere);
    EXPECT_EQ(mots[0].texte, "P1");
    EXPECT_EQ(mots[1].lisible, c.lisible) << c.mot;
    if (c.lisible) {
      EXPECT_NEAR(mots[1].valeur, c.valeur, 1e-9) << c.mot;
    }
  }
  bool entiere = true;
  EXPECT_EQ(motsLeve("110001+000000P1 21.322+0458", entiere).size(), 1U);
  EXPECT_FALSE(entiere);
}

const std::string kVisee = mot(21, '2', "+10000000") + mot(22, '2', "+10000000") + mot(31, '0', "+00010000");
std::string visee(const std::string& nom, const std::string& suite = {}) {
  return "110001+" + std::string(8 - nom.size(), '0') + nom + " " + kVisee + suite + "\n";
}

/// Each station with its line, height of instrument and the names that it sights.
std::string stations(const std::string& carnet, const std::vector<stationNommee>& nommees = {},
                     reglesCodesGSI regles = reglesUsuelles()) {
  const lectureLeve lue = lireLeveGSI(lireCarnet(carnet), std::move(regles), nommees);
  std::string texte;
  for (const miseEnPlace& s : lue.leve.stations) {
    texte += base::narrow(s.nom) + "@" + std::to_string(s.ligne);
    if (s.visees.front().hAppareil)
      texte += "/" + std::to_string(static_cast<int>(*s.visees.front().hAppareil * 1000 + 0.5));
    for (const viseeTerrain& v : s.visees) texte += " " + base::narrow(v.nom);
    texte += ";";
  }
  if (lue.remarques.douteuses()) texte += "?";
  return texte;
}

TEST(LeveGsi, Stations) {
  const std::string bloc = "410001+0STATION 42....+000000S7 43....+00001550 \n";
  EXPECT_EQ(stations(bloc + visee("P1") + visee("P2")), "S7@1/1550 P1 P2;");
  EXPECT_EQ(stations("410001+00000099 42....+000000S7 \n" + visee("P1")), "@2 P1;");
  // A line of a name with position and height, but no measure.
  const std::string tete = "110001+000000S9 " + mot(84, '0', "+00100000") + mot(85, '0', "+00200000") +
                           mot(88, '0', "+00001600") + "\n";
  EXPECT_EQ(stations(tete + visee("P1")), "S9@1/1600 P1;");
  EXPECT_EQ(stations(tete + bloc + visee("P1")), "S7@2/1550 P1;");
  // Another position in a sighting is another station.
  const std::string ici = mot(84, '0', "+00100000") + mot(85, '0', "+00200000");
  const std::string la = mot(84, '0', "+00300000") + mot(85, '0', "+00200000");
  EXPECT_EQ(stations(visee("P1", ici) + visee("P2", ici) + visee("P3", la)), "@1 P1 P2;@3 P3;");
  // What the user names.
  EXPECT_EQ(stations(visee("P1") + visee("P2") + visee("P3"), {{1, L"A", 1.5}, {3, L"B", {}}}),
            "A@1/1500 P1 P2;B@3/1500 P3;");
  EXPECT_EQ(stations(visee("P1"), {{9, L"A", {}}}), "@1 P1;?");
  // The height of the instrument changes under way; a name of zeros.
  EXPECT_EQ(stations(bloc + visee("P1") + visee("P2", mot(88, '0', "+00001700"))), "S7@1/1550 P1 P2;?");
  EXPECT_EQ(stations(visee("P1") + visee("")), "@1 P1;?");
  EXPECT_EQ(stations(visee("P1") + "210001+00000000 \n"), "@1 P1;?");
}

TEST(LeveGsi, HauteursCodesObservations) {
  const lectureLeve lue = lireLeveGSI(
      lireCarnet(visee("P1", mot(87, '0', "+00001700") + "71....+00000012 72....+0000ABRI 73....+000000A5 ") +
                 visee("P2")),
      reglesUsuelles(), {});
  const auto& visees = lue.leve.stations.at(0).visees;
  EXPECT_EQ(visees[0].code, L"12");
  EXPECT_EQ(visees[0].observation, L"ABRI A5");
  EXPECT_EQ(visees[1].hMire, 1.7);
  EXPECT_FALSE(lue.remarques.empty());
  // Another station begins without a height of target.
  const lectureLeve deux = lireLeveGSI(lireCarnet(visee("P1", mot(87, '0', "+00001700")) + visee("P2")),
                                       reglesUsuelles(), {{2, L"S2", {}}});
  EXPECT_FALSE(deux.leve.stations.at(1).visees[0].hMire);
}

TEST(LeveGsi, Regles) {
  base::Remarques remarques;
  const reglesCodesGSI regles =
      lireReglesCodes("* mes codes\ntexte 42 ST\ncode 43\nhauteur 44\npresence 45 sauf 2\n", remarques);
  EXPECT_TRUE(remarques.empty());
  ASSERT_EQ(regles.regles.size(), 4U);
  EXPECT_EQ(regles.regles[3].ligne, 2U);
  EXPECT_EQ(stations("410001+00000001 42....+000000ST 43....+000000B4 44....+00000162 45....+00000001 \n" +
                         visee("P1"),
                     {}, regles),
            "B4@1/1620 P1;");
  for (const char* faux :
       {"code", "code 43 sauf", "code x", "truc 43\ncode 42", "texte 42\ncode 43", "presence 45"}) {
    base::Remarques doutes;
    lireReglesCodes(faux, doutes);
    EXPECT_TRUE(doutes.douteuses()) << faux;
  }
}

}  // namespace
}  // namespace veltora
