#pragma once

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <map>
#include <string>

/// Measures jobs at growing sizes and prints one table: N, seconds, thousand a second, growth, peak memory.
class Mesure {
public:
  /// Seconds of a clock on the wall, or those of the processor, which a busy machine lengthens less.
  enum class Clock { kWall, kCpu };
  explicit Mesure(Clock clock = Clock::kWall) : m_clock(clock) {
    const char* const unit = clock == Clock::kCpu ? "CPU s" : "s";
    std::printf("%-34s %9s %9s %11s %10s %9s\n", "job", "N", unit, "1000/s", "growth", "peak MB");
  }

  /// @param n  how much the job works on; the growth is the factor of time over the factor of size since the
  /// same job's former size: 1 is linear
  template <class Job>
  void operator()(const std::string& name, int n, Job job) {
    const double start = now();
    job();
    const double seconds = now() - start;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::string growth = "-";
    if (const auto former = m_former.find(name); former != m_former.end()) {
      char text[32];
      std::snprintf(text, sizeof(text), "%.2f", seconds / former->second.second * former->second.first / n);
      growth = text;
    }
    m_former[name] = {static_cast<double>(n), seconds};
    std::printf("%-34s %9d %9.3f %11.0f %10s %9.1f\n", name.c_str(), n, seconds, n / seconds / 1000.0,
                growth.c_str(), static_cast<double>(usage.ru_maxrss) / 1024.0);
    std::fflush(stdout);
  }

private:
  [[nodiscard]] double now() const {
    if (m_clock == Clock::kCpu) return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
  }
  Clock m_clock;
  std::map<std::string, std::pair<double, double>> m_former;
};
