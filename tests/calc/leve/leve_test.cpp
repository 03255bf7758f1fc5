// Surveys made from coordinates, and what comes back.

#include "base/text.h"
#include "calc/angles.h"
#include "calc/leve/calcul_leve.h"
#include "calc/leve/fichiers_leve.h"
#include "calc/network/fichier_mc.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace veltora {
namespace {

struct Place {
  double x = 0.0, y = 0.0, z = 0.0;
};

/// A country of known and unknown points, measured without noise by an instrument with errors that both faces
/// cancel.
class Pays {
public:
  std::map<std::wstring, Place> connus{{L"R1", {652000, 6862000, 203}}, {L"R2", {652400, 6862060, 215}},
                                       {L"R3", {652310, 6862420, 196}}, {L"R4", {651950, 6862380, 208}},
                                       {L"S1", {652150, 6862150, 204}}, {L"S2", {652330, 6862300, 199}}};
  std::map<std::wstring, Place> inconnus{{L"E1", {652205.1234, 6862190.4321, 203.11}},
                                         {L"E2", {652280.5678, 6862230.8765, 201.07}},
                                         {L"L1", {652100.2468, 6862270.1357, 205.55}},
                                         {L"P1", {652190.1111, 6862130.2222, 204.44}},
                                         {L"P2", {652240.3333, 6862260.4444, 200.66}}};
  leveTerrain leve;
  optionsLeve options;
  double collimation = 0.0123;
  double index = 0.0087;
  double hAppareil = 1.55;
  double hMire = 1.80;
  bool distances = true;
  bool secondeFace = true;

  [[nodiscard]] Place place(const std::wstring& nom) const {
    const auto connu = connus.find(nom);
    return connu != connus.end() ? connu->second : inconnus.at(nom);
  }
  /// Sights these points from a station whose circle points to `zero`.
  void stationner(const std::wstring& nom, double zero, const std::vector<std::wstring>& vises) {
    miseEnPlace station;
    station.nom = nom;
    station.ligne = static_cast<int>(leve.stations.size()) + 1;
    const Place a = place(nom);
    for (const std::wstring& vise : vises) {
      const Place b = place(vise);
      const double d = std::hypot(b.x - a.x, b.y - a.y);
      const double dz = b.z + hMire - a.z - hAppareil;
      const double h = std::atan2(b.x - a.x, b.y - a.y) * 200.0 / kPi - zero + 800.0;
      const double v = std::atan2(d, dz) * 200.0 / kPi;
      for (const bool seconde : {false, true}) {
        if (seconde && !secondeFace) continue;
        viseeTerrain une;
        une.nom = vise;
        une.ligne = 10;
        une.h = std::fmod(h + (seconde ? 200.0 + collimation : -collimation), 400.0);
        une.v = seconde ? 400.0 - v + index : v + index;
        if (distances) une.di = std::hypot(d, dz);
        une.hMire = hMire;
        une.hAppareil = hAppareil;
        station.visees.push_back(une);
      }
    }
    leve.stations.push_back(station);
  }
  [[nodiscard]] std::vector<pointConnuLeve> canevas() const {
    std::vector<pointConnuLeve> liste;
    for (const auto& [nom, p] : connus) liste.push_back({nom, p.x, p.y, p.z});
    return liste;
  }
  [[nodiscard]] resultatCalculLeve calculer() const { return calculerLeve(leve, canevas(), options); }
  void retrouve(const resultatCalculLeve& resultat, const std::vector<std::wstring>& noms) const {
    for (const std::wstring& nom : noms) {
      const auto ou = std::find_if(resultat.points.begin(), resultat.points.end(),
                                   [&](const pointDuLeve& p) { return p.nom == nom; });
      ASSERT_NE(ou, resultat.points.end()) << base::toUtf8(nom);
      const Place p = place(nom);
      EXPECT_NEAR(ou->x, p.x, 2e-6) << base::toUtf8(nom);
      EXPECT_NEAR(ou->y, p.y, 2e-6) << base::toUtf8(nom);
      ASSERT_TRUE(ou->z) << base::toUtf8(nom);
      EXPECT_NEAR(*ou->z, p.z, 2e-6) << base::toUtf8(nom);
    }
  }
};

bool dit(const base::Remarques& remarques, const std::wstring& texte, bool douteuse = true) {
  return std::any_of(remarques.begin(), remarques.end(), [&](const base::Remarque& r) {
    return r.douteuse == douteuse && r.texte.find(texte) != std::wstring::npos;
  });
}

TEST(Leve, FacesStationsConnuesLanceesEtLibres) {
  Pays pays;
  pays.stationner(L"E2", 311.0, {L"E1", L"S2", L"P2"});  // before the station that sights it
  pays.stationner(L"S1", 123.456, {L"R1", L"R2", L"R4", L"E1", L"P1"});
  pays.stationner(L"E1", 33.0, {L"S1", L"E2", L"P1", L"P2"});
  pays.stationner(L"L1", 222.0, {L"R1", L"R3", L"R4", L"P2"});
  const resultatCalculLeve r = pays.calculer();
  EXPECT_FALSE(r.remarques.douteuses());
  pays.retrouve(r, {L"E1", L"E2", L"L1", L"P1", L"P2"});
  ASSERT_EQ(r.stations.size(), 4U);
  EXPECT_EQ(r.stations[0].origine, origineStation::kLancee);
  EXPECT_EQ(r.stations[1].origine, origineStation::kCanevas);
  EXPECT_EQ(r.stations[3].origine, origineStation::kLibre);
  EXPECT_NEAR(r.stations[1].place.g0, 123.456, 1e-6);
  EXPECT_NEAR(r.stations[3].place.g0, 222.0, 1e-6);
  EXPECT_EQ(r.stations[3].place.surabondantes, 3);
  EXPECT_NEAR(r.stations[1].mesures.faces.collimation, 0.0123, 1e-9);
  EXPECT_NEAR(r.stations[1].mesures.faces.index, 0.0087, 1e-9);
  EXPECT_EQ(r.points[0].nom, L"E2");
  const auto& p2 =
      *std::find_if(r.points.begin(), r.points.end(), [](const auto& p) { return p.nom == L"P2"; });
  EXPECT_EQ(p2.stations.size(), 3U);
  EXPECT_EQ(r.points[1].nom, L"E1");
  EXPECT_EQ(r.points[1].stations, (std::vector<std::wstring>{L"S1", L"E2"}));  // not by itself
}

TEST(Leve, OrientationPonderee) {
  // References 100 m and 300 m away whose directions are 4 mgr apart: the mean leaves 3 to the near one, 1 to
  // the far one.
  Pays pays;
  pays.connus = {
      {L"S1", {652000, 6862000, 200}}, {L"R1", {652000, 6862100, 200}}, {L"R2", {652300, 6862000, 200}}};
  pays.inconnus = {{L"P1", {652010, 6862010, 200}}};
  pays.stationner(L"S1", 50.0, {L"R1", L"R2", L"P1"});
  for (std::size_t i = 0; i < 2; ++i) *pays.leve.stations[0].visees[i].h += 0.004;
  const resultatCalculLeve r = pays.calculer();
  EXPECT_NEAR(r.stations[0].place.g0, 50.0 - 0.001, 1e-7);
  EXPECT_NEAR(*r.stations[0].place.references[0].ecartH, 0.003, 1e-7);
  EXPECT_NEAR(*r.stations[0].place.references[1].ecartH, -0.001, 1e-7);
  // Over all but one: sqrt((100 9 + 300 1) / 400 2 / 1).
  EXPECT_NEAR(*r.stations[0].place.emq, 0.001 * std::sqrt(6.0), 1e-7);
}

TEST(Leve, RelevementParDirections) {
  Pays pays;
  pays.distances = false;
  pays.stationner(L"L1", 222.0, {L"R1", L"R3", L"R4", L"R2"});
  resultatCalculLeve r = pays.calculer();
  ASSERT_TRUE(r.stations[0].refus.empty());
  EXPECT_NEAR(r.stations[0].place.x, pays.inconnus[L"L1"].x, 1e-6);
  EXPECT_NEAR(r.stations[0].place.y, pays.inconnus[L"L1"].y, 1e-6);
  EXPECT_EQ(r.stations[0].place.surabondantes, 1);
  pays.leve.stations[0].visees.resize(6);  // three directions in both faces: nothing to check them by
  r = pays.calculer();
  EXPECT_NEAR(r.stations[0].place.x, pays.inconnus[L"L1"].x, 1e-5);
  EXPECT_TRUE(dit(r.remarques, L"sans aucun contrôle"));
  // On the circle through all three the place is open.
  Pays cercle;
  cercle.distances = false;
  cercle.connus = {
      {L"R1", {652100, 6862000, 200}}, {L"R2", {652000, 6862100, 200}}, {L"R3", {651900, 6862000, 200}}};
  cercle.inconnus = {{L"L1", {652060, 6861920, 200}}};
  cercle.stationner(L"L1", 10.0, {L"R1", L"R2", L"R3"});
  r = cercle.calculer();
  EXPECT_TRUE(dit(r.remarques, L"indéterminée") || dit(r.remarques, L"sans aucun contrôle"));
}

TEST(Leve, EcartTypeDeStationLibre) {
  // Between two points 100 m east and west, one north: the eastern distance 6 mm too long. Along X the
  // distances say -3 mm with a variance of 3.2^2 / 2 mm2, the northern direction against the other two says 0
  // with 1.5 (1.5708^2 + 2^2): the weighted mean is -1.9636 mm. v'Pv = (4.0364^2 + 1.9636^2) / 3.2^2
  // + 1.9636^2 / 9.7011 over 3 makes m0 0.8879.
  Pays pays;
  pays.connus = {
      {L"R1", {652100, 6862000, 200}}, {L"R2", {652000, 6862100, 200}}, {L"R3", {651900, 6862000, 200}}};
  pays.inconnus = {{L"L1", {652000, 6862000, 200}}};
  pays.hMire = pays.hAppareil;
  pays.secondeFace = false;
  pays.index = pays.collimation = 0.0;
  pays.stationner(L"L1", 10.0, {L"R1", L"R2", L"R3"});
  *pays.leve.stations[0].visees[0].di += 0.006;
  const resultatCalculLeve r = pays.calculer();
  const stationLeve& s = r.stations[0].place;
  EXPECT_NEAR(s.x, 652000.0 - 0.0019636, 1e-6);
  EXPECT_NEAR(s.y, 6862000.0, 1e-6);
  EXPECT_EQ(s.surabondantes, 3);
  ASSERT_TRUE(s.sx);
  EXPECT_NEAR(*s.sx, 0.8879 * 0.0018306, 1e-6);
}

TEST(Leve, CorrectionsSurDemande) {
  Pays pays;
  pays.connus = {{L"S1", {652000, 6862000, 200}}, {L"R1", {652000, 6863000, 200}}};
  pays.inconnus = {{L"P1", {653000, 6862000, 200}}};
  pays.stationner(L"S1", 0.0, {L"R1", L"P1"});
  resultatCalculLeve r = pays.calculer();
  EXPECT_NEAR(*r.points[0].z, 200.0, 1e-6);
  pays.options.refraction = 0.13;
  pays.options.facteur = 1.0001;
  r = pays.calculer();
  EXPECT_NEAR(*r.points[0].z, 200.0 + 0.87 * 1e6 / (2.0 * 6371000.0), 1e-5);
  EXPECT_NEAR(r.points[0].x, 653000.1, 1e-5);
}

TEST(Leve, CeQuiEstFauxSeDit) {
  struct Cas {
    const char* nom;
    void (*fausser)(Pays&);
    const wchar_t* dit;
  };
  const Cas cas[] = {
      {"X et Y",
       [](Pays& p) {
         for (auto& [n, q] : p.connus) std::swap(q.x, q.y);
       },
       L"X et Y sont inversés"},
      {"une référence", [](Pays& p) { p.connus[L"R2"].x += 1.0; }, L"les autres s'accordent sans « R2 »"},
      {"degrés pour grades",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) *v.h = std::fmod(*v.h, 400.0) * 0.9;
       },
       L"tout s'accorde si les angles sont des degrés"},
      {"pieds",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) *v.di *= 0.3048;
       },
       L"rapport des pieds aux mètres"},
      {"échelle",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) *v.di *= 1.001;
       },
       L"rapport 1.001000 : facteur d'échelle"},
      {"petite échelle",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) *v.di *= 1.00008;
       },
       L"Avec un facteur de 0.999920"},
      {"mire",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) v.hMire = 0.0;
       },
       L"hauteurs de mire et d'appareil ?"},
      {"sans mire",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) v.hMire.reset();
       },
       L"sans hauteur de mire, comptée 0 : 10"},
      {"sans appareil",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) v.hAppareil.reset();
       },
       L"sans hauteur d'appareil, comptée 0 : 10"},
      {"sites",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees) v.v = 100.0 - *v.v;
       },
       L"semblent être des sites"},
      {"deux points d'un nom", [](Pays& p) { *p.leve.stations[0].visees[9].di += 3.0; },
       L"visés à deux endroits (P1)"},
      {"sans orientation",
       [](Pays& p) {
         p.connus = {{L"S1", p.connus[L"S1"]}};
       },
       L"aucune référence connue"},
      {"un contrôle de trop peu",
       [](Pays& p) {
         for (auto& v : p.leve.stations[0].visees)
           if (v.nom[0] == L'R') v.di.reset();
         p.leve.stations[0].visees.erase(p.leve.stations[0].visees.begin() + 2,
                                         p.leve.stations[0].visees.begin() + 6);
       },
       L"une seule direction d'orientation, sans aucun contrôle"},
      {"canevas double",
       [](Pays& p) {
         p.connus[L"0R1"] = {0.0, 0.0, 0.0};
       },
       L"deux fois, à des places différentes"},
      {"carnet ailleurs",
       [](Pays& p) {
         p.leve.stations[0].position = positionLeve{1.0, 2.0, {}};
       },
       L"ailleurs que le canevas"},
      {"faces",
       [](Pays& p) {
         for (std::size_t i = 1; i < 10; i += 2) *p.leve.stations[0].visees[i].v += 0.3;
       },
       L"ne s'accordent pas"},
  };
  for (const Cas& c : cas) {
    Pays pays;
    pays.stationner(L"S1", 123.456, {L"R1", L"R2", L"R4", L"E1", L"P1"});
    EXPECT_FALSE(pays.calculer().remarques.douteuses()) << c.nom;
    c.fausser(pays);
    const resultatCalculLeve r = pays.calculer();
    EXPECT_TRUE(dit(r.remarques, c.dit)) << c.nom;
  }
}

TEST(Leve, DeterminationsContradictoires) {
  Pays pays;
  pays.stationner(L"S1", 0.0, {L"R1", L"R2", L"P1"});
  pays.stationner(L"S2", 0.0, {L"R2", L"R3", L"P1"});
  for (viseeTerrain& v : pays.leve.stations[1].visees)
    if (v.nom == L"P1") *v.di += 0.2;
  const resultatCalculLeve r = pays.calculer();
  EXPECT_TRUE(dit(r.remarques, L"déterminations s'écartent"));
  EXPECT_NEAR(r.points[0].ecart, 0.1, 0.005);  // along a slope
}

TEST(Leve, PolygonaleEtReseau) {
  Pays pays;
  pays.stationner(L"S1", 123.456, {L"R1", L"E1"});
  pays.stationner(L"E1", 33.0, {L"S1", L"E2", L"P1"});
  pays.stationner(L"E2", 311.0, {L"E1", L"S2"});
  pays.stationner(L"S2", 77.0, {L"E2", L"R3"});
  const resultatCalculLeve r = pays.calculer();
  const auto trouvees = polygonalesDuLeve(r, pays.canevas());
  ASSERT_EQ(trouvees.size(), 1U);
  polygonaleOuverteObs donnees;
  EXPECT_TRUE(lireObsOuverte(trouvees[0].contenu, donnees).empty());
  lignesPolygonale lignes;
  for (const ligneObs& ligne : donnees.lignes) lignes.Add(lireLigne(ligne));
  base::CArray<double> X, Y, Z;
  fermeturesPolygonale fermetures;
  ASSERT_EQ(calculerPolygonaleOuverte(donnees, lignes, X, Y, Z, nullptr, false, false, &fermetures), 1);
  EXPECT_NEAR(fermetures.E, 0.0, 1e-3);  // the closing angle is written with four decimals
  const std::wstring debut = trouvees[0].stations.front();
  const std::wstring autre = debut == L"S1" ? L"E1" : L"E2";
  EXPECT_NEAR(X[0], pays.inconnus[autre].x, 5e-4);
  EXPECT_NEAR(Y[0], pays.inconnus[autre].y, 5e-4);
  EXPECT_NEAR(Z[1], pays.inconnus[autre].z, 5e-4);

  reseauMoindresCarres reseau;
  base::Remarques remarques;
  EXPECT_TRUE(lireMc(reseauDuLeve(r, pays.canevas()), reseau, &remarques));
  EXPECT_FALSE(remarques.douteuses());
  const std::string texte = reseauDuLeve(r, pays.canevas());
  // At E1 from S1 to E2: the bearings' difference by coordinates.
  const Place s = pays.place(L"E1"), a = pays.place(L"S1"), b = pays.place(L"E2");
  const double angle =
      reduireAngle(calculGisement(s.x, s.y, b.x, b.y, 0) - calculGisement(s.x, s.y, a.x, a.y, 0), 400.0);
  std::string attendu = "E1 S1 E2 ";
  base::ajouterFixe(attendu, angle, 5);
  EXPECT_NE(texte.find(attendu), std::string::npos) << texte;
}

TEST(Leve, PolygonaleFermeeRevientASonDepart) {
  for (const bool aRebours : {false, true}) {  // whichever way the book went around
    Pays pays;
    pays.stationner(L"S1", 123.456, {L"R1", aRebours ? L"E2" : L"E1", aRebours ? L"E1" : L"E2"});
    pays.stationner(L"E1", 33.0, {L"S1", L"E2"});
    pays.stationner(L"E2", 311.0, {L"E1", L"S1"});
    const auto trouvees = polygonalesDuLeve(pays.calculer(), pays.canevas());
    ASSERT_EQ(trouvees.size(), 1U);
    EXPECT_EQ(trouvees[0].stations.size(), 4U);
    polygonaleFermeeObs donnees;
    EXPECT_TRUE(lireObsFermee(trouvees[0].contenu, donnees).empty());
    ASSERT_EQ(donnees.lignes.size(), 3U);
    double g = donnees.vo;
    double interieurs = 0.0;
    Place p{donnees.x, donnees.y, donnees.z};
    for (std::size_t i = 0; i < 3; ++i) {
      const obsPolygonale ligne = lireLigne(donnees.lignes[i]);
      if (i > 0) g += ligne.angle - 200.0;
      interieurs += 400.0 - ligne.angle;
      p.x += ligne.distance * std::sin(g * kPi / 200.0);
      p.y += ligne.distance * std::cos(g * kPi / 200.0);
      p.z += ligne.dz;
      const Place juste = i < 2 ? pays.inconnus[std::wstring(ligne.nom)] : pays.place(L"S1");
      EXPECT_NEAR(p.x, juste.x, 1e-3);
      EXPECT_NEAR(p.y, juste.y, 1e-3);
      EXPECT_NEAR(p.z, juste.z, 1e-3);
    }
    EXPECT_NEAR(interieurs, 200.0, 1e-3);
    EXPECT_EQ(donnees.modeNivellement, 2);
  }
}

TEST(Leve, NomsEtSansResultat) {
  EXPECT_EQ(cleNomLeve(L" 00a1 "), L"A1");
  EXPECT_EQ(cleNomLeve(L"000"), L"0");
  EXPECT_EQ(cleNomLeve(L""), L"");
  const resultatCalculLeve vide = calculerLeve({}, {}, {});
  EXPECT_TRUE(vide.points.empty() && vide.stations.empty());
}

}  // namespace
}  // namespace veltora
