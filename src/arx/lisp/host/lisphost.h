#pragma once

#include "arx/lisp/lispconvert.h"
#include "arx/lisp/lispinterp.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace aclisp {

/// One answer for a command: a text, or what the user gives at that place.
struct CommandAnswer {
  std::wstring text;
  bool pause = false;
};

/// What the host's functions keep between calls.
struct HostState {
  std::vector<CommandAnswer> pending;           ///< a command that still waits for answers, its name first
  std::vector<Value> held;                      ///< values that are no text, fetched by (%VALEUR n)
  std::map<std::wstring, std::size_t> tableAt;  ///< where `tblnext` stands
  std::vector<std::shared_ptr<resbuf>> parts;   ///< given to `entmake` so far: a head and what belongs to it
  std::map<std::int64_t, std::size_t> dictionaryAt;  ///< where `dictnext` stands, by handle
  int depth = 0;                                     ///< expressions at work, one within the other
};
inline HostState& hostState(Interpreter& in) {
  if (!in.hostState) in.hostState = std::make_shared<HostState>();
  return *static_cast<HostState*>(in.hostState.get());
}

}  // namespace aclisp
