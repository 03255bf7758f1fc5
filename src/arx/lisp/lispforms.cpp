#include "arx/lisp/lispforms.h"

#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispprinter.h"
#include "arx/lisp/lispreader.h"
#include "base/text.h"

#include <vector>

namespace aclisp {

namespace {

void assign(Interpreter& in, const Value& name, Value value) {
  if (!name.is(Kind::kSymbol)) in.failType(L"symbolp:", name);
  Symbol* const symbol = name.asSymbol();
  if (symbol->fixed) in.fail(L"symbole protégé : " + symbol->name);
  symbol->value = std::move(value);
}

Value setqForm(Interpreter& in, const Value& rest) {
  Value value;
  for (const Value* at = &rest; at->is(Kind::kCons); at = &at->cdr().cdr()) {
    if (!at->cdr().is(Kind::kCons)) in.fail(L"nombre d'arguments insuffisant");
    value = in.eval(at->cdr().car());
    assign(in, at->car(), value);
  }
  return value;
}

Value setFunction(Args& a) {
  assign(a.in, a[0], a[1]);
  return a[1];
}

Value quoteForm(Interpreter&, const Value& rest) { return rest.car(); }

/// (function (lambda ...)) gives the list itself: it is resolved where it is called.
Value functionForm(Interpreter&, const Value& rest) { return rest.car(); }

Value lambdaForm(Interpreter& in, const Value& rest) { return in.makeFunction(nullptr, rest); }

Value defunForm(Interpreter& in, const Value& rest) {
  if (!rest.car().is(Kind::kSymbol)) in.failType(L"symbolp:", rest.car());
  assign(in, rest.car(), in.makeFunction(rest.car().asSymbol(), rest.cdr()));
  return rest.car();
}

Value ifForm(Interpreter& in, const Value& rest) {
  if (!rest.cdr().is(Kind::kCons)) in.fail(L"nombre d'arguments insuffisant");
  const Value& branches = rest.cdr();
  if (branches.cdr().cdr().is(Kind::kCons)) in.fail(L"nombre d'arguments trop important");
  return in.eval(in.eval(rest.car()) ? branches.car() : branches.cdr().car());
}

Value condForm(Interpreter& in, const Value& rest) {
  for (const Value& clause : Elements(rest)) {
    if (!clause.is(Kind::kCons)) in.fail(L"clause de COND incorrecte : " + printed(clause, true, 80));
    Value test = in.eval(clause.car());
    if (!test) continue;
    return clause.cdr().is(Kind::kCons) ? in.evalBody(clause.cdr()) : test;
  }
  return {};
}

Value andForm(Interpreter& in, const Value& rest) {
  for (const Value& form : Elements(rest))
    if (!in.eval(form)) return {};
  return in.truth(true);
}

Value orForm(Interpreter& in, const Value& rest) {
  for (const Value& form : Elements(rest))
    if (in.eval(form)) return in.truth(true);
  return {};
}

Value prognForm(Interpreter& in, const Value& rest) { return in.evalBody(rest); }

Value whileForm(Interpreter& in, const Value& rest) {
  if (!rest.is(Kind::kCons)) in.fail(L"nombre d'arguments insuffisant");
  Value result;
  while (in.eval(rest.car())) {
    in.tick();
    result = in.evalBody(rest.cdr());
  }
  return result;
}

Value repeatForm(Interpreter& in, const Value& rest) {
  const Value count = in.eval(rest.car());
  if (!count.is(Kind::kInteger)) in.failType(L"fixnump:", count);
  Value result;
  for (std::int32_t i = 0; i < count.asInteger(); ++i) {
    in.tick();
    result = in.evalBody(rest.cdr());
  }
  return result;
}

Value foreachForm(Interpreter& in, const Value& rest) {
  if (!rest.car().is(Kind::kSymbol)) in.failType(L"symbolp:", rest.car());
  Symbol* const variable = rest.car().asSymbol();
  if (variable->fixed) in.fail(L"symbole protégé : " + variable->name);
  const Value list = in.eval(rest.cdr().car());
  if (!list.isList()) in.failType(L"listp:", list);
  const std::size_t before = in.mark();
  in.bind(variable, {});
  Value result;
  for (const Value& element : Elements(list)) {
    in.tick();
    variable->value = element;
    result = in.evalBody(rest.cdr().cdr());
  }
  in.unwind(before);
  return result;
}

Value evalFunction(Args& a) {
  const Value form = a[0];
  return a.in.eval(form);
}

Value applyFunction(Args& a) {
  std::vector<Value> arguments;
  for (const Value& v : Elements(a.list(1))) arguments.push_back(v);
  return a.in.apply(a.in.callable(a[0]), arguments);
}

/// Calls `visit` with the results over several lists until the shortest ends or it answers false.
template <class Visit>
void mapLists(Args& a, Visit visit) {
  const Value function = a.in.callable(a[0]);
  std::vector<Value> lists;
  for (std::size_t i = 1; i < a.size(); ++i) lists.push_back(a.list(i));
  std::vector<Value> arguments(lists.size());
  for (;;) {
    for (std::size_t i = 0; i < lists.size(); ++i) {
      if (!lists[i].is(Kind::kCons)) return;
      arguments[i] = lists[i].car();
      const Value rest = lists[i].cdr();
      lists[i] = rest;
    }
    if (!visit(a.in.apply(function, arguments))) return;
  }
}

Value mapcarFunction(Args& a) {
  ListBuilder results;
  mapLists(a, [&](Value v) {
    results.add(std::move(v));
    return true;
  });
  return results.take();
}

Value someFunction(Args& a) {
  Value found;
  mapLists(a, [&](Value v) {
    found = std::move(v);
    return found.isNil();
  });
  return found;
}

Value everyFunction(Args& a) {
  bool all = true;
  mapLists(a, [&](const Value& v) { return all = !v.isNil(); });
  return a.in.truth(all);
}

Value catchAll(Args& a) {
  Interpreter& in = a.in;
  const std::size_t before = in.mark();
  const int loading = in.loading;
  try {
    return applyFunction(a);
  } catch (const LispError& error) {
    in.unwind(before);
    in.loading = loading;
    return Value::adopt(new CaughtError(error.message));
  }
}

Value isCaught(Args& a) { return a.in.truth(a[0].is(Kind::kError)); }

Value caughtMessage(Args& a) {
  if (!a[0].is(Kind::kError)) a.in.failType(L"vl-catch-all-error-p:", a[0]);
  return Value::text(static_cast<const CaughtError*>(a[0].object())->message);
}

Value exitFunction(Args& a) { a.in.quit(); }

/// (vl-load-com) and the like: what they would load is always there.
Value nothingToDo(Args& a) { return a.in.nothing(); }

Value readFunction(Args& a) {
  if (a.size() == 0) return {};
  Reader reader(a.in, a.text(0), {});
  Value form;
  return reader.next(form) ? form : Value();
}

Value atomsFamily(Args& a) {
  const bool texts = a.integer(0) != 0;
  const auto named = [&](const Symbol* symbol) {
    return texts ? Value::text(symbol->name) : Value::symbol(const_cast<Symbol*>(symbol));
  };
  ListBuilder names;
  if (!a.has(1)) {
    for (const Symbol* symbol : a.in.boundSymbols()) names.add(named(symbol));
    return names.take();
  }
  for (const Value& v : Elements(a.list(1))) {
    const Symbol* const symbol = v.is(Kind::kString) ? a.in.find(v.asText()) : nullptr;
    names.add(symbol && symbol->value ? named(symbol) : Value());
  }
  return names.take();
}

constexpr Subr kForms[] = {
    specialForm(L"SETQ", setqForm),
    specialForm(L"QUOTE", quoteForm),
    specialForm(L"FUNCTION", functionForm),
    specialForm(L"LAMBDA", lambdaForm),
    specialForm(L"DEFUN", defunForm),
    specialForm(L"DEFUN-Q", defunForm),
    specialForm(L"IF", ifForm),
    specialForm(L"COND", condForm),
    specialForm(L"AND", andForm),
    specialForm(L"OR", orForm),
    specialForm(L"PROGN", prognForm),
    specialForm(L"WHILE", whileForm),
    specialForm(L"REPEAT", repeatForm),
    specialForm(L"FOREACH", foreachForm),
    function(L"SET", setFunction, 2, 2),
    function(L"EVAL", evalFunction, 1, 1),
    function(L"APPLY", applyFunction, 2, 2),
    function(L"MAPCAR", mapcarFunction, 2, kAny),
    function(L"VL-SOME", someFunction, 2, kAny),
    function(L"VL-EVERY", everyFunction, 2, kAny),
    function(L"VL-CATCH-ALL-APPLY", catchAll, 2, 2),
    function(L"VL-CATCH-ALL-ERROR-P", isCaught, 1, 1),
    function(L"VL-CATCH-ALL-ERROR-MESSAGE", caughtMessage, 1, 1),
    function(L"EXIT", exitFunction, 0, 0),
    function(L"QUIT", exitFunction, 0, 0),
    function(L"VL-LOAD-COM", nothingToDo, 0, 0),
    function(L"GC", nothingToDo, 0, 0),
    function(L"READ", readFunction, 0, 1),
    function(L"ATOMS-FAMILY", atomsFamily, 1, 2),
};

}  // namespace

std::span<const Subr> formFunctions() { return kForms; }

}  // namespace aclisp
