#include "arx/ed/edvalue.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

namespace base = veltora::base;

namespace {

std::wstring real(double value) { return base::fromUtf8(base::ecrireReel(value)); }

std::wstring pointText(const ads_real* point, const wchar_t* separator) {
  return real(point[0]) + separator + real(point[1]) + separator + real(point[2]);
}

/// The innermost value of a list of two or three numbers counts as a point: (x y z).
std::optional<std::wstring> listAsPoint(const resbuf* list) {
  std::wstring text;
  int count = 0;
  for (const resbuf* item = list->rbnext; item; item = item->rbnext) {
    if (item->restype == RTLE) return count == 2 || count == 3 ? std::optional(text) : std::nullopt;
    const RbKind kind = acutRbKind(item->restype);
    if (kind != RbKind::kReal && kind != RbKind::kShort && kind != RbKind::kLong) return std::nullopt;
    text += (count++ ? L"," : L"") + *acedAnswerText(item);
  }
  return std::nullopt;
}

std::wstring quoted(const ACHAR* text) {
  std::wstring result = L"\"";
  for (const ACHAR* c = text ? text : L""; *c; ++c) {
    if (*c == L'"' || *c == L'\\') result += L'\\';
    result += *c;
  }
  return result + L"\"";
}

std::wstring atomText(const resbuf& item) {
  if (item.restype == RTNIL) return L"nil";
  if (item.restype == RTT) return L"T";
  if (item.restype == RTDOTE) return L".";
  if (item.restype == RTPICKS)
    return base::formater(std::wstring(L"<Selection set: %d>"), item.resval.rlname[0]);
  switch (acutRbKind(item.restype)) {
    case RbKind::kReal:
      return real(item.resval.rreal);
    case RbKind::kPoint:
      return L"(" + pointText(item.resval.rpoint, L" ") + L")";
    case RbKind::kShort:
      return std::to_wstring(item.resval.rint);
    case RbKind::kLong:
      return std::to_wstring(item.resval.rlong);
    case RbKind::kInt64:
      return std::to_wstring(item.resval.mnInt64);
    case RbKind::kText:
      return quoted(item.resval.rstring);
    case RbKind::kName:
      return base::formater(std::wstring(L"<Entity name: %x>"), item.resval.rlname[1]);
    case RbKind::kBinary:
    case RbKind::kNone:
      break;
  }
  return L"?";
}

}  // namespace

std::optional<std::wstring> acedAnswerText(const resbuf* value, bool radians) {
  if (!value || value->restype == RTNIL || value->restype == RTVOID || value->restype == RTNONE) return L"";
  if (value->restype == RTT) return L"T";
  if (value->restype == RTLB) return listAsPoint(value);
  switch (acutRbKind(value->restype)) {
    case RbKind::kReal:
      return real(value->resval.rreal) + (radians ? L"r" : L"");
    case RbKind::kPoint:
      return pointText(value->resval.rpoint, L",");
    case RbKind::kShort:
      return std::to_wstring(value->resval.rint);
    case RbKind::kLong:
      return std::to_wstring(value->resval.rlong);
    case RbKind::kInt64:
      return std::to_wstring(value->resval.mnInt64);
    case RbKind::kText:
      return value->resval.rstring ? value->resval.rstring : L"";
    default:
      return std::nullopt;
  }
}

std::wstring acedValueText(const resbuf* value) {
  std::wstring text;
  bool glued = true;
  for (const resbuf* item = value; item; item = item->rbnext) {
    if (item->restype == RTVOID || item->restype == RTNONE) continue;
    const bool closing = item->restype == RTLE;
    if (!glued && !closing) text += L' ';
    text += item->restype == RTLB ? L"(" : closing ? L")" : atomText(*item);
    glued = item->restype == RTLB;
  }
  return text;
}
