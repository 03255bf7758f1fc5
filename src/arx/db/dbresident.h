#pragma once

#include "arx/db/dbid.h"

/// The object of an id without opening it; null when it is erased or of another class.
template <class T>
T* resident(AcDbObjectId id) {
  return id.isLive() ? T::cast(id.stub()->object) : nullptr;
}
