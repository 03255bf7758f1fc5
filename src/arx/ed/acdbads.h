#pragma once

#include "arx/db/dbid.h"
#include "arx/db/resbuf.h"
#include "arx/ed/acutads.h"

// Entities as chains of group codes and values: -1 the entity's name, 0 its type, 5 its handle, then the
// groups of the file, with references as names (330 and the like) and points in one item. Chains are released
// by the caller.

/// Null when the name names no living entity of the working drawing.
ARX_API resbuf* acdbEntGet(const ads_name entity);
/// The same with extended data, behind a -3 item, of the applications in the chain `applications` (RTSTR or
/// 1001 items, "*" for all).
ARX_API resbuf* acdbEntGetX(const ads_name entity, const resbuf* applications);
/// Changes the entity named by the -1 item. A chain with subclass markers (100), as `acdbEntGet` gives it,
/// replaces all groups; one without them changes the groups that it holds, by code and order. Extended data
/// behind a -3 item replace those of the applications that it names. Owner, handle and sub-entities stay.
/// RTERROR, nothing changed, for a chain that does not fit; ERRNO tells.
ARX_API int acdbEntMod(const resbuf* chain);
/// Regenerates an entity and those it belongs to; nothing is kept apart here, so it only tests the name.
ARX_API int acdbEntUpd(const ads_name entity);
/// Erases an entity, or brings an erased one back.
ARX_API int acdbEntDel(const ads_name entity);
/// Makes an entity in model space from a chain that begins with its type (0). RTERROR for a chain that does
/// not fit.
ARX_API int acdbEntMake(const resbuf* chain);
/// The same in a block definition, or, for an attribute, at a block reference. `made` is set on RTNORM only.
ARX_API int acdbEntMakeIn(const resbuf* chain, AcDbObjectId owner, AcDbObjectId& made);
/// The living entity of model space made last.
ARX_API int acdbEntLast(ads_name entity);
/// The next entity of model space, attributes and vertices included; the first for a null name.
ARX_API int acdbEntNext(const ads_name after, ads_name entity);
ARX_API int acdbHandEnt(const ACHAR* handle, ads_name entity);

/// Corners of the box of a text, given as its entity chain, relative to its insertion point and unturned.
ARX_API int acedTextBox(const resbuf* text, ads_point low, ads_point high);
