#include "points/liste_points_du_dessin.h"

#include "arx/db/dbblockref.h"
#include "arx/ed/acutads.h"
#include "base/format.h"
#include "base/suivi.h"
#include "base/text.h"
#include "core/picking.h"
#include "core/veltora_serializer.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <vector>

namespace veltora {
namespace {

/// Elements by which a table grows.
constexpr std::size_t kPasTable = 10000;

// Deliberate (clenompoint-tabulation): entering and finding trim blanks only, the other paths tabs too: a
// name with a tab at its edge stands under a key that those do not reach.
constexpr std::wstring_view kBlanc = L" ";
constexpr std::wstring_view kBlancTabulation = L" \t";

/// Coordinates that differ by more, strictly, decide the order; drawing units.
constexpr double kMemeRang = 1e-8;
/// Points nearer than this in the plane, strictly, are duplicates; drawing units.
constexpr double kDoublon = 1e-8;

/// Order by x, y, code: negative, 0 or positive. With its tolerances it is no strict order (a chain of near
/// points may close to a ring), hence the sort below.
int comparerPosition(const pointDuDessin& a, const pointDuDessin& b) {
  if (std::abs(a.x - b.x) > kMemeRang) return a.x < b.x ? -1 : 1;
  if (std::abs(a.y - b.y) > kMemeRang) return a.y < b.y ? -1 : 1;
  return a.code < b.code ? -1 : a.code > b.code ? 1 : 0;
}

/// Merges two sorted neighbours; of equal elements the left one goes first.
void fusionner(const pointDuDessin* gauche, const pointDuDessin* milieu, const pointDuDessin* fin,
               pointDuDessin* sortie) {
  const pointDuDessin* droite = milieu;
  const pointDuDessin* debutDroite = milieu;
  while (gauche < debutDroite || droite < fin) {
    const bool prendreDroite =
        gauche == debutDroite || (droite < fin && comparerPosition(*droite, *gauche) < 0);
    *sortie++ = prendreDroite ? *droite++ : *gauche++;
  }
}

/// Stable merge sort. The library's sorts ask for a strict order; this one ends, and stays within the array,
/// whatever the comparison answers (not-a-number coordinates included).
void trierParPosition(std::vector<pointDuDessin>& points) {
  std::vector<pointDuDessin> tampon(points.size());
  const std::size_t nombre = points.size();
  for (std::size_t pas = 1; pas < nombre; pas *= 2) {
    for (std::size_t i = 0; i < nombre; i += 2 * pas) {
      const std::size_t milieu = std::min(i + pas, nombre);
      const std::size_t fin = std::min(i + 2 * pas, nombre);
      fusionner(&points[i], points.data() + milieu, points.data() + fin, &tampon[i]);
    }
    points.swap(tampon);
  }
}

/// Which entries of the sorted array survive; `doublons` counts the others.
std::vector<bool> marquerSurvivants(const std::vector<pointDuDessin>& tries, std::size_t& doublons) {
  std::vector<bool> garder(tries.size(), true);
  for (std::size_t i = 0; i < tries.size();) {
    std::size_t j = i + 1;
    for (; j < tries.size() && tries[i].distanceTo(tries[j]) < kDoublon; ++j) {
      garder[j] = false;
      ++doublons;
    }
    i = j;
  }
  return garder;
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
  for (std::size_t i = plusGrandsNumeros.size(); i < pointsTable.size(); ++i) {
    const int avant = i > 0 ? plusGrandsNumeros[i - 1] : 0;
    plusGrandsNumeros.push_back(
        std::max(avant, base::lireEntier(std::string_view(getData(static_cast<int>(i))->nomPoint))));
  }
  return plusGrandsNumeros.empty() ? 0 : plusGrandsNumeros.back();
}

void listePointsDuDessin::oublierNumeros(int index) {
  const auto connus = static_cast<std::size_t>(std::max(index, 0));
  if (connus < plusGrandsNumeros.size()) plusGrandsNumeros.resize(connus);
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

bool listePointsDuDessin::estEn(const pointDuDessin& point, double x, double y) {
  return std::abs(point.x - x) < kMemePlace && std::abs(point.y - y) < kMemePlace;
}

int listePointsDuDessin::getAt(double x, double y, pointDuDessin& out) const {
  for (const pointDuDessin& point : pointsTable) {
    if (!estEn(point, x, y)) continue;
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
  oublierNumeros(index);
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

void listePointsDuDessin::delDups() {
  if (pointsTable.empty()) return;
  std::vector<pointDuDessin> tries(pointsTable.begin(), pointsTable.end());
  trierParPosition(tries);
  std::size_t doublons = 0;
  const std::vector<bool> garder = marquerSurvivants(tries, doublons);
  indexNoms.clear();
  // Deliberate (deldups-index): without duplicates the dictionary stays empty; names are found again after a
  // full renumbering or a reload.
  if (doublons == 0) return;
  oublierNumeros(0);
  pointsTable.setPas(tries.size() - doublons);
  pointsTable.RemoveAll();
  for (std::size_t i = 0; i < tries.size(); ++i) {
    if (!garder[i]) continue;
    pointsTable.Add(tries[i]);
    entrer(kBlancTabulation, nbPoint() - 1);
  }
}

void listePointsDuDessin::renumeroter(bool tous) {
  if (!tous) {
    int numero = getMaxNum() + 1;
    oublierNumeros(0);
    for (pointDuDessin& point : pointsTable)
      if (base::trim(std::string_view(point.nomPoint), " *.").empty())
        point.setNomPoint(base::formater("%d", numero++).c_str());
    return;
  }
  indexNoms.clear();
  for (int i = 0; i < nbPoint(); ++i) {
    getData(i)->setNomPoint(base::formater("%d", i + 1).c_str());
    entrer(kBlancTabulation, i);
  }
  updateDrawing();
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
  oublierNumeros(0);
  pointsTable.RemoveAll();
  indexNoms.clear();
  for (const pointDuDessin& point : lus) Ajouter(point);
}

int listePointsDuDessin::saveToXRecord(VeltoraSerializer* flux) const {
  if (!flux->writeString(nomTable) || !flux->writeInt(nbPoint())) return 0;
  for (const pointDuDessin& point : pointsTable)
    if (!point.saveToXRecord(flux)) return 0;
  return 1;
}

int listePointsDuDessin::GetFromXRecord(VeltoraSerializer* flux) {
  int nombre = 0;
  if (!flux->readString(nomTable) || !flux->readInt(nombre)) return 0;
  for (int i = 0; i < nombre; ++i) {
    pointDuDessin point;
    if (!point.readFromXRecord(flux)) return 0;
    Ajouter(point);
  }
  return 1;
}

}  // namespace veltora
