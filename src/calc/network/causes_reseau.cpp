#include "calc/network/causes_reseau.h"

#include "arx/ed/acedads.h"
#include "base/format.h"
#include "calc/angles.h"
#include "calc/network/essai_reseau.h"
#include "calc/network/listing_reseau.h"
#include "calc/network/mesure_fausse.h"
#include "calc/network/moindres_carres_alti.h"
#include "calc/network/moindres_carres_plani.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <utility>

namespace veltora {
namespace {

constexpr std::size_t kCausesMax = 3;
constexpr int kEssaisMax = 60;         // single observations tried, in a small network all of them
constexpr int kEssaisMin = 6;          // and in a large one
constexpr int kPointsCalcules = 3000;  // in between: trials times points

/// Changes the observations or the fixed points of a network. @return false when there is nothing to change
using Modification = std::function<bool(donneesReseau&)>;

struct hypothese {
  std::wstring texte;
  Modification modifier;
};

bool pourChaqueAngle(donneesReseau& reseau, const std::function<bool(ObservationReduite&)>& modifier) {
  bool change = false;
  for (ObservationReduite& o : reseau.observations)
    if (o.type == ObservationReduite::kAngle && modifier(o)) change = true;
  return change;
}

/// Distances that stood on one line with an angle: index of the distance, index of the angle.
std::map<int, int> lignesCompletes(const donneesReseau& reseau) {
  std::map<std::pair<int, int>, int> angles;
  std::map<int, int> paires;
  for (int i = 0; i < reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    if (o.type == ObservationReduite::kAngle) angles.try_emplace({o.station, o.vise}, i);
  }
  for (int i = 0; i < reseau.observations.GetSize(); ++i) {
    const ObservationReduite& o = reseau.observations.GetAt(i);
    if (o.type != ObservationReduite::kDistance) continue;
    if (const auto angle = angles.find({o.station, o.vise}); angle != angles.end())
      paires.emplace(i, angle->second);
  }
  return paires;
}

bool echangerMesures(donneesReseau& reseau, double versRadians) {
  const std::map<int, int> paires = lignesCompletes(reseau);
  for (const auto& [d, a] : paires) {
    ObservationReduite& distance = reseau.observations.GetAt(d);
    ObservationReduite& angle = reseau.observations.GetAt(a);
    const double lue = angle.mesure / versRadians;
    angle.mesure = distance.mesure * versRadians;
    distance.mesure = lue;
  }
  return !paires.empty();
}

/// Columns of the file exchanged: of each angle two of station, reference, target; a distance goes from the
/// station to the target of its line.
bool echangerColonnes(donneesReseau& reseau, int ObservationReduite::*a, int ObservationReduite::*b) {
  const std::map<int, int> paires = lignesCompletes(reseau);
  const bool change = pourChaqueAngle(reseau, [&](ObservationReduite& o) {
    if (o.reference == -1) return false;
    std::swap(o.*a, o.*b);
    return true;
  });
  for (const auto& [d, angle] : paires) {
    const ObservationReduite& ligne = reseau.observations.GetAt(angle);
    reseau.observations.GetAt(d).station = ligne.station;
    reseau.observations.GetAt(d).vise = ligne.vise;
  }
  return change;
}

bool echangerXY(donneesReseau& reseau) {
  for (pointACalculer& p : reseau.points)
    if (p.planiConnue) std::swap(p.X, p.Y);
  return true;
}

/// The unit of all angles; -1 when the file has several or none.
int uniteUnique(const donneesReseau& reseau) {
  const auto& unites = reseau.anglesParUnite;
  if (std::count(unites.begin(), unites.end(), 0) != 2) return -1;
  return static_cast<int>(std::find_if(unites.begin(), unites.end(), [](int n) { return n > 0; }) -
                          unites.begin());
}

std::vector<hypothese> hypotheses(const donneesReseau& reseau) {
  std::vector<hypothese> liste;
  const int unite = uniteUnique(reseau);
  for (int autre = 0; unite >= 0 && autre < 3; ++autre) {
    const double facteur = uniteDeMode(autre).versRadians / uniteDeMode(unite).versRadians;
    if (autre == unite) continue;
    liste.push_back(
        {base::formater(L"les angles, lus en %s, sont en %s", std::wstring(uniteDeMode(unite).nom),
                        std::wstring(uniteDeMode(autre).nom)),
         [facteur](donneesReseau& r) {
           return pourChaqueAngle(r, [facteur](ObservationReduite& o) {
             o.mesure *= facteur;
             return true;
           });
         }});
  }
  liste.push_back({L"les angles tournent dans l'autre sens", [](donneesReseau& r) {
                     return pourChaqueAngle(r, [](ObservationReduite& o) {
                       o.mesure = reduireAngle(-o.mesure, 2.0 * kPi);
                       return true;
                     });
                   }});
  liste.push_back({L"X et Y des points connus sont échangés", echangerXY});
  using O = ObservationReduite;
  for (const auto& [texte, a, b] :
       {std::tuple(L"les colonnes station et référence sont échangées", &O::station, &O::reference),
        std::tuple(L"les colonnes station et visé sont échangées", &O::station, &O::vise),
        std::tuple(L"les colonnes référence et visé sont échangées", &O::reference, &O::vise)}) {
    liste.push_back({texte, [a = a, b = b](donneesReseau& r) { return echangerColonnes(r, a, b); }});
  }
  if (unite >= 0) {
    const double versRadians = uniteDeMode(unite).versRadians;
    liste.push_back({L"les colonnes angle et distance sont échangées",
                     [versRadians](donneesReseau& r) { return echangerMesures(r, versRadians); }});
  }
  return liste;
}

/// What fits of the whole file.
std::vector<std::wstring> causesGenerales(const reseauMoindresCarres& reseau, int attendus) {
  std::vector<std::wstring> causes;
  for (const hypothese& h : hypotheses(reseau)) {
    if (acedUsrBrk() || causes.size() == kCausesMax) break;
    essaiReseau essai(reseau);
    if (h.modifier(essai.reseau) && essai.planConvient(attendus)) causes.push_back(h.texte);
  }
  return causes;
}

/// How much an observation looks like the wrong one.
struct indice {
  int observation = -1;
  double ecart = 0.0;  // `erreursReseau::erreur`
  double fois = 0.0;   // the median of its kind
};

std::vector<indice> indicesDe(const donneesReseau& reseau, const std::vector<residuObservation>& residus,
                              systemeNormal systeme) {
  const erreursReseau erreurs(reseau, residus, std::move(systeme));
  std::vector<indice> indices;
  for (const residuObservation& r : residus) {
    const double ecart = erreurs.erreur(r);
    const double mediane = erreurs.mediane(reseau.observations.GetAt(r.observation).type);
    if (ecart > 0.0) indices.push_back({r.observation, ecart, ecart / mediane});
  }
  return indices;
}

/// Observations to leave out one by one, the likeliest first: in turn the largest of all, in which the
/// heaviest mistakes stand out, and the largest multiples of their kinds, since an angle has no measure in
/// common with a length. How many does not depend on what they show.
std::vector<int> aEssayer(const reseauMoindresCarres& reseau, std::vector<indice> indices) {
  const auto permis = static_cast<std::size_t>(
      std::clamp(kPointsCalcules / std::max(1, reseau.points.GetSize()), kEssaisMin, kEssaisMax));
  std::vector<indice> parGenre = indices;
  std::stable_sort(indices.begin(), indices.end(),
                   [](const indice& a, const indice& b) { return a.ecart > b.ecart; });
  std::stable_sort(parGenre.begin(), parGenre.end(),
                   [](const indice& a, const indice& b) { return a.fois > b.fois; });
  std::vector<int> choisies;
  for (std::size_t i = 0; i < indices.size(); ++i) {
    for (const int observation : {indices[i].observation, parGenre[i].observation}) {
      if (choisies.size() == permis) return choisies;
      if (std::find(choisies.begin(), choisies.end(), observation) == choisies.end())
        choisies.push_back(observation);
    }
  }
  return choisies;
}

/// Without one observation: the cause that it would be, when the others then agree.
struct sansUne {
  bool convient = false;
  mesureFausse faute;
};

sansUne essayerSans(const reseauMoindresCarres& reseau, int observation, bool enPlan, int attendus) {
  essaiReseau essai(reseau);
  const ObservationReduite o = reseau.observations.GetAt(observation);
  essai.reseau.observations.RemoveAt(observation);
  sansUne resultat;
  resultat.convient = enPlan ? essai.planConvient(attendus) : essai.altitudesConviennent(attendus);
  if (resultat.convient)
    resultat.faute = expliquerMesure(essai.reseau, o, essai.pire(o.type), uniteUnique(reseau));
  return resultat;
}

/// Single observations without which the others agree; those that a usual mistake explains before all others.
void causesIsolees(const reseauMoindresCarres& reseau, const std::vector<int>& observations, bool enPlan,
                   int attendus, base::Remarques& remarques) {
  std::vector<std::wstring> expliquees;
  std::vector<std::wstring> autres;
  for (const int observation : observations) {
    if (acedUsrBrk()) return;
    const sansUne essai = essayerSans(reseau, observation, enPlan, attendus);
    if (!essai.convient || !essai.faute.nette) continue;
    std::wstring texte = citerObservation(reseau, reseau.observations.GetAt(observation)) +
                         L" ; sans elle tout s'accorde, et elle vaudrait " + essai.faute.valeur;
    if (essai.faute.faute.empty())
      autres.push_back(texte);
    else
      expliquees.push_back(texte + L" : " + essai.faute.faute);
  }
  const std::vector<std::wstring>& causes = expliquees.empty() ? autres : expliquees;
  if (causes.size() > kCausesMax) {
    remarques.ajouter(
        L"une seule observation fausse suffirait, mais trop peu d'autres la contrôlent pour la désigner");
    return;
  }
  for (const std::wstring& cause : causes) remarques.douter(L"cause probable : " + cause);
}

/// Unknown points that angles or distances name.
int pointsAScruter(const reseauMoindresCarres& reseau) {
  std::set<int> points;
  for (const ObservationReduite& o : reseau.observations) {
    if (o.type == ObservationReduite::kDenivelee) continue;
    for (const int point : {o.station, o.vise, o.reference})
      if (point >= 0 && !reseau.point(point).planiConnue) points.insert(point);
  }
  return static_cast<int>(points.size());
}

}  // namespace

void chercherCausesPlan(const reseauMoindresCarres& reseau, base::Remarques& remarques) {
  const int calcules = pointsEnPlan(reseau);
  const int attendus = calcules > 0 ? calcules : pointsAScruter(reseau);
  if (attendus == 0) return;
  // Angles on both sides of 0 have a doubt of their own; when they are all that is wrong nothing is left to
  // find.
  essaiReseau telQuel(reseau);
  if (telQuel.planConvient(attendus)) return;
  const std::vector<std::wstring> generales = causesGenerales(reseau, attendus);
  for (const std::wstring& cause : generales)
    remarques.douter(L"cause probable : " + cause + L" ; tout s'accorde alors");
  if (!generales.empty() || calcules == 0) return;
  const std::vector<indice> indices =
      telQuel.residus().empty()
          ? indicesDe(reseau, residusPlan(reseau), systemeNormal(0))
          : indicesDe(reseau, telQuel.residus(), systemePlani(telQuel.reseau).lineariser());
  causesIsolees(reseau, aEssayer(reseau, indices), true, attendus, remarques);
}

void chercherCausesAltitudes(const reseauMoindresCarres& reseau, base::Remarques& remarques) {
  const int attendus = std::max(1, pointsEnAltitude(reseau));
  essaiReseau inverse(reseau);
  for (ObservationReduite& o : inverse.reseau.observations)
    if (o.type == ObservationReduite::kDenivelee) o.mesure = -o.mesure;
  if (inverse.altitudesConviennent(attendus)) {
    remarques.douter(
        L"cause probable : les dénivelées sont données du visé vers la station, ou ces colonnes sont "
        L"échangées ; "
        L"tout s'accorde alors");
    return;
  }
  essaiReseau telQuel(reseau);
  telQuel.altitudesConviennent(attendus);
  const std::vector<indice> indices =
      indicesDe(reseau, telQuel.residus(), systemeAlti(telQuel.reseau).lineariser());
  causesIsolees(reseau, aEssayer(reseau, indices), false, attendus, remarques);
}

}  // namespace veltora
