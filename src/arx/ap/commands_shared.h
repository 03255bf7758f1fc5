#pragma once

#include "arx/db/dbid.h"
#include "arx/ge/gepoint.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class AcDbEntity;

// What the drawing commands share.
namespace arx_commands {

/// Adds an entity to the current space of the current document and closes it. @return the null id on failure
AcDbObjectId add(std::unique_ptr<AcDbEntity> entity);

/// Asks for a point; an empty line is RTNONE when keywords are offered with a base point, else refused.
/// @param from  where the rubber band begins; null for none  @param keywords  as for `acedInitGet`
int askPoint(const wchar_t* prompt, AcGePoint3d& point, const AcGePoint3d* from = nullptr,
             const wchar_t* keywords = nullptr);

/// Record of a symbol table by name; the null id when there is none.
AcDbObjectId recordNamed(AcDbObjectId table, const std::wstring& name);

/// What the user selected beforehand, else what he selects now. @return nothing when he selects nothing
/// @param oneAnswer  his first answer is the whole selection
std::optional<std::vector<AcDbObjectId>> selectEntities(bool oneAnswer = false);
/// The same without what lies on locked layers, which is told; the rest may be empty.
std::optional<std::vector<AcDbObjectId>> selectEditable(bool oneAnswer = false);

/// The value of a variable of whole numbers that every session has; 0 for any other.
int integerVariable(const wchar_t* name);

/// The keyword of the latest prompt.
std::wstring keywordGiven();

}  // namespace arx_commands
