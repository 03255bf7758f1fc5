// The coordinate table in the drawing: its parameters, its entities and where they stand.

#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "base/format.h"
#include "drafting/dialogs/params_table_dlg.h"
#include "drafting/dialogs/points_dlg.h"
#include "support/atelier.h"
#include "support/dialog_script.h"
#include "support/golden.h"

#include <cmath>

namespace {

using namespace veltora;

std::string place(const AcGePoint3d& p) { return base::formater("%.4f,%.4f", p.x, p.y); }

std::string texteDe(const AcDbEntity& entite) {
  if (const auto* texte = AcDbText::cast(&entite)) {
    const char* mode = texte->isDefaultAlignment()                    ? "gauche"
                       : texte->horizontalMode() == AcDb::kTextCenter ? "milieu"
                                                                      : "droite";
    return base::formater("texte %s \"%s\" %s h=%.4f", mode, base::toUtf8(texte->textString()),
                          place(texte->isDefaultAlignment() ? texte->position() : texte->alignmentPoint()),
                          texte->height());
  }
  if (const auto* trait = AcDbLine::cast(&entite))
    return "trait " + place(trait->startPoint()) + " " + place(trait->endPoint());
  const auto* cadre = AcDbPolyline::cast(&entite);
  if (!cadre) return "?";
  std::string liste = cadre->isClosed() ? "cadre" : "polyligne";
  for (unsigned int i = 0; i < cadre->numVerts(); ++i) {
    AcGePoint3d p;
    cadre->getPointAt(i, p);
    liste += " " + place(p);
  }
  return liste;
}

class TableDessinee : public Atelier {
protected:
  std::string jouer(std::vector<std::string> lignes) {
    DialogScript script(std::move(lignes));
    acedPorts().source = &script;
    montrerPointsDuDessin(DlgPntsDuDessin::kTableXYZ);
    EXPECT_TRUE(script.finished()) << script.transcript;
    acedPorts().source = nullptr;
    return script.transcript;
  }
  /// One line an entity of model space, in order.
  std::string contenu() {
    std::string liste;
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    for (const AcDbObjectId id : espace->entities()) {
      const AcDbObjectPointer<AcDbEntity> entite(id);
      if (entite.openStatus() == Acad::eOk) liste += texteDe(*entite.object()) + "\n";
    }
    return liste;
  }
};

TEST_F(TableDessinee, DefaultsMatchTheGolden) {
  table().Ajouter(unPoint(L"12", 650000.12344, 6860000, 102.5));
  table().Ajouter(unPoint(L"P1", 650010, 6860000.5));
  jouer({"[Table XYZ]", "[OK]", "650000,6860000", "[Fermer]"});
  EXPECT_TRUE(memeQueReference("table_xyz_defauts.txt", contenu()));
}

TEST_F(TableDessinee, EverythingMatchesTheGolden) {
  getTableCodification().getOuCreerCode(7).libelle = L"Arbre";
  table().Ajouter(unPoint(L"P1", 1, -2, 3.456, 7));
  table().Ajouter(unPoint(L"P2", 10, 20, -0.5, 1));
  table().Ajouter(unPoint(L"P3", 100, 200, Z_ABSENT, 7));
  jouer({"Liste: 1 3", "[Table XYZ]", "[Données/Tout]", "[Cadre/Tout]", "Taille des textes = 0", "[OK]",
         "[OK]", "Taille des textes = 2", "Précision X,Y = 0.00", "Précision Z = 0", "[OK]", "5,50",
         "[Fermer]"});
  EXPECT_TRUE(memeQueReference("table_xyz_tout.txt", contenu()));
}

// One column, height 1: everything can be said by hand. "Num" once crossed its frame, measured as 2.5.
TEST_F(TableDessinee, PlacesByHand) {
  table().Ajouter(unPoint(L"AB", 1, 2, 3));
  table().Ajouter(unPoint(L"77", 1, 2, 3));
  paramsTableXYZ p;
  p.x = p.y = p.z = false;
  p.hauteur = 1.0;
  const std::vector<pointDuDessin> points(table().getData()->begin(), table().getData()->end());
  const double l = 1.026 + 0.869 + 1.336;  // "Num" is the widest text
  EXPECT_TRUE(dessinerTableXYZ(p, points, getTableCodification(), {100, 50, 9}));
  EXPECT_EQ(contenu(), base::formater("texte milieu \"Num\" %.4f,48.9000 h=1.0000\n"
                                      "trait 100.0000,48.6000 %.4f,48.6000\n"
                                      "cadre 100.0000,50.0000 %.4f,50.0000 %.4f,44.6000 100.0000,44.6000\n"
                                      "texte gauche \"AB\" %.4f,47.1000 h=1.0000\n"
                                      "texte droite \"77\" %.4f,45.3000 h=1.0000\n",
                                      100 + 0.6 * l, 100 + 1.2 * l, 100 + 1.2 * l, 100 + 1.2 * l,
                                      100 + 0.1 * l, 100 + 1.1 * l));
}

TEST_F(TableDessinee, FrameBitsDrawTheirLines) {
  table().Ajouter(unPoint(L"A", 1, 2, 3));
  table().Ajouter(unPoint(L"B", 1, 2, 3));
  const std::vector<pointDuDessin> points(table().getData()->begin(), table().getData()->end());
  const struct {
    int cadre;
    int traits;
  } cas[] = {{0, 0}, {1, 3}, {2, 1}, {4, 2}, {8, 0}, {15, 6}};
  for (const auto& c : cas) {
    const std::string avant = contenu();
    paramsTableXYZ p;
    p.cadre = c.cadre;
    dessinerTableXYZ(p, points, getTableCodification(), {0, 0, 0});
    const std::string nouveau = contenu().substr(avant.size());
    int traits = 0;
    for (std::size_t i = nouveau.find("trait "); i != std::string::npos; i = nouveau.find("trait ", i + 1))
      ++traits;
    EXPECT_EQ(traits, c.traits) << c.cadre;
    EXPECT_EQ(nouveau.find("cadre") != std::string::npos, (c.cadre & 8) != 0) << c.cadre;
  }
}

TEST_F(TableDessinee, NothingToPlaceIsSaidAfterThePrompt) {
  const std::vector<std::string> vide{"[Table XYZ]", "[OK]", "1,2", "[OK]", "[Fermer]"};
  EXPECT_NE(jouer(vide).find("pas de point choisi"), std::string::npos);
  table().Ajouter(unPoint(L"A", 1, 2, 3));
  std::vector<std::string> sansColonne{"[Table XYZ]"};
  for (const char* colonne : {"numéros", "coordonnée X", "coordonnée Y", "coordonnée Z"})
    sansColonne.push_back(std::string("Placer ") + colonne + " = non");
  for (const char* ligne : {"[OK]", "1,2", "[OK]", "[Fermer]"}) sansColonne.emplace_back(ligne);
  EXPECT_NE(jouer(sansColonne).find("Abandon"), std::string::npos);
  jouer({"[Table XYZ]", "[Annuler]", "[Table XYZ]", "[OK]", "*Annuler*", "[Fermer]"});
  EXPECT_EQ(entites(), 0);
}

TEST_F(TableDessinee, StdPutsTheDefaultsBackInItsGroupOnly) {
  DialogScript script(
      {"[Données/Tout]", "[Cadre/Tout]", "Placer coordonnée X = non", "[Données/Std]", "[OK]"});
  CParamTableXYZ dialogue;
  dialogue.doModal();
  const paramsTableXYZ p = dialogue.params();
  EXPECT_TRUE(p.numeros && p.x && p.y && p.z && !p.code && !p.libelle);
  EXPECT_EQ(p.cadre, 15);
  EXPECT_EQ(p.decimalesXY, 4);
  EXPECT_EQ(p.decimalesZ, 2);
  EXPECT_DOUBLE_EQ(p.hauteur, 2.5);
}

}  // namespace
