#include "drafting/clothoids/clothoide_donnees.h"

#include "arx/db/dbcurve.h"
#include "arx/db/dbheavypoly.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbservices.h"
#include "arx/db/resbuf.h"
#include "core/xdata_names.h"
#include "core/xml_champs.h"
#include "drafting/clothoids/clothoide_parcours.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace veltora {
namespace {

constexpr int kRepere = 123411412;
constexpr double kSurLaCourbe = 0.01;  // drawing units: a vertex so near to the curve was drawn on it
constexpr double kMemeEcart = 1e-5;    // drawing units: vertices that lie so much alike tell no side

/// Takes a point of extended data and goes on. @return false at anything else
bool prendrePoint(const resbuf*& element, AcGePoint2d& point) {
  if (!element || element->restype != 1011) return false;
  point = {element->resval.rpoint[0], element->resval.rpoint[1]};
  element = element->rbnext;
  return true;
}

/// The vertices of a polyline in plan; none for anything else.
std::vector<AcGePoint2d> sommetsDe(const AcDbEntity& entite) {
  std::vector<AcGePoint2d> sommets;
  if (!AcDbPolyline::cast(&entite) && !AcDb2dPolyline::cast(&entite) && !AcDb3dPolyline::cast(&entite))
    return sommets;
  for (const AcGeCurvePiece& morceau : static_cast<const AcDbCurve&>(entite).pieces()) {
    if (sommets.empty()) sommets.emplace_back(morceau.start.x, morceau.start.y);
    sommets.emplace_back(morceau.end.x, morceau.end.y);
  }
  return sommets;
}

/// The largest distance of the vertices from a curve; without end when one does not lie on it.
double ecartMax(const clothoide& courbe, const std::vector<AcGePoint2d>& sommets) {
  double ecart = 0.0;
  for (const AcGePoint2d& sommet : sommets) {
    ecart = std::max(ecart, pointLePlusProche(courbe, sommet).point.distanceTo(sommet));
    if (!(ecart <= kSurLaCourbe)) return std::numeric_limits<double>::infinity();
  }
  return ecart;
}

}  // namespace

resbuf* xDataClothoide(const clothoide& courbe) {
  AcGePoint2d pi;
  if (!courbe.estTracable() || !courbe.intersectionTangentes(pi)) return nullptr;
  acdbRegApp(kXDataClothoide);
  return acutBuildList(1001, kXDataClothoide, 1071, kRepere,              //
                       1011, enPlan(courbe.pointEn(courbe.startParam)),   //
                       1011, enPlan(courbe.pointEn(courbe.endParam)),     //
                       1011, enPlan(pi),                                  //
                       1011, enPlan(courbe.centreEn(courbe.startParam)),  //
                       1011, enPlan(courbe.centreEn(courbe.endParam)), RTNONE);
}

bool lireXData(clothoide& courbe, const resbuf* chaine) {
  if (chaine && chaine->restype == 1001) chaine = chaine->rbnext;
  if (!chaine || chaine->restype != 1071 || chaine->resval.rlong != kRepere) return false;
  chaine = chaine->rbnext;
  AcGePoint2d p1, p2, pi, centre1, centre2;
  for (AcGePoint2d* point : {&p1, &p2, &pi, &centre1, &centre2})
    if (!prendrePoint(chaine, *point)) return false;
  const double r1 = p1.distanceTo(centre1);
  const double r2 = p2.distanceTo(centre2);
  if (raisonSansClothoide(r1, r2, p1, p2, pi)) return false;
  clothoide lue;
  if (!lue.definirParRayons(r1, r2, p1, p2, pi) || !lue.estTracable()) return false;
  courbe = lue;
  return true;
}

bool lireXDataEntite(clothoide& courbe, const AcDbEntity& entite) {
  resbuf* const chaine = entite.xData(kXDataClothoide);
  clothoide lue;
  const bool valide = lireXData(lue, chaine);
  acutRelRb(chaine);
  if (!valide) return false;
  const std::vector<AcGePoint2d> sommets = sommetsDe(entite);
  clothoide retournee = lue;
  retournee.retournerSurCorde();
  const double ecart = ecartMax(lue, sommets);
  const double ecartRetournee = ecartMax(retournee, sommets);
  if (std::isinf(ecart) && std::isinf(ecartRetournee)) return false;
  courbe = ecartRetournee + kMemeEcart < ecart ? retournee : lue;
  return true;
}

void ecrireXML(const clothoide& courbe, TiXmlElement& element) {
  ajouterElementDouble(element, "startParam", courbe.startParam);
  ajouterElementDouble(element, "endParam", courbe.endParam);
  ajouterElementDouble(element, "paramA", courbe.paramA);
  ajouterElementDouble(element, "offset.x", courbe.offset().x);
  ajouterElementDouble(element, "offset.y", courbe.offset().y);
  ajouterElementDouble(element, "angleRot", courbe.angleRot());
  ajouterElementEntier(element, "mirrored", courbe.mirrored() ? 1 : 0);
}

void ecrireXML(const clothoide& courbe, TiXmlElement& element, const char* /*nom*/) {
  // Deliberate (clothoide-nomvar): the child bears this name, whatever name is asked for.
  auto* const enfant = new TiXmlElement("nomvar");
  element.LinkEndChild(enfant);
  ecrireXML(courbe, *enfant);
}

bool lireXML(clothoide& courbe, const TiXmlElement& element) {
  clothoide lue;
  AcGePoint2d origine;
  double angle = 0.0;
  const std::pair<const char*, double*> champs[] = {
      {"startParam", &lue.startParam}, {"endParam", &lue.endParam}, {"paramA", &lue.paramA},
      {"offset.x", &origine.x},        {"offset.y", &origine.y},    {"angleRot", &angle}};
  for (const auto& [nom, valeur] : champs)
    if (!lireElementDouble(element, nom, *valeur) || !std::isfinite(*valeur)) return false;
  const TiXmlElement* const miroir = element.FirstChildElement("mirrored");
  const char* const texte = miroir ? miroir->GetText() : nullptr;
  if (!texte) return false;
  lue.setOffset(origine);
  lue.setAngleRot(angle);
  lue.setMirrored(texte[0] != '0');
  courbe = lue;
  return true;
}

}  // namespace veltora
