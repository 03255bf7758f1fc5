// Open traverse. Symbols, with N rows, row i leading from station i to station i+1:
//   tour, demi   full and half circle in the unit in force
//   A            closing angle at the arrival
//   gis, gisC    bearing of leg i, raw and compensated
//   E            share of the angular misclosure
//   dx, dy       leg i on its compensated bearing
//   cx, cy       its correction
//   Sx, Sy, D    sums of dx, of dy and of the lengths
//   H            misclosure in height
//
// Sources: a bearing is the one before plus the measured angle plus half a turn, so that its error is the sum
// of those of all angles so far: hence shares that grow with the rank. Compass rule as in the closed traverse
// (Bowditch 1808; Ghilani and Wolf, Elementary Surveying, traverse computations), against the known arrival.
#include "calc/traverse/polygonale_ouverte.h"

#include "calc/angles.h"
#include "calc/traverse/dessin_polygonale.h"
#include "calc/traverse/etapes_ouverte.h"
#include "calc/traverse/nivellement.h"
#include "calc/traverse/rapport_ouverte.h"

#include <cmath>
#include <cstddef>
#include <optional>

namespace veltora {
namespace {

/// A sum of angles, one turn added when it is negative.
double positif(double gisement, double tour) { return gisement < 0.0 ? gisement + tour : gisement; }

void compenserAngles(double Vo, double Va, double A, const uniteAngle& unite, const lignesPolygonale& lignes,
                     etapesOuverte& e) {
  const std::size_t n = lignes.size();
  e.gis.resize(n + 1);
  e.gis[0] = positif(lignes[0].angle + Vo + unite.demi(), unite.tour);
  for (std::size_t i = 1; i < n; ++i) {
    e.gis[i] = positif(lignes[i].angle + e.gis[i - 1] + unite.demi(), unite.tour);
  }
  e.gis[n] = A + e.gis[n - 1] + unite.demi();
  // Deliberate (erreur-tours-entiers): not reduced modulo one turn; angles that sum up in another turn than
  // Va show an error of whole turns, which is spread as it stands.
  const auto rangs = static_cast<double>(n + 1);
  e.E = (e.gis[n] - rangs * unite.tour - Va) / rangs;
  e.gisC.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    e.gisC[i] = reduireAngle(e.gis[i], unite.tour) - static_cast<double>(i + 1) * e.E;
  }
}

void compenserDistances(const stationConnue& depart, const stationConnue& arrivee, const uniteAngle& unite,
                        const lignesPolygonale& lignes, etapesOuverte& e, base::CArray<double>& X,
                        base::CArray<double>& Y) {
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    const double r = e.gisC[i] * kPi / unite.demi();
    e.dx.push_back(std::sin(r) * lignes[i].distance);
    e.dy.push_back(std::cos(r) * lignes[i].distance);
    e.Sx += e.dx[i];
    e.Sy += e.dy[i];
    e.D += lignes[i].distance;
  }
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    // The multiplication comes first, unlike in the closed traverse.
    e.cx.push_back(lignes[i].distance * ((arrivee.x - depart.x) - e.Sx) / e.D);
    e.cy.push_back(lignes[i].distance * ((arrivee.y - depart.y) - e.Sy) / e.D);
    X.Add((i == 0 ? depart.x : X[i - 1]) + e.dx[i] + e.cx[i]);
    Y.Add((i == 0 ? depart.y : Y[i - 1]) + e.dy[i] + e.cy[i]);
  }
}

}  // namespace

std::vector<stationCalculee> stationsOuverte(const stationConnue& depart, double Zarr,
                                             const lignesPolygonale& lignes, const base::CArray<double>& X,
                                             const base::CArray<double>& Y, const base::CArray<double>& Z) {
  std::vector<stationCalculee> stations{{depart.nom, depart.x, depart.y, depart.z}};
  const std::size_t n = lignes.size();
  for (std::size_t i = 0; i < n; ++i) {
    stations.push_back({lignes[i].nom, X[i], Y[i], i + 1 < n ? Z[i + 1] : Zarr});
  }
  return stations;
}

int calculerPolygonaleOuverte(const std::wstring& nomDepart, double Xdep, double Ydep, double Zdep, double Vo,
                              const std::wstring& nomArrivee, double Xarr, double Yarr, double Zarr,
                              double Va, double A, int modeNivellement, int modeAngle,
                              lignesPolygonale& lignes, base::CArray<double>& X, base::CArray<double>& Y,
                              base::CArray<double>& Z, htmlDocument* rapport, bool dessinerBrute,
                              bool dessinerCompensee, fermeturesPolygonale* fermetures) {
  const std::size_t n = lignes.size();
  if (n < 2) return 0;
  const uniteAngle& unite = uniteDeMode(modeAngle);
  const stationConnue depart{nomDepart, Xdep, Ydep, Zdep, Vo};
  const stationConnue arrivee{nomArrivee, Xarr, Yarr, Zarr, Va};
  for (base::CArray<double>* sortie : {&X, &Y, &Z}) sortie->RemoveAll();
  for (obsPolygonale& ligne : lignes) ligne.angle = reduireAngle(ligne.angle, unite.tour);
  std::optional<rapportOuverte> plume;
  if (rapport) plume.emplace(*rapport, lignes, depart, arrivee, unite);

  if (plume) plume->donnees(A);
  etapesOuverte e;
  compenserAngles(Vo, Va, A, unite, lignes, e);
  if (plume) plume->angles(e, A);
  if (dessinerBrute) dessinerTraceBrut({Xdep, Ydep}, lignes[0].angle + Vo - unite.demi(), unite, lignes);
  compenserDistances(depart, arrivee, unite, lignes, e, X, Y);
  if (plume) plume->distances(e, X, Y);

  double H = 0.0;
  for (const obsPolygonale& ligne : lignes) H += ligne.dz;
  H = H - (Zarr - Zdep);
  if (compenseAltitudes(modeNivellement)) {
    // Deliberate (longueurs-bouclees): as in the closed traverse the lengths wrap round, so the leg out of
    // the departure is not measured and the last one runs from the arrival back to the end of the first leg.
    const corrections parts = repartirFermeture(modeNivellement, H, lignes, X, Y);
    compenserAltitudes(parts, Zdep, lignes, Z);
    if (plume) plume->altitudes(modeNivellement, parts, X, Y, Z);
  } else {
    cheminerAltitudes(Zdep, lignes, Z);
    if (plume) plume->sansAltitudes();
  }
  if (plume) plume->resultats(X, Y, Z);
  if (dessinerCompensee) dessinerTraceCompense({Xdep, Ydep}, X, Y, false);
  if (fermetures) {
    *fermetures = {0.0, static_cast<double>(n + 1) * e.E, e.D, e.Sx - (Xarr - Xdep), e.Sy - (Yarr - Ydep), H};
  }
  return 1;
}

}  // namespace veltora
