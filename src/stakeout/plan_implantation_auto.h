#pragma once

#include "arx/ge/gepoint.h"
#include "base/uncopyable.h"
#include "points/numeroteur.h"
#include "stakeout/un_point.h"

#include <string>
#include <vector>

namespace veltora {

/// Which points are set out from which stations: each from the nearest one. Stations are points of the
/// current table, told by their indexes there. Distances in the plane, drawing units.
class VELTORA_API planImplantationAuto : private Uncopyable {
public:
  /// One of the nearest stations of a point.
  struct entree {
    int point = -1;
    int station = -1;  ///< index into the current table, likewise below
    double distance = 0.0;
  };
  /// A row of `tableStations` is no longer than this.
  static constexpr int kStationsMax = 25;
  /// How a reference is chosen: the nearest or the farthest, of the stations or of all points of the code.
  enum ModeReference { kProche = 1, kProcheDeTous = 2, kLointaine = 3, kLointaineDeTous = 4 };

  planImplantationAuto();

  /// Plans anew: the stations are the current table's points with the code, in its order; each point gets a
  /// row of the nearest ones, by distance, then by index. References are chosen among the stations, the
  /// nearest between 1 and 1000.
  /// @param noms  of the points; those missing at the end come from the numbering
  void preparer(const std::vector<AcGePoint2d>& points, int code, const std::vector<AcString>& noms);
  /// Chooses the references anew.
  void choisirReferences(int mode, double dmin, double dmax);
  /// Of the candidates between both distances the nearest or the farthest; else the nearest of the others
  /// that is not at the station, or the farthest of the others. @return -1 when there is no candidate
  [[nodiscard]] int referencePour(int station, int mode, double dmin, double dmax) const;
  /// Moves in each row a station to the front so that few stations serve all points: again and again the
  /// station that serves most of those left, the earlier of two. A point without a station in its row between
  /// both distances keeps the nearest.
  void minimiserStations(double dmin, double dmax);

  [[nodiscard]] int nbPoints() const { return static_cast<int>(m_points.size()); }
  [[nodiscard]] const AcGePoint2d& point(int rang) const { return m_points[static_cast<std::size_t>(rang)]; }
  [[nodiscard]] const AcString& nom(int rang) const { return m_noms[static_cast<std::size_t>(rang)]; }
  /// Length of the rows: as many as there are stations, up to `kStationsMax`.
  [[nodiscard]] int nbColonnes() const { return m_colonnes; }
  [[nodiscard]] const entree& tableStations(int rang, int colonne) const;
  [[nodiscard]] const std::vector<int>& stations() const { return m_stations; }
  /// Beside `stations`; -1 for none.
  [[nodiscard]] const std::vector<int>& references() const { return m_references; }
  /// x, y of each reference; 0 for none.
  [[nodiscard]] const std::vector<double>& positionsReferences() const { return m_positionsReferences; }
  [[nodiscard]] int codeStations() const { return m_code; }
  /// How the references were chosen; 0 at the start.
  [[nodiscard]] int mode() const { return m_mode; }

  /// The station of a point: the first one of its row; -1 for none.
  [[nodiscard]] int stationDe(int rang) const { return m_colonnes > 0 ? tableStations(rang, 0).station : -1; }
  /// How many points belong to a station.
  [[nodiscard]] int nombreVisees(int station) const;
  /// Is the station in the point's row, and between both distances?
  /// @param colonne  its place in the row, unless null; -1 when it is not there
  [[nodiscard]] bool stationDansPortee(int rang, int station, double dmin, double dmax,
                                       int* colonne = nullptr) const;
  /// Place of a point of the table in `stations`; -1 when absent.
  [[nodiscard]] int indexStation(int index) const;

  numeroteurEntier numerotation;  ///< begins at "A1"

private:
  void remplirTable();
  [[nodiscard]] int referenceParmi(const std::vector<int>& candidates, int station, bool proche, double dmin,
                                   double dmax) const;
  [[nodiscard]] std::vector<int> candidatesDe(int mode) const;

  std::vector<AcGePoint2d> m_points;
  std::vector<AcString> m_noms;
  std::vector<entree> m_table;  ///< rows one behind the other
  int m_colonnes = 0;
  std::vector<int> m_stations;
  std::vector<int> m_references;
  std::vector<double> m_positionsReferences;
  int m_code = -1;
  int m_mode = 0;
};

/// A station of a plan with its points, in their order.
struct viseesPlan {
  int station = -1;           ///< index into the current table
  int reference = -1;         ///< likewise
  double gisReference = 0.0;  ///< bearing of the reference, radians; 0 without one
  std::vector<int> points;    ///< by their places in the plan

  /// What the instrument reads on a point: its bearing less that of the reference, grades, a turn added when
  /// it is negative.
  [[nodiscard]] double angleVers(const planImplantationAuto& plan, int rang) const;
  [[nodiscard]] double distanceVers(const planImplantationAuto& plan, int rang) const;
};
/// The stations that have points, in the order of `stations`.
VELTORA_API std::vector<viseesPlan> viseesDuPlan(const planImplantationAuto& plan);

}  // namespace veltora
