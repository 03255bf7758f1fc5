#include "calc/network/controle_reseau.h"

#include "base/format.h"
#include "base/median.h"
#include "calc/angles.h"
#include "calc/network/listing_reseau.h"
#include "calc/network/moindres_carres_plani.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

namespace veltora {
namespace {

constexpr double kMediane = 5.0;        // times the median of the kind, strict
constexpr double kAuHasard = 100.0;     // residuals of a kind, above which chance alone passes that factor
constexpr std::size_t kResidusMin = 4;  // fewer have no median to speak of
constexpr std::size_t kAnglesMesures = 100;  // that tell the size of the errors, about
constexpr double kControleMinimal = 1e-6;    // redundancy of an observation that others control
constexpr double kSansControle = 1e-7;  // metres; radians times metres: an observation without redundancy
constexpr double kArrondi = 0.015;      // metres that coordinates and measures in centimetres explain, strict
constexpr double kArrondiAngle = 1.6e-5;               // radians, 1 mgr
constexpr double kFaute = 0.05;                        // metres, too large by itself, strict
constexpr double kFauteRelative = 1.0 / 1000;          // of a distance, likewise and besides
constexpr double kFauteAngle = 3.1415926535897932e-4;  // radians, 20 mgr, likewise and besides
constexpr double kProcheDeZero = 0.3;                  // radians: one direction, but for the turn
constexpr double kJeu = 1.5;                           // on the reach of observations
constexpr double kPorteeAngle = 10.0;                  // times the extent of the fixed points

double ecart(const pointACalculer& a, const pointACalculer& b) { return std::hypot(b.X - a.X, b.Y - a.Y); }

/// A residual with what it makes across the sight, metres; a length is that itself.
struct residuPese {
  residuObservation residu;
  double enMetres = 0.0;
};

bool fautif(const donneesReseau& reseau, const residuPese& r) {
  const ObservationReduite& o = reseau.observations.GetAt(r.residu.observation);
  if (!(r.enMetres > kFaute)) return false;
  if (o.type == ObservationReduite::kAngle) return std::fabs(r.residu.valeur) > kFauteAngle;
  return o.type != ObservationReduite::kDistance || r.enMetres > kFauteRelative * o.mesure;
}

bool auDelaDesArrondis(const donneesReseau& reseau, const residuPese& r) {
  const bool angle = reseau.observations.GetAt(r.residu.observation).type == ObservationReduite::kAngle;
  return r.enMetres > kArrondi && (!angle || std::fabs(r.residu.valeur) > kArrondiAngle);
}

/// Medians of one kind; 0 when there are too few.
struct medianes {
  double valeur = 0.0;    // radians or metres
  double enMetres = 0.0;  // across the sight
  double facteur = kMediane;
};

medianes mesurerMedianes(const std::vector<residuPese>& residus) {
  std::vector<double> valeurs;
  std::vector<double> largeurs;
  for (const residuPese& r : residus) {
    if (!(r.enMetres > kSansControle)) continue;
    valeurs.push_back(std::fabs(r.residu.valeur));
    largeurs.push_back(r.enMetres);
  }
  if (valeurs.size() < kResidusMin) return {};
  // The largest of n normal errors grows with the root of ln n.
  const double hasard = std::max(kAuHasard, static_cast<double>(valeurs.size()));
  const double facteur = kMediane * std::sqrt(std::log(hasard) / std::log(kAuHasard));
  return {base::median(std::move(valeurs)), base::median(std::move(largeurs)), facteur};
}

/// Many times the median, and not only because the sight is short: across it, too.
bool detonne(const residuPese& r, const medianes& m) {
  return m.valeur > 0.0 && std::fabs(r.residu.valeur) > m.facteur * m.valeur &&
         r.enMetres > m.facteur * m.enMetres;
}

std::vector<residuPese> duGenre(const donneesReseau& reseau, const std::vector<residuObservation>& residus,
                                signed char type) {
  std::vector<residuPese> pris;
  for (const residuObservation& r : residus) {
    const ObservationReduite& o = reseau.observations.GetAt(r.observation);
    if (o.type != type) continue;
    const bool angle = type == ObservationReduite::kAngle;
    if (angle && compteUnTour(reseau, o)) continue;
    pris.push_back({r, std::fabs(r.valeur) * (angle ? portee(reseau, o) : 1.0)});
  }
  std::stable_sort(pris.begin(), pris.end(), [](const residuPese& a, const residuPese& b) {
    return std::fabs(a.residu.valeur) > std::fabs(b.residu.valeur);
  });
  return pris;
}

/// What the errors of the distances make of the residual of an angle: v = R e, so with errors of one size it
/// is the root of the sum of squares of the elements of R that stand for distances, times a measure which the
/// residuals of the angles themselves give.
class partDesDistances {
public:
  partDesDistances(donneesReseau& reseau, const std::vector<residuObservation>& residus)
      : m_controle(systemePlani(reseau).lineariser()) {
    if (!m_controle.defini()) return;
    std::vector<const residuObservation*> angles;
    for (const residuObservation& r : residus) {
      const signed char genre = reseau.observations.GetAt(r.observation).type;
      if (genre == ObservationReduite::kAngle) angles.push_back(&r);
      if (genre == ObservationReduite::kDistance) m_distances.push_back(static_cast<std::size_t>(r.ligne));
    }
    std::vector<double> mesures;
    for (std::size_t i = 0; i < angles.size(); i += angles.size() / kAnglesMesures + 1)
      if (const double forme = formeDe(*angles[i]); forme > 0.0)
        mesures.push_back(std::fabs(angles[i]->valeur) / forme);
    if (!mesures.empty()) m_mesure = base::median(std::move(mesures));
  }
  /// Median of it, radians; 0 when it is not known.
  [[nodiscard]] double de(const residuObservation& angle) const {
    return m_mesure > 0.0 ? m_mesure * formeDe(angle) : 0.0;
  }

private:
  [[nodiscard]] double formeDe(const residuObservation& angle) const {
    const std::vector<double> influences = m_controle.influences(static_cast<std::size_t>(angle.ligne));
    double carres = 0.0;
    for (const std::size_t j : m_distances) carres += influences[j] * influences[j];
    return std::sqrt(carres);
  }

  controleSysteme m_controle;
  std::vector<std::size_t> m_distances;  // their rows
  double m_mesure = 0.0;
};

/// @param hasard  the median that an angle's residual has by chance, radians
std::vector<residuSuspect> suspectsParmi(const donneesReseau& reseau,
                                         const std::vector<residuObservation>& residus, std::size_t nombre,
                                         const std::function<double(const residuObservation&)>& hasard) {
  std::vector<residuSuspect> suspects;
  for (const signed char type :
       {ObservationReduite::kAngle, ObservationReduite::kDistance, ObservationReduite::kDenivelee}) {
    const std::vector<residuPese> siens = duGenre(reseau, residus, type);
    const medianes m = mesurerMedianes(siens);
    const auto parHasard = [&](const residuObservation& r) {
      return type == ObservationReduite::kAngle && std::fabs(r.valeur) <= m.facteur * hasard(r);
    };
    for (const residuPese& r : siens) {
      if (suspects.size() >= nombre) return suspects;
      const bool seul = fautif(reseau, r);
      if (detonne(r, m) && auDelaDesArrondis(reseau, r) && (seul || !parHasard(r.residu)))
        suspects.push_back({r.residu, m.valeur});
      else if (seul)
        suspects.push_back({r.residu, 0.0});
    }
  }
  return suspects;
}

/// How far observations let points lie from the fixed ones: the shortest way along the observations.
class Portees {
public:
  explicit Portees(const donneesReseau& reseau) : m_reseau(reseau), m_voisins(reseau.points.size()) {
    mesurerAngles();
    for (const ObservationReduite& o : reseau.observations) joindre(o);
    for (const pointACalculer& p : reseau.points)
      m_portees.push_back(p.planiConnue ? 0.0 : std::numeric_limits<double>::infinity());
    parcourir();
  }
  [[nodiscard]] double de(int point) const { return m_portees.at(static_cast<std::size_t>(point)); }

private:
  using Etape = std::pair<double, int>;
  /// What an angle reaches; with a single fixed point ten times the longest distance.
  void mesurerAngles() {
    std::array<double, 4> bords = {HUGE_VAL, -HUGE_VAL, HUGE_VAL, -HUGE_VAL};
    for (const pointACalculer& p : m_reseau.points) {
      if (!p.planiConnue || !p.enPlan()) continue;
      bords = {std::min(bords[0], p.X), std::max(bords[1], p.X), std::min(bords[2], p.Y),
               std::max(bords[3], p.Y)};
    }
    if (bords[1] >= bords[0]) m_angle = std::hypot(bords[1] - bords[0], bords[3] - bords[2]);
    for (const ObservationReduite& o : m_reseau.observations)
      if (o.type == ObservationReduite::kDistance) m_angle = std::max(m_angle, o.mesure);
    m_angle *= kPorteeAngle;
  }
  void relier(int a, int b, double longueur) {
    m_voisins.at(static_cast<std::size_t>(a)).emplace_back(longueur, b);
    m_voisins.at(static_cast<std::size_t>(b)).emplace_back(longueur, a);
  }
  void joindre(const ObservationReduite& o) {
    if (o.type == ObservationReduite::kDistance) relier(o.station, o.vise, std::fabs(o.mesure) + kFaute);
    if (o.type != ObservationReduite::kAngle) return;
    relier(o.station, o.vise, m_angle);
    if (o.reference != -1) relier(o.station, o.reference, m_angle);
  }
  void parcourir() {
    std::priority_queue<Etape, std::vector<Etape>, std::greater<>> file;
    for (int i = 0; i < m_reseau.points.GetSize(); ++i)
      if (de(i) == 0.0) file.emplace(0.0, i);
    while (!file.empty()) {
      const auto [longueur, point] = file.top();
      file.pop();
      if (longueur > de(point)) continue;
      for (const auto& [pas, voisin] : m_voisins[static_cast<std::size_t>(point)]) {
        if (!(longueur + pas < de(voisin))) continue;
        m_portees[static_cast<std::size_t>(voisin)] = longueur + pas;
        file.emplace(longueur + pas, voisin);
      }
    }
  }

  const donneesReseau& m_reseau;
  std::vector<std::vector<Etape>> m_voisins;
  std::vector<double> m_portees;
  double m_angle = 0.0;
};

}  // namespace

double portee(const donneesReseau& reseau, const ObservationReduite& o) {
  const pointACalculer& station = reseau.point(o.station);
  const double vise = ecart(station, reseau.point(o.vise));
  if (o.type != ObservationReduite::kAngle || o.reference == -1) return vise;
  return std::min(vise, ecart(station, reseau.point(o.reference)));
}

bool seContredisent(const ObservationReduite& a, const ObservationReduite& b) {
  if (a.type == ObservationReduite::kAngle)
    return std::fabs(std::remainder(a.mesure - b.mesure, 2.0 * kPi)) > kFauteAngle;
  const double difference = std::fabs(a.mesure - b.mesure);
  return difference > kFaute && difference > kFauteRelative * b.mesure;
}

bool compteUnTour(const donneesReseau& reseau, const ObservationReduite& o) {
  const double difference = std::fabs(o.mesure - reseau.valeurCalculee(o));
  return difference > kPi && std::fabs(difference - 2.0 * kPi) <= kProcheDeZero;
}

erreursReseau::erreursReseau(const donneesReseau& reseau, const std::vector<residuObservation>& residus,
                             systemeNormal systeme) {
  const controleSysteme controle(std::move(systeme));
  if (controle.defini()) m_redondances = controle.redondances();
  std::map<signed char, std::vector<double>> erreurs;
  for (const residuObservation& r : residus)
    if (const double e = erreur(r); e > 0.0)
      erreurs[reseau.observations.GetAt(r.observation).type].push_back(e);
  for (auto& [genre, valeurs] : erreurs) m_medianes[genre] = base::median(std::move(valeurs));
}

double erreursReseau::erreur(const residuObservation& residu) const {
  if (m_redondances.empty()) return std::fabs(residu.valeur);
  if (residu.ligne < 0) return 0.0;
  const double part = m_redondances.at(static_cast<std::size_t>(residu.ligne));
  return part > kControleMinimal ? std::fabs(residu.valeur) / std::sqrt(part) : 0.0;
}

double erreursReseau::mediane(signed char genre) const {
  const auto trouvee = m_medianes.find(genre);
  return trouvee == m_medianes.end() ? 0.0 : trouvee->second;
}

std::vector<residuSuspect> residusSuspects(const donneesReseau& reseau,
                                           const std::vector<residuObservation>& residus,
                                           std::size_t nombre) {
  return suspectsParmi(reseau, residus, nombre, [](const residuObservation&) { return 0.0; });
}

std::vector<residuSuspect> suspectsDuPlan(donneesReseau& reseau,
                                          const std::vector<residuObservation>& residus, std::size_t nombre) {
  std::vector<residuSuspect> suspects = residusSuspects(reseau, residus, nombre);
  if (suspects.empty()) return suspects;
  const partDesDistances part(reseau, residus);
  return suspectsParmi(reseau, residus, nombre, [&part](const residuObservation& r) { return part.de(r); });
}

std::vector<int> pointsTropLoin(const donneesReseau& reseau) {
  const Portees portees(reseau);
  std::vector<const pointACalculer*> fixes;
  for (const pointACalculer& p : reseau.points)
    if (p.planiConnue && p.enPlan()) fixes.push_back(&p);
  std::vector<int> loin;
  for (int i = 0; i < reseau.points.GetSize(); ++i) {
    const pointACalculer& p = reseau.points.GetAt(i);
    if (p.planiConnue || !p.enPlan()) continue;
    const auto atteint = [&](const pointACalculer* fixe) { return ecart(*fixe, p) <= kJeu * portees.de(i); };
    if (std::none_of(fixes.begin(), fixes.end(), atteint)) loin.push_back(i);
  }
  return loin;
}

void douterResidus(const donneesReseau& reseau, const std::vector<residuSuspect>& suspects,
                   base::Remarques& remarques) {
  base::Remarques liste;
  for (const residuSuspect& s : suspects) {
    const ObservationReduite& o = reseau.observations.GetAt(s.residu.observation);
    std::wstring texte =
        citerObservation(reseau, o) + L" : résidu de " + texteResidu(o.type, s.residu.valeur);
    if (s.mediane > 0.0) {
      texte += base::formater(L", %.0f fois la médiane (%s)", std::fabs(s.residu.valeur) / s.mediane,
                              texteResidu(o.type, s.mediane));
    } else {
      texte += L", bien plus qu'une mesure n'en laisse";
    }
    liste.douter(texte);
  }
  remarques.citer(liste);
}

}  // namespace veltora
