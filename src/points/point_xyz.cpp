#include "points/point_xyz.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "base/format.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/block_attributes.h"
#include "core/compteur_identifiants.h"
#include "core/drawing_space.h"
#include "core/xdata_names.h"
#include "points/attribs_points.h"
#include "points/bloc_fichier.h"
#include "points/projets_topo.h"

#include <array>
#include <cmath>
#include <memory>

namespace veltora {
namespace {

constexpr int kParCalque = 256;

double s_facteur = 1.0;

using calquesCode = std::array<AcDbObjectId, nbLayers>;

/// The layers of a code in this drawing, made when asked; null for one that is missing. The ids that the
/// record keeps may be those of another drawing.
calquesCode trouverCalques(AcDbDatabase& db, tableCodification& codes, codifPoint& codif, bool creer) {
  calquesCode ids;
  AcDbObjectPointer<AcDbLayerTable> calques;
  if (creer && calques.open(db.layerTableId(), AcDb::kForWrite) == Acad::eOk)
    codes.creerLayers(codif, calques.object());
  else
    calques.open(db.layerTableId());
  if (calques.openStatus() != Acad::eOk) return ids;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    const std::wstring nom = base::trim(codif.layers[i], L" \t,;.");
    calques->getIdAt(nom.empty() ? L"0" : nom.c_str(), ids[i]);
  }
  return ids;
}

void enregistrerApplication(AcDbDatabase& db) {
  const AcDbObjectPointer<AcDbRegAppTable> lecture(db.regAppTableId());
  if (lecture.openStatus() != Acad::eOk || lecture->has(kXDataVeltora)) return;
  AcDbObjectId id;
  auto fiche = std::make_unique<AcDbRegAppTableRecord>();
  fiche->setName(kXDataVeltora);
  lecture->upgradeOpen();
  if (lecture->add(id, fiche.get()) == Acad::eOk) fiche.release()->close();
  lecture->downgradeOpen();
}

/// Size of the block: a size that is no positive number counts as 1.
double tailleDessin(const codifPoint& codif) {
  const double taille = s_facteur * codif.tailleBlock;
  return std::isfinite(taille) && taille > 0.0 ? taille : 1.0;
}

struct attributVoulu {
  const AcString& etiquette;
  AcString texte;
  double dy;  ///< above the point, in heights
  IndexLayer calque;
  bool visible;
};

void ajouterAttribut(AcDbBlockReference& bloc, const attributVoulu& voulu, double hauteur,
                     AcDbObjectId calque) {
  AcGePoint3d place = bloc.position();
  place.x += 0.75 * hauteur;
  place.y += voulu.dy * hauteur;
  auto attribut = std::make_unique<AcDbAttribute>(place, voulu.texte.c_str(), voulu.etiquette.c_str());
  attribut->setHeight(hauteur);
  attribut->setColorIndex(kParCalque);
  if (!calque.isNull()) attribut->setLayer(calque);
  montrerAttribut(*attribut, voulu.visible);
  if (bloc.appendAttribute(attribut.get()) == Acad::eOk) attribut.release()->close();
}

void marquerBloc(AcDbBlockReference& bloc, AcDbDatabase& db) {
  enregistrerApplication(db);
  static const DxfTagText marque = [] {
    DxfTagText groupes;
    groupes.append(1001, base::toUtf8(kXDataVeltora));
    groupes.appendInteger(1070, 1);
    return groupes;
  }();
  bloc.setXDataTags(marque);  // the block is new and has no data of others
}

}  // namespace

double facteurTailleBloc() { return s_facteur; }

void setFacteurTailleBloc(double facteur) {
  constexpr double kFacteurNul = 1e-6;
  s_facteur = std::abs(facteur) < kFacteurNul ? 1.0 : std::abs(facteur);
}

pointXYZ::pointXYZ() : numeroInterne(compteurIdentifiants::commun().suivant()) {}

int pointXYZ::ecrireBlocPoint(AcDbDatabase* db, tableCodification& codes, AcDbObjectId& idResultat,
                              int avecAltitude, int creerCalques) const {
  if (!db) return 0;
  codifPoint& codif = codes.getOuCreerCode(code);
  const calquesCode calques = trouverCalques(*db, codes, codif, creerCalques != 0);
  const AcDbObjectId definition = blocDuFichier(*db, codif.chemin);
  if (definition.isNull()) return 0;
  const double h = tailleDessin(codif);
  auto nouveau = std::make_unique<AcDbBlockReference>(AcGePoint3d(x, y, 0.0), definition);
  nouveau->setScaleFactors(AcGeScale3d(h));
  if (!calques[layerBlock].isNull()) nouveau->setLayer(calques[layerBlock]);
  AcDbBlockReference* bloc = DrawingSpace(db).addOpen(std::move(nouveau));
  if (!bloc) return 0;
  idResultat = bloc->objectId();
  const attributVoulu attributs[] = {
      {etiquettesPoints.code, base::formater(L"%d", code), 2.0, layerCode, false},
      {etiquettesPoints.numero, nom, 0.5, layerNumero, true},
      {etiquettesPoints.altitude, avecAltitude ? texteAltitude(z, codif.precisionAltitudes) : AcString(),
       -1.0, layerAltitudes, true},
      {etiquettesPoints.observation, obs, -2.5, layerObs, true},
  };
  for (const attributVoulu& voulu : attributs)
    ajouterAttribut(*bloc, voulu, h, calques[static_cast<std::size_t>(voulu.calque)]);
  marquerBloc(*bloc, *db);
  bloc->close();
  return 0;
}

int pointXYZ::ajouterPointDessine() const {
  AcDbObjectId id;
  ecrireBlocPoint(acdbHostApplicationServices()->workingDatabase(), getTableCodification(), id, z != Z_ABSENT,
                  true);
  if (!tablesPoints) return 0;
  pointDuDessin point;
  point.setParams(nom.c_str(), AcGePoint3d(x, y, z), code);
  point.setId(id);
  tablesPoints->currTable()->Ajouter(point);
  return 1;
}

}  // namespace veltora
