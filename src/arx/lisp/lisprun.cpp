// Running a text or an expression as a whole: the prompt's side of the evaluator.

#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispreader.h"

namespace aclisp {

Value Interpreter::evalText(const std::wstring& text, const std::wstring& source,
                            const std::function<std::optional<std::wstring>()>& more) {
  Reader reader(*this, text, source, more);
  Value result;
  Value form;
  while (reader.next(form)) result = eval(form);
  return result;
}

namespace {

/// Calls the routine's own error handler. What fails in it only ends it.
bool callHandler(Interpreter& in, const LispError& error) {
  const Value handler = in.intern(L"*ERROR*")->value;
  if (!handler) return false;
  try {
    Value message = Value::text(error.message);
    in.apply(handler, std::span<Value>(&message, 1));
  } catch (const LispError& inner) {
    in.print(L"\n; erreur dans *error* : " + inner.message + L"\n");
  }
  return true;
}

}  // namespace

std::optional<Value> Interpreter::run(const std::function<Value()>& work, LispError& error, bool& handled) {
  const std::size_t before = mark();
  std::optional<Value> result;
  handled = false;
  try {
    result = work();
  } catch (const LispError& failure) {
    error = failure;
  } catch (...) {
    // Not ours: a script that stops, a module's fault. The routine may still tidy up.
    callHandler(*this, {LispError::kCancelled, L"Fonction annulée", {}, {}});
    unwind(before);
    flushFiles(*this);
    throw;
  }
  if (!result) handled = callHandler(*this, error);
  unwind(before);
  flushFiles(*this);
  return result;
}

}  // namespace aclisp
