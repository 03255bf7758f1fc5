#pragma once

#include "arx/adesk.h"
#include "arx/ge/gepoint.h"

#include <span>
#include <string_view>

/// A counted piece of binary data; `buf` is owned by the resbuf.
struct ads_binary {
  short clen;
  char* buf;
};

/// One item of a chain of typed values. `restype` is a group code or one of the RT... codes.
struct resbuf {
  resbuf* rbnext;
  short restype;
  union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;  ///< owned
    ads_name rlname;
    Adesk::Int32 rlong;
    Adesk::Int64 mnInt64;
    ads_binary rbinary;
  } resval;
};

/// A new item with this type and a zero value; the caller releases it with `acutRelRb`.
ARX_API resbuf* acutNewRb(int type);
/// Releases a whole chain with its texts and binary data; null is allowed.
ARX_API int acutRelRb(resbuf* chain);
/// A new text owned by the caller of the resbuf.
ARX_API int acutNewString(std::wstring_view text, ACHAR*& result);
/// Releases such a text and clears the pointer.
ARX_API int acutDelString(ACHAR*& text);
/// Copy of one item without its successor.
ARX_API resbuf* acutCopyRb(const resbuf* item);
/// Copy of a whole chain.
ARX_API resbuf* acutCopyRbChain(const resbuf* chain);
/// The kinds of the union's members, by the type of the item; `RbKind::kNone` for markers such as RTNIL.
enum class RbKind { kNone, kReal, kPoint, kShort, kLong, kInt64, kText, kName, kBinary };
ARX_API RbKind acutRbKind(int restype);

// Building a chain: acutBuildList(type, value, type, value, ..., RTNONE). Markers (RTLB, RTLE, RTDOTE, RTNIL,
// RTT) take no value.
namespace arx_detail {
/// One argument, whatever its type.
struct ARX_API RbArgument {
  enum Kind { kInt, kReal, kText, kPoint, kName, kBinary } kind;
  Adesk::Int64 integer = 0;
  double real[3] = {0, 0, 0};
  const ACHAR* text = nullptr;
  ads_name name = {0, 0};
  ads_binary binary = {0, nullptr};

  RbArgument(int value) : kind(kInt), integer(value) {}
  RbArgument(short value) : kind(kInt), integer(value) {}
  RbArgument(Adesk::Int64 value) : kind(kInt), integer(value) {}
  RbArgument(double value) : kind(kReal), real{value, 0, 0} {}
  RbArgument(const ACHAR* value) : kind(kText), text(value) {}
  RbArgument(const std::wstring& value) : kind(kText), text(value.c_str()) {}
  RbArgument(const ads_real* value) : kind(kPoint), real{value[0], value[1], value[2]} {}
  RbArgument(const AcGePoint3d& value) : kind(kPoint), real{value.x, value.y, value.z} {}
  RbArgument(const Adesk::Int64* value) : kind(kName), name{value[0], value[1]} {}
  RbArgument(const ads_binary& value) : kind(kBinary), binary(value) {}
};
/// Null when the values do not fit their types or nothing is given.
ARX_API resbuf* buildList(int type, std::span<const RbArgument> rest);
}  // namespace arx_detail

/// Builds a chain owned by the caller; null when nothing was given or a value does not fit its type.
template <class... Args>
resbuf* acutBuildList(int type, const Args&... args) {
  if constexpr (sizeof...(Args) == 0) {
    return arx_detail::buildList(type, {});
  } else {
    const arx_detail::RbArgument rest[] = {arx_detail::RbArgument(args)...};
    return arx_detail::buildList(type, rest);
  }
}
