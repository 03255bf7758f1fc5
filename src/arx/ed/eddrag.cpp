#include "arx/ed/eddrag.h"

#include "arx/ed/edprompt.h"

#include <utility>

namespace {

std::optional<AcEdDraggedSet>& draggedSet() {
  static std::optional<AcEdDraggedSet> set;
  return set;
}

}  // namespace

const AcEdDraggedSet* acedDraggedSet() { return draggedSet() ? &*draggedSet() : nullptr; }

AcEdDragSet::AcEdDragSet(const std::vector<AcDbObjectId>& entities, Map map) {
  acedPromptState().drag = [&entities, map = std::move(map)](const std::array<double, 3>& p) {
    draggedSet().reset();
    if (const auto matrix = map({p[0], p[1], p[2]})) draggedSet().emplace(AcEdDraggedSet{entities, *matrix});
  };
}

AcEdDragSet::~AcEdDragSet() {
  acedPromptState().drag = nullptr;
  draggedSet().reset();
}
