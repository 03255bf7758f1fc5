// The scoped undo group.
#include "arx/ap/acdocman.h"
#include "core/acad_undo_group.h"

#include <gtest/gtest.h>

namespace {
using namespace veltora;

void ajouterLayer(AcDbDatabase& dessin, const wchar_t* nom) {
  ASSERT_FALSE(dessin.recordOf("LAYER", nom).isNull());
}

bool existe(AcDbDatabase& dessin, const wchar_t* nom) {
  const AcDbObjectPointer<AcDbLayerTable> calques(dessin.layerTableId());
  return calques->has(nom);
}

TEST(AcadUndoGroup, JoinsTheChangesOfItsLifeInOneStep) {
  ASSERT_EQ(acDocManager->appContextNewDocument(), Acad::eOk);
  AcDbDatabase& dessin = *curDoc()->database();
  ajouterLayer(dessin, L"AVANT");
  {
    const CAcadUndoGroup groupe;
    const CAcadUndoGroup interieur;
    ajouterLayer(dessin, L"A");
    ajouterLayer(dessin, L"B");
  }
  curDoc()->endUndoMark();  // one too many ends nothing
  EXPECT_TRUE(existe(dessin, L"A") && existe(dessin, L"B"));
  EXPECT_EQ(dessin.undoLog().undo(), L"Groupe");
  EXPECT_FALSE(existe(dessin, L"A") || existe(dessin, L"B"));
  EXPECT_TRUE(existe(dessin, L"AVANT"));
}

TEST(AcadUndoGroup, MayOutliveItsDocumentOrHaveNone) {
  ASSERT_EQ(acDocManager->appContextNewDocument(), Acad::eOk);
  {
    const CAcadUndoGroup groupe;
    while (curDoc()) acDocManager->closeDocument(curDoc());
    const CAcadUndoGroup sansDocument;
  }
  EXPECT_EQ(curDoc(), nullptr);
}

}  // namespace
