#include "calc/network/canevas.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/obs_jetons.h"
#include "core/valider_nombre.h"

#include <algorithm>

namespace veltora {
namespace {

constexpr std::size_t kJetonsMin = 4;  // name, X, Y, Z

double valeurSaisie(const std::wstring& texte) {
  return validerNombre(texte) ? base::lireReel(texte) : base::Z_ABSENT;
}

/// The point of that name, a new one at the end when there is none.
pointACalculer& pointNomme(const std::wstring& nom) {
  base::CArray<pointACalculer>& points = canevas();
  const auto existant = std::find_if(points.begin(), points.end(), [&](const pointACalculer& p) {
    return base::compareNoCase(p.nom, nom) == 0;
  });
  if (existant != points.end()) return *existant;
  pointACalculer nouveau;
  nouveau.nom = nom;
  points.Add(nouveau);
  return points.GetAt(points.GetSize() - 1);
}

void donner(pointACalculer& p, const saisieCanevas& saisie) {
  p.X = valeurSaisie(saisie.x);
  p.Y = valeurSaisie(saisie.y);
  p.Z = valeurSaisie(saisie.z);
  p.planiConnue = p.X != base::Z_ABSENT && p.Y != base::Z_ABSENT;
  p.altiConnue = p.Z != base::Z_ABSENT;
}

}  // namespace

base::CArray<pointACalculer>& canevas() {
  static base::CArray<pointACalculer> points;
  return points;
}

void placerDansCanevas(const saisieCanevas& saisie) {
  const std::wstring nom = base::trim(saisie.nom);
  if (nom.empty()) return;
  pointACalculer& p = pointNomme(nom);
  p.nom = nom;
  donner(p, saisie);
  p.vo = valeurSaisie(saisie.vo);
}

void importerCanevas(std::wstring_view texte) {
  for (std::size_t debut = 0; debut < texte.size();) {
    const std::size_t fin = std::min(texte.find_first_of(L"\r\n", debut), texte.size());
    const std::vector<std::wstring> jetons = decouperLigneObs(texte.substr(debut, fin - debut));
    debut = fin + 1;
    if (jetons.size() < kJetonsMin) continue;
    pointACalculer& p = pointNomme(jetons[0]);
    donner(p, {jetons[0], jetons[1], jetons[2], jetons[3], {}});
    if (jetons.size() > kJetonsMin) p.vo = valeurSaisie(jetons[kJetonsMin]);
  }
}

std::wstring texteCanevas(double valeur) {
  return valeur == base::Z_ABSENT ? L"." : base::formater(L"%.4f", valeur);
}

}  // namespace veltora
