// Closed traverse. Symbols, with N rows and indices modulo N:
//   tour, demi   full and half circle in the unit in force
//   f            factor to radians
//   angInt       interior angle
//   S, E         sum of the interior angles, angular misclosure
//   gis          bearing of leg i
//   dx, dy       leg i as measured
//   D, Ex, Ey    sums of the lengths, of dx and of dy
//   X, Y         adjusted station after i legs
//
// Sources: the interior angles of a polygon make N - 2 half turns (Euclid I.32); the same share of E at every
// station, and the compass rule, by which the misclosure is shared like the lengths of the legs (Bowditch
// 1808; Ghilani and Wolf, Elementary Surveying, traverse computations).
#include "calc/traverse/polygonale_fermee.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/dessin_polygonale.h"
#include "calc/traverse/etapes_fermee.h"
#include "calc/traverse/nivellement.h"
#include "calc/traverse/rapport_fermee.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace veltora {
namespace {

/// Coordinates beyond are taken for a typing error; drawing units, bounds included.
constexpr double kCoordonneeMax = 1e9;
/// A shorter leg is refused; drawing units, strict.
constexpr double kDistanceMin = 0.0001;

bool aberrante(double coordonnee) { return !(coordonnee >= -kCoordonneeMax && coordonnee <= kCoordonneeMax); }

void compenserAngles(double Vo, const uniteAngle& unite, const lignesPolygonale& lignes, etapesFermee& e) {
  const std::size_t n = lignes.size();
  e.angInt.resize(n);
  e.angIntCorr.resize(n);
  e.angExtCorr.resize(n);
  e.gis.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    e.angInt[i] = unite.tour - lignes[i].angle;
    e.f.S += e.angInt[i];
  }
  // Deliberate (angle-sans-tolerance): always the sum of interior angles, and any misclosure is spread,
  // however large.
  e.f.E = e.f.S - (static_cast<double>(n) - 2.0) * unite.tour * 0.5;
  for (std::size_t i = 0; i < n; ++i) {
    e.angIntCorr[i] = e.angInt[i] - e.f.E / static_cast<double>(n);
    e.angExtCorr[i] = reduireAngle(unite.tour - e.angIntCorr[i], unite.tour);
  }
  // Deliberate (premier-angle-inutile): Vo stands as given, the corrected angle of row 0 goes into no
  // bearing.
  e.gis[0] = Vo;
  for (std::size_t i = 1; i < n; ++i) {
    e.gis[i] = reduireAngle(e.gis[i - 1] + e.angExtCorr[i] - unite.demi(), unite.tour);
  }
}

void compenserDistances(double Xdep, double Ydep, const uniteAngle& unite, const lignesPolygonale& lignes,
                        etapesFermee& e, base::CArray<double>& X, base::CArray<double>& Y) {
  const std::size_t n = lignes.size();
  e.dx.resize(n);
  e.dy.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    e.dx[i] = std::sin(unite.versRadians * e.gis[i]) * lignes[i].distance;
    e.dy[i] = std::cos(unite.versRadians * e.gis[i]) * lignes[i].distance;
    e.f.D += lignes[i].distance;
    e.f.Ex += e.dx[i];
    e.f.Ey += e.dy[i];
  }
  X.Add(Xdep);
  Y.Add(Ydep);
  for (std::size_t i = 1; i < n; ++i) {
    // The division comes first: the last digit depends on it.
    X.Add(X[i - 1] + e.dx[i - 1] - (lignes[i - 1].distance / e.f.D) * e.f.Ex);
    Y.Add(Y[i - 1] + e.dy[i - 1] - (lignes[i - 1].distance / e.f.D) * e.f.Ey);
  }
}

void vider(base::CArray<double>& sortie, std::size_t reserve) {
  sortie.RemoveAll();
  sortie.reserve(reserve);
}

}  // namespace

std::vector<stationCalculee> stationsFermee(const lignesPolygonale& lignes, const base::CArray<double>& X,
                                            const base::CArray<double>& Y, const base::CArray<double>& Z) {
  std::vector<stationCalculee> stations;
  const std::size_t n = lignes.size();
  for (std::size_t i = 0; i < n; ++i) stations.push_back({lignes[(i + n - 1) % n].nom, X[i], Y[i], Z[i]});
  return stations;
}

int calculerPolygonaleFermee(const std::wstring& nomDepart, double Xdep, double Ydep, double Zdep, double Vo,
                             int modeNivellement, int modeAngle, lignesPolygonale& lignes,
                             base::CArray<double>& X, base::CArray<double>& Y, base::CArray<double>& Z,
                             htmlDocument* rapport, bool dessinerBrute, bool dessinerCompensee,
                             fermeturesPolygonale* fermetures) {
  const std::size_t n = lignes.size();
  if (n < 2) return 0;
  const uniteAngle& unite = uniteDeMode(modeAngle);
  for (base::CArray<double>* sortie : {&X, &Y, &Z}) vider(*sortie, n + 1);
  std::optional<rapportFermee> plume;
  if (rapport) plume.emplace(*rapport, lignes);

  if (plume) plume->donnees(nomDepart, Xdep, Ydep, Zdep, Vo);
  if (dessinerBrute) dessinerTraceBrut({Xdep, Ydep}, Vo, unite, lignes);
  etapesFermee e;
  compenserAngles(Vo, unite, lignes, e);
  if (plume) plume->angles(e);
  compenserDistances(Xdep, Ydep, unite, lignes, e, X, Y);
  if (plume) plume->distances(e, X, Y);

  for (const obsPolygonale& ligne : lignes) e.f.H += ligne.dz;
  if (compenseAltitudes(modeNivellement)) {
    const corrections parts = repartirFermeture(modeNivellement, e.f.H, lignes, X, Y);
    compenserAltitudes(parts, Zdep, lignes, Z);
    if (plume) plume->altitudes(modeNivellement, parts, X, Y, Z);
  } else {
    cheminerAltitudes(Zdep, lignes, Z);
    if (plume) plume->sansAltitudes();
  }
  if (plume) plume->coordonnees(X, Y, Z);
  // Deliberate (premier-sommet-double): X and Y begin with the departure, so it stands twice at the start.
  if (dessinerCompensee) dessinerTraceCompense({Xdep, Ydep}, X, Y, true);
  if (fermetures) *fermetures = e.f;
  return 1;
}

int verifierPolygonaleFermee(const std::wstring& nomDepart, double Xdep, double Ydep, double Zdep, double& Vo,
                             lignesPolygonale& lignes, int modeAngle, const montrerMessage& montrer) {
  const std::wstring titre = L"Erreur !";
  // Deliberate (depart-en-capitales): row names are compared in capitals with the name as given, so a
  // departure typed in lower case is not found.
  const auto depart = std::find_if(lignes.begin(), lignes.end(), [&](const obsPolygonale& ligne) {
    return base::trim(base::toUpper(std::wstring_view(ligne.nom))) == nomDepart;
  });
  if (depart == lignes.end()) {
    montrer(L"\nStation de départ introuvable", titre);
    return 0;
  }
  const auto premiere = depart == lignes.begin() ? lignes.end() - 1 : depart - 1;
  std::rotate(lignes.begin(), premiere, lignes.end());
  if (aberrante(Xdep) || aberrante(Ydep) || aberrante(Zdep)) {
    montrer(L"\nErreur coordonnées de départ aberrantes", titre);
    return 0;
  }
  const double tour = uniteDeMode(modeAngle).tour;
  Vo = reduireAngle(Vo, tour);
  for (obsPolygonale& ligne : lignes) ligne.angle = reduireAngle(ligne.angle, tour);
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    if (!(lignes[i].distance < kDistanceMin)) continue;
    const obsPolygonale& suivante = lignes[(i + 1) % lignes.size()];
    montrer(base::formater(L"\nDistance de la station %s vers station %s trop faible %.4f",
                           static_cast<const wchar_t*>(lignes[i].nom),
                           static_cast<const wchar_t*>(suivante.nom), lignes[i].distance),
            titre);
    return 0;
  }
  return 1;
}

}  // namespace veltora
