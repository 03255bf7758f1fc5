#pragma once

#include "arx/rx/appmsg.h"

#include <functional>
#include <string>
#include <vector>

/// A module that is linked into the tests: notes the messages it gets and does what a test asks for.
struct FakeModule {
  static inline std::vector<std::string> messages;
  static inline std::function<void(AcRx::AppMsgCode, void* appId)> onMessage;
  static inline AcRx::AppRetCode answer = AcRx::kRetOK;

  static void reset() {
    messages.clear();
    onMessage = nullptr;
    answer = AcRx::kRetOK;
  }

  static AcRx::AppRetCode entry(AcRx::AppMsgCode msg, void* appId) {
    messages.push_back(nameOf(msg));
    if (onMessage) onMessage(msg, appId);
    return answer;
  }

  static std::string nameOf(AcRx::AppMsgCode msg) {
    switch (msg) {
      case AcRx::kInitAppMsg:
        return "init";
      case AcRx::kUnloadAppMsg:
        return "unload";
      case AcRx::kLoadDwgMsg:
        return "load dwg";
      case AcRx::kUnloadDwgMsg:
        return "unload dwg";
      case AcRx::kInvkSubrMsg:
        return "invoke";
      case AcRx::kQuitMsg:
        return "quit";
      case AcRx::kPreQuitMsg:
        return "pre quit";
      case AcRx::kSaveMsg:
        return "save";
      default:
        return std::to_string(msg);
    }
  }
};
