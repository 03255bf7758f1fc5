#pragma once

#include "arx/db/resbuf.h"

#include <string>

/// Value of a system variable in `result`, without successor; a text in it is released by the caller.
/// Variables of the session (ERRNO, CMDECHO, OSMODE, FILEDIA...), of the document (DWGNAME, DWGPREFIX, DBMOD,
/// CLAYER, EXTMIN, VIEWCTR...) and all header variables of the working drawing. RTERROR for an unknown name.
/// Names compare ignoring case.
ARX_API int acedGetVar(const ACHAR* name, resbuf* result);
/// RTERROR, nothing changed, for an unknown or read-only variable, and for a value of the wrong kind or out
/// of range.
ARX_API int acedSetVar(const ACHAR* name, const resbuf* value);

/// Cause of the latest RTERROR: 7 nothing at the picked point, 52 an empty answer to `acedEntSel`, 15 a bad
/// chain, 1 a bad name. 0 for none.
ARX_API void acedSetErrno(int value);

/// Tells the variables DWGNAME, DWGPREFIX and DWGTITLED about the current document; an empty path for one
/// without name.
ARX_API void acedSetDocumentName(const std::wstring& path, const std::wstring& title);
