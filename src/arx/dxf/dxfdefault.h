#pragma once

#include <string>

/// Text of an empty metric drawing, complete but for the BLOCK and ENDBLK entities, which a loader adds.
std::string dxfDefaultText();
