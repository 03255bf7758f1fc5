#include "jobs/terrain.h"

#include "arx/ed/acutads.h"
#include "arx/rx/rxdlinkr.h"
#include "base/text.h"
#include "core/services_terrain.h"

namespace veltora {
namespace {

bool lirePoints(const std::filesystem::path& liste, DemandeTerrain& demande, ResultatTerrain& resultat) {
  listeLue lue;
  resultatPoints lecture;
  const bool bonne = lireListePoints({liste, {}}, lue, lecture);
  resultat.remarques.ajouter(lecture.remarques);
  resultat.erreur = lecture.erreur;
  for (const ligneListe& ligne : lue.lignes)
    demande.points.push_back(
        {{ligne.point.x, ligne.point.y, ligne.point.z}, ligne.point.nom, ligne.point.code});
  return bonne;
}

}  // namespace

bool faireTerrain(const std::filesystem::path& liste, DemandeTerrain demande, ResultatTerrain& resultat) {
  resultat = {};
  const auto service =
      reinterpret_cast<ServiceTravailTerrain>(acrxDynamicLinker->exported(kModuleTerrain, kTravailTerrain));
  if (!service) {
    resultat.erreur = kSansModuleTerrain;
    return false;
  }
  if (!liste.empty() && !lirePoints(liste, demande, resultat)) return false;
  return service(&demande, &resultat) != 0;
}

void commandeTerrain(const wchar_t* nom) {
  const auto service =
      reinterpret_cast<ServiceCommandeTerrain>(acrxDynamicLinker->exported(kModuleTerrain, kCommandeTerrain));
  if (!service)
    acutPrintf(L"\n%s non disponible : %s.", nom, kSansModuleTerrain);
  else
    service(nom);
}

}  // namespace veltora
