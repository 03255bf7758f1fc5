#include "arx/ed/edroutines.h"

#include <optional>

namespace {

/// Nothing as long as files are open to routines.
std::optional<std::wstring>& onlyRoutine() {
  static std::optional<std::wstring> routine;
  return routine;
}

}  // namespace

void acedCloseFilesToRoutines(const std::wstring& routine) { onlyRoutine() = routine; }

bool acedRoutineMayReach(const std::wstring& name) {
  return !onlyRoutine() || (!name.empty() && name == *onlyRoutine());
}
