#include "arx/rx/rxclass.h"
