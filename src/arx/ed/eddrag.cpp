#include "arx/ed/eddrag.h"

#include "arx/ed/edprompt.h"

#include <utility>

namespace {

std::optional<AcEdDraggedSet>& dragged() {
  static std::optional<AcEdDraggedSet> set;
  return set;
}

}  // namespace

const AcEdDraggedSet* acedDraggedSet() { return dragged() ? &*dragged() : nullptr; }

AcEdDragSet::AcEdDragSet(const std::vector<AcDbObjectId>& entities, Map map) {
  acedPromptState().drag = [&entities, map = std::move(map)](const std::array<double, 3>& p) {
    dragged().reset();
    if (const auto matrix = map({p[0], p[1], p[2]})) dragged().emplace(AcEdDraggedSet{entities, *matrix});
  };
}

AcEdDragSet::~AcEdDragSet() {
  acedPromptState().drag = nullptr;
  dragged().reset();
}
