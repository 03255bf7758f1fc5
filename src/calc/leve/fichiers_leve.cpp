#include "calc/leve/fichiers_leve.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/leve/angles_leve.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <map>
#include <set>

namespace veltora {
namespace {

/// A name as one token of a file, and no comment.
std::wstring jeton(std::wstring nom) {
  const auto interdit = [](wchar_t c) {
    return c == L' ' || c == L'\t' || c == L':' || c == L'=' || c == L'"';
  };
  std::replace_if(nom.begin(), nom.end(), interdit, L'_');
  if (!nom.empty() && nom.front() == L'*') nom.front() = L'_';
  return nom;
}

std::wstring valeur(const std::optional<double>& lue, const wchar_t* format) {
  return lue ? base::formater(format, *lue) : std::wstring(L".");
}

class Polygonales {
public:
  Polygonales(const resultatCalculLeve& resultat, const std::vector<pointConnuLeve>& canevas)
      : m_resultat(resultat) {
    for (const pointConnuLeve& point : canevas) m_connus.try_emplace(cleNomLeve(point.nom), point);
    for (std::size_t i = 0; i < resultat.stations.size(); ++i)
      m_stations.try_emplace(resultat.stations[i].cle, i);
  }

  std::vector<polygonaleDuLeve> chercher() {
    std::vector<std::vector<std::size_t>> chemins;
    for (const auto& [cle, i] : m_stations)
      if (connue(i) && amorce(i, i))
        if (std::vector<std::size_t> chemin = cheminDepuis(i); !chemin.empty())
          chemins.push_back(std::move(chemin));
    std::stable_sort(chemins.begin(), chemins.end(),
                     [](const auto& a, const auto& b) { return a.size() < b.size(); });
    std::vector<polygonaleDuLeve> faites;
    std::set<std::size_t> prises;
    for (const std::vector<std::size_t>& chemin : chemins) {
      const bool libre = std::none_of(chemin.begin() + 1, chemin.end() - 1,
                                      [&](std::size_t i) { return prises.contains(i); });
      if (!libre) continue;
      prises.insert(chemin.begin() + 1, chemin.end() - 1);
      faites.push_back(ecrire(chemin));
    }
    for (const auto& [cle, i] : m_stations) {
      if (!connue(i) || !amorce(i, i)) continue;
      for (auto boucle = boucleDepuis(i, prises); !boucle.empty(); boucle = boucleDepuis(i, prises)) {
        prises.insert(boucle.begin() + 1, boucle.end());
        faites.push_back(ecrireFermee(std::move(boucle)));
      }
    }
    return faites;
  }

private:
  [[nodiscard]] bool connue(std::size_t i) const { return m_connus.contains(m_resultat.stations[i].cle); }
  [[nodiscard]] const mesureReduite* vue(std::size_t de, std::size_t vers) const {
    const std::wstring& cle = m_resultat.stations[vers].cle;
    for (const mesureReduite& mesure : m_resultat.stations[de].mesures.mesures)
      if (mesure.cle == cle && mesure.h && mesure.d) return &mesure;
    return nullptr;
  }
  /// A direction to a known point, other than the neighbour.
  [[nodiscard]] const mesureReduite* amorce(std::size_t i, std::size_t voisin) const {
    for (const mesureReduite& mesure : m_resultat.stations[i].mesures.mesures)
      if (mesure.h && m_connus.contains(mesure.cle) && mesure.cle != m_resultat.stations[i].cle &&
          mesure.cle != m_resultat.stations[voisin].cle)
        return &mesure;
    return nullptr;
  }

  /// The shortest way over unknown stations to another known one; empty for none.
  [[nodiscard]] std::vector<std::size_t> cheminDepuis(std::size_t depart) const {
    std::map<std::size_t, std::size_t> venue{{depart, depart}};
    std::deque<std::size_t> file{depart};
    while (!file.empty()) {
      const std::size_t ici = file.front();
      file.pop_front();
      for (const mesureReduite& mesure : m_resultat.stations[ici].mesures.mesures) {
        const auto la = m_stations.find(mesure.cle);
        if (la == m_stations.end() || venue.contains(la->second)) continue;
        const std::size_t voisine = la->second;
        if (!vue(ici, voisine) || !vue(voisine, ici)) continue;
        if (connue(voisine) && (ici == depart || depart > voisine || !amorce(voisine, ici))) continue;
        venue[voisine] = ici;
        if (!connue(voisine)) {
          file.push_back(voisine);
          continue;
        }
        std::vector<std::size_t> chemin{voisine};
        while (chemin.back() != depart) chemin.push_back(venue[chemin.back()]);
        return {chemin.rbegin(), chemin.rend()};
      }
    }
    return {};
  }

  /// Stations that sight each other with a direction and a distance.
  [[nodiscard]] std::vector<std::size_t> voisines(std::size_t i) const {
    std::vector<std::size_t> toutes;
    for (const mesureReduite& mesure : m_resultat.stations[i].mesures.mesures)
      if (const auto la = m_stations.find(mesure.cle);
          la != m_stations.end() && la->second != i && vue(i, la->second) && vue(la->second, i))
        toutes.push_back(la->second);
    return toutes;
  }

  /// The shortest way around from a known station over unknown ones that stand in no traverse yet, two at
  /// least; the station itself stands first. Empty for none.
  [[nodiscard]] std::vector<std::size_t> boucleDepuis(std::size_t depart,
                                                      const std::set<std::size_t>& prises) const {
    const std::vector<std::size_t> bords = voisines(depart);
    std::vector<std::size_t> meilleure;
    for (const std::size_t debut : bords) {
      if (connue(debut) || prises.contains(debut)) continue;
      std::map<std::size_t, std::size_t> venue{{debut, debut}};
      std::deque<std::size_t> file{debut};
      for (bool fermee = false; !file.empty() && !fermee; file.pop_front()) {
        for (const std::size_t la : voisines(file.front())) {
          if (connue(la) || prises.contains(la) || !venue.try_emplace(la, file.front()).second) continue;
          file.push_back(la);
          if (std::find(bords.begin(), bords.end(), la) == bords.end()) continue;
          std::vector<std::size_t> boucle{la};
          while (boucle.back() != debut) boucle.push_back(venue[boucle.back()]);
          boucle.push_back(depart);
          std::reverse(boucle.begin(), boucle.end());
          if (meilleure.empty() || boucle.size() < meilleure.size()) meilleure = boucle;
          fermee = true;
          break;
        }
      }
    }
    return meilleure;
  }

  /// From the sight back to the sight on, clockwise, grades.
  [[nodiscard]] double angle(std::size_t avant, std::size_t ici, std::size_t apres) const {
    return reduireAngle(*vue(ici, apres)->h - *vue(ici, avant)->h, kTourGrades);
  }

  [[nodiscard]] polygonaleDuLeve ecrireFermee(std::vector<std::size_t> boucle) const {
    const std::size_t n = boucle.size();
    const auto a = [&boucle, n](std::size_t i) { return boucle[i % n]; };
    double somme = 0.0;
    for (std::size_t i = 0; i < n; ++i) somme += angle(a(i + n - 1), a(i), a(i + 1));
    // The closed traverse counts exterior angles: clockwise around.
    if (somme < 200.0 * static_cast<double>(n)) std::reverse(boucle.begin() + 1, boucle.end());
    polygonaleFermeeObs donnees;
    const pointConnuLeve& depart = m_connus.at(m_resultat.stations[a(0)].cle);
    const mesureReduite& reference = *amorce(a(0), a(0));
    const pointConnuLeve& vise = m_connus.at(reference.cle);
    donnees.nom = jeton(depart.nom);
    donnees.x = depart.x;
    donnees.y = depart.y;
    donnees.z = depart.z.value_or(0.0);
    donnees.vo = reduireAngle(
        calculGisement(depart.x, depart.y, vise.x, vise.y, 0) + *vue(a(0), a(1))->h - *reference.h,
        kTourGrades);
    bool altitudes = depart.z.has_value();
    polygonaleDuLeve faite;
    for (std::size_t i = 0; i < n; ++i) {
      const mesureReduite& aller = *vue(a(i), a(i + 1));
      const mesureReduite& retour = *vue(a(i + 1), a(i));
      const bool niveau = aller.dz && retour.dz;
      altitudes = altitudes && niveau;
      donnees.lignes.push_back(
          formaterLigne(jeton(m_resultat.stations[a(i + 1)].nom), angle(a(i + n - 1), a(i), a(i + 1)),
                        (*aller.d + *retour.d) / 2.0, niveau ? (*aller.dz - *retour.dz) / 2.0 : 0.0));
      faite.stations.push_back(m_resultat.stations[a(i)].nom);
    }
    faite.stations.push_back(faite.stations.front());
    donnees.lignes.back().nom = donnees.nom;
    donnees.modeNivellement = altitudes ? 2 : 0;
    faite.contenu = ecrireObsFermee(donnees);
    return faite;
  }

  [[nodiscard]] stationConnue station(std::size_t i) const {
    const pointConnuLeve& point = m_connus.at(m_resultat.stations[i].cle);
    return {jeton(point.nom), point.x, point.y, point.z.value_or(0.0), 0.0};
  }

  [[nodiscard]] polygonaleDuLeve ecrire(const std::vector<std::size_t>& chemin) const {
    polygonaleDuLeve faite;
    polygonaleOuverteObs donnees;
    const std::size_t premiere = chemin.front();
    const std::size_t derniere = chemin.back();
    const mesureReduite& arriere = *amorce(premiere, chemin[1]);
    const mesureReduite& avant = *amorce(derniere, chemin[chemin.size() - 2]);
    donnees.depart = station(premiere);
    donnees.arrivee = station(derniere);
    const pointConnuLeve& a = m_connus.at(arriere.cle);
    const pointConnuLeve& b = m_connus.at(avant.cle);
    donnees.depart.gisement = calculGisement(a.x, a.y, donnees.depart.x, donnees.depart.y, 0);
    donnees.arrivee.gisement = calculGisement(donnees.arrivee.x, donnees.arrivee.y, b.x, b.y, 0);
    double cercle = *arriere.h;
    double gisement = donnees.depart.gisement;
    bool altitudes =
        m_connus.at(m_resultat.stations[premiere].cle).z && m_connus.at(m_resultat.stations[derniere].cle).z;
    for (std::size_t i = 0; i + 1 < chemin.size(); ++i) {
      const mesureReduite& aller = *vue(chemin[i], chemin[i + 1]);
      const mesureReduite& retour = *vue(chemin[i + 1], chemin[i]);
      const double angle = reduireAngle(*aller.h - cercle, kTourGrades);
      altitudes = altitudes && aller.dz && retour.dz;
      donnees.lignes.push_back(formaterLigne(jeton(m_resultat.stations[chemin[i + 1]].nom), angle,
                                             (*aller.d + *retour.d) / 2.0,
                                             aller.dz && retour.dz ? (*aller.dz - *retour.dz) / 2.0 : 0.0));
      gisement += angle - 200.0;
      cercle = *retour.h;
    }
    donnees.fermeture = reduireAngle(*avant.h - cercle, kTourGrades);
    // The closing bearing stands in the turn in which the angles sum up.
    gisement += donnees.fermeture - 200.0;
    donnees.arrivee.gisement += kTourGrades * std::round((gisement - donnees.arrivee.gisement) / kTourGrades);
    donnees.modeNivellement = altitudes ? 2 : 0;
    for (const std::size_t i : chemin) faite.stations.push_back(m_resultat.stations[i].nom);
    faite.contenu = ecrireObsOuverte(donnees);
    return faite;
  }

  const resultatCalculLeve& m_resultat;
  std::map<std::wstring, pointConnuLeve> m_connus;
  std::map<std::wstring, std::size_t> m_stations;  ///< by name, the first setting up of each
};

}  // namespace

std::string reseauDuLeve(const resultatCalculLeve& resultat, const std::vector<pointConnuLeve>& canevas) {
  std::wstring texte = L"XYZ\r\n";
  std::set<std::wstring> vus;
  for (const stationDuLeve& station : resultat.stations) {
    vus.insert(station.cle);
    for (const mesureReduite& mesure : station.mesures.mesures) vus.insert(mesure.cle);
  }
  for (const pointConnuLeve& point : canevas) {
    if (vus.erase(cleNomLeve(point.nom)) == 0) continue;
    texte += base::formater(L"%s %.4f %.4f", jeton(cleNomLeve(point.nom)), point.x, point.y);
    if (point.z) texte += base::formater(L" %.4f", *point.z);
    texte += L"\r\n";
  }
  texte += L"OBS\r\nANGLES GRADES\r\n";
  for (const stationDuLeve& station : resultat.stations) {
    const mesureReduite* origine = nullptr;
    for (const mesureReduite& mesure : station.mesures.mesures) {
      if (mesure.cle == station.cle || (!mesure.h && !mesure.d && !mesure.dz)) continue;
      const bool angle = origine && mesure.h;
      const std::wstring reference = angle ? jeton(origine->cle) : std::wstring(L"NORD");
      const std::wstring lu =
          angle ? base::formater(L"%.5f", reduireAngle(*mesure.h - *origine->h, kTourGrades))
                : std::wstring(L".");
      if (angle || mesure.d || mesure.dz)
        texte += base::formater(L"%s %s %s %s %s %s\r\n", jeton(station.cle), reference, jeton(mesure.cle),
                                lu, valeur(mesure.d, L"%.4f"), valeur(mesure.dz, L"%.4f"));
      if (!origine && mesure.h) origine = &mesure;
    }
  }
  return base::narrow(texte);
}

std::vector<polygonaleDuLeve> polygonalesDuLeve(const resultatCalculLeve& resultat,
                                                const std::vector<pointConnuLeve>& canevas) {
  return Polygonales(resultat, canevas).chercher();
}

}  // namespace veltora
