#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"
#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <string>
#include <vector>

struct resbuf;

/// Choosing in the drawing at the command line.
namespace veltora {

/// Lets the user pick an entity. @param where  the point at which he picked
/// @return as `acedEntSel`; `id` is null unless it is RTNORM
VELTORA_API int pickEntity(const ACHAR* prompt, AcDbObjectId& id, AcGePoint3d* where = nullptr);

/// How a prompt ended: with a value, without one (Enter, cancel, no drawing), or with something that does not
/// fit, so that it is asked again.
enum class Answer { kGiven, kEnd, kAgain };

/// The same for a prompt that goes on until the user picks something or leaves it.
VELTORA_API Answer pickEntityOrLeave(const ACHAR* prompt, AcDbObjectId& id, AcGePoint3d& where);

/// Lets the user select entities.
/// @param mode, filter  as `acedSSGet`; the filter, which may be null, is released
/// @return as `acedSSGet`; `entities` is empty unless it is RTNORM
VELTORA_API int selectEntities(const ACHAR* mode, resbuf* filter, std::vector<AcDbObjectId>& entities);
/// What a crossing window with these corners, in the plane, touches. @return as above
VELTORA_API int selectCrossing(const AcGePoint2d& a, const AcGePoint2d& b,
                               std::vector<AcDbObjectId>& entities);
/// As `selectEntities` among the entities that bear the mark of point blocks.
/// @return empty when he cancels or nothing was found
VELTORA_API std::vector<AcDbObjectId> selectPointBlocks(const ACHAR* mode);

/// What the user typed as keyword or free text at the prompt before; empty for nothing.
VELTORA_API std::wstring typedText();

/// Asks for a distance; Enter takes `value` as it is. @return false when he cancels
VELTORA_API bool askDistance(const std::wstring& prompt, double& value);

}  // namespace veltora
