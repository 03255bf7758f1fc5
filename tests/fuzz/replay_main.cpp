// Runs a fuzz target over the files of its corpus, for compilers without libFuzzer.
#include "base/files.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(argv[i], error)) {
      const auto content = veltora::base::lireFichier(entry.path());
      if (!content) continue;
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content->data()), content->size());
      ++count;
    }
  }
  std::printf("%zu inputs replayed\n", count);
  return count ? 0 : 1;
}
