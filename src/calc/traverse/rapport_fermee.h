#pragma once

#include "calc/traverse/etapes_fermee.h"
#include "calc/traverse/rapport_altitudes.h"
#include "report/plume_rapport.h"

#include <string>
#include <vector>

namespace veltora {

/// The report of a closed traverse, one call a section, in this order.
class rapportFermee {
public:
  /// `lignes` are those of the computation and outlive the report.
  rapportFermee(htmlDocument& document, const lignesPolygonale& lignes);

  void donnees(const std::wstring& nomDepart, double Xdep, double Ydep, double Zdep, double Vo);
  void angles(const etapesFermee& e);
  void distances(const etapesFermee& e, const base::CArray<double>& X, const base::CArray<double>& Y);
  void sansAltitudes() { titresAltitudes(m_plume, 0); }
  void altitudes(int modeNivellement, const corrections& parts, const base::CArray<double>& X,
                 const base::CArray<double>& Y, const base::CArray<double>& Z);
  void coordonnees(const base::CArray<double>& X, const base::CArray<double>& Y,
                   const base::CArray<double>& Z);

private:
  /// Name of the row `recul` rows before row i.
  [[nodiscard]] const std::string& nom(std::size_t i, std::size_t recul) const;
  /// Reference, station and sight of row i.
  void troisNoms(std::size_t i);

  plumeRapport m_plume;
  const lignesPolygonale& m_lignes;
  std::vector<std::string> m_noms;
};

}  // namespace veltora
