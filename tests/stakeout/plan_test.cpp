// The planner: rows of nearest stations, references, attribution, its four reports.

#include "stakeout/plan_implantation_auto.h"

#include "arx/db/dblines.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbtable.h"
#include "arx/db/dbtext.h"
#include "base/files.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "stakeout/listes_plan.h"
#include "support/projet_essai.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <sstream>

namespace {

using namespace veltora;

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;

class Plan : public ProjetEssai {
protected:
  void station(const wchar_t* nom, double x, double y, int code = 100) {
    pointDuDessin p;
    p.setParams(nom, {kX + x, kY + y, Z_ABSENT}, code);
    m_projets.currTable()->Ajouter(p);
  }
  void preparer(const std::vector<AcGePoint2d>& lieux, const std::vector<AcString>& noms = {}) {
    std::vector<AcGePoint2d> points;
    for (const AcGePoint2d& lieu : lieux) points.push_back({kX + lieu.x, kY + lieu.y});
    plan.preparer(points, 100, noms);
  }
  /// "index:distance" of a row.
  [[nodiscard]] std::string ligne(int rang) const {
    std::string texte;
    for (int c = 0; c < plan.nbColonnes(); ++c)
      texte += base::formater("%d:%.1f ", plan.tableStations(rang, c).station,
                              plan.tableStations(rang, c).distance);
    return texte;
  }
  planImplantationAuto plan;
};

TEST_F(Plan, rowsHoldTheNearestStationsTiesByTheirPlaceInTheTable) {
  station(L"P", 0, 0, 1);
  station(L"B", 10, 0);
  station(L"A", -10, 0);
  station(L"C", 0, 30);
  preparer({{0, 0}, {4, 0}, {-4, 0}}, {L"N1"});
  EXPECT_EQ(ligne(0), "1:10.0 2:10.0 3:30.0 ");
  EXPECT_EQ(ligne(1), "1:6.0 2:14.0 3:30.3 ");
  EXPECT_EQ(ligne(2), "2:6.0 1:14.0 3:30.3 ");
  EXPECT_EQ(plan.nom(0) + plan.nom(1) + plan.nom(2), L"N1A1A2");
  EXPECT_EQ(plan.nombreVisees(1), 2);
  EXPECT_EQ(plan.nombreVisees(2), 1);
  EXPECT_EQ(plan.nombreVisees(3), 0);
  EXPECT_EQ(plan.indexStation(3), 2);
  EXPECT_EQ(plan.indexStation(0), -1);
  int colonne = 9;
  EXPECT_TRUE(plan.stationDansPortee(1, 2, 14, 14, &colonne));
  EXPECT_EQ(colonne, 1);
  EXPECT_FALSE(plan.stationDansPortee(1, 2, 14.001, 20));
  EXPECT_FALSE(plan.stationDansPortee(1, 0, 0, 1e9, &colonne));
  EXPECT_EQ(colonne, -1);
}

TEST_F(Plan, theIndexGivesWhatAllPairsGive) {
  std::mt19937 hasard(7);
  // On a coarse grid, so that many distances are equal; some far away, one without coordinates.
  std::uniform_int_distribution<int> grille(0, 12);
  for (int i = 0; i < 60; ++i)
    station(L"S", grille(hasard) * 10.0, grille(hasard) * 10.0, i % 5 == 0 ? 7 : 100);
  station(L"L", 1e6, -1e6);
  pointDuDessin sans;
  sans.setParams(L"sans", {Z_ABSENT, Z_ABSENT, Z_ABSENT}, 100);
  m_projets.currTable()->Ajouter(sans);
  std::vector<AcGePoint2d> lieux{{1e7, 1e7}, {-5e5, 2}};
  for (int i = 0; i < 200; ++i) lieux.push_back({grille(hasard) * 5.0, grille(hasard) * 5.0});
  preparer(lieux);
  ASSERT_EQ(plan.nbColonnes(), 25);
  for (int i = 0; i < plan.nbPoints(); ++i) {
    std::vector<std::pair<double, int>> toutes;
    for (const int s : plan.stations()) {
      const pointDuDessin& p = *m_projets.currTable()->getData(s);
      toutes.emplace_back(std::hypot(p.x - plan.point(i).x, p.y - plan.point(i).y), s);
    }
    std::sort(toutes.begin(), toutes.end());
    for (int c = 0; c < 25; ++c) {
      const auto& e = plan.tableStations(i, c);
      ASSERT_EQ(e.station, toutes[static_cast<std::size_t>(c)].second) << i << " " << c;
      ASSERT_EQ(e.distance, toutes[static_cast<std::size_t>(c)].first);
      ASSERT_EQ(e.point, i);
    }
  }
}

TEST_F(Plan, referencesLieBetweenBothDistancesElseOutside) {
  station(L"S", 0, 0);        // 0
  station(L"pres", 0.5, 0);   // 1
  station(L"a", 100, 0);      // 2
  station(L"b", 0, 100);      // 3
  station(L"loin", 2000, 0);  // 4
  station(L"autre", 50, 0, 1);
  station(L"double", 0, 0);  // 6
  preparer({{1, 1}});
  EXPECT_EQ(plan.references(), (std::vector<int>{2, 2, 1, 0, 2, 2}));
  using P = planImplantationAuto;
  const struct {
    int mode;
    double dmin, dmax;
    int reference;
  } rangees[] = {
      {P::kProche, 1, 1000, 2},       {P::kProche, 100.001, 5000, 4},  {P::kProche, 3000, 4000, 1},
      {P::kLointaine, 1, 1000, 2},    {P::kLointaine, 1, 3000, 4},     {P::kLointaine, 3000, 4000, 4},
      {P::kProcheDeTous, 1, 1000, 2}, {P::kLointaineDeTous, 0, 99, 1}, {P::kProche, 0, 0, 6},
      {P::kLointaine, 0.1, 0.2, 4},
  };
  for (const auto& r : rangees)
    EXPECT_EQ(plan.referencePour(0, r.mode, r.dmin, r.dmax), r.reference) << r.mode << " " << r.dmin;
  plan.choisirReferences(P::kLointaine, 1, 3000);
  EXPECT_EQ(plan.references().size(), plan.stations().size());
  EXPECT_EQ(plan.positionsReferences().size(), 2 * plan.stations().size());
  EXPECT_EQ(plan.positionsReferences()[0], kX + 2000);
  EXPECT_EQ(plan.mode(), 3);
}

TEST_F(Plan, oneStationHasNoReferenceAndItsListsNoneEither) {
  preparer({{3, 4}});
  EXPECT_EQ(plan.stationDe(0), -1);
  EXPECT_EQ(textePlan(plan), L"");
  station(L"S", 0, 0);
  preparer({{3, 4}}, {L"T"});
  EXPECT_EQ(plan.references(), std::vector<int>{-1});
  EXPECT_EQ(base::toUtf8(textePlan(plan)),
            "\nImplantation à partir de \tS\t (\t1\t points visés)"
            "\nStation :\tS\t  (X=\t650000.0000\tY=\t6860000.0000\t)"
            "\nNumero\tAngle\tDistance\tX\tY"
            "\nT\t40.9666\t5.0000\t650003.0000\t6860004.0000");
}

TEST_F(Plan, fewStationsServeAllPointsWhenAsked) {
  station(L"S0", 0, 0);
  station(L"S1", 60, 0);
  station(L"S2", 30, 5);
  preparer({{0, 1}, {60, 1}, {28, 5}, {500, 0}});
  EXPECT_EQ(plan.stationDe(0), 0);
  EXPECT_EQ(plan.stationDe(1), 1);
  plan.minimiserStations(0, 40);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(plan.stationDe(i), 2) << i;
  EXPECT_EQ(ligne(0), "2:30.3 0:1.0 1:60.0 ");
  EXPECT_EQ(plan.stationDe(3), 1);  // out of reach of all: the nearest
}

/// Points about a few stations; what each line of the text form says leads back to the point.
TEST_F(Plan, everyLineLeadsBackToItsPoint) {
  std::mt19937 hasard(3);
  std::uniform_real_distribution<double> est(0, 400);
  for (int i = 0; i < 9; ++i) station((L"S" + std::to_wstring(i)).c_str(), est(hasard), est(hasard));
  std::vector<AcGePoint2d> lieux;
  for (int i = 0; i < 300; ++i) lieux.push_back({est(hasard), est(hasard)});
  preparer(lieux);
  std::istringstream texte(base::toUtf8(textePlan(plan)));
  std::string mot;
  AcGePoint2d s;
  double gis = -1.0;
  int relus = 0;
  for (std::string l; std::getline(texte, l);) {
    std::vector<std::string> champs;
    std::istringstream ligneLue(l);
    while (std::getline(ligneLue, mot, '\t')) champs.push_back(mot);
    if (l.starts_with("Station :")) s = {base::lireReel(champs[3]), base::lireReel(champs[5])};
    if (l.starts_with("Station de")) {
      const AcGePoint2d r(base::lireReel(champs[1]), base::lireReel(champs[3]));
      gis = base::lireReel(champs[5]) * std::numbers::pi / 200.0;
      const double d = s.distanceTo(r);
      EXPECT_LT(r.distanceTo(s + AcGeVector2d(std::sin(gis), std::cos(gis)) * d), 4e-4);
    }
    if (champs.size() != 5 || champs[0] == "Numero" || l.starts_with("Station") || l.starts_with("Impl"))
      continue;
    const double g = gis + base::lireReel(champs[1]) * std::numbers::pi / 200.0;
    const double d = base::lireReel(champs[2]);
    // Half the last digits of angle, bearing and distance: 1.6e-6 rad and 0.05 mm.
    const AcGePoint2d p(base::lireReel(champs[3]), base::lireReel(champs[4]));
    EXPECT_LT(p.distanceTo(s + AcGeVector2d(std::sin(g), std::cos(g)) * d), 1.6e-6 * d + 2e-4) << l;
    ++relus;
  }
  EXPECT_EQ(relus, 300);
  // Unrounded, to a hundredth of a millimetre.
  for (const viseesPlan& liste : viseesDuPlan(plan))
    for (const int rang : liste.points) {
      const pointDuDessin& p = *m_projets.currTable()->getData(liste.station);
      const double g = liste.gisReference + liste.angleVers(plan, rang) * std::numbers::pi / 200.0;
      const AcGeVector2d visee = AcGeVector2d(std::sin(g), std::cos(g)) * liste.distanceVers(plan, rang);
      EXPECT_LT(plan.point(rang).distanceTo(AcGePoint2d(p.x, p.y) + visee), 1e-5);
    }
}

TEST_F(Plan, theReportsSayTheSameInTheirForms) {
  station(L"S", 0, 0);
  station(L"R", 0, 100);
  preparer({{3, 4}, {-3, 4}}, {L"T", L"U"});
  const std::string chemin = (m_dossier.chemin / "plan.htm").string();
  std::wstring erreur;
  ASSERT_TRUE(ecrirePlan(plan, base::fromUtf8(chemin), erreur));
  const std::string html = base::toUtf8(base::widen(*base::lireFichier(chemin)));
  for (const char* morceau : {"CLASS=titre", "Implantation à partir de <b>S</b> (2 points visés)",
                              "CLASS=petit", "Station: <b>S</b>  (X=650000.0000Y=6860000.0000)",
                              "Station de référence <b>R</b> (X=650000.0000Y=6860100.0000 ) Gis=0.0000 gr",
                              "Angle (gr)", "40.9666", "359.0334"})
    EXPECT_NE(html.find(morceau), std::string::npos) << morceau;
  EXPECT_EQ(base::toUtf8(csvPlan(plan)),
            "Station;Reference;Point;X;Y;Angle_gr;Distance\nS;R;T;650003.0000;6860004.0000;40.9666;5.0000\n"
            "S;R;U;649997.0000;6860004.0000;359.0334;5.0000\n");
  EXPECT_FALSE(ecrirePlan(plan, base::fromUtf8((m_dossier.chemin / "absent" / "plan.txt").string()), erreur));
  EXPECT_FALSE(erreur.empty());
}

TEST_F(Plan, tablesAndThePictureAreDrawn) {
  station(L"S", 0, 0);
  station(L"R", 0, 100);
  station(L"V", 400, 0);
  preparer({{3, 4}, {400, 10}}, {L"T", L"U"});
  EXPECT_EQ(dessinerTablesPlan(plan, {0, 0, 0}, 2.0), 2);
  EXPECT_EQ(schematiserPlan(plan, {}).size(), 8u);
  std::vector<std::string> lu;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(m_dessin.modelSpaceId());
  for (const AcDbObjectId& id : espace->entities()) {
    const AcDbObjectPointer<AcDbEntity> e(id);
    if (const auto* texte = AcDbText::cast(e.object()))
      lu.push_back(base::formater("%d %s", texte->colorIndex(), base::toUtf8(texte->textString())));
    if (const auto* table = AcDbTable::cast(e.object()))
      lu.push_back(base::formater(
          "%s %s %s %s", base::toUtf8(table->textString(0, 0)), base::toUtf8(table->textString(1, 0)),
          base::toUtf8(table->textString(1, 1)), base::toUtf8(table->textString(1, 2))));
    if (const auto* p = AcDbPolyline::cast(e.object())) {
      double debut = 0, fin = 0;
      p->getWidthsAt(0, debut, fin);
      lu.push_back(base::formater("%d fleche %u %.1f %.1f", p->colorIndex(), p->numVerts(), debut, fin));
    }
    if (const auto* l = AcDbLine::cast(e.object()))
      lu.push_back(
          base::formater("%d visee %.0f,%.0f", l->colorIndex(), l->endPoint().x - kX, l->endPoint().y - kY));
  }
  const std::vector<std::string> attendu = {
      "256 Implantation à partir de S (1 points visés)",
      "256 Station : S  (X=650000.0000 Y=6860000.0000)",
      "256 Station de référence R (X=650000.0000 Y=6860100.0000 ) Gis=0.0000 gr",
      "Numero T 40.9666 5.0000",
      "256 Implantation à partir de V (1 points visés)",
      "256 Station : V  (X=650400.0000 Y=6860000.0000)",
      "256 Station de référence S (X=650000.0000 Y=6860000.0000 ) Gis=300.0000 gr",
      "Numero U 100.0000 10.0000",
      "1 fleche 4 0.0 2.5",
      "1 Ref=0.0",
      "1 visee 3,4",
      "1 D=5.000 A=40.9666 gr",
      "2 fleche 4 0.0 2.5",
      "2 Ref=0.0",
      "2 visee 400,10",
      "2 D=10.000 A=100.0000 gr"};
  EXPECT_EQ(lu, attendu);
}

}  // namespace
