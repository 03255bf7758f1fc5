#include "arx/lisp/lispprinter.h"

#include "arx/lisp/lispinterp.h"
#include "base/format.h"

#include <vector>

namespace base = veltora::base;

namespace aclisp {

namespace {

std::wstring quotedText(const std::wstring& text) {
  std::wstring result = L"\"";
  for (const wchar_t c : text) {
    switch (c) {
      case L'"':
      case L'\\':
        result += L'\\';
        result += c;
        break;
      case L'\n':
        result += L"\\n";
        break;
      case L'\t':
        result += L"\\t";
        break;
      case L'\r':
        result += L"\\r";
        break;
      case 0x1B:
        result += L"\\e";
        break;
      default:
        result += c;
    }
  }
  return result + L'"';
}

std::wstring functionText(const Value& value) {
  if (value.is(Kind::kSubr)) return std::wstring(L"#<SUBR ") + value.asSubr()->name + L">";
  const Symbol* const name = static_cast<const Function*>(value.object())->name;
  return L"#<USUBR " + (name ? name->name : std::wstring(L"-lambda-")) + L">";
}

std::wstring atomText(const Value& value, bool quoted) {
  switch (value.kind()) {
    case Kind::kInteger:
      return std::to_wstring(value.asInteger());
    case Kind::kReal:
      return printedReal(value.asReal());
    case Kind::kSymbol:
      return value.asSymbol()->name;
    case Kind::kString:
      return quoted ? quotedText(value.asText()) : value.asText();
    case Kind::kSubr:
    case Kind::kFunction:
      return functionText(value);
    case Kind::kEntity:
      return base::formater(std::wstring(L"<Entity name: %x>"),
                            static_cast<const Name*>(value.object())->name[1]);
    case Kind::kSelection:
      return base::formater(std::wstring(L"<Selection set: %d>"),
                            static_cast<const Name*>(value.object())->name[0]);
    case Kind::kFile:
      return L"#<file>";
    case Kind::kError:
      return L"#<%catch-all-apply-error%>";
    default:
      return L"nil";
  }
}

}  // namespace

std::wstring printedReal(double value) {
  std::wstring text = base::formater(std::wstring(L"%.6g"), value);
  if (text.find_first_of(L".n") != std::wstring::npos) return text;  // "nan", "inf"
  const std::size_t exponent = text.find(L'e');
  return text.insert(exponent == std::wstring::npos ? text.size() : exponent, L".0");
}

std::wstring printed(const Value& value, bool quoted, std::size_t limit) {
  std::wstring out;
  std::vector<const Value*> rests;  // what follows in the open lists; no recursion, for lists of any depth
  const Value* next = &value;
  for (;;) {
    if (next && next->is(Kind::kCons)) {
      out += L'(';
      rests.push_back(&next->cdr());
      next = &next->car();
      continue;
    }
    if (next) out += atomText(*next, quoted);
    next = nullptr;
    if (out.size() > limit) return out.substr(0, limit) + L"...";
    if (rests.empty()) return out;
    const Value* const rest = rests.back();
    if (rest->is(Kind::kCons)) {
      out += L' ';
      next = &rest->car();
      rests.back() = &rest->cdr();
      continue;
    }
    if (!rest->isNil()) out += L" . " + atomText(*rest, quoted);
    out += L')';
    rests.pop_back();
  }
}

}  // namespace aclisp
