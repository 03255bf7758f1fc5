#include "core/host_discovery.h"

#include "base/format.h"

#include <algorithm>

namespace veltora {
namespace {

using Root = Registry::Root;
using View = Registry::View;

/// How a host enters itself in the registry: below the root one key a release, below that one a product.
struct HostKeys {
  const wchar_t* host;
  const wchar_t* root;
  const wchar_t* product;  ///< name of the value with the product's name; empty for none
  const wchar_t* productId;
  const wchar_t* folder;
  const wchar_t* version;                   ///< empty: every version counts
  std::vector<std::wstring_view> versions;  ///< what a version that counts begins with
};

const std::vector<HostKeys>& hostKeys() {
  static const std::vector<HostKeys> keys = {
      {L"AutoCAD", L"Software\\Autodesk\\AutoCAD", L"ProductName", L"ProductId", L"AcadLocation", L"", {}},
      {L"Bricscad",
       L"Software\\Bricsys\\Bricscad\\",
       L"",
       L"",
       L"InstallDir",
       L"FullVersion",
       {L"19", L"20"}},
      {L"GstarCAD",
       L"Software\\GstarSoft\\GstarCAD\\",
       L"ProductName",
       L"",
       L"LOCATION",
       L"Version",
       {L"17.", L"20."}},
  };
  return keys;
}

std::wstring joined(const std::wstring& key, const std::wstring& name) {
  return base::formater(std::wstring(key.ends_with(L'\\') ? L"%s%s" : L"%s\\%s"), key, name);
}

class Search {
public:
  Search(const Registry& registry, const HostKeys& keys, View view)
      : m_registry(registry), m_keys(keys), m_view(view) {}

  /// A host stands in a key of a release or in one of a product below it.
  void run(std::vector<HostInstallation>& found) const {
    for (const std::wstring& release : subKeys(Root::kLocalMachine, m_keys.root)) {
      const std::wstring key = joined(m_keys.root, release);
      examine(key, found);
      for (const std::wstring& product : subKeys(Root::kLocalMachine, key))
        examine(joined(key, product), found);
    }
  }

private:
  [[nodiscard]] std::vector<std::wstring> subKeys(Root root, const std::wstring& key) const {
    return m_registry.subKeys(root, m_view, key);
  }
  [[nodiscard]] std::wstring text(const std::wstring& key, const wchar_t* name) const {
    return *name ? m_registry.value(Root::kLocalMachine, m_view, key, name).value_or(L"") : std::wstring();
  }

  void examine(const std::wstring& key, std::vector<HostInstallation>& found) const {
    HostInstallation host;
    host.folder = text(key, m_keys.folder);
    if (host.folder.empty() || !versionCounts(text(key, m_keys.version))) return;
    host.product = text(key, m_keys.product);
    if (host.product.empty()) host.product = m_keys.host;
    host.productId = text(key, m_keys.productId);
    host.key = key;
    host.view = m_view;
    const auto same = [&](const HostInstallation& h) { return h.key == host.key && h.folder == host.folder; };
    if (std::any_of(found.begin(), found.end(), same)) return;
    readTrusted(host);
    found.push_back(std::move(host));
  }

  [[nodiscard]] bool versionCounts(const std::wstring& version) const {
    return m_keys.versions.empty() ||
           std::any_of(m_keys.versions.begin(), m_keys.versions.end(),
                       [&](std::wstring_view begin) { return version.starts_with(begin); });
  }

  /// The machine's value of each profile, or else the user's.
  void readTrusted(HostInstallation& host) const {
    const std::wstring profiles = joined(host.key, L"Profiles");
    std::vector<std::wstring> names = subKeys(Root::kLocalMachine, profiles);
    for (const std::wstring& name : subKeys(Root::kCurrentUser, profiles))
      if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    for (const std::wstring& name : names) {
      const std::wstring key = base::formater(std::wstring(L"%s\\%s\\Variables"), profiles, name);
      for (const Root root : {Root::kLocalMachine, Root::kCurrentUser}) {
        const auto value = m_registry.value(root, m_view, key, L"TRUSTEDPATHS");
        if (!value) continue;
        host.trusted.push_back({root, key, *value});
        break;
      }
    }
  }

  const Registry& m_registry;
  const HostKeys& m_keys;
  View m_view;
};

}  // namespace

std::vector<HostInstallation> installedHosts(const Registry* registry) {
  std::vector<HostInstallation> found;
  if (!registry) return found;
  for (const HostKeys& keys : hostKeys()) {
    Search(*registry, keys, View::k32Bits).run(found);
    if (registry->is64Bits()) Search(*registry, keys, View::k64Bits).run(found);
  }
  return found;
}

bool isAdministrator(const Registry* registry) { return registry && registry->tokenHoldsAdministrators(); }

}  // namespace veltora
