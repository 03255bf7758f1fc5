#include "terrain/doutes.h"

#include "base/format.h"
#include "base/median.h"

#include <algorithm>
#include <cmath>

namespace veltora::terrain {
namespace {

constexpr double kRares = 0.01;       ///< share of the points that may be doubted as too far
constexpr double kPlusHaut = 9000.0;  ///< no ground lies higher, in metres
constexpr double kPlusBas = -1000.0;
constexpr double kZeroSepare = 1.0;  ///< from an altitude of 0 to the nearest other one

using Coordonnee = double AcGePoint3d::*;

std::wstring nommer(const std::vector<AcGePoint3d>& points, const std::vector<std::wstring>& reperes,
                    std::size_t rang) {
  const std::wstring ou = lieu(points[rang]);
  return rang < reperes.size() && !reperes[rang].empty() ? L"point " + reperes[rang] + L" (" + ou + L")"
                                                         : L"point en " + ou;
}

std::vector<double> valeurs(const std::vector<AcGePoint3d>& points, Coordonnee c) {
  std::vector<double> toutes;
  toutes.reserve(points.size());
  for (const AcGePoint3d& point : points) toutes.push_back(point.*c);
  return toutes;
}

void douterDesLointains(const std::vector<AcGePoint3d>& points, const std::vector<std::wstring>& reperes,
                        Coordonnee c, const wchar_t* quoi, base::Remarques& remarques) {
  std::vector<double> v = valeurs(points, c);
  const double milieu = base::median(v);
  for (double& valeur : v) valeur = std::abs(valeur - milieu);
  const double permis = std::max(kEcarts * base::median(v), kAuMoins);
  std::vector<std::size_t> loin;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (std::abs(points[i].*c - milieu) > permis) loin.push_back(i);
  if (static_cast<double>(loin.size()) > std::max(1.0, kRares * static_cast<double>(points.size()))) return;
  base::Remarques trouvees;
  for (const std::size_t rang : loin)
    trouvees.douter(nommer(points, reperes, rang) +
                    base::formater(L" : %s %.3f loin de celles des autres (médiane %.3f)", quoi,
                                   points[rang].*c, milieu));
  remarques.citer(trouvees);
}

void douterDesZeros(const std::vector<AcGePoint3d>& points, base::Remarques& remarques) {
  std::size_t zeros = 0;
  double bas = 1e300;
  double haut = -1e300;
  for (const AcGePoint3d& point : points) {
    if (point.z == 0.0) {
      ++zeros;
    } else {
      bas = std::min(bas, point.z);
      haut = std::max(haut, point.z);
    }
  }
  if (zeros == 0 || zeros == points.size() || (bas < kZeroSepare && haut > -kZeroSepare)) return;
  remarques.douter(base::formater(L"points d'altitude 0 parmi d'autres de %.3f à %.3f : %d", bas, haut,
                                  static_cast<int>(zeros)));
}

}  // namespace

std::wstring lieu(const AcGePoint3d& point) { return base::formater(L"%.3f, %.3f", point.x, point.y); }

void douterDesPoints(const std::vector<AcGePoint3d>& points, const std::vector<std::wstring>& reperes,
                     base::Remarques& remarques) {
  if (points.empty()) return;
  const double milieu = base::median(valeurs(points, &AcGePoint3d::z));
  if (milieu > kPlusHaut || milieu < kPlusBas)
    remarques.douter(
        base::formater(L"altitudes hors du commun (médiane %.3f) : colonnes échangées ?", milieu));
  douterDesZeros(points, remarques);
  douterDesLointains(points, reperes, &AcGePoint3d::z, L"altitude", remarques);
  douterDesLointains(points, reperes, &AcGePoint3d::x, L"abscisse", remarques);
  douterDesLointains(points, reperes, &AcGePoint3d::y, L"ordonnée", remarques);
}

}  // namespace veltora::terrain
