#include "calc/traverse/doutes_polygonale.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/traverse/causes_polygonale.h"
#include "calc/traverse/nivellement.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

/// How near to whole turns a misclosure is, in turns, to be taken for a bearing given in another turn.
constexpr double kProcheDuTour = 0.025;

bool memeNom(std::wstring_view a, std::wstring_view b) {
  return base::compareNoCase(base::trim(a), base::trim(b)) == 0;
}

std::wstring motUnite(int modeAngle) { return std::wstring(uniteDeMode(modeAngle).nom); }

void remarquerVisee(const donneesObs& obs, const std::wstring& connue, const wchar_t* laquelle, bool ferme,
                    base::Remarques& phrases) {
  if (connue.empty() || obs.lignes.empty() || memeNom(obs.lignes.back().nom, connue)) return;
  const std::wstring phrase = base::formater(
      L"la dernière ligne vise « %s » et non la station %s « %s » : c'est le nom qu'aura le point %s",
      obs.lignes.back().nom.c_str(), laquelle, connue.c_str(), laquelle);
  if (ferme)
    phrases.ajouter(phrase);
  else
    phrases.douter(phrase);
}

/// @return whether both close, or nothing can be said
bool douterEnPlan(const fermeturesPolygonale& f, const tolerancesPolygonale& tolerances,
                  std::size_t nombreAngles, int modeAngle, base::Remarques& phrases) {
  if (!std::isfinite(f.Ex + f.Ey + f.E) || !(f.D > 0.0)) {
    phrases.douter(L"coordonnées incalculables (distances nulles ?)");
    return true;
  }
  const double limite = limiteAngulaire(tolerances, nombreAngles, modeAngle);
  const std::wstring unite = motUnite(modeAngle);
  const double ecart = std::hypot(f.Ex, f.Ey);
  const bool angulaire = std::abs(f.E) <= limite;
  const bool lineaire = ecart * tolerances.lineaire <= f.D;
  if (!angulaire) {
    phrases.douter(base::formater(L"fermeture angulaire de %.4f %s pour %d angles, tolérance %.4f %s", f.E,
                                  unite.c_str(), static_cast<int>(nombreAngles), limite, unite.c_str()));
  }
  if (!lineaire) {
    phrases.douter(
        base::formater(L"fermeture linéaire de %.3f pour une longueur de %.3f, soit 1/%.0f, tolérance 1/%.0f",
                       ecart, f.D, std::floor(f.D / ecart), tolerances.lineaire));
  }
  return angulaire && lineaire;
}

void nommerCauses(const cheminement& chemin, int modeAngle, const tolerancesPolygonale& tolerances,
                  base::Remarques& phrases) {
  const causesPolygonale causes = chercherCauses(chemin, modeAngle, tolerances);
  if (causes.meilleures.empty()) {
    phrases.douter(
        L"aucune erreur isolée n'explique la fermeture (unité ou côté des angles, colonnes échangées, ligne "
        L"absente ou en double, un angle ou une distance faux)");
  }
  const wchar_t* titre = causes.probable ? L"cause probable : " : L"cause possible : ";
  for (const causePolygonale& cause : causes.meilleures) phrases.douter(cause.ligne, titre + cause.texte);
  if (causes.autres > 0) {
    phrases.douter(base::formater(causes.autres > 1 ? L"%d autres erreurs isolées fermeraient aussi"
                                                    : L"%d autre erreur isolée fermerait aussi",
                                  causes.autres));
  }
}

/// The misclosure is not reduced: a bearing of arrival in another turn than the sum of the angles shows as
/// whole turns.
void douterDuTour(const polygonaleOuverteObs& obs, double E, base::Remarques& phrases) {
  const double tour = uniteDeMode(obs.modeAngle).tour;
  const double tours = std::round(E / tour);
  if (tours == 0.0 || !(std::abs(E / tour - tours) <= kProcheDuTour)) return;
  const int combien = static_cast<int>(std::min(std::abs(tours), 1e6));
  phrases.douter(base::formater(
      L"l'erreur angulaire de %.4f %s est proche de %d tour%s : le gisement d'arrivée est sans doute à "
      L"donner avec %d tour%s de %s, soit %.5f %s au lieu de %.5f",
      E, motUnite(obs.modeAngle).c_str(), combien, combien > 1 ? L"s entiers" : L" entier", combien,
      combien > 1 ? L"s" : L"", tours > 0.0 ? L"plus" : L"moins", obs.arrivee.gisement + tours * tour,
      motUnite(obs.modeAngle).c_str(), obs.arrivee.gisement));
}

void douterAltitudes(const donneesObs& obs, const fermeturesPolygonale& f, base::Remarques& phrases) {
  const double limite = limiteAltitude(f.D);
  if (!compenseAltitudes(obs.modeNivellement) || std::abs(f.H) <= limite) return;
  phrases.douter(
      base::formater(L"fermeture en Z de %.3f pour une longueur de %.3f, tolérance %.3f", f.H, f.D, limite));
  base::Remarques signes;
  for (std::size_t i = 0; i < obs.lignes.size(); ++i) {
    const double dz = base::lireReel(obs.lignes[i].dz);
    if (std::abs(f.H - 2.0 * dz) > limite) continue;
    base::Remarque signe(
        base::formater(
            L"cause possible : la dénivelée vers « %s » (observation %d), %.3f, a le signe contraire",
            obs.lignes[i].nom.c_str(), static_cast<int>(i + 1), dz),
        obs.lignes[i].ligne);
    signe.douteuse = true;
    signes.ajouter(std::move(signe));
  }
  phrases.citer(signes);
}

}  // namespace

base::Remarques doutesFermee(const polygonaleFermeeObs& obs, const fermeturesPolygonale& fermetures,
                             const tolerancesPolygonale& tolerances) {
  base::Remarques phrases;
  const cheminement chemin(obs);
  const bool ferme = douterEnPlan(fermetures, tolerances, chemin.angles.size(), obs.modeAngle, phrases);
  remarquerVisee(obs, obs.nom, L"de départ", ferme, phrases);
  if (!ferme) nommerCauses(chemin, obs.modeAngle, tolerances, phrases);
  douterAltitudes(obs, fermetures, phrases);
  return phrases;
}

base::Remarques doutesOuverte(const polygonaleOuverteObs& obs, const fermeturesPolygonale& fermetures,
                              const tolerancesPolygonale& tolerances) {
  base::Remarques phrases;
  const cheminement chemin(obs);
  const bool sansTours = chemin.fermeture().tient(tolerances, chemin.angles.size());
  douterDuTour(obs, fermetures.E, phrases);
  // Whole turns that explain all are told alone.
  const bool tours = phrases.douteuses() && sansTours;
  const bool ferme =
      tours || douterEnPlan(fermetures, tolerances, chemin.angles.size(), obs.modeAngle, phrases);
  remarquerVisee(obs, obs.arrivee.nom, L"d'arrivée", ferme, phrases);
  if (!ferme && !sansTours) nommerCauses(chemin, obs.modeAngle, tolerances, phrases);
  douterAltitudes(obs, fermetures, phrases);
  return phrases;
}

}  // namespace veltora
