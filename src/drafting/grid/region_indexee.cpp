#include "drafting/grid/region_indexee.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kSurLaLigne = 1e-7;  // drawing units: both ends of a segment so near lie on the line
constexpr double kMemePoint = 1e-6;   // drawing units: ends so near to a point that was found are that point
constexpr double kMarge = 1e-6;       // drawing units, and of the coordinates' size the next
constexpr double kMargeRelative = 1e-12;

base::PlaneBox boiteDe(const AcDbCurve& courbe) {
  AcDbExtents boite;
  courbe.getGeomExtents(boite);
  return {boite.minPoint().x, boite.minPoint().y, boite.maxPoint().x, boite.maxPoint().y};
}

/// The box of the whole line, of which that of a piece is given.
void prolonger(base::PlaneBox& boite) {
  constexpr double kLoin = 1e90;
  const bool verticale = boite.x0 == boite.x1;
  const bool horizontale = boite.y0 == boite.y1;
  if (!verticale) boite.x0 = -kLoin, boite.x1 = kLoin;
  if (!horizontale) boite.y0 = -kLoin, boite.y1 = kLoin;
}

}  // namespace

regionIndexee::regionIndexee(const AcDbPolyline& region) : m_fermee(region.isClosed()) {
  for (unsigned int i = 0; i < region.numVerts(); ++i) {
    sommet& nouveau = m_sommets.emplace_back();
    region.getPointAt(i, nouveau.point);
    region.getBulgeAt(i, nouveau.courbure);
  }
  m_segment.addVertexAt(0, AcGePoint2d());
  m_segment.addVertexAt(1, AcGePoint2d());
  m_segment.setElevation(region.elevation());
  m_segment.setNormal(region.normal());
  if (m_sommets.size() > 1) m_segments = m_fermee ? m_sommets.size() : m_sommets.size() - 1;
  std::vector<base::NumberedBox> boites;
  double taille = 0.0;
  for (std::size_t rang = 0; rang < m_segments; ++rang) {
    const base::PlaneBox boite = boiteDe(segment(rang));
    boites.push_back({rang, boite});
    for (const double cote : {boite.x0, boite.y0, boite.x1, boite.y1})
      taille = std::max(taille, std::abs(cote));
  }
  m_index.addAll(boites);
  m_marge = kMarge + kMargeRelative * taille;
}

AcGePoint3dArray regionIndexee::couper(const AcDbLine& ligne, AcDb::Intersect mode) {
  AcGePoint3dArray points;
  base::PlaneBox boite = boiteDe(ligne);
  if ((mode & AcDb::kExtendArg) != 0) prolonger(boite);
  boite = {boite.x0 - m_marge, boite.y0 - m_marge, boite.x1 + m_marge, boite.y1 + m_marge};
  const std::vector<std::size_t> proches = m_index.touching(boite);
  std::vector<std::size_t> couches;
  for (const std::size_t rang : proches) {
    if (estSur(ligne, rang))
      couches.push_back(rang);
    else
      segment(rang).intersectWith(&ligne, mode, points);
  }
  for (const std::size_t rang : couches) ajouterBouts(ligne, rang, points);
  return points;
}

AcDbPolyline& regionIndexee::segment(std::size_t rang) {
  m_segment.setPointAt(0, m_sommets[rang].point);
  m_segment.setPointAt(1, m_sommets[suivant(rang)].point);
  m_segment.setBulgeAt(0, m_sommets[rang].courbure);
  return m_segment;
}

bool regionIndexee::estSur(const AcDbLine& ligne, std::size_t rang) {
  if (m_sommets[rang].courbure != 0.0) return false;
  const AcDbPolyline& droit = segment(rang);
  for (const unsigned int bout : {0U, 1U}) {
    AcGePoint3d point;
    AcGePoint3d pied;
    droit.getPointAt(bout, point);
    if (ligne.getClosestPointTo(point, pied, true) != Acad::eOk || pied.distanceTo(point) > kSurLaLigne)
      return false;
  }
  return true;
}

/// The ends of a segment on the line at which the stretch on the line ends too.
void regionIndexee::ajouterBouts(const AcDbLine& ligne, std::size_t rang, AcGePoint3dArray& points) {
  const bool premier = rang == 0 && !m_fermee;
  const bool dernier = rang + 1 == m_segments && !m_fermee;
  const bool avant = premier || !estSur(ligne, (rang + m_segments - 1) % m_segments);
  const bool apres = dernier || !estSur(ligne, (rang + 1) % m_segments);
  const AcDbPolyline& droit = segment(rang);
  const auto ajouter = [&](unsigned int bout) {
    AcGePoint3d point;
    droit.getPointAt(bout, point);
    const auto meme = [&](const AcGePoint3d& autre) { return autre.distanceTo(point) <= kMemePoint; };
    if (std::none_of(points.begin(), points.end(), meme)) points.push_back(point);
  };
  if (avant) ajouter(0);
  if (apres) ajouter(1);
}

}  // namespace veltora
