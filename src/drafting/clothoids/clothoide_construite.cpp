#include "drafting/clothoids/clothoide_construite.h"

#include "arx/ge/gelin2d.h"
#include "base/format.h"
#include "calc/angles.h"
#include "drafting/clothoids/clothoide_parcours.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kEcartTolere = 0.01;  // drawing units
constexpr double kPointsMax = 1e6;
constexpr double kRatioMilieu = 0.5;  // where a chord lies farthest from the curve
constexpr double kAuBout = 1e-4;      // drawing units: a last point so near to the end is the end

double parametreEn(const clothoide& courbe, double rayon) {
  return rayon > kInflexion ? courbe.paramA * courbe.paramA / rayon : 0.0;
}

/// Bearing of the curve on the way from p1, grades.
double gisementEn(const clothoideConstruite& c, double s) {
  const AcGeVector2d t = c.courbe.tangenteEn(s) * (c.s2 < c.s1 ? -1.0 : 1.0);
  const double gisement = calculGisement(0.0, 0.0, t.x, t.y, 0);
  constexpr double kImprime = 5e-5;  // what is printed with four decimals as a whole turn
  return kUnitesAngle[0].tour - gisement < kImprime ? 0.0 : gisement;
}

std::wstring decrireExtremite(const clothoideConstruite& c, const wchar_t* nom, double s) {
  const AcGePoint2d p = c.courbe.pointEn(s);
  std::wstring texte = base::formater(L"%s : X=%.4f Y=%.4f, gisement de la tangente %.4f gr, ", nom, p.x, p.y,
                                      gisementEn(c, s));
  if (s <= kInflexion) return texte + L"rayon infini\n";
  const AcGePoint2d centre = c.courbe.centreEn(s);
  return texte +
         base::formater(L"rayon %.4f, centre X=%.4f Y=%.4f\n", c.courbe.rayonEn(s), centre.x, centre.y);
}

}  // namespace

double clothoideConstruite::longueur() const { return std::fabs(s2 - s1); }

const wchar_t* construireClothoide(const donneesClothoide& donnees, clothoideConstruite& construite) {
  const auto& [r1, r2, p1, p2, pi] = donnees;
  if (const wchar_t* const raison = raisonSansClothoide(r1, r2, p1, p2, pi)) return raison;
  clothoideConstruite c;
  clothoide& courbe = c.courbe;
  if (!courbe.definirParRayons(r1, r2, p1, p2, pi) || !courbe.estTracable())
    return L"ces rayons sont hors de proportion avec les points";
  courbe.orienterVers(pi);
  c.s1 = parametreEn(courbe, r1);
  c.s2 = parametreEn(courbe, r2);
  c.ecartP2 = courbe.pointEn(c.s2).distanceTo(p2);
  for (const double s : {c.s1, c.s2})
    c.ecartPI = std::max(c.ecartPI, AcGeLine2d(courbe.pointEn(s), courbe.tangenteEn(s)).distanceTo(pi));
  construite = c;
  return nullptr;
}

void controlerClothoide(const clothoideConstruite& construite, base::Remarques& remarques) {
  if (construite.ecartP2 > kEcartTolere)
    remarques.douter(
        base::formater(L"la courbe de ces rayons finit à %.4f de P2 : rayons et points ne s'accordent pas",
                       construite.ecartP2));
  if (construite.ecartPI > kEcartTolere)
    remarques.douter(
        base::formater(L"les tangentes de la courbe passent à %.4f de PI : rayons et points ne s'accordent "
                       L"pas, ou les rayons "
                       L"sont échangés",
                       construite.ecartPI));
}

std::wstring decrireClothoide(const clothoideConstruite& c) {
  AcGePoint2d pi;
  c.courbe.intersectionTangentes(pi);
  const double deviation =
      std::fabs(c.courbe.angleTangent(c.s2) - c.courbe.angleTangent(c.s1)) / kUnitesAngle[0].versRadians;
  const AcGePoint2d& origine = c.courbe.offset();
  return base::formater(L"A = %.4f, longueur %.4f, déviation %.4f gr\n", c.courbe.paramA, c.longueur(),
                        deviation) +
         decrireExtremite(c, L"P1", c.s1) + decrireExtremite(c, L"P2", c.s2) +
         base::formater(L"PI : X=%.4f Y=%.4f\n", pi.x, pi.y) +
         base::formater(L"Origine, de courbure nulle : X=%.4f Y=%.4f ; P1 en est à %.4f, P2 à %.4f\n",
                        origine.x, origine.y, c.s1, c.s2) +
         base::formater(L"Écart en P2 %.4f, de PI aux tangentes %.4f\n", c.ecartP2, c.ecartPI);
}

std::vector<pointClothoide> listerPoints(const clothoideConstruite& c, double pas, double fleche) {
  const double longueur = c.longueur();
  std::vector<double> abscisses;
  if (fleche > 0.0) {
    clothoide montante = c.courbe;
    abscisses = echantillonner(montante, fleche, kRatioMilieu);
    if (c.s2 < c.s1) {
      std::reverse(abscisses.begin(), abscisses.end());
      for (double& abscisse : abscisses) abscisse = longueur - abscisse;
    }
  } else {
    if (!(longueur / pas <= kPointsMax)) return {};
    const double dernier = longueur - std::min(kAuBout, pas / 2.0);
    for (int k = 0; k * pas < dernier; ++k) abscisses.push_back(k * pas);
    abscisses.push_back(longueur);
  }
  std::vector<pointClothoide> points;
  points.reserve(abscisses.size());
  for (const double abscisse : abscisses) {
    const double s = c.s1 + (c.s2 < c.s1 ? -abscisse : abscisse);
    points.push_back(
        {abscisse, c.courbe.pointEn(s), s > kInflexion ? c.courbe.rayonEn(s) : 0.0, gisementEn(c, s)});
  }
  return points;
}

}  // namespace veltora
