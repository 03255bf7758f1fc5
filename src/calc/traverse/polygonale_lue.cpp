#include "calc/traverse/polygonale_lue.h"

#include "calc/traverse/doutes_polygonale.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"
#include "calc/traverse/polygonale_fermee.h"

namespace veltora {
namespace {

constexpr const wchar_t* kSansDepart =
    L"aucune station de départ lue : le calcul part de X=0, Y=0, Z=0, gisement 0";

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

  [[nodiscard]] base::Remarques doutes(const fermeturesPolygonale& fermetures,
                                       const tolerancesPolygonale& tolerances) const override {
    base::Remarques phrases;
    if (obs.nom.empty()) phrases.douter(kSansDepart);
    phrases.ajouter(doutesFermee(obs, fermetures, tolerances));
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

  [[nodiscard]] base::Remarques doutes(const fermeturesPolygonale& fermetures,
                                       const tolerancesPolygonale& tolerances) const override {
    base::Remarques phrases;
    if (obs.depart.nom.empty()) phrases.douter(kSansDepart);
    if (obs.arrivee.nom.empty())
      phrases.douter(L"aucune station d'arrivée lue : le calcul ferme sur X=0, Y=0, Z=0, gisement 0");
    phrases.ajouter(doutesOuverte(obs, fermetures, tolerances));
    return phrases;
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
