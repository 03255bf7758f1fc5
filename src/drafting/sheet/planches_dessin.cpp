#include "drafting/sheet/planches_dessin.h"

#include "arx/db/dbservices.h"
#include "arx/db/resbuf.h"
#include "core/xdata_names.h"

#include <cmath>

namespace veltora {
namespace {

constexpr double kMilli = 1000.0;
constexpr double kMemeForme = 1e-6;  // share of a side that sides may differ by

/// Width, height and denominator of a marked paper. @return false when it bears none
bool lireMarque(const AcDbEntity& entite, plancheDessinee& lue) {
  resbuf* const chaine = entite.xData(kXDataPlanche);
  double nombres[3] = {};
  int lus = 0;
  for (const resbuf* un = chaine; un && lus < 3; un = un->rbnext)
    if (un->restype == 1040) nombres[lus++] = un->resval.rreal;
  acutRelRb(chaine);
  for (const double nombre : nombres)
    if (!(nombre > 0.0) || !std::isfinite(nombre)) return false;
  lue.papier = {nombres[0], nombres[1]};
  lue.voulue = nombres[2];
  return true;
}

/// Place, direction and scale by the corners. A mirrored paper is read from its other lower corner.
void situer(const AcDbPolyline& rectangle, plancheDessinee& feuille) {
  AcGePoint2d coins[4];
  feuille.deformee = !rectangle.isClosed() || rectangle.numVerts() != 4;
  for (unsigned int i = 0; i < 4 && !feuille.deformee; ++i) rectangle.getPointAt(i, coins[i]);
  AcGeVector2d bas = coins[1] - coins[0];
  AcGeVector2d gauche = coins[3] - coins[0];
  feuille.origine = coins[0];
  if (bas.x * gauche.y - bas.y * gauche.x < 0.0) {
    feuille.origine = coins[1];
    gauche = coins[2] - coins[1];
    bas = -bas;
  }
  const double longueur = bas.length();
  const double ecart = kMemeForme * longueur;
  const AcGeVector2d attendue = bas.perpVector() * (feuille.papier.y / feuille.papier.x);
  const AcGePoint2d face = feuille.origine + bas + gauche;
  const AcGePoint2d& oppose = feuille.origine == coins[0] ? coins[2] : coins[3];
  feuille.deformee = feuille.deformee || !(longueur > 0.0) || !((gauche - attendue).length() <= ecart) ||
                     !(face.distanceTo(oppose) <= ecart);
  if (feuille.deformee) return;
  feuille.cote = bas.normal();
  feuille.echelle = longueur * kMilli / feuille.papier.x;
  if (std::fabs(feuille.echelle - feuille.voulue) <= kMemeForme * feuille.voulue)
    feuille.echelle = feuille.voulue;
}

}  // namespace

void marquerPlanche(AcDbPolyline& papier, const demandePlanche& demande) {
  acdbRegApp(kXDataPlanche);
  resbuf* const donnees = acutBuildList(1001, kXDataPlanche, 1040, demande.papier.x, 1040, demande.papier.y,
                                        1040, demande.echelle * kMilli, RTNONE);
  papier.setXData(donnees);
  acutRelRb(donnees);
}

std::vector<plancheDessinee> planchesDuDessin(AcDbDatabase& dessin) {
  std::vector<plancheDessinee> planches;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  if (!espace) return planches;
  for (const AcDbObjectId& id : espace->entities()) {
    const auto* const papier = id.isLive() ? AcDbPolyline::cast(id.stub()->object) : nullptr;
    plancheDessinee lue;
    if (!papier || !papier->hasXData(kXDataPlanche) || !lireMarque(*papier, lue)) continue;
    situer(*papier, lue);
    planches.push_back(lue);
  }
  return planches;
}

}  // namespace veltora
