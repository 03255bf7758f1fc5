#include "arx/lisp/host/aclisp.h"

#include "arx/ed/edfiles.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edlisp.h"
#include "arx/ed/edports.h"
#include "arx/lisp/host/lispcommand.h"
#include "arx/lisp/host/lispentities.h"
#include "arx/lisp/host/lisphost.h"
#include "arx/lisp/host/lispinput.h"
#include "arx/lisp/host/lispselect.h"
#include "arx/lisp/host/lisptables.h"
#include "arx/lisp/lispprinter.h"
#include "base/text.h"

#include <utility>

namespace base = veltora::base;

namespace {

using namespace aclisp;

Host makeHost() {
  Host host;
  host.print = [](const std::wstring& text) { acedPrompt(text); };
  host.readLine = [](const std::wstring& prompt) { return acedReadLine(prompt); };
  host.userBreak = [] { return acedUsrBrk() != 0; };
  host.findFile = [](const std::wstring& name) {
    std::wstring path;
    return acedFindFile(name.c_str(), path) == RTNORM ? path : std::wstring();
  };
  host.callModule = [](const std::wstring& name, const resbuf* arguments, resbuf*& result) {
    const AcEdLispFunctions* const functions = acedLispFunctions();
    if (!functions || !functions->find(name)) return false;
    result = functions->call(name, arguments);
    return true;
  };
  return host;
}

/// True when a chain can show the value; functions and symbols have no items.
bool hasItems(Interpreter& in, const Value& value) {
  std::vector<const Value*> open = {&value};
  while (!open.empty()) {
    const Value* at = open.back();
    open.pop_back();
    for (; at->is(Kind::kCons); at = &at->cdr()) open.push_back(&at->car());
    const bool item = at->kind() <= Kind::kReal || at->is(Kind::kString) || at->is(Kind::kEntity) ||
                      at->is(Kind::kSelection) || at->sameAs(in.truth(true)) || in.isNothing(*at);
    if (!item) return false;
  }
  return true;
}

/// Points in the plane as lists of two numbers, which show no z.
void spreadPlanePoints(resbuf* chain) {
  for (resbuf* item = chain; item; item = item->rbnext) {
    if (item->restype != RTPOINT) continue;
    resbuf* const rest = item->rbnext;
    item->restype = RTLB;
    item->rbnext = acutBuildList(RTREAL, item->resval.rpoint[0], RTREAL, item->resval.rpoint[1], RTLE);
    while (item->rbnext) item = item->rbnext;
    item->rbnext = rest;
  }
}

resbuf* resultChain(Interpreter& in, Value value) {
  if (hasItems(in, value)) {
    resbuf* const chain = argumentChain(in, std::span<Value>(&value, 1));
    spreadPlanePoints(chain);
    return chain;
  }
  in.print(printed(value, true) + L"\n");
  return acutNewRb(RTVOID);
}

std::wstring report(const LispError& error) {
  std::wstring text = L"; erreur : " + error.message;
  if (!error.expression.empty()) text += L"\n; dans " + error.expression;
  if (!error.position.empty()) text += L" (" + error.position + L")";
  return text;
}

/// Tells a failure. Cancelling and leaving are no faults; a fault stops a script, also when the routine
/// tidied up.
void tell(Interpreter& in, const LispError& error, bool handled) {
  const base::LineSource* const source = acedPorts().source;
  const bool interactive = !source || source->interactive();
  if (error.kind == LispError::kError && (!handled || !interactive))
    acedRefuse(L"\n" + report(error));
  else if (error.kind == LispError::kCancelled && !handled)
    in.print(L"\n" + error.message + L"\n");
}

/// The line that goes on with an expression left open.
std::optional<std::wstring> nextLine(const Interpreter& in) {
  std::optional<std::wstring> line = acedReadLine(L"(_> ");
  if (line && base::compareNoCase(base::trim(*line), L"*Annuler*") == 0) in.cancel();
  return line;
}

resbuf* evaluate(Interpreter& in, const std::wstring& expression) {
  const AccountScope work = in.atWork();
  HostState& state = hostState(in);
  // An expression that answers a prompt within a command leaves that command's answers alone.
  std::vector<CommandAnswer> outer = std::exchange(state.pending, {});
  ++state.depth;
  const auto leave = [&] {
    state.pending = std::move(outer);
    if (--state.depth == 0) state.held.clear();
  };
  LispError error;
  bool handled = false;
  std::optional<Value> value;
  resbuf* result = nullptr;
  try {
    value = in.run(
        [&] {
          Value last = in.evalText(expression, {}, [&in] { return nextLine(in); });
          finishCommand(in);
          return last;
        },
        error, handled);
    if (value)
      result = resultChain(in, std::move(*value));
    else
      tell(in, error, handled);
  } catch (...) {
    leave();
    throw;
  }
  leave();
  return result;
}

}  // namespace

void aclispInstall() {
  const auto interpreter = std::make_shared<Interpreter>(makeHost());
  const AccountScope work = interpreter->atWork();
  interpreter->install(inputFunctions());
  interpreter->install(entityFunctions());
  interpreter->install(selectionFunctions());
  interpreter->install(tableFunctions());
  interpreter->install(commandFunctions());
  interpreter->intern(L"PAUSE")->value = Value::text(L"\\");
  acedPorts().evaluate = [interpreter](const std::wstring& expression) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the expression may replace this port
    const std::shared_ptr<Interpreter> keep = interpreter;
    return evaluate(*keep, expression);
  };
  acedPorts().isLispCommand = [interpreter](const std::wstring& name) {
    const Symbol* const symbol = interpreter->find(L"C:" + name);
    return symbol && (symbol->value.is(Kind::kFunction) || symbol->value.is(Kind::kCons));
  };
}
