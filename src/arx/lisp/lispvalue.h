#pragma once

#include "arx/adesk.h"
#include "arx/lisp/lispcells.h"
#include "base/sanitized.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// Values of the LISP dialect: small, copied freely, objects behind them counted by reference. The dialect
/// has no operation that changes a list in place, so that no cycle can arise and counting is enough.
namespace aclisp {

class Value;
/// Fails with a `LispError`: the ceiling of objects is reached.
[[noreturn]] void refuseMoreObjects();
struct Symbol;
struct Subr;
class OpenFile;

/// What a value is. From `kString` on an object stands behind it.
enum class Kind : std::uint8_t {
  kNil,
  kInteger,
  kReal,
  kSymbol,
  kSubr,
  kString,
  kCons,
  kFunction,
  kEntity,
  kSelection,
  kFile,
  kError,
};

/// Head of everything that is counted. `file` and `line` say where a list was read, 0 for nowhere.
struct Object {
  std::uint32_t references = 1;
  std::uint32_t kind : 4;
  std::uint32_t file : 9;
  std::uint32_t line : 19;
  explicit Object(Kind k) : kind(static_cast<std::uint32_t>(k) & 0xF), file(0), line(0) {}
};

/// Room that the living objects of an interpreter take, in units of a list cell; long texts count more than
/// one.
struct Account {
  std::ptrdiff_t alive = 0;
  std::ptrdiff_t ceiling = PTRDIFF_MAX;  ///< where making more is refused with a `LispError`
};
/// For what is made while no interpreter is at work.
ARX_API extern Account outsideAccount;
/// Where making and dying count: values do not pass from one interpreter to another.
ARX_API extern Account* currentAccount;

/// Has an account count while it lives.
class AccountScope {
public:
  explicit AccountScope(Account& account) : m_before(std::exchange(currentAccount, &account)) {}
  ~AccountScope() { currentAccount = m_before; }
  AccountScope(const AccountScope&) = delete;
  AccountScope& operator=(const AccountScope&) = delete;

private:
  Account* m_before;
};

class ARX_API Value {
public:
  Value() = default;
  Value(const Value& other) : m_kind(other.m_kind), m_data(other.m_data) { retain(); }
  Value(Value&& other) noexcept : m_kind(std::exchange(other.m_kind, Kind::kNil)), m_data(other.m_data) {}
  Value& operator=(const Value& other) {
    Value copy(other);
    swap(copy);
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    Value taken(std::move(other));
    swap(taken);
    return *this;
  }
  ~Value() {
    if (counted() && --m_data.object->references == 0) destroy(m_data.object);
  }
  void swap(Value& other) noexcept {
    std::swap(m_kind, other.m_kind);
    std::swap(m_data, other.m_data);
  }

  static Value integer(std::int32_t value);
  static Value real(double value);
  static Value symbol(Symbol* symbol);
  static Value subr(const Subr* subr);
  static Value text(std::wstring text);
  static Value cons(Value car, Value cdr);
  /// Takes over an object just made. @param weight its room as in `Account::alive`
  static Value adopt(Object* object, std::size_t weight = 1);

  [[nodiscard]] Kind kind() const { return m_kind; }
  [[nodiscard]] bool is(Kind kind) const { return m_kind == kind; }
  [[nodiscard]] bool isNil() const { return m_kind == Kind::kNil; }
  explicit operator bool() const { return m_kind != Kind::kNil; }
  [[nodiscard]] bool isNumber() const { return m_kind == Kind::kInteger || m_kind == Kind::kReal; }
  [[nodiscard]] bool isList() const { return m_kind == Kind::kNil || m_kind == Kind::kCons; }

  // Each for values of that kind only.
  [[nodiscard]] std::int32_t asInteger() const { return m_data.integer; }
  [[nodiscard]] double asReal() const { return m_data.real; }
  /// Of an integer or a real.
  [[nodiscard]] double number() const { return is(Kind::kInteger) ? m_data.integer : m_data.real; }
  [[nodiscard]] Symbol* asSymbol() const { return m_data.symbol; }
  [[nodiscard]] const Subr* asSubr() const { return m_data.subr; }
  [[nodiscard]] const std::wstring& asText() const;
  [[nodiscard]] Object* object() const { return m_data.object; }
  /// First element and rest of a list; nil for anything that is none.
  [[nodiscard]] const Value& car() const;
  [[nodiscard]] const Value& cdr() const;

  /// The same atom or the very same object (`eq`).
  [[nodiscard]] bool sameAs(const Value& other) const;

private:
  [[nodiscard]] bool counted() const { return m_kind >= Kind::kString; }
  void retain() const {
    if (counted()) ++m_data.object->references;
  }
  /// Releases an object and what hangs on it without recursion, however long or deep it is.
  static void destroy(Object* object);

  Kind m_kind = Kind::kNil;
  union {
    std::int32_t integer;
    double real;
    Symbol* symbol;
    const Subr* subr;
    Object* object;
  } m_data{};
};

/// A name. Interned: one for each spelling in upper case, alive as long as its interpreter.
struct Symbol {
  std::wstring name;
  Value value;         ///< function or variable alike, nil when unbound
  bool fixed = false;  ///< T and PI keep their value
};

struct Cons : Object {
  Value car, cdr;
  Cons(Value a, Value d) : Object(Kind::kCons), car(std::move(a)), cdr(std::move(d)) {}
  static void* operator new(std::size_t size) {
    return veltora::base::kSanitized ? ::operator new(size) : CellRoom::take();
  }
  static void operator delete(void* cell) noexcept {
    if constexpr (veltora::base::kSanitized)
      ::operator delete(cell);
    else
      CellRoom::give(cell);
  }
};
static_assert(sizeof(Cons) <= CellRoom::kCell);
struct Text : Object {
  std::wstring text;
  explicit Text(std::wstring t) : Object(Kind::kString), text(std::move(t)) {}
  [[nodiscard]] std::size_t weight() const { return 1 + text.size() / 12; }
};
/// What `defun` and `lambda` make: (parameters / locals) and a body.
struct Function : Object {
  Symbol* name = nullptr;
  std::size_t parameters = 0;  ///< how many of the variables are parameters
  std::unique_ptr<Symbol*[]> variables;
  std::size_t variableCount = 0;
  Value body;
  Function() : Object(Kind::kFunction) {}
};
/// Name of an entity or a selection set.
struct Name : Object {
  ads_name name;
  Name(Kind k, const ads_name n) : Object(k), name{n[0], n[1]} {}
};
struct FileHandle : Object {
  std::shared_ptr<OpenFile> file;
  explicit FileHandle(std::shared_ptr<OpenFile> f) : Object(Kind::kFile), file(std::move(f)) {}
};
/// What `vl-catch-all-apply` gives back after a failure.
struct CaughtError : Object {
  std::wstring message;
  explicit CaughtError(std::wstring m) : Object(Kind::kError), message(std::move(m)) {}
};

inline const Value kNilValue;

inline Value Value::integer(std::int32_t value) {
  Value v;
  v.m_kind = Kind::kInteger;
  v.m_data.integer = value;
  return v;
}
inline Value Value::real(double value) {
  Value v;
  v.m_kind = Kind::kReal;
  v.m_data.real = value;
  return v;
}
inline Value Value::symbol(Symbol* symbol) {
  Value v;
  v.m_kind = Kind::kSymbol;
  v.m_data.symbol = symbol;
  return v;
}
inline Value Value::subr(const Subr* subr) {
  Value v;
  v.m_kind = Kind::kSubr;
  v.m_data.subr = subr;
  return v;
}
inline Value Value::adopt(Object* object, std::size_t weight) {
  currentAccount->alive += static_cast<std::ptrdiff_t>(weight);
  Value v;
  v.m_kind = static_cast<Kind>(object->kind);
  v.m_data.object = object;
  return v;
}
inline Value Value::text(std::wstring text) {
  if (currentAccount->alive >= currentAccount->ceiling) refuseMoreObjects();
  auto* const made = new Text(std::move(text));
  return adopt(made, made->weight());
}
inline Value Value::cons(Value car, Value cdr) {
  if (currentAccount->alive >= currentAccount->ceiling) refuseMoreObjects();
  return adopt(new Cons(std::move(car), std::move(cdr)));
}
inline const std::wstring& Value::asText() const { return static_cast<const Text*>(m_data.object)->text; }
inline const Value& Value::car() const {
  return is(Kind::kCons) ? static_cast<const Cons*>(m_data.object)->car : kNilValue;
}
inline const Value& Value::cdr() const {
  return is(Kind::kCons) ? static_cast<const Cons*>(m_data.object)->cdr : kNilValue;
}

/// Builds a list front to back.
class ListBuilder {
public:
  void add(Value value) {
    Value cell = Value::cons(std::move(value), {});
    Cons* const made = static_cast<Cons*>(cell.object());
    if (m_last)
      m_last->cdr = std::move(cell);
    else
      m_list = std::move(cell);
    m_last = made;
  }
  /// Ends the list with something other than nil; only behind an element.
  void dot(Value tail) { m_last->cdr = std::move(tail); }
  [[nodiscard]] bool empty() const { return !m_last; }
  Value take() {
    m_last = nullptr;
    return std::move(m_list);
  }

private:
  Value m_list;
  Cons* m_last = nullptr;
};

/// Elements of a list one after the other: for (const Value& v : Elements(list)). A dotted end is not
/// visited. The list must live meanwhile.
class Elements {
public:
  explicit Elements(const Value& list) : m_list(list) {}
  struct Iterator {
    const Value* at;
    const Value& operator*() const { return at->car(); }
    Iterator& operator++() {
      at = &at->cdr();
      return *this;
    }
    bool operator!=(const Iterator&) const { return at->is(Kind::kCons); }
  };
  [[nodiscard]] Iterator begin() const { return {&m_list}; }
  [[nodiscard]] Iterator end() const { return {&kNilValue}; }

private:
  const Value& m_list;
};

[[nodiscard]] std::size_t listLength(const Value& list);

}  // namespace aclisp
