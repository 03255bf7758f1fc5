#include "points/point_du_dessin.h"

#include "base/text.h"
#include "codes/table_codification.h"
#include "points/point_xyz.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace veltora {
namespace {

/// Coordinates that differ by less, strictly, are the same for `operator==`; drawing units.
constexpr double kMemeCoordonnee = 0.0001;

bool memeCoordonnee(double a, double b) { return std::abs(a - b) < kMemeCoordonnee; }

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

}  // namespace veltora
