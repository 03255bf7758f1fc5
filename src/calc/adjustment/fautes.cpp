#include "calc/adjustment/fautes.h"

#include "calc/adjustment/lois.h"

#include "calc/adjustment/systeme_pondere.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kRisqueReseau = 0.05;
constexpr double kRisqueConnus = 0.001;
constexpr double kPartNulle = 1e-6;  // of a freed coordinate's weight, when nothing controls it

using groupe = systemePondere::groupe;

/// Residuals of all measures and, for each, (P v) and e^T P Qv P e, kept true while measures are left out.
class residusSuivis {
public:
  residusSuivis(const std::vector<statistiqueMesure>& s, const systemePondere& systeme)
      : m_systeme(systeme), m_place(s.size()) {
    v.assign(s.size(), 0.0);
    d.assign(s.size(), 0.0);
    for (std::size_t g = 0; g < systeme.groupes().size(); ++g) {
      const auto& mesures = systeme.groupes()[g].mesures;
      for (std::size_t k = 0; k < mesures.size(); ++k) {
        const auto i = static_cast<std::size_t>(mesures[k]);
        m_place[i] = {g, k};
        v[i] = s[i].residu;
        if (s[i].detectable > 0.0) d[i] = std::pow(kDecentrage / s[i].detectable, 2);
      }
    }
  }
  /// e^T P of the measure, times a vector.
  [[nodiscard]] double fois(std::size_t i, const std::vector<double>& x) const {
    const groupe& g = m_systeme.groupes()[m_place[i].first];
    double somme = 0.0;
    for (std::size_t k = 0; k < g.mesures.size(); ++k)
      somme += g.P(static_cast<Eigen::Index>(m_place[i].second), static_cast<Eigen::Index>(k)) *
               x[static_cast<std::size_t>(g.mesures[k])];
    return somme;
  }
  /// Qv P e = e - A Q A^T P e, with those left out before taken out.
  [[nodiscard]] std::vector<double> colonne(std::size_t i) const {
    std::vector<double> pe(v.size(), 0.0);
    const groupe& g = m_systeme.groupes()[m_place[i].first];
    Eigen::VectorXd b = Eigen::VectorXd::Zero(m_systeme.colonnes().nombre);
    for (std::size_t k = 0; k < g.mesures.size(); ++k)
      for (const auto& t : m_systeme.ligne(g.mesures[k]))
        if (const int c = m_systeme.colonne(t); c >= 0)
          b[c] += t.a * g.P(static_cast<Eigen::Index>(k), static_cast<Eigen::Index>(m_place[i].second));
    const Eigen::VectorXd x = m_systeme.inverseFois(b);
    for (const groupe& autre : m_systeme.groupes())
      for (const int j : autre.mesures)
        for (const auto& t : m_systeme.ligne(j))
          if (const int c = m_systeme.colonne(t); c >= 0) pe[static_cast<std::size_t>(j)] -= t.a * x[c];
    pe[i] += 1.0;
    for (const auto& [ancienne, dAncien] : m_sorties) {
      const double f = fois(i, ancienne) / dAncien;
      for (std::size_t j = 0; j < pe.size(); ++j) pe[j] -= ancienne[j] * f;
    }
    return pe;
  }
  void sortir(std::size_t i) {
    const std::vector<double> c = colonne(i);
    const double di = d[i];
    const double f = fois(i, v) / di;
    for (std::size_t j = 0; j < v.size(); ++j) {
      v[j] -= c[j] * f;
      if (d[j] > 0.0) d[j] -= std::pow(fois(j, c), 2) / di;
    }
    d[i] = 0.0;
    m_sorties.emplace_back(c, di);
  }

  std::vector<double> v;
  std::vector<double> d;

private:
  const systemePondere& m_systeme;
  std::vector<std::pair<std::size_t, std::size_t>> m_place;
  std::vector<std::pair<std::vector<double>, double>> m_sorties;
};

}  // namespace

double risqueMesure(std::size_t mesures) {
  return std::min(kAlphaMesure, kRisqueReseau / static_cast<double>(std::max<std::size_t>(mesures, 1)));
}

double limiteW(std::size_t mesures) { return quantileNormal(1.0 - risqueMesure(mesures) / 2.0); }

std::vector<mesureSuspecte> chercherMesuresFausses(const std::vector<statistiqueMesure>& statistiques,
                                                   const systemePondere& systeme, double somme,
                                                   int redondance, std::size_t nombreMax) {
  std::vector<mesureSuspecte> suspectes;
  residusSuivis suivi(statistiques, systeme);
  const std::vector<double> initiales = suivi.d;
  const double limite = limiteW(statistiques.size());
  while (suspectes.size() < nombreMax && redondance > 0) {
    mesureSuspecte pire;
    for (std::size_t i = 0; i < suivi.v.size(); ++i) {
      if (!(suivi.d[i] > kPartNulle * initiales[i]) || suivi.d[i] <= 0.0) continue;
      const double w = suivi.fois(i, suivi.v) / std::sqrt(suivi.d[i]);
      if (std::abs(w) <= std::max(limite, std::abs(pire.w))) continue;
      pire.mesure = static_cast<int>(i);
      pire.w = w;
      pire.erreur = -w / std::sqrt(suivi.d[i]);
    }
    if (pire.mesure < 0) break;
    somme -= pire.w * pire.w;
    --redondance;
    pire.m0Sans = redondance > 0 ? std::sqrt(std::max(somme, 0.0) / redondance) : 0.0;
    suspectes.push_back(pire);
    if (suspectes.size() < nombreMax) suivi.sortir(static_cast<std::size_t>(pire.mesure));
  }
  return suspectes;
}

namespace {

/// One fixed point in plan or in height, freed.
bool liberer(const reseauPondere& reseau, const systemePondere& systeme,
             const std::vector<const groupe*>& groupes, connuSuspect& connu) {
  const int premier = connu.altitude ? 2 : 0;
  const Eigen::Index n = connu.altitude ? 1 : 2;
  Eigen::MatrixXd b = Eigen::MatrixXd::Zero(systeme.colonnes().nombre, n);
  Eigen::MatrixXd poids = Eigen::MatrixXd::Zero(n, n);
  Eigen::VectorXd second = Eigen::VectorXd::Zero(n);
  for (const groupe* g : groupes) {
    const auto k = static_cast<Eigen::Index>(g->mesures.size());
    Eigen::MatrixXd H = Eigen::MatrixXd::Zero(k, n);
    Eigen::VectorXd l(k);
    for (Eigen::Index i = 0; i < k; ++i) {
      const int mesure = g->mesures[static_cast<std::size_t>(i)];
      l[i] = reseau.ecartAuCalcul(reseau.mesures[static_cast<std::size_t>(mesure)]);
      for (const auto& t : systeme.ligne(mesure))
        if (t.point == connu.point && t.axe >= premier && t.axe < premier + n) H(i, t.axe - premier) += t.a;
    }
    const Eigen::MatrixXd PH = g->P * H;
    poids += H.transpose() * PH;
    second += PH.transpose() * l;
    for (Eigen::Index i = 0; i < k; ++i)
      for (const auto& t : systeme.ligne(g->mesures[static_cast<std::size_t>(i)]))
        if (const int c = systeme.colonne(t); c >= 0) b.row(c) += t.a * PH.row(i);
  }
  const Eigen::MatrixXd reste = poids - systeme.formeInverse(b);
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> valeurs(reste);
  if (!(valeurs.eigenvalues()[0] > kPartNulle * poids.trace())) return false;
  const Eigen::VectorXd d = reste.ldlt().solve(second);
  for (Eigen::Index i = 0; i < n; ++i) connu.ecart.at(static_cast<std::size_t>(premier + i)) = d[i];
  connu.test = d.dot(reste * d);
  return true;
}

}  // namespace

std::vector<connuSuspect> libererConnus(const reseauPondere& reseau, const systemePondere& systeme) {
  std::vector<std::array<std::vector<const groupe*>, 2>> groupes(reseau.points.size());
  for (const groupe& g : systeme.groupes())
    for (const int i : g.mesures)
      for (const auto& t : systeme.ligne(i)) {
        if (t.point < 0 ||
            reseau.point(t.point).statut.at(static_cast<std::size_t>(t.axe)) != statutCoordonnee::fixe)
          continue;
        auto& liste = groupes[static_cast<std::size_t>(t.point)].at(t.axe == 2 ? 1 : 0);
        if (liste.empty() || liste.back() != &g) liste.push_back(&g);
      }
  std::vector<connuSuspect> tous;
  for (std::size_t p = 0; p < groupes.size(); ++p) {
    for (std::size_t altitude = 0; altitude < 2; ++altitude) {
      connuSuspect connu;
      connu.point = static_cast<int>(p);
      connu.altitude = altitude == 1;
      if (!groupes[p].at(altitude).empty() && liberer(reseau, systeme, groupes[p].at(altitude), connu))
        tous.push_back(connu);
    }
  }
  const double risque = kRisqueConnus / static_cast<double>(std::max<std::size_t>(tous.size(), 1));
  for (connuSuspect& c : tous) c.test /= quantileKhi2(1.0 - risque, c.altitude ? 1.0 : 2.0);
  std::erase_if(tous, [](const connuSuspect& c) { return !(c.test > 1.0); });
  std::sort(tous.begin(), tous.end(), [](const auto& a, const auto& b) { return a.test > b.test; });
  return tous;
}

}  // namespace veltora
