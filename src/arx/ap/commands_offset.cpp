#include "arx/ap/commands_offset.h"

#include "arx/ap/commands_shared.h"
#include "arx/db/dboffset.h"
#include "arx/ed/acdbads.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edports.h"
#include "arx/ed/edselect.h"

#include <memory>
#include <string>
#include <vector>

namespace arx_commands {

namespace {

/// How parallels are drawn.
struct Offset {
  double distance = 0.0;  ///< 0: through a point
  bool erase = false;     ///< the original goes
};

/// @return false when the user leaves
bool askOffset(Offset& offset) {
  for (;;) {
    acedInitGet(RSG_NONEG | RSG_NOZERO, L"Par Effacer _Through Erase");
    const int status =
        acedGetDist(nullptr, L"\nDistance de décalage ou [Par/Effacer] <Par> : ", &offset.distance);
    if (status == RTNORM) return true;
    offset.distance = 0.0;
    if (status == RTNONE) return true;
    if (status != RTKWORD) return false;
    if (keywordGiven() == L"Through") return true;
    std::wstring erase;
    acedInitGet(0, L"Oui Non _Yes No");
    const int answer = acedGetKword(L"\nEffacer l'objet d'origine ? [Oui/Non] <Non> : ", erase);
    if (answer != RTNORM && answer != RTNONE) return false;
    offset.erase = erase == L"Yes";
  }
}

constexpr int kNothingThere = 7;  // ERRNO of a pick

enum class Choice { kCurve, kUndo, kAgain, kEnd };

Choice refuse(const wchar_t* why) {
  acedRefuse(why);
  return Choice::kAgain;
}

/// Asks for a curve that may be changed.
Choice askCurve(AcDbObjectId& id) {
  ads_name name;
  ads_point where;
  acedInitGet(0, L"Quitter annUler _Exit Undo");
  const int status = acedEntSel(L"\nObjet à décaler ou [Quitter/annUler] <Quitter> : ", name, where);
  if (status == RTKWORD) return keywordGiven() == L"Undo" ? Choice::kUndo : Choice::kEnd;
  if (status == RTERROR && integerVariable(L"ERRNO") == kNothingThere) return refuse(L"Rien à cet endroit.");
  if (status != RTNORM || acdbGetObjectId(id, name) != Acad::eOk) return Choice::kEnd;
  const AcDbObjectPointer<AcDbCurve> curve(id);
  if (!curve) return refuse(L"Cet objet ne peut pas être décalé.");
  if (curve->layerState().locked) return refuse(L"Cet objet est sur un calque verrouillé.");
  return Choice::kCurve;
}

/// Adds the parallels of a curve towards a place. @return what was made; nothing, with a message, when none
/// can be
std::vector<AcDbObjectId> offsetTowards(AcDbObjectId id, const Offset& offset, const AcGePoint3d& place) {
  std::vector<std::unique_ptr<AcDbCurve>> parallels;
  Acad::ErrorStatus status = Acad::eInvalidInput;
  {
    const AcDbObjectPointer<AcDbCurve> curve(id);
    if (curve) {
      const double distance = offset.distance > 0 ? offset.distance : acdbDistanceTo(*curve, place);
      status = acdbOffsetTowards(*curve, distance, place, parallels);
    }
  }
  std::vector<AcDbObjectId> made;
  if (status == Acad::eNotImplementedYet)
    acedRefuse(L"Cet objet ne peut pas être décalé.");
  else if (status != Acad::eOk)
    acedRefuse(L"Pas de parallèle possible à cette distance de ce côté.");
  for (std::unique_ptr<AcDbCurve>& parallel : parallels) made.push_back(add(std::move(parallel)));
  return made;
}

/// One parallel with what it replaced.
struct Done {
  AcDbObjectId original;
  std::vector<AcDbObjectId> made;
};

void erase(AcDbObjectId id, bool erasing) {
  const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
  if (entity) entity->erase(erasing);
}

void takeBack(std::vector<Done>& done) {
  if (done.empty()) return;
  for (const AcDbObjectId id : done.back().made) erase(id, true);
  if (!done.back().original.isLive()) erase(done.back().original, false);
  done.pop_back();
}

}  // namespace

void offsetEntity() {
  Offset offset;
  if (!askOffset(offset)) return;
  std::vector<Done> done;
  for (;;) {
    AcDbObjectId id;
    const Choice choice = askCurve(id);
    if (choice == Choice::kEnd) return;
    if (choice == Choice::kUndo) takeBack(done);
    if (choice != Choice::kCurve) continue;
    AcGePoint3d place;
    if (askPoint(offset.distance > 0 ? L"\nPoint du côté à décaler : " : L"\nPoint de passage : ", place) !=
        RTNORM)
      return;
    std::vector<AcDbObjectId> made = offsetTowards(id, offset, place);
    if (made.empty()) continue;
    if (offset.erase) erase(id, true);
    done.push_back({id, std::move(made)});
  }
}

}  // namespace arx_commands
