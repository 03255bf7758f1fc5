#include "base/lines/line_reader.h"

#include "base/format.h"

#include <algorithm>

namespace veltora::base {
namespace {

/// Characters of a cut line that its remark shows.
constexpr std::size_t kShown = 40;

/// Length in bytes of the first characters of a UTF-8 text.
std::size_t lengthOf(std::string_view utf8, std::size_t characters) {
  std::size_t i = 0;
  const auto follows = [utf8](std::size_t k) {
    return (static_cast<unsigned char>(utf8[k]) & 0xC0U) == 0x80U;
  };
  for (; i < utf8.size() && characters > 0; --characters) {
    for (++i; i < utf8.size() && follows(i);) ++i;
  }
  return i;
}

}  // namespace

std::size_t LineReader::Mark::find(std::string_view bytes, std::size_t from) {
  if (!sought || at < from) at = std::min(bytes.find(byte, from), bytes.size());
  sought = true;
  return at;
}

LineReader::LineReader(std::string_view bytes, std::size_t limit) : m_text(bytes), m_limit(limit) {}

bool LineReader::next() {
  const std::string_view bytes = m_text.bytes();
  if (m_position >= bytes.size()) return false;
  ++m_number;
  const std::size_t feed = std::min(bytes.find('\n', m_position), bytes.size());
  const std::size_t end = std::min(feed, m_return.find(bytes, m_position));
  const std::size_t zero = m_zero.find(bytes, m_position);
  m_cut = zero < end ? Cut::kZero : Cut::kNone;
  m_line = withoutMark(bytes.substr(m_position, std::min(zero, end) - m_position));
  applyLimit();
  m_position = end + (bytes.substr(end, 2) == "\r\n" ? 2 : 1);
  return true;
}

void LineReader::applyLimit() {
  if (m_line.size() <= m_limit) return;
  const std::size_t length = m_text.isUtf8() ? lengthOf(m_line, m_limit) : m_limit;
  if (length == m_line.size()) return;
  m_line = m_line.substr(0, length);
  m_cut = Cut::kLimit;
}

std::optional<Remarque> LineReader::cut() const {
  if (m_cut == Cut::kNone) return std::nullopt;
  const std::wstring start = wide().substr(0, kShown);
  if (m_cut == Cut::kZero) return Remarque(L"coupée devant un octet nul, « " + start + L"… »", m_number);
  return Remarque(formater(L"coupée après %d caractères, « %s… »", static_cast<int>(m_limit), start),
                  m_number);
}

}  // namespace veltora::base
