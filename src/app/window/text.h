#pragma once

#include "app/window/dialogs/text.h"
