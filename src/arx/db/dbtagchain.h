#pragma once

#include "arx/db/dxftags.h"
#include "arx/db/resbuf.h"

class AcDbDatabase;

/// Groups of a file as a chain of typed values and back; internal to xrecords and extended data.

/// @param database where handles are looked up; null when the groups hold no references by name (extended
/// data)
/// @return a chain for the caller to release, null without groups. A number that is none reads as 0, a
/// reference to
///         nothing or to an erased object as the null name.
resbuf* chainOfTags(const DxfTagText& tags, AcDbDatabase* database);
/// @return false when an item has no value that a file can hold; `tags` is then of no use
bool tagsOfChain(const resbuf* chain, DxfTagText& tags);
