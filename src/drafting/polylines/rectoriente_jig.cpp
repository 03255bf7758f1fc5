#include "drafting/polylines/rectoriente_jig.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acutads.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace veltora {
namespace {

constexpr double kMemePlace = 1e-6;
constexpr double kLoin = 1e300;
constexpr unsigned int kSommets = 4;

/// What a stage says and what may be answered instead of a point.
struct etape {
  const ACHAR* invite;
  const ACHAR* motsCles;
};
// Deliberate (rect3pt-cote): the word that leads to the last stage is offered in that stage alone.
constexpr etape kEtapes[] = {
    {L"\nOrigine:", L""},
    {L"\nRotation ", L""},
    {L"\nOrigine Rotation Diagonale <Point sur le côté opposé>", L"Origine Rotation Diagonale"},
    {L"\nOrigine Rotation Cote <Point sur le côté opposé>", L"Origine Rotation Cote"}};

AcGePoint2d avancer(const AcGePoint2d& point, double angle, double longueur) {
  return {point.x + std::cos(angle) * longueur, point.y + std::sin(angle) * longueur};
}

}  // namespace

rectorienteJig::~rectorienteJig() { delete polyligne; }

AcDbObjectId rectorienteJig::dessiner() {
  commencer(kOrigine);
  for (;;) {
    const DragStatus reponse = drag();
    if (reponse == kNormal) {
      if (!m_prise) {
        acutPrintf(L"\nCe point ne donne aucun côté.");
      } else if (etat < kDiagonale) {
        commencer(etat == kOrigine ? kRotation : kDiagonale);
      } else {
        const AcDbObjectId id = append();
        polyligne = nullptr;
        return id;
      }
    } else if (reponse == kKW1) {
      commencer(kOrigine);
    } else if (reponse == kKW1 + 1) {
      commencer(kRotation);
    } else if (reponse == kKW1 + 2) {
      commencer(etat);  // the third word of a stage is its own
    } else {
      return AcDbObjectId::kNull;
    }
  }
}

void rectorienteJig::commencer(Etat nouveau) {
  etat = nouveau;
  dernierPoint = {kLoin, kLoin};
  dernierEtat = -1;
  setDispPrompt(kEtapes[etat].invite);
  setKeywordList(kEtapes[etat].motsCles);
}

AcEdJig::DragStatus rectorienteJig::sampler() {
  AcGePoint3d point;
  const DragStatus reponse =
      etat == kOrigine ? acquirePoint(point) : acquirePoint(point, {origine.x, origine.y, 0.0});
  if (reponse != kNormal) return reponse;
  const AcGePoint2d ici(point.x, point.y);
  if (dernierEtat == etat && ici.distanceTo(dernierPoint) < kMemePlace) return kNoChange;
  dernierEtat = etat;
  dernierPoint = ici;
  m_prise = prendre(ici);
  return kNormal;
}

bool rectorienteJig::prendre(const AcGePoint2d& point) {
  const double dx = point.x - origine.x;
  const double dy = point.y - origine.y;
  switch (etat) {
    case kOrigine:
      origine = point;
      longueur = largeur = 0.0F;
      return true;
    case kRotation:
      angle = std::atan2(dy, dx);
      longueur = static_cast<float>(std::hypot(dx, dy));
      return longueur > kMemePlace;
    default:
      largeur = static_cast<float>(dy * std::cos(angle) - dx * std::sin(angle));
      return std::abs(largeur) > kMemePlace;
  }
}

bool rectorienteJig::update() {
  constexpr double kDroit = std::numbers::pi / 2.0;
  if (!polyligne) {
    polyligne = new AcDbPolyline(kSommets);
    for (unsigned int i = 0; i < kSommets; ++i) polyligne->addVertexAt(i, origine);
    polyligne->setClosed(true);
    polyligne->setDatabaseDefaults(acdbHostApplicationServices()->workingDatabase());
  }
  AcGePoint2d sommet = origine;
  polyligne->setPointAt(0, sommet);
  unsigned int rang = 1;
  for (const auto& [direction, cote] :
       {std::pair(angle, longueur), {angle + kDroit, largeur}, {angle + 2 * kDroit, longueur}}) {
    sommet = avancer(sommet, direction, cote);
    polyligne->setPointAt(rang++, sommet);
  }
  return true;
}

}  // namespace veltora
