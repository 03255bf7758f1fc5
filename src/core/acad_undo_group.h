#pragma once

#include "base/uncopyable.h"

class AcApDocument;

namespace veltora {

/// What is changed in the host's current document during the life of this object is one step of undo.
class CAcadUndoGroup : private Uncopyable {
public:
  /// Without a current document the group has no effect.
  CAcadUndoGroup();
  ~CAcadUndoGroup();

private:
  AcApDocument* m_document;
};

}  // namespace veltora
