#include "calc/network/points_provisoires.h"

#include "base/format.h"
#include "calc/angles.h"
#include "calc/network/lieux.h"
#include "calc/network/listing_reseau.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace veltora {
namespace {

constexpr double kLongueurDirection = 1000.0;  // length of the vectors that stand for directions
constexpr double kObservationVerifiee = 1e-8;  // radians or metres, strict
constexpr int kDirectionsMax = 3;              // directions out of a point from which it is skipped

AcGePoint2d position(const pointACalculer& p) { return {p.X, p.Y}; }

AcGePoint2d auGisement(const AcGePoint2d& depuis, double gisement, double distance) {
  return {depuis.x + std::cos(kPi / 2.0 - gisement) * distance,
          depuis.y + std::sin(kPi / 2.0 - gisement) * distance};
}

double gisementRadians(const pointACalculer& a, const pointACalculer& b) {
  return calculGisement(a.X, a.Y, b.X, b.Y, 2);
}

/// The observations of each point, in their order.
std::vector<std::vector<int>> observationsParPoint(const donneesReseau& reseau) {
  std::vector<std::vector<int>> liste(reseau.points.size());
  const auto inscrire = [&](int point, int observation) {
    if (point < 0) return;
    std::vector<int>& siennes = liste.at(static_cast<std::size_t>(point));
    if (siennes.empty() || siennes.back() != observation) siennes.push_back(observation);
  };
  for (int i = 0; i < reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    if (o.type != ObservationReduite::kAngle && o.type != ObservationReduite::kDistance) continue;
    // Out of range indices raise here as they would where they are first used.
    (void)reseau.points.GetAt(o.station);
    (void)reseau.points.GetAt(o.vise);
    inscrire(o.station, i);
    inscrire(o.vise, i);
    if (o.type != ObservationReduite::kAngle || o.reference == -1) continue;
    (void)reseau.points.GetAt(o.reference);
    inscrire(o.reference, i);
  }
  return liste;
}

/// One unknown point with the loci that its observations give.
class Intersection {
public:
  Intersection(donneesReseau& reseau, int point) : m_reseau(reseau), m_point(point) {}

  /// @return false when the point has too many directions out of it
  bool rassembler(const std::vector<int>& observations);
  /// The same with two of the directions out of the point and no other.
  void rassemblerAvecDeux(const std::vector<int>& observations, int premiere, int seconde);
  [[nodiscard]] bool partDuPoint(const ObservationReduite& o) const {
    return o.type == ObservationReduite::kAngle && o.station == m_point && utilisable(o.vise);
  }
  [[nodiscard]] int nombreEquations() const { return static_cast<int>(m_equations.size()); }
  std::optional<AcGePoint2d> calculer();
  /// Those of the observations that a place of the point leaves without a value: they join it to a usable
  /// point at no distance, or the place is no number.
  [[nodiscard]] std::vector<int> sansValeur(const AcGePoint2d& place,
                                            const std::vector<int>& observations) const;
  /// Why `calculer` gives nothing.
  etatProvisoire examiner(const std::vector<int>& observations);

private:
  struct Somme {
    int nombre = 0;
    double x = 0.0;
    double y = 0.0;
    void ajouter(const AcGePoint2d& p) { ++nombre, x += p.x, y += p.y; }
    [[nodiscard]] AcGePoint2d moyenne() const { return {x / nombre, y / nombre}; }
  };
  [[nodiscard]] bool utilisable(int point) const { return m_reseau.utilisable.GetAt(point) != 0; }
  [[nodiscard]] bool sert(const ObservationReduite& o) const;
  [[nodiscard]] lieuGeometrique lieu(const ObservationReduite& o) const;
  [[nodiscard]] lieuGeometrique lieuAngle(const ObservationReduite& o) const;
  void croiser();
  /// The pairs in order: single intersections, and the nearer of two once something is known.
  void cumuler(Somme& somme, bool lever);
  [[nodiscard]] int candidatVerifie(const ObservationReduite& o, const pointsCommuns& communs);
  [[nodiscard]] std::optional<AcGePoint2d> germe() const;

  /// Whether the sight from one point to another has a length with the point at a place.
  [[nodiscard]] bool aUneLongueur(int de, int vers, const AcGePoint2d& place) const;

  struct Paire {
    std::size_t i;
    std::size_t j;
    pointsCommuns communs;
  };
  donneesReseau& m_reseau;
  int m_point;
  int m_directions = 0;
  std::vector<const ObservationReduite*> m_equations;
  std::vector<Paire> m_paires;
};

bool Intersection::sert(const ObservationReduite& o) const {
  if (o.type == ObservationReduite::kDistance) return utilisable(o.station == m_point ? o.vise : o.station);
  int connus = o.reference == -1 || utilisable(o.reference) ? 1 : 0;
  connus += utilisable(o.station) ? 1 : 0;
  connus += utilisable(o.vise) ? 1 : 0;
  return connus >= 2;
}

bool Intersection::rassembler(const std::vector<int>& observations) {
  for (const int i : observations) {
    const ObservationReduite& o = m_reseau.observations.GetAt(i);
    if (partDuPoint(o)) ++m_directions;
    if (sert(o)) m_equations.push_back(&o);
  }
  // Deliberate (trois-directions): a station sighted from itself on three known points is skipped, whatever
  // else it has.
  return m_directions < kDirectionsMax;
}

void Intersection::rassemblerAvecDeux(const std::vector<int>& observations, int premiere, int seconde) {
  for (const int i : observations) {
    const ObservationReduite& o = m_reseau.observations.GetAt(i);
    if (sert(o) && (!partDuPoint(o) || i == premiere || i == seconde)) m_equations.push_back(&o);
  }
}

lieuGeometrique Intersection::lieuAngle(const ObservationReduite& o) const {
  const pointACalculer& vise = m_reseau.points.GetAt(o.vise);
  if (o.station == m_point) {
    const AcGePoint2d cible = position(vise);
    if (o.reference == -1)
      return lieuGeometrique::droite(cible, auGisement(cible, o.mesure + kPi, kLongueurDirection));
    return lieuGeometrique::arcCapable(cible, position(m_reseau.points.GetAt(o.reference)), o.mesure);
  }
  const pointACalculer& station = m_reseau.points.GetAt(o.station);
  double direction = o.mesure;
  if (o.vise == m_point) {
    if (o.reference != -1) direction += gisementRadians(station, m_reseau.points.GetAt(o.reference));
  } else {
    direction = gisementRadians(station, vise) - o.mesure;
  }
  return lieuGeometrique::droite(position(station),
                                 auGisement(position(station), direction, kLongueurDirection));
}

lieuGeometrique Intersection::lieu(const ObservationReduite& o) const {
  if (o.type == ObservationReduite::kAngle) return lieuAngle(o);
  return lieuGeometrique::cercle(position(m_reseau.points.GetAt(o.station == m_point ? o.vise : o.station)),
                                 o.mesure);
}

void Intersection::croiser() {
  std::vector<lieuGeometrique> lieux;
  lieux.reserve(m_equations.size());
  for (const ObservationReduite* o : m_equations) lieux.push_back(lieu(*o));
  for (std::size_t i = 0; i < lieux.size(); ++i) {
    for (std::size_t j = i + 1; j < lieux.size(); ++j) {
      const pointsCommuns communs = intersecter(lieux[i], lieux[j]);
      if (communs.nombre > 0) m_paires.push_back({i, j, communs});
    }
  }
}

int Intersection::candidatVerifie(const ObservationReduite& o, const pointsCommuns& communs) {
  if (o.type != ObservationReduite::kAngle || o.station == m_point) return -1;
  pointACalculer& p = m_reseau.points.GetAt(m_point);
  const double x = p.X;
  const double y = p.Y;
  bool verifie[2] = {false, false};
  for (std::size_t k = 0; k < 2; ++k) {
    p.X = communs.points[k].x;
    p.Y = communs.points[k].y;
    double r = m_reseau.valeurCalculee(o) - o.mesure;
    if (r > kPi) r = 2.0 * kPi - r;
    verifie[k] = std::fabs(r) < kObservationVerifiee;
  }
  p.X = x;
  p.Y = y;
  return verifie[0] == verifie[1] ? -1 : verifie[0] ? 0 : 1;
}

void Intersection::cumuler(Somme& somme, bool lever) {
  for (const Paire& paire : m_paires) {
    const pointsCommuns& communs = paire.communs;
    if (communs.nombre == 1) {
      somme.ajouter(communs.points[0]);
    } else if (somme.nombre > 0) {
      const AcGePoint2d moyenne = somme.moyenne();
      const bool second = communs.points[1].distanceTo(moyenne) < communs.points[0].distanceTo(moyenne);
      somme.ajouter(communs.points[second ? 1 : 0]);
    } else if (lever) {
      int choix = candidatVerifie(*m_equations[paire.i], communs);
      if (choix < 0) choix = candidatVerifie(*m_equations[paire.j], communs);
      if (choix >= 0) somme.ajouter(communs.points[static_cast<std::size_t>(choix)]);
    }
  }
}

std::optional<AcGePoint2d> Intersection::germe() const {
  const auto deux = [](const Paire& paire) { return paire.communs.nombre == 2; };
  const auto a = std::find_if(m_paires.begin(), m_paires.end(), deux);
  if (a == m_paires.end()) return std::nullopt;
  const auto b = std::find_if(a + 1, m_paires.end(), deux);
  if (b == m_paires.end()) return std::nullopt;
  const auto& [a0, a1] = a->communs.points;
  const auto& [b0, b1] = b->communs.points;
  const double dA1 = std::min(a1.distanceTo(b0), a1.distanceTo(b1));
  const double dA0 = std::min(a0.distanceTo(b0), a0.distanceTo(b1));
  const AcGePoint2d& proche = dA1 > dA0 ? a0 : a1;
  return proche.distanceTo(b0) < proche.distanceTo(b1) ? b0 : b1;
}

std::optional<AcGePoint2d> Intersection::calculer() {
  croiser();
  Somme somme;
  cumuler(somme, true);
  if (somme.nombre > 0) return somme.moyenne();
  const std::optional<AcGePoint2d> depart = germe();
  if (!depart) return std::nullopt;
  somme.ajouter(*depart);
  cumuler(somme, false);
  if (somme.nombre > 1) {
    --somme.nombre;
    somme.x -= depart->x;
    somme.y -= depart->y;
  }
  return somme.moyenne();
}

bool Intersection::aUneLongueur(int de, int vers, const AcGePoint2d& place) const {
  if (de == vers) return de != m_point;
  const int autre = de == m_point ? vers : de;
  if ((de != m_point && vers != m_point) || !utilisable(autre)) return true;
  const AcGeVector2d d = position(m_reseau.points.GetAt(autre)) - place;
  const double carre = d.x * d.x + d.y * d.y;
  return carre > 0.0 && std::isfinite(carre);
}

std::vector<int> Intersection::sansValeur(const AcGePoint2d& place,
                                          const std::vector<int>& observations) const {
  std::vector<int> sans;
  for (const int i : observations) {
    const ObservationReduite& o = m_reseau.observations.GetAt(i);
    const bool orientee = o.type == ObservationReduite::kAngle && o.reference != -1;
    if (!aUneLongueur(o.station, o.vise, place) || (orientee && !aUneLongueur(o.station, o.reference, place)))
      sans.push_back(i);
  }
  return sans;
}

etatProvisoire Intersection::examiner(const std::vector<int>& observations) {
  using Cause = etatProvisoire::Cause;
  etatProvisoire etat;
  const bool trop = !rassembler(observations);
  etat.directions = m_directions;
  etat.equations = nombreEquations();
  etat.droitesSeules = std::all_of(m_equations.begin(), m_equations.end(), [this](const auto* o) {
    return lieu(*o).genre == lieuGeometrique::kDroite;
  });
  if (observations.empty()) {
    etat.cause = Cause::kSansObservation;
  } else if (trop) {
    etat.cause = Cause::kTropDirections;
  } else if (etat.equations < 2) {
    etat.cause = etat.equations == 0 ? Cause::kPasRattache : Cause::kUneEquation;
  } else {
    const std::optional<AcGePoint2d> place = calculer();
    if (place) etat.sansValeur = sansValeur(*place, observations);
    etat.cause = !etat.sansValeur.empty() ? Cause::kSansValeur
                 : place                  ? Cause::kAucune
                 : m_paires.empty()       ? Cause::kLieuxDisjoints
                                          : Cause::kIndecis;
  }
  return etat;
}

/// How badly directions fit a place of their station, radians squared.
double desaccord(donneesReseau& reseau, int point, const AcGePoint2d& place,
                 const std::vector<int>& directions) {
  pointACalculer& p = reseau.points.GetAt(point);
  const pointACalculer avant = p;
  p.X = place.x;
  p.Y = place.y;
  double somme = 0.0;
  for (const int i : directions) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    if (o.reference != -1 && !reseau.utilisable.GetAt(o.reference)) continue;
    const double ecart = std::remainder(reseau.valeurCalculee(o) - o.mesure, 2.0 * kPi);
    somme += ecart * ecart;
  }
  p = avant;
  return somme;
}

/// Unknown points in the order in which observations name them, behind the known ones.
std::vector<int> ordreDesNoms(const donneesReseau& reseau, const std::vector<int>& observations) {
  std::vector<int> ordre;
  std::vector<bool> vus(reseau.points.size());
  const auto inscrire = [&](int point) {
    if (point < 0 || vus.at(static_cast<std::size_t>(point))) return;
    vus[static_cast<std::size_t>(point)] = true;
    ordre.push_back(point);
  };
  for (int i = 0; i < reseau.points.GetSize(); ++i)
    if (reseau.points.GetAt(i).planiConnue) inscrire(i);
  for (const int i : observations) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    for (const int point : {o.reference, o.station, o.vise}) inscrire(point);
  }
  for (int i = 0; i < reseau.points.GetSize(); ++i) inscrire(i);
  return ordre;
}

}  // namespace

deuxDirections garderDeuxDirections(donneesReseau& reseau, int point) {
  constexpr std::size_t kDirectionsEssayees = 10;
  const std::vector<int> siennes = observationsParPoint(reseau).at(static_cast<std::size_t>(point));
  const Intersection test(reseau, point);
  std::vector<int> directions;
  for (const int i : siennes)
    if (test.partDuPoint(reseau.observations.GetAt(i))) directions.push_back(i);
  if (directions.size() > kDirectionsEssayees) directions.resize(kDirectionsEssayees);
  deuxDirections choix;
  double meilleur = HUGE_VAL;
  for (std::size_t a = 0; a < directions.size(); ++a) {
    for (std::size_t b = a + 1; b < directions.size(); ++b) {
      Intersection intersection(reseau, point);
      intersection.rassemblerAvecDeux(siennes, directions[a], directions[b]);
      const std::optional<AcGePoint2d> place = intersection.calculer();
      if (!place) continue;
      const double faute = desaccord(reseau, point, *place, directions);
      if (!(faute < meilleur)) continue;
      meilleur = faute;
      choix = {directions[a], directions[b]};
    }
  }
  return choix;
}

bool seCalculeEnTete(const donneesReseau& reseau, int point) {
  std::vector<int> observations;
  for (const bool nommees : {true, false}) {
    for (int i = 0; i < reseau.observations.GetSize(); ++i) {
      const ObservationReduite& o = reseau.observations.GetAt(i);
      const bool nomme = o.station == point || o.vise == point || o.reference == point;
      if (nomme == nommees) observations.push_back(i);
    }
  }
  const std::vector<int> ordre = ordreDesNoms(reseau, observations);
  std::vector<int> rangs(ordre.size());
  donneesReseau essai;
  for (std::size_t i = 0; i < ordre.size(); ++i) {
    rangs[static_cast<std::size_t>(ordre[i])] = static_cast<int>(i);
    essai.points.Add(reseau.points.GetAt(ordre[i]));
  }
  const auto rang = [&rangs](int p) { return p < 0 ? p : rangs[static_cast<std::size_t>(p)]; };
  for (const int i : observations) {
    ObservationReduite o = reseau.observations.GetAt(i);
    o.station = rang(o.station);
    o.vise = rang(o.vise);
    o.reference = rang(o.reference);
    essai.observations.Add(o);
  }
  std::wstring journal;
  calculerPointsProvisoires(essai, journal);
  return essai.utilisable.GetAt(rang(point)) != 0;
}

std::vector<etatProvisoire> examinerPoints(donneesReseau& reseau) {
  std::vector<etatProvisoire> etats(reseau.points.size());
  const bool canevas = std::any_of(reseau.points.begin(), reseau.points.end(),
                                   [](const pointACalculer& p) { return p.planiConnue; });
  const std::vector<std::vector<int>> parPoint = observationsParPoint(reseau);
  for (std::size_t i = 0; i < etats.size(); ++i) {
    const int point = static_cast<int>(i);
    if (point < reseau.utilisable.GetSize() && reseau.utilisable.GetAt(point)) continue;
    if (canevas)
      etats[i] = Intersection(reseau, point).examiner(parPoint[i]);
    else
      etats[i].cause = etatProvisoire::Cause::kSansCanevas;
  }
  return etats;
}

bool calculerPointsProvisoires(donneesReseau& reseau, std::wstring& journal) {
  reseau.utilisable.RemoveAll();
  reseau.utilisable.SetSize(reseau.points.size());
  bool connu = false;
  for (std::size_t i = 0; i < reseau.points.size(); ++i) {
    reseau.utilisable[i] = reseau.points[i].planiConnue ? 1 : 0;
    connu = connu || reseau.points[i].planiConnue;
  }
  if (!connu) return false;
  const std::vector<std::vector<int>> parPoint = observationsParPoint(reseau);
  bool calcule = true;
  while (calcule) {
    calcule = false;
    for (int i = 0; i < reseau.points.GetSize(); ++i) {
      if (reseau.utilisable.GetAt(i)) continue;
      Intersection intersection(reseau, i);
      if (!intersection.rassembler(parPoint[static_cast<std::size_t>(i)])) continue;
      journal += base::formater(L"\r\nCalcul du point %s  à l'aide de %d equations ",
                                reseau.points.GetAt(i).nom, intersection.nombreEquations());
      const std::optional<AcGePoint2d> trouve = intersection.calculer();
      if (!trouve || !intersection.sansValeur(*trouve, parPoint[static_cast<std::size_t>(i)]).empty())
        continue;
      reseau.points.GetAt(i).X = trouve->x;
      reseau.points.GetAt(i).Y = trouve->y;
      reseau.utilisable.GetAt(i) = 1;
      calcule = true;
      journal += solutionTrouvee(reseau.points.GetAt(i));
    }
  }
  return true;
}

}  // namespace veltora
