#pragma once

#include "arx/adesk.h"

#include <string>
#include <vector>

/// What AIDE tells of a command: host and modules describe theirs when they register them.
struct AcEdCommandHelp {
  std::wstring group;    ///< who describes it: a group of the command stack
  std::wstring subject;  ///< under which it is listed
  std::wstring names;    ///< as a person types them, ", " between them
  std::wstring line;     ///< what it does
};

/// Appends a description; names that the group has described keep their place and take the new text.
ARX_API void acedDescribeCommand(const AcEdCommandHelp& help);
ARX_API void acedForgetDescriptions(const ACHAR* group);
/// In order of description.
ARX_API const std::vector<AcEdCommandHelp>& acedDescriptions();
/// All descriptions by subject, subjects in the order in which they came up; a line each, names in a column.
ARX_API std::wstring acedHelpText();
