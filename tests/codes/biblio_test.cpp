// The shipped point blocks, as the host reads them.
#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/installation.h"
#include "support/dossier_essai.h"

#include <gtest/gtest.h>

namespace {
using namespace veltora;

TEST(Biblio, TheDefaultCodesHaveBlocksOfAboutOneUnit) {
  const DossierEssai dossier;
  std::filesystem::copy(std::filesystem::path(VELTORA_SOURCE_DIR) / "data/biblio", dossier.chemin / "biblio");
  const tableCodification table;
  ASSERT_EQ(table.codes.size(), 2u);
  for (const codifPoint& ligne : table.codes) {
    AcDbDatabase dessin(false, true);
    std::wstring message;
    const std::wstring nom = base::fromUtf8(cheminPlateforme(ligne.chemin).string());
    ASSERT_EQ(dessin.readDwgFile(nom.c_str(), &message), Acad::eOk) << base::toUtf8(message);
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    ASSERT_EQ(espace.openStatus(), Acad::eOk);
    AcDbExtents etendue;
    for (const AcDbObjectId id : espace->entities()) {
      const AcDbObjectPointer<AcDbEntity> entite(id);
      ASSERT_EQ(entite.openStatus(), Acad::eOk);
      EXPECT_EQ(entite->layerId(), dessin.layerZero()) << "takes the colour of the reference's layer";
      AcDbExtents une;
      ASSERT_EQ(entite->getGeomExtents(une), Acad::eOk);
      etendue.addExt(une);
    }
    const AcGeVector3d taille = etendue.maxPoint() - etendue.minPoint();
    EXPECT_NEAR(taille.x, 1.0, 0.15);
    EXPECT_NEAR(taille.y, 1.0, 0.15);
    EXPECT_LT(etendue.minPoint().x, 0);
    EXPECT_GT(etendue.maxPoint().y, 0) << "centred on the point";
  }
}

}  // namespace
