#include "jobs/noms_coupes.h"

#include "base/format.h"
#include "base/text.h"

#include <set>

namespace veltora {
namespace {

/// Longest name of a point, in bytes of the code page.
constexpr std::size_t kLongueurNomPoint = 9;

}  // namespace

void remarquerNoms(const std::vector<stationCalculee>& stations, const wchar_t* genre, const wchar_t* suite,
                   base::Remarques& remarques) {
  std::set<std::string> noms;
  for (const stationCalculee& station : stations) {
    const std::string octets = base::narrow(station.nom);
    const std::string court = octets.substr(0, kLongueurNomPoint);
    if (court != octets) {
      remarques.ajouter(base::formater(L"le nom « %s » est coupé à « %s »", station.nom, base::widen(court)));
    }
    if (!noms.insert(base::toUpperAnsi(base::trim(court))).second) {
      remarques.ajouter(base::formater(L"%s portent le nom « %s » : %s", genre, base::widen(court), suite));
    }
  }
}

}  // namespace veltora
