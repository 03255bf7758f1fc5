#include "host/tracer.h"

#include "arx/ed/acedads.h"
#include "arx/ed/acutads.h"
#include "base/text.h"
#include "jobs/rendre.h"

namespace veltora {
namespace {

/// @return false when the user leaves
bool demanderTexte(const wchar_t* invite, std::wstring& texte) {
  AcString reponse;
  if (acedGetString(1, invite, reponse) != RTNORM) return false;
  texte = base::trim(reponse);
  return true;
}

bool demanderEchelle(double& echelle) {
  acedInitGet(RSG_NONEG | RSG_NOZERO, L"Ajuster");
  const int reponse = acedGetReal(L"\nDénominateur de l'échelle ou [Ajuster] <Ajuster> : ", &echelle);
  if (reponse != RTNORM) echelle = 0.0;
  return reponse == RTNORM || reponse == RTKWORD || reponse == RTNONE;
}

bool demanderFenetre(std::optional<std::array<double, 4>>& fenetre) {
  ads_point coin = {0.0, 0.0, 0.0};
  ads_point autre = {0.0, 0.0, 0.0};
  acedInitGet(0, L"");
  const int reponse = acedGetPoint(nullptr, L"\nPremier coin de la fenêtre <tout> : ", coin);
  if (reponse == RTNONE) return true;
  if (reponse != RTNORM || acedGetCorner(coin, L"\nCoin opposé : ", autre) != RTNORM) return false;
  fenetre = {coin[0], coin[1], autre[0], autre[1]};
  return true;
}

}  // namespace

void tracer() {
  demandeRendu demande;
  if (!demanderTexte(L"\nPlan à écrire (.pdf, .svg ou .png) : ", demande.fichier) || demande.fichier.empty())
    return;
  if (!demanderEchelle(demande.echelle)) return;
  if (!demanderTexte(L"\nFormat du papier (A4-portrait, A3-paysage...) <au plus juste> : ", demande.format))
    return;
  if (!demanderFenetre(demande.fenetre)) return;
  resultatRendu resultat;
  const bool trace = rendreDessin(demande, resultat);
  for (const base::Remarque& remarque : resultat.remarques) acutPrintf(L"\n%s", remarque.phrase());
  if (!trace) {
    acutPrintf(L"\nPlan impossible : %s.", resultat.erreur);
    return;
  }
  acutPrintf(L"\nPlan %s, %.15g x %.15g mm, au 1/%.15g : %s", resultat.format, resultat.largeur,
             resultat.hauteur, resultat.echelle, demande.fichier);
}

}  // namespace veltora
