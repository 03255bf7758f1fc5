#include "calc/traverse/obs_ouverte.h"

#include "base/format.h"
#include "base/lines/line_reader.h"
#include "base/text.h"
#include "calc/obs_jetons.h"

#include <optional>

namespace veltora {
namespace {

/// Tokens of the line of a known station.

class lecteurOuverte : public lecteurObs {
public:
  explicit lecteurOuverte(polygonaleOuverteObs& donnees) : m_donnees(donnees) {}

protected:
  bool motCle(const std::wstring& cle, const std::wstring& valeur) override {
    if (cle != L"FERM") return false;
    m_donnees.fermeture = nombre(valeur);
    return true;
  }

  void paires(const jetonsObs& jetons) override {
    stationConnue* station = nullptr;
    std::optional<double> x, y, z, gisement;
    for (std::size_t i = 0; i + 1 < jetons.size(); i += 2) {
      switch (base::toUpper(jetons[i].front())) {
        case L'D':
          station = &m_donnees.depart;
          station->nom = jetons[i + 1];
          break;
        case L'A':
          station = &m_donnees.arrivee;
          station->nom = jetons[i + 1];
          break;
        case L'X':
          x = nombre(jetons[i + 1]);
          break;
        case L'Y':
          y = nombre(jetons[i + 1]);
          break;
        case L'Z':
          z = nombre(jetons[i + 1]);
          break;
        case L'G':
          gisement = nombre(jetons[i + 1]);
          break;
        default:
          remarquerCle(jetons[i]);
      }
    }
    if (!station) return remarquerIgnoree(jetons[0] + L" " + jetons[1]);
    douterManquantes(jetons);
    station->x = x.value_or(station->x);
    station->y = y.value_or(station->y);
    station->z = z.value_or(station->z);
    station->gisement = gisement.value_or(station->gisement);
  }

private:
  polygonaleOuverteObs& m_donnees;
};

std::wstring ligneStation(const wchar_t* cle, const stationConnue& s) {
  return base::formater(L"\n%s=\"%s\" X= %.5f Y= %.5f Z= %.5f Gis= %.5f", cle, s.nom.c_str(), s.x, s.y, s.z,
                        s.gisement);
}

void ecrireTitreRangees(std::string& sortie) {
  ecrireLigneFichier(sortie, L"\n* Données de la polygonale");
  ecrireLigneFichier(sortie, L"* Nom Station\t\tAngle\t\tDistance\t\tDz");
}

}  // namespace

bool estObsOuverte(std::string_view octets) {
  base::LineReader lignes(octets, kLongueurLigneObs);
  while (lignes.next()) {
    const jetonsObs jetons = decouperLigneObs(lignes.wide());
    if (jetons.size() != kJetonsStation) continue;
    for (std::size_t i = 0; i < jetons.size(); i += 2) {
      const wchar_t lettre = base::toUpper(jetons[i].front());
      if (lettre == L'D' || lettre == L'A') return true;
    }
  }
  return false;
}

base::Remarques lireObsOuverte(std::string_view octets, polygonaleOuverteObs& donnees) {
  donnees.depart = donnees.arrivee = stationConnue();
  // Deliberate (fermeture-gardee): the closing angle of before stays when the file names none.
  lecteurOuverte lecteur(donnees);
  lecteur.lire(octets, donnees);
  return lecteur.remarques();
}

std::string ecrireObsOuverte(const polygonaleOuverteObs& donnees) {
  std::string sortie;
  ecrireLigneFichier(sortie, L"* Fichier de données pour calcul de polygonale Ouverte");
  ecrireLigneFichier(sortie, L"* Station de depart");
  ecrireLigneFichier(sortie, ligneStation(L"Depart", donnees.depart));
  ecrireLigneFichier(sortie, ligneStation(L"Arrivee", donnees.arrivee));
  ecrireLigneFichier(sortie, base::formater(L"\nFermeture: %.4f", donnees.fermeture));
  ecrireUniteAngles(sortie, donnees.modeAngle);
  ecrireModeNivellement(sortie, donnees.modeNivellement);
  ecrireTitreRangees(sortie);
  // Deliberate (bloc-nivellement-double): levelling mode and titles stand a second time in front of the rows.
  sortie += "\n";
  ecrireModeNivellement(sortie, donnees.modeNivellement);
  ecrireTitreRangees(sortie);
  for (const ligneObs& ligne : donnees.lignes) ecrireRangee(sortie, ligne);
  return sortie;
}

int calculerPolygonaleOuverte(const polygonaleOuverteObs& donnees, lignesPolygonale& lignes,
                              base::CArray<double>& X, base::CArray<double>& Y, base::CArray<double>& Z,
                              htmlDocument* rapport, bool dessinerBrute, bool dessinerCompensee,
                              fermeturesPolygonale* fermetures) {
  const stationConnue& d = donnees.depart;
  const stationConnue& a = donnees.arrivee;
  return calculerPolygonaleOuverte(d.nom, d.x, d.y, d.z, d.gisement, a.nom, a.x, a.y, a.z, a.gisement,
                                   donnees.fermeture, donnees.modeNivellement, donnees.modeAngle, lignes, X,
                                   Y, Z, rapport, dessinerBrute, dessinerCompensee, fermetures);
}

}  // namespace veltora
