#include "host/lisp/lisp_joindre.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "codes/selectionner_code.h"
#include "core/block_attributes.h"
#include "core/drawing_space.h"
#include "core/picking.h"
#include "host/lisp/lisp_points.h"
#include "points/attribs_points.h"
#include "points/liste_points_du_dessin.h"

#include <algorithm>
#include <optional>

namespace veltora {
namespace {

/// Numbers are picked at blocks, not typed; kept for the run.
bool& numerosDesignes() {
  static bool designes = false;
  return designes;
}

Answer taperNumero(const ACHAR* invite, int& numero) {
  acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, L"S");
  const int resultat = acedGetInt(base::formater(L"\n%s / Sel :", invite).c_str(), &numero);
  if (resultat == RTKWORD) {
    numerosDesignes() = true;
    return Answer::kAgain;
  }
  if (resultat != RTNORM) return Answer::kEnd;
  if (numero >= 1) return Answer::kGiven;
  acutPrintf(L"\nNumero invalide");
  return Answer::kAgain;
}

/// The number at the beginning of a block's name; nothing for anything but a point block.
std::optional<int> numeroDuBloc(const AcDbObjectId& id) {
  const AcDbObjectPointer<AcDbBlockReference> bloc(id);
  AcString texte;
  if (bloc.openStatus() != Acad::eOk || !lireAttribut(*bloc, etiquettesPoints.numero, texte))
    return std::nullopt;
  return base::lireEntier(texte);
}

Answer designerNumero(const ACHAR* invite, int& numero) {
  acedInitGet(RSG_OTHER | RSG_NONULL, L"N");
  AcDbObjectId id;
  const int resultat = pickEntity(base::formater(L"\n%s / Numero :", invite).c_str(), id);
  if (resultat == RTKWORD) {
    const std::wstring texte = typedText();
    if (texte == L"N") numerosDesignes() = false;
    numero = base::lireEntier(texte);
    return numero >= 1 ? Answer::kGiven : Answer::kAgain;
  }
  if (resultat == RTERROR) return Answer::kAgain;
  if (id.isNull()) return Answer::kEnd;
  const auto lu = numeroDuBloc(id);
  if (!lu) acutPrintf(L"\nCe n'est pas un block Veltora");
  numero = lu.value_or(0);
  return numero >= 1 ? Answer::kGiven : Answer::kAgain;
}

bool choisirNumero(const ACHAR* invite, int& numero) {
  if (!acdbHostApplicationServices()->workingDatabase()) return false;
  for (;;) {
    const Answer reponse = numerosDesignes() ? designerNumero(invite, numero) : taperNumero(invite, numero);
    if (reponse != Answer::kAgain) return reponse == Answer::kGiven;
  }
}

/// Numbers from one to the other in steps, those above the largest of the table left out.
struct suiteNumeros {
  long long debut, fin, pas;

  suiteNumeros(int premier, int dernier, int increment, int plusGrand)
      : debut(premier), fin(dernier), pas(std::abs(static_cast<long long>(increment))) {
    if (debut < fin) {
      fin = std::min<long long>(fin, plusGrand);
      return;
    }
    if (debut > plusGrand) debut -= (debut - plusGrand + pas - 1) / pas * pas;
    pas = -pas;
  }
  [[nodiscard]] bool contient(long long n) const { return pas > 0 ? n <= fin : n >= fin; }
};

std::unique_ptr<AcDbPolyline> joindre(const listePointsDuDessin& table, const suiteNumeros& numeros,
                                      int code) {
  auto polyligne = std::make_unique<AcDbPolyline>();
  AcGePoint3d place;
  int codePoint = 0;
  for (long long n = numeros.debut; numeros.contient(n); n += numeros.pas) {
    if (!table.getBlockPosition(base::formater(L"%d", n).c_str(), place, codePoint)) continue;
    if (code == kTousLesCodes || code == codePoint)
      polyligne->addVertexAt(polyligne->numVerts(), {place.x, place.y}, 0.0, -1.0, -1.0);
  }
  return polyligne;
}

}  // namespace

int lispTopJndre() {
  const listePointsDuDessin* table = tableDeTravail();
  int debut = 0;
  int fin = 0;
  int code = 0;
  int increment = 1;
  if (!table || !choisirNumero(L"\nNumero de départ", debut) || !choisirNumero(L"\nNumero de fin", fin) ||
      !selectionnerCode(code))
    return RTNORM;
  const int reponse = acedGetInt(L"\nIncrement [1] :", &increment);
  if ((reponse != RTNORM && reponse != RTNONE) || debut == fin || increment == 0) return RTNORM;
  auto polyligne = joindre(*table, suiteNumeros(debut, fin, increment, table->getMaxNum()), code);
  if (polyligne->numVerts() >= 2) addToModelSpace(std::move(polyligne));
  return RTNORM;
}

}  // namespace veltora
