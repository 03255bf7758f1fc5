#pragma once

#include "arx/rx/appmsg.h"

#include <functional>
#include <map>
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
    static const std::map<int, std::string> kNames = {
        {AcRx::kInitAppMsg, "init"},         {AcRx::kUnloadAppMsg, "unload"}, {AcRx::kLoadDwgMsg, "load dwg"},
        {AcRx::kUnloadDwgMsg, "unload dwg"}, {AcRx::kInvkSubrMsg, "invoke"},  {AcRx::kQuitMsg, "quit"},
        {AcRx::kPreQuitMsg, "pre quit"},     {AcRx::kSaveMsg, "save"}};
    const auto found = kNames.find(msg);
    return found == kNames.end() ? std::to_string(msg) : found->second;
  }
};
