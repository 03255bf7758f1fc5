#include "arx/db/resbuf.h"

#include "arx/db/dxftags.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

RbKind kindOfResult(int restype) {
  switch (restype) {
    case RTREAL:
    case RTANG:
    case RTORINT:
      return RbKind::kReal;
    case RTPOINT:
    case RT3DPOINT:
      return RbKind::kPoint;
    case RTSHORT:
      return RbKind::kShort;
    case RTSTR:
      return RbKind::kText;
    case RTENAME:
    case RTPICKS:
      return RbKind::kName;
    case RTLONG:
      return RbKind::kLong;
    case RTINT64:
      return RbKind::kInt64;
    default:
      return RbKind::kNone;
  }
}

RbKind kindOfGroup(int code) {
  switch (dxfKind(code)) {
    case DxfKind::kText:
    case DxfKind::kHandle:
      return RbKind::kText;
    case DxfKind::kReal:
      return RbKind::kReal;
    case DxfKind::kPoint:
      return RbKind::kPoint;
    case DxfKind::kInt16:
    case DxfKind::kBool:
      return RbKind::kShort;
    case DxfKind::kInt32:
      return RbKind::kLong;
    case DxfKind::kInt64:
      return RbKind::kInt64;
    case DxfKind::kBinary:
      return RbKind::kBinary;
    case DxfKind::kPointer:
      return code >= 1000 ? RbKind::kText : RbKind::kName;
    case DxfKind::kName:
      return RbKind::kName;
    case DxfKind::kUnknown:
      break;
  }
  return RbKind::kNone;
}

void copyBinary(ads_binary& to, const ads_binary& from) {
  to = {0, nullptr};
  if (from.clen <= 0 || !from.buf) return;
  to.buf = new char[static_cast<std::size_t>(from.clen)];
  to.clen = from.clen;
  std::memcpy(to.buf, from.buf, static_cast<std::size_t>(from.clen));
}

using arx_detail::RbArgument;

/// An integer where a real is expected is taken, as LISP callers expect; nothing else is converted.
bool realOf(const RbArgument& a, double& value) {
  if (a.kind != RbArgument::kReal && a.kind != RbArgument::kInt) return false;
  value = a.kind == RbArgument::kReal ? a.real[0] : static_cast<double>(a.integer);
  return true;
}

template <class Integer>
bool integerOf(const RbArgument& a, Integer& value) {
  if (a.kind != RbArgument::kInt) return false;
  if (a.integer < std::numeric_limits<Integer>::min() || a.integer > std::numeric_limits<Integer>::max())
    return false;
  value = static_cast<Integer>(a.integer);
  return true;
}

bool fill(resbuf& item, const RbArgument& a) {
  switch (acutRbKind(item.restype)) {
    case RbKind::kReal:
      return realOf(a, item.resval.rreal);
    case RbKind::kShort:
      return integerOf(a, item.resval.rint);
    case RbKind::kLong:
      return integerOf(a, item.resval.rlong);
    case RbKind::kInt64:
      return integerOf(a, item.resval.mnInt64);
    case RbKind::kPoint:
      if (a.kind != RbArgument::kPoint) return false;
      std::copy(a.real, a.real + 3, item.resval.rpoint);
      return true;
    case RbKind::kText:
      if (a.kind != RbArgument::kText || !a.text) return false;
      acutNewString(a.text, item.resval.rstring);
      return true;
    case RbKind::kName:
      if (a.kind != RbArgument::kName) return false;
      std::copy(a.name, a.name + 2, item.resval.rlname);
      return true;
    case RbKind::kBinary:
      if (a.kind != RbArgument::kBinary) return false;
      copyBinary(item.resval.rbinary, a.binary);
      return true;
    case RbKind::kNone:
      break;
  }
  return false;
}

bool isMarker(int type) {
  return type == RTLB || type == RTLE || type == RTDOTE || type == RTNIL || type == RTT || type == RTVOID ||
         type == -3;
}

}  // namespace

RbKind acutRbKind(int restype) { return restype >= RTNONE ? kindOfResult(restype) : kindOfGroup(restype); }

resbuf* acutNewRb(int type) {
  auto* item = new resbuf;
  std::memset(static_cast<void*>(item), 0, sizeof *item);
  item->restype = static_cast<short>(type);
  return item;
}

int acutRelRb(resbuf* chain) {
  while (chain) {
    resbuf* const next = chain->rbnext;
    const RbKind kind = acutRbKind(chain->restype);
    if (kind == RbKind::kText) delete[] chain->resval.rstring;
    if (kind == RbKind::kBinary) delete[] chain->resval.rbinary.buf;
    delete chain;
    chain = next;
  }
  return RTNORM;
}

int acutNewString(std::wstring_view text, ACHAR*& result) {
  result = new ACHAR[text.size() + 1];
  std::copy(text.begin(), text.end(), result);
  result[text.size()] = 0;
  return RTNORM;
}

int acutDelString(ACHAR*& text) {
  delete[] text;
  text = nullptr;
  return RTNORM;
}

resbuf* acutCopyRb(const resbuf* item) {
  if (!item) return nullptr;
  auto* copy = new resbuf(*item);
  copy->rbnext = nullptr;
  const RbKind kind = acutRbKind(item->restype);
  if (kind == RbKind::kText && item->resval.rstring)
    acutNewString(item->resval.rstring, copy->resval.rstring);
  if (kind == RbKind::kBinary) copyBinary(copy->resval.rbinary, item->resval.rbinary);
  return copy;
}

resbuf* acutCopyRbChain(const resbuf* chain) {
  resbuf* head = nullptr;
  resbuf** link = &head;
  for (; chain; chain = chain->rbnext) {
    *link = acutCopyRb(chain);
    link = &(*link)->rbnext;
  }
  return head;
}

namespace arx_detail {

resbuf* buildList(int type, std::span<const RbArgument> rest) {
  resbuf* head = nullptr;
  resbuf** link = &head;
  std::size_t at = 0;
  while (type != RTNONE) {
    const bool known = type >= std::numeric_limits<short>::min() && type <= std::numeric_limits<short>::max();
    bool good = known && (isMarker(type) || (at < rest.size() && acutRbKind(type) != RbKind::kNone));
    if (good) {
      *link = acutNewRb(type);
      if (!isMarker(type)) good = fill(**link, rest[at++]);
      link = &(*link)->rbnext;
    }
    // The types themselves stand among the arguments; the list may end without RTNONE.
    if (good && at < rest.size()) good = rest[at].kind == RbArgument::kInt;
    if (!good) {
      acutRelRb(head);
      return nullptr;
    }
    if (at >= rest.size()) break;
    const Adesk::Int64 next = rest[at++].integer;
    type = next >= -32768 && next <= 32767 ? static_cast<int>(next) : RTNONE + 30000;
  }
  return head;
}

}  // namespace arx_detail
