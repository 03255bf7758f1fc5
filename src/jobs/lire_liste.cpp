#include "jobs/lire_liste.h"

#include "base/files.h"
#include "base/paths.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "jobs/genre_fichier.h"
#include "points/exchange/table_obs_xyz.h"
#include "points/exchange/verifier_xyz.h"
#include "points/projets_topo.h"

#include <set>

namespace veltora {
namespace {

/// Rows that the user is shown.
constexpr std::size_t kLignesMontrees = 5;

reperesListe reperesDuDessin() {
  std::vector<placeXY> places;
  for (const listePointsDuDessin* table : tablesPoints->tablesListe)
    if (table)
      for (const pointDuDessin& point : *table->getData()) places.push_back({point.x, point.y});
  std::set<std::wstring> libelles;
  for (const codifPoint& ligne : getTableCodification().codes) libelles.insert(base::toLower(ligne.libelle));
  const auto estLibelle = [libelles](std::wstring_view texte) {
    return libelles.contains(base::toLower(base::trim(texte)));
  };
  return {rectangleDe(places), estLibelle};
}

/// What was met line by line, the doubts first: of many only the first ones are told.
void remarquerLignes(const base::Remarques& lues, const std::wstring& fichier, base::Remarques& remarques) {
  base::Remarques triees;
  for (const bool doutes : {true, false})
    for (const base::Remarque& remarque : lues)
      if (remarque.douteuse == doutes) triees.ajouter(remarque);
  const auto comptees = static_cast<int>(lues.nombre() - triees.nombre());
  if (lues.douteuses() && !triees.douteuses()) triees.douter(L"d'autres lignes sont à vérifier");
  triees.situer(fichier);
  remarques.citer(triees, [&fichier, comptees](int reste) {
    return fichier + L" : " + std::to_wstring(reste + comptees) + L" autres remarques";
  });
}

base::Remarques doutesDe(const std::vector<questionListe>& questions, const std::wstring& fichier) {
  base::Remarques doutes;
  for (const questionListe& question : questions) doutes.douter(question.phrase());
  doutes.situer(fichier);
  return doutes;
}

/// One reading of one file.
class Lecture {
public:
  Lecture(const demandeLectureListe& demande, listeLue& liste, resultatPoints& resultat)
      : m_demande(demande),
        m_liste(liste),
        m_resultat(resultat),
        m_fichier(base::texteDuChemin(demande.fichier)),
        m_options(demande.options) {}

  bool lire() {
    const std::optional<std::string> octets = base::lireFichier(m_demande.fichier);
    if (!octets) return m_resultat.echec(L"« " + m_fichier + L" » : fichier introuvable ou illisible");
    const std::wstring refus = refusDuGenre(m_fichier, *octets, genreFichier::xyz);
    if (!refus.empty()) return m_resultat.echec(refus);
    m_octets = *octets;
    m_reperes = reperesDuDessin();
    const bool xyz = base::toLower(m_fichier).ends_with(L".xyz");
    if (m_options.aucune() && (xyz || formeXyz(m_octets))) {
      const std::vector<questionListe> questions = verifierXyz(m_octets, m_reperes);
      if (xyz || questions.empty()) return motParMot(questions);
    }
    return reconnaitre();
  }

private:
  bool motParMot(const std::vector<questionListe>& questions) {
    tableObsXYZ lignes;
    lignes.colonneZCompte = true;
    lignes.lire(m_octets);
    remarquerLignes(lignes.remarques, m_fichier, m_resultat.remarques);
    if (lignes.lignes.empty()) return m_resultat.echec(L"« " + m_fichier + L" » : aucun point" + conseil());
    m_liste = {};
    for (pointXYZ& point : lignes.lignes) m_liste.lignes.push_back({std::move(point)});
    douter(questions);
    return true;
  }

  /// How a list that is no `.xyz` could be read.
  [[nodiscard]] std::wstring conseil() const {
    const formeListe forme = reconnaitreListe(m_octets, {}, m_reperes);
    if (!forme.trouvee()) return {};
    optionsListe options;
    options.colonnes = forme.colonnes;
    return L" ; la liste semble " + forme.description() + L" : " + texteOptions(options) +
           L" la fait lire ainsi";
  }

  bool reconnaitre() {
    for (;;) {
      m_forme = reconnaitreListe(m_octets, m_options, m_reperes);
      if (!m_forme.trouvee())
        return m_resultat.echec(L"« " + m_fichier +
                                L" » : aucun point, rien n'y ressemble à deux colonnes de coordonnées ; "
                                L"--colonnes et --separateur disent ce qui s'y trouve");
      if (!m_demande.montrer) break;
      apercuListe apercu{
          m_fichier, m_forme, m_forme.description(), {}, premieresLignes(m_octets, m_forme, kLignesMontrees)};
      for (const roleColonne role : m_forme.colonnes) apercu.roles.push_back(nomRole(role));
      const suiteListe suite = m_demande.montrer(apercu, m_options);
      if (suite == suiteListe::kAbandonner) return m_resultat.echec(L"abandonné, rien n'est placé");
      if (suite == suiteListe::kContinuer) break;
    }
    m_liste = lireListe(m_octets, m_forme);
    remarquerLignes(m_liste.remarques, m_fichier, m_resultat.remarques);
    douter(m_forme.questions);
    if (m_liste.lignes.empty()) return m_resultat.echec(L"« " + m_fichier + L" » : aucun point");
    return true;
  }

  void douter(const std::vector<questionListe>& questions) {
    m_resultat.remarques.ajouter(doutesDe(questions, m_fichier));
  }

  const demandeLectureListe& m_demande;
  listeLue& m_liste;
  resultatPoints& m_resultat;
  std::wstring m_fichier;
  optionsListe m_options;
  std::string m_octets;
  reperesListe m_reperes;
  formeListe m_forme;
};

}  // namespace

bool nommerColonnes(std::wstring_view texte, optionsListe& options, std::wstring& raison) {
  return lireColonnes(texte, options.colonnes, raison);
}

bool lireListePoints(const demandeLectureListe& demande, listeLue& liste, resultatPoints& resultat) {
  return Lecture(demande, liste, resultat).lire();
}

base::Remarques doutesXyz(std::wstring_view nom, std::string_view octets) {
  if (!tablesPoints) return {};
  return doutesDe(verifierXyz(octets, reperesDuDessin()), std::wstring(nom));
}

}  // namespace veltora
