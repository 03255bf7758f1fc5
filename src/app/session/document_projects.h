#pragma once

#include "arx/ap/acdocman.h"
#include "points/projets_topo.h"

#include <map>
#include <memory>

namespace veltora::app {

/// Owns the point tables of every open document: makes and loads them when the document appears, installs
/// those of the document that becomes current, and lets the save message write them.
class DocumentProjects : public AcApDocManagerReactor {
public:
  DocumentProjects() { acDocManager->addReactor(this); }
  ~DocumentProjects() override;
  DocumentProjects(const DocumentProjects&) = delete;
  DocumentProjects& operator=(const DocumentProjects&) = delete;

  void documentCreated(AcApDocument* document) override;
  void documentBecameCurrent(AcApDocument* document) override;
  void documentToBeDestroyed(AcApDocument* document) override;
  void documentTitleUpdated(AcApDocument* document) override;
  [[nodiscard]] bool holdsUnsavedData(AcApDocument* document) const override;

private:
  struct Project {
    std::unique_ptr<projetsTopo> tables;
    std::size_t stored = 0;  ///< what the tables were when they were read or saved last
  };
  std::map<AcApDocument*, Project> m_projects;
};

}  // namespace veltora::app
