#pragma once

#include "base/uncopyable.h"

#include <sys/types.h>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;

namespace veltora::app {

/// Works in a process of its own on a copy of this one's memory as it is now: whatever the work changes
/// there, nothing changes here, and the window goes on. One work at a time; to be used from the thread of the
/// window.
class CopyProcess : private Uncopyable {
public:
  CopyProcess();
  ~CopyProcess();
  /// @param work   files alone are left of it; neither toolkit nor screen may be touched. @return its reason
  /// for
  ///               failing (UTF-8, French), empty for success
  /// @param ended  is told that reason, or why the process could not work
  /// @return false, with nothing begun, while one works or when the system has no room for another
  bool start(const std::function<std::string()>& work, std::function<void(const std::string& failure)> ended);
  [[nodiscard]] bool isWorking() const { return m_child > 0; }
  /// Ends the work where it is; `ended` is not told.
  void abandon();

private:
  void read();
  void finish();

  pid_t m_child = 0;
  int m_answer = -1;  ///< where the process tells its failure; at its end when it has gone
  std::string m_failure;
  std::unique_ptr<QSocketNotifier> m_notifier;
  QTimer m_patience;
  std::function<void(const std::string&)> m_ended;
};

}  // namespace veltora::app
