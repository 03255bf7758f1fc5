#include "app/window/screen.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <QGuiApplication>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>

namespace veltora::app {
namespace {

/// Platforms that need no screen.
bool needsNone() {
  const char* const platform = std::getenv("QT_QPA_PLATFORM");
  if (!platform) return false;
  const std::string_view name(platform);
  return name.starts_with("offscreen") || name.starts_with("minimal");
}

/// What the trying process does: it ends with 0 when the toolkit started.
[[noreturn]] void tryScreen() {
  std::signal(SIGABRT, SIG_DFL);
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_CORE, &none);
  if (const int nowhere = ::open("/dev/null", O_WRONLY); nowhere >= 0) ::dup2(nowhere, STDERR_FILENO);
  int count = 1;
  char name[] = "veltora-fenetre";
  char* arguments[] = {name, nullptr};
  const QGuiApplication application(count, arguments);
  ::_exit(0);
}

}  // namespace

bool screenIsThere() {
  if (needsNone()) return true;
  const pid_t child = ::fork();
  if (child < 0) return true;  // the toolkit itself will tell
  if (child == 0) tryScreen();
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return true;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace veltora::app
