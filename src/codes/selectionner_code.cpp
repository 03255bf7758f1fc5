#include "codes/selectionner_code.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edselect.h"
#include "base/format.h"
#include "base/numbers.h"
#include "core/block_attributes.h"
#include "core/picking.h"

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

Answer taper(int& code) {
  acedInitGet(RSG_NOZERO | RSG_NONEG, L"S T");
  const std::wstring invite =
      base::formater(std::wstring(L"\nCode à utiliser / Tous / Sel [%d]"), memoire().dernierCode);
  int saisi = 0;
  switch (acedGetInt(invite.c_str(), &saisi)) {
    case RTNORM:
      code = memoire().dernierCode = saisi;
      return Answer::kGiven;
    case RTNONE:
      code = memoire().dernierCode;
      return Answer::kGiven;
    case RTKWORD:
      if (typedText() == L"S") {
        memoire().designer = true;
        return Answer::kAgain;
      }
      code = kTousLesCodes;
      return Answer::kGiven;
    default:
      return Answer::kEnd;
  }
}

/// Text of the attribute CODE of a block reference; nothing for any other entity.
std::optional<std::wstring> attributCode(AcDbObjectId id) {
  const AcDbObjectPointer<AcDbBlockReference> bloc(id);
  if (bloc.openStatus() != Acad::eOk) return std::nullopt;
  AcString texte;
  return lireAttribut(*bloc, L"CODE", texte) ? std::optional<std::wstring>(texte) : std::nullopt;
}

Answer designer(int& code) {
  acedInitGet(RSG_NONULL, L"C T");
  AcDbObjectId id;
  const int resultat = pickEntity(L"\nCode a utiliser / Tous / Code :", id);
  if (resultat == RTKWORD) {
    if (typedText() == L"C") {
      memoire().designer = false;
      return Answer::kAgain;
    }
    code = kTousLesCodes;
    return Answer::kGiven;
  }
  if (resultat == RTERROR) return Answer::kAgain;  // nothing at the picked point
  if (resultat != RTNORM) return Answer::kEnd;
  const auto texte = attributCode(id);
  if (!texte) acutPrintf(L"\nCe n'est pas un block Veltora");
  const int lu = texte ? base::lireEntier(*texte) : 0;
  if (lu < 1) return Answer::kAgain;
  code = memoire().dernierCode = lu;
  return Answer::kGiven;
}

}  // namespace

bool selectionnerCode(int& code) {
  // Without a drawing there is nothing to pick, and every attempt would fail.
  if (!acdbHostApplicationServices()->workingDatabase()) return false;
  for (;;) {
    const Answer issue = memoire().designer ? designer(code) : taper(code);
    if (issue != Answer::kAgain) return issue == Answer::kGiven;
  }
}

}  // namespace veltora
