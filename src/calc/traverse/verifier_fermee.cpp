#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/polygonale_fermee.h"

#include <algorithm>
#include <cstddef>

namespace veltora {
namespace {

/// Coordinates beyond are taken for a typing error; drawing units, bounds included.
constexpr double kCoordonneeMax = 1e9;
/// A shorter leg is refused; drawing units, strict.
constexpr double kDistanceMin = 0.0001;

bool aberrante(double coordonnee) { return !(coordonnee >= -kCoordonneeMax && coordonnee <= kCoordonneeMax); }

}  // namespace

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
