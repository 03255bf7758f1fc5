#include "drafting/grid/carroyage.h"

#include "arx/db/dbcolor.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbtext.h"
#include "base/format.h"
#include "base/suivi.h"
#include "core/drawing_groups.h"
#include "core/drawing_space.h"
#include "drafting/grid/region_indexee.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <string>

namespace veltora {
namespace {

constexpr double kTropCroix = 1e6;
constexpr double kTropLignes = 1e6;
constexpr double kRangeesComptees = 20000;  // of more rows the crosses are told by the area
constexpr double kSurLeBord = 1e-7;         // drawing units: a node so near to the border lies on it

/// The extents of a region, and the first and the last grid line of each direction.
struct bornesCarroyage {
  double minX = 0.0, minY = 0.0, maxX = 0.0, maxY = 0.0;
  double x0 = 0.0, x1 = 0.0, y0 = 0.0, y1 = 0.0;

  /// @return false when the grid has no lines, or its steps lead nowhere
  bool mesurer(const AcDbPolyline& region, double pasX, double pasY) {
    AcDbExtents boite;
    if (!(pasX > 0.0 && pasY > 0.0) || region.getGeomExtents(boite) != Acad::eOk) return false;
    minX = boite.minPoint().x, minY = boite.minPoint().y;
    maxX = boite.maxPoint().x, maxY = boite.maxPoint().y;
    x0 = std::floor(minX / pasX) * pasX, x1 = std::ceil(maxX / pasX) * pasX;
    y0 = std::floor(minY / pasY) * pasY, y1 = std::ceil(maxY / pasY) * pasY;
    const auto avance = [](double valeur, double pas) {
      return std::isfinite(valeur) && valeur + pas > valeur;
    };
    return avance(x0, pasX) && avance(x1, pasX) && avance(y0, pasY) && avance(y1, pasY);
  }
};

/// The lines of a grid through a region.
class lignesCarroyage {
public:
  // Deliberate (carroyage-altitude): the lines lie at altitude 0 and reach 10 units beyond the region,
  // whatever its altitude and the scale; rows end there, columns are taken endlessly.
  static constexpr double kMarge = 10.0;

  lignesCarroyage(const AcDbPolyline& region, const bornesCarroyage& bornes)
      : m_bornes(bornes), m_region(region) {}
  /// The points of the border by ascending X.
  AcGePoint3dArray rangee(double y) {
    const AcDbLine ligne({m_bornes.minX - kMarge, y, 0.0}, {m_bornes.maxX + kMarge, y, 0.0});
    AcGePoint3dArray points = m_region.couper(ligne, AcDb::kOnBothOperands);
    std::sort(points.begin(), points.end(),
              [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.x < b.x; });
    return points;
  }
  /// The same by ascending Y.
  AcGePoint3dArray colonne(double x) {
    const AcDbLine ligne({x, m_bornes.minY - kMarge, 0.0}, {x, m_bornes.maxY + kMarge, 0.0});
    AcGePoint3dArray points = m_region.couper(ligne, AcDb::kExtendArg);
    std::sort(points.begin(), points.end(),
              [](const AcGePoint3d& a, const AcGePoint3d& b) { return a.y < b.y; });
    return points;
  }

private:
  bornesCarroyage m_bornes;
  regionIndexee m_region;
};

/// Puts lines and texts into the drawing.
class plumeCarroyage {
public:
  plumeCarroyage(double tailleTexte, int format)
      : m_tailleTexte(tailleTexte),
        m_format(L"%." + std::to_wstring(format) + L"f"),
        m_style(acdbHostApplicationServices()->workingDatabase()->textstyle()),
        m_espace(nullptr, DrawingSpace::kCurrent) {}

  void trait(const AcGePoint2d& de, const AcGePoint2d& vers) {
    ajouter(std::make_unique<AcDbLine>(AcGePoint3d(de.x, de.y, 0.0), AcGePoint3d(vers.x, vers.y, 0.0)));
  }
  /// @param aDroite  the text ends at the point instead of beginning there
  void cote(double valeur, const AcGePoint2d& point, bool aDroite, double rotation) {
    const AcGePoint3d place(point.x, point.y, 0.0);
    auto texte = std::make_unique<AcDbText>(place, base::formater(m_format, valeur).c_str(), m_style,
                                            m_tailleTexte, rotation);
    if (aDroite) {
      texte->setHorizontalMode(AcDb::kTextRight);
      texte->setVerticalMode(AcDb::kTextBottom);
      texte->setAlignmentPoint(place);
    }
    ajouter(std::move(texte));
  }
  void grouper() { groupEntities(m_entites); }

private:
  void ajouter(std::unique_ptr<AcDbEntity> entite) {
    entite->setColorIndex(kColorByLayer);
    const AcDbObjectId id = m_espace.add(std::move(entite));
    if (!id.isNull()) m_entites.push_back(id);
  }

  double m_tailleTexte;
  std::wstring m_format;
  AcDbObjectId m_style;
  DrawingSpace m_espace;
  std::vector<AcDbObjectId> m_entites;
};

/// Draws what belongs to one grid line.
class traceurCarroyage {
public:
  traceurCarroyage(double pasX, double tailleCroix, double tailleTexte, bool internes, int format)
      : m_pasX(pasX),
        m_taille(tailleCroix),
        m_h(tailleCroix * 0.5),
        m_demiTexte(tailleTexte * 0.5),
        m_internes(internes),
        m_plume(tailleTexte, format) {}

  void croixDeRangee(double y, const AcGePoint3dArray& points) {
    for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
      const double fin = points[i + 1].x;
      for (double x = std::floor(points[i].x / m_pasX) * m_pasX; x < fin; x += m_pasX)
        if (x - points[i].x > kSurLeBord && fin - x > kSurLeBord) croix(x, y);
    }
  }
  void cotesDeRangee(double y, double debut, double fin) {
    const double sens = m_internes ? 1.0 : -1.0;
    const double ty = y - m_demiTexte;
    m_plume.trait({debut, y}, {debut + sens * m_h, y});
    m_plume.cote(y, {debut + sens * m_taille, ty}, !m_internes, 0.0);
    m_plume.trait({fin, y}, {fin - sens * m_h, y});
    // Deliberate (carroyage-cote-fin): within the region the text at the end of a row alone stands at half a
    // cross from the border, the others at a whole one.
    m_plume.cote(y, {m_internes ? fin - m_h : fin + m_taille, ty}, m_internes, 0.0);
  }
  void cotesDeColonne(double x, double debut, double fin) {
    constexpr double kDroit = std::numbers::pi / 2.0;
    const double sens = m_internes ? 1.0 : -1.0;
    const double tx = x + m_demiTexte;
    m_plume.trait({x, debut + sens * m_h}, {x, debut});
    m_plume.cote(x, {tx, debut + sens * m_taille}, !m_internes, kDroit);
    m_plume.trait({x, fin - sens * m_h}, {x, fin});
    m_plume.cote(x, {tx, fin - sens * m_taille}, m_internes, kDroit);
  }
  void grouper() { m_plume.grouper(); }
  [[nodiscard]] int croix() const { return m_croix; }

private:
  void croix(double x, double y) {
    m_plume.trait({x - m_h, y}, {x + m_h, y});
    m_plume.trait({x, y - m_h}, {x, y + m_h});
    ++m_croix;
  }

  double m_pasX;
  double m_taille;
  double m_h;  ///< half a cross
  double m_demiTexte;
  bool m_internes;
  plumeCarroyage m_plume;
  int m_croix = 0;
};

}  // namespace

resultatCarroyage dessinerCarroyage(const AcDbPolyline& region, double pasX, double pasY, double tailleCroix,
                                    double tailleTexte, bool internes, int format) {
  resultatCarroyage resultat;
  bornesCarroyage b;
  if (!acdbHostApplicationServices()->workingDatabase() || !b.mesurer(region, pasX, pasY)) return resultat;
  lignesCarroyage lignes(region, b);
  traceurCarroyage traceur(pasX, tailleCroix, tailleTexte, internes, format);
  base::Suivi suivi(static_cast<long long>((b.y1 - b.y0) / pasY + (b.x1 - b.x0) / pasX) + 1);
  for (double y = b.y0; y <= b.y1 && !suivi.arrete(); y += pasY, suivi.avancer()) {
    const AcGePoint3dArray points = lignes.rangee(y);
    if (points.empty()) continue;
    // Deliberate (carroyage-impair): of an odd number of points the last one begins no pair, so that beyond a
    // border that is only touched the crosses are missing.
    traceur.croixDeRangee(y, points);
    traceur.cotesDeRangee(y, points.front().x, points.back().x);
  }
  for (double x = b.x0; x <= b.x1 && !suivi.arrete(); x += pasX, suivi.avancer()) {
    const AcGePoint3dArray points = lignes.colonne(x);
    if (!points.empty()) traceur.cotesDeColonne(x, points.front().y, points.back().y);
  }
  traceur.grouper();
  resultat.croix = traceur.croix();
  resultat.interrompu = suivi.arrete();
  return resultat;
}

bool ampleurCarroyage::demesuree() const { return croix > kTropCroix || lignes > kTropLignes; }

ampleurCarroyage& ampleurCarroyage::operator+=(const ampleurCarroyage& autre) {
  croix += autre.croix;
  lignes += autre.lignes;
  return *this;
}

std::wstring texteDemesure(const ampleurCarroyage& ampleur) {
  return base::formater(L"le carroyage compterait %.0f croix, sur %.0f lignes et colonnes", ampleur.croix,
                        std::floor(ampleur.lignes));
}

ampleurCarroyage estimerCarroyage(const AcDbPolyline& region, double pasX, double pasY) {
  ampleurCarroyage ampleur;
  bornesCarroyage b;
  if (!b.mesurer(region, pasX, pasY)) return ampleur;
  const double rangees = (b.y1 - b.y0) / pasY + 1.0;
  ampleur.lignes = rangees + (b.x1 - b.x0) / pasX + 1.0;
  if (rangees > kRangeesComptees) {
    double aire = 0.0;
    region.getArea(aire);
    ampleur.croix = std::floor(aire / pasX / pasY);
    return ampleur;
  }
  lignesCarroyage lignes(region, b);
  for (double y = b.y0; y <= b.y1; y += pasY) {
    const AcGePoint3dArray points = lignes.rangee(y);
    for (std::size_t i = 0; i + 1 < points.size(); i += 2)
      ampleur.croix +=
          std::max(0.0, std::ceil(points[i + 1].x / pasX) - std::floor(points[i].x / pasX) - 1.0);
  }
  return ampleur;
}

}  // namespace veltora
