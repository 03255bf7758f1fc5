#pragma once

#include "arx/rx/rxclass.h"

#include <string>
#include <utility>
#include <vector>

/// Named services, in order of entry. Names compare ignoring case. The services are not owned.
class ARX_API AcRxDictionary : public AcRxObject {
  ACRX_DECLARE_MEMBERS(AcRxDictionary)
public:
  /// Null when there is no such service.
  [[nodiscard]] AcRxObject* at(const ACHAR* name) const;
  /// Enters or replaces. @return the former service, null when the name is new
  AcRxObject* atPut(const ACHAR* name, AcRxObject* service);
  /// @return what was entered, null when nothing was
  AcRxObject* remove(const ACHAR* name);
  [[nodiscard]] std::size_t numEntries() const { return m_entries.size(); }

private:
  std::vector<std::pair<std::wstring, AcRxObject*>> m_entries;
};

/// The host's registry of services. The command stack stands in it as "ACAD_REGISTERED_COMMANDS".
ARX_API AcRxDictionary* acrxSysRegistry();
