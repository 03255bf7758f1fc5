#include "jobs/helmert.h"
#include "arx/db/dballents.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/dialogs/helmert_dlg.h"
#include "calc/helmert/controle_helmert.h"
#include "calc/helmert/couples_fichier.h"
#include "calc/helmert/rapport_helmert.h"
#include "report/html_document.h"
#include "support/atelier.h"
#include "support/golden.h"
#include "support/projet_essai.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace veltora {
namespace {

using Points = std::vector<AcGePoint2d>;

/// Scale, rotation (bearings grow by it) and displacement of the origin, exactly.
Points portes(const Points& points, double echelle, double rotation, AcGeVector2d deplacement) {
  Points resultat;
  const double a = echelle * std::cos(rotation);
  const double b = echelle * std::sin(rotation);
  for (const AcGePoint2d& p : points) {
    resultat.emplace_back(a * p.x + b * p.y + deplacement.x, a * p.y - b * p.x + deplacement.y);
  }
  return resultat;
}

const Points kChamp = {{100, 200}, {400, 250}, {350, 600}, {80, 520}};

TEST(CalculerHelmert, ExactSimilaritiesComeBack) {
  struct Cas {
    const char* nom;
    double echelle, rotation;
    AcGeVector2d deplacement;
    AcGeVector2d origine;
  };
  const std::vector<Cas> cas = {
      {"identity", 1, 0, {0, 0}, {0, 0}},
      {"displacement", 1, 0, {5000, -70}, {0, 0}},
      {"quarter turn", 1, std::acos(0.0), {0, 0}, {0, 0}},
      {"nearly a half turn back", 2.5, -3.1, {10, 20}, {0, 0}},
      {"to national coordinates", 0.9996, 0.7, {650000, 6860000}, {0, 0}},
      {"at national coordinates", 1.0003, 0.01, {12, -34}, {650000, 6860000}},
  };
  for (const Cas& c : cas) {
    Points depart = kChamp;
    for (AcGePoint2d& p : depart) p = p + c.origine;
    const couplesHelmert couples{depart, portes(depart, c.echelle, c.rotation, c.deplacement)};
    resultatHelmert r;
    Points obtenus;
    ASSERT_TRUE(transformerHelmert(couples, obtenus, r)) << c.nom;
    // Without centring, the large coordinates cost digits.
    const double tolerance = c.origine.x > 0 ? 1e-4 : 1e-9;
    EXPECT_NEAR(r.echelle, c.echelle, tolerance) << c.nom;
    EXPECT_NEAR(r.rotation, c.rotation, tolerance) << c.nom;
    EXPECT_NEAR(r.ab.x, c.echelle * std::cos(c.rotation), tolerance) << c.nom;
    EXPECT_NEAR(r.ab.y, c.echelle * std::sin(c.rotation), tolerance) << c.nom;
    const AcGeMatrix3d matrice = matriceHelmert(depart, r);
    for (std::size_t i = 0; i < depart.size(); ++i) {
      EXPECT_LT(obtenus[i].distanceTo(couples.arrivee[i]), 500 * tolerance) << c.nom << " " << i;
      const AcGePoint3d p = matrice * AcGePoint3d(depart[i].x, depart[i].y, 7);
      EXPECT_LT(obtenus[i].distanceTo({p.x, p.y}), 1e-6) << c.nom << ": entities go where points go";
      EXPECT_NEAR(p.z, 7 * r.echelle, 1e-9) << c.nom;
    }
  }
}

TEST(CalculerHelmert, ResidualsAreThoseOfLeastSquares) {
  couplesHelmert couples{kChamp, portes(kChamp, 1.5, 0.3, {40, -20})};
  const AcGeVector2d bruits[4] = {{0.3, -0.1}, {-0.2, 0.25}, {0.05, 0.4}, {-0.35, -0.3}};
  for (std::size_t i = 0; i < 4; ++i) couples.arrivee[i] = couples.arrivee[i] + bruits[i];
  resultatHelmert r;
  Points obtenus;
  ASSERT_TRUE(transformerHelmert(couples, obtenus, r));
  const auto somme = [&](const Points& p) { return calculerEcarts(p, couples.arrivee).sommeCarres; };
  const double minimum = somme(obtenus);
  for (const double d : {-1e-3, 1e-3}) {  // any neighbour of the solution fits worse
    EXPECT_GT(somme(portes(obtenus, 1 + d, 0, {0, 0})), minimum);
    EXPECT_GT(somme(portes(obtenus, 1, d, {0, 0})), minimum);
    EXPECT_GT(somme(portes(obtenus, 1, 0, {d, 0})), minimum);
    EXPECT_GT(somme(portes(obtenus, 1, 0, {0, d})), minimum);
  }
}

TEST(CalculerHelmert, RefusesWhatDeterminesNothing) {
  const std::vector<couplesHelmert> cas = {{{}, {}},
                                           {kChamp, {{1, 2}}},
                                           {{{5, 5}}, {{6, 6}}},
                                           {{{5, 5}, {5, 5}, {5, 5}}, {{1, 1}, {2, 2}, {3, 3}}}};
  for (const couplesHelmert& couples : cas) {
    resultatHelmert r;
    r.echelle = -7.0;
    Points obtenus{{1, 1}};
    EXPECT_FALSE(transformerHelmert(couples, obtenus, r));
    EXPECT_EQ(r.echelle, -7.0);
    EXPECT_EQ(obtenus.size(), 1U);
    htmlDocument rapport;
    EXPECT_FALSE(rapportHelmert(couples, rapport));
    EXPECT_EQ(rapport.contenu(), htmlDocument().contenu()) << "the report stage is not run";
  }
}

TEST(CalculerHelmert, HelmertDeterminant) {
  // The determinant is (n * sum of the squared distances to the mean)^2, whatever the unit: 1.6e-11 here.
  const Points petits = {{0, 0}, {1e-3, 0}, {0, 1e-3}};
  resultatHelmert r;
  Points obtenus;
  EXPECT_FALSE(transformerHelmert({petits, petits}, obtenus, r)) << "sound pairs, a millimetre apart";
  EXPECT_TRUE(transformerHelmert({portes(petits, 10, 0, {0, 0}), petits}, obtenus, r));
}

/// The largest residual of exact pairs whose departure lies at an origin.
double residuExact(AcGeVector2d origine) {
  Points depart = kChamp;
  for (AcGePoint2d& p : depart) p = p + origine;
  const couplesHelmert couples{depart, portes(depart, 1.0003, 0.01, {12, -34})};
  resultatHelmert r;
  Points obtenus;
  EXPECT_TRUE(transformerHelmert(couples, obtenus, r));
  return calculerEcarts(obtenus, couples.arrivee).superieur;
}

TEST(CalculerHelmert, HelmertSansCentrage) {
  EXPECT_LT(residuExact({0, 0}), 1e-9);
  const double loin = residuExact({650000, 6860000});
  EXPECT_GT(loin, 1e-6) << "digits are lost";
  EXPECT_LT(loin, 2.7e-3);
}

TEST(Helmert, PairsThatDisagreeAreDoubted) {
  struct Cas {
    const char* nom;
    const char* octets;
    const char* phrases;
  };
  // Scale 2, a quarter turn, displacement (100, 200): X = 2 y + 100, Y = -2 x + 200.
  const std::vector<Cas> cas = {
      {"sound", "A 0 0 100 200\nB 50 0 100 100\nC 50 40 180 100.01\nD 0 40 180 199.99\n", ""},
      {"one moved", "A 0 0 100 200\nB 50 0 100 100\nC 50 40 183 100\nD 0 40 180 200\nE 20 20 140 160\n",
       "à vérifier : le couple C s'écarte de 3.000 de ce que donnent les autres, qui s'accordent à 0.000 "
       "près\n"},
      {"one exchanged", "A 0 0 100 200\nB 50 0 100 100\nC 50 40 180 100\nD 0 40 200 180\n",
       "à vérifier : le couple D s'écarte de 28.284 de ce que donnent les autres, qui s'accordent à 0.000 "
       "près ; X et "
       "Y de son arrivée semblent échangés\n"},
      {"one departure exchanged", "A 0 0 100 200\nB 50 0 100 100\nC 50 40 180 100\nD 40 0 180 200\n",
       "à vérifier : le couple D s'écarte de 113.137 de ce que donnent les autres, qui s'accordent à 0.000 "
       "près ; X et "
       "Y de son départ semblent échangés\n"},
      {"mirrored", "A 0 0 200 100\nB 50 0 100 100\nC 50 40 100 180\nD 0 40 200 180\n",
       "à vérifier : un des deux systèmes est l'image de l'autre dans un miroir : avec X et Y échangés d'un "
       "côté, tout "
       "s'accorde à 0.000 près\n"},
      {"three that disagree", "A 0 0 100 200\nB 50 0 110 90\nC 50 40 180 100\n",
       "à vérifier : les couples s'accordent mal : écart de 7.071 pour une étendue de 152\n"},
  };
  for (const Cas& c : cas) {
    const couplesNommes lus = lireCouples(c.octets);
    resultatHelmert r;
    Points obtenus;
    ASSERT_TRUE(transformerHelmert(lus.couples, obtenus, r)) << c.nom;
    base::Remarques remarques;
    controlerCouples(lus, obtenus, remarques);
    EXPECT_EQ(texteDe(remarques), c.phrases) << c.nom;
  }
  // What the raw coordinates lose is told, with the distance from the origin.
  couplesNommes loin = lireCouples("A 0 0 1 1\nB 0 0 1 1\nC 0 0 1 1\n");
  loin.couples.depart = {{650000, 6860000}, {650050, 6860000}, {650050, 6860040}};
  loin.couples.arrivee = {{100, 200}, {100, 100}, {180, 100}};
  resultatHelmert r;
  Points obtenus;
  ASSERT_TRUE(transformerHelmert(loin.couples, obtenus, r));
  base::Remarques remarques;
  controlerCouples(loin, obtenus, remarques);
  EXPECT_NE(texteDe(remarques).find("sont loin de l'origine (6890770), ce qui coûte jusqu'à 0.000"),
            std::string::npos)
      << texteDe(remarques);
  EXPECT_FALSE(remarques.douteuses());
}

/// Four pairs of a similarity with deviations of some units.
couplesHelmert couplesBruites() {
  couplesHelmert couples{kChamp, portes(kChamp, 2, 0.5, {1000, 2000})};
  couples.arrivee[0] = couples.arrivee[0] + AcGeVector2d(3, 0);
  couples.arrivee[2] = couples.arrivee[2] + AcGeVector2d(0, -5);
  return couples;
}

TEST(RapportHelmert, HelmertEmq) {
  htmlDocument rapport;
  const couplesHelmert couples = couplesBruites();
  ASSERT_TRUE(rapportHelmert(couples, rapport));
  EXPECT_TRUE(memeQueReference("rapport_helmert.html", rapport.contenu()));
  const ecartsHelmert grands = calculerEcarts({{0, 0}, {0, 0}}, {{3, 4}, {0, 12}});
  EXPECT_NEAR(grands.quadratique, std::sqrt((25.0 + 144.0) / 2 - 1.0), 1e-12);
  EXPECT_EQ(grands.inferieur, 5.0);
  EXPECT_EQ(grands.superieur, 12.0);
  EXPECT_EQ(grands.moyenne, 8.5);
  EXPECT_TRUE(std::isnan(calculerEcarts({{0, 0}}, {{0, 0.5}}).quadratique));
}

// ---- the file of pairs and the one call ----

TEST(LireCouples, ReadsNamesAndTellsWhatItIgnores) {
  const couplesNommes lus = lireCouples(
      "\xEF\xBB\xBF# x y X Y\r\n* autre\n\n  1 2 3 4\r\nÉté 1e2 -2. +3 .5\n\"P 2\" 1 2 3 4\n1 2 3\nA 1 2 3 "
      "x\nB 1 2 3 4 5\n"
      "C 1,5 2 3 4\nD 1 2 3 1e999\n");
  std::wstring noms;
  for (const std::wstring& nom : lus.noms) noms += nom + L"|";
  EXPECT_EQ(noms, L"ligne 4|Été|P 2|");
  EXPECT_EQ(lus.couples.depart[1], AcGePoint2d(100, -2));
  EXPECT_EQ(lus.couples.arrivee[1], AcGePoint2d(3, 0.5));
  ASSERT_EQ(lus.remarques.nombre(), 5U);
  EXPECT_EQ(phrasesDe(lus.remarques)[0], "ligne 7 : ignorée, « 1 2 3 » n'est pas de la forme [nom] x y X Y");
  EXPECT_EQ(base::toUtf8(lireCouples("\xC9t\xE9 1 2 3 4").noms.at(0)), "Été") << "Windows-1252";
}

// What the buttons do is told in the scenario helmert.
TEST(Helmert, HelmertCroisement) {
  CHelmertDLG dialogue;
  const couplesHelmert couples = couplesBruites();
  dialogue.ajouter(couples);
  resultatHelmert r;
  Points obtenus;
  ASSERT_TRUE(transformerHelmert(couples, obtenus, r));
  const double variance = calculerEcarts(obtenus, couples.arrivee).sommeCarres / 3.0;
  EXPECT_GT(std::abs(variance - r.echelle), 1.0);
  EXPECT_NEAR(base::lireReel(dialogue.echelle.text()), variance, 5e-5) << "where the caption says scale";
  EXPECT_EQ(dialogue.emq.text(), L"");
  CHelmertDLG deux;
  deux.ajouter({{couples.depart[0], couples.depart[1]}, {couples.arrivee[0], couples.arrivee[1]}});
  EXPECT_EQ(deux.echelle.text() + deux.deplX.text(), L"") << "fewer than three pairs";
  EXPECT_NEAR(base::lireReel(dialogue.rotation.text()), r.rotation * 200 / std::acos(-1.0), 5e-5);
}

class HelmertUnAppel : public ProjetEssai {};

TEST_F(HelmertUnAppel, ReportsAppliesAndSaysWhatIsWrong) {
  const AcDbObjectId point = mettre(m_dessin, new AcDbPoint({100, 0, 0}));
  struct Cas {
    const char* nom;
    const char* octets;
    const char* erreur;
  };
  const std::vector<Cas> cas = {
      {"missing", nullptr, "fichier introuvable ou illisible"},
      {"two pairs", "1 2 3 4\nx\n1 3 3 5", "2 couples de points, il en faut au moins trois"},
      {"one place", "1 2 3 4\n1 2 3 5\n1 2 3 6", "transformation indéterminée"},
      {"good", "0 0 10 0\n5 5 5 5\n100 0 10 100\nC 0 100 -90 0", ""},
  };
  for (const Cas& c : cas) {
    demandeHelmert demande;
    demande.fichier = m_dossier.chemin / (std::string(c.nom) + ".txt");
    if (c.octets) m_dossier.ecrire(std::string(c.nom) + ".txt", c.octets);
    demande.rapport = m_dossier.chemin / "r.html";
    demande.appliquer = true;
    resultatHelmertUnAppel resultat;
    EXPECT_EQ(executerHelmert(demande, resultat), *c.erreur == '\0') << c.nom;
    EXPECT_NE(base::toUtf8(resultat.erreur).find(c.erreur), std::string::npos)
        << base::toUtf8(resultat.erreur);
    EXPECT_EQ(resultat.transformees, *c.erreur ? 0 : 1) << c.nom;
    EXPECT_EQ(m_dossier.lire("r.html") == "(absent)", *c.erreur != '\0') << c.nom;
  }
  const AcDbObjectPointer<AcDbPoint> porte(point, AcDb::kForRead);
  EXPECT_TRUE(porte->position().isEqualTo({10, 100, 0}, {1e-6, 1e-6})) << porte->position().x;
}

}  // namespace
}  // namespace veltora
