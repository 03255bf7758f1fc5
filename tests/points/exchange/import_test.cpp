// Points from entities of the drawing: sources, order of attempts, codes, and the dialog in front.

#include "points/exchange/import_dessin.h"

#include "arx/db/dbmesh.h"
#include "arx/db/dbmtext.h"
#include "arx/db/dbpl.h"
#include "base/format.h"
#include "points/dialogs/import_dessin_dlg.h"
#include "support/atelier.h"
#include "support/case_rows.h"
#include "support/dialog_script.h"

#include <deque>
#include <functional>
#include <map>
#include <sstream>
#include <vector>

namespace {

using namespace veltora;

using Etiquettes = std::vector<std::pair<std::wstring, std::wstring>>;

class ImportDessin : public Atelier {
protected:
  /// A reference of the paper space's block with attributes.
  AcDbObjectId bloc(const AcGePoint3d& place, const Etiquettes& etiquettes) {
    const AcDbObjectId id = mettre(dessin, new AcDbBlockReference(place, dessin.paperSpaceId()));
    const AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
    for (const auto& [etiquette, texte] : etiquettes) {
      auto* attribut = new AcDbAttribute(place, texte.c_str(), etiquette.c_str());
      EXPECT_EQ(reference->appendAttribute(attribut), Acad::eOk);
      attribut->setHeight(1.0);
      attribut->close();
    }
    return id;
  }
  template <class Polyligne, class Sommet>
  void sommets(const std::vector<AcGePoint3d>& places) {
    const AcDbObjectPointer<Polyligne> polyligne(mettre(dessin, new Polyligne), AcDb::kForWrite);
    for (const AcGePoint3d& place : places) {
      AcDbObjectId id;
      auto* sommet = new Sommet(place);
      EXPECT_EQ(polyligne->appendVertex(id, sommet), Acad::eOk);
      sommet->close();
    }
  }
  void polyline(double altitude, const std::vector<AcGePoint2d>& places) {
    auto* polyligne = new AcDbPolyline;
    for (const AcGePoint2d& place : places) polyligne->addVertexAt(99, place);
    polyligne->setElevation(altitude);
    mettre(dessin, polyligne);
  }
  void texte(const wchar_t* contenu) { mettre(dessin, new AcDbText({1, 2, 3}, contenu, {}, 1.0)); }
  void paragraphe(const wchar_t* contenu) {
    auto* texte = new AcDbMText;
    texte->setContents(contenu);
    texte->setTextHeight(1.0);
    texte->setLocation({10, 20, 0});
    texte->setAttachment(AcDbMText::kBottomLeft);
    mettre(dessin, texte);
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
  const std::map<std::string, std::function<void()>> dessins = {
      {"3D polyline",
       [&] {
         sommets<AcDb3dPolyline, AcDb3dPolylineVertex>({a, plat, b});
       }},
      {"old 2D polyline",
       [&] {
         sommets<AcDb2dPolyline, AcDb2dVertex>({a, plat, b});
       }},
      {"mesh",
       [&] {
         sommets<AcDbPolygonMesh, AcDbPolygonMeshVertex>({a, plat, b});
       }},
      {"polyface mesh",
       [&] {
         sommets<AcDbPolyFaceMesh, AcDbPolyFaceMeshVertex>({a, plat, b});
       }},
      {"face", [&] { mettre(dessin, new AcDbFace(a, b, plat, plat)); }},
      {"face, corner twice", [&] { mettre(dessin, new AcDbFace(a, plat, b, b)); }},
      {"line", [&] { mettre(dessin, new AcDbLine(a, b)); }},
      {"points",
       [&] {
         mettre(dessin, new AcDbPoint(a)), mettre(dessin, new AcDbPoint(plat)),
             mettre(dessin, new AcDbPoint(b));
       }},
      {"insertions", [&] { bloc(a, {}), bloc(plat, {}), bloc(b, {}); }},
  };
  for (const CaseRow& cas : caseRows("points/cases/import.txt", "sources")) {
    SCOPED_TRACE(cas.place + ": " + cas[0]);
    recommencer();
    dessins.at(cas[0])();
    const int drapeau = std::stoi(cas[1], nullptr, 16);
    EXPECT_EQ(importer(kToutesSources & ~drapeau), "") << "left out";
    EXPECT_EQ(libelle(cas.integer(2)), L"(aucun)");
    EXPECT_EQ(importer(drapeau), "1 1 2 12.5 " + cas[2] + " | 2 5 2 13.5 " + cas[2]);
    EXPECT_EQ(base::toUtf8(libelle(cas.integer(2))) + ".", cas[3]);
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
  for (const CaseRow& cas : caseRows("points/cases/import.txt", "blocks")) {
    SCOPED_TRACE(cas.place + ": " + cas[0]);
    recommencer();
    Etiquettes etiquettes;
    std::istringstream paires(cas[1]);
    for (std::string paire; paires >> paire;) {
      const std::size_t egal = paire.find('=');
      etiquettes.emplace_back(base::fromUtf8(paire.substr(0, egal)), base::fromUtf8(paire.substr(egal + 1)));
    }
    const AcDbObjectId id = bloc({1, 2, cas.number(2)}, etiquettes);
    EXPECT_EQ(importer({std::stoi(cas[3], nullptr, 16), L"NUM", L"ALT", L"GENRE", {}}), cas[4]);
    if (table().nbPoint() == 1) {
      EXPECT_EQ(table().getData(0)->id == id, cas[5] == "block");
    }
    EXPECT_EQ(getTableCodification().codes.GetSize(), cas[6].empty() ? 2 : 3) << "records made";
    if (!cas[6].empty()) {
      EXPECT_EQ(base::toUtf8(libelle(cas.integer(6))), cas[7]);
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
  mettre(dessin, new AcDbPoint({3, 3, 3}));
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
  mettre(dessin, new AcDbPoint({1, 1, 5}));
  mettre(dessin, new AcDbLine({2, 2, 6}, {3, 3, 7}));
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
  mettre(dessin, new AcDbText({300, 2, 0}, L"rien", {}, 1.0));
  EXPECT_TRUE(jouer({"[configurer]", "1.2,2.2", "300.2,2.2", "[OK]", "TOUT", ""}));
  EXPECT_EQ(table().nbPoint(), 0) << "no attribute: the tags stay";
  EXPECT_NE(imprime.find("Ce n'est pas un attribut"), std::string::npos);
  EXPECT_TRUE(jouer({"[configurer]", "1.2,2.2", "100.2,2.2", "", "[OK]", "TOUT", ""}));
  ASSERT_EQ(noms(table()), "C3");
  EXPECT_EQ(table().getData(0)->code, 9989);
}

}  // namespace
