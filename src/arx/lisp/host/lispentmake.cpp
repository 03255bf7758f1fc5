#include "arx/lisp/host/lispentmake.h"

#include "arx/db/dbheavypoly.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acdbads.h"
#include "arx/lisp/host/lisphost.h"
#include "base/text.h"

#include <utility>

namespace base = veltora::base;

namespace aclisp {

namespace {

const resbuf* find(const resbuf* chain, int code) {
  while (chain && chain->restype != code) chain = chain->rbnext;
  return chain;
}

std::wstring textOf(const resbuf* chain, int code) {
  const resbuf* const item = find(chain, code);
  const bool text = item && acutRbKind(code) == RbKind::kText && item->resval.rstring;
  return text ? std::wstring(item->resval.rstring) : std::wstring();
}

int shortOf(const resbuf* chain, int code, int fallback) {
  const resbuf* const item = find(chain, code);
  return item && acutRbKind(code) == RbKind::kShort ? item->resval.rint : fallback;
}

double realOf(const resbuf* chain, int code, double fallback) {
  const resbuf* const item = find(chain, code);
  return item && acutRbKind(code) == RbKind::kReal ? item->resval.rreal : fallback;
}

AcGePoint3d pointOf(const resbuf* chain, int code) {
  const resbuf* const item = find(chain, code);
  if (!item || acutRbKind(code) != RbKind::kPoint) return {};
  return {item->resval.rpoint[0], item->resval.rpoint[1], item->resval.rpoint[2]};
}

/// A layer that routines make before they draw: colour, flags, line type.
bool makeLayer(const resbuf* chain) {
  AcDbDatabase* const database = acdbCurDwg();
  const std::wstring name = textOf(chain, 2);
  if (!database || name.empty()) return false;
  AcDbObjectPointer<AcDbSymbolTable> table(database->layerTableId(), AcDb::kForWrite);
  auto record = std::make_unique<AcDbLayerTableRecord>();
  if (!table || table->has(name.c_str()) || record->setName(name.c_str()) != Acad::eOk) return false;
  const int color = shortOf(chain, 62, 7);
  AcCmColor made;
  made.setColorIndex(static_cast<Adesk::UInt16>(color < 0 ? -color : color));
  record->setColor(made);
  record->setIsOff(color < 0);
  record->setIsFrozen((shortOf(chain, 70, 0) & 1) != 0);
  record->setIsLocked((shortOf(chain, 70, 0) & 4) != 0);
  const std::wstring linetype = textOf(chain, 6);
  AcDbObjectId line;
  const AcDbObjectPointer<AcDbSymbolTable> lines(database->linetypeTableId());
  if (!linetype.empty() && (!lines || lines->getIdAt(linetype.c_str(), line) != Acad::eOk)) return false;
  record->setLinetypeObjectId(line.isNull() ? database->continuousLinetype() : line);
  AcDbLayerTableRecord* const added = record.get();
  if (table->add(record.get()) != Acad::eOk) return false;
  static_cast<void>(record.release());
  added->close();
  return true;
}

void setCommon(AcDbEntity& entity, const resbuf* chain) {
  const std::wstring layer = textOf(chain, 8);
  if (!layer.empty()) entity.setLayer(acdbCurDwg()->recordOf("LAYER", layer));
  if (const resbuf* color = find(chain, 62); color && color->resval.rint >= 0)
    entity.setColorIndex(static_cast<Adesk::UInt16>(color->resval.rint));
}

template <class Polyline, class Vertex, class Place>
bool buildPolyline(const std::vector<std::shared_ptr<resbuf>>& parts, Place place, ads_name made) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(acdbCurDwg()->modelSpaceId(), AcDb::kForWrite);
  auto polyline = std::make_unique<Polyline>();
  AcDbObjectId id;
  if (!space || space->appendAcDbEntity(id, polyline.get()) != Acad::eOk) return false;
  Polyline* const added = polyline.release();
  const resbuf* const head = parts.front().get();
  setCommon(*added, head);
  added->setClosed((shortOf(head, 70, 0) & 1) != 0);
  bool good = true;
  for (std::size_t i = 1; i < parts.size() && good; ++i) {
    auto vertex = std::make_unique<Vertex>();
    place(*vertex, parts[i].get());
    AcDbObjectId part;
    good = added->appendVertex(part, vertex.get()) == Acad::eOk;
    if (!good) break;
    Vertex* const resident = vertex.release();
    setCommon(*resident, parts[i].get());
    resident->close();
  }
  if (!good) added->erase();
  added->close();
  acdbGetAdsName(*reinterpret_cast<ads_name*>(made), id);
  return good;
}

bool finishPolyline(const std::vector<std::shared_ptr<resbuf>>& parts, ads_name made) {
  constexpr int kInSpace = 8;
  if (!acdbCurDwg()) return false;
  if (shortOf(parts.front().get(), 70, 0) & kInSpace) {
    const auto place = [](AcDb3dPolylineVertex& vertex, const resbuf* chain) {
      vertex.setPosition(pointOf(chain, 10));
    };
    return buildPolyline<AcDb3dPolyline, AcDb3dPolylineVertex>(parts, place, made);
  }
  const auto place = [](AcDb2dVertex& vertex, const resbuf* chain) {
    vertex.setPosition(pointOf(chain, 10));
    vertex.setBulge(realOf(chain, 42, 0.0));
  };
  return buildPolyline<AcDb2dPolyline, AcDb2dVertex>(parts, place, made);
}

/// A free name for a block that routines leave without one: "*U1".
std::wstring anonymousName(const AcDbSymbolTable& blocks) {
  for (int number = 1;; ++number) {
    std::wstring name = L"*U" + std::to_wstring(number);
    if (!blocks.has(name.c_str())) return name;
  }
}

/// An empty block of this name; the null id when it cannot be.
AcDbObjectId makeBlock(const resbuf* head, std::wstring& name) {
  const AcDbObjectPointer<AcDbBlockTable> blocks(acdbCurDwg()->blockTableId(), AcDb::kForWrite);
  name = textOf(head, 2);
  if (!blocks || name.empty()) return {};
  if (name[0] == L'*') name = anonymousName(*blocks);
  auto record = std::make_unique<AcDbBlockTableRecord>();
  AcDbObjectId id;
  if (blocks->has(name.c_str()) || record->setName(name.c_str()) != Acad::eOk) return {};
  record->setOrigin(pointOf(head, 10));
  if (blocks->add(id, record.get()) != Acad::eOk) return {};
  record.release()->close();
  return id;
}

/// What was made so far, when a later part does not fit.
void eraseAll(const std::vector<AcDbObjectId>& objects) {
  for (const AcDbObjectId id : objects) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    if (object) object->erase();
  }
}

/// Makes the parts behind the head in an owner, all or none. @return false when one does not fit
bool makeParts(const std::vector<std::shared_ptr<resbuf>>& parts, AcDbObjectId owner) {
  std::vector<AcDbObjectId> made;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    AcDbObjectId id;
    if (acdbEntMakeIn(parts[i].get(), owner, id) != RTNORM) {
      made.push_back(owner);
      eraseAll(made);
      return false;
    }
    made.push_back(id);
  }
  return true;
}

bool finishBlock(const std::vector<std::shared_ptr<resbuf>>& parts, std::wstring& block) {
  std::wstring name;
  if (!acdbCurDwg()) return false;
  const AcDbObjectId id = makeBlock(parts.front().get(), name);
  if (id.isNull() || !makeParts(parts, id)) return false;
  block = name;
  return true;
}

bool finishReference(const std::vector<std::shared_ptr<resbuf>>& parts, ads_name made) {
  AcDbObjectId id;
  if (!acdbCurDwg() || acdbEntMakeIn(parts.front().get(), acdbCurDwg()->modelSpaceId(), id) != RTNORM)
    return false;
  if (!makeParts(parts, id)) return false;
  acdbGetAdsName(*reinterpret_cast<ads_name*>(made), id);
  return true;
}

std::wstring typeOf(const std::shared_ptr<resbuf>& chain) { return base::toUpper(textOf(chain.get(), 0)); }

/// Whether a list begins what later lists go on with.
bool isHead(const std::shared_ptr<resbuf>& chain, const std::wstring& type) {
  return type == L"POLYLINE" || type == L"BLOCK" || (type == L"INSERT" && shortOf(chain.get(), 66, 0) == 1);
}

/// The last part has come: everything enters the drawing.
bool finish(const std::vector<std::shared_ptr<resbuf>>& parts, const std::wstring& type, ads_name made,
            std::wstring& block) {
  if (parts.empty()) return false;
  const std::wstring head = typeOf(parts.front());
  if ((head == L"BLOCK") != (type == L"ENDBLK")) return false;
  if (head == L"BLOCK") return finishBlock(parts, block);
  return head == L"INSERT" ? finishReference(parts, made) : finishPolyline(parts, made);
}

/// Whether a part goes with what was begun.
bool belongs(const std::wstring& head, const std::wstring& type) {
  if (head == L"BLOCK")
    return type != L"VERTEX" && type != L"ATTRIB" && type != L"POLYLINE" && type != L"BLOCK";
  return type == (head == L"INSERT" ? L"ATTRIB" : L"VERTEX");
}

}  // namespace

void forgetParts(Interpreter& in) { hostState(in).parts.clear(); }

bool makeEntity(Interpreter& in, const Value& list, ads_name made, std::wstring& block) {
  std::vector<std::shared_ptr<resbuf>>& parts = hostState(in).parts;
  std::shared_ptr<resbuf> chain(groupChain(in, list), acutRelRb);
  const std::wstring type = typeOf(chain);
  if (type == L"LAYER") return makeLayer(chain.get());
  if (type == L"SEQEND" || type == L"ENDBLK") return finish(std::exchange(parts, {}), type, made, block);
  if (!parts.empty() && belongs(typeOf(parts.front()), type)) {
    parts.push_back(chain);
    return true;
  }
  parts.clear();
  if (isHead(chain, type)) {
    parts = {chain};
    return true;
  }
  if (type == L"VERTEX" || type == L"ATTRIB") return false;
  return acdbEntMake(chain.get()) == RTNORM && acdbEntLast(made) == RTNORM;
}

}  // namespace aclisp
