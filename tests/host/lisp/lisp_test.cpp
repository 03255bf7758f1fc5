// The functions offered to LISP: arguments, results, effects.

#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "arx/ed/edgraphics.h"
#include "base/files.h"
#include "host/lisp/arguments_lisp.h"
#include "points/point_xyz.h"
#include "support/module_essai.h"

namespace {

using namespace veltora;

class FonctionsLisp : public ModuleEssai {
protected:
  FonctionsLisp() { setFacteurTailleBloc(1.0); }
  void dessiner(std::initializer_list<const wchar_t*> liste, int code = 1) {
    for (const wchar_t* nom : liste) {
      pointDuDessin point = unPoint(nom, table().nbPoint(), 0, 1, code);
      point.creer(true, nullptr);
      table().Ajouter(point);
    }
  }
  resbuf* nomDe(const AcDbObjectId& id) {
    ads_name nom = {0, 0};
    acdbGetAdsName(nom, id);
    return acutBuildList(RTENAME, nom, RTNONE);
  }
  /// The extended data of an entity as a list of values.
  std::string donnees(const AcDbObjectId& id) {
    std::string texte;
    const AcDbObjectPointer<AcDbEntity> entite(id);
    const AcEdRbHolder chaine(entite->xData(L"VARNPLUS"));
    for (const resbuf* e = chaine.get(); e; e = e->rbnext) {
      if (acutRbKind(e->restype) == RbKind::kText) texte += base::toUtf8(e->resval.rstring) + " ";
      if (e->restype == 1040) texte += base::ecrireReel(e->resval.rreal) + " ";
      if (e->restype == 1070) texte += std::to_string(e->resval.rint) + " ";
    }
    return texte;
  }
};

TEST(ArgumentsLisp, countsListsAsOneAndConvertsNumbers) {
  const argumentsLisp args(acutBuildList(RTSTR, L"a", RTLB, RTLB, RTSHORT, 1, RTLE, RTREAL, 2.0, RTLE, RTLONG,
                                         70000, RTREAL, 2.5, RTNONE));
  EXPECT_EQ(args.nombre(), 4);
  EXPECT_EQ(argumentsLisp::entier(args.element(2)), 70000);
  EXPECT_EQ(argumentsLisp::entier(args.element(3)), -99999999);
  EXPECT_EQ(argumentsLisp::reel(args.element(2)), 70000.0);
  EXPECT_EQ(argumentsLisp::reel(args.element(0)), 1e36);
  EXPECT_EQ(args.element(4), nullptr);
  EXPECT_EQ(args.element(-1), nullptr);
  EXPECT_EQ(argumentsLisp(acutBuildList(RTLB, RTLB, RTNONE)).nombre(), 1) << "brackets left open";
}

TEST_F(FonctionsLisp, addPtAndTpcdaddptMakePointsFromTheirArguments) {
  jouer("new points", [this] {
    std::string fait;
    for (const pointDuDessin& p : *table().getData()) {
      fait += base::formater("%s %d %g %g %g", p.nomPoint, p.code, p.x, p.y, p.z);
      EXPECT_TRUE(p.id.isLive());
    }
    table().supprimerPoint(L"a");
    return fait;
  });
}

TEST_F(FonctionsLisp, tpcdaddptReplacesThePointAndItsBlock) {
  dessiner({L"A", L"B"});
  const AcDbObjectId ancien = table().getData(0)->id;
  appeler(L"tpcdaddpt",
          acutBuildList(RTSTR, L"a", RTSHORT, 2, RTPOINT, AcGePoint3d(9, 9, 0), RTNIL, RTNIL, RTNONE));
  EXPECT_EQ(noms(table()), "B a");
  EXPECT_FALSE(ancien.isLive());
}

TEST_F(FonctionsLisp, tellsTheNextNumber) {
  EXPECT_EQ(appeler(L"maxnum"), "1");
  for (const wchar_t* nom : {L"7", L"A9"}) table().Ajouter(unPoint(nom, 0, 0));
  EXPECT_EQ(appeler(L"MAXNUM"), "8");
}

TEST_F(FonctionsLisp, selectsTheLiveBlocksOfTheTable) {
  dessiner({L"P5", L"P6", L"P10", L"P11"}, 3);
  dessiner({L"Q"}, 1);
  table().Ajouter(unPoint(L"P7", 0, 0, 1, 3));  // no block
  AcDbObjectPointer<AcDbEntity>(table().getData(1)->id, AcDb::kForWrite)->erase();
  appeler(L"seloncode", acutBuildList(RTLONG, 3, RTNONE));
  EXPECT_EQ(choisis(), 3);
  jouer("selections");
}

TEST_F(FonctionsLisp, workOnTheCodeTable) {
  jouer("code table");
  EXPECT_EQ(getTableCodification().codes[2].layers[layerObs], L"_ Obs Points");
  EXPECT_EQ(appeler(L"addcodept", acutBuildList(RTLONG, 60, RTSTR, L"long", RTNONE)), "T");
}

// Deliberate: the margin of x serves on top too, that of y at the bottom only.
TEST_F(FonctionsLisp, ZoomLeve_marges_areNotSymmetric) {
  table().Ajouter(unPoint(L"1", 650000, 6860000));
  appeler(L"C:ZoomLeve");
  EXPECT_EQ(imprime, "\nPas de points dans cette table");
  table().Ajouter(unPoint(L"2", 650004, 6860020));
  appeler(L"C:ZoomLeve");
  EXPECT_NEAR(acedView().center.x, 650002, 1e-6);
  EXPECT_NEAR(acedView().center.y, (6860000 - 0.5 + 6860020 + 0.1) / 2, 1e-6);
  EXPECT_NEAR(acedView().height, 20.6, 1e-6);
}

TEST_F(FonctionsLisp, vcodeMarksThePointsOfACodeInSevenColours) {
  table().Ajouter(unPoint(L"a", 650000, 6860000, 1, 3));
  table().Ajouter(unPoint(L"b", 0, 0, 1, 4));
  for (int i = 0; i < 9; ++i) {
    reponses = {"3"};
    appeler(L"c:vcode");
  }
  const auto& traits = acedTransientGraphics();
  ASSERT_EQ(traits.size(), 18U);
  const double demi = 5 * acedPixelSize();
  EXPECT_EQ(traits[0].from, AcGePoint3d(650000 - demi, 6860000, 0));
  EXPECT_EQ(traits[0].to, AcGePoint3d(650000 + demi, 6860000, 0));
  EXPECT_EQ(traits[1].from, AcGePoint3d(650000, 6860000 - demi, 0));
  EXPECT_EQ(traits[1].to, AcGePoint3d(650000, 6860000 + demi, 0));
  for (std::size_t i = 0; i < traits.size(); ++i)
    EXPECT_EQ(traits[i].color, (traits[0].color - 1 + static_cast<int>(i / 2)) % 7 + 1) << i;
  acedRedraw(nullptr, 0);
}

TEST_F(FonctionsLisp, chgrepptsShowsAnotherBlock) {
  dessiner({L"a"}, 3);
  dessiner({L"b"}, 4);
  const auto bloc = [this](int i) {
    const AcDbObjectPointer<AcDbBlockReference> reference(table().getData(i)->id);
    return AcDbObjectPointer<AcDbBlockTableRecord>(reference->blockTableRecord())->name();
  };
  const std::wstring chemin = base::fromUtf8((installationEssai() / "biblio/autre").string());
  base::remplacerFichier(installationEssai() / "biblio/autre.dwg",
                         base::lireFichier(installationEssai() / "biblio/autre.dxf").value_or(""));
  EXPECT_EQ(appeler(L"chgreppts", acutBuildList(RTSHORT, 3, RTSTR, L"absent", RTNONE)), "void");
  EXPECT_EQ(bloc(0), L"varnblk1");
  EXPECT_EQ(appeler(L"chgreppts", acutBuildList(RTSHORT, 3, RTSTR, chemin, RTNONE)), "void");
  EXPECT_EQ(bloc(0), L"autre");
  EXPECT_EQ(bloc(1), L"varnblk1");
  // The library of blocks is searched, and its .dxf serves the name.
  EXPECT_EQ(appeler(L"chgreppts", acutBuildList(RTSHORT, 3, RTSTR, L"varnblk3.DWG", RTNONE)), "void");
  EXPECT_EQ(bloc(0), L"varnblk3");
}

TEST_F(FonctionsLisp, changeBlocksAndTextsAndTakeThemApart) {
  dessiner({L"a"});
  jouer("blocks and texts");
  AcString texte;
  lireAttribut(*AcDbObjectPointer<AcDbBlockReference>(table().getData(0)->id), L"OBS", texte);
  EXPECT_EQ(texte, L"neuf");
  EXPECT_EQ(facteurTailleBloc(), 3.0);
}

TEST_F(FonctionsLisp, attrvisibilityShowsAndHidesByTag) {
  for (int i = 0; i < 10; ++i) dessiner({L"a"});
  jouer("visibility", [this] {
    std::string etat;
    const AcDbObjectPointer<AcDbBlockReference> bloc(table().getData(9)->id);
    const std::unique_ptr<AcDbObjectIterator> attributs(bloc->attributeIterator());
    for (; !attributs->done(); attributs->step())
      etat += AcDbObjectPointer<AcDbAttribute>(attributs->objectId())->isInvisible() ? "-" : "+";
    return etat;
  });
  appeler(L"select_all");
  ads_name jeu = {resultat->resval.rlname[0], resultat->resval.rlname[1]};
  appeler(L"attrvisibility",
          acutBuildList(RTPICKS, jeu, RTLB, RTLB, RTSTR, L"Z", RTSHORT, 1, RTLE, RTNONE));  // left open
  EXPECT_TRUE(imprime.ends_with("parametres incorrects.")) << imprime;
}

TEST_F(FonctionsLisp, getsegtypeTellsTheNearestSegment) {
  auto* polyligne = new AcDbPolyline;
  polyligne->addVertexAt(0, {650000, 6860000});
  polyligne->addVertexAt(1, {650010, 6860000}, 1.0);
  polyligne->addVertexAt(2, {650010, 6860010});
  mettre(*dessin, polyligne);
  jouer("segments");
}

TEST_F(FonctionsLisp, sxdReplacesTheSectionOfTheSameFirstValueOrAppendsOne) {
  dessiner({L"a"});
  jouer("extended data", [this] {
    return base::trim(
        donnees(AcDbObjectPointer<AcDbBlockTableRecord>(dessin->modelSpaceId())->entities().back()), " ");
  });
}

TEST_F(FonctionsLisp, serveTheUserAndTheSystem) {
  const std::filesystem::path fichier = installationEssai() / "à supprimer.txt";
  base::remplacerFichier(fichier, "x");
  const std::wstring nom = base::fromUtf8(fichier.string());
  EXPECT_EQ(appeler(L"vndelfile", acutBuildList(RTSTR, nom, RTNONE)), "1");
  EXPECT_EQ(appeler(L"vndelfile", acutBuildList(RTSTR, nom, RTNONE)), "nil");
  const std::filesystem::path dossier = installationEssai() / "vide";
  std::filesystem::create_directories(dossier);
  EXPECT_EQ(appeler(L"vndelfile", acutBuildList(RTSTR, base::fromUtf8(dossier.string()), RTNONE)), "nil");
  reponses = {""};
  appeler(L"wait_user");
  EXPECT_EQ(imprime.substr(0, 39), "\nAppuyez sur une touche pour continuer ");
}

TEST_F(FonctionsLisp, kGetptAsksForAPointAndSelectionnerCodeForACode) {
  jouer("asked points and codes");
  reponses = {""};
  EXPECT_THROW(appelerEcrit("k_getpt \"\" nil"), base::ScriptError) << "Enter is no point";
}

}  // namespace
