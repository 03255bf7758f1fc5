#include "codes/selectionner_code.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edselect.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

#include <memory>
#include <optional>
#include <string>

namespace veltora {
namespace {

/// What is remembered from one choice to the next.
struct Memoire {
  bool designer = false;  ///< pick a block instead of typing
  int dernierCode = 1;
};

Memoire& memoire() {
  static Memoire valeurs;
  return valeurs;
}

enum class Issue { Choisi, Annule, Encore };

std::wstring motCle() {
  std::wstring mot;
  return acedGetInput(mot) == RTNORM ? mot : std::wstring();
}

Issue taper(int& code) {
  acedInitGet(RSG_NOZERO | RSG_NONEG, L"S T");
  const std::wstring invite =
      base::formater(std::wstring(L"\nCode à utiliser / Tous / Sel [%d]"), memoire().dernierCode);
  int saisi = 0;
  switch (acedGetInt(invite.c_str(), &saisi)) {
    case RTNORM:
      code = memoire().dernierCode = saisi;
      return Issue::Choisi;
    case RTNONE:
      code = memoire().dernierCode;
      return Issue::Choisi;
    case RTKWORD:
      if (motCle() == L"S") {
        memoire().designer = true;
        return Issue::Encore;
      }
      code = kTousLesCodes;
      return Issue::Choisi;
    default:
      return Issue::Annule;
  }
}

/// Text of the attribute CODE of a block reference; nothing for any other entity.
std::optional<std::wstring> attributCode(const ads_name entite) {
  AcDbObjectId id;
  if (acdbGetObjectId(id, entite) != Acad::eOk) return std::nullopt;
  const AcDbObjectPointer<AcDbBlockReference> bloc(id);
  if (bloc.openStatus() != Acad::eOk) return std::nullopt;
  const std::unique_ptr<AcDbObjectIterator> attributs(bloc->attributeIterator());
  for (; !attributs->done(); attributs->step()) {
    const AcDbObjectPointer<AcDbAttribute> attribut(attributs->objectId());
    if (attribut.openStatus() == Acad::eOk && base::compareNoCase(attribut->tag(), L"CODE") == 0)
      return std::wstring(attribut->textString());
  }
  return std::nullopt;
}

Issue designer(int& code) {
  acedInitGet(RSG_NONULL, L"C T");
  ads_name entite = {0, 0};
  ads_point point = {0, 0, 0};
  const int resultat = acedEntSel(L"\nCode a utiliser / Tous / Code :", entite, point);
  if (resultat == RTKWORD) {
    if (motCle() == L"C") {
      memoire().designer = false;
      return Issue::Encore;
    }
    code = kTousLesCodes;
    return Issue::Choisi;
  }
  if (resultat == RTERROR) return Issue::Encore;  // nothing at the picked point
  if (resultat != RTNORM) return Issue::Annule;
  const auto texte = attributCode(entite);
  if (!texte) acutPrintf(L"\nCe n'est pas un block Veltora");
  const int lu = texte ? base::lireEntier(*texte) : 0;
  if (lu < 1) return Issue::Encore;
  code = memoire().dernierCode = lu;
  return Issue::Choisi;
}

}  // namespace

bool selectionnerCode(int& code) {
  // Without a drawing there is nothing to pick, and every attempt would fail.
  if (!acdbHostApplicationServices()->workingDatabase()) return false;
  for (;;) {
    const Issue issue = memoire().designer ? designer(code) : taper(code);
    if (issue != Issue::Encore) return issue == Issue::Choisi;
  }
}

}  // namespace veltora
