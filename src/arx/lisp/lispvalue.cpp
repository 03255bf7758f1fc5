#include "arx/lisp/lispvalue.h"

#include "arx/lisp/lisperror.h"

#include <vector>

namespace aclisp {

Account outsideAccount;
Account* currentAccount = &outsideAccount;

void refuseMoreObjects() { throw LispError{LispError::kError, L"mémoire insuffisante", {}, {}}; }

namespace {

/// Moves out the parts that only a dying object holds: they are destroyed by the loop, not by recursion. The
/// others are let go one by one, so that of two parts that are the same object the second is moved out.
void takeApart(Object* object, std::vector<Value>& parts) {
  const auto keep = [&](Value& part) {
    if (!part.is(Kind::kCons) && !part.is(Kind::kFunction)) return;
    if (part.object()->references == 1)
      parts.push_back(std::move(part));
    else
      part = Value();
  };
  if (object->kind == static_cast<std::uint32_t>(Kind::kCons)) {
    keep(static_cast<Cons*>(object)->car);
    keep(static_cast<Cons*>(object)->cdr);
  } else if (object->kind == static_cast<std::uint32_t>(Kind::kFunction)) {
    keep(static_cast<Function*>(object)->body);
  }
}

void freeObject(Object* object) {
  const bool text = object->kind == static_cast<std::uint32_t>(Kind::kString);
  const std::size_t weight = text ? static_cast<const Text*>(object)->weight() : 1;
  currentAccount->alive -= static_cast<std::ptrdiff_t>(weight);
  switch (static_cast<Kind>(object->kind)) {
    case Kind::kString:
      delete static_cast<Text*>(object);
      break;
    case Kind::kCons:
      delete static_cast<Cons*>(object);
      break;
    case Kind::kFunction:
      delete static_cast<Function*>(object);
      break;
    case Kind::kEntity:
    case Kind::kSelection:
      delete static_cast<Name*>(object);
      break;
    case Kind::kFile:
      delete static_cast<FileHandle*>(object);
      break;
    case Kind::kError:
      delete static_cast<CaughtError*>(object);
      break;
    default:
      break;
  }
}

}  // namespace

void Value::destroy(Object* object) {
  std::vector<Value> parts;
  takeApart(object, parts);
  freeObject(object);
  while (!parts.empty()) {
    Value part = std::move(parts.back());
    parts.pop_back();
    Object* const next = part.m_data.object;
    if (next->references == 1) takeApart(next, parts);
  }
}

bool Value::sameAs(const Value& other) const {
  if (m_kind != other.m_kind) return false;
  switch (m_kind) {
    case Kind::kNil:
      return true;
    case Kind::kInteger:
      return m_data.integer == other.m_data.integer;
    case Kind::kReal:
      return m_data.real == other.m_data.real;
    case Kind::kString:
      return asText() == other.asText();
    case Kind::kEntity:
    case Kind::kSelection: {
      const auto* a = static_cast<const Name*>(m_data.object);
      const auto* b = static_cast<const Name*>(other.m_data.object);
      return a->name[0] == b->name[0] && a->name[1] == b->name[1];
    }
    default:
      return m_data.object == other.m_data.object;
  }
}

std::size_t listLength(const Value& list) {
  std::size_t count = 0;
  for (const Value* at = &list; at->is(Kind::kCons); at = &at->cdr()) ++count;
  return count;
}

}  // namespace aclisp
