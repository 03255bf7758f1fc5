#pragma once

/// Marks what a shared library offers to its users; everything else stays hidden.
#define VELTORA_API __attribute__((visibility("default")))
