#include "points/point_du_dessin.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "base/format.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/block_attributes.h"
#include "core/code_range.h"
#include "core/valider_nombre.h"
#include "core/veltora_serializer.h"
#include "points/attribs_points.h"
#include "points/point_xyz.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace veltora {
namespace {

/// Coordinates that differ by less, strictly, are the same for `operator==`; drawing units.
constexpr double kMemeCoordonnee = 0.0001;

bool memeCoordonnee(double a, double b) { return std::abs(a - b) < kMemeCoordonnee; }

/// Code of the attribute text, read as an unsigned number: 1 when it is too large, which a negative one is; 0
/// stays.
int codeLu(const AcString& texte) {
  const int code = base::lireEntier(texte);
  return code == 0 ? 0 : codeOuDefaut(code);
}

}  // namespace

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): memmove copies a name onto itself
pointDuDessin& pointDuDessin::operator=(const pointDuDessin& autre) {
  x = autre.x;
  y = autre.y;
  z = autre.z;
  code = autre.code;
  std::memmove(nomPoint, autre.nomPoint, kLongueurNom);
  nomPoint[kLongueurNom] = 0;
  id = autre.id;
  return *this;
}

pointDuDessin& pointDuDessin::operator=(const pointXYZ& source) {
  x = source.x;
  y = source.y;
  z = source.z;
  code = source.code;
  setNomPoint(source.nom.c_str());
  return *this;
}

bool pointDuDessin::operator==(const pointDuDessin& autre) const {
  return memeCoordonnee(x, autre.x) && memeCoordonnee(y, autre.y) && memeCoordonnee(z, autre.z) &&
         code == autre.code && base::compareNoCaseAnsi(nomPoint, autre.nomPoint) == 0;
}

void pointDuDessin::setNomPoint(const char* nom) {
  char fixe[sizeof(nomPoint)] = {};
  if (nom) std::copy_n(nom, std::min<std::size_t>(std::strlen(nom), kLongueurNom), fixe);
  std::memcpy(nomPoint, fixe, sizeof(fixe));
}

void pointDuDessin::setNomPoint(const wchar_t* nom) { setNomPoint(base::narrow(nom ? nom : L"").c_str()); }

void pointDuDessin::setParams(const wchar_t* nom, const AcGePoint3d& position, int codePoint) {
  setNomPoint(nom);
  x = position.x;
  y = position.y;
  z = position.z;
  code = codePoint;
}

void pointDuDessin::getZAsString(CString& texte) const {
  texte.clear();
  if (z == Z_ABSENT) return;
  texte = texteAltitude(z, getTableCodification().getOuCreerCode(code).precisionAltitudes);
}

double pointDuDessin::distanceTo(const pointDuDessin& autre) const {
  const double dx = autre.x - x;
  const double dy = autre.y - y;
  return std::sqrt(dx * dx + dy * dy);
}

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

std::wstring texteCoordonnee(double valeur, int decimales) {
  return valeur == Z_ABSENT ? std::wstring() : base::formater(L"%.*f", decimales, valeur);
}

AcString observationDuBloc(const AcDbObjectId& bloc) {
  AcString texte;
  if (bloc.isNull()) return texte;
  const AcDbObjectPointer<AcDbBlockReference> reference(bloc);
  if (reference.openStatus() == Acad::eOk) lireAttribut(*reference, etiquettesPoints.observation, texte);
  return texte;
}

int pointDuDessin::saveToXRecord(VeltoraSerializer* flux) const {
  return flux->writeBytes(nomPoint, sizeof(nomPoint)) && flux->writeInt(code) && flux->writeDouble(x) &&
                 flux->writeDouble(y) && flux->writeDouble(z) && flux->writeObjectId(id)
             ? 1
             : 0;
}

int pointDuDessin::readFromXRecord(VeltoraSerializer* flux) {
  char nom[sizeof(nomPoint)] = {};
  if (!flux->readBytes(nom, sizeof(nom))) return 0;
  nom[kLongueurNom] = 0;
  setNomPoint(nom);
  return flux->readInt(code) && flux->readDouble(x) && flux->readDouble(y) && flux->readDouble(z) &&
                 flux->readObjectId(id)
             ? 1
             : 0;
}

}  // namespace veltora
