#include "app/window/window_lines.h"

#include "arx/ap/apsession.h"
#include "base/text.h"
#include "ui/driver.h"

#include <QEventLoop>

namespace veltora::app {
namespace {

using Kind = base::Request::Kind;

constexpr const char* kCancel = "*Annuler*";

bool isTransparent(const std::wstring& name) {
  const AcEdCommand* const command = acedRegCmds->lookupCmd(name.c_str());
  return command && (command->commandFlags() & ACRX_CMD_TRANSPARENT) != 0;
}

/// A question of a dialog, which no command can run beneath.
bool isOfDialog(Kind kind) { return kind == Kind::kDialog || kind == Kind::kButton || kind == Kind::kFile; }

}  // namespace

std::optional<std::string> WindowLines::readLine(const base::Request& request) {
  const bool outermost = request.kind == Kind::kCommand && m_waiting.empty();
  // What is to run once no command waits: whoever else asks is cancelled.
  if (!m_pending.empty()) return outermost ? std::optional(nextCommand()) : std::nullopt;
  while (outermost && !m_before.empty()) {
    const auto work = std::move(m_before.front());
    m_before.pop_front();
    if (auto line = work()) return line;
    if (!m_pending.empty()) return nextCommand();
  }
  if (ui::Driver* const driver = ui::driver()) driver->oublierArret();
  QEventLoop loop;
  Waiting waiting{request, loop, std::nullopt, false};
  m_waiting.push_back(&waiting);
  m_listener.asked(request);
  if (!waiting.ended) loop.exec();
  m_waiting.pop_back();
  m_listener.answered(request, waiting.line ? &*waiting.line : nullptr);
  if (!waiting.line && outermost) return nextCommand();
  return std::move(waiting.line);
}

/// The line for the question that waits for a command; one that does nothing when there is none.
std::string WindowLines::nextCommand() {
  while (!m_pending.empty()) {
    const auto work = std::move(m_pending.front());
    m_pending.pop_front();
    if (auto line = work()) return std::move(*line);
  }
  return kCancel;
}

const base::Request* WindowLines::request() const {
  return m_waiting.empty() || m_waiting.back()->ended ? nullptr : &m_waiting.back()->request;
}

bool WindowLines::isIdle() const {
  return m_waiting.size() == 1 && request() && request()->kind == Kind::kCommand;
}

void WindowLines::end(std::optional<std::string> line) {
  if (m_waiting.empty() || m_waiting.back()->ended) return;
  m_waiting.back()->line = std::move(line);
  m_waiting.back()->ended = true;
  m_waiting.back()->loop.quit();
}

void WindowLines::answer(const std::string& line) {
  const base::Request* const asked = request();
  if (!asked) return;
  // An apostrophe in front asks for a transparent command, in a text it is a letter.
  const bool may = asked->kind != Kind::kCommand && asked->kind != Kind::kText && !isOfDialog(asked->kind);
  if (may && line.starts_with('\'') && isTransparent(base::fromUtf8(line.substr(1))))
    return start(line.substr(1));
  end(line);
}

void WindowLines::cancel() {
  const base::Request* const asked = request();
  if (!asked) return;
  if (isOfDialog(asked->kind))
    end(std::nullopt);
  else
    end(kCancel);
}

void WindowLines::start(const std::string& command) {
  const base::Request* const asked = request();
  if (!asked) return;
  if (isIdle()) return end(command);
  const std::wstring name = base::fromUtf8(command);
  if (isTransparent(name) && !isOfDialog(asked->kind) && AcApSession::current()) {
    // Its questions are answered in front of the one that waits.
    AcApSession::current()->runCommand(name);
    if (!m_pending.empty())
      end(std::nullopt);
    else if (request())
      m_listener.askedAgain(*request());
    return;
  }
  if (mustStay()) return;
  m_pending.emplace_back([command] { return std::optional(command); });
  end(std::nullopt);
}

bool WindowLines::whenIdle(std::function<void()> work, const std::string& command) {
  if (m_waiting.empty() || mustStay()) return false;
  m_pending.emplace_back([work = std::move(work), command] {
    work();
    return command.empty() ? std::nullopt : std::optional(command);
  });
  end(std::nullopt);
  return true;
}

void WindowLines::before(std::function<std::optional<std::string>()> work) {
  m_before.push_back(std::move(work));
}

bool WindowLines::queue(std::function<std::optional<std::string>()> work) {
  if (mustStay()) return false;
  before(std::move(work));
  if (!m_waiting.empty()) whenIdle([] {});
  return true;
}

void WindowLines::close() {
  m_pending.emplace_back([] { return std::optional<std::string>("QUIT"); });
  end(std::nullopt);
}

}  // namespace veltora::app
