#include "terrain/services.h"

#include "arx/db/dbmain.h"
#include "arx/rx/rxdlinkr.h"
#include "terrain/commandes_terrain.h"
#include "terrain/terrains_ouverts.h"
#include "terrain/travail.h"

namespace terrain = veltora::terrain;

extern "C" VELTORA_API AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId);

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg:
      acrxDynamicLinker->unlockApplication(appId);
      acrxDynamicLinker->registerAppMDIAware(appId);
      terrain::suivreLesDessins();
      break;
    case AcRx::kUnloadAppMsg:
      terrain::oublierTout();
      break;
    default:
      break;
  }
  return AcRx::kRetOK;
}

void currDwgData(veltora::TerrainsDuDessin** donnees) {
  if (!donnees) return;
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  veltora::TerrainsDuDessin* const liste = dessin ? &terrain::terrainsDe(*dessin) : nullptr;
  *donnees = liste && !liste->terrains.empty() ? liste : nullptr;
}

int calcZPoint(veltora::Terrain* terrain, AcGePoint3d* point) {
  return terrain && point && terrain->surface().altitude(*point) ? 1 : 0;
}

int tinExtractPath(veltora::Terrain* terrain, const AcGePoint3d* from, const AcGePoint3d* to,
                   veltora::CheminsTerrain* out) {
  if (!terrain || !from || !to || !out) return 0;
  *out = terrain->surface().chemin(*from, *to);
  return out->empty() ? 0 : 1;
}

int travailTerrain(const veltora::DemandeTerrain* demande, veltora::ResultatTerrain* resultat) {
  if (!demande || !resultat) return 0;
  AcDbDatabase* const dessin = acdbHostApplicationServices()->workingDatabase();
  if (dessin) return terrain::travailler(*dessin, *demande, *resultat) ? 1 : 0;
  resultat->erreur = L"aucun dessin n'est ouvert";
  return 0;
}

int commandeTerrain(const wchar_t* nom) { return nom && terrain::executerCommande(nom) ? 1 : 0; }
