// Descriptions of blocks: three places, the first that says something counts.

#include "codes/legend/legende.h"
#include "arx/db/dblines.h"
#include "codes/legend/description_bloc.h"
#include "core/extension_record.h"
#include "support/atelier.h"

namespace {

using namespace veltora;

class Legende : public Atelier {
protected:
  Legende() {
    const AcDbObjectPointer<AcDbSymbolTable> table(dessin.blockTableId(), AcDb::kForWrite);
    auto* definition = new AcDbBlockTableRecord;
    definition->setName(L"Regard");
    EXPECT_EQ(table->add(bloc, definition), Acad::eOk);
    for (double x : {1.0, 2.0}) {
      auto* ligne = new AcDbLine({x, 0, 0}, {x, 1, 0});
      EXPECT_EQ(definition->appendAcDbEntity(entites_[x > 1.0], ligne), Acad::eOk);
      ligne->close();
    }
    definition->close();
  }
  /// Keeps a text as other sessions did, under a marker.
  void garder(const AcDbObjectId& id, int marque, const wchar_t* texte) {
    const AcDbObjectPointer<AcDbObject> objet(id, AcDb::kForWrite);
    chaineResbuf chaine;
    ResbufSerializer flux(&chaine);
    flux.writeInt(marque);
    flux.writeAcString(texte);
    EXPECT_TRUE(storeRecord(*objet, L"BLOCKINFO_VELTORA", chaine));
  }
  AcDbObjectId bloc;
  AcDbObjectId entites_[2];
};

TEST_F(Legende, TheFirstPlaceThatSaysSomethingCounts) {
  EXPECT_EQ(descriptionBloc(bloc), L"Regard");
  garder(entites_[0], 12744720, L"another record");
  EXPECT_EQ(descriptionBloc(bloc), L"Regard");
  garder(entites_[1], 12744721, L"third");
  EXPECT_EQ(descriptionBloc(bloc), L"third");
  garder(bloc, 12744721, L"second");
  EXPECT_EQ(descriptionBloc(bloc), L"second");
  AcDbObjectPointer<AcDbBlockTableRecord>(bloc, AcDb::kForWrite)->setComments(L"first");
  EXPECT_EQ(descriptionsBloc(bloc), (std::vector<std::wstring>{L"first", L"second", L"third"}));
  EXPECT_TRUE(decrireBloc(bloc, L"one for all"));
  EXPECT_EQ(descriptionsBloc(bloc), (std::vector<std::wstring>{L"one for all"}));
  EXPECT_FALSE(decrireBloc(entites_[0], L"x")) << "no block";
}

// Line ends and long texts are kept as they are with the block, saved and read; the legend writes them on one
// line.
TEST_F(Legende, AnyDescriptionIsKeptAndDrawnOnOneLine) {
  for (const std::wstring& texte : {std::wstring(L"un\ndeux\r\ntrois"), std::wstring(10000, L'é')}) {
    ASSERT_TRUE(decrireBloc(bloc, texte));
    dessinerLegende({{listerBlocs()[0], descriptionBloc(bloc)}}, {}, {0, 0});
    const DossierTemporaire dossier;
    const std::wstring fichier = base::fromUtf8((dossier.chemin / "l.dxf").string());
    ASSERT_EQ(dessin.saveAs(fichier.c_str()), Acad::eOk);
    AcDbDatabase relu(false);
    ASSERT_EQ(relu.readDwgFile(fichier.c_str()), Acad::eOk);
    AcDbObjectId definition;
    AcDbObjectPointer<AcDbSymbolTable>(relu.blockTableId())->getIdAt(L"Regard", definition);
    EXPECT_EQ(descriptionsBloc(definition), (std::vector<std::wstring>{texte}));
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(relu.modelSpaceId());
    const AcDbObjectPointer<AcDbText> ecrit(espace->entities().back());
    EXPECT_EQ(ecrit->textString(), texte.size() < 20 ? L"un deux trois" : texte);
  }
}

// A block that shows itself has the box of what else it shows.
TEST_F(Legende, ABlockThatHoldsItselfIsListedAndDrawn) {
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> definition(bloc, AcDb::kForWrite);
    auto* soi = new AcDbBlockReference({5, 0, 0}, bloc);
    EXPECT_EQ(definition->appendAcDbEntity(soi), Acad::eOk);
    soi->close();
  }
  const std::vector<infoBlocks> blocs = listerBlocs();
  ASSERT_EQ(blocs.size(), 1U);
  EXPECT_GE(blocs[0].tailleX, 1.0);
  dessinerLegende({{blocs[0], L"soi"}}, {}, {0, 0});
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  EXPECT_EQ(espace->entities().size(), 2U);
}

TEST_F(Legende, LinesAreAsFarApartAsTheyMustBe) {
  const std::vector<infoBlocks> blocs = listerBlocs();
  ASSERT_EQ(blocs.size(), 1U);
  EXPECT_EQ(blocs[0].minX, 1.0);
  const std::vector<ligneLegende> lignes = {{blocs[0], L"a"}, {blocs[0], L"b"}};
  const struct {
    double textes, blocs, distance, pas;
  } rows[] = {{1, 1, 1, 1.2}, {1, 1, 2, 2}, {3, 1, 1, 3.6}, {1, 4, 1, 4.8}};
  for (const auto& row : rows) {
    demandeLegende demande;
    demande.tailleTextes = row.textes;
    demande.tailleBlocs = row.blocs;
    demande.distanceLignes = row.distance;
    dessinerLegende(lignes, demande, {0, 0});
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    const auto& ids = espace->entities();
    AcDbExtents boite;
    ASSERT_EQ(AcDbObjectPointer<AcDbBlockReference>(ids[ids.size() - 2])->getGeomExtents(boite), Acad::eOk);
    EXPECT_NEAR(boite.minPoint().y, -row.pas, 1e-12);
    EXPECT_NEAR(boite.maxPoint().y - boite.minPoint().y, row.blocs, 1e-12);
  }
}

}  // namespace
