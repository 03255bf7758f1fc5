#pragma once

#include "arx/db/resbuf.h"

#include <cstddef>
#include <string>

/// Finds a file as `AcDbHostApplicationServices::findFile` does. RTERROR when it is nowhere.
ARX_API int acedFindFile(const ACHAR* name, ACHAR* result, std::size_t size = 512);
ARX_API int acedFindFile(const ACHAR* name, std::wstring& result);

/// Asks for a file through the file chooser. @param flags 1 a file to write, 2 without the "Type it" button
/// (no effect here), 4 any extension, 32 no question before overwriting
/// @param result RTSTR with the path, released by the caller, on RTNORM; RTCAN when cancelled
ARX_API int acedGetFileD(const ACHAR* title, const ACHAR* defaultName, const ACHAR* extension, int flags,
                         resbuf* result);
