// What a stake-out draws: where, in which colours, with which marks; stations given at the prompts and taken
// back.

#include "stakeout/dessin_implantation.h"

#include "arx/db/dbcircle.h"
#include "arx/db/dblines.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbtable.h"
#include "arx/db/dbtext.h"
#include "arx/ed/edports.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "core/resbuf_serializer.h"
#include "stakeout/listes_implantation.h"
#include "stakeout/marques_implantation.h"
#include "stakeout/saisir_station.h"
#include "support/projet_essai.h"

#include <deque>

namespace {

using namespace veltora;

class DessinImplantation : public ProjetEssai, public base::LineSource, public base::OutputSink {
protected:
  DessinImplantation() {
    reglagesImplantation::commun() = {};
    acedPorts().source = this;
    acedPorts().sink = this;
  }
  ~DessinImplantation() override { acedPorts() = {}; }
  std::optional<std::string> readLine(const base::Request& /*request*/) override {
    if (lignes.empty()) return std::nullopt;
    std::string ligne = lignes.front();
    lignes.pop_front();
    return ligne;
  }
  void print(const std::string& texte) override { imprime += texte; }

  /// Living texts and lines in order, each with its colour.
  [[nodiscard]] std::string dessin() const {
    std::string liste;
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(m_dessin.modelSpaceId());
    for (const AcDbObjectId& id : espace->entities()) {
      const AcDbObjectPointer<AcDbEntity> entite(id);
      if (entite.openStatus() != Acad::eOk) continue;
      if (const auto* texte = AcDbText::cast(entite.object()))
        liste += base::formater("'%s' %.2f,%.2f/%.0f", base::toUtf8(texte->textString()), texte->position().x,
                                texte->position().y, texte->rotation() * 200.0 / kPi);
      else if (const auto* ligne = AcDbLine::cast(entite.object()))
        liste += base::formater("%.1f,%.1f>%.1f,%.1f", ligne->startPoint().x, ligne->startPoint().y,
                                ligne->endPoint().x, ligne->endPoint().y);
      else if (const auto* table = AcDbTable::cast(entite.object()))
        liste += base::formater("table %dx%d %.2f,%.2f", table->numRows(), table->numColumns(),
                                table->position().x, table->position().y);
      else
        liste += base::toUtf8(entite->isA()->name());
      liste += base::formater(" c%d\n", entite->colorIndex());
    }
    return liste;
  }
  static observationImplantation point(const wchar_t* nom, double x, double y) {
    observationImplantation p;
    p.nom = nom;
    p.x = x;
    p.y = y;
    return p;
  }

  std::deque<std::string> lignes;
  std::string imprime;
};

TEST_F(DessinImplantation, PutsCrossNameAndCoordinates) {
  projetImplantation projet;
  projet.dessin.coordonnees = 1;
  projet.ajouterPoint(point(L"P", 100.0, 200.0));
  EXPECT_EQ(dessin(),
            "98.0,200.0>102.0,200.0 c256\n100.0,198.0>100.0,202.0 c256\n'P' 102.20,199.00/0 c256\n"
            "'X=100.0000' 102.20,197.20/0 c256\n'Y=200.0000' 102.20,195.40/0 c256\n");
  effacerResultats(projet);
  EXPECT_EQ(dessin(), "");
  projet.points.GetAt(0).z = 7.0;
  dessinerResultats(projet, paramsDessinImplantation::kY + paramsDessinImplantation::kZ);
  EXPECT_EQ(dessin(), "'200.0000' 102.20,197.20/0 c256\n'7.0000' 102.20,195.40/0 c256\n");
}

TEST_F(DessinImplantation, SightsAreColouredByTheirVerdict) {
  projetImplantation projet;
  projet.dessin.numeros = 0;
  projet.ajouterPoint(point(L"P", 0.0, 10.0));
  uneStationReference station;
  station.x = station.y = 0.0;
  projet.points.GetAt(0).idStation = creerMiseEnStation(projet, station, L"", {}, modeOrientation::kNord);
  effacerResultats(projet);
  projet.dessin.miseEnStation = 0;
  const std::tuple<int, double, int> cas[] = {{0, Z_ABSENT, 7}, {1, Z_ABSENT, 8}, {1, 1.0, 4}, {1, 1.001, 1}};
  reglagesImplantation::commun().couleurNonVerifie = 8;
  for (const auto& [verifie, hauteur, couleur] : cas) {
    projet.points.GetAt(0).visibiliteCalculee = verifie;
    projet.points.GetAt(0).hauteurRequise = hauteur;
    dessinerResultats(projet, projet.dessin.options());
    EXPECT_EQ(dessin(), base::formater("0.0,0.0>0.0,10.0 c%d\n'd=10.0000 A=0.0000' -0.30,5.00/100 c%d\n",
                                       couleur, couleur));
    effacerResultats(projet);
  }
}

TEST_F(DessinImplantation, StationsShowWhereTheyLook) {
  projetImplantation projet;
  uneStationReference station;
  station.x = station.y = 0.0;
  projet.dessin.textes = 0;
  creerMiseEnStation(projet, station, L"R", {50.0, 0.0, 0.0}, modeOrientation::kReference);
  const std::string visee = dessin();
  EXPECT_NE(visee.find("0.0,0.0>0.0,3.0 c1\n"), std::string::npos) << visee;
  EXPECT_NE(visee.find("AcDbPolyline c6\n0.0,0.0>50.0,0.0 c6\n"), std::string::npos) << visee;
  EXPECT_EQ(std::count(visee.begin(), visee.end(), '\n'), 8);
  // Marks: of a station, not of a point.
  const AcDbObjectPointer<AcDbEntity> etoile(projet.stations.GetAt(0)->entites[0]);
  EXPECT_FALSE(pointMarque(*etoile));
  const chaineResbuf marque(etoile->xData(kXDataImplantation));
  ASSERT_TRUE(marque.tete);
  EXPECT_EQ(marque.tete->rbnext->resval.rlong, 12482);
  effacerResultats(projet);
  creerMiseEnStation(projet, station, L"", {0.0, -5.0, 0.0}, modeOrientation::kVersPosition);
  const AcDbObjectPointer<AcDbRay> rayon(projet.stations.GetAt(1)->entitesMise[0]);
  ASSERT_EQ(rayon.openStatus(), Acad::eOk);
  EXPECT_NEAR(rayon->unitDir().y, -1.0, 1e-12);
  EXPECT_EQ(creerMiseEnStation(projet, station, L"", {}, modeOrientation{9}), kSansIdentifiant);
}

TEST_F(DessinImplantation, TablesHangBelowEachOther) {
  projetImplantation projet;
  projet.dessin.numeros = projet.dessin.miseEnStation = 0;
  uneStationReference station;
  station.nom = L"S";
  station.x = station.y = 0.0;
  const std::uint32_t id = creerMiseEnStation(projet, station, L"", {}, modeOrientation::kNord);
  creerMiseEnStation(projet, station, L"", {}, modeOrientation::kNord);  // without points: nothing of it
  for (const wchar_t* nom : {L"A", L"B", L"C"}) projet.ajouterPoint(point(nom, 3.0, 4.0));
  projet.points.GetAt(0).idStation = projet.points.GetAt(1).idStation = id;
  EXPECT_EQ(dessinerTables(projet, {10.0, 100.0, 0.0}, 2.0), 2);
  // Texts at 1.2 h, then 1.5 h lower; the table 3.5 h below the corner, rows of 1.5 h, 2 h to the next one.
  EXPECT_EQ(dessin(),
            "'%%uStation :%%u S x  = 0.0000 y = 0.0000' 10.00,97.60/0 c256\n"
            "'%%uReference:%%u NORD (O gr)' 10.00,94.60/0 c256\n"
            "table 3x6 10.00,93.00 c256\ntable 2x4 10.00,80.00 c256\n");
}

TEST_F(DessinImplantation, StationsAreGivenAndTakenBackAtThePrompts) {
  projetImplantation projet;
  projet.dessin.miseEnStation = 0;
  projet.ajouterPoint(point(L"A", 3.0, 4.0));
  projet.ajouterPoint(point(L"B", 6.0, 8.0));
  const std::uint32_t a = projet.points.GetAt(0).id;
  const std::uint32_t b = projet.points.GetAt(1).id;
  lignes = {"0,0", "0,0", "", "0,1", "0,50", ""};
  mettreEnStation(projet, {a});
  EXPECT_NE(imprime.find("elle n'oriente rien"), std::string::npos);
  ASSERT_EQ(projet.stations.GetSize(), 2);
  EXPECT_EQ(projet.points.GetAt(0).idStation, projet.stations.GetAt(1)->idMise);
  EXPECT_EQ(projet.points.GetAt(1).idStation, kSansIdentifiant);
  EXPECT_EQ(projet.stations.GetAt(1)->texteReference(), L"X=0.0000,Y=50.0000");
  lignes = {"0,0", "", "Annuler", "", "0,0"};
  mettreEnStation(projet, {b});
  EXPECT_EQ(projet.points.GetAt(1).idStation, kSansIdentifiant);
  ASSERT_EQ(projet.stations.GetSize(), 1) << "those that no point uses go";
  EXPECT_EQ(projet.points.GetAt(0).idStation, projet.stations.GetAt(0)->idMise);
  EXPECT_EQ(lignes.size(), 1u) << "an empty answer ends the loop";
  EXPECT_EQ(dessin(), "") << "nothing of it stays drawn";
}

}  // namespace
