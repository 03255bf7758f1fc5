#include "arx/rx/rxclass.h"

#include <unordered_map>

namespace {

struct ClassRegistry {
  std::unordered_map<std::wstring_view, AcRxClass*> byName;
  std::unordered_map<std::string_view, AcRxClass*> byDxfName;
};

ClassRegistry& registry() {
  static ClassRegistry* const classes = new ClassRegistry;
  return *classes;
}

}  // namespace

AcRxClass::AcRxClass(const ACHAR* name, const char* dxfName, AcRxClass* parent, Factory factory)
    : m_name(name), m_dxfName(dxfName), m_parent(parent), m_factory(factory) {
  registry().byName.emplace(name, this);
  if (dxfName) registry().byDxfName.emplace(dxfName, this);
}

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
  for (const AcRxClass* c = this; c; c = c->m_parent) {
    if (c == other) return true;
  }
  return false;
}

AcRxClass* AcRxClass::findByName(std::wstring_view name) {
  const auto found = registry().byName.find(name);
  return found == registry().byName.end() ? nullptr : found->second;
}

AcRxClass* AcRxClass::findByDxfName(std::string_view dxfName) {
  const auto found = registry().byDxfName.find(dxfName);
  return found == registry().byDxfName.end() ? nullptr : found->second;
}

AcRxClass* AcRxObject::desc() {
  static AcRxClass* const descriptor = new AcRxClass(L"AcRxObject", nullptr, nullptr, nullptr);
  return descriptor;
}
