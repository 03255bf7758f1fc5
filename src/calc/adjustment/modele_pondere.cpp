#include "calc/adjustment/modele_pondere.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/network/donnees_reseau.h"

#include <cmath>

namespace veltora {
namespace {

constexpr double kMetresParKilometre = 1000.0;

double carre(double x) { return x * x; }

}  // namespace

const wchar_t* nomDuGenre(genreMesure genre) {
  static constexpr std::array<const wchar_t*, kGenresMesure> kNoms = {
      L"angle", L"direction", L"gisement", L"distance", L"dénivelée", L"X", L"Y", L"Z"};
  return kNoms.at(static_cast<std::size_t>(genre));
}

int reseauPondere::indexDe(const std::wstring& nom) {
  const auto [entree, nouveau] = m_index.try_emplace(base::toUpper(nom), static_cast<int>(points.size()));
  if (nouveau) points.emplace_back().nom = nom;
  return entree->second;
}

int reseauPondere::chercher(const std::wstring& nom) const {
  const auto trouve = m_index.find(base::toUpper(nom));
  return trouve == m_index.end() ? -1 : trouve->second;
}

int reseauPondere::ajouterTour(int station) {
  orientations.push_back(base::Z_ABSENT);
  stationsDesTours.push_back(station);
  return static_cast<int>(orientations.size()) - 1;
}

bool longueurInvraisemblable(const mesurePonderee& denivelee) {
  constexpr double kLongueurMax = 1e5;  // metres
  return denivelee.longueur > kLongueurMax ||
         (!denivelee.prevue && denivelee.longueur < std::abs(denivelee.valeur));
}

double reseauPondere::distance(int a, int b) const {
  return std::hypot(point(b).c[0] - point(a).c[0], point(b).c[1] - point(a).c[1]);
}

double reseauPondere::gisement(int a, int b) const {
  return std::atan2(point(b).c[0] - point(a).c[0], point(b).c[1] - point(a).c[1]);
}

std::wstring texteDoublon(const std::wstring& nom, const std::array<double, 3>& a,
                          const std::array<double, 3>& b) {
  constexpr double kDoublonMax = 0.001;
  for (std::size_t axe = 0; axe < 3; ++axe) {
    if (a.at(axe) == base::Z_ABSENT || b.at(axe) == base::Z_ABSENT) continue;
    const double ecart = std::abs(a.at(axe) - b.at(axe));
    if (ecart > kDoublonMax)
      return base::formater(
          L"le point « %s » est donné deux fois, avec des coordonnées qui se contredisent "
          L"(%.3f m en %s)",
          nom, ecart, std::wstring(1, L"XYZ"[axe]));
  }
  return {};
}

double reseauPondere::coteMoyen() const {
  double somme = 0.0;
  int nombre = 0;
  for (const mesurePonderee& m : mesures) {
    if (m.ecarte || m.genre > genreMesure::distance) continue;
    somme += distance(m.station, m.vise);
    ++nombre;
  }
  return nombre > 0 ? somme / nombre : 0.0;
}

double reseauPondere::valeurCalculee(const mesurePonderee& m) const {
  switch (m.genre) {
    case genreMesure::angle:
      return gisement(m.station, m.vise) - gisement(m.station, m.reference);
    case genreMesure::direction:
      return gisement(m.station, m.vise) - orientations[static_cast<std::size_t>(m.tour)];
    case genreMesure::gisement:
      return gisement(m.station, m.vise);
    case genreMesure::distance:
      return distance(m.station, m.vise);
    case genreMesure::denivelee:
      return point(m.vise).c[2] - point(m.station).c[2];
    default:
      return point(m.station).c.at(static_cast<std::size_t>(m.genre) -
                                   static_cast<std::size_t>(genreMesure::X));
  }
}

double reseauPondere::ecartAuCalcul(const mesurePonderee& m) const {
  const double ecart = m.valeur - valeurCalculee(m);
  return estAngulaire(m.genre) ? dansUnDemiTour(ecart) : ecart;
}

double reseauPondere::ecartAngulaire(const mesurePonderee& m, double propre) const {
  const double s = ecarts.centrageStation / kMillimetres;
  const double v = ecarts.centrageVise / kMillimetres;
  const double d1 = distance(m.station, m.vise);
  double somme = carre(propre / kMilligrades) + carre(v / d1);
  if (m.genre != genreMesure::angle) return std::sqrt(somme + carre(s / d1));
  // The instrument off its mark turns both sides: by the vector between the two bearings' derivatives.
  const double d2 = distance(m.station, m.reference);
  somme += carre(v / d2) + carre(s * distance(m.reference, m.vise) / (d1 * d2));
  return std::sqrt(somme);
}

double reseauPondere::ecartDuGenre(const mesurePonderee& m) const {
  const double kilometre = kMetresParKilometre;
  switch (m.genre) {
    case genreMesure::angle:
      return ecartAngulaire(m, ecarts.angle);
    case genreMesure::direction:
      return ecartAngulaire(m, ecarts.direction);
    case genreMesure::gisement:
      return ecartAngulaire(m, ecarts.gisement);
    case genreMesure::distance: {
      const double longueur = m.prevue ? distance(m.station, m.vise) : m.valeur;
      return std::sqrt(carre(ecarts.distance + ecarts.ppm * longueur / kilometre) +
                       carre(ecarts.centrageStation) + carre(ecarts.centrageVise)) /
             kMillimetres;
    }
    default: {
      double longueur = m.longueur;
      if (longueur == base::Z_ABSENT)
        longueur = enPlan(m.station) && enPlan(m.vise) ? distance(m.station, m.vise) : 0.0;
      const double ecart =
          std::sqrt(carre(ecarts.nivellement) + carre(ecarts.racineKm) * longueur / kilometre);
      return (ecart > 0.0 ? ecart : ecarts.racineKm) / kMillimetres;
    }
  }
}

void reseauPondere::completerEcarts() {
  for (mesurePonderee& m : mesures)
    if (!(m.ecart > 0.0) && !m.ecarte) m.ecart = ecartDuGenre(m);
}

std::wstring reseauPondere::nommer(const mesurePonderee& m) const {
  const auto nom = [this](int i) { return point(i).nom; };
  switch (m.genre) {
    case genreMesure::angle:
      return L"angle en " + nom(m.station) + L" de " + nom(m.reference) + L" vers " + nom(m.vise);
    case genreMesure::X:
    case genreMesure::Y:
    case genreMesure::Z:
      return std::wstring(nomDuGenre(m.genre)) + L" observé de " + nom(m.station);
    default:
      return std::wstring(nomDuGenre(m.genre)) + L" de " + nom(m.station) + L" à " + nom(m.vise);
  }
}

std::wstring texteEcart(genreMesure genre, double valeur) {
  return estAngulaire(genre) ? base::formater(L"%.2f mgr", valeur * kMilligrades)
                             : base::formater(L"%.1f mm", valeur * kMillimetres);
}

}  // namespace veltora
