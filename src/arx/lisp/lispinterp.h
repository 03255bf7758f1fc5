#pragma once

#include "arx/db/resbuf.h"
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

class Interpreter;

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

/// A failure, an interruption or a call of `exit`. Not derived from std::exception: it never leaves the
/// interpreter.
struct ARX_API LispError {
  enum Kind { kError, kCancelled, kQuit } kind = kError;
  std::wstring message;     ///< French, as `*error*` gets it
  std::wstring expression;  ///< the call in which it happened, shortened; empty outside of any
  std::wstring position;    ///< "fichier.lsp:12", empty for what was typed
};

/// Arguments of a built-in function, with the conversions that fail with a French message.
class ARX_API Args {
public:
  Args(Interpreter& interpreter, std::span<Value> values) : in(interpreter), m_values(values) {}
  [[nodiscard]] std::size_t size() const { return m_values.size(); }
  /// Nil beyond the end.
  const Value& operator[](std::size_t i) const { return i < m_values.size() ? m_values[i] : kNilValue; }
  [[nodiscard]] std::span<Value> values() const { return m_values; }
  [[nodiscard]] bool has(std::size_t i) const { return i < m_values.size() && m_values[i]; }

  [[nodiscard]] std::int32_t integer(std::size_t i) const;
  [[nodiscard]] double number(std::size_t i) const;
  [[nodiscard]] const std::wstring& text(std::size_t i) const;
  [[nodiscard]] const Value& list(std::size_t i) const;  ///< nil allowed
  [[nodiscard]] Symbol* symbol(std::size_t i) const;
  /// Two or three numbers; z 0 when absent. @return how many there were
  std::size_t point(std::size_t i, ads_point result) const;
  [[nodiscard]] const Name& name(std::size_t i, Kind kind) const;
  /// An integer, or the fallback when the argument is absent or nil.
  [[nodiscard]] std::int32_t integerOr(std::size_t i, std::int32_t fallback) const;

  Interpreter& in;

private:
  std::span<Value> m_values;
};

/// A built-in function: with evaluated arguments (`call`), or a special form that gets them as they stand.
struct Subr {
  const wchar_t* name;
  Value (*call)(Args& arguments);
  Value (*special)(Interpreter& in, const Value& rest);
  int least;
  int most;  ///< -1 for any number
};
inline constexpr int kAny = -1;
inline constexpr Subr function(const wchar_t* name, Value (*call)(Args&), int least, int most) {
  return {name, call, nullptr, least, most};
}
inline constexpr Subr specialForm(const wchar_t* name, Value (*call)(Interpreter&, const Value&)) {
  return {name, nullptr, call, 0, kAny};
}

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

  Value eval(const Value& form);
  Value apply(const Value& function, std::span<Value> arguments);
  /// The value of the last form of a body.
  Value evalBody(const Value& forms);
  /// A function to be called many times: lists (lambda ...) and names are resolved once.
  Value callable(const Value& function);
  /// @param rest (parameters / locals) followed by the body
  Value makeFunction(Symbol* name, const Value& rest);

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
  ACLISP_APART void enter(const struct Frame& frame);
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

// The functions by theme; each table stands in the file of that name.
std::span<const Subr> formFunctions();
std::span<const Subr> listFunctions();
std::span<const Subr> vlListFunctions();
std::span<const Subr> predicateFunctions();
std::span<const Subr> mathFunctions();
std::span<const Subr> geometryFunctions();
std::span<const Subr> textFunctions();
std::span<const Subr> unitFunctions();
std::span<const Subr> fileFunctions();
// Of the host: prompts, entities, selection sets, tables, commands.
std::span<const Subr> inputFunctions();
std::span<const Subr> entityFunctions();
std::span<const Subr> selectionFunctions();
std::span<const Subr> tableFunctions();
std::span<const Subr> commandFunctions();

// Helpers that several themes need.
/// Equal in structure; numbers may differ by `fuzz` when both are numbers.
bool equalValues(const Value& a, const Value& b, double fuzz = 0.0);
/// A text argument of LISP as ANSI code: 1 to 255 in Windows-1252, a code point above.
int codeOfCharacter(wchar_t c);
wchar_t characterOfCode(std::int32_t code);
/// Value of a system variable as a number.
double systemNumber(const wchar_t* name, double fallback);
/// Writes out the files that routines left open.
void flushFiles(Interpreter& in);
Value loadFile(Interpreter& in, const std::wstring& path);

}  // namespace aclisp
