#include "host/lisp/lisp_points.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "base/text.h"
#include "core/code_range.h"
#include "core/installation.h"
#include "core/valider_nombre.h"
#include "host/lisp/arguments_lisp.h"
#include "points/bloc_fichier.h"
#include "points/point_xyz.h"
#include "points/projets_topo.h"

#include <algorithm>
#include <vector>

namespace veltora {
namespace {

using Args = argumentsLisp;

/// What the functions that make points are given.
struct pointDemande {
  pointXYZ point;
  bool valide = false;  ///< types as they must be
};

/// An altitude: a number, or a text when `texteAdmis` that holds one; anything else is none.
double lireAltitude(const resbuf* element, bool texteAdmis) {
  if (Args::estReel(element)) return Args::reel(element);
  const bool nombre = texteAdmis && Args::estTexte(element) && validerNombre(element->resval.rstring);
  return nombre ? base::lireReel(std::wstring_view(element->resval.rstring)) : Z_ABSENT;
}

/// Code from a number; 1 for one outside their range.
int lireCode(const resbuf* element) {
  if (Args::estTexte(element))
    return codeOuDefaut(base::lireEntier(std::wstring_view(element->resval.rstring)));
  if (Args::estEntier(element)) return codeOuDefaut(Args::entier(element));
  const double reel = Args::reel(element);
  return reel >= kSmallestCode && reel < kLargestCode + 1 ? static_cast<int>(reel) : kSmallestCode;
}

/// name, code, position, altitude, observation. @param souple  a code may be any number or a text, an
/// altitude no text
pointDemande lirePointDemande(const Args& args, bool souple) {
  pointDemande demande;
  const resbuf* nom = args.element(0);
  const resbuf* code = args.element(1);
  const auto position = lirePosition(args.element(2));
  const bool codeAdmis = Args::estEntier(code) || (souple && (Args::estReel(code) || Args::estTexte(code)));
  if (!Args::estTexte(nom) || !codeAdmis || !position) return demande;
  pointXYZ& point = demande.point;
  point.nom = nom->resval.rstring;
  point.code = lireCode(code);
  point.x = position->x;
  point.y = position->y;
  point.z = lireAltitude(args.element(3), !souple);
  if (Args::estTexte(args.element(4))) point.obs = args.element(4)->resval.rstring;
  demande.valide = true;
  return demande;
}

/// A new selection set of the entities that are alive.
int rendreSelection(const std::vector<AcDbObjectId>& blocs) {
  ads_name jeu = {0, 0};
  acedSSFromEntities(blocs, jeu);
  return acedRetName(jeu, RTPICKS);
}

/// The live blocks of the points that `choisir` takes.
template <class Choix>
int rendreBlocs(const listePointsDuDessin& table, Choix choisir) {
  std::vector<AcDbObjectId> blocs;
  for (const pointDuDessin& point : *table.getData())
    if (point.id.isLive() && choisir(point)) blocs.push_back(point.id);
  return rendreSelection(blocs);
}

}  // namespace

listePointsDuDessin* tableDeTravail() { return tablesPoints ? tablesPoints->currTable() : nullptr; }

int lispAddPt() {
  const Args args(acedGetArgs());
  if (args.nombre() < 5 || !tableDeTravail()) return acedRetNil();
  const pointDemande demande = lirePointDemande(args, false);
  if (!demande.valide) return acedRetNil();
  return demande.point.ajouterPointDessine();
}

int lispTpcdAddPt() {
  const Args args(acedGetArgs());
  listePointsDuDessin* table = tableDeTravail();
  if (args.nombre() < 5 || !table) return acedRetNil();
  const pointDemande demande = lirePointDemande(args, true);
  if (!demande.valide) {
    acutPrintf(L"\nInvalid params");
    return acedRetNil();
  }
  table->supprimerPoint(demande.point.nom.c_str());
  pointDuDessin point;
  point = demande.point;
  point.creer(true, demande.point.obs.c_str());
  table->Ajouter(point);
  return RTNORM;
}

int lispMaxNum() {
  const listePointsDuDessin* table = tableDeTravail();
  return table ? acedRetInt(table->getMaxNum() + 1) : acedRetNil();
}

int lispEnamePt() {
  const Args args(acedGetArgs());
  const listePointsDuDessin* table = tableDeTravail();
  AcDbObjectId bloc;
  ads_name nom = {0, 0};
  if (!table || !Args::estTexte(args.element(0)) || !table->getObjId(args.element(0)->resval.rstring, bloc) ||
      !bloc.isLive() || acdbGetAdsName(nom, bloc) != Acad::eOk)
    return acedRetNil();
  return acedRetName(nom, RTENAME);
}

int lispRegPts() {
  listePointsDuDessin* table = tableDeTravail();
  if (!table) return acedRetNil();
  table->updateDrawing();
  return RTNORM;
}

int lispSelectAll() {
  const listePointsDuDessin* table = tableDeTravail();
  if (!table) return acedRetNil();
  return rendreBlocs(*table, [](const pointDuDessin&) { return true; });
}

int lispSelOnCode() {
  const Args args(acedGetArgs());
  const listePointsDuDessin* table = tableDeTravail();
  if (!table || !Args::estEntier(args.element(0))) return acedRetNil();
  const int code = codeOuDefaut(Args::entier(args.element(0)));
  return rendreBlocs(*table, [code](const pointDuDessin& point) { return point.code == code; });
}

int lispSelOnNum() {
  const Args args(acedGetArgs());
  const listePointsDuDessin* table = tableDeTravail();
  const resbuf* premier = args.element(1);
  const resbuf* dernier = args.element(2);
  if (!table || !Args::estTexte(args.element(0)) || !premier || premier->restype != RTSHORT || !dernier ||
      dernier->restype != RTSHORT)
    return acedRetNil();
  const auto [debut, fin] = std::minmax<int>({premier->resval.rint, dernier->resval.rint});
  const std::wstring prefixe = args.element(0)->resval.rstring;
  std::vector<AcDbObjectId> blocs;
  for (int numero = debut; numero <= fin; ++numero) {
    AcDbObjectId bloc;
    if (table->getObjId(base::formater(L"%s%d", prefixe, numero).c_str(), bloc) && bloc.isLive())
      blocs.push_back(bloc);
  }
  return rendreSelection(blocs);
}

int lispChgRepPts() {
  const Args args(acedGetArgs());
  const listePointsDuDessin* table = tableDeTravail();
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (!table || !db || !Args::estEntier(args.element(0)) || !Args::estTexte(args.element(1)))
    return acedRetNil();
  const int code = codeOuDefaut(Args::entier(args.element(0)));
  std::wstring fichier = args.element(1)->resval.rstring;
  if (!base::toLower(fichier).ends_with(L".dwg")) fichier += L".dwg";
  const std::wstring trouve =
      acdbHostApplicationServices()->findFile(base::fromUtf8(cheminPlateforme(fichier).string()));
  const AcDbObjectId definition = trouve.empty() ? AcDbObjectId() : blocDuFichier(*db, trouve);
  if (definition.isNull()) return RTNORM;
  for (const pointDuDessin& point : *table->getData()) {
    if (point.code != code) continue;
    const AcDbObjectPointer<AcDbBlockReference> bloc(point.id, AcDb::kForWrite);
    if (bloc.openStatus() == Acad::eOk) bloc->setBlockTableRecord(definition);
  }
  return RTNORM;
}

int lispVCode() {
  static int couleur = 0;
  const listePointsDuDessin* table = tableDeTravail();
  int code = 0;
  if (!table || acedGetInt(L"\nCode des points a visualiser:", &code) != RTNORM) return acedRetNil();
  couleur = couleur % 7 + 1;
  constexpr double kDemiCroix = 5.0;  // pixels
  const double d = kDemiCroix * acedPixelSize();
  for (const pointDuDessin& point : *table->getData()) {
    if (point.code != code) continue;
    const ads_point gauche = {point.x - d, point.y, 0.0};
    const ads_point droite = {point.x + d, point.y, 0.0};
    const ads_point bas = {point.x, point.y - d, 0.0};
    const ads_point haut = {point.x, point.y + d, 0.0};
    acedGrDraw(gauche, droite, couleur, 0);
    acedGrDraw(bas, haut, couleur, 0);
  }
  return RTNORM;
}

int lispZoomLeve() {
  const listePointsDuDessin* table = tableDeTravail();
  if (!table || table->nbPoint() < 2) return acutPrintf(L"\nPas de points dans cette table");
  AcGePoint2d bas(base::kDebutRecherche, base::kDebutRecherche);
  AcGePoint2d haut(-base::kDebutRecherche, -base::kDebutRecherche);
  for (const pointDuDessin& point : *table->getData()) {
    bas.set(std::min(bas.x, point.x), std::min(bas.y, point.y));
    haut.set(std::max(haut.x, point.x), std::max(haut.y, point.y));
  }
  // Deliberate (zoomleve-marges): the margin of x serves on both sides and on top, that of y at the bottom
  // only.
  const double mx = std::min((haut.x - bas.x) / 40.0, 1.0);
  const double my = std::min((haut.y - bas.y) / 40.0, 1.0);
  acedZoomWindow({bas.x - mx, bas.y - my}, {haut.x + mx, haut.y + mx});
  return RTNORM;
}

}  // namespace veltora
