#include "app/projets_documents.h"

namespace veltora::app {
namespace {
// Arguments of setSrcInfosTopo.
constexpr int kSauvegarder = 1;
constexpr int kCharger = 1;
constexpr int kSansCharger = 0;
}  // namespace

ProjetsDocuments::~ProjetsDocuments() {
  acDocManager->removeReactor(this);
  setSrcInfosTopo(nullptr, nullptr, kSauvegarder, kSansCharger);
}

void ProjetsDocuments::documentCreated(AcApDocument* document) {
  auto& projet = m_projets[document];
  projet = std::make_unique<projetsTopo>();
  setSrcInfosTopo(document->database(), projet.get(), kSauvegarder,
                  document->isNamedDrawing() ? kCharger : kSansCharger);
}

void ProjetsDocuments::documentBecameCurrent(AcApDocument* document) {
  const auto found = m_projets.find(document);
  if (found == m_projets.end()) return;
  setSrcInfosTopo(document->database(), found->second.get(), kSauvegarder, kSansCharger);
}

void ProjetsDocuments::documentToBeDestroyed(AcApDocument* document) {
  const auto found = m_projets.find(document);
  if (found == m_projets.end()) return;
  if (tablesPoints == found->second.get()) setSrcInfosTopo(nullptr, nullptr, kSauvegarder, kSansCharger);
  m_projets.erase(found);
}

}  // namespace veltora::app
