#include "arx/rx/rxdict.h"

#include "base/text.h"

#include <algorithm>

ACRX_DEFINE_MEMBERS(AcRxDictionary, AcRxObject, nullptr, nullptr)

namespace {
template <class Entries>
auto locate(Entries& entries, const ACHAR* name) {
  return std::find_if(entries.begin(), entries.end(), [name](const auto& entry) {
    return name && veltora::base::compareNoCase(entry.first, name) == 0;
  });
}
}  // namespace

AcRxObject* AcRxDictionary::at(const ACHAR* name) const {
  const auto found = locate(m_entries, name);
  return found == m_entries.end() ? nullptr : found->second;
}

AcRxObject* AcRxDictionary::atPut(const ACHAR* name, AcRxObject* service) {
  if (!name) return nullptr;
  const auto found = locate(m_entries, name);
  if (found != m_entries.end()) return std::exchange(found->second, service);
  m_entries.emplace_back(name, service);
  return nullptr;
}

AcRxObject* AcRxDictionary::remove(const ACHAR* name) {
  const auto found = locate(m_entries, name);
  if (found == m_entries.end()) return nullptr;
  AcRxObject* service = found->second;
  m_entries.erase(found);
  return service;
}

AcRxDictionary* acrxSysRegistry() {
  // Never destroyed: modules still reach it while the program ends.
  static auto* const registry = new AcRxDictionary;
  return registry;
}
