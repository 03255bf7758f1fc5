#pragma once

#include "arx/db/dbid.h"

class AcDbDatabase;

/// The table style "Standard" of a drawing, else its first one, which a table refers to; made when there is
/// none, with the declarations of classes that files with tables have. The null id when it cannot be made.
AcDbObjectId acdbTableStyle(AcDbDatabase& database);
