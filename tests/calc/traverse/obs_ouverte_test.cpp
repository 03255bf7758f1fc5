#include "calc/traverse/obs_ouverte.h"
#include "base/format.h"
#include "base/text.h"
#include "support/golden.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltora {
namespace {

std::string resume(const stationConnue& s) {
  return base::formater("%s %g %g %g %g", base::toUtf8(s.nom), s.x, s.y, s.z, s.gisement);
}

/// What a file leaves in a traverse, as one line.
std::string resume(const polygonaleOuverteObs& d) {
  std::string texte = resume(d.depart) + " > " + resume(d.arrivee) +
                      base::formater(" f%g a%d n%d", d.fermeture, d.modeAngle, d.modeNivellement);
  for (const ligneObs& l : d.lignes) texte += base::toUtf8(L" [" + l.nom + L"]");
  return texte;
}

const char* const kVide = " 0 0 0 0 >  0 0 0 0 f7 a2 n3";

TEST(LireObsOuverte, FermetureGardeeAndEachFormOfLine) {
  struct Cas {
    const char* nom;
    const char* octets;
    const char* resume;
    std::vector<std::string> remarques;
  };
  const std::vector<Cas> cas = {
      {"an empty file keeps modes and closing angle", "", kVide, {}},
      {"both stations, in any order and spelling",
       "gis 5 Z=3 y: 2 xyz=1 depart=\"ST 1\"\nARR B X 1 Y 2 Z 3 Gis -4",
       "ST 1 1 2 3 5 > B 1 2 3 -4 f7 a2 n3",
       {}},
      {"keywords and rows",
       "Fermeture: 12.5\nAngles d\nNive s\n\"C 1\" 1 2 3",
       " 0 0 0 0 >  0 0 0 0 f12.5 a1 n1 [C 1]",
       {}},
      {"the last block counts", "Nivellement: simple\nNivellement: racine", kVide, {}},
      {"neither departure nor arrival",
       "Nom=A X= 1 Y= 2 Z= 3 Gis= 4",
       kVide,
       {"ligne 1 : clé inconnue « Nom », ignorée", "ligne 1 : ignorée, « Nom A »"}},
      {"a key that is missing leaves its value",
       "Depart=A X= 1 Y= 2 Z= 3 Gis= 4\nD=B X=9 Ref=1 W=2 Z=8",
       "B 9 2 8 4 >  0 0 0 0 f7 a2 n3",
       {"ligne 2 : clé inconnue « Ref », ignorée", "ligne 2 : clé inconnue « W », ignorée",
        "à vérifier : ligne 2 : la ligne de la station ne donne pas Y, Gis : 0, ou la valeur d'une ligne "
        "d'avant, "
        "en tient lieu"}},
      {"unreadable numbers",
       "Fermeture: x\nDepart=A X= 1,5 Y= 2 Z= 3 Gis= 4",
       "A 1 2 3 4 >  0 0 0 0 f0 a2 n3",
       {"à vérifier : ligne 1 : nombre illisible « x », lu comme 0.0",
        "à vérifier : ligne 2 : nombre illisible « 1,5 », lu comme 1.0 : virgule décimale, écrire 1.5"}},
  };
  for (const Cas& c : cas) {
    polygonaleOuverteObs d;
    d.depart = d.arrivee = {L"ANCIENNE", 1, 1, 1, 1};
    d.fermeture = 7;
    d.modeAngle = 2;
    d.modeNivellement = 3;
    d.lignes.push_back({L"ancienne", L"1", L"2", L"3"});
    const base::Remarques remarques = lireObsOuverte(c.octets, d);
    EXPECT_EQ(resume(d), c.resume) << c.nom;
    EXPECT_EQ(phrasesDe(remarques), c.remarques) << c.nom;
  }
}

TEST(EstObsOuverte, LooksForTheLinesOfKnownStations) {
  const std::vector<std::pair<const char*, bool>> cas = {
      {"", false},
      {"Nom=\"Depart\" X= 1 Y= 2 Z= 3 Gis= 4", false},
      {"* Depart=A X= 1 Y= 2 Z= 3 Gis= 4", false},
      {"Angles: degres\nD 1 2 3\nArrivee 1", false},
      {"Angles: degres\n\nX= 1 Y= 2 Z= 3 Gis= 4 depart=A", true},
      {"Arrivee=\"A\" X= 1 Y= 2 Z= 3 Gis= 4", true},
  };
  for (const auto& [octets, ouverte] : cas) EXPECT_EQ(estObsOuverte(octets), ouverte) << octets;
}

TEST(EcrireObsOuverte, BlocNivellementDouble) {
  polygonaleOuverteObs d;
  d.depart = {L"Été 1", 650000.123456, 2, -1, 399.99999};
  d.arrivee = {L"B", 1, 2, 3, -4};
  d.fermeture = 12.34567;
  d.modeAngle = 1;
  d.modeNivellement = 2;
  d.lignes = {formaterLigne(L"B 2", 1.0, 2.0, -3.0), {L"B", L"4", L"5.", L"6"}};
  const std::string octets = ecrireObsOuverte(d);
  EXPECT_TRUE(memeQueReference("polygonale_ouverte_ecrite.obs", octets));
  const std::string mode = "\nNivellement: distance\n";
  EXPECT_NE(octets.find(mode), octets.rfind(mode));
  polygonaleOuverteObs relue;
  EXPECT_TRUE(lireObsOuverte(octets, relue).empty());
  EXPECT_EQ(ecrireObsOuverte(relue), octets);
}

}  // namespace
}  // namespace veltora
