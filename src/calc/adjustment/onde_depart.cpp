#include "calc/adjustment/onde_depart.h"

#include "calc/angles.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace veltora {
namespace {

constexpr std::size_t kLieuxMax = 14;  // of one point, of which all pairs are tried
constexpr double kDefautMax = 0.03;    // mean misfit of a place, radians or share of the length
constexpr double kDefautSur = 0.003;   // a second place must fit worse than this, and
constexpr double kRapportSur = 4.0;    // so many times worse than the first, to be told from it
constexpr double kAngleNul = 1e-3;     // radians: sights that are one direction
constexpr double kMemePlace = 0.05;    // share of the sights' length between places that are one
constexpr double kDifference = 1e-6;   // step of the derivatives, share of the sights' length
constexpr int kAffinages = 4;
constexpr double kCoupeBonne = 0.1;  // sine between two loci
constexpr double kCoupeFaible = 0.005;

double gisementDe(const AcGePoint2d& de, const AcGePoint2d& vers) {
  return std::atan2(vers.x - de.x, vers.y - de.y);
}
double longueur(const AcGePoint2d& a, const AcGePoint2d& b) { return std::hypot(b.x - a.x, b.y - a.y); }

/// Measures at one station that tie sights together: an edge from one to another with the angle between.
struct lienVisees {
  int de;
  int vers;
  double angle;
};

/// The beams of a station: parts of its sights that angles join. Rounds are vertices below `kNord`.
void formerFaisceaux(int station, const std::vector<lienVisees>& liens, std::vector<faisceau>& faisceaux) {
  std::map<int, std::vector<std::pair<int, double>>> voisins;
  for (const lienVisees& l : liens) {
    voisins[l.de].emplace_back(l.vers, l.angle);
    voisins[l.vers].emplace_back(l.de, -l.angle);
  }
  std::map<int, double> lectures;
  for (const auto& [racine, inutile] : voisins) {
    if (!lectures.try_emplace(racine, 0.0).second) continue;
    faisceau f;
    f.station = station;
    std::vector<int> pile{racine};
    for (std::size_t k = 0; k < pile.size(); ++k) {
      const int visee = pile[k];
      if (visee >= faisceau::kNord) f.visees.emplace_back(visee, lectures[visee]);
      for (const auto& [autre, angle] : voisins[visee])
        if (lectures.try_emplace(autre, lectures[visee] + angle).second) pile.push_back(autre);
    }
    if (f.visees.size() > 1) faisceaux.push_back(std::move(f));
  }
}

/// The circle on which `p` and `q` are seen under the angle from p to q, clockwise.
lieuGeometrique cercleCapable(const AcGePoint2d& p, const AcGePoint2d& q, double angle) {
  const double d = longueur(p, q);
  const double h = 0.5 / std::tan(angle);
  const AcGePoint2d centre(0.5 * (p.x + q.x) + h * (q.y - p.y), 0.5 * (p.y + q.y) - h * (q.x - p.x));
  return lieuGeometrique::cercle(centre, d / (2.0 * std::abs(std::sin(angle))));
}

}  // namespace

liaisonsDepart::liaisonsDepart(const reseauPondere& reseau)
    : cotes(reseau.points.size()), stations(reseau.points.size()), visees(reseau.points.size()) {
  std::map<int, std::vector<lienVisees>> liens;
  for (const mesurePonderee& m : reseau.mesures) {
    if (m.prevue) continue;
    if (m.genre == genreMesure::angle) liens[m.station].push_back({m.reference, m.vise, m.valeur});
    if (m.genre == genreMesure::gisement) liens[m.station].push_back({faisceau::kNord, m.vise, m.valeur});
    if (m.genre == genreMesure::direction)
      liens[m.station].push_back({faisceau::kNord - 1 - m.tour, m.vise, m.valeur});
    if (m.genre != genreMesure::distance) continue;
    cotes[static_cast<std::size_t>(m.station)].push_back({m.vise, m.valeur});
    cotes[static_cast<std::size_t>(m.vise)].push_back({m.station, m.valeur});
  }
  for (const auto& [station, deStation] : liens) formerFaisceaux(station, deStation, faisceaux);
  for (std::size_t i = 0; i < faisceaux.size(); ++i) {
    stations[static_cast<std::size_t>(faisceaux[i].station)].push_back(static_cast<int>(i));
    for (const auto& [point, lecture] : faisceaux[i].visees)
      if (point >= 0) visees[static_cast<std::size_t>(point)].emplace_back(static_cast<int>(i), lecture);
  }
}

ondeDepart::ondeDepart(const liaisonsDepart& liaisons, std::size_t points, bool nord, bool longueurs)
    : m_liaisons(liaisons),
      m_nord(nord),
      m_longueurs(longueurs),
      m_places(points),
      m_eveille(points, 0),
      m_indecis(points, 0) {}

void ondeDepart::poser(int point, const AcGePoint2d& place) {
  if (m_places[static_cast<std::size_t>(point)]) return;
  m_places[static_cast<std::size_t>(point)] = place;
  m_poses.push_back(point);
  const auto reveillerFaisceau = [this](int i) {
    const faisceau& f = m_liaisons.faisceaux[static_cast<std::size_t>(i)];
    reveiller(f.station);
    if (m_places[static_cast<std::size_t>(f.station)])
      for (const auto& visee : f.visees) reveiller(visee.first);
  };
  for (const auto& cote : m_liaisons.cotes[static_cast<std::size_t>(point)]) reveiller(cote.autre);
  for (const int i : m_liaisons.stations[static_cast<std::size_t>(point)]) reveillerFaisceau(i);
  for (const auto& visee : m_liaisons.visees[static_cast<std::size_t>(point)]) reveillerFaisceau(visee.first);
}

void ondeDepart::reveiller(int point) {
  if (point < 0 || m_places[static_cast<std::size_t>(point)] || m_eveille[static_cast<std::size_t>(point)])
    return;
  m_eveille[static_cast<std::size_t>(point)] = 1;
  m_attente.push_back(point);
}

std::optional<double> ondeDepart::orientation(const faisceau& f) const {
  const auto& station = place(f.station);
  if (!station) return std::nullopt;
  std::vector<double> valeurs;
  for (const auto& [point, lecture] : f.visees) {
    if (point == faisceau::kNord && m_nord) return -lecture;
    if (point < 0 || !place(point)) continue;
    const double v = gisementDe(*station, *place(point)) - lecture;
    valeurs.push_back(valeurs.empty() ? v : valeurs.front() + dansUnDemiTour(v - valeurs.front()));
  }
  if (valeurs.empty()) return std::nullopt;
  std::nth_element(valeurs.begin(), valeurs.begin() + static_cast<std::ptrdiff_t>(valeurs.size() / 2),
                   valeurs.end());
  return valeurs[valeurs.size() / 2];
}

double ondeDepart::lieuDepart::ecart(const AcGePoint2d& p) const {
  if (genre == genreLieu::cercle) return (longueur(a, p) - valeur) / std::max(valeur, 1e-9);
  if (genre == genreLieu::rayon) return dansUnDemiTour(gisementDe(a, p) - valeur);
  return dansUnDemiTour(gisementDe(p, b) - gisementDe(p, a) - valeur);
}

void ondeDepart::ajouterLieuxPropres(int point, std::vector<lieuDepart>& lieux) const {
  for (const int i : m_liaisons.stations[static_cast<std::size_t>(point)]) {
    const faisceau& f = m_liaisons.faisceaux[static_cast<std::size_t>(i)];
    const std::pair<int, double>* premiere = nullptr;
    std::optional<double> nord;
    for (const auto& visee : f.visees)
      if (visee.first == faisceau::kNord && m_nord) nord = visee.second;
    for (const auto& visee : f.visees) {
      if (visee.first < 0 || !place(visee.first)) continue;
      const AcGePoint2d q = *place(visee.first);
      if (nord) {
        const double retour = visee.second - *nord + kPi;
        lieux.push_back({lieuGeometrique::droite(q, {q.x + std::sin(retour), q.y + std::cos(retour)}),
                         genreLieu::rayon,
                         q,
                         {},
                         retour,
                         visee.first});
      } else if (premiere) {
        const double angle = visee.second - premiere->second;
        const AcGePoint2d p = *place(premiere->first);
        if (std::abs(std::sin(angle)) > kAngleNul)
          lieux.push_back(
              {cercleCapable(p, q, angle), genreLieu::segment, p, q, angle, premiere->first, visee.first});
      } else {
        premiere = &visee;
      }
    }
  }
}

std::vector<ondeDepart::lieuDepart> ondeDepart::lieux(int point) const {
  std::vector<lieuDepart> tous;
  for (const auto& [i, lecture] : m_liaisons.visees[static_cast<std::size_t>(point)]) {
    const faisceau& f = m_liaisons.faisceaux[static_cast<std::size_t>(i)];
    const auto o = orientation(f);
    if (!o) continue;
    const AcGePoint2d s = *place(f.station);
    const double g = *o + lecture;
    tous.push_back({lieuGeometrique::droite(s, {s.x + std::sin(g), s.y + std::cos(g)}),
                    genreLieu::rayon,
                    s,
                    {},
                    g,
                    f.station});
  }
  for (const auto& cote : m_liaisons.cotes[static_cast<std::size_t>(point)]) {
    if (!m_longueurs || !place(cote.autre)) continue;
    const AcGePoint2d s = *place(cote.autre);
    tous.push_back(
        {lieuGeometrique::cercle(s, cote.longueur), genreLieu::cercle, s, {}, cote.longueur, cote.autre});
  }
  ajouterLieuxPropres(point, tous);
  if (tous.size() > kLieuxMax) tous.resize(kLieuxMax);
  return tous;
}

namespace {

/// Sine of the angle under which two loci cut in a point.
double coupe(const lieuGeometrique& a, const lieuGeometrique& b, const AcGePoint2d& p) {
  const auto tangente = [&p](const lieuGeometrique& l) {
    return l.genre == lieuGeometrique::kCercle ? gisementDe(l.centre, p) + kPi / 2.0 : gisementDe(l.p1, l.p2);
  };
  return std::abs(std::sin(tangente(a) - tangente(b)));
}

}  // namespace

/// A circle seen from two points runs through both: no place for a third.
bool ondeDepart::surUnAppui(const std::vector<lieuDepart>& tous, const AcGePoint2d& p) {
  double pres = longueur(tous.front().a, p);
  double loin = pres;
  for (const lieuDepart& l : tous) {
    const double d = longueur(l.a, p);
    pres = std::min(pres, l.genre == genreLieu::segment ? std::min(d, longueur(l.b, p)) : d);
    loin = std::max(loin, d);
  }
  return pres <= kDifference * loin;
}

std::vector<ondeDepart::candidat> ondeDepart::candidats(const std::vector<lieuDepart>& tous,
                                                        rigueur exigee) const {
  const double coupeMinimale = exigee == rigueur::faible ? kCoupeFaible : kCoupeBonne;
  std::vector<candidat> trouves;
  for (std::size_t i = 0; i < tous.size(); ++i) {
    for (std::size_t j = i + 1; j < tous.size(); ++j) {
      const bool polaire = tous[i].genre != tous[j].genre && tous[i].genre != genreLieu::segment &&
                           tous[j].genre != genreLieu::segment && longueur(tous[i].a, tous[j].a) == 0.0;
      if (exigee == rigueur::polaire && !polaire) continue;
      const pointsCommuns communs = intersecter(tous[i].lieu, tous[j].lieu);
      for (int k = 0; k < communs.nombre; ++k) {
        const AcGePoint2d p = communs.points[static_cast<std::size_t>(k)];
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || surUnAppui(tous, p) ||
            coupe(tous[i].lieu, tous[j].lieu, p) < coupeMinimale)
          continue;
        trouves.push_back({p, defaut(tous, p)});
      }
    }
  }
  return trouves;
}

double ondeDepart::defaut(const std::vector<lieuDepart>& tous, const AcGePoint2d& p) {
  double somme = 0.0;
  for (const lieuDepart& l : tous) somme += l.ecart(p) * l.ecart(p);
  return std::sqrt(somme / static_cast<double>(tous.size()));
}

/// Gauss-Newton over all loci, derivatives by differences.
AcGePoint2d ondeDepart::affiner(const std::vector<lieuDepart>& tous, AcGePoint2d p, double echelle) {
  const double h = kDifference * echelle;
  for (int passe = 0; passe < kAffinages; ++passe) {
    double nxx = 0.0;
    double nxy = 0.0;
    double nyy = 0.0;
    double bx = 0.0;
    double by = 0.0;
    for (const lieuDepart& l : tous) {
      const double e = l.ecart(p);
      const double ax = (l.ecart({p.x + h, p.y}) - l.ecart({p.x - h, p.y})) / (2.0 * h);
      const double ay = (l.ecart({p.x, p.y + h}) - l.ecart({p.x, p.y - h})) / (2.0 * h);
      nxx += ax * ax;
      nxy += ax * ay;
      nyy += ay * ay;
      bx -= ax * e;
      by -= ay * e;
    }
    const double determinant = nxx * nyy - nxy * nxy;
    if (!(determinant > kCoupeFaible * kCoupeFaible * nxx * nyy)) return p;
    const AcGePoint2d q(p.x + (nyy * bx - nxy * by) / determinant, p.y + (nxx * by - nxy * bx) / determinant);
    if (!(defaut(tous, q) <= defaut(tous, p))) return p;
    p = q;
  }
  return p;
}

std::optional<AcGePoint2d> ondeDepart::situer(int point, rigueur exigee) {
  const std::vector<lieuDepart> tous = lieux(point);
  if (exigee == rigueur::controlee && tous.size() < 3) return std::nullopt;
  const std::vector<candidat> places = candidats(tous, exigee);
  if (places.empty()) return std::nullopt;
  const candidat meilleur = *std::min_element(
      places.begin(), places.end(), [](const auto& a, const auto& b) { return a.defaut < b.defaut; });
  if (!(meilleur.defaut < kDefautMax))
    return exigee == rigueur::faible ? placeMajoritaire(tous, places) : std::nullopt;
  double echelle = 0.0;
  for (const lieuDepart& l : tous) echelle = std::max(echelle, longueur(l.a, meilleur.p));
  const bool ambigu = std::any_of(places.begin(), places.end(), [&](const candidat& c) {
    return longueur(c.p, meilleur.p) > kMemePlace * echelle &&
           c.defaut < std::max(kDefautSur, kRapportSur * meilleur.defaut);
  });
  m_indecis[static_cast<std::size_t>(point)] = ambigu ? 1 : 0;
  if (ambigu || echelle == 0.0) return std::nullopt;
  return affiner(tous, meilleur.p, echelle);
}

std::optional<AcGePoint2d> ondeDepart::placeMajoritaire(const std::vector<lieuDepart>& tous,
                                                        const std::vector<candidat>& places) {
  std::vector<lieuDepart> meilleurs;
  AcGePoint2d p;
  bool ambigu = false;
  for (const candidat& c : places) {
    std::vector<lieuDepart> accordes;
    double echelle = 0.0;
    for (const lieuDepart& l : tous) {
      if (std::abs(l.ecart(c.p)) < kDefautMax) accordes.push_back(l);
      echelle = std::max(echelle, longueur(l.a, c.p));
    }
    if (accordes.size() < meilleurs.size()) continue;
    const bool autre = longueur(c.p, p) > kMemePlace * echelle;
    ambigu = accordes.size() == meilleurs.size() && (ambigu || autre);
    if (accordes.size() > meilleurs.size()) {
      meilleurs = accordes;
      p = c.p;
    }
  }
  if (ambigu || meilleurs.size() < 3 || 2 * meilleurs.size() <= tous.size()) return std::nullopt;
  double echelle = 0.0;
  for (const lieuDepart& l : meilleurs) echelle = std::max(echelle, longueur(l.a, p));
  return affiner(meilleurs, p, echelle);
}

std::vector<desaccordDepart> ondeDepart::desaccords(int point) const {
  const std::vector<lieuDepart> tous = lieux(point);
  const std::vector<candidat> places = candidats(tous, rigueur::faible);
  std::vector<desaccordDepart> dits;
  const auto meilleur = std::min_element(places.begin(), places.end(),
                                         [](const auto& a, const auto& b) { return a.defaut < b.defaut; });
  if (meilleur != places.end() && meilleur->defaut < kDefautMax) return dits;
  for (std::size_t i = 0; i < tous.size(); ++i) {
    const lieuDepart& l = tous[i];
    if (meilleur != places.end()) {
      const bool cercle = l.genre == genreLieu::cercle;
      // Seen from the point the misfit is computed less measured.
      dits.push_back({l.genre, l.de, l.vers, -l.ecart(meilleur->p) * (cercle ? l.valeur : 1.0), false});
      continue;
    }
    for (std::size_t j = i + 1; j < tous.size(); ++j) {
      if (l.genre != genreLieu::cercle || tous[j].genre != genreLieu::cercle) continue;
      const double d = longueur(l.a, tous[j].a);
      const double vide = std::max(d - l.valeur - tous[j].valeur, std::abs(l.valeur - tous[j].valeur) - d);
      if (vide > kDefautMax * std::max(l.valeur, tous[j].valeur))
        dits.push_back({genreLieu::cercle, l.de, tous[j].de, vide, true});
    }
  }
  const auto part = [](const desaccordDepart& d) { return std::abs(d.ecart); };
  std::stable_sort(dits.begin(), dits.end(), [&](const auto& a, const auto& b) {
    const bool metresA = a.genre == genreLieu::cercle;
    const bool metresB = b.genre == genreLieu::cercle;
    return metresA != metresB ? metresA : part(a) > part(b);
  });
  return dits;
}

/// One round: all points that wait, from the places as they stand. @return how many got one
int ondeDepart::tour(rigueur exigee, std::vector<int>& refuses) {
  std::vector<std::pair<int, AcGePoint2d>> trouves;
  for (const int point : std::exchange(m_attente, {})) {
    m_eveille[static_cast<std::size_t>(point)] = 0;
    if (place(point)) continue;
    if (const auto p = situer(point, exigee))
      trouves.emplace_back(point, *p);
    else
      refuses.push_back(point);
  }
  for (const auto& [point, p] : trouves) poser(point, p);
  return static_cast<int>(trouves.size());
}

int ondeDepart::propager(std::size_t arret) {
  static constexpr rigueur kRigueurs[] = {rigueur::polaire, rigueur::controlee, rigueur::deuxLieux,
                                          rigueur::faible};
  int nombre = 0;
  for (std::size_t niveau = 0; niveau < std::size(kRigueurs); ++niveau) {
    for (const int point : std::exchange(m_refuses, {})) reveiller(point);
    int poses = 0;
    while (!m_attente.empty()) {
      const int n = tour(kRigueurs[niveau], m_refuses);
      poses += n;
      if (m_poses.size() >= arret) return nombre + poses;
      // What is less sure serves only as far as it must.
      if (niveau > 0 && n > 0) break;
    }
    nombre += poses;
    if (niveau > 0 && poses > 0) niveau = static_cast<std::size_t>(-1);
  }
  return nombre;
}

}  // namespace veltora
