#include "drafting/clothoids/commande_clothoide.h"

#include "arx/db/dbcolor.h"
#include "arx/ed/acedads.h"
#include "core/imprimer_doutes.h"
#include "core/picking.h"
#include "drafting/clothoids/clothoide_construite.h"
#include "drafting/clothoids/dessin_clothoide.h"

#include <optional>
#include <string>

namespace veltora {
namespace {

constexpr int kTousLesBits = 15;

infosClothoide& infosDuProcessus() {
  static infosClothoide infos;
  return infos;
}

/// @return false when the user cancels
bool demanderInfos() {
  infosClothoide infos = infosDuProcessus();
  acutPrintf(L"\nMarques : 1 au début, 2 à la fin, 4 tangentes, 8 point au plus près de PI ; leur somme");
  const std::wstring bits = L"\nMarques à dessiner <" + std::to_wstring(infos.infosAlignements) + L"> : ";
  acedInitGet(RSG_NONEG, nullptr);
  const int resultat = acedGetInt(bits.c_str(), &infos.infosAlignements);
  if (resultat != RTNORM && resultat != RTNONE) return false;
  infos.infosAlignements &= kTousLesBits;
  acedInitGet(RSG_NONEG | RSG_NOZERO, nullptr);
  if (!askDistance(base::formater(L"\nHauteur des textes des marques <%.15g> : ", infos.tailleInfos),
                   infos.tailleInfos))
    return false;
  infosDuProcessus() = infos;
  return true;
}

/// @return false when the user cancels
bool demanderRayon(const wchar_t* extremite, double& rayon) {
  while (true) {
    acedInitGet(RSG_NONEG, L"Infos");
    const int resultat = acedGetDist(
        nullptr, (L"\nRayon en " + std::wstring(extremite) + L" ou [Infos] <0 : droite> : ").c_str(), &rayon);
    if (resultat == RTNORM) return true;
    if (resultat == RTNONE) rayon = 0.0;
    if (resultat != RTKWORD) return resultat == RTNONE;
    if (!demanderInfos()) return false;
  }
}

/// @param base  from which a rubber band leads; null for none. @return false when the user leaves
bool demanderPoint(const wchar_t* invite, const AcGePoint2d* base, AcGePoint2d& point) {
  const ads_point depuis = {base ? base->x : 0.0, base ? base->y : 0.0, 0.0};
  ads_point lu = {0.0, 0.0, 0.0};
  if (acedGetPoint(base ? depuis : nullptr, invite, lu) != RTNORM) return false;
  point = {lu[0], lu[1]};
  return true;
}

std::optional<donneesClothoide> demanderDonnees() {
  donneesClothoide d;
  if (!demanderRayon(L"P1", d.r1) || !demanderRayon(L"P2", d.r2)) return std::nullopt;
  if (!demanderPoint(L"\nPremière extrémité P1 : ", nullptr, d.p1) ||
      !demanderPoint(L"\nSeconde extrémité P2 : ", &d.p1, d.p2) ||
      !demanderPoint(L"\nIntersection des tangentes PI : ", &d.p1, d.pi))
    return std::nullopt;
  return d;
}

/// Tells the doubts. @return whether the curve is to be drawn all the same
bool accepterDoutes(const clothoideConstruite& construite) {
  base::Remarques remarques;
  controlerClothoide(construite, remarques);
  if (!remarques.douteuses()) return true;
  imprimerDoutes(remarques);
  acedInitGet(0, L"Oui Non");
  std::wstring reponse;
  return acedGetKword(L"\nLa dessiner malgré tout ? [Oui/Non] <Non> : ", reponse) == RTNORM &&
         reponse == L"Oui";
}

}  // namespace

void commandeClothoide() {
  const std::optional<donneesClothoide> donnees = demanderDonnees();
  if (!donnees) return;
  clothoideConstruite construite;
  if (const wchar_t* const raison = construireClothoide(*donnees, construite)) {
    acutPrintf(L"\nClothoïde impossible : %s.", raison);
    return;
  }
  acutPrintf(L"\n%s", decrireClothoide(construite));
  if (!accepterDoutes(construite)) return;
  const clothoideDessinee dessinee = dessiner(construite.courbe, kColorByLayer, infosDuProcessus());
  if (dessinee.polyligne.isNull())
    acutPrintf(L"La clothoïde ne se dessine pas.");
  else
    acutPrintf(L"Clothoïde dessinée, %d sommets.", dessinee.sommets);
}

}  // namespace veltora
