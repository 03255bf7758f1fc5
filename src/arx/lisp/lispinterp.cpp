#include "arx/lisp/lispinterp.h"

#include "arx/lisp/lispconvert.h"
#include "arx/lisp/lispfiles.h"
#include "arx/lisp/lispforms.h"
#include "arx/lisp/lispgeometry.h"
#include "arx/lisp/lisplists.h"
#include "arx/lisp/lispmath.h"
#include "arx/lisp/lisppredicates.h"
#include "arx/lisp/lispprinter.h"
#include "arx/lisp/lispreader.h"
#include "arx/lisp/lisptexts.h"
#include "arx/lisp/lispunits.h"
#include "arx/lisp/lispvllists.h"
#include "base/text.h"

#include <pthread.h>
#include <algorithm>
#include <cassert>
#include <cstddef>
#include <memory>
#include <new>

namespace base = veltora::base;

namespace aclisp {

/// One call in progress. Its chain tells where a failure happened.
struct Frame {
  Frame(Interpreter& interpreter, const Value& f) : in(interpreter), form(f), outer(interpreter.m_frame) {
    in.m_frame = this;
    ++in.m_depth;
  }
  ~Frame() {
    in.m_frame = outer;
    --in.m_depth;
  }
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;
  Interpreter& in;
  const Value& form;
  Frame* outer;
};

namespace {

/// What must remain free of the native stack for built-in functions, the host and its modules.
constexpr std::size_t kStackReserve = std::size_t{512} * 1024;

/// Lowest address that evaluation may reach; null when the system does not tell.
const char* stackEnd() {
  pthread_attr_t attributes;
  void* lowest = nullptr;
  std::size_t size = 0;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return nullptr;
  const bool known = pthread_attr_getstack(&attributes, &lowest, &size) == 0;
  pthread_attr_destroy(&attributes);
  if (!known || size < 2 * kStackReserve) return nullptr;
  // Of a stack that may grow without end only a part is used.
  constexpr std::size_t kMost = std::size_t{64} * 1024 * 1024;
  const char* const end = static_cast<const char*>(lowest) + (size > kMost ? size - kMost : 0);
  return end + kStackReserve;
}

/// Evaluated arguments: on the stack for the usual few, which are made one by one.
class ArgumentBuffer {
public:
  ArgumentBuffer() = default;
  ArgumentBuffer(const ArgumentBuffer&) = delete;
  ArgumentBuffer& operator=(const ArgumentBuffer&) = delete;
  ~ArgumentBuffer() { std::destroy_n(few(), m_count); }
  void evaluate(Interpreter& in, const Value& forms) {
    for (const Value& form : Elements(forms)) {
      if (m_count < kFew && !m_many) {
        ::new (static_cast<void*>(few() + m_count)) Value(in.eval(form));
        ++m_count;
      } else {
        if (!m_many) moveOut();
        m_many->push_back(in.eval(form));
      }
    }
  }
  std::span<Value> span() { return m_many ? std::span<Value>(*m_many) : std::span<Value>(few(), m_count); }

private:
  static constexpr std::size_t kFew = 4;
  [[nodiscard]] Value* few() { return std::launder(reinterpret_cast<Value*>(m_room)); }
  ACLISP_APART void moveOut() {
    m_many = std::make_unique<std::vector<Value>>(std::make_move_iterator(few()),
                                                  std::make_move_iterator(few() + m_count));
  }
  alignas(Value) std::byte m_room[kFew * sizeof(Value)];
  std::size_t m_count = 0;
  std::unique_ptr<std::vector<Value>> m_many;
};

constexpr std::size_t kShownExpression = 160;

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

Interpreter::Interpreter(Host host, Limits limits) : m_host(std::move(host)), m_limits(limits) {
  m_account.ceiling = static_cast<std::ptrdiff_t>(m_limits.objects);
  m_sources.emplace_back();
  m_nothing = intern(L"");
  m_nothing->value = Value::symbol(m_nothing);
  m_nothing->fixed = true;
  m_lambda = intern(L"LAMBDA");
  m_slash = intern(L"/");
  Symbol* const t = intern(L"T");
  m_t = Value::symbol(t);
  t->value = m_t;
  t->fixed = true;
  Symbol* const pi = intern(L"PI");
  pi->value = Value::real(3.14159265358979323846);
  pi->fixed = true;
  install(formFunctions());
  install(listFunctions());
  install(vlListFunctions());
  install(predicateFunctions());
  install(mathFunctions());
  install(geometryFunctions());
  install(textFunctions());
  install(unitFunctions());
  install(fileFunctions());
}

Interpreter::~Interpreter() {
  const AccountScope work = atWork();
  hostState.reset();
  m_bindings.clear();
  // Values refer to symbols: all of them go before any symbol does.
  for (auto& [name, symbol] : m_symbols) symbol->value = {};
  assert(m_account.alive == 0);
}

void Interpreter::install(std::span<const Subr> functions) {
  for (const Subr& subr : functions) intern(subr.name)->value = Value::subr(&subr);
}

Symbol* Interpreter::intern(std::wstring_view name) {
  std::unique_ptr<Symbol>& slot = m_symbols[base::toUpper(name)];
  if (!slot) {
    slot = std::make_unique<Symbol>();
    slot->name = base::toUpper(name);
  }
  return slot.get();
}

Symbol* Interpreter::find(std::wstring_view name) const {
  const auto found = m_symbols.find(base::toUpper(name));
  return found == m_symbols.end() ? nullptr : found->second.get();
}

std::vector<const Symbol*> Interpreter::boundSymbols() const {
  std::vector<const Symbol*> symbols;
  for (const auto& [name, symbol] : m_symbols)
    if (symbol->value && !name.empty()) symbols.push_back(symbol.get());
  std::sort(symbols.begin(), symbols.end(),
            [](const Symbol* a, const Symbol* b) { return a->name < b->name; });
  return symbols;
}

inline void Interpreter::enter(const Frame& frame) {
  const char* const here = reinterpret_cast<const char*>(&frame);
  if (m_depth == 1 || m_depth > m_limits.depth || here < m_stackEnd) checkStack(here);
  tick();
}

void Interpreter::checkStack(const char* here) {
  if (m_depth == 1 && m_stackThread != std::this_thread::get_id()) {
    m_stackEnd = stackEnd();
    m_stackThread = std::this_thread::get_id();
  }
  if (m_depth > m_limits.depth || (m_stackEnd && here < m_stackEnd)) failDeep();
}

Value Interpreter::evalCall(const Value& form) {
  const Frame frame(*this, form);
  enter(frame);
  const Value& head = form.car();
  if (head.is(Kind::kSymbol)) {
    const Value& value = head.asSymbol()->value;
    if (value.is(Kind::kSubr)) {
      const Subr& subr = *value.asSubr();
      return subr.special ? subr.special(*this, form.cdr()) : callSubr(subr, form);
    }
    // A copy: the function may replace itself while it runs.
    if (value.is(Kind::kFunction)) return callWithArguments(Value(value), form);
  }
  return callOther(form);
}

Value Interpreter::callSubr(const Subr& subr, const Value& form) {
  ArgumentBuffer buffer;
  buffer.evaluate(*this, form.cdr());
  Args arguments(*this, buffer.span());
  checkCount(subr, arguments.size());
  return subr.call(arguments);
}

Value Interpreter::callWithArguments(const Value& function, const Value& form) {
  ArgumentBuffer arguments;
  arguments.evaluate(*this, form.cdr());
  return callFunction(function, arguments.span());
}

/// A head that is no name of a function: an expression that gives one, or a name that only a module knows.
Value Interpreter::callOther(const Value& form) {
  const Value& head = form.car();
  Value function = head.is(Kind::kSymbol) ? head.asSymbol()->value : head;
  if (head.is(Kind::kCons) && !isLambda(head)) function = eval(head);
  if (function.is(Kind::kSubr)) {
    const Subr& subr = *function.asSubr();
    return subr.special ? subr.special(*this, form.cdr()) : callSubr(subr, form);
  }
  if (function.is(Kind::kCons)) function = callable(function);
  return function.is(Kind::kFunction) ? callWithArguments(function, form) : callUnknown(form);
}

bool Interpreter::isLambda(const Value& list) const {
  return list.car().is(Kind::kSymbol) && list.car().asSymbol() == m_lambda;
}

/// A head without a function: it may be one of a module.
Value Interpreter::callUnknown(const Value& form) {
  if (!form.car().is(Kind::kSymbol))
    fail(L"fonction incorrecte : " + printed(form.car(), true, kShownExpression));
  Symbol* const name = form.car().asSymbol();
  if (name->value) fail(L"fonction incorrecte : " + printed(name->value, true, kShownExpression));
  ArgumentBuffer arguments;
  arguments.evaluate(*this, form.cdr());
  return callModule(name, arguments.span());
}

Value Interpreter::callModule(Symbol* name, std::span<Value> arguments) {
  if (!m_host.callModule) fail(L"aucune définition de fonction : " + name->name);
  const ChainHolder chain(argumentChain(*this, arguments));
  resbuf* result = nullptr;
  if (!m_host.callModule(name->name, chain.get(), result))
    fail(L"aucune définition de fonction : " + name->name);
  if (!result) fail(L"la fonction " + name->name + L" n'a pas répondu");
  const ChainHolder holder(result);
  return valueOfChain(*this, holder.get());
}

void Interpreter::checkCount(const Subr& subr, std::size_t count) const {
  if (count < static_cast<std::size_t>(subr.least)) fail(L"nombre d'arguments insuffisant");
  if (subr.most >= 0 && count > static_cast<std::size_t>(subr.most))
    fail(L"nombre d'arguments trop important");
}

Value Interpreter::callFunction(const Value& function, std::span<Value> arguments) {
  const auto& f = *static_cast<const Function*>(function.object());
  if (arguments.size() < f.parameters) fail(L"nombre d'arguments insuffisant");
  if (arguments.size() > f.parameters) fail(L"nombre d'arguments trop important");
  const std::size_t before = mark();
  for (std::size_t i = 0; i < f.variableCount; ++i)
    bind(f.variables[i], i < f.parameters ? std::move(arguments[i]) : Value());
  Value result = evalBody(f.body);
  // Not a guard: after a failure the bindings stay for the error handler, and the catcher removes them.
  unwind(before);
  return result;
}

Value Interpreter::apply(const Value& function, std::span<Value> arguments) {
  if (function.is(Kind::kSubr)) {
    tick();
    const Subr& subr = *function.asSubr();
    if (!subr.call) fail(L"fonction incorrecte : " + std::wstring(subr.name));
    Args list(*this, arguments);
    checkCount(subr, arguments.size());
    return subr.call(list);
  }
  if (function.is(Kind::kFunction)) {
    const Frame frame(*this, kNilValue);
    enter(frame);
    return callFunction(function, arguments);
  }
  if (function.is(Kind::kSymbol) && !function.asSymbol()->value)
    return callModule(function.asSymbol(), arguments);
  const Value resolved = callable(function);
  if (!resolved.is(Kind::kSubr) && !resolved.is(Kind::kFunction) && !resolved.is(Kind::kSymbol))
    fail(L"fonction incorrecte : " + printed(function, true, kShownExpression));
  return apply(resolved, arguments);
}

Value Interpreter::callable(const Value& function) {
  Value found = function;
  if (found.is(Kind::kSymbol)) {
    if (!found.asSymbol()->value) return found;
    found = found.asSymbol()->value;
  }
  if (!found.is(Kind::kCons)) {
    if (found.is(Kind::kSymbol)) fail(L"fonction incorrecte : " + found.asSymbol()->name);
    return found;
  }
  if (found.car().is(Kind::kSymbol) && found.car().asSymbol() == m_lambda)
    return makeFunction(nullptr, found.cdr());
  // The old form of a function: a list of its parameters and its body.
  if (found.car().isList()) return makeFunction(nullptr, found);
  fail(L"fonction incorrecte : " + printed(function, true, kShownExpression));
}

Value Interpreter::makeFunction(Symbol* name, const Value& rest) {
  if (!rest.is(Kind::kCons) || !rest.car().isList()) fail(L"liste d'arguments incorrecte");
  auto made = std::make_unique<Function>();
  std::vector<Symbol*> variables;
  bool locals = false;
  for (const Value& variable : Elements(rest.car())) {
    if (!variable.is(Kind::kSymbol)) failType(L"symbolp:", variable);
    if (variable.asSymbol() == m_slash && !locals) {
      locals = true;
      made->parameters = variables.size();
      continue;
    }
    if (variable.asSymbol()->fixed) fail(L"symbole protégé : " + variable.asSymbol()->name);
    variables.push_back(variable.asSymbol());
  }
  if (!locals) made->parameters = variables.size();
  made->name = name;
  made->body = rest.cdr();
  made->variableCount = variables.size();
  made->variables = std::make_unique<Symbol*[]>(variables.size());
  std::copy(variables.begin(), variables.end(), made->variables.get());
  return Value::adopt(made.release());
}

Value Interpreter::evalBody(const Value& forms) {
  const Value* at = &forms;
  if (!at->is(Kind::kCons)) return {};
  for (; at->cdr().is(Kind::kCons); at = &at->cdr()) eval(at->car());
  return eval(at->car());
}

Value Interpreter::evalText(const std::wstring& text, const std::wstring& source,
                            const std::function<std::optional<std::wstring>()>& more) {
  Reader reader(*this, text, source, more);
  Value result;
  Value form;
  while (reader.next(form)) result = eval(form);
  return result;
}

std::optional<Value> Interpreter::run(const std::function<Value()>& work, LispError& error, bool& handled) {
  const AccountScope atRun = atWork();
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

void Interpreter::bind(Symbol* symbol, Value value) {
  m_bindings.push_back({symbol, std::move(symbol->value)});
  symbol->value = std::move(value);
}

void Interpreter::unwind(std::size_t mark) {
  while (m_bindings.size() > mark) {
    m_bindings.back().symbol->value = std::move(m_bindings.back().former);
    m_bindings.pop_back();
  }
}

LispError Interpreter::located(std::wstring message) const {
  LispError error;
  error.message = std::move(message);
  for (const Frame* frame = m_frame; frame; frame = frame->outer) {
    if (!frame->form.is(Kind::kCons)) continue;
    if (error.expression.empty()) error.expression = printed(frame->form, true, kShownExpression);
    const Object& object = *frame->form.object();
    if (object.file == 0) continue;
    error.position = m_sources[object.file] + L":" + std::to_wstring(object.line);
    break;
  }
  return error;
}

void Interpreter::fail(std::wstring message) const { throw located(std::move(message)); }

void Interpreter::failDeep() const { fail(L"récursion trop profonde"); }

void Interpreter::failType(const wchar_t* expected, const Value& got) const {
  fail(std::wstring(L"type d'argument incorrect : ") + expected + L" " +
       printed(got, true, kShownExpression));
}

void Interpreter::cancel() const {
  LispError error = located(L"Fonction annulée");
  error.kind = LispError::kCancelled;
  throw error;
}

void Interpreter::quit() const {
  LispError error = located(L"quitter / sortir abandon");
  error.kind = LispError::kQuit;
  throw error;
}

void Interpreter::checkRun() {
  m_ticks = 0;
  if (m_host.userBreak && m_host.userBreak()) cancel();
}

bool Interpreter::stackIsShort() const {
  const char here = 0;
  return m_stackEnd && &here < m_stackEnd - kStackReserve / 2;
}

void Interpreter::checkText(std::size_t length) const {
  if (length > m_limits.textLength) fail(L"chaîne trop longue");
}

std::uint32_t Interpreter::sourceNumber(const std::wstring& source) {
  constexpr std::size_t kMost = 511;
  const auto found = std::find(m_sources.begin(), m_sources.end(), source);
  if (found != m_sources.end()) return static_cast<std::uint32_t>(found - m_sources.begin());
  if (m_sources.size() > kMost) return 0;
  m_sources.push_back(source);
  return static_cast<std::uint32_t>(m_sources.size() - 1);
}

}  // namespace aclisp
