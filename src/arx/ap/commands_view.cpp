#include "arx/ap/commands_view.h"

#include "arx/ap/acdocman.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edhelp.h"
#include "arx/ed/edinput.h"

namespace {

void zoomExtents() {
  if (acedZoomExtents() != Acad::eOk) acedPrompt(L"\nLe dessin est vide.\n");
}

void zoomCenter() {
  ads_point center;
  acedInitGet(RSG_NONULL, nullptr);
  if (acedGetPoint(nullptr, L"\nCentre : ", center) != RTNORM) return;
  double height = acedView().height;
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  const int status = acedGetReal(L"\nHauteur de la vue <actuelle> : ", &height);
  if (status == RTNORM || status == RTNONE) acedSetView({center[0], center[1]}, height);
}

}  // namespace

namespace arx_commands {

void zoom() {
  if (!curDoc()) return;
  ads_point first;
  ads_point second;
  acedInitGet(RSG_NONULL, L"Étendue,É Etendue,E Centre,C");
  const int status = acedGetPoint(nullptr, L"\nPremier coin, ou [Étendue/Centre] : ", first);
  if (status == RTKWORD) {
    std::wstring keyword;
    acedGetInput(keyword);
    return keyword == L"Centre" ? zoomCenter() : zoomExtents();
  }
  if (status != RTNORM) return;
  acedInitGet(RSG_NONULL, nullptr);
  if (acedGetCorner(first, L"\nCoin opposé : ", second) != RTNORM) return;
  acedZoomWindow({first[0], first[1]}, {second[0], second[1]});
}

/// Nothing drawn is kept but what was drawn over the drawing.
void regenerate() { acedRedraw(nullptr, 0); }

void help() {
  acedPrompt(
      acedHelpText() +
      L"\nUne expression LISP commence par « ( ». Dans une boîte de dialogue : Légende = valeur, [Bouton], "
      L"et ?\n"
      L"pour la revoir. À une invite : une réponse, un mot-clé, ou *Annuler* (Ctrl-C). Tab complète.\n");
}

}  // namespace arx_commands
