// Grids of regions: which nodes get a cross, where ticks and texts stand, how much would be drawn.

#include "drafting/grid/carroyage.h"

#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "base/format.h"
#include "drafting/dialogs/carroyage_dlg.h"
#include "drafting/grid/region_indexee.h"
#include "support/atelier.h"
#include "support/dialog_script.h"

#include <cmath>
#include <random>
#include <set>

namespace {

using namespace veltora;

constexpr double kX = 652000.0;
constexpr double kY = 6862000.0;

struct sommetEssai {
  double x;
  double y;
  double courbure = 0.0;
};

AcDbPolyline regionDe(const std::vector<sommetEssai>& sommets, bool fermee = true, double dx = 0.0,
                      double dy = 0.0) {
  AcDbPolyline region;
  for (const sommetEssai& s : sommets)
    region.addVertexAt(region.numVerts(), {s.x + dx, s.y + dy}, s.courbure);
  region.setClosed(fermee);
  return region;
}

class Carroyage : public Atelier {
protected:
  template <class Entite, class Prendre>
  void chaque(Prendre prendre) const {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    for (const AcDbObjectId& id : espace->entities()) {
      const AcDbObjectPointer<Entite> entite(id);
      if (entite.openStatus() == Acad::eOk) prendre(*entite);
    }
  }
  /// Middles of the horizontal strokes of crosses of this size, less the origin, in order.
  [[nodiscard]] std::set<std::pair<long, long>> croix(double taille, double dx = 0.0, double dy = 0.0) const {
    std::set<std::pair<long, long>> lieux;
    chaque<AcDbLine>([&](const AcDbLine& trait) {
      const AcGePoint3d de = trait.startPoint();
      const AcGePoint3d vers = trait.endPoint();
      if (de.y == vers.y && std::abs(vers.x - de.x - taille) < 1e-6)
        lieux.emplace(std::lround((de.x + vers.x) / 2.0 - dx), std::lround(de.y - dy));
    });
    return lieux;
  }
  [[nodiscard]] std::string croixEnTexte(double taille) const {
    std::string texte;
    for (const auto& [x, y] : croix(taille)) texte += base::formater("%d,%d ", x, y);
    return texte;
  }
  /// "value x,y" of each text behind the direction in which it runs from there, and each tick "x,y>x,y".
  [[nodiscard]] std::set<std::string> cotes(double dx, double dy) const {
    std::set<std::string> lues;
    chaque<AcDbText>([&](const AcDbText& texte) {
      const bool gauche = texte.isDefaultAlignment();
      EXPECT_TRUE(gauche ||
                  (texte.horizontalMode() == AcDb::kTextRight && texte.verticalMode() == AcDb::kTextBottom));
      EXPECT_EQ(texte.height(), 2.0);
      EXPECT_EQ(texte.colorIndex(), 256);
      const AcGePoint3d p = gauche ? texte.position() : texte.alignmentPoint();
      lues.insert(base::formater("%s%s %s %.1f,%.1f", gauche ? "+" : "-", texte.rotation() == 0.0 ? "x" : "y",
                                 base::toUtf8(texte.textString()), p.x - dx, p.y - dy));
    });
    chaque<AcDbLine>([&](const AcDbLine& trait) {
      const AcGePoint3d de = trait.startPoint();
      const AcGePoint3d vers = trait.endPoint();
      if (std::abs(de.distanceTo(vers) - 2.5) < 1e-6)
        lues.insert(base::formater("%.1f,%.1f>%.1f,%.1f", de.x - dx, de.y - dy, vers.x - dx, vers.y - dy));
    });
    return lues;
  }
  void vider() {
    std::vector<AcDbObjectId> ids;
    {
      const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
      ids = espace->entities();
    }
    for (const AcDbObjectId& id : ids) {
      const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForWrite);
      if (entite.openStatus() == Acad::eOk) entite->erase();
    }
  }
};

TEST_F(Carroyage, carroyageCoteFin_ticksAndTextsStandAtTheEndsOfEachLine) {
  const std::vector<sommetEssai> carre = {{60, 60}, {140, 60}, {140, 140}, {60, 140}};
  const struct {
    bool internes;
    std::set<std::string> cotes;
  } rows[] = {{true,
               {"+x 6862100.0 65.0,99.0", "60.0,100.0>62.5,100.0", "-x 6862100.0 137.5,99.0",
                "140.0,100.0>137.5,100.0", "+y 652100.0 101.0,65.0", "100.0,62.5>100.0,60.0",
                "-y 652100.0 101.0,135.0", "100.0,137.5>100.0,140.0"}},
              {false,
               {"-x 6862100.0 55.0,99.0", "60.0,100.0>57.5,100.0", "+x 6862100.0 145.0,99.0",
                "140.0,100.0>142.5,100.0", "-y 652100.0 101.0,55.0", "100.0,57.5>100.0,60.0",
                "+y 652100.0 101.0,145.0", "100.0,142.5>100.0,140.0"}}};
  for (const auto& row : rows) {
    vider();
    EXPECT_EQ(dessinerCarroyage(regionDe(carre, true, kX, kY), 100, 100, 5, 2, row.internes, 1).croix, 1);
    EXPECT_EQ(cotes(kX, kY), row.cotes);
    EXPECT_EQ(croix(5, kX, kY), (std::set<std::pair<long, long>>{{100, 100}}));
    AcDbObjectId groupe;
    const AcDbObjectPointer<AcDbDictionary> groupes(dessin.groupDictionaryId());
    ASSERT_EQ(groupes->getAt(row.internes ? L"*A1" : L"*A2", groupe), Acad::eOk);
    const AcDbObjectPointer<AcDbGroup> ouvert(groupe);
    EXPECT_EQ(ouvert->numEntities(), 10U);
    EXPECT_TRUE(ouvert->isSelectable());
  }
}

TEST_F(Carroyage, carroyageImpair_pairsOfPointsGetCrossesTheLastOddOneNone) {
  const struct {
    const char* cas;
    std::vector<sommetEssai> sommets;
    bool fermee;
    const char* croix;
  } rows[] = {
      {"U",
       {{1, 1}, {59, 1}, {59, 39}, {41, 39}, {41, 11}, {19, 11}, {19, 39}, {1, 39}},
       true,
       "10,10 10,20 10,30 20,10 30,10 40,10 50,10 50,20 50,30 "},
      {"border on nodes, its lower and upper edge on rows",
       {{10, 10}, {30, 10}, {30, 30}, {10, 30}},
       true,
       "20,10 20,20 20,30 "},
      {"the same edge in two",
       {{10, 10}, {17, 10}, {30, 10}, {30, 30}, {10, 30}},
       true,
       "20,10 20,20 20,30 "},
      {"a vertex that the row passes through",
       {{5, 15}, {7, 20}, {5, 25}, {35, 25}, {35, 15}},
       true,
       "10,20 20,20 30,20 "},
      {"a spike that the row only touches", {{5, 15}, {20, 20}, {35, 15}, {35, 25}, {5, 25}}, true, "10,20 "},
      {"a row that touches in one point",
       {{15, 15}, {20, 10}, {25, 15}, {25, 35}, {15, 35}},
       true,
       "20,20 20,30 "},
      {"open at the left", {{5, 15}, {35, 15}, {35, 25}, {5, 25}}, false, ""},
      {"open, its last edge on the row", {{5, 10}, {5, 20}, {35, 20}}, false, "10,20 20,20 30,20 "},
      {"no area", {{5, 5}, {35, 25}}, true, ""},
      {"one vertex thrice", {{10, 10}, {10, 10}, {10, 10}}, true, ""},
      {"bow", {{5, 5}, {35, 35}, {35, 5}, {5, 35}}, true, "10,20 "},
  };
  for (const auto& row : rows) {
    vider();
    dessinerCarroyage(regionDe(row.sommets, row.fermee), 10, 10, 4, 1, true, 0);
    EXPECT_EQ(croixEnTexte(4), row.croix) << row.cas;
  }
}

TEST_F(Carroyage, carroyageAltitude_aRegionAboveThePlaneGetsNothing) {
  AcDbPolyline region = regionDe({{5, 5}, {35, 5}, {35, 35}, {5, 35}});
  region.setElevation(12.0);
  EXPECT_EQ(dessinerCarroyage(region, 10, 10, 4, 1, true, 0).croix, 0);
  EXPECT_EQ(entites(), 0);
}

/// Border of a region as many short chords.
std::vector<AcGePoint2d> echantillon(const AcDbPolyline& region) {
  std::vector<AcGePoint2d> points;
  constexpr int kParSegment = 60;
  for (int i = 0; i < static_cast<int>(region.numVerts()) * kParSegment; ++i) {
    AcGePoint3d p;
    region.getPointAtParam(static_cast<double>(i) / kParSegment, p);
    points.emplace_back(p.x, p.y);
  }
  return points;
}

/// How often the border runs round a point, by the angles that its chords show; and its distance.
std::pair<int, double> tourAutour(const std::vector<AcGePoint2d>& bord, const AcGePoint2d& p) {
  double angle = 0.0;
  double loin = 1e9;
  for (std::size_t i = 0; i < bord.size(); ++i) {
    const AcGeVector2d u = bord[i] - p;
    const AcGeVector2d v = bord[(i + 1) % bord.size()] - p;
    angle += std::atan2(u.x * v.y - u.y * v.x, u.x * v.x + u.y * v.y);
    loin = std::min(loin, u.length());
  }
  return {static_cast<int>(std::lround(angle / (2.0 * M_PI))), loin};
}

TEST_F(Carroyage, CrossesStandOnTheNodesWithinAnyBorder) {
  std::mt19937 hasard(11);
  std::uniform_real_distribution<double> rayon(30.0, 95.0);
  std::uniform_real_distribution<double> arc(-0.9, 0.9);
  for (int essai = 0; essai < 6; ++essai) {
    std::vector<sommetEssai> sommets;
    for (int i = 0; i < 9; ++i) {
      const double direction = (i + 0.37 + 0.1 * essai) * 2.0 * M_PI / 9.0;
      const double r = rayon(hasard);
      sommets.push_back({100.0 + r * std::cos(direction), 100.0 + r * std::sin(direction),
                         i % 2 == 0 ? arc(hasard) * 0.4 : 0.0});
    }
    const AcDbPolyline region = regionDe(sommets, true, kX, kY);
    vider();
    const int comptees = dessinerCarroyage(region, 10, 7, 3, 1, true, 2).croix;
    const auto trouvees = croix(3, kX, kY);
    EXPECT_EQ(static_cast<int>(trouvees.size()), comptees);
    EXPECT_EQ(estimerCarroyage(region, 10, 7).croix, comptees);
    const std::vector<AcGePoint2d> bord = echantillon(region);
    for (int x = -20; x <= 220; x += 10)
      for (double y = std::floor((kY - 20.0) / 7.0) * 7.0; y <= kY + 220.0; y += 7.0) {
        const auto [tours, distance] = tourAutour(bord, {kX + x, y});
        if (distance > 0.5) {
          EXPECT_EQ(trouvees.contains({x, std::lround(y - kY)}), tours != 0)
              << essai << ": " << x << "," << y;
        }
      }
  }
}

TEST(RegionIndexee, CutsAsTheWholePolylineDoesAndExactlyAtNationalCoordinates) {
  std::mt19937 hasard(3);
  std::uniform_real_distribution<double> place(0.0, 100.0);
  std::uniform_real_distribution<double> arc(-1.0, 1.0);
  std::vector<sommetEssai> sommets;
  for (int i = 0; i < 60; ++i) sommets.push_back({place(hasard), place(hasard), i % 3 ? 0.0 : arc(hasard)});
  const auto avant = [](const AcGePoint3d& a, const AcGePoint3d& b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
  };
  for (const bool fermee : {false, true}) {
    const AcDbPolyline region = regionDe(sommets, fermee, kX, kY);
    regionIndexee indexee(region);
    for (int i = 0; i < 100; ++i) {
      const AcDbLine rangee({kX - 200, kY + i, 0}, {kX + 300, kY + i, 0});
      const AcDbLine colonne({kX + i, kY + 20, 0}, {kX + i, kY + 80, 0});
      for (const auto& [ligne, mode] :
           {std::pair(&rangee, AcDb::kOnBothOperands), {&colonne, AcDb::kExtendArg}}) {
        AcGePoint3dArray entiere;
        region.intersectWith(ligne, mode, entiere);
        AcGePoint3dArray trouves = indexee.couper(*ligne, mode);
        std::sort(entiere.begin(), entiere.end(), avant);
        std::sort(trouves.begin(), trouves.end(), avant);
        EXPECT_EQ(trouves, entiere) << i;
      }
    }
  }
  // A half circle above its chord, a row at half its height.
  const AcDbPolyline demi = regionDe({{40, 0, 1}, {-40, 0}}, true, kX, kY);
  AcGePoint3dArray points = regionIndexee(demi).couper(AcDbLine({kX - 99, kY + 20, 0}, {kX + 99, kY + 20, 0}),
                                                       AcDb::kOnBothOperands);
  ASSERT_EQ(points.size(), 2U);
  std::sort(points.begin(), points.end(), avant);
  EXPECT_NEAR(points[0].x - kX, -40 * std::sqrt(3.0) / 2.0, 2e-9);
  EXPECT_NEAR(points[1].x - kX, 40 * std::sqrt(3.0) / 2.0, 2e-9);
}

TEST_F(Carroyage, TellsBeforehandWhatWouldBeTooMuch) {
  const AcDbPolyline carre = regionDe({{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}}, true, kX, kY);
  const AcDbPolyline mince = regionDe({{0, 0}, {1000, 0}, {1000, 1e-3}, {0, 1e-3}});
  const struct {
    const AcDbPolyline& region;
    double pasX;
    double pasY;
    double croix;
    bool demesuree;
  } rows[] = {{carre, 1, 1, 999.0 * 1001, false},    // two edges lie on rows
              {carre, 0.5, 1, 1999.0 * 1001, true},  //
              {carre, 1e-3, 1e-3, 1e12, true},       // told by the area
              {carre, 2000, 1e-4, 5e6, true},        // ten million rows
              {mince, 1e-4, 1e36, 10000000.0 - 1, true},
              {carre, 1e-11, 100, 0, false}};  // steps lead nowhere
  for (const auto& row : rows) {
    const ampleurCarroyage ampleur = estimerCarroyage(row.region, row.pasX, row.pasY);
    EXPECT_NEAR(ampleur.croix, row.croix, row.croix * 1e-5 + 6) << row.pasX;
    EXPECT_EQ(ampleur.demesuree(), row.demesuree) << row.pasX;
  }
  EXPECT_EQ(dessinerCarroyage(carre, 1e-11, 100, 5, 2, true, 2).croix, 0);
  EXPECT_EQ(entites(), 0);
}

TEST_F(Carroyage, TheDialogKeepsPolylinesInOrderAndRefusesWhatIsOutOfRange) {
  const AcDbObjectId seconde = mettre(dessin, new AcDbPolyline(regionDe({{50, 0}, {90, 0}, {90, 40}})));
  mettre(dessin, new AcDbLine({0, 60, 0}, {90, 60, 0}));
  const AcDbObjectId premiere = mettre(dessin, new AcDbPolyline(regionDe({{0, 0}, {40, 0}, {40, 40}})));
  std::vector<AcDbObjectId> regions;
  DlgCarroyage dialogue(regions);
  DialogScript script({"[Sélectionner régions à carroyer]", "20,0", "45,60", "70,0", "", "?",
                       "Pas sur X du carroyage = 0", "[OK]", "[OK]", "Pas sur X du carroyage = 1e-6",
                       "[Ecritures externes]", "[Ecritures internes]", "Ecritures internes = oui", "[OK]"});
  acedPorts().source = &script;
  EXPECT_EQ(dialogue.doModal(), ui::kOk);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(regions, (std::vector<AcDbObjectId>{premiere, seconde}));
  EXPECT_NE(script.transcript.find("2 régions"), std::string::npos);
  EXPECT_NE(imprime.find("Selectionnez les polylines à carroyer"), std::string::npos);
  EXPECT_TRUE(dialogue.internes.checked());
  EXPECT_EQ(dialogue.format.index(), 2);
}

}  // namespace
