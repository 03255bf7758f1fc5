// The dialog of tables, the coordinate form, lists and exports in one call.

#include "drafting/dialogs/formulaire_xyz_dlg.h"
#include "drafting/dialogs/tables_dlg.h"
#include "jobs/exporter_table.h"
#include "jobs/importer_liste.h"
#include "support/atelier.h"
#include "support/case_rows.h"
#include "support/dialog_script.h"
#include "support/dossier_temporaire.h"
#include "support/remarques.h"

#include <cmath>

namespace {

using namespace veltora;

class Tables : public Atelier {
protected:
  std::string jouer(void (*montrer)(), std::vector<std::string> lignes) {
    DialogScript script(std::move(lignes));
    montrer();
    EXPECT_TRUE(script.finished()) << script.transcript;
    return script.transcript;
  }
  /// "name=points" of all tables, the current one starred.
  std::string liste() {
    std::string texte;
    for (int i = 0; i < projet.tablesListe.GetSize(); ++i) {
      listePointsDuDessin& t = *projet.tablesListe.GetAt(i);
      texte += (i == projet.tableCourante ? "*" : "") + base::toUtf8(t.getNomTable()) + "=" + noms(t) + ";";
    }
    return texte;
  }
  std::string fichier(const std::string& nom, const std::string& octets) {
    base::remplacerFichier(dossier / nom, octets);
    return (dossier / nom).string();
  }
  static std::wstring libelle(int code) {
    const int rang = getTableCodification().chercherCode(code);
    return rang < 0 ? L"-" : getTableCodification().codes.GetAt(rang).libelle;
  }

  const DossierTemporaire temporaire;
  const std::filesystem::path& dossier = temporaire.chemin;
};

TEST_F(Tables, AreMadeRenamedMadeCurrentAndRemoved) {
  for (const CaseRow& cas : caseRows("drafting/cases/points.txt", "tables")) {
    jouer(gererLeves, cas.list(0));
    EXPECT_EQ(liste(), cas[1]) << cas;
  }
}

TEST_F(Tables, MergingTakesThePointsOfTheSelectedTablesInTurn) {
  projet.creerTablePoints(L"B");
  projet.creerTablePoints(L"C");
  projet.tablesListe.GetAt(0)->Ajouter(unPoint(L"a", 1, 1));
  projet.tablesListe.GetAt(1)->Ajouter(unPoint(L"b", 2, 2));
  projet.tablesListe.GetAt(2)->Ajouter(unPoint(L"a", 3, 3));
  const std::string ecran = jouer(gererLeves, {"[Fusionner]", "[OK]", "Liste: 2", "[Fusionner]", "[OK]",
                                               "Liste: *", "[Fusionner]", "[Fermer]"});
  EXPECT_NE(ecran.find("Vous devez selectionner au moins\ndeux (02) tables a fusionner"), std::string::npos);
  EXPECT_EQ(liste(), "*LEVE=a;B=b;C=a;LEVE + B + C=1 2 3;");
  int index = -1;
  EXPECT_TRUE(projet.tablesListe.GetAt(3)->existPoint(L"3", index));
}

TEST_F(Tables, FusionRenumerote) {
  pointDuDessin point = unPoint(L"borne", 1, 1);
  point.creer(true, nullptr);
  table().Ajouter(point);
  projet.creerTablePoints(L"B");
  jouer(gererLeves, {"Liste: *", "[Fusionner]", "[Fermer]"});
  EXPECT_EQ(attribut(point.id, L"NUMPT"), L"1") << "the block shows the new number";
  EXPECT_EQ(noms(table()), "borne") << "the table keeps the old one";
}

class Formulaire : public Tables {};

TEST_F(Formulaire, LoadsSortsNumbersAndSaves) {
  const std::string f = fichier("a.xyz", "P10 3 1 5 7 obs\nP2 1.2345 2\nA1 2 3 4 100\n");
  const std::string ecran =
      jouer(coordsXYZ, {"[Charger ...]", f, "Liste ^ Numero", "?", "[Renumeroter]", "Préfixe = S",
                        "Numéro de départ = 5", "[OK]", "?", "[Renumeroter]", "Préfixe = Z", "[Annuler]",
                        "[Sauvegarder]", (dossier / "b").string(), "[Charger ...]", "", "[Fin]"});
  EXPECT_LT(ecran.find("A1"), ecran.find("P2"));
  EXPECT_LT(ecran.find("P2"), ecran.find("P10"));
  EXPECT_NE(ecran.find("1.234 | 2.000 |"), std::string::npos) << ecran;
  EXPECT_EQ(
      base::lireFichier(dossier / "b.XYZ").value_or("(absent)"),
      "\n        S5\t      3.000000\t      1.000000\t      5.000000\t     7 obs"
      "\n        S6\t      1.234500\t      2.000000\t99999999999999997748809823456034029568.000000\t     1"
      "\n        S7\t      2.000000\t      3.000000\t      4.000000\t   100");
}

TEST_F(Formulaire, MergesAndEmptiesAsAsked) {
  const std::string f = fichier("a.xyz", "P1 3 1\n");
  const auto rangees = [&](std::vector<std::string> lignes) {
    DialogScript script(std::move(lignes));
    tableObsXYZ liste;
    CformulaireXYZ dialogue(getTableCodification(), liste);
    dialogue.doModal();
    return dialogue.liste.rowCount();
  };
  EXPECT_EQ(rangees({"[Fusionner]", f, "[Fusionner]", f, "[Fin]"}), 2);
  EXPECT_EQ(rangees({"[Fusionner]", f, "[Charger ...]", f, "[Fin]"}), 1);
}

TEST_F(Formulaire, FusionnerLibelle) {
  const std::string f = fichier("a.xyz", "P1 3 1 0 41\n");
  const std::string g = fichier("b.xyz", "P1 3 1 0 42\n");
  jouer(coordsXYZ, {"[Charger ...]", f, "[Fusionner]", g, "[Fin]"});
  EXPECT_EQ(libelle(41), L"Code 41");
  EXPECT_EQ(libelle(42), L"Code N° 42");
}

TEST_F(Formulaire, ObsVide) {
  const std::string f = fichier("a.xyz", "P1 3 1 0 1 muret\n");
  EXPECT_EQ(jouer(coordsXYZ, {"[Charger ...]", f, "?", "[Fin]"}).find("muret"), std::string::npos);
}

TEST_F(Formulaire, CoordinatesThatAreNoNumbersPlaceNothing) {
  tableObsXYZ liste;
  liste.lire("P1 1 2 3\nP2 4 5 6\n");
  liste.lignes[1].y = std::nan("");
  CformulaireXYZ dialogue(getTableCodification(), liste);
  DialogScript script({"[PLacer dans le dessin]", "[OK]", "[Fin]"});
  dialogue.doModal();
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_NE(script.transcript.find("Rien n'est placé, ces coordonnées ne sont pas des nombres : P2"),
            std::string::npos)
      << script.transcript;
  EXPECT_EQ(entites(), 0);
}

TEST_F(Formulaire, PlacerHorsTable) {
  const std::string f = fichier("a.xyz", "p1 3 1 2 1 muret\np2 4 5\n");
  jouer(coordsXYZ, {"[Charger ...]", f, "[PLacer dans le dessin]", "[Fin]"});
  EXPECT_EQ(entites(), 2);
  EXPECT_EQ(table().nbPoint(), 0);
  table().updateFromDrawing();
  EXPECT_EQ(noms(table()), "P1 P2");
  EXPECT_EQ(attribut(table().getData(0)->id, L"OBS"), L"");
  EXPECT_EQ(attribut(table().getData(0)->id, L"Z"), L"2.00");
}

TEST_F(Formulaire, PlacingNothingMakesTheLayers) {
  getTableCodification().getOuCreerCode(7).layers[0] = L"ARBRES";
  jouer(coordsXYZ, {"[PLacer dans le dessin]", "[Fin]"});
  const AcDbObjectPointer<AcDbLayerTable> calques(dessin.layerTableId());
  EXPECT_TRUE(calques->has(L"ARBRES"));
  EXPECT_EQ(entites(), 0);
}

TEST_F(Tables, AListIsPlacedInOneCall) {
  table().Ajouter(unPoint(L"p1", 9, 9));
  resultatPoints r;
  EXPECT_FALSE(importerListe({dossier / "absent.xyz", L""}, r));
  EXPECT_NE(r.erreur.find(L"absent.xyz"), std::wstring::npos);
  EXPECT_FALSE(importerListe({fichier("vide.xyz", "a b c\n"), L""}, r));
  EXPECT_EQ(r.remarques.nombre(), 1U) << "the line that was passed over";
  EXPECT_EQ(noms(table()), "p1");
  ASSERT_TRUE(importerListe({fichier("a.xyz", "P1 3 1 2 7 muret\nx\nUnNomTropLong 4 5\nP1 6 7\n"), L""}, r));
  EXPECT_EQ(r.nombre, 3);
  EXPECT_EQ(noms(table()), "P1 UnNomTrop P1");
  EXPECT_EQ(attribut(table().getData(0)->id, L"OBS"), L"muret");
  EXPECT_EQ(libelle(7), L"Code 7");
  EXPECT_EQ(phrasesDe(r.remarques),
            (std::vector<std::string>{
                (dossier / "a.xyz").string() + ", ligne 2 : ignorée, il faut au moins un nom, X et Y",
                "noms coupés à 9 caractères : 1", "noms qui se répètent dans la liste : 1",
                "points du même nom remplacés : 1"}));
  ASSERT_TRUE(importerListe({fichier("b.xyz", std::string(2500, '?') + "\n1 2\n" + "Q 1 2\n"), L"Autre"}, r));
  EXPECT_EQ(noms(*projet.tablesListe.GetAt(1)), "Q");
}

TEST_F(Tables, ATableIsExportedInOneCallAndReadAgain) {
  resultatPoints r;
  demandeExportPoints demande;
  demande.fichier = dossier / "e.xyz";
  EXPECT_FALSE(exporterTable(demande, r)) << "no point";
  table().Ajouter(unPoint(L"P10", 3, 1, 2, 7));
  table().Ajouter(unPoint(L"P2", 4, 5));
  demande.tri = colonnePoints::kNumero;
  ASSERT_TRUE(exporterTable(demande, r));
  EXPECT_EQ(r.nombre, 2);
  EXPECT_EQ(r.remarques.nombre(), 1U) << "a point without altitude";
  ASSERT_TRUE(importerListe({demande.fichier, L"copie"}, r));
  listePointsDuDessin& copie = *projet.tablesListe.GetAt(1);
  EXPECT_EQ(noms(copie), "P2 P10");
  EXPECT_EQ(*copie.getData(0), *table().getData(1)) << "its altitude is absent again";
  demande.code = 7;
  demande.table = L"COPIE";
  ASSERT_TRUE(exporterTable(demande, r));
  EXPECT_EQ(r.nombre, 1);
  demande.code = 8;
  EXPECT_FALSE(exporterTable(demande, r));
  demande.table = L"inconnue";
  EXPECT_FALSE(exporterTable(demande, r));
  EXPECT_NE(r.erreur.find(L"inconnue"), std::wstring::npos);
  demande.table.clear();
  demande.code = 0;
  demande.fichier = dossier / "absent" / "e.doc";
  EXPECT_FALSE(exporterTable(demande, r));
}

}  // namespace
