// Clothoids in a drawing: the polyline and what stands beside it, the command, printed transformations.

#include "drafting/clothoids/dessin_clothoide.h"

#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "base/format.h"
#include "drafting/clothoids/clothoide_construite.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "drafting/clothoids/imprimer_matrice.h"
#include "jobs/tracer_clothoide.h"
#include "support/atelier.h"

#include <cmath>
#include <numbers>

namespace {

using namespace veltora;

/// A straight line along +X that turns to the left, or to the right, to a radius of 100 over a length of 20.
donneesClothoide raccordement(bool aDroite = false) {
  // Series of the end in the local frame: x = l (1 - t^2/10 + t^4/216), y = l (t/3 - t^3/42 + t^5/1320), t =
  // 0.1.
  const double x = 20.0 * (1.0 - 0.01 / 10.0 + 1e-4 / 216.0 - 1e-6 / 9360.0);
  const double y = 20.0 * (0.1 / 3.0 - 1e-3 / 42.0 + 1e-5 / 1320.0 - 1e-7 / 75600.0);
  const double cote = aDroite ? -1.0 : 1.0;
  return {0.0, 100.0, {0, 0}, {x, cote * y}, {x - y / std::tan(0.1), 0}};
}

class ClothoideAuDessin : public Atelier {
protected:
  /// Each entity of model space: kind, layer, colour, numbers with four decimals, text.
  [[nodiscard]] std::vector<std::string> tout() const {
    std::vector<std::string> lignes;
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    for (const AcDbObjectId& id : espace->entities()) {
      const AcDbObjectPointer<AcDbEntity> e(id);
      std::string ligne = base::formater("%s %d", base::toUtf8(e->layer()), e->colorIndex());
      if (const auto* trait = AcDbLine::cast(e.object()))
        ligne += base::formater(" LINE %.4f,%.4f %.4f,%.4f", trait->startPoint().x, trait->startPoint().y,
                                trait->endPoint().x, trait->endPoint().y);
      if (const auto* texte = AcDbText::cast(e.object()))
        ligne += base::formater(" TEXT %.4f,%.4f %.4f %.1f %s", texte->position().x, texte->position().y,
                                texte->rotation(), texte->height(), base::toUtf8(texte->textString()));
      if (const auto* polyligne = AcDbPolyline::cast(e.object())) {
        AcGePoint2d fin;
        polyligne->getPointAt(polyligne->numVerts() - 1, fin);
        ligne +=
            base::formater(" POLY %s %.4f,%.4f", polyligne->isClosed() ? "fermée" : "ouverte", fin.x, fin.y);
      }
      for (std::size_t zero = 0; (zero = ligne.find("-0.0000", zero)) != std::string::npos;)
        ligne.erase(zero, 1);
      lignes.push_back(ligne);
    }
    return lignes;
  }
};

TEST_F(ClothoideAuDessin, marksStandAtBothEndsAndTheTangentsBetween) {
  for (const bool aDroite : {false, true}) {
    SCOPED_TRACE(aDroite);
    const double c = aDroite ? -1.0 : 1.0;
    const std::size_t avant = tout().size();
    clothoideConstruite construite;
    ASSERT_EQ(construireClothoide(raccordement(aDroite), construite), nullptr);
    const clothoideDessinee dessinee = dessiner(construite.courbe, 3, {15, 2.0});
    EXPECT_GT(dessinee.sommets, 3);
    std::vector<std::string> lignes = tout();
    lignes.erase(lignes.begin(), lignes.begin() + static_cast<long>(avant));
    ASSERT_EQ(lignes.size(), 9u);
    const donneesClothoide d = raccordement(aDroite);
    const auto trait = [](const AcGePoint2d& a, const AcGePoint2d& b) {
      return base::formater("Infos_Alignements 3 LINE %.4f,%.4f %.4f,%.4f", a.x, a.y, b.x, b.y);
    };
    EXPECT_EQ(lignes[0], base::formater("0 3 POLY ouverte %.4f,%.4f", d.p2.x, d.p2.y));
    // Height 2: the text of the inflection begins half a height behind it and above the line across.
    EXPECT_EQ(lignes[1],
              base::formater("Infos_Alignements 3 TEXT %.4f,%.4f %.4f 2.0 A=44.7214 S= 0.00 R=INF ", -c, c,
                             std::numbers::pi * (aDroite ? 1.5 : 0.5)));
    const double large0 = acdbTextExtents(L"A=44.7214 S= 0.00 R=INF ", 2.0).width * 1.1;
    EXPECT_EQ(lignes[2], trait({0, 0}, {0, c * large0}));
    // At the other end, 0.1 radians on: towards the centre, and back along the tangent.
    const AcGeVector2d versCentre(-std::sin(0.1), c * std::cos(0.1));
    const AcGeVector2d tangente(std::cos(0.1), c * std::sin(0.1));
    const AcGePoint2d texte = d.p2 + (versCentre - tangente).normal();
    const AcGePoint2d autre = d.p2 + (versCentre + tangente).normal();
    const AcGePoint2d place = aDroite ? autre : texte;
    EXPECT_EQ(lignes[3],
              base::formater("Infos_Alignements 3 TEXT %.4f,%.4f %.4f 2.0 A=44.7214 S=20.000 R=100.000",
                             place.x, place.y, versCentre.angle()));
    const double large1 = acdbTextExtents(L"A=44.7214 S=20.000 R=100.000", 2.0).width * 1.1;
    EXPECT_EQ(lignes[4], trait(d.p2, d.p2 + versCentre * large1));
    EXPECT_EQ(lignes[5], base::formater("Infos_Alignements 3 POLY ouverte %.4f,%.4f", d.p2.x, d.p2.y));
    EXPECT_TRUE(lignes[6].starts_with(base::formater("Infos_Alignements 3 LINE %.4f,0.0000 ", d.pi.x)))
        << lignes[6];
    EXPECT_NE(lignes[7].find(" TEXT "), std::string::npos);
    AcDbObjectId groupe;
    const AcDbObjectPointer<AcDbDictionary> groupes(dessin.groupDictionaryId());
    ASSERT_EQ(groupes->getAt(aDroite ? L"*A2" : L"*A1", groupe), Acad::eOk);
    const AcDbObjectPointer<AcDbGroup> ouvert(groupe);
    EXPECT_EQ(ouvert->numEntities(), 9u);
    const AcDbObjectPointer<AcDbPolyline> polyligne(dessinee.polyligne);
    clothoide lue;
    ASSERT_TRUE(lireXDataEntite(lue, *polyligne));
    EXPECT_LT(lue.pointEn(10.0).distanceTo(construite.courbe.pointEn(10.0)), 1e-9);
  }
}

TEST_F(ClothoideAuDessin, whatDoesNotFitTogetherIsToldAndNotDrawnUnasked) {
  const struct {
    double r1, r2, decalage;
    const char* doute;
  } rangees[] = {{0, 100, 0.0, ""},
                 {0, 100, 0.0005, ""},
                 {0, 100, 0.5, "finit à"},
                 {100, 0, 0.0, "les rayons sont échangés"},
                 {0, 120, 0.0, "finit à"}};
  for (const auto& rangee : rangees) {
    SCOPED_TRACE(rangee.doute);
    const int avant = entites();
    demandeTracerClothoide demande;
    demande.donnees = raccordement();
    demande.donnees.r1 = rangee.r1, demande.donnees.r2 = rangee.r2;
    demande.donnees.p2.x += rangee.decalage;
    demande.dessiner = true;
    resultatTracerClothoide resultat;
    ASSERT_TRUE(tracerClothoide(demande, resultat));
    std::string phrases;
    for (const std::wstring& phrase : resultat.remarques.phrases()) phrases += base::toUtf8(phrase);
    EXPECT_NE(phrases.find(rangee.doute), std::string::npos) << phrases;
    EXPECT_EQ(resultat.retenu, *rangee.doute != '\0');
    EXPECT_EQ(entites() == avant, resultat.retenu);
    demande.malgreDoutes = true;
    ASSERT_TRUE(tracerClothoide(demande, resultat));
    EXPECT_FALSE(resultat.retenu);
  }
}

TEST_F(ClothoideAuDessin, pointsAreListedFromP1WhicheverWayTheCurvatureGrows) {
  const donneesClothoide d = raccordement();
  const donneesClothoide retour = {d.r2, d.r1, d.p2, d.p1, d.pi};
  clothoideConstruite aller, inverse;
  ASSERT_EQ(construireClothoide(d, aller), nullptr);
  ASSERT_EQ(construireClothoide(retour, inverse), nullptr);
  for (const double fleche : {0.0, 0.002}) {
    const std::vector<pointClothoide> a = listerPoints(aller, 6.0, fleche);
    const std::vector<pointClothoide> b = listerPoints(inverse, 6.0, fleche);
    ASSERT_EQ(a.size(), b.size());
    EXPECT_LT(a.front().point.distanceTo(d.p1), 1e-9);
    EXPECT_LT(a.back().point.distanceTo(d.p2), 1e-9);
    EXPECT_LT(b.front().point.distanceTo(d.p2), 1e-9);
    EXPECT_LT(b.back().point.distanceTo(d.p1), 1e-9);
    EXPECT_NEAR(a.back().gisement, 100.0 - 0.1 * 200.0 / std::numbers::pi, 1e-9);
    EXPECT_NEAR(b.front().gisement, a.back().gisement + 200.0, 1e-9);
    EXPECT_EQ(a.front().rayon, 0.0);
    EXPECT_NEAR(b.front().rayon, 100.0, 1e-9);
    for (std::size_t i = 1; i < b.size(); ++i) EXPECT_LT(b[i - 1].abscisse, b[i].abscisse);
  }
  EXPECT_EQ(listerPoints(aller, 6.0, 0.0).size(), 5u);
  EXPECT_EQ(listerPoints(aller, aller.longueur() / 4.0, 0.0).size(), 5u);
  EXPECT_TRUE(listerPoints(aller, 1e-6, 0.0).empty());
}

TEST_F(ClothoideAuDessin, transformationsArePrintedWithWhatTheyDo) {
  const AcGeMatrix2d tournee = AcGeMatrix2d::coordSystem({3, -4}, {0, 2}, {-2, 0});
  analyserMatrice(tournee, L"M");
  EXPECT_EQ(imprime,
            "\n\nDonnées de la matrice M\n-------------\n :"
            "\n |\t     0.0000\t    -2.0000\t     3.0000   |"
            "\n |\t     2.0000\t     0.0000\t    -4.0000   |"
            "\n |\t     0.0000\t     0.0000\t     1.0000   |"
            "\nVecteur déplacement :3.0000,-4.0000\nRotation = 90.0000 degres\nScale factor =2.0000");
  imprime.clear();
  analyserMatrice(AcGeMatrix2d::coordSystem({0, 0}, {0, 1}, {1, 0}), L"D");
  EXPECT_TRUE(imprime.ends_with(
      "\nRotation = 0.0000 degres\nScale factor =1.0000\n\t Mirror autour de 0.7071 0.7071"));
  analyserMatrice(AcGeMatrix2d::coordSystem({0, 0}, {1, 0}, {0.5, 1}), L"C");
  EXPECT_TRUE(imprime.ends_with("   |\nTransformation NON CONFORME !!!!"));
  imprime.clear();
  imprimerMatrice(tournee, L"M");
  EXPECT_EQ(imprime,
            "\nMatrice: M \n|   0.000000 -2.000000  3.000000|\n|   2.000000  0.000000 -4.000000|\n"
            "|   0.000000  0.000000  1.000000|\n");
}

TEST_F(ClothoideAuDessin, aCurveThatDoesNotExistKeepsItsPlaceAndSaysSo) {
  clothoide courbe;
  courbe.paramA = 50, courbe.endParam = 40;
  courbe.setOffset({7, 8});
  EXPECT_TRUE(courbe.definirParRayons(70, 70, {0, 0}, {9, 2}, {5, 0}));
  EXPECT_EQ(imprime, "\nErreur CL1 !!!");
  EXPECT_EQ(courbe.offset(), AcGePoint2d(7, 8));
  EXPECT_FALSE(courbe.estTracable());
  EXPECT_TRUE(dessiner(courbe, 256).polyligne.isNull());
  courbe.ajusterEnPoint(3.0, {1, 1}, 0.0);
  EXPECT_EQ(imprime, "\nErreur CL1 !!!\nErreur CL2 !!!");
  EXPECT_EQ(entites(), 0);
}

}  // namespace
