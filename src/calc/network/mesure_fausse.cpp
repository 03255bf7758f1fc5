#include "calc/network/mesure_fausse.h"

#include "base/format.h"
#include "calc/angles.h"
#include "calc/network/controle_reseau.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltora {
namespace {

constexpr double kLarge = 3.0;          // times the largest residual of its kind
constexpr double kLongueurSure = 0.01;  // metres, at least, to which the value is taken as known
constexpr double kAngleSur = 4.7e-5;    // radians, 3 mgr, likewise
constexpr double kEchangeMin = 0.05;    // metres, below which digits exchanged are no better than chance
constexpr double kDixieme = 0.02;       // metres, up to which a wrong decimal can be told

double entre(double a, double b) { return std::fabs(std::remainder(a - b, kTour)); }

/// A difference in one digit: k times a power of ten. @return 0 for none
double chiffreFaux(double difference, double tolerance, int plusPetit) {
  for (int j = 3; j >= plusPetit; --j) {
    const double unite = std::pow(10.0, j);
    const double k = std::round(difference / unite);
    if (std::fabs(k) >= 1.0 && std::fabs(k) <= 9.0 && std::fabs(difference - k * unite) <= tolerance)
      return k * unite;
  }
  return 0.0;
}

std::wstring deSigne(double valeur, std::wstring_view unite) {
  return base::formater(L"fausse de %g %s", std::fabs(valeur), std::wstring(unite));
}

/// Two digits of the measure next to each other, exchanged, give the value.
bool chiffresEchanges(double mesure, double valeur, double tolerance) {
  if (std::fabs(mesure - valeur) <= kEchangeMin) return false;
  const std::string texte = base::formater("%.3f", mesure);
  for (std::size_t i = 0; i + 1 < texte.size(); ++i) {
    std::string autre = texte;
    if (autre[i] == '.' || autre[i + 1] == '.' || autre[i] == autre[i + 1]) continue;
    std::swap(autre[i], autre[i + 1]);
    if (std::fabs(base::lireReel(autre) - valeur) <= tolerance) return true;
  }
  return false;
}

std::wstring fauteAngle(const donneesReseau& reseau, const ObservationReduite& o, double valeur,
                        double tolerance, int unite) {
  const auto lu = [&](ObservationReduite autre) {
    return entre(reseau.valeurCalculee(autre), o.mesure) <= tolerance;
  };
  if (entre(valeur, -o.mesure) <= tolerance)
    return o.reference == -1 ? L"il tourne dans l'autre sens" : L"référence et visé échangés, ou autre sens";
  ObservationReduite echangee = o;
  std::swap(echangee.station, echangee.vise);
  if (lu(echangee)) return L"station et visé échangés";
  echangee = o;
  std::swap(echangee.station, echangee.reference);
  if (o.reference != -1 && lu(echangee)) return L"station et référence échangées";
  if (entre(valeur, o.mesure + kPi) <= tolerance) return L"faux d'un demi-tour (200 grades)";
  for (int autre = 0; unite >= 0 && autre < 3; ++autre) {
    const double facteur = uniteDeMode(autre).versRadians / uniteDeMode(unite).versRadians;
    if (autre != unite && entre(valeur, o.mesure * facteur) <= tolerance)
      return L"donné en " + std::wstring(uniteDeMode(autre).nom);
  }
  if (unite != 0 && unite != 1) return {};
  const double versRadians = uniteDeMode(unite).versRadians;
  const double faux =
      chiffreFaux(std::remainder(valeur - o.mesure, kTour) / versRadians, tolerance / versRadians, 0);
  return faux == 0.0 ? std::wstring() : deSigne(faux, uniteDeMode(unite).nom);
}

std::wstring fauteLongueur(const ObservationReduite& o, double valeur, double tolerance) {
  if (std::fabs(valeur + o.mesure) <= tolerance) return L"signe contraire";
  if (const double faux = chiffreFaux(valeur - o.mesure, tolerance, tolerance < kDixieme ? -1 : 0);
      faux != 0.0)
    return deSigne(faux, L"m");
  if (chiffresEchanges(o.mesure, valeur, tolerance)) return L"deux chiffres échangés";
  for (const double facteur : {10.0, 0.1})
    if (std::fabs(valeur - o.mesure * facteur) <= tolerance) return L"point décimal déplacé";
  return {};
}

}  // namespace

mesureFausse expliquerMesure(const donneesReseau& reseau, const ObservationReduite& o, double pire,
                             int unite) {
  if (o.type == ObservationReduite::kAngle) {
    const double valeur = reseau.valeurCalculee(o);
    const double tolerance = std::max({kLarge * pire, kAngleSur, kLongueurSure / portee(reseau, o)});
    return {entre(valeur, o.mesure) > tolerance, base::formater(L"%.4f grades", valeur * 200.0 / kPi),
            fauteAngle(reseau, o, valeur, tolerance, unite)};
  }
  const bool hauteur = o.type == ObservationReduite::kDenivelee;
  const double valeur =
      hauteur ? reseau.point(o.vise).Z - reseau.point(o.station).Z : reseau.valeurCalculee(o);
  const double tolerance = std::max(kLarge * pire, kLongueurSure);
  return {std::fabs(valeur - o.mesure) > tolerance, base::formater(L"%.3f m", valeur),
          fauteLongueur(o, valeur, tolerance)};
}

}  // namespace veltora
