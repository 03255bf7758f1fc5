#include "drafting/networks/dessin_reseau.h"

#include "arx/db/dbellipse.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbsymtb.h"
#include "calc/adjustment/reseau_compense.h"
#include "core/drawing_layers.h"
#include "core/drawing_space.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace veltora {
namespace {

constexpr double kWBon = 2.0;
constexpr double kPartDuCote = 0.1;

struct calque {
  const wchar_t* nom;
  int couleur;
};
enum {
  kLayerEllipses,
  kLayerStandard,
  kLayerBonnes,
  kLayerLimites,
  kLayerSuspectes,
  kLayerSansControle,
  kLayers
};
constexpr calque kCalques[kLayers] = {{calquesReseau::kEllipses, 5},  {calquesReseau::kStandard, 4},
                                      {calquesReseau::kBonnes, 3},    {calquesReseau::kLimites, 30},
                                      {calquesReseau::kSuspectes, 1}, {calquesReseau::kSansControle, 8}};

/// The layers, made where they are missing. @return the name of a locked one; else empty
std::wstring preparerLayers(std::array<AcDbObjectId, kLayers>& ids) {
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  const AcDbObjectPointer<AcDbLayerTable> layers(dessin->layerTableId(), AcDb::kForWrite);
  for (std::size_t i = 0; i < kLayers; ++i) {
    ids.at(i) = layerOrNew(*layers, kCalques[i].nom, kCalques[i].couleur);
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(ids.at(i));
    if (layer.openStatus() == Acad::eOk && layer->isLocked()) return kCalques[i].nom;
  }
  return {};
}

/// The measured sides with the layer of the worst measure of each.
std::map<std::pair<int, int>, int> cotes(const reseauCompense& r) {
  std::map<std::pair<int, int>, int> couches;
  const double limite = limiteW(r.reseau.mesures.size());
  const auto noter = [&](int a, int b, int couche) {
    const auto cle = std::minmax(a, b);
    const auto [entree, nouveau] = couches.try_emplace(cle, couche);
    // The rank of layers is that of badness; a side with any controlled measure is not grey.
    if (!nouveau &&
        (entree->second == kLayerSansControle || (couche > entree->second && couche != kLayerSansControle)))
      entree->second = couche;
  };
  for (std::size_t i = 0; i < r.reseau.mesures.size(); ++i) {
    const mesurePonderee& m = r.reseau.mesures[i];
    if (m.ecarte || m.vise < 0 || !r.reseau.enPlan(m.station) || !r.reseau.enPlan(m.vise)) continue;
    const double w = std::abs(r.mesures[i].w);
    const int couche = !(r.mesures[i].redondance > kRedondanceNulle) ? kLayerSansControle
                       : w <= kWBon                                  ? kLayerBonnes
                       : w <= limite                                 ? kLayerLimites
                                                                     : kLayerSuspectes;
    noter(m.station, m.vise, couche);
    if (m.reference >= 0) noter(m.station, m.reference, couche);
  }
  return couches;
}

void dessinerEllipse(DrawingSpace& espace, const pointPondere& p, const ellipse& e, double facteur,
                     const AcDbObjectId& layer) {
  const double a = e.a * facteur;
  if (!(a > 0.0)) return;
  const AcGeVector3d grandAxe(a * std::sin(e.gisement), a * std::cos(e.gisement), 0.0);
  auto entite = std::make_unique<AcDbEllipse>(AcGePoint3d(p.c[0], p.c[1], 0.0), AcGeVector3d::kZAxis,
                                              grandAxe, std::clamp(e.b / e.a, 1e-6, 1.0));
  entite->setLayer(layer);
  espace.add(std::move(entite));
}

}  // namespace

double echelleDesEllipses(const reseauCompense& r) {
  double plusGrande = 0.0;
  for (const statistiquePoint& s : r.points) plusGrande = std::max(plusGrande, s.plan.a);
  plusGrande *= r.facteur() * r.facteur95();
  const double cote = r.reseau.coteMoyen();
  if (!(plusGrande > 0.0) || !(cote > 0.0)) return 1.0;
  const double voulue = kPartDuCote * cote / plusGrande;
  const double dix = std::pow(10.0, std::floor(std::log10(voulue)));
  for (const double n : {5.0, 2.0})
    if (voulue >= n * dix) return n * dix;
  return dix;
}

std::wstring dessinerReseau(const reseauCompense& r, double echelle) {
  if (!acdbHostApplicationServices()->workingDatabase()) return L"aucun dessin";
  std::array<AcDbObjectId, kLayers> layers;
  if (const std::wstring verrou = preparerLayers(layers); !verrou.empty())
    return L"le calque « " + verrou + L" » est verrouillé, rien n'est dessiné";
  DrawingSpace espace;
  if (!espace.ready()) return L"l'espace objet ne s'ouvre pas";
  for (const auto& [cote, couche] : cotes(r)) {
    const pointPondere& a = r.reseau.point(cote.first);
    const pointPondere& b = r.reseau.point(cote.second);
    auto ligne =
        std::make_unique<AcDbLine>(AcGePoint3d(a.c[0], a.c[1], 0.0), AcGePoint3d(b.c[0], b.c[1], 0.0));
    ligne->setLayer(layers.at(static_cast<std::size_t>(couche)));
    espace.add(std::move(ligne));
  }
  for (std::size_t i = 0; i < r.points.size(); ++i) {
    if (!r.points[i].calculePlan) continue;
    const double f = echelle * r.facteur();
    dessinerEllipse(espace, r.reseau.points[i], r.points[i].plan, f, layers[kLayerStandard]);
    dessinerEllipse(espace, r.reseau.points[i], r.points[i].plan, f * r.facteur95(), layers[kLayerEllipses]);
  }
  return {};
}

}  // namespace veltora
