#include "host/lisp/lisp_dessin.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/ed/acedads.h"
#include "base/text.h"
#include "core/block_attributes.h"
#include "host/lisp/arguments_lisp.h"
#include "points/point_xyz.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace veltora {
namespace {

using Args = argumentsLisp;

constexpr std::size_t kPairesAuPlus = 25;
constexpr std::size_t kEtiquetteAuPlus = 64;
/// A bulge below this is a straight segment, strictly.
constexpr double kBombementNul = 1e-7;

AcDbObjectId entiteDe(const resbuf* element) {
  AcDbObjectId id;
  if (element && element->restype == RTENAME) acdbGetObjectId(id, element->resval.rlname);
  return id;
}

struct visibilite {
  std::wstring etiquette;
  bool visible;
};

/// A list of pairs (tag number) or (tag . number). @return false for anything else
bool lireVisibilites(const resbuf* liste, std::vector<visibilite>& paires) {
  if (!liste || liste->restype != RTLB) return false;
  const resbuf* element = liste->rbnext;
  for (; element && element->restype == RTLB; element = element->rbnext) {
    const resbuf* etiquette = element->rbnext;
    const resbuf* valeur = etiquette ? etiquette->rbnext : nullptr;
    if (valeur && valeur->restype == RTDOTE) valeur = valeur->rbnext;
    element = valeur ? valeur->rbnext : nullptr;
    if (!Args::estTexte(etiquette) || valeur->restype != RTSHORT || !element || element->restype != RTLE)
      return false;
    if (paires.size() < kPairesAuPlus)
      paires.push_back(
          {std::wstring(etiquette->resval.rstring).substr(0, kEtiquetteAuPlus), valeur->resval.rint != 0});
  }
  return element && element->restype == RTLE;
}

void appliquerVisibilites(const AcDbBlockReference& bloc, const std::vector<visibilite>& paires) {
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc.attributeIterator());
  for (; !attributs->done(); attributs->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribut(attributs->objectId(), AcDb::kForWrite);
    if (attribut.openStatus() != Acad::eOk) continue;
    for (const visibilite& paire : paires)
      if (base::compareNoCase(attribut->tag().substr(0, kEtiquetteAuPlus), paire.etiquette) == 0)
        montrerAttribut(*attribut, paire.visible);
  }
}

struct segmentProche {
  AcGePoint3d debut;
  AcGePoint3d fin;
  double bombement = 0.0;
};

/// The segment of a polyline next to a point. @return false when there is none
bool trouverSegment(const AcDbPolyline& polyligne, const AcGePoint3d& point, segmentProche& segment) {
  AcGePoint3d proche;
  double parametre = 0.0;
  const unsigned int sommets = polyligne.numVerts();
  if (sommets < 2 || polyligne.getClosestPointTo(point, proche) != Acad::eOk ||
      polyligne.getParamAtPoint(proche, parametre) != Acad::eOk)
    return false;
  const unsigned int dernier = polyligne.isClosed() ? sommets - 1 : sommets - 2;
  const auto index = std::min(static_cast<unsigned int>(std::max(parametre, 0.0)), dernier);
  return polyligne.getPointAt(index, segment.debut) == Acad::eOk &&
         polyligne.getPointAt((index + 1) % sommets, segment.fin) == Acad::eOk &&
         polyligne.getBulgeAt(index, segment.bombement) == Acad::eOk;
}

}  // namespace

int lispCalcTailleBlock() {
  const Args args(acedGetArgs());
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (!db || !Args::estTexte(args.element(0))) return acedRetNil();
  AcDbObjectId definition;
  const AcDbObjectPointer<AcDbBlockTable> blocs(db->blockTableId());
  AcDbExtents boite;
  if (blocs.openStatus() != Acad::eOk ||
      blocs->getIdAt(args.element(0)->resval.rstring, definition) != Acad::eOk ||
      AcDbBlockReference(AcGePoint3d::kOrigin, definition).getGeomExtents(boite) != Acad::eOk)
    return acedRetNil();
  const ads_point taille = {boite.maxPoint().x - boite.minPoint().x, boite.maxPoint().y - boite.minPoint().y,
                            0.0};
  return acedRetPoint(taille);
}

int lispAttrVisibility() {
  const Args args(acedGetArgs());
  const resbuf* jeu = args.element(0);
  std::vector<visibilite> paires;
  Adesk::Int32 nombre = 0;
  if (!jeu || jeu->restype != RTPICKS || acedSSLength(jeu->resval.rlname, &nombre) != RTNORM ||
      !lireVisibilites(args.element(1), paires))
    return acutPrintf(L"\nparametres incorrects.");
  for (Adesk::Int32 i = 0; i < nombre; ++i) {
    ads_name nom = {0, 0};
    AcDbObjectId id;
    if (acedSSName(jeu->resval.rlname, i, nom) == RTNORM && acdbGetObjectId(id, nom) == Acad::eOk) {
      const AcDbObjectPointer<AcDbBlockReference> bloc(id);
      if (bloc.openStatus() == Acad::eOk) appliquerVisibilites(*bloc, paires);
    }
    if ((i + 1) % 10 == 0) acutPrintf(L"\r element %8ld / %8ld", i + 1, nombre);
  }
  return RTNORM;
}

int lispGetSegType() {
  const Args args(acedGetArgs());
  const AcDbObjectPointer<AcDbPolyline> polyligne(entiteDe(args.element(0)));
  const auto point = lirePosition(args.element(1));
  segmentProche segment;
  if (polyligne.openStatus() != Acad::eOk || !point || !trouverSegment(*polyligne, *point, segment))
    return acedRetNil();
  const bool droit = std::abs(segment.bombement) < kBombementNul;
  const Args liste(
      droit ? acutBuildList(RTSTR, L"LINE", RT3DPOINT, segment.debut, RT3DPOINT, segment.fin, RTNONE)
            : acutBuildList(RTSTR, L"ARC", RT3DPOINT, segment.debut, RT3DPOINT, segment.fin, RTREAL,
                            segment.bombement, RTNONE));
  return acedRetList(liste.chaine());
}

int lispModifAttrib() {
  const Args args(acedGetArgs());
  const AcDbObjectId bloc = entiteDe(args.element(0));
  if (bloc.isNull() || !Args::estTexte(args.element(1)) || !Args::estTexte(args.element(2)))
    return acedRetNil();
  return ecrireAttribut(bloc, args.element(1)->resval.rstring, args.element(2)->resval.rstring);
}

int lispUpdArxTtxt() {
  const Args args(acedGetArgs());
  if (!Args::estReel(args.element(0))) return acedRetNil();
  setFacteurTailleBloc(Args::reel(args.element(0)));
  return RTNORM;
}

}  // namespace veltora
