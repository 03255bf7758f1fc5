#include "base/format.h"
#include "base/text.h"
#include "calc/dialogs/moindres_carres_dlg.h"
#include "codes/table_codification.h"
#include "jobs/reseau.h"
#include "support/case_rows.h"
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
  ReseauPlace() {
    ecrireBlocs();
    // The code table outlives the installation folder of the test that filled it.
    getTableCodification().getOuCreerCode(kStationCode).chemin = L"biblio\\varnblk3.dwg";
  }
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

/// The file that a cell of the case file stands for: its lines, "deux" as told there, "@n" for n letters.
std::string fichierDe(const std::string& cellule) {
  std::string texte = cellule;
  for (std::size_t at = 0; (at = texte.find(" // ")) != std::string::npos;) texte.replace(at, 4, "\n");
  if (const std::size_t at = texte.find("deux"); at != std::string::npos)
    texte.replace(at, 4, "A 0 0 1\nB 100 0\nOBS\nA NORD P 50\nB NORD P 350");
  if (const std::size_t at = texte.find('@'); at != std::string::npos)
    texte.replace(at, std::string::npos, std::string(std::stoul(texte.substr(at + 1)), 'x'));
  return texte + "\n";
}

// P is seen from A and B at half a right angle: X 50, Y 50.
const std::string kDeuxVisees =
    "a 0 0 100\nb 100 0\nOBS\na nord p 50 . 4 2\nb nord p 350\na \"x y\" b 20 100 . . 3\na nord b . . -1\n";

// What the other buttons do is told in the scenario reseau_dialogue.
TEST_F(ReseauPlace, ItererInerte) {
  CDlgMoindresCarres dialogue;
  mener(dialogue, {"[Données]", fichierMc(kDeuxVisees), "[Calculer X,Y]", "[Fermer]"});
  const std::wstring journal = dialogue.journal.text();
  EXPECT_NE(journal, L"");
  mener(dialogue, {"[Itérer]", "[Fermer]"});
  EXPECT_EQ(dialogue.journal.text(), journal);
}

TEST_F(ReseauPlace, CalculerZSeul) {
  const std::string sansHauteur = "A 0 0 100\nB 100 0\nOBS\nA NORD P 50\nB NORD P 350\n";
  const struct {
    std::string fichier;
    std::vector<std::string> boutons;
    std::string table;
  } cas[] = {
      {kDeuxVisees, {"[Calculer Z]"}, ""},
      {sansHauteur, {"[Calculer X,Y]", "[Calculer Z]"}, ""},
      {sansHauteur, {"[Calculer Z]", "[Calculer X,Y]"}, "P 50.00 50.00 - 100\n"},
  };
  for (const auto& c : cas) {
    m_projets.currTable()->getData()->RemoveAll();
    CDlgMoindresCarres dialogue;
    std::vector<std::string> lignes{"[Données]", fichierMc(c.fichier)};
    lignes.insert(lignes.end(), c.boutons.begin(), c.boutons.end());
    lignes.insert(lignes.end(), {"[Placer !!!]", "[Fermer]"});
    mener(dialogue, lignes);
    EXPECT_EQ(table(), c.table) << c.boutons[0] << " " << c.fichier;
  }
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
  EXPECT_NE(journal.find("\r\n\r\nPasse 1\r\nVecteur Vecteur Solution (2 elements)\r\n"), std::string::npos);
  EXPECT_NE(journal.find("\r\n\r\nAltitudes\r\nCalcul du point B"), std::string::npos);
  EXPECT_EQ(journal.substr(journal.size() - 2), "\r\n");
}

TEST_F(ReseauPlace, OneCallTellsEachPointThatGotNoCoordinatesAndWhy) {
  const std::string canevas = "A 0 0\nB 100 0\nC 100 100\nD 0 100\nOBS\nA NORD Q 50\nB NORD Q 350\n";
  for (const CaseRow& cas : caseRows("calc/cases/network.txt", "points without coordinates")) {
    const resultatReseau r = lancer(canevas + fichierDe(cas[0]));
    const std::string texte = texteDe(r.remarques);
    EXPECT_NE(texte.find("r.mc, point P sans coordonnées : "), std::string::npos) << cas << "\n" << texte;
    EXPECT_NE(texte.find(cas[1]), std::string::npos) << cas << "\n" << texte;
    EXPECT_EQ(r.calcules.size(), 1U) << cas;
  }
  EXPECT_NE(texteDe(lancer("OBS\nA NORD P 20\n").remarques)
                .find("point A sans coordonnées : le réseau n'a aucun point"),
            std::string::npos);
}

TEST_F(ReseauPlace, OneCallTellsWhatTheLogDoesNot) {
  for (const CaseRow& cas : caseRows("calc/cases/network.txt", "what the log does not tell")) {
    const resultatReseau r = lancer(fichierDe(cas[0]));
    EXPECT_NE(base::toUtf8(r.erreur).find(cas[1]), std::string::npos) << cas << base::toUtf8(r.erreur);
    EXPECT_EQ(r.erreur.empty(), cas[1].empty()) << cas << base::toUtf8(r.erreur);
    EXPECT_NE(texteDe(r.remarques).find(cas[2]), std::string::npos) << cas << "\n" << texteDe(r.remarques);
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
