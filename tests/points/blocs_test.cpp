// The crossings between records and blocks, on a real drawing with a block file of its own.

#include "points/attribs_points.h"
#include "points/bloc_fichier.h"
#include "points/point_xyz.h"
#include "support/atelier.h"

namespace {

using namespace veltora;

class BlocsPoints : public Atelier {
protected:
  BlocsPoints() { setFacteurTailleBloc(1.0); }
  /// The point drawn, of this name, in the current table.
  pointDuDessin& dessiner(const wchar_t* nom, double x, double y, double z = Z_ABSENT, int code = 1) {
    pointDuDessin point = unPoint(nom, x, y, z, code);
    point.creer(true, L" \tvu ");
    table().Ajouter(point);
    return *table().getData(table().nbPoint() - 1);
  }
  AcDbObjectId calque(const wchar_t* nom) {
    AcDbObjectId id;
    AcDbObjectPointer<AcDbLayerTable>(dessin.layerTableId())->getIdAt(nom, id);
    return id;
  }
};

TEST_F(BlocsPoints, drawsThePointAsTold) {
  codifPoint& codif = getTableCodification().getOuCreerCode(5);
  codif.tailleBlock = 2.0;
  codif.precisionAltitudes = 3;
  setFacteurTailleBloc(-1.5);
  const pointDuDessin point = dessiner(L" a1", 650000, 6860000, 12.3456, 5);
  const AcDbObjectPointer<AcDbBlockReference> bloc(point.id);
  ASSERT_EQ(bloc.openStatus(), Acad::eOk);
  EXPECT_EQ(bloc->position(), AcGePoint3d(650000, 6860000, 0));
  EXPECT_EQ(bloc->scaleFactors(), AcGeScale3d(3.0));
  EXPECT_EQ(bloc->layer(), L"0");
  EXPECT_EQ(bloc->ownerId(), dessin.modelSpaceId());
  const resbuf* marque = bloc->xData(L"VARNPLUS");
  ASSERT_TRUE(marque && marque->rbnext);
  EXPECT_EQ(marque->rbnext->restype, 1070);
  EXPECT_EQ(marque->rbnext->resval.rint, 1);
  acutRelRb(const_cast<resbuf*>(marque));

  struct {
    const wchar_t* etiquette;
    const wchar_t* texte;
    double dy;
    const wchar_t* calque;
    bool visible;
  } const attendus[] = {{L"CODE", L"5", 6, L"_ Codes Points", false},
                        {L"NUMPT", L"A1", 1.5, L"_ Numero Points", true},
                        {L"Z", L"12.346", -3, L"_ Altitudes Points", true},
                        {L"OBS", L"vu", -7.5, L"_ Obs Points", true}};
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc->attributeIterator());
  for (const auto& a : attendus) {
    ASSERT_FALSE(attributs->done());
    const AcDbObjectPointer<AcDbAttribute> attribut(attributs->objectId());
    EXPECT_EQ(attribut->tag(), a.etiquette);
    EXPECT_EQ(attribut->textString(), a.texte) << base::toUtf8(a.etiquette);
    EXPECT_EQ(attribut->position(), AcGePoint3d(650002.25, 6860000 + a.dy, 0)) << base::toUtf8(a.etiquette);
    EXPECT_EQ(attribut->layer(), a.calque);
    EXPECT_EQ(attribut->height(), 3.0);
    EXPECT_EQ(attribut->colorIndex(), 256);
    EXPECT_EQ(attribut->visibility() == AcDb::kVisible && !attribut->isInvisible(), a.visible);
    attributs->step();
  }
  EXPECT_TRUE(attributs->done());
  EXPECT_STREQ(point.nomPoint, " a1") << "the record keeps its spelling";
}

TEST_F(BlocsPoints, readsBackWhatItDrew) {
  dessiner(L"a1", 650000.5, 6860000.25);
  dessiner(L"été", 1, 2, -3.5, 100);
  projet.creerTablePoints(L"B");
  projet.tableCourante = 1;
  AcDbObjectId bloc = projet.tablesListe.GetAt(0)->getData(1)->id;
  ecrireAttribut(bloc, L"z", L"abc");
  ecrireAttribut(bloc, L"code", L"-4");
  table().updateFromDrawing();
  EXPECT_EQ(table().getNomTable(), L"B");
  ASSERT_EQ(table().nbPoint(), 2) << "blocks of the other table too";
  const pointDuDessin& a = *table().getData(0);
  const pointDuDessin& b = *table().getData(1);
  EXPECT_STREQ(a.nomPoint, "A1");
  EXPECT_EQ(a.getAs3dPnt(), AcGePoint3d(650000.5, 6860000.25, Z_ABSENT));
  EXPECT_STREQ(b.nomPoint, "\xC9T\xC9");
  EXPECT_EQ(b.z, Z_ABSENT) << "an altitude that is no number";
  EXPECT_EQ(b.code, 1);
  EXPECT_EQ(b.id, bloc);
}

TEST_F(BlocsPoints, readsForeignBlocksWithCare) {
  dessiner(L"x", 1, 2, 3);
  const AcDbObjectId bloc = table().getData(0)->id;
  struct {
    const wchar_t* etiquette;
    const wchar_t* valeur;
    const char* nom;
    int code;
    double z;
  } const cas[] = {{L"NUMPT", L"123456789012", "123456789", 1, 3}, {L"CODE", L"0", "123456789", 0, 3},
                   {L"CODE", L"9999", "123456789", 9999, 3},       {L"CODE", L"10000", "123456789", 1, 3},
                   {L"Z", L" 1.E2 ", "123456789", 1, 100},         {L"Z", L"12.", "123456789", 1, Z_ABSENT}};
  pointDuDessin lu;
  for (const auto& c : cas) {
    ecrireAttribut(bloc, c.etiquette, c.valeur);
    EXPECT_EQ(lu.updateFromDrawing(bloc), 1);
    EXPECT_STREQ(lu.nomPoint, c.nom);
    EXPECT_EQ(lu.code, c.code) << base::toUtf8(c.valeur);
    EXPECT_EQ(lu.z, c.z) << base::toUtf8(c.valeur);
  }
  {
    const AcDbObjectPointer<AcDbBlockReference> reference(bloc);
    const std::unique_ptr<AcDbObjectIterator> attributs(reference->attributeIterator());
    attributs->step();
    AcDbObjectPointer<AcDbAttribute>(attributs->objectId(), AcDb::kForWrite)->erase();
  }
  EXPECT_EQ(lu.updateFromDrawing(bloc), 0) << "no NUMPT: not a point";
  EXPECT_EQ(lu.updateFromDrawing(AcDbObjectId()), 0);
  EXPECT_EQ(lu.updateFromDrawing(dessin.modelSpaceId()), 0);
  EXPECT_TRUE(lu.id.isNull());
}

// Deliberate: the attribute CODE keeps the former code.
TEST_F(BlocsPoints, updateDrawing_code_isNotShown) {
  pointDuDessin& point = dessiner(L"a", 0, 0, 5);
  point.setParams(L"b", {650000, 6860000, Z_ABSENT}, 7);
  AcDbObjectPointer<AcDbBlockReference>(point.id, AcDb::kForWrite)->setPosition({0, 0, 4});
  point.updateDrawing();
  EXPECT_EQ(attribut(point.id, L"CODE"), L"1");
  EXPECT_EQ(attribut(point.id, L"NUMPT"), L"b");
  EXPECT_EQ(attribut(point.id, L"Z"), L"");
  EXPECT_EQ(attribut(point.id, L"OBS"), L"vu");
  const AcDbObjectPointer<AcDbBlockReference> bloc(point.id);
  EXPECT_EQ(bloc->position(), AcGePoint3d(650000, 6860000, 4)) << "the z of the block stays";
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc->attributeIterator());
  const AcDbObjectPointer<AcDbAttribute> code(attributs->objectId());
  EXPECT_EQ(code->position(), AcGePoint3d(650000.75, 6860002, 0)) << "attributes move along";
}

TEST_F(BlocsPoints, aLostBlockComesBack) {
  pointDuDessin point = unPoint(L"a", 1, 2);
  point.updateDrawing();
  const AcDbObjectId premier = point.id;
  ASSERT_TRUE(premier.isLive());
  AcDbObjectPointer<AcDbBlockReference>(premier, AcDb::kForWrite)->erase();
  point.updateDrawing();
  EXPECT_TRUE(point.id.isLive());
  EXPECT_NE(point.id, premier);
  const AcDbObjectId bon = point.id;
  point.id = dessin.layerZero();  // what is no block is left alone
  point.updateDrawing();
  EXPECT_EQ(point.id, dessin.layerZero());
  EXPECT_EQ(attribut(bon, L"NUMPT"), L"A");
}

TEST_F(BlocsPoints, removalAndRenumberingReachTheBlocks) {
  const AcDbObjectId a = dessiner(L"a", 1, 1).id;
  const AcDbObjectId b = dessiner(L"b", 2, 2).id;
  AcGePoint3d place;
  int code = 0;
  AcDbObjectPointer<AcDbBlockReference>(b, AcDb::kForWrite)->setPosition({20, 30, 4});
  EXPECT_EQ(table().getBlockPosition(L"B", place, code), 1);
  EXPECT_EQ(place, AcGePoint3d(20, 30, 4));
  table().supprimerPoint(L"a");
  EXPECT_FALSE(a.isLive());
  EXPECT_EQ(entites(), 1);
  table().renumeroter(true);
  EXPECT_EQ(attribut(b, L"NUMPT"), L"1");
  AcDbObjectPointer<AcDbBlockReference>(b, AcDb::kForWrite)->erase();
  EXPECT_EQ(table().getBlockPosition(L"1", place, code), 1);
  EXPECT_EQ(place, AcGePoint3d(2, 2, Z_ABSENT)) << "the table's place without a block";
}

TEST_F(BlocsPoints, blockFilesAreFoundAndNamed) {
  struct {
    const wchar_t* chemin;
    const wchar_t* bloc;
  } const cas[] = {{L" biblio\\autre.dwg.;", L"autre"},   {L"biblio\\autre", L"autre"}, {L" ,;", L"varnblk1"},
                   {L"biblio/varnblk1.DWG", L"varnblk1"}, {L"biblio\\absent.dwg", L""}, {L"biblio\\", L""}};
  for (const auto& c : cas) {
    AcDbDatabase vierge;
    const AcDbObjectId id = blocDuFichier(vierge, c.chemin);
    const AcDbObjectPointer<AcDbBlockTableRecord> bloc(id);
    EXPECT_EQ(bloc.openStatus() == Acad::eOk ? bloc->name() : L"", c.bloc) << base::toUtf8(c.chemin);
    if (bloc.openStatus() == Acad::eOk) {
      EXPECT_EQ(bloc->entities().size(), 1U);
    }
  }
  getTableCodification().getOuCreerCode(8).chemin = L"biblio\\absent.dwg";
  EXPECT_TRUE(dessiner(L"s", 0, 0, 1, 8).id.isNull()) << "no block, the record stands all the same";
  EXPECT_EQ(entites(), 0);
}

TEST_F(BlocsPoints, layersAreMadeOnRequestAndNeverTakenFromAnotherDrawing) {
  codifPoint& codif = getTableCodification().getOuCreerCode(6);
  codif.layers = {L" ;", L"Alti", L"Num,", L"Obs", L"Code"};
  codif.coulLayers[layerNumero] = 3;
  {
    AcDbDatabase autre;
    AcDbObjectId ailleurs;
    pointXYZ().ecrireBlocPoint(&autre, getTableCodification(), ailleurs, 0, 1);
    getTableCodification().creerTousLayers(&autre);
  }
  pointDuDessin point = unPoint(L"1", 0, 0, 1, 6);
  point.creer(false, nullptr);
  EXPECT_TRUE(point.id.isLive());
  EXPECT_FALSE(calque(L"Alti").isLive());
  point.creer(true, nullptr);
  EXPECT_TRUE(calque(L"Alti").isLive());
  EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(calque(L"Num"))->color().colorIndex(), 3);
}

TEST_F(BlocsPoints, ajouterPointDessineDrawsAndEnters) {
  pointXYZ point;
  point.nom = L"Repère n°12";
  point.x = 5;
  point.z = Z_ABSENT;
  point.code = 100;
  point.obs = L"sol";
  EXPECT_EQ(point.ajouterPointDessine(), 1);
  ASSERT_EQ(table().nbPoint(), 1);
  EXPECT_STREQ(table().getData(0)->nomPoint, "Rep\xE8re n\xB0");
  EXPECT_EQ(attribut(table().getData(0)->id, L"numpt"), L"Repère n°12");
  EXPECT_EQ(attribut(table().getData(0)->id, L"OBS"), L"sol");
  EXPECT_EQ(attribut(table().getData(0)->id, L"Z"), L"");
}

TEST_F(BlocsPoints, sizesThatAreNoSizeCountAsOne) {
  for (const double taille : {0.0, -2.0, std::numeric_limits<double>::quiet_NaN(), 1.0}) {
    getTableCodification().getOuCreerCode(1).tailleBlock = taille;
    const AcDbObjectPointer<AcDbBlockReference> bloc(dessiner(L"t", 0, 0).id);
    EXPECT_EQ(bloc->scaleFactors(), AcGeScale3d(1.0));
  }
  setFacteurTailleBloc(9e-7);
  EXPECT_EQ(facteurTailleBloc(), 1.0);
}

}  // namespace
