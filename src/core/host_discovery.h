#pragma once

#include "core/registry.h"

namespace veltora {

/// The folders that a profile of a host trusts, and where that is noted.
struct TrustedPaths {
  Registry::Root root = Registry::Root::kLocalMachine;
  std::wstring key;    ///< "...\Variables", where the value TRUSTEDPATHS stands
  std::wstring value;  ///< folders with ";" between them
};

/// A host that is installed.
struct HostInstallation {
  std::wstring product;    ///< its name as the host tells it, else the host's own
  std::wstring productId;  ///< empty where the host has none
  std::wstring folder;
  std::wstring key;  ///< in HKEY_LOCAL_MACHINE
  Registry::View view = Registry::View::k32Bits;
  std::vector<TrustedPaths> trusted;  ///< one a profile that has the value
};

/// The hosts that are installed, for the installer: host by host, each in the 32-bit view first and, on a
/// 64-bit system, in the 64-bit view. What both views show is listed once. No command calls it.
/// @return nothing without a registry
VELTORA_API std::vector<HostInstallation> installedHosts(const Registry* registry = systemRegistry());

/// Whether the running process acts for the local administrators' group; false without a registry.
VELTORA_API bool isAdministrator(const Registry* registry = systemRegistry());

}  // namespace veltora
