#pragma once

#include "base/export.h"

#include <cstdint>
#include <string>

// Basic types of the host's interface.

#define ARX_API VELTORA_API

using ACHAR = wchar_t;
using AcString = std::wstring;
using CString = std::wstring;

namespace Adesk {
using Boolean = bool;
using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using UInt64 = std::uint64_t;
using IntDbId = std::intptr_t;
inline constexpr bool kFalse = false;
inline constexpr bool kTrue = true;
}  // namespace Adesk

using ads_real = double;
using ads_point = ads_real[3];
/// Name of an entity or of a selection set; both words 0 for none.
using ads_name = std::int64_t[2];

namespace Acad {
/// Status of a host operation; only `eOk` is success.
enum ErrorStatus {
  eOk = 0,
  eNotImplementedYet,
  eNotApplicable,
  eInvalidInput,
  eInvalidKey,
  eInvalidIndex,
  eInvalidExtents,
  eOutOfRange,
  eKeyNotFound,
  eDuplicateKey,
  eDuplicateRecordName,
  eWrongObjectType,
  eWrongDatabase,
  eNullObjectId,
  eNullObjectPointer,
  eNotInDatabase,
  eNoDatabase,
  eAlreadyInDb,
  eUnknownHandle,
  eWasErased,
  ePermanentlyErased,
  eNotOpenForRead,
  eNotOpenForWrite,
  eWasOpenForRead,
  eWasOpenForWrite,
  eObjectToBeDeleted,
  eVSIsActive,
  eFileNotFound,
  eFileAccessErr,
  eFilerError,
  eBadDxfSequence,
  eDwgNeedsRecovery,
  eOldVersion,
  eNotThatKindOfClass,
  eDegenerateGeometry,
  eCannotScaleNonUniformly,
  eUserBreak,
  eRegappIdNotFound,
  eBadLayerName,
  eObjectIsReferenced,
};
}  // namespace Acad
/// Name of a status, for messages and tests ("eKeyNotFound").
ARX_API const ACHAR* acadErrorStatusText(Acad::ErrorStatus status);

// Results of the command-line and LISP layer.
inline constexpr int RTNONE = 5000;
inline constexpr int RTREAL = 5001;
inline constexpr int RTPOINT = 5002;
inline constexpr int RTSHORT = 5003;
inline constexpr int RTANG = 5004;
inline constexpr int RTSTR = 5005;
inline constexpr int RTENAME = 5006;
inline constexpr int RTPICKS = 5007;
inline constexpr int RTORINT = 5008;
inline constexpr int RT3DPOINT = 5009;
inline constexpr int RTLONG = 5010;
inline constexpr int RTVOID = 5014;
inline constexpr int RTLB = 5016;
inline constexpr int RTLE = 5017;
inline constexpr int RTDOTE = 5018;
inline constexpr int RTNIL = 5019;
inline constexpr int RTDXF0 = 5020;
inline constexpr int RTT = 5021;
inline constexpr int RTRESBUF = 5023;
inline constexpr int RTINT64 = 5031;
inline constexpr int RTNORM = 5100;
inline constexpr int RTERROR = -5001;
inline constexpr int RTCAN = -5002;
inline constexpr int RTREJ = -5003;
inline constexpr int RTFAIL = -5004;
inline constexpr int RTKWORD = -5005;
