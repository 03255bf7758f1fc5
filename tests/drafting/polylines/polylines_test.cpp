// Light polylines of 3D ones, and a polyline that runs through points.

#include "arx/db/dbheavypoly.h"
#include "arx/db/dbpl.h"
#include "base/format.h"
#include "drafting/dialogs/allegement_dlg.h"
#include "drafting/polylines/polylines_2d.h"
#include "drafting/polylines/projeter_polyligne.h"
#include "drafting/polylines/rectoriente_jig.h"
#include "support/atelier.h"
#include "support/dialog_script.h"

namespace {

using namespace veltora;

class Polylines : public Atelier {
protected:
  AcDbObjectId polyligne3d(const std::vector<AcGePoint3d>& sommets) {
    const AcDbObjectId id = mettre(dessin, new AcDb3dPolyline());
    const AcDbObjectPointer<AcDb3dPolyline> polyligne(id, AcDb::kForWrite);
    for (const AcGePoint3d& sommet : sommets) {
      AcDbObjectId sien;
      auto* nouveau = new AcDb3dPolylineVertex(sommet);
      EXPECT_EQ(polyligne->appendVertex(sien, nouveau), Acad::eOk);
      nouveau->close();
    }
    return id;
  }
};

TEST_F(Polylines, LieAtTheAltitudeThatTheModeTakes) {
  const AcDbObjectId source = polyligne3d({{0, 0, 20}, {10, 0, 10}, {10, 10, 60}});
  const std::pair<demandePolylines2d::Altitude, double> rows[] = {{demandePolylines2d::kAltitudeZero, 0},
                                                                  {demandePolylines2d::kPremiere, 20},
                                                                  {demandePolylines2d::kPlusBasse, 10},
                                                                  {demandePolylines2d::kMoyenne, 30},
                                                                  {demandePolylines2d::kPlusHaute, 60}};
  for (const auto& [mode, altitude] : rows) {
    demandePolylines2d demande;
    demande.modeAltitude = mode;
    demande.supprimerOriginales = mode == demandePolylines2d::kPlusHaute;
    EXPECT_EQ(convertirPolylines3d({source}, demande).creees, 1);
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
    const AcDbObjectPointer<AcDbPolyline> creee(espace->entities().back());
    EXPECT_EQ(creee->elevation(), altitude);
    EXPECT_EQ(source.isLive(), mode != demandePolylines2d::kPlusHaute);
  }
  EXPECT_EQ(nomDuModele(L"{LAYER}-{LAYER}", L"{LAYER}x"), L"{LAYER}x-{LAYER}x");
}

TEST_F(Polylines, RunThroughThePointsNearThem) {
  const struct {
    double distance;
    std::vector<AcGePoint2d> points;
    std::vector<AcGePoint2d> sommets;                             ///< none: it stays
  } rows[] = {{2, {{6, 1}, {1, -1}, {5, 2}}, {{1, -1}, {6, 1}}},  // a distance of 2 is none below 2
              {0, {{6, 1}, {1, -1}, {5, 200}}, {{1, -1}, {5, 200}, {6, 1}}},
              {2, {{6, 1}, {5, 3}}, {}},
              {2, {{6, 1}, {6.000005, 1}}, {}},
              {2, {{6, 1}, {6.00002, 1}}, {{6, 1}, {6.00002, 1}}}};
  for (const auto& row : rows) {
    AcDbPolyline polyligne;
    for (const AcGePoint2d& sommet : {AcGePoint2d(0, 0), {10, 0}, {20, 0}})
      polyligne.addVertexAt(polyligne.numVerts(), sommet);
    EXPECT_EQ(projeterPolyligne(polyligne, row.points, row.distance), static_cast<int>(row.sommets.size()));
    ASSERT_EQ(polyligne.numVerts(), row.sommets.empty() ? 3U : row.sommets.size());
    for (unsigned int i = 0; i < row.sommets.size(); ++i) {
      AcGePoint2d sommet;
      polyligne.getPointAt(i, sommet);
      EXPECT_EQ(sommet, row.sommets[i]);
    }
  }
}

TEST_F(Polylines, rect3ptCote_aRectangleByThreePointsAndTheWaysBack) {
  const struct {
    std::vector<std::string> lignes;
    const char* sommets;  ///< nothing: no rectangle, no entity
  } rows[] = {
      {{"10,20", "14,23", "13,24"}, "10.00,20.00 14.00,23.00 13.16,24.12 9.16,21.12 1"},
      {{"10,20", "14,23", "13,22"}, "10.00,20.00 14.00,23.00 14.12,22.84 10.12,19.84 1"},
      {{"1,1", "5,5", "O", "0,0", "0,2", "R", "3,0", "D", "9,1"},
       "0.00,0.00 3.00,0.00 3.00,1.00 0.00,1.00 1"},
      {{"0,0", "0,0", "0,0", "2,0", "7,0", "7,1"}, "0.00,0.00 2.00,0.00 2.00,1.00 0.00,1.00 1"},
      {{"10,20", "14,23", "*Annuler*"}, ""},
      {{"*Annuler*"}, ""},
  };
  for (const auto& row : rows) {
    DialogScript script(row.lignes);
    acedPorts().source = &script;
    const int avant = entites();
    const AcDbObjectId id = rectorienteJig().dessiner();
    acedPorts().source = nullptr;
    EXPECT_TRUE(script.finished());
    std::string texte;
    if (const AcDbObjectPointer<AcDbPolyline> rectangle(id); rectangle.openStatus() == Acad::eOk) {
      AcGePoint2d sommet;
      for (unsigned int i = 0; rectangle->getPointAt(i, sommet) == Acad::eOk; ++i)
        texte += base::formater("%.2f,%.2f ", sommet.x, sommet.y);
      texte += rectangle->isClosed() ? "1" : "0";
    }
    EXPECT_EQ(texte, row.sommets);
    EXPECT_EQ(entites() - avant, texte.empty() ? 0 : 1);
  }
  DialogScript script({"0,0", "1,0", "Cote"});
  acedPorts().source = &script;
  EXPECT_THROW(rectorienteJig().dessiner(), base::ScriptError);
  acedPorts().source = nullptr;
}

TEST_F(Polylines, TheDialogOfLighteningTellsItsClicks) {
  CDlgAllementDessin dialogue;
  DialogScript script({"Surface occupée par les elements graphiques sur le dessin = oui",
                       "Densité de points / surface = oui", "Layer = Nouveau", "[OK]"});
  EXPECT_EQ(dialogue.doModal(), ui::kOk);
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(imprime,
            "\nCode = 1 CDlgAllementDessin::OnBnClickedAllegementSurfaceOccupeeDessin()"
            "\nCode = 0 CDlgAllementDessin::OnBnClickedAllegementPointsParSurface()");
  EXPECT_EQ(dialogue.layerDelestage.text(), L"Nouveau");
  EXPECT_EQ(dialogue.layerDelestage.item(0), L"0");
}

}  // namespace
