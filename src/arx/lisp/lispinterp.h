#pragma once

#include "arx/db/resbuf.h"
#include "arx/lisp/lispargs.h"
#include "arx/lisp/lisperror.h"
#include "arx/lisp/lispvalue.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace aclisp {

#define ACLISP_APART __attribute__((noinline))

/// What the interpreter needs of the program around it. Everything may be absent.
struct Host {
  std::function<void(const std::wstring& text)> print;
  /// One line from the user, nothing at the end of the input.
  std::function<std::optional<std::wstring>(const std::wstring& prompt)> readLine;
  /// True when the user asked to stop; asked every few thousand calls.
  std::function<bool()> userBreak;
  /// Full path of a file, empty when it is nowhere.
  std::function<std::wstring(const std::wstring& name)> findFile;
  /// Calls a function of a module. @return false when there is none of this name; `result` stays null when it
  /// fails
  std::function<bool(const std::wstring& name, const resbuf* arguments, resbuf*& result)> callModule;
};

/// Ceilings that keep a runaway routine from harming the program.
struct Limits {
  int depth = 100000;                        ///< nested calls; the native stack may end them earlier
  std::size_t objects = 20'000'000;          ///< list cells, about 1 GB
  std::size_t textLength = 16'000'000;       ///< characters in one text
  static constexpr int kReaderDepth = 2000;  ///< nested brackets in a text
};

/// The evaluator: dynamic scope, one value slot a symbol. Owns no file, console or other state of the
/// process.
class ARX_API Interpreter {
public:
  explicit Interpreter(Host host, Limits limits = {});
  ~Interpreter();
  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;

  void install(std::span<const Subr> functions);
  /// The symbol of this name, whatever its case.
  Symbol* intern(std::wstring_view name);
  /// The symbol if there is one.
  [[nodiscard]] Symbol* find(std::wstring_view name) const;
  /// All symbols with a value, sorted (`atoms-family`).
  [[nodiscard]] std::vector<const Symbol*> boundSymbols() const;

  Value eval(const Value& form) {
    if (form.is(Kind::kSymbol)) return form.asSymbol()->value;
    return form.is(Kind::kCons) ? evalCall(form) : form;
  }
  Value apply(const Value& function, std::span<Value> arguments);
  /// The value of the last form of a body.
  Value evalBody(const Value& forms);
  /// A function to be called many times: lists (lambda ...) and names are resolved once.
  Value callable(const Value& function);
  /// @param rest (parameters / locals) followed by the body
  Value makeFunction(Symbol* name, const Value& rest);

  /// To be held while values of this interpreter are made, used or let go from outside of `run`: what they
  /// take counts for it, and not for another.
  [[nodiscard]] AccountScope atWork() { return AccountScope(m_account); }
  /// Reads all forms of a text and evaluates them; the value of the last. Errors are thrown as `LispError`,
  /// the bindings then still those of the failing place until `unwind`.
  /// @param source name for messages, empty for what was typed  @param more supplies lines while a form is
  /// open
  Value evalText(const std::wstring& text, const std::wstring& source,
                 const std::function<std::optional<std::wstring>()>& more = {});
  /// As typed at the prompt: calls `*error*` after a failure, closes bindings. @return nothing after a
  /// failure, which `error` describes; `handled` is set when a routine's own `*error*` was called
  std::optional<Value> run(const std::function<Value()>& work, LispError& error, bool& handled);

  // Variables bound for the time of a call.
  [[nodiscard]] std::size_t mark() const { return m_bindings.size(); }
  void bind(Symbol* symbol, Value value);
  void unwind(std::size_t mark);

  [[noreturn]] ACLISP_APART void fail(std::wstring message) const;
  /// "type d'argument incorrect : numberp: nil".
  [[noreturn]] void failType(const wchar_t* expected, const Value& got) const;
  [[noreturn]] void cancel() const;
  [[noreturn]] void quit() const;
  /// To be called by loops: fails when the user asked to stop.
  void tick() {
    if (++m_ticks >= kTicks) checkRun();
  }
  void checkText(std::size_t length) const;
  /// True when recursion of another kind than evaluation (the reader) must stop.
  [[nodiscard]] bool stackIsShort() const;

  [[nodiscard]] Value truth(bool value) const { return value ? m_t : Value(); }
  /// The value that prints as nothing: (princ).
  [[nodiscard]] Value nothing() const { return Value::symbol(m_nothing); }
  [[nodiscard]] bool isNothing(const Value& v) const {
    return v.is(Kind::kSymbol) && v.asSymbol() == m_nothing;
  }
  [[nodiscard]] const Host& host() const { return m_host; }
  [[nodiscard]] const Limits& limits() const { return m_limits; }
  void print(const std::wstring& text) const {
    if (m_host.print) m_host.print(text);
  }
  [[nodiscard]] int depth() const { return m_depth; }
  /// Number of a source for the positions of lists; 0 when there are too many.
  std::uint32_t sourceNumber(const std::wstring& source);
  /// Files opened by routines; written out when an expression at the prompt ends.
  std::vector<std::weak_ptr<OpenFile>>& openFiles() { return m_files; }
  /// Loaded files whose loading goes on, against endless mutual loading.
  int loading = 0;
  /// What the host's functions keep between calls; owned, type known to them.
  std::shared_ptr<void> hostState;

private:
  friend struct Frame;
  static constexpr int kTicks = 2048;
  Value evalCall(const Value& form);
  // Apart from `evalCall` and from each other, so that a level of recursion takes no more of the native stack
  // than it needs.
  ACLISP_APART Value callSubr(const Subr& subr, const Value& form);
  ACLISP_APART Value callWithArguments(const Value& function, const Value& form);
  ACLISP_APART Value callOther(const Value& form);
  void enter(const struct Frame& frame);
  ACLISP_APART void checkStack(const char* here);
  [[noreturn]] ACLISP_APART void failDeep() const;
  [[nodiscard]] bool isLambda(const Value& list) const;
  Value callFunction(const Value& function, std::span<Value> arguments);
  Value callModule(Symbol* name, std::span<Value> arguments);
  ACLISP_APART Value callUnknown(const Value& form);
  void checkCount(const Subr& subr, std::size_t count) const;
  void checkRun();
  LispError located(std::wstring message) const;

  struct Binding {
    Symbol* symbol;
    Value former;
  };
  Host m_host;
  Limits m_limits;
  Account m_account;
  std::unordered_map<std::wstring, std::unique_ptr<Symbol>> m_symbols;
  std::vector<std::wstring> m_sources;
  std::vector<Binding> m_bindings;
  std::vector<std::weak_ptr<OpenFile>> m_files;
  struct Frame* m_frame = nullptr;
  const char* m_stackEnd = nullptr;
  std::thread::id m_stackThread;  ///< to which `m_stackEnd` belongs
  int m_depth = 0;
  int m_ticks = 0;
  Value m_t;
  Symbol* m_nothing;
  Symbol* m_lambda;
  Symbol* m_slash;
};

}  // namespace aclisp
