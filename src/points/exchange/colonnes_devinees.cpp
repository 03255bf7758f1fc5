#include "points/exchange/colonnes_devinees.h"

#include "base/text.h"

#include <algorithm>
#include <optional>

namespace veltora {
namespace {

using enum roleColonne;

using Colonnes = std::vector<roleColonne>;

/// Longest text that may be a number of a point, or a label; bytes.
constexpr std::size_t kLongueurNumero = 12;
constexpr std::size_t kLongueurLibelle = 30;
/// Rows from which repeated texts look like labels, and whole numbers that differ like numbers of points.
constexpr int kAssezLignes = 4;

std::wstring rang(std::size_t colonne) { return std::to_wstring(colonne + 1); }

optionsListe avecColonnes(optionsListe options, Colonnes colonnes) {
  while (!colonnes.empty() && colonnes.back() == kIgnoree) colonnes.pop_back();
  options.colonnes = std::move(colonnes);
  return options;
}

Colonnes echanger(Colonnes colonnes, roleColonne a, roleColonne b) {
  for (roleColonne& role : colonnes) role = role == a ? b : role == b ? a : role;
  return colonnes;
}

std::size_t placeDe(const Colonnes& colonnes, roleColonne role) {
  return static_cast<std::size_t>(std::find(colonnes.begin(), colonnes.end(), role) - colonnes.begin());
}

questionListe questionOrdre(const Colonnes& colonnes, const optionsListe& options,
                            const std::wstring& raison) {
  const std::size_t x = placeDe(colonnes, kX);
  const std::size_t y = placeDe(colonnes, kY);
  return {L"colonnes " + rang(std::min(x, y)) + L" et " + rang(std::max(x, y)) + L", X et Y ou Y et X : " +
              raison,
          {{L"X en colonne " + rang(x), avecColonnes(options, colonnes)},
           {L"X en colonne " + rang(y), avecColonnes(options, echanger(colonnes, kX, kY))}}};
}

std::optional<questionListe> questionDegres(const statsColonne& x, const statsColonne& y) {
  if (!semblentDegres(placesDe(x, y), std::max(x.decimales, y.decimales))) return std::nullopt;
  return questionListe{
      L"X et Y ressemblent à des longitudes et latitudes en degrés ; il faut des coordonnées planes", {}};
}

/// Another reading: what some columns hold then.
struct autreLecture {
  std::wstring sens;
  std::vector<std::pair<std::size_t, roleColonne>> roles;
};

/// The roles with those of another reading; who had them loses them.
Colonnes appliquer(Colonnes colonnes, const autreLecture& autre) {
  for (const auto& [c, role] : autre.roles) {
    std::replace(colonnes.begin(), colonnes.end(), role, kIgnoree);
    colonnes[c] = role;
  }
  return colonnes;
}

/// Gives the columns their roles one after the other.
class Devin {
public:
  Devin(const std::vector<statsColonne>& stats, const optionsListe& options, const reperesListe& reperes)
      : m_stats(stats), m_options(options), m_reperes(reperes), m_roles(stats.size(), kIgnoree) {}

  colonnesDevinees deviner() {
    const std::optional<std::size_t> x = premiereCoordonnee();
    if (!x) return {};
    m_roles[*x] = kX;
    m_roles[*x + 1] = kY;
    nommerDevant(*x);
    altitudeEtCode(*x + 2);
    nommerDerriere();
    textes();
    ordre(*x);
    poserQuestions();
    m_resultat.colonnes = avecColonnes({}, m_roles).colonnes;
    return std::move(m_resultat);
  }

private:
  [[nodiscard]] bool numerique(std::size_t c) const { return c < m_stats.size() && m_stats[c].numerique(); }
  [[nodiscard]] bool reelle(std::size_t c) const { return c < m_stats.size() && m_stats[c].reelle(); }
  [[nodiscard]] bool donne(roleColonne role) const { return placeDe(m_roles, role) < m_roles.size(); }
  [[nodiscard]] bool zone(std::size_t c) const {
    if (!numerique(c) || !numerique(c + 1)) return false;
    const ordreXY ordre = jugerOrdre(placesDe(m_stats[c], m_stats[c + 1]), std::nullopt).ordre;
    return ordre == ordreXY::kDroit || ordre == ordreXY::kEchange;
  }

  /// Where X and Y, or Y and X, begin. Whole numbers in front of decimals, or of national coordinates, are
  /// numbers of points and codes.
  std::optional<std::size_t> premiereCoordonnee() {
    std::size_t c = 0;
    while (c < m_stats.size() && !(numerique(c) && numerique(c + 1))) ++c;
    if (c == m_stats.size()) return std::nullopt;
    for (std::size_t i = c; i < c + 3 && numerique(i) && numerique(i + 1); ++i) {
      if (zone(i)) return i;
      if (reelle(i) && reelle(i + 1)) {
        if (i > std::max<std::size_t>(c, 1) && !reelle(i + 2)) demanderCodeOuX(i - 1);
        return i;
      }
      if (!m_stats[i].entiere()) break;
    }
    if (c > 0 || !numerique(2) || !m_stats[0].entiere()) return c;
    const bool numeros = m_stats[0].consecutifs && m_stats[0].nombres >= kAssezLignes;
    if (!numeros) demanderNumeroOuX();
    return 1;
  }
  void demanderCodeOuX(std::size_t c) {
    m_choix.push_back({L"colonne " + rang(c) + L", code ou X : ses valeurs sont entières",
                       {{L"code", {}}, {L"X", {{c, kX}, {c + 1, kY}, {c + 2, kZ}}}}});
  }
  void demanderNumeroOuX() {
    autreLecture sans{L"X, pas de numéro", {{0, kX}, {1, kY}, {2, kZ}}};
    if (numerique(3)) sans.roles.emplace_back(3, kCode);
    m_choix.push_back(
        {L"colonne 1, numéro ou X : ses valeurs sont entières", {{L"numéro", {}}, std::move(sans)}});
  }

  void nommerDevant(std::size_t x) {
    if (x == 0) return;
    m_roles[0] = kNumero;
    for (std::size_t c = 1; c < x && !donne(kCode); ++c)
      if (m_stats[c].remplis > 0) donnerCode(c);
  }

  void donnerCode(std::size_t c) {
    m_roles[c] = kCode;
    m_resultat.codesTexte = m_options.codesTexte || m_stats[c].nombres < m_stats[c].remplis;
  }

  void altitudeEtCode(std::size_t premiere) {
    std::vector<std::size_t> suivantes;
    for (std::size_t c = premiere; c < m_stats.size(); ++c)
      if (m_stats[c].numerique()) suivantes.push_back(c);
    if (suivantes.empty()) return;
    const std::size_t a = suivantes[0];
    m_roles[a] = kZ;
    if (suivantes.size() == 1) return altitudeSeule(a);
    const std::size_t b = suivantes[1];
    if (!donne(kCode) && m_stats[a].codes() && reelle(b)) {
      m_roles[a] = kCode;
      m_roles[b] = kZ;
    } else if (reelle(a) && reelle(b)) {
      m_choix.push_back({L"colonnes " + rang(a) + L" et " + rang(b) + L", où est l'altitude ?",
                         {{L"en colonne " + rang(a), {}}, {L"en colonne " + rang(b), {{b, kZ}}}}});
    } else if (!donne(kCode) && m_stats[b].entiere()) {
      m_roles[b] = kCode;
    }
  }

  /// One column of numbers behind X and Y: whole numbers behind decimals may be codes.
  void altitudeSeule(std::size_t c) {
    const bool planEntier =
        m_stats[placeDe(m_roles, kX)].entiere() && m_stats[placeDe(m_roles, kY)].entiere();
    if (donne(kCode) || planEntier || !m_stats[c].codes()) return;
    m_choix.push_back({L"colonne " + rang(c) + L", altitude ou code : ses valeurs sont entières",
                       {{L"altitude", {}}, {L"code", {{c, kCode}}}}});
  }

  /// Without a number in front: one behind the coordinates, when each row has one of its own.
  void nommerDerriere() {
    if (donne(kNumero)) return;
    for (std::size_t c = placeDe(m_roles, kY) + 1; c < m_stats.size(); ++c) {
      const statsColonne& s = m_stats[c];
      const bool mots =
          s.texte() && !s.aBlanc && s.longueur <= kLongueurNumero && 2 * s.aChiffre >= s.remplis;
      const bool entiers = s.entiere() && s.remplis >= kAssezLignes && m_roles[c] != kZ;
      if (!s.uniques() || s.remplis < s.lignes || (!mots && !entiers)) continue;
      m_roles[c] = kNumero;
      return;
    }
  }

  void textes() {
    for (std::size_t c = 0; c < m_stats.size(); ++c) {
      if (m_roles[c] != kIgnoree || !m_stats[c].texte()) continue;
      if (!donne(kCode) && libelles(m_stats[c]))
        donnerCode(c);
      else if (!donne(kObservation))
        m_roles[c] = kObservation;
    }
  }

  /// Texts that are known as labels, or come again and again, or single words in a short list.
  [[nodiscard]] bool libelles(const statsColonne& s) const {
    const auto connu = [this](std::string_view texte) {
      return m_reperes.estLibelle(base::isUtf8(texte) ? base::fromUtf8(texte) : base::widen(texte));
    };
    if (m_options.codesTexte) return true;
    if (m_reperes.estLibelle && std::all_of(s.distincts.begin(), s.distincts.end(), connu)) return true;
    const bool repetes = 2 * static_cast<int>(s.distincts.size()) <= s.remplis && s.remplis >= kAssezLignes;
    const bool mots = s.remplis == s.lignes && s.lignes < kAssezLignes && !s.aBlanc;
    return (repetes || mots) && s.longueur <= kLongueurLibelle;
  }

  /// Zones tell the order for certain; the points of the drawing alone only ask.
  void ordre(std::size_t x) {
    const std::vector<placeXY> places = placesDe(m_stats[x], m_stats[x + 1]);
    const avisOrdre avis = jugerOrdre(places, m_reperes.dessin);
    const bool zones = jugerOrdre(places, std::nullopt).ordre == ordreXY::kEchange;
    if (auto degres = questionDegres(m_stats[x], m_stats[x + 1])) m_resultat.questions.push_back(*degres);
    if (avis.ordre == ordreXY::kEchange && zones)
      m_roles = echanger(std::move(m_roles), kX, kY);
    else if (avis.ordre == ordreXY::kEchange || avis.ordre == ordreXY::kContradictoire)
      m_resultat.questions.push_back(questionOrdre(m_roles, m_options, avis.raison));
  }

  void poserQuestions() {
    for (const auto& [texte, lectures] : m_choix) {
      questionListe question{texte, {}};
      for (const autreLecture& lecture : lectures)
        question.reponses.push_back({lecture.sens, avecColonnes(m_options, appliquer(m_roles, lecture))});
      m_resultat.questions.push_back(std::move(question));
    }
  }

  const std::vector<statsColonne>& m_stats;
  const optionsListe& m_options;
  const reperesListe& m_reperes;
  Colonnes m_roles;
  std::vector<std::pair<std::wstring, std::vector<autreLecture>>> m_choix;
  colonnesDevinees m_resultat;
};

}  // namespace

colonnesDevinees devinerColonnes(const std::vector<statsColonne>& stats, const optionsListe& options,
                                 const reperesListe& reperes) {
  return Devin(stats, options, reperes).deviner();
}

std::vector<questionListe> verifierOrdre(const std::vector<statsColonne>& stats, const Colonnes& colonnes,
                                         const optionsListe& options, const reperesListe& reperes) {
  const std::size_t x = placeDe(colonnes, kX);
  const std::size_t y = placeDe(colonnes, kY);
  std::vector<questionListe> questions;
  if (std::max(x, y) >= stats.size()) return questions;
  if (auto degres = questionDegres(stats[x], stats[y])) questions.push_back(*degres);
  const avisOrdre avis = jugerOrdre(placesDe(stats[x], stats[y]), reperes.dessin);
  if (avis.ordre == ordreXY::kEchange || avis.ordre == ordreXY::kContradictoire)
    questions.push_back(questionOrdre(colonnes, options, avis.raison));
  return questions;
}

}  // namespace veltora
