#pragma once

#include "app/window/copy_process.h"
#include "app/window/recovery_folder.h"

#include <QTimer>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class AcApDocument;

namespace veltora::app {

/// Keeps copies of the drawings with unsaved changes aside, every few minutes, and offers those that a crash
/// left. A copy holds what a save would write, module data included; it changes nothing of the drawing, its
/// history or its file. It goes when the drawing is saved or closed.
class Recovery : private Uncopyable {
public:
  /// What the window around it does.
  struct Surroundings {
    std::function<bool()> atRest;  ///< nothing is at work that would leave a drawing half changed
    std::function<bool()> idle;    ///< no command runs
    std::function<void(const std::string& utf8)> print;
    std::function<void()>
        leaveHost;  ///< in the copying process: nothing of the toolkit hears of the host any more
  };
  Recovery(std::filesystem::path folder, Surroundings surroundings);
  ~Recovery();

  /// @param interval  between two copies; 0 for none from now on
  void setInterval(std::chrono::milliseconds interval);
  /// Something may have changed since the last copy.
  void touched() { m_touched = true; }
  /// Copies what has unsaved changes, once nothing is at work.
  void copyNow();
  [[nodiscard]] bool isWriting() const { return m_process.isWorking(); }
  /// A session ended as it should: nothing of it is left.
  void clear();
  /// Asks for each drawing that a crash left whether it is to be opened. To be called while no command runs.
  void offer();

private:
  class HostEvents;
  struct Job {
    AcApDocument* document;
    std::filesystem::path copy;
  };
  [[nodiscard]] std::vector<Job> jobs();
  RecoveryCopy* placeOf(AcApDocument& document);
  static std::string write(const std::vector<Job>& jobs);
  void ended(const std::string& failure);
  void fail(const std::string& reason);
  void forget(AcApDocument* document);
  void offer(std::unique_ptr<RecoveryCopy> copy);

  std::filesystem::path m_folder;
  Surroundings m_around;
  CopyProcess m_process;
  QTimer m_clock;
  QTimer m_soon;  ///< a copy that could not be made when it was due
  std::map<AcApDocument*, std::unique_ptr<RecoveryCopy>> m_copies;
  std::vector<std::filesystem::path> m_writing;
  bool m_touched = false;
  bool m_failed = false;  ///< and the user was told
  std::unique_ptr<HostEvents> m_events;
};

}  // namespace veltora::app
