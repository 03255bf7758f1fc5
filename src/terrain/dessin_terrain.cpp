#include "terrain/dessin_terrain.h"

#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbtext.h"
#include "base/format.h"
#include "base/suivi.h"
#include "core/drawing_groups.h"
#include "core/drawing_layers.h"
#include "core/drawing_records.h"
#include "core/drawing_table.h"

#include <algorithm>
#include <cmath>

namespace veltora::terrain {
namespace {

// Colours of new layers.
constexpr int kBrun = 34;
constexpr int kRouge = 1;
constexpr int kVert = 93;
constexpr int kNoir = 7;

constexpr double kInterligne = 1.8;  ///< of the table's rows, in heights of texts, likewise the next
constexpr double kColonne = 8.0;
constexpr double kEcart = 4.0;  ///< from the profile to its table

/// A layer and the colour of a new one.
struct Calque {
  const wchar_t* nom;
  int couleur;
};

/// Layers that take entities, made where there are none: all of them, or with `erreur` set none is made.
bool calques(AcDbDatabase& dessin, const std::vector<Calque>& voulus, std::vector<AcDbObjectId>& ids,
             std::wstring& erreur) {
  for (const Calque& voulu : voulus) {
    const AcDbObjectPointer<AcDbLayerTableRecord> record(recordNamed(dessin.layerTableId(), voulu.nom));
    if (record.openStatus() != Acad::eOk || !record->isLocked()) continue;
    erreur = base::formater(L"le calque « %s » est verrouillé : rien n'est dessiné", voulu.nom);
    return false;
  }
  const AcDbObjectPointer<AcDbLayerTable> table(dessin.layerTableId(), AcDb::kForWrite);
  for (const Calque& voulu : voulus)
    if (table.openStatus() == Acad::eOk) ids.push_back(layerOrNew(*table, voulu.nom, voulu.couleur));
  if (ids.size() == voulus.size()) return true;
  erreur = L"le dessin ne reçoit pas de calque";
  return false;
}

class Crayon {
public:
  Crayon(AcDbDatabase& dessin, AcDbObjectId calque) : m_dessin(dessin), m_espace(&dessin), m_calque(calque) {}
  [[nodiscard]] bool pret(std::wstring& erreur) const {
    if (m_espace.ready()) return true;
    erreur = L"le dessin n'est pas prêt à recevoir des entités";
    return false;
  }
  void poser(std::unique_ptr<AcDbEntity> entite, AcDbObjectId calque) {
    entite->setLayer(calque);
    const AcDbObjectId id = m_espace.add(std::move(entite));
    if (!id.isNull()) m_poses.push_back(id);
  }
  void poser(std::unique_ptr<AcDbEntity> entite) { poser(std::move(entite), m_calque); }
  void trait(const AcGePoint3d& a, const AcGePoint3d& b) { poser(std::make_unique<AcDbLine>(a, b)); }
  void texte(const AcGePoint3d& lieu, const std::wstring& texte, double hauteur) {
    poser(std::make_unique<AcDbText>(lieu, texte.c_str(), m_dessin.textstyle(), hauteur));
  }
  /// Leaves the table out of the group: it is one thing by itself.
  bool table(std::unique_ptr<AcDbTable> table) {
    table->setLayer(m_calque);
    return !addTable(m_espace, std::move(table)).isNull();
  }
  [[nodiscard]] const std::vector<AcDbObjectId>& poses() const { return m_poses; }

private:
  AcDbDatabase& m_dessin;
  DrawingSpace m_espace;
  AcDbObjectId m_calque;
  std::vector<AcDbObjectId> m_poses;
};

int polylignesSur(AcDbDatabase& dessin, const std::vector<AcDbObjectId>& calquesVoulus) {
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin.modelSpaceId());
  int nombre = 0;
  for (const AcDbObjectId& id : espace->entities()) {
    const AcDbObjectPointer<AcDbPolyline> ligne(id);
    if (ligne.openStatus() != Acad::eOk) continue;
    nombre += std::count(calquesVoulus.begin(), calquesVoulus.end(), ligne->layerId()) > 0 ? 1 : 0;
  }
  return nombre;
}

std::unique_ptr<AcDbPolyline> polyligne(const Courbe& courbe) {
  auto ligne = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(courbe.sommets.size()));
  for (unsigned int i = 0; i < courbe.sommets.size(); ++i) ligne->addVertexAt(i, courbe.sommets[i]);
  ligne->setClosed(courbe.fermee);
  ligne->setElevation(courbe.altitude);
  return ligne;
}

std::unique_ptr<AcDbTable> tableDuProfil(AcDbDatabase& dessin, const Profil& profil,
                                         const AspectProfil& aspect) {
  const double h = aspect.hauteurTexte;
  std::vector<TableColumn> colonnes;
  for (const wchar_t* titre : {L"Distance", L"X", L"Y", L"Z"}) colonnes.push_back({titre, h * kColonne});
  std::vector<const SommetProfil*> sommets;
  for (const std::vector<SommetProfil>& troncon : profil)
    for (const SommetProfil& s : troncon) sommets.push_back(&s);
  std::unique_ptr<AcDbTable> table =
      textTable(dessin, colonnes, sommets.size(), h, h * kInterligne, [&](std::size_t ligne, std::size_t c) {
        const SommetProfil& s = *sommets[ligne];
        const double valeurs[] = {s.distance, s.point.x, s.point.y, s.point.z};
        return base::formater(L"%.3f", valeurs[c]);
      });
  if (table) table->setPosition(aspect.coin - AcGeVector3d(0.0, kEcart * h, 0.0));
  return table;
}

}  // namespace

bool dessinerCourbes(AcDbDatabase& dessin, const Triangulation& surface, const AspectCourbes& aspect,
                     BilanCourbes& bilan, std::wstring& erreur) {
  std::vector<AcDbObjectId> ids;
  if (!calques(dessin, {{kCalqueCourbes, kBrun}, {kCalqueMaitresses, kRouge}}, ids, erreur)) return false;
  bilan.anciennes = polylignesSur(dessin, ids);
  Crayon crayon(dessin, ids[0]);
  if (!crayon.pret(erreur)) return false;
  const base::Suivi suivi;
  tracerCourbes(surface, aspect.equidistance, [&](const Courbe& courbe) {
    const bool maitre = courbe.rang % aspect.maitresses == 0;
    crayon.poser(polyligne(courbe), ids[maitre ? 1 : 0]);
    ++bilan.courbes;
    if (maitre) ++bilan.maitresses;
    bilan.interrompu = suivi.arrete();
    return !bilan.interrompu;
  });
  return true;
}

int dessinerFaces(AcDbDatabase& dessin, const Triangulation& surface, std::wstring& erreur) {
  std::vector<AcDbObjectId> ids;
  if (!calques(dessin, {{kCalqueFaces, kVert}}, ids, erreur)) return -1;
  Crayon crayon(dessin, ids[0]);
  if (!crayon.pret(erreur)) return -1;
  const base::Suivi suivi;
  int nombre = 0;
  for (const Face& face : surface.faces()) {
    if (!face.sol) continue;
    if (suivi.arrete()) break;
    AcGePoint3d c[3];
    for (std::size_t i = 0; i < 3; ++i) c[i] = surface.sommets()[static_cast<std::size_t>(face.sommets[i])];
    crayon.poser(std::make_unique<AcDbFace>(c[0], c[1], c[2], c[2]));
    ++nombre;
  }
  return nombre;
}

double altitudeDeReference(const Profil& profil) {
  double basse = 1e300;
  for (const std::vector<SommetProfil>& troncon : profil)
    for (const SommetProfil& s : troncon) basse = std::min(basse, s.point.z);
  return std::floor(basse / 10.0) * 10.0;
}

std::size_t nombreDePlaces(const Profil& profil) {
  std::size_t nombre = 0;
  for (const std::vector<SommetProfil>& troncon : profil) nombre += troncon.size();
  return nombre;
}

bool dessinerProfil(AcDbDatabase& dessin, const Profil& profil, const AspectProfil& aspect,
                    std::wstring& erreur) {
  std::vector<AcDbObjectId> ids;
  if (!calques(dessin, {{kCalqueProfil, kNoir}}, ids, erreur)) return false;
  Crayon crayon(dessin, ids[0]);
  if (!crayon.pret(erreur)) return false;
  std::unique_ptr<AcDbTable> table = tableDuProfil(dessin, profil, aspect);
  if (!table || !crayon.table(std::move(table))) {
    erreur = L"le profil a trop de points pour un tableau";
    return false;
  }
  const double plan = altitudeDeReference(profil);
  const auto lieu = [&](const SommetProfil& s, double z) {
    return aspect.coin + AcGeVector3d(s.distance, (z - plan) * aspect.exageration, 0.0);
  };
  for (const std::vector<SommetProfil>& troncon : profil) {
    auto sol = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(troncon.size()));
    for (unsigned int i = 0; i < troncon.size(); ++i) {
      const AcGePoint3d p = lieu(troncon[i], troncon[i].point.z);
      sol->addVertexAt(i, {p.x, p.y});
    }
    sol->setElevation(aspect.coin.z);
    crayon.poser(std::move(sol));
    crayon.trait(lieu(troncon.front(), plan), lieu(troncon.back(), plan));
    for (std::size_t i = 0; i < troncon.size(); ++i)
      if (troncon[i].surAxe || i == 0 || i + 1 == troncon.size())
        crayon.trait(lieu(troncon[i], plan), lieu(troncon[i], troncon[i].point.z));
  }
  crayon.texte(aspect.coin - AcGeVector3d(0.0, 1.5 * aspect.hauteurTexte, 0.0),
               base::formater(L"Plan de comparaison : %.2f", plan), aspect.hauteurTexte);
  groupEntities(crayon.poses());
  return true;
}

}  // namespace veltora::terrain
