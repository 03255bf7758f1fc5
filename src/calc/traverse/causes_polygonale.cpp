// Symbols: m angles, n legs; a excess of the sum of the angles; S[i] station i on the bearings as computed; v
// what is missing at the end; u direction of a leg. A mistake of `faux` in angle k ends at S[k] + (S[n] -
// S[k]) turned by -faux.
#include "calc/traverse/causes_polygonale.h"

#include "base/format.h"
#include "base/remarque.h"
#include "calc/angles.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace veltora {
namespace {

using vecteur = cheminement::vecteur;

/// How much has to be assumed, the likelier the less.
enum class Rang { nomme, arrondi, libre, manquant };

/// Rows that are tried one by one, by a computation of the whole traverse.
constexpr std::size_t kEssaisEntiers = 20;
/// Mistakes of whole units in one angle that are tried, on either side of the likeliest.
constexpr int kUnitesEssayees = 4;
/// A row that is missing is no longer than so many times the longest one.
constexpr double kLongueurManquante = 3.0;

struct Candidate {
  Rang rang = Rang::libre;
  double note = 0.0;
  fermetureCheminement fermeture;
  int ligne = 0;
  std::function<std::wstring()> phrase;
};

/// One digit wrong, or two that changed places: 1 to 9 times a power of ten, or nine times that.
bool unSeulChiffre(double ecart, double tolerance) {
  for (double unite = 1.0; unite <= 1e6; unite *= 10.0) {
    for (const double pas : {unite, 9.0 * unite}) {
      const double fois = std::round(std::abs(ecart) / pas);
      const double reste = std::abs(std::abs(ecart) - fois * pas);
      if (fois >= 1.0 && fois <= 9.0 && reste <= std::min(tolerance, 0.05 * unite)) return true;
    }
  }
  return false;
}

/// The point moved by one place or more.
bool virguleDeplacee(double juste, double fausse) {
  const double places = std::log10(juste / fausse);
  return std::abs(std::round(places)) >= 1.0 && std::abs(places - std::round(places)) <= 0.002;
}

class Recherche {
public:
  Recherche(const cheminement& mesure, int modeAngle, const tolerancesPolygonale& tolerances)
      : m_c(mesure), m_mode(modeAngle), m_unite(uniteDeMode(modeAngle)), m_tolerances(tolerances) {}

  causesPolygonale chercher() {
    unites();
    sexagesimaux();
    autreCote();
    colonnesEchangees();
    horsDuTour();
    lignesDoublees();
    rangeesEchangees();
    anglesDeLAutreCote();
    anglesFaux();
    distancesFausses();
    lignesManquantes();
    return resultat();
  }

private:
  [[nodiscard]] std::size_t n() const { return m_c.distances.size(); }
  [[nodiscard]] std::size_t m() const { return m_c.angles.size(); }
  [[nodiscard]] int ligneDe(std::size_t rangee) const { return rangee < n() ? m_c.lignes[rangee] : 0; }
  [[nodiscard]] double enUnite(double radians) const { return radians / m_unite.versRadians; }
  [[nodiscard]] std::wstring angleEcrit(double radians) const {
    return base::formater(L"%.4f %s", enUnite(radians), std::wstring(m_unite.nom).c_str());
  }

  /// "à la station « B » (observation 3)"; an observation is a row.
  [[nodiscard]] std::wstring lieu(std::size_t k) const {
    return base::formater(L"à la station « %s » (observation %d)", m_c.stations[k].c_str(),
                          static_cast<int>(k + 1));
  }
  [[nodiscard]] std::wstring angleDe(std::size_t k) const {
    if (k == n()) return L"l'angle de fermeture (ou le gisement d'arrivée)";
    return L"l'angle " + lieu(k) + (m_c.ouverte && k == 0 ? L" (ou le gisement de départ)" : L"");
  }

  void proposer(Rang rang, const fermetureCheminement& fermeture, std::size_t nombreAngles, int ligne,
                std::function<std::wstring()> phrase) {
    if (!fermeture.tient(m_tolerances, nombreAngles)) return;
    m_candidates.push_back(
        {rang, fermeture.note(m_tolerances, nombreAngles), fermeture, ligne, std::move(phrase)});
  }
  void essayer(const cheminement& corrige, int ligne, std::function<std::wstring()> phrase) {
    proposer(Rang::nomme, corrige.fermeture(), corrige.angles.size(), ligne, std::move(phrase));
  }

  void convertir(const std::function<double(double)>& valeur, std::wstring phrase) {
    cheminement corrige = m_c;
    for (double& angle : corrige.angles) angle = valeur(angle);
    corrige.depart = valeur(corrige.depart);
    corrige.arrivee = valeur(corrige.arrivee);
    essayer(corrige, 0, [phrase = std::move(phrase)] { return phrase; });
  }

  void unites() {
    for (int mode = 0; mode < static_cast<int>(kUnitesAngle.size()); ++mode) {
      if (mode == m_mode) continue;
      const double facteur = uniteDeMode(mode).versRadians / m_unite.versRadians;
      convertir(
          [facteur](double angle) { return angle * facteur; },
          base::formater(L"les angles sont en %s et non en %s", std::wstring(uniteDeMode(mode).nom).c_str(),
                         std::wstring(m_unite.nom).c_str()));
    }
  }

  /// 12.3456 that means 12 degrees, 34 minutes, 56 seconds.
  void sexagesimaux() {
    const auto valeur = [this](double angle) {
      const double lu = std::round(std::abs(enUnite(angle)) * 1e6) / 1e6;
      const double minutes = (lu - std::floor(lu)) * 100.0 + 1e-7;
      const double secondes = (minutes - std::floor(minutes)) * 100.0;
      const double degres = std::floor(lu) + std::floor(minutes) / 60.0 + secondes / 3600.0;
      return std::copysign(degres, angle) * kUnitesAngle[1].versRadians;
    };
    convertir(valeur, L"les angles sont en degrés, minutes et secondes (DDD.MMSS) et non en " +
                          std::wstring(m_unite.nom) + L" décimaux");
  }

  void autreCote() {
    cheminement corrige = m_c;
    for (double& angle : corrige.angles) angle = kTour - angle;
    const std::wstring sens = m_c.ouverte ? L""
                                          : L", si les lignes suivent le sens des aiguilles d'une montre ; "
                                            L"sinon, donner les lignes dans l'autre sens";
    essayer(corrige, 0, [this, sens] {
      return base::formater(L"les angles sont de l'autre côté : %s moins chacun ferme%s",
                            angleEcrit(kTour).c_str(), sens.c_str());
    });
  }

  void colonnesEchangees() {
    cheminement corrige = m_c;
    for (std::size_t i = 0; i < n(); ++i) echanger(corrige, i);
    essayer(corrige, 0, [] { return L"les colonnes des angles et des distances sont échangées"; });
  }

  void echanger(cheminement& corrige, std::size_t i) const {
    corrige.angles[i] = m_c.distances[i] * m_unite.versRadians;
    corrige.distances[i] = enUnite(m_c.angles[i]);
  }

  void horsDuTour() {
    cheminement corrige = m_c;
    std::vector<std::wstring> rangees;
    for (std::size_t i = 0; i < m(); ++i) {
      corrige.angles[i] = reduireAngle(m_c.angles[i], kTour);
      if (std::abs(corrige.angles[i] - m_c.angles[i]) > kPi) rangees.push_back(std::to_wstring(i + 1));
    }
    if (rangees.empty()) return;
    essayer(corrige, 0, [this, rangees] {
      return base::formater(L"des angles sortent de l'intervalle de 0 à %s (observations %s)",
                            angleEcrit(kTour).c_str(), base::enumerer(rangees).c_str());
    });
  }

  void lignesDoublees() {
    std::map<std::pair<double, double>, std::size_t> vues;
    std::size_t essais = 0;
    for (std::size_t i = 0; i < n() && n() > 2 && essais < kEssaisEntiers; ++i) {
      const auto [avant, neuve] = vues.emplace(std::pair(m_c.angles[i], m_c.distances[i]), i);
      const bool memeNom = i > 0 && m_c.stations[i] == m_c.stations[i + 1];
      if (neuve && !memeNom) continue;
      ++essais;
      const std::size_t premiere = neuve ? i - 1 : avant->second;
      cheminement corrige = m_c;
      const auto ou = static_cast<std::ptrdiff_t>(i);
      corrige.angles.erase(corrige.angles.begin() + ou);
      corrige.distances.erase(corrige.distances.begin() + ou);
      essayer(corrige, ligneDe(i), [this, i, premiere] {
        return base::formater(L"l'observation %d (vers « %s ») est en double avec l'observation %d",
                              static_cast<int>(i + 1), m_c.stations[i + 1].c_str(),
                              static_cast<int>(premiere + 1));
      });
    }
  }

  /// The rows whose angle, less `faux`, leaves least of the excess; those only that close in angle.
  [[nodiscard]] std::vector<std::size_t> quiFerment(const std::function<double(std::size_t)>& faux) const {
    const double limite = limiteAngulaire(m_tolerances, m(), kRadians);
    const double a = m_c.exces();
    std::vector<std::pair<double, std::size_t>> rangees;
    for (std::size_t i = 0; i < n(); ++i) {
      const double reste = std::abs(m_c.sansTours(a - faux(i)));
      if (reste <= limite) rangees.emplace_back(reste, i);
    }
    std::sort(rangees.begin(), rangees.end());
    std::vector<std::size_t> choisies;
    for (std::size_t i = 0; i < std::min(rangees.size(), kEssaisEntiers); ++i)
      choisies.push_back(rangees[i].second);
    return choisies;
  }

  void rangeesEchangees() {
    const auto faux = [this](std::size_t i) {
      return m_c.angles[i] - m_c.distances[i] * m_unite.versRadians;
    };
    for (const std::size_t i : quiFerment(faux)) {
      cheminement corrige = m_c;
      echanger(corrige, i);
      essayer(corrige, ligneDe(i), [this, i] { return L"angle et distance sont échangés " + lieu(i); });
    }
  }

  void anglesDeLAutreCote() {
    for (const std::size_t i : quiFerment([this](std::size_t k) { return 2.0 * (m_c.angles[k] - kPi); })) {
      cheminement corrige = m_c;
      corrige.angles[i] = kTour - m_c.angles[i];
      essayer(corrige, ligneDe(i), [this, i, bon = corrige.angles[i]] {
        return base::formater(L"%s, %s, est de l'autre côté : %s ferme", angleDe(i).c_str(),
                              angleEcrit(m_c.angles[i]).c_str(), angleEcrit(bon).c_str());
      });
    }
  }

  void anglesFaux() {
    const double limite = limiteAngulaire(m_tolerances, m(), kRadians);
    const double a = m_c.exces();
    const std::size_t avant = m_candidates.size();
    if (m_mode != kRadians) {  // a whole radian is no mistake of reading or typing
      const double unite = m_unite.versRadians;
      const double proche = std::round(a / unite);
      for (int i = -kUnitesEssayees; i <= kUnitesEssayees; ++i) {
        const double faux = (proche + i) * unite;
        if (faux == 0.0 || std::abs(faux) >= kTour) continue;
        if (std::abs(m_c.sansTours(a - faux)) <= limite) angleFauxDe(faux, Rang::nomme);
      }
    }
    const bool nomme = m_candidates.size() > avant;
    if (!nomme && std::abs(a) > limite && std::abs(a) < kTour) angleFauxDe(a, Rang::libre);
  }

  /// Tries one angle too large by `faux`, at every station.
  void angleFauxDe(double faux, Rang rang) {
    const double reste = m_c.sansTours(m_c.exces() - faux);
    const std::vector<vecteur> S = m_c.sommets(m_c.gisements(reste));
    const vecteur retour = std::polar(1.0, -faux);
    const double longueur = m_c.longueur();
    for (std::size_t k = 0; k < m(); ++k) {
      // The angle at the departure of a closed traverse goes into no bearing.
      const std::size_t pivot = !m_c.ouverte && k == 0 ? n() : k;
      const vecteur fin = S[pivot] + (S[n()] - S[pivot]) * retour;
      proposer(rang, {reste, std::abs(fin - m_c.but), longueur}, m(), ligneDe(k), [this, k, faux, rang] {
        return phraseAngle(k, faux, rang == Rang::nomme ? L"" : L" environ");
      });
    }
  }

  [[nodiscard]] std::wstring phraseAngle(std::size_t k, double faux, const wchar_t* environ) const {
    const double bon = reduireAngle(m_c.angles[k] - faux, kTour);
    return base::formater(L"%s, %s, est trop %s de %s%s : %s ferme", angleDe(k).c_str(),
                          angleEcrit(m_c.angles[k]).c_str(), faux > 0.0 ? L"grand" : L"petit",
                          angleEcrit(std::abs(faux)).c_str(), environ, angleEcrit(bon).c_str());
  }

  void distancesFausses() {
    const double a = m_c.exces();
    const std::vector<double> g = m_c.gisements(a);
    const vecteur v = m_c.but - m_c.sommets(g).back();
    const double longueur = m_c.longueur();
    for (std::size_t k = 0; k < n(); ++k) {
      const vecteur relatif = v * std::polar(1.0, -g[k + 1]);  // along and across the leg
      const double ajout = relatif.real();
      const double bonne = m_c.distances[k] + ajout;
      const double D = longueur + ajout;
      if (bonne <= 0.0) continue;
      const bool reconnue = unSeulChiffre(ajout, D / m_tolerances.lineaire) || m_c.distances[k] == 0.0 ||
                            virguleDeplacee(bonne, m_c.distances[k]);
      proposer(
          reconnue ? Rang::arrondi : Rang::libre, {a, std::abs(relatif.imag()), D}, m(), ligneDe(k),
          [this, k, bonne] {
            return base::formater(
                L"la distance de « %s » à « %s » (observation %d), %.3f, est fausse : %.3f environ ferme",
                m_c.stations[k].c_str(), m_c.stations[k + 1].c_str(), static_cast<int>(k + 1),
                m_c.distances[k], bonne);
          });
    }
  }

  /// The angle of a row that is missing is what the sum lacks; its leg must lie on the bearing that follows.
  void lignesManquantes() {
    const double a = m_c.exces();
    const std::vector<double> g = m_c.gisements(0.0);
    const std::vector<vecteur> S = m_c.sommets(g);
    const double longueur = m_c.longueur();
    const double plusLongue =
        kLongueurManquante * *std::max_element(m_c.distances.begin(), m_c.distances.end());
    for (std::size_t k = 0; k <= n(); ++k) {
      // Behind the departure of a closed traverse all legs turn by the angle that stood first and went
      // nowhere.
      const bool premiere = !m_c.ouverte && k == 0;
      const double tourne = premiere ? m_c.angles[0] - kPi : -a;
      const double gisement = premiere ? g[0] : g[k] - a;
      const vecteur fin = S[k] + (S[n()] - S[k]) * std::polar(1.0, tourne);
      const vecteur relatif = (m_c.but - fin) * std::polar(1.0, -gisement);
      const double D = longueur + relatif.real();
      if (relatif.real() <= D / m_tolerances.lineaire || relatif.real() > plusLongue) continue;
      proposer(Rang::manquant, {0.0, std::abs(relatif.imag()), D}, m() + 1, k > 0 ? ligneDe(k - 1) : 0,
               [this, k, a, distance = relatif.real()] {
                 const std::wstring apres =
                     k == 0 ? L"avant la première"
                            : base::formater(L"après l'observation %d", static_cast<int>(k));
                 return base::formater(
                     L"il manque une observation %s, à la station « %s » (angle de %s et distance de %.2f "
                     L"environ)",
                     apres.c_str(), m_c.stations[k].c_str(), angleEcrit(reduireAngle(kPi - a, kTour)).c_str(),
                     distance);
               });
    }
  }

  causesPolygonale resultat() {
    std::stable_sort(m_candidates.begin(), m_candidates.end(), [](const Candidate& a, const Candidate& b) {
      return std::pair(a.rang, a.note) < std::pair(b.rang, b.note);
    });
    causesPolygonale causes;
    for (const Candidate& c : m_candidates) {
      if (causes.meilleures.size() == causesPolygonale::kCitees) break;
      causes.meilleures.push_back(
          {c.ligne,
           base::formater(L"%s (fermetures alors : %s et %.3f)", c.phrase().c_str(),
                          angleEcrit(m_c.ouverte ? c.fermeture.angulaire : -c.fermeture.angulaire).c_str(),
                          c.fermeture.ecart)});
    }
    causes.probable = m_candidates.size() == 1 && m_candidates.front().rang != Rang::manquant;
    causes.autres = static_cast<int>(m_candidates.size() - causes.meilleures.size());
    return causes;
  }

  const cheminement& m_c;
  int m_mode;
  const uniteAngle& m_unite;
  const tolerancesPolygonale& m_tolerances;
  std::vector<Candidate> m_candidates;
};

}  // namespace

causesPolygonale chercherCauses(const cheminement& mesure, int modeAngle,
                                const tolerancesPolygonale& tolerances) {
  if (mesure.distances.size() < 2 || !mesure.fini()) return {};
  return Recherche(mesure, modeAngle, tolerances).chercher();
}

}  // namespace veltora
