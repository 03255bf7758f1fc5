// LISP functions that draw and move: prompts scripted, drawing and table looked at afterwards.

#include "arx/db/dbcircle.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "codes/selectionner_code.h"
#include "core/block_attributes.h"
#include "points/point_xyz.h"
#include "support/module_essai.h"

#include <cmath>
#include <functional>

namespace {

using namespace veltora;

constexpr double kX = 650000;
constexpr double kY = 6860000;

class DessinLisp : public ModuleEssai {
protected:
  DessinLisp() { setFacteurTailleBloc(1.0); }
  void point(const wchar_t* nom, double x, double y, double z = 5.0, int code = 1) {
    pointDuDessin p = unPoint(nom, kX + x, kY + y, z, code);
    p.creer(true, nullptr);
    table().Ajouter(p);
  }
  AcDbObjectId polyligne(const std::vector<std::array<double, 3>>& sommets, bool fermee = false) {
    auto* polyline = new AcDbPolyline;
    for (const auto& [x, y, bombement] : sommets) polyline->addVertexAt(99, {kX + x, kY + y}, bombement);
    polyline->setClosed(fermee);
    return mettre(*dessin, polyline);
  }
  std::vector<AcDbObjectId> vivantes(const AcRxClass* classe) {
    std::vector<AcDbObjectId> ids;
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin->modelSpaceId());
    for (const AcDbObjectId& id : espace->entities())
      if (id.isLive() && id.objectClass() == classe) ids.push_back(id);
    return ids;
  }
  /// Vertices of the polyline drawn last, less the national coordinates.
  std::string derniere() {
    const auto ids = vivantes(AcDbPolyline::desc());
    if (ids.empty()) return "";
    const AcDbObjectPointer<AcDbPolyline> p(ids.back());
    std::string texte;
    AcGePoint2d sommet;
    for (unsigned int i = 0; i < p->numVerts(); ++i) {
      p->getPointAt(i, sommet);
      texte += base::formater("%s%.5f,%.5f", i ? " " : "", sommet.x - kX + 0.0, sommet.y - kY + 0.0);
    }
    return texte;
  }
  /// A line of the script: a point of the national grid.
  static std::string ici(double x, double y) { return base::formater("%.4f,%.4f", kX + x, kY + y); }
  resbuf* jeu(const std::vector<AcDbObjectId>& ids) {
    ads_name nom = {0, 0};
    acedSSFromEntities(ids, nom);
    return acutBuildList(RTPICKS, nom, RTNONE);
  }
};

TEST_F(DessinLisp, joinsTheNumberedPointsOfACode) {
  for (const int n : {5, 6, 7, 9, 10}) point(std::to_wstring(n).c_str(), n, 10 * n, 5, n == 7 ? 2 : 1);
  jouer("joined points", [this] {
    const std::string faite = derniere();
    for (const AcDbObjectId& id : vivantes(AcDbPolyline::desc()))
      AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)->erase();
    return faite;
  });
}

TEST_F(DessinLisp, offsetsAPolylineAndItsPoints) {
  struct {
    const char* nom;
    std::vector<std::array<double, 3>> sommets;
    std::deque<std::string> suite;
    const char* attendu;
  } const cas[] = {
      {"left of a line",
       {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}},
       {ici(5, 2), "", "0.5"},
       "0.00000,2.00000 8.00000,2.00000 8.00000,10.00000"},
      {"right of a line",
       {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}},
       {ici(5, -2), "1", "0.5"},
       "0.00000,-1.00000 11.00000,-1.00000 11.00000,10.00000"},
      {"behind a corner, doubled vertex",
       {{0, 0, 0}, {10, 0, 0}, {10, 0, 0}, {10, 10, 0}},
       {ici(12, 4), "", ""},
       "0.00000,-2.00000 12.00000,-2.00000 12.00000,-2.00000 12.00000,10.00000"},
  };
  for (const auto& c : cas) {
    projet.reset();
    int n = 0;
    for (const auto& s : c.sommets) point(std::to_wstring(++n).c_str(), s[0], s[1], 5, 3);
    const AcDbObjectId source = polyligne(c.sommets);
    AcDbObjectPointer<AcDbEntity>(source, AcDb::kForWrite)->setColorIndex(3);
    reponses = c.suite;
    reponses.push_front("DERNIER");
    EXPECT_EQ(appeler(L"C:pointsParDecalage"), "void") << c.nom;
    EXPECT_TRUE(reponses.empty()) << c.nom;
    EXPECT_EQ(derniere(), c.attendu) << c.nom;
    const auto ids = vivantes(AcDbPolyline::desc());
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(ids.back())->colorIndex(), 3) << c.nom;
    EXPECT_EQ(table().nbPoint(), n + 3) << c.nom << ": one new point a place";
    const pointDuDessin& nouveau = *table().getData(n);
    EXPECT_EQ(std::string(nouveau.nomPoint), std::to_string(n + 1)) << c.nom;
    EXPECT_EQ(nouveau.z, c.suite.back().empty() ? 5.0 : 5.5) << c.nom;
    EXPECT_EQ(nouveau.code, 3) << c.nom;
    EXPECT_TRUE(nouveau.id.isLive() && nouveau.id != table().getData(0)->id) << c.nom;
  }
}

// Deliberate: the parallel of an arc goes towards its centre, unless the centre itself was given.
TEST_F(DessinLisp, decalage_arc) {
  // Half circle around the origin, radius 10, counter-clockwise from (10, 0); reversed for the second rows.
  struct {
    const char* nom;
    double bombement;
    std::string passage;
    double rayon;
  } const cas[] = {{"inside", 1.0, ici(0, 8), 8},
                   {"outside", 1.0, ici(0, 12), 8},
                   {"centre", 1.0, ici(0, 0), 20},
                   {"clockwise, inside", -1.0, ici(0, 8), 8},
                   {"clockwise, outside", -1.0, ici(0, 12), 8},
                   {"clockwise, centre", -1.0, ici(0, 0), 20}};
  for (const auto& c : cas) {
    const double debut = c.bombement > 0 ? 10 : -10;
    polyligne({{debut, 0, c.bombement}, {-debut, 0, 0}});
    reponses = {"DERNIER", c.passage, "", "0"};
    appeler(L"C:pointsParDecalage");
    const double signe = c.bombement;
    EXPECT_EQ(derniere(), base::formater("%.5f,0.00000 %.5f,0.00000", signe * c.rayon, -signe * c.rayon))
        << c.nom;
  }
}

TEST_F(DessinLisp, offsetsNothingWhenRefusedOrCancelled) {
  mettre(*dessin, new AcDbCircle({kX, kY, 0}, {0, 0, 1}, 100.0));
  polyligne({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}});
  const std::deque<std::string> cas[] = {
      {ici(500, 500), ici(100, 0), "*Annuler*"},  // nothing there, a circle
      {"DERNIER", "*Annuler*"},
      {"DERNIER", ici(5, 50), "*Annuler*"},
      {"DERNIER", ici(5, 50), ""},  // the parallel degenerates
      {"DERNIER", ici(5, 2), "", "*Annuler*"},
  };
  for (const auto& lignes : cas) {
    reponses = lignes;
    appeler(L"C:pointsParDecalage");
    EXPECT_TRUE(reponses.empty()) << lignes.back();
    EXPECT_EQ(vivantes(AcDbPolyline::desc()).size(), 1U) << lignes.back();
  }
  EXPECT_NE(imprime.find("Ce n'est pas une polyline, recommencez "), std::string::npos);
  EXPECT_NE(imprime.find("Echec, cette polyline dégénère "), std::string::npos);
}

TEST_F(DessinLisp, movesNearBlocksOntoAPath) {
  point(L"1", 5, 0.3);
  point(L"2", 5, 0.6);
  point(L"3", 12, 10.25);
  projet.creerTablePoints(L"autre");
  projet.tablesListe.GetAt(1)->fusionnerAvec(table());
  const AcDbObjectId bloc = table().getData(2)->id;
  // A line, then a quarter circle around (10, 10) of radius 2... as a half circle: bulge 1 from (10, 8) to
  // (10, 12).
  polyligne({{0, 0, 0}, {10, 0, 0}, {10, 8, 1}, {10, 12, 0}});
  reponses = {"DERNIER", "-0.5", "TOUT", ""};
  EXPECT_EQ(appeler(L"c:VNDEPORTPNTS"), "void");
  EXPECT_NE(imprime.find("Distance :[0.5000]"), std::string::npos);
  EXPECT_NEAR(table().getData(0)->y, kY, 1e-9);
  EXPECT_NEAR(table().getData(1)->y, kY + 0.6, 1e-9) << "too far";
  const double racine = std::hypot(2.0, 0.25);
  EXPECT_NEAR(table().getData(2)->x, kX + 10 + 2.0 * 2 / racine, 1e-8) << "on the arc";
  EXPECT_NEAR(table().getData(2)->y, kY + 10 + 0.25 * 2 / racine, 1e-8);
  EXPECT_EQ(table().getData(2)->z, 5.0);
  EXPECT_EQ(projet.tablesListe.GetAt(1)->getData(2)->x, table().getData(2)->x) << "every table follows";
  EXPECT_NEAR(AcDbObjectPointer<AcDbBlockReference>(bloc)->position().x, table().getData(2)->x, 1e-9);
  reponses = {"DERNIER", "0", "TOUT", ""};
  appeler(L"c:VNDEPORTPNTS");
  reponses = {"DERNIER", "*Annuler*"};
  appeler(L"c:VNDEPORTPNTS");
  EXPECT_NE(imprime.find("Distance :[0.0001]"), std::string::npos) << "at least, and remembered";
  reponses = {ici(5, 0.6), "*Annuler*"};
  appeler(L"c:VNDEPORTPNTS");
  EXPECT_NE(imprime.find("Ce n'est pas une courbe, recommencez "), std::string::npos);
}

// Deliberate: the sixth argument only announces the seventh.
TEST_F(DessinLisp, varntext_marqueur) {
  jouer("texts", [this] {
    std::string lu;
    for (const AcDbObjectId& id : vivantes(AcDbText::desc())) {
      const AcDbObjectPointer<AcDbText> texte(id, AcDb::kForWrite);
      lu = base::formater("%s %g %g %d %d %g %g", base::toUtf8(texte->textString()), texte->height(),
                          texte->widthFactor(), static_cast<int>(texte->horizontalMode()),
                          static_cast<int>(texte->verticalMode()), texte->position().x - kX,
                          texte->rotation());
      texte->erase();
    }
    return lu;
  });
}

TEST_F(DessinLisp, dissociatesAttributesIntoTexts) {
  point(L"a1", 0, 0, 12.5);
  point(L"b", 10, 0, Z_ABSENT);
  auto* etranger = new AcDbBlockReference({kX, kY + 50, 0}, dessin->paperSpaceId());
  const AcDbObjectId etrangerId = mettre(*dessin, etranger);
  {
    const AcDbObjectPointer<AcDbBlockReference> bloc(etrangerId, AcDb::kForWrite);
    for (const wchar_t* texte : {L" loin ", L"  "}) {
      auto* attribut = new AcDbAttribute({kX, kY + 50, 0}, texte, L"T");
      bloc->appendAttribute(attribut);
      attribut->setHeight(1.0);
      attribut->close();
    }
  }
  const auto textes = [this] {
    std::string liste;
    for (const AcDbObjectId& id : vivantes(AcDbText::desc()))
      liste += base::toUtf8(AcDbObjectPointer<AcDbText>(id)->textString()) + "|";
    return liste;
  };
  EXPECT_EQ(appeler(L"c:DISSOCBLOCK", acutBuildList(RTT, RTREAL, 1.0, RTNONE)), "nil");
  reponses = {"*Annuler*"};
  EXPECT_EQ(appeler(L"c:DISSOCBLOCK"), "nil");
  EXPECT_EQ(appeler(L"c:DISSOCBLOCK", suite({acutBuildList(RTNIL, RTNONE), jeu({})})), "T");
  EXPECT_EQ(textes(), "");
  reponses = {"TOUT", ""};
  EXPECT_EQ(appeler(L"c:DISSOCBLOCK"), "T");
  EXPECT_EQ(textes(), "1|A1|12.50|1|B|");
  EXPECT_NE(imprime.find("\nSelectionnez les elements a dissocier"), std::string::npos);
  const AcDbObjectPointer<AcDbText> numero(vivantes(AcDbText::desc())[1]);
  EXPECT_EQ(numero->layer(), L"_ Numero Points");
  EXPECT_NEAR(numero->position().x, kX + 0.75, 1e-9);
  AcString reste;
  EXPECT_EQ(lireAttribut(*AcDbObjectPointer<AcDbBlockReference>(table().getData(0)->id), L"NUMPT", reste), 0);
  EXPECT_EQ(appeler(L"c:DISSOCBLOCK", suite({acutBuildList(RTT, RTNONE), jeu({etrangerId})})), "T");
  EXPECT_EQ(textes(), "1|A1|12.50|1|B|loin|");
}

TEST_F(DessinLisp, dissociatedTextsLookAsTheirAttributesDid) {
  const AcDbObjectId bloc = mettre(*dessin, new AcDbBlockReference({0, 0, 0}, dessin->paperSpaceId()));
  auto* a = new AcDbAttribute({1, 2, 0}, L"abc", L"T");
  AcDbObjectPointer<AcDbBlockReference>(bloc, AcDb::kForWrite)->appendAttribute(a);
  a->setHeight(2.0);
  a->setWidthFactor(0.8);
  a->setRotation(0.5);
  a->setOblique(0.1);
  a->setThickness(1.5);
  a->setColorIndex(3);
  a->mirrorInX(true);
  a->mirrorInY(true);
  a->setHorizontalMode(AcDb::kTextRight);
  a->setVerticalMode(AcDb::kTextTop);
  a->setAlignmentPoint({7, 8, 0});
  a->close();
  appeler(L"c:DISSOCBLOCK", suite({acutBuildList(RTT, RTNONE), jeu({bloc})}));
  aclispInstall();
  const AcEdRbHolder vu(acedPorts().evaluate(
      L"(mapcar '(lambda (c) (cdr (assoc c (entget (entlast))))) '(0 1 40 41 50 51 39 62 71 72 73 11))"));
  EXPECT_EQ(enTexte(vu.get()), "(\"TEXT\" \"abc\" 2 0.8 0.5 0.1 1.5 3 6 2 3 (7 8 0))");
}

TEST_F(DessinLisp, shiftsTheAltitudesOfBlocksAndTables) {
  for (const double x : {0.0, 100.0, 200.0}) {
    pointDuDessin p = unPoint(L"P", x, 0, x > 150 ? Z_ABSENT : x > 50 ? 200.0 : 100.004);
    p.creer(true, nullptr);
    table().Ajouter(p);
  }
  projet.creerTablePoints(L"autre");
  listePointsDuDessin& autre = *projet.tablesListe.GetAt(1);
  autre.Ajouter(*table().getData(1));
  autre.Ajouter(unPoint(L"Q", 0, 0, 50));
  mettre(*dessin, new AcDbCircle({300, 0, 0}, {0, 0, 1}, 0.1));
  jouer("shifted altitudes", [&] {
    std::string blocs;
    std::string tables = "=";
    for (const pointDuDessin& p : *table().getData()) {
      AcString z;
      lireAttribut(*AcDbObjectPointer<AcDbBlockReference>(p.id), L"Z", z);
      blocs += z.empty() ? "- " : base::toUtf8(z) + " ";
      tables += p.z == Z_ABSENT ? " -" : base::formater(" %g", p.z);
    }
    return blocs + tables + base::formater(" + %g %g", autre.getData(0)->z, autre.getData(1)->z);
  });
}

TEST_F(DessinLisp, overlapsAreClearedAt055OfTheLargerScale) {
  for (const auto& [sx, sy] : {std::pair(1.0, 2.0), std::pair(3.0, 2.0)}) {
    point(L"1", 0, 0, Z_ABSENT);
    const AcDbObjectId bloc = vivantes(AcDbBlockReference::desc()).back();
    AcDbObjectPointer<AcDbBlockReference>(bloc, AcDb::kForWrite)->setScaleFactors({sx, sy, 1});
    const AcDbObjectId texte = mettre(*dessin, new AcDbText({kX + 0.8, kY + 0.6, 0}, L"x", {}, 0.1));
    appeler(L"superpos", jeu({bloc, texte}));
    const AcDbObjectPointer<AcDbBlockReference> reference(bloc);
    const std::unique_ptr<AcDbObjectIterator> attributs(reference->attributeIterator());
    attributs->step();
    const AcDbObjectPointer<AcDbAttribute> numero(attributs->objectId());
    EXPECT_NEAR(numero->position().y - kY, 0.55 * std::max(sx, sy), 1e-8) << "above the block";
  }
}

TEST_F(DessinLisp, clearsOverlapsInOneStepOfUndo) {
  point(L"100", 0, 0, 1);
  point(L"200", 0.5, 0, 1);
  mettre(*dessin, new AcDbText({kX + 0.5, kY + 0.5, 0}, L"texte", {}, 1.0));
  std::vector<AcDbObjectId> tout = vivantes(AcDbBlockReference::desc());
  const auto place = [&](int i) {
    std::string lieu;
    const AcDbObjectPointer<AcDbBlockReference> bloc(tout[static_cast<std::size_t>(i)]);
    const std::unique_ptr<AcDbObjectIterator> attributs(bloc->attributeIterator());
    for (; !attributs->done(); attributs->step()) {
      const AcDbObjectPointer<AcDbAttribute> a(attributs->objectId());
      lieu += base::formater("%.3f,%.3f ", a->position().x - kX, a->position().y - kY);
    }
    return lieu;
  };
  const std::string avant = place(0) + place(1);
  tout.push_back(vivantes(AcDbText::desc()).front());
  for (resbuf* faux :
       {static_cast<resbuf*>(nullptr), acutBuildList(RTNIL, RTNONE), acutBuildList(RTREAL, 1.0, RTNONE)})
    EXPECT_EQ(appeler(L"superpos", faux), "void");
  EXPECT_EQ(imprime, "");
  EXPECT_EQ(appeler(L"superpos", jeu(tout)), "void");
  EXPECT_NE(imprime.find("\nVerification des superpositions\n"), std::string::npos);
  EXPECT_NE(imprime.find("\rIteration 1 Element 1 / 4 (   25.00 %)"), std::string::npos) << imprime;
  EXPECT_NE(imprime.find("\t Surface commune:        0.000\n"), std::string::npos) << imprime;
  EXPECT_NE(place(0) + place(1), avant);
  dessin->undoLog().undo();
  EXPECT_EQ(place(0) + place(1), avant);
}

}  // namespace
