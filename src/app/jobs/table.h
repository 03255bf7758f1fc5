#pragma once

#include "app/session/job.h"

#include <span>

namespace veltora::app {

/// All sub-commands, in the order in which the help shows them.
std::span<const Job> jobTable();

}  // namespace veltora::app
