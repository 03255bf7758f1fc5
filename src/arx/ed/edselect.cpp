#include "arx/ed/edselect.h"

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edfilter.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edpick.h"
#include "arx/ed/edprompt.h"
#include "arx/ed/edsets.h"
#include "arx/ed/edvars.h"
#include "base/text.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace base = veltora::base;

namespace {

using Ids = std::vector<AcDbObjectId>;

AcGePoint3d pointOf(const ads_real* point) { return {point[0], point[1], point[2]}; }

bool isWord(const std::wstring& line, const wchar_t* word) {
  return base::compareNoCase(base::trimLeft(line, L"_"), word) == 0;
}

bool isEntity(AcDbObjectId id) {
  return id.isLive() && id.objectClass() && id.objectClass()->isDerivedFrom(AcDbEntity::desc());
}

Ids lastVisible(AcDbDatabase& database) {
  const AcDbObjectId last = AcEdPicker(database).lastVisible();
  return last.isNull() ? Ids() : Ids{last};
}

Ids living(const Ids& ids, const AcDbDatabase* database) {
  Ids result;
  std::copy_if(ids.begin(), ids.end(), std::back_inserter(result),
               [&](AcDbObjectId id) { return id.isLive() && id.database() == database; });
  return result;
}

/// Entities that the value of an expression names: a set, a name, or a list of names.
std::optional<Ids> entitiesOfValue(const resbuf* value) {
  if (!value || acutRbKind(value->restype) == RbKind::kNone) {
    if (!value || value->restype != RTLB) return std::nullopt;
  }
  Ids ids;
  bool any = false;
  for (const resbuf* item = value; item; item = item->rbnext) {
    if (acutRbKind(item->restype) != RbKind::kName) continue;
    any = true;
    if (const AcEdSelectionSet* set = acedSelectionSets().find(item->resval.rlname)) {
      const Ids chosen = set->entities();
      ids.insert(ids.end(), chosen.begin(), chosen.end());
    } else if (const AcDbObjectId id = acedIdOf(item->resval.rlname); isEntity(id)) {
      ids.push_back(id);
    }
  }
  return any ? std::optional(ids) : std::nullopt;
}

/// One line of a selection: nothing when it is none.
std::optional<Ids> readSelection(const std::wstring& line, AcDbDatabase& database) {
  const AcEdPicker picker(database);
  if (isWord(line, L"TOUT") || isWord(line, L"ALL")) return picker.visible();
  if (isWord(line, L"DERNIER") || isWord(line, L"LAST")) return lastVisible(database);
  if (isWord(line, L"PRECEDENT") || isWord(line, L"PRÉCÉDENT"))
    return living(acedSelectionSets().previous, &database);
  std::wistringstream words(line);
  std::wstring mode, first, second, more;
  words >> mode;
  const bool window = isWord(mode, L"F");
  if (window || isWord(mode, L"C")) {
    words >> first >> second;
    const std::optional<AcGePoint3d> a = acedReadPoint(first, acedLastPoint());
    const std::optional<AcGePoint3d> b = a ? acedReadPoint(second, *a) : std::nullopt;
    if (!b || words >> more) return std::nullopt;
    return picker.window(*a, *b, !window);
  }
  const std::optional<AcGePoint3d> point = acedReadPoint(line, acedLastPoint());
  if (!point) return std::nullopt;
  const std::optional<AcEdHit> hit = picker.pick(*point, acedPickAperture());
  return hit ? Ids{hit->entity} : Ids();
}

/// Lets a window show what is selected so far.
class Growing {
public:
  explicit Growing(const AcEdSelectionSet& set)
      : m_former(std::exchange(acedSelectionSets().growing, &set)) {}
  ~Growing() { acedSelectionSets().growing = m_former; }
  Growing(const Growing&) = delete;
  Growing& operator=(const Growing&) = delete;

private:
  const AcEdSelectionSet* m_former;
};

/// The questions of an interactive selection.
class Asking {
public:
  Asking(AcDbDatabase& database, const AcEdFilter& filter, bool single)
      : m_database(database), m_filter(filter), m_single(single) {}

  int run(AcEdSelectionSet& set) {
    AcEdPrompt prompt(AcEdPrompt::Kind::kSelection, L"\nSélectionnez les objets : ");
    prompt.allowEmpty();
    prompt.setValueReader([&](const resbuf* value) -> std::optional<AcEdPrompt::Verdict> {
      const std::optional<Ids> ids = entitiesOfValue(value);
      if (!ids) return std::nullopt;
      take(*ids, set);
      return AcEdPrompt::Verdict{};
    });
    const auto reader = [&](const std::wstring& line) {
      const std::optional<Ids> ids = readSelection(line, m_database);
      if (!ids) return AcEdPrompt::refused(L"Un point, TOUT, DERNIER, F x,y x,y ou C x,y x,y est attendu.");
      take(*ids, set);
      return AcEdPrompt::Verdict{};
    };
    int status = RTNORM;
    const Growing shown(set);
    do {
      status = prompt.ask(reader);
    } while (status == RTNORM && !m_single);
    return status == RTNONE ? RTNORM : status;
  }

private:
  void take(const Ids& ids, AcEdSelectionSet& set) {
    std::size_t found = 0;
    for (const AcDbObjectId id : ids) {
      const AcDbObjectPointer<AcDbEntity> entity(id);
      if (entity && m_filter.fits(*entity)) found += set.add(id) ? 1 : 0;
    }
    acutPrintf(L"%d trouvé(s), %d au total\n", static_cast<int>(found), static_cast<int>(set.size()));
  }

  AcDbDatabase& m_database;
  const AcEdFilter& m_filter;
  bool m_single;
};

struct Mode {
  std::wstring name;
  bool single = false;
};

Mode readMode(const ACHAR* text) {
  Mode mode;
  mode.name = base::toUpper(base::trimLeft(base::trim(text ? text : L""), L"_"));
  const std::size_t options = mode.name.find(L':');
  if (options == std::wstring::npos) return mode;
  mode.single = mode.name.find(L'S', options) != std::wstring::npos;
  mode.name.erase(options);
  if (!mode.name.empty() && mode.name.back() == L'+') mode.name.pop_back();
  return mode;
}

bool isOutlineMode(const std::wstring& mode) { return mode == L"WP" || mode == L"CP" || mode == L"F"; }

/// Entities selected by a line through points; nothing when there are too few.
std::optional<Ids> entitiesOfOutline(const std::wstring& mode, const resbuf* chain, AcDbDatabase& database) {
  std::vector<AcGePoint2d> points;
  for (const resbuf* item = chain; item; item = item->rbnext)
    if (acutRbKind(item->restype) == RbKind::kPoint)
      points.emplace_back(item->resval.rpoint[0], item->resval.rpoint[1]);
  const bool closed = mode != L"F";
  if (points.size() < (closed ? 3U : 2U)) return std::nullopt;
  return AcEdPicker(database).outline(AcEdOutline(std::move(points), closed), mode == L"CP");
}

/// Entities of a mode that asks nothing; nothing for a mode that is unknown or lacks its points.
std::optional<Ids> entitiesOfMode(const std::wstring& mode, const ads_real* pt1, const ads_real* pt2,
                                  AcDbDatabase& database) {
  const AcEdPicker picker(database);
  if (mode == L"A") return picker.visible(true);
  if (mode == L"L") return lastVisible(database);
  if (mode == L"P") return living(acedSelectionSets().previous, &database);
  if (mode == L"I") return living(acedSelectionSets().pickFirst, &database);
  if ((mode == L"W" || mode == L"C") && pt1 && pt2)
    return picker.window(pointOf(pt1), pointOf(pt2), mode == L"C");
  if (mode.empty() && pt1) {
    const std::optional<AcEdHit> hit = picker.pick(pointOf(pt1), acedPickAperture());
    return hit ? Ids{hit->entity} : Ids();
  }
  return std::nullopt;
}

}  // namespace

int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter, ads_name set) {
  if (!set) return RTERROR;
  ads_name_clear(set);
  AcDbDatabase* const database = acdbCurDwg();
  const AcEdFilter test(filter);
  if (!database || !test.valid()) return RTERROR;
  const Mode wanted = readMode(mode);
  AcEdSelectionSet found;
  if (wanted.name.empty() && !pt1) {
    const int status = Asking(*database, test, wanted.single).run(found);
    if (status != RTNORM) return status;
  } else if (wanted.name == L"X") {
    for (const AcDbObjectId id : AcEdPicker(*database).fitting(test)) found.add(id);
  } else {
    const auto ids = isOutlineMode(wanted.name)
                         ? entitiesOfOutline(wanted.name, static_cast<const resbuf*>(pt1), *database)
                         : entitiesOfMode(wanted.name, static_cast<const ads_real*>(pt1),
                                          static_cast<const ads_real*>(pt2), *database);
    if (!ids) return RTERROR;
    for (const AcDbObjectId id : *ids) {
      const AcDbObjectPointer<AcDbEntity> entity(id);
      if (entity && test.fits(*entity)) found.add(id);
    }
  }
  if (found.empty()) return RTERROR;
  acedSelectionSets().previous = found.entities();
  acedSelectionSets().make(set) = std::move(found);
  return RTNORM;
}

namespace {

/// One entity asked for, with the point at which it was picked.
struct Picked {
  AcEdHit hit;
  AcGePoint3d point;
};

AcEdHit hitOf(AcDbObjectId id) {
  AcEdHit hit;
  hit.entity = hit.innermost = id;
  return hit;
}

AcEdPrompt::Verdict missed(int cause) {
  acedSetErrno(cause);
  return {true, {}, RTERROR};
}

constexpr int kErrnoPickFailed = 7;
constexpr int kErrnoEmptyAnswer = 52;

/// A name, or a list of a name and a point, as the value of an expression.
std::optional<AcEdPrompt::Verdict> pickValue(const resbuf* value, Picked& picked) {
  const std::optional<Ids> ids = entitiesOfValue(value);
  if (!ids) return std::nullopt;
  if (ids->size() != 1) return AcEdPrompt::refused(L"Une seule entité est attendue.");
  picked.hit = hitOf(ids->front());
  for (const resbuf* item = value; item; item = item->rbnext) {
    if (acutRbKind(item->restype) == RbKind::kPoint) picked.point = pointOf(item->resval.rpoint);
  }
  return AcEdPrompt::Verdict{};
}

AcEdPrompt::Verdict pickLine(const std::wstring& line, AcDbDatabase& database, Picked& picked) {
  if (isWord(line, L"DERNIER") || isWord(line, L"LAST")) {
    const Ids last = lastVisible(database);
    if (last.empty()) return missed(kErrnoPickFailed);
    picked.hit = hitOf(last.front());
    return {};
  }
  const std::optional<AcGePoint3d> point = acedReadPoint(line, acedLastPoint());
  if (!point) return AcEdPrompt::refused(L"Un point sur une entité, ou DERNIER, est attendu.");
  picked.point = *point;
  const ads_point last = {point->x, point->y, point->z};
  acedSetLastPoint(last);
  const std::optional<AcEdHit> hit = AcEdPicker(database).pick(*point, acedPickAperture());
  if (!hit) return missed(kErrnoPickFailed);
  picked.hit = *hit;
  return {};
}

int askEntity(const ACHAR* text, Picked& picked) {
  AcDbDatabase* const database = acdbCurDwg();
  AcEdPrompt prompt(AcEdPrompt::Kind::kEntity, text ? text : L"\nSélectionnez un objet : ");
  if (!database) return RTERROR;
  prompt.setValueReader([&](const resbuf* value) { return pickValue(value, picked); });
  const int status = prompt.ask([&](const std::wstring& line) { return pickLine(line, *database, picked); });
  if (status == RTNONE) acedSetErrno(kErrnoEmptyAnswer);
  return status;
}

void storePoint(const AcGePoint3d& point, ads_point result) {
  result[0] = point.x, result[1] = point.y, result[2] = point.z;
}

}  // namespace

int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point) {
  if (!entity || !point) return RTERROR;
  Picked picked;
  const int status = askEntity(prompt, picked);
  if (status != RTNORM) return status;
  acedNameOf(picked.hit.entity, entity);
  storePoint(picked.point, point);
  return RTNORM;
}

int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, int pickPoint, ads_matrix matrix,
                 resbuf** references) {
  if (!entity || !point) return RTERROR;
  Picked picked;
  if (pickPoint) {
    picked.point = pointOf(point);
    AcDbDatabase* const database = acdbCurDwg();
    const auto hit = database ? AcEdPicker(*database).pick(picked.point, acedPickAperture()) : std::nullopt;
    if (!hit) return missed(kErrnoPickFailed).code;
    picked.hit = *hit;
  } else if (const int status = askEntity(prompt, picked); status != RTNORM) {
    return status;
  }
  acedNameOf(picked.hit.innermost, entity);
  storePoint(picked.point, point);
  for (int row = 0; matrix && row < 4; ++row) {
    for (int column = 0; column < 4; ++column)
      matrix[row][column] = row < 3 ? picked.hit.toWorld.entry[row][column] : (column == 3 ? 1.0 : 0.0);
  }
  if (!references) return RTNORM;
  *references = nullptr;
  resbuf** link = references;
  for (const AcDbObjectId id : picked.hit.references) {
    *link = acutNewRb(RTENAME);
    acedNameOf(id, (*link)->resval.rlname);
    link = &(*link)->rbnext;
  }
  return RTNORM;
}

// ---- Sets

int acedSSLength(const ads_name set, Adesk::Int32* length) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  if (!found || !length) return RTERROR;
  *length = static_cast<Adesk::Int32>(found->size());
  return RTNORM;
}

int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  if (!found || !entity || index < 0) return RTERROR;
  if (static_cast<std::size_t>(index) >= found->size()) return RTERROR;
  acedNameOf(found->at(static_cast<std::size_t>(index)), entity);
  return RTNORM;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name result) {
  if (!result) return RTERROR;
  const bool hasEntity = entity && !ads_name_nil(entity);
  const bool hasSet = set && !ads_name_nil(set);
  const AcDbObjectId id = hasEntity ? acedIdOf(entity) : AcDbObjectId();
  if (hasEntity && (!id.objectClass() || !id.objectClass()->isDerivedFrom(AcDbEntity::desc())))
    return RTERROR;
  if (!hasSet) {
    AcEdSelectionSet& made = acedSelectionSets().make(result);
    if (hasEntity) made.add(id);
    return RTNORM;
  }
  AcEdSelectionSet* found = acedSelectionSets().find(set);
  if (!found || !hasEntity) return RTERROR;
  found->add(id);
  ads_name_set(set, result);
  return RTNORM;
}

int acedSSDel(const ads_name entity, const ads_name set) {
  AcEdSelectionSet* found = acedSelectionSets().find(set);
  return found && found->remove(acedIdOf(entity)) ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name entity, const ads_name set) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  const AcDbObjectId id = acedIdOf(entity);
  return found && !id.isNull() && found->has(id) ? RTNORM : RTERROR;
}

int acedSSFree(const ads_name set) {
  if (!acedSelectionSets().find(set)) return RTERROR;
  acedSelectionSets().sets.erase(set[0]);
  return RTNORM;
}

int acedSSSetFirst(const ads_name, const ads_name pickSet) {
  acedSelectionSets().pickFirst.clear();
  if (!pickSet || ads_name_nil(pickSet)) return RTNORM;
  const AcEdSelectionSet* found = acedSelectionSets().find(pickSet);
  if (!found) return RTERROR;
  acedSelectionSets().pickFirst = found->entities();
  return RTNORM;
}

bool acedIsSelectionSet(const ads_name name) { return acedSelectionSets().find(name) != nullptr; }

std::vector<AcDbObjectId> acedSSEntities(const ads_name set) {
  const AcEdSelectionSet* found = acedSelectionSets().find(set);
  return found ? found->entities() : std::vector<AcDbObjectId>();
}

void acedSSFromEntities(const std::vector<AcDbObjectId>& entities, ads_name set) {
  AcEdSelectionSet& made = acedSelectionSets().make(set);
  for (const AcDbObjectId id : entities) made.add(id);
}

bool acedIsFilter(const resbuf* filter) { return AcEdFilter(filter).valid(); }
bool acedMatchesFilter(const AcDbEntity& entity, const resbuf* filter) {
  return AcEdFilter(filter).fits(entity);
}

void acedForgetDatabase(AcDbDatabase* database) {
  AcEdSelectionSets& all = acedSelectionSets();
  for (auto& [number, set] : all.sets) set.dropDatabase(database);
  const auto isGone = [&](AcDbObjectId id) { return id.database() == database; };
  std::erase_if(all.previous, isGone);
  std::erase_if(all.pickFirst, isGone);
  if (acdbHostApplicationServices()->workingDatabase() != database) return;
  acedRedraw(nullptr, 0);
  const ads_point origin = {0, 0, 0};
  acedSetLastPoint(origin);
}
