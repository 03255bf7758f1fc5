#include "base/format.h"
#include "base/text.h"
#include "calc/dialogs/moindres_carres_dlg.h"
#include "jobs/reseau.h"
#include "support/dialog_script.h"
#include "support/projet_essai.h"
#include "support/remarques.h"

#include <numeric>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace veltora {
namespace {

const std::string kExemples = VELTORA_SOURCE_DIR "/examples/";

class ReseauPlace : public ProjetEssai {
protected:
  [[nodiscard]] std::string fichierMc(const std::string& octets) const { return fichier("r.mc", octets); }
  void mener(CDlgMoindresCarres& dialogue, const std::vector<std::string>& lignes) {
    DialogScript script(lignes);
    dialogue.doModal();
    EXPECT_TRUE(script.finished()) << script.transcript;
  }
  /// Name, X, Y, Z and code of each point of the table, sorted.
  std::string table() {
    std::multiset<std::string> lignes;
    for (const pointDuDessin& p : *m_projets.currTable()->getData()) {
      const std::string z = p.z == Z_ABSENT ? "-" : base::formater("%.2f", p.z);
      lignes.insert(base::formater("%s %.2f %.2f %s %d\n", p.nomPoint, p.x, p.y, z, p.code));
    }
    return std::accumulate(lignes.begin(), lignes.end(), std::string());
  }
  resultatReseau lancer(const std::string& octets, bool placer = false) {
    demandeReseau demande;
    demande.fichier = fichierMc(octets);
    demande.journal = m_dossier.chemin / "journal.txt";
    demande.placer = placer;
    resultatReseau resultat;
    const bool reussi = executerReseau(demande, resultat);
    EXPECT_EQ(reussi, resultat.erreur.empty());
    return resultat;
  }
};

// P is seen from A and B at half a right angle: X 50, Y 50.
const std::string kDeuxVisees =
    "a 0 0 100\nb 100 0\nOBS\na nord p 50 . 4 2\nb nord p 350\na \"x y\" b 20 70.5 . . 3\na nord b . . -1\n";

TEST_F(ReseauPlace, DonneesListsWhatWasRead) {
  CDlgMoindresCarres dialogue;
  mener(dialogue, {"[Données]", fichierMc(kDeuxVisees), "[Fermer]"});
  EXPECT_EQ(dialogue.lecture.text(),
            L"XYZ"
            L"\r\n0 Point          A  X=        0.0000 Y=        0.0000 Z=      100.0000"
            L"\r\n1 Point          B  X=      100.0000 Y=        0.0000 Z: Inconnu"
            L"\r\nPoints à calculer:"
            L"\r\nPoint 2          P  "
            L"\r\nPoint 3        X Y  "
            L"\r\nObservations"
            L"\r\nAngle NORD A P =        50.0000 (grades)"
            L"\r\nDénivellée A vers P =        4.0000"
            L"\r\nAngle NORD B P =       350.0000 (grades)"
            L"\r\nAngle X Y A B =        20.0000 (grades)"
            L"\r\nDistance A-B =        70.5000 "
            L"\r\nDénivellée A vers B =       -1.0000");
  EXPECT_EQ(dialogue.journal.text(), L"");
  EXPECT_TRUE(dialogue.journal.readOnly() && dialogue.lecture.readOnly());
  const std::wstring lu = dialogue.lecture.text();
  mener(dialogue, {"[Données]", "", "[Fermer]"});
  EXPECT_EQ(dialogue.lecture.text(), lu) << "cancelled";
  mener(dialogue, {"[Données]", fichierMc("OBS\na b\n"), "[Fermer]"});
  EXPECT_EQ(dialogue.lecture.text(), L"XYZ\r\nPoints à calculer:\r\nObservations") << "nothing, no message";
}

TEST_F(ReseauPlace, LogsOfTheButtonsItererInerte) {
  CDlgMoindresCarres dialogue;
  mener(dialogue, {"[Données]", fichierMc(kDeuxVisees), "[Calculer X,Y]", "[Fermer]"});
  const std::wstring plan = dialogue.journal.text();
  // Two rows for two unknowns: the second pass, which is shown, has nothing left to correct. X Y, which names
  // no other point, stays out, so that rows 0 and 1 are those of the bearings.
  const std::vector<std::wstring> debuts = {L"Vecteur Solution (2 elements)",
                                            L"0 | ",
                                            L"1 | ",
                                            L"---------",
                                            L"Résidu pour l'observation 0  =",
                                            L"Résidu pour l'observation 1  =",
                                            L"Résidu pour l'observation 2  =",
                                            L"XYZ:",
                                            L"[P]\t(       50.0000\t       50.0000)",
                                            L"",
                                            L"Valeur du chi 2=  0.0000000000"};
  std::size_t place = 0;
  for (const std::wstring& debut : debuts) {
    EXPECT_EQ(plan.substr(place, debut.size() + 2), L"\r\n" + debut) << base::toUtf8(plan);
    place = plan.find(L"\r\n", place + 2);
  }
  EXPECT_EQ(place, std::wstring::npos) << "nothing else";
  mener(dialogue, {"[Itérer]", "[Fermer]"});
  EXPECT_EQ(dialogue.journal.text(), plan);
  mener(dialogue, {"[Calculer Z]", "[Fermer]"});
  EXPECT_EQ(dialogue.journal.text(),
            L"\r\nCalcul du point B  à l'aide de 1 equations "
            L"\r\nSolution trouvée: X=      100.0000 Y=        0.0000 Z=       99.0000"
            L"\r\nCalcul du point P  à l'aide de 1 equations "
            L"\r\nSolution trouvée: X=       50.0000 Y=       50.0000 Z=      104.0000"
            L"\r\nCalcul du point X Y  à l'aide de 0 equations "
            L"\r\nCalcul du point X Y  à l'aide de 0 equations "
            L"\r\nVecteur Solution (2 elements)\r\n0 |  99.0000000000 |\r\n1 | 104.0000000000 |\r\n---------"
            L"\r\n---------\r\n---------\r\nXYZ:"
            L"\r\n\t[B]\t(      100.0000\t        0.0000\t       99.0000\t)"
            L"\r\n\t[P]\t(       50.0000\t       50.0000\t      104.0000\t)"
            L"\r\nValeur du chi 2=20617.0000000000");
  mener(dialogue, {"[Clear]", "[Fermer]"});
  EXPECT_EQ(dialogue.journal.text(), L"");
}

TEST_F(ReseauPlace, PlacesKnownAndComputedPoints) {
  CDlgMoindresCarres dialogue;
  const std::string reseau = fichierMc(
      "canevaslong1 0 0 100\nb 100 0\nOBS\ncanevaslong1 nord calculelong1 50 . 4\nb nord calculelong1 350\n"
      "b nord enhauteur . . 2\n");
  mener(dialogue, {"[Données]", reseau, "[Placer !!!]", "[Placer Canevas]", "[Fermer]"});
  EXPECT_EQ(table(), "B 100.00 0.00 - 100\nCANEVASLO 0.00 0.00 100.00 100\n") << "nothing is computed yet";
  mener(dialogue, {"[Calculer X,Y]", "[Placer !!!]", "[Placer !!!]", "[Fermer]"});
  EXPECT_EQ(table(), "B 100.00 0.00 - 100\nCALCULELO 50.00 50.00 - 100\nCANEVASLO 0.00 0.00 100.00 100\n")
      << "placed once, replaced the second time";
  mener(dialogue, {"[Calculer Z]", "[Placer !!!]", "[Placer Canevas]", "[Fermer]"});
  EXPECT_NE(table().find("CALCULELO 50.00 50.00 104.00 100\n"), std::string::npos) << table();
  EXPECT_EQ(table().find("ENHAUTEUR"), std::string::npos) << "a height has no place in the plan";
  EXPECT_EQ(m_projets.currTable()->nbPoint(), 3);
}

TEST_F(ReseauPlace, TheWeightsAreThoseOfTheNetwork) {
  CDlgMoindresCarres dialogue;
  mener(dialogue, {"[Données]", fichierMc(kDeuxVisees), "[Poids]", "Liste: 3",
                   "Poids (vider pour calcul selon formules) = 5", "[Fixer]", "[Fermer]", "[Fermer]"});
  EXPECT_EQ(dialogue.reseau().observations.GetAt(2).poids, 5.0);
}

TEST_F(ReseauPlace, AnObservationFromTheNorthLeavesTheDialogByItsException) {
  CDlgMoindresCarres dialogue;
  DialogScript script({"[Données]", fichierMc("A 0 0\nOBS\nNORD A P 10 5\n"), "[Fermer]"});
  EXPECT_THROW(dialogue.doModal(), std::invalid_argument);
  EXPECT_FALSE(dialogue.isOpen());
}

TEST_F(ReseauPlace, OneCallComputesLogsAndPlaces) {
  for (int fois = 0; fois < 2; ++fois) {
    const resultatReseau r = lancer(kDeuxVisees + "p nord haut . . 1\n", true);
    EXPECT_EQ(base::toUtf8(r.erreur), "");
    EXPECT_TRUE(r.convergence);
    EXPECT_EQ(r.places, 3);
    ASSERT_EQ(r.calcules.size(), 3U);
    EXPECT_EQ(r.calcules[0].nom, L"B") << "its height";
    EXPECT_NEAR(r.calcules[1].x, 50.0, 1e-9);
    EXPECT_NEAR(r.calcules[1].z, 104.0, 1e-9);
    EXPECT_EQ(r.calcules[2].x, Z_ABSENT);
    EXPECT_NEAR(r.calcules[2].z, 105.0, 1e-9);
    EXPECT_EQ(table(), "A 0.00 0.00 100.00 100\nB 100.00 0.00 99.00 100\nP 50.00 50.00 104.00 100\n");
  }
  const std::string journal = m_dossier.lire("journal.txt");
  EXPECT_EQ(journal.substr(0, 34), base::narrow(L"Première passe\r\nCalcul du point P "));
  EXPECT_NE(journal.find("\r\n\r\nPasse 1\r\nVecteur Solution (2 elements)\r\n"), std::string::npos);
  EXPECT_NE(journal.find("\r\n\r\nAltitudes\r\nCalcul du point B"), std::string::npos);
  EXPECT_EQ(journal.substr(journal.size() - 2), "\r\n");
}

TEST_F(ReseauPlace, OneCallTellsEachPointThatGotNoCoordinatesAndWhy) {
  const std::string canevas = "A 0 0\nB 100 0\nC 100 100\nD 0 100\nOBS\nA NORD Q 50\nB NORD Q 350\n";
  struct Cas {
    const char* nom;
    const char* observations;
    const char* raison;
  };
  const Cas cas[] = {
      {"nothing", "P R S 50\n", "aucune de ses observations ne s'appuie sur assez de points calculables"},
      {"no plan", "A NORD P . . 2\n", "il n'a que des dénivelées, ni angle ni distance"},
      {"reference of a line without measure", "A P B . . .\n",
       "aucune observation d'angle ou de distance ne le concerne"},
      {"one", "A NORD P 20\n", "une seule observation le rattache à des points calculables, il en faut deux"},
      {"two circles", "A NORD P . 70\nB NORD P . 80\n",
       "se coupent en deux endroits et rien ne les départage"},
      {"three directions", "P A B 50\nP B C 50\nP C D 50\nA NORD P 20\nB NORD P 350\n",
       "3 directions partent de lui vers des points calculables"},
      {"parallels", "A NORD P 20\nB NORD P 20\n", "ses directions sont parallèles ou confondues"},
      {"too far apart", "A NORD P . 10\nB NORD P . 20\n", "ses observations ne se coupent pas"},
  };
  for (const Cas& c : cas) {
    const resultatReseau r = lancer(canevas + c.observations);
    const std::string texte = texteDe(r.remarques);
    EXPECT_NE(texte.find("r.mc, point P sans coordonnées : "), std::string::npos) << c.nom << "\n" << texte;
    EXPECT_NE(texte.find(c.raison), std::string::npos) << c.nom << "\n" << texte;
    EXPECT_EQ(r.calcules.size(), 1U) << c.nom;
  }
  EXPECT_NE(texteDe(lancer("OBS\nA NORD P 20\n").remarques)
                .find("point A sans coordonnées : le réseau n'a aucun point"),
            std::string::npos);
}

TEST_F(ReseauPlace, OneCallTellsWhatTheLogDoesNot) {
  struct Cas {
    const char* nom;
    std::string octets;
    const char* erreur;
    const char* remarque;
  };
  const std::string deux = "A 0 0 1\nB 100 0\nOBS\nA NORD P 50\nB NORD P 350\n";
  const Cas cas[] = {
      {"empty", "", "aucun point", ""},
      {"no observation", "A 0 0\n", "aucune observation", ""},
      {"known points only", "A 0 0\nB 1 1\nOBS\nA NORD B 50 1\n", "aucun point à calculer", ""},
      {"none computed", "A 0 0\nOBS\nA NORD P 50\n", "aucun point n'a pu être calculé", "point P sans"},
      {"north as station", deux + "NORD A P 5\n", "« NORD » ne peut être ni station ni point visé",
       "r.mc, ligne 6 : « NORD » n'a pas de sens comme station ou point visé, « NORD A P 5 »"},
      {"north as target", deux + "A B NORD . . 5\n", "« NORD » ne peut être", "ligne 6"},
      {"unknown unit", "ANGLES MILS\n" + deux, "", "ligne 1 : unité d'angle inconnue « MILS »"},
      {"name given twice", "A 5 5\n" + deux, "", "ligne 2 : le point « A » figure déjà plus haut"},
      {"ignored line", deux + "A B P\n", "", "ligne 6 : ignorée, « A B P »"},
      {"no numbers", deux + "A B Q 1,5 x .5 1e3 12. --1 7 8\n", "",
       "r.mc, ligne 6 : « 7 » est en trop, ignoré\nr.mc, ligne 6 : « 8 » est en trop, ignoré\n"
       "r.mc, ligne 6 : « 1,5 » n'est pas un nombre, lu comme absent\n"
       "r.mc, ligne 6 : « X » n'est pas un nombre, lu comme absent\n"
       "r.mc, ligne 6 : « .5 » n'est pas un nombre, lu comme absent\n"},
      {"no numbers for weights", deux + "A B Q 1 2 3 1e3 12. --1\n", "",
       "« 1E3 » n'est pas un nombre, lu comme absent\nr.mc, ligne 6 : « 12. » n'est pas un nombre, lu comme "
       "absent\nr.mc, ligne 6 : « --1 » n'est pas"},
      {"north as known point", "NORD 5 5\n" + deux, "", "ligne 1 : « NORD » désigne le nord"},
      {"long line", deux + "* " + std::string(5000, 'x') + "\n", "",
       "ligne 6 : coupée après 1024 caractères"},
      {"equivalent", deux + "A NORD B . 100\nB NORD A . 99\n", "",
       "Distance B-A = 99.0000 : laissée de côté, équivalente à Distance A-B = 100.0000"},
      {"weights", deux + "A NORD B . 100 . . 7\n", "", "1 poids donnés dans le fichier : sans effet"},
      {"self sight", deux + "P NORD P 10\n", "aucun point n'a pu",
       "Angle NORD P P = 10.0000 (grades) : le point se vise"},
      {"self reference", deux + "A A P 10\n", "", "la station est sa propre référence"},
      {"zero distance", deux + "A NORD P . 0\n", "", "Distance A-P = 0.0000 : distance nulle ou négative"},
      {"no height known", "A 0 0\nB 100 0\nOBS\nA NORD P 50 . 2\nB NORD P 350\n", "",
       "dénivelées sans emploi : aucun point connu n'a d'altitude"},
      {"heights apart", deux + "R NORD P . . 2\n", "", "point R sans altitude"},
      {"other side of 0", "A 0 0\nB 100 0\nOBS\nA NORD P 0.001 100\nB NORD P 349.99 141.42\n", "",
       "l'écart compte comme un tour entier"},
      {"tangent circles", "A 0 0\nB 100 0\nOBS\nA NORD P . 50\nB NORD P . 50\n", "",
       "le système est singulier : tous les points gardent leurs coordonnées provisoires"},
      {"the point at fault", "A 0 0\nB 100 0\nOBS\nA NORD P . 50\nB NORD P . 50\nA NORD Q 50 70\n", "",
       "observations insuffisantes pour fixer P (ou"},
      {"hidden singularity", "A 0 0\nB 30 40\nOBS\nA NORD P . 20\nB NORD P . 30\n", "",
       "observations insuffisantes pour fixer P (ou"},
  };
  for (const Cas& c : cas) {
    const resultatReseau r = lancer(c.octets);
    EXPECT_NE(base::toUtf8(r.erreur).find(c.erreur), std::string::npos) << c.nom << base::toUtf8(r.erreur);
    EXPECT_EQ(r.erreur.empty(), *c.erreur == '\0') << c.nom << base::toUtf8(r.erreur);
    EXPECT_NE(texteDe(r.remarques).find(c.remarque), std::string::npos) << c.nom << "\n"
                                                                        << texteDe(r.remarques);
  }
}

TEST_F(ReseauPlace, OneCallLeavesNothingHalfDone) {
  demandeReseau demande;
  demande.placer = true;
  resultatReseau resultat;
  demande.fichier = m_dossier.chemin / "absent.mc";
  EXPECT_FALSE(executerReseau(demande, resultat));
  EXPECT_NE(resultat.erreur.find(L"fichier introuvable ou illisible"), std::wstring::npos);
  demande.fichier = fichierMc(kDeuxVisees);
  demande.journal = m_dossier.chemin / "absent/j.txt";
  EXPECT_FALSE(executerReseau(demande, resultat));
  EXPECT_NE(resultat.erreur.find(L"absent/j.txt"), std::wstring::npos);
  EXPECT_EQ(table(), "");
}

}  // namespace
}  // namespace veltora
