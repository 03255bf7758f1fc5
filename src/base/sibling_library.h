#pragma once

#include "base/export.h"

#include <string>

/// Libraries that are loaded only when they are needed.
namespace veltora::base {

/// A function of a shared library that lies beside this one; the library stays loaded.
/// @param library  its file name  @param reason  why it is not to be had, as the system tells it
/// @return null when the library or the function is missing
VELTORA_API void* siblingFunction(const char* library, const char* function, std::string& reason);

}  // namespace veltora::base
