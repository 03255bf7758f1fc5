#pragma once

#include "arx/db/dxftags.h"
#include "arx/db/resbuf.h"
#include "arx/ge/gematrix.h"

#include <functional>
#include <string>

// Extended data of one object, kept as file text: groups 1001 to 1071, each application's behind its 1001
// group. Names of applications compare ignoring case. Internal to AcDbObject.

/// Data of one application, 1001 item first, or of all for null, as a chain for the caller to release; null
/// when there is none.
resbuf* acdbXDataChain(const DxfTagText& tags, const ACHAR* application);
/// Whether the application, or for null any, has data.
bool acdbHasXData(const DxfTagText& tags, const ACHAR* application);
/// Replaces the data of the applications that a chain names, as told at `AcDbObject::setXData`.
/// @param isRegistered asked for each application of the chain
Acad::ErrorStatus acdbReplaceXData(DxfTagText& tags, const resbuf* chain,
                                   const std::function<bool(const std::wstring&)>& isRegistered);
/// Maps what lies in the world, as told at `AcDbObject::xDataTransformBy`. @return whether anything does
bool acdbTransformXData(resbuf* chain, const AcGeMatrix3d& matrix);
