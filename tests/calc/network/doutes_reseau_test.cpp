#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "jobs/reseau.h"
#include "support/projet_essai.h"
#include "support/remarques.h"

#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace veltora {
namespace {

struct Place {
  double x, y, z;
};
struct LigneMc {
  std::string station, reference, vise;
  double angle, distance, denivelee;  // grades, metres
};
/// A survey without error but for the rounding of its file, in national coordinates.
struct Leve {
  std::map<std::string, Place> places = {
      {"A", {650000.0, 6860000.0, 100.0}}, {"B", {650400.0, 6860050.0, 110.0}},
      {"C", {650350.0, 6860500.0, 120.0}}, {"D", {649980.0, 6860420.0, 105.0}},
      {"P", {650150.0, 6860200.0, 112.0}}, {"Q", {650260.0, 6860330.0, 109.0}},
      {"R", {650090.0, 6860380.0, 101.0}}};
  std::vector<LigneMc> lignes;

  Leve() {
    for (const char* nouveau : {"P", "Q", "R"}) {
      observer("A", "B", nouveau);
      observer("B", "C", nouveau);
      observer("C", "D", nouveau);
      observer("D", "A", nouveau);
    }
    observer("Q", "A", "P");
    observer("R", "A", "P");
    observer("R", "A", "Q");
  }
  LigneMc& de(const std::string& station, const std::string& vise) {
    for (LigneMc& l : lignes)
      if (l.station == station && l.vise == vise) return l;
    throw std::out_of_range(station + vise);
  }
  [[nodiscard]] std::string texte() const {
    std::string t = "ANGLES GRADES\n";
    for (const auto& [nom, p] : places)
      if (nom < "P") t += base::formater("%s %.3f %.3f %.3f\n", nom, p.x, p.y, p.z);
    t += "OBS\n";
    for (const LigneMc& l : lignes) {
      t += base::formater("%s %s %s %.4f %.3f %.3f\n", l.station, l.reference, l.vise, l.angle, l.distance,
                          l.denivelee);
    }
    return t;
  }

private:
  void observer(const std::string& station, const std::string& reference, const std::string& vise) {
    const auto gisement = [&](const std::string& vers) {
      return std::atan2(places[vers].x - places[station].x, places[vers].y - places[station].y);
    };
    const double angle = std::fmod((gisement(vise) - gisement(reference)) * 200.0 / kPi + 800.0, 400.0);
    lignes.push_back({station, reference, vise, angle,
                      std::hypot(places[vise].x - places[station].x, places[vise].y - places[station].y),
                      places[vise].z - places[station].z});
  }
};

class DoutesReseau : public ProjetEssai {
protected:
  resultatReseau lancer(const std::string& octets, bool malgreDoutes = false) {
    demandeReseau demande;
    demande.fichier = fichier("r.mc", octets);
    demande.journal = m_dossier.chemin / "journal.txt";
    demande.placer = true;
    demande.malgreDoutes = malgreDoutes;
    resultatReseau resultat;
    executerReseau(demande, resultat);
    return resultat;
  }
};

using Faute = std::function<void(Leve&)>;
Faute pourChacune(void (*faute)(LigneMc&)) {
  return [faute](Leve& l) {
    for (LigneMc& ligne : l.lignes) faute(ligne);
  };
}

TEST_F(DoutesReseau, AMistakeIsDoubtedAndItsCauseNamedByComputingAgain) {
  struct Cas {
    const char* nom;
    Faute faute;
    std::vector<const char*> phrases;
  };
  const char* cause = "à vérifier : r.mc, cause probable : ";
  const std::vector<Cas> cas = {
      {"degrees",
       pourChacune([](LigneMc& l) { l.angle *= 0.9; }),
       {"les angles, lus en grades, sont en degrés"}},
      {"other side",
       pourChacune([](LigneMc& l) { l.angle = 400.0 - l.angle; }),
       {"les angles tournent dans l'autre sens", "X et Y des points connus sont échangés"}},
      {"station and reference",
       pourChacune([](LigneMc& l) { std::swap(l.station, l.reference); }),
       {"les colonnes station et référence sont échangées"}},
      {"reference and target",
       pourChacune([](LigneMc& l) { std::swap(l.vise, l.reference); }),
       {"les colonnes référence et visé sont échangées"}},
      {"station and target",
       pourChacune([](LigneMc& l) { std::swap(l.station, l.vise); }),
       {"les colonnes station et visé sont échangées",
        "les dénivelées sont données du visé vers la station"}},
      {"angle and distance",
       pourChacune([](LigneMc& l) { std::swap(l.angle, l.distance); }),
       {"les colonnes angle et distance sont échangées"}},
      {"heights the other way",
       pourChacune([](LigneMc& l) { l.denivelee = -l.denivelee; }),
       {"Dénivellée A vers P = -12.0000 : résidu de ",
        "les dénivelées sont données du visé vers la station"}},
      {"one angle",
       [](Leve& l) { l.de("B", "Q").angle += 10.0; },
       {"Angle C B Q", "sans elle tout s'accorde", "fausse de 10 grades"}},
      {"one angle the other way",
       [](Leve& l) { l.de("B", "Q").angle = 400.0 - l.de("B", "Q").angle; },
       {"Angle C B Q", "référence et visé échangés, ou autre sens"}},
      {"one distance", [](Leve& l) { l.de("C", "R").distance -= 1.0; }, {"Distance C-R", "fausse de 1 m"}},
      {"digits",  // 371.214 measured as 317.214
       [](Leve& l) { l.de("C", "P").distance -= 54.0; },
       {"Distance C-P", "deux chiffres échangés"}},
      {"one height", [](Leve& l) { l.de("D", "R").denivelee += 0.2; }, {"Dénivellée D vers R = -3.8000"}},
  };
  const resultatReseau bon = lancer(Leve().texte());
  EXPECT_EQ(texteDe(bon.remarques), "");
  EXPECT_EQ(bon.places, 7);
  for (const Cas& c : cas) {
    Leve leve;
    c.faute(leve);
    const resultatReseau r = lancer(leve.texte());
    const std::string texte = texteDe(r.remarques);
    EXPECT_TRUE(r.remarques.douteuses()) << c.nom;
    EXPECT_EQ(r.places, 0) << c.nom;
    EXPECT_NE(texte.find(cause), std::string::npos) << c.nom << "\n" << texte;
    for (const char* phrase : c.phrases)
      EXPECT_NE(texte.find(phrase), std::string::npos) << c.nom << ": " << phrase << "\n" << texte;
  }
  Leve faux;
  faux.de("C", "R").distance -= 1.0;
  EXPECT_EQ(lancer(faux.texte(), true).places, 7) << "placed all the same when told to";
}

TEST_F(DoutesReseau, APointOnItsOwnStationIsNamedAndTakesNoOtherWithIt) {
  const resultatReseau r = lancer(Leve().texte() + "A B S 350\nA D S 10\n");
  EXPECT_TRUE(r.convergence);
  EXPECT_EQ(r.places, 7);
  const std::string texte = texteDe(r.remarques);
  EXPECT_NE(texte.find("point S sans coordonnées"), std::string::npos) << texte;
  EXPECT_NE(texte.find("Angle B A S = 350.0000 (grades), Angle D A S = 10.0000 (grades)"), std::string::npos)
      << texte;
  EXPECT_EQ(texte.find("point P"), std::string::npos) << texte;
  EXPECT_EQ(texte.find("point Q"), std::string::npos) << texte;
}

TEST_F(DoutesReseau, WhatRoundedCoordinatesExplainIsNotDoubted) {
  for (const auto& [erreur, doute] : {std::pair(0.010, false), std::pair(0.040, true)}) {
    Leve leve;
    leve.de("A", "Q").denivelee += erreur;
    EXPECT_EQ(lancer(leve.texte()).remarques.douteuses(), doute) << erreur;
  }
}

TEST_F(DoutesReseau, TheLargestResidualsAreNamedWithBothNumbersAndUnits) {
  Leve leve;
  leve.de("R", "Q").distance += 0.004;
  const resultatReseau r = lancer(leve.texte());
  ASSERT_EQ(r.residus.size(), 16U) << "a heading, five of each kind";
  std::string table;
  for (const std::wstring& ligne : r.residus) table += base::toUtf8(ligne) + "\n";
  EXPECT_NE(table.find("Genre      Station  Référence  Visé  Résidu"), std::string::npos) << table;
  // 15 angles stand in front of the distances, that of R and Q is the last of 15.
  EXPECT_NE(table.find("Distance   R        -          Q     "), std::string::npos) << table;
  EXPECT_NE(table.find(" mm    29       29\n"), std::string::npos) << table;
  const std::string journal = m_dossier.lire("journal.txt");
  EXPECT_NE(journal.find(base::narrow(L"\r\n\r\nRésidus\r\nGenre ")), std::string::npos);
  EXPECT_EQ(r.unites, L"grades");
  EXPECT_EQ(r.connus, (std::vector<std::wstring>{L"A", L"B", L"C", L"D"}));
  EXPECT_EQ(r.aCalculer, (std::vector<std::wstring>{L"P", L"Q", L"R"}));
}

}  // namespace
}  // namespace veltora
