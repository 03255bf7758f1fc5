// Points from the entities of a drawing: which entities, in which order they are tried, under which code.

#include "points/exchange/import_dessin.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbmesh.h"
#include "arx/db/dbmtext.h"
#include "arx/db/dbpl.h"
#include "arx/ed/edselect.h"
#include "base/suivi.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/block_attributes.h"
#include "core/code_range.h"
#include "core/picking.h"
#include "core/valider_nombre.h"
#include "points/attribs_points.h"
#include "points/liste_points_du_dessin.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace veltora {
namespace {

constexpr const wchar_t* kSansNom = L"*";  // numbered at the end
constexpr const wchar_t* kLibelleCodeLu = L"Import Code";

/// The altitude that an attribute holds; absent when its text is no number.
double altitudeLue(const AcString& texte) { return validerNombre(texte) ? base::lireReel(texte) : Z_ABSENT; }

/// The number that a whole text is; nothing for another text and for 0.
std::optional<double> altitudeDeTexte(const AcString& texte) {
  const std::string octets = base::narrow(texte);
  if (!validerNombre(octets)) return std::nullopt;
  const double z = base::lireReel(octets);
  return z != 0.0 ? std::optional(z) : std::nullopt;
}

/// One import at work.
class importateur {
public:
  importateur(listePointsDuDessin& table, const parametresImport& parametres)
      : m_table(table), m_parametres(parametres) {}
  void prendre(const AcDbEntity& entite);
  [[nodiscard]] const comptesImport& comptes() const { return m_comptes; }

private:
  static std::size_t rang(int drapeau) {
    std::size_t i = 0;
    while (sourcesImport[i].drapeau != drapeau) ++i;
    return i;
  }
  [[nodiscard]] bool voulue(int drapeau) const { return (m_parametres.masque & drapeau) != 0; }
  void enregistrer(int drapeau) {
    const std::size_t i = rang(drapeau);
    enregistrerCodeSource(m_enregistres[i], sourcesImport[i].code, sourcesImport[i].libelle);
  }
  void ajouter(int drapeau, const AcGePoint3d& position) {
    ajouter(drapeau, position, sourcesImport[rang(drapeau)].code);
  }
  void ajouter(int drapeau, const AcGePoint3d& position, int code);
  void ajouterBloc(int drapeau, const AcString& nom, const AcGePoint3d& position, int code, AcDbObjectId id);
  template <class Sommet, class Entite, class Position>
  void prendreSommets(int drapeau, const Entite& entite, Position position);
  bool prendrePolyligne(const AcDbEntity& entite);
  bool prendreBloc(const AcDbEntity& entite);
  bool prendreBlocSysteme(const AcDbBlockReference& bloc);
  bool prendreBlocAttributs(const AcDbBlockReference& bloc);
  int codeAttribut(const AcDbBlockReference& bloc);
  bool prendreSimple(const AcDbEntity& entite);
  void prendrePolyline(const AcDbPolyline& polyligne);
  bool prendreTexte(const AcDbEntity& entite);

  listePointsDuDessin& m_table;
  const parametresImport& m_parametres;
  comptesImport m_comptes{};
  std::array<bool, kNombreSources> m_enregistres{};
};

void importateur::ajouter(int drapeau, const AcGePoint3d& position, int code) {
  if (position.z == 0.0) return;
  enregistrer(drapeau);
  m_table.CreerPoint(position, code, kSansNom);
  ++m_comptes[rang(drapeau)];
}

void importateur::ajouterBloc(int drapeau, const AcString& nom, const AcGePoint3d& position, int code,
                              AcDbObjectId id) {
  pointDuDessin point;
  point.setParams(nom.c_str(), position, code);
  point.setId(id);
  m_table.Ajouter(point);
  ++m_comptes[rang(drapeau)];
}

template <class Sommet, class Entite, class Position>
void importateur::prendreSommets(int drapeau, const Entite& entite, Position position) {
  const std::unique_ptr<AcDbObjectIterator> sommets(entite.vertexIterator());
  for (; !sommets->done(); sommets->step()) {
    const AcDbObjectPointer<Sommet> sommet(sommets->objectId());
    if (sommet.openStatus() != Acad::eOk) continue;
    if (const std::optional<AcGePoint3d> place = position(*sommet)) ajouter(drapeau, *place);
  }
}

/// Polylines and meshes whose vertices are objects of their own.
bool importateur::prendrePolyligne(const AcDbEntity& entite) {
  const auto place = [](const auto& sommet) { return std::optional(sommet.position()); };
  if (const auto* ancienne = AcDb2dPolyline::cast(&entite); ancienne && voulue(kSourcePolylines2dAnciennes)) {
    prendreSommets<AcDb2dVertex>(kSourcePolylines2dAnciennes, *ancienne, [&](const AcDb2dVertex& sommet) {
      return sommet.vertexType() == AcDb::k2dSplineCtlVertex
                 ? std::nullopt
                 : std::optional(ancienne->vertexPosition(sommet));
    });
    return true;
  }
  if (const auto* mailles = AcDbPolyFaceMesh::cast(&entite); mailles && voulue(kSourcePolyfaces)) {
    prendreSommets<AcDbPolyFaceMeshVertex>(kSourcePolyfaces, *mailles, place);
    return true;
  }
  if (const auto* espace = AcDb3dPolyline::cast(&entite); espace && voulue(kSourcePolylines3d)) {
    prendreSommets<AcDb3dPolylineVertex>(kSourcePolylines3d, *espace, place);
    return true;
  }
  if (const auto* mailles = AcDbPolygonMesh::cast(&entite); mailles && voulue(kSourceMaillages)) {
    prendreSommets<AcDbPolygonMeshVertex>(kSourceMaillages, *mailles, place);
    return true;
  }
  return false;
}

/// A block of the system's own tags: the point keeps its block.
bool importateur::prendreBlocSysteme(const AcDbBlockReference& bloc) {
  AcString nom;
  AcString altitude;
  AcString texteCode;
  if (!lireAttribut(bloc, etiquettesPoints.numero, nom) ||
      !lireAttribut(bloc, etiquettesPoints.altitude, altitude))
    return false;
  const int codeDefaut = sourcesImport[rang(kSourceBlocs)].code;
  int code = codeDefaut;
  if (lireAttribut(bloc, etiquettesPoints.code, texteCode)) {
    // A code below 0 stays: only 0 and what lies above the range count as none.
    code = base::lireEntier(texteCode);
    if (code == 0 || code > kLargestCode) code = codeDefaut;
  } else {
    enregistrer(kSourceBlocs);
  }
  const AcGePoint3d place = bloc.position();
  ajouterBloc(kSourceBlocs, nom, {place.x, place.y, altitudeLue(altitude)}, code, bloc.objectId());
  return true;
}

int importateur::codeAttribut(const AcDbBlockReference& bloc) {
  const std::size_t i = rang(kSourceBlocsAttributs);
  const AcString& etiquette = m_parametres.etiquetteCode;
  AcString texte;
  if (etiquette.empty() || !lireAttribut(bloc, etiquette, texte)) {
    enregistrer(kSourceBlocsAttributs);
    return sourcesImport[i].code;
  }
  const int code = base::lireEntier(texte);
  if (code == 0) return sourcesImport[i].code;
  // Deliberate (import-code-drapeau): the source has one flag for all codes that it reads, so once a code is
  // met that has its record, further codes get none here.
  enregistrerCodeSource(m_enregistres[i], code, kLibelleCodeLu);
  return code;
}

/// A block of other tags: the point has no block of its own.
bool importateur::prendreBlocAttributs(const AcDbBlockReference& bloc) {
  AcString nom;
  AcString altitude;
  if (!lireAttribut(bloc, m_parametres.etiquetteNumero, nom) ||
      !lireAttribut(bloc, m_parametres.etiquetteAltitude, altitude))
    return false;
  const double z = altitudeLue(altitude);
  const int code = codeAttribut(bloc);
  if (z == 0.0) return true;
  const AcGePoint3d place = bloc.position();
  ajouterBloc(kSourceBlocsAttributs, nom.empty() ? AcString(kSansNom) : nom, {place.x, place.y, z}, code, {});
  return true;
}

bool importateur::prendreBloc(const AcDbEntity& entite) {
  const auto* bloc = AcDbBlockReference::cast(&entite);
  if (!bloc) return false;
  if (voulue(kSourceBlocs) && prendreBlocSysteme(*bloc)) return true;
  if (voulue(kSourceBlocsAttributs) && prendreBlocAttributs(*bloc)) return true;
  if (voulue(kSourceInsertions)) ajouter(kSourceInsertions, bloc->position());
  return true;
}

/// Entities that hold their points themselves.
bool importateur::prendreSimple(const AcDbEntity& entite) {
  if (const auto* point = AcDbPoint::cast(&entite); point && voulue(kSourcePoints)) {
    ajouter(kSourcePoints, point->position());
    return true;
  }
  if (const auto* face = AcDbFace::cast(&entite); face && voulue(kSourceFaces)) {
    AcGePoint3d coin;
    for (Adesk::UInt16 i = 0; i < 4; ++i)
      if (face->getVertexAt(i, coin) == Acad::eOk) ajouter(kSourceFaces, coin);
    return true;
  }
  if (const auto* ligne = AcDbLine::cast(&entite); ligne && voulue(kSourceLignes)) {
    ajouter(kSourceLignes, ligne->startPoint());
    ajouter(kSourceLignes, ligne->endPoint());
    return true;
  }
  const auto* polyligne = AcDbPolyline::cast(&entite);
  if (!polyligne || !voulue(kSourcePolylines)) return false;
  prendrePolyline(*polyligne);
  return true;
}

void importateur::prendrePolyline(const AcDbPolyline& polyligne) {
  // Deliberate (import-polyline-9999): the record is made under 9992, the points bear 9999.
  constexpr int kCodeDesPoints = 9999;
  AcGePoint3d sommet;
  for (unsigned int i = 0; i < polyligne.numVerts(); ++i)
    if (polyligne.getPointAt(i, sommet) == Acad::eOk) ajouter(kSourcePolylines, sommet, kCodeDesPoints);
}

bool importateur::prendreTexte(const AcDbEntity& entite) {
  if (!voulue(kSourceTextes)) return false;
  AcGePoint3d place;
  std::optional<double> z;
  if (const auto* paragraphe = AcDbMText::cast(&entite)) {
    AcDbExtents boite;
    z = altitudeDeTexte(paragraphe->text());
    // Deliberate (import-mtext-decalage): the offset moves one-line texts only.
    if (!z || paragraphe->getGeomExtents(boite) != Acad::eOk) return true;
    place = boite.minPoint();
  } else if (const auto* texte = AcDbText::cast(&entite)) {
    z = altitudeDeTexte(texte->textString());
    place = texte->position() + AcGeVector3d(m_parametres.decalage.x, m_parametres.decalage.y, 0.0);
  }
  if (z) ajouter(kSourceTextes, {place.x, place.y, *z});
  return true;
}

void importateur::prendre(const AcDbEntity& entite) {
  // The first kind that fits takes the entity.
  (void)(prendrePolyligne(entite) || prendreBloc(entite) || prendreSimple(entite) || prendreTexte(entite));
}

/// The classes of a mask; block references once.
std::vector<AcString> classesDe(int masque) {
  std::vector<AcString> classes;
  for (const sourceImport& source : sourcesImport) {
    if (!(masque & source.drapeau)) continue;
    const AcString classe = source.classe;
    if (std::find(classes.begin(), classes.end(), classe) == classes.end()) classes.push_back(classe);
    if (source.drapeau == kSourceTextes) classes.emplace_back(L"AcDbMText");
  }
  return classes;
}

}  // namespace

const std::array<sourceImport, kNombreSources> sourcesImport{{
    {kSourcePolylines3d, L"AcDb3dPolyline", 9999, L"Sommets importes a partir de polylines 3d",
     L"polylignes3d", L"polylignes 3D"},
    {kSourcePolylines2dAnciennes, L"AcDb2dPolyline", 9998, L"Sommets importes a partir de Polylines 2d",
     L"polylignes2d", L"anciennes polylignes 2D"},
    {kSourcePoints, L"AcDbPoint", 9997, L"Sommets importes a partir des points Autocad", L"points",
     L"points"},
    {kSourceMaillages, L"AcDbPolygonMesh", 9996, L"Sommets importes a partir de 3dMesh", L"maillages",
     L"maillages 3D"},
    {kSourcePolyfaces, L"AcDbPolyFaceMesh", 9995, L"Sommets importes a partir de PolyfaceMesh", L"polyfaces",
     L"maillages de facettes"},
    {kSourceFaces, L"AcDbFace", 9994, L"Sommets importes a partir des facettes ", L"facettes",
     L"facettes 3D"},
    {kSourceLignes, L"AcDbLine", 9993, L"Sommets importes a partir des lignes", L"lignes", L"lignes"},
    {kSourcePolylines, L"AcDbPolyline", 9992, L"Sommets importes a partir des polylines", L"polylignes",
     L"polylignes"},
    {kSourceBlocs, L"AcDbBlockReference", 9991, L"Points importes a partir des blocs", L"blocs",
     L"blocs de points"},
    {kSourceBlocsAttributs, L"AcDbBlockReference", 9989, L"Points importes a partir des blocs avec attributs",
     L"attributs", L"blocs avec attributs"},
    {kSourceInsertions, L"AcDbBlockReference", 9990, L"Sommets importes a partir des Blocs en 3D",
     L"insertions", L"insertions de blocs"},
    {kSourceTextes, L"AcDbText", 9988, L"Sommets importes a partir des Textes", L"textes", L"textes"},
}};

void enregistrerCodeSource(bool& dejaFait, int code, const wchar_t* libelle) {
  if (dejaFait) return;
  tableCodification& table = getTableCodification();
  if (table.chercherCode(code) >= 0) {
    dejaFait = true;
    return;
  }
  codifPoint ligne;
  ligne.code = code;
  ligne.libelle = libelle;
  table.codes.Add(ligne);
}

bool listeSelectionObjets(const std::vector<AcString>& classes, std::vector<AcDbObjectId>& entites) {
  acutPrintf(L"\nSelectionnez :");
  resbuf* filtre = acutBuildList(-4, L"<OR", RTNONE);
  resbuf* queue = filtre;
  for (const AcString& classe : classes) queue = queue->rbnext = acutBuildList(100, classe, RTNONE);
  queue->rbnext = acutBuildList(-4, L"OR>", RTNONE);
  return selectEntities(nullptr, filtre, entites) == RTNORM;
}

comptesImport importerEntites(listePointsDuDessin& table, const std::vector<AcDbObjectId>& entites,
                              const parametresImport& parametres) {
  importateur import(table, parametres);
  base::Suivi suivi(static_cast<long long>(entites.size()) - 1);
  for (const AcDbObjectId& id : entites) {
    if (suivi.arrete()) break;
    const AcDbObjectPointer<AcDbEntity> entite(id);
    if (entite.openStatus() == Acad::eOk) import.prendre(*entite);
    suivi.avancer();
  }
  table.delDups();
  table.renumeroter(false);
  return import.comptes();
}

comptesImport importerToutLeDessin(listePointsDuDessin& table, const parametresImport& parametres) {
  std::vector<AcDbObjectId> entites;
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin || !(parametres.masque & kToutesSources)) return {};
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin->modelSpaceId());
    if (espace.openStatus() == Acad::eOk) entites = espace->entities();
  }
  return importerEntites(table, entites, parametres);
}

void listePointsDuDessin::importFromDrawing(int masque, CString& etiquetteNumero, CString& etiquetteAltitude,
                                            CString& etiquetteCode, AcGeVector2d& decalage) {
  const std::vector<AcString> classes = classesDe(masque);
  std::vector<AcDbObjectId> entites;
  if (classes.empty() || !listeSelectionObjets(classes, entites)) return;
  importerEntites(*this, entites, {masque, etiquetteNumero, etiquetteAltitude, etiquetteCode, decalage});
}

}  // namespace veltora
