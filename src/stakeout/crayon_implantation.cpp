#include "stakeout/crayon_implantation.h"

#include "arx/db/dblines.h"
#include "arx/db/dbtext.h"
#include "base/format.h"

#include <cmath>
#include <utility>

namespace veltora {

void crayonImplantation::tracer(std::unique_ptr<AcDbEntity> entite, int couleur, entitesDessinees& sortie) {
  if (!m_espace.ready()) return;
  entite->setColorIndex(couleur);
  AcDbEntity* const posee = m_espace.addOpen(std::move(entite));
  if (!posee) return;
  marquerImplantation(*posee, m_genre, m_id);
  sortie.Add(posee->objectId());
  posee->close();
}

void crayonImplantation::ligne(const AcGePoint2d& de, const AcGePoint2d& vers, int couleur,
                               entitesDessinees& sortie) {
  tracer(std::make_unique<AcDbLine>(AcGePoint3d(de.x, de.y, 0.0), AcGePoint3d(vers.x, vers.y, 0.0)), couleur,
         sortie);
}

void crayonImplantation::texte(const AcGePoint2d& place, double hauteur, const std::wstring& texte,
                               double rotation, int couleur, entitesDessinees& sortie) {
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (texte.empty() || !dessin) return;
  tracer(std::make_unique<AcDbText>(AcGePoint3d(place.x, place.y, 0.0), texte.c_str(), dessin->textstyle(),
                                    hauteur, rotation),
         couleur, sortie);
}

void crayonImplantation::visee(const unPoint& de, const unPoint& vers, double gisement, int options,
                               int couleur, entitesDessinees& sortie) {
  using Option = paramsDessinImplantation::Option;
  const double distance = distanceImplantation(de, vers);
  if (distance == Z_ABSENT) return;
  const AcGePoint2d a(de.x, de.y);
  const AcGePoint2d b(vers.x, vers.y);
  if (options & Option::kVisee) ligne(a, b, couleur, sortie);
  std::wstring mots;
  if (options & Option::kDistance) mots += base::formater(L"d=%.4f", distance);
  if ((options & Option::kAngle) && gisement != Z_ABSENT)
    mots += base::formater(L" A=%.4f", enGrades(gisement));
  constexpr double kEcart = 0.2;  // of the text from its line, in text heights
  const double hauteur = reglagesImplantation::commun().hauteurTexte;
  const AcGeVector2d sens = (b - a).normal();
  const AcGePoint2d milieu((a.x + b.x) / 2.0, (a.y + b.y) / 2.0);
  texte(milieu + sens.perpVector() * (kEcart * hauteur), hauteur, mots, sens.angle(), couleur, sortie);
}

void effacerDessinees(entitesDessinees& entites) {
  for (const AcDbObjectId& id : entites)
    if (const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForWrite); entite.openStatus() == Acad::eOk)
      entite->erase();
  entites.RemoveAll();
}

}  // namespace veltora
