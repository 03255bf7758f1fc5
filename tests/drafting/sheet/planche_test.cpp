// Sheets: paper and frame, the title block in each corner, where the grid goes; the formats and the dialog.

#include "drafting/sheet/planche.h"

#include "arx/db/dbblockref.h"
#include "base/format.h"
#include "core/config_systeme.h"
#include "drafting/dialogs/cartouche_dlg.h"
#include "drafting/sheet/formats_papier.h"
#include "support/atelier.h"
#include "support/dialog_script.h"

#include <numbers>

namespace {

using namespace veltora;

constexpr double kDroit = std::numbers::pi / 2.0;

/// "x,y x,y ...", from the polyline's first vertex on.
std::string sommets(const AcDbPolyline& polyligne) {
  std::string texte;
  AcGePoint2d p;
  for (unsigned int i = 0; polyligne.getPointAt(i, p) == Acad::eOk; ++i)
    texte += base::formater("%s%.2f,%.2f", i ? " " : "", p.x + 0.0, p.y + 0.0);
  return texte;
}

class Planche : public Atelier {
protected:
  Planche() {
    // 40 by 20, off the origin, with one attribute and a constant one.
    AcDbDatabase bloc;
    auto* cadre = new AcDbPolyline();
    for (const AcGePoint2d& p : {AcGePoint2d(5, 7), {45, 7}, {45, 27}, {5, 27}})
      cadre->addVertexAt(cadre->numVerts(), p);
    cadre->setClosed(true);
    mettre(bloc, cadre);
    for (const bool constant : {false, true}) {
      auto* champ =
          new AcDbAttributeDefinition({10, 10, 0}, L"sans titre", constant ? L"FIXE" : L"TITRE", L"");
      champ->setHeight(2.0);
      champ->setConstant(constant);
      mettre(bloc, champ);
    }
    bloc.setHeaderPoint("INSBASE", {1, 2, 0});
    bloc.saveAs(base::fromUtf8(chemin("bloc.dxf")).c_str());
    AcDbDatabase().saveAs(base::fromUtf8(chemin("vide.dxf")).c_str());
    std::wstring raison;
    EXPECT_TRUE(lireCartouche(base::fromUtf8(chemin("bloc.dwg")), cartouche, raison)) << base::toUtf8(raison);
    demande.papier = {210, 297};
  }
  [[nodiscard]] std::string chemin(const char* nom) const { return (dossier.chemin / nom).string(); }
  [[nodiscard]] std::vector<std::string> polylines() const {
    std::vector<std::string> textes;
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    for (const AcDbObjectId& id : espace->entities()) {
      const AcDbObjectPointer<AcDbPolyline> polyligne(id);
      if (polyligne.openStatus() == Acad::eOk && polyligne->isClosed()) textes.push_back(sommets(*polyligne));
    }
    return textes;
  }

  DossierTemporaire dossier;
  demandePlanche demande;
  fichierCartouche cartouche;
  fichierCartouche aucun;
};

TEST_F(Planche, PaperAndFrameStandAtACornerOrAboutTheMiddle) {
  const struct {
    AcGePoint2d papier;
    double echelle;
    AcGePoint2d point;
    bool milieu;
    double orientation;
    const char* feuille;
    const char* cadre;
  } rows[] = {{{210, 297},
               1,
               {100, 100},
               false,
               0,
               "100.00,100.00 310.00,100.00 310.00,397.00 100.00,397.00",
               "110.00,110.00 300.00,110.00 300.00,387.00 110.00,387.00"},
              {{420, 297},
               0.5,
               {652000, 6862000},
               true,
               0,
               "651895.00,6861925.75 652105.00,6861925.75 652105.00,6862074.25 651895.00,6862074.25",
               "651900.00,6861930.75 652100.00,6861930.75 652100.00,6862069.25 651900.00,6862069.25"},
              {{210, 297},
               1,
               {100, 100},
               false,
               kDroit,
               "100.00,100.00 100.00,310.00 -197.00,310.00 -197.00,100.00",
               "90.00,110.00 90.00,300.00 -187.00,300.00 -187.00,110.00"},
              {{200, 100},
               1,
               {0, 0},
               true,
               kDroit,
               "50.00,-100.00 50.00,100.00 -50.00,100.00 -50.00,-100.00",
               "40.00,-90.00 40.00,90.00 -40.00,90.00 -40.00,-90.00"}};
  std::size_t avant = 0;
  for (const auto& row : rows) {
    demande.papier = row.papier;
    demande.echelle = row.echelle;
    planche(demande, aucun, row.point, row.milieu, row.orientation).dessiner();
    const std::vector<std::string> tracees = polylines();
    ASSERT_EQ(tracees.size(), avant + 2);
    EXPECT_EQ(tracees[avant], row.feuille);
    EXPECT_EQ(tracees[avant + 1], row.cadre);
    avant += 2;
  }
}

TEST_F(Planche, TheTitleBlockLiesInItsCornerWithItsAttributes) {
  EXPECT_EQ(cartouche.extmin, AcGePoint3d(5, 7, 0));
  EXPECT_EQ(cartouche.extmax, AcGePoint3d(45, 27, 0));
  EXPECT_EQ(cartouche.insbase, AcGePoint3d(1, 2, 0));
  demande.papier = {420, 220};
  demande.echelle = 0.5;
  demande.attributs = {{L"titre", L"Bornage"}, {L"ABSENT", L"?"}};
  // The frame runs from (5, 5) to (205, 105), turned from (-105, 5) to (-5, 205); the block is 20 by 10.
  const struct {
    int coin;
    double orientation;
    double facteur;
    const char* boite;
  } rows[] = {{kBasGauche, 0, 1, "5.00,5.00 25.00,15.00"},
              {kBasDroite, 0, 1, "185.00,5.00 205.00,15.00"},
              {kHautGauche, 0, 1, "5.00,95.00 25.00,105.00"},
              {kHautDroite, 0, 1, "185.00,95.00 205.00,105.00"},
              {kHautDroite, 0, 2, "165.00,85.00 205.00,105.00"},
              {kBasDroite, kDroit, 1, "-15.00,185.00 -5.00,205.00"}};
  for (const auto& row : rows) {
    demande.positionCartouche = row.coin;
    demande.facteurCartouche = row.facteur;
    const planche::resultat fait = planche(demande, cartouche, {0, 0}, false, row.orientation).dessiner();
    EXPECT_TRUE(fait.cartoucheInsere);
    EXPECT_EQ(fait.attributs, 1);
    AcDbObjectId id;
    {
      const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
      id = espace->entities().back();
    }
    const AcDbObjectPointer<AcDbBlockReference> reference(id);
    AcDbExtents boite;
    ASSERT_EQ(reference->getGeomExtents(boite), Acad::eOk);
    EXPECT_EQ(base::formater("%.2f,%.2f %.2f,%.2f", boite.minPoint().x, boite.minPoint().y,
                             boite.maxPoint().x, boite.maxPoint().y),
              row.boite);
    AcString texte;
    EXPECT_EQ(lireAttribut(*reference, L"TITRE", texte), 1);
    EXPECT_EQ(texte, L"Bornage");
    EXPECT_EQ(lireAttribut(*reference, L"FIXE", texte), 0);
  }
}

TEST_F(Planche, plancheCote_plancheRetrait_theGridKeepsAwayFromTheFrameAndTheBlock) {
  demande.hauteurTexte = 2.0;
  demande.tailleCroisillons = 6.0;
  demande.decimales = 1;
  demande.echelle = 0.5;
  // Coordinates of seven digits: 6 by the logarithm, a decimal, and two more.
  const double d = 3.0 + acdbTextExtents(L"0", 2.0).width * 0.5 * 9.0;
  const double largeurs[] = {400, 200};
  using Carroyage = demandePlanche::Carroyage;
  const auto kTout = Carroyage::kToutEspaceVide;
  const auto kPas = Carroyage::kPasACoteDuCartouche;
  struct cote {
    double l, b, r, h;  // what the region leaves on the left, below, on the right, above, beside d
  };
  const struct {
    Carroyage mode;
    int coin;
    bool debout;
    cote reste;
  } rows[] = {{kPas, kBasGauche, true, {0, 10, 0, 0}},    {kPas, kBasDroite, true, {0, 10, 0, 0}},
              {kPas, kHautGauche, true, {0, 0, 0, 10}},   {kPas, kHautDroite, true, {0, 0, 0, 10}},
              {kPas, kBasGauche, false, {20, 0, 0, 0}},   {kPas, kHautGauche, false, {20, 0, 0, 0}},
              {kPas, kBasDroite, false, {0, 0, 20, 0}},   {kPas, kHautDroite, false, {0, 0, 20, 0}},
              {kTout, kBasGauche, true, {20, 10, 0, 0}},  {kTout, kBasDroite, false, {0, 10, 20, 0}},
              {kTout, kHautGauche, true, {20, 0, 0, 10}}, {kTout, kHautDroite, false, {0, 0, 20, 10}}};
  for (const auto& row : rows) {
    demande.papier = {largeurs[row.debout], largeurs[!row.debout]};
    demande.modeCarroyage = row.mode;
    demande.positionCartouche = row.coin;
    const planche feuille(demande, cartouche, {0, 6862000}, false, 0.0);
    const auto region = feuille.region();
    ASSERT_TRUE(region);
    const double x0 = 5.0 + d, y0 = 6862005.0 + d;
    const double x1 = demande.papier.x * 0.5 - 5.0 - d, y1 = 6862000.0 + demande.papier.y * 0.5 - 5.0 - d;
    const cote r = row.reste;
    double aire = 0.0;
    region->getArea(aire);
    AcDbExtents boite;
    region->getGeomExtents(boite);
    const bool tout = row.mode == kTout;
    EXPECT_NEAR(boite.minPoint().x, x0 + (tout ? 0 : r.l), 1e-6) << row.coin;
    EXPECT_NEAR(boite.minPoint().y, y0 + (tout ? 0 : r.b), 1e-6) << row.coin;
    EXPECT_NEAR(boite.maxPoint().x, x1 - (tout ? 0 : r.r), 1e-6) << row.coin;
    EXPECT_NEAR(boite.maxPoint().y, y1 - (tout ? 0 : r.h), 1e-6) << row.coin;
    if (!tout) continue;
    EXPECT_EQ(region->numVerts(), 6U);
    EXPECT_NEAR(aire, (x1 - x0) * (y1 - y0) - 20.0 * 10.0, 1e-3) << row.coin;
    bool creux = false;  // the inner corner of the block
    AcGePoint2d p;
    for (unsigned int i = 0; region->getPointAt(i, p) == Acad::eOk; ++i)
      creux = creux || p.distanceTo({r.l > 0 ? x0 + r.l : x1 - r.r, r.b > 0 ? y0 + r.b : y1 - r.h}) < 1e-6;
    EXPECT_TRUE(creux) << row.coin;
  }
  // Nothing is left: the block is as wide as the frame less its margins.
  cartouche.extmax.x = 2000;
  EXPECT_FALSE(planche(demande, cartouche, {0, 0}, false, 0.0).region());
}

TEST_F(Planche, TheGridHasItsStyleSizesAndSteps) {
  demande.papier = {390, 297};
  demande.modeCarroyage = demandePlanche::kToutEspaceVide;
  demande.espacementX = 100;
  demande.espacementY = 50;
  const AcDbObjectId avant = dessin.textstyle();
  const AcDbObjectId style = dessin.recordOf("STYLE", L"Cotes");
  demande.styleTexte = style;
  // Margins of 10 and 5 to 10 leave x from 20 to 370, y from 20 to 277.
  EXPECT_EQ(planche(demande, aucun, {0, 0}, false, 0.0).dessiner().carroyage.croix, 3 * 5);
  EXPECT_EQ(dessin.textstyle(), avant);
  int textes = 0;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  for (const AcDbObjectId& id : espace->entities()) {
    const AcDbObjectPointer<AcDbText> texte(id);
    if (texte.openStatus() != Acad::eOk) continue;
    ++textes;
    EXPECT_EQ(texte->textStyle(), style);
    EXPECT_EQ(texte->height(), 2.5);
  }
  EXPECT_EQ(textes, 2 * (3 + 5));
}

TEST_F(Planche, plancheFormats_theRowsOfThePaperInTheirOrder) {
  EXPECT_EQ(ligneFormat(0), L"Format A4 Portrait ( 210 x 297 )");
  EXPECT_EQ(ligneFormat(2), L"Format A3 Portrait  ( 297 x 420 )");
  EXPECT_EQ(ligneFormat(7), L"Format A1 Paysage ( 840 x 594 )");
  EXPECT_EQ(ligneFormat(8), L"Format A0 Paysage ( 1188 x 840 )");
  EXPECT_EQ(ligneFormat(15), L"User 5 ( 1000 x 1000 )");
  EXPECT_EQ(tailleFormat(16), AcGePoint2d(1000, 1000));
  EXPECT_EQ(tailleFormat(-1), AcGePoint2d(1000, 1000));
  EXPECT_EQ(motFormat(3), L"A3-paysage");
  EXPECT_EQ(motFormat(4), L"A2-portrait");
  EXPECT_EQ(motFormat(11), L"user-1");
  UserPaperScale[1].valeur = {700, 500};
  UserPaperScale[2].valeur = {700, -1};
  CDlgCartouche dialogue;
  playDialog(dialogue, "Format du papier = User 1 ( 700 x 500 ) // [OK]", ui::kOk);
  EXPECT_EQ(dialogue.demande().papier, AcGePoint2d(700, 500));
  EXPECT_EQ(tailleFormat(12), AcGePoint2d(1000, 1000)) << "a negative size is set back at the opening";
  UserPaperScale[1].valeur = {1000, 1000};
}

TEST_F(Planche, cartoucheCotes_fieldsFollowEachOtherWhenTheyAreLeft) {
  const struct {
    const char* lignes;
    const char* champ;
    const char* valeur;
  } rows[] = {
      {"Largeur = 80 // Marge papier (mm) = 10", "Hauteur", "40"},
      {"Hauteur = -50 // Marge papier (mm) = 10", "Largeur", "40"},  // refilled from the file first
      {"<=> = non // Hauteur = -50 // Marge papier (mm) = 10", "Hauteur", "50"},
      {"<=> = non // Largeur = 80 // Marge papier (mm) = 10", "Hauteur", "20"},
      {"<=> = non // Largeur = 0 // Marge papier (mm) = 10", "Largeur", "0.1"},
      {"Marge papier (mm) = -12 // Largeur = 40", "Marge papier (mm)", "12"},
      {"Marge papier (mm) = 0.01 // Largeur = 40", "Marge papier (mm)", "0.1"},
      {"Carrroyage = #2 // Haut. txt (mm) = -3 // Espacement Y = 0 // Espacement X = -7 // Taille "
       "Croisillons (mm) = 0"
       " // Largeur = 40",
       "Espacement Y", "0.1"},
  };
  for (const auto& row : rows) {
    CDlgCartouche dialogue;
    std::string lignes = "[...] // " + chemin("bloc.dwg") + " // " + row.lignes + " // " + row.champ + " ?";
    const std::string vu = playDialog(dialogue, lignes);
    EXPECT_NE(vu.find("\n" + std::string(row.champ) + " = " + row.valeur + "\n"), std::string::npos) << vu;
    EXPECT_EQ(dialogue.dimensions.text(), L"Largeur : 40.00\nHauteur : 20.00");
  }
  CDlgCartouche dialogue;
  playDialog(dialogue, "[...] // " + chemin("vide.dxf") + " // Largeur = 0 // Marge papier (mm) = 10");
  EXPECT_EQ(dialogue.largeurCartouche.value(), 0.1) << "an empty drawing has no extents";
}

TEST_F(Planche, cartoucheMc_theDialogShowsWhatIsInForce) {
  CDlgCartouche dialogue;
  EXPECT_FALSE(dialogue.positionCartouche.usable() || dialogue.largeurCartouche.usable() ||
               dialogue.hauteurCartouche.usable() || dialogue.espacementX.shown() ||
               dialogue.styleTexte.shown());
  EXPECT_EQ(dialogue.positionCartouche.pictures().size(), 4U);
  base::remplacerFichier(dossier.chemin / "mauvais.dxf", "0\nSECTION\n2\nHEADER\nneuf\n");
  base::remplacerFichier(dossier.chemin / "rien.dxf", "");
  base::remplacerFichier(dossier.chemin / "reseau.mc", "");
  const std::string vu = playDialog(
      dialogue,
      "[...] // " + chemin("mauvais.dxf") + " // [OK] // [...] // " + chemin("rien.dxf") +
          " // [OK] // [...] // " + chemin("reseau") + " // [OK] // [...] // " + chemin("bloc.dwg") +
          " // Emplacement du cartouche = Haut droite // Carrroyage = #3 // Espacement X = 20 // Style = "
          "Standard"
          " // Modele = 100.000 // Format du papier = #1 // Echelle = 0 // Marge papier (mm) = 5 // Echelle "
          "= abc"
          " // Marge papier (mm) = 5 // Echelle = // Marge papier (mm) = 105 // [OK] // [OK]"
          " // Marge papier (mm) = 5 // [OK]",
      ui::kOk);
  EXPECT_EQ(imprime.find("Echec"), std::string::npos);
  std::size_t echecs = 0;
  for (std::size_t at = 0;
       (at = vu.find("Echec lors de la lecture du fichier cartouche", at)) != std::string::npos; ++at)
    ++echecs;
  EXPECT_EQ(echecs, 3U) << vu;
  EXPECT_NE(vu.find("La marge ne laisse rien du papier."), std::string::npos);
  const demandePlanche lue = dialogue.demande();
  EXPECT_EQ(lue.papier, AcGePoint2d(210, 297));
  EXPECT_EQ(lue.echelle, 1.0);
  EXPECT_EQ(lue.positionCartouche, kHautDroite);
  EXPECT_EQ(lue.modeCarroyage, demandePlanche::kPasACoteDuCartouche);
  EXPECT_EQ(lue.decimales, 3);
  EXPECT_EQ(lue.margePapier, 5.0);
  EXPECT_EQ(lue.styleTexte, dessin.textstyle());
  EXPECT_NE(dialogue.imageMode.path().find(L"carroyage_2.svg"), std::wstring::npos);
  playDialog(dialogue, "[X] // [Annuler]");
  EXPECT_FALSE(dialogue.cartouche().present() || dialogue.positionCartouche.usable());
}

TEST_F(Planche, plancheMotsCles_thePromptsLeadBackAndForth) {
  const struct {
    std::vector<std::string> lignes;
    const char* cadre;  ///< nothing: nothing is drawn
  } rows[] = {{{"Milieu", "100,100", ""}, "110.00,110.00 300.00,110.00 300.00,387.00 110.00,387.00"},
              {{"1000,1000", "0"}, "905.00,861.50 1095.00,861.50 1095.00,1138.50 905.00,1138.50"},
              {{"M", "C", "1000,1000", "0"}, "905.00,861.50 1095.00,861.50 1095.00,1138.50 905.00,1138.50"},
              {{"M", "100,100", "90"}, "90.00,110.00 90.00,300.00 -187.00,300.00 -187.00,110.00"},
              {{"Milieu", "*Annuler*"}, ""},
              {{"100,100", "*Annuler*"}, ""}};
  for (const auto& row : rows) {
    const std::size_t avant = polylines().size();
    std::vector<std::string> lignes = {"Format du papier = #1", "[OK]"};
    lignes.insert(lignes.end(), row.lignes.begin(), row.lignes.end());
    DialogScript script(lignes);
    acedPorts().source = &script;
    creerPlanche();
    acedPorts().source = nullptr;
    EXPECT_TRUE(script.finished()) << script.transcript;
    const std::vector<std::string> tracees = polylines();
    EXPECT_EQ(tracees.size() - avant, *row.cadre ? 2U : 0U);
    EXPECT_TRUE(!*row.cadre || tracees.back() == row.cadre) << tracees.back();
  }
}

}  // namespace
