#include "arx/db/dbpl.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/dialogs/fermee_dlg.h"
#include "calc/dialogs/ouverte_dlg.h"
#include "codes/dialogs/tab_codification_dlg.h"
#include "codes/table_codification.h"
#include "jobs/placer_reseau.h"
#include "jobs/placer_stations.h"
#include "jobs/polygonale.h"
#include "support/dialog_script.h"
#include "support/projet_essai.h"
#include "support/remarques.h"

#include <cmath>
#include <string>
#include <vector>

namespace veltora {
namespace {

const std::string kExemple = VELTORA_SOURCE_DIR "/examples/polygonale_fermee.obs";

class Placement : public ProjetEssai {
protected:
  Placement() {
    installerDialoguesCodes();
    ecrireBlocs();
  }
  /// Colour, closure and vertices of each polyline of the model space.
  std::vector<std::string> polylignes() {
    std::vector<std::string> textes;
    AcDbObjectPointer<AcDbBlockTableRecord> espace(m_dessin.modelSpaceId(), AcDb::kForRead);
    for (const AcDbObjectId id : espace->entities()) {
      AcDbObjectPointer<AcDbPolyline> polyligne(id, AcDb::kForRead);
      if (polyligne.openStatus() != Acad::eOk) continue;
      std::string texte =
          std::to_string(polyligne->colorIndex()) + (polyligne->isClosed() ? " closed" : " open");
      for (unsigned int i = 0; i < polyligne->numVerts(); ++i) {
        AcGePoint2d p;
        polyligne->getPointAt(i, p);
        texte += base::formater(" %.1f,%.1f", p.x, p.y);
      }
      textes.push_back(texte);
    }
    return textes;
  }
};

std::string nomsDe(const listePointsDuDessin& table) {
  std::string noms;
  for (int i = 0; i < table.nbPoint(); ++i) noms += std::string(table.getData(i)->getNomPoint()) + " ";
  return noms;
}

TEST_F(Placement, OneCallComputesReportsAndPlaces) {
  demandePolygonale demande;
  demande.fichier = kExemple;
  demande.rapport = m_dossier.chemin / "rapport.DOC";
  demande.code = 1234;
  demande.altitudes = true;
  resultatPolygonale resultat;
  for (int fois = 0; fois < 2; ++fois) {  // the second run replaces the points of the first
    ASSERT_TRUE(executerPolygonale(demande, resultat)) << base::toUtf8(resultat.erreur);
    EXPECT_TRUE(resultat.remarques.empty());
    ASSERT_EQ(resultat.stations.size(), 7U);
    EXPECT_EQ(m_projets.currTable()->nbPoint(), 7);
  }
  for (const stationCalculee& station : resultat.stations) {
    int index = -1;
    ASSERT_TRUE(m_projets.currTable()->existPoint(station.nom.c_str(), index));
    const pointDuDessin& point = *m_projets.currTable()->getData(index);
    EXPECT_EQ(point.getCode(), 1234);
    EXPECT_EQ(point.getX(), station.x);
    EXPECT_EQ(point.getZ(), station.z);
  }
  EXPECT_GE(getTableCodification().chercherCode(1234), 0);
  EXPECT_NE(m_dossier.lire("rapport.DOC").find("<w:View>"), std::string::npos);
  demande.altitudes = false;
  ASSERT_TRUE(executerPolygonale(demande, resultat));
  EXPECT_EQ(m_projets.currTable()->getData(0)->getZ(), Z_ABSENT);
}

TEST_F(Placement, OneCallSaysWhatIsWrong) {
  struct Cas {
    const char* nom;
    std::string fichier;
    int code;
    const char* erreur;
    std::vector<std::string> remarques;
  };
  const std::string debut = "Nom=A X=1 Y=2 Z=3 Gis=0\n";
  const std::string rangees = "B 300 10 0\nC 300 10 0\nD 300 10 0\nA 300 10 0\n";
  const std::vector<Cas> cas = {
      {"missing", (m_dossier.chemin / "absent.obs").string(), 100, "fichier introuvable ou illisible", {}},
      {"a folder", m_dossier.chemin.string(), 100, "fichier introuvable ou illisible", {}},
      {"one row",
       fichier("a.obs", debut + "\nx y z\nA 1 2 3"),
       100,
       "1 ligne d'observation, il en faut au moins deux",
       {"a.obs, 1 ligne ignorée : 3"}},
      {"report", kExemple, 100, "absent/r.html", {}},
      {"code", kExemple, 10000, "le code 10000 n'est pas compris entre 1 et 9999", {}},
      {"zero lengths", fichier("b.obs", debut + "B 1 0 0\nA 1 0 0"), 100, "coordonnées incalculables", {}},
      {"junk",
       fichier("c.obs", debut + "Angles: gons\nx\ny\n" + rangees + "Angles: mils"),
       100,
       "",
       {"c.obs, ligne 9 : unité d'angle inconnue « mils », lue comme grades",
        "c.obs, 2 lignes ignorées : 3, 4"}},
      {"no departure",
       fichier("d.obs", rangees),
       100,
       "",
       {"à vérifier : d.obs, aucune station de départ lue : le calcul part de X=0, Y=0, Z=0, gisement 0"}},
      {"names",
       fichier("e.obs", debut + "LONGUENOM1 300 10 0\nLONGUENOM2 300 10x 0\nC 300 10 0\nE 300 10 0"),
       100,
       "",
       {"à vérifier : e.obs, ligne 3 : nombre illisible « 10x », lu comme 10.0",
        "e.obs, la dernière ligne vise « E » et non la station de départ « A » : c'est le nom "
        "qu'aura le "
        "point de départ",
        "e.obs, le nom « LONGUENOM1 » est coupé à « LONGUENOM »",
        "e.obs, le nom « LONGUENOM2 » est coupé à « LONGUENOM »",
        "e.obs, deux stations portent le nom « LONGUENOM » : seule la dernière est placée"}},
  };
  for (const Cas& c : cas) {
    demandePolygonale demande;
    demande.fichier = c.fichier;
    demande.code = c.code;
    demande.dessinerBrute = true;
    if (std::string(c.nom) == "report") demande.rapport = m_dossier.chemin / "absent/r.html";
    resultatPolygonale resultat;
    m_projets.reset();
    const std::size_t avant = polylignes().size();
    const bool reussi = executerPolygonale(demande, resultat);
    EXPECT_EQ(reussi, std::string(c.erreur).empty()) << c.nom;
    const bool place = reussi && !resultat.remarques.douteuses();
    EXPECT_EQ(resultat.retenu, reussi && !place) << c.nom;
    EXPECT_EQ(m_projets.currTable()->nbPoint() > 0, place) << c.nom;
    EXPECT_EQ(polylignes().size() - avant, place ? 1U : 0U) << c.nom;
    EXPECT_NE(base::toUtf8(resultat.erreur).find(c.erreur), std::string::npos)
        << base::toUtf8(resultat.erreur);
    EXPECT_EQ(phrasesDe(resultat.remarques), c.remarques) << c.nom;
  }
}

const std::string kRectangle =
    "Nom=A X=100 Y=100 Z=7 Gis=0\nB 296 10 0\nC 300 10 0\nD 300 10 0\nA 300 12 0\n";

TEST_F(Placement, PremierSommetDouble) {
  demandePolygonale demande;
  demande.fichier = fichier("r.obs", kRectangle);
  demande.dessinerBrute = demande.dessinerCompensee = demande.malgreDoutes = true;
  resultatPolygonale resultat;
  ASSERT_TRUE(executerPolygonale(demande, resultat));
  const std::vector<std::string> traces = polylignes();
  ASSERT_EQ(traces.size(), 2U);
  EXPECT_EQ(traces[0], "1 open 100.0,100.0 100.0,110.0 110.0,110.0 110.0,100.0 98.0,100.0");
  EXPECT_EQ(traces[1].substr(0, 45), "3 closed 100.0,100.0 100.0,100.0 100.5,109.9 ") << traces[1];
}

TEST_F(Placement, TheDialogPlacesAfterShowingTheCode) {
  corrPolygoDLG dialogue;
  DialogScript script({"[Charger]", fichier("r.obs", kRectangle), "[Placer !!!]", "Code des stations = 55",
                       "[Ne pas placer les altitudes]", "Dessiner la polygonale compensée = oui", "[OK]",
                       "[OK]", "[Fermer]"});
  dialogue.doModal();
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(nomsDe(*m_projets.currTable()), "A B C D ");
  EXPECT_EQ(m_projets.currTable()->getData(3)->getCode(), 55);
  EXPECT_EQ(m_projets.currTable()->getData(0)->getZ(), 7.0);
  EXPECT_EQ(polylignes().size(), 1U);
}

TEST_F(Placement, CoordinatesThatAreNoNumbersPlaceNothing) {
  const double rien = std::nan("");
  const std::vector<stationCalculee> stations = {{L"A", 1, 2, 3}, {L"B", 1, 2, rien}, {L"C", HUGE_VAL, 2, 3}};
  EXPECT_EQ(refusDePlacer(stations, true),
            L"Rien n'est placé, ces coordonnées ne sont pas des nombres : B, C");
  EXPECT_EQ(refusDePlacer({stations[0], stations[1]}, false), L"") << "an altitude that is not placed";
  placerStations(stations, 100, false);
  EXPECT_EQ(m_projets.currTable()->nbPoint(), 0);
  reseauMoindresCarres reseau;
  pointACalculer point;
  point.nom = L"P";
  point.X = rien;
  point.Y = 5.0;
  point.planiConnue = true;
  reseau.points.Add(point);
  EXPECT_NE(refusDePlacer(pointsCanevas(reseau), true), L"") << "not left out in silence";
  // Legs of no length in both traverses: nothing is drawn either, and no code is asked.
  corrPolygoDLG fermee;
  DialogScript script({"[Charger]", fichier("z.obs", "Nom=A X=1 Y=2 Z=3 Gis=0\nB 1 0 0\nA 1 0 0"),
                       "[Placer !!!]", "Dessiner la polygonale originelle = oui", "[OK]", "[OK]",
                       "[Fermer]"});
  fermee.doModal();
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_NE(script.transcript.find("ne sont pas des nombres : B"), std::string::npos) << script.transcript;
  corrPolygoOuverteDLG ouverte;
  DialogScript suite({"[Charger]", fichier("y.obs", "Depart=A X=1 Y=2 Z=3 Gis=0\nB 1 0 0\nC 1 0 0"),
                      "[Placer !!!]", "Dessiner la polygonale originelle = oui", "[OK]", "[OK]", "[Fermer]"});
  ouverte.doModal();
  EXPECT_TRUE(suite.finished()) << suite.transcript;
  EXPECT_NE(suite.transcript.find("ne sont pas des nombres : B, C"), std::string::npos) << suite.transcript;
  EXPECT_EQ(m_projets.currTable()->nbPoint(), 0);
  EXPECT_TRUE(polylignes().empty());
}

/// Due east from A to the known arrival; the drawn legs are 50 and 50.
const std::string kOuverte =
    "Depart=A X=100 Y=100 Z=10 Gis=100\nArrivee=C X=200 Y=100 Z=13 Gis=100\nFermeture: 200\n"
    "B 200 50 1\nC 200 49 1\n";

TEST_F(Placement, OneCallFindsOutThatATraverseIsOpen) {
  demandePolygonale demande;
  demande.fichier = fichier("o.obs", kOuverte);
  demande.altitudes = demande.dessinerBrute = demande.dessinerCompensee = true;
  demande.tolerances.lineaire = 50.0;
  resultatPolygonale resultat;
  ASSERT_TRUE(executerPolygonale(demande, resultat)) << base::toUtf8(resultat.erreur);
  EXPECT_TRUE(resultat.ouverte);
  EXPECT_TRUE(resultat.remarques.empty());
  EXPECT_EQ(nomsDe(*m_projets.currTable()), "A B C ");
  EXPECT_EQ(m_projets.currTable()->getData(1)->getZ(), 11.0);
  EXPECT_EQ(m_projets.currTable()->getData(2)->getZ(), 13.0) << "the known height, not the computed one";
  EXPECT_NEAR(resultat.fermetures.Ex, -1.0, 1e-9);
  const std::vector<std::string> traces = polylignes();
  ASSERT_EQ(traces.size(), 2U);
  EXPECT_EQ(traces[0], "1 open 100.0,100.0 150.0,100.0 199.0,100.0");
  EXPECT_EQ(traces[1], "3 open 100.0,100.0 150.5,100.0 200.0,100.0");
}

TEST_F(Placement, OneCallDoubtsWholeTurnsAndMissingStations) {
  const auto remarques = [&](const std::string& octets) {
    demandePolygonale demande;
    demande.fichier = fichier("o.obs", octets);
    demande.placer = false;
    demande.tolerances.lineaire = 50.0;
    resultatPolygonale resultat;
    EXPECT_TRUE(executerPolygonale(demande, resultat));
    return texteDe(resultat.remarques);
  };
  const auto avec = [](std::string texte, const std::string& ancien, const std::string& nouveau) {
    return texte.replace(texte.find(ancien), ancien.size(), nouveau);
  };
  EXPECT_EQ(
      remarques(avec(kOuverte, "Z=13 Gis=100", "Z=13 Gis=-300.02")),
      "à vérifier : o.obs, l'erreur angulaire de 400.0200 grades est proche de 1 tour entier : le gisement "
      "d'arrivée est sans "
      "doute à donner avec 1 tour de plus, soit 99.98000 grades au lieu de -300.02000\n");
  EXPECT_NE(
      remarques(avec(kOuverte, "Z=13 Gis=100", "Z=13 Gis=900")).find("2 tours de moins, soit 100.00000"),
      std::string::npos);
  EXPECT_EQ(remarques(avec(kOuverte, "Z=13 Gis=100", "Z=13 Gis=300")).find("proche de"), std::string::npos)
      << "half a turn is something else";
  EXPECT_EQ(remarques(avec(kOuverte, "Arrivee=C", "Arrivee=E")),
            "o.obs, la dernière ligne vise « C » et non la station d'arrivée « E » : c'est le "
            "nom qu'aura le point "
            "d'arrivée\n");
  EXPECT_NE(
      remarques(avec(kOuverte, "Arrivee=C X=200 Y=100 Z=13 Gis=100", "")).find("aucune station d'arrivée"),
      std::string::npos);
}

TEST_F(Placement, TheOpenDialogPlaces) {
  corrPolygoOuverteDLG dialogue;
  DialogScript script({"[Charger]", fichier("o.obs", kOuverte), "[Placer !!!]", "Code des stations = 55",
                       "Dessiner la polygonale compensée = oui", "[OK]", "[OK]", "[Fermer]"});
  dialogue.doModal();
  EXPECT_TRUE(script.finished()) << script.transcript;
  EXPECT_EQ(nomsDe(*m_projets.currTable()), "A B C ");
  EXPECT_EQ(m_projets.currTable()->getData(2)->getCode(), 55);
  EXPECT_EQ(m_projets.currTable()->getData(2)->getZ(), Z_ABSENT);
  EXPECT_EQ(polylignes().size(), 1U);
}

}  // namespace
}  // namespace veltora
