#include "app/session/document_projects.h"

#include "points/infos_topo.h"

namespace veltora::app {
namespace {
// Arguments of setSrcInfosTopo.
constexpr int kSauvegarder = 1;
constexpr int kCharger = 1;
constexpr int kSansCharger = 0;
}  // namespace

DocumentProjects::~DocumentProjects() {
  acDocManager->removeReactor(this);
  setSrcInfosTopo(nullptr, nullptr, kSauvegarder, kSansCharger);
}

void DocumentProjects::documentCreated(AcApDocument* document) {
  Project& project = m_projects[document];
  project.tables = std::make_unique<projetsTopo>();
  setSrcInfosTopo(document->database(), project.tables.get(), kSauvegarder,
                  document->isNamedDrawing() || document->isRecovered() ? kCharger : kSansCharger);
  project.stored = empreinteTables(*project.tables);
}

void DocumentProjects::documentBecameCurrent(AcApDocument* document) {
  const auto found = m_projects.find(document);
  if (found == m_projects.end()) return;
  setSrcInfosTopo(document->database(), found->second.tables.get(), kSauvegarder, kSansCharger);
}

void DocumentProjects::documentToBeDestroyed(AcApDocument* document) {
  const auto found = m_projects.find(document);
  if (found == m_projects.end()) return;
  if (tablesPoints == found->second.tables.get())
    setSrcInfosTopo(nullptr, nullptr, kSauvegarder, kSansCharger);
  m_projects.erase(found);
}

void DocumentProjects::documentTitleUpdated(AcApDocument* document) {
  const auto found = m_projects.find(document);
  if (found != m_projects.end()) found->second.stored = empreinteTables(*found->second.tables);
}

bool DocumentProjects::holdsUnsavedData(AcApDocument* document) const {
  const auto found = m_projects.find(document);
  return found != m_projects.end() && found->second.stored != empreinteTables(*found->second.tables);
}

}  // namespace veltora::app
