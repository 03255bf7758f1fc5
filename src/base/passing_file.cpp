#include "base/passing_file.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <unistd.h>

namespace veltora::base {
namespace {

/// The names that a signal handler removes. Beyond these a file is left to its owner alone.
std::array<std::atomic<char*>, 64> s_names{};

void enter(const std::string& path) {
  char* const name = ::strdup(path.c_str());
  for (std::atomic<char*>& slot : s_names) {
    char* empty = nullptr;
    if (slot.compare_exchange_strong(empty, name)) return;
  }
  std::free(name);
}

void strike(const std::string& path) {
  for (std::atomic<char*>& slot : s_names) {
    char* const name = slot.load();
    if (!name || path != name) continue;
    slot = nullptr;
    std::free(name);
    return;
  }
}

constexpr std::array kEnding = {SIGTERM, SIGHUP, SIGPIPE};

void onEnd(int signal) {
  effacerPassagers();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

}  // namespace

FichierPassager::FichierPassager(std::string path) : m_path(std::move(path)) { enter(m_path); }

FichierPassager::FichierPassager(FichierPassager&& other) noexcept
    : m_path(std::exchange(other.m_path, {})) {}

FichierPassager& FichierPassager::operator=(FichierPassager&& other) noexcept {
  if (this != &other) {
    effacer();
    m_path = std::exchange(other.m_path, {});
  }
  return *this;
}

void FichierPassager::effacer() {
  if (!m_path.empty()) ::unlink(m_path.c_str());
  garder();
}

void FichierPassager::garder() {
  if (!m_path.empty()) strike(m_path);
  m_path.clear();
}

void effacerPassagers() noexcept {
  for (const std::atomic<char*>& slot : s_names)
    if (const char* const name = slot.load()) ::unlink(name);
}

SignauxRetenus::SignauxRetenus() {
  sigset_t held;
  ::sigemptyset(&held);
  for (const int signal : kEnding) ::sigaddset(&held, signal);
  ::pthread_sigmask(SIG_BLOCK, &held, &m_former);
}

SignauxRetenus::~SignauxRetenus() { ::pthread_sigmask(SIG_SETMASK, &m_former, nullptr); }

void surveillerSignaux() {
  for (const int signal : kEnding)
    if (std::signal(signal, onEnd) == SIG_IGN) std::signal(signal, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace veltora::base
