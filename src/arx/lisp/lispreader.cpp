#include "arx/lisp/lispreader.h"

#include "arx/lisp/lisptexts.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

#include <limits>

namespace base = veltora::base;

namespace aclisp {

namespace {

bool isBlank(wchar_t c) { return c <= L' ' || c == 0xA0 || c == 0xFEFF; }
bool isDelimiter(wchar_t c) {
  return isBlank(c) || c == L'(' || c == L')' || c == L'"' || c == L'\'' || c == L';';
}

int hexDigit(wchar_t c) {
  if (veltora::base::isDigit(c)) return c - L'0';
  c = base::toUpper(c);
  return c >= L'A' && c <= L'F' ? c - L'A' + 10 : -1;
}

}  // namespace

std::optional<Value> readNumber(const std::wstring& text) {
  std::size_t at = !text.empty() && (text[0] == L'+' || text[0] == L'-') ? 1 : 0;
  const std::size_t sign = at;
  if (at >= text.size() || (!veltora::base::isDigit(text[at]) && text[at] != L'.')) return std::nullopt;
  while (at < text.size() && veltora::base::isDigit(text[at])) ++at;
  if (at == text.size()) {
    double value = 0.0;
    base::lireReelExact(base::toUtf8(text.substr(sign)), value);
    if (text[0] == L'-') value = -value;
    using Int = std::numeric_limits<std::int32_t>;
    if (value >= Int::min() && value <= Int::max()) return Value::integer(static_cast<std::int32_t>(value));
    return Value::real(value);
  }
  std::wstring digits = text.substr(text[0] == L'+' ? 1 : 0);
  if (digits.back() == L'.') digits += L'0';
  double value = 0.0;
  if (!base::lireReelExact(base::toUtf8(digits), value)) return std::nullopt;
  return Value::real(value);
}

Reader::Reader(Interpreter& in, const std::wstring& text, const std::wstring& source,
               std::function<std::optional<std::wstring>()> more)
    : m_in(in), m_text(text), m_source(source), m_number(in.sourceNumber(source)), m_more(std::move(more)) {}

void Reader::fail(const std::wstring& message, std::uint32_t line) const {
  LispError error;
  error.message = message;
  if (!m_source.empty())
    error.position = m_source + L":" + std::to_wstring(line);
  else if (line > 1)
    error.position = L"ligne " + std::to_wstring(line);
  throw error;
}

void Reader::failOpen() const {
  const std::wstring count = std::to_wstring(m_open.size());
  if (m_open.empty()) fail(L"expression inachevée", m_line);
  fail(L"liste jamais fermée : il manque " + count + (m_open.size() > 1 ? L" parenthèses" : L" parenthèse") +
           L", la première est ouverte ligne " + std::to_wstring(m_open.front()),
       m_open.back());
}

/// Gets a further line while a form is open.
bool Reader::fetch() {
  if (!m_more) return false;
  const std::optional<std::wstring> line = m_more();
  if (!line) return false;
  m_text += L'\n';
  m_text += *line;
  return true;
}

bool Reader::skipBlockComment() {
  const std::uint32_t start = m_line;
  for (m_at += 2;; ++m_at) {
    if (m_at + 1 >= m_text.size() && !fetch()) fail(L"commentaire jamais fermé", start);
    if (m_text[m_at] == L'\n') ++m_line;
    if (m_text[m_at] == L'|' && m_text[m_at + 1] == L';') break;
  }
  m_at += 2;
  return true;
}

/// @return false at the end of the text
bool Reader::skipBlanks() {
  while (!atEnd()) {
    const wchar_t c = m_text[m_at];
    if (c == L'\n') ++m_line;
    if (c == L';' && m_at + 1 < m_text.size() && m_text[m_at + 1] == L'|') {
      skipBlockComment();
      continue;
    }
    if (c == L';')
      while (!atEnd() && m_text[m_at] != L'\n') ++m_at;
    else if (isBlank(c))
      ++m_at;
    else
      return true;
  }
  return false;
}

bool Reader::next(Value& result) {
  if (!skipBlanks()) return false;
  if (m_text[m_at] == L')') fail(L"parenthèse fermante en trop", m_line);
  result = form();
  return true;
}

Value Reader::form() {
  while (!skipBlanks())
    if (!fetch()) failOpen();
  const wchar_t c = m_text[m_at];
  if (c == L'"') return string();
  if (c != L'(' && c != L'\'') return atom();
  if (m_open.size() >= Limits::kReaderDepth || m_in.stackIsShort())
    fail(L"parenthèses trop profondes", m_line);
  if (c == L'(') return list();
  ++m_at;
  m_open.push_back(m_line);
  Value quoted = form();
  m_open.pop_back();
  Value pair = Value::cons(std::move(quoted), {});
  return Value::cons(Value::symbol(m_in.intern(L"QUOTE")), std::move(pair));
}

Value Reader::list() {
  ListBuilder builder;
  const std::uint32_t line = m_line;
  m_open.push_back(line);
  ++m_at;
  bool dotted = false;
  for (;;) {
    while (!skipBlanks())
      if (!fetch()) failOpen();
    if (m_text[m_at] == L')') break;
    const bool dot = m_text[m_at] == L'.' && (m_at + 1 == m_text.size() || isDelimiter(m_text[m_at + 1]));
    if (dotted || (dot && builder.empty())) fail(L"point mal placé dans une liste", m_line);
    if (!dot) {
      builder.add(form());
      continue;
    }
    ++m_at;
    while (!skipBlanks())
      if (!fetch()) failOpen();
    if (m_text[m_at] == L')') fail(L"point mal placé dans une liste", m_line);
    builder.dot(form());
    dotted = true;
  }
  ++m_at;
  m_open.pop_back();
  Value result = builder.take();
  if (result.is(Kind::kCons) && line < (1U << 19)) {
    result.object()->file = m_number & 0x1FF;
    result.object()->line = line & 0x7FFFF;
  }
  return result;
}

wchar_t Reader::escape() {
  const wchar_t c = m_text[m_at++];
  if (c == L'n') return L'\n';
  if (c == L't') return L'\t';
  if (c == L'r') return L'\r';
  if (c == L'e') return 0x1B;
  if ((c == L'U' || c == L'u') && m_at + 5 <= m_text.size() && m_text[m_at] == L'+') {
    int code = 0;
    for (std::size_t i = 1; i <= 4 && code >= 0; ++i) {
      const int digit = hexDigit(m_text[m_at + i]);
      code = digit < 0 ? -1 : code * 16 + digit;
    }
    if (code > 0 && (code < 0xD800 || code > 0xDFFF)) {
      m_at += 5;
      return static_cast<wchar_t>(code);
    }
  }
  if (c < L'0' || c > L'7') return c;
  int code = c - L'0';
  for (int i = 0; i < 2 && !atEnd() && m_text[m_at] >= L'0' && m_text[m_at] <= L'7'; ++i)
    code = code * 8 + (m_text[m_at++] - L'0');
  return characterOfCode(code & 0xFF);
}

Value Reader::string() {
  const std::uint32_t start = m_line;
  std::wstring text;
  ++m_at;
  for (;;) {
    while (atEnd())
      if (!fetch()) fail(L"chaîne jamais fermée", start);
    const wchar_t c = m_text[m_at++];
    if (c == L'"') return Value::text(std::move(text));
    if (c == L'\n') ++m_line;
    if (c == L'\r') continue;
    if (c != L'\\') {
      text += c;
      continue;
    }
    if (atEnd() && !fetch()) fail(L"chaîne jamais fermée", start);
    if (const wchar_t meant = escape()) text += meant;
  }
}

Value Reader::atom() {
  const std::size_t start = m_at;
  while (!atEnd() && !isDelimiter(m_text[m_at])) ++m_at;
  const std::wstring word = m_text.substr(start, m_at - start);
  if (word == L".") fail(L"point mal placé", m_line);
  if (std::optional<Value> number = readNumber(word)) return std::move(*number);
  if (base::compareNoCase(word, L"nil") == 0) return {};
  return Value::symbol(m_in.intern(word));
}

}  // namespace aclisp
