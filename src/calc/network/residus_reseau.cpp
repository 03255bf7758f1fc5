#include "calc/network/residus_reseau.h"

#include "base/format.h"
#include "base/remarque.h"
#include "calc/angles.h"
#include "calc/network/moindres_carres_alti.h"
#include "calc/network/moindres_carres_plani.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace veltora {
namespace {

constexpr std::size_t kParGenre = 5;
constexpr std::array<const wchar_t*, 3> kGenres = {L"Angle", L"Distance", L"Dénivelée"};

std::wstring numero(int n) { return n < 0 ? L"-" : std::to_wstring(n); }

std::wstring remplir(const std::wstring& texte, std::size_t largeur) {
  return texte + std::wstring(largeur > texte.size() ? largeur - texte.size() : 1, L' ');
}

using Cellules = std::vector<std::wstring>;

Cellules cellules(const donneesReseau& reseau, const residuObservation& r) {
  const ObservationReduite& o = reseau.observations.GetAt(r.observation);
  const bool angle = o.type == ObservationReduite::kAngle;
  const std::wstring reference = !angle ? L"-" : o.reference == -1 ? L"NORD" : reseau.point(o.reference).nom;
  return {kGenres.at(static_cast<std::size_t>(o.type)),
          reseau.point(o.station).nom,
          reference,
          reseau.point(o.vise).nom,
          texteResidu(o.type, r.valeur),
          numero(r.ligne),
          numero(r.observation)};
}

std::vector<std::wstring> tableau(const donneesReseau& reseau,
                                  const std::vector<residuObservation>& residus) {
  if (residus.empty()) return {};
  std::vector<Cellules> rangees = {
      {L"Genre", L"Station", L"Référence", L"Visé", L"Résidu", L"Journal", L"Poids"}};
  for (const residuObservation& r : residus) rangees.push_back(cellules(reseau, r));
  std::vector<std::size_t> largeurs(rangees.front().size());
  for (const Cellules& rangee : rangees)
    for (std::size_t i = 0; i < rangee.size(); ++i) largeurs[i] = std::max(largeurs[i], rangee[i].size() + 2);
  std::vector<std::wstring> lignes;
  for (const Cellules& rangee : rangees) {
    std::wstring ligne;
    for (std::size_t i = 0; i + 1 < rangee.size(); ++i) ligne += remplir(rangee[i], largeurs[i]);
    lignes.push_back(ligne + rangee.back());
  }
  return lignes;
}

/// The largest of one kind first.
std::vector<residuObservation> plusGrands(const donneesReseau& reseau,
                                          const std::vector<residuObservation>& residus, signed char type) {
  std::vector<residuObservation> choisis;
  for (const residuObservation& r : residus)
    if (reseau.observations.GetAt(r.observation).type == type) choisis.push_back(r);
  std::stable_sort(choisis.begin(), choisis.end(),
                   [](const auto& a, const auto& b) { return std::fabs(a.valeur) > std::fabs(b.valeur); });
  if (choisis.size() > kParGenre) choisis.resize(kParGenre);
  return choisis;
}

}  // namespace

recensementReseau recenser(const donneesReseau& reseau) {
  recensementReseau r;
  std::set<std::wstring> vus;
  for (const pointACalculer& p : reseau.points)
    if (vus.insert(p.nom).second) (p.planiConnue ? r.connus : r.aCalculer).push_back(p.nom);
  const std::array<int, 3>& angles = reseau.anglesParUnite;
  const bool plusieurs = std::count(angles.begin(), angles.end(), 0) < 2;
  for (std::size_t mode = 0; mode < kUnitesAngle.size(); ++mode) {
    if (angles[mode] == 0) continue;
    if (!r.unites.empty()) r.unites += L", ";
    r.unites += kUnitesAngle[mode].nom;
    if (plusieurs) r.unites += base::formater(L" (%d)", angles[mode]);
  }
  return r;
}

std::vector<std::wstring> lignesRecensement(const donneesReseau& reseau) {
  const recensementReseau r = recenser(reseau);
  const auto compte = [](const std::vector<std::wstring>& noms, const wchar_t* mot) {
    const std::wstring texte = std::to_wstring(noms.size()) + L" " + mot;
    return noms.empty() ? texte : texte + L" (" + base::enumerer(noms) + L")";
  };
  std::vector<std::wstring> lignes = {L"Points : " +
                                      compte(r.connus, r.connus.size() > 1 ? L"connus" : L"connu") + L", " +
                                      compte(r.aCalculer, L"à calculer")};
  if (!r.unites.empty()) lignes.push_back(L"Angles lus en " + r.unites);
  return lignes;
}

std::vector<residuObservation> residusPlan(const donneesReseau& reseau) {
  std::vector<residuObservation> residus;
  int ligne = 0;
  for (int i = 0; i < reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    if (!compteEnPlan(reseau, o)) continue;
    const double valeur = reseau.valeurCalculee(o) - o.mesure;
    if (std::isfinite(valeur)) residus.push_back({i, ligne, valeur});
    ++ligne;
  }
  return residus;
}

std::vector<residuObservation> residusAltitudes(const donneesReseau& reseau) {
  std::vector<residuObservation> residus;
  int ligne = 0;
  for (int i = 0; i < reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    if (o.type != ObservationReduite::kDenivelee) continue;
    const bool rangee = compteEnAltitude(reseau, o);
    const pointACalculer& station = reseau.point(o.station);
    const pointACalculer& vise = reseau.point(o.vise);
    if (station.enAltitude() && vise.enAltitude())
      residus.push_back({i, rangee ? ligne : -1, vise.Z - station.Z - o.mesure});
    if (rangee) ++ligne;
  }
  return residus;
}

std::wstring texteResidu(signed char type, double valeur) {
  const bool angle = type == ObservationReduite::kAngle;
  std::wstring texte = angle ? base::formater(L"%.2f mgr", valeur * kMilligrades)
                             : base::formater(L"%.1f mm", valeur * kMillimetres);
  // No sign in front of a zero.
  if (texte.front() == L'-' && texte.find_first_of(L"123456789") == std::wstring::npos) texte.erase(0, 1);
  return texte;
}

std::vector<std::wstring> tableauResidus(const donneesReseau& reseau,
                                         const std::vector<residuObservation>& residus) {
  std::vector<residuObservation> choisis;
  for (const signed char type :
       {ObservationReduite::kAngle, ObservationReduite::kDistance, ObservationReduite::kDenivelee}) {
    const std::vector<residuObservation> siens = plusGrands(reseau, residus, type);
    choisis.insert(choisis.end(), siens.begin(), siens.end());
  }
  return tableau(reseau, choisis);
}

std::vector<std::wstring> tableauComplet(const donneesReseau& reseau,
                                         const std::vector<residuObservation>& residus) {
  return tableau(reseau, residus);
}

}  // namespace veltora
