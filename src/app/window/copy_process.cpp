#include "app/window/copy_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <exception>
#include <utility>

namespace veltora::app {
namespace {

constexpr int kPatience = 600000;  // ms: a work that takes longer is taken for stuck
constexpr int kPolite = 5;         // how far the work steps back behind the window

/// What the new process does. Files that this program removes when it is ended are those of its parent.
[[noreturn]] void work(const std::function<std::string()>& task, pid_t parent, int answer) {
  for (const int each : {SIGTERM, SIGHUP, SIGINT, SIGPIPE}) std::signal(each, SIG_DFL);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(1);
  if (::nice(kPolite) == -1) errno = 0;
  std::string failure;
  try {
    failure = task();
  } catch (const std::exception& error) {
    failure = error.what();
  } catch (...) {
    failure = "raison inconnue";
  }
  const ssize_t told = ::write(answer, failure.data(), failure.size());
  ::_exit(told == static_cast<ssize_t>(failure.size()) ? 0 : 1);
}

int waitFor(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0)
    if (errno != EINTR) return -1;
  return status;
}

}  // namespace

CopyProcess::CopyProcess() {
  m_patience.setSingleShot(true);
  QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] {
    if (m_child > 0) ::kill(m_child, SIGKILL);
  });
}

CopyProcess::~CopyProcess() { abandon(); }

bool CopyProcess::start(const std::function<std::string()>& task,
                        std::function<void(const std::string& failure)> ended) {
  std::array<int, 2> pipe{};
  if (isWorking() || ::pipe2(pipe.data(), O_CLOEXEC) != 0) return false;
  const pid_t self = ::getpid();
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(pipe[0]);
    work(task, self, pipe[1]);
  }
  ::close(pipe[1]);
  if (child < 0) {
    ::close(pipe[0]);
    return false;
  }
  m_child = child;
  m_answer = pipe[0];
  m_failure.clear();
  m_ended = std::move(ended);
  m_notifier = std::make_unique<QSocketNotifier>(m_answer, QSocketNotifier::Read);
  QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_patience, [this] { read(); });
  m_patience.start(kPatience);
  return true;
}

void CopyProcess::read() {
  std::array<char, 1024> bytes{};
  const ssize_t got = ::read(m_answer, bytes.data(), bytes.size());
  if (got > 0)
    m_failure.append(bytes.data(), static_cast<std::size_t>(got));
  else if (got == 0 || (errno != EINTR && errno != EAGAIN))
    finish();
}

void CopyProcess::finish() {
  const int status = waitFor(m_child);
  if (m_failure.empty() && !(WIFEXITED(status) && WEXITSTATUS(status) == 0))
    m_failure = "le processus de la copie s'est arrêté";
  const auto ended = std::exchange(m_ended, nullptr);
  const std::string failure = m_failure;
  abandon();
  if (ended) ended(failure);
}

void CopyProcess::abandon() {
  m_patience.stop();
  if (m_notifier) {
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater();  // it may be what calls
  }
  if (m_answer >= 0) ::close(std::exchange(m_answer, -1));
  const pid_t child = std::exchange(m_child, 0);
  if (child <= 0) return;
  ::kill(child, SIGKILL);
  waitFor(child);
}

}  // namespace veltora::app
