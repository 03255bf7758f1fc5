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

/// The scale, or the sheet that has one.
bool demanderEchelle(demandeRendu& demande) {
  acedInitGet(RSG_NONEG | RSG_NOZERO, L"Ajuster Planche");
  const int reponse =
      acedGetReal(L"\nDénominateur de l'échelle ou [Ajuster/Planche] <Ajuster> : ", &demande.echelle);
  if (reponse != RTNORM) demande.echelle = 0.0;
  if (reponse != RTKWORD) return reponse == RTNORM || reponse == RTNONE;
  AcString mot;
  if (acedGetInput(mot) != RTNORM || mot != L"Planche") return mot == L"Ajuster";
  return demanderTexte(L"\nNuméro de la planche, ou nom de la présentation <1> : ", demande.planche) &&
         (!demande.planche.empty() || !(demande.planche = L"1").empty());
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

bool demanderPapier(demandeRendu& demande) {
  if (!demanderEchelle(demande)) return false;
  if (!demande.planche.empty()) return true;
  return demanderTexte(L"\nFormat du papier (A4-portrait, A3-paysage...) <au plus juste> : ",
                       demande.format) &&
         demanderFenetre(demande.fenetre);
}

}  // namespace

void tracer() {
  demandeRendu demande;
  if (!demanderTexte(L"\nPlan à écrire (.pdf, .svg ou .png) : ", demande.fichier) || demande.fichier.empty())
    return;
  if (!demanderPapier(demande)) return;
  resultatRendu resultat;
  const bool trace = rendreDessin(demande, resultat);
  for (const base::Remarque& remarque : resultat.remarques) acutPrintf(L"\n%s", remarque.phrase());
  if (!trace) {
    acutPrintf(L"\nPlan impossible : %s.", resultat.erreur);
    return;
  }
  acutPrintf(L"\nPlan %s, %.15g x %.15g mm", resultat.format, resultat.largeur, resultat.hauteur);
  if (resultat.echelle > 0.0) acutPrintf(L", au 1/%.15g", resultat.echelle);
  acutPrintf(L" : %s", demande.fichier);
}

}  // namespace veltora
