#pragma once

#include "arx/adesk.h"

#include <string>

/// Routines of strangers: from now on no routine may read, write, delete or look for files or see the
/// environment.
/// @param routine  the one file that may be loaded all the same, as it will be named; "" for none
ARX_API void acedCloseFilesToRoutines(const std::wstring& routine);
/// Whether a routine may reach a file of this name, or for "" any file at all.
ARX_API bool acedRoutineMayReach(const std::wstring& name = {});
