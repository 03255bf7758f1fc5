#include "points/exchange/forme_liste.h"

#include "base/format.h"
#include "base/numbers.h"
#include "core/valider_nombre.h"
#include "points/exchange/colonnes_devinees.h"
#include "points/exchange/echantillon_liste.h"

#include <algorithm>
#include <array>
#include <map>

namespace veltora {
namespace {

using Champs = std::vector<champListe>;

/// Part of the best one's good lines that a separator needs to be preferred to it.
constexpr double kPresqueAutant = 0.9;
/// Part of the lines that have a column when its fields are parted by blanks.
constexpr double kPartColonne = 0.3;
/// Most digits that stand behind a decimal comma.
constexpr std::size_t kDecimalesVirgule = 6;

struct mesureSeparateur {
  char separateur = '\0';
  int bonnes = 0;   ///< lines with two numbers or more
  int nombres = 0;  ///< on them
};

mesureSeparateur mesurer(const echantillonListe& lignes, char separateur, char decimale) {
  mesureSeparateur mesure{separateur};
  Champs champs;
  for (const auto& ligne : lignes.lignes) {
    decouperLigne(ligne.texte, separateur, champs);
    const int nombres = compterNombres(champs, decimale);
    if (nombres < 2) continue;
    ++mesure.bonnes;
    mesure.nombres += nombres;
  }
  return mesure;
}

std::wstring nomSeparateur(char separateur) {
  switch (separateur) {
    case ';':
      return L"des points-virgules";
    case ',':
      return L"des virgules";
    case '\t':
      return L"des tabulations";
    default:
      return L"des blancs";
  }
}

bool chiffres(std::string_view texte) {
  return !texte.empty() && texte.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Two groups of digits that a blank parts as it parts thousands: "652 318,42".
bool milliersCoupes(std::string_view tete, std::string_view suite) {
  return tete.size() <= 3 && chiffres(tete) && suite.find_first_of(",.") == 3 && chiffres(suite.substr(0, 3));
}

/// Finds the form of a list, one thing after the other: separator, decimal sign, titles, columns.
class Reconnaissance {
public:
  Reconnaissance(std::string_view octets, const optionsListe& options, const reperesListe& reperes)
      : m_lignes(octets), m_options(options), m_reperes(reperes) {
    m_forme.codesTexte = m_forme.codesLibelles = options.codesTexte;
    m_forme.separateur = options.separateur;
  }

  formeListe reconnaitre() {
    if (!m_forme.separateur && !chercherSeparateur()) return std::move(m_forme);
    chercherDecimale();
    chercherTitres();
    if (m_lignesPoints.empty()) return std::move(m_forme);
    virguleDouble();
    compter();
    blancsDouteux();
    chercherColonnes();
    return std::move(m_forme);
  }

private:
  bool chercherSeparateur() {
    constexpr std::array<char, 4> kSeparateurs{';', '\t', ',', ' '};
    std::array<mesureSeparateur, 4> mesures;
    for (std::size_t i = 0; i < mesures.size(); ++i)
      mesures[i] = mesurer(m_lignes, kSeparateurs[i], m_options.decimale);
    const auto moins = [](const auto& a, const auto& b) { return a.bonnes < b.bonnes; };
    const int meilleures = std::max_element(mesures.begin(), mesures.end(), moins)->bonnes;
    if (meilleures == 0) return false;
    const auto assez = [meilleures](const mesureSeparateur& m) {
      return m.bonnes >= kPresqueAutant * meilleures;
    };
    const mesureSeparateur* choisi = &*std::find_if(mesures.begin(), mesures.end(), assez);
    const mesureSeparateur& blancs = mesures[3];
    if (choisi->separateur == ',' && assez(blancs)) {
      if (blancs.nombres == choisi->nombres) demanderSeparateur();
      if (blancs.nombres > choisi->nombres) choisi = &blancs;
    }
    m_forme.separateur = choisi->separateur;
    return true;
  }
  void demanderSeparateur() {
    questionListe question{L"séparée par des virgules ou par des blancs", {}};
    for (const char separateur : {',', ' '}) {
      optionsListe options = m_options;
      options.separateur = separateur;
      question.reponses.push_back({L"par " + nomSeparateur(separateur), options});
    }
    m_forme.questions.push_back(std::move(question));
  }

  /// Numbers that only one of the signs explains decide.
  void chercherDecimale() {
    m_forme.decimale = m_options.decimale;
    if (m_forme.decimale) return;
    int virgules = 0;
    int points = 0;
    Champs champs;
    for (const auto& ligne : m_lignes.lignes) {
      decouperLigne(ligne.texte, m_forme.separateur, champs);
      for (const champListe& champ : champs) {
        const bool virgule = estNombre(champ, ',');
        if (virgule == estNombre(champ, '.')) continue;
        (virgule ? virgules : points) += 1;
      }
    }
    m_forme.decimale = virgules > points ? ',' : '.';
  }

  /// The first line with two numbers has the first point; in front of it may stand titles, and other text.
  void chercherTitres() {
    Champs champs;
    std::size_t i = 0;
    for (; i < m_lignes.lignes.size(); ++i) {
      decouperLigne(m_lignes.lignes[i].texte, m_forme.separateur, champs);
      if (compterNombres(champs, m_forme.decimale) >= 2) break;
    }
    if (i == m_lignes.lignes.size()) return;
    m_forme.premiereLigne = m_lignes.lignes[i].numero;
    m_lignesPoints.assign(m_lignes.lignes.begin() + static_cast<std::ptrdiff_t>(i), m_lignes.lignes.end());
    if (i == 0) return;
    const std::size_t largeur = champs.size();
    decouperLigne(m_lignes.lignes[i - 1].texte, m_forme.separateur, champs);
    if (m_forme.separateur == ' ' && champs.size() != largeur) return;
    std::vector<std::wstring> titres;
    for (const champListe& champ : champs) titres.push_back(m_lignes.large(champ.texte));
    m_titres = lireTitres(titres);
    if (m_titres.reconnus == 0 && !m_titres.geographiques) return;
    m_forme.ligneTitres = m_lignes.lignes[i - 1].numero;
    m_forme.titres = std::move(titres);
  }

  /// A comma that parts columns, and perhaps decimals too.
  void virguleDouble() {
    if (m_forme.separateur != ',' || m_options.decimale == '.') return;
    const std::size_t coordonnees = coordonneesEnDeux();
    if (coordonnees == 0) return;
    const std::size_t largeur =
        m_options.colonnes.empty() ? m_forme.titres.size() : m_options.colonnes.size();
    if (m_options.decimale == ',' || (largeur > 0 && largeur + coordonnees == m_largeurPaires)) {
      m_forme.decimale = ',';
      m_forme.deuxChamps = true;
      return;
    }
    if (largeur == m_largeurPaires) return;
    questionListe question{L"la virgule sépare les colonnes, et peut-être aussi les décimales", {}};
    for (const char decimale : {'.', ','}) {
      optionsListe options = m_options;
      options.decimale = decimale;
      question.reponses.push_back(
          {decimale == '.' ? L"des colonnes seulement" : L"des décimales aussi", options});
    }
    m_forme.questions.push_back(std::move(question));
  }

  /// How many coordinates the fields would make by twos, 0 when they cannot.
  std::size_t coordonneesEnDeux() {
    std::size_t moins = 3;
    Champs champs;
    for (const auto& ligne : m_lignesPoints) {
      decouperLigne(ligne.texte, ',', champs);
      if (compterNombres(champs, '.') < 2) continue;
      const std::size_t debut = debutPaires(champs);
      m_debutPaires = m_largeurPaires == 0 ? debut : m_debutPaires;
      m_largeurPaires = std::max(m_largeurPaires, champs.size());
      if (debut != m_debutPaires) return 0;
      moins = std::min(moins, pairesDepuis(champs, debut));
    }
    return m_largeurPaires > 0 && moins >= 2 ? moins : 0;
  }
  static bool paire(const Champs& champs, std::size_t i) {
    if (i + 1 >= champs.size() || champs[i].entreGuillemets || champs[i + 1].entreGuillemets) return false;
    std::string_view entier = champs[i].texte;
    if (entier.starts_with('-')) entier.remove_prefix(1);
    return chiffres(entier) && chiffres(champs[i + 1].texte) &&
           champs[i + 1].texte.size() <= kDecimalesVirgule;
  }
  static std::size_t pairesDepuis(const Champs& champs, std::size_t debut) {
    std::size_t nombre = 0;
    while (nombre < 3 && paire(champs, debut + 2 * nombre)) ++nombre;
    return nombre;
  }
  /// A number of the point goes first, unless only a reading without one comes out even.
  static std::size_t debutPaires(const Champs& champs) {
    return pairesDepuis(champs, 1) >= 2 || pairesDepuis(champs, 0) < 2 ? 1 : 0;
  }

  /// The fields of a line as the form has them.
  void decouper(std::string_view ligne, Champs& champs) const {
    decouperLigne(ligne, m_forme.separateur, champs);
    if (!m_forme.deuxChamps) return;
    for (std::size_t i = m_debutPaires, n = 0; n < 3 && paire(champs, i); ++i, ++n) {
      const char* debut = champs[i].texte.data();
      const char* fin = champs[i + 1].texte.data() + champs[i + 1].texte.size();
      champs[i].texte = {debut, static_cast<std::size_t>(fin - debut)};
      champs.erase(champs.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
  }

  void compter() {
    Champs champs;
    std::vector<int> presences;
    std::map<std::size_t, int> largeurs;
    for (int passe = 0; passe < 2; ++passe) {
      for (const auto& ligne : m_lignesPoints) {
        decouper(ligne.texte, champs);
        if (compterNombres(champs, m_forme.decimale) < 2) continue;
        if (passe == 0) {
          ++m_points;
          ++largeurs[champs.size()];
          presences.resize(std::max(presences.size(), champs.size()));
          for (std::size_t c = 0; c < champs.size(); ++c) ++presences[c];
          continue;
        }
        for (std::size_t c = 0; c < m_stats.size(); ++c)
          m_stats[c].ajouter(c < champs.size() ? &champs[c] : nullptr, m_forme.decimale);
      }
      // Words behind the columns that most lines have belong to an observation.
      std::size_t largeur = presences.size();
      if (m_forme.separateur == ' ')
        while (largeur > 2 && presences[largeur - 1] < kPartColonne * m_points) --largeur;
      if (m_forme.separateur != ' ' && !m_forme.deuxChamps && passe == 0) champsParLigne(largeurs);
      m_stats.resize(largeur);
      m_suite = largeur < presences.size();
    }
  }

  /// A line with more fields than the titles, or than most lines, has something shifted.
  void champsParLigne(const std::map<std::size_t, int>& largeurs) {
    const auto moins = [](const auto& a, const auto& b) { return a.second < b.second; };
    const auto frequente = std::max_element(largeurs.begin(), largeurs.end(), moins);
    if (frequente != largeurs.end())
      m_forme.champs = m_forme.titres.empty() ? frequente->first : m_forme.titres.size();
  }

  /// Blanks that part columns, and perhaps thousands too.
  void blancsDouteux() {
    if (m_forme.separateur != ' ') return;
    int coupees = 0;
    Champs champs;
    for (const auto& ligne : m_lignesPoints) {
      decouperLigne(ligne.texte, ' ', champs);
      int groupes = 0;
      for (std::size_t i = 0; i + 1 < champs.size(); ++i)
        groupes += milliersCoupes(champs[i].texte, champs[i + 1].texte) ? 1 : 0;
      coupees += groupes >= 2 ? 1 : 0;
    }
    if (coupees >= kPresqueAutant * m_points)
      m_forme.questions.push_back(
          {L"des blancs séparent les colonnes et, semble-t-il, les milliers : séparez les "
           L"colonnes par des points-virgules",
           {}});
  }

  void chercherColonnes() {
    if (!m_options.colonnes.empty()) {
      m_forme.colonnes = m_options.colonnes;
      return codesEnTexte();
    }
    const auto porte = [this](roleColonne role) {
      return std::find(m_titres.roles.begin(), m_titres.roles.end(), role) != m_titres.roles.end();
    };
    if (m_forme.ligneTitres > 0 && porte(roleColonne::kX) && porte(roleColonne::kY)) return selonTitres();
    colonnesDevinees devinees = devinerColonnes(m_stats, m_options, m_reperes);
    m_forme.colonnes = std::move(devinees.colonnes);
    m_forme.codesTexte = m_forme.codesTexte || devinees.codesTexte;
    if (!m_forme.trouvee()) return;
    if (m_suite && std::find(m_forme.colonnes.begin(), m_forme.colonnes.end(), roleColonne::kObservation) ==
                       m_forme.colonnes.end()) {
      m_forme.colonnes.resize(m_stats.size(), roleColonne::kIgnoree);
      m_forme.colonnes.push_back(roleColonne::kObservation);
    }
    ajouterQuestions(std::move(devinees.questions));
    demanderGeographiques();
  }

  void selonTitres() {
    m_forme.colonnes = m_titres.roles;
    nommerSansTitre();
    codesEnTexte();
    for (const int colonne : m_titres.repetes)
      if (titreCompte(colonne)) demanderRepetee(colonne);
    ajouterQuestions(verifierOrdre(m_stats, m_forme.colonnes, m_options, m_reperes));
    demanderGeographiques();
  }
  void demanderGeographiques() {
    if (m_titres.geographiques && m_forme.questions.empty())
      m_forme.questions.push_back(
          {L"les titres nomment une longitude ou une latitude ; il faut des coordonnées planes", {}});
  }
  /// A second title of a coordinate leaves open which one is meant.
  [[nodiscard]] bool titreCompte(int colonne) const {
    const roleColonne role = lireTitres({m_forme.titres[static_cast<std::size_t>(colonne)]}).roles[0];
    return role == roleColonne::kX || role == roleColonne::kY || role == roleColonne::kZ;
  }
  void demanderRepetee(int colonne) {
    const auto seconde = static_cast<std::size_t>(colonne);
    const roleColonne role = lireTitres({m_forme.titres[seconde]}).roles[0];
    const auto premiere = static_cast<std::size_t>(
        std::find(m_forme.colonnes.begin(), m_forme.colonnes.end(), role) - m_forme.colonnes.begin());
    questionListe question{L"deux colonnes pour " + nomRole(role) + L", « " + m_forme.titres[premiere] +
                               L" » et « " + m_forme.titres[seconde] + L" »",
                           {}};
    for (const std::size_t c : {premiere, seconde}) {
      optionsListe options = m_options;
      options.colonnes = m_forme.colonnes;
      options.colonnes[premiere] = roleColonne::kIgnoree;
      options.colonnes[c] = role;
      question.reponses.push_back({L"« " + m_forme.titres[c] + L" »", std::move(options)});
    }
    m_forme.questions.push_back(std::move(question));
  }
  /// A first column that no title explains, and that holds no decimals, has the numbers.
  void nommerSansTitre() {
    const auto& roles = m_forme.colonnes;
    if (std::find(roles.begin(), roles.end(), roleColonne::kNumero) != roles.end()) return;
    if (roles[0] == roleColonne::kIgnoree && !m_stats[0].reelle() && m_stats[0].remplis > 0)
      m_forme.colonnes[0] = roleColonne::kNumero;
  }
  void codesEnTexte() {
    for (std::size_t c = 0; c < std::min(m_forme.colonnes.size(), m_stats.size()); ++c)
      if (m_forme.colonnes[c] == roleColonne::kCode && m_stats[c].nombres < m_stats[c].remplis)
        m_forme.codesTexte = true;
  }
  void ajouterQuestions(std::vector<questionListe> questions) {
    for (questionListe& question : questions) m_forme.questions.push_back(std::move(question));
  }

  const echantillonListe m_lignes;
  const optionsListe& m_options;
  const reperesListe& m_reperes;
  formeListe m_forme;
  titresListe m_titres;
  std::vector<echantillonListe::ligne> m_lignesPoints;  ///< from the first point on
  std::vector<statsColonne> m_stats;
  int m_points = 0;
  bool m_suite = false;  ///< words stand behind the last column
  std::size_t m_debutPaires = 1;
  std::size_t m_largeurPaires = 0;
};

}  // namespace

std::wstring questionListe::phrase() const {
  std::wstring texteOptionsQuiTranchent;
  for (const reponse& r : reponses)
    texteOptionsQuiTranchent +=
        (texteOptionsQuiTranchent.empty() ? L" ; " : L", ") + texteOptions(r.options) + L" (" + r.sens + L")";
  return texte + texteOptionsQuiTranchent;
}

std::wstring formeListe::description() const {
  std::wstring texte = L"séparée par " + nomSeparateur(separateur);
  texte += decimale == ',' ? L", virgule décimale" : L", point décimal";
  if (ligneTitres > 0) texte += L", titres en ligne " + std::to_wstring(ligneTitres);
  if (codesTexte) texte += L", codes en texte";
  return texte;
}

formeListe reconnaitreListe(std::string_view octets, const optionsListe& options,
                            const reperesListe& reperes) {
  return Reconnaissance(octets, options, reperes).reconnaitre();
}

bool formeXyz(std::string_view octets) {
  base::LineReader lignes(octets);
  Champs mots;
  bool points = false;
  while (lignes.next()) {
    decouperLigne(lignes.line(), ' ', mots);
    if (mots.empty()) continue;
    if (std::any_of(mots.begin(), mots.end(), [](const champListe& mot) { return mot.entreGuillemets; }))
      return false;
    const auto nombre = [&mots](std::size_t i) { return validerNombre(mots[i].texte); };
    double lu = 0.0;
    if (mots.size() < 3 || !nombre(1) || !nombre(2)) return false;
    if (nombre(0) && mots[0].texte.find('.') != std::string_view::npos) return false;
    if (mots.size() > 3 && !base::lireReelExact(mots[3].texte, lu)) return false;
    if (mots.size() > 4 && !chiffres(mots[4].texte)) return false;
    points = true;
  }
  return points;
}

}  // namespace veltora
