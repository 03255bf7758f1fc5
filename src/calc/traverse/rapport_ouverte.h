#pragma once

#include "calc/traverse/etapes_ouverte.h"
#include "calc/traverse/rapport_altitudes.h"
#include "report/plume_rapport.h"

#include <string>

namespace veltora {

struct uniteAngle;

/// The report of an open traverse, one call a section, in this order.
class rapportOuverte {
public:
  /// All that is passed by reference outlives the report.
  rapportOuverte(htmlDocument& document, const lignesPolygonale& lignes, const stationConnue& depart,
                 const stationConnue& arrivee, const uniteAngle& unite)
      : m_plume(document), m_lignes(lignes), m_depart(depart), m_arrivee(arrivee), m_unite(unite) {}

  void donnees(double A);
  void angles(const etapesOuverte& e, double A);
  void distances(const etapesOuverte& e, const base::CArray<double>& X, const base::CArray<double>& Y);
  void sansAltitudes() { titresAltitudes(m_plume, 0); }
  void altitudes(int modeNivellement, const corrections& parts, const base::CArray<double>& X,
                 const base::CArray<double>& Y, const base::CArray<double>& Z);
  void resultats(const base::CArray<double>& X, const base::CArray<double>& Y, const base::CArray<double>& Z);

private:
  /// Name of station i: the departure, then the rows'.
  [[nodiscard]] std::wstring station(std::size_t i) const;
  void stationConnueEnLigne(const wchar_t* libelle, const stationConnue& connue);
  void totauxDistances(const etapesOuverte& e);
  void totauxAltitudes(int modeNivellement, const corrections& parts);
  void ligneResultat(const std::wstring& nom, double x, double y, double z);

  plumeRapport m_plume;
  const lignesPolygonale& m_lignes;
  const stationConnue& m_depart;
  const stationConnue& m_arrivee;
  const uniteAngle& m_unite;
};

}  // namespace veltora
