#include "arx/ed/edgroups.h"

#include "arx/db/dbents.h"
#include "arx/db/dbfiler.h"
#include "arx/db/dbmain.h"
#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

namespace base = veltora::base;

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

bool isAngle(int code) { return code >= 50 && code <= 58; }
bool isCoordinate(int code, int first) { return code == first + 10 || code == first + 20; }

double realOf(std::string_view text) {
  double value = 0.0;
  dxfParseReal(text, value);
  return value;
}

Adesk::Int64 integerOf(std::string_view text) {
  Adesk::Int64 value = 0;
  dxfParseInteger(text, value);
  return value;
}

AcDbObjectId idOf(std::string_view text, AcDbDatabase* database) {
  Adesk::UInt64 handle = 0;
  AcDbObjectId id;
  if (database && dxfParseHandle(text, handle) && handle != 0) database->getAcDbObjectId(id, false, handle);
  return id;
}

AcEdGroup groupOf(const DxfTag& tag, AcDbDatabase* database) {
  AcEdGroup group;
  group.code = tag.code;
  group.kind = acutRbKind(tag.code);
  group.raw = std::string(tag.value);
  switch (group.kind) {
    case RbKind::kText:
      group.text = dxfToWide(tag.value);
      break;
    case RbKind::kReal:
      group.point.x = realOf(tag.value) * (isAngle(tag.code) ? kDegree : 1.0);
      break;
    case RbKind::kPoint:
      group.point.x = realOf(tag.value);
      group.coordinates = 1;
      break;
    case RbKind::kShort:
    case RbKind::kLong:
    case RbKind::kInt64:
      group.integer = integerOf(tag.value);
      group.point.x = static_cast<double>(group.integer);
      break;
    case RbKind::kName:
      group.id = idOf(tag.value, database);
      break;
    default:
      break;
  }
  return group;
}

bool sameValue(const AcEdGroup& group, const resbuf& item) {
  if (group.code != item.restype) return false;
  if (group.kind == RbKind::kReal) return group.point.x == item.resval.rreal;
  if (group.kind == RbKind::kText) return item.resval.rstring && group.text == item.resval.rstring;
  return false;
}

bool appendPoint(const resbuf& item, const std::vector<AcEdGroup>& former, DxfTagText& tags) {
  const double* p = item.resval.rpoint;
  if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2])) return false;
  // A point that the file holds in the plane stays so: a third group would be one too many there.
  const bool plane = std::any_of(former.begin(), former.end(), [&](const AcEdGroup& g) {
    return g.code == item.restype && g.coordinates == 2;
  });
  tags.appendReal(item.restype, p[0]);
  tags.appendReal(item.restype + 10, p[1]);
  if (!plane) tags.appendReal(item.restype + 20, p[2]);
  return true;
}

bool appendName(const resbuf& item, DxfTagText& tags) {
  AcDbObjectId id;
  if (item.resval.rlname[0] == 0 && item.resval.rlname[1] == 0) {
    tags.append(item.restype, "0");
    return true;
  }
  if (acdbGetObjectId(id, item.resval.rlname) != Acad::eOk) return false;
  tags.appendHandle(item.restype, id.handle());
  return true;
}

bool appendBinary(const resbuf& item, DxfTagText& tags) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (int i = 0; i < item.resval.rbinary.clen && item.resval.rbinary.buf; ++i) {
    const auto byte = static_cast<unsigned char>(item.resval.rbinary.buf[i]);
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  tags.append(item.restype, text);
  return true;
}

bool appendItem(const resbuf& item, const std::vector<AcEdGroup>& former, DxfTagText& tags) {
  const auto known =
      std::find_if(former.begin(), former.end(), [&](const AcEdGroup& g) { return sameValue(g, item); });
  if (known != former.end()) {
    tags.append(item.restype, known->raw);
    return true;
  }
  switch (acutRbKind(item.restype)) {
    case RbKind::kText:
      if (!item.resval.rstring) return false;
      tags.append(item.restype, dxfFromWide(item.resval.rstring));
      return true;
    case RbKind::kReal:
      if (!std::isfinite(item.resval.rreal)) return false;
      tags.appendReal(item.restype, item.resval.rreal / (isAngle(item.restype) ? kDegree : 1.0));
      return true;
    case RbKind::kShort:
      tags.appendInteger(item.restype, item.resval.rint);
      return true;
    case RbKind::kLong:
      tags.appendInteger(item.restype, item.resval.rlong);
      return true;
    case RbKind::kInt64:
      tags.appendInteger(item.restype, item.resval.mnInt64);
      return true;
    case RbKind::kPoint:
      return appendPoint(item, former, tags);
    case RbKind::kName:
      return appendName(item, tags);
    case RbKind::kBinary:
      return appendBinary(item, tags);
    case RbKind::kNone:
      break;
  }
  return false;
}

}  // namespace

std::string acedHandleText(AcDbHandle handle) {
  char text[17];
  const auto end = std::to_chars(text, text + sizeof text, static_cast<Adesk::UInt64>(handle), 16).ptr;
  return base::toUpperAnsi(std::string(text, end));
}

std::vector<AcEdGroup> acedGroupsOf(const AcDbObject& object) {
  DxfTagText text;
  {
    AcDbDxfWriter writer([&](std::string_view part) { text.appendText(part); });
    object.dxfOut(writer);
    writer.flush();
  }
  std::vector<AcEdGroup> groups;
  DxfTagText::Cursor cursor = text.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code >= 1000) break;
    AcEdGroup* last = groups.empty() ? nullptr : &groups.back();
    if (last && last->coordinates > 0 && isCoordinate(tag.code, last->code)) {
      (tag.code == last->code + 10 ? last->point.y : last->point.z) = realOf(tag.value);
      ++last->coordinates;
      continue;
    }
    groups.push_back(groupOf(tag, object.database()));
  }
  return groups;
}

resbuf* acedRbFromGroup(const AcEdGroup& group) {
  resbuf* item = acutNewRb(group.code);
  switch (group.kind) {
    case RbKind::kText:
      acutNewString(group.text, item->resval.rstring);
      return item;
    case RbKind::kReal:
      item->resval.rreal = group.point.x;
      return item;
    case RbKind::kShort:
      item->resval.rint = static_cast<short>(std::clamp<Adesk::Int64>(group.integer, -32768, 32767));
      return item;
    case RbKind::kLong:
      item->resval.rlong = static_cast<Adesk::Int32>(group.integer);
      return item;
    case RbKind::kInt64:
      item->resval.mnInt64 = group.integer;
      return item;
    case RbKind::kPoint:
      item->resval.rpoint[0] = group.point.x;
      item->resval.rpoint[1] = group.point.y;
      item->resval.rpoint[2] = group.point.z;
      return item;
    case RbKind::kName: {
      ads_name name = {0, 0};
      if (!group.id.isNull()) acdbGetAdsName(name, group.id);
      item->resval.rlname[0] = name[0];
      item->resval.rlname[1] = name[1];
      return item;
    }
    default:
      break;
  }
  acutRelRb(item);
  return nullptr;
}

bool acedTagsFromChain(const resbuf* chain, const std::vector<AcEdGroup>& former, DxfTagText& tags) {
  for (const resbuf* item = chain; item && item->restype != -3; item = item->rbnext) {
    if (item->restype < 0) continue;
    if (item->restype >= 1000 || !appendItem(*item, former, tags)) return false;
  }
  return true;
}
