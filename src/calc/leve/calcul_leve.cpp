#include "calc/leve/calcul_leve.h"

#include "base/format.h"
#include "calc/leve/angles_leve.h"
#include "calc/leve/controle_references.h"
#include "calc/leve/orientation.h"
#include "calc/leve/station_libre.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <unordered_map>

namespace veltora {
namespace {

constexpr double kEcartPlan = 0.05;  // metres, between determinations of one point
constexpr double kEcartAltitude = 0.10;
constexpr double kMemePlace = 0.05;  // metres: two coordinates of one known point
constexpr double kMalPlacee = 0.05;  // metres: standard deviation of a free station

struct Determination {
  double x = 0.0;
  double y = 0.0;
  std::optional<double> z;
  std::size_t station = 0;
};

class Calcul {
public:
  Calcul(const leveTerrain& leve, const std::vector<pointConnuLeve>& canevas, const optionsLeve& options)
      : m_leve(leve), m_options(options) {
    connaitre(canevas);
  }

  resultatCalculLeve calculer() {
    reduire();
    while (avancer()) {
    }
    refuser();
    rassembler();
    dire();
    return std::move(m_resultat);
  }

private:
  void connaitre(const std::vector<pointConnuLeve>& canevas) {
    for (const pointConnuLeve& point : canevas) {
      const auto [ou, neuf] = m_connus.try_emplace(cleNomLeve(point.nom), point);
      if (!neuf && std::hypot(point.x - ou->second.x, point.y - ou->second.y) > kMemePlace)
        m_resultat.remarques.douter(L"le canevas donne « " + point.nom +
                                    L" » deux fois, à des places différentes : la première compte");
    }
  }

  void reduire() {
    int rang = 0;
    for (const miseEnPlace& station : m_leve.stations) {
      stationDuLeve une;
      une.nom = station.nom.empty() ? nomDePosition(station) : station.nom;
      if (une.nom.empty()) une.nom = base::formater(L"ST%d", ++rang);
      une.cle = cleNomLeve(une.nom);
      une.ligne = station.ligne;
      une.mesures = reduireVisees(station, m_options, m_resultat.remarques);
      m_resultat.stations.push_back(std::move(une));
      m_faite.push_back(false);
    }
  }

  /// A station whose position the book tells without a name is the known point that lies there.
  [[nodiscard]] std::wstring nomDePosition(const miseEnPlace& station) const {
    if (!station.position) return {};
    for (const auto& [cle, point] : m_connus)
      if (std::hypot(point.x - station.position->x, point.y - station.position->y) < kMemePlace)
        return point.nom;
    return {};
  }

  /// Known stations first, then those that others sighted; one free station only when there is none of these.
  /// @return false when nothing more can be computed
  bool avancer() {
    for (const auto essai : {&Calcul::parPosition, &Calcul::parLancee, &Calcul::parLibre}) {
      bool avance = false;
      for (std::size_t i = 0; i < m_resultat.stations.size(); ++i) {
        if (m_faite[i] || !(this->*essai)(i)) continue;
        m_faite[i] = avance = true;
        controler(m_resultat.stations[i]);
        rayonner(i);
        if (essai == &Calcul::parLibre) break;
      }
      if (avance) return true;
    }
    return false;
  }

  bool parPosition(std::size_t i) {
    stationDuLeve& station = m_resultat.stations[i];
    const std::optional<positionLeve>& lue = m_leve.stations[i].position;
    if (const auto connu = m_connus.find(station.cle); connu != m_connus.end()) {
      const pointConnuLeve& p = connu->second;
      if (lue && std::hypot(p.x - lue->x, p.y - lue->y) > kMemePlace)
        douterUneFois(
            i, L"le carnet place la station « " + station.nom + L" » ailleurs que le canevas, qui compte");
      return placer(i, origineStation::kCanevas, p.x, p.y, p.z);
    }
    return lue && placer(i, origineStation::kCarnet, lue->x, lue->y, lue->z);
  }

  bool parLancee(std::size_t i) {
    const auto vu = m_determinations.find(m_resultat.stations[i].cle);
    if (vu == m_determinations.end() || vu->second.empty()) return false;
    const Determination& d = vu->second.front();
    return placer(i, origineStation::kLancee, d.x, d.y, d.z);
  }

  bool parLibre(std::size_t i) {
    stationDuLeve& station = m_resultat.stations[i];
    if (m_connus.contains(station.cle) || m_leve.stations[i].position) return false;
    stationLeve place;
    place.references = references(station, false);
    station.refus = placerLibre(place);
    if (!station.refus.empty()) return false;
    station.origine = origineStation::kLibre;
    station.place = std::move(place);
    return true;
  }

  bool placer(std::size_t i, origineStation origine, double x, double y, std::optional<double> z) {
    stationDuLeve& station = m_resultat.stations[i];
    stationLeve place;
    place.x = x;
    place.y = y;
    place.z = z;
    place.references = references(station, true);
    const bool oriente = orienter(place);
    station.refus = oriente ? std::wstring() : L"aucune référence connue avec une direction";
    if (!oriente) return false;
    station.origine = origine;
    station.place = std::move(place);
    return true;
  }

  /// Sights to what is known. Points that other stations computed serve only where no known point is sighted.
  std::vector<referenceLeve> references(const stationDuLeve& station, bool aussiLances) const {
    std::vector<referenceLeve> toutes;
    for (const mesureReduite& mesure : station.mesures.mesures)
      if (const auto connu = m_connus.find(mesure.cle); connu != m_connus.end())
        toutes.push_back({connu->second, mesure, 0.0, {}, {}, {}, {}, false});
    if (!toutes.empty() && (aussiLances || toutes.size() > 1)) return toutes;
    for (const mesureReduite& mesure : station.mesures.mesures) {
      const auto vu = m_determinations.find(mesure.cle);
      if (vu == m_determinations.end() || m_connus.contains(vu->first)) continue;
      const Determination& d = vu->second.front();
      toutes.push_back({{mesure.nom, d.x, d.y, d.z}, mesure, 0.0, {}, {}, {}, {}, false});
    }
    return toutes;
  }

  void controler(stationDuLeve& station) {
    const bool libre = station.origine == origineStation::kLibre;
    controlerReferences(station.place, libre, station.nom, station.ligne, m_resultat.remarques);
    const std::wstring debut = L"station « " + station.nom + L" » : ";
    base::Remarques& remarques = m_resultat.remarques;
    if (libre && station.place.surabondantes == 0)
      remarques.douter(station.ligne, debut + L"station libre sans aucun contrôle");
    else if (libre && station.place.references.size() == 2)
      remarques.ajouter(station.ligne,
                        debut + L"station libre sur deux points, que leur seule distance contrôle");
    if (libre && std::max(station.place.sx.value_or(0.0), station.place.sy.value_or(0.0)) > kMalPlacee)
      remarques.douter(station.ligne, debut + L"station libre mal déterminée");
    if (!libre && station.place.surabondantes == 0) {
      const bool distance = std::any_of(station.place.references.begin(), station.place.references.end(),
                                        [](const referenceLeve& r) { return r.ecartH && r.ecartD; });
      const wchar_t* const texte = distance ? L"une seule direction d'orientation, que sa distance contrôle"
                                            : L"une seule direction d'orientation, sans aucun contrôle";
      if (distance)
        remarques.ajouter(station.ligne, debut + texte);
      else
        remarques.douter(station.ligne, debut + texte);
    }
  }

  /// The points of a station that are not known.
  void rayonner(std::size_t i) {
    const stationDuLeve& station = m_resultat.stations[i];
    const std::wstring cle = station.cle;
    if (!m_connus.contains(cle) && station.origine != origineStation::kLancee) {
      auto& siennes = m_determinations[cle];
      siennes.insert(siennes.begin(), {station.place.x, station.place.y, station.place.z, i});
    }
    for (const mesureReduite& mesure : station.mesures.mesures) {
      const std::wstring vise = mesure.cle;
      if (vise == cle || m_connus.contains(vise) || !mesure.h || !mesure.d) continue;
      const double g = radiansDe(station.place.g0 + *mesure.h);
      Determination d{
          station.place.x + *mesure.d * std::sin(g), station.place.y + *mesure.d * std::cos(g), {}, i};
      if (mesure.dz && station.place.z) d.z = *station.place.z + *mesure.dz;
      m_determinations[vise].push_back(d);
    }
  }

  void refuser() {
    for (std::size_t i = 0; i < m_resultat.stations.size(); ++i) {
      stationDuLeve& station = m_resultat.stations[i];
      if (m_faite[i]) continue;
      if (m_leve.stations[i].nom.empty())
        station.refus += L" ; le carnet ne nomme pas la station : donnez son nom (LIGNE=NOM)";
      m_resultat.remarques.douter(
          station.ligne,
          base::formater(L"station « %s » pas calculée, ses visées (%d) sont perdues : %s", station.nom,
                         static_cast<int>(station.mesures.mesures.size()), station.refus));
    }
  }

  void rassembler() {
    std::set<std::wstring> faits;
    const auto prendre = [&](const std::wstring& nom, const mesureReduite* mesure) {
      const std::wstring cle = cleNomLeve(nom);
      const auto vu = m_determinations.find(cle);
      if (vu == m_determinations.end() || !faits.insert(cle).second) return;
      m_rangs[cle] = m_resultat.points.size();
      m_resultat.points.push_back(moyenne(nom, vu->second));
      if (mesure) coder(m_resultat.points.back(), *mesure);
    };
    for (const stationDuLeve& station : m_resultat.stations) {
      if (!m_connus.contains(station.cle) && m_determinations.contains(station.cle) &&
          std::find(m_resultat.libres.begin(), m_resultat.libres.end(), station.nom) ==
              m_resultat.libres.end())
        m_resultat.libres.push_back(station.nom);
      prendre(station.nom, nullptr);
      for (const mesureReduite& mesure : station.mesures.mesures) prendre(mesure.nom, &mesure);
    }
    for (const stationDuLeve& station : m_resultat.stations)
      for (const mesureReduite& mesure : station.mesures.mesures)
        if (const auto rang = m_rangs.find(mesure.cle); rang != m_rangs.end())
          coder(m_resultat.points[rang->second], mesure);
  }

  /// The first sight that tells a code counts, likewise an observation.
  static void coder(pointDuLeve& point, const mesureReduite& mesure) {
    if (point.code.empty()) point.code = mesure.code;
    if (point.observation.empty()) point.observation = mesure.observation;
  }

  pointDuLeve moyenne(const std::wstring& nom, const std::vector<Determination>& toutes) {
    pointDuLeve point;
    point.nom = nom;
    double z = 0.0;
    int hauteurs = 0;
    for (const Determination& d : toutes) {
      // Relative to the first one, so that one determination is itself to the last digit.
      point.x += (d.x - toutes.front().x) / static_cast<double>(toutes.size());
      point.y += (d.y - toutes.front().y) / static_cast<double>(toutes.size());
      if (d.z) {
        z += *d.z;
        ++hauteurs;
      }
      const std::wstring& station = m_resultat.stations[d.station].nom;
      if (std::find(point.stations.begin(), point.stations.end(), station) == point.stations.end())
        point.stations.push_back(station);
    }
    point.x += toutes.front().x;
    point.y += toutes.front().y;
    if (hauteurs > 0) point.z = z / hauteurs;
    for (const Determination& d : toutes) {
      point.ecart = std::max(point.ecart, std::hypot(d.x - point.x, d.y - point.y));
      if (d.z) point.ecartZ = std::max(point.ecartZ, std::fabs(*d.z - *point.z));
    }
    if (2.0 * point.ecart > kEcartPlan || 2.0 * point.ecartZ > kEcartAltitude) {
      m_ecartes.push_back(nom);
      m_pireEcart = std::max(m_pireEcart, point.ecart);
      m_pireEcartZ = std::max(m_pireEcartZ, point.ecartZ);
    }
    return point;
  }

  void dire() {
    base::Remarques& remarques = m_resultat.remarques;
    std::vector<const stationLeve*> fixes;
    for (const stationDuLeve& station : m_resultat.stations)
      if (station.refus.empty() &&
          (station.origine == origineStation::kCanevas || station.origine == origineStation::kCarnet))
        fixes.push_back(&station.place);
    controlerEchelle(fixes, m_options.facteur, remarques);
    if (!m_ecartes.empty())
      remarques.douter(base::formater(
          L"points dont les déterminations s'écartent de leur moyenne, jusqu'à %.3f en plan et %.3f en "
          L"altitude : %d (%s) ; "
          L"une station fausse, ou deux points du même nom ?",
          m_pireEcart, m_pireEcartZ, static_cast<int>(m_ecartes.size()), base::enumerer(m_ecartes)));
    int sansMire = 0;
    int sansAppareil = 0;
    int uneFace = 0;
    for (const stationDuLeve& station : m_resultat.stations) {
      sansMire += station.mesures.sansMire;
      sansAppareil += station.mesures.sansAppareil;
      uneFace += station.mesures.faces.uneFace;
    }
    if (sansMire > 0)
      remarques.douter(base::formater(L"dénivelées sans hauteur de mire, comptée 0 : %d", sansMire));
    if (sansAppareil > 0)
      remarques.douter(base::formater(L"dénivelées sans hauteur d'appareil, comptée 0 : %d", sansAppareil));
    if (uneFace > 0)
      remarques.ajouter(
          base::formater(L"points visés dans un seul cercle à côté d'autres visés dans les deux, collimation "
                         L"et index y restent : %d",
                         uneFace));
  }

  void douterUneFois(std::size_t i, const std::wstring& texte) {
    if (m_doutees.insert(i).second) m_resultat.remarques.douter(m_resultat.stations[i].ligne, texte);
  }

  const leveTerrain& m_leve;
  const optionsLeve& m_options;
  resultatCalculLeve m_resultat;
  std::unordered_map<std::wstring, pointConnuLeve> m_connus;
  std::unordered_map<std::wstring, std::vector<Determination>> m_determinations;
  std::unordered_map<std::wstring, std::size_t> m_rangs;  ///< of the points of the result
  std::vector<bool> m_faite;
  std::vector<std::wstring> m_ecartes;  ///< points whose determinations do not agree
  double m_pireEcart = 0.0;
  double m_pireEcartZ = 0.0;
  std::set<std::size_t> m_doutees;
};

}  // namespace

resultatCalculLeve calculerLeve(const leveTerrain& leve, const std::vector<pointConnuLeve>& canevas,
                                const optionsLeve& options) {
  return Calcul(leve, canevas, options).calculer();
}

}  // namespace veltora
