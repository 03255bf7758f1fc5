#include "arx/lisp/lisptexts.h"

#include "arx/ed/acutads.h"
#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lispprinter.h"
#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>

namespace base = veltora::base;

namespace aclisp {

int codeOfCharacter(wchar_t c) {
  const std::string ansi = veltora::base::narrow(std::wstring_view(&c, 1));
  const auto byte = static_cast<unsigned char>(ansi.empty() ? '?' : ansi.front());
  return byte == '?' && c != L'?' ? static_cast<int>(c) : byte;
}

wchar_t characterOfCode(std::int32_t code) {
  if (code <= 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return L'\0';
  if (code > 0xFF) return static_cast<wchar_t>(code);
  const char byte = static_cast<char>(code);
  const std::wstring wide = veltora::base::widen(std::string_view(&byte, 1));
  return wide.empty() ? L'\0' : wide.front();
}

namespace {

Value strcatFunction(Args& a) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < a.size(); ++i) length += a.text(i).size();
  a.in.checkText(length);
  std::wstring text;
  text.reserve(length);
  for (std::size_t i = 0; i < a.size(); ++i) text += a.text(i);
  return Value::text(std::move(text));
}

Value strlenFunction(Args& a) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < a.size(); ++i) length += a.text(i).size();
  return Value::integer(static_cast<std::int32_t>(std::min<std::size_t>(length, INT32_MAX)));
}

/// Positions count from 1.
Value substrFunction(Args& a) {
  const std::wstring& text = a.text(0);
  const std::int32_t start = a.integer(1);
  if (start < 1) a.in.fail(L"argument incorrect : une position à partir de 1 est attendue");
  const std::size_t from = static_cast<std::size_t>(start) - 1;
  if (from >= text.size()) return Value::text({});
  if (!a.has(2)) return Value::text(text.substr(from));
  const std::int32_t length = a.integer(2);
  if (length < 0) a.in.fail(L"argument incorrect : une longueur positive est attendue");
  return Value::text(text.substr(from, static_cast<std::size_t>(length)));
}

Value strcaseFunction(Args& a) {
  return Value::text(a.has(1) ? base::toLower(a.text(0)) : base::toUpper(a.text(0)));
}

Value asciiFunction(Args& a) {
  return Value::integer(a.text(0).empty() ? 0 : codeOfCharacter(a.text(0).front()));
}

Value chrFunction(Args& a) {
  const wchar_t c = characterOfCode(a.integer(0));
  if (c == L'\0' && a.integer(0) != 0) a.in.fail(L"code de caractère incorrect");
  return Value::text(c ? std::wstring(1, c) : std::wstring());
}

Value itoaFunction(Args& a) { return Value::text(std::to_wstring(a.integer(0))); }
Value atoiFunction(Args& a) { return Value::integer(base::lireEntier(a.text(0))); }
Value atofFunction(Args& a) { return Value::real(base::lireReel(a.text(0))); }

Value wcmatchFunction(Args& a) {
  return a.in.truth(acutWcMatch(a.text(0).c_str(), a.text(1).c_str()) == RTNORM);
}

Value princText(Args& a) { return Value::text(printed(a[0], false)); }
Value prin1Text(Args& a) { return Value::text(printed(a[0], true)); }

/// Position from 0, or nil. @param 2 where to begin
Value searchFunction(Args& a) {
  const std::int32_t start = a.integerOr(2, 0);
  if (start < 0) a.in.fail(L"argument incorrect : une position positive est attendue");
  const std::size_t at = a.text(1).find(a.text(0), static_cast<std::size_t>(start));
  return at == std::wstring::npos ? Value() : Value::integer(static_cast<std::int32_t>(at));
}

Value positionFunction(Args& a) {
  const std::wstring& text = a.text(1);
  const wchar_t c = characterOfCode(a.integer(0));
  std::size_t at = static_cast<std::size_t>(std::max(a.integerOr(2, 0), 0));
  if (a.has(3)) {
    at = a.has(2) ? text.rfind(c, at) : text.rfind(c);
  } else {
    at = text.find(c, at);
  }
  return c == L'\0' || at == std::wstring::npos ? Value() : Value::integer(static_cast<std::int32_t>(at));
}

/// The first occurrence only, as in the dialect.
Value stringSubst(Args& a) {
  const std::wstring& pattern = a.text(1);
  const std::int32_t start = a.integerOr(3, 0);
  std::wstring text = a.text(2);
  const std::size_t at =
      start < 0 || pattern.empty() ? std::wstring::npos : text.find(pattern, static_cast<std::size_t>(start));
  if (at != std::wstring::npos) text.replace(at, pattern.size(), a.text(0));
  return Value::text(std::move(text));
}

Value translateFunction(Args& a) {
  const std::wstring& from = a.text(0);
  const std::wstring& to = a.text(1);
  std::wstring text = a.text(2);
  for (wchar_t& c : text) {
    const std::size_t at = from.find(c);
    if (at != std::wstring::npos && !to.empty()) c = to[std::min(at, to.size() - 1)];
  }
  return Value::text(std::move(text));
}

Value trimFunction(Args& a) { return Value::text(base::trim(a.text(1), a.text(0))); }
Value trimLeftFunction(Args& a) { return Value::text(base::trimLeft(a.text(1), a.text(0))); }
Value trimRightFunction(Args& a) { return Value::text(base::trimRight(a.text(1), a.text(0))); }

Value elementFunction(Args& a) {
  const std::wstring& text = a.text(0);
  const std::int32_t at = a.integer(1);
  if (at < 0 || static_cast<std::size_t>(at) >= text.size()) a.in.fail(L"position hors de la chaîne");
  return Value::integer(codeOfCharacter(text[static_cast<std::size_t>(at)]));
}

/// Length of the common beginning of two texts.
Value mismatchFunction(Args& a) {
  const std::wstring& x = a.text(0);
  const std::wstring& y = a.text(1);
  std::size_t i = static_cast<std::size_t>(std::max(a.integerOr(2, 0), 0));
  std::size_t j = static_cast<std::size_t>(std::max(a.integerOr(3, 0), 0));
  const bool anyCase = a.has(4);
  std::int32_t count = 0;
  const auto form = [&](wchar_t c) { return anyCase ? base::toLower(c) : c; };
  while (i < x.size() && j < y.size() && form(x[i]) == form(y[j])) ++i, ++j, ++count;
  return Value::integer(count);
}

constexpr Subr kTexts[] = {
    function(L"STRCAT", strcatFunction, 0, kAny),
    function(L"STRLEN", strlenFunction, 0, kAny),
    function(L"SUBSTR", substrFunction, 2, 3),
    function(L"STRCASE", strcaseFunction, 1, 2),
    function(L"ASCII", asciiFunction, 1, 1),
    function(L"CHR", chrFunction, 1, 1),
    function(L"ITOA", itoaFunction, 1, 1),
    function(L"ATOI", atoiFunction, 1, 1),
    function(L"ATOF", atofFunction, 1, 1),
    function(L"WCMATCH", wcmatchFunction, 2, 2),
    function(L"VL-PRINC-TO-STRING", princText, 1, 1),
    function(L"VL-PRIN1-TO-STRING", prin1Text, 1, 1),
    function(L"VL-STRING-SEARCH", searchFunction, 2, 3),
    function(L"VL-STRING-POSITION", positionFunction, 2, 4),
    function(L"VL-STRING-SUBST", stringSubst, 3, 4),
    function(L"VL-STRING-TRANSLATE", translateFunction, 3, 3),
    function(L"VL-STRING-TRIM", trimFunction, 2, 2),
    function(L"VL-STRING-LEFT-TRIM", trimLeftFunction, 2, 2),
    function(L"VL-STRING-RIGHT-TRIM", trimRightFunction, 2, 2),
    function(L"VL-STRING-ELT", elementFunction, 2, 2),
    function(L"VL-STRING-MISMATCH", mismatchFunction, 2, 5),
};

}  // namespace

std::span<const Subr> textFunctions() { return kTexts; }

}  // namespace aclisp
