#pragma once

#include "arx/db/dbobject.h"
#include "arx/db/resbuf.h"

#include <string>
#include <vector>

/// One group of an object as the command-line layer sees it: points in one piece, angles (50 to 58) in
/// radians, references as ids.
struct AcEdGroup {
  int code = 0;
  RbKind kind = RbKind::kNone;
  std::wstring text;
  AcGePoint3d point;  ///< a number stands in x
  Adesk::Int64 integer = 0;
  AcDbObjectId id;
  std::string raw;  ///< as in the file; of a point its first coordinate
  int coordinates = 0;
};

/// All groups of an object but its extended data, in the order of the file, type and handle first.
std::vector<AcEdGroup> acedGroupsOf(const AcDbObject& object);
/// A group as an item of a chain, owned by the caller; null for one that has no value there.
resbuf* acedRbFromGroup(const AcEdGroup& group);
/// File text of a chain of groups; items that are no groups of the file (-1, -2) are left out.
/// @param former groups whose spelling is kept where the value is the same  @return false for a value that
/// fits no group
bool acedTagsFromChain(const resbuf* chain, const std::vector<AcEdGroup>& former, DxfTagText& tags);
/// Hexadecimal text of a handle.
std::string acedHandleText(AcDbHandle handle);
