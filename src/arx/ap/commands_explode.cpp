#include "arx/ap/commands_explode.h"

#include "arx/ap/commands_shared.h"
#include "arx/db/dbents.h"
#include "arx/db/dbexplode.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edports.h"
#include "base/text.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace arx_commands {

namespace {

/// A routine may give what is to be taken apart without an empty line behind it, unless QAFLAGS says
/// otherwise.
bool takesOneAnswer() { return acedPorts().routine && integerVariable(L"QAFLAGS") % 2 == 0; }

/// What did not come apart.
struct Left {
  std::map<std::string, int> whole;  ///< by type
  int uneven = 0;

  void tell() const {
    std::wstring types;
    for (const auto& [type, count] : whole)
      types += (types.empty() ? L"" : L", ") + std::to_wstring(count) + L' ' + veltora::base::fromUtf8(type);
    if (!types.empty()) acutPrintf(L"Ne se décompose pas : %s\n", types);
    if (uneven > 0)
      acutPrintf(L"%d bloc(s) laissé(s) entier(s) : ce qu'ils montrent ne suit pas leurs échelles inégales\n",
                 uneven);
  }
};

/// @return how many parts came of it; 0 when it stays
std::size_t explode(AcDbObjectId id, Left& left) {
  std::vector<AcDbObjectId> parts;
  const Acad::ErrorStatus status = acdbExplode(id, parts);
  const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
  if (!entity) return 0;
  if (status == Acad::eCannotScaleNonUniformly) ++left.uneven;
  if (status == Acad::eNotApplicable) ++left.whole[std::string(entity->dxfName())];
  if (status != Acad::eOk || entity->erase() != Acad::eOk) return 0;
  return parts.size();
}

}  // namespace

void explodeEntities() {
  const std::optional<std::vector<AcDbObjectId>> entities = selectEditable(takesOneAnswer());
  if (!entities) return;
  Left left;
  int taken = 0;
  std::size_t made = 0;
  for (const AcDbObjectId id : *entities) {
    const std::size_t parts = explode(id, left);
    made += parts;
    if (!id.isLive()) ++taken;
  }
  acutPrintf(L"\n%d objet(s) décomposé(s) en %d\n", taken, static_cast<int>(made));
  left.tell();
}

}  // namespace arx_commands
