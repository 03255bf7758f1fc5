#pragma once

#include "arx/ge/gepoint.h"
#include "calc/adjustment/modele_pondere.h"
#include "calc/network/lieux.h"

#include <optional>
#include <utility>
#include <vector>

/// What leads to the provisional coordinates of the plan.
namespace veltora {

/// Sights of one station whose angles between them are known, as readings (radians, clockwise).
struct faisceau {
  static constexpr int kNord = -1;
  int station = -1;
  std::vector<std::pair<int, double>> visees;  ///< point, or `kNord`, and reading
};

/// All measures of a network by the points that they join.
struct liaisonsDepart {
  explicit liaisonsDepart(const reseauPondere& reseau);
  std::vector<faisceau> faisceaux;
  struct cote {
    int autre;
    double longueur;
  };
  std::vector<std::vector<cote>> cotes;                     ///< of each point
  std::vector<std::vector<int>> stations;                   ///< beams at each point
  std::vector<std::vector<std::pair<int, double>>> visees;  ///< beams that sight each point, its reading
};

/// What a measure leads a point along: a ray from an oriented station, a circle around a point, an arc over
/// two.
enum class genreLieu { rayon, cercle, segment };

/// A measure to a point without a place that does not fit the others of it.
struct desaccordDepart {
  genreLieu genre = genreLieu::rayon;
  int de = -1;
  int vers = -1;  ///< of a segment
  double ecart =
      0.0;            ///< measured less computed at the place where they fit best: metres of circles, radians
  bool vide = false;  ///< the circles around `de` and `vers` do not meet, by `ecart` metres
};

/// Places in one frame, spread from those that are known.
class ondeDepart {
public:
  /// @param nord  whether +Y of the frame is the north of the bearings
  /// @param longueurs  whether its scale is that of the measured lengths; without, they lead nowhere
  ondeDepart(const liaisonsDepart& liaisons, std::size_t points, bool nord, bool longueurs = true);
  void poser(int point, const AcGePoint2d& place);
  /// Computes whatever can be, or until that many points have a place. @return how many got one
  int propager(std::size_t arret = static_cast<std::size_t>(-1));
  /// A better place for a point that has one.
  void deplacer(int point, const AcGePoint2d& place) { m_places[static_cast<std::size_t>(point)] = place; }
  [[nodiscard]] const std::optional<AcGePoint2d>& place(int point) const {
    return m_places[static_cast<std::size_t>(point)];
  }
  /// Points with a place, in the order in which they got it.
  [[nodiscard]] const std::vector<int>& poses() const { return m_poses; }
  /// Points that two places fit alike.
  [[nodiscard]] bool indecis(int point) const { return m_indecis[static_cast<std::size_t>(point)] != 0; }
  /// Why a point has no place although two measures or more lead to it: those that contradict each other, the
  /// worst first. Empty when they do not, or lead nowhere.
  [[nodiscard]] std::vector<desaccordDepart> desaccords(int point) const;
  /// Bearing of the beam's reading 0 in this frame; nothing when no sight orients it.
  [[nodiscard]] std::optional<double> orientation(const faisceau& f) const;

private:
  struct lieuDepart {
    lieuGeometrique lieu;
    genreLieu genre = genreLieu::rayon;
    AcGePoint2d a;        ///< origin of a ray, centre of a distance, first point of a segment
    AcGePoint2d b;        ///< second point of a segment
    double valeur = 0.0;  ///< bearing, length, angle
    int de = -1;          ///< point of `a`
    int vers = -1;        ///< point of `b`
    /// Radians, or share of the length.
    [[nodiscard]] double ecart(const AcGePoint2d& p) const;
  };
  void reveiller(int point);
  [[nodiscard]] std::vector<lieuDepart> lieux(int point) const;
  void ajouterLieuxPropres(int point, std::vector<lieuDepart>& lieux) const;
  struct candidat {
    AcGePoint2d p;
    double defaut;
  };
  /// What a place must rest on, the surest first: a ray and a length of one station; three loci; two; two
  /// that cut at a small angle.
  enum class rigueur { polaire, controlee, deuxLieux, faible };
  [[nodiscard]] std::vector<candidat> candidats(const std::vector<lieuDepart>& tous, rigueur exigee) const;
  static bool surUnAppui(const std::vector<lieuDepart>& tous, const AcGePoint2d& p);
  static double defaut(const std::vector<lieuDepart>& tous, const AcGePoint2d& p);
  static AcGePoint2d affiner(const std::vector<lieuDepart>& tous, AcGePoint2d p, double echelle);
  /// The place on which three loci agree, more than half of all: what does not fit is a mistake.
  [[nodiscard]] static std::optional<AcGePoint2d> placeMajoritaire(const std::vector<lieuDepart>& tous,
                                                                   const std::vector<candidat>& places);
  [[nodiscard]] std::optional<AcGePoint2d> situer(int point, rigueur exigee);
  int tour(rigueur exigee, std::vector<int>& refuses);

  const liaisonsDepart& m_liaisons;
  bool m_nord;
  bool m_longueurs;
  std::vector<std::optional<AcGePoint2d>> m_places;
  std::vector<int> m_poses;
  std::vector<char> m_eveille;
  std::vector<char> m_indecis;
  std::vector<int> m_attente;
  std::vector<int> m_refuses;  ///< that wait for a lesser rigour
};

}  // namespace veltora
