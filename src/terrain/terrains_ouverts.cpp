#include "terrain/terrains_ouverts.h"

#include "arx/ap/acdocman.h"
#include "arx/db/dbmain.h"
#include "base/text.h"
#include "terrain/stockage.h"

#include <algorithm>
#include <map>

namespace veltora::terrain {
namespace {

struct Ouvert {
  AcDbObjectId id;
  std::unique_ptr<Terrain> terrain;  ///< null for a record that cannot be read
};

struct Dessin {
  std::vector<Ouvert> ouverts;
  TerrainsDuDessin liste;
};

std::map<const AcDbDatabase*, Dessin>& dessins() {
  static std::map<const AcDbDatabase*, Dessin> tous;
  return tous;
}

class Veilleur : public AcApDocManagerReactor {
public:
  void documentToBeDestroyed(AcApDocument* document) override { dessins().erase(document->database()); }
};

Veilleur& veilleur() {
  static Veilleur unique;
  return unique;
}

std::unique_ptr<Terrain> lire(AcDbObjectId id) {
  const AcDbObjectPointer<AcDbXrecord> record(id);
  Modele modele;
  if (record.openStatus() != Acad::eOk || !lireModele(record->tags(), modele)) return nullptr;
  return std::make_unique<Terrain>(std::move(modele));
}

/// A record never changes, so that what was read of it holds as long as the drawing has it.
Dessin& misAJour(AcDbDatabase& base) {
  Dessin& dessin = dessins()[&base];
  std::vector<Ouvert> anciens = std::move(dessin.ouverts);
  dessin.ouverts.clear();
  dessin.liste = {};
  const AcDbObjectId courant = enregistrementCourant(base);
  for (const AcDbObjectId& id : enregistrements(base)) {
    const auto connu =
        std::find_if(anciens.begin(), anciens.end(), [&id](const Ouvert& o) { return o.id == id; });
    Ouvert ouvert{id, connu == anciens.end() ? lire(id) : std::move(connu->terrain)};
    if (ouvert.terrain && id == courant)
      dessin.liste.courant = static_cast<int>(dessin.liste.terrains.size());
    if (ouvert.terrain) dessin.liste.terrains.push_back(ouvert.terrain.get());
    dessin.ouverts.push_back(std::move(ouvert));
  }
  return dessin;
}

}  // namespace

TerrainsDuDessin& terrainsDe(AcDbDatabase& dessin) { return misAJour(dessin).liste; }

Terrain* terrainCourant(AcDbDatabase& dessin) {
  const TerrainsDuDessin& liste = terrainsDe(dessin);
  return liste.terrains.empty() ? nullptr : liste.terrains[static_cast<std::size_t>(liste.courant)];
}

AcDbObjectId enregistrementDe(AcDbDatabase& dessin, const Terrain& terrain) {
  for (const Ouvert& ouvert : misAJour(dessin).ouverts)
    if (ouvert.terrain.get() == &terrain) return ouvert.id;
  return {};
}

int illisibles(AcDbDatabase& dessin) {
  const Dessin& lu = misAJour(dessin);
  return static_cast<int>(lu.ouverts.size() - lu.liste.terrains.size());
}

Terrain* ajouter(AcDbDatabase& dessin, std::unique_ptr<Terrain> terrain, int& remplaces) {
  remplaces = 0;
  std::vector<AcDbObjectId> anciens;
  for (const Ouvert& ouvert : misAJour(dessin).ouverts)
    if (ouvert.terrain && base::compareNoCase(ouvert.terrain->modele().nom, terrain->modele().nom) == 0)
      anciens.push_back(ouvert.id);
  const AcDbObjectId id = enregistrer(dessin, terrain->modele());
  if (id.isNull()) return nullptr;
  for (const AcDbObjectId& ancien : anciens)
    if (supprimer(dessin, ancien)) ++remplaces;
  Terrain* const pose = terrain.get();
  dessins()[&dessin].ouverts.push_back({id, std::move(terrain)});
  misAJour(dessin);
  return pose;
}

void suivreLesDessins() { acDocManager->addReactor(&veilleur()); }

void oublierTout() {
  acDocManager->removeReactor(&veilleur());
  dessins().clear();
}

}  // namespace veltora::terrain
