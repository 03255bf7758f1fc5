#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/network/controle_reseau.h"
#include "calc/network/fichier_mc.h"
#include "calc/network/lieux.h"
#include "calc/network/moindres_carres_plani.h"
#include "calc/network/reseau_moindres_carres.h"
#include "calc/network/systeme_normal.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>
#include <Eigen/Dense>
#include <cmath>
#include <random>
#include <stdexcept>

namespace veltora {
namespace {

const pointACalculer* chercher(const reseauMoindresCarres& reseau, const wchar_t* nom) {
  for (const pointACalculer& p : reseau.points) {
    if (p.nom == nom) return &p;
  }
  return nullptr;
}

bool lire(reseauMoindresCarres& reseau, const std::string& texte, base::Remarques* remarques = nullptr) {
  return lireMc(texte, reseau, remarques);
}

/// A network read from a text that has to be good.
struct reseauLu : reseauMoindresCarres {
  explicit reseauLu(const std::string& texte) { EXPECT_TRUE(lire(*this, texte)); }
};

/// A locus as the case file writes it: "line x y x y", "circle x y radius", "arc radius from to" around the
/// origin, "ray angle" through it.
lieuGeometrique lieuDe(const std::string& ecrit) {
  const std::size_t blanc = ecrit.find(' ');
  const std::string genre = ecrit.substr(0, blanc);
  std::vector<double> v;
  for (std::string_view reste = std::string_view(ecrit).substr(blanc + 1); !reste.empty();) {
    v.push_back(base::lireReel(reste));
    reste.remove_prefix(std::min(reste.find(' '), reste.size() - 1) + 1);
  }
  if (genre == "line") return lieuGeometrique::droite({v[0], v[1]}, {v[2], v[3]});
  if (genre == "ray") return lieuGeometrique::droite({0, 0}, {std::cos(v[0]), std::sin(v[0])});
  lieuGeometrique lieu = lieuGeometrique::cercle({v[0], v[1]}, v[2]);
  if (genre == "circle") return lieu;
  lieu = lieuGeometrique::cercle({0, 0}, v[0]);
  lieu.genre = lieuGeometrique::kArc;
  lieu.debut = v[1];
  lieu.fin = v[2];
  return lieu;
}

TEST(Lieux, Intersections) {
  for (const CaseRow& cas : caseRows("calc/cases/network.txt", "loci")) {
    const pointsCommuns trouves = intersecter(lieuDe(cas[0]), lieuDe(cas[1]));
    const std::vector<std::string> attendus = cas[2].empty() ? std::vector<std::string>() : cas.list(2);
    ASSERT_EQ(trouves.nombre, static_cast<int>(attendus.size())) << cas;
    for (std::size_t i = 0; i < attendus.size(); ++i) {
      EXPECT_NEAR(trouves.points[i].x, base::lireReel(attendus[i]), 1e-9) << cas;
      EXPECT_NEAR(trouves.points[i].y, base::lireReel(attendus[i].substr(attendus[i].find(' '))), 1e-9)
          << cas;
    }
  }
}

TEST(Lieux, DeLArcCapableOnVoitLesDeuxPointsSousLAngle) {
  const AcGePoint2d vise(10, 0);
  const AcGePoint2d reference(-3, 4);
  for (const double angle : {0.3, 1.2, kPi / 2, 2.5, 3.6, 5.0, 6.2}) {
    const lieuGeometrique arc = lieuGeometrique::arcCapable(vise, reference, angle);
    ASSERT_EQ(arc.genre, lieuGeometrique::kArc) << angle;
    const double milieu = arc.debut + reduireAngle(arc.fin - arc.debut, 2 * kPi) / 2;
    const AcGePoint2d p(arc.centre.x + arc.rayon * std::cos(milieu),
                        arc.centre.y + arc.rayon * std::sin(milieu));
    const double vu = reduireAngle(
        calculGisement(p.x, p.y, vise.x, vise.y, 2) - calculGisement(p.x, p.y, reference.x, reference.y, 2),
        2 * kPi);
    EXPECT_NEAR(vu, angle, 1e-9);
  }
  for (const double aligne : {0.0, kPi, 2 * kPi, 0.9e-6, kPi - 0.9e-6, kPi + 0.9e-6, 2 * kPi - 0.9e-6}) {
    EXPECT_EQ(lieuGeometrique::arcCapable(vise, reference, aligne).genre, lieuGeometrique::kDroite) << aligne;
  }
  for (const auto& [angle, rayon] : {std::pair(1.1e-6, 6182486.6), std::pair(2 * kPi - 1.1e-6, 6182486.6),
                                     std::pair(kPi - 1.9e-6, 0.0), std::pair(kPi - 2.1e-6, 3238445.4)}) {
    const lieuGeometrique arc = lieuGeometrique::arcCapable(vise, reference, angle);
    EXPECT_EQ(arc.genre, lieuGeometrique::kArc) << angle;
    EXPECT_NEAR(arc.rayon, rayon, 0.1) << "half of the distance over the sine, but 0 next to the chord";
  }
}

TEST(Reseau, PointsProvisoires) {
  for (const CaseRow& cas : caseRows("calc/cases/network.txt", "provisional points")) {
    std::string texte;
    for (const std::string& ligne : cas.list(0)) texte += ligne + "\n";
    reseauLu reseau(texte);
    std::wstring journal;
    reseau.calculerPlani(journal, true);
    std::wstring trouves;
    for (std::size_t at = 0; (at = journal.find(L"trouvée: X=", at)) != std::wstring::npos; ++at)
      for (const std::size_t place : {at + 11, at + 28})
        trouves += L" " + base::trim(journal.substr(place, 14), L" ");
    EXPECT_EQ(base::toUtf8(trouves), cas[1].empty() ? "" : " " + cas[1]) << cas.place;
  }
}

TEST(FichierMc, SectionsUnitesEtJetonsIgnores) {
  reseauMoindresCarres reseau;
  base::Remarques remarques;
  ASSERT_TRUE(lire(reseau,
                   "* commentaire\r\na 0 0 5\nb 100 0 x\nc 1 deux\nXYZ\n\"d e\" 1.5e3 2\nOBS\n"
                   "a nord p 50 70.71 . 3\na nord p\na b q . . -1.5\nANGLES DEGRES\nAngles\nANGLES gons\n"
                   "p a b 90 10. .\n",
                   &remarques));
  ASSERT_EQ(reseau.points.size(), 5U);
  EXPECT_EQ(reseau.points[0].nom, L"A");
  EXPECT_TRUE(reseau.points[0].altiConnue);
  EXPECT_FALSE(reseau.points[1].altiConnue);
  EXPECT_EQ(reseau.points[2].nom, L"D E");
  EXPECT_EQ(reseau.points[2].X, 1500);
  EXPECT_EQ(reseau.points[3].nom, L"P");
  EXPECT_FALSE(reseau.points[3].planiConnue);
  ASSERT_EQ(reseau.observations.size(), 4U);
  EXPECT_NEAR(reseau.observations[0].mesure, kPi / 4, 1e-15);
  EXPECT_EQ(reseau.observations[0].reference, -1);
  EXPECT_EQ(reseau.observations[0].poids, 3);
  EXPECT_EQ(reseau.observations[1].type, ObservationReduite::kDistance);
  EXPECT_EQ(reseau.observations[2].mesure, -1.5);
  EXPECT_NEAR(reseau.observations[3].mesure, kPi / 2, 1e-15);
  const std::vector<std::wstring> phrases = remarques.phrases();
  EXPECT_EQ(phrases.size(), 5U);
  EXPECT_EQ(phrases.front(), L"ligne 3 : « X » n'est pas un nombre, lu comme absent");
  EXPECT_EQ(phrases.back(), L"ligne 14 : « 10. » n'est pas un nombre, lu comme absent");
  EXPECT_FALSE(lire(reseau, "OBS\n"));
}

TEST(Reseau, TrilaterationPubliee) {
  reseauLu reseau(
      "A 170.71 270.71\nB 100 100\nC 241.42 100\nOBS\nP NORD A . 100.01\nP NORD B . 100.02\n"
      "P NORD C . 100.03\n");
  std::wstring journal;
  const bilanIteration bilan = iterer(reseau, journal);
  EXPECT_LT(bilan.passes, 10);
  EXPECT_TRUE(bilan.convergence);
  const pointACalculer* p = chercher(reseau, L"P");
  ASSERT_NE(p, nullptr);
  EXPECT_NEAR(p->X, 170.7029, 5e-5);
  EXPECT_NEAR(p->Y, 170.7234, 5e-5);
  EXPECT_NE(journal.find(L"Vecteur Vecteur Solution (2 elements)"), std::wstring::npos);
  EXPECT_NE(journal.find(L"[P]\t(      170.7029\t      170.7234)"), std::wstring::npos) << journal;
}

/// A square lattice with all angles and distances to near neighbours, measured without error.
struct Treillis {
  std::vector<AcGePoint2d> vrais;
  std::string texte;
};
Treillis treillis(int cote, unsigned graine, double origineX, double origineY) {
  Treillis t;
  std::mt19937 alea(graine);
  std::uniform_real_distribution<double> ecart(-15.0, 15.0);
  for (int i = 0; i < cote * cote; ++i) {
    t.vrais.emplace_back(origineX + (i % cote) * 100.0 + ecart(alea),
                         origineY + (i / cote) * 100.0 + ecart(alea));
  }
  const auto ajouter = [&](const char* format, auto... valeurs) {
    t.texte += base::formater(format, valeurs...);
  };
  for (const int fixe : {0, 1})
    ajouter("P%d %.17g %.17g\n", fixe, t.vrais[static_cast<std::size_t>(fixe)].x,
            t.vrais[static_cast<std::size_t>(fixe)].y);
  t.texte += "OBS\n";
  const auto observer = [&](int station, int reference, int vise) {
    const auto& s = t.vrais[static_cast<std::size_t>(station)];
    const auto& r = t.vrais[static_cast<std::size_t>(reference)];
    const auto& v = t.vrais[static_cast<std::size_t>(vise)];
    const double angle =
        reduireAngle(calculGisement(s.x, s.y, v.x, v.y, 0) - calculGisement(s.x, s.y, r.x, r.y, 0), 400.0);
    ajouter("P%d P%d P%d %.13f %.13f\n", station, reference, vise, angle, s.distanceTo(v));
  };
  for (int i = 0; i < cote * cote; ++i) {
    const bool bord = i % cote == cote - 1;
    if (!bord && i >= cote) observer(i, i - cote, i + 1);
    if (i + cote < cote * cote) observer(i, bord ? i - 1 : i + 1, i + cote);
  }
  return t;
}

TEST(Reseau, SansBruitLesPointsReviennent) {
  for (const auto& [x, y] : {std::pair(1000.0, 2000.0), std::pair(650000.0, 6860000.0)}) {
    const Treillis t = treillis(5, 7, x, y);
    reseauLu reseau(t.texte);
    std::wstring journal;
    iterer(reseau, journal);
    for (std::size_t i = 0; i < t.vrais.size(); ++i) {
      const pointACalculer* p = chercher(reseau, (L"P" + std::to_wstring(i)).c_str());
      ASSERT_NE(p, nullptr);
      EXPECT_NEAR(p->X, t.vrais[i].x, 1e-6) << i;
      EXPECT_NEAR(p->Y, t.vrais[i].y, 1e-6) << i;
    }
  }
}

TEST(Reseau, LesSolutionsDenseEtCreuseEtCelleDEigenConcordent) {
  std::mt19937 alea(11);
  std::normal_distribution<double> bruit(0.0, 1.0);
  constexpr int n = 60;
  systemeNormal systeme(n);
  Eigen::MatrixXd A = Eigen::MatrixXd::Zero(3 * n, n);
  Eigen::VectorXd L(3 * n);
  for (int r = 0; r < 3 * n; ++r) {
    systemeNormal::Ligne ligne;
    for (const int k : {r % n, (r * 7 + 3) % n, (r * 13 + 5) % n}) {
      const double a = bruit(alea);
      ligne.coefficients.emplace_back(k, a);
      A(r, k) += a;
    }
    ligne.second = L(r) = bruit(alea);
    systeme.ajouter(ligne);
  }
  const std::vector<double> dense = systeme.resoudreDense();
  const std::vector<double> creux = systeme.resoudreCreux();
  const Eigen::VectorXd qr = A.colPivHouseholderQr().solve(L);
  ASSERT_EQ(dense.size(), static_cast<std::size_t>(n));
  ASSERT_EQ(creux.size(), static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) {
    EXPECT_NEAR(dense[static_cast<std::size_t>(i)], creux[static_cast<std::size_t>(i)], 1e-9);
    EXPECT_NEAR(dense[static_cast<std::size_t>(i)], qr(i), 1e-9);
  }
  const controleSysteme controle(systeme);
  const std::vector<double> redondances = controle.redondances();
  const Eigen::MatrixXd R =
      Eigen::MatrixXd::Identity(3 * n, 3 * n) - A * (A.transpose() * A).ldlt().solve(A.transpose());
  for (int r = 0; r < 3 * n; ++r) {
    const std::vector<double> influences = controle.influences(static_cast<std::size_t>(r));
    EXPECT_NEAR(redondances.at(static_cast<std::size_t>(r)), R(r, r), 1e-9) << r;
    for (const int j : {0, r, 3 * n - 1})
      EXPECT_NEAR(influences.at(static_cast<std::size_t>(j)), R(r, j), 1e-9) << r << " " << j;
  }
  systemeNormal singulier(2);
  singulier.ajouter({{{0, 1.0}}, 1.0, 1.0});
  EXPECT_TRUE(singulier.resoudreCreux().empty());
  EXPECT_FALSE(controleSysteme(singulier).defini());
  EXPECT_TRUE(singulier.resoudreDense().empty());
  // The pivot left in the second unknown is the square of its own coefficient, of a diagonal of 1.
  for (const double pivot : {0.99e-10, 1.01e-10}) {
    systemeNormal faible(2);
    faible.ajouter({{{0, 1.0}, {1, 1.0}}, 1.0, 1.0});
    faible.ajouter({{{1, std::sqrt(pivot)}}, 1.0, 1.0});
    EXPECT_EQ(faible.resoudreCreux().empty(), pivot < 1e-10) << pivot;
    EXPECT_EQ(faible.inconnuesFaibles().size(), pivot < 1e-10 ? 1U : 0U) << pivot;
    EXPECT_EQ(faible.resoudreDense().size(), 2U) << "only an exact zero stops the dense one";
  }
}

/// More fixed points than those of the file.
void fixerUnSurSix(reseauMoindresCarres& reseau, const Treillis& t) {
  for (pointACalculer& p : reseau.points) {
    const auto rang = static_cast<std::size_t>(base::lireEntier(p.nom.substr(1)));
    if (rang % 6 != 0) continue;
    p.planiConnue = true;
    p.X = t.vrais[rang].x;
    p.Y = t.vrais[rang].y;
  }
}

/// 3 mm and 0.3 mgr.
void bruiter(reseauMoindresCarres& reseau, unsigned graine) {
  std::mt19937 alea(graine);
  std::normal_distribution<double> bruit(0.0, 1.0);
  for (ObservationReduite& o : reseau.observations)
    o.mesure += bruit(alea) * (o.type == ObservationReduite::kDistance ? 0.003 : 5e-6);
}

/// The log's solution vector.
std::vector<double> vecteurDe(const std::wstring& journal) {
  std::vector<double> x;
  for (std::size_t at = journal.find(L" | "); at != std::wstring::npos; at = journal.find(L" | ", at + 3))
    x.push_back(base::lireReel(std::wstring_view(journal).substr(at + 3)));
  return x;
}

TEST(Reseau, LaFactorisationCreuseNeChangeQueLeDixiemeChiffreDuJournal) {
  const Treillis t = treillis(8, 3, 650000.0, 6860000.0);
  reseauLu creux(t.texte);
  reseauLu dense(t.texte);
  for (reseauLu* reseau : {&creux, &dense}) {
    fixerUnSurSix(*reseau, t);
    bruiter(*reseau, 3);
    std::wstring journal;
    reseau->calculerPlani(journal, true);
  }
  for (bool encore = true; encore;) {
    std::wstring journal;
    encore = creux.calculerPlani(journal, false);
    systemePlani plan(dense);
    const systemeNormal systeme = plan.lineariser();
    ASSERT_GT(systeme.inconnues(), systemeNormal::kInconnuesDenses);
    const std::vector<double> x = systeme.resoudreDense();
    const std::vector<double> lu = vecteurDe(journal);
    ASSERT_EQ(lu.size(), x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
      EXPECT_NEAR(lu[i], x[i], 1.6e-10) << i;
      pointACalculer& p =
          dense.points[static_cast<std::size_t>(plan.pointsDe({static_cast<int>(i)}).front())];
      (i < x.size() / 2 ? p.X : p.Y) += x[i];
    }
  }
  for (std::size_t i = 0; i < creux.points.size(); ++i) {
    const pointACalculer& a = creux.points[i];
    const pointACalculer& b = dense.points[i];
    EXPECT_EQ(base::formater("%14.4f%14.4f", a.X, a.Y), base::formater("%14.4f%14.4f", b.X, b.Y)) << i;
  }
}

TEST(Reseau, LeHasardDesDistancesNeFaitPasDouterDesAngles) {
  int parMediane = 0;
  int doutes = 0;
  int fautes = 0;
  for (unsigned graine = 1; graine <= 12; ++graine) {
    const Treillis t = treillis(7, graine, 1000.0, 2000.0);
    reseauLu reseau(t.texte);
    fixerUnSurSix(reseau, t);
    bruiter(reseau, graine);
    std::wstring journal;
    iterer(reseau, journal);
    const std::vector<residuObservation> residus = residusPlan(reseau);
    parMediane += residusSuspects(reseau, residus).empty() ? 0 : 1;
    doutes += suspectsDuPlan(reseau, residus).empty() ? 0 : 1;
    reseau.observations.GetAt(reseau.observations.GetSize() / 2).mesure += 0.2;
    iterer(reseau, journal);
    fautes += suspectsDuPlan(reseau, residusPlan(reseau)).empty() ? 0 : 1;
  }
  EXPECT_GE(parMediane, 3);
  EXPECT_LE(doutes, 1);
  EXPECT_EQ(fautes, 12);
}

TEST(Reseau, LaPremiereValeurQuiNEnEstPasUneArreteLaPasse) {
  reseauLu reseau("A 0 0\nB 100 0\nOBS\nA NORD P 50 70.71\nB NORD P 350 70.71\nB NORD Q 370\nA NORD Q 40\n");
  std::wstring journal;
  reseau.calculerPlani(journal, true);
  const double x = reseau.points[3].X;
  reseau.points[2].X = 1e-155;  // half a denormal square away from A: the derivatives have no square
  reseau.points[2].Y = 0.0;
  journal.clear();
  EXPECT_FALSE(reseau.calculerPlani(journal, false));
  EXPECT_TRUE(std::isnan(reseau.dernierPas));
  EXPECT_EQ(reseau.arret.point, 2);
  EXPECT_EQ(reseau.arret.observation, 0);
  EXPECT_EQ(reseau.points[2].X, 1e-155);
  EXPECT_EQ(reseau.points[3].X, x);
  EXPECT_EQ(journal, L"\r\nVecteur Vecteur Solution (0 elements)\r\n---------");
}

TEST(Reseau, UnGrandSystemeSeResoutParPartiesSansYPerdreUnBit) {
  std::mt19937 alea(5);
  std::normal_distribution<double> bruit(0.0, 1.0);
  constexpr int n = systemeNormal::kInconnuesDenses + 20;
  systemeNormal systeme(n);  // three chains, whose unknowns take turns
  for (int r = 0; r < 3 * n; ++r) {
    const int k = r % n;
    systeme.ajouter({{{k, bruit(alea)}, {k + 3 < n ? k + 3 : k % 3, bruit(alea)}}, bruit(alea), 1.0});
  }
  const std::vector<double> dense = systeme.resoudreDense();
  ASSERT_EQ(dense.size(), static_cast<std::size_t>(n));
  EXPECT_EQ(systeme.resoudre(), dense);
  systemeNormal troue(n + 1);
  for (const systemeNormal::Ligne& ligne : systeme.lignes()) troue.ajouter(ligne);
  EXPECT_TRUE(troue.resoudre().empty()) << "an unknown without observation";
}

TEST(Reseau, UnReseauSingulierNeBougeRien) {
  reseauLu reseau("A 0 0\nB 100 0\nOBS\nA NORD P 50\nB NORD P 350\n");
  std::wstring journal;
  iterer(reseau, journal);
  EXPECT_NEAR(chercher(reseau, L"P")->X, 50, 1e-6);
  ASSERT_TRUE(lire(reseau, "A 0 0\nOBS\nA NORD P 50 10\nA NORD Q 60\n"));
  journal.clear();
  iterer(reseau, journal);
  EXPECT_EQ(chercher(reseau, L"Q")->X, base::Z_ABSENT);
  ASSERT_TRUE(lire(reseau, "A 0 0\nB 100 0\nOBS\nA NORD B 100 100\n"));
  journal.clear();
  EXPECT_FALSE(reseau.calculerPlani(journal, true));
  EXPECT_EQ(journal, L"");
}

TEST(Reseau, NordCommeStationLeveUneException) {
  reseauLu reseau("A 0 0\nOBS\nNORD A P 10 5\n");
  std::wstring journal;
  EXPECT_THROW(reseau.calculerPlani(journal, true), std::invalid_argument);
}

TEST(Reseau, LaReductionGardeLaPremiereDesEquivalentes) {
  reseauLu reseau(
      "A 0 0\nB 100 0\nOBS\nA NORD P . 70\nP NORD A . 71\nA NORD P . 72 1\nA NORD P . . 2\nA B P 50\n"
      "A B P 51\nA NORD P 50\n");
  std::wstring journal;
  reseau.calculerPlani(journal, true);
  ASSERT_EQ(reseau.observations.size(), 5U);
  EXPECT_EQ(reseau.observations[2].mesure, 70);
  EXPECT_NE(
      journal.find(
          L"\r\nSuppression de l'observation 1 (equiv a 0)\r\nobs Angle de 0 à 2 (ref=1) angle=       51.0000"
          L"\r\nobs Angle de 0 à 2 (ref=1) angle=       50.0000\r\n---"),
      std::wstring::npos)
      << journal;
  EXPECT_NE(
      journal.find(L"Suppression de l'observation 3 (equiv a 2)\r\nobs Distance de 2 à 0 d=       71.0000"),
      std::wstring::npos)
      << journal;
  EXPECT_EQ(journal.find(L"(equiv a 4)"), std::wstring::npos);
}

TEST(Reseau, TroisDirectionsHorsDuPointLeLaissentInconnu) {
  const std::string canevas = "A 0 0\nB 100 0\nC 100 100\nD 0 100\nOBS\n";
  reseauMoindresCarres reseau;
  ASSERT_TRUE(lire(reseau, canevas + "P D A 100\nP A B 100\nP B C 100\n"));
  std::wstring journal;
  iterer(reseau, journal);
  EXPECT_EQ(chercher(reseau, L"P")->X, base::Z_ABSENT);
  ASSERT_TRUE(lire(reseau, canevas + "P D A 300\nP A B 300\nA B P 350\n"));
  iterer(reseau, journal);
  EXPECT_NE(chercher(reseau, L"P")->X, base::Z_ABSENT);
}

TEST(Reseau, PoidsGisementsEtPoidsD1D2) {
  reseauLu reseau("S 0 0\nV 30 40\nR 0 10\nOBS\nS R V 20\nS NORD V 20 50\nS NORD V 20 . . 7\n");
  reseau.formules.angles = "1000";
  reseau.formules.gisements = "d1+100*d2+10000*d3";
  reseau.formules.distances = "2*d1";
  reseau.formules.compiler();
  // d1 is the distance to the reference, d2 that to the target.
  const double d3 = std::hypot(30.0, 30.0);
  EXPECT_NEAR(reseau.poidsObservation(reseau.observations[0]), 10 + 100 * 50 + 10000 * d3, 1e-9);
  EXPECT_NEAR(reseau.poidsObservation(reseau.observations[1]), 50 + 100 * 50 + 10000 * d3, 1e-9);
  EXPECT_EQ(reseau.poidsObservation(reseau.observations[2]), 100);
  reseau.observations[2].poids = 7;
  EXPECT_EQ(reseau.poidsObservation(reseau.observations[2]), 7);
  reseau.formules.gisements = "ang";
  reseau.formules.compiler();
  for (const std::size_t i : {0U, 1U})
    EXPECT_NEAR(reseau.poidsObservation(reseau.observations[i]), 20, 1e-12) << "grades";
  formulesPoids neuves;
  neuves.gisements = "d2";
  neuves.compiler();
  EXPECT_EQ(neuves.poidsGisement(50, 1), -999) << "what a bearing does not set";
}

TEST(Reseau, PoidsUnitairesEtResiduIndex) {
  const std::string texte =
      "A 0 0\nB 100 0\nC 0 100\nOBS\nA NORD X 10\nA NORD P . 70.8 . . 5\nB NORD P . 70.7 . . 1\nC NORD P . "
      "70.6\n"
      "A NORD P 50.01\n";
  reseauLu sans(texte);
  reseauLu avec(texte);
  avec.formules.distances = "1000/d1";
  avec.observations[1].poids = 1e6;
  std::wstring journal;
  std::wstring autre;
  iterer(sans, journal);
  iterer(avec, autre);
  EXPECT_EQ(journal, autre);
  // Row 0 is the bearing to P (observation 1), row 1 the first distance (observation 2): the unit of row 1
  // follows observation 1, an angle.
  EXPECT_NE(journal.find(L"Résidu pour l'observation 1  ="), std::wstring::npos);
  const std::size_t ligne1 = journal.find(L"l'observation 1  =");
  EXPECT_NE(journal.substr(ligne1, 50).find(L"mgr"), std::wstring::npos) << journal;
  const std::size_t ligne3 = journal.find(L"l'observation 3  =");
  EXPECT_NE(journal.substr(ligne3, 50).find(L" mm"), std::wstring::npos) << journal;
}

TEST(Reseau, AltitudesEtResiduAltitude) {
  reseauLu reseau(
      "A 0 0 100\nB 100 0 110\nOBS\nA NORD P 50 70.71 4.01\nB NORD P 350 70.71 -5.97\nP NORD Q . . 1\n"
      "R NORD S . . 2\n");
  std::wstring journal;
  iterer(reseau, journal);
  journal.clear();
  EXPECT_TRUE(reseau.calculerAlti(journal));
  EXPECT_NEAR(chercher(reseau, L"P")->Z, 104.02, 1e-9);
  EXPECT_NEAR(chercher(reseau, L"Q")->Z, 105.02, 1e-9);
  EXPECT_TRUE(std::isnan(chercher(reseau, L"R")->Z));
  // The rows are those of observations 4, 5 and 6; observations 0 to 2 are angles and distances, so that each
  // row repeats the line in front of it.
  EXPECT_EQ(journal.find(L"Résidu"), std::wstring::npos) << journal;
  EXPECT_NE(journal.find(L"---------\r\n---------\r\n---------\r\n---------\r\nXYZ:"), std::wstring::npos)
      << journal;
}

TEST(Reseau, SansCoteConnueLesAltitudesDAvantSEffacent) {
  reseauLu reseau("A 0 0 100\nOBS\nA NORD P . . 1\n");
  std::wstring journal;
  EXPECT_TRUE(reseau.calculerAlti(journal));
  EXPECT_EQ(chercher(reseau, L"P")->Z, 101);
  reseau.points[0].Z = 0;
  reseau.observations[0].mesure = 0;
  EXPECT_FALSE(reseau.calculerAlti(journal)) << "all heights are 0: none moved";
  EXPECT_EQ(chercher(reseau, L"P")->Z, 0);
  reseau.points[0].Z = base::Z_ABSENT;
  EXPECT_FALSE(reseau.calculerAlti(journal));
  EXPECT_EQ(chercher(reseau, L"P")->Z, base::Z_ABSENT);
  journal.clear();
  EXPECT_FALSE(reseauLu("A 0 0 1\nOBS\nA NORD P 10\n").calculerAlti(journal));
  EXPECT_EQ(journal.find(L"Vecteur"), std::wstring::npos) << "nothing to solve";
}

TEST(Reseau, UneBoucleDeNivellementSeCompense) {
  reseauLu reseau("A 0 0 100\nOBS\nA NORD P . . 1\nP NORD Q . . 1\nQ NORD A . . -1.97\n");
  std::wstring journal;
  EXPECT_TRUE(reseau.calculerAlti(journal));
  EXPECT_NEAR(chercher(reseau, L"P")->Z, 100.99, 1e-9);
  EXPECT_NEAR(chercher(reseau, L"Q")->Z, 101.98, 1e-9);
  EXPECT_NE(journal.find(L"\r\nRésidu pour l'observation 0 (mm) =-10.0000000000 "), std::wstring::npos)
      << journal;
}

}  // namespace
}  // namespace veltora
