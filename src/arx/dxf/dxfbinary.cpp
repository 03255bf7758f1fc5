#include "arx/dxf/dxfbinary.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 16U;
constexpr std::size_t kMark = 22;
constexpr std::string_view kMarkEnd = std::string_view(" Binary DXF\r\n\x1a\0", 15);
constexpr std::size_t kLongestText = std::size_t{1} << 24U;

bool startsBinary(std::string_view head) {
  return head.size() >= kMark && head.substr(0, kMark).ends_with(kMarkEnd);
}

}  // namespace

bool DxfBinarySource::isBinary(DxfSource& source) {
  char head[kMark];
  std::size_t got = 0;
  while (got < kMark) {
    const std::size_t more = source.read(head + got, kMark - got);
    if (more == 0) break;
    got += more;
  }
  source.restart();
  return startsBinary({head, got});
}

void DxfBinarySource::restart() {
  m_inner.restart();
  m_in.clear();
  m_out.clear();
  m_at = m_before = m_given = 0;
  m_marked = false;
}

/// Whether so many bytes follow.
bool DxfBinarySource::need(std::size_t count) {
  while (m_in.size() - m_at < count) {
    m_before += m_at;
    m_in.erase(0, m_at);
    m_at = 0;
    const std::size_t old = m_in.size();
    m_in.resize(old + kPiece);
    const std::size_t got = m_inner.read(m_in.data() + old, kPiece);
    m_in.resize(old + got);
    if (got == 0) return false;
  }
  return true;
}

Adesk::UInt64 DxfBinarySource::integer(std::size_t bytes) {
  Adesk::UInt64 value = 0;
  for (std::size_t i = 0; i < bytes; ++i)
    value |= Adesk::UInt64{static_cast<unsigned char>(m_in[m_at + i])} << (8 * i);
  m_at += bytes;
  return value;
}

bool DxfBinarySource::code(int& value) {
  constexpr Adesk::UInt64 kLongCode = 255;
  if (!need(m_wide ? 2 : 1)) return false;
  Adesk::UInt64 read = integer(m_wide ? 2 : 1);
  if (!m_wide && read == kLongCode) {
    if (!need(2)) return false;
    read = integer(2);
  }
  value = static_cast<Adesk::Int16>(read);
  return true;
}

bool DxfBinarySource::text(int code) {
  std::size_t length = 0;
  for (;; ++length) {
    if (length == kLongestText || !need(length + 1)) return false;
    if (m_in[m_at + length] == '\0') break;
  }
  dxfAppendCode(m_out, code);
  dxfAppendValue(m_out, std::string_view(m_in).substr(m_at, length));
  m_at += length + 1;
  return true;
}

/// A length of one byte and so many bytes, as hexadecimal digits.
bool DxfBinarySource::chunk() {
  if (!need(1)) return false;
  const auto length = static_cast<std::size_t>(static_cast<unsigned char>(m_in[m_at]));
  if (!need(length + 1)) return false;
  std::string digits;
  for (std::size_t i = 1; i <= length; ++i) {
    const auto byte = static_cast<unsigned char>(m_in[m_at + i]);
    digits += "0123456789ABCDEF"[byte >> 4U];
    digits += "0123456789ABCDEF"[byte & 15U];
  }
  m_at += length + 1;
  dxfAppendValue(m_out, digits);
  return true;
}

bool DxfBinarySource::real(int code) {
  if (!need(8)) return false;
  const double value = std::bit_cast<double>(integer(8));
  if (!std::isfinite(value))
    throw DxfError{0,
                   "dessin binaire : la valeur du groupe " + std::to_string(code) + " n'est pas un nombre"};
  DxfTagText number;
  number.appendReal(code, value);
  m_out += number.text();
  return true;
}

template <class Integer>
bool DxfBinarySource::whole(int code) {
  if (!need(sizeof(Integer))) return false;
  DxfTagText number;
  number.appendInteger(code, static_cast<Integer>(integer(sizeof(Integer))));
  m_out += number.text();
  return true;
}

bool DxfBinarySource::value(int code) {
  switch (dxfKind(code)) {
    case DxfKind::kText:
    case DxfKind::kHandle:
    case DxfKind::kPointer:
    case DxfKind::kName:
      return text(code);
    case DxfKind::kBinary:
      dxfAppendCode(m_out, code);
      return chunk();
    case DxfKind::kReal:
    case DxfKind::kPoint:
      return real(code);
    case DxfKind::kInt16:
      return whole<Adesk::Int16>(code);
    case DxfKind::kInt32:
      return whole<Adesk::Int32>(code);
    case DxfKind::kInt64:
      return whole<Adesk::Int64>(code);
    case DxfKind::kBool:
      return whole<unsigned char>(code);
    default:
      throw DxfError{0, "dessin binaire : code de groupe " + std::to_string(code) + " inconnu, octet " +
                            std::to_string(m_before + m_at)};
  }
}

/// Adds the text of the next group; false at the end.
bool DxfBinarySource::group() {
  if (!m_marked) {
    m_marked = true;
    if (!need(kMark + 2)) return false;
    m_wide = m_in[kMark] == '\0' && m_in[kMark + 1] == '\0';
    m_at = kMark;
  }
  int group = 0;
  const std::size_t before = m_out.size();
  if (code(group) && value(group)) return true;
  m_out.resize(before);  // half a group is none
  return false;
}

std::size_t DxfBinarySource::read(char* to, std::size_t room) {
  if (m_given == m_out.size()) {
    m_out.clear();
    m_given = 0;
    while (m_out.size() < kPiece && group()) {
    }
  }
  const std::size_t count = std::min(room, m_out.size() - m_given);
  if (count) std::memcpy(to, m_out.data() + m_given, count);
  m_given += count;
  return count;
}
