#include "arx/ed/edvars.h"

#include "arx/db/dbmain.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edprompt.h"
#include "base/paths.h"
#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>

namespace base = veltora::base;
namespace fs = std::filesystem;

namespace {

int g_errno = 0;

struct DocumentName {
  std::wstring path;
  std::wstring title;
};
DocumentName& documentName() {
  static auto* const name = new DocumentName;
  return *name;
}

void putText(resbuf& result, const std::wstring& text) {
  result.restype = RTSTR;
  acutNewString(text, result.resval.rstring);
}

void putShort(resbuf& result, int value) {
  result.restype = RTSHORT;
  result.resval.rint = static_cast<short>(value);
}

/// The nearest short integer.
int shortOf(Adesk::Int64 value) { return static_cast<int>(std::clamp<Adesk::Int64>(value, -32768, 32767)); }

void putReal(resbuf& result, double value) {
  result.restype = RTREAL;
  result.resval.rreal = value;
}

void putPoint(resbuf& result, const AcGePoint3d& point) {
  result.restype = RT3DPOINT;
  result.resval.rpoint[0] = point.x, result.resval.rpoint[1] = point.y, result.resval.rpoint[2] = point.z;
}

std::optional<double> numberOf(const resbuf& value) {
  switch (acutRbKind(value.restype)) {
    case RbKind::kReal:
      return std::isfinite(value.resval.rreal) ? std::optional(value.resval.rreal) : std::nullopt;
    case RbKind::kShort:
      return value.resval.rint;
    case RbKind::kLong:
      return value.resval.rlong;
    default:
      return std::nullopt;
  }
}

std::optional<int> integerOf(const resbuf& value) {
  if (acutRbKind(value.restype) == RbKind::kReal) return std::nullopt;
  const std::optional<double> number = numberOf(value);
  if (!number) return std::nullopt;
  return static_cast<int>(*number);
}

std::optional<std::wstring> textOf(const resbuf& value) {
  if (acutRbKind(value.restype) != RbKind::kText || !value.resval.rstring) return std::nullopt;
  return value.resval.rstring;
}

// Variables of the session: whole numbers within limits, with their values at the start.
struct Setting {
  int value;
  int low;
  int high;
};
std::map<std::wstring, Setting>& settings() {
  static auto* const all = new std::map<std::wstring, Setting>{
      {L"ATTDIA", {0, 0, 1}},      {L"ATTREQ", {1, 0, 1}},    {L"BLIPMODE", {0, 0, 1}},
      {L"COPYMODE", {0, 0, 1}},    {L"CMDDIA", {1, 0, 1}},    {L"CMDECHO", {1, 0, 1}},
      {L"EXPERT", {0, 0, 5}},      {L"FILEDIA", {1, 0, 1}},   {L"GRIPS", {1, 0, 2}},
      {L"HIGHLIGHT", {1, 0, 1}},   {L"MENUECHO", {0, 0, 15}}, {L"NOMUTT", {0, 0, 1}},
      {L"OSMODE", {0, 0, 32767}},  {L"PICKADD", {1, 0, 2}},   {L"PICKBOX", {3, 0, 50}},
      {L"PICKFIRST", {1, 0, 1}},   {L"SNAPMODE", {0, 0, 1}},  {L"AUTOSNAP", {63, 0, 127}},
      {L"COORDS", {1, 0, 3}},      {L"DELOBJ", {1, -3, 3}},   {L"DRAGMODE", {2, 0, 2}},
      {L"QAFLAGS", {0, 0, 32767}}, {L"TEXTEVAL", {0, 0, 1}},  {L"UCSICON", {3, 0, 3}},
  };
  return *all;
}

/// Header variables that routines rely on, with the value of a drawing whose file does not have them.
struct HeaderDefault {
  const char* name;
  int code;
  double value;
};
constexpr HeaderDefault kHeaderDefaults[] = {
    {"ANGBASE", 50, 0},    {"ANGDIR", 70, 0},    {"ATTMODE", 70, 1},   {"AUNITS", 70, 0},
    {"AUPREC", 70, 0},     {"CECOLOR", 62, 256}, {"CELTSCALE", 40, 1}, {"DIMSCALE", 40, 1},
    {"DIMZIN", 70, 0},     {"ELEVATION", 40, 0}, {"FILLETRAD", 40, 0}, {"FILLMODE", 70, 1},
    {"INSUNITS", 70, 6},   {"LTSCALE", 40, 1},   {"LUNITS", 70, 2},    {"LUPREC", 70, 4},
    {"MIRRTEXT", 70, 0},   {"ORTHOMODE", 70, 0}, {"PDMODE", 70, 0},    {"PDSIZE", 40, 0},
    {"PLINEGEN", 70, 0},   {"PLINEWID", 40, 0},  {"REGENMODE", 70, 1}, {"SPLINESEGS", 70, 8},
    {"TEXTSIZE", 40, 2.5}, {"THICKNESS", 40, 0}, {"TRACEWID", 40, 1},  {"USERI1", 70, 0},
    {"USERI2", 70, 0},     {"USERI3", 70, 0},    {"USERI4", 70, 0},    {"USERI5", 70, 0},
    {"USERR1", 40, 0},     {"USERR2", 40, 0},    {"USERR3", 40, 0},    {"USERR4", 40, 0},
    {"USERR5", 40, 0},
};

/// @return false when the drawing does not have the variable and there is no value for it
bool headerOf(const AcDbDatabase& database, const std::string& name, DxfTagText& tags) {
  if (database.header(name, tags)) return true;
  for (const HeaderDefault& row : kHeaderDefaults) {
    if (name != row.name) continue;
    if (acutRbKind(row.code) == RbKind::kReal)
      tags.appendReal(row.code, row.value);
    else
      tags.appendInteger(row.code, static_cast<Adesk::Int64>(row.value));
    return true;
  }
  return false;
}

std::wstring recordName(AcDbObjectId id) {
  const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
  return record ? record->name() : std::wstring();
}

AcDbObjectId recordNamed(AcDbObjectId table, const std::wstring& name) {
  const AcDbObjectPointer<AcDbSymbolTable> records(table);
  AcDbObjectId id;
  if (records) records->getIdAt(name.c_str(), id);
  return id;
}

AcDbExtents drawingExtents() {
  AcDbExtents extents;
  AcDbDatabase* const database = acdbCurDwg();
  const AcDbObjectPointer<AcDbBlockTableRecord> space(database ? database->modelSpaceId() : AcDbObjectId());
  if (space) space->getGeomExtents(extents);
  return extents;
}

/// A variable that is computed or has a place of its own. Without `set` it is read-only.
struct Special {
  std::function<bool(resbuf&)> get;
  std::function<bool(const resbuf&)> set = nullptr;
};

/// Current record of a symbol table, by name.
Special recordVariable(AcDbObjectId (AcDbDatabase::*current)(), AcDbObjectId (AcDbDatabase::*table)() const,
                       Acad::ErrorStatus (AcDbDatabase::*change)(AcDbObjectId)) {
  return {[=](resbuf& result) {
            AcDbDatabase* const database = acdbCurDwg();
            if (!database) return false;
            putText(result, recordName((database->*current)()));
            return true;
          },
          [=](const resbuf& value) {
            AcDbDatabase* const database = acdbCurDwg();
            const std::optional<std::wstring> name = textOf(value);
            const AcDbObjectId id =
                database && name ? recordNamed((database->*table)(), *name) : AcDbObjectId();
            return !id.isNull() && (database->*change)(id) == Acad::eOk;
          }};
}

void addDocumentVariables(std::map<std::wstring, Special>& all) {
  all[L"CLAYER"] =
      recordVariable(&AcDbDatabase::clayer, &AcDbDatabase::layerTableId, &AcDbDatabase::setClayer);
  all[L"TEXTSTYLE"] =
      recordVariable(&AcDbDatabase::textstyle, &AcDbDatabase::textStyleTableId, &AcDbDatabase::setTextstyle);
  all[L"DWGNAME"] = {[](resbuf& r) { return putText(r, documentName().title), true; }};
  all[L"DWGTITLED"] = {[](resbuf& r) { return putShort(r, documentName().path.empty() ? 0 : 1), true; }};
  all[L"DWGPREFIX"] = {[](resbuf& r) {
    std::error_code error;
    const fs::path path = base::cheminDuTexte(documentName().path);
    const fs::path folder = path.empty() ? fs::current_path(error) : path.parent_path();
    putText(r, base::texteDuChemin(folder / ""));
    return true;
  }};
  all[L"DBMOD"] = {[](resbuf& r) {
    if (!acdbCurDwg()) return false;
    putShort(r, acdbCurDwg()->isModified() ? 1 : 0);
    return true;
  }};
}

void addViewVariables(std::map<std::wstring, Special>& all) {
  // An empty drawing has its corners the wrong way round, as its files have.
  constexpr double kNone = 1e20;
  all[L"EXTMIN"] = {[](resbuf& r) {
    const AcDbExtents box = drawingExtents();
    return putPoint(r, box.isEmpty() ? AcGePoint3d(kNone, kNone, kNone) : box.minPoint()), true;
  }};
  all[L"EXTMAX"] = {[](resbuf& r) {
    const AcDbExtents box = drawingExtents();
    return putPoint(r, box.isEmpty() ? AcGePoint3d(-kNone, -kNone, -kNone) : box.maxPoint()), true;
  }};
  all[L"VIEWCTR"] = {[](resbuf& r) {
    const AcGePoint2d center = acedView().center;
    return putPoint(r, {center.x, center.y, 0.0}), true;
  }};
  all[L"VIEWSIZE"] = {[](resbuf& r) { return putReal(r, acedView().height), true; }};
  all[L"LASTPOINT"] = {[](resbuf& r) { return putPoint(r, acedLastPoint()), true; },
                       [](const resbuf& value) {
                         if (acutRbKind(value.restype) != RbKind::kPoint) return false;
                         acedSetLastPoint(value.resval.rpoint);
                         return true;
                       }};
  all[L"ERRNO"] = {[](resbuf& r) { return putShort(r, g_errno), true; },
                   [](const resbuf& value) {
                     const std::optional<int> number = integerOf(value);
                     if (number) g_errno = *number;
                     return number.has_value();
                   }};
}

const std::map<std::wstring, Special>& specials() {
  static auto* const all = [] {
    auto* made = new std::map<std::wstring, Special>;
    addDocumentVariables(*made);
    addViewVariables(*made);
    return made;
  }();
  return *all;
}

// Header variables: one group, or the groups of a point.

bool readHeader(const DxfTagText& tags, resbuf& result) {
  DxfTagText::Cursor cursor = tags.tags();
  DxfTag tag;
  if (!cursor.next(tag)) return false;
  const RbKind kind = acutRbKind(tag.code);
  Adesk::Int64 integer = 0;
  double real = 0.0;
  if (kind == RbKind::kText || kind == RbKind::kName) return putText(result, dxfToWide(tag.value)), true;
  if (kind == RbKind::kReal) return dxfParseReal(tag.value, real), putReal(result, real), true;
  if (kind == RbKind::kShort)
    return dxfParseInteger(tag.value, integer), putShort(result, shortOf(integer)), true;
  if (kind == RbKind::kLong) {
    dxfParseInteger(tag.value, integer);
    result.restype = RTLONG;
    result.resval.rlong = static_cast<Adesk::Int32>(integer);
    return true;
  }
  if (kind != RbKind::kPoint) return false;
  double parts[3] = {0, 0, 0};
  int count = 0;
  do dxfParseReal(tag.value, parts[count++]);
  while (count < 3 && cursor.next(tag));
  putPoint(result, {parts[0], parts[1], parts[2]});
  return true;
}

bool writeNumber(const DxfTag& tag, const resbuf& value, bool positive, DxfTagText& made) {
  const std::optional<double> number = numberOf(value);
  if (!number || (positive && *number <= 0)) return false;
  if (acutRbKind(tag.code) == RbKind::kReal) return made.appendReal(tag.code, *number), true;
  const bool shortCode = acutRbKind(tag.code) == RbKind::kShort;
  if (!integerOf(value) || (shortCode && std::abs(*number) > 32767)) return false;
  return made.appendInteger(tag.code, *integerOf(value)), true;
}

bool writeHeader(const std::string& name, const DxfTagText& former, const resbuf& value, DxfTagText& made) {
  DxfTagText::Cursor cursor = former.tags();
  DxfTag tag;
  if (!cursor.next(tag)) return false;
  const bool positive = name == "TEXTSIZE" || name == "LTSCALE" || name == "CELTSCALE" || name == "DIMSCALE";
  switch (acutRbKind(tag.code)) {
    case RbKind::kText: {
      const std::optional<std::wstring> text = textOf(value);
      if (!text || dxfKind(tag.code) == DxfKind::kHandle) return false;
      return made.append(tag.code, dxfFromWide(*text)), true;
    }
    case RbKind::kReal:
    case RbKind::kShort:
    case RbKind::kLong:
      return writeNumber(tag, value, positive, made);
    case RbKind::kPoint: {
      if (acutRbKind(value.restype) != RbKind::kPoint) return false;
      int index = 0;
      do made.appendReal(tag.code, value.resval.rpoint[index++]);
      while (index < 3 && cursor.next(tag));
      return true;
    }
    default:
      return false;
  }
}

}  // namespace

void acedSetErrno(int value) { g_errno = value; }

void acedSetDocumentName(const std::wstring& path, const std::wstring& title) {
  documentName() = {path, title};
}

int acedGetVar(const ACHAR* name, resbuf* result) {
  if (!name || !result) return RTERROR;
  const std::wstring key = base::toUpper(name);
  result->rbnext = nullptr;
  if (const auto special = specials().find(key); special != specials().end())
    return special->second.get(*result) ? RTNORM : RTERROR;
  if (const auto setting = settings().find(key); setting != settings().end())
    return putShort(*result, setting->second.value), RTNORM;
  DxfTagText tags;
  AcDbDatabase* const database = acdbCurDwg();
  if (!database || !headerOf(*database, base::toUtf8(key), tags)) return RTERROR;
  return readHeader(tags, *result) ? RTNORM : RTERROR;
}

int acedSetVar(const ACHAR* name, const resbuf* value) {
  if (!name || !value) return RTERROR;
  const std::wstring key = base::toUpper(name);
  if (const auto special = specials().find(key); special != specials().end())
    return special->second.set && special->second.set(*value) ? RTNORM : RTERROR;
  if (const auto setting = settings().find(key); setting != settings().end()) {
    const std::optional<int> number = integerOf(*value);
    if (!number || *number < setting->second.low || *number > setting->second.high) return RTERROR;
    setting->second.value = *number;
    return RTNORM;
  }
  DxfTagText tags;
  DxfTagText made;
  AcDbDatabase* const database = acdbCurDwg();
  const std::string plain = base::toUtf8(key);
  // The handle seed and the file's version are the database's own.
  if (!database || plain == "HANDSEED" || plain == "ACADVER" || !headerOf(*database, plain, tags))
    return RTERROR;
  if (!writeHeader(plain, tags, *value, made)) return RTERROR;
  database->setHeader(plain, made);
  return RTNORM;
}
