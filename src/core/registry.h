#pragma once

#include "base/export.h"

#include <optional>
#include <string>
#include <vector>

namespace veltora {

/// What is asked of the registry of an operating system that has one. Keys are joined by backslashes.
class VELTORA_API Registry {
public:
  enum class Root { kLocalMachine, kCurrentUser };
  enum class View { k32Bits, k64Bits };
  virtual ~Registry() = default;
  /// Names of the keys right below a key, in the registry's order; none when the key does not exist.
  [[nodiscard]] virtual std::vector<std::wstring> subKeys(Root root, View view,
                                                          const std::wstring& key) const = 0;
  /// A text value of a key; nothing when there is none.
  [[nodiscard]] virtual std::optional<std::wstring> value(Root root, View view, const std::wstring& key,
                                                          const std::wstring& name) const = 0;
  /// Whether the system has 64-bit keys beside the 32-bit ones (what IsWow64Process tells).
  [[nodiscard]] virtual bool is64Bits() const = 0;
  /// Whether the token of the running process holds the local administrators' group.
  [[nodiscard]] virtual bool tokenHoldsAdministrators() const = 0;
};

/// The registry of this system; null where there is none, as here.
VELTORA_API const Registry* systemRegistry();
/// Installs a registry, which the caller owns; null for none.
VELTORA_API void setSystemRegistry(const Registry* registry);

}  // namespace veltora
