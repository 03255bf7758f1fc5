#include "jobs/noms_coupes.h"

#include "base/format.h"
#include "base/text.h"
#include "core/point_name.h"

#include <set>

namespace veltora {

void remarquerNoms(const std::vector<stationCalculee>& stations, const wchar_t* genre, const wchar_t* suite,
                   base::Remarques& remarques) {
  std::set<std::string> noms;
  for (const stationCalculee& station : stations) {
    const std::string court = pointName(station.nom);
    if (court != base::narrow(station.nom)) {
      remarques.ajouter(base::formater(L"le nom « %s » est coupé à « %s »", station.nom, base::widen(court)));
    }
    if (!noms.insert(base::toUpperAnsi(base::trim(court))).second) {
      remarques.ajouter(base::formater(L"%s portent le nom « %s » : %s", genre, base::widen(court), suite));
    }
  }
}

}  // namespace veltora
