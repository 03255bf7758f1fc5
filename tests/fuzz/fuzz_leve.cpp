// Computes any bytes as a survey against fixed known points: rules or book in front of a zero byte.
#include "fuzz/fuzz.h"

#include "calc/leve/calcul_leve.h"
#include "calc/leve/fichiers_leve.h"
#include "field/leve_gsi.h"

#include <cmath>

using namespace veltora;

void fuzz(std::string_view bytes) {
  const std::vector<pointConnuLeve> known = {
      {L"1", 0.0, 0.0, 0.0}, {L"2", 100.0, 0.0, {}}, {L"3", 0.0, 100.0, 5.0}};
  reglesCodesGSI rules = reglesUsuelles();
  if (const std::size_t zero = bytes.find('\0'); zero != std::string_view::npos) {
    base::Remarques remarks;
    rules = lireReglesCodes(bytes.substr(0, zero), remarks);
    bytes.remove_prefix(zero + 1);
  }
  const lectureLeve read = lireLeveGSI(lireCarnet(bytes), rules, {{2, L"2", 1.5}});
  optionsLeve options;
  options.refraction = 0.13;
  const resultatCalculLeve result = calculerLeve(read.leve, known, options);
  require(result.stations.size() == read.leve.stations.size());
  for (const stationDuLeve& station : result.stations)
    require(!station.refus.empty() || (std::isfinite(station.place.x) && std::isfinite(station.place.g0)));
  for (const pointDuLeve& point : result.points) require(std::isfinite(point.x) && !point.stations.empty());
  require(!reseauDuLeve(result, known).empty());
  polygonalesDuLeve(result, known);
}
