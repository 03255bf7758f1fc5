// The functions offered to LISP: arguments, results, effects.

#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "arx/ed/edgraphics.h"
#include "base/files.h"
#include "host/arguments_lisp.h"
#include "module_essai.h"
#include "points/point_xyz.h"

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
      if (e->restype == 1040) texte += base::formater("%g ", e->resval.rreal);
      if (e->restype == 1070) texte += std::to_string(e->resval.rint) + " ";
    }
    return texte;
  }
};

resbuf* suite(std::initializer_list<resbuf*> chaines) {
  resbuf* tete = nullptr;
  resbuf* queue = nullptr;
  for (resbuf* chaine : chaines) {
    (queue ? queue->rbnext : tete) = chaine;
    for (queue = chaine; queue->rbnext;) queue = queue->rbnext;
  }
  return tete;
}

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

struct ajout {
  const char* nom;
  resbuf* arguments;
  const char* valeur;
  const char* point;  ///< "" for none
};

TEST_F(FonctionsLisp, addPtAndTpcdaddptMakePointsFromTheirArguments) {
  const auto liste = [](const std::initializer_list<resbuf*>& c) { return suite(c); };
  const auto texte = [](const wchar_t* t) { return acutBuildList(RTSTR, t, RTNONE); };
  const auto court = [](int n) { return acutBuildList(RTSHORT, n, RTNONE); };
  const auto reel = [](double x) { return acutBuildList(RTREAL, x, RTNONE); };
  const auto point = [] { return acutBuildList(RT3DPOINT, AcGePoint3d(5, 6, 7), RTNONE); };
  const auto couple = [] { return acutBuildList(RTLB, RTSHORT, 5, RTREAL, 6.0, RTLE, RTNONE); };
  const auto nil = [] { return acutBuildList(RTNIL, RTNONE); };
  const std::pair<const wchar_t*, std::vector<ajout>> fonctions[] = {
      {L"add_pt",
       {{"number", liste({texte(L"a"), court(3), point(), reel(12.5), texte(L"o")}), "void", "a 3 5 6 12.5"},
        {"text altitude", liste({texte(L"a"), court(0), couple(), texte(L" 7.5"), texte(L"o")}), "void",
         "a 1 5 6 7.5"},
        {"no altitude", liste({texte(L"a"), court(10000), point(), nil(), nil()}), "void", "a 1 5 6 1e+38"},
        {"bad altitude", liste({texte(L"a"), court(9999), point(), texte(L"1E5"), nil()}), "void",
         "a 9999 5 6 1e+38"},
        {"real code", liste({texte(L"a"), reel(3), point(), nil(), nil()}), "nil", ""},
        {"text code", liste({texte(L"a"), texte(L"3"), point(), nil(), nil()}), "nil", ""},
        {"no point", liste({texte(L"a"), court(3), reel(1), nil(), nil()}), "nil", ""},
        {"four arguments", liste({texte(L"a"), court(3), couple(), nil()}), "nil", ""},
        {"nothing", nullptr, "nil", ""}}},
      {L"tpcdaddpt",
       {{"text code", liste({texte(L"a"), texte(L"12x"), point(), court(4), texte(L"o")}), "void",
         "a 12 5 6 4"},
        {"real code", liste({texte(L"a"), reel(-3), point(), reel(4), nil()}), "void", "a 1 5 6 4"},
        {"text altitude", liste({texte(L"a"), reel(1e300), point(), texte(L"4"), nil()}), "void",
         "a 1 5 6 1e+38"},
        {"no name", liste({court(1), court(3), point(), nil(), nil()}), "nil", ""},
        {"four arguments", liste({texte(L"a"), court(3), point(), nil()}), "nil", ""}}},
  };
  for (const auto& [nom, cas] : fonctions)
    for (const ajout& c : cas) {
      table().supprimerPoint(L"a");
      EXPECT_EQ(appeler(nom, c.arguments), c.valeur) << c.nom;
      std::string fait;
      for (const pointDuDessin& p : *table().getData())
        fait += base::formater("%s %d %g %g %g", p.nomPoint, p.code, p.x, p.y, p.z);
      EXPECT_EQ(fait, c.point) << c.nom;
      if (!fait.empty()) {
        EXPECT_TRUE(table().getData(0)->id.isLive()) << c.nom;
      }
    }
  EXPECT_EQ(imprime, "\nInvalid params");
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
  struct {
    const wchar_t* fonction;
    resbuf* arguments;
    int nombre;
  } const cas[] = {
      {L"select_all", nullptr, 4},
      {L"seloncode", acutBuildList(RTSHORT, 3, RTNONE), 3},
      {L"seloncode", acutBuildList(RTLONG, 3, RTNONE), 3},
      {L"seloncode", acutBuildList(RTSHORT, 44, RTNONE), 0},
      {L"seloncode", acutBuildList(RTSHORT, -1, RTNONE), 1},
      {L"seloncode", acutBuildList(RTREAL, 3.0, RTNONE), -1},
      {L"seloncode", nullptr, -1},
      {L"selonnum", acutBuildList(RTSTR, L"p", RTSHORT, 10, RTSHORT, 5, RTNONE), 2},
      {L"selonnum", acutBuildList(RTSTR, L"P", RTSHORT, 11, RTSHORT, 11, RTNONE), 1},
      {L"selonnum", acutBuildList(RTSTR, L"P", RTSHORT, 1, RTREAL, 11.0, RTNONE), -1},
      {L"selonnum", acutBuildList(RTSTR, L"P", RTSHORT, 1, RTNONE), -1},
  };
  for (const auto& c : cas) {
    appeler(c.fonction, c.arguments);
    EXPECT_EQ(choisis(), c.nombre) << base::toUtf8(c.fonction);
  }
  EXPECT_EQ(appeler(L"ename_pt", acutBuildList(RTSTR, L"p10", RTNONE)), "<Entity>");
  EXPECT_EQ(appeler(L"ename_pt", acutBuildList(RTSTR, L"P6", RTNONE)), "nil") << "its block is erased";
  EXPECT_EQ(appeler(L"ename_pt", acutBuildList(RTSTR, L"zz", RTNONE)), "nil");
  appeler(L"reg_pts");
  appeler(L"select_all");
  EXPECT_EQ(choisis(), 6) << "lost blocks came back";
}

TEST_F(FonctionsLisp, workOnTheCodeTable) {
  const char* const avant = "((1 . \"Point topo\") (100 . \"Station\"))";
  for (resbuf* faux :
       {static_cast<resbuf*>(nullptr), acutBuildList(RTSHORT, 5, RTNONE),
        acutBuildList(RTSTR, L"5", RTSTR, L"a", RTNONE), acutBuildList(RTREAL, 5.0, RTSTR, L"a", RTNONE),
        acutBuildList(RTSHORT, 5, RTSHORT, 6, RTNONE)})
    EXPECT_EQ(appeler(L"addcodept", faux), "nil");
  EXPECT_EQ(appeler(L"loadcodept"), avant);
  EXPECT_EQ(appeler(L"resetcodespts"), "nil");
  EXPECT_EQ(appeler(L"loadcodept"), "nil");
  for (resbuf* bon : {acutBuildList(RTSHORT, 50, RTSTR, L" \tArbre ", RTNONE),
                      acutBuildList(RTLONG, 50, RTSTR, L"autre", RTNONE),
                      acutBuildList(RTLONG, 10000, RTSTR, L"  ", RTNONE),
                      acutBuildList(RTSHORT, 7, RTSTR, L"", RTSTR, L"de trop", RTNONE)})
    EXPECT_EQ(appeler(L"addcodept", bon), "T");
  EXPECT_EQ(appeler(L"loadcodept"), "((1 . \"Code 1\") (7 . \"Code 7\") (50 . \"Arbre\"))");
  EXPECT_EQ(getTableCodification().codes[2].layers[layerObs], L"_ Obs Points");
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

TEST_F(FonctionsLisp, vcodeMarksThePointsOfACode) {
  table().Ajouter(unPoint(L"a", 0, 0, 1, 3));
  table().Ajouter(unPoint(L"b", 0, 0, 1, 4));
  reponses = {"3", "3"};
  appeler(L"c:vcode");
  appeler(L"c:vcode");
  const auto& traits = acedTransientGraphics();
  ASSERT_EQ(traits.size(), 4U);
  EXPECT_NEAR(traits[0].from.distanceTo(traits[0].to), 10 * acedPixelSize(), 1e-9);
  EXPECT_EQ(traits[3].color, traits[0].color % 7 + 1);
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
}

TEST_F(FonctionsLisp, changeBlocksAndTheirAttributes) {
  dessiner({L"a"});
  const AcDbObjectId id = table().getData(0)->id;
  EXPECT_EQ(appeler(L"calctailleblock", acutBuildList(RTSTR, L"VARNBLK1", RTNONE)), "(2 0 0)");
  EXPECT_EQ(appeler(L"calctailleblock", acutBuildList(RTSTR, L"absent", RTNONE)), "nil");
  appeler(L"modif-attrib", suite({nomDe(id), acutBuildList(RTSTR, L"obs", RTSTR, L"neuf", RTNONE)}));
  AcString texte;
  lireAttribut(*AcDbObjectPointer<AcDbBlockReference>(id), L"OBS", texte);
  EXPECT_EQ(texte, L"neuf");
  EXPECT_EQ(appeler(L"modif-attrib", nomDe(id)), "nil");
  appeler(L"updarxttxt", acutBuildList(RTSHORT, -3, RTNONE));
  EXPECT_EQ(facteurTailleBloc(), 3.0);
  EXPECT_EQ(appeler(L"updarxttxt", acutBuildList(RTSTR, L"x", RTNONE)), "nil");
  EXPECT_EQ(facteurTailleBloc(), 3.0);
}

TEST_F(FonctionsLisp, attrvisibilityShowsAndHidesByTag) {
  for (int i = 0; i < 12; ++i) dessiner({L"a"});
  const auto visibles = [this] {
    std::string etat;
    const AcDbObjectPointer<AcDbBlockReference> bloc(table().getData(11)->id);
    const std::unique_ptr<AcDbObjectIterator> attributs(bloc->attributeIterator());
    for (; !attributs->done(); attributs->step())
      etat += AcDbObjectPointer<AcDbAttribute>(attributs->objectId())->isInvisible() ? "-" : "+";
    return etat;
  };
  EXPECT_EQ(visibles(), "-+++");
  const auto demander = [this](resbuf* paires) {
    appeler(L"select_all");
    ads_name jeu = {resultat->resval.rlname[0], resultat->resval.rlname[1]};
    appeler(L"attrvisibility", suite({acutBuildList(RTPICKS, jeu, RTNONE), paires}));
  };
  demander(acutBuildList(RTLB, RTLB, RTSTR, L"code", RTDOTE, RTSHORT, 1, RTLE, RTLB, RTSTR, L"Z", RTSHORT, 0,
                         RTLE, RTLE, RTNONE));
  EXPECT_EQ(visibles(), "++-+");
  EXPECT_EQ(imprime, "\r element       10 /       12");
  for (resbuf* faux :
       {acutBuildList(RTNIL, RTNONE), acutBuildList(RTLB, RTSTR, L"Z", RTLE, RTNONE),
        acutBuildList(RTLB, RTLB, RTSTR, L"Z", RTLE, RTLE, RTNONE), acutBuildList(RTLB, RTLB, RTNONE)}) {
    imprime.clear();
    demander(faux);
    EXPECT_EQ(imprime, "\nparametres incorrects.");
  }
}

TEST_F(FonctionsLisp, getsegtypeTellsTheNearestSegment) {
  auto* polyligne = new AcDbPolyline;
  polyligne->addVertexAt(0, {650000, 6860000});
  polyligne->addVertexAt(1, {650010, 6860000}, 1.0);
  polyligne->addVertexAt(2, {650010, 6860010});
  AcDbObjectId id;
  AcDbObjectPointer<AcDbBlockTableRecord>(dessin->modelSpaceId(), AcDb::kForWrite)
      ->appendAcDbEntity(id, polyligne);
  polyligne->close();
  struct {
    const char* nom;
    AcGePoint3d point;
    const char* valeur;
  } const cas[] = {
      {"line", {650003, 6860001, 0}, "(\"LINE\" (650000 6.86e+06 0) (650010 6.86e+06 0))"},
      {"arc", {650020, 6860005, 0}, "(\"ARC\" (650010 6.86e+06 0) (650010 6.86001e+06 0) 1)"},
      {"behind the end", {650000, 6860011, 0}, "(\"ARC\" (650010 6.86e+06 0) (650010 6.86001e+06 0) 1)"}};
  for (const auto& c : cas)
    EXPECT_EQ(appeler(L"getsegtype", suite({nomDe(id), acutBuildList(RT3DPOINT, c.point, RTNONE)})), c.valeur)
        << c.nom;
  EXPECT_EQ(appeler(L"getsegtype", nomDe(id)), "nil");
  EXPECT_EQ(appeler(L"getsegtype",
                    suite({nomDe(dessin->layerZero()), acutBuildList(RTPOINT, AcGePoint3d(), RTNONE)})),
            "nil");
}

TEST_F(FonctionsLisp, sxdReplacesTheSectionOfTheSameFirstValueOrAppendsOne) {
  dessiner({L"a"});
  const AcDbObjectId id = table().getData(0)->id;
  struct {
    resbuf* donnees;
    const char* attendu;
  } const cas[] = {
      {acutBuildList(RTLB, RTSTR, L"Haie", RTREAL, 1.5, RTSHORT, 4, RTLE, RTNONE),
       "VARNPLUS 1 { Haie 1.5 4 } "},
      {acutBuildList(RTLB, RTSTR, L"HAIE", RTSHORT, 5, RTLE, RTNONE), "VARNPLUS 1 { HAIE 5 } "},
      {acutBuildList(RTPOINT, AcGePoint3d(2, 3, 9), RTNONE), "VARNPLUS 1 { HAIE 5 } { 2 3 } "},
      {acutBuildList(RT3DPOINT, AcGePoint3d(2, 7, 9), RTNONE), "VARNPLUS 1 { HAIE 5 } { 2 7 9 } "},
      {acutBuildList(RTLB, RTSHORT, 2, RTLE, RTNONE), "VARNPLUS 1 { HAIE 5 } { 2 7 9 } { 2 } "},
  };
  for (const auto& c : cas) {
    appeler(L"sxd", suite({nomDe(id), c.donnees}));
    EXPECT_EQ(donnees(id), c.attendu);
  }
  auto* nu = new AcDbPoint({0, 0, 0});
  AcDbObjectId idNu;
  AcDbObjectPointer<AcDbBlockTableRecord>(dessin->modelSpaceId(), AcDb::kForWrite)
      ->appendAcDbEntity(idNu, nu);
  nu->close();
  appeler(L"sxd", suite({nomDe(idNu), acutBuildList(RTLB, RTSTR, L"x", RTLE, RTNONE)}));
  EXPECT_EQ(donnees(idNu), "VARNPLUS { x } ");
  EXPECT_EQ(imprime, "");
  struct {
    resbuf* arguments;
    const char* message;
  } const fautes[] = {
      {nullptr, "\nNombre de parametres insuffisant"},
      {acutBuildList(RTSTR, L"x", RTNONE), "\n1er param doit etre un nom d'entite"},
      {suite({nomDe(id), acutBuildList(RTLB, RTLONG, 70000, RTLE, RTNONE)}),
       "\nMauvais type d'element dans la liste (buildxdata)"},
      {suite({nomDe(id), acutBuildList(RTSTR, L"x", RTNONE)}),
       "\nType 2 eme param=5005\n2 eme param doit etre une liste de Xdata"},
  };
  for (const auto& f : fautes) {
    imprime.clear();
    EXPECT_EQ(appeler(L"sxd", f.arguments), "nil");
    EXPECT_EQ(imprime, f.message);
  }
}

TEST_F(FonctionsLisp, serveTheUserAndTheSystem) {
  EXPECT_EQ(appeler(L"analyse", acutBuildList(RTSTR, L" a, b,\tcé\n", RTNONE)), "(\"a\" \"b\" \"cé\")");
  EXPECT_EQ(appeler(L"analyse", acutBuildList(RTSTR, L" ,\t", RTNONE)), "nil");
  EXPECT_EQ(appeler(L"analyse", acutBuildList(RTSHORT, 1, RTNONE)), "nil");
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

TEST_F(FonctionsLisp, kGetptAsksForAPoint) {
  reponses = {"1,2,3", "@1,1", "*Annuler*"};
  EXPECT_EQ(appeler(L"k_getpt", acutBuildList(RTSTR, L"\nPoint :", RTNIL, RTNONE)), "(1 2 3)");
  EXPECT_EQ(appeler(L"k_getpt", acutBuildList(RTSTR, L"\nPoint :", RTPOINT, AcGePoint3d(10, 20, 0), RTNONE)),
            "(11 21 0)");
  EXPECT_EQ(appeler(L"k_getpt", acutBuildList(RTSTR, L"\nPoint :", RTNIL, RTNONE)), "nil");
  imprime.clear();
  for (resbuf* faux : {acutNewRb(RTNONE), acutBuildList(RTSHORT, 1, RTNONE),
                       acutBuildList(RTSTR, L"x", RTNONE), acutBuildList(RTSTR, L"x", RTSTR, L"y", RTNONE)})
    EXPECT_EQ(appeler(L"k_getpt", faux), "nil");
  EXPECT_EQ(appeler(L"k_getpt"), "nil");
  EXPECT_EQ(imprime,
            "\n1er param n'est pas une chaine\n1er param n'est pas une chaine\n2eme param = NULL"
            "\n2eme param n'est pas un point, son code est 5005\n1er param = NULL");
}

}  // namespace
