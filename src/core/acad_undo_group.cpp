#include "core/acad_undo_group.h"

#include "arx/ap/acdocman.h"

#include <memory>

namespace veltora {
namespace {

bool estOuvert(const AcApDocument* document) {
  if (!document) return false;
  const std::unique_ptr<AcApDocumentIterator> it(acDocManager->newAcApDocumentIterator());
  for (; !it->done(); it->step()) {
    if (it->document() == document) return true;
  }
  return false;
}

}  // namespace

CAcadUndoGroup::CAcadUndoGroup() : m_document(curDoc()) {
  if (m_document) m_document->startUndoMark();
}

CAcadUndoGroup::~CAcadUndoGroup() {
  // The document may have been closed meanwhile.
  if (estOuvert(m_document)) m_document->endUndoMark();
}

}  // namespace veltora
