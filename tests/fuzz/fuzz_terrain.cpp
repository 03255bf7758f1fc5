// Records of terrains: what is read as one has faces, answers everywhere, and is written and read again the
// same.
#include "fuzz/fuzz.h"

#include "terrain/stockage.h"

using namespace veltora;
using namespace veltora::terrain;

void fuzz(std::string_view bytes) {
  DxfTagText groups;
  groups.assign(std::string(bytes.substr(0, 8192)));
  Modele read;
  if (!lireModele(groups, read)) return;
  Modele again;
  require(lireModele(ecrireModele(read), again));
  require(again.sommets == read.sommets && again.lignes == read.lignes && again.facettes == read.facettes);
  const Terrain terrain(read);
  const Triangulation& surface = terrain.surface();
  require(!surface.faces().empty());
  AcGePoint3d first = read.sommets.front();
  surface.altitude(first);
  for (const auto& path : surface.chemin(read.sommets.front(), read.sommets.back())) require(path.size() > 1);
}
