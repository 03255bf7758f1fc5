#include "calc/traverse/polygonale_lue.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"
#include "calc/traverse/polygonale_fermee.h"

#include <cmath>

namespace veltora {
namespace {

/// How near to whole turns a misclosure is, in turns, to be taken for a bearing given in another turn.
constexpr double kProcheDuTour = 0.025;
constexpr const wchar_t* kSansDepart =
    L"aucune station de départ lue : le calcul part de X=0, Y=0, Z=0, gisement 0";

bool memeNom(std::wstring_view a, std::wstring_view b) {
  return base::compareNoCase(base::trim(a), base::trim(b)) == 0;
}

class fermeeLue : public polygonaleLue {
public:
  polygonaleFermeeObs obs;

  [[nodiscard]] bool ouverte() const override { return false; }
  [[nodiscard]] const donneesObs& donnees() const override { return obs; }

  std::vector<stationCalculee> calculer(htmlDocument* rapport, bool brute, bool compensee,
                                        fermeturesPolygonale& fermetures) const override {
    lignesPolygonale lignes = lireLignes(obs.lignes);
    base::CArray<double> X, Y, Z;
    calculerPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, obs.modeNivellement, obs.modeAngle, lignes,
                             X, Y, Z, rapport, brute, compensee, &fermetures);
    return stationsFermee(lignes, X, Y, Z);
  }

  [[nodiscard]] base::Remarques doutes(const fermeturesPolygonale& /*fermetures*/) const override {
    const std::wstring& derniere = obs.lignes.back().nom;
    base::Remarques phrases;
    if (obs.nom.empty())
      phrases.douter(kSansDepart);
    else if (!memeNom(derniere, obs.nom))
      phrases.douter(L"la dernière ligne vise « " + derniere + L" » et non la station de départ « " +
                     obs.nom + L" » : c'est le nom qu'aura le point de départ");
    return phrases;
  }
};

class ouverteLue : public polygonaleLue {
public:
  polygonaleOuverteObs obs;

  [[nodiscard]] bool ouverte() const override { return true; }
  [[nodiscard]] const donneesObs& donnees() const override { return obs; }

  std::vector<stationCalculee> calculer(htmlDocument* rapport, bool brute, bool compensee,
                                        fermeturesPolygonale& fermetures) const override {
    lignesPolygonale lignes = lireLignes(obs.lignes);
    base::CArray<double> X, Y, Z;
    calculerPolygonaleOuverte(obs, lignes, X, Y, Z, rapport, brute, compensee, &fermetures);
    return stationsOuverte(obs.depart, obs.arrivee.z, lignes, X, Y, Z);
  }

  [[nodiscard]] base::Remarques doutes(const fermeturesPolygonale& fermetures) const override {
    base::Remarques phrases;
    if (obs.depart.nom.empty()) phrases.douter(kSansDepart);
    if (obs.arrivee.nom.empty())
      phrases.douter(L"aucune station d'arrivée lue : le calcul ferme sur X=0, Y=0, Z=0, gisement 0");
    const std::wstring& derniere = obs.lignes.back().nom;
    if (!obs.arrivee.nom.empty() && !memeNom(derniere, obs.arrivee.nom)) {
      phrases.douter(L"la dernière ligne vise « " + derniere + L" » et non la station d'arrivée « " +
                     obs.arrivee.nom + L" » : c'est le nom qu'aura le point d'arrivée");
    }
    douterDuTour(fermetures.E, phrases);
    return phrases;
  }

private:
  /// The misclosure is not reduced: a bearing of arrival in another turn than the sum of the angles shows as
  /// whole turns.
  void douterDuTour(double E, base::Remarques& phrases) const {
    const uniteAngle& unite = uniteDeMode(obs.modeAngle);
    const double tours = std::round(E / unite.tour);
    if (tours == 0.0 || !(std::abs(E / unite.tour - tours) <= kProcheDuTour)) return;
    const int combien = static_cast<int>(std::min(std::abs(tours), 1e6));
    phrases.douter(base::formater(
        L"l'erreur angulaire de %.4f %s est proche de %d tour%s : le gisement d'arrivée est sans doute à "
        L"donner "
        L"avec %d tour%s de %s, soit %.5f au lieu de %.5f",
        E, std::wstring(unite.motCle).c_str(), combien, combien > 1 ? L"s entiers" : L" entier", combien,
        combien > 1 ? L"s" : L"", tours > 0.0 ? L"plus" : L"moins", obs.arrivee.gisement + tours * unite.tour,
        obs.arrivee.gisement));
  }
};

}  // namespace

std::unique_ptr<polygonaleLue> lirePolygonale(std::string_view octets, base::Remarques& remarques) {
  if (estObsOuverte(octets)) {
    auto lue = std::make_unique<ouverteLue>();
    remarques = lireObsOuverte(octets, lue->obs);
    return lue;
  }
  auto lue = std::make_unique<fermeeLue>();
  remarques = lireObsFermee(octets, lue->obs);
  return lue;
}

}  // namespace veltora
