#include "arx/db/dbtagchain.h"

#include "arx/db/dbmain.h"

#include <algorithm>
#include <limits>

namespace {

template <class Integer>
Integer integerOf(std::string_view text) {
  Adesk::Int64 value = 0;
  dxfParseInteger(text, value);
  if constexpr (sizeof(Integer) == 4) {
    // Some programs write 32-bit patterns without sign.
    if (value > 0 && value <= UINT32_MAX) return static_cast<Integer>(static_cast<Adesk::UInt32>(value));
  }
  return static_cast<Integer>(std::clamp<Adesk::Int64>(value, std::numeric_limits<Integer>::min(),
                                                       std::numeric_limits<Integer>::max()));
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

void readBinary(std::string_view text, ads_binary& binary) {
  const std::size_t size = std::min<std::size_t>(text.size() / 2, std::numeric_limits<short>::max());
  binary = {0, nullptr};
  if (size == 0) return;
  binary.buf = new char[size];
  for (std::size_t i = 0; i < size; ++i) {
    const int high = hexDigit(text[2 * i]);
    const int low = hexDigit(text[2 * i + 1]);
    if (high < 0 || low < 0) break;
    binary.buf[i] = static_cast<char>(high * 16 + low);
    ++binary.clen;
  }
}

void readName(std::string_view text, AcDbDatabase* database, ads_name& name) {
  Adesk::UInt64 handle = 0;
  AcDbObjectId id;
  if (!database || !dxfParseHandle(text, handle)) return;
  if (database->getAcDbObjectId(id, false, handle) == Acad::eOk && id.isLive()) acdbGetAdsName(name, id);
}

void readValue(const DxfTag& tag, AcDbDatabase* database, resbuf& item) {
  switch (acutRbKind(item.restype)) {
    case RbKind::kText:
      acutNewString(dxfToWide(tag.value), item.resval.rstring);
      break;
    case RbKind::kReal:
      dxfParseReal(tag.value, item.resval.rreal);
      break;
    case RbKind::kPoint:
      dxfParseReal(tag.value, item.resval.rpoint[0]);
      break;
    case RbKind::kShort:
      item.resval.rint = integerOf<short>(tag.value);
      break;
    case RbKind::kLong:
      item.resval.rlong = integerOf<Adesk::Int32>(tag.value);
      break;
    case RbKind::kInt64:
      item.resval.mnInt64 = integerOf<Adesk::Int64>(tag.value);
      break;
    case RbKind::kBinary:
      readBinary(tag.value, item.resval.rbinary);
      break;
    case RbKind::kName:
      readName(tag.value, database, item.resval.rlname);
      break;
    case RbKind::kNone:
      break;
  }
}

void writeBinary(int code, const ads_binary& binary, DxfTagText& tags) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (short i = 0; i < binary.clen && binary.buf; ++i) {
    const auto byte = static_cast<unsigned char>(binary.buf[i]);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  tags.append(code, text);
}

void writePoint(int code, const ads_real* point, DxfTagText& tags) {
  for (int i = 0; i < 3; ++i) tags.appendReal(code + 10 * i, point[i]);
}

bool writeName(int code, const ads_name& name, DxfTagText& tags) {
  AcDbObjectId id;
  // A name that names nothing any more is stored as no reference.
  acdbGetObjectId(id, name);
  tags.appendHandle(code, id.isErased() ? AcDbHandle() : id.handle());
  return true;
}

bool writeValue(const resbuf& item, DxfTagText& tags) {
  const int code = item.restype;
  switch (acutRbKind(code)) {
    case RbKind::kText:
      return tags.append(code, dxfFromWide(item.resval.rstring ? item.resval.rstring : L"")), true;
    case RbKind::kReal:
      return tags.appendReal(code, item.resval.rreal), true;
    case RbKind::kPoint:
      return writePoint(code, item.resval.rpoint, tags), true;
    case RbKind::kShort:
      return tags.appendInteger(code, item.resval.rint), true;
    case RbKind::kLong:
      return tags.appendInteger(code, item.resval.rlong), true;
    case RbKind::kInt64:
      return tags.appendInteger(code, item.resval.mnInt64), true;
    case RbKind::kBinary:
      return writeBinary(code, item.resval.rbinary, tags), true;
    case RbKind::kName:
      return writeName(code, item.resval.rlname, tags);
    case RbKind::kNone:
      break;
  }
  return false;
}

}  // namespace

resbuf* chainOfTags(const DxfTagText& tags, AcDbDatabase* database) {
  resbuf* head = nullptr;
  resbuf** link = &head;
  resbuf* point = nullptr;  // a point whose further coordinates may follow
  int coordinates = 0;
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (point && coordinates < 3 && tag.code == point->restype + 10 * coordinates) {
      dxfParseReal(tag.value, point->resval.rpoint[coordinates++]);
      continue;
    }
    if (tag.code < std::numeric_limits<short>::min() || tag.code > std::numeric_limits<short>::max())
      continue;
    *link = acutNewRb(tag.code);
    readValue(tag, database, **link);
    point = acutRbKind(tag.code) == RbKind::kPoint ? *link : nullptr;
    coordinates = 1;
    link = &(*link)->rbnext;
  }
  return head;
}

bool tagsOfChain(const resbuf* chain, DxfTagText& tags) {
  for (; chain; chain = chain->rbnext) {
    if (chain->restype >= RTNONE || chain->restype < 0 || !writeValue(*chain, tags)) return false;
  }
  return true;
}
