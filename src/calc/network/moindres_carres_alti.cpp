#include "calc/network/moindres_carres_alti.h"

#include "arx/ed/acutads.h"
#include "base/format.h"
#include "calc/network/listing_reseau.h"

#include <cmath>

namespace veltora {
namespace {

/// The log's last line, from its line end on.
std::wstring derniereLigne(const std::wstring& journal) {
  const std::size_t debut = journal.rfind(L"\r\n");
  return debut == std::wstring::npos ? L"\r\n" + journal : journal.substr(debut);
}

}  // namespace

bool compteEnAltitude(const donneesReseau& reseau, const ObservationReduite& o) {
  if (o.type != ObservationReduite::kDenivelee) return false;
  if (!reseau.utilisable.GetAt(o.station) || !reseau.utilisable.GetAt(o.vise)) return false;
  return !(reseau.point(o.station).altiConnue && reseau.point(o.vise).altiConnue);
}

systemeNormal::Ligne systemeAlti::ligne(const ObservationReduite& o) const {
  systemeNormal::Ligne resultat;
  resultat.poids = m_reseau.poidsObservation(o);
  resultat.poids = 1.0;
  const int c1 = colonne(o.station);
  const int c2 = colonne(o.vise);
  if (c1 < 0 && c2 < 0) {
    acutPrintf(L"\nBizarre !!!");
  } else if (c2 < 0) {
    resultat.second = o.mesure - m_reseau.point(o.vise).Z;
  } else if (c1 < 0) {
    resultat.second = m_reseau.point(o.station).Z + o.mesure;
  } else {
    resultat.second = o.mesure;
  }
  if (c2 >= 0) resultat.coefficients.emplace_back(c2, 1.0);
  if (c1 >= 0) resultat.coefficients.emplace_back(c1, -1.0);
  return resultat;
}

void systemeAlti::journaliserResidus(std::wstring& journal, std::vector<double>& v,
                                     const systemeNormal& systeme) const {
  for (std::size_t r = 0; r < v.size(); ++r) {
    const double ecart = v[r] - systeme.lignes()[r].second;
    // Deliberate (residu-altitude): the observation with the row's index decides; a row past others of
    // another type repeats the previous line and leaves v as it is.
    if (m_reseau.observations[r].type == ObservationReduite::kDenivelee) {
      v[r] = ecart;
      journal += base::formater(L"\r\nRésidu pour l'observation %d (mm) =%14.10f ", static_cast<int>(r),
                                ecart * 1000.0);
    } else {
      journal += derniereLigne(journal);
    }
  }
}

systemeNormal systemeAlti::lineariser() {
  int inconnus = 0;
  for (std::size_t i = 0; i < m_reseau.points.size(); ++i) {
    const pointACalculer& p = m_reseau.points[i];
    const bool libre = !(p.planiConnue && p.altiConnue) && m_reseau.utilisable[i];
    m_colonnes.push_back(libre ? inconnus++ : -1);
  }
  m_reseau.formules.compiler();
  systemeNormal systeme(inconnus);
  for (const ObservationReduite& o : m_reseau.observations) {
    if (compteEnAltitude(m_reseau, o)) systeme.ajouter(ligne(o));
  }
  return systeme;
}

double systemeAlti::resoudre(std::wstring& journal) {
  const systemeNormal systeme = lineariser();
  const std::vector<double> x = systeme.resoudre();
  journaliserVecteur(journal, x);
  if (x.empty()) return kEchecCalcul;
  std::vector<double> v = systeme.produit(x);
  journaliserResidus(journal, v, systeme);
  journal += L"\r\nXYZ:";
  for (std::size_t i = 0; i < m_colonnes.size(); ++i) {
    if (m_colonnes[i] < 0) continue;
    pointACalculer& p = m_reseau.points[i];
    p.Z = x[static_cast<std::size_t>(m_colonnes[i])];
    journal += base::formater(L"\r\n\t[%s]\t(%14.4f\t%14.4f\t%14.4f\t)", p.nom, p.X, p.Y, p.Z);
  }
  double chi2 = 0.0;
  for (std::size_t r = 0; r < v.size(); ++r) chi2 += v[r] * v[r];
  journal += base::formater(L"\r\nValeur du chi 2=%14.10f", chi2);
  return norme(x);
}

bool altitudesProvisoires(donneesReseau& reseau, std::wstring& journal) {
  bool calcule = false;
  // Height differences of each point, in their order.
  std::vector<std::vector<int>> parPoint(reseau.points.size());
  for (int i = 0; i < reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    if (o.type != ObservationReduite::kDenivelee) continue;
    (void)reseau.points.GetAt(o.station);
    (void)reseau.points.GetAt(o.vise);
    parPoint[static_cast<std::size_t>(o.station)].push_back(i);
    if (o.vise != o.station) parPoint[static_cast<std::size_t>(o.vise)].push_back(i);
  }
  bool encore = true;
  while (encore) {
    encore = false;
    for (int p = 0; p < reseau.points.GetSize(); ++p) {
      if (reseau.utilisable.GetAt(p)) continue;
      double somme = 0.0;
      int equations = 0;
      for (const int i : parPoint[static_cast<std::size_t>(p)]) {
        const ObservationReduite& o = reseau.observations.GetAt(i);
        const int autre = o.vise == p ? o.station : o.vise;
        if (!reseau.utilisable.GetAt(autre)) continue;
        somme +=
            o.vise == p ? reseau.points.GetAt(autre).Z + o.mesure : reseau.points.GetAt(autre).Z - o.mesure;
        ++equations;
      }
      journal += base::formater(L"\r\nCalcul du point %s  à l'aide de %d equations ",
                                reseau.points.GetAt(p).nom, equations);
      const double z = somme / equations;  // not a number without any equation: the point stays unusable
      reseau.points.GetAt(p).Z = z;
      if (equations == 0) continue;
      reseau.utilisable.GetAt(p) = 1;
      calcule = true;
      encore = true;
      journal += solutionTrouvee(reseau.points.GetAt(p));
    }
  }
  return calcule;
}

}  // namespace veltora
