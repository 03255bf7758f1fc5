// Field books: decoder, dumps, rules of code blocks, the table.

#include "base/text.h"
#include "field/carnet_gsi.h"
#include "field/regles_gsi.h"
#include "field/textes_gsi.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace veltora {
namespace {

constexpr const char* kCas = "field/cases/gsi.txt";

/// Index and value or text of each word.
std::string texteDe(const ligneGSI& mots) {
  std::string texte;
  for (const motGSI& mot : mots) {
    std::string valeur;
    base::ajouterFixe(valeur, mot.valeur, 5);
    texte += (texte.empty() ? "" : " ") + std::to_string(mot.indexMot) +
             (mot.genre == motGSI::kNumerique ? "=" + valeur : "[" + std::string(mot.texte) + "]");
  }
  return texte;
}

std::string avecTabulations(std::string texte) {
  std::replace(texte.begin(), texte.end(), '^', '\t');
  return texte;
}

ligneGSI decoder(const std::string& ligne) {
  etatLectureGSI etat;
  ligneGSI mots;
  decoderLigneGSI(etat, ligne, mots);
  return mots;
}

TEST(MotsGsi, LinesAreCutIntoWordsOfTheirWidthAndUnit) {
  for (const CaseRow& cas : caseRows(kCas, "decoder")) {
    etatLectureGSI etat;
    ligneGSI mots = decoder("110001+00000099 ");
    EXPECT_EQ(decoderLigneGSI(etat, cas[1], mots), cas.integer(2)) << cas;
    EXPECT_EQ(texteDe(mots), cas[3]) << cas;
  }
  EXPECT_EQ(texteDe(decoder(std::string("110001+00000012 11\0001+00000013 ", 30))), "11[      12]")
      << "a zero byte ends the line";
}

TEST(MotsGsi, GsiSigneGsiPiedsGsiSexagesimalGsiUnite5GsiUnite7) {
  const ligneGSI mots =
      decoder("310000-00012345 310001+00003048 210004+01234560 310005+00010000 310007+00009000 ");
  EXPECT_EQ(mots[0].valeur, 12.345) << "the sign is not read";
  EXPECT_EQ(mots[1].valeur, 3.048 / 0.3048) << "feet are divided";
  EXPECT_LT(mots[2].valeur, 0.0) << "12 degrees 34 minutes";
  EXPECT_EQ(mots[3].valeur, 1.0);
  EXPECT_EQ(mots[4].valeur, 0.9) << "unit 5 sets no conversion, so 7 has none to inherit";
  EXPECT_STREQ(mots[1].texte, "00003048") << "the data of a number stay as read";
  EXPECT_STREQ(mots[1].infos, "0001");
}

TEST(MotsGsi, OnlyTheFirstCharactersOfALongLineCount) {
  std::string ligne;
  while (ligne.size() < 70000) ligne += "310000+00012345 ";
  EXPECT_EQ(decoder(ligne).size(), 4095U);
  EXPECT_EQ(lireCarnet(ligne).ligne(0).size(), kLigneGsiMax);
}

TEST(TextesGsi, AWordATextAndALineAllOfThem) {
  for (const CaseRow& cas : caseRows(kCas, "dumps")) {
    etatLectureGSI etat;
    etat.debutBlocCode = 7;
    const ligneGSI mots = decoder(cas[1]);
    std::wstring texte = L"old";
    texteLigneGSI(etat, mots, texte);
    EXPECT_EQ(base::toUtf8(texte), avecTabulations(cas[2])) << cas;
    EXPECT_EQ(etat.debutBlocCode == etatLectureGSI::kAucun, cas[1].starts_with("11")) << cas;
    std::vector<std::wstring> textes{L"old"};
    texteLigneGSIListe(etat, mots, textes);
    std::wstring ensemble;
    for (const std::wstring& un : textes) ensemble += un;
    EXPECT_EQ(ensemble, texte) << cas;
    EXPECT_EQ(textes.size(), cas[2].empty() ? 1 : mots.size()) << cas;
  }
  etatLectureGSI etat;
  std::vector<std::wstring> textes{L"old"};
  texteLigneGSIListe(etat, {}, textes);
  EXPECT_TRUE(textes.empty());
}

TEST(TextesGsi, InformationOfALine) {
  for (const CaseRow& cas : caseRows(kCas, "infos")) {
    std::wstring sortie = L"old";
    EXPECT_EQ(texteInfoGSI(base::fromUtf8(cas[1]), sortie), 1) << cas;
    EXPECT_EQ(base::toUtf8(sortie), avecTabulations(cas[2])) << cas;
  }
}

regleCodeGSI regle(std::uint32_t genre, std::uint32_t indexMot, const char* texte = "",
                   std::uint32_t ligne = 0) {
  regleCodeGSI r;
  r.genre = genre;
  r.indexMot = indexMot;
  r.texte = texte;
  r.ligne = ligne;
  return r;
}

TEST(ReglesGsi, HeightsAreTakenAsMetresCentimetresOrMillimetres) {
  for (const CaseRow& cas : caseRows(kCas, "heights")) {
    reglesCodesGSI regles;
    regles.regles = {regle(regleCodeGSI::kHauteur, 43)};
    ligneGSI mots;
    motGSI mot;
    mot.indexMot = 43;
    std::strncpy(mot.texte, cas[0].c_str(), 16);
    mots.Add(mot);
    analyserCodesGSI(regles, 1, mots);
    EXPECT_EQ(regles.hauteurLue, cas.integer(1) == 1) << cas;
    EXPECT_DOUBLE_EQ(regles.hauteur, cas.number(2)) << cas;
  }
}

TEST(ReglesGsi, GsiHauteurLueAndTheOtherRulesMakeAStationOnlyWithoutAHeight) {
  reglesCodesGSI regles;
  EXPECT_FALSE(reglesCompletes(regles)) << "no code was kept";
  regles.regles = {regle(regleCodeGSI::kTexte, 41, "     sta"), regle(regleCodeGSI::kPresence, 44),
                   regle(regleCodeGSI::kCode, 42, "", 1), regle(regleCodeGSI::kHauteur, 43)};
  analyserCodesGSI(regles, 1, decoder("410001+00000sta 42....+0000000a 44....+00000000 "));
  EXPECT_FALSE(regles.codeLu) << "the rule does not fire on line 1";
  EXPECT_EQ(regles.regles[0].texte, "     STA");
  analyserCodesGSI(regles, 2, decoder("410001+0000STAT 42....+0000000a "));
  EXPECT_EQ(regles.code, "       A");
  EXPECT_TRUE(reglesCompletes(regles));
  analyserCodesGSI(regles, 2, decoder("43....+00000150 "));
  EXPECT_FALSE(reglesCompletes(regles)) << "a height was read";
  razReglesCodes(regles);
  EXPECT_FALSE(regles.codeLu || regles.hauteurLue || regles.regles[0].vu || regles.regles[1].vu);
  EXPECT_EQ(regles.hauteur, 1.5);
}

class TableObs : public ::testing::Test {
protected:
  void SetUp() override {
    getTableObsRayonnees().viderTable();
    getReglesCodesGSI() = {};
  }
  void TearDown() override { SetUp(); }
  /// Reads lines, each ended by LF. @return their text
  static std::string lire(const std::string& octets) {
    analyseGSI analyse;
    std::string detail;
    const carnetGSI carnet = lireCarnet(octets);
    for (std::size_t i = 0; i < carnet.nombreLignes(); ++i) analyse.lire(carnet.ligne(i), detail, "/");
    return detail;
  }
  tableObsRayonnees& table = getTableObsRayonnees();
};

TEST_F(TableObs, GsiLectureDoubleTheLastPlaceOfAPointCounts) {
  lire(
      "110001+00000001 810000+00001000 820000+00002000 \n"
      "110002+00000001 810000+00005000 820000+00006000 830000+00007000 \n"
      "110003+00000002 810000+00001000 210002+00100000 \n");
  ASSERT_EQ(table.lectures.size(), 4U) << "without Y a sighting stands twice";
  EXPECT_EQ(table.lectures[2].donnees.id, table.lectures[3].donnees.id);
  EXPECT_NE(table.lectures[0].donnees.id, table.lectures[1].donnees.id);
  EXPECT_EQ(table.lectures[3].donnees.ah, 1.0);
  EXPECT_EQ(table.lectures[3].xReduit, 1e38);
  EXPECT_EQ(table.lectures[3].station, 0xFFFFFFFFU);
  donneesLecture d;
  ASSERT_TRUE(table.lirePointCanevas("       1", d));
  EXPECT_TRUE(d.x == 5.0 && d.y == 6.0 && d.z == 7.0 && d.kind == 1);
  EXPECT_FALSE(table.lirePointCanevas("1", d)) << "names keep their blanks";
  EXPECT_FALSE(table.lirePointCanevas("       2", d));
}

TEST_F(TableObs, EachWordHasItsField) {
  lire(
      "110001+00000001 210002+00100000 220002+00200000 310000+00003000 320000+00004000 330000+00005000 "
      "250002+09900000 840000+00006000 850000+00007000 860000+00008000 870000+00009000 880000+00010000 "
      "830000+00011000 310000+00012000 \n");
  const donneesLecture& d = table.lectures.at(0).donnees;
  EXPECT_TRUE(d.ah == 1 && d.av == 2 && d.di == 12 && d.dh == 4 && d.dz == 5) << "the later distance counts";
  EXPECT_TRUE(d.xStat == 6 && d.yStat == 7 && d.zStat == 8 && d.hMire == 9 && d.hAppareil == 10 && d.z == 11);
  const std::array<bool, 13> presents{false, false, true, true, true, true, true,
                                      true,  true,  true, true, true, true};
  EXPECT_EQ(d.present, presents);
}

TEST_F(TableObs, GsiAutresLignesLeaveNoTrace) {
  EXPECT_EQ(lire("840001+00001000 810000+00001000 820000+00002000 \n\nX\n"), "");
  EXPECT_TRUE(table.lectures.empty() && table.pointsCanevas().empty());
}

TEST_F(TableObs, GsiViderNomsForgetsTheNamesKnownFromTheStart) {
  tableObsRayonnees neuve;
  std::vector<nomGSI> noms;
  neuve.nomsCanevasListe(noms);
  std::sort(noms.begin(), noms.end());
  EXPECT_EQ(noms, (std::vector<nomGSI>{".", "nord", "north"}));
  EXPECT_EQ(neuve.nomsCanevas().max_load_factor(), 1.0F);
  neuve.ajouterStation("A", 1.5);
  neuve.ajouterLecture(1, {});
  neuve.viderTable();
  EXPECT_TRUE(neuve.nomsCanevas().empty() && neuve.stationsGSI.empty() && neuve.lectures.empty());
}

TEST_F(TableObs, StationsComeFromRulesAndCarryTheirKnowledgeOn) {
  getReglesCodesGSI().regles = {regle(regleCodeGSI::kCode, 42, "", 1)};
  const std::string detail = lire(
      "410001+00000STA 42....+NOT_SEEN \n410002+00000STA 42....+0000000a \n110003+0000000B \n"
      "410004+00000STA 42....+IGNORED1 \n110005+0000000C \n");
  ASSERT_EQ(table.stationsGSI.size(), 2U) << "the code stays kept, so the next block is complete at once";
  EXPECT_EQ(table.stationsGSI[0].nom.texte(), "       A");
  EXPECT_EQ(table.lectures[0].station, 1U);
  EXPECT_EQ(table.lectures.back().station, 2U);
  EXPECT_EQ(std::count(detail.begin(), detail.end(), '/'), 5);
  table.nomsCanevas().insert("       a");
  table.stationsGSI[1].nom = "       B";
  table.propagerCanevas();
  EXPECT_TRUE(table.nomsCanevas().contains("       b") && table.nomsCanevas().contains("       c"));
}

}  // namespace
}  // namespace veltora
