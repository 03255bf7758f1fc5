#include "arx/lisp/host/lispcommand.h"

#include "arx/ap/apsession.h"
#include "arx/ed/edports.h"
#include "arx/ed/edroutines.h"
#include "arx/lisp/host/lisphost.h"
#include "arx/lisp/lispprinter.h"
#include "arx/lisp/lispunits.h"
#include "base/numbers.h"
#include "base/text.h"

#include <utility>

namespace base = veltora::base;

// A command runs from its first to its last answer without a break. When the answers run out before it ends,
// it is rolled back and its answers are kept; the next (command ...) appends its own and runs it again. So
// routines may give a polyline point by point. What is still open when the expression ends, the user
// finishes.

namespace aclisp {

namespace {

/// Gathers what a command prints until it is known whether the command ends.
class GatheringSink : public base::OutputSink {
public:
  explicit GatheringSink(base::OutputSink* target) : m_target(target) {}
  void print(const std::string& text) override {
    if (text == m_echo)
      m_echo.clear();
    else
      m_text += text;
  }
  /// CMDECHO 0: the answer that a routine gives is not repeated.
  void dropEcho(std::string echo) { m_echo = std::move(echo); }
  void deliver() {
    if (m_target && !m_text.empty()) m_target->print(m_text);
    m_text.clear();
  }

private:
  base::OutputSink* m_target;
  std::string m_text;
  std::string m_echo;
};

/// The answers of a routine, then those of the user where the routine pauses or, at the end, where they are
/// missing.
class AnswerSource : public base::LineSource {
public:
  AnswerSource(std::vector<CommandAnswer>& answers, base::LineSource* user, GatheringSink& sink,
               bool toTheEnd)
      : m_answers(answers), m_user(user), m_sink(sink), m_toTheEnd(toTheEnd) {}
  std::optional<std::string> readLine(const base::Request& request) override {
    if (m_at == m_answers.size() && !m_toTheEnd) {
      m_dry = true;
      throw base::ScriptError{"la commande attend d'autres réponses"};
    }
    if (m_at == m_answers.size()) return ask(request);
    CommandAnswer& answer = m_answers[m_at++];
    if (answer.pause) {
      std::optional<std::string> line = ask(request);
      if (line) answer = {base::fromUtf8(*line), false};  // asked once, though the command may run again
      return line;
    }
    const std::string text = base::toUtf8(answer.text);
    if (systemNumber(L"CMDECHO", 1) == 0) m_sink.dropEcho(request.prompt + text + "\n");
    return text;
  }
  [[nodiscard]] std::string position() const override { return m_user ? m_user->position() : std::string(); }
  [[nodiscard]] bool interactive() const override {
    return m_toTheEnd && m_at == m_answers.size() && m_user && m_user->interactive();
  }
  [[nodiscard]] bool dry() const { return m_dry; }
  [[nodiscard]] std::size_t used() const { return m_at; }

private:
  std::optional<std::string> ask(const base::Request& request) {
    m_sink.deliver();
    return m_user ? m_user->readLine(request) : std::nullopt;
  }
  std::vector<CommandAnswer>& m_answers;
  base::LineSource* m_user;
  GatheringSink& m_sink;
  bool m_toTheEnd;
  bool m_dry = false;
  std::size_t m_at = 1;  // behind the command's name
};

/// Puts other ends to the command line for the time of a command.
class Redirection {
public:
  Redirection(base::LineSource* source, base::OutputSink* sink)
      : m_source(std::exchange(acedPorts().source, source)),
        m_sink(std::exchange(acedPorts().sink, sink)),
        m_routine(std::exchange(acedPorts().routine, true)) {}
  ~Redirection() {
    acedPorts().source = m_source;
    acedPorts().sink = m_sink;
    acedPorts().routine = m_routine;
  }
  Redirection(const Redirection&) = delete;
  Redirection& operator=(const Redirection&) = delete;

private:
  base::LineSource* m_source;
  base::OutputSink* m_sink;
  bool m_routine;
};

/// The commands that read or write drawings.
bool touchesFiles(const std::wstring& name) {
  std::wstring bare = base::trimLeft(base::trim(name), L"_.'-");
  if (base::compareNoCase(bare.substr(0, 2), L"C:") == 0) bare = bare.substr(2);
  const AcEdCommand* const command = acedRegCmds->lookupCmd(bare.c_str());
  const std::wstring global = command ? command->globalName() : L"";
  for (const wchar_t* known : {L"OPEN", L"SAVEAS", L"QSAVE", L"INSERT"})
    if (global == known) return true;
  return false;
}

/// Runs the command at the head of the answers. @return false when it waits for more
bool runOne(Interpreter& in, std::vector<CommandAnswer>& answers, bool toTheEnd) {
  AcApSession* const session = AcApSession::current();
  if (!session) in.fail(L"COMMAND : aucune session n'est ouverte");
  const std::wstring name = answers.front().text;
  if (!acedRoutineMayReach() && touchesFiles(name))
    in.fail(L"les fichiers sont fermés aux routines : " + name);
  GatheringSink sink(acedPorts().sink);
  AnswerSource source(answers, acedPorts().source, sink, toTheEnd);
  std::wstring failure;
  try {
    const Redirection redirection(&source, &sink);
    if (!session->runCommand(name)) failure = L"la commande " + name + L" a échoué";
  } catch (const base::ScriptError& error) {
    if (source.dry()) return false;
    failure = base::fromUtf8(error.message);
  }
  sink.deliver();
  if (!failure.empty()) in.fail(L"COMMAND : " + failure);
  answers.erase(answers.begin(), answers.begin() + static_cast<std::ptrdiff_t>(source.used()));
  return true;
}

void runPending(Interpreter& in, bool toTheEnd) {
  // The answers move out meanwhile: a routine that a command runs has its own.
  std::vector<CommandAnswer> answers = std::exchange(hostState(in).pending, {});
  while (!answers.empty()) {
    const std::wstring& name = answers.front().text;
    // Enter and Escape between two commands.
    if (!answers.front().pause && (name.empty() || name == L"*Annuler*")) {
      answers.erase(answers.begin());
      continue;
    }
    if (answers.front().pause) in.fail(L"COMMAND : un nom de commande est attendu");
    if (!runOne(in, answers, toTheEnd)) break;
  }
  hostState(in).pending = std::move(answers);
}

std::wstring numberText(double value) { return base::fromUtf8(base::ecrireReel(value)); }

std::wstring heldText(Interpreter& in, const Value& value) {
  std::vector<Value>& held = hostState(in).held;
  held.push_back(value);
  return L"(%VALEUR " + std::to_wstring(held.size() - 1) + L")";
}

/// The line that gives a value to a prompt.
CommandAnswer answerOf(Interpreter& in, const Value& value) {
  ads_point point;
  switch (value.kind()) {
    case Kind::kNil:
      return {L"*Annuler*", false};
    case Kind::kInteger:
      return {std::to_wstring(value.asInteger()), false};
    case Kind::kReal:
      return {numberText(value.asReal()), false};
    case Kind::kString: {
      const std::wstring& text = value.asText();
      if (text == L"\\") return {{}, true};
      const bool special = !text.empty() && (text[0] == L'(' || text[0] == L';' || base::trim(text) != text);
      return {special ? heldText(in, value) : text, false};
    }
    case Kind::kCons:
      if (const std::size_t count = readPoint(value, point)) {
        const std::wstring plane = numberText(point[0]) + L"," + numberText(point[1]);
        return {count == 2 ? plane : plane + L"," + numberText(point[2]), false};
      }
      return {heldText(in, value), false};
    case Kind::kEntity:
    case Kind::kSelection:
      return {heldText(in, value), false};
    default:
      in.fail(L"COMMAND : réponse incorrecte : " + printed(value, true, 80));
  }
}

/// Without arguments: Escape.
Value commandFunction(Args& a) {
  HostState& state = hostState(a.in);
  if (a.size() == 0) {
    dropCommand(a.in);
    return {};
  }
  for (const Value& v : a.values()) {
    CommandAnswer answer = answerOf(a.in, v);
    if (v.isNil() && !state.pending.empty()) {
      dropCommand(a.in);  // Escape ends what was begun
      continue;
    }
    state.pending.push_back(std::move(answer));
  }
  runPending(a.in, false);
  return {};
}

Value heldValue(Args& a) {
  const std::int32_t at = a.integer(0);
  const std::vector<Value>& held = hostState(a.in).held;
  return at >= 0 && static_cast<std::size_t>(at) < held.size() ? held[static_cast<std::size_t>(at)] : Value();
}

constexpr Subr kCommands[] = {
    function(L"COMMAND", commandFunction, 0, kAny),
    function(L"COMMAND-S", commandFunction, 0, kAny),
    function(L"VL-CMDF", commandFunction, 0, kAny),
    function(L"%VALEUR", heldValue, 1, 1),
};

}  // namespace

bool commandIsPending(Interpreter& in) { return !hostState(in).pending.empty(); }
void finishCommand(Interpreter& in) { runPending(in, true); }
void dropCommand(Interpreter& in) { hostState(in).pending.clear(); }

std::span<const Subr> commandFunctions() { return kCommands; }

}  // namespace aclisp
