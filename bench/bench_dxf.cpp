// bench_dxf FILE...: reads and writes drawings (tools that make big ones: see bench/compare_ezdxf.py). One
// line a file: objects, processor seconds, those of a bare scan (every line found, every group code read),
// megabytes a second, peak memory, and growth of the time against the first file (1.00 is linear).
#include "arx/db/dbmain.h"
#include "arx/dxf/dxfread.h"
#include "base/text.h"
#include "mesure.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Result {
  std::size_t objects = 0;
  double read = 0.0;
  double write = 0.0;
  double scan = 0.0;
};

/// The floor of any reader. @return sum of all group codes, so that nothing of it can be left out
long scanned(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<char> piece(std::size_t{1} << 20U);
  std::size_t kept = 0;
  long sum = 0;
  bool isCode = true;
  while (file.read(piece.data() + kept, static_cast<std::streamsize>(piece.size() - kept)),
         file.gcount() > 0) {
    const char* line = piece.data();
    const char* const end = line + kept + file.gcount();
    while (const auto* stop =
               static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)))) {
      int code = 0;
      if (isCode) std::from_chars(line + std::strspn(line, " "), stop, code);
      sum += code;
      isCode = !isCode;
      line = stop + 1;
    }
    kept = static_cast<std::size_t>(end - line);
    std::memmove(piece.data(), line, kept);
  }
  return sum;
}

Result measure(const std::filesystem::path& path) {
  Result result;
  double start = processorSeconds();
  if (scanned(path) == 0) std::exit(1);
  result.scan = processorSeconds() - start;
  AcDbDatabase database(false, true);
  std::wstring message;
  start = processorSeconds();
  if (dxfReadFile(database, path, &message) != Acad::eOk) {
    std::fprintf(stderr, "%s\n", veltora::base::toUtf8(message).c_str());
    std::exit(1);
  }
  result.read = processorSeconds() - start;
  const std::filesystem::path copy = path.string() + ".copie.dxf";
  start = processorSeconds();
  database.saveAs(copy.wstring().c_str(), &message);
  result.write = processorSeconds() - start;
  result.objects = database.allObjects().size();
  std::filesystem::remove(copy);
  return result;
}

/// Measures in a process of its own, so that the peak is that of one file.
bool measureAlone(const std::filesystem::path& path, Result& result, double& peakMegabytes) {
  int ends[2];
  if (::pipe(ends) != 0) return false;
  const pid_t child = ::fork();
  if (child == 0) {
    const Result own = measure(path);
    ::_exit(::write(ends[1], &own, sizeof own) == sizeof own ? 0 : 1);
  }
  ::close(ends[1]);
  const bool got = ::read(ends[0], &result, sizeof result) == sizeof result;
  ::close(ends[0]);
  struct rusage usage {};
  int status = 0;
  ::wait4(child, &status, 0, &usage);
  peakMegabytes = static_cast<double>(usage.ru_maxrss) / 1024.0;
  return got;
}

}  // namespace

int main(int argc, char** argv) {
  std::printf("%-28s %9s %8s %8s %8s %9s %9s %8s %8s\n", "file", "objects", "read s", "write s", "scan s",
              "read MB/s", "write MB/s", "peak MB", "growth");
  double firstCost = 0.0;
  for (int i = 1; i < argc; ++i) {
    Result result;
    double peak = 0.0;
    if (!measureAlone(argv[i], result, peak)) return 1;
    const double megabytes = static_cast<double>(std::filesystem::file_size(argv[i])) / 1e6;
    const double cost = (result.read + result.write) / static_cast<double>(result.objects);
    if (i == 1) firstCost = cost;
    std::printf("%-28s %9zu %8.3f %8.3f %8.3f %9.1f %9.1f %8.1f %8.2f\n",
                std::filesystem::path(argv[i]).filename().c_str(), result.objects, result.read, result.write,
                result.scan, megabytes / result.read, megabytes / result.write, peak, cost / firstCost);
  }
  return 0;
}
