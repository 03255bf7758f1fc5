#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// What a target does with any bytes; each program defines its own.
void fuzz(std::string_view bytes);

/// Ends the program where a target has found a fault.
inline void require(bool good) {
  if (!good) std::abort();
}

// The one source of a program includes this.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz({reinterpret_cast<const char*>(data), size});
  return 0;
}
