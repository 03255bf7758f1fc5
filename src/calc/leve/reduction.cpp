#include "calc/leve/reduction.h"

#include "base/format.h"
#include "calc/leve/angles_leve.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace veltora {
namespace {

constexpr double kDemi = 200.0;
constexpr double kAccord = 0.05;       // metres: pointings of one point lie no further apart
constexpr double kAccordAngle = 0.01;  // grades: nor do they turn by more where they are near
constexpr double kPaire = 0.05;        // grades: what collimation and index may amount to
constexpr double kDistances =
    0.02;  // metres: between a slope distance and a horizontal one of the same pointing

/// One pointing on the first face.
struct Pointage {
  const viseeTerrain* visee = nullptr;
  bool seconde = false;
  std::optional<double> h;
  std::optional<double> v;
  std::optional<double> d;
  std::optional<double> dz;
};

class Reduction {
public:
  Reduction(const miseEnPlace& station, const optionsLeve& options, base::Remarques& remarques)
      : m_station(station), m_options(options), m_remarques(remarques) {}

  mesuresStation reduire() {
    verifierZenith();
    std::map<std::wstring, std::size_t> rangs;
    std::vector<std::vector<Pointage>> points;
    for (const viseeTerrain& visee : m_station.visees) {
      const auto [ou, neuf] = rangs.try_emplace(cleNomLeve(visee.nom), points.size());
      if (neuf) points.emplace_back();
      points[ou->second].push_back(pointer(visee));
    }
    for (std::vector<Pointage>& pointages : points) m_mesures.mesures.push_back(joindre(pointages));
    finirFaces();
    direContredits();
    return std::move(m_mesures);
  }

private:
  /// A zenith distance is a quarter turn on the horizon; an elevation is nothing there.
  void verifierZenith() {
    int sites = 0;
    int zeniths = 0;
    for (const viseeTerrain& visee : m_station.visees) {
      if (!visee.v) continue;
      const double v = reduireAngle(*visee.v, kDemi);
      (v > 50.0 && v < 150.0 ? zeniths : sites) += 1;
    }
    if (sites > zeniths)
      m_remarques.douter(
          m_station.ligne,
          base::formater(L"station « %s » : les angles verticaux semblent être des sites (0 à l'horizon) ; "
                         L"ils comptent comme distances zénithales",
                         m_station.nom));
  }

  Pointage pointer(const viseeTerrain& visee) {
    Pointage p;
    p.visee = &visee;
    if (visee.v) p.v = reduireAngle(*visee.v, kTourGrades);
    p.seconde = p.v && *p.v > kDemi;
    if (p.seconde) p.v = kTourGrades - *p.v;
    if (visee.h) p.h = reduireAngle(*visee.h - (p.seconde ? kDemi : 0.0), kTourGrades);
    mesurer(p);
    return p;
  }

  /// Distance and height difference of a pointing.
  void mesurer(Pointage& p) {
    const viseeTerrain& visee = *p.visee;
    const bool incline = visee.di && p.v;
    if (visee.di && !p.v && !visee.dh)
      m_remarques.douter(visee.ligne,
                         L"« " + visee.nom + L" » : distance inclinée sans angle vertical, laissée de côté");
    std::optional<double> horizontale = visee.dh;
    if (incline) horizontale = *visee.di * std::sin(radiansDe(*p.v));
    if (incline && visee.dh && std::fabs(*horizontale - *visee.dh) > kDistances)
      m_remarques.douter(visee.ligne,
                         base::formater(L"« %s » : la distance horizontale %.3f ne s'accorde pas avec la "
                                        L"distance inclinée réduite %.3f, qui compte",
                                        visee.nom, *visee.dh, *horizontale));
    if (!horizontale) return;
    if (!(*horizontale > 0.0)) {
      m_remarques.douter(visee.ligne, base::formater(L"« %s » : distance de %.3f, laissée de côté", visee.nom,
                                                     *horizontale));
      return;
    }
    p.d = *horizontale * m_options.facteur;
    std::optional<double> axe = visee.dn;
    if (p.v && *p.v > 0.0 && *p.v < kDemi)
      axe = incline ? *visee.di * std::cos(radiansDe(*p.v)) : *horizontale / std::tan(radiansDe(*p.v));
    if (axe) p.dz = *axe + hauteurs(visee) + courbure(*horizontale);
  }

  double hauteurs(const viseeTerrain& visee) {
    const std::optional<double> mire = visee.hMire ? visee.hMire : m_options.hMire;
    const std::optional<double> appareil = visee.hAppareil ? visee.hAppareil : m_options.hAppareil;
    if (!mire) ++m_mesures.sansMire;
    if (!appareil) ++m_mesures.sansAppareil;
    return appareil.value_or(0.0) - mire.value_or(0.0);
  }

  [[nodiscard]] double courbure(double d) const {
    return m_options.refraction ? (1.0 - *m_options.refraction) * d * d / (2.0 * kRayonTerre) : 0.0;
  }

  /// Whether a pointing tells another place than the first one. Between the faces stand twice the errors that
  /// they cancel.
  static bool contredit(const Pointage& un, const Pointage& autre) {
    const double entreFaces = un.seconde == autre.seconde ? 0.0 : 2.0 * kPaire;
    const double longueur = un.d ? *un.d : autre.d.value_or(100.0);
    if (un.h && autre.h) {
      const double ecart = std::fabs(ecartGrades(*un.h, *autre.h)) - entreFaces;
      if (ecart > kAccordAngle && radiansDe(ecart) * longueur > kAccord) return true;
    }
    return (un.d && autre.d && std::fabs(*un.d - *autre.d) > kAccord) ||
           (un.dz && autre.dz && std::fabs(*un.dz - *autre.dz) > kAccord + radiansDe(entreFaces) * longueur);
  }

  mesureReduite joindre(std::vector<Pointage>& pointages) {
    const Pointage premier = pointages.front();
    const auto contraire = [&](const Pointage& p) { return contredit(premier, p); };
    if (const auto faux = std::find_if(pointages.begin(), pointages.end(), contraire);
        faux != pointages.end()) {
      m_contredits.push_back(premier.visee->nom);
      if (m_ligneContredite == 0) m_ligneContredite = faux->visee->ligne;
      std::erase_if(pointages, contraire);
    }
    mesureReduite mesure;
    mesure.nom = premier.visee->nom;
    mesure.cle = cleNomLeve(mesure.nom);
    mesure.ligne = premier.visee->ligne;
    mesure.pointages = static_cast<int>(pointages.size());
    for (const Pointage& p : pointages) {
      if (mesure.code.empty()) mesure.code = p.visee->code;
      if (mesure.observation.empty()) mesure.observation = p.visee->observation;
    }
    mesure.h = moyenneDesFaces(pointages, &Pointage::h);
    if (mesure.h) mesure.h = reduireAngle(*mesure.h, kTourGrades);
    mesure.d = moyenneDesFaces(pointages, &Pointage::d);
    mesure.dz = moyenneDesFaces(pointages, &Pointage::dz);
    noterFaces(pointages, mesure);
    return mesure;
  }

  void direContredits() {
    if (m_contredits.empty()) return;
    const bool tous = m_contredits.size() > 2 && 2 * m_contredits.size() > m_mesures.mesures.size();
    m_remarques.douter(
        m_ligneContredite,
        base::formater(L"station « %s » : points visés à deux endroits (%s), le premier pointage compte ; ",
                       m_station.nom, base::enumerer(m_contredits)) +
            (tous ? L"les deux cercles ne s'accordent pas : une autre unité d'angle ?"
                  : L"deux points du même nom ?"));
  }

  /// The mean of each face, relative to a value, then of both. Nothing when there is none.
  struct Moyennes {
    std::optional<double> faces[2];
  };
  static Moyennes moyennes(const std::vector<Pointage>& pointages, std::optional<double> Pointage::*quoi) {
    std::optional<double> origine;
    double sommes[2] = {};
    int nombres[2] = {};
    for (const Pointage& p : pointages) {
      if (!(p.*quoi)) continue;
      if (!origine) origine = p.*quoi;
      const double ecart = *(p.*quoi) - *origine;
      const std::size_t face = p.seconde ? 1 : 0;
      sommes[face] += quoi == &Pointage::h ? std::remainder(ecart, kTourGrades) : ecart;
      ++nombres[face];
    }
    Moyennes m;
    for (std::size_t face = 0; face < 2; ++face)
      if (nombres[face] > 0) m.faces[face] = *origine + sommes[face] / nombres[face];
    return m;
  }
  static std::optional<double> moyenneDesFaces(const std::vector<Pointage>& pointages,
                                               std::optional<double> Pointage::*quoi) {
    const Moyennes m = moyennes(pointages, quoi);
    if (m.faces[0] && m.faces[1]) return (*m.faces[0] + *m.faces[1]) / 2.0;
    return m.faces[0] ? m.faces[0] : m.faces[1];
  }

  void noterFaces(const std::vector<Pointage>& pointages, mesureReduite& mesure) {
    const Moyennes h = moyennes(pointages, &Pointage::h);
    const Moyennes v = moyennes(pointages, &Pointage::v);
    mesure.deuxFaces = h.faces[0] && h.faces[1];
    if (!mesure.deuxFaces) {
      ++m_mesures.faces.uneFace;
      return;
    }
    const double collimation = (*h.faces[1] - *h.faces[0]) / 2.0;
    // The second face's zenith distance stands here as it reads on the first one: a turn less the reading.
    const double index = v.faces[0] && v.faces[1] ? (*v.faces[0] - *v.faces[1]) / 2.0 : 0.0;
    if (std::fabs(collimation) > kPaire || std::fabs(index) > kPaire)
      m_remarques.douter(
          mesure.ligne,
          base::formater(L"« %s » : les deux faces ne s'accordent pas (collimation %.4f gr, index %.4f gr)",
                         mesure.nom, collimation, index));
    ++m_mesures.faces.paires;
    m_mesures.faces.collimation += collimation;
    m_mesures.faces.index += index;
  }

  void finirFaces() {
    facesStation& faces = m_mesures.faces;
    if (faces.paires == 0) {
      faces.uneFace = 0;
      return;
    }
    faces.collimation /= faces.paires;
    faces.index /= faces.paires;
  }

  const miseEnPlace& m_station;
  const optionsLeve& m_options;
  base::Remarques& m_remarques;
  mesuresStation m_mesures;
  std::vector<std::wstring> m_contredits;  ///< names of points whose pointings tell two places
  int m_ligneContredite = 0;
};

}  // namespace

mesuresStation reduireVisees(const miseEnPlace& station, const optionsLeve& options,
                             base::Remarques& remarques) {
  return Reduction(station, options, remarques).reduire();
}

}  // namespace veltora
