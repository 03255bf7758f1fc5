#include "jobs/helmert.h"
#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/dialogs/helmert_dlg.h"
#include "calc/helmert/couples_fichier.h"
#include "calc/helmert/rapport_helmert.h"
#include "report/html_document.h"
#include "support/dialog_script.h"
#include "support/dossier_essai.h"
#include "support/golden.h"
#include "support/remarques.h"

#include <gtest/gtest.h>

#include <cmath>
#include <locale>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace veltora {
namespace {

using Points = std::vector<AcGePoint2d>;

/// Scale, rotation (bearings grow by it) and displacement of the origin, exactly.
Points portes(const Points& points, double echelle, double rotation, AcGeVector2d deplacement) {
  Points resultat;
  const double a = echelle * std::cos(rotation);
  const double b = echelle * std::sin(rotation);
  for (const AcGePoint2d& p : points) {
    resultat.emplace_back(a * p.x + b * p.y + deplacement.x, a * p.y - b * p.x + deplacement.y);
  }
  return resultat;
}

const Points kChamp = {{100, 200}, {400, 250}, {350, 600}, {80, 520}};

TEST(CalculerHelmert, ExactSimilaritiesComeBack) {
  struct Cas {
    const char* nom;
    double echelle, rotation;
    AcGeVector2d deplacement;
    AcGeVector2d origine;
  };
  const std::vector<Cas> cas = {
      {"identity", 1, 0, {0, 0}, {0, 0}},
      {"displacement", 1, 0, {5000, -70}, {0, 0}},
      {"quarter turn", 1, std::acos(0.0), {0, 0}, {0, 0}},
      {"nearly a half turn back", 2.5, -3.1, {10, 20}, {0, 0}},
      {"to national coordinates", 0.9996, 0.7, {650000, 6860000}, {0, 0}},
      {"at national coordinates", 1.0003, 0.01, {12, -34}, {650000, 6860000}},
  };
  for (const Cas& c : cas) {
    Points depart = kChamp;
    for (AcGePoint2d& p : depart) p = p + c.origine;
    const couplesHelmert couples{depart, portes(depart, c.echelle, c.rotation, c.deplacement)};
    resultatHelmert r;
    Points obtenus;
    ASSERT_TRUE(transformerHelmert(couples, obtenus, r)) << c.nom;
    // Without centring, the large coordinates cost digits.
    const double tolerance = c.origine.x > 0 ? 1e-4 : 1e-9;
    EXPECT_NEAR(r.echelle, c.echelle, tolerance) << c.nom;
    EXPECT_NEAR(r.rotation, c.rotation, tolerance) << c.nom;
    EXPECT_NEAR(r.ab.x, c.echelle * std::cos(c.rotation), tolerance) << c.nom;
    EXPECT_NEAR(r.ab.y, c.echelle * std::sin(c.rotation), tolerance) << c.nom;
    const AcGeMatrix3d matrice = matriceHelmert(depart, r);
    for (std::size_t i = 0; i < depart.size(); ++i) {
      EXPECT_LT(obtenus[i].distanceTo(couples.arrivee[i]), 500 * tolerance) << c.nom << " " << i;
      const AcGePoint3d p = matrice * AcGePoint3d(depart[i].x, depart[i].y, 7);
      EXPECT_LT(obtenus[i].distanceTo({p.x, p.y}), 1e-6) << c.nom << ": entities go where points go";
      EXPECT_NEAR(p.z, 7 * r.echelle, 1e-9) << c.nom;
    }
  }
}

TEST(CalculerHelmert, ResidualsAreThoseOfLeastSquares) {
  couplesHelmert couples{kChamp, portes(kChamp, 1.5, 0.3, {40, -20})};
  const AcGeVector2d bruits[4] = {{0.3, -0.1}, {-0.2, 0.25}, {0.05, 0.4}, {-0.35, -0.3}};
  for (std::size_t i = 0; i < 4; ++i) couples.arrivee[i] = couples.arrivee[i] + bruits[i];
  resultatHelmert r;
  Points obtenus;
  ASSERT_TRUE(transformerHelmert(couples, obtenus, r));
  const auto somme = [&](const Points& p) { return calculerEcarts(p, couples.arrivee).sommeCarres; };
  const double minimum = somme(obtenus);
  for (const double d : {-1e-3, 1e-3}) {  // any neighbour of the solution fits worse
    EXPECT_GT(somme(portes(obtenus, 1 + d, 0, {0, 0})), minimum);
    EXPECT_GT(somme(portes(obtenus, 1, d, {0, 0})), minimum);
    EXPECT_GT(somme(portes(obtenus, 1, 0, {d, 0})), minimum);
    EXPECT_GT(somme(portes(obtenus, 1, 0, {0, d})), minimum);
  }
}

TEST(CalculerHelmert, RefusesWhatDeterminesNothing) {
  const std::vector<couplesHelmert> cas = {{{}, {}},
                                           {kChamp, {{1, 2}}},
                                           {{{5, 5}}, {{6, 6}}},
                                           {{{5, 5}, {5, 5}, {5, 5}}, {{1, 1}, {2, 2}, {3, 3}}}};
  for (const couplesHelmert& couples : cas) {
    resultatHelmert r;
    r.echelle = -7.0;
    Points obtenus{{1, 1}};
    EXPECT_FALSE(transformerHelmert(couples, obtenus, r));
    EXPECT_EQ(r.echelle, -7.0);
    EXPECT_EQ(obtenus.size(), 1U);
    htmlDocument rapport;
    EXPECT_FALSE(rapportHelmert(couples, rapport));
    EXPECT_EQ(rapport.contenu(), htmlDocument().contenu()) << "the report stage is not run";
  }
}

TEST(CalculerHelmert, HelmertDeterminant) {
  // The determinant is (n * sum of the squared distances to the mean)^2, whatever the unit: 1.6e-11 here.
  const Points petits = {{0, 0}, {1e-3, 0}, {0, 1e-3}};
  resultatHelmert r;
  Points obtenus;
  EXPECT_FALSE(transformerHelmert({petits, petits}, obtenus, r)) << "sound pairs, a millimetre apart";
  EXPECT_TRUE(transformerHelmert({portes(petits, 10, 0, {0, 0}), petits}, obtenus, r));
}

/// Four pairs of a similarity with deviations of some units.
couplesHelmert couplesBruites() {
  couplesHelmert couples{kChamp, portes(kChamp, 2, 0.5, {1000, 2000})};
  couples.arrivee[0] = couples.arrivee[0] + AcGeVector2d(3, 0);
  couples.arrivee[2] = couples.arrivee[2] + AcGeVector2d(0, -5);
  return couples;
}

TEST(RapportHelmert, HelmertEmq) {
  htmlDocument rapport;
  const couplesHelmert couples = couplesBruites();
  ASSERT_TRUE(rapportHelmert(couples, rapport));
  EXPECT_TRUE(memeQueReference("rapport_helmert.html", rapport.contenu()));
  const ecartsHelmert grands = calculerEcarts({{0, 0}, {0, 0}}, {{3, 4}, {0, 12}});
  EXPECT_NEAR(grands.quadratique, std::sqrt((25.0 + 144.0) / 2 - 1.0), 1e-12);
  EXPECT_EQ(grands.inferieur, 5.0);
  EXPECT_EQ(grands.superieur, 12.0);
  EXPECT_EQ(grands.moyenne, 8.5);
  EXPECT_TRUE(std::isnan(calculerEcarts({{0, 0}}, {{0, 0.5}}).quadratique));
}

// ---- the file of pairs and the one call ----

TEST(LireCouples, ReadsNamesAndTellsWhatItIgnores) {
  const couplesNommes lus = lireCouples(
      "\xEF\xBB\xBF# x y X Y\r\n* autre\n\n  1 2 3 4\r\nÉté 1e2 -2. +3 .5\n\"P 2\" 1 2 3 4\n1 2 3\nA 1 2 3 "
      "x\nB 1 2 3 4 5\n"
      "C 1,5 2 3 4\nD 1 2 3 1e999\n");
  std::wstring noms;
  for (const std::wstring& nom : lus.noms) noms += nom + L"|";
  EXPECT_EQ(noms, L"ligne 4|Été|P 2|");
  EXPECT_EQ(lus.couples.depart[1], AcGePoint2d(100, -2));
  EXPECT_EQ(lus.couples.arrivee[1], AcGePoint2d(3, 0.5));
  ASSERT_EQ(lus.remarques.nombre(), 5U);
  EXPECT_EQ(phrasesDe(lus.remarques)[0], "ligne 7 : ignorée, « 1 2 3 » n'est pas de la forme [nom] x y X Y");
  EXPECT_EQ(base::toUtf8(lireCouples("\xC9t\xE9 1 2 3 4").noms.at(0)), "Été") << "Windows-1252";
}

/// A drawing whose prompts and dialogs take their lines from one script.
class Helmert : public ::testing::Test {
protected:
  Helmert() : m_ports(acedPorts()), m_ancien(acdbHostApplicationServices()->workingDatabase()) {
    base::setDossierTemporaire(m_dossier.chemin);
    acdbHostApplicationServices()->setWorkingDatabase(&m_dessin);
  }
  ~Helmert() override {
    base::setDossierTemporaire({});
    acedPorts() = m_ports;
    acdbHostApplicationServices()->setWorkingDatabase(m_ancien);
  }
  AcDbObjectId ajouter(AcDbEntity* entite) {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(m_dessin.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(espace->appendAcDbEntity(id, entite), Acad::eOk);
    entite->close();
    return id;
  }
  AcDbObjectId polyline(const Points& sommets) {
    auto* polyline = new AcDbPolyline();
    for (unsigned int i = 0; i < sommets.size(); ++i) polyline->addVertexAt(i, sommets[i]);
    return ajouter(polyline);
  }
  /// Works the dialog by these lines. @return what was printed and shown
  std::string mener(CHelmertDLG& dialogue, const std::vector<std::string>& lignes) {
    DialogScript script(lignes);
    acedPorts() = {};
    acedPorts().source = &script;
    acedPorts().sink = &script;
    dialogue.doModal();
    EXPECT_TRUE(script.finished()) << script.transcript;
    return script.transcript;
  }
  DossierEssai m_dossier;

private:
  AcEdPorts m_ports;
  AcDbDatabase* m_ancien;
  AcDbDatabase m_dessin;
};

const std::vector<std::string> kPoints = {"[Ajouter points]", "100,200", "1100,2200", "400,250",
                                          "1400,2250",        "350,600", "1350,2600", ""};

std::vector<std::string> suite(std::vector<std::string> debut, const std::vector<std::string>& fin) {
  debut.insert(debut.end(), fin.begin(), fin.end());
  return debut;
}

TEST_F(Helmert, PairsFromPointsAndTheirRemoval) {
  CHelmertDLG dialogue;
  mener(dialogue, suite(kPoints, {"Données/Liste: 2", "[Supprimer]", "[Fermer]"}));
  ASSERT_EQ(dialogue.couples().depart.size(), 2U);
  EXPECT_EQ(dialogue.couples().arrivee[1], AcGePoint2d(1350, 2600));
  EXPECT_EQ(dialogue.liste.cell(1, 0), L"2");
  EXPECT_EQ(dialogue.liste.cell(1, 3), L"1350.0000");
  EXPECT_EQ(dialogue.deplX.text(), L"") << "fewer than three pairs";
  mener(dialogue, {"[Tout effacer]", "[Ajouter points]", "1,1", "", "[Fermer]"});
  EXPECT_EQ(dialogue.liste.rowCount(), 0) << "half a pair is none";
}

TEST_F(Helmert, TheKeywordTakesThePlaceOfAnEntity) {
  ajouter(new AcDbLine({0, 0, 0}, {5, 0, 0}));
  const AcDbObjectId cercle = ajouter(new AcDbCircle({7, 8, 0}, {0, 0, 1}, 2.0));
  ajouter(new AcDbPoint({50, 60, 3}));
  CHelmertDLG dialogue;
  mener(dialogue, {"[Ajouter points]", "S", "DERNIER", "Select", "9,8", "", "[Fermer]"});
  ASSERT_TRUE(cercle.isValid());
  ASSERT_EQ(dialogue.couples().depart.size(), 1U);
  EXPECT_EQ(dialogue.couples().depart[0], AcGePoint2d(50, 60));
  EXPECT_EQ(dialogue.couples().arrivee[0], AcGePoint2d(7, 8));
  polyline({{0, 0}, {1, 1}});
  const std::string texte = mener(dialogue, {"[Ajouter points]", "S", "DERNIER", "", "[Fermer]"});
  EXPECT_NE(texte.find("Selection invalide"), std::string::npos);
}

TEST_F(Helmert, PairsFromPolylines) {
  polyline({{0, 0}, {10, 0}, {10, 20}});
  polyline({{100, 100}, {110, 100}, {110, 120}});
  polyline({{200, 0}, {210, 0}});
  ajouter(new AcDbLine({300, 0, 0}, {310, 0, 0}));
  CHelmertDLG dialogue;
  mener(dialogue, {"[Ajouter polyline]", "5,0", "105,100", "[Fermer]"});
  EXPECT_EQ(dialogue.liste.rowCount(), 3);
  EXPECT_EQ(dialogue.deplX.text() + L" " + dialogue.deplY.text(), L"100.0000 100.0000");
  EXPECT_NE(mener(dialogue, {"[Ajouter polyline]", "5,0", "205,0", "[Fermer]"})
                .find("Erreur, les deux polylines n'ont pas le meme nombre de sommets !"),
            std::string::npos);
  EXPECT_NE(mener(dialogue, {"[Ajouter polyline]", "305,0", "[Fermer]"}).find("Selection invalide"),
            std::string::npos);
  EXPECT_EQ(dialogue.liste.rowCount(), 3);
}

TEST_F(Helmert, HelmertCroisement) {
  CHelmertDLG dialogue;
  const couplesHelmert couples = couplesBruites();
  dialogue.ajouter(couples);
  resultatHelmert r;
  Points obtenus;
  ASSERT_TRUE(transformerHelmert(couples, obtenus, r));
  const double variance = calculerEcarts(obtenus, couples.arrivee).sommeCarres / 3.0;
  EXPECT_GT(std::abs(variance - r.echelle), 1.0);
  EXPECT_NEAR(base::lireReel(dialogue.echelle.text()), variance, 5e-5) << "where the caption says scale";
  EXPECT_EQ(dialogue.emq.text(), L"");
  EXPECT_NEAR(base::lireReel(dialogue.rotation.text()), r.rotation * 200 / std::acos(-1.0), 5e-5);
}

TEST_F(Helmert, ReportsAndAppliesToASelection) {
  const AcDbObjectId point = ajouter(new AcDbPoint({150, 150, 5}));
  const AcDbObjectId reste = ajouter(new AcDbPoint({-900, -900, 0}));
  CHelmertDLG dialogue;
  EXPECT_NE(mener(dialogue,
                  {"[Calculer et afficher les résultats]", "[OK]", "[Appliquer à une SELECTION]", "[Fermer]"})
                .find("Nombre insuffisant de points de calage"),
            std::string::npos);
  const std::string rapport = (m_dossier.chemin / "h.doc").string();
  const std::string texte =
      mener(dialogue,
            suite(kPoints, {"[Calculer et afficher les résultats]", "[Sauvegarder]", rapport, "[OK]",
                            "[Fermer]", "[Appliquer à une SELECTION]", "F 100,100 200,200", "", "[Fermer]"}));
  EXPECT_NE(m_dossier.lire("h.doc").find("Parametre B"), std::string::npos);
  EXPECT_NE(texte.find("Transformation terminee"), std::string::npos);
  const AcDbObjectPointer<AcDbPoint> porte(point, AcDb::kForRead);
  EXPECT_TRUE(porte->position().isEqualTo({1150, 2150, 5}, {1e-6, 1e-6}));
  const AcDbObjectPointer<AcDbPoint> intact(reste, AcDb::kForRead);
  EXPECT_EQ(intact->position(), AcGePoint3d(-900, -900, 0));
}

TEST_F(Helmert, TheExampleGivesWhatItShould) {
  const std::string exemples = VELTORA_SOURCE_DIR "/examples/";
  demandeHelmert demande;
  demande.fichier = exemples + "helmert.txt";
  resultatHelmertUnAppel r;
  ASSERT_TRUE(executerHelmert(demande, r)) << base::toUtf8(r.erreur);
  EXPECT_TRUE(r.remarques.empty());
  std::map<std::string, std::vector<double>> obtenus = {
      {"Échelle", {r.parametres.echelle}},
      {"Rotation", {r.parametres.rotation * 200 / std::acos(-1.0)}},
      {"Déplacement en X, Y", {r.parametres.deplacement.x, r.parametres.deplacement.y}},
      {"Paramètres A, B", {r.parametres.ab.x, r.parametres.ab.y}},
      {"Erreur inférieure", {r.ecarts.inferieur}},
      {"Erreur supérieure", {r.ecarts.superieur}},
      {"Erreur moyenne", {r.ecarts.moyenne}}};
  for (const residuHelmert& residu : r.residus) {
    obtenus[base::toUtf8(residu.nom)] = {residu.ecart.x, residu.ecart.y, residu.ecart.length()};
  }
  std::istringstream lignes(base::lireFichier(exemples + "helmert.attendu.txt").value_or(""));
  std::string ligne;
  std::size_t comparees = 0;
  while (std::getline(lignes, ligne)) {
    for (const auto& [nom, valeurs] : obtenus) {
      if (!ligne.starts_with(nom + " ")) continue;
      std::istringstream mots(ligne.substr(nom.size()));
      mots.imbue(std::locale::classic());
      const bool fin = nom == "Échelle" || nom == "Paramètres A, B";
      for (const double valeur : valeurs) {
        double attendue = 0;
        ASSERT_TRUE(mots >> attendue) << ligne;
        EXPECT_NEAR(valeur, attendue, nom == "Rotation" ? 1e-5 : fin ? 1e-6 : 1e-4) << ligne;
        ++comparees;
      }
    }
  }
  EXPECT_EQ(comparees, 21U);
}

TEST_F(Helmert, OneCallReportsAppliesAndSaysWhatIsWrong) {
  const AcDbObjectId point = ajouter(new AcDbPoint({100, 0, 0}));
  struct Cas {
    const char* nom;
    const char* octets;
    const char* erreur;
  };
  const std::vector<Cas> cas = {
      {"missing", nullptr, "fichier introuvable ou illisible"},
      {"two pairs", "1 2 3 4\nx\n1 3 3 5", "2 couples de points, il en faut au moins trois"},
      {"one place", "1 2 3 4\n1 2 3 5\n1 2 3 6", "transformation indéterminée"},
      {"good", "0 0 10 0\n5 5 5 5\n100 0 10 100\nC 0 100 -90 0", ""},
  };
  for (const Cas& c : cas) {
    demandeHelmert demande;
    demande.fichier = m_dossier.chemin / (std::string(c.nom) + ".txt");
    if (c.octets) m_dossier.ecrire(std::string(c.nom) + ".txt", c.octets);
    demande.rapport = m_dossier.chemin / "r.html";
    demande.appliquer = true;
    resultatHelmertUnAppel resultat;
    EXPECT_EQ(executerHelmert(demande, resultat), *c.erreur == '\0') << c.nom;
    EXPECT_NE(base::toUtf8(resultat.erreur).find(c.erreur), std::string::npos)
        << base::toUtf8(resultat.erreur);
    EXPECT_EQ(resultat.transformees, *c.erreur ? 0 : 1) << c.nom;
    EXPECT_EQ(m_dossier.lire("r.html") == "(absent)", *c.erreur != '\0') << c.nom;
  }
  const AcDbObjectPointer<AcDbPoint> porte(point, AcDb::kForRead);
  EXPECT_TRUE(porte->position().isEqualTo({10, 100, 0}, {1e-6, 1e-6})) << porte->position().x;
}

}  // namespace
}  // namespace veltora
