#include "arx/dxf/dxfscanner.h"

#include "base/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20U;
constexpr std::size_t kSlack = 4;  // bytes behind the buffer's end that a look ahead may touch
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool isAscii(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t seen = 0;
  for (; text.size() >= sizeof seen; text.remove_prefix(sizeof seen)) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data(), sizeof eight);
    seen |= eight;
  }
  for (const char c : text) seen |= static_cast<unsigned char>(c);
  return (seen & kHighBits) == 0;
}

/// The next line of a text, without its end and the blanks around it.
std::string takeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return veltora::base::trim(line, " \t\r");
}

/// Value of a header variable in raw text: the second line behind its name, in front of which stands the code
/// 9. The name alone may stand elsewhere, in a comment.
std::string rawVariable(std::string_view text, std::string_view name) {
  for (std::size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
    const std::string_view before = text.substr(0, at);
    const std::size_t code = before.find_last_not_of(" \t\r\n");
    const std::size_t end = before.find_last_of('\n');
    if (code == std::string_view::npos || end == std::string_view::npos || code > end) continue;
    std::string_view rest = before.substr(before.find_last_of('\n', code) + 1);
    if (takeLine(rest) != "9") continue;
    rest = text.substr(at);
    if (takeLine(rest) != name) continue;
    takeLine(rest);
    return takeLine(rest);
  }
  return {};
}

/// A carriage return that does not belong to a line end.
bool hasLoneReturn(std::string_view text) {
  for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at)) {
    const std::size_t behind = text.find_first_not_of('\r', at);
    if (behind == std::string_view::npos || text[behind] != '\n') return true;
    at = behind;
  }
  return false;
}

/// The first line ends in a carriage return without a line feed: that is the file's line end.
bool endsLinesByReturns(std::string_view text) {
  const std::size_t at = text.find_first_of("\r\n");
  if (at == std::string_view::npos || text[at] == '\n') return false;
  const std::size_t behind = text.find_first_not_of('\r', at);
  return behind != std::string_view::npos && text[behind] != '\n';
}

/// Lone carriage returns in the escaped form, as other readers would take them for line ends.
std::string escapeReturns(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      result += text[i];
      continue;
    }
    const std::size_t behind = text.find_first_not_of('\r', i);
    if (behind != std::string_view::npos && text[behind] == '\n') {
      i = behind - 1;
    } else {
      result += "^M";
    }
  }
  return result;
}

}  // namespace

DxfScanner::DxfScanner(DxfSource& source) : m_source(source) {}

void DxfScanner::start() {
  m_started = true;
  fill();
  const std::string_view text(m_buffer.get(), m_fill);
  if (text.size() <= kByteOrderMark.size() && withoutBlanks(text).empty())
    throw DxfError{0, "le fichier est vide"};
}

std::string DxfScanner::converted(std::string_view bytes) const {
  std::string text = m_legacy ? dxfFromCodePage(bytes, m_codePage) : dxfRepairUtf8(bytes);
  return hasLoneReturn(text) ? escapeReturns(text) : text;
}

/// A zero byte in a part of the buffer, which text does not hold, wherever it stands.
void DxfScanner::refuseZero(std::string_view part) const {
  const std::size_t zero = part.find('\0');
  if (zero == std::string_view::npos) return;
  const auto lines = std::count<const char*>(&m_buffer[m_at], &part[zero], '\n');
  throw DxfError{m_line + static_cast<Adesk::UInt32>(lines) + 1,
                 "octet nul dans le texte : fichier binaire ou endommagé"};
}

void DxfScanner::decode(std::size_t from, std::size_t to) {
  const std::string_view part(m_buffer.get() + from, to - from);
  refuseZero(part);
  const bool ascii = isAscii(part);
  const bool named = m_legacy && !m_codePage.empty();
  const bool plain = ascii || (!named && veltora::base::isUtf8(part));
  if (plain && !hasLoneReturn(part)) return;
  if (!plain && !m_legacy) m_repaired = true;
  const std::string text = converted(part);
  const std::size_t tail = m_fill - to;
  std::unique_ptr<char[]> larger;
  if (from + text.size() + tail + 1 > m_capacity) {
    m_capacity = from + text.size() + tail + kPiece;
    larger.reset(new char[m_capacity + kSlack]);
    std::memcpy(larger.get(), m_buffer.get(), from);
  }
  char* target = larger ? larger.get() : m_buffer.get();
  if (tail) std::memmove(target + from + text.size(), m_buffer.get() + to, tail);
  std::copy(text.begin(), text.end(), target + from);
  if (larger) m_buffer = std::move(larger);
  m_limit = from + text.size();
  m_fill = m_limit + tail;
}

/// What the first bytes tell: a binary drawing, version, encoding.
void DxfScanner::inspectHead() {
  const std::string_view text(m_buffer.get(), m_fill);
  const std::string_view head = text.substr(0, 4096);
  if (head.rfind("AC10", 0) == 0 && head.find('\n') > 6) {
    throw DxfError{0, "dessin binaire : seuls les dessins DXF sont lus"};
  }
  refuseZero(head);
  m_version = rawVariable(text, "$ACADVER");
  m_codePage = rawVariable(text, "$DWGCODEPAGE");
  const bool marked = text.rfind(kByteOrderMark, 0) == 0;
  m_legacy = !marked && m_version < "AC1021";
  if (marked) m_item = m_at = m_limit = kByteOrderMark.size();
}

void DxfScanner::fill() {
  const bool first = m_fill == 0;
  if (m_item > 0) std::memmove(m_buffer.get(), m_buffer.get() + m_item, m_fill - m_item);
  m_at -= m_item;
  m_limit -= m_item;
  m_fill -= m_item;
  m_item = 0;
  std::size_t lineEnd = 0;  // behind the last complete line
  while (!m_atEnd && lineEnd == 0) {
    if (m_capacity - m_fill < kPiece + 1) {
      m_capacity = std::max(2 * m_capacity, 2 * kPiece + 1);
      std::unique_ptr<char[]> larger(new char[m_capacity + kSlack]);
      if (m_fill) std::memcpy(larger.get(), m_buffer.get(), m_fill);
      m_buffer = std::move(larger);
    }
    const std::size_t got = m_source.read(m_buffer.get() + m_fill, m_capacity - m_fill - 1);
    const std::size_t old = m_fill;
    m_fill += got;
    if (first && old == 0) m_returnsEnd = endsLinesByReturns({m_buffer.get(), m_fill});
    if (m_returnsEnd) std::replace(&m_buffer[old], &m_buffer[m_fill], '\r', '\n');
    if (got == 0) {
      m_atEnd = true;
      if (m_fill > m_limit && m_buffer[m_fill - 1] != '\n') m_buffer[m_fill++] = '\n';
      lineEnd = m_fill;
    }
    for (std::size_t i = m_fill; i > old && lineEnd == 0; --i) {
      if (m_buffer[i - 1] == '\n') lineEnd = i;
    }
  }
  if (first && m_fill > 0) inspectHead();
  const std::size_t from = m_limit;
  m_limit = std::max(lineEnd, m_limit);
  decode(from, m_limit);
}

namespace {

/// A line with a group code, which must end within the buffer; `at` then stands behind its end.
inline bool readCode(const char*& at, int& code) {
  const auto digit = [](char c) { return static_cast<unsigned>(c - '0'); };
  // As nearly all programs write it: up to three digits, right-justified.
  const unsigned last = digit(at[2]);
  if (last < 10 && at[3] == '\n') {
    const unsigned second = at[1] == ' ' && at[0] == ' ' ? 0 : digit(at[1]);
    const unsigned first = at[0] == ' ' ? 0 : digit(at[0]);
    if (second < 10 && first < 10) {
      code = static_cast<int>(first * 100 + second * 10 + last);
      at += 4;
      return true;
    }
  }
  while (*at == ' ' || *at == '\t') ++at;
  const bool negative = *at == '-';
  if (negative) ++at;
  int value = 0;
  const char* const digits = at;
  while (*at >= '0' && *at <= '9' && at - digits < 6) value = value * 10 + (*at++ - '0');
  if (at == digits) return false;
  while (*at == ' ' || *at == '\t' || *at == '\r') ++at;
  code = negative ? -value : value;
  return *at++ == '\n';
}

}  // namespace

DxfScanner::Status DxfScanner::group(DxfTag& tag) {
  const char* at = m_buffer.get() + m_at;
  const char* const limit = m_buffer.get() + m_limit;
  if (at == limit) return m_atEnd ? Status::kEnd : Status::kMore;
  const char* const begin = at;
  if (!readCode(at, tag.code)) {
    const auto* end =
        static_cast<const char*>(std::memchr(begin, '\n', static_cast<std::size_t>(limit - begin)));
    const std::string_view text =
        withoutBlanks({begin, std::min<std::size_t>(static_cast<std::size_t>(end - begin), 40)});
    const std::string shown = dxfRepairUtf8(text.substr(0, text.find('\r')));
    throw DxfError{m_line + 1, "le code de groupe \"" + shown + "\" n'est pas un nombre"};
  }
  if (at == limit) {
    if (!m_atEnd) return Status::kMore;
    throw DxfError{m_line + 1,
                   "fichier tronqué : la valeur du groupe " + std::to_string(tag.code) + " manque"};
  }
  const char* end = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(limit - at)));
  m_at = static_cast<std::size_t>(end + 1 - m_buffer.get());
  m_line += 2;
  while (end > at && end[-1] == '\r') --end;
  tag.line = m_line;
  tag.value = std::string_view(at, static_cast<std::size_t>(end - at));
  return Status::kGroup;
}

DxfScanner::Status DxfScanner::readItem() {
  m_tags.clear();
  m_commented = false;
  Status status = group(m_type);
  if (status != Status::kGroup) return status;
  if (m_type.code != 0) return Status::kGroup;
  m_type.value = withoutBlanks(m_type.value);
  if (m_type.value == "EOF") return Status::kGroup;  // what is behind it is no item
  for (;;) {
    DxfTag& tag = m_tags.emplace_back();
    const std::size_t before = m_at;
    status = group(tag);
    if (status == Status::kMore) return status;
    if (status == Status::kEnd || tag.code == 0) {
      if (status == Status::kGroup) m_line -= 2;
      m_at = before;
      m_tags.pop_back();
      return Status::kGroup;
    }
    if (tag.code == 999) m_commented = true;
  }
}

bool DxfScanner::hasTail() const {
  const std::string_view tail(&m_buffer[m_at], m_fill - m_at);
  return tail.find_first_not_of(" \t\r\n\x1a") != std::string_view::npos;
}

void DxfScanner::rewind() {
  m_source.restart();
  m_item = m_at = m_limit = m_fill = 0;
  m_atEnd = m_started = m_repaired = false;
  m_itemLine = m_line = 0;
  m_comments.clear();
}

void DxfScanner::dropComments() {
  if (m_commented) std::erase_if(m_tags, [](const DxfTag& tag) { return tag.code == 999; });
  m_commented = false;
}

bool DxfScanner::next() {
  if (!m_started) start();
  for (;;) {
    m_item = m_at;
    m_itemLine = m_line;
    Status status = readItem();
    while (status == Status::kMore) {
      fill();
      m_at = m_item;
      m_line = m_itemLine;
      status = readItem();
    }
    if (status == Status::kEnd) return false;
    if (m_type.code == 0) return true;
    if (m_type.code != 999)
      throw DxfError{m_type.line, "ce n'est pas un dessin DXF : il devrait commencer par une section"};
    m_comments.append(999, m_type.value);
  }
}

Adesk::UInt64 dxfHandleOf(std::string_view text) {
  Adesk::UInt64 handle = 0;
  return dxfParseHandle(text, handle) ? handle : 0;
}

Adesk::UInt64 dxfHighestHandle(DxfSource& source) {
  source.restart();
  DxfScanner scanner(source);
  Adesk::UInt64 highest = 0;
  while (scanner.next() && scanner.type() != "EOF") {
    for (const DxfTag& tag : scanner.tags()) {
      const DxfKind kind = dxfKind(tag.code);
      if (kind != DxfKind::kHandle && kind != DxfKind::kPointer) continue;
      const Adesk::UInt64 handle = dxfHandleOf(tag.value);
      if (handle < kDxfHandleLimit) highest = std::max(highest, handle);
    }
  }
  source.restart();
  return highest;
}

std::string_view dxfFirst(std::span<const DxfTag> tags, int code) {
  for (const DxfTag& tag : tags) {
    if (tag.code == code) return tag.value;
  }
  return {};
}
