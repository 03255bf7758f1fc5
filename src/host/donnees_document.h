#pragma once

#include "arx/ap/acdocman.h"

#include <map>

namespace veltora {

/// What belongs to one document; nothing so far.
class CDocData {};

/// Per-document data, which go with their document. Registers itself with the document manager for its life.
template <class T>
class AsdkDataManager : public AcApDocManagerReactor {
public:
  AsdkDataManager() { acDocManager->addReactor(this); }
  ~AsdkDataManager() override { acDocManager->removeReactor(this); }
  AsdkDataManager(const AsdkDataManager&) = delete;
  AsdkDataManager& operator=(const AsdkDataManager&) = delete;
  void documentToBeDestroyed(AcApDocument* document) override { m_donnees.erase(document); }

private:
  std::map<AcApDocument*, T> m_donnees;
};

}  // namespace veltora
