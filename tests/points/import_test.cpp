// Points from entities of the drawing: sources, order of attempts, codes, and the dialog in front.

#include "points/import_dessin.h"

#include "arx/db/dbmesh.h"
#include "arx/db/dbmtext.h"
#include "arx/db/dbpl.h"
#include "base/format.h"
#include "points/atelier.h"
#include "points/import_dessin_dlg.h"
#include "support/dialog_script.h"

#include <deque>
#include <functional>
#include <vector>

namespace {

using namespace veltora;

using Etiquettes = std::vector<std::pair<const wchar_t*, const wchar_t*>>;

class ImportDessin : public Atelier {
protected:
  template <class T>
  T* mettre(T* entite) {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId(), AcDb::kForWrite);
    EXPECT_EQ(espace->appendAcDbEntity(entite), Acad::eOk);
    return entite;
  }
  /// A reference of the paper space's block with attributes.
  AcDbObjectId bloc(const AcGePoint3d& place, const Etiquettes& etiquettes) {
    auto* reference = mettre(new AcDbBlockReference(place, dessin.paperSpaceId()));
    for (const auto& [etiquette, texte] : etiquettes) {
      auto* attribut = new AcDbAttribute(place, texte, etiquette);
      EXPECT_EQ(reference->appendAttribute(attribut), Acad::eOk);
      attribut->setHeight(1.0);
      attribut->close();
    }
    reference->close();
    return reference->objectId();
  }
  template <class Polyligne, class Sommet>
  void sommets(const std::vector<AcGePoint3d>& places) {
    auto* polyligne = mettre(new Polyligne);
    AcDbObjectId id;
    for (const AcGePoint3d& place : places) {
      auto* sommet = new Sommet(place);
      EXPECT_EQ(polyligne->appendVertex(id, sommet), Acad::eOk);
      sommet->close();
    }
    polyligne->close();
  }
  void polyline(double altitude, const std::vector<AcGePoint2d>& places) {
    auto* polyligne = mettre(new AcDbPolyline);
    for (const AcGePoint2d& place : places) polyligne->addVertexAt(99, place);
    polyligne->setElevation(altitude);
    polyligne->close();
  }
  void texte(const wchar_t* contenu) { mettre(new AcDbText({1, 2, 3}, contenu, {}, 1.0))->close(); }
  void paragraphe(const wchar_t* contenu) {
    auto* texte = new AcDbMText;
    texte->setContents(contenu);
    texte->setTextHeight(1.0);
    texte->setLocation({10, 20, 0});
    texte->setAttachment(AcDbMText::kBottomLeft);
    mettre(texte)->close();
  }
  /// Imports everything. @return "name x y z code" of each point; coordinates above 1e5 less the national
  /// ones
  std::string importer(parametresImport parametres) {
    importerToutLeDessin(table(), parametres);
    std::string resultat;
    for (const pointDuDessin& p : *table().getData()) {
      const double dx = p.x > 1e5 ? 650000 : 0;
      const double dy = p.y > 1e5 ? 6860000 : 0;
      resultat += base::formater("%s%s %g %g %s %d", resultat.empty() ? "" : " | ", p.nomPoint, p.x - dx,
                                 p.y - dy, p.z == Z_ABSENT ? "-" : base::formater("%g", p.z), p.code);
    }
    return resultat;
  }
  std::string importer(int masque) {
    parametresImport parametres;
    parametres.masque = masque;
    return importer(parametres);
  }
  static std::wstring libelle(int code) {
    const int ligne = getTableCodification().chercherCode(code);
    return ligne < 0 ? L"(aucun)" : getTableCodification().codes.GetAt(ligne).libelle;
  }
  void recommencer() {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId(), AcDb::kForWrite);
    for (const AcDbObjectId& id : espace->entities())
      if (id.isLive()) AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)->erase();
    projet.reset();
    getTableCodification().resetDefauts();
  }
};

TEST_F(ImportDessin, takesEachSourceUnderItsCodeAtNationalCoordinates) {
  const AcGePoint3d a(650001, 6860002, 12.5);
  const AcGePoint3d b(650005, 6860002, 13.5);
  const AcGePoint3d plat(650009, 6860002, 0.0);
  const std::string deux = "1 1 2 12.5 %d | 2 5 2 13.5 %d";
  struct {
    const char* nom;
    int drapeau;
    std::function<void()> dessiner;
    int code;
    const wchar_t* libelle;
  } const cas[] = {
      {"3D polyline", 0x004,
       [&] {
         sommets<AcDb3dPolyline, AcDb3dPolylineVertex>({a, plat, b});
       },
       9999, L"Sommets importes a partir de polylines 3d"},
      {"old 2D polyline", 0x001,
       [&] {
         sommets<AcDb2dPolyline, AcDb2dVertex>({a, plat, b});
       },
       9998, L"Sommets importes a partir de Polylines 2d"},
      {"mesh", 0x002,
       [&] {
         sommets<AcDbPolygonMesh, AcDbPolygonMeshVertex>({a, plat, b});
       },
       9996, L"Sommets importes a partir de 3dMesh"},
      {"polyface mesh", 0x400,
       [&] {
         sommets<AcDbPolyFaceMesh, AcDbPolyFaceMeshVertex>({a, plat, b});
       },
       9995, L"Sommets importes a partir de PolyfaceMesh"},
      {"face", 0x040, [&] { mettre(new AcDbFace(a, b, plat, plat))->close(); }, 9994,
       L"Sommets importes a partir des facettes "},
      {"face, corner twice", 0x040, [&] { mettre(new AcDbFace(a, plat, b, b))->close(); }, 9994,
       L"Sommets importes a partir des facettes "},
      {"line", 0x080, [&] { mettre(new AcDbLine(a, b))->close(); }, 9993,
       L"Sommets importes a partir des lignes"},
      {"points", 0x200,
       [&] {
         for (const AcGePoint3d& p : {a, plat, b}) mettre(new AcDbPoint(p))->close();
       },
       9997, L"Sommets importes a partir des points Autocad"},
      {"insertions", 0x008,
       [&] {
         for (const AcGePoint3d& p : {a, plat, b}) bloc(p, {});
       },
       9990, L"Sommets importes a partir des Blocs en 3D"},
  };
  for (const auto& c : cas) {
    recommencer();
    c.dessiner();
    EXPECT_EQ(importer(kToutesSources & ~c.drapeau), "") << c.nom << ": left out";
    EXPECT_EQ(libelle(c.code), L"(aucun)") << c.nom;
    EXPECT_EQ(importer(c.drapeau), base::formater(deux, c.code, c.code)) << c.nom;
    EXPECT_EQ(libelle(c.code), c.libelle) << c.nom;
  }
}

// Deliberate: the record is made under 9992, the points bear 9999.
TEST_F(ImportDessin, import_polyline_9999) {
  polyline(0.0, {{1, 1}, {2, 2}});
  EXPECT_EQ(importer(kSourcePolylines), "") << "elevation 0 is none";
  EXPECT_EQ(libelle(9992), L"(aucun)");
  polyline(4.0, {{1, 1}, {2, 2}});
  EXPECT_EQ(importer(kSourcePolylines), "1 1 1 4 9999 | 2 2 2 4 9999");
  EXPECT_EQ(libelle(9992), L"Sommets importes a partir des polylines");
  EXPECT_EQ(libelle(9999), L"(aucun)");
}

TEST_F(ImportDessin, readsBlocksByTheirAttributes) {
  struct {
    const char* nom;
    Etiquettes etiquettes;
    double z;  ///< of the insertion
    int masque;
    const char* point;
    bool gardeBloc;
    int codeEnregistre = 0;
    const wchar_t* libelle = nullptr;
  } const cas[] = {
      {"system block",
       {{L"numpt", L"A1"}, {L"z", L"12.5"}, {L"code", L"7"}},
       5,
       0x038,
       "A1 1 2 12.5 7",
       true},
      {"altitude 0 counts", {{L"NUMPT", L"A"}, {L"Z", L"0"}, {L"CODE", L"7"}}, 0, 0x010, "A 1 2 0 7", true},
      {"no number as altitude",
       {{L"NUMPT", L"A"}, {L"Z", L"abc"}, {L"CODE", L"7"}},
       0,
       0x010,
       "A 1 2 - 7",
       true},
      {"no code",
       {{L"NUMPT", L"A"}, {L"Z", L"1"}},
       0,
       0x010,
       "A 1 2 1 9991",
       true,
       9991,
       L"Points importes a partir des blocs"},
      {"code 0", {{L"NUMPT", L"A"}, {L"Z", L"1"}, {L"CODE", L"0"}}, 0, 0x010, "A 1 2 1 9991", true},
      {"code too large",
       {{L"NUMPT", L"A"}, {L"Z", L"1"}, {L"CODE", L"10000"}},
       0,
       0x010,
       "A 1 2 1 9991",
       true},
      {"name cut, empty name", {{L"NUMPT", L""}, {L"Z", L"1"}, {L"CODE", L"1"}}, 0, 0x010, "1 1 2 1 1", true},
      {"number only", {{L"NUMPT", L"A"}}, 5, 0x030, "", false},
      {"number only, at its place",
       {{L"NUMPT", L"A"}},
       5,
       0x038,
       "1 1 2 5 9990",
       false,
       9990,
       L"Sommets importes a partir des Blocs en 3D"},
      {"chosen tags",
       {{L"num", L"B2"}, {L"alt", L"7"}, {L"genre", L"40"}},
       5,
       0x038,
       "B2 1 2 7 40",
       false,
       40,
       L"Import Code"},
      {"chosen tags, no code",
       {{L"NUM", L""}, {L"ALT", L"7"}},
       5,
       0x020,
       "1 1 2 7 9989",
       false,
       9989,
       L"Points importes a partir des blocs avec attributs"},
      {"chosen tags, code 0",
       {{L"NUM", L"B"}, {L"ALT", L"7"}, {L"GENRE", L"0"}},
       5,
       0x020,
       "B 1 2 7 9989",
       false},
      {"chosen tags, no altitude",
       {{L"NUM", L"B"}, {L"ALT", L"x"}},
       5,
       0x028,
       "B 1 2 - 9989",
       false,
       9989,
       L"Points importes a partir des blocs avec attributs"},
      {"chosen tags, altitude 0 drops it",
       {{L"NUM", L"B"}, {L"ALT", L"0"}},
       5,
       0x028,
       "",
       false,
       9989,
       L"Points importes a partir des blocs avec attributs"},
  };
  for (const auto& c : cas) {
    recommencer();
    const AcDbObjectId id = bloc({1, 2, c.z}, c.etiquettes);
    EXPECT_EQ(importer({c.masque, L"NUM", L"ALT", L"GENRE", {}}), c.point) << c.nom;
    if (table().nbPoint() == 1) {
      EXPECT_EQ(table().getData(0)->id == id, c.gardeBloc) << c.nom;
    }
    const int lignes = getTableCodification().codes.GetSize();
    EXPECT_EQ(lignes, c.codeEnregistre ? 3 : 2) << c.nom << ": records made";
    if (c.codeEnregistre) {
      EXPECT_EQ(libelle(c.codeEnregistre), c.libelle) << c.nom;
    }
  }
}

// Deliberate: one flag for all codes read from attributes.
TEST_F(ImportDessin, import_code_drapeau) {
  const wchar_t* const codes[] = {L"40", L"41", L"41", L"42"};
  double x = 0;
  for (const wchar_t* code : codes) bloc({++x, 2, 0}, {{L"N", code}, {L"A", L"1"}, {L"C", code}});
  EXPECT_EQ(importer({0x020, L"N", L"A", L"C", {}}), "40 1 2 1 40 | 41 2 2 1 41 | 41 3 2 1 41 | 42 4 2 1 42");
  EXPECT_EQ(libelle(41), L"Import Code");
  EXPECT_EQ(libelle(42), L"(aucun)");
}

TEST_F(ImportDessin, readsAltitudesFromTexts) {
  for (const auto& [contenu, point] :
       std::vector<std::pair<const wchar_t*, const char*>>{{L"12.5", "1 1.5 1 12.5 9988"},
                                                           {L" -3 ", "1 1.5 1 -3 9988"},
                                                           {L"abc", ""},
                                                           {L"0", ""},
                                                           {L"0.000", ""},
                                                           {L"12,5", ""},
                                                           {L"", ""}}) {
    recommencer();
    texte(contenu);
    EXPECT_EQ(importer({0x800, {}, {}, {}, {0.5, -1.0}}), point) << base::toUtf8(contenu);
  }
  EXPECT_EQ(libelle(9988), L"(aucun)");
}

// Deliberate: the offset moves one-line texts only.
TEST_F(ImportDessin, import_mtext_decalage) {
  paragraphe(L"{\\fArial|b1;\\C1;12.5}");
  EXPECT_EQ(importer({0x800, {}, {}, {}, {0.5, -1.0}}), "1 10 20 12.5 9988");
  EXPECT_EQ(libelle(9988), L"Sommets importes a partir des Textes");
}

TEST_F(ImportDessin, endsWithoutDuplicatesAndWithFreeNumbers) {
  int index = 0;
  table().Ajouter(unPoint(L"7", 9, 9, 1));
  sommets<AcDb3dPolyline, AcDb3dPolylineVertex>({{1, 1, 5}, {1, 1, 6}, {2, 2, 5}});
  sommets<AcDb2dPolyline, AcDb2dVertex>({{1, 1, 7}});
  EXPECT_EQ(importer(kToutesSources), "8 1 1 7 9998 | 9 2 2 5 9999 | 7 9 9 1 1")
      << "sorted, the lowest code stays";
  EXPECT_EQ(table().existPoint(L"7", index), 1);
  recommencer();
  mettre(new AcDbPoint({3, 3, 3}))->close();
  EXPECT_EQ(importer(kToutesSources), "1 3 3 3 9997");
  EXPECT_EQ(table().existPoint(L"1", index), 0) << "no duplicate: the dictionary is empty";
}

/// The import through the dialog, whose lines and prompts come from one source.
class ImportDialogue : public ImportDessin {
protected:
  /// @return what `importerPointsDuDessin` answers; the lines are all used
  bool jouer(std::vector<std::string> lignes) {
    DialogScript script(std::move(lignes));
    acedPorts().source = &script;
    const bool importe = importerPointsDuDessin(table());
    acedPorts().source = nullptr;
    EXPECT_TRUE(script.finished()) << script.transcript;
    return importe;
  }
};

TEST_F(ImportDialogue, importsWhatIsSelectedOfTheCheckedKinds) {
  mettre(new AcDbPoint({1, 1, 5}))->close();
  mettre(new AcDbLine({2, 2, 6}, {3, 3, 7}))->close();
  EXPECT_FALSE(jouer({"[Annuler]"}));
  EXPECT_FALSE(jouer({"[Aucun]", "[OK]"}));
  EXPECT_TRUE(jouer({"[OK]", "*Annuler*"}));
  EXPECT_EQ(table().nbPoint(), 0);
  imprime.clear();
  EXPECT_TRUE(jouer({"[Aucun]", "Importer Points = oui", "[OK]", "TOUT", ""}));
  EXPECT_EQ(noms(table()), "1") << "the line is not offered";
  EXPECT_NE(imprime.find("\nSelectionnez :"), std::string::npos);
  EXPECT_TRUE(jouer({"[Aucun]", "[Tous]", "[OK]", "TOUT", ""}));
  EXPECT_EQ(noms(table()), "1 2 3");
}

TEST_F(ImportDialogue, takesTheOffsetFromATextAndAPoint) {
  texte(L"12.5");
  EXPECT_TRUE(jouer({"Importer textes = non", "Importer textes = oui", "[Prélever]", "1.2,2.2", "4,6", "[OK]",
                     "TOUT", ""}));
  ASSERT_EQ(table().nbPoint(), 1);
  EXPECT_EQ(table().getData(0)->x, 4.0);
  EXPECT_EQ(table().getData(0)->y, 6.0);
  CParamImportPntsDuDessin dialogue;
  EXPECT_TRUE(dialogue.textes.userToggle());
  EXPECT_FALSE(dialogue.decalageX.usable());
  EXPECT_FALSE(dialogue.prelever.usable());
}

TEST_F(ImportDialogue, takesTheTagsFromAttributes) {
  bloc({1, 2, 0}, {{L"MAT", L"B2"}});
  bloc({100, 2, 0}, {{L"ALT", L"7.5"}});
  bloc({200, 2, 0}, {{L"MAT", L"C3"}, {L"ALT", L"8.5"}, {L"GENRE", L"12"}});
  mettre(new AcDbText({300, 2, 0}, L"rien", {}, 1.0))->close();
  EXPECT_TRUE(jouer({"[configurer]", "1.2,2.2", "300.2,2.2", "[OK]", "TOUT", ""}));
  EXPECT_EQ(table().nbPoint(), 0) << "no attribute: the tags stay";
  EXPECT_NE(imprime.find("Ce n'est pas un attribut"), std::string::npos);
  EXPECT_TRUE(jouer({"[configurer]", "1.2,2.2", "100.2,2.2", "", "[OK]", "TOUT", ""}));
  ASSERT_EQ(noms(table()), "C3");
  EXPECT_EQ(table().getData(0)->code, 9989);
}

}  // namespace
