#pragma once

#include "arx/adesk.h"

/// What the host tells a loaded module through its entry function, and what the entry answers.
namespace AcRx {
enum AppMsgCode {
  kNullMsg = 0,
  kInitAppMsg = 1,
  kUnloadAppMsg = 2,
  kLoadDwgMsg = 3,
  kUnloadDwgMsg = 4,
  kInvkSubrMsg = 5,
  kCfgMsg = 6,
  kEndMsg = 7,
  kQuitMsg = 8,
  kSaveMsg = 9,
  kDependencyMsg = 10,
  kNoDependencyMsg = 11,
  kOleUnloadAppMsg = 12,
  kPreQuitMsg = 13,
  kInitDialogMsg = 14,
  kEndDialogMsg = 15,
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
}  // namespace AcRx

/// A module offers `extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId)`.
using AcRxEntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode msg, void* appId);
