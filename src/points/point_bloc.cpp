// The crossings between a point's record and its block in the drawing.

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"
#include "arx/ed/edselect.h"
#include "base/format.h"
#include "base/suivi.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/block_attributes.h"
#include "core/code_range.h"
#include "core/picking.h"
#include "core/valider_nombre.h"
#include "points/attribs_points.h"
#include "points/liste_points_du_dessin.h"
#include "points/point_xyz.h"

#include <vector>

namespace veltora {
namespace {

/// Code of the attribute text, read as an unsigned number: 1 when it is too large, which a negative one is; 0
/// stays.
int codeLu(const AcString& texte) {
  const int code = base::lireEntier(texte);
  return code == 0 ? 0 : codeOuDefaut(code);
}

/// The point blocks of the drawing, whatever their layout, in order. @return false when the user stops
bool lireBlocs(std::vector<pointDuDessin>& points) {
  std::vector<AcDbObjectId> blocs;
  if (selectEntities(L"X", acutBuildList(0, L"INSERT", RTNONE), blocs) != RTNORM) return true;
  base::Suivi suivi(static_cast<long long>(blocs.size()) - 1);
  for (const AcDbObjectId& bloc : blocs) {
    if (suivi.arrete()) return false;
    pointDuDessin point;
    if (point.updateFromDrawing(bloc)) points.push_back(point);
    suivi.avancer();
  }
  return true;
}

}  // namespace

void pointDuDessin::creer(bool creerCalques, const wchar_t* obs) {
  pointXYZ source;
  source.x = x;
  source.y = y;
  source.z = z;
  source.code = code;
  source.nom = base::toUpper(base::trim(base::widen(nomPoint)));
  if (obs) source.obs = base::trim(std::wstring_view(obs));
  source.ecrireBlocPoint(acdbHostApplicationServices()->workingDatabase(), getTableCodification(), id,
                         z != Z_ABSENT, creerCalques);
}

void pointDuDessin::updateDrawing() {
  getTableCodification().getOuCreerCode(code);
  const AcDbObjectPointer<AcDbObject> objet(id, AcDb::kForWrite);
  if (!id.isValid() || objet.openStatus() != Acad::eOk) {
    creer(true, nullptr);
    return;
  }
  AcDbBlockReference* bloc = AcDbBlockReference::cast(objet.object());
  if (!bloc) return;
  CString altitude;
  getZAsString(altitude);
  // Deliberate (updatedrawing-code): the first pair bears the tag of the number, so the second overwrites it
  // and the attribute CODE stays as it was.
  const valeurAttribut valeurs[] = {{etiquettesPoints.numero, base::formater(L"%d", code)},
                                    {etiquettesPoints.numero, base::widen(nomPoint)},
                                    {etiquettesPoints.altitude, altitude}};
  ecrireAttributs(*bloc, valeurs);
  const AcGePoint3d place = bloc->position();
  bloc->transformBy(AcGeMatrix3d::translation({x - place.x, y - place.y, 0.0}));
}

int pointDuDessin::updateFromDrawing(const AcDbObjectId& idBloc) {
  const AcDbObjectId lu = idBloc;  // the argument may be this record's own id
  id.setNull();
  const AcDbObjectPointer<AcDbBlockReference> bloc(lu);
  if (bloc.openStatus() != Acad::eOk) return 0;
  x = bloc->position().x;
  y = bloc->position().y;
  id = lu;
  AcString texte;
  if (!lireAttribut(*bloc, etiquettesPoints.numero, texte)) return 0;
  setNomPoint(texte.c_str());
  code = lireAttribut(*bloc, etiquettesPoints.code, texte) ? codeLu(texte) : 1;
  const bool cote = lireAttribut(*bloc, etiquettesPoints.altitude, texte) && validerNombre(texte);
  z = cote ? base::lireReel(texte) : Z_ABSENT;
  return 1;
}

void listePointsDuDessin::updateDrawing() {
  base::Suivi suivi(nbPoint() - 1);
  for (pointDuDessin& point : pointsTable) {
    if (suivi.arrete()) return;
    point.updateDrawing();
    suivi.avancer();
  }
}

void listePointsDuDessin::updateFromDrawing() {
  std::vector<pointDuDessin> lus;
  if (!lireBlocs(lus)) return;
  pointsTable.RemoveAll();
  indexNoms.clear();
  for (const pointDuDessin& point : lus) Ajouter(point);
}

}  // namespace veltora
