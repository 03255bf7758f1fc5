#include "drafting/clothoids/clothoide.h"

#include "arx/ed/acutads.h"
#include "arx/ge/gelin2d.h"
#include "calc/angles.h"
#include "drafting/clothoids/fresnel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

// Symbols: s length from the origin, R radius at s, A the parameter (A^2 = R s), tau the deflection of the
// piece, t = s / (sqrt(pi) A) the argument of the Fresnel integrals.

namespace veltora {
namespace {

constexpr double kSansLongueur = 1e-12;    // of s, and of radii, drawing units: at most that is none
constexpr double kPointsConfondus = 1e-8;  // drawing units: no direction leads from one point to the other
constexpr double kSansDeflexion = 1e-9;    // radians: tangents that differ by less lie in one line
constexpr double kRayonsEgaux = 1e-9;      // of the larger one

double argumentFresnel(double s, double a) { return s / (std::sqrt(kPi) * a); }

/// Absolute deflection at pi on the way from p1 to p2, 0 to a half turn.
double deflexion(const AcGePoint2d& p1, const AcGePoint2d& p2, const AcGePoint2d& pi) {
  double tau = (pi - p1).angle() - (p2 - pi).angle();
  if (tau < 0.0) tau += 2.0 * kPi;
  return tau > kPi ? 2.0 * kPi - tau : tau;
}

/// s at the end where the curve has a radius, 0 for none.
double parametreDe(double a, double rayon) { return rayon > 0.0 ? a * a / rayon : 0.0; }

}  // namespace

void clothoide::setOffset(const AcGePoint2d& offset) {
  m_offset = offset;
  matriceValide = false;
}

void clothoide::setAngleRot(double angle) {
  m_angleRot = angle;
  matriceValide = false;
}

void clothoide::setMirrored(bool mirrored) {
  m_mirrored = mirrored;
  matriceValide = false;
}

void clothoide::actualiserMatrices() const {
  if (matriceValide) return;
  const AcGeVector2d x = AcGeVector2d(std::cos(m_angleRot), std::sin(m_angleRot)).normal();
  versMonde = AcGeMatrix2d::coordSystem(m_offset, x, m_mirrored ? -x.perpVector() : x.perpVector());
  versLocal = versMonde.inverse();
  matriceValide = true;
}

const AcGeMatrix2d& clothoide::matriceVersMonde() const {
  actualiserMatrices();
  return versMonde;
}

const AcGeMatrix2d& clothoide::matriceVersLocal() const {
  actualiserMatrices();
  return versLocal;
}

bool clothoide::pointLocal(double s, double a, AcGePoint2d& point) {
  if (a == 0.0) return false;
  const double echelle = std::sqrt(kPi) * a;
  const integralesFresnel f = calculerFresnel(argumentFresnel(s, a));
  point = {echelle * f.c, echelle * f.s};
  return true;
}

AcGePoint2d clothoide::pointEn(double s) const {
  AcGePoint2d local;
  pointLocal(s, paramA, local);
  return matriceVersMonde() * local;
}

AcGeVector2d clothoide::tangenteEn(double s) const {
  const double t = argumentFresnel(s, paramA);
  const double angle = t * (kPi / 2.0) * t;
  return matriceVersMonde() * AcGeVector2d{std::cos(angle), std::sin(angle)};
}

double clothoide::angleTangent(double s) const { return s <= kSansLongueur ? 0.0 : s / (2.0 * rayonEn(s)); }

AcGePoint2d clothoide::centreEn(double s) const {
  if (s <= kSansLongueur) return pointEn(s);
  AcGePoint2d local;
  pointLocal(s, paramA, local);
  const double rayon = rayonEn(s);
  const double angle = s / (2.0 * rayon) + kPi / 2.0;
  return matriceVersMonde() * (local + AcGeVector2d{std::cos(angle), std::sin(angle)} * rayon);
}

bool clothoide::intersectionTangentes(AcGePoint2d& point) const {
  return AcGeLine2d(pointEn(startParam), tangenteEn(startParam))
      .intersectWith(AcGeLine2d(pointEn(endParam), tangenteEn(endParam)), point);
}

bool clothoide::definirParRayons(double r1, double r2, const AcGePoint2d& p1, const AcGePoint2d& p2,
                                 const AcGePoint2d& pi) {
  const double tau = deflexion(p1, p2, pi);
  double s1 = 0.0;
  double s2 = 0.0;
  double a = 0.0;
  if (r1 > kSansLongueur && r2 > kSansLongueur) {
    const double k = 2.0 * tau * r1 * r2 / (r1 * r1 - r2 * r2);
    s1 = std::fabs(k) * r2;
    s2 = std::fabs(k) * r1;
    a = std::sqrt((r2 * s2 + r1 * s1) / 2.0);
  } else {
    const double r = r1 > kSansLongueur ? r1 : r2;
    if (!(r > kSansLongueur)) return false;
    a = std::sqrt(2.0 * tau) * r;
    s2 = 2.0 * tau * r;
  }
  startParam = std::fabs(s1);
  endParam = std::fabs(s2);
  paramA = std::fabs(a);
  const double tour = (pi - p1).crossProduct(p2 - pi);
  // Deliberate (clothoide-mirrored): the rule takes the curve to the far side of its chord unless the second
  // end is straight; who wants it on the side of pi turns it over, see `orienterVers`.
  setMirrored(r1 > r2 || r1 <= kSansLongueur ? tour > 0.0 : tour < 0.0);
  ajusterSurCorde(pointEn(parametreDe(paramA, r1)), p1, pointEn(parametreDe(paramA, r2)), p2);
  return true;
}

bool clothoide::prendreMatrice(const AcGeMatrix2d& matrice) {
  double echelle = 0.0;
  double angle = 0.0;
  bool miroir = false;
  AcGeVector2d axe;
  if (!matrice.isConformal(echelle, angle, miroir, axe)) return false;
  setAngleRot(angle);
  setOffset(AcGePoint2d() + matrice.translation());
  return true;
}

void clothoide::ajusterSurCorde(const AcGePoint2d& q1, const AcGePoint2d& p1, const AcGePoint2d& q2,
                                const AcGePoint2d& p2) {
  double r = (p2 - p1).angle() - (q2 - q1).angle();
  if (r < 0.0) r += 2.0 * kPi;
  clothoide tournee = *this;
  // Seen from p1, so that no digits are lost far from the origin.
  tournee.setOffset(AcGePoint2d() + (m_offset - q1));
  tournee.setMirrored(false);
  if (!tournee.prendreMatrice(AcGeMatrix2d::rotation(r) * tournee.matriceVersMonde())) {
    acutPrintf(L"\nErreur CL1 !!!");
    return;
  }
  setOffset(p1 + (tournee.m_offset - AcGePoint2d()));
  setAngleRot(tournee.m_angleRot);
}

void clothoide::ajusterEnPoint(double s, const AcGePoint2d& point, double angle) {
  const bool miroir = m_mirrored;
  setOffset({});
  setAngleRot(0.0);
  setMirrored(false);
  const AcGeVector2d tangente = tangenteUnitaireEn(s);
  const AcGeVector2d voulue{std::cos(angle), std::sin(angle)};
  const AcGeMatrix2d placement = AcGeMatrix2d::alignCoordSys(pointEn(s), tangente, tangente.perpVector(),
                                                             point, voulue, voulue.perpVector());
  if (!prendreMatrice(placement * matriceVersMonde())) acutPrintf(L"\nErreur CL2 !!!");
  // Deliberate (clothoide-point-miroir): a curve that turns the other way is turned over afterwards, about
  // the tangent at its origin, so that its point at s leaves the given one.
  setMirrored(miroir);
}

void clothoide::retournerSurCorde() {
  const AcGePoint2d p1 = pointEn(startParam);
  const AcGePoint2d p2 = pointEn(endParam);
  setMirrored(!m_mirrored);
  ajusterSurCorde(pointEn(startParam), p1, pointEn(endParam), p2);
}

void clothoide::orienterVers(const AcGePoint2d& pi) {
  AcGePoint2d rencontre;
  if (!intersectionTangentes(rencontre)) return;
  const AcGeLineSeg2d corde(pointEn(startParam), pointEn(endParam));
  if ((corde.side(rencontre) > 0.0) != (corde.side(pi) > 0.0)) retournerSurCorde();
}

bool clothoide::estTracable() const {
  const double nombres[] = {startParam, endParam, paramA, m_offset.x, m_offset.y, m_angleRot};
  for (const double nombre : nombres)
    if (!std::isfinite(nombre)) return false;
  if (!(paramA > 0.0) || startParam == endParam) return false;
  const AcGePoint2d lieux[] = {pointEn(startParam), pointEn(endParam), centreEn(startParam),
                               centreEn(endParam)};
  return std::all_of(std::begin(lieux), std::end(lieux),
                     [](const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

const wchar_t* raisonSansClothoide(double r1, double r2, const AcGePoint2d& p1, const AcGePoint2d& p2,
                                   const AcGePoint2d& pi) {
  for (const double nombre : {r1, r2, p1.x, p1.y, p2.x, p2.y, pi.x, pi.y})
    if (!(std::fabs(nombre) < 1e36)) return L"un rayon ou une coordonnée est hors de toute mesure";
  if (r1 < 0.0 || r2 < 0.0) return L"un rayon ne peut pas être négatif";
  if (!(std::max(r1, r2) > kSansLongueur))
    return L"les deux rayons sont nuls, l'un au moins doit être supérieur à 0";
  if (std::fabs(r1 - r2) <= kRayonsEgaux * std::max(r1, r2))
    return L"les deux rayons sont égaux, la courbe serait un arc de cercle";
  if (p1.distanceTo(p2) <= kPointsConfondus) return L"les extrémités P1 et P2 sont confondues";
  if (pi.distanceTo(p1) <= kPointsConfondus || pi.distanceTo(p2) <= kPointsConfondus)
    return L"le point PI est confondu avec une extrémité";
  const double tau = deflexion(p1, p2, pi);
  if (tau <= kSansDeflexion || tau >= kPi - kSansDeflexion) return L"les points P1, PI et P2 sont alignés";
  return nullptr;
}

}  // namespace veltora
