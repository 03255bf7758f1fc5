#pragma once

#include "base/export.h"
#include "base/numbers.h"
#include "base/remarque.h"

#include <array>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

/// What a weighted network is: points, measures with their standard deviations, covariance blocks. X east, Y
/// north, metres; angles in radians, bearings clockwise from +Y.
namespace veltora {

inline constexpr double kEcartDemesure = 0.5;  ///< metres: no survey measures that badly

/// "le point « A » est donné deux fois, avec des coordonnées qui se contredisent (0.012 m en Y)": empty for
/// places that are one within a millimetre, as far as both are given.
std::wstring texteDoublon(const std::wstring& nom, const std::array<double, 3>& a,
                          const std::array<double, 3>& b);

/// How a coordinate enters the adjustment.
enum class statutCoordonnee : unsigned char {
  absente,   ///< to be computed, if any measure names it
  fixe,      ///< known without error
  approche,  ///< provisional: to be computed, from here
  libre,     ///< provisional, and the datum of a free network rests on it
};

struct pointPondere {
  std::wstring nom;
  std::array<double, 3> c{base::Z_ABSENT, base::Z_ABSENT, base::Z_ABSENT};       ///< as they stand
  std::array<double, 3> donnee{base::Z_ABSENT, base::Z_ABSENT, base::Z_ABSENT};  ///< as given
  std::array<statutCoordonnee, 3> statut{};
  int ligne = 0;  ///< of the file, 0 for a point that only measures name
  [[nodiscard]] bool enPlan() const { return c[0] != base::Z_ABSENT && c[1] != base::Z_ABSENT; }
  [[nodiscard]] bool enAltitude() const { return c[2] != base::Z_ABSENT; }
  [[nodiscard]] bool planFixe() const { return statut[0] == statutCoordonnee::fixe; }
  [[nodiscard]] bool altiFixe() const { return statut[2] == statutCoordonnee::fixe; }
};

enum class genreMesure : unsigned char { angle, direction, gisement, distance, denivelee, X, Y, Z };
inline constexpr std::size_t kGenresMesure = 8;
/// Of what the unit is an angle.
inline constexpr bool estAngulaire(genreMesure genre) { return genre <= genreMesure::gisement; }
inline constexpr bool estAltimetrique(genreMesure genre) {
  return genre == genreMesure::denivelee || genre == genreMesure::Z;
}
/// "angle", "dénivelée", "X"...
VELTORA_API const wchar_t* nomDuGenre(genreMesure genre);

/// An angle is bearing(station to vise) - bearing(station to reference); a direction is bearing(station to
/// vise) less the orientation of its round; a height difference is Z(vise) - Z(station); a coordinate is that
/// of its station.
struct mesurePonderee {
  genreMesure genre = genreMesure::distance;
  int station = -1;
  int reference = -1;  ///< of angles
  int vise = -1;
  int tour = -1;  ///< of directions: index of the orientation
  double valeur = 0.0;
  double ecart = 0.0;                ///< standard deviation, radians or metres; 0 when the kind gives it
  double longueur = base::Z_ABSENT;  ///< of a height difference, metres
  int ligne = 0;                     ///< of the file
  bool prevue = false;               ///< no value was measured
  bool ecarte = false;               ///< takes no part: a point of it has no coordinates
};

/// Whether the length of a levelled line must be in another unit: shorter than what it rises, or beyond
/// 100 km.
VELTORA_API bool longueurInvraisemblable(const mesurePonderee& denivelee);

/// Measures with covariances between them.
struct blocCovariance {
  std::vector<int> mesures;
  std::vector<double> C;  ///< square, row by row, in the measures' units squared
};

/// Standard deviations by kind, for measures that have none of their own.
struct ecartsParGenre {
  double angle = 1.0;          ///< mgr
  double direction = 1.0;      ///< mgr
  double gisement = 1.0;       ///< mgr
  double distance = 5.0;       ///< mm
  double ppm = 5.0;            ///< mm a kilometre, on top
  double nivellement = 0.0;    ///< mm
  double racineKm = 2.0;       ///< mm per root of a kilometre, combined in squares with the former
  double centrageStation = 0;  ///< mm, in each direction
  double centrageVise = 0;     ///< mm
};

struct VELTORA_API reseauPondere {
  std::vector<pointPondere> points;
  std::vector<mesurePonderee> mesures;
  std::vector<blocCovariance> blocs;
  std::vector<double> orientations;  ///< of the rounds, radians
  std::vector<int> stationsDesTours;
  ecartsParGenre ecarts;
  double m0Apriori = 1.0;               ///< the standard deviation of unit weight that the file counts in
  std::array<int, 3> anglesParUnite{};  ///< by `modeAngle`

  /// The point of a name, whatever its case; makes one.
  int indexDe(const std::wstring& nom);
  /// -1 when there is none.
  [[nodiscard]] int chercher(const std::wstring& nom) const;
  /// A new round of directions. @return its index
  int ajouterTour(int station);
  /// Gives each measure without one its standard deviation, from the present coordinates.
  void completerEcarts();
  [[nodiscard]] double distance(int a, int b) const;  ///< in plan
  [[nodiscard]] double gisement(int a, int b) const;  ///< radians, -pi to pi
  [[nodiscard]] double coteMoyen() const;             ///< of the sights in plan; 0 without any
  [[nodiscard]] bool enPlan(int i) const { return i >= 0 && points[static_cast<std::size_t>(i)].enPlan(); }
  [[nodiscard]] bool enAltitude(int i) const {
    return i >= 0 && points[static_cast<std::size_t>(i)].enAltitude();
  }
  [[nodiscard]] pointPondere& point(int i) { return points[static_cast<std::size_t>(i)]; }
  [[nodiscard]] const pointPondere& point(int i) const { return points[static_cast<std::size_t>(i)]; }
  /// What the present coordinates give for a measure, an angle not reduced.
  [[nodiscard]] double valeurCalculee(const mesurePonderee& m) const;
  /// Measured less computed, of angles within half a turn.
  [[nodiscard]] double ecartAuCalcul(const mesurePonderee& m) const;
  /// "angle en S1 de R1 vers V1", "distance de S1 à V1".
  [[nodiscard]] std::wstring nommer(const mesurePonderee& m) const;

private:
  std::unordered_map<std::wstring, int> m_index;
  [[nodiscard]] double ecartDuGenre(const mesurePonderee& m) const;
  [[nodiscard]] double ecartAngulaire(const mesurePonderee& m, double propre) const;
};

/// "-1.25 mgr" of radians, "3.4 mm" of metres.
VELTORA_API std::wstring texteEcart(genreMesure genre, double valeur);

}  // namespace veltora
