#include "arx/ap/apsession.h"

#include "arx/ap/acdocman.h"
#include "arx/ap/commands.h"
#include "arx/ap/commands_files.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edprompt.h"
#include "arx/ed/edvalue.h"
#include "base/text.h"

#include <exception>

namespace base = veltora::base;

namespace {

AcApSession*& currentSession() {
  static AcApSession* session = nullptr;
  return session;
}

/// "_.zoom" means ZOOM: underscore and point say that the name is the international one and the host's own, a
/// dash that the command asks at the command line, as all of them do. "C:AXE", the name of a command's
/// function, means AXE.
std::wstring bareName(const std::wstring& typed) {
  const std::wstring name = base::trimLeft(base::trim(typed), L"_.'-");
  return base::compareNoCase(name.substr(0, 2), L"C:") == 0 ? name.substr(2) : name;
}

/// The names of all commands, for a person whose terminal completes them.
base::Request commandRequest() {
  base::Request request;
  request.kind = base::Request::Kind::kCommand;
  const base::LineSource* const source = acedPorts().source;
  if (!source || !source->interactive()) return request;
  for (const AcEdCommand* command : acedRegCmds->commands()) {
    request.keywords.push_back(base::toUtf8(command->localName()));
    if (base::compareNoCase(command->localName(), command->globalName()) != 0)
      request.keywords.push_back(base::toUtf8(command->globalName()));
  }
  return request;
}

/// One level of a document's undo log around some work; gone when the document is.
class UndoStep {
public:
  explicit UndoStep(const std::wstring& name) : m_document(curDoc()) {
    if (!m_document) return;
    m_database = m_document->database();
    m_depth = m_database->undoLog().depth();
    m_document->startUndoMark(name.c_str());
  }
  void finish() { leave(false); }
  void fail() { leave(true); }

private:
  /// Groups that the work left open are closed first.
  void leave(bool failed) {
    if (!m_database || acDocManager->document(m_database) != m_document) return;
    AcDbUndoLog& log = m_database->undoLog();
    while (log.depth() > m_depth + 1) log.end();
    if (log.depth() == m_depth) return;
    if (failed)
      log.rollBack();
    else
      log.end();
  }

  AcApDocument* m_document;
  AcDbDatabase* m_database = nullptr;
  int m_depth = 0;
};

void tellFailure(const std::wstring& name, const std::wstring& reason) {
  acutPrintf(L"\nErreur dans %s : %s\nCe que la commande avait changé est annulé.\n", name, reason);
}

}  // namespace

AcApSession::AcApSession() : m_former(currentSession()) {
  currentSession() = this;
  acapRegisterCommands();
}

AcApSession::~AcApSession() { currentSession() = m_former; }

AcApSession* AcApSession::current() { return currentSession(); }

void AcApSession::run() {
  if (!curDoc()) acDocManager->appContextNewDocument();
  // The end of the input asks as QUIT does; a terminal that is gone for good gives no answer either.
  constexpr int kMostEnds = 3;
  for (int ends = 0; !m_quit && ends < kMostEnds;) {
    const std::optional<std::wstring> line = acedReadLine(L"\nCommande : ", commandRequest());
    if (line) {
      runLine(*line);
      ends = 0;
    } else {
      const base::LineSource* const source = acedPorts().source;
      if (!source || !source->interactive()) return;
      ++ends;
      arx_commands::quit();
    }
  }
}

bool AcApSession::runLine(const std::wstring& typed) {
  const std::wstring line = base::trim(typed, L" \t\r\n");
  if (line.starts_with(L';')) return true;
  if (line.empty() || base::compareNoCase(line, L"*Annuler*") == 0) {
    const base::LineSource* source = acedPorts().source;
    const bool repeat = line.empty() && source && source->interactive() && !m_lastCommand.empty();
    return !repeat || runCommand(m_lastCommand);
  }
  return line.starts_with(L'(') ? evaluateLine(line, L"LISP") : runCommand(line);
}

bool AcApSession::evaluateLine(const std::wstring& line, const std::wstring& step) {
  if (!acedPorts().evaluate) {
    acedRefuse(L"Les expressions ne sont pas disponibles.");
    return false;
  }
  bool good = false;
  return inStep(step, 0,
                [&] {
                  const AcEdRbHolder value(acedPorts().evaluate(line));
                  good = value != nullptr;
                  const std::wstring text = acedValueText(value.get());
                  if (!text.empty()) acedPrompt(text + L"\n");
                }) &&
         good;
}

bool AcApSession::runCommand(const std::wstring& typed) {
  const std::wstring name = bareName(typed);
  const AcEdLispFunctions* functions = acedLispFunctions();
  if (const AcEdCommand* command = acedRegCmds->lookupCmd(name.c_str())) {
    m_lastCommand = name;
    return execute(*command);
  }
  if (acedPorts().isLispCommand && !name.empty() && acedPorts().isLispCommand(name)) {
    m_lastCommand = name;
    return evaluateLine(L"(C:" + name + L")", base::toUpper(name));
  }
  if (functions && !name.empty() && functions->find(L"C:" + name)) {
    m_lastCommand = name;
    return executeLisp(L"C:" + name);
  }
  acedRefuse(L"Commande inconnue \"" + base::toUpper(name) + L"\".");
  return false;
}

bool AcApSession::execute(const AcEdCommand& command) {
  // The command may remove itself from the stack.
  const AcRxFunctionPtr function = command.functionAddr();
  return inStep(command.globalName(), command.commandFlags(), [function] { function(); });
}

bool AcApSession::executeLisp(const std::wstring& function) {
  bool good = false;
  const bool ran = inStep(function.substr(2), 0, [&] {
    const AcEdRbHolder value(acedLispFunctions()->call(function, nullptr));
    good = value != nullptr;
  });
  if (ran && !good) acutPrintf(L"\nLa fonction %s n'a pas répondu.\n", function);
  return ran && good;
}

bool AcApSession::inStep(const std::wstring& name, Adesk::Int32 flags, const std::function<void()>& work) {
  acedForgetInitGet();
  if (flags & (ACRX_CMD_SESSION | ACRX_CMD_NO_UNDO_MARKER)) {
    try {
      work();
      return true;
    } catch (const std::exception& error) {
      acutPrintf(L"\nErreur dans %s : %s\n", name, base::fromUtf8(error.what()));
      return false;
    }
  }
  UndoStep step(name);
  try {
    work();
    step.finish();
    return true;
  } catch (const std::exception& error) {
    step.fail();
    tellFailure(name, base::fromUtf8(error.what()));
  } catch (const base::ScriptError&) {
    step.fail();
    throw;
  } catch (...) {
    step.fail();
    tellFailure(name, L"raison inconnue");
  }
  return false;
}
