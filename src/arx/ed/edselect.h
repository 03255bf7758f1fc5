#pragma once

#include "arx/db/dbid.h"
#include "arx/db/resbuf.h"
#include "arx/ed/acutads.h"

#include <vector>

class AcDbDatabase;
class AcDbEntity;

// Picking entities, and selection sets. A set is named by a number and lives until it is freed or its drawing
// closes; it keeps its order and holds an entity once. Entities that were erased stay in the set.

/// Asks for one entity by a point: RTNORM with its name and the point. A point next to nothing is RTERROR
/// with ERRNO 7. Also understood: `DERNIER`, an expression whose value is an entity name or a list (name
/// point). Otherwise as the prompts of edinput.h. The nearest drawn entity within the aperture counts, of
/// equals the one drawn last; the aperture is a hundredth of the view's height. Entities on layers that are
/// off or frozen, and invisible ones, are not seen.
ARX_API int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point point);
/// The same reaching into blocks and to attributes: names the innermost entity. `matrix` maps its coordinates
/// to the world; `references` are the block references around it, innermost first (RTENAME chain, released by
/// the caller, null for none).
/// @param pickPoint non-zero takes `point` as it was passed, without a prompt
ARX_API int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point point, int pickPoint,
                         ads_matrix matrix, resbuf** references);

/// A new selection set from
///   null or ""  what the user selects, line by line: a point to pick at, `TOUT`, `DERNIER`, `PRECEDENT`, `F
///   x,y x,y`
///               (window), `C x,y x,y` (crossing), an expression giving a set or a name; an empty line ends;
///               with `pt1`, what lies at this point, without asking
///   "X"         the whole drawing, frozen and off layers too        "A"  what can be seen and is not locked
///   "W" "C"     window and crossing between `pt1` and `pt2` (ads_point)
///   "WP" "CP"   window and crossing polygon, "F" a fence: `pt1` is a resbuf chain of points, three or more,
///               of a fence two or more
///   "L"         the visible entity made last    "P" the set selected before this one    "I" the pick-first
///   set
/// A leading "_" is allowed; ":S" behind or instead of a mode ends the asking with the first line.
/// @param filter chain of group codes and values that an entity must have all of; texts may hold the patterns
/// of
///        `acutWcMatch`. -4 items are operators: "<AND" "AND>" "<OR" "OR>" "<NOT" "NOT>" "<XOR" "XOR>", and
///        in front of a number or a point a comparison: "=" "!=" "/=" "<>" "<" "<=" ">" ">=" "&" "&=" "*"
///        (for points up to three, comma-separated). Group 100 matches the name of the class or of one of its
///        bases. 1001 items, or the texts behind a -3 item, ask for extended data of an application.
/// @return RTNORM; RTERROR when nothing was found or an argument is wrong (the set is then 0,0); RTCAN
ARX_API int acedSSGet(const ACHAR* mode, const void* pt1, const void* pt2, const resbuf* filter,
                      ads_name set);

ARX_API int acedSSLength(const ads_name set, Adesk::Int32* length);
/// RTERROR for an index outside.
ARX_API int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity);
/// Adds an entity to a set, which is then also the result; a null `set` makes a new one, with a null `entity`
/// an empty one.
ARX_API int acedSSAdd(const ads_name entity, const ads_name set, ads_name result);
/// RTERROR when the set does not hold it.
ARX_API int acedSSDel(const ads_name entity, const ads_name set);
/// RTNORM when the set holds the entity.
ARX_API int acedSSMemb(const ads_name entity, const ads_name set);
ARX_API int acedSSFree(const ads_name set);
/// The pick-first set, that mode "I" gives to commands with ACRX_CMD_USEPICKSET. A null set clears it.
ARX_API int acedSSSetFirst(const ads_name gripSet, const ads_name pickSet);

/// True for a name that is a living selection set.
ARX_API bool acedIsSelectionSet(const ads_name name);
/// What the set holds; empty for no set.
ARX_API std::vector<AcDbObjectId> acedSSEntities(const ads_name set);
ARX_API void acedSSFromEntities(const std::vector<AcDbObjectId>& entities, ads_name set);

/// Tests an entity against a filter as `acedSSGet` does. A filter that is not well formed throws nothing and
/// fits nothing.
ARX_API bool acedMatchesFilter(const AcDbEntity& entity, const resbuf* filter);
/// False for brackets that do not pair or an operator that is unknown.
ARX_API bool acedIsFilter(const resbuf* filter);

/// Drops what the editor remembers of a drawing that closes: members of sets, last point, transient graphics.
ARX_API void acedForgetDatabase(AcDbDatabase* database);
