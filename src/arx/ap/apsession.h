#pragma once

#include "arx/ed/accmd.h"
#include "arx/ed/edports.h"

#include <string>

/// The command line: takes lines from the source and runs what they name, until the source ends or QUIT.
///
/// Each command is one step of U. What a command throws undoes what it changed and is told in French; the
/// session goes on. `base::ScriptError` is passed on once the command is rolled back, since it stops the
/// script. The ports are those of `acedPorts()`. Making a session registers the host's own commands in group
/// "ARX".
class ARX_API AcApSession {
public:
  AcApSession();
  ~AcApSession();
  AcApSession(const AcApSession&) = delete;
  AcApSession& operator=(const AcApSession&) = delete;

  /// Runs lines until the end of the input or QUIT; an empty drawing is made when none is open. At an
  /// interactive source an empty line repeats the latest command.
  void run();
  /// One line: a command, an expression, a comment, or nothing. @return false when it failed (its message is
  /// printed)
  bool runLine(const std::wstring& line);
  /// Runs a command, or a LISP function "C:name", by its name, whatever the case, with a leading "_" or "."
  /// allowed.
  /// @return false when it is unknown (refused as in `acedRefuse`) or failed
  bool runCommand(const std::wstring& name);
  [[nodiscard]] bool quitRequested() const { return m_quit; }

  /// The session that runs; null for none.
  static AcApSession* current();
  void requestQuit() { m_quit = true; }

private:
  bool execute(const AcEdCommand& command);
  bool executeLisp(const std::wstring& function);
  bool evaluateLine(const std::wstring& line, const std::wstring& step);
  bool inStep(const std::wstring& name, Adesk::Int32 flags, const std::function<void()>& work);

  AcApSession* m_former;
  std::wstring m_lastCommand;
  bool m_quit = false;
};
