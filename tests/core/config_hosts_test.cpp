// Which hosts are installed, from a registry that is a table.
#include "core/host_discovery.h"

#include <gtest/gtest.h>

#include <map>
#include <tuple>

namespace {
using namespace veltora;
using Root = Registry::Root;
using View = Registry::View;

constexpr View k32 = View::k32Bits;
constexpr View k64 = View::k64Bits;

class RegistryTable : public Registry {
public:
  std::vector<std::wstring> subKeys(Root root, View view, const std::wstring& key) const override {
    const std::wstring begin = key.ends_with(L'\\') ? key : key + L'\\';
    std::vector<std::wstring> names;
    for (const auto& [place, value] : rows) {
      const auto& [r, v, k, n] = place;
      if (r != root || v != view || !(k + L'\\').starts_with(begin) || k.size() <= begin.size()) continue;
      const std::wstring name = k.substr(begin.size(), k.find(L'\\', begin.size()) - begin.size());
      if (names.empty() || names.back() != name) names.push_back(name);
    }
    return names;
  }
  std::optional<std::wstring> value(Root root, View view, const std::wstring& key,
                                    const std::wstring& name) const override {
    const auto found = rows.find({root, view, key, name});
    return found == rows.end() ? std::nullopt : std::optional(found->second);
  }
  bool is64Bits() const override { return wide; }
  bool tokenHoldsAdministrators() const override { return administrator; }

  void put(View view, const std::wstring& key, const std::wstring& name, const std::wstring& text,
           Root root = Root::kLocalMachine) {
    rows[{root, view, key, name}] = text;
  }

  std::map<std::tuple<Root, View, std::wstring, std::wstring>, std::wstring> rows;
  bool wide = true;
  bool administrator = false;
};

/// "product|id|folder|key|view" of each host, lines in between.
std::wstring listed(const std::vector<HostInstallation>& hosts) {
  std::wstring text;
  for (const HostInstallation& h : hosts)
    text += h.product + L"|" + h.productId + L"|" + h.folder + L"|" + h.key +
            (h.view == k32 ? L"|32\n" : L"|64\n");
  return text;
}

TEST(HostDiscovery, ListsHostsByHostAndViewAsTheyEnterThemselves) {
  RegistryTable r;
  const std::wstring a = L"Software\\Autodesk\\AutoCAD\\R24.0\\ACAD-4101:40C";
  r.put(k64, a, L"ProductName", L"Dessin 2021");
  r.put(k64, a, L"ProductId", L"4101");
  r.put(k64, a, L"AcadLocation", L"C:\\A");
  r.put(k64, L"Software\\Autodesk\\AutoCAD\\R24.0\\ACAD-4102:40C", L"ProductName", L"sans dossier");
  r.put(k32, L"Software\\Bricsys\\Bricscad\\V20\\fr_FR", L"FullVersion", L"20.1.08");
  r.put(k32, L"Software\\Bricsys\\Bricscad\\V20\\fr_FR", L"InstallDir", L"C:\\B20");
  r.put(k64, L"Software\\Bricsys\\Bricscad\\V19", L"FullVersion", L"19.2");
  r.put(k64, L"Software\\Bricsys\\Bricscad\\V19", L"InstallDir", L"C:\\B19");
  r.put(k64, L"Software\\Bricsys\\Bricscad\\V21", L"FullVersion", L"21.1");
  r.put(k64, L"Software\\Bricsys\\Bricscad\\V21", L"InstallDir", L"C:\\B21");
  for (const wchar_t* version : {L"17.0", L"170.1", L"20.0", L"18.5"}) {
    const std::wstring key = std::wstring(L"Software\\GstarSoft\\GstarCAD\\") + version;
    r.put(k32, key, L"Version", version);
    r.put(k32, key, L"LOCATION", std::wstring(L"C:\\G") + version);
    r.put(k32, key, L"ProductName", L"G");
  }
  const std::wstring narrow = L"Bricscad||C:\\B20|Software\\Bricsys\\Bricscad\\V20\\fr_FR|32\n";
  const std::wstring last =
      L"G||C:\\G17.0|Software\\GstarSoft\\GstarCAD\\17.0|32\nG||C:\\G20.0|Software\\GstarSoft\\GstarCAD\\20."
      L"0|32\n";
  EXPECT_EQ(listed(installedHosts(&r)), L"Dessin 2021|4101|C:\\A|" + a + L"|64\n" + narrow +
                                            L"Bricscad||C:\\B19|Software\\Bricsys\\Bricscad\\V19|64\n" +
                                            last);
  r.wide = false;
  EXPECT_EQ(listed(installedHosts(&r)), narrow + last) << "no second view to look at";
  r.wide = true;
  r.put(k64, L"Software\\Bricsys\\Bricscad\\V20\\fr_FR", L"FullVersion", L"20.1.08");
  r.put(k64, L"Software\\Bricsys\\Bricscad\\V20\\fr_FR", L"InstallDir", L"C:\\B20");
  EXPECT_EQ(installedHosts(&r).size(), 5U) << "what both views show counts once";
}

TEST(HostDiscovery, TrustedPathsComeFromTheMachineOrElseFromTheUser) {
  RegistryTable r;
  const std::wstring key = L"Software\\Autodesk\\AutoCAD\\R24.0\\ACAD-1";
  r.put(k32, key, L"AcadLocation", L"C:\\A");
  const auto variables = [&](const wchar_t* profile) {
    return key + L"\\Profiles\\" + profile + L"\\Variables";
  };
  r.put(k32, variables(L"deux"), L"TRUSTEDPATHS", L"M2");
  r.put(k32, variables(L"deux"), L"TRUSTEDPATHS", L"U2", Root::kCurrentUser);
  r.put(k32, variables(L"un"), L"TRUSTEDPATHS", L"U1", Root::kCurrentUser);
  r.put(k32, variables(L"vide"), L"AUTRE", L"x");
  const auto hosts = installedHosts(&r);
  ASSERT_EQ(hosts.size(), 1U);
  ASSERT_EQ(hosts[0].trusted.size(), 2U);
  EXPECT_EQ(hosts[0].trusted[0].key, variables(L"deux"));
  EXPECT_EQ(hosts[0].trusted[0].value, L"M2");
  EXPECT_EQ(hosts[0].trusted[0].root, Root::kLocalMachine);
  EXPECT_EQ(hosts[0].trusted[1].value, L"U1");
  EXPECT_EQ(hosts[0].trusted[1].root, Root::kCurrentUser);
}

TEST(HostDiscovery, WithoutARegistryThereIsNothing) {
  EXPECT_EQ(systemRegistry(), nullptr);
  EXPECT_TRUE(installedHosts().empty());
  EXPECT_FALSE(isAdministrator());
  RegistryTable r;
  r.administrator = true;
  setSystemRegistry(&r);
  EXPECT_TRUE(isAdministrator());
  setSystemRegistry(nullptr);
}

}  // namespace
