// Projects through both serializers, and their place in the drawing.

#include "base/files.h"
#include "core/file_serializer.h"
#include "core/resbuf_serializer.h"
#include "points/exchange/export_tables.h"
#include "points/infos_topo.h"
#include "support/atelier.h"

#include "arx/db/dbdict.h"

#include <functional>
#include <set>

namespace {

using namespace veltora;

/// Two tables, the second current, with a block, an absent altitude, an accent and twins.
void remplir(projetsTopo& projet, const AcDbObjectId& bloc) {
  projet.currTable()->Ajouter(unPoint(L"12", 1000.5, 2000.25, 100, 3));
  projet.currTable()->getData(0)->setId(bloc);
  projet.creerTablePoints(L"Été");
  projet.tableCourante = 1;
  projet.currTable()->Ajouter(unPoint(L"é", 650000.123456789, 6860000.1, Z_ABSENT, 9999));
  projet.currTable()->Ajouter(unPoint(L"É", -1e-300, 0.1, 0, -5));
}

std::string resume(const projetsTopo& projet) {
  std::string texte = std::to_string(projet.tableCourante);
  for (const listePointsDuDessin* table : projet.tablesListe) {
    texte += " | " + base::toUtf8(table->getNomTable());
    for (const pointDuDessin& p : *table->getData())
      texte += " (" + base::toUtf8(base::widen(p.nomPoint)) + " " + base::ecrireReel(p.x) + " " +
               base::ecrireReel(p.y) + " " + base::ecrireReel(p.z) + " " + std::to_string(p.code) +
               (p.id.isNull() ? "" : " bloc") + ")";
  }
  return texte;
}

class Enregistrement : public Atelier {
protected:
  const AcDbObjectId bloc = mettre(dessin, new AcDbPoint({1, 2, 3}));
};

const char* const kNeuf = "0 | LEVE";

TEST_F(Enregistrement, theChainHasTheToldGroupCodes) {
  projet.currTable()->Ajouter(unPoint(L"12", 1000.5, 2000.25, 100, 3));
  projet.currTable()->getData(0)->setId(bloc);
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  EXPECT_EQ(projet.SaveToXRecord(&flux), 1);
  std::vector<int> codes;
  for (const resbuf* e = chaine.tete; e; e = e->rbnext) codes.push_back(e->restype);
  EXPECT_EQ(codes, (std::vector<int>{90, 90, 300, 90, 92, 310, 90, 40, 40, 40, 330}));
}

TEST_F(Enregistrement, comesBackAndIsResetByDamageAtEveryItemOfAChain) {
  remplir(projet, bloc);
  chaineResbuf chaine;
  ResbufSerializer flux(&chaine);
  ASSERT_EQ(projet.SaveToXRecord(&flux), 1);
  projetsTopo lu;
  EXPECT_EQ(lu.GetFromXRecord(&flux), 1);
  EXPECT_EQ(resume(lu), resume(projet));
  int index = -1;
  EXPECT_EQ(lu.currTable()->existPoint(L"é", index), 1);
  EXPECT_EQ(index, 1) << "of two points of a name the later one";
  for (resbuf* element = chaine.tete; element; element = element->rbnext) {
    const short type = element->restype;
    element->restype = type == 91 ? 90 : 91;
    EXPECT_EQ(lu.GetFromXRecord(&flux), 0) << type;
    EXPECT_EQ(resume(lu), kNeuf);
    element->restype = type;
    resbuf* suite = element->rbnext;
    element->rbnext = nullptr;  // the chain ends here
    EXPECT_EQ(lu.GetFromXRecord(&flux), suite ? 0 : 1);
    element->rbnext = suite;
  }
  chaineResbuf vide;
  ResbufSerializer rien(&vide);
  EXPECT_EQ(lu.GetFromXRecord(&rien), 0);
  EXPECT_EQ(resume(lu), kNeuf);
}

TEST_F(Enregistrement, comesBackAndIsResetByACutAtEveryByteOfAFile) {
  remplir(projet, AcDbObjectId());
  const std::filesystem::path chemin = installationEssai() / "projet.bin";
  {
    FileSerializer flux(chemin.string(), true);
    ASSERT_EQ(projet.SaveToXRecord(&flux), 1);
  }
  const std::string octets = base::lireFichier(chemin).value_or("");
  projetsTopo lu;
  for (std::size_t n = 0; n <= octets.size(); ++n) {
    base::remplacerFichier(chemin, octets.substr(0, n));
    FileSerializer flux(chemin.string(), false);
    ASSERT_EQ(lu.GetFromXRecord(&flux), n == octets.size() ? 1 : 0) << n;
    ASSERT_EQ(resume(lu), n == octets.size() ? resume(projet) : kNeuf);
  }
}

TEST_F(Enregistrement, emptyTablesLeveAreClearedAway) {
  struct {
    const char* nom;
    std::vector<const wchar_t*> tables;
    int courante;
    const char* attendu;
  } const cas[] = {
      {"two and another", {L"LEVE", L"A", L"LEVE"}, 2, "0 | A"},
      {"only two", {L"LEVE", L"LEVE"}, 1, "0 | LEVE"},
      {"one is left alone", {L"A", L"LEVE"}, 1, "1 | A | LEVE"},
      {"case matters", {L"leve", L"LEVE"}, 0, "0 | leve | LEVE"},
      {"with points", {L"LEVE", L"LEVE+", L"LEVE"}, 1, "0 | LEVE (1 0.0 0.0 1e+38 1)"},
      {"current past the end", {L"A"}, 7, "0 | A"},
      {"current negative", {L"A", L"B"}, -3, "0 | A | B"},
      {"no table", {}, 0, "0 | LEVE"},
  };
  for (const auto& c : cas) {
    projet.removeAll();
    for (const wchar_t* nom : c.tables) {
      projet.creerTablePoints(std::wstring_view(nom) == L"LEVE+" ? L"LEVE" : nom);
      if (std::wstring_view(nom) == L"LEVE+")
        projet.tablesListe.GetAt(projet.tablesListe.GetSize() - 1)->Ajouter(unPoint(L"1", 0, 0));
    }
    projet.tableCourante = c.courante;
    chaineResbuf chaine;
    ResbufSerializer flux(&chaine);
    projet.SaveToXRecord(&flux);
    projetsTopo lu;
    EXPECT_EQ(lu.GetFromXRecord(&flux), 1) << c.nom;
    EXPECT_EQ(resume(lu), c.attendu) << c.nom;
  }
}

TEST_F(Enregistrement, travelsWithTheFileAndIsBoundToItsBlocksAgain) {
  remplir(projet, bloc);
  const std::string avant = resume(projet);
  EXPECT_EQ(sauvegarderInfosTopo(), 1);
  EXPECT_EQ(sauvegarderInfosTopo(), 1) << "replaces the former record";
  const std::wstring fichier = base::fromUtf8((installationEssai() / "projet.dxf").string());
  ASSERT_EQ(dessin.saveAs(fichier.c_str()), Acad::eOk);
  AcDbDatabase relu(false);
  ASSERT_EQ(relu.readDwgFile(fichier.c_str()), Acad::eOk);
  setSrcInfosTopo(&relu, &projet, 1, 1);
  EXPECT_EQ(imprime, "\nLecture des données Topo");
  EXPECT_EQ(resume(projet), avant);
  EXPECT_EQ(projet.tablesListe.GetAt(0)->getData(0)->id.database(), &relu);
  EXPECT_EQ(projet.tablesListe.GetAt(0)->getData(0)->id.handle(), bloc.handle());
}

TEST_F(Enregistrement, aBlockErasedMeanwhileIsNoLongerReferredTo) {
  remplir(projet, bloc);
  AcDbObjectPointer<AcDbPoint>(bloc, AcDb::kForWrite)->erase();
  sauvegarderInfosTopo();
  chargerInfosTopo(&dessin);
  EXPECT_EQ(projet.tablesListe.GetSize(), 2);
  EXPECT_TRUE(projet.tablesListe.GetAt(0)->getData(0)->id.isNull());
}

TEST_F(Enregistrement, purgeAndAClearSaveFlagLeaveAnEmptyRecord) {
  for (const bool purger : {true, false}) {
    remplir(projet, AcDbObjectId());
    setSrcInfosTopo(&dessin, &projet, 1, 0);
    sauvegarderInfosTopo();
    if (purger) {
      purgeInfosTopo();
    } else {
      setSrcInfosTopo(&dessin, &projet, 0, 0);
      sauvegarderInfosTopo();
    }
    imprime.clear();
    chargerInfosTopo(nullptr);
    EXPECT_EQ(resume(projet), kNeuf) << purger;
    EXPECT_EQ(imprime, "\nLecture des données Topo") << "an empty record is no damage";
  }
}

TEST_F(Enregistrement, aMissingLayerZeroIsMadeInRed) {
  AcDbObjectPointer<AcDbLayerTableRecord>(dessin.layerZero(), AcDb::kForWrite)->erase();
  remplir(projet, AcDbObjectId());
  const std::string avant = resume(projet);
  EXPECT_EQ(sauvegarderInfosTopo(), 1);
  EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(dessin.layerZero())->color().colorIndex(), 1);
  projet.reset();
  chargerInfosTopo(&dessin);
  EXPECT_EQ(resume(projet), avant);
}

TEST_F(Enregistrement, withoutAProjectASaveChangesNothing) {
  setSrcInfosTopo(&dessin, nullptr, 1, 1);
  sauvegarderInfosTopo();
  const AcDbObjectPointer<AcDbLayerTableRecord> calque(dessin.layerZero());
  EXPECT_TRUE(calque->extensionDictionary().isNull());
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  setSrcInfosTopo(nullptr, &projet, 1, 1);
  EXPECT_EQ(sauvegarderInfosTopo(), 0) << "no drawing";
}

TEST_F(Enregistrement, theUserIsToldWhenTheStoredPointsCannotBeRead) {
  remplir(projet, AcDbObjectId());
  sauvegarderInfosTopo();
  {
    const AcDbObjectPointer<AcDbLayerTableRecord> calque(dessin.layerZero());
    const AcDbObjectPointer<AcDbDictionary> dictionnaire(calque->extensionDictionary());
    AcDbXrecord* fiche = nullptr;
    ASSERT_EQ(dictionnaire->getAt(L"VELTORA4_VARN_DATA", fiche, AcDb::kForWrite), Acad::eOk);
    resbuf* court = acutBuildList(90, 0, 90, 3, 300, L"A", RTNONE);
    fiche->setFromRbChain(*court, &dessin);
    acutRelRb(court);
    fiche->close();
  }
  chargerInfosTopo(&dessin);
  EXPECT_EQ(resume(projet), kNeuf);
  EXPECT_NE(imprime.find("Les points enregistrés dans ce dessin sont illisibles"), std::string::npos)
      << imprime;
  std::string sortie;
  EXPECT_FALSE(exporterTables(&dessin, formatTables::kCsv, sortie));
  EXPECT_EQ(sortie, "Les points enregistrés dans ce dessin sont illisibles.\n");
  for (int i = 0; i < 2; ++i) sauvegarderInfosTopo();
  EXPECT_TRUE(exporterTables(&dessin, formatTables::kCsv, sortie));
  const AcDbObjectPointer<AcDbLayerTableRecord> calque(dessin.layerZero());
  const AcDbObjectPointer<AcDbDictionary> dictionnaire(calque->extensionDictionary());
  AcDbXrecord* gardee = nullptr;
  ASSERT_EQ(dictionnaire->getAt(L"VELTORA4_VARN_DATA_ILLISIBLES", gardee), Acad::eOk);
  resbuf* chaine = nullptr;
  gardee->rbChain(&chaine, &dessin);
  gardee->close();
  ASSERT_TRUE(chaine && chaine->rbnext && chaine->rbnext->rbnext);
  EXPECT_STREQ(chaine->rbnext->rbnext->resval.rstring, L"A") << "what could not be read is kept";
  acutRelRb(chaine);
}

TEST_F(Enregistrement, thousandsOfPointsComeBackFromTheDrawing) {
  setSrcInfosTopo(&dessin, &projet, 1, 0);
  constexpr int kPoints = 3000;  // their items are stored in several pieces
  for (int i = 0; i < kPoints; ++i)
    projet.currTable()->Ajouter(unPoint(std::to_wstring(i).c_str(), i, 2.0 * i, 0.5 * i, 1 + i % 5));
  ASSERT_EQ(sauvegarderInfosTopo(), 1);
  projetsTopo lu;
  ASSERT_EQ(lireTables(&dessin, lu), lectureTables::kLues);
  ASSERT_EQ(lu.currTable()->nbPoint(), kPoints);
  for (int i = 0; i < kPoints; ++i)
    ASSERT_TRUE(*lu.currTable()->getData(i) == *projet.currTable()->getData(i)) << i;
  setSrcInfosTopo(&dessin, nullptr, 0, 0);
}

TEST_F(Enregistrement, empreinteTells_EveryChange) {
  remplir(projet, AcDbObjectId());
  std::set<std::size_t> vues{empreinteTables(projet)};
  const auto changee = [&] { return vues.insert(empreinteTables(projet)).second; };
  EXPECT_FALSE(changee());
  pointDuDessin& point = *projet.currTable()->getData(0);
  point.x += 0.001;
  EXPECT_TRUE(changee());
  point.z = 5.0;
  EXPECT_TRUE(changee());
  point.setNomPoint(L"B");
  EXPECT_TRUE(changee());
  point.code = 7;
  EXPECT_TRUE(changee());
  projet.currTable()->setNomTable(L"Autre");
  EXPECT_TRUE(changee());
  projet.creerTablePoints(L"Deux");
  EXPECT_TRUE(changee());
  projet.tableCourante = 0;
  EXPECT_TRUE(changee());
}

TEST_F(Enregistrement, exportsTheStoredTables) {
  std::string sortie;
  EXPECT_TRUE(exporterTables(&dessin, formatTables::kTexte, sortie));
  EXPECT_EQ(sortie, "Aucune table de points dans ce dessin.\n");
  remplir(projet, AcDbObjectId());
  projet.currTable()->setNomTable(L"Été; \"bis\"");
  sauvegarderInfosTopo();
  projet.reset();  // the stored tables count
  EXPECT_TRUE(exporterTables(&dessin, formatTables::kTexte, sortie));
  EXPECT_EQ(sortie,
            "Table \"LEVE\" : 1 point\n"
            "  Nom         X         Y        Z  Code\n"
            "  12   1000.500  2000.250  100.000     3\n"
            "\n"
            "Table \"Été; \"bis\"\" (courante) : 2 points\n"
            "  Nom           X            Y      Z  Code\n"
            "  é    650000.123  6860000.100         9999\n"
            "  É        -0.000        0.100  0.000    -5\n");
  EXPECT_TRUE(exporterTables(&dessin, formatTables::kCsv, sortie));
  EXPECT_EQ(sortie,
            "Table;Courante;Nom;X;Y;Z;Code\n"
            "LEVE;non;12;1000.5;2000.25;100.0;3\n"
            "\"Été; \"\"bis\"\"\";oui;é;650000.123456789;6860000.1;;9999\n"
            "\"Été; \"\"bis\"\"\";oui;É;-1e-300;0.1;0.0;-5\n");
}

}  // namespace
