#pragma once

#include <sys/resource.h>

#include <cstdio>
#include <ctime>
#include <map>
#include <string>

/// Seconds of the processor that this process has used, user and system: they mean the same on a busy
/// machine.
inline double processorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// Measures jobs at growing sizes and prints one table: N, processor seconds, thousand a second, growth, peak
/// memory.
class Mesure {
public:
  Mesure() {
    std::printf("%-34s %9s %9s %11s %10s %9s\n", "job", "N", "cpu s", "1000/s", "growth", "peak MB");
  }

  /// @param n  how much the job works on; the growth is the factor of time over the factor of size since the
  /// same job's former size: 1 is linear
  template <class Job>
  void operator()(const std::string& name, int n, Job job) {
    const double start = processorSeconds();
    job();
    const double seconds = processorSeconds() - start;
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
  std::map<std::string, std::pair<double, double>> m_former;
};
