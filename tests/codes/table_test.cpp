// The code table: first start, lookups, sorting, layers.
#include "arx/db/dbmain.h"
#include "codes/table_codification.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {
using namespace veltora;

std::vector<int> codesDe(const tableCodification& table) {
  std::vector<int> codes;
  for (const codifPoint& ligne : table.codes) codes.push_back(ligne.code);
  return codes;
}

codifPoint ligne(int code, const std::wstring& libelle, int decimales = 2, const std::wstring& chemin = L"") {
  codifPoint l;
  l.code = code;
  l.libelle = libelle;
  l.precisionAltitudes = decimales;
  l.chemin = chemin;
  return l;
}

class TableCodification : public ::testing::Test {
protected:
  DossierEssai dossier;
};

TEST_F(TableCodification, defcodif_premierDemarrage_LeavesTheDefaultRowsInAFile) {
  {
    const tableCodification table;
    EXPECT_EQ(table.nomFichier, cheminInstallation(L"defcodif")) << "no ending";
    ASSERT_EQ(codesDe(table), (std::vector<int>{1, 100}));
    EXPECT_EQ(table.codes[1].chemin, cheminInstallation(L"biblio\\varnblk3.dwg"));
  }
  const std::string ecrit = dossier.lire("defcodif");
  EXPECT_EQ(tableCodification().codes.size(), 2u) << "read back";
  for (const char* casse : {"<codifPoints><TBdata>", ""}) {
    dossier.ecrire("defcodif", casse);
    EXPECT_EQ(tableCodification().codes.size(), 2u);
    EXPECT_EQ(dossier.lire("defcodif"), ecrit) << "a broken file gives way";
  }
  EXPECT_EQ(dossier.lire("defcodif.illisible"), "<codifPoints><TBdata>") << "and is kept beside";
  dossier.ecrire("defcodif", "autre");
  EXPECT_EQ(tableCodification().codes.size(), 2u);
  EXPECT_EQ(dossier.lire("defcodif.illisible"), "<codifPoints><TBdata>");
  EXPECT_EQ(dossier.lire("defcodif.illisible2"), "autre");
}

TEST_F(TableCodification, libelle_pointTopo_IsSpeltInTwoWays) {
  EXPECT_EQ(codifPoint().libelle, L"Point Topo");
  EXPECT_EQ(tableCodification().codes[0].libelle, L"Point topo");
}

TEST_F(TableCodification, AFileOfItsOwnComesFirst) {
  tableCodification table;
  table.viderTable();
  table.getOuCreerCode(12);
  table.sauverXML(cheminInstallation(L"autre.xml"));
  const tableCodification autre(L" " + cheminInstallation(L"autre.xml") + L" ;.");
  EXPECT_EQ(codesDe(autre), std::vector<int>{12}) << "trimmed";
  const tableCodification absent(cheminInstallation(L"absent"));
  EXPECT_EQ(codesDe(absent), (std::vector<int>{1, 100}));
  EXPECT_EQ(absent.nomFichier, cheminInstallation(L"defcodif"));
}

TEST_F(TableCodification, sauverXML_resultat_IsOneThoughNothingWasWritten) {
  const tableCodification table;
  EXPECT_EQ(table.sauverXML(cheminInstallation(L"absent\\defcodif")), 1);
  EXPECT_EQ(dossier.lire("absent/defcodif"), "(absent)");
}

TEST_F(TableCodification, getLibelleCode_format_DependsOnWhoMeetsAnUnknownCodeFirst) {
  tableCodification table;
  EXPECT_EQ(table.getLibelleCode(5), L"Code N° 5");
  EXPECT_EQ(table.getOuCreerCode(5).libelle, L"Code N° 5");
  EXPECT_EQ(table.getOuCreerCode(6).libelle, L"Code 6");
  EXPECT_EQ(table.getLibelleCode(6), L"Code 6");
  EXPECT_EQ(codesDe(table), (std::vector<int>{1, 100, 5, 6}));
}

TEST_F(TableCodification, LooksUpTheFirstOfEqualCodesAndRefusesBadRows) {
  tableCodification table;
  table.codes.Add(ligne(100, L"double"));
  EXPECT_EQ(table.chercherCode(100), 1);
  EXPECT_EQ(table.chercherCode(2), -1);
  EXPECT_THROW(table.supprimerLigne(3), std::invalid_argument);
  EXPECT_THROW(table.supprimerLigne(-1), std::invalid_argument);
  EXPECT_EQ(table.supprimerLigne(1), 2);
  EXPECT_EQ(table.codes[1].libelle, L"double");
  EXPECT_EQ(table.chercherCode(100), 1) << "the second of them is now the first";
  table.codes.Add(ligne(7, L""));
  EXPECT_EQ(table.chercherCode(7), 2);
  table.supprimerLigne(1);
  table.codes.Add(ligne(-3, L""));
  EXPECT_EQ(table.chercherCode(-3), 2);
  table.trierParCode();
  table.codes.Add(ligne(50, L""));
  for (const auto& [code, rang] : {std::pair(-3, 0), {1, 1}, {7, 2}, {50, 3}, {100, -1}})
    EXPECT_EQ(table.chercherCode(code), rang) << code;
  EXPECT_EQ(table.modifierLigne(4) + table.modifierLigne(-1), 0);
  table.resetDefauts();
  EXPECT_EQ(codesDe(table), (std::vector<int>{1, 100}));
}

TEST_F(TableCodification, GivesTheSmallestFreeCode) {
  tableCodification table;
  EXPECT_EQ(table.codeLibre(), 2);
  table.viderTable();
  for (const int junk : {0, -1, 10000, 2000000000}) table.codes.Add(ligne(junk, L""));
  EXPECT_EQ(table.codeLibre(), 1);
  for (int code = 1; code <= 9998; ++code) table.codes.Add(ligne(code, L""));
  EXPECT_EQ(table.codeLibre(), 9999);
  table.codes.Add(ligne(9999, L""));
  EXPECT_FALSE(table.codeLibre());
}

TEST_F(TableCodification, ComparesRowsByColumn) {
  tableCodification table;
  table.viderTable();
  table.codes.Add(ligne(10, L"arbre", 3, L"B"));
  table.codes.Add(ligne(9, L"ÉGOUT", 3, L"a"));
  table.codes.Add(ligne(11, L"ARBRE", 2, L"A"));
  const int attendu[4][3] = {{1, -1, -1}, {-1, 0, 1}, {1, 1, 1}, {1, 1, 0}};  // (10,9) (10,11) (9,11)
  for (int colonne = 0; colonne < 4; ++colonne) {
    const auto comparer = table.comparateur(colonne);
    const auto signe = [&](int a, int b) {
      const int resultat = comparer(a, b);
      return (resultat > 0) - (resultat < 0);
    };
    EXPECT_EQ(signe(10, 9), attendu[colonne][0]) << colonne;
    EXPECT_EQ(signe(9, 10), -attendu[colonne][0]) << colonne;
    EXPECT_EQ(signe(10, 11), attendu[colonne][1]) << colonne;
    EXPECT_EQ(signe(9, 11), attendu[colonne][2] == 1 && colonne == 0 ? -1 : attendu[colonne][2]) << colonne;
    EXPECT_EQ(signe(10, 999), 0) << "a row that is missing";
  }
}

/// A drawing with a layer "ARBRES" of colour 3.
class LayersDesCodes : public TableCodification {
protected:
  LayersDesCodes() : arbres(dessin.recordOf("LAYER", L"ARBRES")) {
    AcDbObjectPointer<AcDbLayerTableRecord>(arbres, AcDb::kForWrite)->setColor(AcCmColor(3));
  }
  static int couleur(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbLayerTableRecord> calque(id);
    return calque.openStatus() == Acad::eOk ? calque->color().colorIndex() : -1;
  }
  AcDbDatabase dessin{true, true};
  AcDbObjectId arbres;
  tableCodification table;
};

TEST_F(LayersDesCodes, creerLayers_couleur_AppliesToNewLayersOnly) {
  codifPoint& l = table.codes[0];
  l.layers = {L" arbres;", L"Altis", L"   ", L"Obs", L"altis"};
  l.coulLayers = {5, 1, 2, 6, 4};
  table.creerTousLayers(&dessin);
  EXPECT_EQ(l.idLayers[layerBlock], arbres);
  EXPECT_EQ(couleur(arbres), 3) << "an existing layer keeps its colour";
  EXPECT_EQ(couleur(l.idLayers[layerAltitudes]), 1);
  EXPECT_EQ(l.idLayers[layerCode], l.idLayers[layerAltitudes]) << "names compare ignoring case";
  EXPECT_EQ(couleur(l.idLayers[layerObs]), 6);
  EXPECT_EQ(l.layers[layerNumero], L"0") << "a blank name becomes 0";
  EXPECT_EQ(l.idLayers[layerNumero], dessin.layerZero());
  EXPECT_FALSE(table.codes[1].idLayers[layerCode].isNull()) << "every row";
  AcDbLayerTable* calques = nullptr;
  EXPECT_EQ(dessin.getLayerTable(calques, AcDb::kForWrite), Acad::eOk) << "closed again";
  calques->close();
}

TEST_F(LayersDesCodes, ANameThatDrawingsForbidGivesNoLayer) {
  table.codes[0].layers[layerObs] = L"a|b";
  table.codes[0].coulLayers[layerCode] = 99999;
  table.creerTousLayers(&dessin);
  EXPECT_TRUE(table.codes[0].idLayers[layerObs].isNull());
  EXPECT_EQ(couleur(table.codes[0].idLayers[layerCode]), 7) << "no colour of that index";
}

TEST_F(LayersDesCodes, WithoutALayerTableTheWorkingDrawingIsMeant) {
  AcDbDatabase* avant = acdbHostApplicationServices()->workingDatabase();
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  table.creerLayers(table.codes[0]);
  EXPECT_TRUE(table.codes[0].idLayers[layerCode].isNull()) << "no drawing: nothing is done";
  acdbHostApplicationServices()->setWorkingDatabase(&dessin);
  table.creerLayers(table.codes[0]);
  EXPECT_EQ(couleur(table.codes[0].idLayers[layerCode]), 7);
  acdbHostApplicationServices()->setWorkingDatabase(avant);
}

}  // namespace
