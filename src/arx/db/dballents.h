#pragma once

// Every entity class of the host.

#include "arx/db/dbattr.h"
#include "arx/db/dbblockmarkers.h"
#include "arx/db/dbblockref.h"
#include "arx/db/dbcircle.h"
#include "arx/db/dbellipse.h"
#include "arx/db/dbheavypoly.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmesh.h"
#include "arx/db/dbmtext.h"
#include "arx/db/dbpl.h"
#include "arx/db/dbspline.h"
#include "arx/db/dbtext.h"
