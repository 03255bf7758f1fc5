#pragma once

#include "base/export.h"
#include "base/numbers.h"
#include "base/uncopyable.h"
#include "core/compteur_identifiants.h"
#include "field/nom_gsi.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <memory_resource>
#include <string>
#include <unordered_set>
#include <vector>

/// What field books hold, in memory: stations, sightings, known points. Names are in Windows-1252, as they
/// stand in the file, outer blanks included.
namespace veltora {

/// The measured block of one sighting: lengths and coordinates in metres, angles in grades, as far as the
/// file's units are such. A value counts only where `present` says so.
struct donneesLecture {
  /// Places in `present`.
  enum Mesure : std::size_t {
    kX,
    kY,
    kZ,
    kAh,
    kAv,
    kDi,
    kDz,
    kDh,
    kXStat,
    kYStat,
    kZStat,
    kHMire,
    kHAppareil
  };
  static constexpr std::size_t kMesures = 13;

  std::int32_t kind = 1;
  std::string comment;
  double x = 0.0;  ///< of the target, in the file
  double y = 0.0;
  double z = 0.0;
  std::uint32_t id = compteurIdentifiants::commun().suivant();
  std::uint8_t flag = 0;  ///< no reader
  nomGSI nom;
  double ah = 0.0;  ///< horizontal angle
  double av = 0.0;  ///< vertical angle
  double di = 0.0;  ///< slope distance
  double dz = 0.0;  ///< height difference
  double dh = 0.0;  ///< horizontal distance
  double xStat = 0.0;
  double yStat = 0.0;
  double zStat = 0.0;
  double hMire = 0.0;  ///< height of the target
  double hAppareil = 0.0;
  std::array<bool, kMesures> present{};

  /// Whether the point is known in the plane.
  [[nodiscard]] bool situee() const { return present[kX] && present[kY]; }
};

/// A sighting.
struct lectureGSI {
  std::uint32_t station = 0;  ///< number of the station at that line; see `etatLectureGSI`
  donneesLecture donnees;
  double xReduit = base::Z_ABSENT;  ///< never computed
  double yReduit = base::Z_ABSENT;
  double zReduit = base::Z_ABSENT;
};

struct stationGSI {
  nomGSI nom;
  double hauteur = 0.0;  ///< of the instrument, metres
};

class VELTORA_API tableObsRayonnees : private Uncopyable {
public:
  using ensembleNoms = std::pmr::unordered_set<nomGSI>;
  using points = std::pmr::map<nomGSI, std::size_t>;

  tableObsRayonnees();

  /// @return the new number of stations, which is the number of the new one
  std::uint32_t ajouterStation(const nomGSI& nom, double hauteur);
  /// Appends a sighting taken from a station; one with X and Y makes its point known, in the place of what
  /// was known of it. @return the number of sightings
  std::size_t ajouterLecture(std::uint32_t station, lectureGSI lecture);
  /// Empties all, the names that were known from the start included.
  void viderTable();
  /// The known names, in the order of the set.
  void nomsCanevasListe(std::vector<nomGSI>& sortie);
  /// @return false, `sortie` unchanged, when no sighting gave that point X and Y
  bool lirePointCanevas(const nomGSI& nom, donneesLecture& sortie) const;
  /// What a station whose name is known has sighted becomes known too, in lower case, until nothing is added.
  /// Nothing of the program calls it.
  void propagerCanevas();

  /// The known names: "nord", "north" and "." at start, and those of all points that had X and Y.
  [[nodiscard]] ensembleNoms& nomsCanevas();
  /// The last sighting of each point that had X and Y, as its rank in `lectures`.
  [[nodiscard]] const points& pointsCanevas() const { return m_connus->parNom; }
  std::vector<stationGSI> stationsGSI;
  std::vector<lectureGSI> lectures;

private:
  /// What is known, one record behind the other in memory of its own, which goes as a whole.
  struct connus {
    connus();
    std::pmr::monotonic_buffer_resource memoire;
    ensembleNoms noms;
    std::size_t nommees =
        0;  ///< sightings whose names stand in the set; those behind them wait until it is asked for
    points parNom;
  };
  std::unique_ptr<connus> m_connus;
};

/// The table of the process, made when first asked for.
VELTORA_API tableObsRayonnees& getTableObsRayonnees();

}  // namespace veltora
