// Symbols: U number of unknown points, X of point k is unknown k and its Y unknown U + k; L
// right-hand side (measured minus computed); A derivatives; v = A x; d1 distance station to target,
// d2 distance station to reference.
//
// Sources: variation of coordinates (Ghilani, Adjustment Computations, distance, azimuth and angle
// observations). Of the distance d from (x, y): dd = (x/d) dx + (y/d) dy; of the bearing, the arc tangent of
// x/y: dg = (y/d^2) dx - (x/d^2) dy; an angle is the difference of two bearings.

#include "calc/network/moindres_carres_plani.h"

#include "base/format.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace veltora {
void systemePlani::numeroter() {
  m_colonnes.assign(m_reseau.points.size(), -1);
  for (std::size_t i = 0; i < m_colonnes.size(); ++i) {
    if (!m_reseau.points[i].planiConnue && m_reseau.utilisable[i]) m_colonnes[i] = m_inconnus++;
  }
}

bool compteEnPlan(const donneesReseau& reseau, const ObservationReduite& o) {
  if (o.type != ObservationReduite::kAngle && o.type != ObservationReduite::kDistance) return false;
  const auto utilisable = [&reseau](int point) { return reseau.utilisable.GetAt(point) != 0; };
  if (!utilisable(o.station) || !utilisable(o.vise)) return false;
  return o.type == ObservationReduite::kDistance || o.reference == -1 || utilisable(o.reference);
}

void systemePlani::deriver(systemeNormal::Ligne& ligne, int point, double dx, double dy) const {
  const int k = m_colonnes[static_cast<std::size_t>(point)];
  if (k < 0) return;
  for (const auto& [colonne, valeur] : {std::pair(k, dx), std::pair(m_inconnus + k, dy)}) {
    ligne.coefficients.emplace_back(colonne, valeur);
  }
}

systemeNormal::Ligne systemePlani::ligne(const ObservationReduite& o) const {
  systemeNormal::Ligne resultat;
  resultat.second = o.mesure - m_reseau.valeurCalculee(o);
  resultat.poids = m_reseau.poidsObservation(o);
  // Deliberate (poids-unitaires): every weight becomes 1.0 over the evaluated one;
  // the adjustment is unweighted.
  resultat.poids = 1.0;
  const pointACalculer& s = m_reseau.point(o.station);
  const pointACalculer& v = m_reseau.point(o.vise);
  const double dx = v.X - s.X;
  const double dy = v.Y - s.Y;
  if (o.type == ObservationReduite::kDistance) {
    const double d = std::hypot(dx, dy);
    deriver(resultat, o.vise, dx / d, dy / d);
    deriver(resultat, o.station, -(dx / d), -(dy / d));
    return resultat;
  }
  const double d1 = dx * dx + dy * dy;
  deriver(resultat, o.vise, dy / d1, -dx / d1);
  if (o.reference == -1) {
    deriver(resultat, o.station, -(dy / d1), dx / d1);
    return resultat;
  }
  const pointACalculer& r = m_reseau.point(o.reference);
  const double rx = r.X - s.X;
  const double ry = r.Y - s.Y;
  const double d2 = rx * rx + ry * ry;
  deriver(resultat, o.reference, -ry / d2, rx / d2);
  deriver(resultat, o.station, ry / d2 - dy / d1, dx / d1 - rx / d2);
  return resultat;
}

void systemePlani::journaliserResidus(std::wstring& journal, const std::vector<double>& v,
                                      const systemeNormal& systeme) const {
  for (std::size_t r = 0; r < v.size(); ++r) {
    const double ecart = v[r] - systeme.lignes()[r].second;
    // Deliberate (residu-index): the unit follows the observation whose index equals the row's, not the row's
    // own.
    const bool longueur = m_reseau.observations[r].type == ObservationReduite::kDistance;
    const double facteur = longueur ? kMillimetres : kMilligrades;
    journal +=
        base::formater(longueur ? L"\r\nRésidu pour l'observation %d  =%14.10f mm (- L : %14.10f mm)"
                                : L"\r\nRésidu pour l'observation %d  =%14.10f mgr (- L : %14.10f mgr)",
                       static_cast<int>(r), v[r] * facteur, ecart * facteur);
  }
}

void systemePlani::deplacer(const std::vector<double>& x) {
  for (std::size_t i = 0; i < m_colonnes.size(); ++i) {
    if (m_colonnes[i] < 0) continue;
    pointACalculer& p = m_reseau.points[i];
    p.X += x[static_cast<std::size_t>(m_colonnes[i])];
    p.Y += x[static_cast<std::size_t>(m_inconnus) + static_cast<std::size_t>(m_colonnes[i])];
  }
}

void systemePlani::journaliserPoints(std::wstring& journal) const {
  journal += L"\r\nXYZ:";
  for (std::size_t i = 0; i < m_colonnes.size(); ++i) {
    if (m_colonnes[i] < 0) continue;
    const pointACalculer& p = m_reseau.points[i];
    journal += base::formater(L"\r\n[%s]\t(%14.4f\t%14.4f)", p.nom, p.X, p.Y);
  }
}

systemeNormal systemePlani::lineariser() {
  numeroter();
  m_reseau.formules.compiler();
  systemeNormal systeme(2 * m_inconnus);
  for (const ObservationReduite& o : m_reseau.observations) {
    if (compteEnPlan(m_reseau, o)) systeme.ajouter(ligne(o));
  }
  return systeme;
}

std::vector<int> systemePlani::pointsDe(const std::vector<int>& inconnues) const {
  std::vector<int> points;
  for (int i = 0; i < static_cast<int>(m_colonnes.size()); ++i) {
    const int k = m_colonnes[static_cast<std::size_t>(i)];
    const auto sienne = [this, k](int inconnue) { return inconnue == k || inconnue == m_inconnus + k; };
    if (k >= 0 && std::any_of(inconnues.begin(), inconnues.end(), sienne)) points.push_back(i);
  }
  return points;
}

bool systemePlani::verifierLignes(const systemeNormal& systeme) {
  std::size_t r = 0;
  for (int i = 0; i < m_reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = m_reseau.observations.GetAt(i);
    if (!compteEnPlan(m_reseau, o)) continue;
    const systemeNormal::Ligne& ligne = systeme.lignes()[r++];
    for (const auto& [colonne, a] : ligne.coefficients) {
      if (std::isfinite(a * a) && std::isfinite(a * ligne.second)) continue;
      m_arret = {pointsDe({colonne}).front(), i};
      return false;
    }
  }
  return true;
}

bool systemePlani::verifierSolution(const std::vector<double>& x) {
  const auto faux = std::find_if(x.begin(), x.end(), [](double pas) { return !std::isfinite(pas); });
  if (faux == x.end()) return true;
  m_arret = {pointsDe({static_cast<int>(faux - x.begin())}).front(), -1};
  return false;
}

double systemePlani::resoudre(std::wstring& journal) {
  const systemeNormal systeme = lineariser();
  std::vector<double> x;
  bool chiffrable = verifierLignes(systeme);
  if (chiffrable) x = systeme.resoudre();
  if (!verifierSolution(x)) {
    chiffrable = false;
    x.clear();
  }
  journaliserVecteur(journal, x);
  if (!chiffrable) return std::numeric_limits<double>::quiet_NaN();
  if (x.empty()) return kEchecCalcul;
  const std::vector<double> v = systeme.produit(x);
  journaliserResidus(journal, v, systeme);
  deplacer(x);
  journaliserPoints(journal);
  double chi2 = 0.0;
  for (std::size_t r = 0; r < v.size(); ++r) {
    const double poids = systeme.lignes()[r].poids;
    chi2 += v[r] * v[r] * (poids * poids);
  }
  journal += base::formater(L"\r\n\r\nValeur du chi 2=%14.10f", chi2);
  return norme(x);
}

double systemePlani::resoudreEnSilence() {
  const std::vector<double> x = lineariser().resoudreCreux();
  if (x.empty()) return kEchecCalcul;
  deplacer(x);
  return norme(x);
}

}  // namespace veltora
