#include "points/liste_points_du_dessin.h"

#include "arx/db/dbblockref.h"
#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace veltora {
namespace {

/// Elements by which a table grows.
constexpr std::size_t kPasTable = 10000;
/// `getAt` takes points less than this away in x and in y, strictly; drawing units.
constexpr double kMemePosition = 1e-6;

// Deliberate (clenompoint-tabulation): entering and finding trim blanks only, the other paths tabs too: a
// name with a tab at its edge stands under a key that those do not reach.
constexpr std::wstring_view kBlanc = L" ";
constexpr std::wstring_view kBlancTabulation = L" \t";

}  // namespace

listePointsDuDessin::listePointsDuDessin() : indexNoms(kAlveolesIndexNoms), pointsTable(kPasTable) {}

void listePointsDuDessin::entrer(std::wstring_view bords, int index) {
  const pointDuDessin& point = pointsTable.GetAt(index);
  indexNoms[cleNomPoint(std::string_view(point.nomPoint), bords)] = index;
}

void listePointsDuDessin::Ajouter(const pointDuDessin& point) {
  pointsTable.Add(point);
  entrer(kBlanc, nbPoint() - 1);
}

void listePointsDuDessin::CreerPoint(const AcGePoint3d& pt, int code, const wchar_t* nom) {
  // Deliberate (creerpoint-zero): an altitude of exactly 0 is that of a vertex without any.
  if (pt.z == 0.0) return;
  pointDuDessin point;
  point.setParams(nom ? nom : L"*", pt, code);
  Ajouter(point);
}

int listePointsDuDessin::existPoint(const wchar_t* nom, int& index) const {
  const cleNomPoint cle(std::wstring_view(nom ? nom : L""), kBlanc);
  const auto trouve = cle.impossible ? indexNoms.end() : indexNoms.find(cle);
  index = trouve == indexNoms.end() ? -1 : trouve->second;
  return trouve == indexNoms.end() ? 0 : 1;
}

int listePointsDuDessin::getMaxNum() const {
  int plusGrand = 0;
  for (const pointDuDessin& point : pointsTable)
    plusGrand = std::max(plusGrand, base::lireEntier(std::string_view(point.nomPoint)));
  return plusGrand;
}

int listePointsDuDessin::nombreAyantCode(int code) const {
  return static_cast<int>(std::count_if(pointsTable.begin(), pointsTable.end(),
                                        [code](const pointDuDessin& point) { return point.code == code; }));
}

int listePointsDuDessin::getObjId(const wchar_t* nom, AcDbObjectId& id) const {
  int index = -1;
  const std::wstring ansi = base::widen(base::narrow(nom ? nom : L""));
  if (!existPoint(ansi.c_str(), index) || index >= nbPoint()) return 0;
  id = getData(index)->id;
  return 1;
}

int listePointsDuDessin::getBlockPosition(const wchar_t* nom, AcGePoint3d& pt, int& code) const {
  int index = -1;
  if (!existPoint(nom, index) || index >= nbPoint()) return 0;
  const pointDuDessin& point = *getData(index);
  const AcDbObjectPointer<AcDbBlockReference> bloc(point.id);
  pt = bloc.openStatus() == Acad::eOk ? bloc->position() : point.getAs3dPnt();
  code = point.code;
  return 1;
}

int listePointsDuDessin::findNearestTo(double x, double y, pointDuDessin& out) const {
  if (pointsTable.empty()) return 0;
  double meilleur = base::kDebutRecherche;
  std::size_t candidat = 0;
  for (std::size_t i = 0; i < pointsTable.size(); ++i) {
    const double dx = pointsTable[i].x - x;
    const double dy = pointsTable[i].y - y;
    const double carre = dx * dx + dy * dy;
    if (carre < meilleur) {
      meilleur = carre;
      candidat = i;
    }
  }
  out = pointsTable[candidat];
  return 1;
}

int listePointsDuDessin::getAt(double x, double y, pointDuDessin& out) const {
  for (const pointDuDessin& point : pointsTable) {
    if (!(std::abs(point.x - x) < kMemePosition && std::abs(point.y - y) < kMemePosition)) continue;
    out = point;
    return 1;
  }
  return 0;
}

void listePointsDuDessin::decalZ(const double& dz) {
  for (pointDuDessin& point : pointsTable)
    if (point.z != Z_ABSENT) point.z += dz;
}

void listePointsDuDessin::fusionnerAvec(const listePointsDuDessin& autre) {
  const int nombre = autre.nbPoint();
  for (int i = 0; i < nombre; ++i) Ajouter(pointDuDessin(*autre.getData(i)));
}

void listePointsDuDessin::supprimerPoint(const wchar_t* nom) {
  int index = -1;
  if (!existPoint(nom, index) || index >= nbPoint()) return;
  AcDbObjectPointer<AcDbBlockReference> bloc(getData(index)->id, AcDb::kForWrite);
  if (bloc.openStatus() == Acad::eOk) bloc->erase();
  bloc.close();
  const int dernier = nbPoint() - 1;
  if (index != dernier) {
    *getData(index) = *getData(dernier);
    entrer(kBlancTabulation, index);
  }
  indexNoms.erase(cleNomPoint(std::wstring_view(nom ? nom : L""), kBlancTabulation));
  pointsTable.setPas(kPasTable);
  pointsTable.SetSize(static_cast<std::size_t>(dernier));
}

void listePointsDuDessin::notifyPositionPoint(const AcDbObjectId& id, const AcGePoint3d& pt, int masque) {
  notifyPositionPoints({{id, pt}}, masque);
}

void listePointsDuDessin::notifyPositionPoints(const placesBlocs& places, int masque) {
  std::unordered_set<AcDbObjectId> faits;
  for (pointDuDessin& point : pointsTable) {
    if (faits.size() == places.size()) return;
    const auto place = places.find(point.id);
    if (place == places.end() || !faits.insert(point.id).second) continue;
    if (masque & 1) point.x = place->second.x;
    if (masque & 2) point.y = place->second.y;
    if (masque & 4) point.z = place->second.z;
  }
}

}  // namespace veltora
