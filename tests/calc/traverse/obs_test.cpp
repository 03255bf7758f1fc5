#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/obs_jetons.h"
#include "calc/traverse/obs_fermee.h"
#include "support/golden.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltora {
namespace {

std::string joindre(const std::vector<std::wstring>& jetons) {
  std::string texte;
  for (const std::wstring& jeton : jetons) texte += "[" + base::toUtf8(jeton) + "]";
  return texte;
}

TEST(ObsJetons, SplitsLines) {
  struct Cas {
    const wchar_t* ligne;
    const char* jetons;
  };
  const std::vector<Cas> cas = {
      {L"", ""},
      {L"* Angles: grades", ""},
      {L" * Angles", "[*][Angles]"},
      {L" \t:=", ""},
      {L"Angles: grades", "[Angles][grades]"},
      {L"a:b=c\td e", "[a][b][c][d][e]"},
      {L"\"ST 1\"\t1\t\t2", "[ST 1][1][2]"},
      {L"\"a:=*\t b\"", "[a:=*\t b]"},
      {L"ab\"c d\"ef", "[ab][c d][ef]"},
      {L"\"a\"\"b\"", "[a][b]"},
      {L"x \"non fermé : a", "[x][non fermé : a]"},
      {L"x \"", "[x]"},
      {L"\"\" x \"\"", "[x]"},
      {L"Nom=\"ST1\" X= 1.5", "[Nom][ST1][X][1.5]"},
  };
  for (const Cas& c : cas) {
    EXPECT_EQ(joindre(decouperLigneObs(c.ligne)), c.jetons) << base::toUtf8(c.ligne);
  }
}

/// What a file leaves in a traverse, as one line.
std::string resume(const polygonaleFermeeObs& d) {
  std::string texte = base::formater("%s %g %g %g %g a%d n%d", base::toUtf8(d.nom), d.x, d.y, d.z, d.vo,
                                     d.modeAngle, d.modeNivellement);
  for (const ligneObs& l : d.lignes) texte += joindre({l.nom, l.angle, l.distance, l.dz});
  return texte;
}

struct CasLecture {
  const char* nom;
  const char* octets;
  const char* resume;
  std::vector<std::string> remarques;
};

const char* const kVide = " 0 0 0 0 a2 n3";

const std::vector<CasLecture> kLectures = {
    {"an empty file keeps the modes only", "", kVide, {}},
    {"departure in any order and spelling", "gis 5 Z=3 y: 2 xyz=1 nom=\"ST 1\"", "ST 1 1 2 3 5 a2 n3", {}},
    {"CR LF", "Angles: degres\r\nNivellement: simple\r\n", " 0 0 0 0 a1 n1", {}},
    {"units by their first letter", "ANGLXYZ Gon\nnivel=dist", " 0 0 0 0 a0 n2", {}},
    {"unknown words",
     "Angles: mils\nNivellement: fort",
     " 0 0 0 0 a0 n0",
     {"ligne 1 : unité d'angle inconnue « mils », lue comme grades",
      "ligne 2 : mode de nivellement inconnu « fort », lu comme aucun"}},
    {"the last word counts", "Angles G\nAngles D", " 0 0 0 0 a1 n3", {}},
    {"a row keeps its text",
     "\"B\"\t259.2666670\t\t+285.1\t\t-0.0",
     " 0 0 0 0 a2 n3[B][259.2666670][+285.1][-0.0]",
     {}},
    {"accents are Windows-1252", "\xC9t\xE9 1 2 3", " 0 0 0 0 a2 n3[Été][1][2][3]", {}},
    {"lines of other counts",
     "seul\na b c\n a b c d e\n1 2 3 4 5 6 7 8 9 10 11 12",
     kVide,
     {"ligne 1 : ignorée, « seul »", "ligne 2 : ignorée, « a b c »", "ligne 3 : ignorée, «  a b c d e »",
      "ligne 4 : ignorée, « 1 2 3 4 5 6 7 8 9 10 11 12 »"}},
    {"an unknown keyword", "\nFermeture: 12", kVide, {"ligne 2 : ignorée, « Fermeture: 12 »"}},
    {"an unknown key",
     "Nom A X 1 Y 2 Z 3 Ref 4",
     "A 1 2 3 0 a2 n3",
     {"ligne 1 : clé inconnue « Ref », ignorée",
      "à vérifier : ligne 1 : la ligne de la station ne donne pas Gis : 0, ou la valeur d'une ligne d'avant, "
      "en "
      "tient lieu"}},
    {"a key that stands twice leaves no room for another",
     "Nom A X 1 X 2 Z 3 Gis 4",
     "A 2 0 3 4 a2 n3",
     {"à vérifier : ligne 1 : la ligne de la station ne donne pas Y : 0, ou la valeur d'une ligne d'avant, "
      "en "
      "tient lieu"}},
    {"an empty departure name leaves nine tokens",
     "Nom=\"\" X= 1 Y= 2 Z= 3 Gis= 4",
     kVide,
     {"ligne 1 : ignorée, « Nom=\"\" X= 1 Y= 2 Z= 3 Gis= 4 »"}},
    {"numbers are read as far as they go",
     "Nom=A X= 12,5 Y= abc Z= 1e2 Gis= 0x10\nB 1.5m 2 3",
     "A 12 0 100 0 a2 n3[B][1.5m][2][3]",
     {"à vérifier : ligne 1 : nombre illisible « 12,5 », lu comme 12.0 : virgule décimale, écrire 12.5",
      "à vérifier : ligne 1 : nombre illisible « abc », lu comme 0.0",
      "à vérifier : ligne 1 : nombre illisible « 0x10 », lu comme 0.0",
      "à vérifier : ligne 2 : nombre illisible « 1.5m », lu comme 1.5"}},
    {"no height difference, and a quote that ends a line",
     "B 300 10 .\nC 12°34'56\" 100 0",
     " 0 0 0 0 a2 n3[B][300][10][.]",
     {"ligne 1 : dénivelée « . » lue comme 0.0",
      "à vérifier : ligne 2 : ignorée, « C 12°34'56\" 100 0 » : degrés, minutes et secondes, écrire un "
      "nombre "
      "décimal"}},
    {"blanks between thousands",
     "Nom=A X= 652 318.42 Y= 6 862 104.87 Z= 3 Gis= 4\nB 300 1 285.10\nC 300 1 285.10 0.5\nD 300 400 285\nE "
     "1 2 3 4",
     " 0 0 0 0 a2 n3[B][300][1][285.10][D][300][400][285]",
     {"à vérifier : ligne 1 : ignorée, « Nom=A X= 652 318.42 Y= 6 862 104.87 Z= 3 Gis= 4 » : blancs entre "
      "les "
      "milliers, les écrire sans blanc",
      "à vérifier : ligne 2 : distance « 1 » et dénivelée « 285.10 » : sans doute des blancs entre les "
      "milliers, "
      "les écrire sans blanc",
      "à vérifier : ligne 3 : ignorée, « C 300 1 285.10 0.5 » : blancs entre les milliers, les écrire sans "
      "blanc",
      "ligne 5 : ignorée, « E 1 2 3 4 »"}},
    {"blanks before a star make no comment", " * Angles", kVide, {"ligne 1 : ignorée, «  * Angles »"}},
};

TEST(LireObsFermee, ReadsEachFormOfLine) {
  for (const CasLecture& c : kLectures) {
    polygonaleFermeeObs donnees;
    donnees.modeAngle = 2;
    donnees.modeNivellement = 3;
    donnees.lignes.push_back({L"ancienne", L"1", L"2", L"3"});
    const base::Remarques remarques = lireObsFermee(c.octets, donnees);
    EXPECT_EQ(resume(donnees), c.resume) << c.nom;
    EXPECT_EQ(phrasesDe(remarques), c.remarques) << c.nom;
  }
}

TEST(LireObsFermee, ALineCountsUpTo1024Characters) {
  polygonaleFermeeObs donnees;
  const std::string longue = "B 1 2 " + std::string(2000, '3') + " 4\nC 1 2 3";
  const std::vector<std::string> remarques = phrasesDe(lireObsFermee(longue, donnees));
  ASSERT_EQ(donnees.lignes.size(), 2U);
  EXPECT_EQ(donnees.lignes[0].dz.size(), 1018U);
  EXPECT_EQ(donnees.lignes[1].nom, L"C");
  ASSERT_FALSE(remarques.empty());
  EXPECT_EQ(remarques[0], "ligne 1 : coupée après 1024 caractères, « B 1 2 " + std::string(34, '3') + "… »");
}

TEST(LireLigne, CutsNamesAndParsesLeniently) {
  const obsPolygonale obs = lireLigne({L"123456789012345678901", L" 12,5", L"", L"-1e2x"});
  EXPECT_EQ(std::wstring(obs.nom), L"123456789012345678");
  EXPECT_EQ(obs.angle, 12.0);
  EXPECT_EQ(obs.distance, 0.0);
  EXPECT_EQ(obs.dz, -100.0);
}

std::string octetsDe(const std::string& nom) {
  const auto octets = base::lireFichier(VELTORA_SOURCE_DIR "/" + nom);
  EXPECT_TRUE(octets) << nom;
  return octets.value_or("");
}

TEST(EcrireObsFermee, MatchesItsGoldenAndReadsBack) {
  polygonaleFermeeObs donnees;
  donnees.nom = L"Été 1";
  donnees.x = 650000.123456;
  donnees.z = -1.0;
  donnees.vo = 399.99999;
  donnees.modeAngle = 2;
  donnees.modeNivellement = 3;
  donnees.lignes = {formaterLigne(L"B 2", 1.0, 2.0, -3.0), {L"Été 1", L"4", L"5.", L"6x"}};
  const std::string octets = ecrireObsFermee(donnees);
  EXPECT_TRUE(memeQueReference("polygonale_fermee_ecrite.obs", octets));
  polygonaleFermeeObs relues;
  EXPECT_EQ(lireObsFermee(octets, relues).nombre(), 1U) << "the height \"6x\"";
  EXPECT_EQ(ecrireObsFermee(relues), octets);
}

TEST(EcrireObsFermee, TheExamplesAreInTheWritersLayout) {
  for (const char* nom : {"examples/polygonale_fermee.obs", "examples/polygonale_cours.obs"}) {
    const std::string octets = octetsDe(nom);
    polygonaleFermeeObs donnees;
    EXPECT_TRUE(lireObsFermee(octets, donnees).empty()) << nom;
    EXPECT_EQ(ecrireObsFermee(donnees), octets) << nom;
  }
}

TEST(NomFichierObs, EndsAsTheFilterSays) {
  struct Cas {
    const wchar_t* choisi;
    int filtre;
    const wchar_t* nom;
  };
  const std::vector<Cas> cas = {
      {L"Levé", 1, L"levé.obs"},
      {L"LEVE.OBS", 1, L"leve.obs"},
      {L"a.txt", 1, L"a.txt.obs"},
      {L"A.Txt", 4, L"a.txt"},
      {L"A", 4, L"a.txt"},
      {L"A", 2, L"a."},
      {L"A.obs", 3, L"a.obs."},
      {L"A.", 3, L"a."},
      {L"/Chantiers/ÉTÉ/Nord", 1, L"/Chantiers/ÉTÉ/nord.obs"},
      {L"/Dossier.v2/A", 2, L"/Dossier.v2/a."},
  };
  for (const Cas& c : cas) EXPECT_EQ(base::toUtf8(nomFichierObs(c.choisi, c.filtre)), base::toUtf8(c.nom));
}

}  // namespace
}  // namespace veltora
