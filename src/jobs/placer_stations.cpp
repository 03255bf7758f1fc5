#include "jobs/placer_stations.h"

#include "base/format.h"
#include "base/remarque.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "points/projets_topo.h"

#include <cmath>

namespace veltora {
namespace {

const std::wstring kPasDesNombres = L"Rien n'est placé, ces coordonnées ne sont pas des nombres : ";

}  // namespace

void preparerCodeStations(int code, bool modifier) {
  tableCodification& table = getTableCodification();
  int rang = table.chercherCode(code);
  if (rang < 0) {
    codifPoint nouveau;
    nouveau.code = code;
    table.codes.Add(nouveau);
    rang = table.chercherCode(code);
  }
  if (modifier) table.modifierLigne(rang);
  table.creerLayers(table.codes.GetAt(rang));
}

std::wstring refusDePlacer(const std::vector<stationCalculee>& stations, bool altitudes) {
  std::vector<std::wstring> noms;
  for (const stationCalculee& s : stations) {
    if (!std::isfinite(s.x) || !std::isfinite(s.y) || (altitudes && !std::isfinite(s.z)))
      noms.push_back(s.nom);
  }
  return noms.empty() ? L"" : kPasDesNombres + base::enumerer(noms);
}

int placerStations(const std::vector<stationCalculee>& stations, int code, bool altitudes) {
  if (!tablesPoints || !refusDePlacer(stations, altitudes).empty()) return 0;
  int sansBloc = 0;
  listePointsDuDessin* table = tablesPoints->currTable();
  for (const stationCalculee& station : stations) {
    pointDuDessin point;
    point.setParams(station.nom.c_str(), AcGePoint3d(station.x, station.y, altitudes ? station.z : Z_ABSENT),
                    code);
    table->supprimerPoint(base::widen(point.getNomPoint()).c_str());
    point.creer(true, nullptr);
    if (point.id.isNull()) ++sansBloc;
    table->Ajouter(point);
  }
  return sansBloc;
}

std::wstring texteSansBloc(int nombre) {
  return nombre == 0
             ? std::wstring()
             : base::formater(L"points sans bloc dans le dessin (fichier de bloc introuvable) : %d", nombre);
}

}  // namespace veltora
