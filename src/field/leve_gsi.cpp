#include "field/leve_gsi.h"

#include "base/format.h"
#include "base/lines/line_reader.h"
#include "base/numbers.h"
#include "base/text.h"
#include "field/mots_leve.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

namespace veltora {
namespace {

constexpr double kMemePosition = 0.0005;  // metres: half the last digit of a book

/// What a line of a name holds, by word index.
struct Ligne {
  std::optional<double> valeurs[100];
  std::wstring nom;
  std::vector<std::wstring> codes;  ///< words 71 to 79 that hold something
  std::vector<int> illisibles;

  [[nodiscard]] bool mesure() const {
    return valeurs[21] || valeurs[22] || valeurs[31] || valeurs[32] || valeurs[33];
  }
  [[nodiscard]] std::optional<positionLeve> position() const {
    if (!valeurs[84] || !valeurs[85]) return {};
    return positionLeve{*valeurs[84], *valeurs[85], valeurs[86]};
  }
};

Ligne ligneDe(const std::vector<motLeve>& mots) {
  Ligne ligne;
  for (const motLeve& mot : mots) {
    if (mot.indice == 11) ligne.nom = base::widen(mot.texte);
    if (mot.indice >= 71 && mot.indice <= 79 && !mot.texte.empty())
      ligne.codes.push_back(base::widen(mot.texte));
    if (!estNumeriqueGSI(mot.indice)) continue;
    if (mot.lisible)
      ligne.valeurs[mot.indice] = mot.valeur;
    else
      ligne.illisibles.push_back(mot.indice);
  }
  return ligne;
}

bool memePosition(const positionLeve& a, const positionLeve& b) {
  return std::hypot(a.x - b.x, a.y - b.y) <= kMemePosition;
}

class Lecteur {
public:
  Lecteur(reglesCodesGSI regles, std::vector<stationNommee> nommees, lectureLeve& resultat)
      : m_regles(std::move(regles)), m_nommees(std::move(nommees)), m_resultat(resultat) {
    std::stable_sort(m_nommees.begin(), m_nommees.end(),
                     [](const auto& a, const auto& b) { return a.ligne < b.ligne; });
  }

  void lire(int numero, std::string_view texte) {
    bool entiere = true;
    const std::vector<motLeve> mots = motsLeve(texte, entiere);
    if (!entiere)
      m_resultat.remarques.douter(numero, L"la fin de la ligne n'est faite d'aucun mot GSI, elle est perdue");
    if (mots.empty()) return;
    if (mots.front().indice == 41) {
      lireBloc(numero, mots);
      return;
    }
    finirBlocs();
    const Ligne ligne = ligneDe(mots);
    for (const int indice : ligne.illisibles)
      m_resultat.remarques.douter(
          numero, base::formater(L"mot %d laissé de côté : ni nombre, ni unité qui lui convienne", indice));
    if (mots.front().indice != 11) {
      ++m_autres;
      if (ligne.mesure())
        m_resultat.remarques.douter(numero,
                                    L"mesures laissées de côté, la ligne ne commence pas par le mot 11");
      return;
    }
    if (ligne.mesure())
      viser(numero, ligne);
    else if (ligne.position() || ligne.valeurs[88])
      ouvrir(numero, ligne.nom, ligne.position(), ligne.valeurs[88]);
    else
      ++m_sansMesure;
  }

  void finir() {
    finirBlocs();
    for (; m_nommee < m_nommees.size(); ++m_nommee)
      m_resultat.remarques.douter(
          base::formater(L"station « %s » : aucune visée en ligne %d ni derrière elle",
                         m_nommees[m_nommee].nom, m_nommees[m_nommee].ligne));
    const auto dire = [this](const wchar_t* texte, int nombre) {
      if (nombre > 0) m_resultat.remarques.ajouter(base::formater(texte, nombre));
    };
    dire(L"suites de blocs de code qui n'ouvrent aucune station : %d", m_suitesSansEmploi);
    dire(L"lignes de points sans mesure, laissées de côté : %d", m_sansMesure);
    dire(L"lignes qui ne commencent ni par le mot 11 ni par le mot 41 : %d", m_autres);
    dire(L"visées sans hauteur de mire (mot 87), la précédente de la station compte : %d", m_mireReprise);
  }

private:
  miseEnPlace* courante() {
    return m_resultat.leve.stations.empty() ? nullptr : &m_resultat.leve.stations.back();
  }

  /// A station that was opened without any pointing gives way to the next one.
  void ouvrir(int numero, std::wstring nom, std::optional<positionLeve> position,
              std::optional<double> hauteur) {
    if (courante() && courante()->visees.empty()) m_resultat.leve.stations.pop_back();
    m_resultat.leve.stations.push_back({std::move(nom), numero, position, {}});
    m_appareil = hauteur;
    m_mire.reset();
  }

  void lireBloc(int numero, const std::vector<motLeve>& mots) {
    if (m_debutBlocs == 0) m_debutBlocs = numero;
    ligneGSI ligne;
    for (const motLeve& mot : mots) {
      motGSI un;
      un.indexMot = static_cast<std::uint8_t>(mot.indice);
      std::memcpy(un.texte, mot.texte.data(), std::min(mot.texte.size(), sizeof un.texte - 1));
      ligne.Add(un);
    }
    analyserCodesGSI(m_regles, static_cast<std::uint32_t>(numero - m_debutBlocs + 1), ligne);
  }

  /// A run of code blocks ends: it opens a station when it told all that the rules wait for.
  void finirBlocs() {
    if (m_debutBlocs == 0) return;
    const bool hauteurLue = std::exchange(m_regles.hauteurLue, false);
    if (reglesCompletes(m_regles))
      ouvrir(m_debutBlocs, base::widen(base::trim(m_regles.code)), {},
             hauteurLue ? std::optional(m_regles.hauteur) : std::nullopt);
    else
      ++m_suitesSansEmploi;
    razReglesCodes(m_regles);
    m_debutBlocs = 0;
  }

  void nommer(int numero) {
    for (; m_nommee < m_nommees.size() && m_nommees[m_nommee].ligne <= numero; ++m_nommee) {
      const stationNommee& n = m_nommees[m_nommee];
      const std::optional<double> hauteur = n.hauteur ? n.hauteur : m_appareil;
      ouvrir(numero, n.nom, {}, hauteur);
    }
  }

  void viser(int numero, const Ligne& ligne) {
    nommer(numero);
    const std::optional<positionLeve> position = ligne.position();
    if (!courante()) ouvrir(numero, {}, position, ligne.valeurs[88]);
    if (position && !courante()->position && courante()->visees.empty()) courante()->position = position;
    if (position && !(courante()->position && memePosition(*position, *courante()->position)))
      ouvrir(numero, {}, position, ligne.valeurs[88]);
    if (ligne.valeurs[88]) changerAppareil(numero, *ligne.valeurs[88]);
    ++m_resultat.visees;
    if (ligne.nom.empty() || ligne.nom == L"0") {
      m_resultat.remarques.douter(numero, L"visée sans nom de point, laissée de côté");
      return;
    }
    courante()->visees.push_back(visee(numero, ligne));
  }

  void changerAppareil(int numero, double hauteur) {
    if (m_appareil && std::fabs(hauteur - *m_appareil) > kMemePosition && !courante()->visees.empty())
      m_resultat.remarques.douter(
          numero, base::formater(L"la hauteur d'appareil passe de %.3f à %.3f dans une même station",
                                 *m_appareil, hauteur));
    m_appareil = hauteur;
  }

  viseeTerrain visee(int numero, const Ligne& ligne) {
    if (ligne.valeurs[87])
      m_mire = ligne.valeurs[87];
    else if (m_mire && ligne.valeurs[22])
      ++m_mireReprise;
    viseeTerrain v;
    v.ligne = numero;
    v.nom = ligne.nom;
    v.h = ligne.valeurs[21];
    v.v = ligne.valeurs[22];
    v.di = ligne.valeurs[31];
    v.dh = ligne.valeurs[32];
    v.dn = ligne.valeurs[33];
    v.hMire = m_mire;
    v.hAppareil = m_appareil;
    if (!ligne.codes.empty()) v.code = ligne.codes.front();
    for (std::size_t i = 1; i < ligne.codes.size(); ++i)
      v.observation += (i > 1 ? L" " : L"") + ligne.codes[i];
    return v;
  }

  reglesCodesGSI m_regles;
  std::vector<stationNommee> m_nommees;
  lectureLeve& m_resultat;
  std::size_t m_nommee = 0;  ///< the next one of them
  int m_debutBlocs = 0;      ///< line of the run of code blocks that is read; 0 for none
  std::optional<double> m_appareil;
  std::optional<double> m_mire;
  int m_suitesSansEmploi = 0;
  int m_sansMesure = 0;
  int m_autres = 0;
  int m_mireReprise = 0;
};

bool lireRegle(std::istringstream& mots, regleCodeGSI& regle) {
  std::string genre;
  mots >> genre >> regle.indexMot;
  if (mots.fail() || regle.indexMot < 41 || regle.indexMot > 79) return false;
  constexpr std::pair<const char*, std::uint32_t> kGenres[] = {{"presence", regleCodeGSI::kPresence},
                                                               {"texte", regleCodeGSI::kTexte},
                                                               {"hauteur", regleCodeGSI::kHauteur},
                                                               {"code", regleCodeGSI::kCode}};
  const auto trouve = std::find_if(std::begin(kGenres), std::end(kGenres), [&](const auto& g) {
    return base::compareNoCaseAnsi(g.first, genre) == 0;
  });
  if (trouve == std::end(kGenres)) return false;
  regle.genre = trouve->second;
  if (regle.genre == regleCodeGSI::kTexte && !(mots >> regle.texte)) return false;
  std::string sauf;
  if (!(mots >> sauf)) return true;
  return base::compareNoCaseAnsi(sauf, "sauf") == 0 && mots >> regle.ligne && regle.ligne > 0 &&
         !(mots >> sauf);
}

}  // namespace

reglesCodesGSI lireReglesCodes(std::string_view octets, base::Remarques& remarques) {
  reglesCodesGSI regles;
  base::LineReader lignes(octets, kLigneGsiMax);
  bool nom = false;
  while (lignes.next()) {
    const std::string texte = base::trim(base::narrow(lignes.wide()));
    if (texte.empty() || texte.front() == '*') continue;
    std::istringstream mots(texte);
    regleCodeGSI regle;
    if (!lireRegle(mots, regle)) {
      remarques.douter(lignes.number(),
                       L"règle de code qui n'en est pas une : « " + base::widen(texte) + L" »");
      continue;
    }
    nom = nom || regle.genre == regleCodeGSI::kCode;
    regles.regles.push_back(regle);
  }
  if (!nom) remarques.douter(L"aucune règle « code » : aucun bloc de code ne peut nommer de station");
  return regles;
}

reglesCodesGSI reglesUsuelles() {
  reglesCodesGSI regles;
  regleCodeGSI mot;
  mot.genre = regleCodeGSI::kTexte;
  mot.texte = "STATION";
  mot.indexMot = 41;
  regles.regles.push_back(mot);
  mot = {};
  mot.genre = regleCodeGSI::kCode;
  mot.indexMot = 42;
  regles.regles.push_back(mot);
  mot.genre = regleCodeGSI::kHauteur;
  mot.indexMot = 43;
  regles.regles.push_back(mot);
  return regles;
}

lectureLeve lireLeveGSI(const carnetGSI& carnet, reglesCodesGSI regles,
                        const std::vector<stationNommee>& nommees) {
  lectureLeve resultat;
  for (const base::Remarque& coupe : carnet.remarques) resultat.remarques.douter(coupe.ligne, coupe.texte);
  Lecteur lecteur(std::move(regles), nommees, resultat);
  for (std::size_t i = 0; i < carnet.nombreLignes(); ++i)
    lecteur.lire(static_cast<int>(i) + 1, carnet.ligne(i));
  lecteur.finir();
  std::vector<miseEnPlace>& stations = resultat.leve.stations;
  std::erase_if(stations, [](const miseEnPlace& s) { return s.visees.empty(); });
  return resultat;
}

}  // namespace veltora
