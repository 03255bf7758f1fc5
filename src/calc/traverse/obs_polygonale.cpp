#include "calc/traverse/obs_polygonale.h"

#include "base/format.h"
#include "base/numbers.h"

#include <algorithm>
#include <iterator>

namespace veltora {
namespace {

constexpr std::size_t kLongueurNom = 18;

std::wstring nombre(double valeur) { return base::formater(L"%.5f", valeur); }

}  // namespace

void obsPolygonale::setNom(std::wstring_view texte) {
  const std::wstring_view garde = texte.substr(0, kLongueurNom);
  std::fill(std::begin(nom), std::end(nom), L'\0');
  std::copy(garde.begin(), garde.end(), std::begin(nom));
}

obsPolygonale lireLigne(const ligneObs& ligne) {
  obsPolygonale obs;
  obs.setNom(ligne.nom);
  obs.angle = base::lireReel(ligne.angle);
  obs.distance = base::lireReel(ligne.distance);
  obs.dz = base::lireReel(ligne.dz);
  return obs;
}

ligneObs formaterLigne(std::wstring_view nom, double angle, double distance, double dz) {
  return {std::wstring(nom), nombre(angle), nombre(distance), nombre(dz)};
}

lignesPolygonale lireLignes(const std::vector<ligneObs>& lignes) {
  lignesPolygonale resultat;
  for (const ligneObs& ligne : lignes) resultat.Add(lireLigne(ligne));
  return resultat;
}

}  // namespace veltora
