#pragma once

// The command-line layer as a whole.
#include "arx/ed/acdbads.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edfiles.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edlisp.h"
#include "arx/ed/edselect.h"
#include "arx/ed/edvars.h"
