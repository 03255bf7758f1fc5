#include "arx/ap/commands_transform.h"

#include "arx/ap/commands_shared.h"
#include "arx/db/dballents.h"
#include "arx/db/dbclone.h"
#include "arx/db/dbgroupmap.h"
#include "arx/db/dbmirror.h"
#include "arx/ed/eddrag.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edports.h"
#include "arx/ed/edvars.h"

#include <cmath>
#include <optional>
#include <vector>

using arx_commands::askPoint;
using arx_commands::integerVariable;
using arx_commands::keywordGiven;
using arx_commands::selectEditable;

namespace {

using Entities = std::vector<AcDbObjectId>;

constexpr double kSmallestFactor = 1e-9;  // of SCALE; beyond it and its inverse no drawing keeps its digits

/// Refuses the whole command when something among the entities cannot take part.
/// @param what  "Rien n'est déplacé"  @return false when it refused
bool mayBeMoved(const Entities& entities, const wchar_t* what, bool mirrored = false) {
  const std::wstring immovable = acdbImmovable(entities, mirrored);
  if (immovable.empty()) return true;
  acedRefuse(std::wstring(what) + L", ces objets ne peuvent pas l'être : " + immovable + L".");
  return false;
}

/// Does something to each entity and tells how many could not follow.
/// @param copies  they were made for it: those that cannot follow go again  @return how many took it
template <class Work>
int forEach(const Entities& entities, Work work, bool copies = false) {
  int count = 0;
  int left = 0;
  for (const AcDbObjectId id : entities) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity) continue;
    const bool done = work(*entity) == Acad::eOk;
    ++(done ? count : left);
    if (!done && copies) entity->erase();
  }
  if (left > 0) acutPrintf(L"\n%d objet(s) laissé(s) de côté : leur forme ne peut pas suivre", left);
  return count;
}

int moveAll(const Entities& entities, const AcGeMatrix3d& matrix, bool copies = false) {
  const auto move = [&](AcDbEntity& entity) {
    const Acad::ErrorStatus status = entity.transformBy(matrix);
    return status == Acad::eOk ? entity.xDataTransformBy(matrix) : status;
  };
  return forEach(entities, move, copies);
}

AcEdDragSet::Map shiftFrom(const AcGePoint3d& from) {
  return [from](const AcGePoint3d& to) { return AcGeMatrix3d::translation(to - from); };
}

/// Asks for the point to which a base point goes; without one the base point's coordinates are the
/// displacement.
/// @return RTNORM, RTNONE when the coordinates are it, RTCAN when the user leaves
int askSecond(const Entities& entities, const AcGePoint3d& from, AcGeVector3d& shift) {
  const ads_point base = {from.x, from.y, from.z};
  ads_point to;
  const AcEdDragSet dragged(entities, shiftFrom(from));
  acedInitGet(0, nullptr);
  const int status =
      acedGetPoint(base, L"\nDeuxième point, ou Entrée pour prendre le premier comme déplacement : ", to);
  if (status == RTNONE) shift = from.asVector();
  if (status == RTNORM) shift = AcGePoint3d(to[0], to[1], to[2]) - from;
  return status;
}

/// @return false when the user leaves
bool askDisplacement(AcGeVector3d& shift) {
  AcGePoint3d by;
  if (askPoint(L"\nDéplacement : ", by) != RTNORM) return false;
  shift = by.asVector();
  return true;
}

/// The keyword that sets how many copies COPY makes, for this and the next times.
void askCopyMode() {
  std::wstring mode;
  acedInitGet(0, L"Simple Multiple _Single Multiple");
  if (acedGetKword(L"\nMode de copie [Simple/Multiple] : ", mode) != RTNORM) return;
  resbuf value{};
  value.restype = RTSHORT;
  value.resval.rint = mode == L"Single" ? 1 : 0;
  acedSetVar(L"COPYMODE", &value);
}

int copyBy(const Entities& entities, const AcGeVector3d& shift, Entities& copies) {
  copies = acdbCopyEntities(entities);
  return moveAll(copies, AcGeMatrix3d::translation(shift), true);
}

/// Copies to one place after the other. @return how many entities were made
int copyToPlaces(const Entities& entities, const AcGePoint3d& from, bool several) {
  AcGeVector3d shift;
  std::vector<Entities> made(1);
  const int first = askSecond(entities, from, shift);
  if (first != RTNORM && first != RTNONE) return 0;
  int count = copyBy(entities, shift, made.back());
  while (several && first == RTNORM) {
    AcGePoint3d to;
    const AcEdDragSet dragged(entities, shiftFrom(from));
    const int status = askPoint(L"\nPoint suivant ou [Quitter/annUler] <Quitter> : ", to, &from,
                                L"Quitter annUler _Exit Undo");
    if (status == RTNORM) {
      count += copyBy(entities, to - from, made.emplace_back());
    } else if (status == RTKWORD && keywordGiven() == L"Undo") {
      if (made.empty()) continue;
      count -= forEach(made.back(), [](AcDbEntity& entity) { return entity.erase(); });
      made.pop_back();
    } else {
      break;
    }
  }
  return count;
}

/// The answer to a prompt for a number that has "Copier" and "Référence" beside it.
enum class Given { kValue, kReference, kNothing };

/// @param ask  puts the prompt  @param bits  for `acedInitGet`  @param copy  set by the keyword
template <class Ask>
Given askValue(Ask ask, int bits, bool& copy) {
  for (;;) {
    acedInitGet(RSG_NONULL | bits, L"Copier Référence _Copy Reference");
    const int status = ask();
    if (status == RTNORM) return Given::kValue;
    if (status != RTKWORD) return Given::kNothing;
    if (keywordGiven() == L"Reference") return Given::kReference;
    copy = true;
    acutPrintf(L"\nUne copie est faite des objets choisis.");
  }
}

/// The turn from an angle to another, radians, both asked for. @return false when the user leaves
bool askReferenceAngle(const AcGePoint3d& center, double& angle) {
  const ads_point base = {center.x, center.y, center.z};
  double former = 0.0;
  double wanted = 0.0;
  acedInitGet(0, nullptr);
  const int first = acedGetAngle(nullptr, L"\nAngle de référence, en degrés <0> : ", &former);
  if (first != RTNORM && first != RTNONE) return false;
  acedInitGet(RSG_NONULL, L"Points _Points");
  int status = acedGetAngle(base, L"\nNouvel angle, en degrés, ou [Points] : ", &wanted);
  if (status == RTKWORD) {
    acedInitGet(RSG_NONULL, nullptr);
    status = acedGetAngle(nullptr, L"\nPremier point : ", &wanted);
  }
  angle = wanted - former;
  return status == RTNORM;
}

/// The factor from a length to another. @return false when the user leaves
bool askReferenceLength(const AcGePoint3d& center, double& factor) {
  const ads_point base = {center.x, center.y, center.z};
  constexpr int kLength = RSG_NOZERO | RSG_NONEG;
  double former = 1.0;
  double wanted = 1.0;
  acedInitGet(kLength, nullptr);
  const int first = acedGetDist(nullptr, L"\nLongueur de référence <1> : ", &former);
  if (first != RTNORM && first != RTNONE) return false;
  acedInitGet(kLength | RSG_NONULL, L"Points _Points");
  int status = acedGetDist(base, L"\nNouvelle longueur ou [Points] : ", &wanted);
  if (status == RTKWORD) {
    acedInitGet(kLength | RSG_NONULL, nullptr);
    status = acedGetDist(nullptr, L"\nPremier point : ", &wanted);
  }
  factor = wanted / former;
  return status == RTNORM;
}

/// Maps the entities, or copies of them, and says how many.
void finish(const Entities& entities, const AcGeMatrix3d& matrix, bool copy, const wchar_t* done) {
  const int count = moveAll(copy ? acdbCopyEntities(entities) : entities, matrix, copy);
  acutPrintf(L"\n%d objet(s) %s%s\n", count, done, std::wstring(copy ? L" en copie" : L""));
}

/// @return false when the user leaves
bool askAxisEnd(const Entities& entities, const AcGePoint3d& from, AcGePoint3d& to) {
  const AcEdDragSet dragged(entities, [from](const AcGePoint3d& end) -> std::optional<AcGeMatrix3d> {
    if (from.x == end.x && from.y == end.y) return std::nullopt;
    return acdbMirrorMatrix(from, end);
  });
  return askPoint(L"\nDeuxième point de l'axe : ", to, &from) == RTNORM;
}

/// Asks for a value, or for the two that its keyword "Référence" wants. @return false when the user leaves
template <class Ask, class Reference>
bool askOrRefer(Ask ask, int bits, Reference reference, bool& copy) {
  const Given given = askValue(ask, bits, copy);
  return given == Given::kValue || (given == Given::kReference && reference());
}

}  // namespace

namespace arx_commands {

void moveEntities() {
  const std::optional<Entities> entities = selectEditable();
  if (!entities || !mayBeMoved(*entities, L"Rien n'est déplacé")) return;
  AcGePoint3d from;
  AcGeVector3d shift;
  const int status =
      askPoint(L"\nPoint de base ou [Déplacement] : ", from, nullptr, L"Déplacement _Displacement");
  if (status != RTNORM && status != RTKWORD) return;
  const int second = status == RTNORM ? askSecond(*entities, from, shift) : RTNONE;
  if (status == RTKWORD ? !askDisplacement(shift) : second != RTNORM && second != RTNONE) return;
  acutPrintf(L"\n%d objet(s) déplacé(s)\n", moveAll(*entities, AcGeMatrix3d::translation(shift)));
}

void copyEntities() {
  const std::optional<Entities> entities = selectEditable();
  if (!entities || !mayBeMoved(*entities, L"Rien n'est copié")) return;
  bool several = integerVariable(L"COPYMODE") == 0;
  AcGePoint3d from;
  for (;;) {
    const int status = askPoint(L"\nPoint de base ou [Déplacement/mOde/Multiple] : ", from, nullptr,
                                L"Déplacement mOde Multiple _Displacement mOde Multiple");
    if (status == RTNORM) break;
    if (status != RTKWORD) return;
    const std::wstring keyword = keywordGiven();
    AcGeVector3d shift;
    Entities copies;
    if (keyword == L"Displacement") {
      if (!askDisplacement(shift)) return;
      acutPrintf(L"\n%d objet(s) copié(s)\n", copyBy(*entities, shift, copies));
      return;
    }
    if (keyword == L"mOde") askCopyMode();
    several = keyword == L"Multiple" || integerVariable(L"COPYMODE") == 0;
  }
  acutPrintf(L"\n%d objet(s) copié(s)\n", copyToPlaces(*entities, from, several));
}

void rotateEntities() {
  const std::optional<Entities> entities = selectEditable();
  AcGePoint3d center;
  if (!entities || !mayBeMoved(*entities, L"Rien n'est tourné") ||
      askPoint(L"\nPoint de base : ", center) != RTNORM)
    return;
  const ads_point base = {center.x, center.y, center.z};
  bool copy = false;
  double angle = 0.0;
  const auto ask = [&] {
    const AcEdDragSet dragged(*entities, [&](const AcGePoint3d& cursor) {
      const AcGeVector3d arm = cursor - center;
      return AcGeMatrix3d::rotation(std::atan2(arm.y, arm.x), AcGeVector3d::kZAxis, center);
    });
    return acedGetAngle(base, L"\nAngle de rotation, en degrés, ou [Copier/Référence] : ", &angle);
  };
  if (!askOrRefer(
          ask, 0, [&] { return askReferenceAngle(center, angle); }, copy))
    return;
  finish(*entities, AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis, center), copy, L"tourné(s)");
}

void scaleEntities() {
  const std::optional<Entities> entities = selectEditable();
  AcGePoint3d center;
  if (!entities || !mayBeMoved(*entities, L"Rien n'est mis à l'échelle") ||
      askPoint(L"\nPoint de base : ", center) != RTNORM)
    return;
  const ads_point base = {center.x, center.y, center.z};
  bool copy = false;
  double factor = 1.0;
  const auto ask = [&] {
    const AcEdDragSet dragged(*entities, [&](const AcGePoint3d& cursor) -> std::optional<AcGeMatrix3d> {
      const double length = std::hypot(cursor.x - center.x, cursor.y - center.y);
      if (!(length > 0.0)) return std::nullopt;
      return AcGeMatrix3d::scaling(length, center);
    });
    return acedGetDist(base, L"\nFacteur d'échelle ou [Copier/Référence] : ", &factor);
  };
  if (!askOrRefer(
          ask, RSG_NOZERO | RSG_NONEG, [&] { return askReferenceLength(center, factor); }, copy))
    return;
  if (!(factor >= kSmallestFactor && factor <= 1 / kSmallestFactor))
    return acedRefuse(L"Facteur d'échelle démesuré.");
  finish(*entities, AcGeMatrix3d::scaling(factor, center), copy, L"mis à l'échelle");
}

void mirrorEntities() {
  const std::optional<Entities> entities = selectEditable();
  AcGePoint3d from;
  AcGePoint3d to;
  if (!entities || !mayBeMoved(*entities, L"Rien n'est fait en miroir", true) ||
      askPoint(L"\nPremier point de l'axe : ", from) != RTNORM || !askAxisEnd(*entities, from, to))
    return;
  if (from.x == to.x && from.y == to.y) return acedRefuse(L"Les deux points de l'axe sont confondus.");
  std::wstring erase;
  acedInitGet(0, L"Oui Non _Yes No");
  const int status = acedGetKword(L"\nEffacer les objets d'origine ? [Oui/Non] <Non> : ", erase);
  if (status != RTNORM && status != RTNONE) return;
  const Entities targets = erase == L"Yes" ? *entities : acdbCopyEntities(*entities);
  const AcGeMatrix3d mirror = acdbMirrorMatrix(from, to);
  const bool readable = integerVariable(L"MIRRTEXT") == 0;
  acutPrintf(L"\n%d objet(s) en miroir\n",
             forEach(
                 targets, [&](AcDbEntity& entity) { return acdbMirror(entity, mirror, readable); },
                 erase != L"Yes"));
}

}  // namespace arx_commands
