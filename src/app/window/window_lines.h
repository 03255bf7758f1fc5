#pragma once

#include "base/console.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

class QEventLoop;

namespace veltora::app {

/// The lines that the user of a window answers with: while a question is open the events of the window run,
/// so that commands wait for their answers as they do at a terminal. What is clicked becomes a line too.
class WindowLines : public base::LineSource {
public:
  /// Whoever shows the questions.
  class Listener {
  public:
    virtual ~Listener() = default;
    /// A question begins; `request` stays until the matching `answered`.
    virtual void asked(const base::Request& request) = 0;
    /// @param line  null when it was cancelled by the end of the session
    virtual void answered(const base::Request& request, const std::string* line) = 0;
    /// The question in front of which others were asked is open again.
    virtual void askedAgain(const base::Request& request) = 0;
  };
  explicit WindowLines(Listener& listener) : m_listener(listener) {}

  std::optional<std::string> readLine(const base::Request& request) override;
  [[nodiscard]] bool interactive() const override { return true; }

  /// The question that waits for an answer; null between questions.
  [[nodiscard]] const base::Request* request() const;
  /// No command waits: the question asks for one.
  [[nodiscard]] bool isIdle() const;
  /// Answers the question that waits; nothing happens without any.
  void answer(const std::string& line);
  /// Answers as the Escape key does.
  void cancel();
  /// Runs a command as the host's rules say: at once when none waits, within the one that waits when it is
  /// transparent, else once that one is cancelled.
  void start(const std::string& command);
  /// Does something once no command waits, then runs a command, if any; what waits is cancelled.
  /// @return false, with nothing done, while a dialog is open
  bool whenIdle(std::function<void()> work, const std::string& command = {});
  /// Does something in front of the next question for a command, and runs the command that it gives; nothing
  /// is cancelled for it.
  void before(std::function<std::optional<std::string>()> work);
  /// The same, once what waits is cancelled; several wait for each other's commands. @return as `whenIdle`
  bool queue(std::function<std::optional<std::string>()> work);
  /// Cancels what waits, question after question, then quits as QUIT does.
  void close();
  /// What waits is being cancelled for something else to run.
  [[nodiscard]] bool isCancelling() const { return !m_pending.empty(); }
  /// Whether a dialog is open, hidden while it lets pick or not: no command is started then that would have
  /// to end it.
  std::function<bool()> dialogIsOpen;

private:
  struct Waiting {
    const base::Request& request;
    QEventLoop& loop;
    std::optional<std::string> line;
    bool ended = false;
  };
  void end(std::optional<std::string> line);
  [[nodiscard]] bool mustStay() const { return dialogIsOpen && dialogIsOpen(); }
  std::string nextCommand();

  Listener& m_listener;
  std::vector<Waiting*> m_waiting;  ///< innermost last
  std::deque<std::function<std::optional<std::string>()>> m_pending;
  std::deque<std::function<std::optional<std::string>()>> m_before;
};

}  // namespace veltora::app
