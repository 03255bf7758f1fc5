// Terrains made of points, lines and faces, kept in a drawing, drawn; what is told of doubtful ones.

#include "arx/db/dbheavypoly.h"
#include "arx/db/dbpl.h"
#include "base/format.h"
#include "support/atelier.h"
#include "support/remarques.h"
#include "terrain/dessin_terrain.h"
#include "terrain/lecture_dessin.h"
#include "terrain/services.h"
#include "terrain/stockage.h"
#include "terrain/terrains_ouverts.h"

#include <functional>

namespace {

using namespace veltora;
using namespace veltora::terrain;

constexpr double kX = 652000.0;
constexpr double kY = 6862000.0;

/// A slope of 11 by 11 points, 1 m in 10 to the east.
Sources versant() {
  Sources sources;
  for (int x = 0; x <= 10; ++x)
    for (int y = 0; y <= 10; ++y) sources.points.push_back({kX + 10 * x, kY + 10 * y, 250.0 + x});
  return sources;
}

struct CasFabrique {
  const char* nom;
  std::function<void(Sources&)> changer;
  const char* erreur;  ///< empty for a terrain
  const char* dit;     ///< in the remarks, "" for none
  bool doute;
};

TEST(Fabrique, entreesDouteusesOuMauvaises) {
  const AcGePoint3d milieu(kX + 55, kY + 55, 255.5);
  const auto garder = [](int nombre) {
    return [nombre](Sources& s) { s.points.resize(static_cast<std::size_t>(nombre)); };
  };
  const CasFabrique cas[] = {
      {"bon", [](Sources&) {}, "", "", false},
      {"deux points", garder(2), "il faut au moins trois points qui ont une altitude (2)", "", false},
      {"aucun", garder(0), "il faut au moins trois points qui ont une altitude (0)", "", false},
      {"une colonne", garder(11), "tous les points sont alignés", "", false},
      {"double", [](Sources& s) { s.points.push_back(s.points[5]); }, "",
       "points au même lieu, le premier gardé : 1", false},
      {"deux altitudes", [](Sources& s) { s.points.push_back(s.points[5] + AcGeVector3d(5e-5, 0, 2)); }, "",
       "deux altitudes en 652000.000, 6862050.000 : 250.000 gardée, 252.000 laissée", true},
      {"sans altitude", [](Sources& s) { s.points[7].z = base::Z_ABSENT; }, "",
       "points sans altitude, laissés de côté : 1", true},
      {"insensé", [](Sources& s) { s.points[7].x = 1e12; }, "", "n'a pas de sens, laissés de côté : 1", true},
      {"zéro", [](Sources& s) { s.points[60].z = 0.0; }, "",
       "altitude 0 parmi d'autres de 250.000 à 260.000 : 1", true},
      {"loin en altitude",
       [](Sources& s) {
         s.points[60].z = 2550.0;
         s.reperes.assign(61, L"");
         s.reperes[60] = L"B7";
       },
       "",
       "point B7 (652050.000, 6862050.000) : altitude 2550.000 loin de celles des autres (médiane 255.000)",
       true},
      {"loin en plan", [](Sources& s) { s.points[60].x = 0.0; }, "", "abscisse 0.000 loin", true},
      {"colonnes échangées",
       [](Sources& s) {
         for (AcGePoint3d& p : s.points) std::swap(p.x, p.z);
       },
       "", "colonnes échangées", true},
      {"lignes croisées",
       [&](Sources& s) {
         s.lignes = {{milieu, milieu + AcGeVector3d(4, 4, 0)},
                     {milieu + AcGeVector3d(4, 0, 3), milieu + AcGeVector3d(0, 4, 3)}};
       },
       "", "lignes qui se croisent en 652057.000, 6862057.000 à deux altitudes : 255.500 et 258.500", true},
      {"lignes croisées d'accord",
       [&](Sources& s) {
         s.lignes = {{milieu, milieu + AcGeVector3d(4, 4, 2)},
                     {milieu + AcGeVector3d(4, 0, 1), milieu + AcGeVector3d(0, 4, 1)}};
       },
       "", "", false},
      {"ligne contre un point",
       [](Sources& s) {
         s.lignes = {{s.points[5] + AcGeVector3d(0, 0, 1), s.points[6]}};
       },
       "", "250.000 gardée, 251.000 laissée", true},
      {"point sur une ligne",
       [](Sources& s) {
         s.points[11].z += 0.5;
         s.lignes = {{s.points[0], s.points[22]}};
       },
       "",
       "point en 652010.000, 6862000.000 sur une ligne d'une autre altitude : 251.500 gardée, 251.000 "
       "laissée",
       true},
      {"point sur une ligne, d'accord",
       [](Sources& s) {
         s.lignes = {{s.points[0], s.points[22]}};
       },
       "", "", false},
      {"limite ailleurs",
       [](Sources& s) {
         s.limites = {{{0, 0, 0}, {9, 0, 0}, {9, 9, 0}}};
       },
       "la limite ou la plus longue arête ne laisse aucune face", "", false},
      {"arête trop courte", [](Sources& s) { s.areteMaximale = 5.0; },
       "la limite ou la plus longue arête ne laisse aucune face", "", false},
      {"face verticale",
       [](Sources& s) {
         s.facettes = {{AcGePoint3d(kX, kY, 250), {kX + 9, kY, 250}, {kX, kY + 9, 250}},
                       {AcGePoint3d(kX, kY, 250), {kX + 9, kY, 250}, {kX + 9, kY, 255}}};
       },
       "", "faces sans surface en plan, laissées de côté : 1", true},
      {"faces verticales",
       [](Sources& s) {
         s.facettes = {{AcGePoint3d(0, 0, 1), {9, 0, 1}, {9, 0, 5}}};
       },
       "aucune face n'a de surface en plan", "faces sans surface en plan, laissées de côté : 1", true},
  };
  for (const CasFabrique& c : cas) {
    Sources sources = versant();
    c.changer(sources);
    base::Remarques remarques;
    std::wstring erreur;
    const auto terrain = fabriquer(L"T", sources, remarques, erreur);
    EXPECT_EQ(base::toUtf8(erreur), c.erreur) << c.nom;
    EXPECT_EQ(terrain != nullptr, erreur.empty()) << c.nom;
    EXPECT_EQ(remarques.douteuses(), c.doute) << c.nom << "\n" << texteDe(remarques);
    EXPECT_NE(texteDe(remarques).find(c.dit), std::string::npos) << c.nom << "\n" << texteDe(remarques);
    EXPECT_EQ(remarques.empty(), !*c.dit) << c.nom << "\n" << texteDe(remarques);
  }
}

TEST(Fabrique, limiteSansAltitudeSuitLeTerrain) {
  Sources sources = versant();
  for (AcGePoint3d& p : sources.points)
    p.z += 3.0 * std::sin(p.y - kY);  // not a plane: the limit must bend with it
  std::wstring erreur;
  base::Remarques remarques;
  const auto entier = fabriquer(L"T", sources, remarques, erreur);
  // A square that juts out of the points to the east, and an inner court.
  sources.limites = {
      {{kX + 23, kY + 17, 0}, {kX + 150, kY + 17, 0}, {kX + 150, kY + 83, 0}, {kX + 23, kY + 83, 0}},
      {{kX + 41, kY + 41, 0}, {kX + 57, kY + 41, 0}, {kX + 57, kY + 57, 0}, {kX + 41, kY + 57, 0}}};
  const auto borne = fabriquer(L"T", sources, remarques, erreur);
  ASSERT_TRUE(borne);
  double aire = 0.0;
  for (const Face& face : borne->surface().faces()) {
    const auto s = [&](std::size_t i) {
      return borne->surface().sommets()[static_cast<std::size_t>(face.sommets[i])];
    };
    if (face.sol)
      aire += ((s(1).x - s(0).x) * (s(2).y - s(0).y) - (s(1).y - s(0).y) * (s(2).x - s(0).x)) / 2.0;
  }
  EXPECT_NEAR(aire, 77.0 * 66.0 - 16.0 * 16.0, 1e-4);
  for (const double part : {0.1, 0.37, 0.5, 0.93}) {
    AcGePoint3d bord(kX + 23 + 1e-7, kY + 17 + 66 * part, 0);
    AcGePoint3d attendu = bord;
    ASSERT_TRUE(borne->surface().altitude(bord) && entier->surface().altitude(attendu));
    EXPECT_NEAR(bord.z, attendu.z, 1e-5);
  }
  AcGePoint3d cour(kX + 50, kY + 50, 0);
  EXPECT_FALSE(borne->surface().altitude(cour));
}

TEST(Fabrique, limiteQuiSortParUnBordOblique) {
  // Where the outline crosses the slanting border of the ground its crossings lie a rounding beside it: the
  // ground on both sides once ran together there, and all of it was out.
  Sources sources;
  for (const auto& [x, y] : {std::pair{0.0, 0.0}, {97.13, 3.7}, {101.9, 88.3}, {-4.1, 91.7}, {47.7, 52.3}})
    sources.points.push_back({kX + x, kY + y, 250.0 + 0.1 * x});
  sources.limites = {{{kX - 20, kY + 40, 0}, {kX + 130, kY + 33, 0}, {kX + 130, kY + 71, 0}}};
  std::wstring erreur;
  base::Remarques remarques;
  const auto terrain = fabriquer(L"T", sources, remarques, erreur);
  ASSERT_TRUE(terrain) << base::toUtf8(erreur);
  for (const auto& [x, y, sol] :
       {std::tuple{50.0, 45.0, true}, {95.0, 50.0, true}, {50.0, 20.0, false}, {20.0, 80.0, false}}) {
    AcGePoint3d p(kX + x, kY + y, 0);
    EXPECT_EQ(terrain->surface().altitude(p), sol) << x << "," << y;
  }
}

TEST(Codes, plages) {
  struct Cas {
    const wchar_t* texte;
    bool bon;
    int prend;
    int laisse;
  };
  for (const Cas& c :
       {Cas{L"", true, 9999, 0}, Cas{L" 100 ", true, 100, 101}, Cas{L"1;200-299", true, 250, 300},
        Cas{L"100,", false, 0, 0}, Cas{L"9-1", false, 0, 0}, Cas{L"0", false, 0, 0}, Cas{L"a", false, 0, 0},
        Cas{L"1-2-3", false, 0, 0}, Cas{L"10000", false, 0, 0}}) {
    ChoixCodes choix;
    EXPECT_EQ(ChoixCodes::lire(c.texte, choix), c.bon) << base::toUtf8(c.texte);
    if (!c.bon) continue;
    EXPECT_TRUE(choix.prend(c.prend));
    EXPECT_FALSE(c.laisse > 0 && choix.prend(c.laisse));
  }
}

class TerrainDuDessin : public Atelier {
protected:
  ~TerrainDuDessin() override { oublierTout(); }
  static std::unique_ptr<Terrain> fait(const wchar_t* nom) {
    base::Remarques remarques;
    std::wstring erreur;
    return fabriquer(nom, versant(), remarques, erreur);
  }
  void ajouterUn(const wchar_t* nom) {
    dessin.undoLog().begin(L"MNT");
    int remplaces = 0;
    ASSERT_NE(ajouter(dessin, fait(nom), remplaces), nullptr);
    dessin.undoLog().end();
  }
  /// "A *B": the names, a star at the current one.
  std::string noms() {
    const TerrainsDuDessin& tous = terrainsDe(dessin);
    std::string texte;
    for (std::size_t i = 0; i < tous.terrains.size(); ++i)
      texte += (i > 0 ? " " : "") + std::string(static_cast<int>(i) == tous.courant ? "*" : "") +
               base::toUtf8(tous.terrains[i]->modele().nom);
    return texte;
  }
};

TEST_F(TerrainDuDessin, plusieursChoisisRemplacesAnnules) {
  TerrainsDuDessin* rien = nullptr;
  currDwgData(&rien);
  EXPECT_EQ(rien, nullptr);
  ajouterUn(L"A");
  ajouterUn(L"B");
  ajouterUn(L"C");
  EXPECT_EQ(noms(), "A B *C");
  dessin.undoLog().begin(L"MNT");
  rendreCourant(dessin, enregistrementDe(dessin, *terrainsDe(dessin).terrains[0]));
  dessin.undoLog().end();
  EXPECT_EQ(noms(), "*A B C");
  dessin.undoLog().begin(L"MNT");
  supprimer(dessin, enregistrementDe(dessin, *terrainsDe(dessin).terrains[0]));
  dessin.undoLog().end();
  EXPECT_EQ(noms(), "B *C");
  ajouterUn(L"b");
  EXPECT_EQ(noms(), "C *b");
  for (const char* attendu : {"B *C", "*A B C", "A B *C", "A *B", "*A", ""}) {
    dessin.undoLog().undo();
    EXPECT_EQ(noms(), attendu);
  }
  dessin.undoLog().redo();
  EXPECT_EQ(noms(), "*A");
  TerrainsDuDessin* donnees = nullptr;
  currDwgData(&donnees);
  ASSERT_NE(donnees, nullptr);
  AcGePoint3d p(kX + 31.25, kY + 47, base::Z_ABSENT);
  EXPECT_NE(calcZPoint(donnees->terrains[0], &p), 0);
  EXPECT_NEAR(p.z, 253.125, 1e-9);
  CheminsTerrain chemins;
  const AcGePoint3d de(kX - 5, kY + 3, 0);
  const AcGePoint3d a(kX + 5, kY + 3, 0);
  EXPECT_NE(tinExtractPath(donnees->terrains[0], &de, &a, &chemins), 0);
  ASSERT_EQ(chemins.size(), 1U);
  EXPECT_NEAR(chemins[0].front().x, kX, 1e-9);
  EXPECT_NEAR(chemins[0].back().z, 250.5, 1e-9);
  const AcGePoint3d loin(kX - 5, kY + 90, 0);
  EXPECT_EQ(tinExtractPath(donnees->terrains[0], &de, &loin, &chemins), 0);
  EXPECT_TRUE(chemins.empty());
}

/// Everything that a terrain may be made of, with doubles that have no short text.
Modele complet() {
  Modele modele;
  modele.nom = L"Été ^ \"1\"";
  modele.areteMaximale = 100.0 / 3.0;
  modele.sommets = {
      {kX + 0.1, kY + 1.0 / 3.0, 1.0 / 7.0}, {kX + 20, kY, -3}, {kX, kY + 20, 1e-9}, {kX + 20, kY + 20, 4}};
  modele.lignes = {{0, 3}};
  modele.limites = {{{kX - 1, kY - 1}, {kX + 30, kY - 1}, {kX + 0.7, kY + 30}}};
  modele.facettes = {{0, 1, 3}, {0, 3, 2}};
  return modele;
}

TEST(Stockage, relitExactement) {
  const Modele ecrit = complet();
  Modele lu;
  ASSERT_TRUE(lireModele(ecrireModele(ecrit), lu));
  EXPECT_EQ(lu.nom, ecrit.nom);
  EXPECT_EQ(lu.areteMaximale, ecrit.areteMaximale);
  EXPECT_TRUE(lu.sommets == ecrit.sommets && lu.lignes == ecrit.lignes && lu.limites == ecrit.limites &&
              lu.facettes == ecrit.facettes);
}

TEST(Stockage, refuseToutGroupeAbime) {
  // Each group of the record taken out, and each turned into something else, must be refused or read as
  // valid.
  const DxfTagText entier = ecrireModele(complet());
  std::vector<std::pair<int, std::string>> groupes;
  DxfTagText::Cursor curseur = entier.tags();
  for (DxfTag groupe; curseur.next(groupe);) groupes.emplace_back(groupe.code, std::string(groupe.value));
  int refus = 0;
  for (std::size_t i = 0; i < groupes.size(); ++i) {
    for (const char* valeur : {"", "-1", "4", "99999999999", "1e300", "nan"}) {
      DxfTagText abime;
      for (std::size_t k = 0; k < groupes.size(); ++k)
        if (k != i || *valeur) abime.append(groupes[k].first, k == i ? valeur : groupes[k].second);
      Modele lu;
      const bool bon = lireModele(abime, lu);
      refus += bon ? 0 : 1;
      EXPECT_TRUE(!bon || (estValable(lu) && !Terrain(lu).surface().faces().empty()));
    }
  }
  EXPECT_GT(refus, static_cast<int>(groupes.size()) * 3);
}

TEST_F(TerrainDuDessin, enregistrementIllisibleResteEtSeDit) {
  ajouterUn(L"A");
  ajouterUn(L"B");
  {
    const AcDbObjectPointer<AcDbXrecord> record(enregistrements(dessin)[0], AcDb::kForWrite);
    DxfTagText groupes;
    groupes.append(1, "VELTORA terrain");
    groupes.append(90, "7");
    record->setTags(groupes);
  }
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  AcDbDatabase relu(false);
  const std::wstring fichier = base::fromUtf8((installationEssai() / "terrain.dxf").string());
  ASSERT_EQ(dessin.saveAs(fichier.c_str()), Acad::eOk);
  ASSERT_EQ(relu.readDwgFile(fichier.c_str()), Acad::eOk);
  acdbHostApplicationServices()->setWorkingDatabase(&dessin);
  EXPECT_EQ(illisibles(relu), 1);
  ASSERT_EQ(terrainsDe(relu).terrains.size(), 1U);
  EXPECT_EQ(terrainsDe(relu).terrains[0]->modele().sommets, fait(L"B")->modele().sommets);
}

TEST_F(TerrainDuDessin, travailDUnAppel) {
  for (const AcGePoint3d& p : versant().points)
    table().Ajouter(unPoint(L"1", p.x, p.y, p.z, p.x < kX + 55 ? 100 : 200));
  DemandeTerrain demande;
  demande.equidistance = 1.0;
  demande.maitresses = 5;
  demande.faces = true;
  ResultatTerrain resultat;
  ASSERT_NE(travailTerrain(&demande, &resultat), 0) << base::toUtf8(resultat.erreur);
  EXPECT_EQ(resultat.sommets, 121);
  EXPECT_EQ(resultat.faces, 200);
  EXPECT_NEAR(resultat.surface, 10000.0, 1e-6);
  EXPECT_EQ(resultat.basse, 250.0);
  EXPECT_EQ(resultat.haute, 260.0);
  // Of 251 to 260: those of 255 and 260 are master ones.
  EXPECT_EQ(resultat.courbes, 10);
  EXPECT_EQ(resultat.maitresses, 2);
  EXPECT_EQ(entites(), 210);
  int vues = 0;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    for (const AcDbObjectId& id : espace->entities()) {
      const AcDbObjectPointer<AcDbPolyline> courbe(id);
      if (courbe.openStatus() != Acad::eOk) continue;
      ++vues;
      const bool maitresse = std::fmod(courbe->elevation(), 5.0) == 0.0;
      EXPECT_EQ(courbe->layer(), maitresse ? kCalqueMaitresses : kCalqueCourbes);
      AcGePoint3d p;
      courbe->getPointAt(0, p);
      EXPECT_NEAR(p.x, kX + 10.0 * (p.z - 250.0), 1e-6);
    }
  }
  EXPECT_EQ(vues, 10);
  demande.codes = L"200";
  demande.nom = L"Est";
  demande.faces = false;
  ASSERT_NE(travailTerrain(&demande, &resultat), 0);
  EXPECT_EQ(noms(), "Terrain *Est");
  EXPECT_EQ(terrainsDe(dessin).terrains[1]->modele().sommets.size(), 55U);

  struct Refus {
    const char* erreur;
    std::function<void(DemandeTerrain&)> changer;
  };
  const Refus refus[] = {
      {"ne dit pas des codes", [](DemandeTerrain& d) { d.codes = L"x"; }},
      {"n'a pas de calque « RUPTURE »", [](DemandeTerrain& d) { d.calqueLignes = L"RUPTURE"; }},
      {"ne porte aucune ligne 3D", [](DemandeTerrain& d) { d.calqueLignes = L"0"; }},
      {"ne porte aucune limite", [](DemandeTerrain& d) { d.calqueLimite = L"0"; }},
      {"ne porte aucune ligne", [](DemandeTerrain& d) { d.calqueProfil = L"0"; }},
      {"aucun point",
       [](DemandeTerrain& d) {
         d.codes = L"9";
         d.source = SourceTerrain::kTable;
       }},
  };
  for (const Refus& r : refus) {
    DemandeTerrain mauvaise;
    r.changer(mauvaise);
    ResultatTerrain echec;
    EXPECT_EQ(travailTerrain(&mauvaise, &echec), 0) << r.erreur;
    EXPECT_NE(base::toUtf8(echec.erreur).find(r.erreur), std::string::npos) << base::toUtf8(echec.erreur);
  }
  // Contour lines of more than a million vertices are a doubt: nothing is drawn.
  const int avant = entites();
  demande.equidistance = 0.0001;
  demande.nom = L"Trop";
  demande.codes.clear();
  ASSERT_NE(travailTerrain(&demande, &resultat), 0);
  EXPECT_TRUE(resultat.retenu);
  EXPECT_NE(texteDe(resultat.remarques).find("les courbes compteraient 20"), std::string::npos);
  EXPECT_EQ(entites(), avant);
  EXPECT_EQ(noms(), "Terrain *Est");
}

TEST_F(TerrainDuDessin, calqueVerrouilleNeRecoitRien) {
  ajouterUn(L"A");
  {
    auto calque = std::make_unique<AcDbLayerTableRecord>();
    calque->setName(kCalqueMaitresses);
    calque->setIsLocked(true);
    AcDbLayerTable* calques = nullptr;
    ASSERT_EQ(dessin.getLayerTable(calques, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    ASSERT_EQ(calques->add(id, calque.get()), Acad::eOk);
    calque.release()->close();
    calques->close();
  }
  BilanCourbes bilan;
  std::wstring erreur;
  EXPECT_FALSE(dessinerCourbes(dessin, terrainCourant(dessin)->surface(), {}, bilan, erreur));
  EXPECT_EQ(base::toUtf8(erreur), "le calque « COURBES_MAITRESSES » est verrouillé : rien n'est dessiné");
  EXPECT_EQ(entites(), 0);
}

}  // namespace
