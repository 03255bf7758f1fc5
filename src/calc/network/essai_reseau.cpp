#include "calc/network/essai_reseau.h"

#include "base/median.h"
#include "calc/angles.h"
#include "calc/network/points_provisoires.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr int kPassesEssai = 10;
// The median in front of the first solve, radians or a share of a distance, strict.
constexpr double kLoinDuCompte = 0.2;

}  // namespace

essaiReseau::essaiReseau(const donneesReseau& de) {
  reseau.points = de.points;
  reseau.observations = de.observations;
  reseau.anglesParUnite = de.anglesParUnite;
  for (pointACalculer& p : reseau.points) {
    if (!p.planiConnue) p.X = p.Y = base::Z_ABSENT;
    if (!p.altiConnue) p.Z = base::Z_ABSENT;
  }
}

void essaiReseau::ramenerAngles() {
  for (ObservationReduite& o : reseau.observations) {
    if (o.type != ObservationReduite::kAngle) continue;
    const double ecart = o.mesure - reseau.valeurCalculee(o);
    if (std::isfinite(ecart)) o.mesure -= 2.0 * kPi * std::round(ecart / (2.0 * kPi));
  }
}

/// Whether the provisional coordinates are anywhere near: not so when what was changed is not the mistake.
bool essaiReseau::pasTropFaux() const {
  std::vector<double> ecarts;
  for (const residuObservation& r : residusPlan(reseau)) {
    const ObservationReduite& o = reseau.observations.GetAt(r.observation);
    const double ecart = std::fabs(o.type == ObservationReduite::kAngle ? r.valeur : r.valeur / o.mesure);
    if (std::isfinite(ecart)) ecarts.push_back(ecart);
  }
  if (ecarts.empty()) return false;
  return base::median(std::move(ecarts)) < kLoinDuCompte;
}

bool essaiReseau::planConvient(int pointsAttendus) {
  std::wstring journal;
  reseau.reduireObservations(journal);
  if (!calculerPointsProvisoires(reseau, journal) || pointsEnPlan(reseau) < pointsAttendus) return false;
  ramenerAngles();
  if (!pasTropFaux()) return false;
  bool continuer = true;
  for (int passe = 0; continuer && passe < kPassesEssai; ++passe) {
    continuer = reseau.calculerPlaniEnSilence();
    ramenerAngles();
  }
  if (continuer || !(reseau.dernierPas >= 0.0)) return false;
  m_residus = residusPlan(reseau);
  return static_cast<int>(m_residus.size()) > 2 * pointsEnPlan(reseau) && pointsTropLoin(reseau).empty() &&
         suspectsDuPlan(reseau, m_residus, 1).empty();
}

bool essaiReseau::altitudesConviennent(int pointsAttendus) {
  std::wstring journal;
  reseau.calculerAlti(journal);
  if (!(reseau.dernierPas >= 0.0) || pointsEnAltitude(reseau) < pointsAttendus) return false;
  m_residus = residusAltitudes(reseau);
  return static_cast<int>(m_residus.size()) > pointsEnAltitude(reseau) &&
         residusSuspects(reseau, m_residus).empty();
}

double essaiReseau::pire(signed char type) const {
  double plusGrand = 0.0;
  for (const residuObservation& r : m_residus)
    if (reseau.observations.GetAt(r.observation).type == type)
      plusGrand = std::max(plusGrand, std::fabs(r.valeur));
  return plusGrand;
}

int pointsEnPlan(const donneesReseau& reseau) {
  return static_cast<int>(std::count_if(reseau.points.begin(), reseau.points.end(),
                                        [](const auto& p) { return !p.planiConnue && p.enPlan(); }));
}

int pointsEnAltitude(const donneesReseau& reseau) {
  return static_cast<int>(std::count_if(reseau.points.begin(), reseau.points.end(),
                                        [](const auto& p) { return !p.altiConnue && p.enAltitude(); }));
}

}  // namespace veltora
