#include "points/exchange/vraisemblance_xy.h"

#include "base/median.h"
#include "base/numbers.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

/// How much farther than exchanged the places lie as they were read, for them to look exchanged.
constexpr double kBienPlusLoin = 10.0;
/// Decimals from which degrees are as fine as a list of coordinates.
constexpr int kDecimalesDegres = 5;

bool entre(double valeur, double bas, double haut) { return valeur >= bas && valeur <= haut; }

bool dansUneZone(const placeXY& p) {
  const bool lambert93 = entre(p.x, 1e5, 1.3e6) && entre(p.y, 6e6, 7.2e6);
  const bool coniqueConforme = entre(p.x, 1.1e6, 2.3e6) && entre(p.y, 1e6, 9.3e6);
  return lambert93 || coniqueConforme;
}

bool enDegres(const placeXY& p) { return entre(p.x, -5.5, 10.0) && entre(p.y, 41.0, 51.5); }

placeXY echangee(const placeXY& p) { return {p.y, p.x}; }

double diagonale(const rectangleXY& r) { return std::hypot(r.haut.x - r.bas.x, r.haut.y - r.bas.y); }

/// From a place to a rectangle, 0 within it.
double distance(const placeXY& p, const rectangleXY& r) {
  return std::hypot(std::max({r.bas.x - p.x, 0.0, p.x - r.haut.x}),
                    std::max({r.bas.y - p.y, 0.0, p.y - r.haut.y}));
}

/// The middle of the places, which a few wild ones do not move.
placeXY milieuDe(const std::vector<placeXY>& places) {
  std::vector<double> xs;
  std::vector<double> ys;
  for (const placeXY& p : places) xs.push_back(p.x), ys.push_back(p.y);
  return {base::median(std::move(xs)), base::median(std::move(ys))};
}

ordreXY selonZones(const placeXY& milieu) {
  const bool droit = dansUneZone(milieu);
  const bool echange = dansUneZone(echangee(milieu));
  return droit == echange ? ordreXY::kIndecis : droit ? ordreXY::kDroit : ordreXY::kEchange;
}

ordreXY selonDessin(const placeXY& milieu, double etendue, const rectangleXY& dessin) {
  const double droit = distance(milieu, dessin);
  const double echange = distance(echangee(milieu), dessin);
  const double loin = etendue + diagonale(dessin);
  if (droit > loin && droit > kBienPlusLoin * echange) return ordreXY::kEchange;
  return echange > loin && echange > kBienPlusLoin * droit ? ordreXY::kDroit : ordreXY::kIndecis;
}

}  // namespace

std::optional<rectangleXY> rectangleDe(const std::vector<placeXY>& places) {
  std::optional<rectangleXY> r;
  for (const placeXY& p : places) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y) || p.x == base::Z_ABSENT || p.y == base::Z_ABSENT)
      continue;
    if (!r) r = rectangleXY{p, p};
    r->bas = {std::min(r->bas.x, p.x), std::min(r->bas.y, p.y)};
    r->haut = {std::max(r->haut.x, p.x), std::max(r->haut.y, p.y)};
  }
  return r;
}

avisOrdre jugerOrdre(const std::vector<placeXY>& places, const std::optional<rectangleXY>& dessin) {
  const std::optional<rectangleXY> liste = rectangleDe(places);
  if (!liste) return {};
  const placeXY milieu = milieuDe(places);
  const ordreXY zones = selonZones(milieu);
  const ordreXY voisins = dessin ? selonDessin(milieu, diagonale(*liste), *dessin) : ordreXY::kIndecis;
  if (zones != ordreXY::kIndecis && voisins != ordreXY::kIndecis && zones != voisins)
    return {ordreXY::kContradictoire,
            zones == ordreXY::kEchange
                ? L"échangés, X et Y seraient dans une zone française, mais loin des points du dessin"
                : L"X et Y sont dans une zone française, mais loin des points du dessin, dont ils seraient "
                  L"proches échangés"};
  if (voisins == ordreXY::kEchange)
    return {voisins, L"loin des points du dessin, X et Y en seraient proches échangés"};
  if (zones == ordreXY::kEchange)
    return {zones, L"X et Y ne sont dans une zone française (Lambert-93, CC) qu'échangés"};
  return {zones == ordreXY::kDroit ? zones : voisins, {}};
}

bool semblentDegres(const std::vector<placeXY>& places, int decimales) {
  if (places.empty() || decimales < kDecimalesDegres) return false;
  const placeXY milieu = milieuDe(places);
  return enDegres(milieu) || enDegres(echangee(milieu));
}

}  // namespace veltora
