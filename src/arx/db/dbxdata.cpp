#include "arx/db/dbxdata.h"

#include "arx/db/dbtagchain.h"
#include "base/text.h"

#include <vector>

using veltora::base::compareNoCase;

namespace {

constexpr std::size_t kMaximalXData = 16383;  // bytes an object, as drawing files allow
constexpr std::size_t kMaximalBinary = 127;   // bytes an item

/// Size of an item in a drawing: its code and its value.
std::size_t sizeOf(const DxfTag& tag) {
  switch (dxfKind(tag.code)) {
    case DxfKind::kPoint:
    case DxfKind::kReal:
      return tag.code >= 1010 && tag.code < 1040 ? 8 + (tag.code < 1020 ? 1 : 0) : 9;
    case DxfKind::kInt16:
      return 3;
    case DxfKind::kInt32:
      return 5;
    case DxfKind::kPointer:
      return 9;
    case DxfKind::kBinary:
      return 2 + tag.value.size() / 2;
    default:
      return tag.code == 1002 ? 2 : tag.code == 1001 || tag.code == 1003 ? 9 : 4 + tag.value.size();
  }
}

bool isXDataCode(int code) {
  return (code >= 1000 && code <= 1005) || (code >= 1010 && code <= 1013) || (code >= 1040 && code <= 1042) ||
         code == 1070 || code == 1071;
}

/// The data of one application.
struct Part {
  std::wstring application;
  DxfTagText tags;
  std::size_t items = 0;
};

std::vector<Part> partsOf(const DxfTagText& tags) {
  std::vector<Part> parts;
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code == 1001) parts.push_back({dxfToWide(tag.value), {}, 0});
    if (parts.empty()) continue;
    parts.back().tags.append(tag.code, tag.value);
    ++parts.back().items;
  }
  return parts;
}

/// Braces pair within an application, no item is too long, and all codes are those of extended data.
bool isSound(const resbuf* chain) {
  if (!chain || chain->restype != 1001) return false;
  int depth = 0;
  for (; chain; chain = chain->rbnext) {
    if (!isXDataCode(chain->restype)) return false;
    if (chain->restype == 1001 && (depth != 0 || !chain->resval.rstring || !*chain->resval.rstring))
      return false;
    if (chain->restype == 1004 && (chain->resval.rbinary.clen < 0 ||
                                   static_cast<std::size_t>(chain->resval.rbinary.clen) > kMaximalBinary)) {
      return false;
    }
    if (chain->restype != 1002) continue;
    const std::wstring_view brace = chain->resval.rstring ? chain->resval.rstring : L"";
    if (brace != L"{" && brace != L"}") return false;
    depth += brace == L"{" ? 1 : -1;
    if (depth < 0) return false;
  }
  return depth == 0;
}

}  // namespace

resbuf* acdbXDataChain(const DxfTagText& tags, const ACHAR* application) {
  if (tags.empty()) return nullptr;
  if (!application) return chainOfTags(tags, nullptr);
  for (const Part& part : partsOf(tags)) {
    if (compareNoCase(part.application, application) == 0) return chainOfTags(part.tags, nullptr);
  }
  return nullptr;
}

bool acdbHasXData(const DxfTagText& tags, const ACHAR* application) {
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code == 1001 && (!application || compareNoCase(dxfToWide(tag.value), application) == 0))
      return true;
  }
  return false;
}

Acad::ErrorStatus acdbReplaceXData(DxfTagText& tags, const resbuf* chain,
                                   const std::function<bool(const std::wstring&)>& isRegistered) {
  DxfTagText added;
  if (!isSound(chain) || !tagsOfChain(chain, added)) return Acad::eInvalidInput;
  std::vector<Part> parts = partsOf(tags);
  for (Part& fresh : partsOf(added)) {
    if (!isRegistered(fresh.application)) return Acad::eRegappIdNotFound;
    auto place = parts.begin();
    while (place != parts.end() && compareNoCase(place->application, fresh.application) != 0) ++place;
    if (place == parts.end())
      parts.push_back(std::move(fresh));
    else
      *place = std::move(fresh);
  }
  DxfTagText all;
  for (const Part& part : parts) {
    if (part.items >= 2) all.appendText(part.tags.text());
  }
  std::size_t size = 0;
  DxfTagText::Cursor cursor = all.tags();
  for (DxfTag tag; cursor.next(tag);) size += sizeOf(tag);
  if (size > kMaximalXData) return Acad::eInvalidInput;
  tags = std::move(all);
  return Acad::eOk;
}

bool acdbTransformXData(resbuf* chain, const AcGeMatrix3d& matrix) {
  bool moved = false;
  for (resbuf* item = chain; item; item = item->rbnext) {
    ads_real* const p = item->resval.rpoint;
    AcGeVector3d mapped;
    switch (item->restype) {
      case 1011:
        mapped = (matrix * AcGePoint3d(p[0], p[1], p[2])).asVector();
        break;
      case 1012:
        mapped = matrix * AcGeVector3d(p[0], p[1], p[2]);
        break;
      case 1013:
        mapped = (matrix * AcGeVector3d(p[0], p[1], p[2])).normal();
        break;
      case 1041:
      case 1042:
        item->resval.rreal *= matrix.scale();
        moved = true;
        continue;
      default:
        continue;
    }
    p[0] = mapped.x, p[1] = mapped.y, p[2] = mapped.z;
    moved = true;
  }
  return moved;
}
